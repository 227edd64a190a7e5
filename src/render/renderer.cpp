#include "korvane/renderer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "camera/view_size.h"
#include "foundation/out_of_memory.h"
#include "korvane/camera_parameters.h"

namespace Korvane {

Renderer::Renderer() = default;
Renderer::~Renderer() = default;

// ---- textures ----

void Renderer::IncrementTextureUsage(TextureID id) {
  if (id == TEXTURE_NONE) return;
  textureLoaded.try_emplace(id, false);
  ++textureUsage.try_emplace(id, 0).first->second;
}

void Renderer::DecrementTextureUsage(TextureID id) {
  if (id == TEXTURE_NONE) return;
  const auto usage = textureUsage.find(id);
  if (usage != textureUsage.end() && usage->second > 0) --usage->second;
}

void Renderer::WantTexture(TextureID id, bool wanted) {
  if (wanted) {
    IncrementTextureUsage(id);
  } else {
    DecrementTextureUsage(id);
  }
}

void Renderer::ApplyTextureUsage() {
  ReleaseUnusedTextures();
  DestroyUnusedStrings();
  LoadWantedTextures();
}

void Renderer::ReleaseUnusedTextures() {
  for (const auto& [id, count] : textureUsage) {
    bool& loaded = textureLoaded[id];
    if (count != 0 || !loaded) continue;
    loaded = false;
    ReleaseTexture(id);
  }
}

void Renderer::DestroyUnusedStrings() {
  for (const auto& [id, count] : stringUsage) {
    const auto cached = stringTextures.find(id);
    if (count != 0 || cached == stringTextures.end()) continue;
    DynamicIcon2D* icon = cached->second;
    stringTextures.erase(cached);  // first: who asks for the text meanwhile gets a new icon
    DestroyIcon(icon);
  }
}

// While one is being loaded it counts as there and wanted: who applies the counts meanwhile neither loads it
// again nor frees it.
void Renderer::LoadWantedTextures() {
  for (auto& [id, count] : textureUsage) {
    bool& loaded = textureLoaded[id];
    if (count == 0 || loaded) continue;
    loaded = true;
    ++count;
    loaded = LoadTexture(id);
    --count;
  }
}

// ---- texts ----

// The kind of icon goes by the range of the number; numbers in no range have none.
Renderer::CreateIcon Renderer::FindStringIconCreator(int id) {
  struct Row {
    ResourceRange range;
    CreateIcon create;
  };
  static constexpr Row ROWS[] = {
      {STRINGS_TOOLTIP, &Renderer::CreateTooltip},
      {STRINGS_MESSAGE, &Renderer::CreateMessageHUD},
      {STRINGS_PIVOT_LABEL, &Renderer::CreatePivotLabel},
      {STRINGS_TOOLTIP_HUD, &Renderer::CreateTooltipHUD},
      {STRINGS_MINI_WHEEL_LABEL, &Renderer::CreateMiniWheelLabel},
      {STRINGS_LATER_MESSAGE, &Renderer::CreateMessageHUD},
  };
  for (const Row& row : ROWS) {
    if (row.range.Contains(id)) return row.create;
  }
  return nullptr;
}

DynamicIcon2D* Renderer::GetStringTexture(StringID id) {
  if (id == STRING_NONE) return nullptr;
  const auto cached = stringTextures.find(id);
  if (cached != stringTextures.end()) {
    ++stringUsage[id];
    return cached->second;
  }
  const std::wstring text = LoadStringResource(id);
  const CreateIcon create = FindStringIconCreator(id);
  if (create == nullptr) return nullptr;
  DynamicIcon2D* icon = (this->*create)(text.c_str());
  if (icon == nullptr) return nullptr;
  bool isFirst = false;
  DynamicIcon2D* const shared = OrFail([&] {
    std::uint64_t& usage = stringUsage[id];
    const auto [entry, isNew] = stringTextures.try_emplace(id, icon);
    isFirst = isNew;
    ++usage;
    return entry->second;
  });
  // Somebody has asked for the text while it was being made; the host may have answered both with one icon.
  if (!isFirst) DestroyIcon(icon);
  return shared;
}

DynamicIcon2D* Renderer::ReleaseStringTexture(StringID id) {
  if (id == STRING_NONE) return nullptr;
  const auto usage = stringUsage.find(id);
  if (usage != stringUsage.end() && usage->second > 0) --usage->second;
  return nullptr;
}

DynamicIcon2D* Renderer::WantStringTexture(StringID id, bool wanted) {
  return wanted ? GetStringTexture(id) : ReleaseStringTexture(id);
}

DynamicIcon2D* Renderer::CreateTooltipByID(int id) { return CreateTooltip(LoadStringResource(id).c_str()); }
DynamicIcon2D* Renderer::CreateTooltipHUDByID(int id) {
  return CreateTooltipHUD(LoadStringResource(id).c_str());
}
DynamicIcon2D* Renderer::CreateMessageHUDByID(int id) {
  return CreateMessageHUD(LoadStringResource(id).c_str());
}
DynamicIcon2D* Renderer::CreatePivotLabelByID(int id) {
  return CreatePivotLabel(LoadStringResource(id).c_str());
}
DynamicIcon2D* Renderer::CreateMiniWheelLabelByID(int id) {
  return CreateMiniWheelLabel(LoadStringResource(id).c_str());
}

// ---- picking ----

namespace {

// From the eye through a pixel; the wider half angle counts on both sides.
Ray PerspectiveRay(const Vector2& point, const Box2& viewport, const CameraParameters& camera) {
  const Vector3 forward = camera.centre - camera.eye;
  const Vector3 right = forward.Cross(camera.up);
  const Vector3 up = right.Cross(forward);
  const double distance = forward.Length();
  const FrustumTangents tangents(camera);
  const double horizontal = Math::Max(distance * tangents.right, distance * tangents.left);
  const double vertical = Math::Max(distance * tangents.top, distance * tangents.bottom);
  const double nx = (point.x - viewport.center.x) / viewport.halfExtent.x;
  const double ny = (point.y - viewport.center.y) / viewport.halfExtent.y;
  const Vector3 through = forward + right.Normalized() * horizontal * nx + up.Normalized() * vertical * ny;
  return {camera.eye, through.Normalized()};
}

int FindLongestAxis(const Vector3& v) {
  const Vector3 size(std::abs(v.x), std::abs(v.y), std::abs(v.z));
  if (size.x > size.y && size.x > size.z) return 0;
  return size.y > size.z ? 1 : 2;
}

// What is beyond the bound is as good as endless.
float Narrow(double value) {
  static constexpr double BOUND = 1e30;
  return static_cast<float>(std::clamp(value, -BOUND, BOUND));
}

// The smallest and the largest of some values; what is not a number is passed over.
struct Span {
  float low = std::numeric_limits<float>::infinity();
  float high = -std::numeric_limits<float>::infinity();

