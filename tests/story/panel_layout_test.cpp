#include "story/panel_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "support/random.h"

using namespace Korvane;

namespace {

using Sequences = std::vector<Storyboard::DisplayElement>;
using Shots = std::vector<Storyboard::ShotDisplayElement>;

constexpr PanelRoom ROOM{20, 30, 2000, 900};

template <class Slides>
std::vector<double> Centres(const Slides& slides) {
  std::vector<double> centres;
  for (const auto& each : slides) centres.push_back(each.x);
  return centres;
}

// ---- the corner ----

TEST(PanelLayout, a_margin_moves_the_panel_away_from_its_corner) {
  PanelRoom room;
  MoveTo({40, 50, 12}, room);
  EXPECT_EQ(room.x, 52);
  EXPECT_EQ(room.y, 62);
  MoveTo({std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), -1}, room);
  EXPECT_EQ(room.x, std::numeric_limits<int>::max() - 1);
  EXPECT_EQ(room.y, std::numeric_limits<int>::min());
}

// ---- the title bar ----

TEST(PanelLayout, the_title_bar_is_186_by_32_about_its_middle) {
  const Box2 bar = GetTitleBar(ROOM);
  EXPECT_EQ(bar.center, Vector2(120, 273));
  EXPECT_EQ(bar.halfExtent, Vector2(93, 16));
}

TEST(PanelLayout, the_title_buttons_are_squares_of_16) {
  constexpr double X[] = {120.0, 141.0, 162.0, 195.0};
  for (int i = 0; i < 4; ++i) {
    const Box2 button = GetTitleButton(ROOM, static_cast<TitleButton>(i));
    EXPECT_EQ(button.center, Vector2(X[i], 273));
    EXPECT_EQ(button.halfExtent, Vector2(8, 8));
  }
}

// ---- sequences ----

// The left edge of the first stands at 20 + 15, so its centre at 99.
TEST(PanelLayout, sequences_stand_134_pixels_apart) {
  Sequences slides(4);
  PlaceSequenceSlides(ROOM, 0, slides);
  EXPECT_EQ(Centres(slides), (std::vector<double>{99, 233, 367, 501}));
  for (const Slide& each : slides) {
    EXPECT_EQ(each.y, 30 + 15 + 64);
    EXPECT_EQ(each.halfWidth, 64);
    EXPECT_EQ(each.halfHeight, 64);
    EXPECT_FALSE(each.fadeLeft || each.fadeRight);
  }
}

// Places x + 5 (min(i, 4) + 3), then half a slide on.
TEST(PanelLayout, sequences_past_the_left_are_stacked_five_deep) {
  Sequences slides(8);
  PlaceSequenceSlides(ROOM, -5000, slides);
  EXPECT_EQ(Centres(slides), (std::vector<double>{99, 104, 109, 114, 119, 119, 119, 119}));
  for (const Slide& each : slides) EXPECT_TRUE(each.fadeLeft && !each.fadeRight);
}

// From 2000 - 160 leftward, then half a slide on.
TEST(PanelLayout, sequences_past_the_right_are_stacked_five_deep) {
  Sequences slides(8);
  PlaceSequenceSlides(ROOM, 5000, slides);
  EXPECT_EQ(Centres(slides), (std::vector<double>{1884, 1884, 1884, 1884, 1889, 1894, 1899, 1904}));
  for (const Slide& each : slides) EXPECT_TRUE(each.fadeRight && !each.fadeLeft);
}

// ---- shots ----

TEST(PanelLayout, shots_stand_70_pixels_apart) {
  Shots slides(3);
  const RowStacks stacks = PlaceShotSlides(ROOM, 7, slides);
  EXPECT_EQ(Centres(slides), (std::vector<double>{60, 130, 200}));
  for (const Slide& each : slides) {
    EXPECT_EQ(each.y, 30 + 32 + 1 + 134);
    EXPECT_EQ(each.halfWidth, 32);
    EXPECT_EQ(each.halfHeight, 32);
  }
  EXPECT_EQ(stacks.left + stacks.right, 0);
}

TEST(PanelLayout, shots_past_an_edge_are_stacked_three_pixels_apart) {
  Shots slides(4);
  RowStacks stacks = PlaceShotSlides(ROOM, -5000, slides);
  EXPECT_EQ(Centres(slides), (std::vector<double>{53, 56, 59, 62}));
  EXPECT_EQ(stacks.left, 4);
  stacks = PlaceShotSlides(ROOM, 5000, slides);
  EXPECT_EQ(Centres(slides), (std::vector<double>{1958, 1961, 1964, 1967}));
  EXPECT_EQ(stacks.right, 4);
  EXPECT_EQ(stacks.left, 0);
}

// ---- buttons ----

