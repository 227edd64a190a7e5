#pragma once

#include <cstdint>

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
  /// a move that ran before runs on then, and whoever watches it stays the one who does. So does the watch
  /// itself where, within `begin`, it has been given the move that then runs; that is false as well. And
  /// where `isWanted` says after `begin` that the move is not to be watched.
  template <class Begin, class IsWanted>
  bool Watch(CameraOperations& hub, Begin begin, IsWanted isWanted) {
    const Lifeline::Watch alive(GetLifeline());
    const std::uint64_t before = hub.GetShotNumber();
    begin();
    const std::uint64_t begun = hub.GetShotNumber();
    if (!alive || begun == 0 || begun == before || begun == watched || !isWanted()) return false;
    watched = hub.SetActiveShotObserver(this) ? begun : 0;
    return IsWatching();
  }
  template <class Begin>
  bool Watch(CameraOperations& hub, Begin begin) {
    return Watch(hub, begin, [] { return true; });
  }

  /// The move goes on.
  bool IsWatching() const { return watched != 0; }

  /// The hub forgets the watch; the move goes on without it.
  void Drop() {
    watched = 0;
    GetLifeline().Cut();
  }

  void OnEndShot(Shot* /*shot*/, const CameraParameters& camera) override {
    watched = 0;
    (owner->*ended)(camera);
  }

 private:
  Owner* owner;
  Ended ended;
  std::uint64_t watched = 0;  // the number of the move; 0 for none
};

}  // namespace Korvane
