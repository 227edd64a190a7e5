// How the renderer shows what a disc is made of.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "graphics_canvas.h"
#include "korvane/helm_disc.h"
#include "korvane/icon2d.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/track_menu.h"
#include "support/memory_hub.h"
#include "zovhost/resource_pack.h"

namespace {

using Korvane::DynamicIcon2D;
using Korvane::ResourceIcon2D;
using Korvane::TextureID;
using zovhost::Image;
using zovhost::ResourcePack;
using zovtest::Pixel;
using zovtest::PixelAt;

constexpr auto discPicture =
    static_cast<TextureID>(24);  // of a large disc, its upper wedge under the pointer

// On a larger picture than the canvas of the other tests.
class GraphicsDisc : public zovtest::RendererTest {
 protected:
  static constexpr int side = 300;

  GraphicsDisc() {
    EXPECT_TRUE(target.Create(side, side, 0));
    renderer.SetViewport(0, 0, side, side);
    renderer.SetResources(ResourcePack::GetDefault());
  }

  template <typename Icon>
  Image Draw(Icon& icon) {
    EXPECT_TRUE(target.Bind());
    glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_TRUE(renderer.BeginRender({{side / 2.0, side / 2.0}, {side / 2.0, side / 2.0}}, FrontCamera(),
                                     Korvane::Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(renderer.Render(&icon));
    EXPECT_TRUE(renderer.EndRender());
    Image image;
    EXPECT_TRUE(target.Read(image));
    return image;
  }

  // The picture that the pack gives for this size, pixel for pixel, in the lower left corner.
  void ExpectSized(int pixels, double scale) {
    ResourceIcon2D icon(discPicture);
    icon.SetSize(pixels, pixels);
    icon.SetPosition({pixels / 2.0, pixels / 2.0});
    const Image shown = Draw(icon);
    Image expected;
    ASSERT_TRUE(renderer.GetResources().RenderSizedPicture(discPicture, pixels / scale, scale, expected));
    for (int y = 0; y < pixels; ++y) {
      for (int x = 0; x < pixels; ++x) {
        const Pixel own = PixelAt(expected, x, y);
        const Pixel drawn = PixelAt(shown, x, y);
        for (std::size_t i = 0; i < 3; ++i) {
          ASSERT_NEAR(drawn[i], own[i] * own[3] / 255.0, 2.0) << pixels << ": " << x << ' ' << y;
        }
      }
    }
  }

  zovhost::OffscreenTarget target;
};

TEST_F(GraphicsDisc, a_disc_is_drawn_for_the_size_at_which_it_shows) {
  renderer.IncrementTextureUsage(discPicture);
  renderer.ApplyTextureUsage();
  for (const int pixels : {128, 64, 256, 100, 64}) ExpectSized(pixels, 1.0);
  EXPECT_EQ(renderer.GetPlaceholderCount(), 0);
}

TEST_F(GraphicsDisc, a_disc_is_drawn_for_the_scale_of_the_display) {
  renderer.SetDisplayScale(2.0);
  renderer.IncrementTextureUsage(discPicture);
  renderer.ApplyTextureUsage();
  ExpectSized(128, 2.0);  // 64 points: glyphs alone
  ExpectSized(256, 2.0);
  renderer.SetDisplayScale(1.0);
  ExpectSized(256, 1.0);
}

TEST_F(GraphicsDisc, a_size_that_no_picture_has_keeps_the_last_one) {
  renderer.IncrementTextureUsage(discPicture);
  renderer.ApplyTextureUsage();
  ExpectSized(128, 1.0);
  for (const double size : {1e9, 5000.0, 0.1}) {
    ResourceIcon2D icon(discPicture);
    icon.SetSize(size, size);
    Draw(icon);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << size;
  }
  ExpectSized(128, 1.0);
}

TEST_F(GraphicsDisc, a_disc_that_nobody_wants_is_a_placeholder) {
  ResourceIcon2D icon(discPicture);
  icon.SetSize(128, 128);
  icon.SetPosition({64, 64});
  Draw(icon);
  EXPECT_EQ(renderer.GetPlaceholderCount(), 1);
  EXPECT_EQ(renderer.GetLastPlaceholder(), discPicture);
}

TEST_F(GraphicsDisc, a_map_answers_with_the_keys_of_the_wedges) {
  const std::unique_ptr<Korvane::PixelIcon2D> map(renderer.CreateImageData(static_cast<TextureID>(17)));
  ASSERT_NE(map, nullptr);
  map->SetSize(128, 128);
  map->SetPosition({150, 150});
  Korvane::Vector3 colour;
  ASSERT_TRUE(map->GetColor({150, 190}, colour));  // above the middle
  EXPECT_EQ(colour, Korvane::Vector3(0, 1, 0));
  ASSERT_TRUE(map->GetColor({150, 150}, colour));
  EXPECT_EQ(colour, Korvane::Vector3(1, 1, 0));
  ASSERT_TRUE(map->GetColor({199, 199}, colour));  // the upper right corner: close
  EXPECT_EQ(colour, Korvane::Vector3(0, 1, 1));
  EXPECT_FALSE(map->GetColor({90, 210}, colour));                            // the upper left corner
  EXPECT_EQ(renderer.CreateImageData(static_cast<TextureID>(18)), nullptr);  // no map
}

struct Extent {
  int left, bottom, right, top;  // the last two are beyond it
};

Extent FindLit(const Image& image) {
  Extent lit{image.width, image.height, 0, 0};
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      if (PixelAt(image, x, y)[0] < 60) continue;
      lit = {std::min(lit.left, x), std::min(lit.bottom, y), std::max(lit.right, x + 1),
             std::max(lit.top, y + 1)};
    }
  }
  return lit;
}

TEST_F(GraphicsDisc, the_caption_of_a_small_disc_keeps_its_size_and_stands_above_the_disc) {
  DynamicIcon2D* label = renderer.CreateMiniWheelLabel(L"Orbit");
  ASSERT_NE(label, nullptr);
  const double height = label->GetHeight();
  label->SetPosition({150, 150});
  const Extent own = FindLit(Draw(*label));
  for (const int disc : {32, 64, 128}) {
    label->SetSize(2 * disc, 2 * disc);
    const Extent shown = FindLit(Draw(*label));
    EXPECT_EQ(shown.right - shown.left, own.right - own.left) << disc;
    EXPECT_EQ(shown.top - shown.bottom, own.top - own.bottom) << disc;
    EXPECT_GE(shown.bottom, 150 + disc / 2) << disc;
    EXPECT_LE(shown.top, 150 + disc / 2 + height + 2) << disc;
    EXPECT_NEAR((shown.left + shown.right) / 2.0, 150.0, 1.5) << disc;
  }
  renderer.DestroyIcon(label);
}

TEST_F(GraphicsDisc, other_texts_fill_the_bounds_that_they_are_given) {
  DynamicIcon2D* note = renderer.CreateTooltipHUD(L"Orbit");
  ASSERT_NE(note, nullptr);
  note->SetPosition({150, 150});
  note->SetSize(200, 100);
  const Extent shown = FindLit(Draw(*note));
  EXPECT_GT(shown.top - shown.bottom, 40);
  renderer.DestroyIcon(note);
}

// ---- the library's disc with these pictures ----

// Degrees clockwise from the top, the distance from the middle in half widths of the disc, and the number of
// the picture that shows when the pointer is there.
struct Aim {
  double angle;
  double reach;
  int picture;
};

struct AimedDisc {
  Korvane::DiscType type;
  std::vector<Aim> aims;
};

const std::vector<AimedDisc>& GetAimedDiscs() {
  constexpr double seventh = 360.0 / 7.0;
  static const std::vector<AimedDisc> discs = {
      {Korvane::DiscType::ViewObject,
       {{45, 1.08, 19}, {135, 1.08, 20}, {0, 0, 21}, {120, 0.65, 22}, {240, 0.65, 23}, {0, 0.65, 24}}},
      {Korvane::DiscType::TourBuilding,
       {{45, 1.08, 28}, {135, 1.08, 29}, {0, 0, 30}, {0, 0.65, 31}, {240, 0.65, 32}, {120, 0.65, 33}}},
      {Korvane::DiscType::FullNavigation,
       {{45, 1.08, 37},
        {135, 1.08, 38},
        {0, 0, 39},
        {6 * seventh, 0.65, 40},
        {0, 0.65, 41},
        {5 * seventh, 0.65, 42},
        {1 * seventh, 0.65, 43},
        {2 * seventh, 0.65, 44},
        {3 * seventh, 0.65, 45},
        {4 * seventh, 0.65, 46}}},
      {Korvane::DiscType::TwoD,
       {{180, 0.65, 72}, {0, 0, 73}, {0, 0.65, 74}, {45, 1.08, 75}, {135, 1.08, 76}}},
      {Korvane::DiscType::MiniViewObject, {{0, 0, 49}, {240, 0.65, 50}, {0, 0.65, 51}, {120, 0.65, 52}}},
      {Korvane::DiscType::MiniTourBuilding, {{0, 0.65, 55}, {120, 0.65, 56}, {240, 0.65, 57}, {0, 0, 58}}},
      {Korvane::DiscType::MiniFullNavigation,
       // Near the rim, as a wedge stays the one in use until the pointer is three pixels beyond it.
       {{0, 0, 61},
        {6 * seventh, 0.8, 62},
        {0, 0.8, 63},
        {5 * seventh, 0.8, 64},
        {4 * seventh, 0.8, 65},
        {2 * seventh, 0.8, 66},
        {1 * seventh, 0.8, 67},
        {3 * seventh, 0.8, 68}}},
  };
  return discs;
}

class GraphicsHelmDisc : public GraphicsDisc {
 protected:
  GraphicsHelmDisc() {
    disc.GetParameters().suppressWelcome = true;
    disc.SetKorvane(&hub);
    disc.SetRenderer(&renderer);
    disc.SetViewportSize(side, side);
    EXPECT_TRUE(disc.Create());
  }
  ~GraphicsHelmDisc() override { disc.Destroy(); }

