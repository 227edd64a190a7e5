#include "zov/zov_icons.h"

#include <gtest/gtest.h>

#include "korvane/icon3d.h"
#include "korvane/pixel_icon2d.h"
#include "zov/zov_icon_utils.h"
#include "zov/zov_material_parameters.h"

namespace {

using Korvane::Vector2;
using Korvane::Vector3;

TEST(ZovIcon2D, has_a_place_a_size_and_an_opacity) {
  zovResourceIcon2D icon(zovTextureID::CubeHome);
  EXPECT_TRUE(icon.visible());
  EXPECT_EQ(icon.opacity(), 1.0);
  EXPECT_EQ(icon.bounds(), qmBox2(qmPoint2(), qmPoint2()));
  icon.set_bounds(qmBox2(qmPoint2(10.0, 20.0), qmPoint2(30.0, 60.0)));
  EXPECT_EQ(icon.position(), qmPoint2(20.0, 40.0));
  EXPECT_EQ(icon.width(), 20.0);
  EXPECT_EQ(icon.height(), 40.0);
  icon.set_position(qmPoint2(1.0, 2.0));
  icon.move(qmVector2(3.0, 4.0));
  EXPECT_EQ(icon.position(), qmPoint2(4.0, 6.0));
  icon.set_size(8.0, 6.0);
  EXPECT_EQ(icon.bounds(), qmBox2(qmPoint2(0.0, 3.0), qmPoint2(8.0, 9.0)));
  icon.set_opacity(0.25);
  EXPECT_EQ(icon.opacity(), 0.25);
  icon.set_visible(false);
  EXPECT_FALSE(icon.visible());
}

TEST(ZovIcon2D, is_the_icon_within) {
  const auto icon = std::make_shared<zovDynamicIcon2D>(42);
  Korvane::DynamicIcon2D* const within = zovIconUtils::unwrap_icon(icon);
  within->SetPosition(Vector2(3.0, 4.0));
  within->SetFlip(true);
  within->SetVisible(false);
  EXPECT_EQ(icon->position(), qmPoint2(3.0, 4.0));
  EXPECT_TRUE(icon->flip());
  EXPECT_FALSE(icon->visible());
  icon->set_flip(false);
  icon->set_opacity(0.5);
  EXPECT_FALSE(within->GetFlip());
  EXPECT_EQ(within->GetOpacity(), 0.5);
  EXPECT_EQ(icon->id(), 42);
  EXPECT_EQ(within->GetID(), 42);
}

TEST(ZovIcon3D, has_a_place_a_size_and_a_material) {
  zovResourceIcon3D icon(zovModelID::PivotShadow);
  EXPECT_EQ(icon.model_resource_id(), zovModelID::PivotShadow);
  EXPECT_TRUE(icon.visible());
  icon.set_visible(false);
  EXPECT_FALSE(icon.visible());
  icon.set_position(qmPoint3(1.0, 2.0, 3.0));
  icon.move(qmVector3(1.0, 1.0, 1.0));
  EXPECT_EQ(icon.position(), qmPoint3(2.0, 3.0, 4.0));
  icon.set_size(5.0);
  EXPECT_EQ(icon.size(), 5.0);
  zovMaterialParameters material = icon.material();
  EXPECT_EQ(material.line_width(), 1.0F);
  material.set_line_width(3.0F);
  EXPECT_EQ(icon.material().line_width(), 1.0F);
  icon.set_material(material);
  EXPECT_EQ(icon.material().line_width(), 3.0F);
}

TEST(ZovMaterialParameters, reach_each_field) {
  zovMaterialParameters material;
  float colour[4] = {};
  material.colour(colour);
  for (const float part : colour) EXPECT_EQ(part, 1.0F);
  EXPECT_EQ(material.texture_id(), zovTextureID::NoTexture);
  EXPECT_EQ(material.draw_mode(), zovDrawMode::Quads);
  EXPECT_EQ(material.line_width(), 1.0F);

  const float wanted[4] = {0.125F, 0.25F, 0.5F, 0.75F};
  material.set_colour(wanted);
  material.set_colour(nullptr);
  material.colour(nullptr);
  material.set_texture_id(zovTextureID::CubeHome);
  material.set_draw_mode(static_cast<zovDrawMode>(1234));
  material.set_line_width(2.5F);
  const Korvane::Renderer::MaterialParams& within = material.korvane();
  for (int i = 0; i < 4; ++i) EXPECT_EQ(within.colour[i], wanted[i]);
  EXPECT_EQ(within.texture, Korvane::TEXTURE_CUBE_HOME);
  EXPECT_EQ(within.drawMode, 1234);
  EXPECT_EQ(within.lineWidth, 2.5F);
  EXPECT_EQ(static_cast<int>(material.draw_mode()), 1234);
}

TEST(ZovPixelIcon2D, tells_the_colour_under_a_pixel) {
  const unsigned char pixels[8] = {255, 0, 51, 255, 9, 9, 9, 0};
  zovPixelIcon2D icon(2, 1, pixels, zovPixelFormat::Rgba);
  icon.set_bounds(qmBox2(qmPoint2(0.0, 0.0), qmPoint2(20.0, 10.0)));
  EXPECT_EQ(icon.image_width(), 2);
  EXPECT_EQ(icon.image_height(), 1);
  EXPECT_EQ(icon.pixel_format(), zovPixelFormat::Rgba);
  ASSERT_NE(icon.image_pixels(), nullptr);
  EXPECT_NE(icon.image_pixels(), pixels);
  float rgb[3] = {9.0F, 9.0F, 9.0F};
  EXPECT_TRUE(icon.colour(qmPoint2(0.0, 5.0), rgb));  // the column is ceil(0) = 0
  EXPECT_EQ(rgb[0], 1.0F);
  EXPECT_EQ(rgb[1], 0.0F);
  EXPECT_EQ(rgb[2], 0.2F);
  EXPECT_FALSE(icon.colour(qmPoint2(5.0, 5.0), rgb));  // ceil(0.5) = 1, which is transparent
  EXPECT_FALSE(icon.colour(qmPoint2(50.0, 5.0), rgb));
  EXPECT_FALSE(icon.colour(qmPoint2(0.0, 5.0), nullptr));
  EXPECT_EQ(rgb[0], 1.0F);

  zovPixelIcon2D otherOrder(2, 1, pixels, zovPixelFormat::Bgra);
  otherOrder.set_bounds(icon.bounds());
  EXPECT_TRUE(otherOrder.colour(qmPoint2(0.0, 5.0), rgb));
  EXPECT_EQ(rgb[2], 1.0F);
}

TEST(ZovPixelIcon2D, without_pixels_answers_nothing) {
  float rgb[3] = {};
  const zovPixelIcon2D none(2, 2, nullptr, zovPixelFormat::Rgba);
  EXPECT_FALSE(none.colour(qmPoint2(), rgb));
  EXPECT_EQ(none.image_pixels(), nullptr);
  const unsigned char pixel[4] = {1, 2, 3, 4};
  EXPECT_EQ(zovPixelIcon2D(0, 1, pixel, zovPixelFormat::Rgba).image_pixels(), nullptr);
  EXPECT_EQ(zovPixelIcon2D(-1, -1, pixel, zovPixelFormat::Rgba).image_pixels(), nullptr);
}

// ---- wrapped and unwrapped ----

template <class Facade>
void ExpectComesBack(const std::shared_ptr<Facade>& icon) {
  auto* const within = zovIconUtils::unwrap_icon(icon);
  ASSERT_NE(within, nullptr);
  EXPECT_EQ(zovIconUtils::wrap_icon(within), icon);
  EXPECT_EQ(icon.use_count(), 1);
}

TEST(ZovIconUtils, bring_an_icon_of_the_host_back_as_the_object_that_it_is) {
  const unsigned char pixel[4] = {1, 2, 3, 4};
  ExpectComesBack(std::make_shared<zovDynamicIcon2D>(1));
  ExpectComesBack(std::make_shared<zovResourceIcon2D>(zovTextureID::CubeHome));
  ExpectComesBack(std::make_shared<zovPixelIcon2D>(1, 1, pixel, zovPixelFormat::Rgba));
  ExpectComesBack(std::make_shared<zovResourceIcon3D>(zovModelID::PivotBall));
}

template <class Inner>
void ExpectBorrowed(Inner& icon) {
  const auto outside = zovIconUtils::wrap_icon(&icon);
  ASSERT_NE(outside, nullptr);
  EXPECT_EQ(outside.use_count(), 1);
  EXPECT_EQ(zovIconUtils::unwrap_icon(outside), &icon);
  outside->set_visible(false);
  EXPECT_FALSE(icon.IsVisible());
}

TEST(ZovIconUtils, borrow_an_icon_of_the_library) {
  Korvane::DynamicIcon2D dynamic(1);
  Korvane::ResourceIcon2D resource(Korvane::TEXTURE_CUBE_HOME);
  Korvane::PixelIcon2D pixels(1, 1, nullptr, Korvane::PixelIcon2D::PIXEL_FORMAT_RGBA);
  Korvane::ResourceIcon3D model(Korvane::MODEL_PIVOT_BALL);
  ExpectBorrowed(dynamic);
  ExpectBorrowed(resource);
  ExpectBorrowed(pixels);
  ExpectBorrowed(model);
  EXPECT_EQ(zovIconUtils::wrap_icon(&resource)->texture_resource_id(), zovTextureID::CubeHome);
}

TEST(ZovIconUtils, keep_null_as_null) {
  EXPECT_EQ(zovIconUtils::wrap_icon(static_cast<Korvane::DynamicIcon2D*>(nullptr)), nullptr);
  EXPECT_EQ(zovIconUtils::wrap_icon(static_cast<Korvane::ResourceIcon3D*>(nullptr)), nullptr);
  EXPECT_EQ(zovIconUtils::unwrap_icon(std::shared_ptr<zovDynamicIcon2D>()), nullptr);
  EXPECT_EQ(zovIconUtils::unwrap_icon(std::shared_ptr<zovPixelIcon2D>()), nullptr);
}

// One that stands on its own can be in no shared pointer; the icon within is borrowed then.
TEST(ZovIconUtils, wrap_an_icon_that_nobody_shares) {
  zovDynamicIcon2D icon(5);
  const auto outside = zovIconUtils::wrap_icon(static_cast<Korvane::DynamicIcon2D*>(&icon.korvane()));
  ASSERT_NE(outside, nullptr);
  EXPECT_NE(outside.get(), &icon);
  outside->set_flip(true);
  EXPECT_TRUE(icon.flip());
}

}  // namespace
