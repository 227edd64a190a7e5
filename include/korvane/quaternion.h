#pragma once

#include <cmath>

#include "korvane/export.h"
#include "korvane/vector3.h"

namespace Korvane {

/// A rotation as w + xi + yj + zk. A plain value.
///
/// Camera rotations are built from the three rows (view direction, up, right). `Rotate` multiplies by the
/// transpose of the rotation matrix on purpose: it then carries the unit vectors onto those rows. A
/// consequence to keep in mind: a quaternion from `FromAxisAngle(n, a)` turns a vector by -a about n in
/// the right-handed sense.
class ZOVTOOLS_API Quaternion {
 public:
  double w;
  double x;
  double y;
  double z;

  static const Quaternion IDENTITY;
  static const Quaternion ZERO;
  /// The component that follows each of 0, 1, 2 in the cycle x, y, z.
  static const int ms_iNext[3];

  /// Leaves the components untouched; assign before use.
  Quaternion() {}  // NOLINT(modernize-use-equals-default): must not zero the components
  constexpr Quaternion(double wValue, double xValue, double yValue, double zValue)
      : w(wValue), x(xValue), y(yValue), z(zValue) {}
  /// From a rotation matrix given by its three rows; see FromRotationMatrix.
  explicit Quaternion(const Vector3 rows[3]) { FromRotationMatrix(rows); }

  /// `angle` in radians. The axis is used as given: an axis that is not of unit length gives a quaternion
  /// that is not of unit length.
  void FromAxisAngle(const Vector3& axis, double angle) {
    const Vector3 v = axis * std::sin(angle / 2.0);
    *this = Quaternion(std::cos(angle / 2.0), v.x, v.y, v.z);
  }
  static Quaternion AxisAngle(const Vector3& axis, double angle) {
    Quaternion q;
    q.FromAxisAngle(axis, angle);
    return q;
  }

  /// From the rows of an orthonormal matrix, by its trace (K. Shoemake, "Animating rotation with
  /// quaternion curves", 1985). A matrix that is no rotation gives some quaternion, not an error.
  void FromRotationMatrix(const Vector3 rows[3]);
  /// The inverse mapping, as nine values row by row, or as three rows.
  void ToRotationMatrix(double* matrix) const;
  constexpr void ToRotationMatrix(Vector3 rows[3]) const {
    rows[0] = Vector3(1.0 - 2.0 * (y * y + z * z), 2.0 * (x * y - w * z), 2.0 * (x * z + w * y));
    rows[1] = Vector3(2.0 * (x * y + w * z), 1.0 - 2.0 * (x * x + z * z), 2.0 * (y * z - w * x));
    rows[2] = Vector3(2.0 * (x * z - w * y), 2.0 * (y * z + w * x), 1.0 - 2.0 * (x * x + y * y));
  }

  /// `v` times the transpose of the rotation matrix; see the class.
  constexpr Vector3 Rotate(const Vector3& v) const {
    Vector3 rows[3];
    ToRotationMatrix(rows);
    return rows[0] * v.x + rows[1] * v.y + rows[2] * v.z;
  }

  /// The quaternion whose Rotate carries `from` onto `to`, both of unit length. Opposite vectors turn by
  /// half a turn about some axis perpendicular to `from`.
  static Quaternion Align(const Vector3& from, const Vector3& to);

  /// Scales to unit length and returns the former length; a length not above 1e-5, or not finite,
  /// gives ZERO and 0.
  double Normalize();
  /// The conjugate over the squared length; ZERO when the squared length is not above 0.
  Quaternion Inverse() const;

  /// Stores the interpolation from `p` (t = 0) to `q` (t = 1) along the shorter arc. Not renormalised.
  void Slerp(double t, const Quaternion& p, const Quaternion& q);

  constexpr Quaternion operator*(const Quaternion& q) const {
    return {w * q.w - x * q.x - y * q.y - z * q.z, w * q.x + x * q.w + y * q.z - z * q.y,
            w * q.y + y * q.w + z * q.x - x * q.z, w * q.z + z * q.w + x * q.y - y * q.x};
  }
  constexpr Quaternion operator+(const Quaternion& q) const { return {w + q.w, x + q.x, y + q.y, z + q.z}; }
  constexpr Quaternion operator-() const { return {-w, -x, -y, -z}; }
  constexpr Quaternion operator*(double s) const { return {w * s, x * s, y * s, z * s}; }
  constexpr Quaternion operator/(double s) const { return {w / s, x / s, y / s, z / s}; }
  constexpr bool operator==(const Quaternion& q) const {
    return w == q.w && x == q.x && y == q.y && z == q.z;
  }

  constexpr double Dot(const Quaternion& q) const { return w * q.w + x * q.x + y * q.y + z * q.z; }
  double Length() const { return std::sqrt(Dot(*this)); }

  /// Component 0 to 3 in the order w, x, y, z; any other index reads z.
  constexpr double& operator[](int index) { return index == 0 ? w : index == 1 ? x : index == 2 ? y : z; }
  constexpr double operator[](int index) const {
    return index == 0 ? w : index == 1 ? x : index == 2 ? y : z;
  }
};

constexpr Quaternion operator*(double s, const Quaternion& q) { return q * s; }

}  // namespace Korvane
