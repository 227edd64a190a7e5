#pragma once

#include <cmath>
#include <compare>
#include <limits>

// The geometry that a host of the facade works with: points, directions, boxes and angles, as plain values.
//
// They stand in for a host's own types, which know all the rest: there is no arithmetic here. A host teaches
// them its vectors by a qmTraits of its own; from then on each goes where the other is asked for.

/// Tells of a host's own vector type that it stands for two or three doubles. Specialise it:
///
///     template <>
///     struct qmTraits<MyVector> {
///       static constexpr int dimension = 3;  // or 2
///       static double get(const MyVector& v, int index) { return v[index]; }
///       static MyVector make(double x, double y, double z) { return MyVector(x, y, z); }
///     };
template <class Own>
struct qmTraits {
  static constexpr int dimension = 0;
};

template <class Own, int dimension>
concept qmOwnVector = qmTraits<Own>::dimension == dimension;

/// Two doubles. What points and vectors of the plane have in common; `Self` keeps the kinds apart.
template <class Self>
class qmComponents2 {
 public:
  constexpr double x() const { return components[0]; }
  constexpr double y() const { return components[1]; }

  template <qmOwnVector<2> Own>
  constexpr operator Own() const {  // NOLINT(google-explicit-constructor)
    return qmTraits<Own>::make(x(), y());
  }

  /// Exact, as with every type here; a NaN is equal to nothing.
  constexpr bool operator==(const qmComponents2&) const = default;

 protected:
  constexpr qmComponents2() = default;
  constexpr qmComponents2(double x, double y) : components{x, y} {}
  template <qmOwnVector<2> Own>
  explicit constexpr qmComponents2(const Own& own)
      : components{qmTraits<Own>::get(own, 0), qmTraits<Own>::get(own, 1)} {}

 private:
  double components[2] = {0.0, 0.0};
};

/// The same in space.
template <class Self>
class qmComponents3 {
 public:
  constexpr double x() const { return components[0]; }
  constexpr double y() const { return components[1]; }
  constexpr double z() const { return components[2]; }

  template <qmOwnVector<3> Own>
  constexpr operator Own() const {  // NOLINT(google-explicit-constructor)
    return qmTraits<Own>::make(x(), y(), z());
  }

  constexpr bool operator==(const qmComponents3&) const = default;

 protected:
  constexpr qmComponents3() = default;
  constexpr qmComponents3(double x, double y, double z) : components{x, y, z} {}
  template <qmOwnVector<3> Own>
  explicit constexpr qmComponents3(const Own& own)
      : components{qmTraits<Own>::get(own, 0), qmTraits<Own>::get(own, 1), qmTraits<Own>::get(own, 2)} {}

 private:
  double components[3] = {0.0, 0.0, 0.0};
};

/// A place in the plane: viewport pixels, origin at the bottom left, y upward, unless told otherwise.
class qmPoint2 : public qmComponents2<qmPoint2> {
 public:
  /// The origin.
  constexpr qmPoint2() = default;
  constexpr qmPoint2(double x, double y) : qmComponents2(x, y) {}
  template <qmOwnVector<2> Own>
  constexpr qmPoint2(const Own& own) : qmComponents2(own) {}  // NOLINT(google-explicit-constructor)

  /// On the way to `other`: 0 is here and 1 there, both exactly if both are finite; beyond them the line goes
  /// on.
  constexpr qmPoint2 interpolate(const qmPoint2& other, double t) const {
    return {(1.0 - t) * x() + t * other.x(), (1.0 - t) * y() + t * other.y()};
  }
};

/// A place in space, world units, right-handed.
class qmPoint3 : public qmComponents3<qmPoint3> {
 public:
  /// The origin.
  constexpr qmPoint3() = default;
  constexpr qmPoint3(double x, double y, double z) : qmComponents3(x, y, z) {}
  template <qmOwnVector<3> Own>
  constexpr qmPoint3(const Own& own) : qmComponents3(own) {}  // NOLINT(google-explicit-constructor)

  /// As that of qmPoint2.
  constexpr qmPoint3 interpolate(const qmPoint3& other, double t) const {
    return {(1.0 - t) * x() + t * other.x(), (1.0 - t) * y() + t * other.y(),
            (1.0 - t) * z() + t * other.z()};
  }
};

/// A way in the plane, of any length.
class qmVector2 : public qmComponents2<qmVector2> {
 public:
  constexpr qmVector2(double x, double y) : qmComponents2(x, y) {}
  template <qmOwnVector<2> Own>
  constexpr qmVector2(const Own& own) : qmComponents2(own) {}  // NOLINT(google-explicit-constructor)
};

