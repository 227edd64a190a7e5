// What the library asks of a renderer, in the types of the host.
#include "facade/zov_renderer_p.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

#include "foundation/out_of_memory.h"
#include "korvane/icon3d.h"
#include "korvane/pixel_icon2d.h"
#include "zov/zov_geom_utils.h"
#include "zov/zov_icon_utils.h"
#include "zov/zov_string_converter.h"

using Korvane::Box2;
using Korvane::CameraParameters;
using Korvane::CursorID;
using Korvane::DynamicIcon2D;
using Korvane::MenuID;
using Korvane::OrFail;
using Korvane::PixelIcon2D;
using Korvane::ResourceIcon2D;
using Korvane::ResourceIcon3D;
using Korvane::TextureID;
using Korvane::Vector2;
using Korvane::Vector3;
using Utils = zovGeomUtils;

namespace {

// A pick in a viewport of less than this has nowhere to be.
constexpr double SMALLEST_VIEWPORT = 0.00001;

qmString ToText(const wchar_t* text) {
  int length = -1;
  return {text, qmStringWcs, length};
}

// The library deletes an image that it was given, which no shared pointer allows.
PixelIcon2D* CopyImage(const PixelIcon2D& image) {
  auto copy = std::make_unique<PixelIcon2D>(image.GetImageWidth(), image.GetImageHeight(),
                                            image.GetImagePixels(), image.GetPixelFormat());
  copy->SetBounds(image.GetBounds());
  copy->SetVisible(image.IsVisible());
  copy->SetChangingInTimeOpacity(image.GetChangingInTimeOpacity());
  return copy.release();
}

int NumberOf(const DynamicIcon2D& icon) { return icon.GetID(); }
TextureID NumberOf(const ResourceIcon2D& icon) { return icon.GetTextureResourceID(); }
Korvane::ModelID NumberOf(const ResourceIcon3D& icon) { return icon.GetModelResourceID(); }

}  // namespace

zovRendererP::zovRendererP(zovRenderer& outside) : owner(outside) {}
zovRendererP::~zovRendererP() = default;

bool zovRendererP::Create() { return owner->create(); }
bool zovRendererP::Destroy() { return owner->destroy(); }

// ---- textures and texts ----

void zovRendererP::ApplyTextureUsage() { owner->apply_texture_usage(); }
bool zovRendererP::LoadTexture(TextureID id) { return owner->load_texture(static_cast<zovTextureID>(id)); }
void zovRendererP::ReleaseTexture(TextureID id) { owner->release_texture(static_cast<zovTextureID>(id)); }

std::wstring zovRendererP::LoadStringResource(int id) {
  return OrFail([&] {
    return zovStringConverter::to_KORVANE_STRING_T(owner->load_string_resource(static_cast<zovStringID>(id)));
  });
}

PixelIcon2D* zovRendererP::CreateImageData(TextureID id) {
  return OrFail([&]() -> PixelIcon2D* {
    const auto asked = owner.operator->();  // until the picture has gone
    const std::shared_ptr<zovPixelIcon2D> image = asked->create_image_data(static_cast<zovTextureID>(id));
    return image != nullptr ? CopyImage(*zovIconUtils::unwrap_icon(image)) : nullptr;
  });
}

// ---- passes ----

bool zovRendererP::BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) {
  return OpenPass(owner->begin_render(Utils::kvbox_to_qmbox(viewport), zovCameraParameters(camera),
                                      static_cast<zovRenderMode>(mode)));
}

bool zovRendererP::EndRender() {
  ClosePass();
  return owner->end_render();
}

bool zovRendererP::OpenPass(bool isOpen) {
  if (isOpen) ++openPasses;
  return isOpen;
}

void zovRendererP::ClosePass() {
  if (openPasses > 0) --openPasses;
}

