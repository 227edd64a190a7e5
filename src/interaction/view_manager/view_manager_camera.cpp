// The view manager's own camera moves, each one record of the rewind history.
#include "camera/camera_frame.h"
#include "camera/host_camera.h"
#include "interaction/tools/rewind_record.h"
#include "interaction/view_manager/view_manager_observers.h"
#include "korvane/pivot_ball.h"
#include "korvane/view_manager.h"

namespace Korvane {

// The record closes when the shot ends. Where no shot runs, it closes at once.
void ViewManager::WatchShot() {
  RewindHistory* const history = GetRewindHistory();
  if (history == nullptr) return;
  if (cameraOperations->SetActiveShotObserver(rewindShotObserver.get())) {
    rewindShotObserver->SetWatching(true);
  } else {
    EndRecord(history, cameraOperations);
  }
}

template <class Move>
bool ViewManager::Fit(Move move) {
  if (cameraOperations == nullptr) return false;
  const CameraParameters camera = QueryCamera(*cameraOperations);
  BeginRecord(GetRewindHistory(), camera);
  const bool result = move(*cameraOperations);
  WatchShot();
  if (pivotBall != nullptr) {
    pivotBall->SetPosition(camera.pivot);
    pivotBall->UpdateSize(camera);
  }
  return result;
}

bool ViewManager::FitAllToView() {
  return Fit([](CameraOperations& hub) { return hub.FitAllToView(); });
}

bool ViewManager::FitSelectionToView() {
  return Fit([](CameraOperations& hub) { return hub.FitSelectionToView(); });
}

bool ViewManager::FitBoundsToView(const Vector3& centre, double radius) {
  return Fit([&](CameraOperations& hub) { return hub.TransitionCameraToFitBoundingSphere(centre, radius); });
}

bool ViewManager::FitBoundBoxToView(const Vector3& centre, Box3 box) {
  return Fit([&](CameraOperations& hub) { return hub.TransitionCameraToFitBoundingBox(centre, box); });
}

bool ViewManager::FitToView() { return FitSelectionToView(); }

bool ViewManager::LevelCamera() {
  if (cameraOperations == nullptr) return false;
  CameraParameters camera = QueryCamera(*cameraOperations);
  BeginRecord(GetRewindHistory(), camera);
  const Vector3 sceneUp = cameraOperations->GetApplicationParameters().scene_up_direction.Normalized();
  const Vector3 direction = ViewDirection(camera);
  const double distance = (camera.centre - camera.eye).Length();
  const bool isUpright = 1.0 - std::abs(direction.Dot(sceneUp)) > Math::EPSILON_VALUE;
  const Vector3 level =
      isUpright ? sceneUp.Cross(direction.Cross(sceneUp)).Normalized() : camera.up.Normalized();
  camera.centre = camera.eye + level * distance;
  camera.up = sceneUp;

  TransitionShotParameters shot;
  shot.targetCamera = camera;
  shot.easeEnd = 1.0;
  shot.duration = 0.5;
  cameraOperations->BeginShot(shot);
  WatchShot();
  return true;
}

bool ViewManager::RestoreCenter(const Vector3& point) {
  if (cameraOperations == nullptr) return false;
  BeginRecord(GetRewindHistory(), cameraOperations);
  CenterShotParameters shot;
  shot.point = point;
  shot.easeEnd = 1.0;
  shot.duration = 1.0;
  cameraOperations->BeginShot(shot);
  WatchShot();
  return true;
}

}  // namespace Korvane
