#pragma once

#include <cmath>
#include <type_traits>

#include "korvane/export.h"
#include "korvane/math.h"

namespace Korvane {

/// Three doubles: a point or a direction in space, right-handed. A plain value.
struct ZOVTOOLS_API Vector3 {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  static const Vector3 Zero;

  constexpr Vector3() = default;
  explicit constexpr Vector3(double all) : x(all), y(all), z(all) {}
  constexpr Vector3(double xValue, double yValue, double zValue) : x(xValue), y(yValue), z(zValue) {}
  /// From three consecutive doubles or floats; `values` must not be null.
  template <class Number>
  requires std::is_floating_point_v<Number>
  explicit constexpr Vector3(const Number* values) : x(values[0]), y(values[1]), z(values[2]) {}

  /// Component 0, 1 or 2; any other index reads z.
  constexpr double& operator[](int index) { return index == 0 ? x : index == 1 ? y : z; }
  constexpr double operator[](int index) const { return index == 0 ? x : index == 1 ? y : z; }

  constexpr Vector3 operator+(const Vector3& v) const { return {x + v.x, y + v.y, z + v.z}; }
  constexpr Vector3 operator-(const Vector3& v) const { return {x - v.x, y - v.y, z - v.z}; }
  constexpr Vector3 operator-() const { return {-x, -y, -z}; }
  constexpr Vector3 operator*(double s) const { return {x * s, y * s, z * s}; }
  constexpr Vector3 operator/(double s) const { return {x / s, y / s, z / s}; }
  constexpr Vector3& operator+=(const Vector3& v) { return *this = *this + v; }
  constexpr Vector3& operator-=(const Vector3& v) { return *this = *this - v; }
  constexpr Vector3& operator*=(double s) { return *this = *this * s; }
  constexpr Vector3& operator/=(double s) { return *this = *this / s; }

  /// Exact, component by component.
  constexpr bool operator==(const Vector3& v) const { return x == v.x && y == v.y && z == v.z; }
  constexpr bool operator!=(const Vector3& v) const { return !(*this == v); }

  constexpr double Dot(const Vector3& v) const { return x * v.x + y * v.y + z * v.z; }
  constexpr Vector3 Cross(const Vector3& v) const {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
  }
  constexpr double LengthSquared() const { return Dot(*this); }
  double Length() const { return std::sqrt(LengthSquared()); }

  /// Divides by the length and returns this vector. A length not above the tolerance, or one that is
  /// not finite, turns the vector into zero, so a degenerate direction never becomes a NaN.
  Vector3& Normalize() {
    const double length = Length();
    const bool usable = length > Math::EPSILON_VALUE && length <= Math::MAX_VALUE;
    return *this = usable ? *this / length : Vector3();
  }

  /// A normalised copy; zero where Normalize gives zero.
  Vector3 Normalized() const { return Vector3(*this).Normalize(); }

  /// Keeps a shrinking direction at hand: a length below the square root of the tolerance is normalised in
  /// place (and is zero where Normalize gives zero); a longer vector keeps its scale.
  void preventCollapse();

  /// The signed angle in radians, -PI to PI, that leads from `other` to this vector, right-handed about
  /// `axis`. Normalises this vector in place. Parallel vectors give 0 and opposite ones PI, whatever the
  /// axis; a zero vector counts as opposite.
  double FindAngleWith(Vector3 other, Vector3 axis);

  bool IsFinite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }

  /// Three consecutive doubles or floats.
  template <class Number>
  void ToArray(Number* out) const {
    out[0] = static_cast<Number>(x);
    out[1] = static_cast<Number>(y);
    out[2] = static_cast<Number>(z);
  }
};

constexpr Vector3 operator*(double s, const Vector3& v) { return v * s; }

}  // namespace Korvane