// Most pieces are of so few quads that to call for a copy of them would cost more than the copy.
template <std::size_t perVertex>
inline qiIterator<float> zovRendererP::CopyInto(Room& room, const float* values, unsigned vertexCount) {
  static constexpr std::size_t PER_QUAD = 4 * perVertex;
  if (values == nullptr) return {};
  const std::size_t count = perVertex * vertexCount;
  if (room.size < count) room = {std::make_unique<float[]>(count), count};
  float* to = room.numbers.get();
  for (unsigned quads = vertexCount / 4; quads != 0; --quads) {
    std::memcpy(to, values, PER_QUAD * sizeof(float));
    to += PER_QUAD;
    values += PER_QUAD;
  }
  std::copy_n(values, perVertex * (vertexCount % 4), to);
  return {room.numbers.get(), count};
}

bool zovRendererP::RenderGeometry(unsigned vertexCount, const float* vertices, const float* texCoords,
                                  const MaterialParams* material) {
  if (roomTaken) return RenderWithin(vertexCount, vertices, texCoords, material);
  roomTaken = true;
  const bool rendered = OrFail([&] {
    const zovMaterialParameters outside =
        material != nullptr ? zovMaterialParameters(*material) : zovMaterialParameters();
    const auto copiedVertices = CopyInto<3>(numbers.vertices, vertices, vertexCount);
    const auto copiedTexCoords = CopyInto<2>(numbers.texCoords, texCoords, vertexCount);
    return owner.GetUncounted().render_geometry(vertexCount, copiedVertices, copiedTexCoords, outside);
  });
  roomTaken = false;
  return rendered;
}

// What the host is drawing stays where it is.
bool zovRendererP::RenderWithin(unsigned vertexCount, const float* vertices, const float* texCoords,
                                const MaterialParams* material) {
  Numbers drawn;
  std::swap(drawn, numbers);
  roomTaken = false;
  const bool rendered = RenderGeometry(vertexCount, vertices, texCoords, material);
  std::swap(drawn, numbers);
  roomTaken = true;
  return rendered;
}

bool zovRendererP::BeginSelection(const Vector2& point, const Box2& viewport, const CameraParameters& camera,
                                  RenderMode mode) {
  const bool hasSize = viewport.halfExtent.Length() > SMALLEST_VIEWPORT;
  const qmBox2 box = hasSize ? Utils::kvbox_to_qmbox(viewport) : qmBox2(qmPoint2(), qmPoint2());
  return OpenPass(owner->begin_selection(Utils::kvvec_to_qmpnt(point), box, zovCameraParameters(camera),
                                         static_cast<zovRenderMode>(mode)));
}

bool zovRendererP::EndSelection() {
  ClosePass();
  return owner->end_selection();
}

bool zovRendererP::RenderSelectionGeometry(unsigned vertexCount, const float* vertices, int id) {
  return owner.GetUncounted().render_selection_geometry(vertexCount, {vertices, std::size_t{3} * vertexCount},
                                                        id);
}

int zovRendererP::GetSelection() const { return owner->get_selection(); }

// ---- icons ----

// Whoever kept an icon that only borrows has it with a copy from now on, since what it borrows may go. If it
// has gone already, what is left of it is its number; where there is no memory for either, an icon that shows
// nothing, which has been made before the host could keep anything.
template <class Facade, class Inner>
bool zovRendererP::Show(const std::shared_ptr<Facade>& outside, Inner& icon) {
  auto& spare = std::get<std::unique_ptr<Inner>>(spares);
  if (spare == nullptr) spare = OrFail([] { return std::make_unique<Inner>(decltype(NumberOf(icon)){}); });
  if (outside == nullptr || spare == nullptr) return false;
  const Korvane::Lifeline::Watch stays(icon.GetLifeline());
  const auto number = NumberOf(icon);
  const bool rendered = OrFail([&] { return owner->render(outside); });
  if (outside->own != nullptr || outside.use_count() == 1) return rendered;
  std::unique_ptr<Inner> copy =
      OrFail([&] { return stays ? std::make_unique<Inner>(icon) : std::make_unique<Inner>(number); });
  outside->take(copy != nullptr ? std::move(copy) : std::move(spare));
  return rendered;
}

