// Life, items by their tags, drawing.
#include "korvane/toolbar.h"

#include <gtest/gtest.h>

#include "support/allocation_counter.h"
#include "support/counting_renderer.h"
#include "support/virtual_slot.h"
#include "toolbar/toolbar_scene.h"

using namespace Korvane;

namespace {

struct SlotsOfToolbar : Toolbar {
  static std::vector<int> Get() {
    using T = SlotsOfToolbar;
    return {VirtualSlot(&T::ApplyItemChanges),
            VirtualSlot(&T::Create),
            VirtualSlot(&T::Destroy),
            VirtualSlot(&T::Refresh),
            VirtualSlot(&T::Draw),
            VirtualSlot(&T::OnMouseMove),
            VirtualSlot(&T::OnLeftMouseDown),
            VirtualSlot(&T::OnLeftMouseUp),
            VirtualSlot(&T::OnRightMouseDown),
            VirtualSlot(&T::OnRightMouseUp),
            VirtualSlot(&T::OnItemClicked),
            VirtualSlot(&T::OnItemMouseDown),
            VirtualSlot(&T::OnItemMouseEnter),
            VirtualSlot(&T::OnItemMouseExit),
            VirtualSlot(&T::OnItemFlyoutOpened),
            VirtualSlot(&T::OnItemContextMenu),
            VirtualSlot(&T::OnItemVisibilityChanged),
            VirtualSlot(&T::OnPositionChanged),
            VirtualSlot(&T::OnToolbarDragged)};
  }
};

void ExpectFrom2(const std::vector<int>& slots) {
  int expected = 2;
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(ToolbarSlots, stand_in_their_order) { ExpectFrom2(SlotsOfToolbar::Get()); }

TEST(ToolbarSlots, of_the_observer_stand_in_their_order) {
  using O = ToolbarObserver;
  ExpectFrom2({VirtualSlot(&O::OnItemClicked), VirtualSlot(&O::OnItemMouseDown),
               VirtualSlot(&O::OnItemMouseEnter), VirtualSlot(&O::OnItemMouseExit),
               VirtualSlot(&O::OnItemFlyoutOpened), VirtualSlot(&O::OnItemContextMenu),
               VirtualSlot(&O::OnItemVisibilityChanged), VirtualSlot(&O::OnPositionChanged),
               VirtualSlot(&O::OnToolbarDragged)});
}

class ToolbarTest : public ToolbarScene, public ::testing::Test {};

TEST_F(ToolbarTest, starts_at_the_right_edge_invisible_and_without_animation) {
  EXPECT_EQ(toolbar.GetPosition(), 2);
  EXPECT_EQ(toolbar.open.place.orientation, 0);
  EXPECT_FALSE(toolbar.IsVisible());
  EXPECT_FALSE(toolbar.GetWantAnimation());
  EXPECT_EQ(toolbar.open.fade.Get(), 1.0);
  EXPECT_EQ(toolbar.open.room.sizeLimitWidth, -1);
  EXPECT_EQ(toolbar.open.room.sizeLimitHeight, -1);
  EXPECT_EQ(toolbar.open.mouse.downIndex, -1);
  EXPECT_EQ(toolbar.open.mouse.overIndex, -1);
}

// ---- pictures ----

TEST_F(ToolbarTest, asks_for_a_frame_when_one_side_alone_of_its_room_changes) {
  Start();
  using Resize = void (Toolbar::*)(int width, int height);
  for (const Resize resize : {&Toolbar::SetViewportSize, &Toolbar::SetRibbonSize, &Toolbar::SetSizeLimits}) {
    (toolbar.*resize)(700, 500);
    Forget();
    (toolbar.*resize)(701, 500);
    EXPECT_EQ(hub.requested, 1);
    (toolbar.*resize)(701, 501);
    EXPECT_EQ(hub.requested, 2);
    (toolbar.*resize)(701, 501);
    EXPECT_EQ(hub.requested, 2);
  }
}

TEST_F(ToolbarTest, holds_its_pictures_from_create_to_destroy) {
  Fill();
  toolbar.SetFlyoutIcon(static_cast<TextureID>(50), 8, 8);
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 0);
  EXPECT_TRUE(toolbar.Create());
  // The arrow, six items, and three of the flyout.
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 10);
  EXPECT_TRUE(toolbar.Create());
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 10);
  EXPECT_TRUE(toolbar.Destroy());
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 10);
  EXPECT_TRUE(toolbar.Destroy());
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 10);
}

TEST_F(ToolbarTest, takes_the_pictures_of_new_items_and_of_new_icons) {
  Start();
  toolbar.GetItems().Append(MakeItem(8, 0, 28, 28));
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 0);
  toolbar.ApplyItemChanges();
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"LoadTexture(108)"}));
  toolbar.GetItems().RemoveAt(1);
  toolbar.ApplyItemChanges();
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"ReleaseTexture(102)"}));
  toolbar.SetMoreControlsIcon(Toolbar::ORIENTATION_VERTICAL, static_cast<TextureID>(60), 8, 8);
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"LoadTexture(60)"}));
}

