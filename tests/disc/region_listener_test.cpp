#include "korvane/region_listener.h"

#include <gtest/gtest.h>

#include <memory>

#include "disc/menu_scene.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

TEST(RegionListener, slots_stand_in_their_order) {
  using L = RegionListener;
  const int slots[] = {
      VirtualSlot(&L::OnMouseMove),
      VirtualSlot(&L::OnLeftMouseDown),
      VirtualSlot(&L::OnLeftMouseUp),
      VirtualSlot(&L::OnKeyDown),
      VirtualSlot(&L::OnKeyUp),
      VirtualSlot(&L::OnDraw),
      VirtualSlot(&L::OnTrackMenuActivate),
      VirtualSlot(&L::IsWelcomeListener),
  };
  int expected = 0;
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(RegionListener, notes_the_press_the_drag_and_the_release) {
  Journal journal;
  JournalListener listener("one", journal, nullptr);
  EXPECT_FALSE(listener.IsMouseDown());
  listener.OnMouseMove(1, 2);
  EXPECT_EQ(listener.mouseX, 1);
  EXPECT_EQ(listener.mouseY, 2);
  EXPECT_FALSE(listener.IsMouseDrag());
  listener.OnLeftMouseDown(3, 4);
  EXPECT_TRUE(listener.IsMouseDown());
  EXPECT_FALSE(listener.IsMouseDrag());
  EXPECT_EQ(listener.mouseX, 3);
  EXPECT_EQ(listener.downX, 3);
  EXPECT_EQ(listener.downY, 4);
  listener.OnMouseMove(5, 6);
  EXPECT_TRUE(listener.IsMouseDrag());
  EXPECT_EQ(listener.downX, 3);
  listener.OnLeftMouseUp(7, 8);
  EXPECT_EQ(listener.mouseX, 7);
  EXPECT_EQ(listener.mouseY, 8);
  EXPECT_FALSE(listener.IsMouseDown());
  EXPECT_TRUE(listener.IsMouseDrag());  // tells the drag from a click
  listener.OnLeftMouseDown(9, 9);
  EXPECT_FALSE(listener.IsMouseDrag());
}

TEST(RegionListener, is_no_welcome_listener_and_does_nothing_else) {
  NullRegionListener listener(nullptr);
  EXPECT_FALSE(listener.IsWelcomeListener());
  listener.OnKeyDown(KEY_SHIFT);
  listener.OnKeyUp(KEY_SHIFT);
  listener.OnDraw();
  listener.OnTrackMenuActivate(true);
  EXPECT_FALSE(listener.IsMouseDown());
  EXPECT_FALSE(listener.IsMouseDrag());
}

TEST(RegionListener, forgets_a_menu_that_is_gone) {
  auto menu = std::make_unique<TrackMenu>();
  NullRegionListener listener(menu.get());
  EXPECT_EQ(listener.GetTrackMenu(), menu.get());
  menu.reset();
  EXPECT_EQ(listener.GetTrackMenu(), nullptr);
}

}  // namespace
