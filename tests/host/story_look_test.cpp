// The look of the storyboard and of the pictures that it is made of, held to stored pictures and to what they
// must do.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "contrast.h"
#include "graphics_canvas.h"
#include "picture_comparison.h"
#include "sheets/story_states.h"
#include "zovhost/resource_pack.h"

namespace zovsheets {

void PrintTo(const StoryState& state, std::ostream* out) { *out << state.name; }
void PrintTo(const StoryKind& kind, std::ostream* out) { *out << kind.name; }

}  // namespace zovsheets

namespace {

using zovhost::Image;
using zovhost::ResourcePack;
using zovsheets::StoryKind;
using zovsheets::StoryState;
using zovtest::Colour;

std::string MakeTestName(std::string name) {
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

// From the top left.
const std::uint8_t* At(const Image& image, int x, int y) {
  return image.rgba.data() + 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                                  static_cast<std::size_t>(x));
}

Image Render(int id, double scale = 1.0) {
  Image image;
  EXPECT_TRUE(ResourcePack::GetDefault()->RenderPicture(id, scale, image)) << id;
  return image;
}

// ---- the panel ----

// All of them on one ground, and enough on the others: on those a picture shows what lies below its own.
std::vector<StoryState> GetStoredStates() {
  std::vector<StoryState> states = zovsheets::GetStoryStates();
  const auto isLeftOut = [](const StoryState& state) {
    const bool isUsual = state.ground == zovsheets::Ground::Gradient;
    const bool isFine = state.scale > 1.5;
    if (isFine) return !isUsual || state.doing != StoryState::Doing::Choosing;
    return !isUsual && state.doing != StoryState::Doing::Playing;
  };
  states.erase(std::remove_if(states.begin(), states.end(), isLeftOut), states.end());
  return states;
}

class StoryPicture : public testing::TestWithParam<StoryState> {};

TEST_P(StoryPicture, looks_as_it_did) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  Image drawn;
  ASSERT_TRUE(zovsheets::PaintStory(GetParam(), drawn));
  zovtest::ExpectStored(drawn, "storyboard", GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(States, StoryPicture, testing::ValuesIn(GetStoredStates()),
                         [](const auto& state) { return MakeTestName(state.param.name); });

// What the tolerance must not let through.
TEST(StoryPictures, of_different_states_are_told_apart) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  std::vector<Image> images;
  for (const StoryState& state : zovsheets::GetStoryStates()) {
    if (state.ground != zovsheets::Ground::Gradient || state.scale > 1.5) continue;
    ASSERT_TRUE(zovsheets::PaintStory(state, images.emplace_back()));
  }
  EXPECT_EQ(images.size(), 5u);
  for (std::size_t i = 0; i < images.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_FALSE(zovtest::IsSimilar(zovtest::Compare(images[i], images[k]))) << i << ' ' << k;
    }
  }
}

TEST(StoryPictures, are_of_many_states_each_with_a_name_of_its_own) {
  std::set<std::string> names;
  for (const StoryState& state : zovsheets::GetStoryStates()) names.insert(state.name);
  EXPECT_EQ(names.size(), zovsheets::GetStoryStates().size());
  EXPECT_EQ(names.size(), 40u);  // five, on four grounds, in two sizes
}

// ---- the pictures by themselves ----

class StoryLook : public testing::TestWithParam<StoryKind> {};

