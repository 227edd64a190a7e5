#include "korvane/navigation_bar.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

#include "korvane/helm_disc.h"
#include "support/virtual_slot.h"
#include "toolbar/bar_scene.h"

using namespace Korvane;

namespace {

struct SlotsOfBar : NavigationBar {
  static std::vector<int> Get() {
    using N = SlotsOfBar;
    return {VirtualSlot(&N::SetViewportSize),
            VirtualSlot(&N::SetOrientorIsVisible),
            VirtualSlot(&N::SetLinkedToOrientor),
            VirtualSlot(&N::SetActiveHelmDisc),
            VirtualSlot(&N::Create),
            VirtualSlot(&N::Destroy),
            VirtualSlot(&N::Draw),
            VirtualSlot(&N::OnMouseMove),
            VirtualSlot(&N::OnLeftMouseDown),
            VirtualSlot(&N::OnLeftMouseUp),
            VirtualSlot(&N::OnRightMouseDown),
            VirtualSlot(&N::OnRightMouseUp),
            VirtualSlot(&N::ChooseFlyoutItem),
            VirtualSlot(&N::IsFlyoutItemChosen),
            VirtualSlot(&N::SetItemEnabled),
            VirtualSlot(&N::IsItemEnabled),
            VirtualSlot(&N::SetItemExcluded),
            VirtualSlot(&N::IsItemExcluded),
            VirtualSlot(&N::SetItemSelected),
            VirtualSlot(&N::IsItemSelected),
            VirtualSlot(&N::InstantiateToolbar),
            VirtualSlot(&N::PopulateItems),
            VirtualSlot(&N::PopulateApplicationItems),
            VirtualSlot(&N::OnItemClicked),
            VirtualSlot(&N::OnItemPressed),
            VirtualSlot(&N::OnItemFlyoutPressed),
            VirtualSlot(&N::OnItemContextMenu),
            VirtualSlot(&N::OnItemVisibilityChanged),
            VirtualSlot(&N::OnItemsPopulated),
            VirtualSlot(&N::OnPopulateApplicationItems),
            VirtualSlot(&N::OnPositionChanged)};
  }
};

void ExpectFrom2(const std::vector<int>& slots) {
  int expected = 2;
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(NavigationBarSlots, stand_in_their_order) { ExpectFrom2(SlotsOfBar::Get()); }

TEST(NavigationBarSlots, of_the_observer_stand_in_their_order) {
  using O = NavigationBarObserver;
  ExpectFrom2({VirtualSlot(&O::OnItemClicked), VirtualSlot(&O::OnItemContextMenu),
               VirtualSlot(&O::OnItemFlyoutPressed), VirtualSlot(&O::OnBarMenuPressed),
               VirtualSlot(&O::OnItemsPopulated), VirtualSlot(&O::OnMoreControlsPressed),
               VirtualSlot(&O::OnMoreControlsVisibilityChanged), VirtualSlot(&O::OnPopulateApplicationItems),
               VirtualSlot(&O::OnPositionChanged)});
}

class NavigationBarTest : public BarScene, public ::testing::Test {};

// ---- what it is filled with ----

struct ItemRow {
  int tag;
  int type;
  int width;
  int height;
  int flyoutIconSize;
  int texture;
  int iconSize;
  const wchar_t* tooltip;  // of the renderer: its number
};

void ExpectItem(const ToolbarItem& item, const ItemRow& row) {
  EXPECT_EQ(item.GetTag(), row.tag);
  EXPECT_EQ(item.GetType(), row.type) << row.tag;
  EXPECT_EQ(item.GetWidth(), row.width) << row.tag;
  EXPECT_EQ(item.GetHeight(), row.height) << row.tag;
  EXPECT_EQ(item.GetFlyoutIconSize(), row.flyoutIconSize) << row.tag;
  EXPECT_EQ(item.GetIcon().GetTextureResourceID(), row.texture) << row.tag;
  EXPECT_EQ(item.GetIcon().GetWidth(), row.iconSize) << row.tag;
  EXPECT_EQ(item.GetIcon().GetHeight(), row.iconSize) << row.tag;
  EXPECT_EQ(item.GetTooltip(), row.tooltip) << row.tag;
}

TEST_F(NavigationBarTest, has_its_items_in_their_order) {
  Start();
  const ItemRow rows[] = {
      {1, 3, 10, 10, 0, 147, 8, L"text 86"},   {2, 4, 10, 10, 0, 148, 8, L"text 87"},
      {3, 5, 24, 12, 0, 185, 0, L"text 88"},   {5, 0, 28, 28, 0, 154, 32, L"text 90"},
      {6, 1, 28, 28, 10, 155, 32, L"text 91"}, {44, 7, 4, 4, 0, 185, 0, L""},
      {45, 7, 4, 4, 0, 185, 0, L""},           {13, 0, 28, 28, 0, 170, 32, L"text 98"},
      {4, 6, 12, 12, 0, 185, 0, L"text 89"},
  };
  const ToolbarItem::List& items = bar.GetToolbar()->GetItems();
  ASSERT_EQ(items.GetCount(), 9);
  for (int i = 0; i < 9; ++i) ExpectItem(items.GetAt(i), rows[i]);
}

TEST_F(NavigationBarTest, offers_seven_discs_under_its_disc_button) {
  Start();
  const ItemRow rows[] = {
      {6, 0, 28, 28, 0, 155, 32, L"text 91"},  {7, 0, 28, 28, 0, 156, 32, L"text 92"},
      {8, 0, 28, 28, 0, 157, 32, L"text 93"},  {9, 0, 28, 28, 0, 158, 32, L"text 94"},
      {10, 0, 28, 28, 0, 159, 32, L"text 95"}, {11, 0, 28, 28, 0, 160, 32, L"text 96"},
      {12, 0, 28, 28, 0, 161, 32, L"text 97"},
  };
  const ToolbarItem::List& discs = Item(6).GetFlyoutItems();
  ASSERT_EQ(discs.GetCount(), 7);
  for (int i = 0; i < 7; ++i) ExpectItem(discs.GetAt(i), rows[i]);
}

TEST_F(NavigationBarTest, puts_the_items_of_the_host_between_the_two_separators) {
  JournalBarObserver second(&bar, journal, "second ");
  observer.added = {100, 101};
  second.added = {102};
  bar.AddObserver(&second);
  bar.Create();
  EXPECT_EQ(Tags(), "1 2 3 5 6 44 100 101 102 45 13 4 ");
  EXPECT_EQ(journal.Take(), (Lines{"populate 0", "second populate 2", "populated", "second populated"}));
}

TEST_F(NavigationBarTest, has_its_sizes) {
  EXPECT_EQ(NavigationBar::COMMON_ITEM_WIDTH, 28);
  EXPECT_EQ(NavigationBar::COMMON_ITEM_HEIGHT, 28);
  EXPECT_EQ(NavigationBar::APPLICATION_ITEM_WIDTH, 28);
  EXPECT_EQ(NavigationBar::APPLICATION_ITEM_HEIGHT, 28);
}

void ExpectIcon(const ResourceIcon2D& icon, int texture, double width, double height) {
  EXPECT_EQ(icon.GetTextureResourceID(), texture);
  EXPECT_EQ(icon.GetWidth(), width);
  EXPECT_EQ(icon.GetHeight(), height);
}

TEST_F(NavigationBarTest, gives_its_toolbar_the_pictures) {
  class Filled : public OpenNavigationBar {
   public:
    Toolbar* InstantiateToolbar() override { return strip = new OpenToolbar; }
    OpenToolbar* strip = nullptr;
  };
  Filled filled;
  filled.SetKorvane(&hub);
  filled.SetRenderer(&renderer);
  ASSERT_TRUE(filled.Create());
  const StripLook& look = filled.strip->open.look;
  ExpectIcon(look.flyoutArrow, 149, 8, 8);
  ExpectIcon(look.gripHandles[0], 185, 32, 4);
  ExpectIcon(look.gripHandles[1], 185, 4, 32);
  ExpectIcon(look.moreControls[0], 153, 8, 8);
  ExpectIcon(look.moreControls[1], 152, 8, 8);
  for (int i = 0; i < 4; ++i) {
    ExpectIcon(look.corners[i], 171 + i, 8, 8);
    ExpectIcon(look.highlightedCorners[i], 175 + i, 8, 8);
  }
  EXPECT_TRUE(filled.strip->GetWantAnimation());
}

// ---- life ----

TEST_F(NavigationBarTest, create_twice_is_false_and_changes_nothing) {
  EXPECT_TRUE(bar.Create());
  Toolbar* const toolbar = bar.GetToolbar();
  Forget();
  EXPECT_FALSE(bar.Create());
  EXPECT_EQ(bar.GetToolbar(), toolbar);
  EXPECT_EQ(toolbar->GetItems().GetCount(), 9);
  EXPECT_TRUE(journal.Take().empty());
  EXPECT_TRUE(renderer.TakeCalls().empty());
}

TEST_F(NavigationBarTest, create_wants_hub_and_renderer) {
  bar.SetKorvane(nullptr);
  EXPECT_FALSE(bar.Create());
  bar.SetKorvane(&hub);
  bar.SetRenderer(nullptr);
  EXPECT_FALSE(bar.Create());
  EXPECT_EQ(bar.GetToolbar(), nullptr);
  bar.SetRenderer(&renderer);
  EXPECT_TRUE(bar.Create());
}

TEST_F(NavigationBarTest, destroy_lets_go_of_the_toolbar_and_its_pictures) {
  EXPECT_FALSE(bar.Destroy());
  bar.Create();
  const int loaded = renderer.CountCalls("LoadTexture");
  EXPECT_GT(loaded, 0);
  EXPECT_TRUE(bar.Destroy());
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), loaded);
  EXPECT_EQ(bar.GetToolbar(), nullptr);
  EXPECT_FALSE(bar.Destroy());
  EXPECT_TRUE(bar.Create());
}

