#include "scene_view/crease_edges.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "korvane/vector3.h"

namespace zovhost {

namespace {

using Korvane::Vector3;

constexpr double foldCosine = 0.87;  // of 30 degrees: a sharper fold is drawn

struct HalfEdge {
  std::uint32_t low;
  std::uint32_t high;
  std::uint32_t triangle;
  bool operator<(const HalfEdge& other) const {
    if (low != other.low) return low < other.low;
    if (high != other.high) return high < other.high;
    return triangle < other.triangle;
  }
};

Vector3 PositionOf(const SceneMesh& mesh, std::uint32_t vertex) {
  return Vector3(mesh.positions.data() + std::size_t{3} * vertex);
}

// For each vertex the first one that stands at the same place.
std::vector<std::uint32_t> MergeByPlace(const SceneMesh& mesh) {
  const std::size_t count = mesh.positions.size() / 3;
  std::vector<std::uint32_t> order(count);
  for (std::size_t i = 0; i < count; ++i) order[i] = static_cast<std::uint32_t>(i);
  const auto place = [&mesh](std::uint32_t vertex) {
    return mesh.positions.data() + std::size_t{3} * vertex;
  };
  const auto before = [&](std::uint32_t a, std::uint32_t b) {
    return std::lexicographical_compare(place(a), place(a) + 3, place(b), place(b) + 3);
  };
  std::sort(order.begin(), order.end(), before);
  std::vector<std::uint32_t> merged(count);
  for (std::size_t i = 0; i < count; ++i) {
    const bool same = i > 0 && std::equal(place(order[i]), place(order[i]) + 3, place(order[i - 1]));
    merged[order[i]] = same ? merged[order[i - 1]] : order[i];
  }
  return merged;
}

std::vector<HalfEdge> SortHalfEdges(const SceneMesh& mesh, const std::vector<std::uint32_t>& merged) {
  std::vector<HalfEdge> edges;
  edges.reserve(mesh.indices.size());
  for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
    for (std::size_t corner = 0; corner < 3; ++corner) {
      const std::uint32_t a = merged[mesh.indices[i + corner]];
      const std::uint32_t b = merged[mesh.indices[i + (corner + 1) % 3]];
      if (a != b) edges.push_back({std::min(a, b), std::max(a, b), static_cast<std::uint32_t>(i / 3)});
    }
  }
  std::sort(edges.begin(), edges.end());
  return edges;
}

Vector3 NormalOf(const SceneMesh& mesh, std::uint32_t triangle) {
  const std::uint32_t* corners = mesh.indices.data() + std::size_t{3} * triangle;
  const Vector3 a = PositionOf(mesh, corners[0]);
  Vector3 normal = (PositionOf(mesh, corners[1]) - a).Cross(PositionOf(mesh, corners[2]) - a);
  const double length = normal.Length();
  return length > 0.0 ? normal / length : Vector3();
}

// Of the triangles that meet in one edge. Windings may disagree, so only the lines of the normals count.
bool IsCrease(const SceneMesh& mesh, const HalfEdge* first, const HalfEdge* end) {
  if (end - first != 2) return true;
  const double cosine = NormalOf(mesh, first[0].triangle).Dot(NormalOf(mesh, first[1].triangle));
  return std::abs(cosine) < foldCosine;
}

}  // namespace

std::vector<float> FindCreaseEdges(const SceneMesh& mesh) {
  std::vector<float> lines;
  const std::vector<HalfEdge> edges = SortHalfEdges(mesh, MergeByPlace(mesh));
  const HalfEdge* const end = edges.data() + edges.size();
  for (const HalfEdge* first = edges.data(); first != end;) {
    const HalfEdge* next = first;
    while (next != end && next->low == first->low && next->high == first->high) ++next;
    if (IsCrease(mesh, first, next)) {
      for (const std::uint32_t vertex : {first->low, first->high}) {
        const float* p = mesh.positions.data() + std::size_t{3} * vertex;
        lines.insert(lines.end(), p, p + 3);
      }
    }
    first = next;
  }
  return lines;
}

}  // namespace zovhost
