// Regions, maps, resources, looks and states of a menu. What it makes of the mouse: track_menu_events_test.
#include "korvane/track_menu.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <vector>

#include "disc/menu_scene.h"
#include "support/allocation_counter.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

class TrackMenuTest : public ::testing::Test, public MenuScene {
 protected:
  // A region and a disabled one, each with both pictures and a text of the test's.
  void PrepareDressed() {
    Prepare();
    dressed = Dress(MakeRegion("red", Vector3(1, 0, 0), 91), label);
    menu.AddRegion(dressed);
    disabled = Dress(MakeRegion("none", Vector3(0, 0, 0), 90), disabledLabel);
    menu.SetDisabledRegion(disabled);
  }
  static Region Dress(Region region, DynamicIcon2D& text) {
    region.overlayIcon = new ResourceIcon2D(TEXTURE_NONE);
    region.label = &text;
    return region;
  }

  DynamicIcon2D label{1};
  DynamicIcon2D disabledLabel{2};
  Region dressed;
  Region disabled;
};

TEST(TrackMenuSlots, stand_in_their_order) {
  using M = OpenTrackMenu;
  const int slots[] = {
      VirtualSlot(&M::SetKorvane),
      VirtualSlot(&M::SetRenderer),
      VirtualSlot(&M::Create),
      VirtualSlot(&M::Destroy),
      VirtualSlot(&M::Draw),
      VirtualSlot(&M::OnMouseMove),
      VirtualSlot(&M::OnLeftMouseDown),
      VirtualSlot(&M::OnLeftMouseUp),
      VirtualSlot(&M::OnKeyDown),
      VirtualSlot(&M::OnKeyUp),
      VirtualSlot(&M::SetViewportSize),
      VirtualSlot(&M::SetLocation),
      VirtualSlot(&M::OpenMenu),
      VirtualSlot(&M::AddRegion),
      VirtualSlot(&M::SetDisabledRegion),
      VirtualSlot(&M::SetRegionMap),
      VirtualSlot(&M::SetAlternateRegionMap),
      VirtualSlot(&M::UseAlternateRegionMap),
      VirtualSlot(&M::SetMenu),
      VirtualSlot(&M::GetRegion),
      VirtualSlot(&M::SetActiveRegion),
      VirtualSlot(&M::GetActiveRegion),
      VirtualSlot(&M::GetRegionMap),
      VirtualSlot(&M::SetSize),
      VirtualSlot(&M::SetOpacity),
      VirtualSlot(&M::DrawTrackMenu),
      VirtualSlot(&M::Update),
  };
  int expected = 2;  // past the destructor
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(TrackMenuRegion, begins_as_a_region_that_shows_and_does_nothing) {
  const TrackMenu::Region region;
  EXPECT_EQ(region.color, Vector3(0, 0, 0));
  EXPECT_EQ(region.listener, nullptr);
  EXPECT_EQ(region.icon, nullptr);
  EXPECT_EQ(region.overlayIcon, nullptr);
  EXPECT_EQ(region.labelString, 102);
  EXPECT_EQ(region.tooltipString, 102);
  EXPECT_EQ(region.tooltipHUDString, 102);
  EXPECT_EQ(region.label, nullptr);
  EXPECT_EQ(region.tooltip, nullptr);
  EXPECT_EQ(region.tooltipHUD, nullptr);
  EXPECT_EQ(region.cursorID, 26);
  EXPECT_FALSE(region.sticky);
  EXPECT_TRUE(region.enabled);
  EXPECT_TRUE(region.wrap);
  EXPECT_EQ(region.zone, -1);
}

TEST(TrackMenuRegion, has_setters_for_what_a_listener_changes) {
  TrackMenu::Region region;
  DynamicIcon2D text(1);
  region.SetTooltipHUD(&text);
  region.SetTooltipString(static_cast<StringID>(56));
  region.SetWrap(false);
  region.SetCursorID(CURSOR_LOOK);
  EXPECT_EQ(region.tooltipHUD, &text);
  EXPECT_EQ(region.tooltipString, 56);
  EXPECT_FALSE(region.wrap);
  EXPECT_EQ(region.cursorID, CURSOR_LOOK);
}

TEST(TrackMenuRegion, deletes_what_it_owns_and_forgets_the_texts) {
  Journal journal;
  DynamicIcon2D text(1);
  TrackMenu::Region region;
  region.listener = new JournalListener("one", journal, nullptr);
  region.icon = new ResourceIcon2D(TEXTURE_NONE);
  region.overlayIcon = new ResourceIcon2D(TEXTURE_NONE);
  region.label = region.tooltip = region.tooltipHUD = &text;
  region.Destroy();
  EXPECT_EQ(journal.Take(), Lines{"one.~"});
  EXPECT_EQ(region.listener, nullptr);
  EXPECT_EQ(region.icon, nullptr);
  EXPECT_EQ(region.overlayIcon, nullptr);
  EXPECT_EQ(region.label, nullptr);
  EXPECT_EQ(region.tooltip, nullptr);
  EXPECT_EQ(region.tooltipHUD, nullptr);
  region.Destroy();
}

TEST(TrackMenu, begins_hidden_enabled_and_128_pixels_large) {
  OpenTrackMenu menu;
  EXPECT_TRUE(menu.GetEnabled());
  EXPECT_FALSE(menu.GetVisible());
  EXPECT_FALSE(menu.GetActive());
  EXPECT_FALSE(menu.GetLocked());
  EXPECT_FALSE(menu.IsLeftButtonDown());
  EXPECT_FALSE(menu.IsModifierADown());
  EXPECT_FALSE(menu.IsModifierBDown());
  EXPECT_EQ(menu.GetWidth(), 128);
  EXPECT_EQ(menu.GetHeight(), 128);
  EXPECT_EQ(menu.GetViewportWidth(), 0);
  EXPECT_EQ(menu.GetViewportHeight(), 0);
  EXPECT_EQ(menu.GetMouseCoords(), Vector2(0, 0));
  EXPECT_EQ(menu.GetMenuCursorID(), 26);
  EXPECT_EQ(menu.GetRegionMap(), nullptr);
  EXPECT_EQ(menu.GetRegion(0), nullptr);
  EXPECT_EQ(menu.GetKorvane(), nullptr);
  EXPECT_EQ(menu.GetRenderer(), nullptr);
  EXPECT_TRUE(menu.open.look.sizeIsFixed);
  EXPECT_TRUE(menu.Create());
  EXPECT_TRUE(menu.Destroy());
}

TEST(TrackMenu, without_collaborators_does_nothing) {
  OpenTrackMenu menu;
  EXPECT_FALSE(menu.SetRegionMap(static_cast<TextureID>(17)));
  EXPECT_FALSE(menu.SetAlternateRegionMap(static_cast<TextureID>(17)));
  menu.UseAlternateRegionMap(true);
  EXPECT_FALSE(menu.AddRegion({}));
  EXPECT_FALSE(menu.SetDisabledRegion({}));
  EXPECT_FALSE(menu.OpenMenu());
  menu.SetSize(10, 10);
  menu.SetLocation(1, 2);
  menu.SetOpacity(0.5F);
  menu.SetSingleIconForDraw(nullptr);
  menu.SetVisible(true);
  EXPECT_TRUE(menu.GetActive());
  menu.OnMouseMove(1, 2);
  menu.OnLeftMouseDown(1, 2);
  menu.OnLeftMouseUp(1, 2);
  menu.OnKeyDown(KEY_SHIFT);
  menu.OnKeyUp(KEY_SHIFT);
  menu.Draw();
  menu.DrawTrackMenu();
  EXPECT_FALSE(menu.UpdatePosition());
  EXPECT_FALSE(menu.UpdateActiveRegion());
  EXPECT_FALSE(menu.UpdateTimer());
  EXPECT_EQ(menu.GetMouseCoords(), Vector2(1, 2));
}

// ---- region maps ----

TEST_F(TrackMenuTest, needs_a_picture_for_a_region_map) {
  renderer.FailAlways("CreateImageData");
  EXPECT_FALSE(menu.SetRegionMap(static_cast<TextureID>(MAP)));
  EXPECT_FALSE(menu.SetAlternateRegionMap(static_cast<TextureID>(MAP)));
  EXPECT_EQ(menu.GetRegionMap(), nullptr);
  renderer.Succeed("CreateImageData");
  EXPECT_TRUE(menu.SetRegionMap(static_cast<TextureID>(MAP)));
  EXPECT_NE(menu.GetRegionMap(), nullptr);
  renderer.FailAlways("CreateImageData");
  EXPECT_FALSE(menu.SetRegionMap(static_cast<TextureID>(MAP)));
  EXPECT_EQ(menu.GetRegionMap(), nullptr);  // the former one went first
}

TEST_F(TrackMenuTest, sizes_a_map_to_the_menu_or_the_menu_to_the_map) {
  menu.SetRegionMap(static_cast<TextureID>(OTHER_MAP));
  EXPECT_EQ(menu.GetRegionMap()->GetWidth(), 128);
  EXPECT_EQ(menu.GetRegionMap()->GetHeight(), 128);
  menu.SetSizeIsFixed(false);
  menu.SetRegionMap(static_cast<TextureID>(OTHER_MAP));
  EXPECT_EQ(menu.GetWidth(), 64);
  EXPECT_EQ(menu.GetHeight(), 32);
  EXPECT_EQ(menu.GetRegionMap()->GetWidth(), 64);
  menu.SetAlternateRegionMap(static_cast<TextureID>(MAP));
  EXPECT_EQ(menu.GetWidth(), 100);
  menu.SetSize(10, 20);  // fixes it
  menu.SetRegionMap(static_cast<TextureID>(OTHER_MAP));
  EXPECT_EQ(menu.GetRegionMap()->GetWidth(), 10);
  EXPECT_EQ(menu.GetRegionMap()->GetHeight(), 20);
}

TEST_F(TrackMenuTest, uses_the_alternate_map_only_when_told) {
  menu.SetAlternateRegionMap(static_cast<TextureID>(OTHER_MAP));
  EXPECT_EQ(menu.GetRegionMap(), nullptr);
  menu.SetRegionMap(static_cast<TextureID>(MAP));
  const PixelIcon2D* const primary = menu.GetRegionMap();
  EXPECT_EQ(primary->GetImageWidth(), 100);
  menu.UseAlternateRegionMap(true);
  EXPECT_EQ(menu.GetRegionMap()->GetImageWidth(), 64);
  menu.UseAlternateRegionMap(false);
  EXPECT_EQ(menu.GetRegionMap(), primary);
}

TEST_F(TrackMenuTest, keeps_a_map_in_use_that_is_replaced) {
  menu.SetRegionMap(static_cast<TextureID>(MAP));
  menu.SetAlternateRegionMap(static_cast<TextureID>(MAP));
  menu.UseAlternateRegionMap(true);
  menu.SetAlternateRegionMap(static_cast<TextureID>(OTHER_MAP));
  EXPECT_EQ(menu.GetRegionMap()->GetImageWidth(), 64);
  renderer.FailOnce("CreateImageData");
  EXPECT_FALSE(menu.SetAlternateRegionMap(static_cast<TextureID>(MAP)));
  EXPECT_EQ(menu.GetRegionMap(), nullptr);
}

// ---- regions ----

TEST_F(TrackMenuTest, takes_regions_only_with_a_map) {
  const Region region = MakeRegion("red", Vector3(1, 0, 0), 91);
  EXPECT_FALSE(menu.AddRegion(region));
  EXPECT_FALSE(menu.SetDisabledRegion(region));
  Prepare();
  EXPECT_TRUE(menu.AddRegion(region));
  EXPECT_EQ(menu.GetRegion(0)->listener, region.listener);
  EXPECT_EQ(menu.GetRegion(1), nullptr);
  EXPECT_EQ(menu.GetRegion(-1), nullptr);
}

TEST_F(TrackMenuTest, shows_the_last_region_with_a_picture_at_first) {
  Prepare();
  menu.AddRegion(MakeRegion("red", Vector3(1, 0, 0), 91));
  menu.AddRegion(MakeRegion("green", Vector3(0, 1, 0), 92));
  Region bare;
  bare.zone = 5;
  menu.AddRegion(bare);
  EXPECT_EQ(GetActive(), "green");
  EXPECT_EQ(menu.GetRegion(2)->zone, 5);
}

// The pictures of a region take the size of the map's image until SetSize.
TEST_F(TrackMenuTest, sizes_the_pictures_of_a_new_region_to_the_image_of_the_map) {
  Prepare();
  menu.SetSize(50, 40);
  for (const bool isDisabled : {false, true}) {
    const Region region = Dress(MakeRegion("red", Vector3(1, 0, 0), 91), label);
    EXPECT_TRUE(isDisabled ? menu.SetDisabledRegion(region) : menu.AddRegion(region));
    for (const Icon2D* const icon :
         std::initializer_list<const Icon2D*>{region.icon, region.overlayIcon, &label}) {
      EXPECT_EQ(icon->GetWidth(), 100);
      EXPECT_EQ(icon->GetHeight(), 100);
    }
  }
  menu.Destroy();
}

TEST_F(TrackMenuTest, holds_a_copy_of_the_active_region) {
  Open();
  menu.GetActiveRegion().cursorID = CURSOR_LOOK;
  EXPECT_EQ(menu.GetRegion(2)->cursorID, CURSOR_ARROW);
  menu.OnMouseMove(401, 300);
  EXPECT_EQ(menu.GetActiveRegion().cursorID, CURSOR_ARROW);  // chosen again
  Region other;
  other.zone = 7;
  menu.SetActiveRegion(other);
  EXPECT_EQ(menu.GetActiveRegion().zone, 7);
  EXPECT_EQ(journal.Count("blue.OnLeftMouseUp(401, 300)"), 0);
}

TEST_F(TrackMenuTest, deletes_the_regions_once_and_leaves_nothing_active) {
  Open();
  menu.AddRegion(*menu.GetRegion(0));  // shared
  EXPECT_TRUE(menu.Destroy());
  EXPECT_FALSE(menu.GetVisible());
  EXPECT_FALSE(menu.GetActive());
  for (const char* const name : {"none.~", "red.~", "green.~", "blue.~"}) EXPECT_EQ(journal.Count(name), 1);
  EXPECT_EQ(menu.GetRegion(0), nullptr);
  EXPECT_EQ(menu.GetActiveRegion().listener, nullptr);
  EXPECT_EQ(menu.GetActiveRegion().icon, nullptr);
  menu.OnMouseMove(400, 300);
  menu.OnLeftMouseDown(400, 300);
  menu.Draw();
  EXPECT_TRUE(menu.Destroy());
}

TEST_F(TrackMenuTest, deletes_what_a_replaced_disabled_region_owned) {
  Open();
  menu.SetEnabled(false);
  EXPECT_EQ(GetActive(), "none");
  Region shared = *menu.GetRegion(0);
  shared.icon = new ResourceIcon2D(TEXTURE_NONE);
  menu.SetDisabledRegion(shared);
  EXPECT_EQ(journal.Count("none.~"), 1);
  EXPECT_EQ(menu.GetActiveRegion().listener, nullptr);
  menu.SetDisabledRegion({});
  EXPECT_EQ(journal.Count("red.~"), 0);  // also a region's
}

// The pictures have the size of the map that was there when the region came.
TEST_F(TrackMenuTest, a_replaced_disabled_region_may_take_the_map_away_as_it_goes) {
  Open();
  listeners["none"]->onEnd = [this] { menu.UseAlternateRegionMap(true); };
  const Region next = Dress(MakeRegion("next", Vector3(0, 0, 0), 91), disabledLabel);
  EXPECT_TRUE(menu.SetDisabledRegion(next));
  EXPECT_EQ(journal.Count("none.~"), 1);
  EXPECT_EQ(menu.GetRegionMap(), nullptr);
  EXPECT_EQ(next.icon->GetWidth(), 100);
  EXPECT_EQ(disabledLabel.GetHeight(), 100);
}

TEST_F(TrackMenuTest, leaves_a_region_that_there_is_no_memory_for_as_it_is_and_to_its_owner) {
  PrepareDressed();
  for (const bool isDisabled : {false, true}) {
    DynamicIcon2D text(3);
    Region region = Dress(MakeRegion("more", Vector3(0, 0, 1), 92), text);
    for (std::uint64_t n = 1;; ++n) {
      const AllocationFault fault(n, 1);
      const bool taken = isDisabled ? menu.SetDisabledRegion(region) : menu.AddRegion(region);
      if (fault.GetCounted() < n) break;
      EXPECT_FALSE(taken) << n;
      EXPECT_EQ(text.GetWidth(), 0.0) << n;
      EXPECT_EQ(journal.Count("none.~"), 0) << n;
      EXPECT_EQ(menu.GetRegion(1) == nullptr, !isDisabled) << n;
    }
    EXPECT_EQ(text.GetWidth(), 100.0);
    menu.GetRegion(1)->label = nullptr;
  }
  EXPECT_EQ(journal.Count("none.~"), 1);
  menu.open.disabled.region.label = nullptr;
}

// ---- size, place, opacity ----

TEST_F(TrackMenuTest, sizes_the_pictures_and_the_texts_at_double_resolution) {
  PrepareDressed();
  menu.SetSize(60, 30);
  EXPECT_EQ(menu.GetRegionMap()->GetWidth(), 60);
  EXPECT_EQ(menu.GetRegionMap()->GetHeight(), 30);
  for (const Icon2D* const icon : std::initializer_list<const Icon2D*>{
           dressed.icon, dressed.overlayIcon, disabled.icon, disabled.overlayIcon, disabled.label}) {
    EXPECT_EQ(icon->GetWidth(), 60);
    EXPECT_EQ(icon->GetHeight(), 30);
  }
  EXPECT_EQ(label.GetWidth(), 120);
  EXPECT_EQ(label.GetHeight(), 60);
  menu.SetSize(-5, -1);
  EXPECT_EQ(menu.GetWidth(), 0);
  EXPECT_EQ(menu.GetHeight(), 0);
}

TEST_F(TrackMenuTest, places_both_maps_and_all_pictures) {
  PrepareDressed();
  menu.SetAlternateRegionMap(static_cast<TextureID>(OTHER_MAP));
  menu.SetLocation(12, 34);
  const Vector2 place(12, 34);
  EXPECT_EQ(menu.GetPlace(), place);
  for (const Icon2D* const icon : std::initializer_list<const Icon2D*>{
           dressed.icon, dressed.overlayIcon, &label, disabled.icon, disabled.overlayIcon, &disabledLabel}) {
    EXPECT_EQ(icon->GetPosition(), place);
  }
  menu.UseAlternateRegionMap(true);
  EXPECT_EQ(menu.GetPlace(), place);
}

// The lesser of v/2 and 0.7 over the disabled region, the lesser of v and 1 over the others.
TEST_F(TrackMenuTest, spreads_its_opacity) {
  struct Row {
    float value;
    double picture;
    double overDisabled;
    double over;
  };
  const Row rows[] = {
      {0.5F, 0.5, 0.25, 0.5}, {1.0F, 1.0, 0.5, 1.0}, {2.0F, 2.0, 0.7, 1.0}, {3.0F, 3.0, 0.7, 1.0}};
  PrepareDressed();
  for (const Row& row : rows) {
    menu.SetOpacity(row.value);
    EXPECT_EQ(menu.GetOpacity(), row.value);
    EXPECT_EQ(dressed.icon->GetOpacity(), row.picture);
    EXPECT_EQ(disabled.icon->GetOpacity(), row.picture);
    EXPECT_EQ(dressed.overlayIcon->GetOpacity(), row.over);
    EXPECT_EQ(label.GetOpacity(), row.over);
    EXPECT_EQ(disabled.overlayIcon->GetOpacity(), row.overDisabled);
    EXPECT_EQ(disabledLabel.GetOpacity(), row.overDisabled);
  }
}

TEST_F(TrackMenuTest, asks_for_a_frame_after_a_change_that_shows) {
  Open();
  const std::vector<std::function<void()>> changes = {
      [this] { menu.AddRegion({}); },
      [this] { menu.SetDisabledRegion({}); },
      [this] { menu.SetRegionMap(static_cast<TextureID>(MAP)); },
      [this] { menu.SetAlternateRegionMap(static_cast<TextureID>(MAP)); },
      [this] { menu.SetSize(100, 100); },
      [this] { menu.SetLocation(400, 300); },
      [this] { menu.SetOpacity(1.0F); },
      [this] { menu.SetViewportSize(800, 600); },
  };
  for (const bool visible : {true, false}) {
    menu.SetVisible(visible);
    for (std::size_t i = 0; i < changes.size(); ++i) {
      hub.requested = 0;
      changes[i]();
      EXPECT_EQ(hub.requested, visible ? 1 : 0) << i;
    }
  }
}

TEST_F(TrackMenuTest, asks_for_a_frame_for_the_single_picture_also_when_hidden) {
  Prepare();
  hub.requested = 0;
  menu.SetSingleIconForDraw(nullptr);
  EXPECT_EQ(hub.requested, 1);
}

// ---- visible, active, enabled ----

TEST_F(TrackMenuTest, becomes_active_with_its_first_show_and_stays_so) {
  Prepare();
  menu.AddRegion(MakeRegion("red", Vector3(1, 0, 0), 91));
  Forget();
  menu.SetVisible(true);
  EXPECT_EQ(journal.Take(), Lines{"red.OnTrackMenuActivate(true)"});
  EXPECT_EQ(hub.requested, 1);
  EXPECT_EQ(renderer.GetCalls(), Lines{"SetCursorIcon(26)"});
  menu.SetVisible(true);
  EXPECT_EQ(hub.requested, 1);
  menu.SetVisible(false);
  EXPECT_EQ(hub.requested, 2);
  EXPECT_TRUE(menu.GetActive());
  menu.SetVisible(true);
  EXPECT_EQ(journal.Take(), Lines());
}

TEST_F(TrackMenuTest, shows_the_cursor_of_the_menu_only_when_enabled) {
  Open();
  menu.SetVisible(false);
  menu.SetMenuCursorID(CURSOR_ORBIT_CUBE);
  menu.SetEnabled(false);
  Forget();
  menu.SetVisible(true);
  EXPECT_EQ(renderer.CountCalls("SetCursorIcon"), 0);
  menu.SetVisible(false);
  menu.SetEnabled(true);
  menu.SetVisible(true);
  EXPECT_EQ(renderer.GetCalls().back(), "SetCursorIcon(0)");
}

TEST_F(TrackMenuTest, ignores_a_show_with_the_button_down) {
  Open();
  menu.OnLeftMouseDown(400, 300);
  menu.SetVisible(false);
  EXPECT_FALSE(menu.GetVisible());
  menu.SetVisible(true);
  EXPECT_FALSE(menu.GetVisible());
  menu.OnLeftMouseUp(400, 300);
  menu.SetVisible(true);
  EXPECT_TRUE(menu.GetVisible());
}

TEST_F(TrackMenuTest, stays_active_while_it_is_visible) {
  Open();
  menu.SetActive(false);
  EXPECT_TRUE(menu.GetActive());
  EXPECT_EQ(journal.Take(), Lines());
  menu.SetVisible(false);
  menu.SetActive(false);
  EXPECT_FALSE(menu.GetActive());
}

// Text n is made once and counted, textures are loaded when the counts are applied.
TEST_F(TrackMenuTest, holds_pictures_and_texts_while_it_is_active) {
  Prepare();
  Region region = MakeRegion("red", Vector3(1, 0, 0), 91);
  region.overlayIcon = new ResourceIcon2D(static_cast<TextureID>(16));
  region.labelString = static_cast<StringID>(60);
  region.tooltipString = static_cast<StringID>(5);
  region.tooltipHUDString = static_cast<StringID>(50);
  menu.AddRegion(region);
  disabled = MakeRegion("none", Vector3(0, 0, 0), 90);
  disabled.tooltipString = static_cast<StringID>(6);
  menu.SetDisabledRegion(disabled);
  renderer.ApplyTextureUsage();
  Forget();

  menu.SetActive(true);
  EXPECT_EQ(journal.Take(), (Lines{"red.OnTrackMenuActivate(true)", "none.OnTrackMenuActivate(true)"}));
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 0);  // the owner applies the counts
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.TakeCalls(),
            (Lines{"LoadStringResource(60)", "CreateMiniWheelLabel(text 60)", "LoadStringResource(5)",
                   "CreateTooltip(text 5)", "LoadStringResource(50)", "CreateTooltipHUD(text 50)",
                   "LoadStringResource(6)", "CreateTooltip(text 6)", "LoadTexture(16)", "LoadTexture(90)",
                   "LoadTexture(91)"}));
  EXPECT_NE(menu.GetRegion(0)->label, nullptr);
  EXPECT_NE(menu.GetRegion(0)->tooltip, nullptr);
  EXPECT_NE(menu.GetRegion(0)->tooltipHUD, nullptr);

  menu.SetActiveRegion(*menu.GetRegion(0));
  menu.SetActive(false);
  EXPECT_EQ(journal.Take(), (Lines{"red.OnTrackMenuActivate(false)", "none.OnTrackMenuActivate(false)"}));
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("DestroyIcon"), 4);
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 3);
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(menu.GetRegion(0)->label, nullptr);
  EXPECT_EQ(menu.GetRegion(0)->tooltip, nullptr);
  EXPECT_EQ(menu.GetRegion(0)->tooltipHUD, nullptr);
  const Region& active = menu.GetActiveRegion();
  EXPECT_EQ(active.icon, nullptr);
  EXPECT_EQ(active.overlayIcon, nullptr);
  EXPECT_EQ(active.label, nullptr);
  EXPECT_EQ(active.tooltip, nullptr);
  EXPECT_EQ(active.tooltipHUD, nullptr);
  EXPECT_NE(active.listener, nullptr);
}

