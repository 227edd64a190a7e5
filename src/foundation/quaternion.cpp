#include "korvane/quaternion.h"

#include <algorithm>
#include <cmath>

namespace Korvane {

namespace {

// Below this a quaternion's length, or the angle of an arc, counts as nothing.
constexpr double SMALLEST = 1e-5;

int LargestDiagonal(const Vector3 m[3]) {
  int i = 0;
  if (m[1][1] > m[0][0]) i = 1;
  if (m[2][2] > m[i][i]) i = 2;
  return i;
}

Vector3 UnitPerpendicular(const Vector3& v) {
  return (std::abs(v.x) >= std::abs(v.y) ? Vector3(-v.z, 0.0, v.x) : Vector3(0.0, v.z, -v.y)).Normalized();
}

}  // namespace

const Quaternion Quaternion::IDENTITY(1.0, 0.0, 0.0, 0.0);
const Quaternion Quaternion::ZERO(0.0, 0.0, 0.0, 0.0);
const int Quaternion::ms_iNext[3] = {1, 2, 0};

void Quaternion::FromRotationMatrix(const Vector3 m[3]) {
  const double trace = m[0][0] + m[1][1] + m[2][2];
  if (trace > 0.0) {
    const double s = std::sqrt(trace + 1.0);
    const double t = 0.5 / s;
    *this = Quaternion(s / 2.0, (m[2][1] - m[1][2]) * t, (m[0][2] - m[2][0]) * t, (m[1][0] - m[0][1]) * t);
    return;
  }
  const int i = LargestDiagonal(m);
  const int j = ms_iNext[i];
  const int k = ms_iNext[j];
  const double s = std::sqrt(m[i][i] - m[j][j] - m[k][k] + 1.0);
  const double t = 0.5 / s;
  w = (m[k][j] - m[j][k]) * t;
  (*this)[1 + i] = s / 2.0;
  (*this)[1 + j] = (m[i][j] + m[j][i]) * t;
  (*this)[1 + k] = (m[i][k] + m[k][i]) * t;
}

void Quaternion::ToRotationMatrix(double* matrix) const {
  Vector3 rows[3];
  ToRotationMatrix(rows);
  for (int i = 0; i < 3; ++i) rows[i].ToArray(matrix + 3 * i);
}

Quaternion Quaternion::Align(const Vector3& from, const Vector3& to) {
  const Vector3 bisector = (from + to).Normalize();
  const double w = from.Dot(bisector);
  const Vector3 v = w == 0.0 ? UnitPerpendicular(from) : bisector.Cross(from);
  return {w, v.x, v.y, v.z};
}

double Quaternion::Normalize() {
  const double length = Length();
  if (!(length > SMALLEST) || !std::isfinite(length)) {
    *this = ZERO;
    return 0.0;
  }
  *this = *this / length;
  return length;
}

Quaternion Quaternion::Inverse() const {
  const double squaredLength = Dot(*this);
  if (!(squaredLength > 0.0)) return ZERO;
  return Quaternion(w, -x, -y, -z) / squaredLength;
}

void Quaternion::Slerp(double t, const Quaternion& p, const Quaternion& q) {
  const double dot = std::clamp(p.Dot(q), -1.0, 1.0);
  const double cosine = std::abs(dot);
  const Quaternion end = dot < 0.0 ? -q : q;
  const double angle = std::acos(cosine);
  if (!(angle >= SMALLEST)) {
    *this = p * (1.0 - t) + end * t;
    return;
  }
  const double sine = std::sin(angle);
  *this = p * (std::sin((1.0 - t) * angle) / sine) + end * (std::sin(t * angle) / sine);
}

}  // namespace Korvane
