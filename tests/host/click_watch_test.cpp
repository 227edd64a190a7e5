// What counts as a click of the left button.
#include "zovhost/click_watch.h"

#include <gtest/gtest.h>

namespace {

using zovhost::MouseButton;
using zovhost::WindowEvent;

WindowEvent At(int x, int y, int clicks = 1, MouseButton button = MouseButton::Left) {
  WindowEvent event;
  event.x = x;
  event.y = y;
  event.clicks = clicks;
  event.button = button;
  return event;
}

constexpr int REACH = zovhost::ClickWatch::REACH;

TEST(ClickWatch, clicks_in_a_row_are_counted) {
  zovhost::ClickWatch watch;
  for (const int count : {1, 2, 3}) {
    watch.OnMouseDown(At(10, 20, count));
    EXPECT_EQ(watch.OnMouseUp(At(10, 20)), count);
  }
}

TEST(ClickWatch, watches_the_button_that_it_is_told) {
  zovhost::ClickWatch watch(MouseButton::Middle);
  watch.OnMouseDown(At(10, 20, 2));
  EXPECT_EQ(watch.OnMouseUp(At(10, 20, 2)), 0);
  watch.OnMouseDown(At(10, 20, 2, MouseButton::Middle));
  EXPECT_EQ(watch.OnMouseUp(At(10, 20, 2, MouseButton::Left)), 0);
  EXPECT_EQ(watch.OnMouseUp(At(10, 20, 2, MouseButton::Middle)), 2);
}

TEST(ClickWatch, a_hand_may_tremble) {
  zovhost::ClickWatch watch;
  watch.OnMouseDown(At(10, 20));
  watch.OnMouseMove(At(10 + REACH, 20 - REACH));
  EXPECT_EQ(watch.OnMouseUp(At(10, 20)), 1);
}

TEST(ClickWatch, a_drag_is_none_even_when_it_comes_back) {
  zovhost::ClickWatch watch;
  for (const WindowEvent& away : {At(10 + REACH + 1, 20), At(10, 20 - REACH - 1)}) {
    watch.OnMouseDown(At(10, 20));
    watch.OnMouseMove(away);
    EXPECT_EQ(watch.OnMouseUp(At(10, 20)), 0);
  }
}

TEST(ClickWatch, a_release_elsewhere_is_none) {
  zovhost::ClickWatch watch;
  watch.OnMouseDown(At(10, 20));
  EXPECT_EQ(watch.OnMouseUp(At(60, 20)), 0);
}

TEST(ClickWatch, other_buttons_make_none_and_spoil_one) {
  zovhost::ClickWatch watch;
  watch.OnMouseDown(At(10, 20, 1, MouseButton::Right));
  EXPECT_EQ(watch.OnMouseUp(At(10, 20, 1, MouseButton::Right)), 0);
  watch.OnMouseDown(At(10, 20));
  watch.OnMouseDown(At(10, 20, 1, MouseButton::Middle));
  EXPECT_EQ(watch.OnMouseUp(At(10, 20)), 0);
}

TEST(ClickWatch, a_release_without_a_press_is_none) {
  zovhost::ClickWatch watch;
  EXPECT_EQ(watch.OnMouseUp(At(0, 0)), 0);
  watch.OnMouseDown(At(10, 20));
  watch.Cancel();
  EXPECT_EQ(watch.OnMouseUp(At(10, 20)), 0);
}

}  // namespace