TEST_F(TrackMenuTest, counts_the_texture_of_the_single_picture) {
  Prepare();
  ResourceIcon2D single(static_cast<TextureID>(77));
  menu.SetSingleIconForDraw(&single);
  menu.SetActive(true);
  menu.SetActive(false);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 0);  // only with the switch
  menu.SetUseSingleIconForDraw(true);
  menu.SetActive(true);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 1);
  menu.SetActive(false);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 1);
}

TEST_F(TrackMenuTest, tells_only_the_listeners_without_a_renderer) {
  Open();
  menu.SetVisible(false);
  menu.SetActive(false);
  menu.SetRenderer(nullptr);
  Forget();
  menu.SetActive(true);
  menu.SetActive(false);
  EXPECT_EQ(journal.lines.size(), 8U);  // four listeners, twice
  EXPECT_EQ(renderer.GetCalls(), Lines());
  EXPECT_EQ(menu.GetActiveRegion().icon, nullptr);
}

TEST_F(TrackMenuTest, gives_back_no_more_than_it_took) {
  renderer.IncrementTextureUsage(static_cast<TextureID>(91));  // somebody else's
  Prepare();
  menu.SetActive(true);
  menu.AddRegion(MakeRegion("red", Vector3(1, 0, 0), 91));
  menu.SetActive(false);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.GetCalls().back(), "LoadTexture(91)");
}

