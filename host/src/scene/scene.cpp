#include "zovhost/scene.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

#include "projection/matrix.h"
#include "scene/face_finder.h"
#include "scene/face_index.h"
#include "scene/mesh_repair.h"
#include "scene/ray_index.h"
#include "scene/work_report.h"

namespace zovhost {

using Korvane::Vector3;

namespace {

// What both a graphics card and the ray index still hold; guards against a small file that places a large
// mesh over and over.
constexpr std::size_t MOST_TRIANGLES = 64'000'000;
constexpr std::size_t FEW_TRIANGLES = 300;  // of a face, found in a millisecond or two

bool IsIndex(int index, std::size_t count) { return index >= 0 && static_cast<std::size_t>(index) < count; }

// Whether all values pass, looked at piece by piece.
template <typename T, typename Test>
bool AllPass(const std::vector<T>& values, const Test& test, WorkReport& report) {
  constexpr std::size_t PIECE = std::size_t{1} << 20;
  for (std::size_t first = 0; first < values.size(); first += PIECE) {
    report.Tell(static_cast<double>(first) / static_cast<double>(values.size()));
    const auto from = values.begin() + static_cast<std::ptrdiff_t>(first);
    const auto count = static_cast<std::ptrdiff_t>(std::min(PIECE, values.size() - first));
    if (!std::all_of(from, from + count, test)) return false;
  }
  return true;
}

const char* FindFault(const SceneMesh& mesh, std::size_t materialCount, WorkReport& report) {
  const std::size_t vertexCount = mesh.positions.size() / 3;
  const auto isUsable = [](float v) { return std::abs(v) <= LARGEST_COORDINATE; };
  const auto isVertex = [&](std::uint32_t index) { return index < vertexCount; };
  if (mesh.positions.size() % 3 != 0 || mesh.indices.size() % 3 != 0) return "a mesh is cut off";
  if (!mesh.normals.empty() && mesh.normals.size() != 3 * vertexCount) return "a mesh lacks normals";
  if (!mesh.texCoords.empty() && mesh.texCoords.size() != 2 * vertexCount)
    return "a mesh lacks texture coordinates";
  if (!mesh.colours.empty() && mesh.colours.size() != 4 * vertexCount) return "a mesh lacks colours";
  if (!IsIndex(mesh.material, materialCount)) return "a mesh names a material that is not there";
  if (!AllPass(mesh.indices, isVertex, report)) return "a triangle names a vertex that is not there";
  if (!AllPass(mesh.positions, isUsable, report)) return "a vertex is not finite or too far away";
  return nullptr;
}

const char* FindFault(const Image& image) {
  const bool whole =
      image.width > 0 && image.height > 0 &&
      image.rgba.size() == 4 * static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
  return whole ? nullptr : "an image is cut off";
}

const char* FindFault(const SceneData& data, WorkReport& report) {
  for (const Image& image : data.images)
    if (const char* fault = FindFault(image)) return fault;
  for (const SceneMaterial& material : data.materials)
    if (material.image != -1 && !IsIndex(material.image, data.images.size()))
      return "a material names an image that is not there";
  for (const SceneMesh& mesh : data.meshes)
    if (const char* fault = FindFault(mesh, data.materials.size(), report)) return fault;
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
Range GetRange(const ScenePart& part, const SceneMesh& mesh, WorkReport& report) {
  Range range;
  for (std::size_t i = 0; i < mesh.indices.size(); ++i) {
    report.Count(i, mesh.indices.size());
    range.Add(TransformPoint(part.transform, GetVertex(mesh.positions, mesh.indices[i])));
  }
  return range;
}

bool IsPlacement(const std::array<double, 16>& m) {
  return std::all_of(m.begin(), m.end(), [](double v) { return std::isfinite(v); });
}

void CompleteAllNormals(std::vector<SceneMesh>& meshes, WorkReport& report) {
  for (SceneMesh& mesh : meshes)
    if (mesh.normals.empty() && !mesh.positions.empty()) CompleteNormals(mesh, &report);
}

}  // namespace

Scene::Scene(SceneData sceneData) : data(std::move(sceneData)) {}
Scene::~Scene() = default;

Korvane::Box3 Scene::GetBoundingBox() const { return {GetCentre(), (maximum - minimum) * 0.5}; }

bool Scene::Intersect(const Vector3& origin, const Vector3& direction, Hit& hit) const {
  if (rayAnswers != nullptr) return rayAnswers->Answer(origin, direction, hit);
  return IntersectTriangles(origin, direction, hit);
}

bool Scene::IntersectTriangles(const Vector3& origin, const Vector3& direction, Hit& hit) const {
  return rays->Intersect(origin, direction, hit);
}

bool Scene::FindFace(const Hit& hit, SceneFace& face) const { return FindFace(hit, face, FaceLimits()); }

bool Scene::FindFace(const Hit& hit, SceneFace& face, const std::atomic<bool>& stopped) const {
  return FindFace(hit, face, FaceLimits{.stopped = &stopped});
}

bool Scene::FindSmallFace(const Hit& hit, SceneFace& face) const {
  return FindFace(hit, face, FaceLimits{.found = FEW_TRIANGLES, .looked = FaceIndex::FEWEST_TRIANGLES});
}

bool Scene::FindFace(const Hit& hit, SceneFace& face, const FaceLimits& limits) const {
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
  const auto mesh = static_cast<std::size_t>(data.parts[part].mesh);
  const SideIndex* const sides = faces != nullptr ? faces->Find(mesh) : nullptr;
  const bool found = FindFaceOf(data.meshes[mesh], sides, hit.triangle, face, limits);
  if (!found) face = {};
  return found;
}

void Scene::PrepareFaces() {
  if (faces == nullptr) faces = std::make_unique<FaceIndex>(data.meshes);
}

bool Scene::AreFacesReady() const { return faces != nullptr && faces->IsFinished(); }

const SceneMesh& Scene::GetMesh(std::size_t part) const {
  return data.meshes[static_cast<std::size_t>(data.parts[part].mesh)];
}

// Makes a scene of what it is given, step by step.
class SceneMaker {
 public:
  // Null, with one line, when it cannot be.
  std::unique_ptr<Scene> Make(SceneData data, WorkReport& report, std::string& error) {
    const char* fault = Check(data, report);
    if (fault == nullptr) fault = Measure(std::move(data), report);
    if (fault == nullptr) fault = Index(report);
    if (fault == nullptr) return std::move(scene);
    error = fault;
    return nullptr;
  }

