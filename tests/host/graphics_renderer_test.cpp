#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "graphics_canvas.h"
#include "korvane/icon2d.h"
#include "korvane/icon3d.h"
#include "korvane/pixel_icon2d.h"
#include "support/allocation_counter.h"

namespace {

using Korvane::Box2;
using Korvane::CameraParameters;
using Korvane::DynamicIcon2D;
using Korvane::Renderer;
using Korvane::ResourceIcon2D;
using Korvane::ResourceIcon3D;
using Korvane::TextureID;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::Image;
using zovtest::Canvas;
using zovtest::Pixel;
using zovtest::PixelAt;

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
// Top left red, top right green, bottom left blue, bottom right white.
constexpr const char* fourColours =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="20" height="20" shape-rendering="crispEdges">
       <path fill="#f00" d="M0 0h10v10h-10z"/><path fill="#0f0" d="M10 0h10v10h-10z"/>
       <path fill="#00f" d="M0 10h10v10h-10z"/><path fill="#fff" d="M10 10h10v10h-10z"/></svg>)";

class GLRendererTest : public zovtest::RendererTest {
 protected:
  // The pixels that are not black.
  static int CountLit(const Image& image) {
    int count = 0;
    for (std::size_t i = 0; i < image.rgba.size(); i += 4) {
      count += image.rgba[i] != 0 || image.rgba[i + 1] != 0 || image.rgba[i + 2] != 0;
    }
    return count;
  }

  bool Begin(Renderer::RenderMode mode) { return renderer.BeginRender(WholeViewport(), FrontCamera(), mode); }
};

TEST_F(GLRendererTest, another_pack_shows_at_once_and_null_is_the_kits_own) {
  const auto draw = [&] {
    canvas.Clear();
    ResourceIcon2D icon(static_cast<TextureID>(7));
    icon.SetSize(20, 20);
    icon.SetPosition({32, 24});
    EXPECT_TRUE(Begin(Renderer::RENDER_OVERLAY));
    renderer.Render(&icon);
    renderer.EndRender();
    return PixelAt(canvas.Read(), 24, 32);
  };
  const auto fill = [](const char* colour) {
    auto made = std::make_shared<zovhost::ResourcePack>();
    made->SetPicture(7, std::string(R"(<svg xmlns="http://www.w3.org/2000/svg" width="20" height="20">
        <rect width="20" height="20" fill=")") +
                            colour + R"("/></svg>)");
    return made;
  };
  renderer.SetResources(fill("#f00"));
  renderer.IncrementTextureUsage(static_cast<TextureID>(7));
  renderer.ApplyTextureUsage();
  ExpectColour(draw(), 255, 0, 0);
  renderer.SetResources(fill("#00f"));
  ExpectColour(draw(), 0, 0, 255);
  renderer.SetResources(nullptr);
  EXPECT_EQ(&renderer.GetResources(), zovhost::ResourcePack::GetDefault().get());
}

// ---- passes ----

TEST_F(GLRendererTest, an_overlay_quad_covers_exactly_its_pixels) {
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_TRUE(DrawQuad(Quad(10, 20, 30, 40), Coloured(1, 0.5F, 0)));
  ASSERT_TRUE(renderer.EndRender());
  const Image image = canvas.Read();
  EXPECT_EQ(CountLit(image), 20 * 20);
  ExpectColour(PixelAt(image, 10, 20), 255, 128, 0);
  ExpectColour(PixelAt(image, 29, 39), 255, 128, 0);
  ExpectColour(PixelAt(image, 9, 20), 0, 0, 0);
  ExpectColour(PixelAt(image, 30, 39), 0, 0, 0);
}

TEST_F(GLRendererTest, an_overlay_pass_draws_within_its_box_in_pixels_of_the_viewport) {
  ASSERT_TRUE(renderer.BeginRender({{16, 24}, {4, 6}}, FrontCamera(), Renderer::RENDER_OVERLAY));
  DrawQuad(Quad(0, 0, 64, 48), Coloured(1, 1, 1));
  renderer.EndRender();
  const Image image = canvas.Read();
  EXPECT_EQ(CountLit(image), 8 * 12);
  ExpectColour(PixelAt(image, 12, 18), 255, 255, 255);
}

