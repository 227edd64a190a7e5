// The look of the discs and of their welcome screen, held to stored pictures.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "picture_comparison.h"
#include "sheets/disc_states.h"

namespace {

using zovhost::Image;
using zovhost::ResourcePack;
using zovsheets::DiscKind;
using zovsheets::DiscShow;

std::string GetName(const DiscKind& kind) {
  std::string name = kind.name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

class DiscLook : public testing::TestWithParam<DiscKind> {
 protected:
  static Image Paint(const DiscShow& show) {
    Image image;
    EXPECT_TRUE(zovsheets::PaintDiscs(*ResourcePack::GetDefault(), GetParam(), show, image));
    return image;
  }
};

TEST_P(DiscLook, is_as_it_was_at_its_usual_size) {
  // The welcome screen is stored at half of its size.
  const double points = std::min(GetParam().usualPoints, 256.0);
  zovtest::ExpectStored(Paint({.points = points, .columns = 4}), "discs", GetParam().name);
}

TEST_P(DiscLook, is_as_it_was_at_its_smallest_size_on_a_fine_display) {
  if (GetParam().leastPoints > 256.0) return;  // the welcome screen has one size
  zovtest::ExpectStored(Paint({.points = GetParam().leastPoints, .scale = 2.0, .columns = 4}), "discs",
                        std::string(GetParam().name) + "-small-at-2x");
}

// What the tolerance must not let through: another wedge under the pointer.
TEST_P(DiscLook, of_every_state_is_told_from_that_at_rest) {
  const double points = std::min(GetParam().usualPoints, 256.0);
  const auto pack = ResourcePack::GetDefault();
  DiscKind rest = GetParam();
  rest.last = rest.first;
  Image resting;
  ASSERT_TRUE(zovsheets::PaintDiscs(*pack, rest, {.points = points}, resting));
  for (int id = GetParam().first + 1; id <= GetParam().last; ++id) {
    DiscKind one = GetParam();
    one.first = one.last = id;
    Image lit;
    ASSERT_TRUE(zovsheets::PaintDiscs(*pack, one, {.points = points}, lit));
    EXPECT_FALSE(zovtest::IsSimilar(zovtest::Compare(lit, resting))) << id;
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, DiscLook,
                         testing::ValuesIn(zovsheets::GetDiscKinds().begin(),
                                           zovsheets::GetDiscKinds().end()),
                         [](const auto& kind) { return GetName(kind.param); });

// ---- the film strip, the gauges of the wedges and what they show the place with ----

class GaugeLook : public testing::TestWithParam<int> {};

TEST_P(GaugeLook, is_as_it_was_on_a_fine_display) {
  Image layer;
  ASSERT_TRUE(ResourcePack::GetDefault()->RenderPicture(GetParam(), 2.0, layer));
  Image image = zovsheets::MakeGround(zovsheets::Ground::Gradient, layer.width, layer.height);
  zovsheets::Lay(layer, 0, 0, 1, image);
  zovtest::ExpectStored(image, "gauges", "picture-" + std::to_string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Pictures, GaugeLook, testing::Range(89, 102),
                         [](const auto& picture) { return std::to_string(picture.param); });

}  // namespace
