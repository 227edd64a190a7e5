// The welcome screen: its maps and pictures against a description of their own.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "zovhost/host_texts.h"
#include "zovhost/resource_pack.h"

namespace {

using zovhost::Image;
using zovhost::ResourcePack;

// Points, from the top left; all corners are rounded by 8, those of the page by 12.
struct Area {
  std::array<int, 3> key;  // red, green, blue, of 255
  int picture;             // -1: none of its own
  double left, top, right, bottom;
  double radius = 8;
};

struct Page {
  std::string name;
  int plain;
  int map;
  std::vector<Area> areas;  // the later lie above the earlier
};

void PrintTo(const Page& page, std::ostream* out) { *out << page.name; }

const std::vector<Page>& GetPages() {
  static const std::vector<Page> pages = {
      {"advanced",
       77,
       83,
       {{{255, 0, 0}, -1, 8, 8, 504, 504, 12},
        {{0, 255, 255}, -1, 32, 132, 480, 436},
        {{0, 0, 128}, 78, 32, 32, 480, 116},
        {{255, 255, 0}, 79, 32, 132, 252, 280},
        {{0, 255, 0}, 80, 260, 132, 480, 280},
        {{255, 0, 255}, 81, 32, 288, 252, 436},
        {{0, 0, 255}, 82, 260, 288, 480, 436},
        {{0, 128, 0}, -1, 176, 452, 336, 486}}},
      {"basic",
       84,
       88,
       {{{255, 0, 0}, -1, 8, 8, 504, 504, 12},
        {{0, 255, 255}, -1, 32, 132, 480, 436},
        {{0, 0, 128}, 85, 32, 32, 480, 116},
        {{128, 128, 0}, 86, 32, 132, 252, 436},
        {{128, 0, 128}, 87, 260, 132, 480, 436},
        {{128, 0, 0}, -1, 176, 452, 336, 486}}},
  };
  return pages;
}

bool IsInside(const Area& area, double x, double y) {
  if (x <= area.left || x >= area.right || y <= area.top || y >= area.bottom) return false;
  const double nearX = std::clamp(x, area.left + area.radius, area.right - area.radius);
  const double nearY = std::clamp(y, area.top + area.radius, area.bottom - area.radius);
  return (x - nearX) * (x - nearX) + (y - nearY) * (y - nearY) < area.radius * area.radius;
}

const Area* FindArea(const Page& page, int x, int y) {
  const Area* found = nullptr;
  for (const Area& area : page.areas) {
    if (IsInside(area, x + 0.5, y + 0.5)) found = &area;
  }
  return found;
}

const std::uint8_t* At(const Image& image, int x, int y) {
  return image.rgba.data() + 4 * (static_cast<std::size_t>(y) * 512 + static_cast<std::size_t>(x));
}

Image Render(const ResourcePack& pack, int id) {
  Image image;
  EXPECT_TRUE(pack.RenderPicture(id, 1.0, image)) << id;
  EXPECT_EQ(image.width, 512) << id;
  EXPECT_EQ(image.height, 512) << id;
  return image;
}

class WelcomePictures : public testing::TestWithParam<Page> {};
INSTANTIATE_TEST_SUITE_P(Pages, WelcomePictures, testing::ValuesIn(GetPages()),
                         [](const auto& page) { return page.param.name; });

TEST_P(WelcomePictures, every_pixel_of_the_map_is_of_the_area_that_lies_there) {
  Image map;
  ASSERT_TRUE(ResourcePack::GetDefault()->RenderHitMap(GetParam().map, map));
  ASSERT_EQ(map.width, 512);
  ASSERT_EQ(map.height, 512);
  for (int y = 0; y < 512; ++y) {
    for (int x = 0; x < 512; ++x) {
      const Area* area = FindArea(GetParam(), x, y);
      const std::uint8_t* pixel = At(map, x, y);
      ASSERT_EQ(pixel[3], area != nullptr ? 255 : 0) << x << ' ' << y;
      if (area == nullptr) continue;
      ASSERT_TRUE(std::equal(area->key.begin(), area->key.end(), pixel)) << x << ' ' << y;
    }
  }
}

// The ground is what tells that the pointer has come to the screen, so it runs all around.
TEST_P(WelcomePictures, nobody_comes_to_a_choice_but_over_the_ground_or_the_title) {
  Image map;
  ASSERT_TRUE(ResourcePack::GetDefault()->RenderHitMap(GetParam().map, map));
  for (int i = 12; i < 500; ++i) {
    for (const auto& [x, y] :
         {std::array{i, 20}, std::array{i, 490}, std::array{20, i}, std::array{490, i}}) {
      const std::uint8_t* pixel = At(map, x, y);
      if (pixel[3] == 0) continue;
      ASSERT_TRUE(pixel[0] == 255 && pixel[1] == 0 && pixel[2] == 0) << x << ' ' << y;
    }
  }
}

TEST_P(WelcomePictures, what_is_under_the_pointer_is_lit_and_nothing_else) {
  const auto pack = ResourcePack::GetDefault();
  const Image plain = Render(*pack, GetParam().plain);
  for (const Area& area : GetParam().areas) {
    if (area.picture < 0) continue;
    const Image lit = Render(*pack, area.picture);
    int changed = 0;
    for (int y = 0; y < 512; ++y) {
      for (int x = 0; x < 512; ++x) {
        if (std::equal(At(plain, x, y), At(plain, x, y) + 4, At(lit, x, y))) continue;
        ++changed;
        ASSERT_TRUE(x >= area.left && x < area.right && y >= area.top && y < area.bottom) << x << ' ' << y;
      }
    }
    EXPECT_GT(changed, 0.8 * (area.right - area.left) * (area.bottom - area.top)) << area.picture;
  }
}

TEST_P(WelcomePictures, every_choice_shows_a_disc_and_words) {
  const Image plain = Render(*ResourcePack::GetDefault(), GetParam().plain);
  auto wordless = ResourcePack::MakeDefault();
  for (int id = zovhost::HOST_TEXT_WELCOME; id <= zovhost::HOST_TEXT_TO_BASIC; ++id)
    wordless->SetString(id, "");
  const Image bare = Render(*wordless, GetParam().plain);
  const auto countInk = [](const Image& image, const Area& area) {
    int count = 0;
    for (int y = static_cast<int>(area.top); y < area.bottom; ++y) {
      for (int x = static_cast<int>(area.left); x < area.right; ++x) count += At(image, x, y)[0] < 128;
    }
    return count;
  };
  for (const Area& area : GetParam().areas) {
    if (area.picture < 0) continue;
    const bool isTitle = area.key == std::array<int, 3>{0, 0, 128};
    EXPECT_EQ(countInk(bare, area) > 50, !isTitle) << area.picture;
    EXPECT_GT(countInk(plain, area), countInk(bare, area) + 200) << area.picture;
  }
}

TEST(WelcomeTexts, are_all_there) {
  const auto pack = ResourcePack::GetDefault();
  std::set<std::string> different;
  for (int id = zovhost::HOST_TEXT_WELCOME; id <= zovhost::HOST_TEXT_TO_BASIC; ++id) {
    EXPECT_FALSE(pack->GetString(id).empty()) << id;
    different.insert(pack->GetString(id));
  }
  EXPECT_EQ(different.size(), 17u);
}

TEST(WelcomeTexts, a_long_line_stays_in_its_place) {
  auto pack = ResourcePack::MakeDefault();
  std::string line;
  for (int i = 0; i < 60; ++i) line += "Sehenswürdigkeiten ";
  const Image before = Render(*pack, 77);
  ASSERT_TRUE(pack->SetString(zovhost::HOST_TEXT_MINI_VIEW_OBJECT_LINE, line));
  const Image after = Render(*pack, 77);
  for (int y = 0; y < 512; ++y) {
    for (int x = 0; x < 512; ++x) {
      const bool inside = x >= 32 && x < 252 && y >= 132 && y < 280;
      ASSERT_TRUE(inside || std::equal(At(before, x, y), At(before, x, y) + 4, At(after, x, y)))
          << x << ' ' << y;
    }
  }
}

TEST(WelcomePack, has_a_picture_for_every_number) {
  const auto pack = ResourcePack::GetDefault();
  std::set<std::vector<std::uint8_t>> different;
  for (int id = 77; id <= 88; ++id) {
    EXPECT_TRUE(pack->IsSizedPicture(id)) << id;
    different.insert(Render(*pack, id).rgba);
  }
  EXPECT_EQ(different.size(), 12u);
  Image image;
  EXPECT_FALSE(pack->RenderHitMap(77, image));
  ASSERT_TRUE(pack->RenderPicture(84, 3.0, image));
  EXPECT_EQ(image.width, 1536);
}

}  // namespace