TEST_P(StoryLook, is_as_it_was_on_a_fine_display) {
  Image image;
  ASSERT_TRUE(zovsheets::PaintStoryKind(*ResourcePack::GetDefault(), GetParam(), zovsheets::Ground::Gradient,
                                        2.0, image));
  zovtest::ExpectStored(image, "storyboard", std::string("kind-") + GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Kinds, StoryLook,
                         testing::ValuesIn(zovsheets::GetStoryKinds().begin(),
                                           zovsheets::GetStoryKinds().end()),
                         [](const auto& kind) { return MakeTestName(kind.param.name); });

struct Numbers {
  int first;
  int last;
  int width;  // points
  int height;
};

constexpr Numbers ALL[] = {
    {102, 102, 256, 100}, {103, 103, 186, 32}, {104, 115, 16, 16}, {116, 125, 128, 128}, {126, 131, 20, 20},
    {132, 138, 64, 64},   {139, 144, 16, 16},  {145, 145, 6, 128}, {146, 146, 6, 64},
};

template <typename Check>
void ForEach(Check check) {
  for (const Numbers& row : ALL) {
    for (int id = row.first; id <= row.last; ++id) check(id, row);
  }
}

TEST(StoryPictures, have_their_size_at_every_scale) {
  const auto pack = ResourcePack::GetDefault();
  ForEach([&](int id, const Numbers& size) {
    EXPECT_TRUE(pack->HasPicture(id)) << id;
    for (const int scale : {1, 2, 3}) {
      Image image;
      ASSERT_TRUE(pack->RenderPicture(id, scale, image)) << id;
      EXPECT_EQ(image.width, size.width * scale) << id;
      EXPECT_EQ(image.height, size.height * scale) << id;
    }
  });
}

// Half a point may be lost, never the proportions.
TEST(StoryPictures, are_drawn_for_the_size_at_which_they_show) {
  const auto pack = ResourcePack::GetDefault();
  ForEach([&](int id, const Numbers& size) {
    EXPECT_TRUE(pack->IsSizedPicture(id)) << id;
    for (const int pixels : {1, 7, 51, 200}) {
      Image image;
      ASSERT_TRUE(pack->RenderSizedPicture(id, pixels, 1.0, image)) << id;
      EXPECT_EQ(image.width, pixels) << id;
      EXPECT_NEAR(image.height, std::max(1.0, 1.0 * pixels * size.height / size.width), 0.5) << id;
    }
  });
}

TEST(StoryPictures, refuse_sizes_that_cannot_be) {
  const auto pack = ResourcePack::GetDefault();
  const double infinity = std::numeric_limits<double>::infinity();
  ForEach([&](int id, const Numbers&) {
    for (const double points : {0.0, -8.0, std::nan(""), infinity, 1e9, 0.4}) {
      Image image{1, 1, {1, 2, 3, 4}};
      EXPECT_FALSE(pack->RenderSizedPicture(id, points, 1.0, image)) << points;
      EXPECT_EQ(image.width, 1);
    }
  });
}

TEST(StoryPictures, each_are_another) {
  const auto pack = ResourcePack::GetDefault();
  std::set<std::vector<std::uint8_t>> different;
  int count = 0;
  ForEach([&](int id, const Numbers&) {
    Image image;
    ASSERT_TRUE(pack->RenderPicture(id, 2.0, image));
    different.insert(image.rgba);
    ++count;
  });
  EXPECT_EQ(count, 45);
  EXPECT_EQ(different.size(), 45u);
}

// At a glance: as they lie on the panel, at its coarsest.
TEST(StoryPictures, under_the_mouse_and_at_rest_are_told_apart) {
  const auto isToldApart = [](int a, int b) {
    const zovsheets::StoryKind one = {"one", a, a};
    const zovsheets::StoryKind other = {"other", b, b};
    const auto pack = ResourcePack::GetDefault();
    for (const zovsheets::Ground ground : zovsheets::grounds) {
      Image first;
      Image second;
      EXPECT_TRUE(zovsheets::PaintStoryKind(*pack, one, ground, 1.0, first));
      EXPECT_TRUE(zovsheets::PaintStoryKind(*pack, other, ground, 1.0, second));
      if (zovtest::Compare(first, second).off < 0.05) return false;
    }
    return true;
  };
  for (const int rest :
       {104, 106, 108, 110, 112, 114, 116, 118, 122, 126, 128, 130, 132, 137, 139, 141, 143}) {
    EXPECT_TRUE(isToldApart(rest, rest + 1)) << rest;
  }
  EXPECT_TRUE(isToldApart(110, 112)) << "loop";
  EXPECT_TRUE(isToldApart(111, 113)) << "loop under the mouse";
  EXPECT_TRUE(isToldApart(116, 118)) << "a chosen sequence";
  EXPECT_TRUE(isToldApart(117, 119)) << "a chosen sequence under the mouse";
  EXPECT_TRUE(isToldApart(132, 134)) << "a chosen shot";
}

struct Place {
  int x;
  int y;
};

// Where the panel lays a thumbnail on a card, from the top left of the card. Of a sequence it is 124 by 90
// with its middle 4 above that of the card, of a shot 62 by 45 with its middle 7.5 above.
struct Thumbnail {
  int left;
  int top;
  int right;
  int bottom;
};

const Thumbnail& GetThumbnail(int id) {
  static constexpr Thumbnail SEQUENCE = {2, 15, 126, 105};
  static constexpr Thumbnail SHOT = {1, 2, 63, 47};
  return id < 132 ? SEQUENCE : SHOT;
}

// How many pixels of a square of the picture stand out from what lies at `from`, all over a ground.
int CountReadable(const Image& image, const Colour& below, Place from, Place corner, int side) {
  const Colour under = zovtest::LayOver(At(image, from.x, from.y), below);
  int count = 0;
  for (int y = corner.y; y < corner.y + side; ++y) {
    for (int x = corner.x; x < corner.x + side; ++x) {
      count += zovtest::GetContrast(zovtest::LayOver(At(image, x, y), below), under) >= 4.5;
    }
  }
  return count;
}

// The strokes of the thinnest, a cross, cover some twenty pixels.
constexpr int FEWEST_READABLE = 12;

TEST(StoryPictures, of_title_buttons_read_on_the_title_bar) {
  const Image bar = Render(103);
  for (const double ground : {0.0, 1.0}) {
    const Colour below = zovtest::LayOver(At(bar, 80, 16), ground);
    for (int id = 104; id <= 115; ++id) {
      EXPECT_GE(CountReadable(Render(id), below, {2, 2}, {3, 3}, 10), FEWEST_READABLE) << id << ' ' << ground;
    }
  }
}

TEST(StoryPictures, of_round_buttons_read_on_any_thumbnail) {
  for (const double ground : {0.0, 0.5, 1.0}) {
    const Colour below = {ground, ground, ground};
    for (int id = 126; id <= 144; ++id) {
      if (id > 131 && id < 139) continue;
      const Image image = Render(id);
      const int side = image.width;
      EXPECT_GE(CountReadable(image, below, {2, side / 2}, {4, 4}, side - 8), FEWEST_READABLE)
          << id << ' ' << ground;
    }
  }
}

TEST(StoryPictures, of_added_slides_and_of_tabs_read) {
  for (const double ground : {0.0, 1.0}) {
    const Colour below = {ground, ground, ground};
    for (const int id : {122, 123, 137, 138}) {
      const Image image = Render(id);
      const int half = image.width / 2;
      EXPECT_GE(CountReadable(image, below, {8, 8}, {half / 2, half / 2}, half), FEWEST_READABLE) << id;
    }
    for (const int id : {120, 121, 135, 136}) {
      const Thumbnail& thumbnail = GetThumbnail(id);
      const Place corner = {thumbnail.left, thumbnail.top};
      const Place inside = {corner.x + 1, corner.y + 1};
      EXPECT_GE(CountReadable(Render(id), below, inside, corner, 16), FEWEST_READABLE) << id;
    }
  }
}

TEST(StoryPictures, of_cards_carry_a_white_name) {
  for (const int id : {116, 117, 118, 119, 132, 133, 134}) {
    const Image image = Render(id);
    for (const double ground : {0.0, 1.0}) {
      for (int y = image.height - 9; y < image.height - 3; ++y) {
        const Colour under = zovtest::LayOver(At(image, image.width / 2, y), ground);
        EXPECT_GE(zovtest::GetContrast({1.0, 1.0, 1.0}, under), 4.5) << id << ' ' << y;
      }
    }
  }
}

// The thumbnail lies on it: all of one colour but for the edge, and hardly anything of what is below shows.
TEST(StoryPictures, of_cards_are_plain_where_a_thumbnail_lies) {
  for (const int id : {116, 117, 118, 119, 132, 133, 134}) {
    const Image image = Render(id);
    const Thumbnail& thumbnail = GetThumbnail(id);
    const std::uint8_t* const middle = At(image, image.width / 2, image.width / 2);
    EXPECT_GE(middle[3], 220) << id;
    for (int y = std::max(thumbnail.top, 3); y < thumbnail.bottom; ++y) {
      for (int x = 3; x < image.width - 3; ++x) {
        const bool isCorner = std::min(x, image.width - 1 - x) < 8 && y < 8;
        ASSERT_TRUE(isCorner || std::equal(middle, middle + 4, At(image, x, y)))
            << id << ' ' << x << ' ' << y;
      }
    }
  }
}

// The corners of the thumbnail do not stand out of those of the card.
TEST(StoryPictures, of_cards_reach_around_the_thumbnail) {
  for (const int id : {116, 117, 118, 119, 132, 133, 134}) {
    const Image image = Render(id);
    const Thumbnail& thumbnail = GetThumbnail(id);
    EXPECT_GE(At(image, thumbnail.left, thumbnail.top)[3], 200) << id;
    EXPECT_GE(At(image, thumbnail.right - 1, thumbnail.top)[3], 200) << id;
  }
}

// Nothing on the thumbnail itself, on the name below it and on the head above.
TEST(StoryPictures, of_slides_that_play_leave_thumbnail_and_name_free) {
  for (const int id : {120, 121, 135, 136}) {
    const Image image = Render(id);
    const Thumbnail& thumbnail = GetThumbnail(id);
    for (int y = 0; y < image.height; ++y) {
      for (int x = 0; x < image.width; ++x) {
        const int within = std::min(
            {x - thumbnail.left, thumbnail.right - 1 - x, y - thumbnail.top, thumbnail.bottom - 1 - y});
        const bool isTab = x < thumbnail.left + 16 && y < thumbnail.top + 16;
        EXPECT_TRUE(At(image, x, y)[3] == 0 || (within >= 0 && (isTab || within < 3)))
            << id << ' ' << x << ' ' << y;
      }
    }
  }
}

// A whole frame, and one of which the middle of each side is missing.
TEST(StoryPictures, of_slides_that_play_and_that_wait_differ_in_the_frame) {
  for (const auto& [playing, paused] : {std::array{120, 121}, std::array{135, 136}}) {
    const Thumbnail& thumbnail = GetThumbnail(playing);
    const Place corner = {thumbnail.left, thumbnail.bottom - 1};
    const int middleX = (thumbnail.left + thumbnail.right) / 2;
    const int middleY = (thumbnail.top + thumbnail.bottom) / 2;
    for (const Place& place : {Place{corner.x, middleY}, Place{middleX, corner.y}}) {
      EXPECT_EQ(At(Render(playing), place.x, place.y)[3], 255) << playing;
      EXPECT_EQ(At(Render(paused), place.x, place.y)[3], 0) << paused;
    }
    EXPECT_EQ(At(Render(paused), corner.x, corner.y)[3], 255) << paused;
  }
}

TEST(StoryPictures, of_the_frame_vary_along_its_caps_alone) {
  for (const int scale : {1, 2, 3}) {
    const Image image = Render(102, scale);
    for (int y = 0; y < image.height; ++y) {
      for (int x = 32 * scale; x < 224 * scale; ++x) {
        ASSERT_TRUE(std::equal(At(image, x, y), At(image, x, y) + 4, At(image, 128 * scale, y)))
            << x << ' ' << y;
      }
    }
  }
}

// A dark line and a light one within it, each a point wide, on whole pixels.
TEST(StoryPictures, of_the_frame_have_the_edge_of_a_toolbar) {
  for (const int scale : {1, 2, 3}) {
    const Image image = Render(102, scale);
    const int middle = image.width / 2;
    for (int y = 0; y < scale; ++y) {
      EXPECT_NEAR(At(image, middle, y)[3], 210, 2) << scale;          // 0.5 over 0.65
      EXPECT_NEAR(At(image, middle, y)[0], 88, 3) << scale;           // 225 * 0.5 * 0.65 / 0.825
      EXPECT_NEAR(At(image, middle, scale + y)[3], 188, 2) << scale;  // 0.25 over 0.65
      EXPECT_GT(At(image, middle, scale + y)[0], 230) << scale;
      EXPECT_NEAR(At(image, middle, 2 * scale + y)[3], 166, 2) << scale;  // 0.65
      EXPECT_NEAR(At(image, middle, 2 * scale + y)[0], 225, 2) << scale;
    }
  }
}

TEST(StoryPictures, of_stacks_are_darkest_at_the_outer_side) {
  const Image left = Render(124);
  const Image right = Render(125);
  const int end = left.width - 1;
  EXPECT_GE(At(left, 0, 64)[3], At(left, end, 64)[3] + 80);
  for (int x = 0; x < left.width; ++x) {
    EXPECT_LE(At(left, x, 64)[3], At(left, std::max(x - 1, 0), 64)[3]) << x;
    EXPECT_NEAR(At(left, x, 64)[3], At(right, end - x, 64)[3], 1) << x;
  }
}

TEST(StoryTexts, are_there_for_all_that_the_storyboard_says) {
  const auto pack = ResourcePack::GetDefault();
  std::set<std::string> texts;
  for (int id = 73; id <= 85; ++id) texts.insert(pack->GetString(id));
  EXPECT_EQ(texts.size(), 13u);
  EXPECT_EQ(texts.count(""), 0u);
  EXPECT_FALSE(pack->GetString(9).empty());
  EXPECT_FALSE(pack->GetString(34).empty());
}

// What a new object is called has its number in it.
TEST(StoryTexts, of_names_have_one_place_for_a_number) {
  const auto pack = ResourcePack::GetDefault();
  for (const int id : {73, 74}) {
    const std::string& name = pack->GetString(id);
    EXPECT_NE(name.find("%d"), std::string::npos) << name;
    EXPECT_EQ(name.find('%'), name.rfind('%')) << name;
  }
}

}  // namespace
