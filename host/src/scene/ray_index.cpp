#include "scene/ray_index.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "projection/matrix.h"
#include "scene/triangle_clusters.h"
#include "scene/work_report.h"

namespace zovhost {

using Korvane::Vector3;

struct RayIndex::Handles {
  RTCDevice device = nullptr;
  RTCScene scene = nullptr;

  Handles() = default;
  Handles(const Handles&) = delete;
  Handles& operator=(const Handles&) = delete;
  ~Handles() {
    if (scene != nullptr) rtcReleaseScene(scene);
    if (device != nullptr) rtcReleaseDevice(device);
  }
};

namespace {

// A ray in the units of the index: radius 1 around the origin.
struct UnitRay {
  Vector3 start;
  Vector3 direction;  // unit length
  double advanced = 0.0;
};

// The largest component becomes 1 first, so that neither tiny nor huge directions lose their length.
Vector3 GetUnitDirection(const Vector3& direction) {
  const double largest = std::max({std::abs(direction.x), std::abs(direction.y), std::abs(direction.z)});
  return largest > 0.0 && std::isfinite(largest) ? (direction / largest).Normalized() : Vector3();
}

// Moves the start to where the ray enters the sphere around the scene. False when it passes it.
// |start + t direction|^2 = limit^2, solved around the point nearest to the centre.
bool AdvanceToScene(UnitRay& ray) {
  constexpr double limit = 1.001;
  const double nearest = -ray.start.Dot(ray.direction);
  const double missSquared = (ray.start + ray.direction * nearest).LengthSquared();
  if (!(missSquared <= limit * limit)) return false;
  const double half = std::sqrt(limit * limit - missSquared);
  if (nearest + half < 0.0) return false;
  ray.advanced = std::max(nearest - half, 0.0);
  ray.start += ray.direction * ray.advanced;
  return true;
}

// Where a ray meets the plane of a triangle. Embree's own distance stands when the triangle is too thin or
// too edge-on for its plane to say more.
double RefineDistance(const std::array<Vector3, 3>& corners, const Vector3& normal, const UnitRay& ray,
                      double found) {
  constexpr double mostDifference = 1e-4;
  const double slope = normal.Dot(ray.direction);
  const double refined = normal.Dot(corners[0] - ray.start) / slope;
  return std::abs(refined - found) <= mostDifference ? refined : found;
}

// What Embree asks of clusters.

void GiveBox(const RTCBoundsFunctionArguments* query) {
  const auto& clusters = *static_cast<const TriangleClusters*>(query->geometryUserPtr);
  const auto& [low, high] = clusters.GetBox(query->primID);
  *query->bounds_o = {low[0], low[1], low[2], 0.0F, high[0], high[1], high[2], 0.0F};
}

void TryCluster(const RTCIntersectFunctionNArguments* query) {
  if (query->N != 1 || query->valid[0] == 0) return;
  const auto& clusters = *static_cast<const TriangleClusters*>(query->geometryUserPtr);
  auto& [ray, hit] = *reinterpret_cast<RTCRayHit*>(query->rayhit);
  TriangleClusters::Ray tried = {
      {ray.org_x, ray.org_y, ray.org_z}, {ray.dir_x, ray.dir_y, ray.dir_z}, ray.tnear, ray.tfar};
  if (!clusters.Intersect(query->primID, tried, hit.primID)) return;
  ray.tfar = tried.to;
  hit.geomID = query->geomID;
}

RTCRayHit MakeQuery(const Vector3& start, const Vector3& direction) {
  RTCRayHit query{};
  query.ray.org_x = static_cast<float>(start.x);
  query.ray.org_y = static_cast<float>(start.y);
  query.ray.org_z = static_cast<float>(start.z);
  query.ray.dir_x = static_cast<float>(direction.x);
  query.ray.dir_y = static_cast<float>(direction.y);
  query.ray.dir_z = static_cast<float>(direction.z);
  query.ray.tfar = std::numeric_limits<float>::infinity();
  query.ray.mask = ~0u;
  query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
  return query;
}

}  // namespace

RayIndex::RayIndex(const SceneData& sceneData, const Vector3& sceneCentre, double sceneRadius)
    : data(sceneData), centre(sceneCentre), radius(sceneRadius), handles(std::make_unique<Handles>()) {}

RayIndex::~RayIndex() = default;

std::unique_ptr<RayIndex> RayIndex::Create(const SceneData& data, const Vector3& centre, double radius,
                                           WorkReport& report, std::size_t mostSingly) {
  std::unique_ptr<RayIndex> index(new RayIndex(data, centre, radius));
  return index->Build(report, mostSingly) ? std::move(index) : nullptr;
}

std::size_t RayIndex::CountTriangles(const ScenePart& part) const {
  return data.meshes[static_cast<std::size_t>(part.mesh)].indices.size() / 3;
}

bool RayIndex::Build(WorkReport& report, std::size_t mostSingly) {
  handles->device = rtcNewDevice(nullptr);
  if (handles->device == nullptr) return false;
  handles->scene = rtcNewScene(handles->device);
  if (handles->scene == nullptr) return false;
  std::size_t triangles = 0;
  for (const ScenePart& part : data.parts) triangles += CountTriangles(part);
  const bool large = triangles > mostSingly;
  rtcSetSceneFlags(handles->scene, RTC_SCENE_FLAG_ROBUST);
  for (const ScenePart& part : data.parts) large ? AddClusters(part, report) : AddPart(part, report);
  // From whichever thread of the builder's.
  rtcSetSceneProgressMonitorFunction(
      handles->scene,
      [](void* told, double fraction) { return static_cast<WorkReport*>(told)->Note(fraction); }, &report);
  rtcCommitScene(handles->scene);
  rtcSetSceneProgressMonitorFunction(handles->scene, nullptr, nullptr);
  if (report.IsCancelled()) throw WorkCancelled();
  return rtcGetDeviceError(handles->device) == RTC_ERROR_NONE;
}

void RayIndex::AddClusters(const ScenePart& part, WorkReport& report) {
  clusters.push_back(std::make_unique<TriangleClusters>(data, part, centre, radius, report));
  TriangleClusters& added = *clusters.back();
  RTCGeometry geometry = rtcNewGeometry(handles->device, RTC_GEOMETRY_TYPE_USER);
  rtcSetGeometryUserPrimitiveCount(geometry, static_cast<unsigned>(added.GetCount()));
  rtcSetGeometryUserData(geometry, &added);
  rtcSetGeometryBoundsFunction(geometry, GiveBox, nullptr);
  rtcSetGeometryIntersectFunction(geometry, TryCluster);
  rtcCommitGeometry(geometry);
  rtcAttachGeometry(handles->scene, geometry);
  rtcReleaseGeometry(geometry);
}

// The number of the geometry is the number of the part. Triangles are shared with the mesh, vertices are
// placed here: a ray index without instances answers fastest, and parts flattened by their placement work.
void RayIndex::AddPart(const ScenePart& part, WorkReport& report) {
  const SceneMesh& mesh = data.meshes[static_cast<std::size_t>(part.mesh)];
  RTCGeometry geometry = rtcNewGeometry(handles->device, RTC_GEOMETRY_TYPE_TRIANGLE);
  const std::size_t vertexCount = mesh.positions.size() / 3;
  auto* vertices = static_cast<float*>(rtcSetNewGeometryBuffer(
      geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 3 * sizeof(float), vertexCount));
  for (std::size_t i = 0; vertices != nullptr && i < vertexCount; ++i) {
    if (report.IsCancelled()) break;
    const Vector3 world = TransformPoint(part.transform, GetVertex(mesh.positions, i));
    ((world - centre) / radius).ToArray(vertices + 3 * i);
  }
  rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, mesh.indices.data(), 0,
                             3 * sizeof(std::uint32_t), mesh.indices.size() / 3);
  rtcCommitGeometry(geometry);
  rtcAttachGeometry(handles->scene, geometry);
  rtcReleaseGeometry(geometry);
}