TEST_F(GLRendererTest, the_viewport_may_lie_anywhere_in_the_framebuffer) {
  renderer.SetViewport(20, 10, 30, 30);
  ASSERT_TRUE(renderer.BeginRender({{15, 15}, {15, 15}}, FrontCamera(), Renderer::RENDER_OVERLAY));
  DrawQuad(Quad(-5, 0, 10, 5), Coloured(1, 1, 1));
  renderer.EndRender();
  const Image image = canvas.Read();
  EXPECT_EQ(CountLit(image), 10 * 5);  // what lies outside the viewport is not drawn
  ExpectColour(PixelAt(image, 20, 10), 255, 255, 255);
}

TEST_F(GLRendererTest, a_perspective_pass_fills_its_box_with_the_four_half_angles) {
  CameraParameters camera;
  camera.eye = {0, 0, 1};
  camera.up = {0, 1, 0};
  camera.left_fov = 0.0;
  camera.right_fov = camera.top_fov = camera.bottom_fov = 45.0;
  camera.projection_type = CameraParameters::ProjectionType::Orthographic;  // of the scene, not of this pass
  ASSERT_TRUE(renderer.BeginRender({{32, 24}, {8, 16}}, camera, Renderer::RENDER_PERSPECTIVE));
  DrawQuad(Quad(0.5F, 0, 1, 1), Coloured(0, 0, 1));  // the right half, the upper half
  renderer.EndRender();
  const Image image = canvas.Read();
  EXPECT_EQ(CountLit(image), 8 * 16);
  ExpectColour(PixelAt(image, 32, 24), 0, 0, 255);
  ExpectColour(PixelAt(image, 39, 39), 0, 0, 255);
  ExpectColour(PixelAt(image, 31, 24), 0, 0, 0);
  ExpectColour(PixelAt(image, 32, 23), 0, 0, 0);
}

TEST_F(GLRendererTest, a_perspective_pass_has_depth_of_its_own) {
  canvas.Clear();
  glClearDepthf(0.0F);  // as if something stood right at the eye
  glClear(GL_DEPTH_BUFFER_BIT);
  ASSERT_TRUE(Begin(Renderer::RENDER_PERSPECTIVE));
  DrawQuad(Quad(-1, -1, 1, 1, 1.0F), Coloured(1, 0, 0));   // nearer
  DrawQuad(Quad(-1, -1, 1, 1, -1.0F), Coloured(0, 1, 0));  // further, and hidden
  renderer.EndRender();
  ExpectColour(PixelAt(canvas.Read(), 32, 24), 255, 0, 0);
}

TEST_F(GLRendererTest, quads_show_the_face_that_runs_clockwise) {
  const std::array<float, 12> back = {-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0};
  for (const auto mode : {Renderer::RENDER_PERSPECTIVE, Renderer::RENDER_SCENE}) {
    canvas.Clear();
    ASSERT_TRUE(Begin(mode));
    DrawQuad(back, Coloured(1, 1, 1));
    renderer.EndRender();
    EXPECT_EQ(CountLit(canvas.Read()), 0);
  }
  ASSERT_TRUE(Begin(Renderer::RENDER_PERSPECTIVE));
  const std::array<float, 12> pointer = {-1, -1, 0, 1, -1, 0, 0, 1, 0, 0, 1, 0};
  DrawQuad(pointer, Coloured(1, 1, 1));  // a flat triangle is seen from both sides
  renderer.EndRender();
  EXPECT_GT(CountLit(canvas.Read()), 0);
}

TEST_F(GLRendererTest, a_scene_pass_hides_behind_the_scene_and_may_show_through_it) {
  renderer.SetSceneSphere({{0, 0, 0}, 5.0});
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  DrawQuad(Quad(-4, -4, 4, 4), Coloured(1, 0, 0));  // stands for the scene
  ASSERT_TRUE(renderer.EndRender());
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  DrawQuad(Quad(-1, -1, 1, 1, -2.0F), Coloured(0, 1, 0));  // behind it
  ASSERT_TRUE(renderer.EndRender());
  ExpectColour(PixelAt(canvas.Read(), 32, 24), 255, 0, 0);
  auto through = Coloured(0, 0, 1, 0.5F);
  through.drawMode = Renderer::DRAW_THROUGH;
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  DrawQuad(Quad(-1, -1, 1, 1, -2.0F), through);
  ASSERT_TRUE(renderer.EndRender());
  ExpectColour(PixelAt(canvas.Read(), 32, 24), 128, 0, 128);
}

