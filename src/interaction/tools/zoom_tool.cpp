#include "korvane/zoom_tool.h"

#include "camera/camera_frame.h"
#include "camera/find_operation.h"
#include "camera/view_size.h"
#include "camera/zoom_operation.h"
#include "interaction/tools/tool_gesture.h"

namespace Korvane {

namespace {

constexpr double CLICK_DURATION = 0.5;  // seconds
constexpr double CLICK_IN_AMOUNT = 1.0 / 3.0;
constexpr double CLICK_OUT_AMOUNT = 0.5;
constexpr double REACH_IN_RADII = 4.0;  // of the scene: the view size at which a constrained zoom ends

// How far behind the centre of a sphere an eye stands that sees `reach` on both axes.
double DistanceToSee(const CameraParameters& camera, double reach) {
  if (camera.IsOrthographic()) return 2.0 * reach;
  const FrustumTangents tangents(camera);
  return Math::Max(reach / (tangents.left + tangents.right), reach / (tangents.top + tangents.bottom));
}

}  // namespace

ZoomTool::ZoomTool() {
  SetCursorID(CURSOR_ZOOM);
  SetGestureEnd([](Tool& tool) {
    auto& zoom = static_cast<ZoomTool&>(tool);
    zoom.mouseDragged = true;  // what is cut off is no click
    zoom.OnMouseUp(zoom.mouseX, zoom.mouseY);
  });
}
ZoomTool::~ZoomTool() = default;

bool ZoomTool::OnMouseDown(int x, int y) {
  NotePress(x, y);
  return animating || BeginZoom(x, y);
}

bool ZoomTool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  return animating || (mouseDragged && UpdateZoom(x, y));
}

bool ZoomTool::OnMouseUp(int x, int y) {
  NoteRelease(x, y);
  return animating || EndZoom();
}

bool ZoomTool::BeginZoom(int x, int y) {
  if (operating || !IsReady()) return false;
  Opening opening(*this);
  settings.Borrow(*cameraOperations);
  if (constrainZoom) LimitZoom(opening);
  opening.Then([&] { AnchorZoom(opening, x, y); }).BeginOperation(OPERATION_ZOOM, x, y).BeginRecord();
  return true;
}

void ZoomTool::LimitZoom(Steps& steps) {
  CameraParameters camera;
  steps.Query(camera).Then([&] {
    ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
    const double farthest = DistanceToSee(camera, parameters.scene_bound_radius * REACH_IN_RADII);
    const double depth = (parameters.scene_bound_centre - camera.eye).Dot(ViewDirection(camera));
    parameters.zoom_back_distance = Math::Max(farthest - depth, 0.0);
    parameters.zoom_min_limit_motion = false;
  });
}

void ZoomTool::AnchorZoom(Steps& steps, int x, int y) {
  CameraParameters camera;
  if (useCurrentPivotPoint) {
    steps.Then([&] { cameraOperations->ConstrainPivotToViewport(); }).Query(camera);
  } else {
    steps.Query(camera).AnchorPivot(x, y, camera);
  }
  steps.MarkPivot(camera);
}

bool ZoomTool::UpdateZoom(int x, int y) { return operating && UpdateDrag(OPERATION_ZOOM, x, y); }

bool ZoomTool::EndZoom() {
  if (!operating) return false;
  Closing closing(*this);
  closing.GiveBack(settings).EndOperation(OPERATION_ZOOM);
  if (closing && !mouseDragged && clickZoomEnabled && closing.LeaveRecord()) {
    BeginClickShot();
  } else {
    closing.HidePivotBall().EndRecord();
  }
  return true;
}

// The record of the gesture stays open until the shot is over.
void ZoomTool::BeginClickShot() {
  ZoomShotParameters shot;
  shot.direction = shiftKeyDown ? ZoomShotParameters::DIRECTION_OUT : ZoomShotParameters::DIRECTION_IN;
  shot.anchor = TARGET_CAM_START;
  shot.duration = CLICK_DURATION;
  shot.amount = shiftKeyDown ? CLICK_OUT_AMOUNT : CLICK_IN_AMOUNT;
  Flight(*this, shot);
}

void ZoomTool::OnDraw() {
  const Lifeline::Watch alive(GetLifeline());
  if (!operating && HasShotEnded()) {
    Closing(*this).HidePivotBall().EndRecord();
  } else {
    if (operating && constrainZoom) ChooseLimitNote();
    if (operating || animating) SampleRecord();
  }
  if (alive) DrawTool();
}

void ZoomTool::ChooseLimitNote() {
  const auto* const zoom = FindOperation<ZoomOperation>(cameraOperations, OPERATION_ZOOM);
  if (zoom == nullptr) return;
  const double amount = zoom->GetUnitAmount();
  const double back = cameraOperations->GetApplicationParameters().zoom_back_distance;
  const bool farthest = back > 0.0 ? amount == -1.0 : amount == 0.0;
  viewportHUD = farthest ? maxZoomOutHUD : amount == 1.0 ? maxZoomInHUD : nullptr;
}

}  // namespace Korvane
