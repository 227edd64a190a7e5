#include "focus/cube_steps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "korvane/math.h"

namespace zovhost {

using Korvane::Math;
using Korvane::Vector3;

namespace {

constexpr int MERIDIANS = 8;
constexpr int POLE = 2;        // levels count from the equator
constexpr double STEEP = 0.8;  // the sine from which on a view looks at a pole

struct Place {
  int level = 0;
  int meridian = 0;  // of a pole any
};

int ToStep(double value) { return static_cast<int>(std::lround(value)); }

double GetAngle(int meridian) { return meridian * 2.0 * Math::PI / MERIDIANS; }

Place ToPlace(const Vector3& direction) {
  const int level = ToStep(direction.y);
  if (direction.x == 0.0 && direction.z == 0.0) return {level * POLE, 0};
  const double angle = std::atan2(direction.z, direction.x);
  const int meridian = ToStep(angle * MERIDIANS / (2.0 * Math::PI));
  return {level, (meridian + MERIDIANS) % MERIDIANS};
}

Vector3 ToDirection(const Place& place) {
  const int level = std::clamp(place.level, -1, 1);
  if (std::abs(place.level) == POLE) return {0.0, static_cast<double>(level), 0.0};
  const double angle = GetAngle(place.meridian);
  return {std::round(std::cos(angle)), static_cast<double>(level), std::round(std::sin(angle))};
}

// What a view shows of the cube: the screen's right and up.
struct View {
  View(const CubeAxes& cube, const Korvane::CameraParameters& camera) : axes(cube) {
    forward = (camera.centre - camera.eye).Normalized();
    right = forward.Cross(camera.up).Normalized();
    up = right.Cross(forward);
  }

  Vector3 GetOutward(int meridian) const {
    const double angle = GetAngle(meridian);
    return axes.front * std::cos(angle) + axes.left * std::sin(angle);
  }
  Vector3 GetTangent(int meridian) const {
    const double angle = GetAngle(meridian);
    return axes.left * std::cos(angle) - axes.front * std::sin(angle);
  }
  double GetAlong(const Vector3& way, FocusStep step) const {
    return way.Dot(right) * step.right + way.Dot(up) * step.up;
  }
  bool IsSteep() const { return std::abs(forward.Dot(axes.top)) > STEEP; }
  int GetPoleInSight() const { return forward.Dot(axes.top) < 0.0 ? 1 : -1; }
  int GetSenseOfUp() const { return up.Dot(axes.top) < 0.0 ? -1 : 1; }

  CubeAxes axes;
  Vector3 forward;
  Vector3 right;
  Vector3 up;
};

template <class Measure>
int FindMeridian(const Measure& measure) {
  int best = 0;
  double most = -std::numeric_limits<double>::infinity();
  for (int i = 0; i < MERIDIANS; ++i) {
    if (measure(i) > most + Math::EPSILON_VALUE) {
      most = measure(i);
      best = i;
    }
  }
  return best;
}

int Turn(int meridian, int by) { return (meridian + by + MERIDIANS) % MERIDIANS; }

// Rings around the pole in sight: what leads outward goes on outward behind the edge of what shows.
Place StepAroundPole(const Place& place, FocusStep step, const View& view) {
  const int pole = view.GetPoleInSight();
  if (std::abs(place.level) == POLE) {
    const int sense = place.level == pole * POLE ? 1 : -1;
    const int meridian = FindMeridian([&](int i) { return sense * view.GetAlong(view.GetOutward(i), step); });
    return {place.level / POLE, meridian};
  }
  const double outward = view.GetAlong(view.GetOutward(place.meridian), step);
  const double around = view.GetAlong(view.GetTangent(place.meridian), step);
  if (std::abs(around) > std::abs(outward)) return {place.level, Turn(place.meridian, around > 0.0 ? 1 : -1)};
  return {place.level + (outward > 0.0 ? -pole : pole), place.meridian};
}

// Over a pole to what lies beyond it, as the view shows it.
Place LeavePole(const Place& place, FocusStep step, const View& view) {
  const Vector3 away = view.forward - view.axes.top * view.forward.Dot(view.axes.top);
  const int sense = (place.level > 0 ? 1 : -1) * view.GetSenseOfUp();
  const int meridian = FindMeridian([&](int i) {
    const Vector3 outward = view.GetOutward(i);
    return outward.Dot(view.right) * step.right + outward.Dot(away) * step.up * sense;
  });
  return {place.level / POLE, meridian};
}

Place StepAlong(const Place& place, FocusStep step, const View& view) {
  if (std::abs(place.level) == POLE) return LeavePole(place, step, view);
  if (step.up != 0) return {place.level + step.up * view.GetSenseOfUp(), place.meridian};
  // As it goes on the side that faces the eye.
  const int facing = FindMeridian([&](int i) { return -view.GetOutward(i).Dot(view.forward); });
  const double sense = view.GetTangent(facing).Dot(view.right) * step.right;
  return {place.level, Turn(place.meridian, sense > 0.0 ? 1 : -1)};
}

}  // namespace

Vector3 StepOnCube(const Vector3& direction, FocusStep step, const CubeAxes& axes,
                   const Korvane::CameraParameters& camera) {
  const View view(axes, camera);
  const Place place = ToPlace(direction);
  return ToDirection(view.IsSteep() ? StepAroundPole(place, step, view) : StepAlong(place, step, view));
}

}  // namespace zovhost