/// A way in space, of any length.
class qmVector3 : public qmComponents3<qmVector3> {
 public:
  /// Zero.
  constexpr qmVector3() = default;
  constexpr qmVector3(double x, double y, double z) : qmComponents3(x, y, z) {}
  template <qmOwnVector<3> Own>
  constexpr qmVector3(const Own& own) : qmComponents3(own) {}  // NOLINT(google-explicit-constructor)
};

/// How unit vectors come to their length.
struct qmUnitLength {
  /// A way not longer than this has no direction.
  static constexpr double shortest = 1.1920928955078125e-7;
  /// What is so near to 1, squared, is left as it is, so that a direction keeps its bits on every further
  /// way.
  static constexpr double tolerance = 8.8817841970012523e-16;

  /// What to divide by: 1 for what is of unit length, 0 for what has no direction.
  static double divisor(double length_squared) {
    if (std::abs(length_squared - 1.0) <= tolerance) return 1.0;
    const double length = std::sqrt(length_squared);
    return length > shortest && length <= std::numeric_limits<double>::max() ? length : 0.0;
  }
};

/// A direction in the plane: of length 1 to the last few bits, or zero where there is none.
class qmUnitVec2 : public qmComponents2<qmUnitVec2> {
 public:
  /// The direction of a way. Zero, and never a NaN, for a way that has none: one that is not longer than
  /// qmUnitLength::shortest, or whose squared length is not finite, as from about 1.3e154 on.
  explicit qmUnitVec2(const qmVector2& way) : qmUnitVec2(way, qmUnitLength::divisor(squared(way))) {}

 private:
  qmUnitVec2(const qmVector2& way, double divisor)
      : qmComponents2(divisor == 0.0 ? 0.0 : way.x() / divisor, divisor == 0.0 ? 0.0 : way.y() / divisor) {}
  static double squared(const qmVector2& way) { return way.x() * way.x() + way.y() * way.y(); }
};

/// A direction in space, likewise.
class qmUnitVec3 : public qmComponents3<qmUnitVec3> {
 public:
  /// No direction: zero.
  constexpr qmUnitVec3() = default;
  explicit qmUnitVec3(const qmVector3& way) : qmUnitVec3(way, qmUnitLength::divisor(squared(way))) {}

 private:
  qmUnitVec3(const qmVector3& way, double divisor)
      : qmComponents3(divisor == 0.0 ? 0.0 : way.x() / divisor, divisor == 0.0 ? 0.0 : way.y() / divisor,
                      divisor == 0.0 ? 0.0 : way.z() / divisor) {}
  static double squared(const qmVector3& way) {
    return way.x() * way.x() + way.y() * way.y() + way.z() * way.z();
  }
};

/// A rectangle by its low and its high corner, which are kept as given, also where they are the wrong way
/// round.
class qmBox2 {
 public:
  constexpr qmBox2(const qmPoint2& low, const qmPoint2& high) : corners{low, high} {}

  constexpr const qmPoint2& low() const { return corners[0]; }
  constexpr const qmPoint2& high() const { return corners[1]; }

  constexpr bool operator==(const qmBox2&) const = default;

 private:
  qmPoint2 corners[2];
};

/// A box along the axes, likewise.
class qmBox3 {
 public:
  /// Nothing but the origin; where bounds are asked for, an empty box.
  constexpr qmBox3() = default;
  constexpr qmBox3(const qmPoint3& low, const qmPoint3& high) : corners{low, high} {}

  constexpr const qmPoint3& low() const { return corners[0]; }
  constexpr const qmPoint3& high() const { return corners[1]; }

  constexpr bool operator==(const qmBox3&) const = default;

 private:
  qmPoint3 corners[2];
};

/// The units of an angle, which say what a bare number is.
enum qmAngleUnit : int { qmAngleDegrees, qmAngleRadians };

/// An angle that keeps the unit in which it was given: asked for in that one it is the number of before, bit
/// for bit, and otherwise it is within two units of the last place of a double.
class qmAngle {
 public:
  constexpr qmAngle(double value, qmAngleUnit unit) : number(value), given(unit) {}

  constexpr double angle(qmAngleUnit unit) const {
    if (unit == given) return number;
    return number * (unit == qmAngleDegrees ? DEGREES_PER_RADIAN : RADIANS_PER_DEGREE);
  }

  /// Of one unit, as the numbers are; of two, in radians.
  constexpr bool operator==(const qmAngle& other) const {
    return given == other.given ? number == other.number : radians() == other.radians();
  }
  constexpr std::partial_ordering operator<=>(const qmAngle& other) const {
    return given == other.given ? number <=> other.number : radians() <=> other.radians();
  }

 private:
  constexpr double radians() const { return angle(qmAngleRadians); }

  static constexpr double DEGREES_PER_RADIAN = 57.29577951308232;
  static constexpr double RADIANS_PER_DEGREE = 0.017453292519943295;

  double number;
  qmAngleUnit given;
};