TEST_F(ToolbarTest, moves_its_pictures_to_another_renderer) {
  Start();
  RecordingRenderer other;
  toolbar.SetRenderer(&other);
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 9);
  EXPECT_EQ(other.CountCalls("LoadTexture"), 9);
  toolbar.SetRenderer(nullptr);
  EXPECT_EQ(other.CountCalls("ReleaseTexture"), 9);
}

TEST_F(ToolbarTest, draws_with_pictures_that_do_not_load) {
  renderer.FailAlways("LoadTexture");
  Start();
  toolbar.Draw();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 1);
}

// ---- layout within the life ----

TEST_F(ToolbarTest, lays_out_with_the_next_frame_and_only_once_created) {
  Fill();
  toolbar.SetVisible(true);
  toolbar.SetViewportSize(800, 600);
  toolbar.Refresh();
  toolbar.Draw();
  EXPECT_EQ(Bounds().halfExtent, Vector2());
  toolbar.Create();
  EXPECT_EQ(Bounds().halfExtent, Vector2());
  toolbar.Draw();
  EXPECT_EQ(Bounds().halfExtent, Vector2(18, 61.5));
}

// 123 fit into 123 and not into 122: then 12 for more controls, less the last 28.
TEST_F(ToolbarTest, a_narrow_view_shows_more_controls_and_tells_of_what_has_gone) {
  Start(800, 123);
  EXPECT_EQ(Bounds().halfExtent.y, 61.5);
  toolbar.SetViewportSize(800, 122);
  toolbar.Draw();
  EXPECT_EQ(journal.Take(), (Lines{"excluded 5", "included 6"}));
  EXPECT_EQ(Bounds().halfExtent.y, (123 + 12 - 28) / 2.0);
  EXPECT_TRUE(toolbar.IsItemExcluded(5));
  EXPECT_FALSE(toolbar.IsItemHidden(5));
  toolbar.SetViewportSize(800, 123);
  toolbar.Draw();
  EXPECT_EQ(journal.Take(), (Lines{"included 5", "excluded 6"}));
}

TEST_F(ToolbarTest, draws_nothing_without_viewport_hub_or_renderer) {
  Start();
  toolbar.SetViewportSize(0, 600);
  toolbar.Draw();
  toolbar.SetViewportSize(800, -1);
  toolbar.Draw();
  toolbar.SetViewportSize(800, 600);
  toolbar.SetKorvane(nullptr);
  toolbar.Draw();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 0);
  toolbar.SetKorvane(&hub);
  toolbar.SetRenderer(nullptr);
  toolbar.Draw();
  toolbar.SetRenderer(&renderer);
  toolbar.Draw();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 1);
}

TEST_F(ToolbarTest, draws_no_strip_without_items) {
  toolbar.Create();
  toolbar.SetVisible(true);
  toolbar.SetViewportSize(800, 600);
  toolbar.Draw();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 0);
  EXPECT_EQ(Bounds().halfExtent, Vector2(4, 4));
}

// ---- drawing ----

TEST_F(ToolbarTest, draws_in_one_pass_over_the_viewport) {
  Start();
  toolbar.Draw();
  const Lines calls = renderer.GetCalls();
  EXPECT_EQ(calls.front(), "BeginRender(400, 300, 400, 300, 0)");
  EXPECT_EQ(calls.back(), "EndRender()");
  // The pictures of button, flyout button and plain item.
  EXPECT_EQ(renderer.CountCalls("RenderResource"), 3);
}

TEST_F(ToolbarTest, a_pass_that_does_not_open_draws_nothing) {
  Start();
  renderer.FailAlways("BeginRender");
  toolbar.Draw();
  EXPECT_EQ(renderer.TakeCalls().size(), 1U);
}

// Each piece of the background lies in the strip, and together they fill it.
TEST_F(ToolbarTest, fills_the_strip_in_nine_pieces) {
  Start();
  toolbar.SetCornerIcons(static_cast<TextureID>(71), static_cast<TextureID>(72), static_cast<TextureID>(73),
                         static_cast<TextureID>(74), 8, 8);
  toolbar.Draw();
  double area = 0.0;
  for (std::size_t i = 0; i < 5; ++i) {
    const RecordingRenderer::Geometry& piece = renderer.GetGeometry()[i];
    EXPECT_FLOAT_EQ(piece.material.colour[0], 225.0F / 255.0F);
    EXPECT_EQ(piece.material.texture, i == 0 ? 185 : static_cast<int>(70 + i));
    for (std::size_t quad = 0; quad + 12 <= piece.vertices.size(); quad += 12) {
      const float* const corner = &piece.vertices[quad];
      EXPECT_GE(corner[0], 764.0F);
      EXPECT_LE(corner[6], 800.0F);
      area += (corner[6] - corner[0]) * (corner[7] - corner[1]);
    }
  }
  EXPECT_DOUBLE_EQ(area, 36.0 * 123.0);
}

