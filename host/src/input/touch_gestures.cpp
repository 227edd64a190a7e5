#include "zovhost/touch_gestures.h"

#include <algorithm>
#include <cmath>

#include "korvane/math.h"

namespace zovhost {

using Korvane::Math;
using Korvane::Vector2;

namespace {

bool IsPosition(const Vector2& at) {
  return std::abs(at.x) <= TouchGestures::FURTHEST && std::abs(at.y) <= TouchGestures::FURTHEST;
}

template <class Touches, class Field>
Vector2 GetMiddle(const Touches& touches, Field field) {
  Vector2 sum;
  for (const auto& touch : touches) sum = sum + touch.*field;
  const double count = touches.empty() ? 1.0 : static_cast<double>(touches.size());
  return {sum.x / count, sum.y / count};
}

// The root of the mean square of the distances from the middle.
template <class Touches, class Field>
double GetSpread(const Touches& touches, Field field) {
  const Vector2 middle = GetMiddle(touches, field);
  double sum = 0.0;
  for (const auto& touch : touches) {
    const Vector2 arm = touch.*field - middle;
    sum += arm.x * arm.x + arm.y * arm.y;
  }
  return touches.empty() ? 0.0 : std::sqrt(sum / static_cast<double>(touches.size()));
}

}  // namespace

bool TouchGestures::IsDown(int finger) const {
  return std::any_of(touches.begin(), touches.end(),
                     [finger](const Touch& touch) { return touch.finger == finger; });
}

bool TouchGestures::Press(int finger, const Vector2& at) {
  if (IsDown(finger) || GetFingerCount() >= MOST_FINGERS || !IsPosition(at)) return false;
  const auto place = std::find_if(touches.begin(), touches.end(),
                                  [finger](const Touch& touch) { return touch.finger > finger; });
  touches.insert(place, {finger, at, at});
  Restart();
  return true;
}

bool TouchGestures::Move(int finger, const Vector2& at) {
  const auto found = std::find_if(touches.begin(), touches.end(),
                                  [finger](const Touch& touch) { return touch.finger == finger; });
  if (found == touches.end() || !IsPosition(at)) return false;
  found->now = at;
  FollowTurn();
  return true;
}

bool TouchGestures::Release(int finger) {
  const bool released =
      std::erase_if(touches, [finger](const Touch& touch) { return touch.finger == finger; }) > 0;
  if (released) Restart();
  return released;
}

void TouchGestures::ReleaseAll() {
  touches.clear();
  Restart();
}

void TouchGestures::Restart() {
  for (Touch& touch : touches) touch.start = touch.now;
  turn = 0.0;
}

// The mean of the turns of their arms, each as much as it is long. Of two that differ by whole turns the one
// next to the last.
void TouchGestures::FollowTurn() {
  if (GetSpread(touches, &Touch::start) < CLOSEST || GetSpread(touches, &Touch::now) < CLOSEST) return;
  const Vector2 from = GetMiddle(touches, &Touch::start);
  const Vector2 to = GetMiddle(touches, &Touch::now);
  double along = 0.0;
  double across = 0.0;
  for (const Touch& touch : touches) {
    const Vector2 before = touch.start - from;
    const Vector2 after = touch.now - to;
    along += before.x * after.x + before.y * after.y;
    across += before.x * after.y - before.y * after.x;
  }
  if (along == 0.0 && across == 0.0) return;
  const double angle = std::atan2(across, along);
  turn = angle + 2.0 * Math::PI * std::round((turn - angle) / (2.0 * Math::PI));
}

TouchMotion TouchGestures::GetMotion() const {
  TouchMotion motion;
  motion.from = GetMiddle(touches, &Touch::start);
  motion.to = GetMiddle(touches, &Touch::now);
  if (touches.size() < 2) return motion;
  motion.scale = std::max(GetSpread(touches, &Touch::now), CLOSEST) /
                 std::max(GetSpread(touches, &Touch::start), CLOSEST);
  motion.turn = turn;
  return motion;
}

}  // namespace zovhost
