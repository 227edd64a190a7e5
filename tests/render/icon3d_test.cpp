#include "korvane/icon3d.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace Korvane;

TEST(Icon3D, is_abstract_by_its_constructor) {
  EXPECT_FALSE(std::is_default_constructible_v<Icon3D>);
  EXPECT_TRUE(std::has_virtual_destructor_v<Icon3D>);
}

TEST(Icon3D, is_visible_at_the_origin_of_no_size_with_the_default_material_at_first) {
  const ResourceIcon3D icon(MODEL_PIVOT_SHADOW);
  EXPECT_TRUE(icon.IsVisible());
  EXPECT_EQ(icon.GetPosition(), Vector3::Zero);
  EXPECT_EQ(icon.GetSize(), 0.0);
  for (const float part : icon.GetMaterial().colour) EXPECT_EQ(part, 1.0F);
  EXPECT_EQ(icon.GetMaterial().texture, TEXTURE_NONE);
  EXPECT_EQ(icon.GetMaterial().drawMode, 0);
  EXPECT_EQ(icon.GetMaterial().lineWidth, 1.0F);
}

TEST(Icon3D, is_shown_hidden_moved_and_sized) {
  ResourceIcon3D icon(MODEL_PIVOT_BALL);
  icon.SetVisible(false);
  EXPECT_FALSE(icon.IsVisible());
  icon.SetPosition(Vector3(1.0, 2.0, 3.0));
  icon.Move(Vector3(10.0, 20.0, 30.0));
  EXPECT_EQ(icon.GetPosition(), Vector3(11.0, 22.0, 33.0));
  icon.SetSize(4.5);
  EXPECT_EQ(icon.GetSize(), 4.5);
}

TEST(Icon3D, has_a_material_that_can_be_changed_in_place) {
  ResourceIcon3D icon(MODEL_PIVOT_BALL);
  icon.GetMaterial().colour[3] = 0.5F;
  icon.GetMaterial().texture = static_cast<TextureID>(3);
  const ResourceIcon3D& constant = icon;
  EXPECT_EQ(constant.GetMaterial().colour[3], 0.5F);
  EXPECT_EQ(int{constant.GetMaterial().texture}, 3);
}

TEST(ResourceIcon3D, keeps_its_model) {
  EXPECT_EQ(ResourceIcon3D(MODEL_PIVOT_SHADOW).GetModelResourceID(), MODEL_PIVOT_SHADOW);
  EXPECT_EQ(int{ResourceIcon3D(static_cast<ModelID>(7)).GetModelResourceID()}, 7);
}

}  // namespace
