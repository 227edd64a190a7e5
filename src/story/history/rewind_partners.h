#pragma once

#include "korvane/camera_operations.h"
#include "korvane/lifeline.h"
#include "korvane/observer_set.h"
#include "korvane/rewind_history.h"

namespace Korvane {

/// With whom a rewind history works. The host may exchange these at any time.
struct RewindPartners {
  /// By the hub, with both cameras straightened. False without one.
  bool AreEqual(CameraParameters a, CameraParameters b) const;
  /// By the hub; false without one.
  bool IsSceneOutsideView(const CameraParameters& camera) const;

  /// Calls `tell(observer)` for each, for as long as what is told holds.
  template <class Holds, class Tell>
  void Notify(const Holds& holds, const Tell& tell) {
    observers.Notify([&](RewindHistoryObserver& each) {
      if (holds) tell(each);
    });
  }

  Borrowed<CameraOperations> hub;
  ObserverSet<RewindHistoryObserver> observers;
  Lifeline life;  // the history's: what it works with may outlive it by a call
};

}  // namespace Korvane
