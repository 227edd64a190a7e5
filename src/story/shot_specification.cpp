#include "korvane/shot_specification.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "korvane/camera_operations.h"
#include "korvane/math.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

namespace {

void StoreFinite(double& place, double value) {
  if (std::isfinite(value)) place = value;
}

}  // namespace

ShotSpecification::ShotSpecification(const CameraParameters& start) { SetCameraParameters(start); }

void ShotSpecification::SetCameraParameters(const CameraParameters& value) {
  if (value.IsFinite()) camera = value;
}
void ShotSpecification::SetDuration(double value) { StoreFinite(duration, value); }
void ShotSpecification::SetInOutDistance(double value) { StoreFinite(inOutDistance, value); }
void ShotSpecification::SetLeftRightAngle(double value) { StoreFinite(leftRightAngle, value); }
void ShotSpecification::SetLeftRightDistance(double value) { StoreFinite(leftRightDistance, value); }
void ShotSpecification::SetTransitionDuration(double value) { StoreFinite(transitionDuration, value); }
void ShotSpecification::SetUpDownDistance(double value) { StoreFinite(upDownDistance, value); }
void ShotSpecification::SetUpDownAngle(double value) { StoreFinite(upDownAngle, value); }

double ShotSpecification::GetViewDistance() const { return (camera.centre - camera.eye).Length(); }

// ---- a recorded walk ----

void ShotSpecification::AddRecordedElement(const CameraParameters& seen, double time) {
  if (seen.IsFinite() && std::isfinite(time)) recordedElements.push_back({seen, time});
}

void ShotSpecification::AddRecordedElement(const RecordedElement& element) {
  AddRecordedElement(element.camera, element.time);
}

const ShotSpecification::RecordedElement& ShotSpecification::GetRecordedElement(std::uint64_t index) const {
  return recordedElements.at(static_cast<std::size_t>(std::min(index, GetRecordedElementCount())));
}

// ---- the move ----

/// How the move of each type begins.
struct ShotSpecification::Starters {
  using Starter = bool (*)(ShotSpecification& shot, CameraOperations& hub);

  template <std::int32_t DIRECTION>
  static bool Track(ShotSpecification& shot, CameraOperations& hub) {
    TrackShotParameters move;
    move.direction = DIRECTION;
    move.anchor = shot.cameraPosition;
    move.duration = shot.duration;
    move.distance = shot.leftRightDistance;
    move.keepTarget = shot.lookAtCenterOfInterest;
    return hub.BeginShot(move);
  }

  template <std::int32_t DIRECTION>
  static bool Zoom(ShotSpecification& shot, CameraOperations& hub) {
    shot.camera.pivot = shot.camera.centre;
    const double way = shot.GetViewDistance();
    ZoomShotParameters move;
    move.direction = DIRECTION;
    move.anchor = shot.cameraPosition;
    move.duration = shot.duration;
    move.amount = way < Math::EPSILON_VALUE ? 0.0 : shot.inOutDistance / way;
    return hub.BeginShot(move);
  }

  template <std::int32_t DIRECTION>
  static bool Crane(ShotSpecification& shot, CameraOperations& hub) {
    const double height = shot.upDownDistance;
    CraneShotParameters move;
    move.direction = DIRECTION;
    move.anchor = shot.cameraPosition;
    move.duration = shot.duration;
    move.height = height;
    move.sidewaysDistance = shot.leftRightDistance;
    move.forwardRatio = height < Math::EPSILON_VALUE ? 1.0 : shot.inOutDistance / height;
    move.keepTarget = shot.lookAtCenterOfInterest;
    return hub.BeginShot(move);
  }

  static bool Look(ShotSpecification& shot, CameraOperations& hub) {
    LookShotParameters move;
    move.anchor = shot.cameraPosition;
    move.duration = shot.duration;
    move.horizontalAngle = -shot.leftRightAngle;
    move.verticalAngle = -shot.upDownAngle;
    return hub.BeginShot(move);
  }

  static bool Orbit(ShotSpecification& shot, CameraOperations& hub) {
    OrbitShotParameters move;
    move.anchor = shot.cameraPosition;
    move.duration = shot.duration;
    move.horizontalAngle = shot.leftRightAngle;
    move.verticalAngle = shot.upDownAngle;
    return hub.BeginShot(move);
  }

  static bool PanZoom(ShotSpecification& shot, CameraOperations& hub) {
    PanZoomShotParameters move;
    move.anchor = shot.cameraPosition;
    move.duration = shot.duration;
    move.sidewaysDistance = shot.leftRightDistance;
    move.upwardDistance = shot.upDownDistance;
    move.zoomDistance = shot.GetViewDistance() * shot.inOutDistance;
    return hub.BeginShot(move);
  }

  static bool Still(ShotSpecification& shot, CameraOperations& hub) {
    TransitionShotParameters move;
    move.targetCamera = shot.camera;
    move.easeEnd = 1.0;
    move.duration = shot.duration;
    return hub.BeginShot(move);
  }

  // The keys run to 1. A walk without any time has them evenly spread.
  static bool RecordedWalk(ShotSpecification& shot, CameraOperations& hub) {
    if (shot.recordedElements.empty()) return Still(shot, hub);
    const double end = shot.recordedElements.back().time;
    KeyframeShotParameters move;
    move.duration = shot.duration;
    for (const RecordedElement& element : shot.recordedElements) {
      move.keyframes.push_back(element.camera);
      if (end != 0.0) move.times.push_back(element.time / end);
    }
    return hub.BeginShot(move);
  }

  static constexpr Starter BY_TYPE[SHOT_TYPE_COUNT] = {
      Track<TrackShotParameters::DIRECTION_LEFT>,
      Track<TrackShotParameters::DIRECTION_RIGHT>,
      Zoom<ZoomShotParameters::DIRECTION_IN>,
      Zoom<ZoomShotParameters::DIRECTION_OUT>,
      Crane<CraneShotParameters::DIRECTION_UP>,
      Crane<CraneShotParameters::DIRECTION_DOWN>,
      Look,
      Orbit,
      PanZoom,
      Still,
      RecordedWalk,
  };
};

bool ShotSpecification::BeginShot(CameraOperations* hub) {
  const int type = shotType;
  if (hub == nullptr || type < 0 || type >= SHOT_TYPE_COUNT) return false;
  return Starters::BY_TYPE[type](*this, *hub);
}

}  // namespace Korvane
