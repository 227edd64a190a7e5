// Filling the discs with their regions.
#include "disc/disc_listeners.h"
#include "disc/disc_tables.h"
#include "foundation/out_of_memory.h"
#include "korvane/icon2d.h"
#include "korvane/track_menu.h"

namespace Korvane {

namespace {

using Region = TrackMenu::Region;

constexpr double OPACITY_OF_DISABLED = 0.5;

// Null of what there was no memory for.
void MakeBelongings(const DiscRegion& row, int overlay, HelmDisc& disc, TrackMenu& menu, Region& region) {
  region.listener = MakeDiscListener(row.listener, disc, menu).release();
  region.icon = new ResourceIcon2D(static_cast<TextureID>(row.icon));
  if (overlay == TEXTURE_NONE) return;
  region.overlayIcon = new ResourceIcon2D(static_cast<TextureID>(overlay));
}

bool IsWhole(const Region& region, int overlay) {
  return region.listener != nullptr && region.icon != nullptr &&
         (overlay == TEXTURE_NONE || region.overlayIcon != nullptr);
}

Region MakeRegion(const DiscRegion& row, int overlay, HelmDisc& disc, TrackMenu& menu) {
  Region region;
  OrFail([&] { MakeBelongings(row, overlay, disc, menu, region); });
  region.color = row.colour;
  region.labelString = static_cast<StringID>(row.label);
  region.tooltipString = row.tooltip.Choose(disc.GetParameters());
  region.tooltipHUDString = static_cast<StringID>(row.note);
  region.cursorID = static_cast<CursorID>(row.cursor);
  region.sticky = (row.flags & REGION_STICKY) != 0;
  region.enabled = (row.flags & REGION_DISABLED) == 0;
  region.wrap = (row.flags & REGION_UNWRAPPED) == 0;
  region.zone = row.zone;
  return region;
}

// A region that the menu does not take goes.
template <class Add>
bool Give(Region region, int overlay, const Add& add) {
  if (IsWhole(region, overlay) && add(region)) return true;
  region.Destroy();
  return false;
}

// With each region the menu may ask the host for a frame.
bool FillMenu(const DiscTable& table, HelmDisc& disc, TrackMenu& menu) {
  const Lifeline::Watch alive(disc.GetLifeline());
  Region disabled = MakeRegion(table.disabled, table.overlay, disc, menu);
  if (disabled.overlayIcon != nullptr) disabled.overlayIcon->SetOpacity(OPACITY_OF_DISABLED);
  if (!Give(disabled, table.overlay, [&](const Region& each) { return menu.SetDisabledRegion(each); }))
    return false;
  for (const DiscRegion& row : table.regions) {
    if (!alive) return false;
    const Region region = MakeRegion(row, table.overlay, disc, menu);
    if (!Give(region, table.overlay, [&](const Region& each) { return menu.AddRegion(each); })) return false;
  }
  return static_cast<bool>(alive);
}

}  // namespace

// A disc that is filled a second time begins anew, and closed.
bool HelmDisc::InitRegions(DiscType type) {
  TrackMenu* const menu = GetTrackMenu(type);
  if (menu == nullptr) return true;
  const Lifeline::Watch alive(GetLifeline());
  const bool filled = menu->GetRegion(0) != nullptr;
  if (filled && menu == GetActiveTrackMenu()) SetActiveDisc(DiscType::None);
  if (alive && filled) menu->Destroy();
  if (!alive) return false;
  const DiscTable& table = GetDiscTable(type);
  menu->SetShowParams(&parameters.showTooltips, &parameters.showMessages, &parameters.showToolHUDs);
  if (!menu->SetRegionMap(static_cast<TextureID>(table.regionMap)) || !alive) return false;
  menu->SetMenu(table.menu);
  menu->SetMenuCursorID(IsLargeDisc(type) ? CURSOR_ARROW : CURSOR_ORBIT_CUBE);
  return FillMenu(table, *this, *menu);
}

}  // namespace Korvane
