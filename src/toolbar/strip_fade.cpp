#include "toolbar/strip_fade.h"

#include <cmath>
#include <utility>

#include "korvane/math.h"
#include "korvane/toolbar.h"
#include "toolbar/strip_motion.h"

namespace Korvane {

namespace {

constexpr double REACH = 4.0;  // distances

double GetNearnessOnAxis(double mouse, double low, double high, double distance) {
  if (mouse < low) return Math::EaseClamp(mouse, low - REACH * distance, low);
  return 1.0 - Math::EaseClamp(mouse, high, high + REACH * distance);
}

}  // namespace

double GetNearness(const Box2& strip, const Vector2& mouse, double distance) {
  const Vector2 low = strip.Min() - Vector2(distance);
  const Vector2 high = strip.Max() + Vector2(distance);
  return Math::Min(GetNearnessOnAxis(mouse.x, low.x, high.x, distance),
                   GetNearnessOnAxis(mouse.y, low.y, high.y, distance));
}

bool StripFade::Update(double target, double step) {
  const double now = Get();
  if (IsMoving()) return true;
  if (!(std::abs(target - now) > step)) return false;
  opacity.SetValue(target);
  return true;
}

void StripFade::Begin(double from, double target) {
  BeginWay(opacity, from, target, Toolbar::OPACITY_ANIMATION_TIME);
  inProgress = true;
}

bool StripFade::Stop() {
  opacity.Stop();
  return std::exchange(inProgress, false);
}

}  // namespace Korvane
