#include "scene/mesh_repair.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <vector>

#include "projection/matrix.h"
#include "scene/point_numbers.h"
#include "scene/work_report.h"

namespace zovhost {

using Korvane::Vector3;

namespace {

// Neighbouring triangles that meet at less than this angle share a normal: rounder than the bevels of
// buildings, flatter than coarse cylinders. Radians.
constexpr double CREASE_ANGLE = 40.0 * Korvane::Math::DEG_TO_RAD;
// Corners at one point beyond which they keep the normals of their triangles: comparing all of them with
// each other would take time by the square.
constexpr std::size_t MOST_CORNERS = 64;
// A mesh is moved when it lies further out than this many times its size.
constexpr double FAR_AWAY = 16.0;

bool IsUsable(float coordinate) { return std::abs(coordinate) <= LARGEST_COORDINATE; }

bool IsUsableVertex(const std::vector<float>& positions, std::size_t index) {
  const float* p = positions.data() + 3 * index;
  return IsUsable(p[0]) && IsUsable(p[1]) && IsUsable(p[2]);
}

bool IsWhole(const SceneMesh& mesh, const std::uint32_t* corner) {
  const std::size_t count = mesh.positions.size() / 3;
  return std::all_of(corner, corner + 3, [&](std::uint32_t index) {
    return index < count && IsUsableVertex(mesh.positions, index);
  });
}

bool IsCollapsed(const SceneMesh& mesh, const std::uint32_t* corner) {
  const Vector3 a = GetVertex(mesh.positions, corner[0]);
  const Vector3 b = GetVertex(mesh.positions, corner[1]);
  const Vector3 c = GetVertex(mesh.positions, corner[2]);
  return a == b || b == c || c == a;
}

// Keeps the rows of `values` that `kept` lists, in its order.
template <typename T>
void KeepRows(std::vector<T>& values, std::size_t width, const std::vector<std::uint32_t>& kept) {
  if (values.empty()) return;
  std::vector<T> rows;
  rows.reserve(kept.size() * width);
  for (const std::uint32_t row : kept) {
    const auto first = values.begin() + static_cast<std::ptrdiff_t>(row * width);
    rows.insert(rows.end(), first, first + static_cast<std::ptrdiff_t>(width));
  }
  values = std::move(rows);
}

void KeepVertices(SceneMesh& mesh, const std::vector<std::uint32_t>& kept) {
  KeepRows(mesh.positions, 3, kept);
  KeepRows(mesh.normals, 3, kept);
  KeepRows(mesh.texCoords, 2, kept);
  KeepRows(mesh.colours, 4, kept);
}

void DropUnusedVertices(SceneMesh& mesh) {
  constexpr std::uint32_t unused = UINT32_MAX;
  std::vector<std::uint32_t> newIndex(mesh.positions.size() / 3, unused);
  std::vector<std::uint32_t> kept;
  for (std::uint32_t& index : mesh.indices) {
    if (newIndex[index] == unused) {
      newIndex[index] = static_cast<std::uint32_t>(kept.size());
      kept.push_back(index);
    }
    index = newIndex[index];
  }
  KeepVertices(mesh, kept);
}

// What the triangles say about one corner.
struct Corner {
  Vector3 faceNormal;  // unit length, or zero for a sliver
  double angle = 0.0;  // of the triangle at this corner, its weight; radians
};

double GetAngle(const Vector3& a, const Vector3& b) { return std::atan2(a.Cross(b).Length(), a.Dot(b)); }

// Coordinates of a mesh may be far smaller than the tolerance of Vector3, so directions are scaled first.
Vector3 GetDirection(const Vector3& v) {
  const double largest = std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
  return largest > 0.0 ? (v / largest).Normalized() : Vector3();
}

// Of three successive indices a triangle; `vertexOf` tells what vertex an index is.
template <typename VertexOf>
Corner GetCorner(const SceneMesh& mesh, std::size_t corner, const VertexOf& vertexOf) {
  const std::size_t first = corner - corner % 3;
  std::array<Vector3, 3> edges;
  for (std::size_t i = 0; i < 3; ++i) {
    const Vector3 from = GetVertex(mesh.positions, vertexOf(mesh.indices[first + i]));
    const Vector3 to = GetVertex(mesh.positions, vertexOf(mesh.indices[first + (i + 1) % 3]));
    edges[i] = GetDirection(to - from);
  }
  const std::size_t own = corner - first;
  return {GetDirection(edges[0].Cross(edges[1])), GetAngle(edges[own], -edges[(own + 2) % 3])};
}

// Corners that lie at the same point, whatever vertex they came from: `order` holds them group by group,
// `starts` where each group begins, and the end.
struct CornerGroups {
  std::vector<std::uint32_t> order;
  std::vector<std::size_t> starts;
};

CornerGroups GroupByPoint(const SceneMesh& mesh) {
  std::uint32_t pointCount = 0;
  const std::vector<std::uint32_t> pointOf = NumberPoints(mesh.positions, pointCount);
  CornerGroups groups;
  groups.starts.resize(std::size_t{pointCount} + 1);
  for (const std::uint32_t vertex : mesh.indices) ++groups.starts[pointOf[vertex] + 1];
  std::partial_sum(groups.starts.begin(), groups.starts.end(), groups.starts.begin());
  groups.order.resize(mesh.indices.size());
  std::vector<std::size_t> next(groups.starts.begin(), groups.starts.end() - 1);
  for (std::uint32_t corner = 0; corner < mesh.indices.size(); ++corner)
    groups.order[next[pointOf[mesh.indices[corner]]]++] = corner;
  return groups;
}

Vector3 AnyNormal(const Vector3& preferred) {
  return preferred == Vector3::Zero ? Vector3(0.0, 0.0, 1.0) : preferred;
}

// The mean of the triangles around a corner that lie within the crease angle of its own, weighted by their
// angle there, so that the way a face was cut into triangles does not show. `around`: all corners at its
// point.
Vector3 GetSmoothNormal(const std::vector<Corner>& around, const Vector3& own) {
  static const double leastCosine = std::cos(CREASE_ANGLE);
  if (around.size() > MOST_CORNERS) return AnyNormal(own);
  Vector3 sum;
  for (const Corner& other : around) {
    if (own == Vector3::Zero || own.Dot(other.faceNormal) >= leastCosine)
      sum += other.faceNormal * other.angle;
  }
  const Vector3 smooth = sum.Normalized();
  return AnyNormal(smooth == Vector3::Zero ? own : smooth);
}

// Corners of one vertex that got the same normal stay one vertex; the others become copies of it.
class VertexSplitter {
 public:
  // Each vertex is one copy at least.
  explicit VertexSplitter(std::size_t vertexCount) : firstCopy(vertexCount, NONE) {
    copies.reserve(vertexCount);
  }

