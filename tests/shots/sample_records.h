#pragma once

#include <tuple>

#include "korvane/shot_parameters.h"
#include "support/cameras.h"

/// One ordinary record of each kind, two seconds long, whose move shows from the second step on.
inline auto SampleRecords() {
  using namespace Korvane;
  ViewAlignShotParameters viewAlign;
  viewAlign.directionFlags[ViewAlignShotParameters::CAMERA_FRONT] = true;
  viewAlign.directionFlags[ViewAlignShotParameters::CAMERA_TOP] = true;
  viewAlign.duration = 2.0;
  viewAlign.fit = true;
  const CameraParameters target = LookAt({4, 5, 6}, {1, 1, 1}, {0, 1, 0});
  const KeyframeShotParameters keyframes{
      {LookAt({4, 5, 6}, {1, 1, 1}, {0, 1, 0}), LookAt({7, 5, 2}, {1, 2, 1}, {0, 1, 0}),
       LookAt({1, 9, 3}, {2, 1, 1}, {0, 1, 0})},
      {0.0, 0.25, 1.0},
      2.0};
  return std::make_tuple(
      LookAtShotParameters{0, 2.0, {1, 2, 3}, {1, 1, 0}, 4.0}, ZoomRectShotParameters{0, 2.0, 0.5, 0.25, 3.0},
      ProjectionTransitionShotParameters{1.0, 2.0, 1},
      PanZoomShotParameters{TARGET_CAM_MIDDLE, 2.0, 1.0, 2.0, 3.0}, CenterShotParameters{{1, 2, 3}, 1.0, 2.0},
      keyframes, TransitionShotParameters{target, 1.0, 2.0}, ClosestViewAlignShotParameters{true, true, 0.5},
      viewAlign, LookShotParameters{TARGET_CAM_START, 2.0, 40.0, 20.0},
      SpinShotParameters{SpinShotParameters::AXIS_WORLD_UP, TARGET_CAM_START, 2.0, 40.0},
      CraneShotParameters{CraneShotParameters::DIRECTION_UP, TARGET_CAM_START, 2.0, 2.0, 1.0, 1.5, false},
      OrbitShotParameters{TARGET_CAM_START, 2.0, 40.0, 20.0},
      ZoomShotParameters{ZoomShotParameters::DIRECTION_IN, TARGET_CAM_START, 2.0, 0.5},
      TrackShotParameters{TrackShotParameters::DIRECTION_RIGHT, TARGET_CAM_START, 2.0, 3.0, false});
}

/// Calls `call` with each of them.
template <class Call>
void ForEachSampleRecord(Call call) {
  std::apply([&](const auto&... record) { (call(record), ...); }, SampleRecords());
}
