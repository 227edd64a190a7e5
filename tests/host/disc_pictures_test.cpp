// The pictures of the navigation discs: maps, highlights and captions against a description of their own.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "contrast.h"
#include "zovhost/host_texts.h"
#include "zovhost/resource_pack.h"

namespace {

using zovhost::Image;
using zovhost::ResourcePack;

using zovtest::GetContrast;
using zovtest::GetLuminance;
using zovtest::LayOver;
using Key = zovtest::Colour;

// A wedge in fractions of the disc's half width and degrees clockwise from the top.
struct Wedge {
  Key key;
  int picture;
  double inner;
  double outer;
  double from;
  double to;
  int caption = -1;
};

struct Disc {
  std::string name;
  int overlay;
  int map;
  int base;
  std::vector<Wedge> wedges;
};

void PrintTo(const Disc& disc, std::ostream* out) { *out << disc.name; }

constexpr double hub = 21.0 / 64.0;
constexpr double rim = 62.0 / 64.0;
constexpr double tab = 76.0 / 64.0;

// The captions are the texts of the small discs, and the kit's own for going forward.
const std::vector<Disc>& GetDiscs() {
  static const std::vector<Disc> discs = {
      {"view_object",
       16,
       17,
       18,
       {{{0, 1, 1}, 19, rim, tab, 34, 56},
        {{0, 0.5, 0}, 20, rim, tab, 124, 146},
        {{1, 1, 0}, 21, 0, hub, 0, 360, 64},
        {{0, 0, 1}, 22, hub, rim, 60, 180, 58},
        {{1, 0, 0}, 23, hub, rim, 180, 300, 62},
        {{0, 1, 0}, 24, hub, rim, -60, 60, 66}}},
      {"tour_building",
       25,
       26,
       27,
       {{{0, 1, 1}, 28, rim, tab, 34, 56},
        {{0, 0.5, 0}, 29, rim, tab, 124, 146},
        {{0, 0, 1}, 30, 0, hub, 0, 360, 64},
        {{0, 1, 0}, 31, hub, rim, -60, 60, 113},
        {{1, 0, 0}, 32, hub, rim, 180, 300, 61},
        {{1, 1, 0}, 33, hub, rim, 60, 180, 60}}},
      {"full_navigation",
       34,
       35,
       36,
       {{{0, 1, 1}, 37, rim, tab, 34, 56},
        {{0.5, 0, 0.5}, 38, rim, tab, 124, 146},
        {{1, 0, 0}, 39, 0, hub, 0, 360, 64},
        {{0, 0, 1}, 40, hub, rim, 5.5 * 360 / 7, 6.5 * 360 / 7, 62},
        {{1, 1, 0}, 41, hub, rim, -0.5 * 360 / 7, 0.5 * 360 / 7, 66},
        {{0, 1, 0}, 42, hub, rim, 4.5 * 360 / 7, 5.5 * 360 / 7, 63},
        {{0, 0, 0.5}, 43, hub, rim, 0.5 * 360 / 7, 1.5 * 360 / 7, 61},
        {{0.5, 0, 0}, 44, hub, rim, 1.5 * 360 / 7, 2.5 * 360 / 7, 65},
        {{0, 0.5, 0}, 45, hub, rim, 2.5 * 360 / 7, 180, 60},
        {{0.5, 0.5, 0.5}, 46, hub, rim, 180, 4.5 * 360 / 7, 58}}},
      {"two_d",
       69,
       70,
       71,
       {{{0, 1, 1}, 75, rim, tab, 34, 56},
        {{0, 0.5, 0}, 76, rim, tab, 124, 146},
        {{0, 0, 1}, 73, 0, hub, 0, 360, 64},
        {{1, 0, 0}, 74, hub, rim, -90, 90, 66},
        {{0, 1, 0}, 72, hub, rim, 90, 270, 63}}},
      {"mini_view_object",
       -1,
       47,
       48,
       {{{1, 0, 0}, 49, 0, hub, 0, 360},
        {{0, 0, 1}, 50, hub, rim, 180, 300},
        {{1, 1, 0}, 51, hub, rim, -60, 60},
        {{0, 1, 0}, 52, hub, rim, 60, 180}}},
      {"mini_tour_building",
       -1,
       53,
       54,
       {{{0.5, 0, 0}, 55, hub, rim, -60, 60},
        {{0, 0.5, 0}, 56, hub, rim, 60, 180},
        {{0, 0, 0.5}, 57, hub, rim, 180, 300},
        {{1, 0, 0}, 58, 0, hub, 0, 360}}},
      {"mini_full_navigation",
       -1,
       59,
       60,
       {{{1, 0, 0}, 61, 0, hub, 0, 360},
        {{0, 0, 1}, 62, hub, rim, 5.5 * 360 / 7, 6.5 * 360 / 7},
        {{1, 1, 0}, 63, hub, rim, -0.5 * 360 / 7, 0.5 * 360 / 7},
        {{0, 1, 0}, 64, hub, rim, 4.5 * 360 / 7, 5.5 * 360 / 7},
        {{0.5, 0.5, 0}, 65, hub, rim, 180, 4.5 * 360 / 7},
        {{0.5, 0, 0}, 66, hub, rim, 1.5 * 360 / 7, 2.5 * 360 / 7},
        {{0, 0, 0.5}, 67, hub, rim, 0.5 * 360 / 7, 1.5 * 360 / 7},
        {{0, 0.5, 0}, 68, hub, rim, 2.5 * 360 / 7, 180}}},
  };
  return discs;
}

bool IsLarge(const Disc& disc) { return disc.overlay >= 0; }

// To the left of the ray that leaves the middle at an angle or, for wedges of up to half a turn, on it.
bool IsClockwiseOf(double x, double y, double angle) {
  const double radians = angle * std::acos(-1.0) / 180.0;
  return std::sin(radians) * y + std::cos(radians) * x >= 0.0;
}

// `x` to the right and `y` down, -1 to 1.
const Wedge* FindWedge(const Disc& disc, double x, double y) {
  for (const Wedge& wedge : disc.wedges) {
    const double squared = x * x + y * y;
    if (squared < wedge.inner * wedge.inner || squared >= wedge.outer * wedge.outer) continue;
    const bool whole = wedge.to - wedge.from == 360;
    if (whole || (IsClockwiseOf(x, y, wedge.from) && !IsClockwiseOf(x, y, wedge.to))) return &wedge;
  }
  return nullptr;
}

const Wedge* FindWedgeOfPixel(const Disc& disc, const Image& image, int x, int y) {
  return FindWedge(disc, (2 * x + 1.0) / image.width - 1.0, (2 * y + 1.0) / image.height - 1.0);
}

const std::uint8_t* At(const Image& image, int x, int y) {
  return image.rgba.data() + 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                                  static_cast<std::size_t>(x));
}