TEST_F(NavigationBarTest, without_a_toolbar_answers_no) {
  EXPECT_FALSE(bar.OnMouseMove(1, 1) || bar.OnLeftMouseDown(1, 1) || bar.OnLeftMouseUp(1, 1) ||
               bar.OnRightMouseDown(1, 1) || bar.OnRightMouseUp(1, 1));
  EXPECT_FALSE(bar.ChooseFlyoutItem(7) || bar.IsFlyoutItemChosen(7) || bar.SetItemEnabled(5, false) ||
               bar.IsItemEnabled(5) || bar.IsItemExcluded(6) || bar.SetItemSelected(5, true) ||
               bar.IsItemSelected(5) || bar.SetItemExcluded(6, true));
  EXPECT_FALSE(bar.IsMouseInRegion() || bar.IsMouseDownOnItem());
  EXPECT_TRUE(bar.GetTooltip().empty());
  EXPECT_TRUE(bar.IsVisible());
  bar.Draw();
}

TEST_F(NavigationBarTest, is_as_visible_as_it_was_when_it_is_created) {
  bar.SetVisible(false);
  bar.Create();
  EXPECT_FALSE(bar.GetToolbar()->IsVisible());
  bar.SetVisible(true);
  EXPECT_TRUE(bar.IsVisible());
  EXPECT_TRUE(bar.GetToolbar()->IsVisible());
}

