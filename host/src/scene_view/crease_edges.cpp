#include "scene_view/crease_edges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

#include "korvane/vector3.h"
#include "scene/work_report.h"

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

// For each of many small steps; looks up once in some thousand.
class Breaker {
 public:
  explicit Breaker(const WorkReport* asked) : report(asked) {}
  void Step() {
    constexpr std::size_t STEPS = std::size_t{1} << 14;
    if ((++steps & (STEPS - 1)) == 0 && report != nullptr && report->IsCancelled()) throw WorkCancelled();
  }

 private:
  const WorkReport* const report;
  std::size_t steps = 0;
};

Vector3 PositionOf(const SceneMesh& mesh, std::uint32_t vertex) {
  return Vector3(mesh.positions.data() + std::size_t{3} * vertex);
}

// For each vertex the first one that stands at the same place.
std::vector<std::uint32_t> MergeByPlace(const SceneMesh& mesh, Breaker& breaker) {
  const std::size_t count = mesh.positions.size() / 3;
  std::vector<std::uint32_t> order(count);
  for (std::size_t i = 0; i < count; ++i) order[i] = static_cast<std::uint32_t>(i);
  const auto place = [&mesh](std::uint32_t vertex) {
    return mesh.positions.data() + std::size_t{3} * vertex;
  };
  const auto before = [&](std::uint32_t a, std::uint32_t b) {
    breaker.Step();
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

std::vector<HalfEdge> SortHalfEdges(const SceneMesh& mesh, const std::vector<std::uint32_t>& merged,
                                    Breaker& breaker) {
  std::vector<HalfEdge> edges;
  edges.reserve(mesh.indices.size());
  for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
    for (std::size_t corner = 0; corner < 3; ++corner) {
      const std::uint32_t a = merged[mesh.indices[i + corner]];
      const std::uint32_t b = merged[mesh.indices[i + (corner + 1) % 3]];
      if (a != b) edges.push_back({std::min(a, b), std::max(a, b), static_cast<std::uint32_t>(i / 3)});
    }
  }
  std::sort(edges.begin(), edges.end(), [&breaker](const HalfEdge& a, const HalfEdge& b) {
    breaker.Step();
    return a < b;
  });
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

// Whether a triangle runs along an edge from its low end to its high one.
bool RunsUp(const SceneMesh& mesh, const std::vector<std::uint32_t>& merged, const HalfEdge& edge) {
  const std::uint32_t* corners = mesh.indices.data() + std::size_t{3} * edge.triangle;
  for (std::size_t corner = 0; corner < 3; ++corner) {
    if (merged[corners[corner]] == edge.low && merged[corners[(corner + 1) % 3]] == edge.high) return true;
  }
  return false;
}

// Of the triangles that meet in one edge as many run along it one way as the other.
bool AreBalanced(const SceneMesh& mesh, const std::vector<std::uint32_t>& merged, const HalfEdge* first,
                 const HalfEdge* end) {
  const auto up = std::count_if(first, end, [&](const HalfEdge& edge) { return RunsUp(mesh, merged, edge); });
  return 2 * up == end - first;
}

// The pieces that hang together by their edges, joined edge by edge.
class Pieces {
 public:
  explicit Pieces(std::size_t triangles) : parents(triangles) {
    std::iota(parents.begin(), parents.end(), std::uint32_t{0});
  }
  std::uint32_t Find(std::uint32_t triangle) {
    while (parents[triangle] != triangle) triangle = parents[triangle] = parents[parents[triangle]];
    return triangle;
  }
  void Join(std::uint32_t a, std::uint32_t b) { parents[Find(a)] = Find(b); }

 private:
  std::vector<std::uint32_t> parents;
};

// Each piece, which has no border, has its triangles' fronts outside.
bool FaceOutwards(const SceneMesh& mesh, Pieces& pieces) {
  const std::size_t count = mesh.indices.size() / 3;
  std::vector<double> volumes(count);
  const Vector3 origin = PositionOf(mesh, mesh.indices.front());
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t* corners = mesh.indices.data() + 3 * i;
    const Vector3 a = PositionOf(mesh, corners[0]) - origin;
    const Vector3 b = PositionOf(mesh, corners[1]) - origin;
    const Vector3 c = PositionOf(mesh, corners[2]) - origin;
    volumes[pieces.Find(static_cast<std::uint32_t>(i))] += a.Dot(b.Cross(c));
  }
  for (std::uint32_t i = 0; i < count; ++i) {
    if (pieces.Find(i) == i && !(volumes[i] > 0.0)) return false;
  }
  return true;
}

// ---- creases ----

// A fold or border, of which the ends and two of its triangles are known.
struct Fold {
  std::uint32_t low;
  std::uint32_t high;
  std::array<std::uint32_t, 2> triangles;
  bool ofMany;  // or of a border
};

std::array<float, 3> ToFloats(const Vector3& v) {
  return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

Vector3 AcrossOf(const Vector3& v, const Vector3& along) { return v - along * v.Dot(along); }

Vector3 UnitOf(const Vector3& v) {
  const double largest = std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
  return largest > 0.0 ? (v / largest).Normalized() : Vector3();
}

class CreaseMaker {
 public:
  CreaseMaker(const SceneMesh& ofMesh, const std::vector<std::uint32_t>& mergedVertices)
      : mesh(ofMesh), merged(mergedVertices), faces(ofMesh.indices.size() / 3) {}

  // The triangles that meet in one edge.
  void Add(const HalfEdge* first, const HalfEdge* end) {
    if (!IsCrease(mesh, first, end)) return faces.Join(first[0].triangle, first[1].triangle);
    std::array<std::uint32_t, 2> triangles = {first->triangle, FindOther(first, end)};
    if (!RunsUp(mesh, merged, *first)) std::swap(triangles[0], triangles[1]);
    folds.push_back({first->low, first->high, triangles, end - first != 2});
  }

  // Once all edges were added, since only then it is known what is one face.
  std::vector<Crease> Make(bool solid) {
    SumAreas();
    std::vector<Crease> creases;
    creases.reserve(folds.size());
    for (Fold& fold : folds) {
      if (solid && fold.ofMany) fold.triangles[1] = fold.triangles[0];
      creases.push_back(MakeCrease(fold));
    }
    return creases;
  }

 private:
  // Of unit length; zero for a triangle without area.
  Vector3 InwardsOf(std::uint32_t triangle, std::uint32_t low, std::uint32_t high) const {
    const Vector3 from = PositionOf(mesh, low);
    const Vector3 along = UnitOf(PositionOf(mesh, high) - from);
    const std::uint32_t* corners = mesh.indices.data() + std::size_t{3} * triangle;
    const auto isThird = [&](std::uint32_t corner) {
      return merged[corner] != low && merged[corner] != high;
    };
    const std::uint32_t* const third = std::find_if(corners, corners + 3, isThird);
    return third != corners + 3 ? UnitOf(AcrossOf(PositionOf(mesh, *third) - from, along)) : Vector3();
  }

  // Of all triangles the one that leads most to the other side than the first.
  std::uint32_t FindOther(const HalfEdge* first, const HalfEdge* end) const {
    const Vector3 own = InwardsOf(first->triangle, first->low, first->high);
    const HalfEdge* other = first;
    double least = 2.0;
    for (const HalfEdge* edge = first + 1; edge != end; ++edge) {
      const double cosine = own.Dot(InwardsOf(edge->triangle, edge->low, edge->high));
      if (cosine < least) least = cosine, other = edge;
    }
    return other->triangle;
  }

  void SumAreas() {
    areas.resize(mesh.indices.size() / 3);
    for (std::uint32_t i = 0; i < areas.size(); ++i) {
      const std::uint32_t* corners = mesh.indices.data() + std::size_t{3} * i;
      const Vector3 a = PositionOf(mesh, corners[0]);
      const Vector3 cross = (PositionOf(mesh, corners[1]) - a).Cross(PositionOf(mesh, corners[2]) - a);
      areas[faces.Find(i)] += 0.5 * cross.Length();
    }
  }

  Crease MakeCrease(const Fold& fold) {
    const Vector3 from = PositionOf(mesh, fold.low);
    const Vector3 to = PositionOf(mesh, fold.high);
    const double length = (to - from).Length();
    Crease crease{ToFloats(from), ToFloats(to), {}};
    for (std::size_t i = 0; i < 2; ++i) {
      Vector3 inwards = InwardsOf(fold.triangles[i], fold.low, fold.high);
      if (inwards == Vector3::Zero) inwards = InwardsOf(fold.triangles[1 - i], fold.low, fold.high);
      const double area = areas[faces.Find(fold.triangles[i])];
      crease.faces[i] = {ToFloats(inwards), static_cast<float>(length > 0.0 ? area / length : 0.0)};
    }
    return crease;
  }

  const SceneMesh& mesh;
  const std::vector<std::uint32_t>& merged;
  Pieces faces;  // joined across the edges that are no folds
  std::vector<Fold> folds;
  std::vector<double> areas;
};

}  // namespace

MeshEdges FindEdges(const SceneMesh& mesh, const WorkReport* report) {
  MeshEdges found;
  Breaker breaker(report);
  const std::vector<std::uint32_t> merged = MergeByPlace(mesh, breaker);
  const std::vector<HalfEdge> edges = SortHalfEdges(mesh, merged, breaker);
  Pieces pieces(mesh.indices.size() / 3);
  CreaseMaker creases(mesh, merged);
  bool closed = !edges.empty() && edges.size() == mesh.indices.size();
  const HalfEdge* const end = edges.data() + edges.size();
  for (const HalfEdge* first = edges.data(); first != end;) {
    breaker.Step();
    const HalfEdge* next = first;
    while (next != end && next->low == first->low && next->high == first->high) ++next;
    closed = closed && AreBalanced(mesh, merged, first, next);
    for (const HalfEdge* other = first + 1; closed && other != next; ++other)
      pieces.Join(first->triangle, other->triangle);
    creases.Add(first, next);
    first = next;
  }
  found.solid = closed && FaceOutwards(mesh, pieces);
  found.creases = creases.Make(found.solid);
  return found;
}

}  // namespace zovhost