double GetDistance(const std::uint8_t* pixel, const Key& key) {
  return std::hypot(pixel[0] / 255.0 - key[0], pixel[1] / 255.0 - key[1], pixel[2] / 255.0 - key[2]);
}

// How near the colour under the pointer has to be to that of a region.
constexpr double nearEnough = 0.14;

Image Render(const ResourcePack& pack, int id, double points, double scale = 1.0) {
  Image image;
  EXPECT_TRUE(pack.RenderSizedPicture(id, points, scale, image)) << id;
  return image;
}

Image RenderMap(int id) {
  Image image;
  EXPECT_TRUE(ResourcePack::GetDefault()->RenderHitMap(id, image)) << id;
  return image;
}

class DiscPictures : public testing::TestWithParam<Disc> {};
INSTANTIATE_TEST_SUITE_P(Discs, DiscPictures, testing::ValuesIn(GetDiscs()),
                         [](const auto& disc) { return disc.param.name; });

// ---- the maps ----

TEST_P(DiscPictures, every_pixel_of_the_map_is_of_the_wedge_that_lies_there) {
  const Image map = RenderMap(GetParam().map);
  ASSERT_EQ(map.width, 256);
  ASSERT_EQ(map.height, 256);
  for (int y = 0; y < map.height; ++y) {
    for (int x = 0; x < map.width; ++x) {
      const Wedge* wedge = FindWedgeOfPixel(GetParam(), map, x, y);
      const std::uint8_t* pixel = At(map, x, y);
      ASSERT_EQ(pixel[3], wedge != nullptr ? 255 : 0) << x << ' ' << y;
      // Half of 255 is no whole number.
      if (wedge == nullptr) continue;
      ASSERT_LE(GetDistance(pixel, wedge->key), 0.5 / 255.0 * std::sqrt(3.0) + 1e-9) << x << ' ' << y;
    }
  }
}

