#include "scene/triangle_clusters.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "projection/matrix.h"
#include "scene/work_report.h"

namespace zovhost {

namespace {

using Korvane::Vector3;
using Box = TriangleClusters::Box;

constexpr std::size_t SIZE = 32;  // triangles in a cluster
// Clusters of triangles that lie side by side have less surface than the boxes of all their triangles; ones
// of scattered triangles many times that.
constexpr double LARGEST_SURFACE = 4.0;
constexpr int CELL_BITS = 10;  // along each axis, of the places by which triangles are sorted

Box MakeEmptyBox() {
  constexpr float largest = std::numeric_limits<float>::max();
  return {{largest, largest, largest}, {-largest, -largest, -largest}};
}

void Extend(Box& box, std::size_t axis, float value) {
  box.low[axis] = std::min(box.low[axis], value);
  box.high[axis] = std::max(box.high[axis], value);
}

void Extend(Box& box, const float* point) {
  for (std::size_t axis = 0; axis < 3; ++axis) Extend(box, axis, point[axis]);
}

void Extend(Box& box, const SceneMesh& mesh, std::size_t triangle) {
  for (std::size_t corner = 0; corner < 3; ++corner) {
    Extend(box, mesh.positions.data() + std::size_t{3} * mesh.indices[3 * triangle + corner]);
  }
}

double GetSurface(const Box& box) {
  const auto size = [&box](std::size_t axis) { return double{box.high[axis]} - double{box.low[axis]}; };
  return size(0) * size(1) + size(1) * size(2) + size(2) * size(0);
}

// Whether triangles that follow each other are neighbours mostly, as exporters write them.
bool IsInOrder(const SceneMesh& mesh, WorkReport& report) {
  double single = 0.0;
  double together = 0.0;
  const std::size_t count = mesh.indices.size() / 3;
  for (std::size_t first = 0; first < count; first += SIZE) {
    report.Count(first / SIZE, count / SIZE + 1);
    Box whole = MakeEmptyBox();
    for (std::size_t i = first; i < std::min(first + SIZE, count); ++i) {
      Box own = MakeEmptyBox();
      Extend(own, mesh, i);
      Extend(whole, mesh, i);
      single += GetSurface(own);
    }
    together += GetSurface(whole);
  }
  return together <= LARGEST_SURFACE * single;
}

// The bits of three numbers, taken in turn.
std::uint32_t Interleave(const std::array<std::uint32_t, 3>& cell) {
  std::uint32_t bits = 0;
  for (int bit = CELL_BITS - 1; bit >= 0; --bit) {
    for (const std::uint32_t axis : cell) bits = bits << 1 | (axis >> bit & 1);
  }
  return bits;
}

// By places along a curve that fills space.
std::vector<std::uint32_t> GetPlaces(const SceneMesh& mesh, WorkReport& report) {
  constexpr double CELLS = 1 << CELL_BITS;
  Box whole = MakeEmptyBox();
  for (std::size_t i = 0; i + 2 < mesh.positions.size(); i += 3) Extend(whole, mesh.positions.data() + i);
  std::vector<std::uint32_t> places(mesh.indices.size() / 3);
  for (std::size_t i = 0; i < places.size(); ++i) {
    report.Count(i, places.size());
    Box own = MakeEmptyBox();
    Extend(own, mesh, i);
    std::array<std::uint32_t, 3> cell = {};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double low = whole.low[axis];
      const double size = std::max(whole.high[axis] - low, 1e-300);
      const double along = ((double{own.low[axis]} + double{own.high[axis]}) * 0.5 - low) / size;
      cell[axis] = static_cast<std::uint32_t>(std::min(along * CELLS, CELLS - 1.0));
    }
    places[i] = Interleave(cell);
  }
  return places;
}

// Half of the bits after the other, since there are too many triangles to compare them.
std::vector<std::uint32_t> SortByPlace(const std::vector<std::uint32_t>& places, WorkReport& report) {
  constexpr int BITS = 3 * CELL_BITS / 2;
  constexpr std::uint32_t MASK = (1U << BITS) - 1;
  std::vector<std::uint32_t> order(places.size());
  for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
  std::vector<std::uint32_t> sorted(places.size());
  for (const int shift : {0, BITS}) {
    std::vector<std::uint32_t> starts(std::size_t{MASK} + 2);
    for (const std::uint32_t place : places) ++starts[(place >> shift & MASK) + 1];
    for (std::size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
    for (std::size_t i = 0; i < order.size(); ++i) {
      report.Count(i, order.size());
      sorted[starts[places[order[i]] >> shift & MASK]++] = order[i];
    }
    order.swap(sorted);
  }
  return order;
}

// The ray runs along the third axis from the origin after this; Woop, Benthin and Wald, "Watertight
// ray/triangle intersection", 2013.
class Shear {
 public:
  explicit Shear(const TriangleClusters::Ray& ray) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      origin[static_cast<int>(axis)] = ray.origin[axis];
      if (std::abs(ray.direction[axis]) > std::abs(ray.direction[static_cast<std::size_t>(z)]))
        z = static_cast<int>(axis);
    }
    x = (z + 1) % 3;
    y = (z + 2) % 3;
    const auto along = [&ray](int axis) { return double{ray.direction[static_cast<std::size_t>(axis)]}; };
    if (along(z) < 0.0) std::swap(x, y);
    byX = along(x) / along(z);
    byY = along(y) / along(z);
    byZ = 1.0 / along(z);
  }
  Vector3 Apply(const Vector3& point) const {
    const Vector3 offset = point - origin;
    return {offset[x] - byX * offset[z], offset[y] - byY * offset[z], byZ * offset[z]};
  }

