#include "korvane/shot.h"

namespace Korvane {

Shot::Shot() = default;
Shot::~Shot() = default;
ShotObserver::~ShotObserver() = default;

void Shot::InitShot(const CameraOperations* /*hub*/) {}

double Shot::GetElapsedTime() const { return elapsedTime; }

double Shot::GetUnitTime() const { return unitTime; }

}  // namespace Korvane