TEST_P(DiscPictures, every_pixel_of_the_map_is_near_enough_to_one_key_only) {
  const Image map = RenderMap(GetParam().map);
  for (int y = 0; y < map.height; ++y) {
    for (int x = 0; x < map.width; ++x) {
      const std::uint8_t* pixel = At(map, x, y);
      if (pixel[3] == 0) continue;
      const auto count =
          std::count_if(GetParam().wedges.begin(), GetParam().wedges.end(),
                        [&](const Wedge& wedge) { return GetDistance(pixel, wedge.key) < nearEnough; });
      ASSERT_EQ(count, 1);
      ASSERT_GE(GetDistance(pixel, {0, 0, 0}), nearEnough);  // what stands for a disc that is switched off
    }
  }
}

// The way runs along the steps of a border for a while, so a pixel beside it counts as well.
bool IsWholeAround(const Image& map, int x, int y) {
  for (int row = y - 1; row <= y + 1; ++row) {
    for (int column = x - 1; column <= x + 1; ++column) {
      const bool inside = row >= 0 && column >= 0 && row < map.height && column < map.width;
      if (inside && At(map, column, row)[3] == 255) return true;
    }
  }
  return false;
}

// A disc that is pushed finds its nearest point on the way to its middle.
TEST_P(DiscPictures, the_map_is_whole_on_the_way_from_each_pixel_to_the_middle) {
  const Image map = RenderMap(GetParam().map);
  for (int y = 0; y < map.height; ++y) {
    for (int x = 0; x < map.width; ++x) {
      if (At(map, x, y)[3] == 0) continue;
      for (double t = 0.0; t < 1.0; t += 0.01) {
        const double way = 1.0 - t;
        const int column = static_cast<int>(128.0 + (x + 0.5 - 128.0) * way);
        const int row = static_cast<int>(128.0 + (y + 0.5 - 128.0) * way);
        ASSERT_TRUE(IsWholeAround(map, column, row)) << x << ' ' << y;
      }
    }
  }
}

TEST_P(DiscPictures, every_wedge_has_room_for_a_pointer_at_the_smallest_size) {
  const Image map = RenderMap(GetParam().map);
  const double smallest = IsLarge(GetParam()) ? 64.0 : 32.0;
  for (const Wedge& wedge : GetParam().wedges) {
    int count = 0;
    for (int y = 0; y < map.height; ++y) {
      for (int x = 0; x < map.width; ++x) count += FindWedgeOfPixel(GetParam(), map, x, y) == &wedge;
    }
    EXPECT_GE(count * smallest * smallest / (256.0 * 256.0), 48.0) << wedge.picture;
  }
}

// ---- rest and highlight ----

bool IsAllOf(const Disc& disc, const Wedge* wedge, const Image& image, int x, int y, int reach) {
  for (int row = y - reach; row <= y + reach; ++row) {
    for (int column = x - reach; column <= x + reach; ++column) {
      if (FindWedgeOfPixel(disc, image, column, row) != wedge) return false;
    }
  }
  return true;
}

bool IsNear(const Disc& disc, const Wedge* wedge, const Image& image, int x, int y, int reach) {
  for (int row = y - reach; row <= y + reach; ++row) {
    for (int column = x - reach; column <= x + reach; ++column) {
      if (FindWedgeOfPixel(disc, image, column, row) == wedge) return true;
    }
  }
  return false;
}