  void AimAt(const Aim& aim, int size) {
    const double radians = aim.angle * std::acos(-1.0) / 180.0;
    const double reach = aim.reach * size / 2.0;
    disc.OnMouseMove(static_cast<int>(std::lround(side / 2.0 + reach * std::sin(radians))),
                     static_cast<int>(std::lround(side / 2.0 + reach * std::cos(radians))));
  }

  MemoryHub hub;
  Korvane::HelmDisc disc;
};

TEST_F(GraphicsHelmDisc, shows_the_wedge_that_the_pointer_is_on_in_every_disc_and_size) {
  for (const AimedDisc& aimed : GetAimedDiscs()) {
    const bool large = Korvane::HelmDisc::IsLargeDisc(aimed.type);
    for (const int size : large ? std::array{64, 128, 256} : std::array{32, 64, 256}) {
      disc.GetParameters().largeDiscSize = disc.GetParameters().miniDiscSize = size;
      disc.UpdateSettings();
      disc.SetActiveDisc(aimed.type);
      Korvane::TrackMenu* menu = disc.GetActiveTrackMenu();
      ASSERT_NE(menu, nullptr);
      menu->SetLocked(true);
      menu->SetLocation(side / 2, side / 2);
      for (const Aim& aim : aimed.aims) {
        AimAt(aim, size);
        const Korvane::ResourceIcon2D* icon = menu->GetActiveRegion().icon;
        ASSERT_NE(icon, nullptr);
        EXPECT_EQ(icon->GetTextureResourceID(), aim.picture) << "at " << size;
        disc.Draw();
      }
      disc.SetActiveDisc(Korvane::DiscType::None);
    }
  }
  EXPECT_EQ(renderer.GetPlaceholderCount(), 0) << renderer.GetLastPlaceholder();
}

}  // namespace
