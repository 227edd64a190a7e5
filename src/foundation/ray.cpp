#include "korvane/ray.h"

#include <cmath>

namespace Korvane {

bool Ray::IntersectTriangle(const Vector3 p[3], double& t) const {
  const Vector3 e1 = p[1] - p[0];
  const Vector3 e2 = p[2] - p[0];
  const Vector3 h = direction.Cross(e2);
  const double determinant = e1.Dot(h);
  if (!(std::abs(determinant) >= Math::EPSILON_VALUE)) return false;

  const Vector3 s = origin - p[0];
  const Vector3 q = s.Cross(e1);
  t = e2.Dot(q) / determinant;
  const double u = s.Dot(h) / determinant;
  const double v = direction.Dot(q) / determinant;
  return t > 0.0 && u >= 0.0 && v >= 0.0 && u + v <= 1.0;
}

bool Ray::IntersectQuad(const Vector3 q[4], double& t) const {
  const Vector3 first[3] = {q[0], q[1], q[2]};
  const Vector3 second[3] = {q[2], q[3], q[0]};
  double firstDistance = Math::MAX_VALUE;
  double secondDistance = Math::MAX_VALUE;
  const bool hit = IntersectTriangle(first, firstDistance) || IntersectTriangle(second, secondDistance);
  t = Math::Min(firstDistance, secondDistance);
  return hit;
}

}  // namespace Korvane
