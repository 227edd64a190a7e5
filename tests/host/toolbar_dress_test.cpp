#include "zovhost/toolbar_dress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "korvane/toolbar.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"
#include "zovhost/host_pictures.h"

namespace {

using Korvane::Toolbar;
using Korvane::ToolbarItem;

constexpr auto PICTURE = static_cast<Korvane::TextureID>(zovhost::HOST_PICTURE_PAN);

TEST(ToolbarDressTest, a_button_is_as_large_as_those_of_the_navigation_bar) {
  const ToolbarItem item = zovhost::MakeToolbarButton(7, PICTURE, L"Pan");
  EXPECT_EQ(item.GetTag(), 7);
  EXPECT_EQ(item.GetType(), ToolbarItem::TYPE_BUTTON);
  EXPECT_EQ(item.GetTooltip(), L"Pan");
  EXPECT_EQ(item.GetWidth(), 28);
  EXPECT_EQ(item.GetHeight(), 28);
  EXPECT_EQ(item.GetIcon().GetTextureResourceID(), PICTURE);
  EXPECT_EQ(item.GetIcon().GetWidth(), 32.0);
}

TEST(ToolbarDressTest, grip_and_more_controls_are_of_their_types) {
  const ToolbarItem grip = zovhost::MakeToolbarGrip(1, L"Drag");
  EXPECT_EQ(grip.GetType(), ToolbarItem::TYPE_GRIP);
  EXPECT_EQ(grip.GetWidth(), 24);
  EXPECT_EQ(grip.GetHeight(), 12);
  const ToolbarItem more = zovhost::MakeToolbarMoreControls(2, L"More");
  EXPECT_EQ(more.GetType(), ToolbarItem::TYPE_MORE_CONTROLS);
  EXPECT_EQ(more.GetWidth(), 12);
}

TEST(ToolbarDressTest, items_and_their_flyouts_are_resized_together) {
  ToolbarItem::List items;
  ToolbarItem owner = zovhost::MakeToolbarButton(1, PICTURE, L"");
  owner.SetFlyoutIconSize(10);
  owner.GetFlyoutItems().Append(zovhost::MakeToolbarButton(2, PICTURE, L""));
  items.Append(owner);
  zovhost::ResizeItems(items, 1.5);
  for (const ToolbarItem* item : {&items.GetAt(0), &items.GetAt(0).GetFlyoutItems().GetAt(0)}) {
    EXPECT_EQ(item->GetWidth(), 42);
    EXPECT_EQ(item->GetHeight(), 42);
    EXPECT_EQ(item->GetIcon().GetWidth(), 48.0);
  }
  EXPECT_EQ(items.GetAt(0).GetFlyoutIconSize(), 15);
}

TEST(ToolbarDressTest, a_factor_that_is_none_changes_nothing) {
  ToolbarItem::List items;
  items.Append(zovhost::MakeToolbarButton(1, PICTURE, L""));
  for (const double factor : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity(), 1e9}) {
    zovhost::ResizeItems(items, factor);
    EXPECT_EQ(items.GetAt(0).GetWidth(), 28) << factor;
  }
}

// What the strip of a single button shows of a corner: its width in pixels; -1 for none.
double DrawCornerWidth(double scale, RecordingRenderer& renderer) {
  MemoryHub hub;
  Toolbar toolbar;
  toolbar.SetKorvane(&hub);
  toolbar.SetRenderer(&renderer);
  toolbar.SetViewportSize(800, 600);
  zovhost::DressToolbar(toolbar, scale);
  toolbar.GetItems().Append(zovhost::MakeToolbarButton(1, PICTURE, L""));
  zovhost::ResizeItems(toolbar.GetItems(), 3.0);
  toolbar.Create();
  toolbar.SetVisible(true);
  toolbar.Draw();
  renderer.ApplyTextureUsage();
  toolbar.Destroy();
  for (const RecordingRenderer::Geometry& quad : renderer.GetGeometry()) {
    if (quad.material.texture != Korvane::TEXTURE_BAR_TOP_LEFT) continue;
    const auto [least, most] =
        std::minmax({quad.vertices[0], quad.vertices[3], quad.vertices[6], quad.vertices[9]});
    return most - least;
  }
  return -1.0;
}

// All that the strip itself shows: its corners with their edges, an arrow, and more controls in both
// directions.
TEST(ToolbarDressTest, a_toolbar_takes_the_pictures_of_a_strip) {
  RecordingRenderer renderer;
  Toolbar toolbar;
  toolbar.SetRenderer(&renderer);
  zovhost::DressToolbar(toolbar);
  toolbar.Create();
  renderer.ApplyTextureUsage();
  const std::vector<std::string> calls = renderer.TakeCalls();
  for (const int id : {149, 152, 153, 171, 172, 173, 174, 175, 176, 177, 178}) {
    const std::string call = "LoadTexture(" + std::to_string(id) + ")";
    EXPECT_EQ(std::count(calls.begin(), calls.end(), call), 1) << call;
  }
}

TEST(ToolbarDressTest, corners_are_of_eight_points_on_any_display) {
  for (const double scale : {1.0, 2.0, 3.0}) {
    RecordingRenderer renderer;
    EXPECT_EQ(DrawCornerWidth(scale, renderer), 8.0 * scale);
  }
}

TEST(ToolbarDressTest, a_scale_that_is_none_counts_as_one) {
  for (const double scale : {0.0, -2.0, 0.5, std::nan(""), std::numeric_limits<double>::infinity()}) {
    RecordingRenderer renderer;
    EXPECT_EQ(DrawCornerWidth(scale, renderer), 8.0) << scale;
  }
}

TEST(ToolbarDressTest,
     a_button_with_an_arrow_stands_for_the_first_of_what_it_offers_until_another_is_chosen) {
  const ToolbarItem choices[] = {
      zovhost::MakeToolbarButton(21, static_cast<Korvane::TextureID>(198), L"one"),
      zovhost::MakeToolbarButton(22, static_cast<Korvane::TextureID>(199), L"two"),
  };
  Toolbar toolbar;
  toolbar.GetItems().Append(zovhost::MakeToolbarFlyoutButton(choices));
  const ToolbarItem& item = toolbar.GetItems().GetAt(0);
  EXPECT_EQ(item.GetType(), ToolbarItem::TYPE_FLYOUT_BUTTON);
  EXPECT_EQ(item.GetTag(), 21);
  EXPECT_EQ(item.GetFlyoutIconSize(), 10) << "as the disc button of the navigation bar has it";
  ASSERT_EQ(item.GetFlyoutItems().GetCount(), 2);
  ASSERT_TRUE(toolbar.ChooseFlyoutItem(22));
  EXPECT_EQ(item.GetTag(), 22);
  EXPECT_EQ(item.GetIcon().GetTextureResourceID(), 199);
  EXPECT_EQ(item.GetTooltip(), L"two");
  EXPECT_EQ(zovhost::MakeToolbarFlyoutButton({}).GetFlyoutItems().GetCount(), 0);
}

}  // namespace
