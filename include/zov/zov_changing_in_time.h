#pragma once

#include <type_traits>

#include "korvane/changing_in_time.h"
#include "zov/zov_enums.h"

/// A number that, once started, moves from one value to another and reads right at any moment.
///
/// Nothing ticks: it advances when it is read, by the time since its last read. A copy of a running number
/// runs on by itself. The one number that is not the host's own is the speed of a walk that
/// zovApplicationParameters hands out by reference: what is done to it, also by assignment, is done to the
/// settings of the view. Arithmetic moves both ends and keeps a running number in step; a comparison reads,
/// and so advances. Times are in seconds. No operation allocates.
class zovChangingInTimeValue {
 public:
  /// Rests at 0.
  zovChangingInTimeValue() = default;
  /// Rests at `value`.
  zovChangingInTimeValue(double value) : own(value) {}  // NOLINT(google-explicit-constructor)
  /// Does not start. An unknown method counts as linear.
  zovChangingInTimeValue(double from, double to, double duration, zovInterpolationMethod method)
      : own(from, to, duration, static_cast<Korvane::InterpolationMethod>(method)) {}
  zovChangingInTimeValue(const zovChangingInTimeValue& other) : own(*other.number) {}
  zovChangingInTimeValue& operator=(const zovChangingInTimeValue& other) {
    if (this != &other) *number = *other.number;
    return *this;
  }
  ~zovChangingInTimeValue() = default;

  /// Stops and rests at `value`.
  zovChangingInTimeValue& operator=(double value) {
    *number = value;
    return *this;
  }
  void set_value(double value) { number->SetValue(value); }
  /// Stops and stores; does not start.
  void set_value(double from, double to, double duration, zovInterpolationMethod method) {
    number->SetValue(from, to, duration, static_cast<Korvane::InterpolationMethod>(method));
  }

  /// From the beginning, with the ends and the duration that it has.
  void start() { number->Start(); }
  void start(double from, double to, double duration, zovInterpolationMethod method) {
    number->Start(from, to, duration, static_cast<Korvane::InterpolationMethod>(method));
  }
  /// A stopped number jumps to its end.
  void stop() { number->Stop(); }

  double value() const { return number->GetValue(); }
  operator double() const { return value(); }  // NOLINT(google-explicit-constructor)
  /// Does not advance.
  bool is_changing_in_time() const { return number->IsChangingInTime(); }

  zovChangingInTimeValue& operator*=(double d) { return *number *= d, *this; }
  zovChangingInTimeValue& operator/=(double d) { return *number /= d, *this; }
  zovChangingInTimeValue& operator+=(double d) { return *number += d, *this; }
  zovChangingInTimeValue& operator-=(double d) { return *number -= d, *this; }

  /// The number within, for a host that works with both layers.
  const Korvane::ChangingInTimeValue& korvane() const { return *number; }

 private:
  friend class zovApplicationParameters;

  Korvane::ChangingInTimeValue own;
  Korvane::ChangingInTimeValue* number = &own;  // or somebody else's
};

/// Several numbers, one after another.
///
/// The clock of a chain starts at its first read after `start`, however late that comes. A chain moves on
/// whenever its current number is at rest, started or not: one that is meant to rest holds a single number.
/// It allocates when it is made of a number, grows or is copied, and at no other time.
class zovChangingInTimeValueChain {
 public:
  /// Empty.
  zovChangingInTimeValueChain() = default;
  /// One number, which rests at `value`.
  zovChangingInTimeValueChain(double value) : inner(value) {}  // NOLINT(google-explicit-constructor)

  zovChangingInTimeValueChain& operator=(double value) {
    inner = value;
    return *this;
  }
  /// On an empty chain adds one number. Otherwise stops, and every number ends at `value`.
  void set_value(double value) { inner.SetValue(value); }

  /// Stops the chain and appends a copy.
  void add(const zovChangingInTimeValue& value) { inner.Add(value.korvane()); }
  void clear() { inner.Clear(); }
  int count() const { return inner.GetCount(); }

  /// Nothing for an empty chain.
  void start() { inner.Start(); }
  void stop() { inner.Stop(); }

  /// 0 for an empty chain.
  double value() const { return inner.GetValue(); }
  operator double() const { return value(); }  // NOLINT(google-explicit-constructor)
  bool is_changing_in_time() const { return inner.IsChangingInTime(); }

  zovChangingInTimeValueChain& operator*=(double d) { return inner *= d, *this; }
  zovChangingInTimeValueChain& operator/=(double d) { return inner /= d, *this; }
  zovChangingInTimeValueChain& operator+=(double d) { return inner += d, *this; }
  zovChangingInTimeValueChain& operator-=(double d) { return inner -= d, *this; }

  const Korvane::ChangingInTimeValueChain& korvane() const { return inner; }

 private:
  Korvane::ChangingInTimeValueChain inner;
};

/// The two classes that read as one number.
template <class Value>
concept zovChangesInTime =
    std::is_same_v<Value, zovChangingInTimeValue> || std::is_same_v<Value, zovChangingInTimeValueChain>;

// With any built-in number: `value * 2` must not be torn between these operators and double's.
template <zovChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number> Value operator*(const Value& value, Number number) {
  return Value(value) *= static_cast<double>(number);
}
template <zovChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number> Value operator/(const Value& value, Number number) {
  return Value(value) /= static_cast<double>(number);
}
template <zovChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number> Value operator+(const Value& value, Number number) {
  return Value(value) += static_cast<double>(number);
}
template <zovChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number> Value operator-(const Value& value, Number number) {
  return Value(value) -= static_cast<double>(number);
}
template <zovChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number>
bool operator<(const Value& value, Number number) { return value.value() < static_cast<double>(number); }
template <zovChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number>
bool operator<=(const Value& value, Number number) { return value.value() <= static_cast<double>(number); }
template <zovChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number>
bool operator>(const Value& value, Number number) { return value.value() > static_cast<double>(number); }
template <zovChangesInTime Value, class Number>
requires std::is_arithmetic_v<Number>
bool operator>=(const Value& value, Number number) { return value.value() >= static_cast<double>(number); }
