#include "korvane/pixel_icon2d.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "support/allocation_counter.h"

namespace {

using namespace Korvane;

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
const Vector3 UNTOUCHED(-1.0, -2.0, -3.0);

// 4 by 2 pixels, opaque: byte 0 is ten times the column, byte 1 a hundred times the row, byte 2 is 200.
std::vector<unsigned char> MakePixels() {
  std::vector<unsigned char> pixels;
  for (int row = 0; row < 2; ++row) {
    for (int column = 0; column < 4; ++column) {
      pixels.push_back(static_cast<unsigned char>(10 * column));
      pixels.push_back(static_cast<unsigned char>(100 * row));
      pixels.push_back(200);
      pixels.push_back(255);
    }
  }
  return pixels;
}

class PixelIcon2DTest : public ::testing::Test {
 protected:
  PixelIcon2DTest() { icon.SetBounds(Box2(Vector2(100.0, 50.0), Vector2(20.0, 10.0))); }

  // Where a point of the box lies in the image; -1, -1 for a miss. The box is x 80 to 120, y 40 to 60.
  struct Pixel {
    int column = -1;
    int row = -1;
    bool operator==(const Pixel& other) const { return column == other.column && row == other.row; }
  };
  Pixel Find(double x, double y) const {
    Vector3 colour = UNTOUCHED;
    if (!icon.GetColor(Vector2(x, y), colour)) {
      EXPECT_EQ(colour, UNTOUCHED);
      return {};
    }
    return {static_cast<int>(std::lround(colour.x * 25.5)), static_cast<int>(std::lround(colour.y * 2.55))};
  }

