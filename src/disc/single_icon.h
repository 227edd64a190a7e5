#pragma once

#include "korvane/icon2d.h"
#include "korvane/lifeline.h"
#include "korvane/renderer.h"
#include "render/texture_counts.h"

namespace Korvane {

/// The picture that a menu draws in place of those of its regions, and, while the menu is active, the count
/// of its texture. Nothing here calls out.
class SingleIcon {
 public:
  SingleIcon() = default;
  SingleIcon(const SingleIcon&) = delete;
  SingleIcon& operator=(const SingleIcon&) = delete;
  ~SingleIcon() { Hold(nullptr); }

  bool IsUsed() const { return used; }
  void Use(bool use) {
    Count(false);
    used = use;
    Count(true);
  }
  /// Null where there is none.
  ResourceIcon2D* Get() const { return icon; }
  /// Borrowed. A count that is held is taken for that of the new picture: its caller has seen to both.
  void Set(ResourceIcon2D* value) {
    icon = value;
    texture = value != nullptr ? value->GetTextureResourceID() : TEXTURE_NONE;
  }
  /// A count that is held changes with the picture.
  void Exchange(ResourceIcon2D* value) {
    Count(false);
    Set(value);
    Count(true);
  }
  /// Counts the texture in this renderer, and in no other; null gives back.
  void Hold(Renderer* renderer) {
    if (renderer != nullptr && renderer == lender.Get()) return;
    Count(false);
    lender.Set(renderer);
    Count(true);
  }

 private:
  void Count(bool wanted) {
    Renderer* const held = lender.Get();
    if (held == nullptr || !used) return;
    if (!wanted) {
      held->DecrementTextureUsage(texture);
    } else if (!CountTexturesUp(*held, {&texture, 1})) {
      lender.Set(nullptr);
    }
  }

  bool used = false;
  ResourceIcon2D* icon = nullptr;
  TextureID texture = TEXTURE_NONE;
  Borrowed<Renderer> lender;
};

}  // namespace Korvane
