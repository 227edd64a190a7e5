#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>

#include "graphics_context.h"
#include "korvane/camera_parameters.h"
#include "zovhost/gl_renderer.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/resource_pack.h"

namespace zovtest {

using Pixel = std::array<int, 4>;

inline Pixel PixelAt(const zovhost::Image& image, int x, int yFromBottom) {
  const int row = image.height - 1 - yFromBottom;
  const std::size_t at = 4 * (static_cast<std::size_t>(row) * static_cast<std::size_t>(image.width) +
                              static_cast<std::size_t>(x));
  return {image.rgba[at], image.rgba[at + 1], image.rgba[at + 2], image.rgba[at + 3]};
}

/// An offscreen picture of one sample a pixel, 64 by 48, cleared to black and depth 1, bound for drawing.
class Canvas {
 public:
  static constexpr int width = 64;
  static constexpr int height = 48;

  Canvas() {
    EXPECT_TRUE(context.IsCurrent());
    EXPECT_TRUE(target.Create(width, height, 0));
    Clear();
  }

  void Clear() {
    EXPECT_TRUE(target.Bind());
    glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  }

  zovhost::Image Read() const {
    zovhost::Image image;
    EXPECT_TRUE(target.Read(image));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    return image;
  }

 private:
  OffscreenContext context;
  zovhost::OffscreenTarget target;
};

/// A renderer of its own pack on a canvas, its viewport the whole of it.
class RendererTest : public testing::Test {
 protected:
  RendererTest() {
    renderer.SetViewport(0, 0, Canvas::width, Canvas::height);
    EXPECT_TRUE(renderer.Create());
  }

  static Korvane::Box2 WholeViewport() {
    const Korvane::Vector2 half(Canvas::width / 2.0, Canvas::height / 2.0);
    return {half, half};
  }

  /// Half angles of 45 degrees up and down, proportioned to the canvas, 10 in front of the origin.
  static Korvane::CameraParameters FrontCamera() {
    Korvane::CameraParameters camera;
    camera.eye = {0.0, 0.0, 10.0};
    camera.up = {0.0, 1.0, 0.0};
    camera.SetVerticalFOV(45.0);
    camera.SetHorizontalFOV(std::atan(4.0 / 3.0) * Korvane::Math::RAD_TO_DEG);
    camera.ortho_width = 20.0 * 4.0 / 3.0;
    camera.ortho_height = 20.0;
    return camera;
  }

  static Korvane::Renderer::MaterialParams Coloured(float red, float green, float blue, float alpha = 1.0F) {
    Korvane::Renderer::MaterialParams material;
    const float colour[4] = {red, green, blue, alpha};
    std::copy(colour, colour + 4, material.colour);
    return material;
  }

  bool DrawQuad(const std::array<float, 12>& vertices, const Korvane::Renderer::MaterialParams& material,
                const float* texCoords = nullptr) {
    return renderer.RenderGeometry(4, vertices.data(), texCoords, &material);
  }

  /// Clockwise, as the library winds its quads, in the plane at height `z`.
  static std::array<float, 12> Quad(float left, float bottom, float right, float top, float z = 0.0F) {
    return {left, bottom, z, left, top, z, right, top, z, right, bottom, z};
  }

  static void ExpectColour(const Pixel& pixel, int red, int green, int blue, int tolerance = 2) {
    EXPECT_NEAR(pixel[0], red, tolerance);
    EXPECT_NEAR(pixel[1], green, tolerance);
    EXPECT_NEAR(pixel[2], blue, tolerance);
  }

  Canvas canvas;
  std::shared_ptr<zovhost::ResourcePack> pack = std::make_shared<zovhost::ResourcePack>();
  zovhost::GLRenderer renderer{pack};
};

}  // namespace zovtest
