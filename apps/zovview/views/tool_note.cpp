#include "views/tool_note.h"

#include <utility>

#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/renderer.h"
#include "korvane/tool.h"

namespace zovview {

using Korvane::Renderer;
using Korvane::Vector2;

namespace {

constexpr double DROP = 64.0;  // points below the pointer, as during a gesture

}  // namespace

ToolNote::ToolNote(std::function<void()> request) : requestFrame(std::move(request)) {}

void ToolNote::Choose(Korvane::Tool* chosen, Korvane::DynamicIcon2D* text, bool named) {
  Hide();
  tool = chosen;
  icon = text;
  used = false;
  if (tool != nullptr) tool->SetMouseHUD(icon);
  if (!named || tool == nullptr || icon == nullptr) return;
  shown = true;
  timer.Start(SECONDS, false);
  requestFrame();
}

// During a gesture the tool shows it by itself.
void ToolNote::Follow(bool operating) {
  if (operating) {
    used = true;
    Hide();
  } else if (std::exchange(used, false) && tool != nullptr) {
    tool->SetMouseHUD(nullptr);
  }
}

void ToolNote::Hide() {
  timer.Stop();
  if (std::exchange(shown, false)) requestFrame();
}

void ToolNote::Draw(Renderer& renderer, const Korvane::CameraOperations& hub, int x, int y) {
  const Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
  const Vector2 size(parameters.viewport_width, parameters.viewport_height);
  const bool inView = x >= 0 && y >= 0 && x < size.x && y < size.y;
  if (!shown || !inView) return;
  const Korvane::Box2 viewport(size / 2.0, size / 2.0);
  if (!renderer.BeginRender(viewport, hub.GetCameraParameters(), Renderer::RENDER_OVERLAY)) return;
  icon->SetPosition(Vector2(x, y - DROP * parameters.pixels_per_point));
  renderer.Render(icon);
  renderer.EndRender();
}

}  // namespace zovview