// ---- the discs ----

struct DiscRow {
  int type;
  int tag;
};

TEST_F(NavigationBarTest, shows_the_active_disc) {
  for (const DiscRow& row : {DiscRow{0, 10}, {1, 11}, {2, 6}, {3, 12}, {4, 8}, {5, 9}, {6, 7}}) {
    OpenNavigationBar each;
    each.SetKorvane(&hub);
    each.SetRenderer(&renderer);
    each.Create();
    each.SetActiveHelmDisc(static_cast<DiscType>(row.type));
    EXPECT_TRUE(each.IsItemSelected(row.tag)) << row.type;
    EXPECT_TRUE(each.IsFlyoutItemChosen(row.tag)) << row.type;
    each.SetActiveHelmDisc(DiscType::None);
    EXPECT_FALSE(each.IsItemSelected(row.tag)) << row.type;
    EXPECT_TRUE(each.IsFlyoutItemChosen(row.tag)) << row.type;
  }
}

TEST_F(NavigationBarTest, a_number_that_is_no_disc_changes_nothing) {
  Start();
  bar.SetActiveHelmDisc(DiscType::TourBuilding);
  for (const int number : {7, 9, 100, -1}) {
    bar.SetActiveHelmDisc(static_cast<DiscType>(number));
    EXPECT_TRUE(bar.IsItemSelected(11)) << number;
    EXPECT_EQ(bar.open.activeDisc, DiscType::TourBuilding);
  }
}

TEST_F(NavigationBarTest, says_a_disc_only_when_it_is_new) {
  Start();
  bar.SetActiveHelmDisc(DiscType::TwoD);
  bar.SetItemSelected(12, false);
  bar.SetActiveHelmDisc(DiscType::TwoD);
  EXPECT_FALSE(bar.IsItemSelected(12));
}

TEST_F(NavigationBarTest, shows_a_disc_that_was_open_before_it_was_created) {
  bar.SetActiveHelmDisc(DiscType::ViewObject);
  bar.Create();
  EXPECT_TRUE(bar.IsItemSelected(10));
}

// ---- the button that stands in for the cube ----

TEST_F(NavigationBarTest, a_cube_that_shows_hides_its_button_against_the_wish) {
  Start();
  Toolbar& toolbar = *bar.GetToolbar();
  EXPECT_FALSE(toolbar.IsItemHidden(5));
  bar.SetOrientorIsVisible(true);
  EXPECT_TRUE(toolbar.IsItemHidden(5));
  EXPECT_FALSE(bar.IsItemExcluded(5));
  bar.SetItemExcluded(5, false);
  EXPECT_TRUE(toolbar.IsItemHidden(5));
  bar.SetOrientorIsVisible(false);
  EXPECT_FALSE(toolbar.IsItemHidden(5));
}

TEST_F(NavigationBarTest, the_wish_survives_every_layout_and_every_cube) {
  Start();
  EXPECT_TRUE(bar.SetItemExcluded(5, true));
  for (int i = 0; i < 3; ++i) {
    bar.SetOrientorIsVisible(i % 2 == 0);
    bar.SetViewportSize(800, 600 - i);
    bar.Draw();
    EXPECT_TRUE(bar.IsItemExcluded(5));
    EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(5));
  }
  bar.SetOrientorIsVisible(false);
  EXPECT_TRUE(bar.SetItemExcluded(5, false));
  EXPECT_FALSE(bar.GetToolbar()->IsItemHidden(5));
}

TEST_F(NavigationBarTest, takes_the_wish_before_it_is_created) {
  bar.SetItemExcluded(5, true);
  bar.Create();
  EXPECT_TRUE(bar.IsItemExcluded(5));
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(5));
  bar.Destroy();
  bar.SetItemExcluded(5, false);
  bar.SetOrientorIsVisible(true);
  bar.Create();
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(5));
}

TEST_F(NavigationBarTest, the_separators_go_when_the_last_of_the_three_goes) {
  Start();
  Toolbar& toolbar = *bar.GetToolbar();
  bar.SetItemExcluded(6, true);
  bar.SetItemExcluded(13, true);
  EXPECT_FALSE(toolbar.IsItemHidden(44) || toolbar.IsItemHidden(45));
  bar.SetOrientorIsVisible(true);
  EXPECT_TRUE(toolbar.IsItemHidden(44) && toolbar.IsItemHidden(45));
}

