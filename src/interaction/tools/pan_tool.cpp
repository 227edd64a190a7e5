#include "korvane/pan_tool.h"

#include "camera/pixels.h"
#include "interaction/tools/rewind_record.h"
#include "render/scene_pick.h"

namespace Korvane {

PanTool::PanTool() { SetCursorID(CURSOR_PAN); }
PanTool::~PanTool() = default;

bool PanTool::OnMouseDown(int x, int y) {
  if (operating) OnMouseUp(mouseX, mouseY);  // its release went missing
  const bool result = Tool::OnMouseDown(x, y);
  if (!CanOperate()) return result;
  operating = true;
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  const CameraParameters found = QueryCamera(*cameraOperations);
  savedPivot = found.pivot;
  CameraParameters camera = found;
  PickPoint(renderer, parameters, camera, x, y, camera.pivot);
  ApplyIfFinite(*cameraOperations, camera);
  cameraOperations->BeginOperation(OPERATION_PAN, x, FlipRow(parameters, y));
  BeginRecord(rewindHistory, found);  // as the gesture will leave the pivot
  return true;
}

bool PanTool::OnMouseMove(int x, int y) {
  const bool result = Tool::OnMouseMove(x, y);
  if (!operating || cameraOperations == nullptr) return result;
  const int row = FlipRow(cameraOperations->GetApplicationParameters(), y);
  cameraOperations->UpdateOperationParams(x, row, OPERATION_PAN);
  return true;
}

bool PanTool::OnMouseUp(int x, int y) {
  const bool result = Tool::OnMouseUp(x, y);
  if (!operating) return result;
  operating = false;
  if (cameraOperations == nullptr) return true;
  cameraOperations->EndOperation(OPERATION_PAN);
  CameraParameters camera = QueryCamera(*cameraOperations);
  camera.pivot = savedPivot;
  ApplyIfFinite(*cameraOperations, camera);
  EndRecord(rewindHistory, cameraOperations);
  return true;
}

void PanTool::OnDraw() {
  Tool::OnDraw();
  if (operating) SampleRecord(rewindHistory, cameraOperations);
}

}  // namespace Korvane