struct FillRow {
  ToolbarItem::State state;
  ColorRGBA color;
};

TEST_F(ToolbarTest, fills_an_item_in_the_colour_of_its_state) {
  Start();
  toolbar.GetItems().RemoveAll();
  toolbar.GetItems().Append(MakeItem(2, 0, 28, 28));
  toolbar.ApplyItemChanges();
  toolbar.Draw();
  const FillRow rows[] = {{ToolbarItem::STATE_SELECTED, Toolbar::DEFAULT_SELECTED_COLOR},
                          {ToolbarItem::STATE_MOUSE_OVER, Toolbar::DEFAULT_MOUSEOVER_COLOR},
                          {ToolbarItem::STATE_PRESSED, Toolbar::DEFAULT_MOUSEDOWN_COLOR}};
  renderer.ClearCalls();
  toolbar.Draw();
  const std::size_t plain = renderer.GetGeometry().size();
  for (const FillRow& row : rows) {
    Item(2).SetState(row.state);
    renderer.ClearCalls();
    toolbar.Draw();
    const auto& drawn = renderer.GetGeometry();
    ASSERT_GT(drawn.size(), plain + 1);
    EXPECT_FLOAT_EQ(drawn[drawn.size() - 2].material.colour[0], static_cast<float>(row.color.r));
    EXPECT_FLOAT_EQ(drawn.back().material.colour[2], 191.0F / 255.0F);  // the outline
  }
}

TEST_F(ToolbarTest, shows_its_cursor_while_the_mouse_is_near_and_free_or_on_an_item) {
  Start();
  const auto cursorAfterDraw = [&] {
    renderer.SetCursorID(CURSOR_LOOK);
    toolbar.Draw();
    return renderer.GetCursorID();
  };
  EXPECT_EQ(cursorAfterDraw(), CURSOR_LOOK);
  Move({750, 300});
  EXPECT_EQ(cursorAfterDraw(), 26);
  Press({750, 300});
  EXPECT_EQ(cursorAfterDraw(), CURSOR_LOOK);
  Release({750, 300});
  Press(Middle(2));
  EXPECT_EQ(cursorAfterDraw(), 26);
}

TEST_F(ToolbarTest, draws_without_allocating) {
  Start();
  CountingRenderer counting;
  toolbar.SetRenderer(&counting);
  Move(Middle(2));
  for (int i = 0; i < 3; ++i) toolbar.Draw();
  const AllocationCounter counter;
  for (int i = 0; i < 100; ++i) toolbar.Draw();
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_EQ(counting.begun, 103);
  toolbar.SetRenderer(&renderer);
}

// ---- size ----

// A strip that has not been laid out yet has nothing to grow from.
TEST_F(ToolbarTest, the_first_layout_does_not_fly_in) {
  Fill();
  toolbar.Create();
  toolbar.SetWantAnimation(true);
  toolbar.SetVisible(true);
  toolbar.SetItemExcluded(5, true);
  toolbar.SetViewportSize(800, 600);
  toolbar.Draw();
  EXPECT_EQ(Bounds().halfExtent.y, (123 - 28) / 2.0);
}

TEST_F(ToolbarTest, grows_and_shrinks_with_its_items) {
  Start();
  toolbar.SetWantAnimation(true);
  Settle();
  toolbar.SetItemExcluded(5, true);
  toolbar.Draw();
  platform.Advance(100);
  EXPECT_NEAR(Bounds().halfExtent.y, (123 - 14) / 2.0, 1e-9);
  EXPECT_TRUE(toolbar.open.motion.sizeInProgress);
  Settle();
  EXPECT_EQ(Bounds().halfExtent.y, (123 - 28) / 2.0);
  EXPECT_FALSE(toolbar.open.motion.sizeInProgress);
  EXPECT_FALSE(toolbar.open.motion.wantSize);
  EXPECT_EQ(Item(2).GetBounds().halfExtent, Vector2(14, 14));
  Forget();
  toolbar.Draw();
  EXPECT_EQ(hub.requested, 0);
}

// ---- items by their tags ----