 private:
  static const char* Check(SceneData& data, WorkReport& report) {
    report.BeginStep(0.0, 0.05, "Checking the triangles");
    if (const char* fault = FindFault(data, report)) return fault;
    report.BeginStep(0.05, 0.15, "Preparing surfaces");
    CompleteAllNormals(data.meshes, report);
    std::erase_if(data.parts, [&data](const ScenePart& part) {
      return data.meshes[static_cast<std::size_t>(part.mesh)].indices.empty();
    });
    data.upDirection.Normalize();
    if (data.upDirection == Vector3::Zero) data.upDirection = {0.0, 1.0, 0.0};
    return nullptr;
  }

  const char* Measure(SceneData data, WorkReport& report) {
    report.BeginStep(0.15, 0.25, "Measuring the parts");
    scene.reset(new Scene(std::move(data)));
    Range whole;
    for (ScenePart& part : scene->data.parts) {
      const SceneMesh& mesh = scene->data.meshes[static_cast<std::size_t>(part.mesh)];
      const Range range = GetRange(part, mesh, report);
      if (!IsPlacement(part.transform) || !range.IsUsable()) return "a part lies nowhere or too far away";
      part.bounds = range.GetBox();
      whole.Add(range.low);
      whole.Add(range.high);
      scene->triangleCount += mesh.indices.size() / 3;
    }
    scene->minimum = whole.low;
    scene->maximum = whole.high;
    return scene->GetRadius() > 0.0 ? nullptr : "everything in it lies at one point";
  }

  const char* Index(WorkReport& report) {
    report.BeginStep(0.25, 1.0, "Indexing for rays");
    scene->rays = RayIndex::Create(scene->data, scene->GetCentre(), scene->GetRadius(), report);
    return scene->rays != nullptr ? nullptr : "there is not enough memory to index it";
  }

  std::unique_ptr<Scene> scene;
};

std::unique_ptr<Scene> MakeScene(SceneData data, const Progress& progress, std::string& error) try {
  std::unique_ptr<Scene> scene;
  const bool wanted = RunReported(
      progress, [&](WorkReport& report) { scene = SceneMaker().Make(std::move(data), report, error); });
  if (wanted) return scene;
  error = "making it was broken off";
  return nullptr;
} catch (const std::bad_alloc&) {
  error = "there is not enough memory for it";
  return nullptr;
}

}  // namespace zovhost
