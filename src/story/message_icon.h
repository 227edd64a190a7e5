#pragma once

#include <utility>

#include "korvane/renderer.h"

namespace Korvane {

/// A message that is made past the renderer's cache, and given back to whoever has made it.
class MessageIcon {
 public:
  MessageIcon() = default;
  MessageIcon(const MessageIcon&) = delete;
  MessageIcon& operator=(const MessageIcon&) = delete;

  /// Calls out to the host; one that is taken meanwhile stays.
  void Take(Renderer& renderer, StringID id) {
    GiveBack();
    const Borrowed<Renderer> asked(&renderer);
    DynamicIcon2D* made = renderer.CreateMessageHUDByID(id);
    if (icon == nullptr) {
      maker.Set(asked.Get());
      std::swap(icon, made);
    }
    Destroy(asked, made);
  }
  void GiveBack() { Destroy(Borrowed<Renderer>(maker.Get()), std::exchange(icon, nullptr)); }
  /// Null when there is none, and once its maker is gone.
  DynamicIcon2D* Get() const { return maker.Get() != nullptr ? icon : nullptr; }

 private:
  static void Destroy(const Borrowed<Renderer>& of, DynamicIcon2D* gone) {
    if (gone != nullptr && of.Get() != nullptr) of.Get()->DestroyIcon(gone);
  }

  Borrowed<Renderer> maker;
  DynamicIcon2D* icon = nullptr;
};

}  // namespace Korvane