  void Add(float value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  float GetReach() const { return std::max(-low, high); }
  float GetDistance(float value) const { return std::max(low - value, value - high); }
};

}  // namespace

// A point shows on a side at depthSlope * point[axis] - slope * point[depthAxis]: the same for all of the
// ray, without any rounding, whatever its direction.
Renderer::RaySight::RaySight(const Ray& ray) : depthAxis(FindLongestAxis(ray.direction)) {
  const double along = ray.direction[depthAxis];
  depthSlope = Narrow(along);
  for (int i = 0; i < 2; ++i) {
    const int axis = (depthAxis + 1 + i) % 3;
    const double slope = ray.direction[axis];
    const double start = along * ray.origin[axis] - slope * ray.origin[depthAxis];
    sides[i] = {axis, Narrow(slope), Narrow(start)};
    reach = std::max(reach, Narrow(std::abs(ray.origin[axis])));
  }
  reach = std::max(reach, Narrow(std::abs(ray.origin[depthAxis])));
}

// With all coordinates at most R, the exact test mistakes its sums of three products for less than
// 1000 R^2 roundings of 2^-53. Over its smallest determinant, 2^-23, times the width of a quad on a side, at
// most 4 R, that is less than 2^-18 R^3. What is computed here in floats adds less than 13 R roundings of
// 2^-24.
bool Renderer::RaySight::GoesPast(unsigned quadCount, const float* quads) const {
  static constexpr float EXACT_ROUNDING = 0x1p-17F;
  static constexpr float OWN_ROUNDING = 0x1p-19F;
  const float* const end = quads + std::size_t{12} * quadCount;
  const Side first = sides[0];
  const Side second = sides[1];
  const float along = depthSlope;
  Span onFirst;
  Span onSecond;
  float deepest = 0.0F;
  for (const float* corner = quads; corner != end; corner += 3) {
    const float depth = corner[depthAxis];
    onFirst.Add(along * corner[first.axis] - first.slope * depth);
    onSecond.Add(along * corner[second.axis] - second.slope * depth);
    deepest = std::max(deepest, std::abs(depth));
  }
  // The longest slope of three is more than half of the ray, and no other is longer.
  const float size = reach + deepest + 2.0F * std::max(onFirst.GetReach(), onSecond.GetReach());
  const float margin = size * (size * size * EXACT_ROUNDING + OWN_ROUNDING);
  return onFirst.GetDistance(first.start) > margin || onSecond.GetDistance(second.start) > margin;
}

void Renderer::Aim(const Ray& ray) {
  selectionRay = ray;
  selectionSight = RaySight(ray);
}

bool Renderer::BeginSelection(const Vector2& point, const Box2& viewport, const CameraParameters& camera,
                              RenderMode mode) {
  selectionDistance = Math::MAX_VALUE;
  selection = -1;
  Aim(Ray());
  if (mode == RENDER_OVERLAY) {
    Aim(Ray(Vector3(point.x, point.y, -1.0), Vector3(0.0, 0.0, 1.0)));
    return true;
  }
  if (mode != RENDER_PERSPECTIVE) return false;
  Aim(PerspectiveRay(point, viewport, camera));
  return true;
}

bool Renderer::EndSelection() { return false; }

bool Renderer::RenderSelectionGeometry(unsigned vertexCount, const float* vertices, int id) {
  const unsigned quadCount = vertexCount / 4;
  if (vertices == nullptr || selectionSight.GoesPast(quadCount, vertices)) return true;
  for (unsigned i = 0; i < quadCount; ++i) {
    const float* const quad = vertices + std::size_t{12} * i;
    if (quadCount == 1 || !selectionSight.GoesPast(1, quad)) TestQuad(quad, id);
  }
  return true;
}

void Renderer::TestQuad(const float* quad, int id) {
  const Vector3 a(quad);
  const Vector3 b(quad + 3);
  const Vector3 c(quad + 6);
  const Vector3 d(quad + 9);
  const Vector3 triangles[2][3] = {{a, b, c}, {c, d, a}};
  double nearest = Math::MAX_VALUE;
  bool hit = false;
  for (const auto& triangle : triangles) {
    double distance = Math::MAX_VALUE;
    hit = selectionRay.IntersectTriangle(triangle, distance) || hit;
    if (distance < nearest) nearest = distance;
  }
  if (!hit || !(nearest < selectionDistance)) return;
  selectionDistance = nearest;
  selection = id;
}

int Renderer::GetSelection() const { return selection; }

// ---- what a host may know better ----

bool Renderer::QueryMouseRaySceneIntersection(int /*x*/, int /*y*/, const Vector3& origin,
                                              const Vector3& direction, Vector3& hit) {
  return QueryRaySceneIntersection(origin, direction, hit);
}

bool Renderer::QueryScreenRectRaySceneIntersection(int /*left*/, int /*bottom*/, int /*right*/, int /*top*/,
                                                   Vector3& /*hit*/) {
  return false;
}

bool Renderer::BeginMouseoverComponent(bool /*highlightFaces*/) { return false; }
bool Renderer::GetMouseoverComponent(Vector2 /*pixel*/, Vector3& /*point*/, Vector3& /*normal*/) {
  return false;
}
bool Renderer::EndMouseoverComponent() { return false; }
bool Renderer::ProjectToScreen(Vector3 /*point*/, Vector2& /*pixel*/) { return false; }

// ---- cursors ----

bool Renderer::SetCursorID(CursorID id) {
  if (cursorQueueOpen) {
    queuedCursor = id;
    return false;
  }
  currentCursor = id;
  return SetCursorIcon(id);
}

void Renderer::QueueSetCursorID(bool open) {
  if (open) {
    if (!cursorQueueOpen) queuedCursor = CURSOR_NONE;
    cursorQueueOpen = true;
    return;
  }
  if (cursorQueueOpen && queuedCursor != currentCursor) {
    currentCursor = std::exchange(queuedCursor, CURSOR_NONE);
    SetCursorIcon(currentCursor);
  }
  cursorQueueOpen = false;
}

void Renderer::DropCursorQueue() { cursorQueueOpen = false; }

}  // namespace Korvane
