// The look of the orientation cube, held to stored pictures.
//
// With ZOV_KEEP_PICTURES=1 in the environment, as scripts/pictures --keep sets it, the pictures are stored
// anew first: look at them, and at the differences that version control shows, before they are kept.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <set>

#include "graphics_context.h"
#include "sheets/cube_states.h"
#include "zovhost/picture.h"
#include "zovhost/read_image.h"

namespace zovsheets {

void PrintTo(const CubeState& state, std::ostream* out) { *out << state.name; }

}  // namespace zovsheets

namespace {

using zovhost::Image;
using zovsheets::CubeState;

// Drivers differ in how they cover and blend the pixels along an edge, and font versions in the edges of
// glyphs. A pixel is off when a channel is off by more than this; a picture fails when too many are.
constexpr int channelTolerance = 24;        // of 255
constexpr double mostPixelsOff = 0.0008;    // of all
constexpr int grossTolerance = 110;         // of 255
constexpr double mostPixelsGross = 0.0003;  // of all

const std::filesystem::path folder = std::filesystem::path(ZOV_TEST_PICTURES) / "cube";

int GetDifference(const Image& a, const Image& b, std::size_t pixel) {
  int largest = 0;
  for (std::size_t i = 4 * pixel; i < 4 * pixel + 3; ++i) {
    largest = std::max(largest, std::abs(int{a.rgba[i]} - int{b.rgba[i]}));
  }
  return largest;
}

struct Comparison {
  double off = 0.0;    // share of the pixels
  double gross = 0.0;  // likewise
  Image differences;   // black where equal, red where off
};

Comparison Compare(const Image& a, const Image& b) {
  Comparison result;
  result.differences = {a.width, a.height, std::vector<std::uint8_t>(a.rgba.size())};
  const std::size_t count = a.rgba.size() / 4;
  for (std::size_t pixel = 0; pixel < count; ++pixel) {
    const int difference = GetDifference(a, b, pixel);
    result.off += difference > channelTolerance ? 1.0 / static_cast<double>(count) : 0.0;
    result.gross += difference > grossTolerance ? 1.0 / static_cast<double>(count) : 0.0;
    std::uint8_t* out = result.differences.rgba.data() + 4 * pixel;
    out[0] = difference > channelTolerance ? 255 : static_cast<std::uint8_t>(difference);
    out[1] = out[2] = static_cast<std::uint8_t>(difference);
    out[3] = 255;
  }
  return result;
}

bool IsSimilar(const Comparison& comparison) {
  return comparison.off <= mostPixelsOff && comparison.gross <= mostPixelsGross;
}

// Beside the test program, for whoever looks into a failure.
void WriteFailure(const std::string& name, const Image& drawn, const Image& differences) {
  std::string error;
  zovhost::WritePng("cube-" + name + "-drawn.png", drawn, error);
  zovhost::WritePng("cube-" + name + "-differences.png", differences, error);
}

class CubePicture : public testing::TestWithParam<CubeState> {};

TEST_P(CubePicture, looks_as_it_did) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  const CubeState& state = GetParam();
  Image drawn;
  ASSERT_TRUE(zovsheets::PaintCube(state, drawn));
  const std::filesystem::path path = folder / (state.name + ".png");
  std::string error;
  if (std::getenv("ZOV_KEEP_PICTURES") != nullptr) {
    ASSERT_TRUE(zovhost::WritePng(path, drawn, error)) << error;
  }
  Image stored;
  ASSERT_TRUE(zovhost::ReadImage(path, stored, error)) << error;
  ASSERT_EQ(drawn.width, stored.width);
  ASSERT_EQ(drawn.height, stored.height);
  const Comparison comparison = Compare(drawn, stored);
  EXPECT_LE(comparison.off, mostPixelsOff);
  EXPECT_LE(comparison.gross, mostPixelsGross);
  if (!IsSimilar(comparison)) WriteFailure(state.name, drawn, comparison.differences);
}

INSTANTIATE_TEST_SUITE_P(States, CubePicture, testing::ValuesIn(zovsheets::GetCubeStates()),
                         [](const auto& state) {
                           std::string name = state.param.name;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

// What the tolerance must not let through: a highlight, a letter, a label.
TEST(CubePictures, of_different_states_are_told_apart) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  const std::vector<CubeState> states = zovsheets::GetCubeStates();
  const auto paint = [&](const std::string& name) {
    const auto found = std::find_if(states.begin(), states.end(),
                                    [&](const CubeState& state) { return state.name == name; });
    Image image;
    EXPECT_TRUE(found != states.end() && zovsheets::PaintCube(*found, image)) << name;
    return image;
  };
  const char* const pairs[][2] = {{"front-rest", "back-rest"},
                                  {"left-rest", "right-rest"},
                                  {"on-black-compass", "on-black-ring"},
                                  {"on-white-compass", "on-white-letter"},
                                  {"roll-left-hover", "roll-right-hover"},
                                  {"lock", "lock-hover"},
                                  {"on-gradient-near", "home-hover"},
                                  {"on-gradient-near", "menu-hover"}};
  for (const auto& pair : pairs) {
    EXPECT_FALSE(IsSimilar(Compare(paint(pair[0]), paint(pair[1])))) << pair[0] << ' ' << pair[1];
  }
}

TEST(CubePictures, are_of_many_states_each_with_a_name_of_its_own) {
  std::set<std::string> names;
  for (const CubeState& state : zovsheets::GetCubeStates()) names.insert(state.name);
  EXPECT_EQ(names.size(), zovsheets::GetCubeStates().size());
  EXPECT_GE(names.size(), 40u);
}

}  // namespace