TEST_F(GLRendererTest, passes_do_not_nest) {
  EXPECT_FALSE(renderer.EndRender());
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_FALSE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_FALSE(Begin(Renderer::RENDER_PERSPECTIVE));
  EXPECT_TRUE(DrawQuad(Quad(0, 0, 9, 9), Coloured(1, 1, 1)));  // the outer pass goes on
  EXPECT_TRUE(renderer.EndRender());
  EXPECT_FALSE(renderer.EndRender());
  EXPECT_FALSE(DrawQuad(Quad(0, 0, 9, 9), Coloured(1, 1, 1)));
}

TEST_F(GLRendererTest, a_pass_without_a_place_is_refused) {
  const double infinite = std::numeric_limits<double>::infinity();
  const Box2 bad[] = {{{0, 0}, {0, 0}},        {{10, 10}, {5, 0}},
                      {{10, 10}, {-5, 5}},     {{std::nan(""), 0}, {5, 5}},
                      {{0, 0}, {infinite, 5}}, {{1e12, 0}, {5, 5}}};
  for (const Box2& box : bad)
    EXPECT_FALSE(renderer.BeginRender(box, FrontCamera(), Renderer::RENDER_OVERLAY));
  EXPECT_FALSE(renderer.BeginRender(WholeViewport(), FrontCamera(), static_cast<Renderer::RenderMode>(7)));
  renderer.SetViewport(0, 0, 0, 48);
  EXPECT_FALSE(Begin(Renderer::RENDER_OVERLAY));
}

TEST_F(GLRendererTest, draws_nothing_before_create_and_after_destroy) {
  EXPECT_TRUE(renderer.Destroy());
  EXPECT_FALSE(renderer.Destroy());
  EXPECT_FALSE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_EQ(renderer.CreateTooltip(L"text"), nullptr);
  EXPECT_TRUE(renderer.Create());
  EXPECT_TRUE(Begin(Renderer::RENDER_OVERLAY));
}

// ---- geometry ----

TEST_F(GLRendererTest, bad_geometry_is_refused_and_draws_nothing) {
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  auto vertices = Quad(0, 0, 60, 40);
  auto material = Coloured(1, 1, 1);
  EXPECT_FALSE(renderer.RenderGeometry(4, nullptr, nullptr, &material));
  EXPECT_FALSE(renderer.RenderGeometry(4, vertices.data(), nullptr, nullptr));
  for (const unsigned count : {0U, 1U, 3U}) {
    EXPECT_FALSE(renderer.RenderGeometry(count, vertices.data(), nullptr, &material));
  }
  for (const float value : {notANumber, std::numeric_limits<float>::infinity()}) {
    vertices[5] = value;
    EXPECT_FALSE(DrawQuad(vertices, material));
  }
  const float badCoords[8] = {0, 0, 0, notANumber, 1, 1, 1, 0};
  EXPECT_FALSE(DrawQuad(Quad(0, 0, 60, 40), material, badCoords));
  material.colour[1] = notANumber;
  EXPECT_FALSE(DrawQuad(Quad(0, 0, 60, 40), material));
  renderer.EndRender();
  EXPECT_EQ(CountLit(canvas.Read()), 0);
}

TEST_F(GLRendererTest, vertices_past_the_last_whole_quad_are_left_out) {
  std::vector<float> vertices(21, 30.0F);  // seven
  const auto quad = Quad(0, 0, 4, 4);
  std::copy(quad.begin(), quad.end(), vertices.begin());
  const auto material = Coloured(1, 1, 1);
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_TRUE(renderer.RenderGeometry(7, vertices.data(), nullptr, &material));
  renderer.EndRender();
  EXPECT_EQ(CountLit(canvas.Read()), 16);
}

TEST_F(GLRendererTest, a_large_draw_arrives_whole) {
  std::vector<float> vertices;
  for (int i = 0; i < 20000; ++i) {
    const auto quad = Quad(static_cast<float>(i % 64), static_cast<float>(i / 64 % 48),
                           static_cast<float>(i % 64 + 1), static_cast<float>(i / 64 % 48 + 1));
    vertices.insert(vertices.end(), quad.begin(), quad.end());
  }
  const auto material = Coloured(1, 1, 1);
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_TRUE(renderer.RenderGeometry(80000, vertices.data(), nullptr, &material));
  renderer.EndRender();
  EXPECT_EQ(CountLit(canvas.Read()), 64 * 48);
}

