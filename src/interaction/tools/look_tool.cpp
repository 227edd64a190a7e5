#include "korvane/look_tool.h"

#include "camera/pixels.h"
#include "interaction/tools/rewind_record.h"

namespace Korvane {

LookTool::LookTool() { SetCursorID(CURSOR_LOOK); }
LookTool::~LookTool() = default;

bool LookTool::OnMouseDown(int x, int y) {
  if (operating) OnMouseUp(mouseX, mouseY);  // its release went missing
  const bool result = Tool::OnMouseDown(x, y);
  if (!CanOperate()) return result;
  operating = true;
  ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  savedInvertVerticalAxis = parameters.look_invert_vertical_axis;
  savedAlignUpDirection = parameters.align_orbit_up_direction;
  parameters.look_invert_vertical_axis = invertVerticalAxis;
  parameters.align_orbit_up_direction = alignUpDirection;
  cameraOperations->BeginOperation(OPERATION_LOOK, x, FlipRow(parameters, y));
  BeginRecord(rewindHistory, cameraOperations);
  return true;
}

bool LookTool::OnMouseMove(int x, int y) {
  const bool result = Tool::OnMouseMove(x, y);
  if (!operating || cameraOperations == nullptr) return result;
  const int row = FlipRow(cameraOperations->GetApplicationParameters(), y);
  cameraOperations->UpdateOperationParams(x, row, OPERATION_LOOK);
  return true;
}

bool LookTool::OnMouseUp(int x, int y) {
  const bool result = Tool::OnMouseUp(x, y);
  if (!operating) return result;
  operating = false;
  if (cameraOperations == nullptr) return true;
  cameraOperations->EndOperation(OPERATION_LOOK);
  EndRecord(rewindHistory, cameraOperations);
  ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  parameters.look_invert_vertical_axis = savedInvertVerticalAxis;
  parameters.align_orbit_up_direction = savedAlignUpDirection;
  return true;
}

void LookTool::OnDraw() {
  Tool::OnDraw();
  if (operating) SampleRecord(rewindHistory, cameraOperations);
}

}  // namespace Korvane