TEST_F(ToolbarTest, a_flyout_item_that_is_chosen_takes_the_place_of_its_owner) {
  Start();
  int data = 0;
  Item(3).GetFlyoutItems().GetAt(1).SetData(&data);
  EXPECT_TRUE(toolbar.ChooseFlyoutItem(32));
  ToolbarItem& owner = Item(32);
  EXPECT_EQ(owner.GetType(), 1);
  EXPECT_EQ(owner.GetIcon().GetTextureResourceID(), 132);
  EXPECT_EQ(owner.GetTooltip(), L"tip 32");
  EXPECT_EQ(owner.GetData(), &data);
  EXPECT_FALSE(owner.IsSelected());
  EXPECT_TRUE(toolbar.open.life.refreshPending);
  EXPECT_TRUE(toolbar.IsFlyoutItemChosen(32));
  EXPECT_FALSE(toolbar.IsFlyoutItemChosen(31));
  EXPECT_FALSE(toolbar.ChooseFlyoutItem(32));  // now a tag of the strip
  EXPECT_FALSE(toolbar.ChooseFlyoutItem(2));
  EXPECT_FALSE(toolbar.ChooseFlyoutItem(99));
}

TEST_F(ToolbarTest, selects_items_of_the_strip_and_of_flyouts) {
  Start();
  EXPECT_TRUE(toolbar.SetItemSelected(2, true));
  EXPECT_FALSE(toolbar.SetItemSelected(2, true));
  EXPECT_TRUE(toolbar.IsItemSelected(2));
  EXPECT_TRUE(toolbar.SetItemSelected(2, false));
  EXPECT_FALSE(toolbar.IsItemSelected(2));

  EXPECT_TRUE(toolbar.SetItemSelected(33, true));
  EXPECT_TRUE(toolbar.IsItemSelected(33));
  EXPECT_EQ(Item(33).GetIcon().GetTextureResourceID(), 133);
  // Of another flyout item that is chosen meanwhile.
  EXPECT_TRUE(toolbar.SetItemSelected(31, true));
  EXPECT_TRUE(toolbar.IsFlyoutItemChosen(31));
  EXPECT_TRUE(toolbar.SetItemSelected(32, false));
  EXPECT_FALSE(toolbar.IsItemSelected(31));
  EXPECT_FALSE(toolbar.SetItemSelected(32, false));
}

TEST_F(ToolbarTest, each_change_of_an_item_posts_a_refresh_and_asks_for_a_frame) {
  Start();
  const std::function<bool()> changes[] = {
      [&] { return toolbar.SetItemSelected(2, true); },  [&] { return toolbar.SetItemEnabled(2, false); },
      [&] { return toolbar.SetItemExcluded(2, true); },  [&] { return toolbar.ChooseFlyoutItem(31); },
      [&] { return toolbar.SetItemSelected(32, true); }, [&] { return toolbar.SetItemEnabled(33, false); }};
  for (const auto& change : changes) {
    toolbar.Draw();
    hub.requested = 0;
    EXPECT_FALSE(toolbar.open.life.refreshPending);
    EXPECT_TRUE(change());
    EXPECT_TRUE(toolbar.open.life.refreshPending);
    EXPECT_EQ(hub.requested, 1);
  }
}

TEST_F(ToolbarTest, knows_nothing_of_a_tag_that_is_not_there) {
  Start();
  for (const int tag : {0, -1, 99, 2147483647}) {
    EXPECT_FALSE(toolbar.ChooseFlyoutItem(tag));
    EXPECT_FALSE(toolbar.IsFlyoutItemChosen(tag));
    EXPECT_FALSE(toolbar.IsItemEnabled(tag));
    EXPECT_FALSE(toolbar.SetItemEnabled(tag, true));
    EXPECT_FALSE(toolbar.IsItemSelected(tag));
    EXPECT_FALSE(toolbar.SetItemSelected(tag, true));
    EXPECT_FALSE(toolbar.IsItemHidden(tag));
    EXPECT_FALSE(toolbar.IsItemExcluded(tag));
    EXPECT_FALSE(toolbar.SetItemExcluded(tag, true));
  }
  EXPECT_FALSE(toolbar.open.life.refreshPending);
}

TEST_F(ToolbarTest, what_the_owner_excludes_stays_away_through_every_layout) {
  Start();
  EXPECT_TRUE(toolbar.SetItemExcluded(2, true));
  EXPECT_FALSE(toolbar.SetItemExcluded(2, true));
  for (int i = 0; i < 3; ++i) {
    toolbar.Refresh();
    EXPECT_TRUE(toolbar.IsItemExcluded(2));
    EXPECT_TRUE(toolbar.IsItemHidden(2));
    EXPECT_EQ(Item(2).GetBounds().halfExtent, Vector2());
  }
  EXPECT_TRUE(toolbar.SetItemExcluded(2, false));
  toolbar.Refresh();
  EXPECT_FALSE(toolbar.IsItemExcluded(2));
  EXPECT_EQ(Item(2).GetBounds().halfExtent, Vector2(14, 14));
}

}  // namespace
