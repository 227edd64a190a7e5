#include "korvane/shot.h"

#include <cmath>

#include "korvane/math.h"

namespace Korvane {

Shot::Shot(ShotRole roleInFrame) : role(roleInFrame) {}
Shot::~Shot() = default;
ShotObserver::~ShotObserver() = default;

void Shot::InitShot(const CameraOperations* /*hub*/) {}

double Shot::GetElapsedTime() const { return elapsedTime; }

double Shot::GetUnitTime() const { return unitTime; }

bool Shot::BeginStep(double duration, double easeEnd) {
  const bool goesOn = BeginLinearStep(duration);
  if (goesOn) unitTime = Math::EaseClamp(unitTime, 0.0, easeEnd);
  return goesOn;
}

// A duration that is no number ends the shot at once.
bool Shot::BeginLinearStep(double duration) {
  const bool goesOn = elapsedTime < duration;
  unitTime = goesOn ? Math::Clamp(elapsedTime / duration, 0.0, 1.0) : 1.0;
  return goesOn;
}

// A dt that is not finite would spoil the elapsed time for good.
bool Shot::EndStep(double dt, bool goesOn) {
  if (std::isfinite(dt)) elapsedTime += dt;
  return goesOn;
}

}  // namespace Korvane
