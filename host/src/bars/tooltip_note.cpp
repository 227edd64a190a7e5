#include "zovhost/tooltip_note.h"

#include <cmath>
#include <utility>

#include "bars/note_place.h"
#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/renderer.h"

namespace zovhost {

using Korvane::Box2;
using Korvane::Vector2;

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
  if (shown && HasThingMoved()) Hide();
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
  thing = findThing ? findThing() : Box2();
  if (requestFrame) requestFrame();
}

void TooltipNote::Hide() {
  timer.Stop();
  DropIcon();
  if (std::exchange(shown, false) && requestFrame) requestFrame();
}

bool TooltipNote::HasThingMoved() const { return findThing && !(findThing().center == thing.center); }

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
  const Vector2 half = icon->GetBounds().halfExtent;
  const double scale = hub.GetApplicationParameters().pixels_per_point;
  const Vector2 place = FindNotePlace({anchor, half, size, scale, thing, panels});
  drawn = Box2(Vector2(std::floor(place.x), std::floor(place.y)), half);
  icon->SetPosition(drawn.center);
  renderer->Render(icon);
  icon->SetPosition(anchor);
  renderer->EndRender();
}

}  // namespace zovhost