  std::vector<unsigned char> pixels = MakePixels();
  PixelIcon2D icon{4, 2, pixels.data(), PixelIcon2D::PIXEL_FORMAT_RGBA};
};

TEST_F(PixelIcon2DTest, keeps_its_size_and_format_and_a_copy_of_the_pixels) {
  EXPECT_EQ(icon.GetImageWidth(), 4);
  EXPECT_EQ(icon.GetImageHeight(), 2);
  EXPECT_EQ(icon.GetPixelFormat(), PixelIcon2D::PIXEL_FORMAT_RGBA);
  EXPECT_EQ(int{PixelIcon2D::PIXEL_FORMAT_RGBA}, 1);
  ASSERT_NE(icon.GetImagePixels(), nullptr);
  EXPECT_NE(icon.GetImagePixels(), pixels.data());
  for (std::size_t i = 0; i < pixels.size(); ++i) EXPECT_EQ(icon.GetImagePixels()[i], pixels[i]) << i;
  pixels.assign(pixels.size(), 0);
  EXPECT_EQ(icon.GetImagePixels()[3], 255);
}

TEST_F(PixelIcon2DTest, given_null_pixels_answers_false_to_every_question) {
  PixelIcon2D empty(4, 2, nullptr, PixelIcon2D::PIXEL_FORMAT_RGBA);
  empty.SetBounds(icon.GetBounds());
  EXPECT_EQ(empty.GetImagePixels(), nullptr);
  for (const double x : {80.0, 95.0, 100.0, 119.0}) {
    for (const double y : {41.0, 50.0, 60.0}) {
      Vector3 colour = UNTOUCHED;
      EXPECT_FALSE(empty.GetColor(Vector2(x, y), colour));
      EXPECT_EQ(colour, UNTOUCHED);
    }
  }
}

TEST_F(PixelIcon2DTest, of_a_size_below_one_holds_no_pixels) {
  const int sizes[][2] = {{0, 2}, {4, 0}, {-4, 2}, {4, -2}, {-4, -2}, {0, 0}};
  for (const auto& size : sizes) {
    PixelIcon2D empty(size[0], size[1], pixels.data(), PixelIcon2D::PIXEL_FORMAT_RGBA);
    empty.SetBounds(icon.GetBounds());
    Vector3 colour;
    EXPECT_EQ(empty.GetImagePixels(), nullptr);
    EXPECT_FALSE(empty.GetColor(Vector2(100.0, 50.0), colour));
  }
}

TEST_F(PixelIcon2DTest, of_more_pixels_than_any_memory_holds_has_none) {
  const int most = std::numeric_limits<int>::max();
  const PixelIcon2D endless(most, most, pixels.data(), PixelIcon2D::PIXEL_FORMAT_RGBA);
  Vector3 colour;
  EXPECT_EQ(endless.GetImagePixels(), nullptr);
  EXPECT_FALSE(endless.GetColor(Vector2(), colour));
}

// The pixels are the last that it asks for.
TEST_F(PixelIcon2DTest, that_there_is_no_memory_for_has_no_pixels) {
  const unsigned char white[4] = {255, 255, 255, 255};
  Vector3 found;
  const AllocationCounter counter;
  PixelIcon2D whole(1, 1, white, PixelIcon2D::PIXEL_FORMAT_RGBA);
  const std::uint64_t last = counter.GetAllocations();
  std::optional<AllocationFault> fault(std::in_place, last, 1);
  PixelIcon2D hollow(1, 1, white, PixelIcon2D::PIXEL_FORMAT_RGBA);
  fault.reset();
  for (PixelIcon2D* const each : {&whole, &hollow}) {
    each->SetSize(2, 2);
    EXPECT_EQ(each->GetColor(Vector2(-1.0, 0.5), found), each == &whole);
  }
}

TEST_F(PixelIcon2DTest, holds_an_image_of_one_pixel) {
  PixelIcon2D dot(1, 1, pixels.data(), PixelIcon2D::PIXEL_FORMAT_RGBA);
  dot.SetBounds(icon.GetBounds());
  Vector3 colour;
  EXPECT_TRUE(dot.GetColor(Vector2(80.0, 50.0), colour));
}

TEST_F(PixelIcon2DTest, rounds_the_column_up) {
  // Each column is 10 wide: the left edge is column 0, anything up to 90 is column 1, up to 100 column 2.
  EXPECT_EQ(Find(80.0, 55.0), (Pixel{0, 0}));
  EXPECT_EQ(Find(80.001, 55.0), (Pixel{1, 0}));
  EXPECT_EQ(Find(90.0, 55.0), (Pixel{1, 0}));
  EXPECT_EQ(Find(90.001, 55.0), (Pixel{2, 0}));
  EXPECT_EQ(Find(110.0, 55.0), (Pixel{3, 0}));
}

TEST_F(PixelIcon2DTest, rounds_the_row_down_counted_from_the_top) {
  EXPECT_EQ(Find(95.0, 60.0), (Pixel{2, 0}));
  EXPECT_EQ(Find(95.0, 50.001), (Pixel{2, 0}));
  EXPECT_EQ(Find(95.0, 50.0), (Pixel{2, 1}));
  EXPECT_EQ(Find(95.0, 40.001), (Pixel{2, 1}));
}

TEST_F(PixelIcon2DTest, on_the_right_edge_the_column_equals_the_width_so_it_is_missed) {
  EXPECT_EQ(Find(120.0, 55.0), Pixel{});
  EXPECT_EQ(Find(110.001, 55.0), Pixel{});
}

TEST_F(PixelIcon2DTest, on_the_bottom_edge_the_row_equals_the_height_so_it_is_missed) {
  EXPECT_EQ(Find(95.0, 40.0), Pixel{});
}

TEST_F(PixelIcon2DTest, is_missed_outside_the_image) {
  EXPECT_EQ(Find(95.0, 60.001), Pixel{});
  EXPECT_EQ(Find(95.0, 30.0), Pixel{});
  EXPECT_EQ(Find(70.0, 55.0), Pixel{});
  EXPECT_EQ(Find(200.0, 55.0), Pixel{});
  EXPECT_EQ(Find(1e300, 55.0), Pixel{});
  EXPECT_EQ(Find(95.0, -1e300), Pixel{});
}

TEST_F(PixelIcon2DTest, counts_less_than_a_column_left_of_the_box_to_column_0_as_rounding_up_has_it) {
  EXPECT_EQ(Find(75.0, 55.0), (Pixel{0, 0}));
}

TEST_F(PixelIcon2DTest, is_missed_where_it_is_transparent) {
  pixels[4 * 2 + 3] = 0;  // column 2 of the top row
  PixelIcon2D holed(4, 2, pixels.data(), PixelIcon2D::PIXEL_FORMAT_RGBA);
  holed.SetBounds(icon.GetBounds());
  Vector3 colour = UNTOUCHED;
  EXPECT_FALSE(holed.GetColor(Vector2(95.0, 55.0), colour));
  EXPECT_EQ(colour, UNTOUCHED);
  EXPECT_TRUE(holed.GetColor(Vector2(95.0, 45.0), colour));
}

TEST_F(PixelIcon2DTest, is_found_where_it_is_barely_opaque) {
  pixels[4 * 2 + 3] = 1;
  PixelIcon2D faint(4, 2, pixels.data(), PixelIcon2D::PIXEL_FORMAT_RGBA);
  faint.SetBounds(icon.GetBounds());
  Vector3 colour;
  EXPECT_TRUE(faint.GetColor(Vector2(95.0, 55.0), colour));
}

TEST_F(PixelIcon2DTest, of_format_1_has_red_green_blue_in_bytes_0_1_2) {
  const unsigned char pixel[4] = {51, 102, 255, 9};
  PixelIcon2D dot(1, 1, pixel, PixelIcon2D::PIXEL_FORMAT_RGBA);
  dot.SetBounds(icon.GetBounds());
  Vector3 colour;
  ASSERT_TRUE(dot.GetColor(Vector2(80.0, 50.0), colour));
  EXPECT_EQ(colour, Vector3(51.0 / 255.0, 102.0 / 255.0, 1.0));
}

TEST_F(PixelIcon2DTest, of_any_other_format_has_red_green_blue_in_bytes_2_1_0) {
  const unsigned char pixel[4] = {51, 102, 255, 9};
  for (const int format : {0, 2, -1, 77}) {
    PixelIcon2D dot(1, 1, pixel, static_cast<PixelIcon2D::PixelFormat>(format));
    dot.SetBounds(icon.GetBounds());
    Vector3 colour;
    ASSERT_TRUE(dot.GetColor(Vector2(80.0, 50.0), colour)) << format;
    EXPECT_EQ(colour, Vector3(1.0, 102.0 / 255.0, 51.0 / 255.0)) << format;
  }
}

TEST_F(PixelIcon2DTest, is_missed_without_bounds_and_by_a_point_that_is_no_number) {
  EXPECT_EQ(Find(NAN_VALUE, 55.0), Pixel{});
  EXPECT_EQ(Find(95.0, NAN_VALUE), Pixel{});
  icon.SetBounds(Box2());
  EXPECT_EQ(Find(0.0, 0.0), Pixel{});
  EXPECT_EQ(Find(5.0, -5.0), Pixel{});
}

}  // namespace
