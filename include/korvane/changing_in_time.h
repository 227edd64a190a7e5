#pragma once

#include <type_traits>
#include <vector>

#include "korvane/box2.h"
#include "korvane/export.h"
#include "korvane/timer.h"
#include "korvane/vector2.h"

namespace Korvane {

enum InterpolationMethod : int { INTERPOLATION_LINEAR = 0, INTERPOLATION_EASED = 1 };

/// A number that, once started, moves from an initial to a final value and reads right at any moment.
///
/// Nothing ticks: a value advances when it is read, by the time since its last read, which is why reading
/// is const and yet changes state. Copying a running value copies its clock, and the copy goes on by
/// itself. Arithmetic moves both ends and keeps a running animation in step. Times are in seconds.
class ZOVTOOLS_API ChangingInTimeValue {
 public:
  ChangingInTimeValue() = default;
  /// Rests at `value`.
  ChangingInTimeValue(double value) { SetValue(value); }  // NOLINT(google-explicit-constructor)
  /// Does not start.
  ChangingInTimeValue(double initial, double final, double time, InterpolationMethod method);
  ChangingInTimeValue(const ChangingInTimeValue&) = default;
  ChangingInTimeValue& operator=(const ChangingInTimeValue&) = default;
  ~ChangingInTimeValue() = default;

  /// Stops and rests at `value`.
  void SetValue(double value);
  /// Stops and stores; does not start.
  void SetValue(double initial, double final, double time, InterpolationMethod method);
  ChangingInTimeValue& operator=(double value);

  void Start();
  void Start(double initial, double final, double time, InterpolationMethod method);
  /// A stopped value jumps to its end.
  void Stop() { Rest(); }

  /// Advances by the time since the last read. Looks at the clock at most once; no allocation.
  double GetValue() const;
  operator double() const { return GetValue(); }  // NOLINT(google-explicit-constructor)

  /// Does not advance.
  bool IsChangingInTime() const { return changingInTime; }

  ChangingInTimeValue& operator*=(double d);
  ChangingInTimeValue& operator/=(double d);
  ChangingInTimeValue& operator+=(double d);
  ChangingInTimeValue& operator-=(double d);

 private:
  friend class ChangingInTimeValueChain;

  void Rest() const;
  // Starts and reads at the same moment.
  double StartAndRead() const;
  double GetValueNow() const;
  double GetLinearClampValue() const;
  double GetEaseClampValue() const;

  double finalValue = 0.0;  // also the value at rest
  double initialValue = 0.0;
  double totalTime = 0.0;
  mutable double elapsedTime = 0.0;
  mutable bool changingInTime = false;
  mutable Timer timer;  // the time between two reads
  InterpolationMethod interpolationMethod = INTERPOLATION_LINEAR;
};

/// Several values, one after another.
///
/// The clock of a chain starts at its first read after Start, however late that comes. A chain moves on
/// whenever its current value is at rest, started or not: a chain meant to rest holds one value;
/// SetValue on an empty chain makes it so.
class ZOVTOOLS_API ChangingInTimeValueChain {
 public:
  ChangingInTimeValueChain() = default;
  ChangingInTimeValueChain(double value) { SetValue(value); }  // NOLINT(google-explicit-constructor)
  ChangingInTimeValueChain(const ChangingInTimeValueChain&) = default;
  ChangingInTimeValueChain& operator=(const ChangingInTimeValueChain& source);
  ChangingInTimeValueChain& operator=(double value);
  ~ChangingInTimeValueChain() = default;

  /// Stops the chain and appends a copy.
  void Add(const ChangingInTimeValue& value);
  void Clear();
  int GetCount() const { return static_cast<int>(values.size()); }

  /// Nothing for an empty chain.
  void Start();
  void Stop();
  /// On an empty chain adds one value. Otherwise stops, and every value ends at the argument; a chain of
  /// several values, or one whose Start was not read yet, still moves there at its next reads.
  void SetValue(double value);

  /// 0 for an empty chain. No allocation.
  double GetValue() const;
  operator double() const { return GetValue(); }  // NOLINT(google-explicit-constructor)
  bool IsChangingInTime() const;

  ChangingInTimeValueChain& operator*=(double d);
  ChangingInTimeValueChain& operator/=(double d);
  ChangingInTimeValueChain& operator+=(double d);
  ChangingInTimeValueChain& operator-=(double d);

 private:
  bool IsAtLast() const { return currentIndex >= GetCount() - 1; }
  ChangingInTimeValue& Current() const;

  mutable bool running = false;
  mutable bool startPending = false;
  mutable int currentIndex = 0;
  mutable std::vector<ChangingInTimeValue> values;
};

/// The two classes that read as one number.
template <class Value>
concept ChangesInTime =
    std::is_same_v<Value, ChangingInTimeValue> || std::is_same_v<Value, ChangingInTimeValueChain>;

// With any built-in number: `value * 2` must not be torn between these operators and double's. The
// arithmetic copies the value, or the whole chain; read the number first where that is enough. A comparison
// reads, and so advances.
template <ChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number> Value operator*(const Value& value, Number number) {
  return Value(value) *= static_cast<double>(number);
}
template <ChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number> Value operator/(const Value& value, Number number) {
  return Value(value) /= static_cast<double>(number);
}
template <ChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number> Value operator+(const Value& value, Number number) {
  return Value(value) += static_cast<double>(number);
}
template <ChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number> Value operator-(const Value& value, Number number) {
  return Value(value) -= static_cast<double>(number);
}
template <ChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number>
bool operator<(const Value& value, Number number) { return value.GetValue() < static_cast<double>(number); }
template <ChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number>
bool operator<=(const Value& value, Number number) { return value.GetValue() <= static_cast<double>(number); }
template <ChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number>
bool operator>(const Value& value, Number number) { return value.GetValue() > static_cast<double>(number); }
template <ChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number>
bool operator>=(const Value& value, Number number) { return value.GetValue() >= static_cast<double>(number); }

/// Two chains side by side.
class ZOVTOOLS_API ChangingInTimeVector2 {
 public:
  ChangingInTimeVector2() = default;
  ChangingInTimeVector2(double xValue, double yValue) : x(xValue), y(yValue) {}

  operator Vector2() const;  // NOLINT(google-explicit-constructor)

  /// The other vector's current value is added to (taken from) each chain.
  ChangingInTimeVector2 operator+(const ChangingInTimeVector2& v) const;
  ChangingInTimeVector2 operator-(const ChangingInTimeVector2& v) const;
  ChangingInTimeVector2 operator+(double d) const;

  bool IsChangingInTime() const { return x.IsChangingInTime() || y.IsChangingInTime(); }

  ChangingInTimeValueChain x;
  ChangingInTimeValueChain y;
};

/// A rectangle of four chains: the centre and the half sizes.
class ZOVTOOLS_API ChangingInTimeBox2 {
 public:
  ChangingInTimeBox2() = default;

  operator Box2() const;  // NOLINT(google-explicit-constructor)

  /// The centre minus, plus, the current half sizes.
  ChangingInTimeVector2 Min() const;
  ChangingInTimeVector2 Max() const;
  /// Low edges inside, high edges outside, on fresh reads.
  bool IsPointInside(const Vector2& p) const;

  ChangingInTimeValueChain centerX;
  ChangingInTimeValueChain centerY;
  ChangingInTimeValueChain extentX;
  ChangingInTimeValueChain extentY;
};

}  // namespace Korvane