TEST_F(TrackMenuTest, shows_the_disabled_region_while_it_is_not_enabled) {
  Open();
  menu.SetEnabled(false);
  EXPECT_EQ(GetActive(), "none");
  EXPECT_EQ(journal.Take(), Lines());  // no listener hears of it
  EXPECT_EQ(hub.requested, 1);
  menu.SetEnabled(false);
  EXPECT_EQ(hub.requested, 1);
  menu.SetEnabled(true);
  EXPECT_EQ(GetActive(), "blue");
  EXPECT_EQ(hub.requested, 2);
  menu.SetVisible(false);
  hub.requested = 0;
  menu.SetEnabled(false);
  EXPECT_EQ(hub.requested, 0);
}

// ---- the context menu ----

TEST_F(TrackMenuTest, opens_the_menu_of_the_host) {
  Open();
  menu.SetMenu(MENU_TWO_D);
  bool within = false;
  renderer.onMenu = [&] { within = menu.open.state.openingMenu; };
  EXPECT_TRUE(menu.OpenMenu());
  EXPECT_TRUE(within);
  EXPECT_FALSE(menu.open.state.openingMenu);
  EXPECT_EQ(renderer.GetCalls().back(), "OpenMenu(3)");
  menu.SetEnabled(false);
  EXPECT_FALSE(menu.OpenMenu());
  menu.SetEnabled(true);
  menu.SetRenderer(nullptr);
  EXPECT_FALSE(menu.OpenMenu());
}