  // An index that has been replaced by a copy is counted on from the vertices, so that new ones and old ones
  // can stand in one list.
  std::uint32_t Mark(std::uint32_t copy) const { return copy + static_cast<std::uint32_t>(firstCopy.size()); }
  std::uint32_t GetVertex(std::uint32_t index) const {
    return index < firstCopy.size() ? index : copies[GetCopy(index)].vertex;
  }
  std::uint32_t GetCopy(std::uint32_t marked) const {
    return marked - static_cast<std::uint32_t>(firstCopy.size());
  }

  std::uint32_t Find(std::uint32_t vertex, const Vector3& normal, bool mayShare) {
    const std::array<float, 3> rounded = {static_cast<float>(normal.x), static_cast<float>(normal.y),
                                          static_cast<float>(normal.z)};
    if (mayShare)
      for (std::uint32_t copy = firstCopy[vertex]; copy != NONE; copy = copies[copy].next)
        if (copies[copy].normal == rounded) return copy;
    copies.push_back({vertex, firstCopy[vertex], rounded});
    return firstCopy[vertex] = static_cast<std::uint32_t>(copies.size() - 1);
  }

  void Apply(SceneMesh& mesh) const {
    for (std::uint32_t& index : mesh.indices) index = GetCopy(index);
    std::vector<std::uint32_t> kept;
    std::vector<float> normals;
    kept.reserve(copies.size());
    normals.reserve(copies.size() * 3);
    for (const Copy& copy : copies) {
      kept.push_back(copy.vertex);
      normals.insert(normals.end(), copy.normal.begin(), copy.normal.end());
    }
    KeepVertices(mesh, kept);
    mesh.normals = std::move(normals);
  }

