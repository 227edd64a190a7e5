#include "shots/keyframe_shot.h"

#include <cmath>

#include "shots/shot_math.h"

namespace Korvane {

bool KeyframeShot::PerformShot(double dt, CameraParameters& camera) {
  const std::vector<CameraParameters>& keyframes = parameters.keyframes;
  if (keyframes.empty()) return false;
  const bool goesOn = BeginLinearStep(parameters.duration);
  const double t = unitTime;
  const std::size_t last = keyframes.size() - 1;
  const double x = static_cast<double>(last) * t;

  auto from = static_cast<std::size_t>(std::floor(x));
  auto to = static_cast<std::size_t>(std::ceil(x));
  double weight = Math::LinearClamp(x, static_cast<double>(from), static_cast<double>(to));
  if (!parameters.times.empty()) {
    from = FindByTime(t, from);
    to = parameters.times[from] == t || from == last ? from : from + 1;
    weight = Math::LinearClamp(t, parameters.times[from], parameters.times[to]);
  }
  if (from == to) {
    camera = keyframes[to];
  } else {
    Blend(from, to, weight, camera);
  }
  return EndStep(dt, goesOn);
}

// The keyframe at or before a unit time, walked to from a first guess.
std::size_t KeyframeShot::FindByTime(double t, std::size_t index) const {
  const std::vector<double>& times = parameters.times;
  const std::size_t last = times.size() - 1;
  while (index > 0 && times[index] > t) --index;
  while (index < last && t > times[index] && t > times[index + 1]) ++index;
  return index;
}

void KeyframeShot::Blend(std::size_t fromIndex, std::size_t toIndex, double weight,
                         CameraParameters& camera) const {
  const CameraParameters& from = parameters.keyframes[fromIndex];
  const CameraParameters& to = parameters.keyframes[toIndex];
  camera.eye = Interpolate(weight, from.eye, to.eye);
  camera.centre = Interpolate(weight, from.centre, to.centre);
  camera.pivot = Interpolate(weight, from.pivot, to.pivot);
  camera.up = Interpolate(weight, from.up, to.up).Normalized();
  InterpolateLens(weight, from, to, camera);
}

}  // namespace Korvane
