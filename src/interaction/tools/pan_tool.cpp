#include "korvane/pan_tool.h"

#include <utility>

#include "interaction/tools/tool_gesture.h"

namespace Korvane {

PanTool::PanTool() { SetCursorID(CURSOR_PAN); }
PanTool::~PanTool() = default;

bool PanTool::OnMouseDown(int x, int y) {
  return PressDrag(x, y, [&](Opening& opening) {
    CameraParameters found;
    CameraParameters camera;
    opening.Query(found)
        .Then([&] {
          savedPivot = {cameraOperations, found.pivot};
          camera = found;
        })
        .AnchorPivot(x, y, camera)
        .BeginOperation(OPERATION_PAN, x, y)
        .BeginRecord(found);  // as the gesture will leave the pivot
  });
}

bool PanTool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  return UpdateDrag(OPERATION_PAN, x, y);
}

bool PanTool::OnMouseUp(int x, int y) {
  return ReleaseDrag(x, y, [this](Closing& closing) {
    const BorrowedPivot pivot = std::exchange(savedPivot, {});
    closing.EndOperation(OPERATION_PAN).RestorePivot(pivot).EndRecord();
  });
}

void PanTool::OnDraw() { DrawDrag(); }

}  // namespace Korvane
