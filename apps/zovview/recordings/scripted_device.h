#pragma once

#include "zovhost/six_axis_hand.h"

namespace zovview {

struct DeviceEvent;
struct ViewTarget;

/// A six-axis device that a script moves: its numbers go where they belong, its buttons are commands.
class ScriptedDevice {
 public:
  ScriptedDevice();

  void SetController(Korvane::Cam3DController* controller) { hand.SetController(controller); }
  void Feed(const zovhost::SixAxes& axes) { source.Feed(axes); }
  /// A setting is that of the target.
  void Feed(const DeviceEvent& event, const ViewTarget& target);
  zovhost::SixAxisHand& GetHand() { return hand; }
  zovhost::SixAxisSource& GetSource() { return source; }
  /// Once a frame, right before the view performs it. Whether something moves, so that another is wanted.
  bool Advance();

 private:
  zovhost::FedSource source;
  zovhost::SixAxisHand hand;
};

}  // namespace zovview
