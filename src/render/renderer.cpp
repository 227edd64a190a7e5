#include "korvane/renderer.h"

#include <cstddef>
#include <utility>

#include "camera/view_size.h"
#include "korvane/camera_parameters.h"

namespace Korvane {

Renderer::Renderer() = default;
Renderer::~Renderer() = default;

// ---- textures ----

void Renderer::IncrementTextureUsage(TextureID id) {
  if (id == TEXTURE_NONE) return;
  const auto [usage, isNew] = textureUsage.try_emplace(id, 0);
  ++usage->second;
  if (isNew) textureLoaded[id] = false;
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
    DestroyIcon(cached->second);
    stringTextures.erase(cached);
  }
}

void Renderer::LoadWantedTextures() {
  for (const auto& [id, count] : textureUsage) {
    bool& loaded = textureLoaded[id];
    if (count > 0 && !loaded) loaded = LoadTexture(id);
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
  DynamicIcon2D* const icon = create != nullptr ? (this->*create)(text.c_str()) : nullptr;
  if (icon == nullptr) return nullptr;
  stringTextures[id] = icon;
  stringUsage[id] = 1;
  return icon;
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

}  // namespace

bool Renderer::BeginSelection(const Vector2& point, const Box2& viewport, const CameraParameters& camera,
                              RenderMode mode) {
  selectionDistance = Math::MAX_VALUE;
  selection = -1;
  selectionRay = Ray();
  if (mode == RENDER_OVERLAY) {
    selectionRay = Ray(Vector3(point.x, point.y, -1.0), Vector3(0.0, 0.0, 1.0));
    return true;
  }
  if (mode != RENDER_PERSPECTIVE) return false;
  selectionRay = PerspectiveRay(point, viewport, camera);
  return true;
}

bool Renderer::EndSelection() { return false; }

bool Renderer::RenderSelectionGeometry(unsigned vertexCount, const float* vertices, int id) {
  if (vertices == nullptr) return true;
  for (unsigned quad = 0; quad < vertexCount / 4; ++quad) {
    const float* const first = vertices + std::size_t{12} * quad;
    const Vector3 a(first);
    const Vector3 b(first + 3);
    const Vector3 c(first + 6);
    const Vector3 d(first + 9);
    const Vector3 triangles[2][3] = {{a, b, c}, {c, d, a}};
    double nearest = Math::MAX_VALUE;
    bool hit = false;
    for (const auto& triangle : triangles) {
      double distance = Math::MAX_VALUE;
      hit = selectionRay.IntersectTriangle(triangle, distance) || hit;
      if (distance < nearest) nearest = distance;
    }
    if (!hit || !(nearest < selectionDistance)) continue;
    selectionDistance = nearest;
    selection = id;
  }
  return true;
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

}  // namespace Korvane
