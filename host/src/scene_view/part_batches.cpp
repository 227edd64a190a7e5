#include "scene_view/part_batches.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <span>

#include "projection/matrix.h"

namespace zovhost {

namespace {

using Korvane::Vector3;

constexpr std::size_t FEWEST_PARTS = 1000;         // a scene of fewer is drawn part by part
constexpr std::size_t LARGEST_PART = 20'000;       // triangles; larger ones are worth a draw of their own
constexpr std::size_t MOST_GATHERED = 16'000'000;  // triangles: placing a mesh anew copies it
constexpr double CELLS = 3.0;                      // along the longest side of the scene
constexpr std::size_t LARGEST_BATCH = 250'000;     // triangles; made at once, while nobody reports

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

Vector3 Place(const PartBatch& batch, const ScenePart& part, const SceneMesh& mesh, std::size_t index) {
  return TransformPoint(part.transform, GetVertex(mesh.positions, index)) - batch.origin;
}

const SceneMesh& GetMesh(const Scene& scene, std::size_t part) {
  return scene.GetMeshes()[static_cast<std::size_t>(scene.GetParts()[part].mesh)];
}

PartBatch Gather(const Scene& scene, std::span<const std::size_t> parts, int material) {
  PartBatch batch;
  batch.material = material;
  Vector3 low = scene.GetMax();
  Vector3 high = scene.GetMin();
  for (const std::size_t index : parts) {
    const ScenePart& part = scene.GetParts()[index];
    const SceneMesh& mesh = GetMesh(scene, index);
    for (int axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], part.bounds.GetCenter()[axis]);
      high[axis] = std::max(high[axis], part.bounds.GetCenter()[axis]);
    }
    batch.hasTexCoords = batch.hasTexCoords || !mesh.texCoords.empty();
    batch.hasColours = batch.hasColours || !mesh.colours.empty();
    batch.members.push_back({index, batch.indexCount, mesh.indices.size(),
                             static_cast<std::uint32_t>(batch.vertexCount), IsMirrored(part.transform)});
    batch.vertexCount += mesh.positions.size() / 3;
    batch.indexCount += mesh.indices.size();
  }
  batch.origin = (low + high) * 0.5;
  for (const std::size_t index : parts) {
    const SceneMesh& mesh = GetMesh(scene, index);
    for (std::size_t i = 0; i < mesh.positions.size() / 3; ++i)
      batch.radius = std::max(batch.radius, Place(batch, scene.GetParts()[index], mesh, i).Length());
  }
  return batch;
}

// The first of them that do not make too large a batch; one at least.
std::size_t CountNext(const Scene& scene, std::span<const std::size_t> parts) {
  std::size_t triangles = 0;
  std::size_t count = 0;
  while (count < parts.size()) {
    triangles += CountIndices(scene, scene.GetParts()[parts[count]]) / 3;
    if (count > 0 && triangles > LARGEST_BATCH) break;
    ++count;
  }
  return count;
}

void AppendMember(const Scene& scene, const PartBatch& batch, const PartBatch::Member& member,
                  SceneMesh& joined) {
  const ScenePart& part = scene.GetParts()[member.part];
  const SceneMesh& mesh = GetMesh(scene, member.part);
  const std::size_t count = mesh.positions.size() / 3;
  for (std::size_t i = 0; i < count; ++i) {
    const Vector3 place = Place(batch, part, mesh, i);
    const Vector3 normal = TurnNormal(part.transform, GetVertex(mesh.normals, i));
    for (int axis = 0; axis < 3; ++axis) {
      joined.positions.push_back(static_cast<float>(place[axis]));
      joined.normals.push_back(static_cast<float>(normal[axis]));
    }
  }
  if (batch.hasTexCoords) Append(joined.texCoords, mesh.texCoords, 2 * count, 0.0F);
  if (batch.hasColours) Append(joined.colours, mesh.colours, 4 * count, std::uint8_t{255});
  const std::uint32_t first = member.firstVertex;
  for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
    const std::uint32_t* const corner = mesh.indices.data() + i;
    joined.indices.insert(joined.indices.end(), {first + corner[0], first + corner[member.mirrored ? 2 : 1],
                                                 first + corner[member.mirrored ? 1 : 2]});
  }
}

}  // namespace

SceneMesh MakeBatchMesh(const Scene& scene, const PartBatch& batch) {
  SceneMesh joined;
  joined.material = batch.material;
  joined.positions.reserve(3 * batch.vertexCount);
  joined.normals.reserve(3 * batch.vertexCount);
  joined.indices.reserve(batch.indexCount);
  for (const PartBatch::Member& member : batch.members) AppendMember(scene, batch, member, joined);
  return joined;
}

std::vector<PartBatch> GatherParts(const Scene& scene, const std::vector<bool>& mayGather,
                                   WorkReport& report) {
  std::vector<PartBatch> batches;
  if (scene.GetParts().size() < FEWEST_PARTS) return batches;
  const auto sorted = SortParts(scene, mayGather);
  std::size_t done = 0;
  for (const auto& [key, parts] : sorted) {
    for (std::span<const std::size_t> left(parts); !left.empty();) {
      report.Tell(static_cast<double>(done) / static_cast<double>(sorted.size()));
      const std::size_t count = CountNext(scene, left);
      batches.push_back(Gather(scene, left.first(count), key[0]));
      left = left.subspan(count);
    }
    ++done;
  }
  return batches;
}

}  // namespace zovhost
