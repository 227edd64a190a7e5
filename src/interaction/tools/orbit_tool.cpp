#include "korvane/orbit_tool.h"

#include "interaction/tools/tool_gesture.h"

namespace Korvane {

OrbitTool::OrbitTool() { SetCursorID(CURSOR_ORBIT); }
OrbitTool::~OrbitTool() = default;

bool OrbitTool::OnMouseDown(int x, int y) {
  return PressDrag(x, y, [&](Opening& opening) {
    CameraParameters camera;
    opening.Then([&] { cameraOperations->ConstrainPivotToViewport(); })
        .Query(camera)
        .MarkPivot(camera)
        .Then([&] { BorrowSettings(*cameraOperations); })
        .BeginOperation(OPERATION_ORBIT, x, y)
        .BeginRecord();
  });
}

void OrbitTool::BorrowSettings(CameraOperations& hub) {
  ApplicationParameters& parameters = hub.GetApplicationParameters();
  settings.Borrow(hub);
  parameters.preserve_orbit_up_direction = fixedAxesOrbit || preserveSceneUp;
  parameters.align_orbit_up_direction = !fixedAxesOrbit && preserveSceneUp;
  if (!fixedAxesOrbit) return;
  parameters.do_custom_orbit = true;
  parameters.custom_orbit_front = hub.GetWorldFrontDirection();
  parameters.custom_orbit_up = hub.GetWorldUpDirection();
}

bool OrbitTool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  return UpdateDrag(OPERATION_ORBIT, x, fixedAxesOrbit ? mouseDownY : y);  // the vertical axis stays still
}

bool OrbitTool::OnMouseUp(int x, int y) {
  return ReleaseDrag(x, y, [this](Closing& closing) {
    const bool custom = fixedAxesOrbit;
    auto lent = settings.Take();
    closing.EndOperation(OPERATION_ORBIT).HidePivotBall().EndRecord().GiveBack(lent);
    if (custom)
      closing.Then([](CameraOperations& hub) { hub.GetApplicationParameters().do_custom_orbit = false; });
  });
}

void OrbitTool::OnDraw() { DrawDrag(); }

}  // namespace Korvane