TEST_F(GLRendererTest, solid_mode_draws_the_outline_of_a_rectangle_on_the_pixel_grid) {
  auto material = Coloured(1, 1, 1);
  material.drawMode = Renderer::DRAW_SOLID;
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_TRUE(DrawQuad(Quad(10, 10, 30, 20), material));
  renderer.EndRender();
  const Image image = canvas.Read();
  EXPECT_EQ(CountLit(image), 2 * 21 + 2 * 9);  // one pixel wide, corners closed
  ExpectColour(PixelAt(image, 10, 10), 255, 255, 255);
  ExpectColour(PixelAt(image, 30, 20), 255, 255, 255);
  ExpectColour(PixelAt(image, 20, 15), 0, 0, 0);
}

TEST_F(GLRendererTest, two_vertices_are_a_line_of_its_width) {
  auto material = Coloured(1, 1, 1);
  material.lineWidth = 3.0F;
  const float line[6] = {10, 20, 0, 40, 20, 0};
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_TRUE(renderer.RenderGeometry(2, line, nullptr, &material));
  renderer.EndRender();
  const Image image = canvas.Read();
  for (const int y : {19, 20, 21}) ExpectColour(PixelAt(image, 25, y), 255, 255, 255);
  ExpectColour(PixelAt(image, 25, 18), 0, 0, 0);
  ExpectColour(PixelAt(image, 25, 22), 0, 0, 0);
}

TEST_F(GLRendererTest, an_outline_in_space_is_cut_at_the_eye_and_leaves_backs_out) {
  auto material = Coloured(1, 1, 1);
  material.drawMode = Renderer::DRAW_SOLID;
  // A floor that reaches from far in front of the eye to far behind it.
  renderer.SetSceneSphere({{0, 0, 0}, 80.0});
  const std::array<float, 12> floor = {-1, -1, -50, 1, -1, -50, 1, -1, 50, -1, -1, 50};
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  EXPECT_TRUE(DrawQuad(floor, material));
  renderer.EndRender();
  const int lit = CountLit(canvas.Read());
  EXPECT_GT(lit, 10);
  EXPECT_LT(lit, 300);
  canvas.Clear();
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  DrawQuad({-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0}, material);
  renderer.EndRender();
  EXPECT_EQ(CountLit(canvas.Read()), 0);
}

TEST_F(GLRendererTest, a_side_that_two_quads_share_is_drawn_once) {
  auto material = Coloured(1, 1, 1, 0.5F);
  material.drawMode = Renderer::DRAW_SOLID;
  std::vector<float> vertices;
  for (const auto& quad : {Quad(10, 10, 20, 20), Quad(20, 10, 30, 20)}) {
    vertices.insert(vertices.end(), quad.begin(), quad.end());
  }
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  renderer.RenderGeometry(8, vertices.data(), nullptr, &material);
  renderer.EndRender();
  ExpectColour(PixelAt(canvas.Read(), 20, 15), 128, 128, 128);
}

TEST_F(GLRendererTest, colours_blend_by_their_opacity) {
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  DrawQuad(Quad(0, 0, 10, 10), Coloured(1, 1, 1));
  DrawQuad(Quad(0, 0, 10, 10), Coloured(1, 0, 0, 0.25F));
  renderer.EndRender();
  ExpectColour(PixelAt(canvas.Read(), 5, 5), 255, 191, 191);
}

// ---- pictures by number ----

TEST_F(GLRendererTest, a_texture_stands_upright_and_is_tinted) {
  pack->SetPicture(5, fourColours);
  renderer.IncrementTextureUsage(static_cast<TextureID>(5));
  renderer.ApplyTextureUsage();
  auto material = Coloured(1, 0.5F, 1);
  material.texture = static_cast<TextureID>(5);
  const float coords[8] = {0, 1, 0, 0, 1, 0, 1, 1};
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_TRUE(DrawQuad(Quad(0, 0, 20, 20), material, coords));
  renderer.EndRender();
  const Image image = canvas.Read();
  ExpectColour(PixelAt(image, 5, 15), 255, 0, 0);
  ExpectColour(PixelAt(image, 15, 15), 0, 128, 0);
  ExpectColour(PixelAt(image, 5, 5), 0, 0, 255);
  ExpectColour(PixelAt(image, 15, 5), 255, 128, 255);
}