// ---- who owns the renderer ----

TEST(TrackMenuRenderer, is_deleted_when_the_menu_is_given_another) {
  int ends = 0;
  auto* const last = new MapRenderer(&ends);
  {
    OpenTrackMenu menu;
    auto* const first = new MapRenderer(&ends);
    menu.SetRenderer(first);
    menu.SetRenderer(first);
    EXPECT_EQ(ends, 0);
    menu.SetRenderer(new MapRenderer(&ends));
    EXPECT_EQ(ends, 1);
    menu.SetRenderer(nullptr);
    EXPECT_EQ(ends, 2);
    menu.SetRenderer(nullptr);
    menu.SetRenderer(last);
    EXPECT_EQ(ends, 2);
  }
  EXPECT_EQ(ends, 2);  // the last one is left to whoever made it
  delete last;
}

TEST(TrackMenuRenderer, is_only_borrowed_where_it_is_shared) {
  MapRenderer first;
  MapRenderer second;
  OpenTrackMenu menus[3];
  for (OpenTrackMenu& menu : menus) menu.SetRendererShared(true);
  for (Renderer* const value :
       std::initializer_list<Renderer*>{&first, &second, nullptr, &first, &first, nullptr, &second}) {
    for (OpenTrackMenu& menu : menus) {
      menu.SetRenderer(value);
      EXPECT_EQ(menu.GetRenderer(), value);
    }
  }
}

