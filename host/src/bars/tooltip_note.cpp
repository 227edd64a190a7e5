#include "zovhost/tooltip_note.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/renderer.h"

namespace zovhost {

using Korvane::Box2;
using Korvane::Vector2;

namespace {

// Points from the tip of the pointer, whose picture lies below it and to the right.
constexpr double besidePointer = 10.0;
constexpr double belowPointer = 22.0;
constexpr double border = 4.0;  // that a note keeps to the viewport's

// Below the pointer; above it where there is no room, and within the viewport to the left and the right.
Vector2 Place(const Vector2& pointer, const Vector2& half, const Vector2& viewport, double scale) {
  const double edge = border * scale;
  const double below = pointer.y - belowPointer * scale - half.y;
  const double y = below - half.y >= edge ? below : pointer.y + edge + half.y;
  const double most = viewport.x - edge - half.x;
  const double x = std::max(std::min(pointer.x + besidePointer * scale + half.x, most), edge + half.x);
  return {x, y};
}

}  // namespace

TooltipNote::TooltipNote(std::function<void()> request) : requestFrame(std::move(request)) {}

TooltipNote::~TooltipNote() { DropIcon(); }

void TooltipNote::SetRenderer(Korvane::Renderer* value) {
  if (renderer == value) return;
  Hide();
  renderer = value;
}

// What is under the pointer has no text while a button is held, and is the same afterwards.
void TooltipNote::Follow(const std::wstring& under, int x, int y, bool pressed) {
  const bool moved = x != pointerX || y != pointerY;
  const bool isOther = under != text;
  const bool goesOn = shown && isOther && !under.empty();
  pointerX = x;
  pointerY = y;
  if (pressed) return Dismiss();
  if (isOther) {
    Hide();
    text = under;
    spent = false;
  }
  if (text.empty() || spent || shown) return;
  if (goesOn) return Show();
  if (moved) timer.Start(REST_SECONDS, false);  // what comes under a pointer that rests was not pointed at
}

void TooltipNote::Dismiss() {
  Hide();
  spent = true;
}

void TooltipNote::Show() {
  if (renderer == nullptr || text.empty()) return;
  icon = renderer->CreateTooltip(text.c_str());
  shown = icon != nullptr;
  if (!shown) return;
  icon->SetPosition(Vector2(pointerX, pointerY));
  if (requestFrame) requestFrame();
}

void TooltipNote::Hide() {
  timer.Stop();
  DropIcon();
  if (std::exchange(shown, false) && requestFrame) requestFrame();
}

void TooltipNote::DropIcon() {
  if (icon != nullptr && renderer != nullptr) renderer->DestroyIcon(icon);
  icon = nullptr;
}

// It stays where the pointer was when it came.
void TooltipNote::Draw(const Korvane::CameraOperations& hub, int viewportWidth, int viewportHeight) {
  using Korvane::Renderer;
  if (!shown || viewportWidth <= 0 || viewportHeight <= 0) return;
  const Vector2 size(viewportWidth, viewportHeight);
  const Box2 viewport(size / 2.0, size / 2.0);
  if (!renderer->BeginRender(viewport, hub.GetCameraParameters(), Renderer::RENDER_OVERLAY)) return;
  const Vector2 anchor = icon->GetPosition();
  const Vector2 place =
      Place(anchor, icon->GetBounds().halfExtent, size, hub.GetApplicationParameters().pixels_per_point);
  icon->SetPosition(Vector2(std::floor(place.x), std::floor(place.y)));
  renderer->Render(icon);
  icon->SetPosition(anchor);
  renderer->EndRender();
}

}  // namespace zovhost