 private:
  static constexpr std::uint32_t NONE = UINT32_MAX;
  struct Copy {
    std::uint32_t vertex;
    std::uint32_t next;
    std::array<float, 3> normal;
  };
  std::vector<std::uint32_t> firstCopy;
  std::vector<Copy> copies;
};

// A corner is worked out where its point is: a list of all would take more memory than the mesh. For the same
// reason the new indices take the places of the old ones.
void SplitByNormals(SceneMesh& mesh, VertexSplitter& splitter, WorkReport* report) {
  const CornerGroups groups = GroupByPoint(mesh);
  const auto vertexOf = [&splitter](std::uint32_t index) { return splitter.GetVertex(index); };
  std::vector<Corner> around;
  for (std::size_t g = 0; g + 1 < groups.starts.size(); ++g) {
    if (report != nullptr) report->Count(g, groups.starts.size());
    const std::uint32_t* group = groups.order.data() + groups.starts[g];
    const std::size_t size = groups.starts[g + 1] - groups.starts[g];
    around.clear();
    for (std::size_t i = 0; i < size; ++i) around.push_back(GetCorner(mesh, group[i], vertexOf));
    for (std::size_t i = 0; i < size; ++i) {
      const Vector3 normal = GetSmoothNormal(around, around[i].faceNormal);
      std::uint32_t& index = mesh.indices[group[i]];
      index = splitter.Mark(splitter.Find(index, normal, size <= MOST_CORNERS));
    }
  }
}

void GenerateNormals(SceneMesh& mesh, WorkReport* report) {
  mesh.normals = {};
  VertexSplitter splitter(mesh.positions.size() / 3);
  SplitByNormals(mesh, splitter, report);
  splitter.Apply(mesh);
}

void RepairNormals(SceneMesh& mesh, WorkReport* report) {
  std::vector<std::size_t> broken;
  for (std::size_t i = 0; i < mesh.normals.size(); i += 3) {
    const Vector3 normal = GetDirection(Vector3(mesh.normals.data() + i));
    if (normal == Vector3::Zero) broken.push_back(i / 3);
    normal.ToArray(mesh.normals.data() + i);
  }
  if (broken.empty()) return;
  if (broken.size() == mesh.normals.size() / 3) return GenerateNormals(mesh, report);  // as good as missing
  std::vector<Vector3> sums(mesh.positions.size() / 3);
  for (std::size_t i = 0; i < mesh.indices.size(); ++i) {
    const Corner corner = GetCorner(mesh, i, [](std::uint32_t index) { return index; });
    sums[mesh.indices[i]] += corner.faceNormal * corner.angle;
  }
  for (const std::size_t vertex : broken)
    AnyNormal(sums[vertex].Normalized()).ToArray(mesh.normals.data() + 3 * vertex);
}

}  // namespace

std::size_t DropBrokenTriangles(SceneMesh& mesh) {
  std::size_t broken = 0;
  std::vector<std::uint32_t> kept;
  kept.reserve(mesh.indices.size());
  for (std::size_t first = 0; first + 3 <= mesh.indices.size(); first += 3) {
    const std::uint32_t* corner = mesh.indices.data() + first;
    if (!IsWhole(mesh, corner))
      ++broken;
    else if (!IsCollapsed(mesh, corner))
      kept.insert(kept.end(), corner, corner + 3);
  }
  mesh.indices = std::move(kept);
  DropUnusedVertices(mesh);
  return broken;
}

void CompleteNormals(SceneMesh& mesh, WorkReport* report) {
  if (mesh.normals.size() == mesh.positions.size())
    RepairNormals(mesh, report);
  else
    GenerateNormals(mesh, report);
}

Vector3 MoveToOrigin(SceneMesh& mesh) {
  if (mesh.positions.empty()) return {};
  Vector3 low = GetVertex(mesh.positions, 0);
  Vector3 high = low;
  for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
    const int axis = static_cast<int>(i % 3);
    low[axis] = std::min(low[axis], double{mesh.positions[i]});
    high[axis] = std::max(high[axis], double{mesh.positions[i]});
  }
  const Vector3 centre = (low + high) * 0.5;
  if (centre.Length() <= FAR_AWAY * (high - low).Length()) return {};
  for (std::size_t i = 0; i < mesh.positions.size(); ++i)
    mesh.positions[i] = static_cast<float>(mesh.positions[i] - centre[static_cast<int>(i % 3)]);
  return centre;
}

}  // namespace zovhost
