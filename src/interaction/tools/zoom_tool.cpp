#include "korvane/zoom_tool.h"

#include "camera/camera_frame.h"
#include "camera/pixels.h"
#include "camera/view_size.h"
#include "camera/zoom_operation.h"
#include "interaction/tools/pivot_marker.h"
#include "interaction/tools/rewind_record.h"
#include "render/scene_pick.h"

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

ZoomTool::ZoomTool() { SetCursorID(CURSOR_ZOOM); }
ZoomTool::~ZoomTool() = default;

bool ZoomTool::OnMouseDown(int x, int y) {
  const bool result = Tool::OnMouseDown(x, y);
  return animating ? result : BeginZoom(x, y);
}

bool ZoomTool::OnMouseMove(int x, int y) {
  const bool result = Tool::OnMouseMove(x, y);
  if (animating || !mouseDragged) return result;
  return UpdateZoom(x, y);
}

bool ZoomTool::OnMouseUp(int x, int y) {
  const bool result = Tool::OnMouseUp(x, y);
  return animating ? result : EndZoom();
}

bool ZoomTool::BeginZoom(int x, int y) {
  if (operating || cameraOperations == nullptr || renderer == nullptr) return false;
  operating = true;
  savedParameters = cameraOperations->GetApplicationParameters();
  if (constrainZoom) LimitZoom();
  AnchorZoom(x, y);
  const int row = FlipRow(cameraOperations->GetApplicationParameters(), y);
  cameraOperations->BeginOperation(OPERATION_ZOOM, x, row);
  BeginRecord(rewindHistory, cameraOperations);
  return true;
}

void ZoomTool::LimitZoom() {
  ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  const CameraParameters camera = QueryCamera(*cameraOperations);
  const double farthest = DistanceToSee(camera, parameters.scene_bound_radius * REACH_IN_RADII);
  const double depth = (parameters.scene_bound_centre - camera.eye).Dot(ViewDirection(camera));
  parameters.zoom_back_distance = Math::Max(farthest - depth, 0.0);
  parameters.zoom_min_limit_motion = false;
}

void ZoomTool::AnchorZoom(int x, int y) {
  if (useCurrentPivotPoint) {
    cameraOperations->ConstrainPivotToViewport();
    PlacePivotBall(pivotBall, QueryCamera(*cameraOperations), true);
    return;
  }
  CameraParameters camera = QueryCamera(*cameraOperations);
  PickPoint(renderer, cameraOperations->GetApplicationParameters(), camera, x, y, camera.pivot);
  ApplyIfFinite(*cameraOperations, camera);
  PlacePivotBall(pivotBall, camera, true);
}

bool ZoomTool::UpdateZoom(int x, int y) {
  if (!operating || cameraOperations == nullptr) return false;
  const int row = FlipRow(cameraOperations->GetApplicationParameters(), y);
  cameraOperations->UpdateOperationParams(x, row, OPERATION_ZOOM);
  return true;
}

bool ZoomTool::EndZoom() {
  if (!operating) return false;
  operating = false;
  if (cameraOperations != nullptr) {
    RestoreParameters();
    cameraOperations->EndOperation(OPERATION_ZOOM);
  }
  if (!mouseDragged && clickZoomEnabled && cameraOperations != nullptr) {
    BeginClickShot();
    return true;
  }
  HidePivotBall(pivotBall);
  EndRecord(rewindHistory, cameraOperations);
  return true;
}

// The size of the viewport is the window's: it may have changed meanwhile, and nobody would write it again.
void ZoomTool::RestoreParameters() {
  ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  savedParameters.viewport_width = parameters.viewport_width;
  savedParameters.viewport_height = parameters.viewport_height;
  parameters = savedParameters;
}

// The record of the gesture stays open until the shot is over.
void ZoomTool::BeginClickShot() {
  ZoomShotParameters shot;
  shot.direction = shiftKeyDown ? ZoomShotParameters::DIRECTION_OUT : ZoomShotParameters::DIRECTION_IN;
  shot.anchor = TARGET_CAM_START;
  shot.duration = CLICK_DURATION;
  shot.amount = shiftKeyDown ? CLICK_OUT_AMOUNT : CLICK_IN_AMOUNT;
  animating = true;
  cameraOperations->BeginShot(shot);
}

void ZoomTool::OnDraw() {
  if (!operating && HasShotEnded()) {
    animating = false;
    HidePivotBall(pivotBall);
    EndRecord(rewindHistory, cameraOperations);
    Tool::OnDraw();
    return;
  }
  if (operating && constrainZoom) ChooseLimitNote();
  if (operating || animating) SampleRecord(rewindHistory, cameraOperations);
  Tool::OnDraw();
}

void ZoomTool::ChooseLimitNote() {
  if (cameraOperations == nullptr) return;
  const auto* const zoom =
      dynamic_cast<const ZoomOperation*>(cameraOperations->GetActiveOperation(OPERATION_ZOOM));
  if (zoom == nullptr) return;
  const double amount = zoom->GetUnitAmount();
  const double back = cameraOperations->GetApplicationParameters().zoom_back_distance;
  const bool farthest = back > 0.0 ? amount == -1.0 : amount == 0.0;
  viewportHUD = farthest ? maxZoomOutHUD : amount == 1.0 ? maxZoomInHUD : nullptr;
}

}  // namespace Korvane
