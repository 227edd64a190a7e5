#include "zovhost/scene.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

#include "projection/matrix.h"
#include "scene/face_finder.h"
#include "scene/mesh_repair.h"
#include "scene/ray_index.h"

namespace zovhost {

using Korvane::Vector3;

namespace {

// What both a graphics card and the ray index still hold; guards against a small file that places a large
// mesh over and over.
constexpr std::size_t MOST_TRIANGLES = 64'000'000;

bool IsIndex(int index, std::size_t count) { return index >= 0 && static_cast<std::size_t>(index) < count; }

const char* FindFault(const SceneMesh& mesh, std::size_t materialCount) {
  const std::size_t vertexCount = mesh.positions.size() / 3;
  const auto isUsable = [](float v) { return std::abs(v) <= LARGEST_COORDINATE; };
  const auto isVertex = [&](std::uint32_t index) { return index < vertexCount; };
  if (mesh.positions.size() % 3 != 0 || mesh.indices.size() % 3 != 0) return "a mesh is cut off";
  if (!mesh.normals.empty() && mesh.normals.size() != 3 * vertexCount) return "a mesh lacks normals";
  if (!mesh.texCoords.empty() && mesh.texCoords.size() != 2 * vertexCount)
    return "a mesh lacks texture coordinates";
  if (!mesh.colours.empty() && mesh.colours.size() != 4 * vertexCount) return "a mesh lacks colours";
  if (!IsIndex(mesh.material, materialCount)) return "a mesh names a material that is not there";
  if (!std::all_of(mesh.indices.begin(), mesh.indices.end(), isVertex))
    return "a triangle names a vertex that is not there";
  if (!std::all_of(mesh.positions.begin(), mesh.positions.end(), isUsable))
    return "a vertex is not finite or too far away";
  return nullptr;
}

const char* FindFault(const Image& image) {
  const bool whole =
      image.width > 0 && image.height > 0 &&
      image.rgba.size() == 4 * static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
  return whole ? nullptr : "an image is cut off";
}

const char* FindFault(const SceneData& data) {
  for (const Image& image : data.images)
    if (const char* fault = FindFault(image)) return fault;
  for (const SceneMaterial& material : data.materials)
    if (material.image != -1 && !IsIndex(material.image, data.images.size()))
      return "a material names an image that is not there";
  for (const SceneMesh& mesh : data.meshes)
    if (const char* fault = FindFault(mesh, data.materials.size())) return fault;
  std::size_t triangles = 0;
  for (const ScenePart& part : data.parts) {
    if (!IsIndex(part.mesh, data.meshes.size())) return "a part names a mesh that is not there";
    triangles += data.meshes[static_cast<std::size_t>(part.mesh)].indices.size() / 3;
  }
  if (triangles == 0) return "there are no triangles in it";
  if (triangles > MOST_TRIANGLES) return "it has too many triangles";
  return nullptr;
}

struct Range {
  Vector3 low = Vector3(Korvane::Math::MAX_VALUE);
  Vector3 high = Vector3(-Korvane::Math::MAX_VALUE);

  void Add(const Vector3& point) {
    for (int axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], point[axis]);
      high[axis] = std::max(high[axis], point[axis]);
    }
  }
  bool IsUsable() const {
    return std::max(low.Length(), high.Length()) <= LARGEST_COORDINATE && low.IsFinite() && high.IsFinite();
  }
  Korvane::Box3 GetBox() const { return {(low + high) * 0.5, (high - low) * 0.5}; }
};

// Vertices that no triangle uses do not count.
Range GetRange(const ScenePart& part, const SceneMesh& mesh) {
  Range range;
  for (const std::uint32_t index : mesh.indices)
    range.Add(TransformPoint(part.transform, GetVertex(mesh.positions, index)));
  return range;
}

bool IsPlacement(const std::array<double, 16>& m) {
  return std::all_of(m.begin(), m.end(), [](double v) { return std::isfinite(v); });
}

void CompleteNormals(std::vector<SceneMesh>& meshes) {
  for (SceneMesh& mesh : meshes)
    if (mesh.normals.empty() && !mesh.positions.empty()) CompleteNormals(mesh);
}

}  // namespace

Scene::Scene(SceneData sceneData) : data(std::move(sceneData)) {}
Scene::~Scene() = default;

Korvane::Box3 Scene::GetBoundingBox() const { return {GetCentre(), (maximum - minimum) * 0.5}; }

bool Scene::Intersect(const Vector3& origin, const Vector3& direction, Hit& hit) const {
  return rays->Intersect(origin, direction, hit);
}

bool Scene::FindFace(const Hit& hit, SceneFace& face) const {
  const auto part = static_cast<std::size_t>(hit.part);
  const bool exists =
      hit.part >= 0 && part < data.parts.size() && hit.triangle < GetMesh(part).indices.size() / 3;
  if (!exists) {
    face = {};
    return false;
  }
  const bool known =
      face.part == hit.part && std::binary_search(face.triangles.begin(), face.triangles.end(), hit.triangle);
  if (known) return true;
  face.part = hit.part;
  FindFaceOf(GetMesh(part), hit.triangle, face);
  return true;
}

const SceneMesh& Scene::GetMesh(std::size_t part) const {
  return data.meshes[static_cast<std::size_t>(data.parts[part].mesh)];
}

std::unique_ptr<Scene> MakeScene(SceneData data, std::string& error) try {
  const auto fail = [&error](const char* reason) {
    error = reason;
    return nullptr;
  };
  if (const char* fault = FindFault(data)) return fail(fault);
  CompleteNormals(data.meshes);
  std::erase_if(data.parts, [&data](const ScenePart& part) {
    return data.meshes[static_cast<std::size_t>(part.mesh)].indices.empty();
  });
  data.upDirection.Normalize();
  if (data.upDirection == Vector3::Zero) data.upDirection = {0.0, 1.0, 0.0};

  std::unique_ptr<Scene> scene(new Scene(std::move(data)));
  Range whole;
  for (ScenePart& part : scene->data.parts) {
    const SceneMesh& mesh = scene->data.meshes[static_cast<std::size_t>(part.mesh)];
    const Range range = GetRange(part, mesh);
    if (!IsPlacement(part.transform) || !range.IsUsable()) return fail("a part lies nowhere or too far away");
    part.bounds = range.GetBox();
    whole.Add(range.low);
    whole.Add(range.high);
    scene->triangleCount += mesh.indices.size() / 3;
  }
  scene->minimum = whole.low;
  scene->maximum = whole.high;
  if (!(scene->GetRadius() > 0.0)) return fail("everything in it lies at one point");
  scene->rays = RayIndex::Create(scene->data, scene->GetCentre(), scene->GetRadius());
  if (scene->rays == nullptr) return fail("there is not enough memory to index it");
  return scene;
} catch (const std::bad_alloc&) {
  error = "there is not enough memory for it";
  return nullptr;
}

}  // namespace zovhost
