#include "korvane/look_tool.h"

#include "interaction/tools/tool_gesture.h"

namespace Korvane {

LookTool::LookTool() { SetCursorID(CURSOR_LOOK); }
LookTool::~LookTool() = default;

bool LookTool::OnMouseDown(int x, int y) {
  return PressDrag(x, y, [&](Opening& opening) {
    settings.Borrow(*cameraOperations);
    ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
    parameters.look_invert_vertical_axis = invertVerticalAxis;
    parameters.align_orbit_up_direction = alignUpDirection;
    opening.BeginOperation(OPERATION_LOOK, x, y).BeginRecord();
  });
}

bool LookTool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  return UpdateDrag(OPERATION_LOOK, x, y);
}

bool LookTool::OnMouseUp(int x, int y) { return ReleaseLook(x, y); }

bool LookTool::ReleaseLook(int x, int y, std::optional<OperationType> beside) {
  if (!operating) {
    NoteRelease(x, y);
    return animating;
  }
  Closing closing(*this, Closing::PENDING);
  auto lent = settings.Take();
  if (beside) closing.EndOperation(*beside);
  if (closing) NoteRelease(x, y);
  closing.EndGesture();
  closing.EndOperation(OPERATION_LOOK).EndRecord().GiveBack(lent);
  return true;
}

void LookTool::OnDraw() { DrawDrag(); }

}  // namespace Korvane
