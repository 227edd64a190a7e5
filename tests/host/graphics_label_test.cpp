#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "graphics_canvas.h"
#include "korvane/icon2d.h"
#include "zovhost/accent.h"
#include "zovhost/resource_pack.h"

namespace {

using Korvane::DynamicIcon2D;
using Korvane::Renderer;
using Korvane::StringID;
using Korvane::Vector3;
using zovhost::Image;
using zovhost::OffscreenTarget;
using zovtest::Pixel;
using zovtest::PixelAt;

class LabelTest : public zovtest::RendererTest {
 protected:
  using Maker = DynamicIcon2D* (zovhost::GLRenderer::*)(const wchar_t*);
  static constexpr Maker makers[] = {
      &zovhost::GLRenderer::CreateTooltip, &zovhost::GLRenderer::CreateTooltipHUD,
      &zovhost::GLRenderer::CreateMessageHUD, &zovhost::GLRenderer::CreatePivotLabel,
      &zovhost::GLRenderer::CreateMiniWheelLabel};

  // The icon at its own size on a ground of one grey, with nothing around it.
  Image Draw(DynamicIcon2D* icon, float ground) {
    const int width = static_cast<int>(icon->GetWidth());
    const int height = static_cast<int>(icon->GetHeight());
    OffscreenTarget target;
    EXPECT_TRUE(target.Create(width, height, 0));
    EXPECT_TRUE(target.Bind());
    glClearColor(ground, ground, ground, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    renderer.SetViewport(0, 0, width, height);
    icon->SetPosition({width / 2.0, height / 2.0});
    EXPECT_TRUE(renderer.BeginRender({{width / 2.0, height / 2.0}, {width / 2.0, height / 2.0}},
                                     FrontCamera(), Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(renderer.Render(icon));
    EXPECT_TRUE(renderer.EndRender());
    Image image;
    EXPECT_TRUE(target.Read(image));
    return image;
  }

  // How much of the picture has the accent colour, to 3 of 255.
  static double ShareOfAccent(const Image& image) {
    int count = 0;
    for (int y = 0; y < image.height; ++y) {
      for (int x = 0; x < image.width; ++x) {
        const Pixel pixel = PixelAt(image, x, y);
        bool isAccent = true;
        for (std::size_t channel = 0; channel < 3; ++channel) {
          isAccent = isAccent && std::abs(pixel[channel] - 255.0 * zovhost::ACCENT_COLOUR[channel]) <= 3.0;
        }
        count += isAccent;
      }
    }
    return static_cast<double>(count) / (image.width * image.height);
  }

  // Relative luminance, 0 to 1 (W3C, Web Content Accessibility Guidelines 2.1).
  static double LuminanceOf(const Image& image, std::size_t at) {
    const auto linear = [&](std::size_t channel) {
      const double c = image.rgba[at + channel] / 255.0;
      return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(0) + 0.7152 * linear(1) + 0.0722 * linear(2);
  }
};

// The first row that is not as the corner is, and the one after the last of them.
std::array<int, 2> FindDrawnRows(const Image& image) {
  std::array<int, 2> rows = {image.height, 0};
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const auto at = 4 * static_cast<std::ptrdiff_t>(y * image.width + x);
      if (std::equal(image.rgba.begin(), image.rgba.begin() + 3, image.rgba.begin() + at)) continue;
      rows = {std::min(rows[0], y), y + 1};
    }
  }
  return rows;
}

TEST_F(LabelTest, every_kind_of_text_reads_on_white_and_on_black) {
  for (const Maker make : makers) {
    for (const float ground : {0.0F, 1.0F}) {
      DynamicIcon2D* icon = (renderer.*make)(L"Oberlicht");
      ASSERT_NE(icon, nullptr);
      EXPECT_EQ(icon->GetWidth(), std::round(icon->GetWidth()));  // whole pixels
      EXPECT_EQ(icon->GetHeight(), std::round(icon->GetHeight()));
      const Image image = Draw(icon, ground);
      // Between the tenth part of the pixels that is darkest and the one that is lightest, within the middle.
      std::vector<double> luminances;
      const auto [first, last] = FindDrawnRows(image);
      for (int y = first + (last - first) / 3; y < last - (last - first) / 3; ++y) {
        for (int x = 0; x < image.width; ++x) {
          luminances.push_back(LuminanceOf(image, 4 * static_cast<std::size_t>(y * image.width + x)));
        }
      }
      std::sort(luminances.begin(), luminances.end());
      const std::size_t tenth = luminances.size() / 10;
      const double contrast = (luminances[luminances.size() - tenth] + 0.05) / (luminances[tenth] + 0.05);
      EXPECT_GT(contrast, 4.5);
      EXPECT_TRUE(renderer.DestroyIcon(icon));
    }
  }
}

// Crisp: set anew and not stretched, so at each scale the shade changes as fast from one pixel to the next.
TEST_F(LabelTest, texts_are_set_for_the_scale_of_the_display_and_again_when_it_changes) {
  const auto steepest = [this](DynamicIcon2D* icon) {
    const Image image = Draw(icon, 0.0F);
    int step = 0;
    for (std::size_t i = 4; i < image.rgba.size(); i += 4) {
      step = std::max(step, std::abs(image.rgba[i] - image.rgba[i - 4]));
    }
    return step;
  };
  DynamicIcon2D* const icon = renderer.CreateMessageHUD(L"Scale");
  ASSERT_NE(icon, nullptr);
  const double width = icon->GetWidth();
  const double height = icon->GetHeight();
  EXPECT_GT(steepest(icon), 150);
  for (const double scale : {1.25, 1.5, 2.0, 3.0, 1.0}) {
    renderer.SetDisplayScale(scale);
    EXPECT_NEAR(icon->GetWidth(), scale * width, 2.0 * scale) << scale;
    EXPECT_NEAR(icon->GetHeight(), scale * height, 2.0 * scale) << scale;
    EXPECT_GT(steepest(icon), 150) << scale;
    DynamicIcon2D* another = renderer.CreateMessageHUD(L"Scale");
    ASSERT_NE(another, nullptr);
    EXPECT_EQ(another->GetWidth(), icon->GetWidth()) << scale;
    EXPECT_TRUE(renderer.DestroyIcon(another));
  }
}

TEST_F(LabelTest, a_size_that_a_widget_has_given_stays_at_another_scale) {
  DynamicIcon2D* const icon = renderer.CreateTooltip(L"Orbit");
  ASSERT_NE(icon, nullptr);
  icon->SetSize(50.0, 40.0);
  renderer.SetDisplayScale(2.0);
  EXPECT_EQ(icon->GetWidth(), 50.0);
  EXPECT_EQ(icon->GetHeight(), 40.0);
}

// The same picture as one that is made in that language.
TEST_F(LabelTest, texts_of_the_pack_change_with_its_language) {
  renderer.SetResources(nullptr);
  DynamicIcon2D* const shared = renderer.GetStringTexture(Korvane::STRING_ORBIT);
  DynamicIcon2D* const own = renderer.CreateTooltip(L"Model 4711");
  DynamicIcon2D* const menu = renderer.CreateUCSMenuLabel(L"Model 4711", L"World", false, 200);
  ASSERT_NE(shared, nullptr);
  ASSERT_NE(own, nullptr);
  ASSERT_NE(menu, nullptr);
  const Image ownBefore = Draw(own, 0.5F);
  const Image menuBefore = Draw(menu, 0.5F);
  const Image english = Draw(shared, 0.5F);
  for (const zovhost::Language& language : zovhost::GetLanguages()) {
    if (language.tag == "en") continue;
    SCOPED_TRACE(language.tag);
    renderer.SetResources(zovhost::ResourcePack::Make(language));
    DynamicIcon2D* fresh =
        renderer.CreateTooltipHUD(renderer.LoadStringResource(Korvane::STRING_ORBIT).c_str());
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(Draw(shared, 0.5F).rgba, Draw(fresh, 0.5F).rgba);
    EXPECT_NE(Draw(shared, 0.5F).rgba, english.rgba);
    EXPECT_NE(Draw(menu, 0.5F).rgba, menuBefore.rgba);
    EXPECT_EQ(Draw(own, 0.5F).rgba, ownBefore.rgba);
    EXPECT_TRUE(renderer.DestroyIcon(fresh));
  }
  renderer.SetResources(nullptr);
  EXPECT_EQ(Draw(shared, 0.5F).rgba, english.rgba);
  EXPECT_EQ(Draw(menu, 0.5F).rgba, menuBefore.rgba);
}

TEST_F(LabelTest, drawing_at_whole_pixels_neither_blurs_nor_shifts) {
  DynamicIcon2D* icon = renderer.CreateTooltipHUD(L"Orbit");
  ASSERT_NE(icon, nullptr);
  const Image expected = Draw(icon, 0.5F);
  renderer.SetViewport(0, 0, expected.width, expected.height);
  const auto again = [&](double offset) {
    OffscreenTarget target;
    EXPECT_TRUE(target.Create(expected.width, expected.height, 0));
    EXPECT_TRUE(target.Bind());
    glClearColor(0.5F, 0.5F, 0.5F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    icon->SetPosition({expected.width / 2.0 + offset, expected.height / 2.0 - offset});
    EXPECT_TRUE(renderer.BeginRender(
        {{expected.width / 2.0, expected.height / 2.0}, {expected.width / 2.0, expected.height / 2.0}},
        FrontCamera(), Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(renderer.Render(icon));
    renderer.EndRender();
    Image image;
    EXPECT_TRUE(target.Read(image));
    return image.rgba;
  };
  EXPECT_EQ(again(0.0), expected.rgba);
  EXPECT_EQ(again(0.3), expected.rgba);
}

TEST_F(LabelTest, no_text_makes_no_icon) {
  for (const Maker make : makers) {
    EXPECT_EQ((renderer.*make)(L""), nullptr);
    EXPECT_EQ((renderer.*make)(nullptr), nullptr);
  }
  EXPECT_EQ(renderer.CreateTextLabel(nullptr, 10.0F, 0, 0), nullptr);
  EXPECT_EQ(renderer.CreateUCSMenuLabel(nullptr, nullptr, false, 100), nullptr);
}

TEST_F(LabelTest, a_text_of_any_length_gives_an_icon_of_a_size_that_fits_a_screen) {
  const std::wstring words(100000, L'w');
  std::wstring lines;
  for (int i = 0; i < 1000; ++i) lines += L"line\n";
  for (const std::wstring& text : {words, lines, std::wstring(L"\x1\x2\xD800\n\n")}) {
    DynamicIcon2D* icon = renderer.CreateMessageHUD(text.c_str());
    ASSERT_NE(icon, nullptr);
    EXPECT_LE(icon->GetWidth(), 600.0);
    EXPECT_LE(icon->GetHeight(), 400.0);
  }
}

TEST_F(LabelTest, a_label_is_fitted_into_its_box) {
  DynamicIcon2D* free = renderer.CreateTextLabel(L"A rather long name of a shot", 10.0F, 0, 0);
  DynamicIcon2D* fitted = renderer.CreateTextLabel(L"A rather long name of a shot", 10.0F, 64, 16);
  ASSERT_NE(free, nullptr);
  ASSERT_NE(fitted, nullptr);
  EXPECT_GT(free->GetWidth(), 100.0);
  EXPECT_EQ(fitted->GetWidth(), 64.0);
  EXPECT_EQ(fitted->GetHeight(), 16.0);
  for (const float size : {0.0F, -5.0F, 1e9F, std::nanf("")}) {
    DynamicIcon2D* odd = renderer.CreateTextLabel(L"text", size, -7, 1 << 30);
    EXPECT_TRUE(odd == nullptr || odd->GetWidth() < 5000.0);
  }
}

TEST_F(LabelTest, the_label_of_the_coordinate_systems_fits_its_room_and_shows_its_state) {
  DynamicIcon2D* quiet = renderer.CreateUCSMenuLabel(L"World", L"", false, 100);
  DynamicIcon2D* lit = renderer.CreateUCSMenuLabel(L"World", nullptr, true, 100);
  DynamicIcon2D* both = renderer.CreateUCSMenuLabel(L"Site", L"World", false, 140);
  ASSERT_NE(quiet, nullptr);
  ASSERT_NE(lit, nullptr);
  ASSERT_NE(both, nullptr);
  EXPECT_LT(quiet->GetWidth(), 85.0);
  EXPECT_EQ(lit->GetWidth(), quiet->GetWidth());
  DynamicIcon2D* full = renderer.CreateUCSMenuLabel(L"A coordinate system with a long name", L"", false, 100);
  DynamicIcon2D* tiny = renderer.CreateUCSMenuLabel(L"World", L"", false, 35);
  ASSERT_NE(full, nullptr);
  ASSERT_NE(tiny, nullptr);
  EXPECT_LE(full->GetWidth(), 85.0);
  EXPECT_GT(full->GetWidth(), 60.0);
  EXPECT_LE(tiny->GetWidth(), 30.0);
  EXPECT_GT(both->GetHeight(), quiet->GetHeight());
  // Lit, its ground is the accent: most of what is neither around the pill nor a letter.
  EXPECT_GT(ShareOfAccent(Draw(lit, 1.0F)), 0.5);
  EXPECT_EQ(ShareOfAccent(Draw(quiet, 1.0F)), 0.0);
}

TEST_F(LabelTest, icons_of_one_text_are_shared_through_the_cache) {
  pack->SetString(50, "Orbit tool");
  const auto id = static_cast<StringID>(50);
  DynamicIcon2D* first = renderer.GetStringTexture(id);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(renderer.GetStringTexture(id), first);
  EXPECT_EQ(renderer.GetStringTexture(static_cast<StringID>(51)), nullptr);  // no text
  renderer.ReleaseStringTexture(id);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.GetStringTexture(id), first);
  EXPECT_EQ(renderer.LoadStringResource(50), L"Orbit tool");
}

TEST_F(LabelTest, destroying_an_icon_clears_the_pointer_and_a_strangers_is_left_alone) {
  DynamicIcon2D* icon = renderer.CreateTooltip(L"text");
  DynamicIcon2D* const before = icon;
  EXPECT_TRUE(renderer.DestroyIcon(icon));
  EXPECT_EQ(icon, nullptr);
  EXPECT_FALSE(renderer.DestroyIcon(icon));
  icon = before;  // given back twice
  EXPECT_FALSE(renderer.DestroyIcon(icon));
  DynamicIcon2D stranger(1);
  DynamicIcon2D* pointer = &stranger;
  EXPECT_FALSE(renderer.DestroyIcon(pointer));
  EXPECT_EQ(pointer, &stranger);
}

TEST_F(LabelTest, an_icon_that_outlives_the_graphics_draws_nothing) {
  DynamicIcon2D* icon = renderer.CreateTooltip(L"text");
  renderer.Destroy();
  renderer.Create();
  ASSERT_TRUE(renderer.BeginRender(WholeViewport(), FrontCamera(), Renderer::RENDER_OVERLAY));
  EXPECT_FALSE(renderer.Render(icon));
  renderer.EndRender();
  EXPECT_TRUE(renderer.DestroyIcon(icon));
}

}  // namespace