TEST(PanelLayout, the_buttons_of_a_slide_are_round) {
  struct Row {
    RoundButton button;
    Vector2 place;
    double radius;
  };
  Slide slide;
  slide.x = 500;
  slide.y = 300;
  for (const Row& row :
       {Row{SEQUENCE_BUTTONS.first, {47, 46}, 10.0}, Row{SEQUENCE_BUTTONS.second, {47, -30}, 10.0},
        Row{SHOT_BUTTONS.first, {20, 20}, 8.0}, Row{SHOT_BUTTONS.second, {20, -4}, 8.0}}) {
    const Vector2 centre = Vector2(500, 300) + row.place;
    for (int i = 0; i < 16; ++i) {
      const Vector2 way(std::cos(i * 0.4), std::sin(i * 0.4));
      EXPECT_TRUE(row.button.IsHit(slide, centre + way * (row.radius - 0.01)));
      EXPECT_FALSE(row.button.IsHit(slide, centre + way * (row.radius + 0.01)));
    }
  }
}

TEST(PanelLayout, a_drop_lands_six_pixels_around_a_slide) {
  Slide slide;
  slide.halfWidth = slide.halfHeight = 32;
  EXPECT_EQ(GetDropBounds(slide).halfExtent, Vector2(38, 38));
}

TEST(PanelLayout, the_selected_sequence_lies_above_and_the_others_toward_it) {
  EXPECT_TRUE(IsFirstAboveSecondSequence(2, 0, 2));
  EXPECT_FALSE(IsFirstAboveSecondSequence(3, 2, 2));
  EXPECT_TRUE(IsFirstAboveSecondSequence(1, 0, 2));
  EXPECT_TRUE(IsFirstAboveSecondSequence(3, 4, 2));
  EXPECT_TRUE(IsFirstAboveSecondSequence(0, 1, -1));
  EXPECT_TRUE(IsFirstAboveSecondSequence(3, 1, 2));
  EXPECT_FALSE(IsFirstAboveSecondSequence(1, 3, 2));
}

TEST(PanelLayout, the_later_shot_lies_above_where_either_is_on_the_left_stack) {
  Shots slides(4);
  slides[0].stackedLeft = slides[1].stackedLeft = true;
  EXPECT_TRUE(IsFirstAboveSecondShot(slides, 1, 0));
  EXPECT_TRUE(IsFirstAboveSecondShot(slides, 2, 1));
  EXPECT_FALSE(IsFirstAboveSecondShot(slides, 1, 2));
  EXPECT_TRUE(IsFirstAboveSecondShot(slides, 2, 3));
  EXPECT_FALSE(IsFirstAboveSecondShot(slides, 3, 2));
}

TEST(PanelLayout, a_row_without_shots_takes_no_room) {
  const Box2 row = GetShotRow(ROOM, {});
  EXPECT_EQ(row.halfExtent, Vector2());
}

// The square root of twice the square: 3 / sqrt(2) is between 2 and 3.
TEST(PanelLayout, three_pixels_to_the_side_are_a_drag) {
  for (const int way : {0, 1, -1, 2, -2}) EXPECT_FALSE(IsDrag(100, 100 + way));
  for (const int way : {3, -3, 500, -500}) EXPECT_TRUE(IsDrag(100, 100 + way));
}

// ---- any room ----

template <class Slides>
void CheckRow(const Slides& slides, double left) {
  for (std::size_t i = 0; i < slides.size(); ++i) {
    ASSERT_TRUE(std::isfinite(slides[i].x) && std::isfinite(slides[i].y));
    ASSERT_GE(slides[i].x, left);
    ASSERT_GE(slides[i].x, i > 0 ? slides[i - 1].x : left);
  }
}

int AnyNumber(Random& random) {
  constexpr int EXTREMES[] = {0, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
  return random.Integer(0, 9) == 0 ? random.OneOf(EXTREMES) : random.Integer(-3000, 3000);
}

TEST(PanelLayout, keeps_the_order_and_the_left_edge_in_any_room) {
  Random random(74);
  for (int i = 0; i < 5000; ++i) {
    const PanelRoom room{AnyNumber(random), AnyNumber(random), AnyNumber(random), AnyNumber(random)};
    const int offset = AnyNumber(random);
    const auto count = static_cast<std::size_t>(random.Integer(0, 30));
    Sequences sequences(count);
    PlaceSequenceSlides(room, offset, sequences);
    CheckRow(sequences, room.x + 15.0 + 64.0);
    Shots shots(count);
    const RowStacks stacks = PlaceShotSlides(room, offset, shots);
    CheckRow(shots, room.x + 33.0);
    EXPECT_LE(static_cast<std::size_t>(stacks.left + stacks.right), count);
    EXPECT_LE(LimitScrollOffset(room, offset, count), 0);
  }
}

}  // namespace