// Rows of a pixel, on the rows of the screen.
TEST_F(GLRendererTest, a_picture_that_is_stretched_one_way_stays_sharp_the_other) {
  pack->SetPicture(5, R"(<svg xmlns="http://www.w3.org/2000/svg" width="8" height="8" fill="#fff">
      <path d="M0 0 H8 V1 H0 Z M0 2 H8 V3 H0 Z M0 4 H8 V5 H0 Z M0 6 H8 V7 H0 Z"/></svg>)");
  renderer.IncrementTextureUsage(static_cast<TextureID>(5));
  renderer.ApplyTextureUsage();
  auto material = Coloured(1, 1, 1);
  material.texture = static_cast<TextureID>(5);
  const float coords[8] = {0, 1, 0, 0, 1, 0, 1, 1};
  for (const float width : {8.0F, 24.0F, 60.0F}) {
    canvas.Clear();
    ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(DrawQuad(Quad(0, 0, width, 8), material, coords));
    renderer.EndRender();
    const Image image = canvas.Read();
    for (int y = 0; y < 8; ++y) {
      const int brightness = y % 2 == 1 ? 255 : 0;
      ExpectColour(PixelAt(image, 4, y), brightness, brightness, brightness);
    }
  }
}

TEST_F(GLRendererTest, a_texture_that_failed_is_tried_again_and_shows_a_placeholder_meanwhile) {
  const auto id = static_cast<TextureID>(8);
  ResourceIcon2D icon(id);
  icon.SetBounds({{20, 20}, {10, 10}});
  const auto draw = [&] {
    canvas.Clear();
    EXPECT_TRUE(Begin(Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(renderer.Render(&icon));
    renderer.EndRender();
    return canvas.Read();
  };
  pack->SetPicture(8, "broken");
  renderer.IncrementTextureUsage(id);
  renderer.ApplyTextureUsage();
  const Image placeholder = draw();
  EXPECT_EQ(CountLit(placeholder), 400);
  pack->SetPicture(8, fourColours);
  EXPECT_EQ(draw().rgba, placeholder.rgba);  // not before it is asked for again
  renderer.ApplyTextureUsage();
  const Image loaded = draw();
  ExpectColour(PixelAt(loaded, 12, 28), 255, 0, 0);
  renderer.DecrementTextureUsage(id);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(draw().rgba, placeholder.rgba);
}

TEST_F(GLRendererTest, users_of_one_texture_share_it_until_the_last_is_gone) {
  const auto id = static_cast<TextureID>(8);
  pack->SetPicture(8, fourColours);
  renderer.IncrementTextureUsage(id);
  renderer.ApplyTextureUsage();
  pack->SetPicture(8, "broken");  // a second load would fail
  renderer.IncrementTextureUsage(id);
  renderer.ApplyTextureUsage();
  renderer.DecrementTextureUsage(id);
  renderer.ApplyTextureUsage();
  ResourceIcon2D icon(id);
  icon.SetBounds({{20, 20}, {10, 10}});
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  renderer.Render(&icon);
  renderer.EndRender();
  ExpectColour(PixelAt(canvas.Read(), 12, 28), 255, 0, 0);
}

TEST_F(GLRendererTest, a_drawn_placeholder_is_told_of_and_a_picture_is_not) {
  const auto draw = [&](int id) {
    ResourceIcon2D icon(static_cast<TextureID>(id));
    icon.SetBounds({{24, 24}, {24, 24}});
    EXPECT_TRUE(Begin(Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(renderer.Render(&icon));
    renderer.EndRender();
  };
  pack->SetPicture(5, fourColours);
  renderer.IncrementTextureUsage(static_cast<TextureID>(5));
  renderer.IncrementTextureUsage(static_cast<TextureID>(6));  // which the pack does not have
  renderer.ApplyTextureUsage();
  draw(5);
  EXPECT_EQ(renderer.GetPlaceholderCount(), 0);
  EXPECT_EQ(renderer.GetLastPlaceholder(), -1);
  draw(6);
  EXPECT_EQ(renderer.GetPlaceholderCount(), 1);
  EXPECT_EQ(renderer.GetLastPlaceholder(), 6);
  pack->SetPicture(7, fourColours);  // which nobody has asked for
  draw(7);
  EXPECT_EQ(renderer.GetPlaceholderCount(), 2);
  EXPECT_EQ(renderer.GetLastPlaceholder(), 7);
}

TEST_F(GLRendererTest, placeholders_of_different_numbers_differ) {
  const auto draw = [&](int id) {
    ResourceIcon2D icon(static_cast<TextureID>(id));
    icon.SetBounds({{24, 24}, {24, 24}});
    canvas.Clear();
    EXPECT_TRUE(Begin(Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(renderer.Render(&icon));
    renderer.EndRender();
    return canvas.Read().rgba;
  };
  EXPECT_NE(draw(41), draw(42));
}

TEST_F(GLRendererTest, an_icon_is_drawn_pixel_for_pixel_with_its_opacity) {
  pack->SetPicture(5, fourColours);
  renderer.IncrementTextureUsage(static_cast<TextureID>(5));
  renderer.ApplyTextureUsage();
  ResourceIcon2D icon(static_cast<TextureID>(5));
  icon.SetBounds({{20.4, 20.3}, {10, 10}});  // put on the pixel grid
  icon.SetOpacity(0.5);
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_TRUE(renderer.Render(&icon));
  renderer.EndRender();
  const Image image = canvas.Read();
  EXPECT_EQ(CountLit(image), 400);
  ExpectColour(PixelAt(image, 10, 29), 128, 0, 0);
  ExpectColour(PixelAt(image, 19, 19), 0, 0, 128);
  ExpectColour(PixelAt(image, 20, 19), 128, 128, 128);
}

TEST_F(GLRendererTest, an_opacity_above_one_lays_a_picture_over_itself) {
  pack->SetPicture(
      5,
      R"(<svg xmlns="http://www.w3.org/2000/svg" width="20" height="20"><rect width="20" height="20" fill="#f00" fill-opacity="0.5"/></svg>)");
  renderer.IncrementTextureUsage(static_cast<TextureID>(5));
  renderer.ApplyTextureUsage();
  const auto draw = [&](double opacity) {
    ResourceIcon2D icon(static_cast<TextureID>(5));
    icon.SetBounds({{20, 20}, {10, 10}});
    icon.SetOpacity(opacity);
    canvas.Clear();
    EXPECT_TRUE(Begin(Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(renderer.Render(&icon));
    renderer.EndRender();
    return PixelAt(canvas.Read(), 20, 20);
  };
  ExpectColour(draw(0.5), 64, 0, 0);
  ExpectColour(draw(1.0), 128, 0, 0);
  ExpectColour(draw(1.5), 159, 0, 0);  // a half and a quarter of what is left
  ExpectColour(draw(2.0), 191, 0, 0);
  ExpectColour(draw(3.0), 223, 0, 0);
  ExpectColour(draw(1e300), 239, 0, 0);  // four times is the most
}

TEST_F(GLRendererTest, an_icon_that_cannot_be_seen_is_not_drawn) {
  ResourceIcon2D icon(static_cast<TextureID>(5));
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_FALSE(renderer.Render(&icon));  // no size
  icon.SetBounds({{20, 20}, {10, 10}});
  icon.SetVisible(false);
  EXPECT_FALSE(renderer.Render(&icon));
  icon.SetVisible(true);
  icon.SetOpacity(0.0);
  EXPECT_FALSE(renderer.Render(&icon));
  icon.SetOpacity(1.0);
  icon.SetPosition({std::nan(""), 0});
  EXPECT_FALSE(renderer.Render(&icon));
  ResourceIcon2D none(Korvane::TEXTURE_NONE);
  none.SetBounds({{20, 20}, {10, 10}});
  EXPECT_FALSE(renderer.Render(&none));
  EXPECT_FALSE(renderer.Render(static_cast<ResourceIcon2D*>(nullptr)));
  EXPECT_FALSE(renderer.Render(static_cast<DynamicIcon2D*>(nullptr)));
  EXPECT_FALSE(renderer.Render(static_cast<ResourceIcon3D*>(nullptr)));
  DynamicIcon2D stranger(12345);
  stranger.SetBounds({{20, 20}, {10, 10}});
  EXPECT_FALSE(renderer.Render(&stranger));
  renderer.EndRender();
  EXPECT_EQ(CountLit(canvas.Read()), 0);
}

TEST_F(GLRendererTest, image_data_are_the_pixels_of_a_picture_without_smooth_edges) {
  pack->SetPicture(5, fourColours);
  const std::unique_ptr<Korvane::PixelIcon2D> data(renderer.CreateImageData(static_cast<TextureID>(5)));
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(data->GetImageWidth(), 20);
  EXPECT_EQ(data->GetPixelFormat(), Korvane::PixelIcon2D::PIXEL_FORMAT_RGBA);
  data->SetBounds({{10, 10}, {10, 10}});
  Vector3 colour;
  ASSERT_TRUE(data->GetColor({5, 15}, colour));
  EXPECT_EQ(colour, Vector3(1, 0, 0));
  EXPECT_EQ(renderer.CreateImageData(static_cast<TextureID>(6)), nullptr);
  EXPECT_EQ(renderer.CreateImageData(Korvane::TEXTURE_NONE), nullptr);
}

// ---- the ball ----

TEST_F(GLRendererTest, the_ball_has_its_diameter_and_hides_behind_the_scene) {
  renderer.SetSceneSphere({{0, 0, 0}, 6.0});
  ResourceIcon3D ball(Korvane::MODEL_PIVOT_BALL);
  ball.SetSize(4.0);  // of a view of 20 by 48 pixels: 9.6 pixels
  ball.GetMaterial() = Coloured(0, 1, 0);
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  EXPECT_TRUE(renderer.Render(&ball));
  renderer.EndRender();
  const Image image = canvas.Read();
  const double diameter = 2.0 * std::sqrt(CountLit(image) / Korvane::Math::PI);
  EXPECT_NEAR(diameter, 9.8, 0.6);  // a ball seen in perspective is a little larger than its section
  const Pixel middle = PixelAt(image, 31, 24);
  EXPECT_GT(middle[1], 120);
  EXPECT_GT(middle[1], middle[0] + 40);
  EXPECT_GT(middle[1], middle[2] + 40);

  canvas.Clear();
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  DrawQuad(Quad(-9, -9, 9, 9, 4.0F), Coloured(1, 0, 0));
  EXPECT_TRUE(renderer.Render(&ball));
  renderer.EndRender();
  ExpectColour(PixelAt(canvas.Read(), 31, 24), 255, 0, 0);
}

// Away from the middle of a view of 60 degrees to each side a ball is drawn as an oval.
TEST_F(GLRendererTest, the_rim_goes_all_around_the_ball_at_the_side_of_a_wide_view) {
  renderer.SetSceneSphere({{}, 30.0});
  CameraParameters camera = FrontCamera();
  camera.SetHorizontalFOV(60.0);
  camera.SetVerticalFOV(std::atan(std::tan(60.0 * Korvane::Math::DEG_TO_RAD) * 0.75) *
                        Korvane::Math::RAD_TO_DEG);
  const Vector3 place(9.0, 0.0, 0.0);
  const auto render = [&](Korvane::ModelID model, const Renderer::MaterialParams& material, double size) {
    ResourceIcon3D icon(model);
    icon.SetPosition(place);
    icon.SetSize(size);
    icon.GetMaterial() = material;
    EXPECT_TRUE(renderer.Render(&icon));
  };
  ASSERT_TRUE(renderer.BeginRender(WholeViewport(), camera, Renderer::RENDER_SCENE));
  render(Korvane::MODEL_PIVOT_SHADOW, Coloured(0, 0, 1), 6.0);
  render(Korvane::MODEL_PIVOT_BALL, Coloured(1, 0, 0), 6.0);
  renderer.EndRender();
  const Image image = canvas.Read();
  // From the middle of the ball outward on its row: first the ball, then the rim.
  const auto isRim = [&](int x) {
    const Pixel pixel = PixelAt(image, x, 24);
    return pixel[2] > 150 && pixel[0] < 100;
  };
  int left = 0;
  int right = 0;
  for (int x = 0; x < 48; ++x) left += isRim(x);  // the middle is seen at 32 + 32 * 9 / 17.3 = 48.6
  for (int x = 49; x < Canvas::width; ++x) right += isRim(x);
  EXPECT_GE(left, 1);
  EXPECT_GE(right, 1);
}

TEST_F(GLRendererTest, the_shadow_of_the_ball_is_a_rim_around_it_and_shows_through) {
  renderer.SetSceneSphere({{0, 0, 0}, 6.0});
  ResourceIcon3D shadow(Korvane::MODEL_PIVOT_SHADOW);
  shadow.SetSize(4.0);
  shadow.GetMaterial() = Coloured(0, 1, 0);
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  EXPECT_TRUE(renderer.Render(&shadow));
  renderer.EndRender();
  double covered = 0.0;  // pixels; those at the edge in part
  const Image image = canvas.Read();
  for (std::size_t i = 1; i < image.rgba.size(); i += 4) covered += image.rgba[i] / 255.0;
  EXPECT_NEAR(2.0 * std::sqrt(covered / Korvane::Math::PI), 1.2 * 9.6, 0.5);

  canvas.Clear();
  shadow.GetMaterial().drawMode = Renderer::DRAW_THROUGH;
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  EXPECT_TRUE(renderer.Render(&shadow));
  renderer.EndRender();
  EXPECT_EQ(CountLit(canvas.Read()), 0);  // nothing stands in front
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  DrawQuad(Quad(-9, -9, 9, 9, 4.0F), Coloured(1, 0, 0));
  renderer.Render(&shadow);
  renderer.EndRender();
  // A green that lets the model show, within a light line.
  const Image ghost = canvas.Read();
  const Pixel within = PixelAt(ghost, 31, 24);
  EXPECT_GT(within[1], 60);
  EXPECT_GT(within[0], 60);
  EXPECT_EQ(PixelAt(ghost, 20, 24)[1], 0);
  int lightest = 0;
  for (int x = 31; x < 40; ++x) lightest = std::max(lightest, int{PixelAt(ghost, x, 24)[2]});
  EXPECT_GT(lightest, 100);
}

TEST_F(GLRendererTest, a_ball_without_size_or_place_is_not_drawn) {
  ResourceIcon3D ball(Korvane::MODEL_PIVOT_BALL);
  ResourceIcon3D unknown(static_cast<Korvane::ModelID>(9));
  unknown.SetSize(1.0);
  ASSERT_TRUE(Begin(Renderer::RENDER_SCENE));
  EXPECT_FALSE(renderer.Render(&ball));
  EXPECT_FALSE(renderer.Render(&unknown));
  ball.SetSize(1.0);
  ball.SetPosition({std::nan(""), 0, 0});
  EXPECT_FALSE(renderer.Render(&ball));
  renderer.EndRender();
  ball.SetPosition({0, 0, 0});
  ASSERT_TRUE(Begin(Renderer::RENDER_OVERLAY));
  EXPECT_FALSE(renderer.Render(&ball));  // a pass in pixels has no space
  renderer.EndRender();
}

// ---- memory ----

TEST_F(GLRendererTest, a_frame_like_the_last_one_allocates_nothing) {
  renderer.IncrementTextureUsage(static_cast<TextureID>(5));
  renderer.ApplyTextureUsage();
  ResourceIcon2D icon(static_cast<TextureID>(5));
  icon.SetBounds({{20, 20}, {10, 10}});
  ResourceIcon2D unloaded(static_cast<TextureID>(6));
  unloaded.SetBounds({{40, 20}, {10, 10}});
  ResourceIcon3D ball(Korvane::MODEL_PIVOT_BALL);
  ball.SetSize(2.0);
  ResourceIcon3D shadow(Korvane::MODEL_PIVOT_SHADOW);
  shadow.SetSize(2.0);
  DynamicIcon2D* const label = renderer.CreateTooltip(L"text");
  ASSERT_NE(label, nullptr);
  auto outline = Coloured(1, 1, 1);
  outline.drawMode = Renderer::DRAW_SOLID;
  const auto frame = [&] {
    Begin(Renderer::RENDER_SCENE);
    renderer.Render(&shadow);
    renderer.Render(&ball);
    DrawQuad(Quad(-1, -1, 1, 1), outline);
    renderer.EndRender();
    Begin(Renderer::RENDER_PERSPECTIVE);
    DrawQuad(Quad(-1, -1, 1, 1), Coloured(1, 1, 1));
    renderer.EndRender();
    Begin(Renderer::RENDER_OVERLAY);
    renderer.Render(&icon);
    renderer.Render(&unloaded);
    renderer.Render(label);
    renderer.EndRender();
    glFinish();
  };
  for (int i = 0; i < 10; ++i) frame();  // shaders are compiled and buffers grow at first use
  const AllocationCounter counter;
  for (int i = 0; i < 10; ++i) frame();
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

}  // namespace