TEST(TrackMenuRenderer, is_forgotten_when_it_ends_elsewhere) {
  int ends = 0;
  OpenTrackMenu menu;
  auto renderer = std::make_unique<MapRenderer>(&ends);
  menu.SetRenderer(renderer.get());
  menu.SetRegionMap(static_cast<TextureID>(17));
  TrackMenu::Region region;
  region.icon = new ResourceIcon2D(static_cast<TextureID>(18));
  region.labelString = static_cast<StringID>(60);
  menu.AddRegion(region);
  menu.SetActive(true);
  EXPECT_NE(menu.GetRegion(0)->label, nullptr);
  renderer.reset();
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(menu.GetRenderer(), nullptr);
  menu.SetSize(10, 10);
  menu.SetLocation(1, 1);
  menu.SetOpacity(0.5F);
  MapRenderer next;
  menu.SetRendererShared(true);
  menu.SetRenderer(&next);
  EXPECT_EQ(ends, 1);
  EXPECT_NE(menu.GetRegion(0)->label, nullptr);
  EXPECT_EQ(next.CountCalls("CreateMiniWheelLabel"), 1);
}

// Whatever goes first: the menu with what it holds, or a renderer of the host.
TEST(TrackMenuRenderer, may_end_before_and_after_the_menu) {
  for (const bool rendererFirst : {false, true}) {
    for (const bool shared : {false, true}) {
      for (const bool destroyed : {false, true}) {
        auto renderer = std::make_unique<MapRenderer>();
        auto menu = std::make_unique<OpenTrackMenu>();
        menu->SetRendererShared(shared);
        menu->SetRenderer(renderer.get());
        menu->SetRegionMap(static_cast<TextureID>(17));
        TrackMenu::Region region;
        region.icon = new ResourceIcon2D(static_cast<TextureID>(18));
        region.tooltipString = static_cast<StringID>(1);
        menu->AddRegion(region);
        menu->SetVisible(true);
        if (destroyed) menu->Destroy();
        if (rendererFirst) renderer.reset();
        menu.reset();
        if (renderer == nullptr) continue;
        renderer->ApplyTextureUsage();
        EXPECT_EQ(renderer->GetLiveIconCount(), 0);
        EXPECT_EQ(renderer->CountCalls("LoadTexture"), 0);
      }
    }
  }
}

TEST_F(TrackMenuTest, moves_its_resources_to_another_renderer) {
  Prepare();
  Region region = MakeRegion("red", Vector3(1, 0, 0), 91);
  region.tooltipString = static_cast<StringID>(5);
  menu.AddRegion(region);
  menu.SetVisible(true);
  MapRenderer other;
  Forget();
  menu.SetRenderer(&other);
  EXPECT_EQ(journal.Take(), (Lines{"red.OnTrackMenuActivate(false)", "red.OnTrackMenuActivate(true)"}));
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  other.ApplyTextureUsage();
  EXPECT_EQ(other.GetCalls(), (Lines{"LoadStringResource(5)", "CreateTooltip(text 5)", "LoadTexture(91)"}));
  menu.SetRenderer(&renderer);
}

}  // namespace
