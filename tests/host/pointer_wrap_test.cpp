// The pointer at the edges of the viewport: where it is set, and where it would be.
#include "zovhost/pointer_wrap.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using zovhost::PixelPosition;
using zovhost::PointerWrap;

constexpr int WIDTH = 100;
constexpr int HEIGHT = 60;

class PointerWrapTest : public testing::Test {
 protected:
  PointerWrapTest() {
    wrap.SetSize(WIDTH, HEIGHT);
    wrap.Restart({50, 30});
  }

  // A motion to where the system then shows the pointer.
  PixelPosition Move(int x, int y, bool wrapping = true) {
    jump.reset();
    return wrap.Follow({x, y}, wrapping, jump);
  }

  PointerWrap wrap;
  std::optional<PixelPosition> jump;
};

TEST_F(PointerWrapTest, inside_the_viewport_the_pointer_is_where_it_is) {
  EXPECT_EQ(Move(98, 1), (PixelPosition{98, 1}));
  EXPECT_FALSE(jump.has_value());
}

TEST_F(PointerWrapTest, beyond_an_edge_it_comes_in_again_on_the_other_side_and_counts_on) {
  struct Case {
    PixelPosition to;
    PixelPosition set;
  };
  // A whole viewport back or on; several where it is far away.
  for (const Case& test : {Case{{104, 30}, {4, 30}}, Case{{-3, 30}, {97, 30}}, Case{{50, 65}, {50, 5}},
                           Case{{50, -1}, {50, 59}}, Case{{-230, 150}, {70, 30}}}) {
    wrap.Restart({50, 30});
    EXPECT_EQ(Move(test.to.x, test.to.y), test.to);
    ASSERT_TRUE(jump.has_value());
    EXPECT_EQ(*jump, test.set);
    // One further, in the direction of the other corner.
    EXPECT_EQ(Move(test.set.x + 1, test.set.y - 1), (PixelPosition{test.to.x + 1, test.to.y - 1}));
    EXPECT_FALSE(jump.has_value());
  }
}

// On a window that fills the screen the pointer comes to the edge and no further; the step over it counts
// one.
TEST_F(PointerWrapTest, on_the_edge_it_wraps_as_well) {
  EXPECT_EQ(Move(99, 30), (PixelPosition{100, 30}));
  EXPECT_EQ(jump, (PixelPosition{0, 30}));
  EXPECT_EQ(Move(1, 30), (PixelPosition{101, 30}));
  EXPECT_EQ(Move(0, 30), (PixelPosition{99, 30}));
  EXPECT_EQ(jump, (PixelPosition{99, 30}));
}

TEST_F(PointerWrapTest, at_rest_on_an_edge_it_does_not_wrap_again) {
  Move(99, 30);
  EXPECT_EQ(Move(0, 31), (PixelPosition{100, 31}));
  EXPECT_FALSE(jump.has_value());
}

TEST_F(PointerWrapTest, several_times_round_it_counts_every_viewport) {
  PixelPosition reached;
  int x = 50;
  for (int step = 0; step < 30; ++step) {
    reached = Move(x + 10, 30);
    x = jump.has_value() ? jump->x : x + 10;
  }
  EXPECT_EQ(reached, (PixelPosition{350, 30}));
}

TEST_F(PointerWrapTest, without_the_wish_it_is_not_set_but_keeps_its_count) {
  EXPECT_EQ(Move(140, 30, false), (PixelPosition{140, 30}));
  EXPECT_FALSE(jump.has_value());
  wrap.Restart({50, 30});
  Move(104, 30);
  EXPECT_EQ(Move(10, 30, false), (PixelPosition{110, 30}));
}

TEST_F(PointerWrapTest, a_restart_forgets_the_count) {
  Move(104, 30);
  wrap.Restart({4, 30});
  EXPECT_EQ(Move(5, 30), (PixelPosition{5, 30}));
}

TEST_F(PointerWrapTest, a_pointer_that_does_not_jump_is_not_asked_again) {
  Move(104, 30);
  EXPECT_EQ(Move(106, 30), (PixelPosition{106, 30}));
  EXPECT_FALSE(jump.has_value());
  EXPECT_EQ(Move(230, 30), (PixelPosition{230, 30}));
  EXPECT_FALSE(jump.has_value());
}

TEST_F(PointerWrapTest, a_viewport_without_room_wraps_nothing) {
  for (const int size : {-5, 0, 1}) {
    wrap.SetSize(size, size);
    EXPECT_EQ(Move(7, -3), (PixelPosition{7, -3}));
    EXPECT_FALSE(jump.has_value());
  }
}

}  // namespace
