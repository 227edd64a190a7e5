#pragma once

#include "korvane/changing_in_time.h"
#include "korvane/vector2.h"

namespace Korvane {

/// From where it is to `target`, beginning now.
void BeginWay(ChangingInTimeValueChain& chain, double from, double target, double seconds);

/// The bounds of a strip, which jump or move to where the layout wants them.
class StripMotion {
 public:
  static constexpr double REGION_SCALE = 4.0;  // of the region, to the bounds

  /// Where the mouse is near the strip.
  static Box2 GetRegionAround(const Box2& strip) { return {strip.center, strip.halfExtent * REGION_SCALE}; }

  /// The other half size and the other centre come with them.
  void SetCenter(const Vector2& center);
  void SetExtent(const Vector2& half);
  void JumpToCenter(const Vector2& center);

  bool IsCenterMoving() const {
    return bounds.centerX.IsChangingInTime() || bounds.centerY.IsChangingInTime();
  }
  bool IsExtentMoving() const {
    return bounds.extentX.IsChangingInTime() || bounds.extentY.IsChangingInTime();
  }
  /// Up to the frame that brings the items to their last places.
  bool IsMoving() const {
    return IsCenterMoving() || IsExtentMoving() || positionInProgress || sizeInProgress;
  }
  bool HasExtent() const { return bounds.extentX.GetValue() > 0.0 || bounds.extentY.GetValue() > 0.0; }
  /// The next change is no move, but for one that the last layout has begun.
  void EndTravel() { wantPosition = positionInProgress = IsCenterMoving(); }
  void EndGrowth() { wantSize = sizeInProgress = IsExtentMoving(); }
  /// Everything at its end.
  void Stop();

  ChangingInTimeBox2 bounds;
  bool wantAnimation = false;
  bool wantPosition = false;  // the next change of place is a move
  bool wantSize = false;
  bool positionInProgress = false;
  bool sizeInProgress = false;
};

}  // namespace Korvane
