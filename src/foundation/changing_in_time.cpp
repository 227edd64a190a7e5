#include "korvane/changing_in_time.h"

#include "korvane/math.h"

namespace Korvane {

ChangingInTimeValue::ChangingInTimeValue(double initial, double final, double time,
                                         InterpolationMethod method) {
  SetValue(initial, final, time, method);
}

void ChangingInTimeValue::SetValue(double value) {
  Stop();
  finalValue = value;
}

void ChangingInTimeValue::SetValue(double initial, double final, double time, InterpolationMethod method) {
  Stop();
  initialValue = initial;
  finalValue = final;
  totalTime = time;
  interpolationMethod = method;
}

ChangingInTimeValue& ChangingInTimeValue::operator=(double value) {
  SetValue(value);
  return *this;
}

void ChangingInTimeValue::Start() {
  Rest();
  changingInTime = true;
  timer.Start();
}

void ChangingInTimeValue::Start(double initial, double final, double time, InterpolationMethod method) {
  SetValue(initial, final, time, method);
  Start();
}

void ChangingInTimeValue::Rest() const {
  elapsedTime = 0.0;
  changingInTime = false;
}

double ChangingInTimeValue::GetValue() const {
  if (!changingInTime) return finalValue;
  timer.Lap();
  elapsedTime += timer.GetLastInterval();
  return GetValueNow();
}

double ChangingInTimeValue::StartAndRead() const {
  elapsedTime = 0.0;
  changingInTime = true;
  timer.Start();
  return GetValueNow();
}

// A time that is no number has run out.
double ChangingInTimeValue::GetValueNow() const {
  if (!(elapsedTime <= totalTime)) {
    Rest();
    return finalValue;
  }
  return interpolationMethod == INTERPOLATION_EASED ? GetEaseClampValue() : GetLinearClampValue();
}

double ChangingInTimeValue::GetLinearClampValue() const {
  return initialValue + (finalValue - initialValue) * Math::LinearClamp(elapsedTime, 0.0, totalTime);
}

double ChangingInTimeValue::GetEaseClampValue() const {
  return initialValue + (finalValue - initialValue) * Math::EaseClamp(elapsedTime, 0.0, totalTime);
}

ChangingInTimeValue& ChangingInTimeValue::operator*=(double d) {
  finalValue *= d;
  initialValue *= d;
  return *this;
}

ChangingInTimeValue& ChangingInTimeValue::operator/=(double d) {
  finalValue /= d;
  initialValue /= d;
  return *this;
}

ChangingInTimeValue& ChangingInTimeValue::operator+=(double d) {
  finalValue += d;
  initialValue += d;
  return *this;
}

ChangingInTimeValue& ChangingInTimeValue::operator-=(double d) { return *this += -d; }

ChangingInTimeValueChain& ChangingInTimeValueChain::operator=(const ChangingInTimeValueChain& source) {
  if (this == &source) return *this;
  values.reserve(source.values.size());  // what may throw comes first
  Stop();
  Clear();
  running = source.running;
  startPending = source.startPending;
  currentIndex = source.currentIndex;
  values = source.values;
  return *this;
}

ChangingInTimeValueChain& ChangingInTimeValueChain::operator=(double value) {
  SetValue(value);
  return *this;
}

ChangingInTimeValue& ChangingInTimeValueChain::Current() const {
  return values[static_cast<std::size_t>(currentIndex)];
}

void ChangingInTimeValueChain::Add(const ChangingInTimeValue& value) {
  Stop();
  values.push_back(value);
}

void ChangingInTimeValueChain::Clear() {
  running = false;
  currentIndex = 0;
  values.clear();
}

void ChangingInTimeValueChain::Start() {
  if (values.empty()) return;
  Stop();
  startPending = true;
  currentIndex = 0;
  values.front().Start();
}

void ChangingInTimeValueChain::Stop() {
  if (values.empty()) return;
  for (ChangingInTimeValue& value : values) value.Stop();
  running = false;
  currentIndex = 0;
}

void ChangingInTimeValueChain::SetValue(double value) {
  if (values.empty()) {
    values.emplace_back(value);
    return;
  }
  Stop();
  for (ChangingInTimeValue& entry : values) entry.SetValue(value);
}

double ChangingInTimeValueChain::GetValue() const {
  if (values.empty()) return 0.0;
  if (startPending) {
    running = true;
    startPending = false;
    return Current().StartAndRead();
  }
  if (Current().IsChangingInTime()) {
    running = true;
    return Current().GetValue();
  }
  if (!IsAtLast()) {
    running = true;
    ++currentIndex;
    return Current().StartAndRead();
  }
  running = false;
  return values.back().GetValue();
}

bool ChangingInTimeValueChain::IsChangingInTime() const {
  if (values.empty()) return false;
  if (Current().IsChangingInTime()) {
    running = true;
    return true;
  }
  return running && !IsAtLast();
}

ChangingInTimeValueChain& ChangingInTimeValueChain::operator*=(double d) {
  for (ChangingInTimeValue& value : values) value *= d;
  return *this;
}

ChangingInTimeValueChain& ChangingInTimeValueChain::operator/=(double d) {
  for (ChangingInTimeValue& value : values) value /= d;
  return *this;
}

ChangingInTimeValueChain& ChangingInTimeValueChain::operator+=(double d) {
  for (ChangingInTimeValue& value : values) value += d;
  return *this;
}

ChangingInTimeValueChain& ChangingInTimeValueChain::operator-=(double d) { return *this += -d; }

// y first: reading may advance, and the order of reads is part of what hosts see.
ChangingInTimeVector2::operator Vector2() const {
  const double yNow = y.GetValue();
  const double xNow = x.GetValue();
  return {xNow, yNow};
}

ChangingInTimeVector2 ChangingInTimeVector2::operator+(const ChangingInTimeVector2& v) const {
  const Vector2 now = v;
  ChangingInTimeVector2 sum(*this);
  sum.x += now.x;
  sum.y += now.y;
  return sum;
}

ChangingInTimeVector2 ChangingInTimeVector2::operator-(const ChangingInTimeVector2& v) const {
  const Vector2 now = v;
  ChangingInTimeVector2 difference(*this);
  difference.x -= now.x;
  difference.y -= now.y;
  return difference;
}

ChangingInTimeVector2 ChangingInTimeVector2::operator+(double d) const {
  ChangingInTimeVector2 sum(*this);
  sum.x += d;
  sum.y += d;
  return sum;
}

ChangingInTimeBox2::operator Box2() const {
  const double halfHeight = extentY.GetValue();
  const double halfWidth = extentX.GetValue();
  const double y = centerY.GetValue();
  const double x = centerX.GetValue();
  return {Vector2(x, y), Vector2(halfWidth, halfHeight)};
}

ChangingInTimeVector2 ChangingInTimeBox2::Min() const {
  ChangingInTimeVector2 low;
  low.x = centerX - extentX.GetValue();
  low.y = centerY - extentY.GetValue();
  return low;
}

ChangingInTimeVector2 ChangingInTimeBox2::Max() const {
  ChangingInTimeVector2 high;
  high.x = centerX + extentX.GetValue();
  high.y = centerY + extentY.GetValue();
  return high;
}

bool ChangingInTimeBox2::IsPointInside(const Vector2& p) const {
  return p.x >= centerX.GetValue() - extentX.GetValue() && p.x < centerX.GetValue() + extentX.GetValue() &&
         p.y >= centerY.GetValue() - extentY.GetValue() && p.y < centerY.GetValue() + extentY.GetValue();
}

}  // namespace Korvane
