#include "recordings/recorded_rays.h"

#include <bit>
#include <cmath>
#include <limits>

namespace zovview {

using Korvane::Vector3;
using zovhost::Scene;

namespace {

constexpr const char* FRONT = "front";
constexpr const char* BACK = "back";

bool ReadVector(Words& words, Vector3& vector) {
  constexpr double MOST = std::numeric_limits<double>::max();
  return words.Read(vector.x, -MOST, MOST) && words.Read(vector.y, -MOST, MOST) &&
         words.Read(vector.z, -MOST, MOST);
}

bool ReadHit(Words& words, Scene::Hit& hit) {
  if (!ReadVector(words, hit.point) || !ReadVector(words, hit.normal)) return false;
  if (!words.Read(hit.distance, 0.0, std::numeric_limits<double>::max())) return false;
  if (!words.Read(hit.part, 0, std::numeric_limits<int>::max())) return false;
  if (!words.Read(hit.triangle, std::uint32_t{0}, std::numeric_limits<std::uint32_t>::max())) return false;
  const std::string_view side = words.Next();
  hit.fromBehind = side == BACK;
  return hit.fromBehind || side == FRONT;
}

void AddVector(std::string& text, const Vector3& vector) {
  for (int axis = 0; axis < 3; ++axis) text.append(" ").append(FormatNumber(vector[axis]));
}

std::string FormatHit(const Scene::Hit& hit) {
  std::string text;
  AddVector(text, hit.point);
  AddVector(text, hit.normal);
  text.append(" ").append(FormatNumber(hit.distance));
  text.append(" ").append(std::to_string(hit.part)).append(" ").append(std::to_string(hit.triangle));
  return text.append(" ").append(hit.fromBehind ? BACK : FRONT);
}

}  // namespace

bool ReadRay(Words& words, RecordedRay& ray) {
  if (!ReadVector(words, ray.origin) || !ReadVector(words, ray.direction)) return false;
  return words.IsAtEnd() || ReadHit(words, ray.hit.emplace());
}

std::string FormatRay(const RecordedRay& ray) {
  std::string text;
  AddVector(text, ray.origin);
  AddVector(text, ray.direction);
  if (ray.hit.has_value()) text += FormatHit(*ray.hit);
  return text.substr(1);
}

RayBook::RayBook(Scene& ofScene, const RaysOfModel& recorded, bool notesAsked)
    : scene(ofScene), notes(notesAsked) {
  for (const RecordedRay& ray : recorded) {
    if (!ray.hit.has_value() || HasTriangle(*ray.hit)) known.emplace(MakeKey(ray.origin, ray.direction), ray);
  }
  scene.SetRayAnswers(this);
}

RayBook::~RayBook() { scene.SetRayAnswers(nullptr); }

// By their bits: rays that differ at all are two.
RayBook::Key RayBook::MakeKey(const Vector3& origin, const Vector3& direction) {
  Key key{};
  for (int axis = 0; axis < 3; ++axis) {
    key[static_cast<std::size_t>(axis)] = std::bit_cast<std::uint64_t>(origin[axis]);
    key[static_cast<std::size_t>(axis) + 3] = std::bit_cast<std::uint64_t>(direction[axis]);
  }
  return key;
}

bool RayBook::HasTriangle(const Scene::Hit& hit) const {
  const auto part = static_cast<std::size_t>(hit.part);
  if (part >= scene.GetParts().size()) return false;
  const auto mesh = static_cast<std::size_t>(scene.GetParts()[part].mesh);
  return hit.triangle < scene.GetMeshes()[mesh].indices.size() / 3;
}

RecordedRay RayBook::Find(const Key& key, const Vector3& origin, const Vector3& direction) const {
  const auto found = known.find(key);
  if (found != known.end()) return found->second;
  RecordedRay ray{origin, direction};
  Scene::Hit hit;
  const bool met = scene.IntersectTriangles(origin, direction, hit);
  if (met && hit.point.IsFinite() && hit.normal.IsFinite() && std::isfinite(hit.distance)) ray.hit = hit;
  return ray;
}

// A line of a recording holds no ray that is not finite; such ones meet nothing.
bool RayBook::Answer(const Vector3& origin, const Vector3& direction, Scene::Hit& hit) {
  if (!origin.IsFinite() || !direction.IsFinite()) return false;
  const Key key = MakeKey(origin, direction);
  const RecordedRay ray = Find(key, origin, direction);
  if (notes && noted.insert(key).second) asked.push_back(ray);
  if (ray.hit.has_value()) hit = *ray.hit;
  return ray.hit.has_value();
}

}  // namespace zovview
