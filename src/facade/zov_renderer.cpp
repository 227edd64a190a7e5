// What a host calls, and what becomes of an operation that it does not override.
#include "zov/zov_renderer.h"

#include <cstddef>

#include "facade/zov_renderer_p.h"
#include "zov/zov_geom_utils.h"

using Korvane::Renderer;
using Korvane::Vector2;
using Korvane::Vector3;
using Utils = zovGeomUtils;

zovRenderer::zovRenderer() : inner(std::make_unique<zovRendererP>(*this)) {}

// First of all, nobody within calls what is no longer there.
zovRenderer::~zovRenderer() { inner->GetLifeline().Cut(); }

void zovRenderer::apply_texture_usage() { inner->Renderer::ApplyTextureUsage(); }

bool zovRenderer::begin_selection(const qmPoint2& point, const qmBox2& viewport,
                                  const zovCameraParameters& camera, zovRenderMode mode) {
  return inner->Renderer::BeginSelection(Utils::qmpnt_to_kvvec(point), Utils::qmbox_to_kvbox(viewport),
                                         camera.korvane(), static_cast<Renderer::RenderMode>(mode));
}

bool zovRenderer::end_selection() { return inner->Renderer::EndSelection(); }

bool zovRenderer::render_selection_geometry(unsigned vertex_count, qiIterator<float> vertices, int id) {
  const bool are_there = std::size_t{3} * vertex_count <= vertices.count();
  const unsigned count = are_there ? vertex_count : static_cast<unsigned>(vertices.count() / 3);
  return inner->Renderer::RenderSelectionGeometry(count, vertices.data(), id);
}

int zovRenderer::get_selection() const { return inner->Renderer::GetSelection(); }

// An operation that finds a point leaves it alone where it finds none.
bool zovRenderer::query_mouse_ray_scene_intersection(int x, int y, const qmPoint3& origin,
                                                     const qmUnitVec3& direction, qmPoint3& hit) {
  Vector3 found = Utils::qmpnt_to_kvvec(hit);
  const bool isHit = inner->Renderer::QueryMouseRaySceneIntersection(x, y, Utils::qmpnt_to_kvvec(origin),
                                                                     Utils::qmuvc_to_kvvec(direction), found);
  hit = Utils::kvvec_to_qmpnt(found);
  return isHit;
}

bool zovRenderer::query_screen_rect_ray_scene_intersection(int left, int bottom, int right, int top,
                                                           qmPoint3& hit) {
  Vector3 found = Utils::qmpnt_to_kvvec(hit);
  const bool isHit = inner->Renderer::QueryScreenRectRaySceneIntersection(left, bottom, right, top, found);
  hit = Utils::kvvec_to_qmpnt(found);
  return isHit;
}

bool zovRenderer::begin_mouseover_component(bool highlight_faces) {
  return inner->Renderer::BeginMouseoverComponent(highlight_faces);
}

bool zovRenderer::get_mouseover_component(const qmPoint2& pixel, qmPoint3& point, qmUnitVec3& normal) {
  Vector3 foundPoint = Utils::qmpnt_to_kvvec(point);
  Vector3 foundNormal = Utils::qmuvc_to_kvvec(normal);
  const bool isHit =
      inner->Renderer::GetMouseoverComponent(Utils::qmpnt_to_kvvec(pixel), foundPoint, foundNormal);
  point = Utils::kvvec_to_qmpnt(foundPoint);
  normal = Utils::kvvec_to_qmuvc(foundNormal);
  return isHit;
}

bool zovRenderer::end_mouseover_component() { return inner->Renderer::EndMouseoverComponent(); }

bool zovRenderer::set_cursor_id(zovCursorID id) {
  return inner->Renderer::SetCursorID(static_cast<Korvane::CursorID>(id));
}

bool zovRenderer::project_to_screen(const qmPoint3& point, qmPoint2& pixel) {
  Vector2 found = Utils::qmpnt_to_kvvec(pixel);
  const bool isThere = inner->Renderer::ProjectToScreen(Utils::qmpnt_to_kvvec(point), found);
  pixel = Utils::kvvec_to_qmpnt(found);
  return isThere;
}

// ---- pointer, textures and texts ----

zovCursorID zovRenderer::get_cursor_id() const { return static_cast<zovCursorID>(inner->GetCursorID()); }
void zovRenderer::queue_set_cursor_id(bool open) { inner->QueueSetCursorID(open); }

void zovRenderer::increment_texture_usage(zovTextureID id) {
  inner->IncrementTextureUsage(static_cast<Korvane::TextureID>(id));
}
void zovRenderer::decrement_texture_usage(zovTextureID id) {
  inner->DecrementTextureUsage(static_cast<Korvane::TextureID>(id));
}
void zovRenderer::want_texture(zovTextureID id, bool wanted) {
  inner->WantTexture(static_cast<Korvane::TextureID>(id), wanted);
}

std::shared_ptr<zovDynamicIcon2D> zovRenderer::get_string_texture(zovStringID id) {
  return inner->FindOutside(inner->GetStringTexture(static_cast<Korvane::StringID>(id)));
}
std::shared_ptr<zovDynamicIcon2D> zovRenderer::release_string_texture(zovStringID id) {
  return inner->FindOutside(inner->ReleaseStringTexture(static_cast<Korvane::StringID>(id)));
}
std::shared_ptr<zovDynamicIcon2D> zovRenderer::want_string_texture(zovStringID id, bool wanted) {
  return inner->FindOutside(inner->WantStringTexture(static_cast<Korvane::StringID>(id), wanted));
}

std::shared_ptr<zovDynamicIcon2D> zovRenderer::create_message_hud_by_id(zovStringID id) {
  return inner->GiveAway(inner->CreateMessageHUDByID(static_cast<int>(id)));
}
std::shared_ptr<zovDynamicIcon2D> zovRenderer::create_miniwheel_label_by_id(zovStringID id) {
  return inner->GiveAway(inner->CreateMiniWheelLabelByID(static_cast<int>(id)));
}
std::shared_ptr<zovDynamicIcon2D> zovRenderer::create_pivot_label_by_id(zovStringID id) {
  return inner->GiveAway(inner->CreatePivotLabelByID(static_cast<int>(id)));
}
std::shared_ptr<zovDynamicIcon2D> zovRenderer::create_tooltip_by_id(zovStringID id) {
  return inner->GiveAway(inner->CreateTooltipByID(static_cast<int>(id)));
}
std::shared_ptr<zovDynamicIcon2D> zovRenderer::create_tooltip_hud_by_id(zovStringID id) {
  return inner->GiveAway(inner->CreateTooltipHUDByID(static_cast<int>(id)));
}

Renderer& zovRenderer::korvane() { return *inner; }
