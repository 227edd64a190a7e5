#pragma once

#include <bitset>
#include <cstddef>
#include <optional>

#include "korvane/resource_ids.h"
#include "zovhost/window.h"

namespace zovhost {

/// Turns keys of the window into the library's. Two keys may stand for one: it is down while either is.
class HeldKeys {
 public:
  /// The library's key that a KeyDown presses or a KeyUp releases; nothing for one that means none, that
  /// repeats, or that another holds.
  std::optional<Korvane::KeyID> OnKey(const WindowEvent& event);
  /// Lets go of the next key that is held, and tells the library's that this releases; nothing when none is
  /// left.
  std::optional<Korvane::KeyID> ReleaseNext();

 private:
  bool IsHeld(Korvane::KeyID id) const;
  std::optional<Korvane::KeyID> Set(std::size_t binding, bool down);

  static constexpr std::size_t MOST_BINDINGS = 32;
  std::bitset<MOST_BINDINGS> held;  // by the rows of the key table
};

}  // namespace zovhost
