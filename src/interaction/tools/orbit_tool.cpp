#include "korvane/orbit_tool.h"

#include "camera/pixels.h"
#include "interaction/tools/pivot_marker.h"
#include "interaction/tools/rewind_record.h"

namespace Korvane {

OrbitTool::OrbitTool() { SetCursorID(CURSOR_ORBIT); }
OrbitTool::~OrbitTool() = default;

bool OrbitTool::OnMouseDown(int x, int y) {
  if (operating) OnMouseUp(mouseX, mouseY);  // its release went missing
  const bool result = Tool::OnMouseDown(x, y);
  if (!CanOperate()) return result;
  operating = true;
  cameraOperations->ConstrainPivotToViewport();
  PlacePivotBall(pivotBall, QueryCamera(*cameraOperations), true);
  SetOrbitParameters();
  const int row = FlipRow(cameraOperations->GetApplicationParameters(), y);
  cameraOperations->BeginOperation(OPERATION_ORBIT, x, row);
  BeginRecord(rewindHistory, cameraOperations);
  return true;
}

void OrbitTool::SetOrbitParameters() {
  ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  savedPreserveUp = parameters.preserve_orbit_up_direction;
  savedAlignUp = parameters.align_orbit_up_direction;
  parameters.preserve_orbit_up_direction = fixedAxesOrbit || preserveSceneUp;
  parameters.align_orbit_up_direction = !fixedAxesOrbit && preserveSceneUp;
  if (!fixedAxesOrbit) return;
  parameters.do_custom_orbit = true;
  parameters.custom_orbit_front = cameraOperations->GetWorldFrontDirection();
  parameters.custom_orbit_up = cameraOperations->GetWorldUpDirection();
}

void OrbitTool::RestoreOrbitParameters() {
  ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  parameters.preserve_orbit_up_direction = savedPreserveUp;
  parameters.align_orbit_up_direction = savedAlignUp;
  if (fixedAxesOrbit) parameters.do_custom_orbit = false;
}

bool OrbitTool::OnMouseMove(int x, int y) {
  const bool result = Tool::OnMouseMove(x, y);
  if (!operating || cameraOperations == nullptr) return result;
  const int dragY = fixedAxesOrbit ? mouseDownY : y;  // the vertical axis stays still
  const int row = FlipRow(cameraOperations->GetApplicationParameters(), dragY);
  cameraOperations->UpdateOperationParams(x, row, OPERATION_ORBIT);
  return true;
}

bool OrbitTool::OnMouseUp(int x, int y) {
  const bool result = Tool::OnMouseUp(x, y);
  if (!operating) return result;
  operating = false;
  if (cameraOperations != nullptr) cameraOperations->EndOperation(OPERATION_ORBIT);
  HidePivotBall(pivotBall);
  EndRecord(rewindHistory, cameraOperations);
  if (cameraOperations != nullptr) RestoreOrbitParameters();
  return true;
}

void OrbitTool::OnDraw() {
  Tool::OnDraw();
  if (operating) SampleRecord(rewindHistory, cameraOperations);
}

}  // namespace Korvane
