#include "korvane/look_move_tool.h"

#include "camera/pixels.h"
#include "korvane/camera_operations.h"

namespace Korvane {

namespace {

// A slide measures pixels; these carry a speed in thousandths.
constexpr double PIXELS_AT_FULL_SPEED = 1000.0;

}  // namespace

LookMoveTool::LookMoveTool() = default;
LookMoveTool::~LookMoveTool() = default;

bool LookMoveTool::OnMouseDown(int x, int y) {
  const Lifeline::Watch alive(GetLifeline());
  const bool result = LookTool::OnMouseDown(x, y);
  if (!alive) return result;
  slideKeyA = slideKeyB = slideKeyC = slideKeyD = false;
  if (operating && cameraOperations != nullptr) cameraOperations->BeginOperation(OPERATION_SLIDE, 0, 0);
  return result;
}

bool LookMoveTool::OnMouseUp(int x, int y) { return ReleaseLook(x, y, OPERATION_SLIDE); }

bool LookMoveTool::OnKeyDown(KeyID key) {
  LookTool::OnKeyDown(key);
  return SetSlideKey(key, true);
}

bool LookMoveTool::OnKeyUp(KeyID key) {
  LookTool::OnKeyUp(key);
  return SetSlideKey(key, false);
}

bool LookMoveTool::SetSlideKey(KeyID key, bool down) {
  if (!operating) return false;
  switch (key) {
    case KEY_RIGHT:
      slideKeyA = down;
      break;
    case KEY_LEFT:
      slideKeyB = down;
      break;
    case KEY_UP:
      slideKeyC = down;
      break;
    case KEY_DOWN:
      slideKeyD = down;
      break;
    default:
      return false;
  }
  UpdateSlide();
  return true;
}

void LookMoveTool::UpdateSlide() {
  if (cameraOperations == nullptr) return;
  const double step = speedFactor * PIXELS_AT_FULL_SPEED;
  const int x = Truncate((slideKeyA - slideKeyB) * step);
  const int y = Truncate((slideKeyC - slideKeyD) * step);
  cameraOperations->UpdateOperationParams(x, y, OPERATION_SLIDE);
}

}  // namespace Korvane
