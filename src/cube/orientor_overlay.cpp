// The screen-space controls beside the cube: rotate arrows, home, lock, context menu, and the label of the
// coordinate system.
#include <cstddef>
#include <string_view>

#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/orientor.h"

namespace Korvane {

namespace {

constexpr float INVISIBLE_BELOW = 0.0001F;
// The hit area of the context menu button is larger than its picture.
constexpr double CONTEXT_SELECT_SCALE = 2.0;
constexpr double BOTTOM_LABEL_SCALE = 0.925;

TextureID GetRotateTexture(int activeOverlayPart) {
  switch (activeOverlayPart) {
    case Orientor::OVERLAY_ROTATE_COUNTER_CLOCKWISE:
      return TEXTURE_CUBE_ROTATE_COUNTER_CLOCKWISE_ACTIVE;
    case Orientor::OVERLAY_ROTATE_CLOCKWISE:
      return TEXTURE_CUBE_ROTATE_CLOCKWISE_ACTIVE;
    default:
      return TEXTURE_CUBE_ROTATE;
  }
}

// In screen sizes, by what else stands there.
Vector2 GetHomeOffset(const OrientorParameters& p, bool locked) {
  if (p.draw_compass && locked) {
    return {p.overlay_home_offset_compass_lock_x, p.overlay_home_offset_compass_lock_y};
  }
  if (p.draw_compass) return {p.overlay_home_offset_compass_x, p.overlay_home_offset_compass_y};
  if (locked) return {p.overlay_home_offset_lock_x, p.overlay_home_offset_lock_y};
  return {p.overlay_home_offset_x, p.overlay_home_offset_y};
}

Vector2 GetContextOffset(const OrientorParameters& p) {
  if (p.draw_compass) return {p.overlay_context_offset_compass_x, p.overlay_context_offset_compass_y};
  return {p.overlay_context_offset_x, p.overlay_context_offset_y};
}

Vector2 GetUCSOffset(const OrientorParameters& p) {
  Vector2 offset(p.overlay_ucs_offset_x, p.overlay_ucs_offset_y);
  if (p.draw_compass) offset = Vector2(p.overlay_ucs_offset_compass_x, p.overlay_ucs_offset_compass_y);
  const bool atBottom = p.screen_location == OrientorParameters::LOCATION_BOTTOM_RIGHT ||
                        p.screen_location == OrientorParameters::LOCATION_BOTTOM_LEFT;
  if (atBottom) offset.y *= BOTTOM_LABEL_SCALE;
  return offset;
}

}  // namespace

void Orientor::DrawOverlay(const Vector3& view, const Vector3& up) {
  if (renderer == nullptr) return;
  Box2 box;
  CameraParameters camera;
  GetOverlayCamera(box, camera, view, up);
  if (!renderer->BeginRender(box, camera, Renderer::RENDER_OVERLAY)) return;

  const float alpha = fade * opacity;
  Renderer::MaterialParams material;
  material.colour[3] = alpha;
  material.drawMode = Renderer::DRAW_OVERLAY_ICONS;
  const auto drawButton = [&](OverlayPart part, TextureID texture) {
    material.texture = texture;
    DrawOverlayPart(material, part, false);
  };
  const bool home = activeOverlayPart == OVERLAY_HOME;
  const bool lock = activeOverlayPart == OVERLAY_LOCK;
  const bool menu = activeOverlayPart == OVERLAY_CONTEXT_MENU;
  const bool ucs = activeOverlayPart == OVERLAY_UCS_MENU;

  drawButton(OVERLAY_HOME, home ? TEXTURE_CUBE_HOME_ACTIVE : TEXTURE_CUBE_HOME);
  drawButton(OVERLAY_LOCK, lock ? TEXTURE_CUBE_LOCK_ACTIVE : TEXTURE_CUBE_LOCK);
  if (menu) material.colour[3] = 1.0F;
  drawButton(OVERLAY_CONTEXT_MENU, menu ? TEXTURE_CUBE_MENU_ACTIVE : TEXTURE_CUBE_MENU);
  material.colour[3] = alpha;
  drawButton(OVERLAY_ROTATE_COUNTER_CLOCKWISE, GetRotateTexture(activeOverlayPart));
  drawButton(OVERLAY_ROTATE_CLOCKWISE, GetRotateTexture(activeOverlayPart));
  DrawUCSMenu(ucs ? highlightedUCSLabel : ucsLabel, OVERLAY_UCS_MENU, false);
  renderer->EndRender();
}

bool Orientor::IsOverlayShown() const {
  if (cameraOperations == nullptr || renderer == nullptr) return false;
  if (!parameters.draw_overlay || dragging) return false;
  return parameters.overlay_always_on || mouseInRegion || !(fade < INVISIBLE_BELOW);
}

void Orientor::DrawOverlayPart(const Renderer::MaterialParams& material, OverlayPart part, bool select) {
  if (!IsOverlayShown()) return;
  const bool locked = IsLockedToSelection();
  switch (part) {
    case OVERLAY_ROTATE_COUNTER_CLOCKWISE:
    case OVERLAY_ROTATE_CLOCKWISE:
      if (arrowsVisible) DrawRotateArrow(material, part, select);
      break;
    case OVERLAY_HOME:
      if (!parameters.draw_home_button) break;
      DrawOverlaySquare(material, part, GetHomeOffset(parameters, locked), parameters.overlay_home_size / 2.0,
                        select);
      break;
    case OVERLAY_LOCK:
      // Where the home button stands without the lock.
      if (!locked) break;
      DrawOverlaySquare(material, part, GetHomeOffset(parameters, false), parameters.overlay_lock_size / 2.0,
                        select);
      break;
    case OVERLAY_CONTEXT_MENU: {
      const double half = parameters.overlay_context_size / 2.0;
      DrawOverlaySquare(material, part, GetContextOffset(parameters),
                        select ? half * CONTEXT_SELECT_SCALE : half, select);
      break;
    }
    case OVERLAY_UCS_MENU:
      break;
  }
}

// `offset` in screen sizes from the cube's corner inward.
Vector2 Orientor::GetOverlayPosition(const Vector2& offset) const {
  const double cornerX = static_cast<double>(parameters.screen_offset_x) + mirror.offsetX;
  const double cornerY = static_cast<double>(parameters.screen_offset_y) + mirror.offsetY;
  const double size = screenSize;
  return {cornerX + mirror.scaleX * size * offset.x, cornerY + mirror.scaleY * size * offset.y};
}

// A triangle in the corner: one half of the square that the two arrows share, on its side of the diagonal.
void Orientor::DrawRotateArrow(const Renderer::MaterialParams& material, OverlayPart part, bool select) {
  const double reach = parameters.overlay_arrow_size;
  const Vector2 corner = GetOverlayPosition(Vector2(0.0, 0.0));
  const Vector2 middle = GetOverlayPosition(Vector2(reach / 2.0, reach / 2.0));
  const Vector2 alongX = GetOverlayPosition(Vector2(reach, 0.0));
  const Vector2 alongY = GetOverlayPosition(Vector2(0.0, reach));
  static constexpr float CLOCKWISE_TEXTURE[8] = {1.0F, 0.0F, 1.0F, 1.0F, 0.5F, 0.5F, 1.0F, 0.0F};
  static constexpr float COUNTER_TEXTURE[8] = {1.0F, 0.0F, 0.5F, 0.5F, 0.0F, 0.0F, 1.0F, 0.0F};

  const bool clockwise = part == OVERLAY_ROTATE_CLOCKWISE;
  const Vector2 corners[4] = {corner, clockwise ? alongY : middle, clockwise ? middle : alongX, corner};
  float vertices[12] = {};
  for (std::size_t i = 0; i < 4; ++i) corners[i].ToArray(vertices + 3 * i);
  DrawOverlayQuad(material, part, vertices, clockwise ? CLOCKWISE_TEXTURE : COUNTER_TEXTURE, select);
}

void Orientor::DrawOverlaySquare(const Renderer::MaterialParams& material, OverlayPart part,
                                 const Vector2& offset, double halfSize, bool select) {
  static constexpr float TEXTURE[8] = {0.0F, 1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 1.0F, 1.0F};
  const double half = screenSize * halfSize;
  float vertices[12];
  Box2(GetOverlayPosition(offset), Vector2(half, half)).ToArray(vertices, 0.0F);
  DrawOverlayQuad(material, part, vertices, TEXTURE, select);
}

void Orientor::DrawOverlayQuad(const Renderer::MaterialParams& material, OverlayPart part,
                               const float* vertices, const float* texCoords, bool select) {
  if (select) {
    renderer->RenderSelectionGeometry(4, vertices, part);
  } else {
    renderer->RenderGeometry(4, vertices, texCoords, &material);
  }
}

// ---- the label of the coordinate system ----

void Orientor::DrawUCSMenu(DynamicIcon2D* label, int id, bool select) {
  if (!parameters.draw_ucs_menu || label == nullptr || renderer == nullptr) return;
  Vector2 centre = GetOverlayPosition(GetUCSOffset(parameters));
  centre.y += mirror.scaleY * label->GetHeight() / 2.0;
  label->SetPosition(centre);
  label->SetOpacity(opacity);
  if (!select) {
    renderer->Render(label);
    return;
  }
  float vertices[12];
  label->GetBounds().ToArray(vertices, 0.0F);
  renderer->RenderSelectionGeometry(4, vertices, id);
}

bool Orientor::ShowsSecondUCSName() const {
  return !parameters.orient_to_ucs && activeUCSName != defaultUCSName;
}

void Orientor::DestroyUCSMenuLabels() {
  for (DynamicIcon2D** const label : {&ucsLabel, &highlightedUCSLabel}) {
    if (*label != nullptr) renderer->DestroyIcon(*label);
    *label = nullptr;
  }
}

void Orientor::UpdateUCSMenuLabel(bool redraw) {
  static constexpr double COMPASS_WIDTH = 1.4;
  if (renderer == nullptr) return;
  DestroyUCSMenuLabels();
  if (parameters.draw_ucs_menu) {
    const wchar_t* const first = activeUCSName.c_str();
    const wchar_t* const second = ShowsSecondUCSName() ? defaultUCSName.c_str() : L"";
    const int width = parameters.draw_compass ? Truncate(screenSize * COMPASS_WIDTH) : screenSize;
    ucsLabel = renderer->CreateUCSMenuLabel(first, second, false, width);
    highlightedUCSLabel = renderer->CreateUCSMenuLabel(first, second, true, width);
  }
  if (redraw && cameraOperations != nullptr) cameraOperations->RequestApplicationUpdate();
}

void Orientor::SetActiveUCS(const wchar_t* name, bool redraw) {
  const std::wstring_view given = name != nullptr ? name : L"";
  const bool renamed = activeUCSName != given;
  const bool mismatched = parameters.draw_ucs_menu != (ucsLabel != nullptr);
  if (renamed) activeUCSName = given;
  if (renamed || mismatched) UpdateUCSMenuLabel(redraw);
}

}  // namespace Korvane
