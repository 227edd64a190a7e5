#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "graphics_canvas.h"
#include "korvane/resource_ids.h"
#include "zovhost/host_texts.h"
#include "zovhost/resource_pack.h"

namespace {

using zovhost::CursorPicture;
using zovhost::Image;
using zovhost::ResourcePack;
using zovtest::PixelAt;

// Pixels that are nearly opaque and darker, or lighter, than a bound of brightness 0 to 255.
int CountOpaque(const Image& image, int darkest, int lightest) {
  int count = 0;
  for (std::size_t i = 0; i < image.rgba.size(); i += 4) {
    const int brightness = (image.rgba[i] + image.rgba[i + 1] + image.rgba[i + 2]) / 3;
    count += image.rgba[i + 3] > 200 && brightness >= darkest && brightness <= lightest;
  }
  return count;
}

int CountVisible(const Image& image, int top, int bottom) {
  int count = 0;
  for (int row = top; row < bottom; ++row) {
    for (int x = 0; x < image.width; ++x) count += PixelAt(image, x, image.height - 1 - row)[3] > 100;
  }
  return count;
}

// ---- pointers ----

TEST(Cursors, every_number_has_a_drawing_of_its_own) {
  const auto pack = ResourcePack::GetDefault();
  std::set<std::vector<std::uint8_t>> different;
  for (int id = 0; id < ResourcePack::cursorCount; ++id) {
    CursorPicture cursor;
    EXPECT_TRUE(pack->HasCursor(id)) << id;
    ASSERT_TRUE(pack->RenderCursor(id, 1.0, cursor)) << id;
    EXPECT_EQ(cursor.image.width, 24) << id;
    EXPECT_EQ(cursor.image.height, 24) << id;
    different.insert(cursor.image.rgba);
  }
  EXPECT_EQ(different.size(), static_cast<std::size_t>(ResourcePack::cursorCount));
}

TEST(Cursors, the_hot_spot_is_told_by_the_drawing_and_scales_with_it) {
  const auto pack = ResourcePack::GetDefault();
  for (int id = 0; id < ResourcePack::cursorCount; ++id) {
    CursorPicture single;
    CursorPicture twice;
    ASSERT_TRUE(pack->RenderCursor(id, 1.0, single)) << id;
    ASSERT_TRUE(pack->RenderCursor(id, 2.0, twice)) << id;
    // A drawing that does not tell has it at 0 0, the corner; one beyond the picture is held to its border.
    EXPECT_GT(single.hotX, 0) << id;
    EXPECT_GT(single.hotY, 0) << id;
    EXPECT_LT(single.hotX, single.image.width - 1) << id;
    EXPECT_LT(single.hotY, single.image.height - 1) << id;
    EXPECT_EQ(twice.hotX, 2 * single.hotX) << id;
    EXPECT_EQ(twice.hotY, 2 * single.hotY) << id;
  }
}

TEST(Cursors, point_with_their_tip_their_glass_or_their_middle) {
  const auto pack = ResourcePack::GetDefault();
  for (int id = 0; id < ResourcePack::cursorCount; ++id) {
    CursorPicture cursor;
    ASSERT_TRUE(pack->RenderCursor(id, 1.0, cursor));
    const bool isPointer = id == Korvane::CURSOR_ARROW || id == Korvane::CURSOR_CUBE_PART;
    const bool isGlass = id == Korvane::CURSOR_ZOOM;
    EXPECT_EQ(cursor.hotX, isPointer ? 3 : isGlass ? 10 : 12) << id;
    EXPECT_EQ(cursor.hotY, isPointer ? 2 : isGlass ? 10 : 12) << id;
  }
}

TEST(Cursors, read_on_dark_and_on_light_grounds) {
  const auto pack = ResourcePack::GetDefault();
  for (int id = 0; id < ResourcePack::cursorCount; ++id) {
    CursorPicture cursor;
    ASSERT_TRUE(pack->RenderCursor(id, 2.0, cursor));
    EXPECT_GT(CountOpaque(cursor.image, 0, 60), 80) << id << " lacks dark";
    EXPECT_GT(CountOpaque(cursor.image, 220, 255), 80) << id << " lacks light";
  }
}

// Walking to the left is walking to the right seen in a mirror, and so on around.
TEST(Cursors, of_walking_and_running_point_in_their_directions) {
  const auto pack = ResourcePack::GetDefault();
  const auto balance = [&](int id) {  // of dark pixels: right less left, upper less lower
    CursorPicture cursor;
    EXPECT_TRUE(pack->RenderCursor(id, 2.0, cursor));
    double x = 0.0;
    double y = 0.0;
    for (int row = 0; row < 48; ++row) {
      for (int column = 0; column < 48; ++column) {
        const auto pixel = PixelAt(cursor.image, column, row);
        if (pixel[3] < 200 || pixel[0] > 60) continue;
        x += column - 23.5;
        y += row - 23.5;
      }
    }
    return std::array<double, 2>{x, y};
  };
  constexpr int signs[8][2] = {{0, 1}, {0, -1}, {-1, 0}, {1, 0}, {-1, 1}, {1, 1}, {-1, -1}, {1, -1}};
  for (int i = 0; i < 8; ++i) {
    for (const int first : {int{Korvane::CURSOR_WALK_FORWARD}, int{Korvane::CURSOR_RUN_FORWARD}}) {
      const auto [x, y] = balance(first + i);
      const auto sign = [](double value) { return value > 100.0 ? 1 : value < -100.0 ? -1 : 0; };
      EXPECT_EQ(sign(x), signs[i][0]) << first + i;
      EXPECT_EQ(sign(y), signs[i][1]) << first + i;
    }
  }
}

// ---- texts within pictures ----

constexpr const char* twoPlaces =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="80" fill="none">
       <rect id="text-5" x="10" y="10" width="80" height="20"/>
       <rect id="text-6" x="10" y="50" width="80" height="20"/></svg>)";

