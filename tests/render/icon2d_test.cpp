#include "korvane/icon2d.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "support/manual_platform.h"

namespace {

using namespace Korvane;

class Icon2DTest : public ::testing::Test {
 protected:
  ResourceIcon2D icon{static_cast<TextureID>(17)};
};

TEST_F(Icon2DTest, is_abstract_by_its_constructor) {
  EXPECT_FALSE(std::is_default_constructible_v<Icon2D>);
  EXPECT_TRUE(std::has_virtual_destructor_v<Icon2D>);
}

TEST_F(Icon2DTest, is_visible_opaque_and_of_no_size_at_first) {
  EXPECT_TRUE(icon.IsVisible());
  EXPECT_EQ(icon.GetBounds().center, Vector2());
  EXPECT_EQ(icon.GetBounds().halfExtent, Vector2());
  EXPECT_EQ(icon.GetOpacity(), 1.0);
}

TEST_F(Icon2DTest, is_shown_and_hidden) {
  icon.SetVisible(false);
  EXPECT_FALSE(icon.IsVisible());
  icon.SetVisible(true);
  EXPECT_TRUE(icon.IsVisible());
}

TEST_F(Icon2DTest, keeps_its_bounds_as_a_centre_and_half_sizes) {
  icon.SetBounds(Box2(Vector2(100.0, 50.0), Vector2(30.0, 20.0)));
  EXPECT_EQ(icon.GetBounds().center, Vector2(100.0, 50.0));
  EXPECT_EQ(icon.GetPosition(), Vector2(100.0, 50.0));
  EXPECT_EQ(icon.GetWidth(), 60.0);
  EXPECT_EQ(icon.GetHeight(), 40.0);
}

TEST_F(Icon2DTest, moves_without_changing_its_size) {
  icon.SetBounds(Box2(Vector2(100.0, 50.0), Vector2(30.0, 20.0)));
  icon.SetPosition(Vector2(1.0, 2.0));
  icon.Move(Vector2(10.0, -20.0));
  EXPECT_EQ(icon.GetPosition(), Vector2(11.0, -18.0));
  EXPECT_EQ(icon.GetBounds().halfExtent, Vector2(30.0, 20.0));
}

TEST_F(Icon2DTest, is_sized_by_its_full_width_and_height_without_moving) {
  icon.SetPosition(Vector2(1.0, 2.0));
  icon.SetSize(60.0, 40.0);
  EXPECT_EQ(icon.GetBounds().halfExtent, Vector2(30.0, 20.0));
  EXPECT_EQ(icon.GetWidth(), 60.0);
  EXPECT_EQ(icon.GetHeight(), 40.0);
  EXPECT_EQ(icon.GetPosition(), Vector2(1.0, 2.0));
}

TEST_F(Icon2DTest, takes_an_opacity) {
  icon.SetOpacity(0.25);
  EXPECT_EQ(icon.GetOpacity(), 0.25);
  EXPECT_FALSE(icon.GetChangingInTimeOpacity().IsChangingInTime());
}

TEST_F(Icon2DTest, fades_by_a_chain_that_changes_in_time) {
  ManualPlatform platform;
  ChangingInTimeValueChain fade;
  fade.Add(ChangingInTimeValue(1.0, 0.0, 1.0, INTERPOLATION_LINEAR));
  fade.Start();
  icon.SetChangingInTimeOpacity(fade);
  EXPECT_TRUE(icon.GetChangingInTimeOpacity().IsChangingInTime());
  EXPECT_EQ(icon.GetOpacity(), 1.0);
  platform.Advance(500);
  EXPECT_EQ(icon.GetOpacity(), 0.5);  // 1.0 s, 1.5 s and 0.5 s are exact in binary
  platform.Advance(501);
  EXPECT_EQ(icon.GetOpacity(), 0.0);
  EXPECT_FALSE(icon.GetChangingInTimeOpacity().IsChangingInTime());
}

TEST_F(Icon2DTest, gives_coordinates_from_minus_one_to_one_across_its_box) {
  icon.SetBounds(Box2(Vector2(100.0, 50.0), Vector2(40.0, 20.0)));
  Vector2 local;
  EXPECT_TRUE(icon.GetIcon2DCoords(Vector2(60.0, 30.0), local));
  EXPECT_EQ(local, Vector2(-1.0, -1.0));
  EXPECT_TRUE(icon.GetIcon2DCoords(Vector2(140.0, 70.0), local));
  EXPECT_EQ(local, Vector2(1.0, 1.0));
  EXPECT_TRUE(icon.GetIcon2DCoords(Vector2(110.0, 40.0), local));
  EXPECT_EQ(local, Vector2(0.25, -0.5));
  EXPECT_TRUE(icon.GetIcon2DCoords(Vector2(180.0, 50.0), local));
  EXPECT_EQ(local, Vector2(2.0, 0.0));
}

TEST_F(Icon2DTest, gives_zero_and_false_on_an_axis_without_a_size) {
  Vector2 local(-7.0, -8.0);
  EXPECT_FALSE(icon.GetIcon2DCoords(Vector2(1.0, 1.0), local));
  EXPECT_EQ(local, Vector2());
  icon.SetSize(10.0, 0.0);
  EXPECT_FALSE(icon.GetIcon2DCoords(Vector2(1.0, 1.0), local));
  EXPECT_EQ(local, Vector2(0.2, 0.0));
  icon.SetSize(0.0, 10.0);
  EXPECT_FALSE(icon.GetIcon2DCoords(Vector2(1.0, 1.0), local));
  EXPECT_EQ(local, Vector2(0.0, 0.2));
}

TEST(ResourceIcon2D, keeps_its_texture) {
  EXPECT_EQ(int{ResourceIcon2D(static_cast<TextureID>(17)).GetTextureResourceID()}, 17);
}

TEST(DynamicIcon2D, keeps_the_hosts_handle_and_is_not_flipped_at_first) {
  DynamicIcon2D icon(99);
  EXPECT_EQ(icon.GetID(), 99);
  EXPECT_FALSE(icon.GetFlip());
  icon.SetFlip(true);
  EXPECT_TRUE(icon.GetFlip());
}

}  // namespace
