#pragma once

#include "korvane/camera_operations.h"
#include "korvane/lifeline.h"
#include "korvane/shot.h"

namespace Korvane {

/// Whether no animated move runs in a hub any more; so for null. For those who look once a frame.
inline bool IsShotOver(const CameraOperations* hub) {
  return hub == nullptr || hub->GetActiveShot() == nullptr;
}

/// The animated move that its owner has begun, and that tells the owner of its end. To be held by the owner
/// by value.
template <class Owner>
class ShotWatch : public ShotObserver {
 public:
  /// Runs when the move ends, with the hub's camera; the watch may be destroyed in there.
  using Ended = void (Owner::*)(const CameraParameters& camera);

  ShotWatch(Owner* watchOwner, Ended toRun) : owner(watchOwner), ended(toRun) {}
  ShotWatch(const ShotWatch&) = delete;
  ShotWatch& operator=(const ShotWatch&) = delete;

  /// Calls `begin`, which is to begin a shot of the hub, and watches that shot. False when it has begun none:
  /// a move that ran before runs on then, and whoever watches it stays the one who does.
  template <class Begin>
  bool Watch(CameraOperations& hub, Begin begin) {
    const Lifeline::Watch alive(GetLifeline());
    const Shot* const before = hub.GetActiveShot();
    begin();
    const Shot* const begun = hub.GetActiveShot();
    if (!alive || begun == nullptr || begun == before) return false;
    watching = hub.SetActiveShotObserver(this);
    return watching;
  }

  /// The move goes on.
  bool IsWatching() const { return watching; }

  /// The hub forgets the watch; the move goes on without it.
  void Drop() {
    watching = false;
    GetLifeline().Cut();
  }

  void OnEndShot(Shot* /*shot*/, const CameraParameters& camera) override {
    watching = false;
    (owner->*ended)(camera);
  }

 private:
  Owner* owner;
  Ended ended;
  bool watching = false;
};

}  // namespace Korvane