TEST_P(DiscPictures, a_highlight_covers_its_wedge_and_nothing_else) {
  const auto pack = ResourcePack::GetDefault();
  const Disc& disc = GetParam();
  const Image rest = Render(*pack, disc.base, 256);
  for (const Wedge& wedge : disc.wedges) {
    const Image lit = Render(*pack, wedge.picture, 256);
    ASSERT_EQ(lit.width, 256);
    for (int y = 0; y < 256; ++y) {
      for (int x = 0; x < 256; ++x) {
        const bool same = std::equal(At(rest, x, y), At(rest, x, y) + 4, At(lit, x, y));
        if (!IsNear(disc, &wedge, lit, x, y, 2)) {
          ASSERT_TRUE(same) << wedge.picture << ' ' << x << ' ' << y;
        } else if (IsAllOf(disc, &wedge, lit, x, y, 2)) {
          ASSERT_FALSE(same) << wedge.picture << ' ' << x << ' ' << y;
        }
      }
    }
  }
}

TEST_P(DiscPictures, nothing_is_drawn_beside_the_map) {
  const auto pack = ResourcePack::GetDefault();
  const Image rest = Render(*pack, GetParam().base, 256);
  for (int y = 0; y < 256; ++y) {
    for (int x = 0; x < 256; ++x) {
      if (!IsAllOf(GetParam(), nullptr, rest, x, y, 2)) continue;
      ASSERT_EQ(At(rest, x, y)[3], 0) << x << ' ' << y;
    }
  }
}

// Dark, nearly opaque pixels: those of glyphs at rest, borders are lighter.
int CountInk(const Disc& disc, const Wedge* wedge, const Image& image) {
  int count = 0;
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const std::uint8_t* pixel = At(image, x, y);
      count += pixel[3] > 200 && pixel[0] < 110 && FindWedgeOfPixel(disc, image, x, y) == wedge;
    }
  }
  return count;
}

TEST_P(DiscPictures, every_wedge_shows_a_glyph_at_rest) {
  const auto pack = ResourcePack::GetDefault();
  const Disc& disc = GetParam();
  for (const double points : {64.0, 128.0, 256.0}) {
    const Image rest = Render(*pack, disc.base, points);
    for (const Wedge& wedge : disc.wedges) {
      const double least = points / 64.0 * (wedge.inner == rim ? 2.0 : 12.0);
      EXPECT_GE(CountInk(disc, &wedge, rest), least) << wedge.picture << " at " << points;
    }
  }
}

TEST(SmallDiscPictures, show_the_glyph_of_the_wedge_in_use_at_the_smallest_size) {
  const auto pack = ResourcePack::GetDefault();
  for (const Disc& disc : GetDiscs()) {
    if (IsLarge(disc)) continue;
    std::set<std::vector<std::uint8_t>> different;
    for (const Wedge& wedge : disc.wedges) different.insert(Render(*pack, wedge.picture, 32).rgba);
    EXPECT_EQ(different.size(), disc.wedges.size()) << disc.name;
    EXPECT_EQ(CountInk(disc, &disc.wedges[0], Render(*pack, disc.base, 32)), 0) << disc.name;
  }
}

// ---- captions ----

// Pixels that a line of a caption has covered.
bool IsInk(const Image& overlay, int x, int y) {
  const bool inside = x >= 0 && y >= 0 && x < overlay.width && y < overlay.height;
  return inside && At(overlay, x, y)[3] > 90;
}

struct Box {
  int left, top, right, bottom;  // the last two are beyond it
};

Box FindInk(const Disc& disc, const Wedge& wedge, const Image& overlay) {
  Box box{overlay.width, overlay.height, 0, 0};
  for (int y = 0; y < overlay.height; ++y) {
    for (int x = 0; x < overlay.width; ++x) {
      if (!IsInk(overlay, x, y) || FindWedgeOfPixel(disc, overlay, x, y) != &wedge) continue;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
             std::max(box.bottom, y + 1)};
    }
  }
  return box;
}