TEST(PictureTexts, are_set_in_white_within_their_places) {
  ResourcePack pack;
  pack.SetPicture(1, twoPlaces);
  pack.SetString(5, "HHHH");
  Image image;
  ASSERT_TRUE(pack.RenderPicture(1, 2.0, image));
  ASSERT_EQ(image.height, 160);
  EXPECT_GT(CountVisible(image, 20, 60), 200);
  EXPECT_EQ(CountVisible(image, 0, 19) + CountVisible(image, 61, 160), 0);  // text 6 is empty
  EXPECT_GT(CountOpaque(image, 250, 255), 200);
}

TEST(PictureTexts, of_a_picture_are_of_one_size_that_of_the_longest) {
  ResourcePack pack;
  pack.SetPicture(1, twoPlaces);
  pack.SetString(5, "HH");
  Image alone;
  ASSERT_TRUE(pack.RenderPicture(1, 1.0, alone));
  pack.SetString(6, "HHHHHHHHHHHHHHHH");
  Image both;
  ASSERT_TRUE(pack.RenderPicture(1, 1.0, both));
  EXPECT_LT(2 * CountVisible(both, 10, 30), CountVisible(alone, 10, 30));
  EXPECT_GT(CountVisible(both, 10, 30), 0);
}

TEST(PictureTexts, follow_a_change_of_the_language) {
  ResourcePack pack;
  pack.SetPicture(1, twoPlaces);
  pack.SetString(5, "TOP");
  Image english;
  Image german;
  ASSERT_TRUE(pack.RenderPicture(1, 1.0, english));
  pack.SetString(5, "OBEN");
  ASSERT_TRUE(pack.RenderPicture(1, 1.0, german));
  EXPECT_NE(english.rgba, german.rgba);
}

