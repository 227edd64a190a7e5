#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include "disc/welcome_tables.h"
#include "foundation/truncate.h"
#include "korvane/icon2d.h"
#include "korvane/track_menu.h"

namespace Korvane {

template <std::size_t... Index>
std::array<ResourceIcon2D, sizeof...(Index)> MakeWelcomeIcons(std::index_sequence<Index...> /*all*/) {
  return {ResourceIcon2D(GetWelcomePictures()[Index].texture)...};
}

/// What the welcome screen of a disc is made of: a menu that is locked in its place, and draws one of ten
/// pictures of a whole page.
struct WelcomeScreen {
  static constexpr int SIZE = 512;  // points, of the square picture

  ResourceIcon2D& GetIcon(WelcomePicture which) { return icons[static_cast<std::size_t>(which)]; }
  bool IsVisible() const { return menu != nullptr && menu->GetVisible(); }
  /// Null where the cursor is on no area.
  const WelcomeArea* FindArea() const { return FindWelcomeArea(menu->GetActiveRegion().color); }
  /// What a click on the picture that shows means.
  std::optional<WelcomeClick> FindClick() const {
    for (std::size_t i = 0; i < icons.size(); ++i) {
      if (&icons[i] == shown) return GetWelcomePictures()[i].click;
    }
    return std::nullopt;
  }
  /// Pixels.
  int GetSize() const { return Truncate(SIZE * scale); }
  Vector2 GetMiddle() const { return Vector2(x + GetSize() / 2.0, y + GetSize() / 2.0); }
  /// With nothing shown, and nobody on it.
  void Reset() {
    menu->ExchangeSingleIconForDraw(nullptr);
    menu->SetEnabled(true);
    shown = nullptr;
    over = toldOver = false;
  }
  /// There will be no screen.
  void Drop() {
    menu.reset();
    over = toldOver = false;
  }

  std::unique_ptr<TrackMenu> menu;  // null once it is known that there will be no screen
  std::array<ResourceIcon2D, WELCOME_PICTURE_COUNT> icons =
      MakeWelcomeIcons(std::make_index_sequence<WELCOME_PICTURE_COUNT>());
  ResourceIcon2D* shown = nullptr;
  bool advancedPage = false;
  bool over = false;      // the cursor is on the screen,
  bool toldOver = false;  // and observers know
  bool clickPending = false;
  double scale = 1.0;       // pixels to a point
  bool wasResized = false;  // the map of the other page may have the size of another scale
  int x = 0;                // the lower left corner
  int y = 0;
};

}  // namespace Korvane
