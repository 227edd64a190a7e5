#include "widget_renderer/outline.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <cstddef>

#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace zovhost {

namespace {

using Korvane::Vector2;
using Korvane::Vector3;

// Shared sides are looked for among no more quads than this; the search is quadratic.
constexpr unsigned mostQuadsCompared = 64;

struct LineEnd {
  double clip[4];
  double texCoord[2];
};

LineEnd Mix(const LineEnd& a, const LineEnd& b, double t) {
  LineEnd result{};
  for (int i = 0; i < 4; ++i) result.clip[i] = a.clip[i] + (b.clip[i] - a.clip[i]) * t;
  for (int i = 0; i < 2; ++i) result.texCoord[i] = a.texCoord[i] + (b.texCoord[i] - a.texCoord[i]) * t;
  return result;
}

void ProjectPoint(const Matrix4& m, const Vector3& p, double clip[4]) {
  for (std::size_t row = 0; row < 4; ++row) {
    clip[row] = m[row] * p.x + m[4 + row] * p.y + m[8 + row] * p.z + m[12 + row];
  }
}

// On the pixel grid a line of odd width runs through the middle of pixels, one of even width between them.
Vector2 SnapToGrid(const Vector2& pixel, double lineWidth) {
  const bool odd = std::lround(lineWidth) % 2 == 1;
  if (odd) return {std::floor(pixel.x) + 0.5, std::floor(pixel.y) + 0.5};
  return {std::round(pixel.x), std::round(pixel.y)};
}

LineEnd PixelEnd(const OutlineView& view, const Vector2& pixel) {
  return {{2.0 * pixel.x / view.width - 1.0, 2.0 * pixel.y / view.height - 1.0, 0.0, 1.0}, {}};
}

// Towards the eye by about the width of the line, as seen from there.
LineEnd SpaceEnd(const OutlineView& view, const float* vertex) {
  const Projection& projection = *view.projection;
  const CameraFrame& frame = projection.GetFrame();
  LineEnd end{};
  const Vector3 point(vertex);
  ProjectPoint(view.matrix, point, end.clip);
  const double depth = (point - frame.eye).Dot(frame.forward);
  const double step = 2.0 * view.lineWidth * std::abs(projection.GetPixelSize(depth, view.height));
  double nearer[4];
  ProjectPoint(view.matrix, point - frame.forward * step, nearer);
  if (nearer[3] > 0.0) end.clip[2] = std::max(nearer[2] / nearer[3], -1.0) * end.clip[3];
  return end;
}

// Keeps the part with clip w above a small value. False when nothing is left.
bool CutAtEye(LineEnd& a, LineEnd& b) {
  constexpr double smallest = 1e-6;
  const double wa = a.clip[3] - smallest;
  const double wb = b.clip[3] - smallest;
  if (wa <= 0.0 && wb <= 0.0) return false;
  if (wa <= 0.0) a = Mix(a, b, wa / (wa - wb));
  if (wb <= 0.0) b = Mix(a, b, wa / (wa - wb));
  return true;
}

Vector2 ToPixel(const OutlineView& view, const LineEnd& end) {
  return {(end.clip[0] / end.clip[3] + 1.0) * view.width / 2.0,
          (end.clip[1] / end.clip[3] + 1.0) * view.height / 2.0};
}

void AppendVertex(const OutlineView& view, const LineEnd& end, const Vector2& offset,
                  std::vector<StreamVertex>& out) {
  const double w = end.clip[3];
  StreamVertex vertex;
  vertex.position[0] = static_cast<float>(end.clip[0] + 2.0 * offset.x / view.width * w);
  vertex.position[1] = static_cast<float>(end.clip[1] + 2.0 * offset.y / view.height * w);
  vertex.position[2] = static_cast<float>(end.clip[2]);
  vertex.position[3] = static_cast<float>(w);
  vertex.texCoord[0] = static_cast<float>(end.texCoord[0]);
  vertex.texCoord[1] = static_cast<float>(end.texCoord[1]);
  out.push_back(vertex);
}

// A rectangle of the line's width around it, longer by half the width at both ends so that corners close.
void AppendStroke(const OutlineView& view, const LineEnd& a, const LineEnd& b,
                  std::vector<StreamVertex>& out) {
  Vector2 along = ToPixel(view, b) - ToPixel(view, a);
  const double length = std::hypot(along.x, along.y);
  if (!std::isfinite(length)) return;
  along = length > 1e-9 ? along / length : Vector2(1.0, 0.0);
  along = along * (view.lineWidth / 2.0);
  const Vector2 across(-along.y, along.x);
  AppendVertex(view, a, across * -1.0 - along, out);
  AppendVertex(view, b, along - across, out);
  AppendVertex(view, b, along + across, out);
  AppendVertex(view, a, across * -1.0 - along, out);
  AppendVertex(view, b, along + across, out);
  AppendVertex(view, a, across - along, out);
}

Vector2 ToVector2(const float* p) { return {static_cast<double>(p[0]), static_cast<double>(p[1])}; }

bool IsSameVertex(const float* a, const float* b) { return std::equal(a, a + 3, b); }

// The vertex after `vertex` around its quad.
unsigned NextAround(unsigned vertex) { return vertex % 4 == 3 ? vertex - 3 : vertex + 1; }

const float* VertexAt(const float* vertices, unsigned index) { return vertices + std::size_t{3} * index; }

using QuadSet = std::bitset<mostQuadsCompared>;

// Whether one of the first quads, as far as it was drawn, has the side from `a` to `b`, in either direction.
bool IsSideDrawn(const float* vertices, unsigned quadCount, const float* a, const float* b,
                 const QuadSet& drawn) {
  for (unsigned side = 0; side < 4 * quadCount; ++side) {
    if (!drawn[side / 4]) continue;
    const float* p = VertexAt(vertices, side);
    const float* q = VertexAt(vertices, NextAround(side));
    if ((IsSameVertex(p, a) && IsSameVertex(q, b)) || (IsSameVertex(p, b) && IsSameVertex(q, a))) return true;
  }
  return false;
}

// Fronts run clockwise. A quad that reaches behind the eye counts as seen from the front.
bool ShowsBack(const OutlineView& view, const float* quad) {
  if (view.projection == nullptr || IsSameVertex(quad + 6, quad + 9)) return false;
  Vector2 pixels[3];
  for (unsigned i = 0; i < 3; ++i) {
    LineEnd end{};
    ProjectPoint(view.matrix, Vector3(VertexAt(quad, i)), end.clip);
    if (end.clip[3] <= 0.0) return false;
    pixels[i] = ToPixel(view, end);
  }
  const Vector2 first = pixels[1] - pixels[0];
  const Vector2 second = pixels[2] - pixels[0];
  return first.x * second.y - first.y * second.x > 0.0;
}

}  // namespace