TEST_F(NavigationBarTest, the_separators_go_whichever_disc_the_button_shows) {
  Start();
  bar.SetActiveHelmDisc(DiscType::TwoD);
  for (const int tag : {5, 13, 12}) bar.SetItemExcluded(tag, true);
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(44));
}

TEST_F(NavigationBarTest, the_first_tag_of_the_disc_button_hides_it_whichever_disc_it_shows) {
  Start();
  bar.SetActiveHelmDisc(DiscType::TwoD);
  EXPECT_TRUE(bar.SetItemExcluded(6, true));
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(12));
  EXPECT_TRUE(bar.IsItemExcluded(6));
  bar.SetItemExcluded(13, true);
  bar.SetItemExcluded(5, true);
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(44));
  EXPECT_TRUE(bar.SetItemExcluded(6, false));
  EXPECT_FALSE(bar.GetToolbar()->IsItemHidden(12));
}

TEST_F(NavigationBarTest, a_size_that_was_told_before_there_is_a_toolbar_is_not_lost) {
  bar.SetViewportSize(640, 480);
  Start();
  bar.SetViewportSize(640, 480);
  bar.Destroy();
  bar.Create();
  bar.Draw();
  const Box2 bounds = bar.GetToolbar()->GetToolbarBounds();
  EXPECT_GT(bounds.center.x, 500.0);  // at the right edge of 640
  EXPECT_LT(bounds.center.x, 640.0);
}

// What there is merely no room for comes back.
TEST_F(NavigationBarTest, the_separators_stay_where_only_room_is_wanting) {
  Start(60);
  EXPECT_TRUE(bar.IsItemExcluded(13));
  bar.SetOrientorIsVisible(true);
  EXPECT_FALSE(bar.GetToolbar()->IsItemHidden(44));
}

// ---- the location ----

struct LocationRow {
  int location;
  int position;
};

TEST_F(NavigationBarTest, stands_at_its_location_and_reads_it_back) {
  for (const LocationRow& row : {LocationRow{1, 0}, {2, 1}, {3, 2}, {4, 3}}) {
    bar.open.location = static_cast<NavigationBar::Location>(row.location);
    bar.open.locationOffset = {0, 5.0 * row.location};
    bar.Create();
    EXPECT_EQ(bar.GetToolbar()->GetPosition(), row.position);
    EXPECT_EQ(bar.GetToolbar()->GetEdgeOffset(), Vector2(0, 5.0 * row.location));
    EXPECT_EQ(bar.GetLocation(), row.location);
    EXPECT_FALSE(bar.GetToolbar()->IsItemHidden(3));
    bar.Destroy();
    EXPECT_EQ(bar.GetLocation(), row.location);
    EXPECT_EQ(bar.GetLocationOffset(), Vector2(0, 5.0 * row.location));
  }
  bar.Create();
  for (const int corner : {4, 5, 6, 7}) {
    bar.GetToolbar()->SetPosition(static_cast<Toolbar::Position>(corner));
    EXPECT_EQ(bar.GetLocation(), 0) << corner;
  }
}

TEST_F(NavigationBarTest, a_linked_bar_is_linked_before_it_has_a_corner) {
  bar.Create();
  EXPECT_EQ(bar.GetLocation(), 0);
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(3));
  Forget();
  bar.SetLinkedToOrientor(false);
  EXPECT_EQ(bar.GetLocation(), 3);
  EXPECT_FALSE(bar.GetToolbar()->IsItemHidden(3));
  EXPECT_GT(hub.requested, 0);
  bar.SetLinkedToOrientor(true);
  EXPECT_EQ(bar.GetLocation(), 0);
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(3));
}

TEST_F(NavigationBarTest, unlinked_it_stays_where_it_was) {
  bar.Create();
  bar.SetViewportSize(800, 600);
  bar.GetToolbar()->SetWantAnimation(false);
  bar.GetToolbar()->SetPosition(Toolbar::POSITION_TOP_LEFT);
  bar.GetToolbar()->SetCornerOffset({0, 130});
  bar.Draw();
  const Box2 before = bar.GetToolbar()->GetToolbarBounds();
  bar.SetLinkedToOrientor(false);
  EXPECT_EQ(bar.GetLocation(), 1);
  EXPECT_EQ(bar.GetLocationOffset(), Vector2(0, 300 - 130 - before.halfExtent.y));
}

TEST_F(NavigationBarTest, without_a_toolbar_unlinking_goes_to_the_right_edge) {
  bar.open.locationOffset = {3, 4};
  bar.SetLinkedToOrientor(false);
  EXPECT_EQ(bar.GetLocation(), 3);
  EXPECT_EQ(bar.GetLocationOffset(), Vector2());
  bar.SetLinkedToOrientor(true);
  EXPECT_EQ(bar.GetLocation(), 0);
}

TEST_F(NavigationBarTest, tells_of_a_new_position_and_of_a_drag) {
  Start();
  bar.GetToolbar()->SetPosition(Toolbar::POSITION_TOP);
  EXPECT_EQ(journal.Take(), (Lines{"position 0"}));
  bar.Draw();
  const Vector2 grip = Middle(3);
  Press(grip);
  bar.OnMouseMove(60, 300);
  Release({60, 300});
  EXPECT_EQ(journal.Count("position 1"), 1);
  EXPECT_EQ(bar.open.location, bar.GetLocation());
}

