// The look of the navigation bar and of the pictures on it, held to stored pictures.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "contrast.h"
#include "graphics_canvas.h"
#include "graphics_context.h"
#include "korvane/icon2d.h"
#include "korvane/toolbar.h"
#include "picture_comparison.h"
#include "sheets/bar_states.h"
#include "zovhost/host_pictures.h"
#include "zovhost/resource_pack.h"
#include "zovhost/scene_ground.h"

namespace zovsheets {

void PrintTo(const BarState& state, std::ostream* out) { *out << state.name; }

}  // namespace zovsheets

namespace {

using zovhost::Image;
using zovhost::ResourcePack;
using zovsheets::BarState;

// From the top left.
zovtest::Pixel PixelAt(const Image& image, int x, int y) {
  return zovtest::PixelAt(image, x, image.height - 1 - y);
}

class BarPicture : public testing::TestWithParam<BarState> {};

TEST_P(BarPicture, looks_as_it_did) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  Image drawn;
  ASSERT_TRUE(zovsheets::PaintBar(GetParam(), drawn));
  zovtest::ExpectStored(drawn, "bars", GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(States, BarPicture, testing::ValuesIn(zovsheets::GetBarStates()),
                         [](const auto& state) {
                           std::string name = state.param.name;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

// What the tolerance must not let through: a fill, an icon that is faint, half of a button.
TEST(BarPictures, of_different_states_are_told_apart) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  const std::vector<BarState> states = zovsheets::GetBarStates();
  const auto paint = [&](const std::string& name) {
    const auto found =
        std::find_if(states.begin(), states.end(), [&](const BarState& state) { return state.name == name; });
    Image image;
    EXPECT_TRUE(found != states.end() && zovsheets::PaintBar(*found, image)) << name;
    return image;
  };
  for (const std::string along : {"vertical-", "horizontal-"}) {
    const Image rest = paint(along + "rest");
    for (const char* state : {"far", "over", "pressed", "over-disc", "pressed-flyout", "over-close",
                              "over-menu", "over-grip", "selected", "disabled", "without-cube"}) {
      EXPECT_FALSE(zovtest::IsSimilar(zovtest::Compare(paint(along + state), rest))) << along << state;
    }
  }
}

TEST(BarPictures, are_of_many_states_each_with_a_name_of_its_own) {
  std::set<std::string> names;
  for (const BarState& state : zovsheets::GetBarStates()) names.insert(state.name);
  EXPECT_EQ(names.size(), zovsheets::GetBarStates().size());
  EXPECT_GE(names.size(), 40u);
}

// ---- the pictures by themselves ----

struct Numbers {
  int first;
  int last;
  int points;
};

constexpr Numbers ALL[] = {{147, 149, 8},  {152, 153, 8}, {154, 161, 32},
                           {170, 170, 32}, {171, 178, 8}, {186, 231, 32}};

template <typename Check>
void ForEach(Check check) {
  for (const Numbers& row : ALL) {
    for (int id = row.first; id <= row.last; ++id) check(id, row.points);
  }
}

TEST(BarPictures, have_their_size_at_every_scale) {
  const auto pack = ResourcePack::GetDefault();
  ForEach([&](int id, int points) {
    EXPECT_TRUE(pack->HasPicture(id)) << id;
    for (const int scale : {1, 2, 3}) {
      Image image;
      ASSERT_TRUE(pack->RenderPicture(id, scale, image)) << id;
      EXPECT_EQ(image.width, points * scale) << id;
      EXPECT_EQ(image.height, points * scale) << id;
    }
  });
}

TEST(BarPictures, are_drawn_for_the_size_at_which_they_show) {
  const auto pack = ResourcePack::GetDefault();
  ForEach([&](int id, int) {
    EXPECT_TRUE(pack->IsSizedPicture(id)) << id;
    Image image;
    ASSERT_TRUE(pack->RenderSizedPicture(id, 21.0, 1.0, image)) << id;
    EXPECT_EQ(image.width, 21) << id;
  });
}

TEST(BarPictures, refuse_sizes_that_cannot_be) {
  const auto pack = ResourcePack::GetDefault();
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double points : {0.0, -8.0, std::nan(""), infinity, 1e9, 0.4}) {
    Image image{1, 1, {1, 2, 3, 4}};
    EXPECT_FALSE(pack->RenderSizedPicture(154, points, 1.0, image)) << points;
    EXPECT_EQ(image.width, 1);
  }
}

TEST(BarPictures, each_are_another) {
  const auto pack = ResourcePack::GetDefault();
  std::set<std::vector<std::uint8_t>> different;
  int count = 0;
  ForEach([&](int id, int) {
    Image image;
    ASSERT_TRUE(pack->RenderPicture(id, 2.0, image));
    different.insert(image.rgba);
    ++count;
  });
  EXPECT_EQ(different.size(), static_cast<std::size_t>(count));
}

TEST(BarPictures, of_before_and_after_point_as_a_mirrored_panel_is_read) {
  const auto paint = [](int id, bool fromRight) {
    Image image;
    EXPECT_TRUE(zovhost::PaintIcon(id, 24, fromRight, image)) << id;
    return image;
  };
  const auto mirror = [](const Image& image) {
    std::vector<int> cover;
    for (int y = 0; y < image.height; ++y) {
      for (int x = image.width - 1; x >= 0; --x) cover.push_back(PixelAt(image, x, y)[3]);
    }
    return cover;
  };
  const auto isSame = [](const std::vector<int>& cover, const Image& image) {
    int off = 0;
    for (std::size_t i = 0; i < cover.size(); ++i) off += std::abs(cover[i] - image.rgba[4 * i + 3]) > 8;
    return off == 0;
  };
  for (const int id : {zovhost::HOST_PICTURE_UNDO, zovhost::HOST_PICTURE_REDO,
                       zovhost::HOST_PICTURE_PREVIOUS_VIEW, zovhost::HOST_PICTURE_NEXT_VIEW}) {
    EXPECT_TRUE(isSame(mirror(paint(id, false)), paint(id, true))) << id;
    EXPECT_FALSE(isSame(mirror(paint(id, false)), paint(id, false))) << id;
  }
  const Image home = paint(zovhost::HOST_PICTURE_HOME, false);
  EXPECT_EQ(home.rgba, paint(zovhost::HOST_PICTURE_HOME, true).rgba);
}

// On any ground either the strokes or their edge stand out.
TEST(BarPictures, of_items_are_dark_with_a_light_edge) {
  const auto pack = ResourcePack::GetDefault();
  ForEach([&](int id, int) {
    if (id >= 171 && id <= 178) return;
    Image image;
    ASSERT_TRUE(pack->RenderPicture(id, 1.0, image));
    int dark = 0;
    int light = 0;
    for (int y = 0; y < image.height; ++y) {
      for (int x = 0; x < image.width; ++x) {
        const auto pixel = PixelAt(image, x, y);
        dark += pixel[3] > 200 && pixel[0] < 80;
        light += pixel[3] > 60 && pixel[0] > 200;
      }
    }
    EXPECT_GE(dark, image.width * image.height / 32) << id;
    EXPECT_GE(light, dark / 4) << id;
  });
}

// A strip at rest shows at 0.3: its glyphs, or the light edges of them, against what lies beside them.
class BarAtRest : public zovtest::RendererTest {
 protected:
  using Channels = std::array<float, 3>;

  BarAtRest() { renderer.SetResources(ResourcePack::GetDefault()); }
  ~BarAtRest() override { EXPECT_EQ(renderer.GetPlaceholderCount(), 0); }

  double FindContrast(int id, const Channels& ground) {
    canvas.Clear();
    renderer.IncrementTextureUsage(static_cast<Korvane::TextureID>(id));
    renderer.ApplyTextureUsage();
    EXPECT_TRUE(renderer.BeginRender(WholeViewport(), FrontCamera(), Korvane::Renderer::RENDER_OVERLAY));
    const Korvane::ColorRGBA& strip = Korvane::Toolbar::DEFAULT_BACKGROUND_COLOR;
    const auto all = Quad(0.0F, 0.0F, zovtest::Canvas::width, zovtest::Canvas::height);
    EXPECT_TRUE(DrawQuad(all, Coloured(ground[0], ground[1], ground[2])));
    EXPECT_TRUE(DrawQuad(all, Coloured(static_cast<float>(strip.r), static_cast<float>(strip.g),
                                       static_cast<float>(strip.b), static_cast<float>(strip.a) * REST)));
    const double side = id < 154 ? 8.0 : 32.0;
    Korvane::ResourceIcon2D icon(static_cast<Korvane::TextureID>(id));
    icon.SetPosition({24.0, 24.0});
    icon.SetSize(side, side);
    icon.SetOpacity(static_cast<double>(REST));
    EXPECT_TRUE(renderer.Render(&icon));
    renderer.EndRender();
    const Image image = canvas.Read();
    renderer.DecrementTextureUsage(static_cast<Korvane::TextureID>(id));
    renderer.ApplyTextureUsage();
    return FindContrast(image, static_cast<int>(24.0 - side / 2.0), static_cast<int>(side));
  }

  static constexpr float REST = 0.3F;

 private:
  // Between the fiftieth part of the pixels that is darkest and the one that is lightest.
  static double FindContrast(const Image& image, int first, int side) {
    std::vector<double> luminances;
    for (int y = first; y < first + side; ++y) {
      for (int x = first; x < first + side; ++x) {
        const auto pixel = zovtest::PixelAt(image, x, y);
        luminances.push_back(zovtest::GetLuminance({pixel[0] / 255.0, pixel[1] / 255.0, pixel[2] / 255.0}));
      }
    }
    std::sort(luminances.begin(), luminances.end());
    const std::size_t part = std::max<std::size_t>(luminances.size() / 50, 1);
    return (luminances[luminances.size() - part] + 0.05) / (luminances[part - 1] + 0.05);
  }
};

TEST_F(BarAtRest, its_glyphs_stand_out_at_3_to_1_on_every_ground) {
  for (const zovhost::SceneGround& ground : zovhost::GetSceneGrounds()) {
    for (const auto& colour : {ground.top, ground.bottom}) {
      ForEach([&](int id, int) {
        if (id >= 171 && id <= 178) return;
        EXPECT_GE(FindContrast(id, colour), 3.0) << id << ' ' << ground.name;
      });
    }
  }
}

// The quarter of a disc about the inner corner, which the strip tints.
TEST(BarPictures, of_corners_are_white_and_round) {
  const auto pack = ResourcePack::GetDefault();
  constexpr int SIDE = 8;
  for (int corner = 0; corner < 4; ++corner) {
    Image image;
    ASSERT_TRUE(pack->RenderPicture(171 + corner, 1.0, image));
    const bool left = corner == 0 || corner == 3;
    const bool top = corner < 2;
    for (int y = 0; y < SIDE; ++y) {
      for (int x = 0; x < SIDE; ++x) {
        const double fromX = left ? SIDE - x - 0.5 : x + 0.5;
        const double fromY = top ? SIDE - y - 0.5 : y + 0.5;
        const double beyond = std::hypot(fromX, fromY) - SIDE;
        const auto pixel = PixelAt(image, x, y);
        const int expected = beyond < -1.0 ? 255 : beyond > 1.0 ? 0 : pixel[3];
        EXPECT_EQ(pixel[3], expected) << corner << ' ' << x << ' ' << y;
        EXPECT_TRUE(pixel[3] == 0 || (pixel[0] >= 254 && pixel[1] >= 254 && pixel[2] >= 254))
            << x << ' ' << y;
      }
    }
  }
}

// A dark line a pixel wide at the outside, a light one within it, as along the sides of the strip.
TEST(BarPictures, of_edges_continue_the_lines_of_the_strip) {
  const auto pack = ResourcePack::GetDefault();
  for (const int scale : {1, 2, 3}) {
    Image image;
    ASSERT_TRUE(pack->RenderPicture(175, scale, image));
    const int end = image.width - 1;  // where the corner meets the side
    const auto outer = PixelAt(image, 0, end);
    const auto inner = PixelAt(image, 1, end);
    EXPECT_EQ(outer[0], 0) << scale;
    EXPECT_NEAR(outer[3], 127.5, 12.0) << scale;
    EXPECT_GE(inner[0], 225) << scale;
    EXPECT_NEAR(inner[3], 63.75, 12.0) << scale;
    EXPECT_EQ(PixelAt(image, 3, end)[3], 0) << scale;
  }
}

// ---- the texts ----

TEST(BarTexts, are_there_for_each_of_its_items) {
  const auto pack = ResourcePack::GetDefault();
  std::set<std::string> texts;
  for (int id = 86; id <= 98; ++id) texts.insert(pack->GetString(id));
  EXPECT_EQ(texts.size(), 13u);
  EXPECT_EQ(texts.count(""), 0u);
}

}  // namespace