bool zovRendererP::Render(ResourceIcon3D* icon) {
  if (icon == nullptr) return false;
  return Show(zovIconUtils::wrap_icon(icon), *icon);
}
bool zovRendererP::Render(ResourceIcon2D* icon) {
  if (icon == nullptr) return false;
  return Show(zovIconUtils::wrap_icon(icon), *icon);
}
bool zovRendererP::Render(DynamicIcon2D* icon) {
  if (icon == nullptr) return false;
  const std::shared_ptr<zovDynamicIcon2D> known = FindOutside(icon);
  if (known != nullptr) return owner->render(known);
  return Show(zovIconUtils::wrap_icon(icon), *icon);
}

// What there is no memory to hold goes back to the host at once.
template <class Make>
DynamicIcon2D* zovRendererP::Hold(const Make& make) {
  const std::shared_ptr<zovDynamicIcon2D> icon = OrFail(make);
  DynamicIcon2D* const within = zovIconUtils::unwrap_icon(icon);
  if (within == nullptr) return nullptr;
  const bool held = OrFail([&] {
    Keep(icon, within);
    return true;
  });
  if (held) return within;
  OrFail([&] { owner->destroy_icon(icon); });
  return nullptr;
}

// All or nothing.
void zovRendererP::Keep(const std::shared_ptr<zovDynamicIcon2D>& icon, DynamicIcon2D* within) {
  const auto isSharedAlike = [&](const auto& each) {
    return !each.owner_before(icon) && !icon.owner_before(each) && each == icon;
  };
  const auto known = lent.find(within);
  if (known == lent.end()) {
    lent.emplace(within, Lent{{icon}, 1});
    return;
  }
  Lent& held = known->second;
  const auto alike = std::find_if(held.answers.begin(), held.answers.end(), isSharedAlike);
  if (alike == held.answers.end()) {
    held.answers.push_back(icon);
  } else {
    std::rotate(alike, alike + 1, held.answers.end());
  }
  ++held.times;
}

std::shared_ptr<zovDynamicIcon2D> zovRendererP::FindOutside(DynamicIcon2D* icon) const {
  const auto held = lent.find(icon);
  return held != lent.end() ? held->second.answers.back() : nullptr;
}

// The last one takes all along that was kept with it.
zovRendererP::Returned zovRendererP::TakeBack(DynamicIcon2D* icon) {
  const auto held = lent.find(icon);
  if (held == lent.end()) return {};
  if (--held->second.times > 0) return {held->second.answers.back(), {}};
  Returned leaving{held->second.answers.back(), std::move(held->second)};
  lent.erase(held);
  return leaving;
}

std::shared_ptr<zovDynamicIcon2D> zovRendererP::GiveAway(DynamicIcon2D* icon) {
  return TakeBack(icon).newest;
}

bool zovRendererP::DestroyIcon(DynamicIcon2D*& icon) {
  const auto asked = owner.operator->();  // until the icon has gone
  const Returned taken = TakeBack(icon);
  if (taken.newest == nullptr) return false;
  icon = nullptr;
  return asked->destroy_icon(taken.newest);
}

DynamicIcon2D* zovRendererP::CreateSceneScreenshot(int width, int height, const CameraParameters& camera) {
  return Hold([&] { return owner->create_scene_screenshot(width, height, zovCameraParameters(camera)); });
}
DynamicIcon2D* zovRendererP::CreateTextLabel(const wchar_t* text, float size, int width, int height) {
  return Hold([&] { return owner->create_text_label(ToText(text), size, width, height); });
}
DynamicIcon2D* zovRendererP::CreateTooltip(const wchar_t* text) {
  return Hold([&] { return owner->create_tooltip(ToText(text)); });
}
DynamicIcon2D* zovRendererP::CreateTooltipHUD(const wchar_t* text) {
  return Hold([&] { return owner->create_tooltip_hud(ToText(text)); });
}
DynamicIcon2D* zovRendererP::CreateMessageHUD(const wchar_t* text) {
  return Hold([&] { return owner->create_message_hud(ToText(text)); });
}
DynamicIcon2D* zovRendererP::CreatePivotLabel(const wchar_t* text) {
  return Hold([&] { return owner->create_pivot_label(ToText(text)); });
}
DynamicIcon2D* zovRendererP::CreateMiniWheelLabel(const wchar_t* text) {
  return Hold([&] { return owner->create_miniwheel_label(ToText(text)); });
}
DynamicIcon2D* zovRendererP::CreateUCSMenuLabel(const wchar_t* activeName, const wchar_t* defaultName,
                                                bool highlighted, int width) {
  return Hold([&] {
    return owner->create_ucs_menu_label(ToText(activeName), ToText(defaultName), highlighted, width);
  });
}

