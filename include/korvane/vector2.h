#pragma once

#include <cmath>

#include "korvane/math.h"

namespace Korvane {

/// Two doubles: a point, an offset or a size in a plane. A plain value.
struct Vector2 {
  double x = 0.0;
  double y = 0.0;

  constexpr Vector2() = default;
  explicit constexpr Vector2(double both) : x(both), y(both) {}
  constexpr Vector2(double xValue, double yValue) : x(xValue), y(yValue) {}

  /// Component 0 or 1; any other index reads y.
  constexpr double& operator[](int index) { return index == 0 ? x : y; }
  constexpr double operator[](int index) const { return index == 0 ? x : y; }

  constexpr Vector2 operator+(const Vector2& v) const { return {x + v.x, y + v.y}; }
  constexpr Vector2 operator-(const Vector2& v) const { return {x - v.x, y - v.y}; }
  constexpr Vector2 operator-() const { return {-x, -y}; }
  constexpr Vector2 operator*(double s) const { return {x * s, y * s}; }
  constexpr Vector2 operator/(double s) const { return {x / s, y / s}; }
  constexpr Vector2& operator+=(const Vector2& v) { return *this = *this + v; }
  constexpr Vector2& operator-=(const Vector2& v) { return *this = *this - v; }
  constexpr Vector2& operator*=(double s) { return *this = *this * s; }
  constexpr Vector2& operator/=(double s) { return *this = *this / s; }

  /// Exact, component by component.
  constexpr bool operator==(const Vector2& v) const { return x == v.x && y == v.y; }
  constexpr bool operator!=(const Vector2& v) const { return !(*this == v); }

  constexpr double Dot(const Vector2& v) const { return x * v.x + y * v.y; }
  constexpr double LengthSquared() const { return Dot(*this); }
  double Length() const { return std::sqrt(LengthSquared()); }

  /// Divides by the length; a length not above the tolerance, or one that is not finite, gives zero.
  Vector2& Normalize() {
    const double length = Length();
    const bool usable = length > Math::EPSILON_VALUE && length <= Math::MAX_VALUE;
    return *this = usable ? *this / length : Vector2();
  }

  /// A normalised copy; zero where Normalize gives zero.
  Vector2 Normalized() const { return Vector2(*this).Normalize(); }

  bool IsFinite() const { return std::isfinite(x) && std::isfinite(y); }

  /// Two consecutive doubles or floats.
  template <class Number>
  void ToArray(Number* out) const {
    out[0] = static_cast<Number>(x);
    out[1] = static_cast<Number>(y);
  }
};

constexpr Vector2 operator*(double s, const Vector2& v) { return v * s; }

}  // namespace Korvane
