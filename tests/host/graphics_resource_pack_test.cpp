#include <gtest/gtest.h>

#include <set>

#include "graphics_canvas.h"
#include "zovhost/resource_pack.h"

namespace {

using zovhost::CursorPicture;
using zovhost::Image;
using zovhost::ResourcePack;
using zovtest::Pixel;
using zovtest::PixelAt;

// Red at the left half, nothing at the right; 10 by 6 units.
constexpr const char* halfRed =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="10" height="6"><rect width="5" height="6" fill="#f00"/></svg>)";
constexpr const char* circle =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="32" height="32"><circle cx="16" cy="16" r="11.3" fill="#08f"/></svg>)";

TEST(ResourcePack, a_picture_has_the_size_of_its_drawing_at_each_scale) {
  ResourcePack pack;
  ASSERT_TRUE(pack.SetPicture(7, halfRed));
  for (const int scale : {1, 2, 3}) {
    Image image;
    ASSERT_TRUE(pack.RenderPicture(7, scale, image));
    EXPECT_EQ(image.width, 10 * scale);
    EXPECT_EQ(image.height, 6 * scale);
    EXPECT_EQ(PixelAt(image, 0, 0), (Pixel{255, 0, 0, 255}));
    EXPECT_EQ(PixelAt(image, image.width - 1, 0)[3], 0);
  }
}

TEST(ResourcePack, an_empty_slot_gives_a_placeholder_that_tells_its_number) {
  const ResourcePack pack;
  std::set<std::vector<std::uint8_t>> different;
  for (int id = 0; id < ResourcePack::pictureCount; ++id) {
    Image image;
    ASSERT_TRUE(pack.RenderPicture(id, 1.0, image));
    EXPECT_EQ(image.width, 64);
    EXPECT_EQ(PixelAt(image, 4, 4)[3], 255);
    different.insert(image.rgba);
  }
  EXPECT_EQ(different.size(), static_cast<std::size_t>(ResourcePack::pictureCount));
}

TEST(ResourcePack, a_broken_drawing_fails_and_leaves_the_image_alone) {
  ResourcePack pack;
  const char* const broken[] = {"no drawing", "<svg",
                                "<svg xmlns='http://www.w3.org/2000/svg' width='0' height='0'/>",
                                "<svg xmlns='http://www.w3.org/2000/svg' width='900000' height='9'/>"};
  for (const char* drawing : broken) {
    pack.SetPicture(3, drawing);
    Image image{1, 1, {1, 2, 3, 4}};
    EXPECT_FALSE(pack.RenderPicture(3, 1.0, image)) << drawing;
    EXPECT_EQ(image.rgba, (std::vector<std::uint8_t>{1, 2, 3, 4}));
  }
}

TEST(ResourcePack, refuses_numbers_and_scales_out_of_range) {
  ResourcePack pack;
  Image image;
  CursorPicture cursor;
  for (const int id : {-1, ResourcePack::pictureCount, 1 << 30}) {
    EXPECT_FALSE(pack.SetPicture(id, halfRed));
    EXPECT_FALSE(pack.RenderPicture(id, 1.0, image));
    EXPECT_FALSE(pack.RenderHitMap(id, image));
    EXPECT_FALSE(pack.SetString(id, "text"));
    EXPECT_EQ(pack.GetString(id), "");
    EXPECT_FALSE(pack.SetCursor(id, halfRed, 0, 0));
    EXPECT_FALSE(pack.RenderCursor(id, 1.0, cursor));
  }
  EXPECT_FALSE(pack.RenderPicture(0, 0.0, image));
  EXPECT_FALSE(pack.RenderPicture(0, -2.0, image));
  EXPECT_FALSE(pack.RenderPicture(0, 1e9, image));
  EXPECT_FALSE(pack.RenderPicture(0, std::nan(""), image));
}

TEST(ResourcePack, a_hit_map_has_no_pixel_that_is_partly_of_a_region) {
  ResourcePack pack;
  pack.SetPicture(9, circle);
  Image smooth;
  Image crisp;
  ASSERT_TRUE(pack.RenderPicture(9, 1.0, smooth));
  ASSERT_TRUE(pack.RenderHitMap(9, crisp));
  const auto countPartial = [](const Image& image) {
    int count = 0;
    for (std::size_t i = 3; i < image.rgba.size(); i += 4) count += image.rgba[i] > 0 && image.rgba[i] < 255;
    return count;
  };
  EXPECT_GT(countPartial(smooth), 0);
  EXPECT_EQ(countPartial(crisp), 0);
  EXPECT_EQ(PixelAt(crisp, 16, 16), (Pixel{0, 136, 255, 255}));
  EXPECT_FALSE(pack.RenderHitMap(10, crisp));  // an empty slot has no regions
}

TEST(ResourcePack, reads_a_table_of_texts) {
  ResourcePack pack;
  std::string error;
  ASSERT_TRUE(pack.ReadStrings("# remark\n\n0 Close\r\n  7\tTwo\\nlines  \n101 Grüße", error));
  EXPECT_EQ(pack.GetString(0), "Close");
  EXPECT_EQ(pack.GetString(7), "Two\nlines");
  EXPECT_EQ(pack.GetString(101), "Grüße");
  EXPECT_EQ(pack.GetString(1), "");
}

TEST(ResourcePack, tells_the_line_that_is_no_text) {
  for (const char* table :
       {"0 Close\nword\n", "0 Close\n102 beyond the last\n", "0 Close\n-1 x\n", "0 Close\n4x y"}) {
    ResourcePack pack;
    std::string error;
    EXPECT_FALSE(pack.ReadStrings(table, error));
    EXPECT_NE(error.find("line 2"), std::string::npos) << error;
  }
}

TEST(ResourcePack, a_cursor_keeps_its_hot_spot_at_each_scale) {
  ResourcePack pack;
  pack.SetCursor(2, circle, 10, 31.9);
  CursorPicture cursor;
  ASSERT_TRUE(pack.RenderCursor(2, 2.0, cursor));
  EXPECT_EQ(cursor.image.width, 64);
  EXPECT_EQ(cursor.hotX, 20);
  EXPECT_EQ(cursor.hotY, 63);                      // within the picture
  ASSERT_TRUE(pack.RenderCursor(3, 1.0, cursor));  // a placeholder
  EXPECT_EQ(cursor.image.width, 32);
}

TEST(ResourcePack, the_kit_has_the_texts_that_the_tools_show) {
  const auto pack = ResourcePack::GetDefault();
  for (const int id : {0, 1, 5, 6, 10, 29, 30, 31, 39, 41, 47, 50, 51, 55, 58, 62, 66, 67, 73, 74}) {
    EXPECT_FALSE(pack->GetString(id).empty()) << id;
  }
  EXPECT_EQ(pack->GetString(73), "Sequence #%d");
}

}  // namespace
