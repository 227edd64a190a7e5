#include "toolbar/strip_motion.h"

#include <cmath>

#include "foundation/out_of_memory.h"
#include "korvane/math.h"
#include "korvane/toolbar.h"

namespace Korvane {

namespace {

// A chain that moves is made anew: what it was to do is forgotten.
void Jump(ChangingInTimeValueChain& chain, double target) {
  if (chain.IsChangingInTime()) chain = ChangingInTimeValueChain();
  if (chain.GetCount() != 0 && chain.GetValue() == target) return;
  OrFail([&] { chain.SetValue(target); });
}

// Whether a way begins.
bool Animate(ChangingInTimeValueChain& chain, double target, double seconds) {
  if (chain.IsChangingInTime()) return false;
  const double from = chain.GetValue();
  if (!(std::abs(target - from) > Math::EPSILON_VALUE)) return false;
  BeginWay(chain, from, target, seconds);
  return true;
}

void Stop(ChangingInTimeValueChain& chain) {
  chain.Stop();
  Jump(chain, chain.GetValue());
}

}  // namespace

// Read at once, so that a chain that is to stop has begun.
void BeginWay(ChangingInTimeValueChain& chain, double from, double target, double seconds) {
  OrFail([&] {
    ChangingInTimeValueChain way;
    way.Add(ChangingInTimeValue(from, target, seconds, INTERPOLATION_EASED));
    chain = way;
    chain.Start();
    chain.GetValue();
  });
}

void StripMotion::SetCenter(const Vector2& center) {
  if (!wantAnimation || !wantPosition) return JumpToCenter(center);
  const bool across = Animate(bounds.centerX, center.x, Toolbar::POSITION_ANIMATION_TIME);
  const bool up = Animate(bounds.centerY, center.y, Toolbar::POSITION_ANIMATION_TIME);
  positionInProgress = positionInProgress || across || up;  // its first frame may come after its end
}

void StripMotion::SetExtent(const Vector2& half) {
  const bool moves = wantAnimation && wantSize;
  if (moves) {
    const bool wider = Animate(bounds.extentX, half.x, Toolbar::SIZE_ANIMATION_TIME);
    const bool higher = Animate(bounds.extentY, half.y, Toolbar::SIZE_ANIMATION_TIME);
    sizeInProgress = sizeInProgress || wider || higher;
  } else {
    Jump(bounds.extentX, half.x);
    Jump(bounds.extentY, half.y);
  }
}

void StripMotion::JumpToCenter(const Vector2& center) {
  Jump(bounds.centerX, center.x);
  Jump(bounds.centerY, center.y);
}

void StripMotion::Stop() {
  for (ChangingInTimeValueChain* const chain :
       {&bounds.centerX, &bounds.centerY, &bounds.extentX, &bounds.extentY})
    Korvane::Stop(*chain);
  wantPosition = wantSize = positionInProgress = sizeInProgress = false;
}

}  // namespace Korvane
