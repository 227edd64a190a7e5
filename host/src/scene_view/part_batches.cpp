#include "scene_view/part_batches.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "projection/matrix.h"

namespace zovhost {

namespace {

using Korvane::Vector3;

constexpr std::size_t FEWEST_PARTS = 1000;         // a scene of fewer is drawn part by part
constexpr std::size_t LARGEST_PART = 20'000;       // triangles; larger ones are worth a draw of their own
constexpr std::size_t MOST_GATHERED = 16'000'000;  // triangles: placing a mesh anew copies it
constexpr double CELLS = 3.0;                      // along the longest side of the scene

using Key = std::array<int, 4>;  // material and cell

std::size_t CountIndices(const Scene& scene, const ScenePart& part) {
  return scene.GetMeshes()[static_cast<std::size_t>(part.mesh)].indices.size();
}

// In the order of the parts, whose cells are found by their centres.
std::map<Key, std::vector<std::size_t>> SortParts(const Scene& scene, const std::vector<bool>& mayGather) {
  const Vector3 size = scene.GetMax() - scene.GetMin();
  const double side = std::max({size.x, size.y, size.z}) / CELLS;
  std::map<Key, std::vector<std::size_t>> sorted;
  std::size_t triangles = 0;
  for (std::size_t i = 0; i < scene.GetParts().size(); ++i) {
    const ScenePart& part = scene.GetParts()[i];
    const std::size_t count = CountIndices(scene, part) / 3;
    if (!mayGather[i] || count > LARGEST_PART || triangles + count > MOST_GATHERED) continue;
    triangles += count;
    const Vector3 place = (part.bounds.GetCenter() - scene.GetMin()) / side;
    sorted[{scene.GetMeshes()[static_cast<std::size_t>(part.mesh)].material, static_cast<int>(place.x),
            static_cast<int>(place.y), static_cast<int>(place.z)}]
        .push_back(i);
  }
  return sorted;
}

// Normals turn with the matrix of cofactors; one that vanishes stays zero.
Vector3 TurnNormal(const Matrix4& m, const Vector3& normal) {
  const Vector3 x(m[0], m[1], m[2]);
  const Vector3 y(m[4], m[5], m[6]);
  const Vector3 z(m[8], m[9], m[10]);
  const Vector3 turned = y.Cross(z) * normal.x + z.Cross(x) * normal.y + x.Cross(y) * normal.z;
  const double largest = std::max({std::abs(turned.x), std::abs(turned.y), std::abs(turned.z)});
  return largest > 0.0 ? (turned / largest).Normalized() : Vector3();
}

// Missing values count as zeros, or as white.
template <typename T>
void Append(std::vector<T>& to, const std::vector<T>& from, std::size_t count, T missing) {
  from.empty() ? to.insert(to.end(), count, missing) : to.insert(to.end(), from.begin(), from.end());
}

class Gatherer {
 public:
  Gatherer(const Scene& from, PartBatch& to) : scene(from), batch(to) {}

  void Add(std::size_t index, bool withTexCoords, bool withColours) {
    const ScenePart& part = scene.GetParts()[index];
    const SceneMesh& mesh = scene.GetMeshes()[static_cast<std::size_t>(part.mesh)];
    const std::size_t count = mesh.positions.size() / 3;
    const auto first = static_cast<std::uint32_t>(batch.mesh.positions.size() / 3);
    for (std::size_t i = 0; i < count; ++i) AddVertex(part.transform, mesh, i);
    if (withTexCoords) Append(batch.mesh.texCoords, mesh.texCoords, 2 * count, 0.0F);
    if (withColours) Append(batch.mesh.colours, mesh.colours, 4 * count, std::uint8_t{255});
    const bool mirrored = IsMirrored(part.transform);
    batch.members.push_back({index, batch.mesh.indices.size(), mesh.indices.size(), first, mirrored});
    for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
      const std::uint32_t* const corner = mesh.indices.data() + i;
      batch.mesh.indices.insert(
          batch.mesh.indices.end(),
          {first + corner[0], first + corner[mirrored ? 2 : 1], first + corner[mirrored ? 1 : 2]});
    }
  }

 private:
  void AddVertex(const Matrix4& transform, const SceneMesh& mesh, std::size_t index) {
    const Vector3 place = TransformPoint(transform, GetVertex(mesh.positions, index)) - batch.origin;
    const Vector3 normal = TurnNormal(transform, GetVertex(mesh.normals, index));
    for (int axis = 0; axis < 3; ++axis) {
      batch.mesh.positions.push_back(static_cast<float>(place[axis]));
      batch.mesh.normals.push_back(static_cast<float>(normal[axis]));
    }
    batch.radius = std::max(batch.radius, place.Length());
  }

  const Scene& scene;
  PartBatch& batch;
};

PartBatch Gather(const Scene& scene, const std::vector<std::size_t>& parts, int material) {
  PartBatch batch;
  batch.mesh.material = material;
  Vector3 low = scene.GetMax();
  Vector3 high = scene.GetMin();
  bool withTexCoords = false;
  bool withColours = false;
  std::size_t vertices = 0;
  std::size_t indices = 0;
  for (const std::size_t index : parts) {
    const ScenePart& part = scene.GetParts()[index];
    const SceneMesh& mesh = scene.GetMeshes()[static_cast<std::size_t>(part.mesh)];
    for (int axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], part.bounds.GetCenter()[axis]);
      high[axis] = std::max(high[axis], part.bounds.GetCenter()[axis]);
    }
    withTexCoords = withTexCoords || !mesh.texCoords.empty();
    withColours = withColours || !mesh.colours.empty();
    vertices += mesh.positions.size() / 3;
    indices += mesh.indices.size();
  }
  batch.origin = (low + high) * 0.5;
  batch.mesh.positions.reserve(3 * vertices);
  batch.mesh.normals.reserve(3 * vertices);
  batch.mesh.indices.reserve(indices);
  Gatherer gatherer(scene, batch);
  for (const std::size_t index : parts) gatherer.Add(index, withTexCoords, withColours);
  return batch;
}

}  // namespace

std::vector<PartBatch> GatherParts(const Scene& scene, const std::vector<bool>& mayGather,
                                   WorkReport& report) {
  std::vector<PartBatch> batches;
  if (scene.GetParts().size() < FEWEST_PARTS) return batches;
  const auto sorted = SortParts(scene, mayGather);
  for (const auto& [key, parts] : sorted) {
    report.Tell(static_cast<double>(batches.size()) / static_cast<double>(sorted.size()));
    batches.push_back(Gather(scene, parts, key[0]));
  }
  return batches;
}

}  // namespace zovhost