 private:
  Vector3 origin;
  int x = 0;
  int y = 0;
  int z = 0;
  double byX = 0.0;
  double byY = 0.0;
  double byZ = 0.0;
};

}  // namespace

TriangleClusters::TriangleClusters(const SceneData& data, const ScenePart& part, const Vector3& sceneCentre,
                                   double sceneRadius, WorkReport& report)
    : mesh(data.meshes[static_cast<std::size_t>(part.mesh)]),
      transform(part.transform),
      centre(sceneCentre),
      radius(sceneRadius),
      triangleCount(mesh.indices.size() / 3),
      count((triangleCount + SIZE - 1) / SIZE) {
  if (triangleCount > SIZE && !IsInOrder(mesh, report)) order = SortByPlace(GetPlaces(mesh, report), report);
}

std::uint32_t TriangleClusters::GetTriangle(std::size_t place) const {
  return order.empty() ? static_cast<std::uint32_t>(place) : order[place];
}

TriangleClusters::Corners TriangleClusters::GetCorners(std::uint32_t triangle) const {
  Corners corners;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t vertex = mesh.indices[std::size_t{3} * triangle + i];
    const Vector3 world = TransformPoint(transform, GetVertex(mesh.positions, vertex));
    std::array<float, 3> rounded = {};
    ((world - centre) / radius).ToArray(rounded.data());
    corners[i] = Vector3(rounded.data());
  }
  return corners;
}

Box TriangleClusters::GetBox(std::size_t cluster) const {
  Box box = MakeEmptyBox();
  const std::size_t end = std::min((cluster + 1) * SIZE, triangleCount);
  for (std::size_t i = cluster * SIZE; i < end; ++i) {
    for (const Vector3& corner : GetCorners(GetTriangle(i))) {
      std::array<float, 3> rounded = {};
      corner.ToArray(rounded.data());
      Extend(box, rounded.data());
    }
  }
  return box;
}

bool TriangleClusters::Intersect(std::size_t cluster, Ray& ray, std::uint32_t& triangle) const {
  const Shear shear(ray);
  bool found = false;
  const std::size_t end = std::min((cluster + 1) * SIZE, triangleCount);
  for (std::size_t i = cluster * SIZE; i < end; ++i) {
    const std::uint32_t number = GetTriangle(i);
    const Corners corners = GetCorners(number);
    const Vector3 a = shear.Apply(corners[0]);
    const Vector3 b = shear.Apply(corners[1]);
    const Vector3 c = shear.Apply(corners[2]);
    const double u = c.x * b.y - c.y * b.x;
    const double v = a.x * c.y - a.y * c.x;
    const double w = b.x * a.y - b.y * a.x;
    const double sum = u + v + w;
    const bool passes = (u < 0.0 || v < 0.0 || w < 0.0) && (u > 0.0 || v > 0.0 || w > 0.0);
    if (passes || sum == 0.0) continue;
    const auto distance = static_cast<float>((u * a.z + v * b.z + w * c.z) / sum);
    if (!(distance >= ray.from && distance < ray.to)) continue;
    ray.to = distance;
    triangle = number;
    found = true;
  }
  return found;
}

}  // namespace zovhost