TEST_F(NavigationBarTest, a_location_offset_is_zero_once_it_is_linked) {
  bar.SetLinkedToOrientor(false);
  bar.open.locationOffset = {3, 4};
  bar.SetLinkedToOrientor(true);
  EXPECT_EQ(bar.GetLocation(), 0);
  EXPECT_EQ(bar.GetLocationOffset(), Vector2());
}

TEST_F(NavigationBarTest, asks_for_one_frame_when_it_is_linked_or_unlinked_before_there_is_a_toolbar) {
  for (const bool linked : {false, true}) {
    hub.requested = 0;
    bar.SetLinkedToOrientor(linked);
    EXPECT_EQ(hub.requested, 1);
    bar.SetLinkedToOrientor(linked);
    EXPECT_EQ(hub.requested, 1);
  }
}

TEST_F(NavigationBarTest, a_bar_that_is_linked_in_its_drag_has_its_grip_again_once_it_is_dropped) {
  Start();
  Press(Middle(3));
  bar.OnMouseMove(60, 300);
  bar.SetLinkedToOrientor(true);
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(3));
  Release({60, 300});
  EXPECT_EQ(bar.GetLocation(), NavigationBar::LOCATION_LEFT);
  EXPECT_FALSE(bar.GetToolbar()->IsItemHidden(3));
  EXPECT_EQ(journal.Count("position 1"), 1);
}

TEST_F(NavigationBarTest, a_grip_that_its_host_hides_in_the_drag_stays_hidden) {
  Start();
  Press(Middle(3));
  bar.OnMouseMove(60, 300);
  bar.SetItemExcluded(3, true);
  Release({60, 300});
  EXPECT_EQ(journal.Count("position 1"), 1);
  EXPECT_TRUE(bar.GetToolbar()->IsItemHidden(3));
}

/// Asks and acts when a picture is given back, which the end of a toolbar does.
struct AskedAtTheEnd : RecordingRenderer {
  void ReleaseTexture(TextureID id) override {
    RecordingRenderer::ReleaseTexture(id);
    if (const auto act = std::exchange(onRelease, nullptr)) act();
  }
  std::function<void()> onRelease;
};

TEST_F(NavigationBarTest, a_bar_that_is_destroyed_in_its_drag_stands_where_it_was_before) {
  AskedAtTheEnd asked;
  bar.SetRenderer(&asked);
  Start();
  bar.GetToolbar()->SetEdgeOffset({0, 40});
  bar.Draw();
  Press(Middle(3));
  bar.OnMouseMove(300, 200);
  EXPECT_NE(bar.GetLocationOffset(), Vector2(0, 40));
  int told = -1;
  asked.onRelease = [&] { told = bar.GetLocation(); };
  EXPECT_TRUE(bar.Destroy());
  EXPECT_EQ(told, NavigationBar::LOCATION_RIGHT);
  EXPECT_EQ(bar.GetLocation(), NavigationBar::LOCATION_RIGHT);
  EXPECT_EQ(bar.GetLocationOffset(), Vector2(0, 40));
  bar.Create();
  bar.Draw();
  EXPECT_EQ(bar.GetToolbar()->GetToolbarBounds().centerX.GetValue(), 782);
  EXPECT_EQ(bar.GetToolbar()->GetToolbarBounds().centerY.GetValue(), 340);
  bar.SetRenderer(&renderer);
}

TEST_F(NavigationBarTest, a_location_that_a_host_chooses_while_the_bar_is_destroyed_counts) {
  AskedAtTheEnd asked;
  bar.SetRenderer(&asked);
  for (const bool dragged : {false, true}) {
    Start();
    if (dragged) Press(Middle(3));
    bar.OnMouseMove(300, 200);
    asked.onRelease = [&] { bar.SetLinkedToOrientor(true); };
    bar.Destroy();
    EXPECT_EQ(bar.GetLocation(), NavigationBar::LOCATION_LINKED);
    EXPECT_EQ(bar.GetLocationOffset(), Vector2());
  }
  Start();
  bar.GetToolbar()->SetEdgeOffset({0, 40});
  bar.Draw();
  Press(Middle(3));
  bar.OnMouseMove(300, 200);
  asked.onRelease = [&] {
    for (const bool linked : {true, false}) bar.SetLinkedToOrientor(linked);
  };
  bar.Destroy();
  EXPECT_EQ(bar.GetLocation(), NavigationBar::LOCATION_RIGHT);
  EXPECT_EQ(bar.GetLocationOffset(), Vector2());
  bar.SetRenderer(&renderer);
}

TEST_F(NavigationBarTest, a_linked_bar_that_is_destroyed_before_it_has_its_corner_stays_linked) {
  bar.Create();
  EXPECT_EQ(bar.GetToolbar()->GetPosition(), Toolbar::POSITION_RIGHT);
  bar.Destroy();
  EXPECT_EQ(bar.GetLocation(), NavigationBar::LOCATION_LINKED);
}