class LargeDiscPictures : public testing::TestWithParam<Disc> {
 protected:
  // One short capital in place of each caption, so that its height can be read off; the size of the letters
  // is that of the words, as the longest decides it and stays.
  static std::shared_ptr<ResourcePack> MakePackWithCapital(int caption) {
    auto pack = ResourcePack::MakeDefault();
    pack->SetString(caption, "H");
    return pack;
  }
};
INSTANTIATE_TEST_SUITE_P(Discs, LargeDiscPictures,
                         testing::Values(GetDiscs()[0], GetDiscs()[1], GetDiscs()[2], GetDiscs()[3]),
                         [](const auto& disc) { return disc.param.name; });

TEST_P(LargeDiscPictures, the_capitals_of_every_caption_are_six_pixels_high) {
  for (const Wedge& wedge : GetParam().wedges) {
    if (wedge.caption < 0) continue;
    const Image overlay = Render(*MakePackWithCapital(wedge.caption), GetParam().overlay, 128);
    const Box ink = FindInk(GetParam(), wedge, overlay);
    EXPECT_GE(ink.bottom - ink.top, 6) << wedge.picture;
    EXPECT_LE(ink.bottom - ink.top, 9) << wedge.picture;
  }
}

TEST_P(LargeDiscPictures, every_caption_is_there_whole_within_its_wedge) {
  const Disc& disc = GetParam();
  for (const double points : {128.0, 256.0}) {
    for (const double scale : {1.0, 2.0, 3.0}) {
      const Image overlay = Render(*ResourcePack::GetDefault(), disc.overlay, points, scale);
      for (const Wedge& wedge : disc.wedges) {
        const Box ink = FindInk(disc, wedge, overlay);
        const bool shows = ink.left < ink.right;
        EXPECT_EQ(shows, wedge.caption >= 0) << wedge.picture << " at " << points;
        // A word of three letters is wider than it is high.
        if (!shows) continue;
        EXPECT_GT(ink.right - ink.left, 1.2 * 6 * scale) << wedge.picture;
      }
      for (int y = 0; y < overlay.height; ++y) {
        for (int x = 0; x < overlay.width; ++x) {
          if (!IsInk(overlay, x, y)) continue;
          const Wedge* wedge = FindWedgeOfPixel(disc, overlay, x, y);
          ASSERT_TRUE(wedge != nullptr && IsAllOf(disc, wedge, overlay, x, y, 1)) << x << ' ' << y;
        }
      }
    }
  }
}

std::set<const Wedge*> FindCaptioned(const Disc& disc, const Image& overlay) {
  std::set<const Wedge*> captioned;
  for (int y = 0; y < overlay.height; ++y) {
    for (int x = 0; x < overlay.width; ++x) {
      if (IsInk(overlay, x, y)) captioned.insert(FindWedgeOfPixel(disc, overlay, x, y));
    }
  }
  return captioned;
}

TEST_P(LargeDiscPictures, every_wedge_has_its_caption_in_each_language_at_each_scale) {
  const Disc& disc = GetParam();
  for (const zovhost::Language& language : zovhost::GetLanguages()) {
    const auto pack = ResourcePack::Make(language);
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
      const std::set<const Wedge*> captioned = FindCaptioned(disc, Render(*pack, disc.overlay, 128, scale));
      for (const Wedge& wedge : disc.wedges) {
        EXPECT_EQ(captioned.contains(&wedge), wedge.caption >= 0)
            << language.tag << ": " << pack->GetString(wedge.caption) << " at " << scale;
      }
    }
  }
}

// The darkest pixel of a caption against every pixel around its letters, of the disc in each state over black
// and over white. Whatever lies below has a brightness between these two.
TEST_P(LargeDiscPictures, every_caption_stands_out_from_what_lies_under_it) {
  const auto pack = ResourcePack::GetDefault();
  const Disc& disc = GetParam();
  const Image overlay = Render(*pack, disc.overlay, 128);
  std::vector<int> states = {disc.base};
  for (const Wedge& wedge : disc.wedges) states.push_back(wedge.picture);
  for (const int state : states) {
    const Image image = Render(*pack, state, 128);
    for (const Wedge& wedge : disc.wedges) {
      if (wedge.caption < 0) continue;
      const Box box = FindInk(disc, wedge, overlay);
      for (const double below : {0.0, 1.0}) {
        Key darkest = {1, 1, 1};
        double least = 100.0;
        for (int y = box.top; y < box.bottom; ++y) {
          for (int x = box.left; x < box.right; ++x) {
            const Key under = LayOver(At(image, x, y), below);
            const Key shown = LayOver(At(overlay, x, y), under);
            if (GetLuminance(shown) < GetLuminance(darkest)) darkest = shown;
          }
        }
        for (int y = box.top; y < box.bottom; ++y) {
          for (int x = box.left; x < box.right; ++x) {
            least = std::min(least, GetContrast(darkest, LayOver(At(image, x, y), below)));
          }
        }
        EXPECT_GE(least, 4.5) << "picture " << state << ", caption " << wedge.caption << " over " << below;
      }
    }
  }
}

