#include "zovhost/held_keys.h"

#include "zovhost/key_table.h"

namespace zovhost {

using Korvane::KeyID;

std::optional<KeyID> HeldKeys::OnKey(const WindowEvent& event) {
  const auto bindings = GetKeyBindings();
  for (std::size_t i = 0; i < bindings.size(); ++i) {
    if (bindings[i].key == event.key) return Set(i, event.type == WindowEvent::Type::KeyDown);
  }
  return std::nullopt;
}

std::optional<KeyID> HeldKeys::ReleaseNext() {
  for (std::size_t i = 0; i < GetKeyBindings().size(); ++i) {
    if (!held[i]) continue;
    if (const std::optional<KeyID> released = Set(i, false)) return released;
  }
  return std::nullopt;
}

bool HeldKeys::IsHeld(KeyID id) const {
  const auto bindings = GetKeyBindings();
  for (std::size_t i = 0; i < bindings.size(); ++i) {
    if (held[i] && bindings[i].id == id) return true;
  }
  return false;
}

std::optional<KeyID> HeldKeys::Set(std::size_t binding, bool down) {
  const KeyID id = GetKeyBindings()[binding].id;
  const bool before = IsHeld(id);
  held[binding] = down;
  return IsHeld(id) != before ? std::optional(id) : std::nullopt;
}

}  // namespace zovhost
