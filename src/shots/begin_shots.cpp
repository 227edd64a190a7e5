// The BeginShot forms of the hub: one for each kind of shot. They stand here because they know the classes.
#include <algorithm>
#include <cmath>

#include "foundation/out_of_memory.h"
#include "korvane/camera_operations.h"
#include "shots/center_shot.h"
#include "shots/closest_view_align_shot.h"
#include "shots/crane_shot.h"
#include "shots/keyframe_shot.h"
#include "shots/look_at_shot.h"
#include "shots/look_shot.h"
#include "shots/orbit_shot.h"
#include "shots/pan_zoom_shot.h"
#include "shots/projection_transition_shot.h"
#include "shots/spin_shot.h"
#include "shots/track_shot.h"
#include "shots/transition_shot.h"
#include "shots/view_align_shot.h"
#include "shots/zoom_rect_shot.h"
#include "shots/zoom_shot.h"

namespace Korvane {

namespace {

bool IsFinite(double value) { return std::isfinite(value); }
bool IsFinite(const Vector3& value) { return value.IsFinite(); }
bool IsFinite(const CameraParameters& value) { return value.IsFinite(); }

template <class... Values>
bool AreFinite(const Values&... values) {
  return (IsFinite(values) && ...);
}

// A record that would carry a bad number into the view is refused.
bool IsValid(const LookAtShotParameters& p) {
  return AreFinite(p.duration, p.point, p.direction, p.distance);
}
bool IsValid(const ZoomRectShotParameters& p) {
  return AreFinite(p.duration, p.sidewaysOffset, p.upwardOffset, p.forwardOffset);
}
bool IsValid(const ProjectionTransitionShotParameters& p) { return AreFinite(p.easeEnd, p.duration); }
bool IsValid(const PanZoomShotParameters& p) {
  return AreFinite(p.duration, p.sidewaysDistance, p.upwardDistance, p.zoomDistance);
}
bool IsValid(const CenterShotParameters& p) { return AreFinite(p.point, p.easeEnd, p.duration); }
bool IsValid(const KeyframeShotParameters& p) {
  const bool timesMatch = p.times.empty() || p.times.size() == p.keyframes.size();
  return !p.keyframes.empty() && timesMatch && IsFinite(p.duration) &&
         std::all_of(p.keyframes.begin(), p.keyframes.end(),
                     [](const CameraParameters& keyframe) { return IsFinite(keyframe); }) &&
         std::all_of(p.times.begin(), p.times.end(), [](double time) { return IsFinite(time); });
}
bool IsValid(const TransitionShotParameters& p) { return AreFinite(p.targetCamera, p.easeEnd, p.duration); }
bool IsValid(const ClosestViewAlignShotParameters& p) { return IsFinite(p.threshold); }
bool IsValid(const ViewAlignShotParameters& p) {
  return AreFinite(p.duration, p.rollAngle, p.panAngle, p.customDirection, p.customUp, p.customFront);
}
bool IsValid(const LookShotParameters& p) {
  return AreFinite(p.duration, p.horizontalAngle, p.verticalAngle);
}
bool IsValid(const SpinShotParameters& p) { return AreFinite(p.duration, p.angle); }
bool IsValid(const CraneShotParameters& p) {
  return AreFinite(p.duration, p.height, p.sidewaysDistance, p.forwardRatio);
}
bool IsValid(const OrbitShotParameters& p) {
  return AreFinite(p.duration, p.horizontalAngle, p.verticalAngle);
}
bool IsValid(const ZoomShotParameters& p) { return AreFinite(p.duration, p.amount); }
bool IsValid(const TrackShotParameters& p) { return AreFinite(p.duration, p.distance); }

template <class ConcreteShot, class Parameters>
Shot* MakeShot(const Parameters& parameters) {
  if (!IsValid(parameters)) return nullptr;
  return OrFail([&] { return static_cast<Shot*>(new ConcreteShot(parameters)); });
}

}  // namespace

bool CameraOperations::BeginShot(const LookAtShotParameters& p) { return BeginShot(MakeShot<LookAtShot>(p)); }
bool CameraOperations::BeginShot(const ZoomRectShotParameters& p) {
  return BeginShot(MakeShot<ZoomRectShot>(p));
}
bool CameraOperations::BeginShot(const ProjectionTransitionShotParameters& p) {
  return BeginShot(MakeShot<ProjectionTransitionShot>(p));
}
bool CameraOperations::BeginShot(const PanZoomShotParameters& p) {
  return BeginShot(MakeShot<PanZoomShot>(p));
}
bool CameraOperations::BeginShot(const CenterShotParameters& p) { return BeginShot(MakeShot<CenterShot>(p)); }
bool CameraOperations::BeginShot(const KeyframeShotParameters& p) {
  return BeginShot(MakeShot<KeyframeShot>(p));
}
bool CameraOperations::BeginShot(const TransitionShotParameters& p) {
  return BeginShot(MakeShot<TransitionShot>(p));
}
bool CameraOperations::BeginShot(const ClosestViewAlignShotParameters& p) {
  return BeginShot(MakeShot<ClosestViewAlignShot>(p));
}
bool CameraOperations::BeginShot(const ViewAlignShotParameters& p) {
  return BeginShot(MakeShot<ViewAlignShot>(p));
}
bool CameraOperations::BeginShot(const LookShotParameters& p) { return BeginShot(MakeShot<LookShot>(p)); }
bool CameraOperations::BeginShot(const SpinShotParameters& p) { return BeginShot(MakeShot<SpinShot>(p)); }
bool CameraOperations::BeginShot(const CraneShotParameters& p) { return BeginShot(MakeShot<CraneShot>(p)); }
bool CameraOperations::BeginShot(const OrbitShotParameters& p) { return BeginShot(MakeShot<OrbitShot>(p)); }
bool CameraOperations::BeginShot(const ZoomShotParameters& p) { return BeginShot(MakeShot<ZoomShot>(p)); }
bool CameraOperations::BeginShot(const TrackShotParameters& p) { return BeginShot(MakeShot<TrackShot>(p)); }

}  // namespace Korvane
