// The look of the orientation cube, held to stored pictures.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <set>

#include "graphics_context.h"
#include "picture_comparison.h"
#include "sheets/cube_states.h"

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