TEST_F(NavigationBarTest, a_toolbar_that_comes_while_another_is_destroyed_keeps_its_place) {
  AskedAtTheEnd asked;
  bar.SetRenderer(&asked);
  Start();
  asked.onRelease = [&] {
    bar.Create();
    bar.GetToolbar()->SetPosition(Toolbar::POSITION_TOP);
  };
  bar.Destroy();
  EXPECT_EQ(bar.GetLocation(), NavigationBar::LOCATION_TOP);
  bar.Destroy();
  bar.SetRenderer(&renderer);
}

// ---- what observers hear ----

TEST_F(NavigationBarTest, a_press_on_tag_13_gives_no_menu_only_the_click_at_release) {
  Start();
  const Vector2 place = Middle(13);
  Press(place);
  EXPECT_TRUE(journal.Take().empty());
  Release(place);
  EXPECT_EQ(journal.Take(), (Lines{"clicked 13"}));
}

TEST_F(NavigationBarTest, every_observer_hears_of_a_click) {
  Start();
  JournalBarObserver second(&bar, journal, "second ");
  bar.AddObserver(&second);
  Press(Middle(5));
  Release(Middle(5));
  EXPECT_EQ(journal.Take(), (Lines{"clicked 5", "second clicked 5"}));
  EXPECT_FALSE(bar.AddObserver(nullptr));
}

// Places are the right end and the lower edge, cut to whole pixels.
std::string At(const std::string& what, double x, double y) {
  return what + " " + std::to_string(static_cast<int>(x)) + " " + std::to_string(static_cast<int>(y));
}

TEST_F(NavigationBarTest, offers_the_menu_of_the_bar_until_somebody_takes_it) {
  Start();
  JournalBarObserver second(&bar, journal, "second ");
  bar.AddObserver(&second);
  const Box2 box = Item(2).GetBounds();
  const std::string place = At("bar menu", box.Max().x, box.Min().y);
  Press(box.center);
  EXPECT_EQ(journal.Take(), (Lines{place}));
  Release({0, 0});
  observer.answer = false;
  Press(box.center);
  EXPECT_EQ(journal.Take(), (Lines{place, "second " + place}));
}

TEST_F(NavigationBarTest, offers_the_discs_until_somebody_takes_them) {
  Start();
  JournalBarObserver second(&bar, journal, "second ");
  bar.AddObserver(&second);
  const Box2 box = Item(6).GetBounds();
  const std::string place = At("flyout 6", box.Max().x, box.Min().y);
  const Vector2 arrow = Item(6).GetFlyoutIconBounds().center;
  Press(arrow);
  EXPECT_EQ(journal.Take(), (Lines{place}));
  Release({0, 0});
  observer.answer = false;
  Press(arrow);
  EXPECT_EQ(journal.Take(), (Lines{place, "second " + place}));
}

TEST_F(NavigationBarTest, a_right_click_asks_for_the_menu_of_an_item_at_its_icon) {
  Start();
  const Box2 plain = Item(13).GetBounds();
  EXPECT_TRUE(RightPress(plain.center));
  EXPECT_EQ(journal.Take(), (Lines{At("context menu 13", plain.Max().x, plain.Min().y)}));
  EXPECT_FALSE(bar.OnRightMouseUp(0, 0));
  // Of an item with a flyout, above its arrow.
  const Box2 icon = Item(6).GetNonFlyoutIconBounds();
  RightPress(icon.center);
  EXPECT_EQ(journal.Take(), (Lines{At("context menu 6", Item(6).GetBounds().Max().x, icon.Min().y)}));
}

TEST_F(NavigationBarTest, a_right_click_on_the_grip_the_corners_or_a_separator_gives_no_context_menu) {
  observer.added = {100};
  Start();
  for (const int tag : {1, 2, 3, 44, 45}) {
    RightPress(Middle(tag));
    EXPECT_TRUE(journal.Take().empty()) << tag;
  }
  EXPECT_TRUE(RightPress(Middle(100)));
  EXPECT_EQ(journal.lines.size(), 1U);
}

// The bar is 12 + 28 + 38 + 4 + 4 + 28 + 10 + 10 + 8 = 142 high.
TEST_F(NavigationBarTest, in_a_narrow_viewport_tag_4_appears_and_observers_hear_it) {
  Start(142);
  EXPECT_TRUE(Item(4).IsExcluded());
  bar.SetViewportSize(800, 141);
  bar.Draw();
  EXPECT_FALSE(Item(4).IsExcluded());
  EXPECT_EQ(journal.Take(), (Lines{"more controls show 1"}));
  bar.SetViewportSize(800, 142);
  bar.Draw();
  EXPECT_EQ(journal.Take(), (Lines{"more controls show 0"}));
}

TEST_F(NavigationBarTest, tag_4_starts_excluded_and_a_first_layout_with_room_for_all_tells_nobody_of_it) {
  bar.SetLinkedToOrientor(false);
  bar.Create();
  EXPECT_TRUE(Item(4).IsExcluded());
  EXPECT_FALSE(Item(4).IsHidden());
  Forget();
  bar.SetViewportSize(800, 600);
  bar.Draw();
  EXPECT_TRUE(Item(4).IsExcluded());
  EXPECT_TRUE(journal.Take().empty());
}