bool RayIndex::Intersect(const Vector3& origin, const Vector3& direction, Scene::Hit& hit) const {
  UnitRay ray{(origin - centre) / radius, GetUnitDirection(direction)};
  if (!ray.start.IsFinite() || ray.direction == Vector3::Zero || !AdvanceToScene(ray)) return false;

  RTCRayHit query = MakeQuery(ray.start, ray.direction);
  RTCIntersectContext context;
  rtcInitIntersectContext(&context);
  rtcIntersect1(handles->scene, &context, &query);
  if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID) return false;

  const ScenePart& part = data.parts[query.hit.geomID];
  const SceneMesh& mesh = data.meshes[static_cast<std::size_t>(part.mesh)];
  std::array<Vector3, 3> corners;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t vertex = mesh.indices[3 * std::size_t{query.hit.primID} + i];
    corners[i] = (TransformPoint(part.transform, GetVertex(mesh.positions, vertex)) - centre) / radius;
  }
  const Vector3 normal = GetUnitDirection((corners[1] - corners[0]).Cross(corners[2] - corners[0]));
  const double found = RefineDistance(corners, normal, ray, double{query.ray.tfar});

  hit.distance = std::max(ray.advanced + found, 0.0) * radius;
  hit.point = centre + (ray.start + ray.direction * found) * radius;
  const bool away = normal.Dot(ray.direction) > 0.0;
  hit.normal = away ? -normal : normal;
  if (normal == Vector3::Zero) hit.normal = -ray.direction;
  hit.part = static_cast<int>(query.hit.geomID);
  hit.triangle = query.hit.primID;
  hit.fromBehind = away != IsMirrored(part.transform);
  return true;
}

}  // namespace zovhost