TEST_P(LargeDiscPictures, a_small_size_has_no_captions) {
  const Image overlay = Render(*ResourcePack::GetDefault(), GetParam().overlay, 64);
  EXPECT_EQ(overlay.width, 64);
  for (std::size_t i = 3; i < overlay.rgba.size(); i += 4) ASSERT_EQ(overlay.rgba[i], 0);
}

TEST_P(LargeDiscPictures, a_caption_that_finds_no_room_gives_way_to_the_glyph) {
  const Disc& disc = GetParam();
  const Wedge& wedge = disc.wedges[3];
  auto pack = ResourcePack::MakeDefault();
  ASSERT_TRUE(pack->SetString(wedge.caption, "Donaudampfschifffahrtsgesellschaft"));
  const Image overlay = Render(*pack, disc.overlay, 128);
  const Box ink = FindInk(disc, wedge, overlay);
  EXPECT_GE(ink.left, ink.right);
  // The others stay as they are, and the glyph takes the room.
  const Wedge& other = disc.wedges[2];
  EXPECT_LT(FindInk(disc, other, overlay).left, FindInk(disc, other, overlay).right);
  EXPECT_GT(CountInk(disc, &wedge, Render(*pack, disc.base, 128)),
            CountInk(disc, &wedge, Render(*ResourcePack::GetDefault(), disc.base, 128)));
}

TEST(DiscCaptions, a_caption_in_two_words_is_broken_before_it_gives_way) {
  const Disc& disc = GetDiscs()[0];
  const Wedge& orbit = disc.wedges[4];
  auto pack = ResourcePack::MakeDefault();
  ASSERT_TRUE(pack->SetString(orbit.caption, "Umkreise alles"));
  const Image overlay = Render(*pack, disc.overlay, 128);
  const Box ink = FindInk(disc, orbit, overlay);
  EXPECT_GE(ink.bottom - ink.top, 14);  // two lines of capitals
  EXPECT_LE(ink.bottom - ink.top, 22);
}

TEST(DiscCaptions, a_longer_word_makes_all_of_them_smaller_but_not_too_small) {
  const Disc& disc = GetDiscs()[0];
  const Wedge& zoom = disc.wedges[5];
  const auto getHeight = [&](const std::string& rewind) {
    auto pack = ResourcePack::MakeDefault();
    pack->SetString(64, rewind);  // of the hub, which has the least room
    pack->SetString(zoom.caption, "H");
    const Box ink = FindInk(disc, zoom, Render(*pack, disc.overlay, 128, 3.0));
    return ink.bottom - ink.top;
  };
  EXPECT_LT(getHeight("Rewind"), getHeight("Re"));
  EXPECT_GE(getHeight("Rewind"), 18);
}

TEST(DiscCaptions, follow_the_table_of_texts) {
  auto pack = ResourcePack::MakeDefault();
  const Image before = Render(*pack, 25, 128);
  ASSERT_TRUE(pack->SetString(zovhost::HOST_TEXT_FORWARD, "Vor"));
  EXPECT_NE(Render(*pack, 25, 128).rgba, before.rgba);
  EXPECT_EQ(Render(*ResourcePack::GetDefault(), 25, 128).rgba, before.rgba);
}

// ---- the pack ----

