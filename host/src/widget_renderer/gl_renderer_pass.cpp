// What the renderer draws between BeginRender and EndRender.
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "gl/gl_program.h"
#include "korvane/icon3d.h"
#include "widget_renderer/gl_renderer_impl.h"

namespace zovhost {

using Korvane::Box2;
using Korvane::CameraParameters;
using Korvane::ResourceIcon3D;
using Korvane::Vector2;
using Korvane::Vector3;

namespace {

constexpr double largestBox = 65536.0;  // pixels
// The depths of a pass of its own, in distances from the eye to the centre.
constexpr double passNear = 0.05;
constexpr double passFar = 20.0;
constexpr double ballRim = 1.2;  // the rim around a ball, in its radii
constexpr int discSize = 128;
constexpr float ghostStrength = 1.6F;  // of the opacity of the shadow

bool IsUsable(const Box2& box) {
  const double numbers[4] = {box.center.x, box.center.y, box.halfExtent.x, box.halfExtent.y};
  const bool bounded = std::all_of(numbers, numbers + 4, [](double v) { return std::abs(v) < largestBox; });
  return bounded && box.halfExtent.x > 0.0 && box.halfExtent.y > 0.0;
}

int ToInt(double value) { return static_cast<int>(std::lround(value)); }

PixelRectangle ToPixels(const Box2& box) {
  const int x = ToInt(box.Min().x);
  const int y = ToInt(box.Min().y);
  return {x, y, std::max(1, ToInt(box.Max().x) - x), std::max(1, ToInt(box.Max().y) - y)};
}

// Pixels that are as many as the box is wide start at a whole pixel, so that a picture keeps its sharpness.
void SnapSide(double& low, double& high) {
  const double size = high - low;
  if (std::abs(size - std::round(size)) > 1e-6) return;
  low = std::round(low);
  high = low + std::round(size);
}

// White, opaque within a circle whose edge is smooth.
Image MakeDisc() {
  Image image{discSize, discSize, {}};
  const double middle = (discSize - 1) / 2.0;
  for (int y = 0; y < discSize; ++y) {
    for (int x = 0; x < discSize; ++x) {
      const double outside = std::hypot(x - middle, y - middle) - (discSize / 2.0 - 2.0);
      const double alpha = std::clamp(0.5 - outside, 0.0, 1.0);
      image.rgba.insert(image.rgba.end(),
                        {255, 255, 255, static_cast<std::uint8_t>(std::lround(alpha * 255.0))});
    }
  }
  return image;
}

// What shows of a ball through the model in front of it: a light line along its outline, a dark one around
// that, and a tint within.
Image MakeGhost() {
  constexpr Korvane::Vector3 tint(0.14, 0.60, 0.29);
  constexpr Korvane::Vector3 light(0.93, 0.98, 0.94);
  constexpr Korvane::Vector3 dark(0.02, 0.16, 0.07);
  const double outline = discSize / 2.0 / ballRim;
  const double line = 0.16 * outline;
  Image image{discSize, discSize, {}};
  const double middle = (discSize - 1) / 2.0;
  for (int y = 0; y < discSize; ++y) {
    for (int x = 0; x < discSize; ++x) {
      const double reach = std::hypot(x - middle, y - middle);
      const Korvane::Vector3& colour = reach < outline - line ? tint : reach < outline ? light : dark;
      const double strength = reach < outline - line ? 0.55 : reach < outline ? 1.0 : 0.7;
      const double alpha = strength * std::clamp(discSize / 2.0 - 1.5 - reach, 0.0, 1.0);
      for (const double channel : {colour.x, colour.y, colour.z, alpha}) {
        image.rgba.push_back(static_cast<std::uint8_t>(std::lround(channel * 255.0)));
      }
    }
  }
  return image;
}

std::array<float, 4> ToColour(const float (&colour)[4]) {
  std::array<float, 4> result{};
  std::transform(colour, colour + 4, result.begin(), [](float c) { return std::clamp(c, 0.0F, 1.0F); });
  return result;
}

}  // namespace

bool GLRenderer::Impl::CreateObjects() {
  const GLStateGuard guard;
  discTexture = UploadTexture(MakeDisc(), {.mipmaps = true});
  ghostTexture = UploadTexture(MakeGhost(), {.mipmaps = true});
  created = painter.Create() && balls.Create() && discTexture != 0 && ghostTexture != 0;
  if (!created) DestroyObjects();
  return created;
}

void GLRenderer::Impl::DestroyObjects() {
  pass.reset();
  painter.Destroy();
  balls.Destroy();
  textures.Clear();
  icons.DestroyTextures();
  glDeleteTextures(1, &discTexture);
  glDeleteTextures(1, &ghostTexture);
  discTexture = ghostTexture = 0;
  created = false;
}

// ---- opening ----

bool GLRenderer::Impl::BeginPass(const Box2& box, const CameraParameters& passCamera, RenderMode passMode) {
  const bool ready = created && !pass && viewport.width > 0 && viewport.height > 0;
  if (!ready || !IsUsable(box) || passMode < RENDER_OVERLAY || passMode > RENDER_SCENE) return false;
  mode = passMode;
  const PixelRectangle area = ToPixels(box);
  pass.emplace();
  painter.Begin();
  SetScissor(area);
  if (mode == RENDER_OVERLAY) {
    SetOverlayView();
    return true;
  }
  if (mode == RENDER_SCENE) {
    SetProjectedView(depths.MakeProjection(passCamera), area);
    return true;
  }
  // The half angles alone decide, whatever the camera says of its projection.
  CameraParameters perspective = passCamera;
  perspective.projection_type = CameraParameters::ProjectionType::Perspective;
  perspective.projection_transition = -1.0;
  const double distance = MakeCameraFrame(perspective).distance;
  SetProjectedView(Projection(perspective, passNear * distance, passFar * distance), area);
  glClear(GL_DEPTH_BUFFER_BIT);  // within the box: the pass stands in front of the scene
  return true;
}

bool GLRenderer::Impl::EndPass() {
  if (!pass) return false;
  pass.reset();
  return true;
}

void GLRenderer::Impl::SetScissor(const PixelRectangle& area) const {
  const int left = std::clamp(area.x, 0, viewport.width);
  const int bottom = std::clamp(area.y, 0, viewport.height);
  const int right = std::clamp(area.x + area.width, left, viewport.width);
  const int top = std::clamp(area.y + area.height, bottom, viewport.height);
  glEnable(GL_SCISSOR_TEST);
  glScissor(viewport.x + left, viewport.y + bottom, right - left, top - bottom);
}

void GLRenderer::Impl::SetOverlayView() {
  const double width = viewport.width;
  const double height = viewport.height;
  glViewport(viewport.x, viewport.y, viewport.width, viewport.height);
  view = {};
  view.width = width;
  view.height = height;
  // Depth plays no part, so z is dropped.
  matrix = ToFloat({2.0 / width, 0, 0, 0, 0, 2.0 / height, 0, 0, 0, 0, 0, 0, -1, -1, 0, 1});
}

void GLRenderer::Impl::SetProjectedView(const Projection& passProjection, const PixelRectangle& area) {
  projection = passProjection;
  glViewport(viewport.x + area.x, viewport.y + area.y, area.width, area.height);
  view = {};
  view.projection = &projection;
  view.matrix = projection.GetViewProjection();
  view.width = area.width;
  view.height = area.height;
  matrix = ToFloat(view.matrix);
}

// ---- drawing ----

void GLRenderer::Impl::ApplyState(const DrawState& state, bool twoSided) {
  if (mode == RENDER_OVERLAY) return painter.SetDepthIgnored();
  DrawState applied = state;
  applied.cull = applied.cull && !twoSided;
  painter.SetState(applied);
}

void GLRenderer::Impl::DrawGeometry(unsigned vertexCount, const float* vertices, const float* texCoords,
                                    const MaterialParams& material) {
  const bool textured = material.texture != Korvane::TEXTURE_NONE && texCoords != nullptr;
  const GLPainter::Material paint = {ToColour(material.colour),
                                     textured ? textures.Find(material.texture) : 0};
  const unsigned quadCount = vertexCount / 4;
  const bool isLine = vertexCount == 2;
  // A lone quad whose last corners are one is a flat pointer, drawn to be seen from either side.
  const bool isPointer = vertexCount == 4 && std::equal(vertices + 6, vertices + 9, vertices + 9);
  ApplyState(GetDrawState(material.drawMode), isPointer || isLine);
  if (!isLine && material.drawMode != DRAW_SOLID) {
    painter.AddQuads(quadCount, vertices, texCoords);
    painter.Draw(matrix, paint);
    return;
  }
  const bool usable = material.lineWidth >= 0.0F && material.lineWidth < 1024.0F;
  view.lineWidth = std::max(usable ? static_cast<double>(material.lineWidth) : 1.0, 1.0);
  if (isLine) {
    AppendLine(view, vertices, texCoords, painter.GetScratch());
  } else {
    AppendOutlines(view, quadCount, vertices, texCoords, painter.GetScratch());
  }
  painter.Draw(ToFloat(identityMatrix), paint);
}

void GLRenderer::Impl::DrawIcon(GLuint texture, const Box2& bounds, bool flip, double opacity) {
  Vector2 low = bounds.Min();
  Vector2 high = bounds.Max();
  SnapSide(low.x, high.x);
  SnapSide(low.y, high.y);
  const Box2 snapped((low + high) * 0.5, (high - low) * 0.5);
  float vertices[12];
  snapped.ToArray(vertices, 0.0F);
  constexpr float upright[8] = {0, 1, 0, 0, 1, 0, 1, 1};
  constexpr float flipped[8] = {0, 0, 0, 1, 1, 1, 1, 0};
  painter.SetDepthIgnored();
  painter.AddQuads(1, vertices, flip ? flipped : upright);
  painter.Draw(matrix, {{1.0F, 1.0F, 1.0F, static_cast<float>(opacity)}, texture});
}

// The size of an icon is the diameter of its ball.
void GLRenderer::Impl::DrawBall(const ResourceIcon3D& icon) {
  const MaterialParams& material = icon.GetMaterial();
  painter.SetState(GetDrawState(material.drawMode));
  balls.Draw(projection, icon.GetPosition(), icon.GetSize() / 2.0, ToColour(material.colour));
  painter.Begin();
}

// A disc that faces the viewer and stands out around the ball as a rim: square to the ray that sees it, since
// away from the middle of a wide view a ball looks longer than a disc square to the view.
void GLRenderer::Impl::DrawBallShadow(const ResourceIcon3D& icon) {
  const CameraFrame& frame = projection.GetFrame();
  Vector2 pixel;
  Vector3 eye;
  Vector3 ray = frame.forward;
  if (projection.WorldToPixel(icon.GetPosition(), view.width, view.height, pixel)) {
    projection.PixelToRay(pixel, view.width, view.height, eye, ray);
  }
  const Vector3 right = ray.Cross(frame.up).Normalized();
  const Vector3 up = right.Cross(ray);
  const double radius = icon.GetSize() / 2.0 * ballRim;
  constexpr int signs[6][2] = {{-1, -1}, {-1, 1}, {1, 1}, {-1, -1}, {1, 1}, {1, -1}};
  for (const auto& sign : signs) {
    const Vector3 p = icon.GetPosition() + right * (radius * sign[0]) + up * (radius * sign[1]);
    StreamVertex& vertex = painter.GetScratch().emplace_back();
    const Matrix4& m = view.matrix;
    for (std::size_t row = 0; row < 4; ++row) {
      vertex.position[row] =
          static_cast<float>(m[row] * p.x + m[4 + row] * p.y + m[8 + row] * p.z + m[12 + row]);
    }
    vertex.texCoord[0] = sign[0] < 0 ? 0.0F : 1.0F;
    vertex.texCoord[1] = sign[1] < 0 ? 0.0F : 1.0F;
  }
  const MaterialParams& material = icon.GetMaterial();
  DrawState state = GetDrawState(material.drawMode);
  state.depthWrite = false;
  painter.SetState(state);
  if (material.drawMode != Renderer::DRAW_THROUGH) {
    return painter.Draw(ToFloat(identityMatrix), {ToColour(material.colour), discTexture});
  }
  const float opacity = std::clamp(ghostStrength * material.colour[3], 0.0F, 1.0F);
  painter.Draw(ToFloat(identityMatrix), {{1.0F, 1.0F, 1.0F, opacity}, ghostTexture});
}

}  // namespace zovhost