TEST(PictureTexts, may_be_turned_upside_down_and_have_an_edge) {
  ResourcePack pack;
  pack.SetString(5, "L");
  const auto render = [&](const std::string& id) {
    pack.SetPicture(
        1, R"(<svg xmlns="http://www.w3.org/2000/svg" width="40" height="40" fill="none"><rect id=")" + id +
               R"(" x="4" y="4" width="32" height="32"/></svg>)");
    Image image;
    EXPECT_TRUE(pack.RenderPicture(1, 1.0, image));
    return image;
  };
  const Image upright = render("text-5");
  const Image turned = render("text-5-turned");
  std::vector<std::uint8_t> around;
  for (std::size_t i = upright.rgba.size(); i > 0; i -= 4) {
    around.insert(around.end(), upright.rgba.begin() + static_cast<std::ptrdiff_t>(i) - 4,
                  upright.rgba.begin() + static_cast<std::ptrdiff_t>(i));
  }
  int different = 0;
  for (std::size_t i = 3; i < around.size(); i += 4) {
    different += std::abs(int{around[i]} - int{turned.rgba[i]}) > 40;
  }
  EXPECT_LT(different, 8);
  EXPECT_EQ(CountOpaque(upright, 0, 60), 0);
  EXPECT_GT(CountOpaque(render("text-5-edged"), 0, 60), 20);
}