TEST(DiscPack, has_every_picture_of_the_discs) {
  const auto pack = ResourcePack::GetDefault();
  std::set<int> named;
  for (const Disc& disc : GetDiscs()) {
    if (IsLarge(disc)) named.insert(disc.overlay);
    named.insert({disc.map, disc.base});
    for (const Wedge& wedge : disc.wedges) named.insert(wedge.picture);
  }
  // Those above are of the welcome screen.
  for (int id = 16; id <= 76; ++id) {
    EXPECT_TRUE(named.count(id) == 1) << id;
    EXPECT_TRUE(pack->HasPicture(id)) << id;
    EXPECT_TRUE(pack->IsSizedPicture(id)) << id;
  }
}

TEST(DiscPack, a_picture_has_the_pixels_of_its_size) {
  const auto pack = ResourcePack::GetDefault();
  for (const double points : {32.0, 64.0, 128.0, 256.0}) {
    for (const int scale : {1, 2, 3}) {
      for (const int id : {34, 36, 60}) {
        const Image image = Render(*pack, id, points, scale);
        EXPECT_EQ(image.width, points * scale);
        EXPECT_EQ(image.height, points * scale);
        EXPECT_EQ(image.rgba.size(), static_cast<std::size_t>(4 * image.width * image.height));
      }
    }
  }
  Image image;
  ASSERT_TRUE(pack->RenderPicture(36, 2.0, image));
  EXPECT_EQ(image.width, 256);  // 128 points
  ASSERT_TRUE(pack->RenderPicture(60, 2.0, image));
  EXPECT_EQ(image.width, 128);  // 64 points
}

TEST(DiscPack, refuses_sizes_that_cannot_be) {
  const auto pack = ResourcePack::GetDefault();
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const double points : {0.0, -64.0, std::nan(""), infinity, -infinity, 1e9, 0.4}) {
    Image image{1, 1, {1, 2, 3, 4}};
    EXPECT_FALSE(pack->RenderSizedPicture(36, points, 1.0, image)) << points;
    EXPECT_EQ(image.rgba, (std::vector<std::uint8_t>{1, 2, 3, 4}));
  }
  Image image{1, 1, {1, 2, 3, 4}};
  for (const double scale : {0.0, -1.0, std::nan(""), infinity, 9.0}) {
    EXPECT_FALSE(pack->RenderSizedPicture(36, 128.0, scale, image)) << scale;
  }
  for (const int id : {-1, 0, 94, 150, 185, 1 << 30}) {
    EXPECT_FALSE(pack->RenderSizedPicture(id, 128.0, 1.0, image)) << id;
    EXPECT_FALSE(pack->IsSizedPicture(id)) << id;
  }
  EXPECT_EQ(image.rgba, (std::vector<std::uint8_t>{1, 2, 3, 4}));
}

TEST(DiscPack, only_maps_are_hit_maps) {
  const auto pack = ResourcePack::GetDefault();
  for (const Disc& disc : GetDiscs()) {
    Image image;
    EXPECT_FALSE(pack->RenderHitMap(disc.base, image)) << disc.name;
    EXPECT_FALSE(pack->RenderHitMap(disc.wedges[0].picture, image)) << disc.name;
    EXPECT_FALSE(pack->RenderHitMap(disc.overlay, image)) << disc.name;  // -1 is refused as well
  }
}

TEST(DiscPack, a_drawing_takes_the_place_of_a_painted_picture) {
  auto pack = ResourcePack::MakeDefault();
  constexpr const char* square =
      R"(<svg xmlns="http://www.w3.org/2000/svg" width="10" height="10"><rect width="10" height="10" fill="#f00"/></svg>)";
  ASSERT_TRUE(pack->SetPicture(35, square));
  Image image;
  EXPECT_FALSE(pack->IsSizedPicture(35));
  ASSERT_TRUE(pack->RenderHitMap(35, image));
  EXPECT_EQ(image.width, 10);
  ASSERT_TRUE(pack->SetPicture(35, ""));
  EXPECT_FALSE(pack->HasPicture(35));
  EXPECT_FALSE(pack->RenderHitMap(35, image));
  EXPECT_FALSE(ResourcePack().HasPicture(36));  // an empty pack paints nothing
}

}  // namespace
