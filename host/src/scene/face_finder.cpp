#include "scene/face_finder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <optional>
#include <tuple>
#include <unordered_set>

#include "projection/matrix.h"
#include "scene/face_index.h"

namespace zovhost {

namespace {

using Korvane::Vector3;

using Corners = std::array<Vector3, 3>;

Corners GetCorners(const SceneMesh& mesh, std::size_t triangle) {
  const std::uint32_t* corner = mesh.indices.data() + 3 * triangle;
  return {GetVertex(mesh.positions, corner[0]), GetVertex(mesh.positions, corner[1]),
          GetVertex(mesh.positions, corner[2])};
}

struct Plane {
  Vector3 origin;
  Vector3 normal;  // unit length; zero for a triangle without area, which is in a plane with everything near
  double tolerance;

  bool Has(const Vector3& point) const { return std::abs((point - origin).Dot(normal)) <= tolerance; }
};

// As far off the plane as a float may round, and as far as no eye would tell.
Plane GetPlane(const Corners& corners) {
  const Vector3 first = corners[1] - corners[0];
  const Vector3 second = corners[2] - corners[0];
  double largest = 0.0;
  for (const Vector3& c : corners) largest = std::max({largest, std::abs(c.x), std::abs(c.y), std::abs(c.z)});
  const double size = std::sqrt(std::max(first.LengthSquared(), second.LengthSquared()));
  return {corners[0], first.Cross(second).Normalized(), 1e-4 * size + 4e-7 * largest};
}

bool IsInPlane(const SceneMesh& mesh, std::size_t triangle, const Plane& plane) {
  const Corners corners = GetCorners(mesh, triangle);
  return std::all_of(corners.begin(), corners.end(),
                     [&](const Vector3& corner) { return plane.Has(corner); });
}

// With the first, whatever its shape. None where a limit is reached.
std::vector<std::uint32_t> FindInPlane(const SceneMesh& mesh, const Plane& plane, std::uint32_t seed,
                                       const FaceLimits& limits) {
  constexpr std::size_t ROUNDS = std::size_t{1} << 16;  // between two looks
  std::vector<std::uint32_t> found;
  const std::size_t count = mesh.indices.size() / 3;
  if (count > limits.looked) return {};
  for (std::size_t triangle = 0; triangle < count; ++triangle) {
    if (triangle % ROUNDS == 0 && limits.AreReached()) return {};
    if (triangle == seed || IsInPlane(mesh, triangle, plane))
      found.push_back(static_cast<std::uint32_t>(triangle));
  }
  return found;
}

// ---- joining by common sides ----

// Groups of numbers, each group named by one of them.
class Groups {
 public:
  explicit Groups(std::size_t count) : parent(count) { std::iota(parent.begin(), parent.end(), 0U); }
  std::size_t Find(std::size_t i) {
    while (parent[i] != i) i = parent[i] = parent[parent[i]];
    return i;
  }
  void Join(std::size_t a, std::size_t b) { parent[Find(a)] = Find(b); }

 private:
  std::vector<std::size_t> parent;
};

using Position = std::array<float, 3>;
struct Side {
  Position low;
  Position high;
  std::size_t triangle;  // among those found

  bool IsSameLine(const Side& other) const { return low == other.low && high == other.high; }
};

// Corners count as the same by their positions: meshes often repeat a vertex for each triangle.
std::vector<Side> GetSides(const SceneMesh& mesh, const std::vector<std::uint32_t>& triangles) {
  const auto position = [&mesh](std::uint32_t vertex) {
    const float* p = mesh.positions.data() + std::size_t{3} * vertex;
    return Position{p[0], p[1], p[2]};
  };
  std::vector<Side> sides;
  sides.reserve(3 * triangles.size());
  for (std::size_t i = 0; i < triangles.size(); ++i) {
    const std::uint32_t* corner = mesh.indices.data() + std::size_t{3} * triangles[i];
    for (std::size_t from = 0; from < 3; ++from) {
      const Position a = position(corner[from]);
      const Position b = position(corner[(from + 1) % 3]);
      sides.push_back({std::min(a, b), std::max(a, b), i});
    }
  }
  std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) {
    return std::tie(a.low, a.high, a.triangle) < std::tie(b.low, b.high, b.triangle);
  });
  return sides;
}

// Leaves those that are joined to `seed`, which is one of them.
void KeepJoined(const SceneMesh& mesh, std::uint32_t seed, std::vector<std::uint32_t>& triangles) {
  if (triangles.empty()) return;
  const std::vector<Side> sides = GetSides(mesh, triangles);
  Groups groups(triangles.size());
  for (std::size_t i = 1; i < sides.size(); ++i) {
    if (sides[i].IsSameLine(sides[i - 1])) groups.Join(sides[i].triangle, sides[i - 1].triangle);
  }
  const auto place = std::lower_bound(triangles.begin(), triangles.end(), seed) - triangles.begin();
  const std::size_t wanted = groups.Find(static_cast<std::size_t>(place));
  std::vector<std::uint32_t> kept;
  for (std::size_t i = 0; i < triangles.size(); ++i) {
    if (groups.Find(i) == wanted) kept.push_back(triangles[i]);
  }
  triangles.swap(kept);
}

// ---- walking ----

// None where a limit is reached.
std::vector<std::uint32_t> WalkInPlane(const SceneMesh& mesh, const SideIndex& sides, const Plane& plane,
                                       std::uint32_t seed, const FaceLimits& limits) {
  std::vector<std::uint32_t> found = {seed};
  std::vector<bool> seen(mesh.indices.size() / 3);
  seen[seed] = true;
  std::unordered_set<std::uint64_t> crowded;  // sides whose triangles have all been seen
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (found.size() > limits.walked || limits.AreReached()) return {};
    for (std::uint32_t own = 3 * found[i]; own < 3 * found[i] + 3; ++own) {
      const std::optional<std::uint64_t> side = sides.FindCrowdedSide(mesh, own);
      if (side.has_value() && !crowded.insert(*side).second) continue;
      sides.VisitNeighbours(mesh, own, [&](std::uint32_t neighbour) {
        if (seen[neighbour]) return;
        seen[neighbour] = true;
        if (IsInPlane(mesh, neighbour, plane)) found.push_back(neighbour);
      });
    }
  }
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace

bool FindFaceOf(const SceneMesh& mesh, const SideIndex* sides, std::uint32_t triangle, SceneFace& face,
                const FaceLimits& limits) {
  const Plane plane = GetPlane(GetCorners(mesh, triangle));
  if (sides != nullptr) {
    face.triangles = WalkInPlane(mesh, *sides, plane, triangle, limits);
  } else {
    face.triangles = FindInPlane(mesh, plane, triangle, limits);
    KeepJoined(mesh, triangle, face.triangles);
  }
  face.corners.clear();
  for (const std::uint32_t found : face.triangles) {
    for (std::size_t corner = 0; corner < 3; ++corner) {
      const float* p = mesh.positions.data() + std::size_t{3} * mesh.indices[std::size_t{3} * found + corner];
      face.corners.insert(face.corners.end(), p, p + 3);
    }
  }
  return !face.triangles.empty();
}

}  // namespace zovhost
