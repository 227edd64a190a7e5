#pragma once

#include "korvane/shot.h"

namespace Korvane {

class Orientor;

/// Tells the cube that the move it has begun is over.
class OrientorTransitionShotObserver : public ShotObserver {
 public:
  explicit OrientorTransitionShotObserver(Orientor* cube) : orientor(cube) {}
  void OnEndShot(Shot* shot, const CameraParameters& camera) override;

 private:
  Orientor* orientor;
};

}  // namespace Korvane
