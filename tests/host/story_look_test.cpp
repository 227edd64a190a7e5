// The look of the storyboard's pictures.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "zovhost/resource_pack.h"

namespace {

using zovhost::Image;
using zovhost::ResourcePack;

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