void AppendLine(const OutlineView& view, const float* vertices, const float* texCoords,
                std::vector<StreamVertex>& out) {
  LineEnd ends[2];
  if (view.projection != nullptr) {
    ends[0] = SpaceEnd(view, vertices);
    ends[1] = SpaceEnd(view, vertices + 3);
  } else {
    Vector2 pixels[2] = {ToVector2(vertices), ToVector2(vertices + 3)};
    if (pixels[0].x == pixels[1].x || pixels[0].y == pixels[1].y) {
      for (Vector2& pixel : pixels) pixel = SnapToGrid(pixel, view.lineWidth);
    }
    ends[0] = PixelEnd(view, pixels[0]);
    ends[1] = PixelEnd(view, pixels[1]);
  }
  for (std::size_t i = 0; texCoords != nullptr && i < 4; ++i) {
    ends[i / 2].texCoord[i % 2] = static_cast<double>(texCoords[i]);
  }
  if (CutAtEye(ends[0], ends[1])) AppendStroke(view, ends[0], ends[1], out);
}

void AppendOutlines(const OutlineView& view, unsigned quadCount, const float* vertices,
                    const float* texCoords, std::vector<StreamVertex>& out) {
  QuadSet drawn;
  for (unsigned quad = 0; quad < quadCount; ++quad) {
    if (ShowsBack(view, VertexAt(vertices, 4 * quad))) continue;
    const unsigned compared = std::min(quad, mostQuadsCompared);
    for (unsigned from = 4 * quad; from < 4 * quad + 4; ++from) {
      const unsigned to = NextAround(from);
      float line[6];
      float lineCoords[4] = {};
      std::copy_n(VertexAt(vertices, from), 3, line);
      std::copy_n(VertexAt(vertices, to), 3, line + 3);
      if (IsSameVertex(line, line + 3)) continue;
      if (IsSideDrawn(vertices, compared, line, line + 3, drawn)) continue;
      if (texCoords != nullptr) {
        std::copy_n(texCoords + std::size_t{2} * from, 2, lineCoords);
        std::copy_n(texCoords + std::size_t{2} * to, 2, lineCoords + 2);
      }
      AppendLine(view, line, lineCoords, out);
    }
    if (quad < mostQuadsCompared) drawn.set(quad);
  }
}

}  // namespace zovhost
