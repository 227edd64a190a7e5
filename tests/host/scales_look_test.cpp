// Pictures on displays of one, one and a half and three pixels a point, held to stored ones.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "graphics_canvas.h"
#include "picture_comparison.h"
#include "sheets/disc_states.h"
#include "sheets/notes.h"
#include "sheets/story_states.h"
#include "zovhost/resource_pack.h"

namespace {

using zovhost::Image;
using zovhost::ResourcePack;
using zovsheets::Ground;

constexpr int MARGIN = 2;  // pixels
constexpr std::size_t COLUMNS = 9;

struct Scale {
  double value;
  const char* suffix;
};
void PrintTo(const Scale& scale, std::ostream* out) { *out << scale.value; }

using Render = std::function<bool(int id, double scale, Image& image)>;

// Side by side, in rows.
Image LayOut(int first, int last, double scale, const Render& render) {
  std::vector<Image> images;
  for (int id = first; id <= last; ++id) EXPECT_TRUE(render(id, scale, images.emplace_back())) << id;
  std::vector<std::array<int, 2>> places;
  int x = 0;
  int y = 0;
  int width = 0;
  int bottom = 0;
  for (const Image& image : images) {
    if (!places.empty() && places.size() % COLUMNS == 0) {
      x = 0;
      y = bottom;
    }
    places.push_back({x, y});
    x += image.width + MARGIN;
    width = std::max(width, x);
    bottom = std::max(bottom, y + image.height + MARGIN);
  }
  Image sheet = zovsheets::MakeGround(Ground::Gradient, width, bottom);
  for (std::size_t i = 0; i < images.size(); ++i) {
    zovsheets::Lay(images[i], places[i][0], places[i][1], 1, sheet);
  }
  return sheet;
}

bool RenderCursor(int id, double scale, Image& image) {
  zovhost::CursorPicture cursor;
  if (!ResourcePack::GetDefault()->RenderCursor(id, scale, cursor)) return false;
  image = std::move(cursor.image);
  return true;
}

bool RenderPicture(int id, double scale, Image& image) {
  return ResourcePack::GetDefault()->RenderPicture(id, scale, image);
}

class ScalesLook : public testing::TestWithParam<Scale> {
 protected:
  static void Expect(const Image& image, const std::string& name) {
    zovtest::ExpectStored(image, "scales", name + GetParam().suffix);
  }
};

TEST_P(ScalesLook, of_the_pointers_is_as_it_was) {
  Expect(LayOut(0, ResourcePack::cursorCount - 1, GetParam().value, RenderCursor), "pointers");
}

TEST_P(ScalesLook, of_the_icons_of_the_bars_is_as_it_was) {
  Expect(LayOut(147, 184, GetParam().value, RenderPicture), "icons");
}

TEST_P(ScalesLook, of_the_cubes_buttons_is_as_it_was) {
  Expect(LayOut(7, 15, GetParam().value, RenderPicture), "cube-buttons");
}

TEST_P(ScalesLook, of_the_gauges_is_as_it_was) {
  Expect(LayOut(89, 101, GetParam().value, RenderPicture), "gauges");
}

// Each disc at rest and with one wedge lit; the welcome screen is stored at half of its size. One pixel a
// point has pictures of all states elsewhere, here and for the storyboard.
TEST_P(ScalesLook, of_the_discs_is_as_it_was) {
  if (GetParam().value <= 1.0) return;
  for (zovsheets::DiscKind kind : zovsheets::GetDiscKinds()) {
    const bool isDisc = kind.usualPoints < 256.0;
    kind.last = isDisc ? kind.first + 1 : kind.first;
    Image image;
    const double points = std::min(kind.usualPoints, 256.0);
    ASSERT_TRUE(zovsheets::PaintDiscs(*ResourcePack::GetDefault(), kind,
                                      {.points = points, .scale = GetParam().value, .columns = 4}, image));
    Expect(image, kind.name);
  }
}

TEST_P(ScalesLook, of_the_storyboard_is_as_it_was) {
  if (GetParam().value <= 1.0) return;
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  zovsheets::StoryState state;
  state.doing = zovsheets::StoryState::Doing::Playing;
  state.scale = GetParam().value;
  Image image;
  ASSERT_TRUE(zovsheets::PaintStory(state, image));
  Expect(image, "storyboard");
}

TEST_P(ScalesLook, of_the_notes_is_as_it_was) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  Image image;
  ASSERT_TRUE(zovsheets::PaintNotes(Ground::Gradient, GetParam().value, image));
  Expect(image, "notes");
}

INSTANTIATE_TEST_SUITE_P(
    Scales, ScalesLook, testing::Values(Scale{1.0, ""}, Scale{1.5, "-at-1-and-a-half"}, Scale{3.0, "-at-3x"}),
    [](const auto& scale) { return "at_" + std::to_string(std::lround(scale.param.value * 100.0)); });

}  // namespace
