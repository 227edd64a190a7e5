#include "korvane/mouse_wheel_zoom_tool.h"

#include "camera/pixels.h"
#include "interaction/tools/rewind_record.h"

namespace Korvane {

// The handlers of the drag zoom are passed over: the buttons do not begin a zoom by the wheel.
// NOLINTBEGIN(bugprone-parent-virtual-call)

namespace {

constexpr double GESTURE_PAUSE = 0.5;  // seconds after the last notch
constexpr int DELTA_PER_PIXEL = 30;    // a notch is 120

}  // namespace

MouseWheelZoomTool::MouseWheelZoomTool() { SetClickZoomEnabled(false); }
MouseWheelZoomTool::~MouseWheelZoomTool() = default;

bool MouseWheelZoomTool::OnMouseWheel(int x, int y, int delta) {
  const bool result = Tool::OnMouseWheel(x, y, delta);
  if (animating) return result;
  if (BeginZoom(x, y)) {
    wheelAnchorX = x;
    wheelAnchorY = y;
    wheelTotal = 0;
  }
  if (!operating) return false;
  wheelTimer.Reset();
  wheelTimer.Start();
  wheelTotal = ToPixels(static_cast<double>(wheelTotal) + delta);
  const int pixels = wheelTotal / DELTA_PER_PIXEL;
  UpdateZoom(wheelAnchorX, ToPixels(static_cast<double>(wheelAnchorY) + pixels));
  return true;
}

bool MouseWheelZoomTool::EndZoom() {
  const bool ended = ZoomTool::EndZoom();
  if (ended) wheelTimer.Reset();
  return ended;
}

bool MouseWheelZoomTool::OnMouseDown(int x, int y) {
  Tool::OnMouseDown(x, y);
  return operating || animating;
}

bool MouseWheelZoomTool::OnMouseMove(int x, int y) {
  Tool::OnMouseMove(x, y);
  return operating || animating;
}

bool MouseWheelZoomTool::OnMouseUp(int x, int y) {
  Tool::OnMouseUp(x, y);
  return operating || animating;
}

void MouseWheelZoomTool::OnDraw() {
  if (animating) {  // the shot of a click, where a host has enabled it
    ZoomTool::OnDraw();
    return;
  }
  if (operating) {
    wheelTimer.Lap();
    if (wheelTimer.GetTotalTime() < GESTURE_PAUSE) {
      SampleRecord(rewindHistory, cameraOperations);
    } else {
      EndZoom();
    }
  }
  Tool::OnDraw();
}

// NOLINTEND(bugprone-parent-virtual-call)

}  // namespace Korvane