// ---- the scene ----

bool zovRendererP::QueryRaySceneIntersection(const Vector3& origin, const Vector3& direction, Vector3& hit) {
  qmPoint3 found = Utils::kvvec_to_qmpnt(hit);
  if (!owner->query_ray_scene_intersection(Utils::kvvec_to_qmpnt(origin), Utils::kvvec_to_qmuvc(direction),
                                           found)) {
    return false;
  }
  hit = Utils::qmpnt_to_kvvec(found);
  return true;
}

bool zovRendererP::QueryMouseRaySceneIntersection(int x, int y, const Vector3& origin,
                                                  const Vector3& direction, Vector3& hit) {
  qmPoint3 found = Utils::kvvec_to_qmpnt(hit);
  if (!owner->query_mouse_ray_scene_intersection(x, y, Utils::kvvec_to_qmpnt(origin),
                                                 Utils::kvvec_to_qmuvc(direction), found)) {
    return false;
  }
  hit = Utils::qmpnt_to_kvvec(found);
  return true;
}

bool zovRendererP::QueryScreenRectRaySceneIntersection(int left, int bottom, int right, int top,
                                                       Vector3& hit) {
  qmPoint3 found = Utils::kvvec_to_qmpnt(hit);
  if (!owner->query_screen_rect_ray_scene_intersection(left, bottom, right, top, found)) return false;
  hit = Utils::qmpnt_to_kvvec(found);
  return true;
}

bool zovRendererP::BeginMouseoverComponent(bool highlightFaces) {
  return owner->begin_mouseover_component(highlightFaces);
}

bool zovRendererP::GetMouseoverComponent(Vector2 pixel, Vector3& point, Vector3& normal) {
  qmPoint3 foundPoint = Utils::kvvec_to_qmpnt(point);
  qmUnitVec3 foundNormal = Utils::kvvec_to_qmuvc(normal);
  if (!owner->get_mouseover_component(Utils::kvvec_to_qmpnt(pixel), foundPoint, foundNormal)) return false;
  point = Utils::qmpnt_to_kvvec(foundPoint);
  normal = Utils::qmuvc_to_kvvec(foundNormal);
  return true;
}

bool zovRendererP::EndMouseoverComponent() { return owner->end_mouseover_component(); }

bool zovRendererP::ProjectToScreen(Vector3 point, Vector2& pixel) {
  qmPoint2 found = Utils::kvvec_to_qmpnt(pixel);
  if (!owner->project_to_screen(Utils::kvvec_to_qmpnt(point), found)) return false;
  pixel = Utils::qmpnt_to_kvvec(found);
  return true;
}

// ---- pointer and menus ----

bool zovRendererP::SetCursorID(CursorID id) { return owner->set_cursor_id(static_cast<zovCursorID>(id)); }
bool zovRendererP::SetCursorPosition(int x, int y) { return owner->set_cursor_position(x, y); }
bool zovRendererP::SetCursorIcon(CursorID id) { return owner->set_cursor_icon(static_cast<zovCursorID>(id)); }
bool zovRendererP::OpenMenu(MenuID id) { return owner->open_menu(static_cast<zovMenuID>(id)); }
bool zovRendererP::OpenUCSMenu(int x, int y) { return owner->open_ucs_menu(x, y); }
