// How views share a window.
#include "viewer/view_grid.h"

#include <gtest/gtest.h>

namespace {

using zovview::FindViewAt;
using zovview::PlaceViews;
using zovview::ViewPlace;

TEST(ViewGridTest, views_cover_the_window_but_for_the_lines_between_them) {
  for (int count = 1; count <= zovview::MOST_VIEWS; ++count) {
    for (const auto& [width, height] : {std::pair(800, 600), {801, 601}, {64, 2000}}) {
      const std::vector<ViewPlace> places = PlaceViews(count, width, height);
      ASSERT_EQ(places.size(), static_cast<std::size_t>(count));
      int covered = 0;
      for (const ViewPlace& place : places) {
        EXPECT_GE(place.x, 0);
        EXPECT_GE(place.y, 0);
        EXPECT_LE(place.x + place.width, width);
        EXPECT_LE(place.y + place.height, height);
        covered += place.width * place.height;
      }
      EXPECT_LE(covered, width * height);
      EXPECT_GE(covered, width * height - 3 * (width + height));
    }
  }
}

TEST(ViewGridTest, the_first_is_at_the_top_left) {
  EXPECT_EQ(PlaceViews(4, 802, 602)[0].y, 302);
  EXPECT_EQ(PlaceViews(3, 802, 602)[0].height, 602);
  EXPECT_EQ(PlaceViews(3, 802, 602)[1].y, 302);
  EXPECT_EQ(PlaceViews(2, 802, 602)[1].x, 402);
}

TEST(ViewGridTest, each_pixel_belongs_to_the_view_that_shows_it_or_else_to_the_nearest) {
  const std::vector<ViewPlace> places = PlaceViews(4, 802, 602);
  EXPECT_EQ(FindViewAt(places, 10, 590), 0U);
  EXPECT_EQ(FindViewAt(places, 790, 590), 1U);
  EXPECT_EQ(FindViewAt(places, 10, 10), 2U);
  EXPECT_EQ(FindViewAt(places, 790, 10), 3U);
  EXPECT_EQ(FindViewAt(places, 400, 590), 0U);
  EXPECT_EQ(FindViewAt(places, 401, 590), 1U);
  EXPECT_EQ(FindViewAt(places, -1000, -1000), 2U);
  EXPECT_EQ(FindViewAt(places, 5000, 400), 1U);
}

TEST(ViewGridTest, a_window_without_room_still_gives_each_a_pixel) {
  for (int count = 1; count <= zovview::MOST_VIEWS; ++count) {
    for (const ViewPlace& place : PlaceViews(count, 1, 1)) {
      EXPECT_EQ(place.width, 1);
      EXPECT_EQ(place.height, 1);
    }
  }
}

}  // namespace
