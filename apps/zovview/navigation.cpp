#include "navigation.h"

#include <array>
#include <cmath>
#include <utility>

#include "korvane/platform.h"

namespace zovview {

using Korvane::OperationType;
using zovhost::MouseButton;

namespace {

// A fifth nearer with each notch, at the usual sensitivity of 1.015 a pixel.
constexpr double PIXELS_PER_NOTCH = 12.0;
// The glide covers all but a third of what is left in this time.
constexpr double GLIDE_SECONDS = 0.05;
// One operation halts about 200 pixels from its start; a new one, begun well before, goes on from there.
constexpr double LONGEST_ZOOM = 120.0;

struct ButtonUse {
  MouseButton button;
  OperationType operation;
  Korvane::CursorID cursor;
};
constexpr std::array<ButtonUse, 3> BUTTON_USES = {{
    {MouseButton::Left, Korvane::OPERATION_ORBIT, Korvane::CURSOR_ORBIT},
    {MouseButton::Middle, Korvane::OPERATION_PAN, Korvane::CURSOR_PAN},
    {MouseButton::Right, Korvane::OPERATION_ZOOM, Korvane::CURSOR_ZOOM},
}};

}  // namespace

// ---- the wheel ----

WheelZoom::WheelZoom(ViewerHub& operations) : hub(operations) {}

bool WheelZoom::IsExhausted() const { return active && std::abs(target) > LONGEST_ZOOM; }

void WheelZoom::Turn(int x, int y, double notches) {
  if (!std::isfinite(notches)) return;
  if (!active) Begin(x, hub.GetViewportHeight() - y - 1);
  target += notches * PIXELS_PER_NOTCH;
}

void WheelZoom::Begin(int x, int y) {
  originX = x;
  originY = y;
  target = std::exchange(carried, 0.0);
  reached = 0.0;
  applied = 0;
  lastTick = Korvane::GetPlatform().GetTickCount();
  active = hub.BeginOperation(Korvane::OPERATION_ZOOM, x, y);
}

void WheelZoom::Advance() {
  if (!active) return;
  const std::uint32_t now = Korvane::GetPlatform().GetTickCount();
  const double seconds = static_cast<double>(now - std::exchange(lastTick, now)) * 0.001;
  const double left = (target - reached) * std::exp(-seconds / GLIDE_SECONDS);
  reached = std::abs(left) < 1.0 ? target : target - left;
  applied = static_cast<int>(std::trunc(reached));
  hub.UpdateOperationParams(originX + applied, originY, Korvane::OPERATION_ZOOM);
}

void WheelZoom::EndIfArrived() {
  if (active && reached == target) End();
}

void WheelZoom::End() {
  if (!std::exchange(active, false)) return;
  carried = target - applied;
  hub.EndOperation(Korvane::OPERATION_ZOOM);
}

// ---- the buttons ----

Navigation::Navigation(ViewerHub& operations, Surroundings around)
    : hub(operations), surroundings(std::move(around)), wheel(operations) {}

void Navigation::OnMouseDown(MouseButton button, int x, int y) {
  if (drag.has_value()) return;  // a second button during a drag is ignored
  wheel.End();
  hub.EndShot();
  for (const ButtonUse& use : BUTTON_USES) {
    if (use.button != button) continue;
    SetPivotUnderCursor(x, y);
    if (!hub.BeginOperation(use.operation, x, FromTop(y))) return;
    drag = Drag{button, use.operation};
    hub.GetApplicationParameters().mouse_drag = true;
    surroundings.showCursor(use.cursor);
  }
}

void Navigation::OnMouseMove(int x, int y) {
  if (drag.has_value()) hub.UpdateOperationParams(x, FromTop(y), drag->operation);
}

// The motion since the last frame counts, so one more is performed before the end.
void Navigation::OnMouseUp(MouseButton button, int x, int y) {
  if (!drag.has_value() || drag->button != button) return;
  OnMouseMove(x, y);
  hub.PerformOperations();
  EndDrag();
}

void Navigation::OnWheel(int x, int y, double notches) {
  if (drag.has_value()) return;
  hub.EndShot();
  if (wheel.IsExhausted()) wheel.End();
  if (!wheel.IsActive()) SetPivotUnderCursor(x, y);
  wheel.Turn(x, y, notches);
}

void Navigation::Cancel() {
  wheel.End();
  if (drag.has_value()) EndDrag();
}

void Navigation::EndDrag() {
  hub.EndOperation(drag->operation);
  drag.reset();
  hub.GetApplicationParameters().mouse_drag = false;
  surroundings.showCursor(Korvane::CURSOR_ARROW);
}

void Navigation::PerformFrame() {
  wheel.Advance();
  hub.PerformOperations();
  wheel.EndIfArrived();
}

// Where the model is missed the last pivot stays. The view itself does not change by this.
void Navigation::SetPivotUnderCursor(int x, int y) {
  Korvane::CameraParameters camera = hub.GetView();
  Korvane::Vector3 origin;
  Korvane::Vector3 direction;
  const bool seen = hub.GetPixelRay(x, y, origin, direction);
  if (!seen || !surroundings.hit(origin, direction, camera.pivot)) return;
  hub.SetView(camera);
}

}  // namespace zovview
