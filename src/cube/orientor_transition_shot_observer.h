#pragma once

#include "korvane/shot.h"

namespace Korvane {

class Orientor;

/// Tells the cube that the move it has begun is over.
class OrientorTransitionShotObserver : public ShotObserver {
 public:
  explicit OrientorTransitionShotObserver(Orientor* cube) : orientor(cube) {}
  void OnEndShot(Shot* shot, const CameraParameters& camera) override;

  /// The hub holds this observer, for the move that runs.
  bool IsWatching() const { return watching; }
  void SetWatching(bool value) { watching = value; }
  /// The hub forgets it; the move goes on without it.
  void Drop() {
    watching = false;
    GetLifeline().Cut();
  }

 private:
  Orientor* orientor;
  bool watching = false;
};

}  // namespace Korvane
