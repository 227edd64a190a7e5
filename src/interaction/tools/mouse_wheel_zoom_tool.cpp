#include "korvane/mouse_wheel_zoom_tool.h"

#include "camera/pixels.h"

namespace Korvane {

namespace {

constexpr double GESTURE_PAUSE = 0.5;  // seconds after the last notch
constexpr int DELTA_PER_PIXEL = 30;    // a notch is 120

}  // namespace

MouseWheelZoomTool::MouseWheelZoomTool() {
  SetClickZoomEnabled(false);
  SetGestureEnd([](Tool& tool) { static_cast<MouseWheelZoomTool&>(tool).EndZoom(); });
}
MouseWheelZoomTool::~MouseWheelZoomTool() = default;

bool MouseWheelZoomTool::OnMouseWheel(int x, int y, int delta) {
  NotePosition(x, y);
  if (animating) return true;
  const Lifeline::Watch alive(GetLifeline());
  const bool begun = BeginZoom(x, y);
  if (!alive) return begun;
  if (begun) {
    wheelAnchorX = x;
    wheelAnchorY = y;
    wheelTotal = 0;
  }
  if (!operating) return false;
  wheelTimer.Reset();
  wheelTimer.Start();
  wheelTotal = Truncate(static_cast<double>(wheelTotal) + delta);
  const int pixels = wheelTotal / DELTA_PER_PIXEL;
  UpdateZoom(wheelAnchorX, Truncate(static_cast<double>(wheelAnchorY) + pixels));
  return true;
}

bool MouseWheelZoomTool::EndZoom() {
  const Lifeline::Watch alive(GetLifeline());
  const bool ended = ZoomTool::EndZoom();
  if (alive && ended) wheelTimer.Reset();
  return ended;
}

// The buttons do not begin a zoom by the wheel.
bool MouseWheelZoomTool::OnMouseDown(int x, int y) {
  NotePress(x, y);
  return operating || animating;
}

bool MouseWheelZoomTool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  return operating || animating;
}

bool MouseWheelZoomTool::OnMouseUp(int x, int y) {
  NoteRelease(x, y);
  return operating || animating;
}

void MouseWheelZoomTool::OnDraw() {
  if (animating) {  // the shot of a click, where a host has enabled it
    ZoomTool::OnDraw();
    return;
  }
  const Lifeline::Watch alive(GetLifeline());
  if (operating) UpdateGesture();
  if (alive) DrawTool();
}

void MouseWheelZoomTool::UpdateGesture() {
  wheelTimer.Lap();
  if (wheelTimer.GetTotalTime() < GESTURE_PAUSE) {
    SampleRecord();
  } else {
    EndZoom();
  }
}

}  // namespace Korvane
