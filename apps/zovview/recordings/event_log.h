#pragma once

#include "zovhost/window.h"

namespace zovview {

/// Tells on the error stream what a window does, a line each: its events, in the words of a recording, its
/// frames, and when it comes to rest. A script that waits for the rest after an event sees all that came of
/// it.
class EventLog {
 public:
  explicit EventLog(bool isOn) : enabled(isOn) {}

  /// Events that a recording has no words for are left out.
  void Add(const zovhost::WindowEvent& event);
  void AddFrame();
  /// Nothing is asked for any more. Told once after whatever came before.
  void AddRest();

 private:
  const bool enabled;
  unsigned frameCount = 0;
  bool busy = true;
};

}  // namespace zovview
