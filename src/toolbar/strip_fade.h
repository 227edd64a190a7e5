#pragma once

#include "korvane/box2.h"
#include "korvane/changing_in_time.h"

namespace Korvane {

/// How near the mouse is: 1 on the strip and within `distance` of it, eased to 0 at four more distances.
double GetNearness(const Box2& strip, const Vector2& mouse, double distance);

/// How much of a strip shows.
class StripFade {
 public:
  /// Of the opacities between.
  double GetOpacityAt(double nearness) const { return (maximum - minimum) * nearness + minimum; }
  double Get() const { return opacity.GetValue(); }
  bool IsMoving() const { return opacity.IsChangingInTime(); }

  /// True when the opacity changes, be it by itself.
  bool Update(double target, double step);
  void Begin(double from, double target);
  /// A move that goes on jumps to its end. True when there was one.
  bool Stop();

  ChangingInTimeValueChain opacity = 1.0;
  float minimum = 0.3F;
  float maximum = 1.0F;
  bool inProgress = false;
};

}  // namespace Korvane