TEST(PictureTexts, that_name_no_text_are_left_out) {
  ResourcePack pack;
  pack.SetString(5, "X");
  for (const char* id : {"text-", "text-x", "text-999999999999", "text--1", "text-112"}) {
    pack.SetPicture(
        1, std::string(
               R"(<svg xmlns="http://www.w3.org/2000/svg" width="20" height="20" fill="none"><rect id=")") +
               id + R"(" width="20" height="20"/></svg>)");
    Image image;
    ASSERT_TRUE(pack.RenderPicture(1, 1.0, image)) << id;
    EXPECT_EQ(CountVisible(image, 0, 20), 0) << id;
  }
}

TEST(PictureTexts, take_no_part_in_a_hit_map) {
  ResourcePack pack;
  pack.SetPicture(1, twoPlaces);
  pack.SetString(5, "HHHH");
  Image map;
  ASSERT_TRUE(pack.RenderHitMap(1, map));
  EXPECT_EQ(CountVisible(map, 0, 80), 0);
}

TEST(PictureTexts, with_the_number_of_no_text_are_refused) {
  ResourcePack pack;
  EXPECT_FALSE(pack.SetString(Korvane::STRING_NONE, "none"));
  EXPECT_TRUE(pack.SetString(zovhost::HOST_TEXT_WEST, "O"));
  EXPECT_EQ(pack.GetString(zovhost::HOST_TEXT_WEST), "O");
}

// ---- the cube ----

// ---- gauges, and the film strip ----

TEST(GaugePictures, have_the_proportions_at_which_they_are_shown) {
  const auto pack = ResourcePack::GetDefault();
  const struct {
    int id;
    int width;
    int height;
  } rows[] = {{89, 64, 64}, {90, 64, 64},   {91, 128, 128}, {92, 128, 128}, {93, 64, 64},
              {94, 64, 64}, {95, 128, 128}, {96, 32, 32},   {97, 32, 32},   {98, 128, 256},
              {99, 64, 64}, {100, 64, 64},  {101, 128, 128}};
  std::set<std::vector<std::uint8_t>> different;
  for (const auto& row : rows) {
    Image image;
    EXPECT_TRUE(pack->HasPicture(row.id)) << row.id;
    ASSERT_TRUE(pack->RenderPicture(row.id, 2.0, image)) << row.id;
    EXPECT_EQ(image.width, 2 * row.width) << row.id;
    EXPECT_EQ(image.height, 2 * row.height) << row.id;
    different.insert(image.rgba);
  }
  EXPECT_EQ(different.size(), std::size(rows));
}

TEST(CubePictures, are_all_drawn_and_differ_at_each_scale) {
  const auto pack = ResourcePack::GetDefault();
  for (const double scale : {1.0, 2.0, 3.0}) {
    std::set<std::vector<std::uint8_t>> different;
    for (int id = 0; id < 16; ++id) {
      Image image;
      EXPECT_TRUE(pack->HasPicture(id)) << id;
      ASSERT_TRUE(pack->RenderPicture(id, scale, image)) << id;
      different.insert(image.rgba);
    }
    EXPECT_EQ(different.size(), 16u);
  }
}

TEST(CubePictures, have_six_rows_of_square_faces_and_four_of_letters) {
  const auto pack = ResourcePack::GetDefault();
  const auto size = [&](int id) {
    Image image;
    EXPECT_TRUE(pack->RenderPicture(id, 1.0, image));
    return std::array<int, 2>{image.width, image.height};
  };
  EXPECT_EQ(size(0)[1], 6 * size(0)[0]);
  EXPECT_EQ(size(1)[1], 6 * size(1)[0]);
  EXPECT_EQ(size(6)[1], 4 * size(6)[0]);
  for (const int square : {3, 4, 5, 7, 8, 9, 10, 11, 12, 13, 14, 15}) {
    EXPECT_EQ(size(square)[0], size(square)[1]) << square;
  }
}

TEST(CubePictures, of_the_faces_are_opaque_and_light_so_that_the_colours_of_the_parts_show) {
  Image image;
  ASSERT_TRUE(ResourcePack::GetDefault()->RenderPicture(0, 1.0, image));
  for (std::size_t i = 0; i < image.rgba.size(); i += 4) {
    ASSERT_EQ(image.rgba[i + 3], 255);
    ASSERT_GT(image.rgba[i], 200);
  }
}

TEST(CubePictures, of_labels_keep_clear_of_the_borders_between_rows) {
  const auto pack = ResourcePack::GetDefault();
  Image image;
  ASSERT_TRUE(pack->RenderPicture(1, 1.0, image));
  for (int row = 0; row < 6; ++row) {
    EXPECT_EQ(CountVisible(image, 96 * row, 96 * row + 24), 0) << row;
    EXPECT_GT(CountVisible(image, 96 * row + 24, 96 * row + 72), 100) << row;
    EXPECT_EQ(CountVisible(image, 96 * row + 72, 96 * row + 96), 0) << row;
  }
}

// Each word by itself changes its own row alone, so no row shows another's word.
TEST(CubePictures, of_labels_show_each_word_in_its_row) {
  constexpr int rows[6] = {zovhost::HOST_TEXT_TOP,  zovhost::HOST_TEXT_BOTTOM, zovhost::HOST_TEXT_RIGHT,
                           zovhost::HOST_TEXT_LEFT, zovhost::HOST_TEXT_BACK,   zovhost::HOST_TEXT_FRONT};
  const auto pack = ResourcePack::MakeDefault();
  for (int shown = 0; shown < 6; ++shown) {
    for (const int text : rows) pack->SetString(text, text == rows[shown] ? "WORD" : "");
    Image image;
    ASSERT_TRUE(pack->RenderPicture(1, 1.0, image));
    for (int row = 0; row < 6; ++row) {
      EXPECT_EQ(CountVisible(image, 96 * row, 96 * row + 96) > 0, row == shown) << row;
    }
  }
}

TEST(CubePictures, of_the_arrows_of_rolling_have_nothing_on_the_border_between_them) {
  for (int id = 13; id < 16; ++id) {
    Image image;
    ASSERT_TRUE(ResourcePack::GetDefault()->RenderPicture(id, 2.0, image));
    for (int i = 0; i < 64; ++i) {
      EXPECT_LT(PixelAt(image, i, 127 - i)[3], 20) << id << ' ' << i;        // of the triangle at the top
      EXPECT_LT(PixelAt(image, 127 - i, i)[3], 20) << id << ' ' << i;        // of the one at the right
      EXPECT_LT(PixelAt(image, 127 - i, 127 - i)[3], 20) << id << ' ' << i;  // between the two
    }
  }
}

TEST(WalkPictures, of_a_start_and_of_a_refusal_differ) {
  const auto pack = ResourcePack::GetDefault();
  Image refused;
  Image start;
  ASSERT_TRUE(pack->HasPicture(93) && pack->HasPicture(94));
  ASSERT_TRUE(pack->RenderPicture(93, 1.0, refused) && pack->RenderPicture(94, 1.0, start));
  EXPECT_EQ(refused.width, start.width);
  EXPECT_NE(refused.rgba, start.rgba);
}

}  // namespace
