#include "zovhost/disc_tooltips.h"

#include "korvane/helm_disc.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/track_menu.h"

namespace zovhost {

using Korvane::Box2;
using Korvane::DiscType;
using Korvane::HelmDisc;
using Korvane::TrackMenu;

namespace {

constexpr DiscType KINDS[] = {
    DiscType::ViewObject,     DiscType::TourBuilding,     DiscType::FullNavigation,    DiscType::TwoD,
    DiscType::MiniViewObject, DiscType::MiniTourBuilding, DiscType::MiniFullNavigation};

// Null while none shows.
TrackMenu* FindMenu(const HelmDisc& disc) {
  TrackMenu* const menu = disc.GetActiveTrackMenu();
  return menu != nullptr && menu->GetVisible() && menu->GetRegionMap() != nullptr ? menu : nullptr;
}

}  // namespace

void TakeTooltipsOf(HelmDisc& disc) {
  static constexpr bool NEVER = false;
  const Korvane::HelmDiscParameters& parameters = disc.GetParameters();
  for (const DiscType kind : KINDS) {
    TrackMenu* const menu = disc.GetTrackMenu(kind);
    if (menu != nullptr) menu->SetShowParams(&NEVER, &parameters.showMessages, &parameters.showToolHUDs);
  }
}

Korvane::StringID FindDiscTooltip(const HelmDisc& disc) {
  TrackMenu* const menu = FindMenu(disc);
  const bool wanted = menu != nullptr && menu->GetEnabled() && disc.GetParameters().showTooltips;
  return wanted && !menu->IsLeftButtonDown() ? menu->GetActiveRegion().tooltipString : Korvane::STRING_NONE;
}

std::optional<Box2> FindDiscBounds(const HelmDisc& disc) {
  TrackMenu* const menu = FindMenu(disc);
  if (menu == nullptr) return std::nullopt;
  return Box2(menu->GetRegionMap()->GetPosition(), {menu->GetWidth() / 2.0, menu->GetHeight() / 2.0});
}

}  // namespace zovhost