TEST_F(NavigationBarTest, chooses_what_an_observer_says_among_the_more_controls) {
  Start(120);
  JournalBarObserver second(&bar, journal, "second ");
  bar.AddObserver(&second);
  second.chosen = 9;
  const Box2 box = Item(4).GetBounds();
  const std::string place = At("more controls", box.Max().x, box.Min().y);
  Press(box.center);
  EXPECT_EQ(journal.Take(), (Lines{place, "second " + place, "clicked 9", "second clicked 9"}));
  EXPECT_TRUE(bar.IsFlyoutItemChosen(9));
  Release({0, 0});
  observer.chosen = 13;
  Press(box.center);
  EXPECT_EQ(journal.Take(), (Lines{place, "clicked 13", "second clicked 13"}));
  Release({0, 0});
  observer.chosen = second.chosen = 0;
  Press(box.center);
  EXPECT_EQ(journal.Take(), (Lines{place, "second " + place}));
}

// ---- hosts that act ----

using Gesture = std::function<void(BarScene&)>;
struct Occasion {
  const char* heard;
  Gesture gesture;
};

const Occasion OCCASIONS[] = {
    {"clicked",
     [](BarScene& scene) {
       const Vector2 place = scene.Middle(13);
       scene.Press(place);
       scene.Release(place);
     }},
    {"bar menu", [](BarScene& scene) { scene.Press(scene.Middle(2)); }},
    {"flyout", [](BarScene& scene) { scene.Press(scene.Item(6).GetFlyoutIconBounds().center); }},
    {"context menu", [](BarScene& scene) { scene.RightPress(scene.Middle(13)); }},
    {"position", [](BarScene& scene) { scene.bar.GetToolbar()->SetPosition(Toolbar::POSITION_TOP); }},
    {"more controls show",
     [](BarScene& scene) {
       scene.bar.SetViewportSize(800, 100);
       scene.bar.Draw();
     }},
};

TEST(NavigationBarHosts, may_destroy_the_bar_whatever_they_are_told) {
  for (const Occasion& occasion : OCCASIONS) {
    BarScene scene;
    scene.Start();
    JournalBarObserver later(&scene.bar, scene.journal, "later ");
    scene.bar.AddObserver(&later);
    int heard = 0;
    scene.observer.onHear = [&](const std::string& what) {
      if (what != occasion.heard) return;
      ++heard;
      scene.bar.Destroy();
    };
    occasion.gesture(scene);
    EXPECT_EQ(heard, 1) << occasion.heard;
    EXPECT_EQ(scene.bar.GetToolbar(), nullptr) << occasion.heard;
    EXPECT_TRUE(scene.bar.Create());
    scene.bar.Draw();
  }
}

TEST(NavigationBarHosts, may_remove_themselves_and_change_the_items_whatever_they_are_told) {
  for (const Occasion& occasion : OCCASIONS) {
    BarScene scene;
    scene.Start();
    int heard = 0;
    scene.observer.onHear = [&](const std::string& what) {
      ++heard;
      if (what != occasion.heard) return;
      scene.bar.RemoveObserver(&scene.observer);
      scene.bar.GetToolbar()->GetItems().RemoveAll();
    };
    occasion.gesture(scene);
    EXPECT_GE(heard, 1) << occasion.heard;
    scene.bar.Draw();
    scene.bar.OnLeftMouseUp(0, 0);
    EXPECT_FALSE(scene.bar.SetItemSelected(13, true));
  }
}

/// Made by the host, who has an observer at it from the first.
class GivenBar : public OpenNavigationBar {
 public:
  std::function<void()> onTold;

 private:
  struct Given : Toolbar {
    explicit Given(GivenBar& theOwner) : owner(theOwner) {}
    void OnPositionChanged() override { owner.onTold(); }
    GivenBar& owner;
  };
  Toolbar* InstantiateToolbar() override { return std::make_unique<Given>(*this).release(); }
};

TEST_F(NavigationBarTest, a_host_may_destroy_or_delete_the_bar_while_its_toolbar_is_set_up) {
  for (const bool deletes : {false, true}) {
    auto given = std::make_unique<GivenBar>();
    given->SetKorvane(&hub);
    given->SetRenderer(&renderer);
    given->open.location = NavigationBar::LOCATION_LEFT;
    given->onTold = [&] { deletes ? given.reset() : static_cast<void>(given->Destroy()); };
    GivenBar* const created = given.get();
    EXPECT_FALSE(created->Create());
    EXPECT_EQ(given == nullptr, deletes);
    EXPECT_TRUE(deletes || given->GetToolbar() == nullptr);
  }
}

class FailingToolbar : public Toolbar {
 public:
  bool Create() override { return false; }
  bool Destroy() override {
    Toolbar::Destroy();
    return false;
  }
};

TEST_F(NavigationBarTest, passes_on_that_its_toolbar_fails_and_hears_nothing_of_it) {
  class Failing : public OpenNavigationBar {
    Toolbar* InstantiateToolbar() override { return std::make_unique<FailingToolbar>().release(); }
  } failing;
  JournalBarObserver told(&failing, journal);
  failing.SetKorvane(&hub);
  failing.SetRenderer(&renderer);
  failing.AddObserver(&told);
  EXPECT_FALSE(failing.Create());
  ASSERT_NE(failing.GetToolbar(), nullptr);
  EXPECT_TRUE(failing.GetToolbar()->GetWantAnimation());
  EXPECT_EQ(failing.open.toolbarObserver, nullptr);
  EXPECT_FALSE(failing.Destroy());
  EXPECT_EQ(failing.GetToolbar(), nullptr);
}

