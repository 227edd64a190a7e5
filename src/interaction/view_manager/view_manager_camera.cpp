// The view manager's own camera moves, each one record of the rewind history.
#include <cmath>

#include "camera/camera_frame.h"
#include "camera/host_camera.h"
#include "camera/scene_bounds.h"
#include "interaction/tools/pivot_marker.h"
#include "interaction/view_manager/view_manager_observers.h"
#include "korvane/pivot_ball.h"
#include "korvane/rewind_record.h"
#include "korvane/view_manager.h"

namespace Korvane {

// The record closes when the shot of the move ends. Where the move begins none it closes at once, and a shot
// that ran before stays with whoever watches it. A hook of the host may put all of that away, or begin
// another move of this view manager, which then has the shot.
template <class Move>
bool ViewManager::Record(CameraOperations& hub, const CameraParameters& camera, Move move) {
  if (!camera.IsFinite() || cameraOperations != &hub) return false;
  RewindHistory* const history = GetRewindHistory();
  RewindRecord record;
  record.Begin(history, camera);
  if (cameraOperations != &hub) {
    record.End(camera);
    return false;
  }
  bool result = false;
  const auto begin = [&] { result = move(hub); };
  const auto isStillMine = [&] { return cameraOperations == &hub && record.IsOpenIn(GetRewindHistory()); };
  ViewManagerRewindShotObserver* const observer = rewindShotObserver.get();
  if (observer == nullptr) begin();
  if (observer != nullptr && observer->Watch(hub, begin, isStillMine)) {
    record.Forget();
    observer->SetHistory(history);
  } else {
    record.End(&hub);
  }
  return result;
}

template <class Move>
bool ViewManager::Fit(Move move) {
  CameraOperations* const hub = cameraOperations;
  if (hub == nullptr) return false;
  const CameraParameters camera = QueryCamera(*hub);
  const bool result = Record(*hub, camera, move);
  if (!camera.IsFinite()) return false;
  FitPivotBall(pivotBall.get(), camera);
  return result;
}

bool ViewManager::FitAllToView() {
  return Fit([](CameraOperations& hub) { return hub.FitAllToView(); });
}

bool ViewManager::FitSelectionToView() {
  return Fit([](CameraOperations& hub) { return hub.FitSelectionToView(); });
}

bool ViewManager::FitBoundsToView(const Vector3& centre, double radius) {
  if (!centre.IsFinite() || !std::isfinite(radius)) return false;
  return Fit([&](CameraOperations& hub) { return hub.TransitionCameraToFitBoundingSphere(centre, radius); });
}

bool ViewManager::FitBoundBoxToView(const Vector3& centre, Box3 box) {
  if (!centre.IsFinite() || !IsFinite(box)) return false;
  return Fit([&](CameraOperations& hub) { return hub.TransitionCameraToFitBoundingBox(centre, box); });
}

bool ViewManager::FitToView() { return FitSelectionToView(); }

bool ViewManager::LevelCamera() {
  CameraOperations* const hub = cameraOperations;
  if (hub == nullptr) return false;
  const CameraParameters camera = QueryCamera(*hub);
  const Vector3 sceneUp = hub->GetApplicationParameters().scene_up_direction.Normalized();
  const Vector3 direction = ViewDirection(camera);
  const double distance = ViewingDistance(camera);
  const bool isUpright = 1.0 - std::abs(direction.Dot(sceneUp)) > Math::EPSILON_VALUE;
  const Vector3 level =
      isUpright ? sceneUp.Cross(direction.Cross(sceneUp)).Normalized() : camera.up.Normalized();

  TransitionShotParameters shot;
  shot.targetCamera = camera;
  shot.targetCamera.centre = camera.eye + level * distance;
  shot.targetCamera.up = sceneUp;
  shot.easeEnd = 1.0;
  shot.duration = 0.5;
  if (!shot.targetCamera.IsFinite()) return false;
  return Record(*hub, camera, [&shot](CameraOperations& mover) { return mover.BeginShot(shot); });
}

bool ViewManager::RestoreCenter(const Vector3& point) {
  CameraOperations* const hub = cameraOperations;
  if (hub == nullptr || !point.IsFinite()) return false;
  CenterShotParameters shot;
  shot.point = point;
  shot.easeEnd = 1.0;
  shot.duration = 1.0;
  return Record(*hub, QueryCamera(*hub), [&shot](CameraOperations& mover) { return mover.BeginShot(shot); });
}

bool ViewManager::MoveCamera(const std::function<bool(CameraOperations&)>& move) {
  CameraOperations* const hub = cameraOperations;
  if (hub == nullptr || !move) return false;
  const CameraParameters camera = QueryCamera(*hub);
  return Record(*hub, camera, move);
}

}  // namespace Korvane
