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
#include "scene/work_report.h"

namespace zovhost {

namespace {

using Korvane::Vector3;

using Corners = std::array<Vector3, 3>;

// Throws WorkCancelled where a limit is reached.
class Limiter {
 public:
  explicit Limiter(const FaceLimits& ofSearch) : limits(ofSearch) {}
  /// For each of many small steps.
  void Step() {
    constexpr std::size_t STEPS = std::size_t{1} << 12;  // between two looks
    if ((++steps & (STEPS - 1)) == 0 && limits.stopped != nullptr && *limits.stopped) throw WorkCancelled();
  }
  void CheckFound(std::size_t count) const {
    if (count > limits.found) throw WorkCancelled();
  }
  void CheckLooked(std::size_t count) const {
    if (count > limits.looked) throw WorkCancelled();
  }

 private:
  const FaceLimits& limits;
  std::size_t steps = 0;
};

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

// With the first, whatever its shape.
std::vector<std::uint32_t> FindInPlane(const SceneMesh& mesh, const Plane& plane, std::uint32_t seed,
                                       Limiter& limiter) {
  std::vector<std::uint32_t> found;
  const std::size_t count = mesh.indices.size() / 3;
  limiter.CheckLooked(count);
  for (std::size_t triangle = 0; triangle < count; ++triangle) {
    limiter.Step();
    if (triangle != seed && !IsInPlane(mesh, triangle, plane)) continue;
    found.push_back(static_cast<std::uint32_t>(triangle));
    limiter.CheckFound(found.size());
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
std::vector<Side> GetSides(const SceneMesh& mesh, const std::vector<std::uint32_t>& triangles,
                           Limiter& limiter) {
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
  std::sort(sides.begin(), sides.end(), [&limiter](const Side& a, const Side& b) {
    limiter.Step();
    return std::tie(a.low, a.high, a.triangle) < std::tie(b.low, b.high, b.triangle);
  });
  return sides;
}

// Leaves those that are joined to `seed`, which is one of them.
void KeepJoined(const SceneMesh& mesh, std::uint32_t seed, std::vector<std::uint32_t>& triangles,
                Limiter& limiter) {
  const std::vector<Side> sides = GetSides(mesh, triangles, limiter);
  Groups groups(triangles.size());
  for (std::size_t i = 1; i < sides.size(); ++i) {
    limiter.Step();
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

std::vector<std::uint32_t> WalkInPlane(const SceneMesh& mesh, const SideIndex& sides, const Plane& plane,
                                       std::uint32_t seed, Limiter& limiter) {
  std::vector<std::uint32_t> found = {seed};
  std::vector<bool> seen(mesh.indices.size() / 3);
  seen[seed] = true;
  std::unordered_set<std::uint64_t> crowded;  // sides whose triangles have all been seen
  for (std::size_t i = 0; i < found.size(); ++i) {
    limiter.CheckFound(found.size());
    for (std::uint32_t own = 3 * found[i]; own < 3 * found[i] + 3; ++own) {
      const std::optional<std::uint64_t> side = sides.FindCrowdedSide(mesh, own);
      if (side.has_value() && !crowded.insert(*side).second) continue;
      limiter.Step();
      sides.VisitNeighbours(mesh, own, [&](std::uint32_t neighbour) {
        if (seen[neighbour]) return;
        seen[neighbour] = true;
        if (IsInPlane(mesh, neighbour, plane)) found.push_back(neighbour);
      });
    }
  }
  std::sort(found.begin(), found.end(), [&limiter](std::uint32_t a, std::uint32_t b) {
    limiter.Step();
    return a < b;
  });
  return found;
}

void FillFace(const SceneMesh& mesh, const SideIndex* sides, std::uint32_t triangle, SceneFace& face,
              Limiter& limiter) {
  const Plane plane = GetPlane(GetCorners(mesh, triangle));
  if (sides != nullptr) {
    face.triangles = WalkInPlane(mesh, *sides, plane, triangle, limiter);
  } else {
    face.triangles = FindInPlane(mesh, plane, triangle, limiter);
    KeepJoined(mesh, triangle, face.triangles, limiter);
  }
  for (const std::uint32_t found : face.triangles) {
    limiter.Step();
    for (std::size_t corner = 0; corner < 3; ++corner) {
      const float* p = mesh.positions.data() + std::size_t{3} * mesh.indices[std::size_t{3} * found + corner];
      face.corners.insert(face.corners.end(), p, p + 3);
    }
  }
}

}  // namespace

bool FindFaceOf(const SceneMesh& mesh, const SideIndex* sides, std::uint32_t triangle, SceneFace& face,
                const FaceLimits& limits) {
  face.triangles.clear();
  face.corners.clear();
  Limiter limiter(limits);
  try {
    FillFace(mesh, sides, triangle, face, limiter);
    return true;
  } catch (const WorkCancelled&) {
    face.triangles.clear();
    face.corners.clear();
    return false;
  }
}

}  // namespace zovhost
