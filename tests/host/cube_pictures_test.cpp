// The look of the orientation cube, held to stored pictures.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <ostream>
#include <set>

#include "contrast.h"
#include "graphics_context.h"
#include "korvane/resource_ids.h"
#include "picture_comparison.h"
#include "sheets/cube_states.h"
#include "zovhost/cube_dress.h"
#include "zovhost/languages.h"
#include "zovhost/resource_pack.h"

namespace zovsheets {

void PrintTo(const CubeState& state, std::ostream* out) { *out << state.name; }

}  // namespace zovsheets

namespace {

using zovhost::Image;
using zovsheets::CubeState;

class CubePicture : public testing::TestWithParam<CubeState> {};

TEST_P(CubePicture, looks_as_it_did) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  const CubeState& state = GetParam();
  Image drawn;
  ASSERT_TRUE(zovsheets::PaintCube(state, drawn));
  zovtest::ExpectStored(drawn, "cube", state.name);
}

INSTANTIATE_TEST_SUITE_P(States, CubePicture, testing::ValuesIn(zovsheets::GetCubeStates()),
                         [](const auto& state) {
                           std::string name = state.param.name;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

// ---- words at rest ----

// Of a picture of a face that is looked along, from its middle: the panel and the place of the word in it.
struct FacePlace {
  int x;
  int y;
  int panel;  // half of its side
  int word;   // half of the height of its place
};
FacePlace FindFace(const CubeState& state, const Image& picture) {
  const double size = state.size * state.scale;
  const double face = 0.22 * size;
  return {static_cast<int>(picture.width - 0.45 * size), static_cast<int>(0.45 * size),
          static_cast<int>(0.58 * face), static_cast<int>(0.27 * face)};
}

double LuminanceAt(const Image& picture, int x, int y) {
  const std::size_t at = 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                              static_cast<std::size_t>(x));
  return zovtest::GetLuminance(zovtest::LayOver(picture.rgba.data() + at, 0.0));
}

double FindShare(std::vector<double>& values, double share) {
  const auto nth = values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size()));
  std::nth_element(values.begin(), nth, values.end());
  return *nth;
}

// Of the strokes of the word against the darker part of the panel, which may show what is behind it.
double MeasureWord(const CubeState& state, const Image& picture) {
  const FacePlace face = FindFace(state, picture);
  std::vector<double> word;
  std::vector<double> panel;
  for (int y = -face.panel; y <= face.panel; ++y) {
    for (int x = -face.panel; x <= face.panel; ++x) {
      (std::abs(y) <= face.word ? word : panel).push_back(LuminanceAt(picture, face.x + x, face.y + y));
    }
  }
  return (FindShare(panel, 0.25) + 0.05) / (FindShare(word, 0.02) + 0.05);
}

constexpr std::array<const char*, 4> groundNames = {"white", "black", "gradient", "brick"};

class CubeWords : public testing::TestWithParam<zovsheets::Ground> {};

TEST_P(CubeWords, read_at_rest_on_each_face) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  for (const char* const face : {"front", "back", "left", "right", "top", "bottom"}) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      const std::vector<CubeState> states = zovsheets::GetCubeStates();
      CubeState state = *std::find_if(states.begin(), states.end(), [face](const CubeState& each) {
        return each.name == std::string(face) + "-rest";
      });
      state.ground = GetParam();
      state.scale = scale;
      Image picture;
      ASSERT_TRUE(zovsheets::PaintCube(state, picture));
      EXPECT_GE(MeasureWord(state, picture), 3.0) << face << " at " << scale;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Grounds, CubeWords, testing::ValuesIn(zovsheets::grounds), [](const auto& ground) {
  return groundNames[static_cast<std::size_t>(ground.param)];
});

// The panel of a face is 60 of its 96 units wide, in the middle.
TEST(CubeLabels, stay_within_the_panels_in_each_language) {
  for (const zovhost::Language& language : zovhost::GetLanguages()) {
    const auto pack = zovhost::ResourcePack::Make(language);
    ASSERT_NE(pack, nullptr);
    Image labels;
    ASSERT_TRUE(pack->RenderPicture(Korvane::TEXTURE_CUBE_LABELS, 2.0, labels));
    int left = labels.width;
    int right = 0;
    for (int pixel = 0; pixel < labels.width * labels.height; ++pixel) {
      if (labels.rgba[4 * static_cast<std::size_t>(pixel) + 3] == 0) continue;
      left = std::min(left, pixel % labels.width);
      right = std::max(right, pixel % labels.width);
    }
    EXPECT_LT(left, right) << language.tag;
    EXPECT_GE(left, 2 * 18) << language.tag;
    EXPECT_LT(right, 2 * 78) << language.tag;
  }
}

// ---- the kit's choices ----

TEST(CubeDress, counts_in_points) {
  Korvane::OrientorParameters once;
  Korvane::OrientorParameters half;
  Korvane::OrientorParameters thrice;
  zovhost::DressCube(once);
  zovhost::DressCube(half, 1.5);
  zovhost::DressCube(thrice, 3.0);
  const auto sizes = [](const Korvane::OrientorParameters& p) {
    return std::vector<int>{p.large_screen_size, p.normal_screen_size, p.small_screen_size,
                            p.tiny_screen_size, p.drag_dead_zone};
  };
  for (std::size_t i = 0; i < sizes(once).size(); ++i) {
    EXPECT_EQ(2 * sizes(half)[i], 3 * sizes(once)[i]);
    EXPECT_EQ(sizes(thrice)[i], 3 * sizes(once)[i]);
  }
  EXPECT_EQ(once.min_opacity, thrice.min_opacity);
}

TEST(CubeDress, a_scale_that_is_none_counts_as_one) {
  Korvane::OrientorParameters usual;
  zovhost::DressCube(usual);
  for (const double scale : {0.0, -2.0, 1e9, std::nan("")}) {
    Korvane::OrientorParameters parameters;
    zovhost::DressCube(parameters, scale);
    EXPECT_EQ(parameters.normal_screen_size, usual.normal_screen_size);
  }
}

TEST(CubeDress, another_scale_leaves_what_a_user_has_chosen) {
  Korvane::OrientorParameters parameters;
  zovhost::DressCube(parameters);
  parameters.min_opacity = 0.25F;
  zovhost::ResizeCube(parameters, 2.0);
  EXPECT_EQ(parameters.min_opacity, 0.25F);
  EXPECT_EQ(parameters.normal_screen_size, 360);
}

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
    EXPECT_FALSE(zovtest::IsSimilar(zovtest::Compare(paint(pair[0]), paint(pair[1]))))
        << pair[0] << ' ' << pair[1];
  }
}

TEST(CubePictures, are_of_many_states_each_with_a_name_of_its_own) {
  std::set<std::string> names;
  for (const CubeState& state : zovsheets::GetCubeStates()) names.insert(state.name);
  EXPECT_EQ(names.size(), zovsheets::GetCubeStates().size());
  EXPECT_GE(names.size(), 40u);
}

}  // namespace
