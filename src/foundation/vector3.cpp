#include "korvane/vector3.h"

#include <algorithm>

#include "korvane/quaternion.h"

namespace Korvane {

const Vector3 Vector3::Zero;

void Vector3::preventCollapse() {
  static const double shortest = std::sqrt(Math::EPSILON_VALUE);
  if (Length() < shortest) Normalize();
}

double Vector3::FindAngleWith(Vector3 other, Vector3 axis) {
  Normalize();
  other.Normalize();
  axis.Normalize();

  const double cosine = Dot(other);
  Vector3 normal = Cross(other).Normalize();
  if (normal.Length() < Math::EPSILON_VALUE) return cosine > 0.0 ? 0.0 : Math::PI;
  if (!(normal.Dot(axis) > 0.0)) normal = -normal;

  const double quarterTurn = 90.0;
  const Vector3 side =
      Quaternion::AxisAngle(normal, quarterTurn * Math::DEG_TO_RAD).Rotate(other).Normalize();

  double degrees = std::acos(std::clamp(cosine, -1.0, 1.0)) * Math::RAD_TO_DEG;
  if (std::abs(degrees - quarterTurn) <= Math::EPSILON_VALUE) degrees = quarterTurn;
  if (side.Dot(*this) > 0.0) degrees = -degrees;
  return degrees * Math::DEG_TO_RAD;
}

}  // namespace Korvane