TEST_F(NavigationBarTest, its_first_layout_is_at_once_in_its_place) {
  bar.SetLinkedToOrientor(false);
  bar.Create();
  bar.SetViewportSize(800, 600);
  bar.Draw();
  EXPECT_TRUE(bar.GetToolbar()->GetWantAnimation());
  const Box2 box = bar.GetToolbar()->GetToolbarBounds();
  EXPECT_EQ(box.Max().x, 800.0);
  EXPECT_EQ(box.center.y, 300.0);
  EXPECT_FALSE(bar.GetToolbar()->GetToolbarBounds().centerX.IsChangingInTime());
}

// The mouse is never on a separator; a host's own kind of bar may ask for its menu.
TEST_F(NavigationBarTest, has_no_context_menu_for_the_grip_the_corners_and_the_separators) {
  class Asking : public OpenNavigationBar {
   public:
    using NavigationBar::OnItemContextMenu;
  } asking;
  JournalBarObserver told(&asking, journal);
  asking.AddObserver(&told);
  asking.SetKorvane(&hub);
  asking.SetRenderer(&renderer);
  asking.Create();
  journal.Take();
  for (const int tag : {0, 1, 2, 3, 44, 45})
    EXPECT_FALSE(asking.OnItemContextMenu(MakeItem(tag, 0, 28, 28))) << tag;
  EXPECT_TRUE(journal.Take().empty());
  EXPECT_TRUE(asking.OnItemContextMenu(MakeItem(13, 0, 28, 28)));
  EXPECT_EQ(journal.Take().size(), 1U);
}

TEST_F(NavigationBarTest, a_host_may_destroy_and_create_the_bar_while_it_is_asked_for_a_text) {
  struct Asked : RecordingRenderer {
    std::wstring LoadStringResource(int id) override {
      if (const auto act = std::exchange(onText, nullptr)) act();
      return RecordingRenderer::LoadStringResource(id);
    }
    std::function<void()> onText;
  } asked;
  bar.SetRenderer(&asked);
  asked.onText = [&] {
    bar.Destroy();
    bar.Create();
  };
  bar.Create();
  const std::string tags = Tags();
  bar.Destroy();
  bar.Create();
  EXPECT_EQ(Tags(), tags);
  bar.Destroy();
}

TEST_F(NavigationBarTest, a_host_may_destroy_or_delete_the_bar_while_it_is_filled) {
  observer.onHear = [&](const std::string& what) {
    if (what == "populate") bar.Destroy();
  };
  EXPECT_FALSE(bar.Create());
  EXPECT_EQ(bar.GetToolbar(), nullptr);
  for (const std::string occasion : {"populate", "populated"}) {
    auto heap = std::make_unique<NavigationBar>();
    JournalBarObserver deleting(heap.get(), journal);
    heap->SetKorvane(&hub);
    heap->SetRenderer(&renderer);
    heap->AddObserver(&deleting);
    deleting.onHear = [&](const std::string& what) {
      if (what == occasion) heap.reset();
    };
    NavigationBar* const created = heap.get();
    EXPECT_FALSE(created->Create()) << occasion;
    EXPECT_EQ(heap, nullptr) << occasion;
  }
}

TEST_F(NavigationBarTest, a_host_may_delete_the_bar_when_an_item_is_clicked) {
  auto heap = std::make_unique<NavigationBar>();
  JournalBarObserver deleting(heap.get(), journal);
  heap->SetKorvane(&hub);
  heap->SetRenderer(&renderer);
  heap->SetLinkedToOrientor(false);
  heap->Create();
  heap->SetViewportSize(800, 600);
  heap->Draw();
  heap->AddObserver(&deleting);
  deleting.onHear = [&](const std::string&) { heap.reset(); };
  const Box2 box = heap->GetToolbar()->GetItems().GetAt(7).GetBounds();
  const int x = static_cast<int>(box.center.x);
  const int y = static_cast<int>(box.center.y);
  heap->OnLeftMouseDown(x, y);
  NavigationBar* const pressed = heap.get();
  EXPECT_TRUE(pressed->OnLeftMouseUp(x, y));
  EXPECT_EQ(heap, nullptr);
  EXPECT_EQ(journal.Take(), (Lines{"clicked 13"}));
}

TEST(NavigationBar, is_known_to_have_gone_by_who_watches_it) {
  auto bar = std::make_unique<NavigationBar>();
  const Lifeline::Watch alive(bar->GetLifeline());
  EXPECT_TRUE(alive);
  bar.reset();
  EXPECT_FALSE(alive);
}

TEST(NavigationBar, shows_its_items_to_who_may_only_read) {
  BarScene scene;
  scene.Start();
  const Toolbar& toolbar = *scene.bar.GetToolbar();
  EXPECT_GT(toolbar.GetItems().GetCount(), 0);
  EXPECT_EQ(&toolbar.GetItems(), &scene.bar.GetToolbar()->GetItems());
}

}  // namespace
