#include "cube/cube_layout.h"

#include <algorithm>

#include "foundation/truncate.h"
#include "korvane/math.h"

namespace Korvane {

namespace {

// Every size in screen sizes, every length in pixels, that no parameter names.
constexpr double COMPASS_WIDTH = 1.4;
constexpr double COMPASS_HEIGHT = 1.425;
constexpr double REGION_HEIGHT = 1.2;
constexpr double REGION_HEIGHT_WITH_COMPASS = 1.61;
constexpr double REGION_WIDTH = 1.0;
constexpr double REGION_WIDTH_WITH_COMPASS = 1.31;
constexpr double LOCK_WIDTH = 0.14;
constexpr double NEAR_WITHIN = 1.05;
constexpr double FAR_BEYOND = 1.8;
constexpr double BOTTOM_LABEL_SCALE = 0.925;
constexpr int SMALL_LABEL_BELOW = 48;  // pixels of screen size
constexpr int SMALL_LABEL_HEIGHT = 24;
constexpr int LABEL_HEIGHT = 32;
constexpr int SECOND_LINE_HEIGHT = 14;
constexpr int LOCATION_COUNT = 4;

bool IsAtBottom(const OrientorParameters& p) {
  return p.screen_location == OrientorParameters::LOCATION_BOTTOM_RIGHT ||
         p.screen_location == OrientorParameters::LOCATION_BOTTOM_LEFT;
}

}  // namespace

// ---- place and size ----

void CubeLayout::SetViewport(int width, int height) {
  viewportWidth = width;
  viewportHeight = height;
}

bool CubeLayout::GoToCorner(const OrientorParameters& p) {
  const auto width = static_cast<float>(viewportWidth);
  const auto height = static_cast<float>(viewportHeight);
  const Mirror mirrors[LOCATION_COUNT] = {
      {width, height, -1.0F, -1.0F},
      {width, 0.0F, -1.0F, 1.0F},
      {0.0F, height, 1.0F, -1.0F},
      {0.0F, 0.0F, 1.0F, 1.0F},
  };
  const int location = p.screen_location;
  mirror = location >= 0 && location < LOCATION_COUNT ? mirrors[location] : Mirror();
  const bool isOther = location != lastLocation;
  lastLocation = location;
  return isOther;
}

void CubeLayout::TakeSize(const OrientorParameters& p) {
  switch (p.size) {
    case OrientorParameters::SIZE_AUTOMATIC: {
      const auto side = static_cast<float>(viewportWidth < viewportHeight ? viewportWidth : viewportHeight);
      const int automatic = Truncate(side * p.auto_screen_size);
      screenSize = std::min(std::max(automatic, p.tiny_screen_size), p.normal_screen_size);
      break;
    }
    case OrientorParameters::SIZE_TINY:
      screenSize = p.tiny_screen_size;
      break;
    case OrientorParameters::SIZE_SMALL:
      screenSize = p.small_screen_size;
      break;
    case OrientorParameters::SIZE_NORMAL:
      screenSize = p.normal_screen_size;
      break;
    case OrientorParameters::SIZE_LARGE:
      screenSize = p.large_screen_size;
      break;
    default:
      break;
  }
}

int CubeLayout::GetLabelWidth(const OrientorParameters& p) const {
  return p.draw_compass ? Truncate(screenSize * COMPASS_WIDTH) : screenSize;
}

void CubeLayout::GetRegionSize(const OrientorParameters& p, bool secondLine, int& width, int& height) const {
  const bool label = p.draw_ucs_menu;
  const auto size = static_cast<float>(screenSize);
  width = height = screenSize;
  if (p.draw_compass) {
    width = Truncate(screenSize * COMPASS_WIDTH);
    height = label ? Truncate(size * p.overlay_ucs_offset_compass_y) : Truncate(screenSize * COMPASS_HEIGHT);
  } else if (label) {
    height = Truncate(size * p.overlay_ucs_offset_y);
  }
  if (!label) return;
  double labelled = height;  // no sum of sizes leaves the range of a double
  labelled += screenSize < SMALL_LABEL_BELOW ? SMALL_LABEL_HEIGHT : LABEL_HEIGHT;
  if (secondLine) labelled += SECOND_LINE_HEIGHT;
  height = Truncate(labelled);
}

Box2 CubeLayout::GetPassBox(const OrientorParameters& p) const {
  const int passSize =
      p.draw_compass ? Truncate(static_cast<float>(screenSize) * p.view_scale_compass) : screenSize;
  const auto size = static_cast<float>(passSize);
  const double half = passSize / 2.0;
  // The low corner of the pass is on whole pixels.
  const auto center = [&](float scale, float viewOffset, int screenOffset, float offset) {
    const float inset = (scale * viewOffset + (scale - 1.0F) / 2.0F) * size;
    return Truncate(inset + static_cast<float>(screenOffset) + offset) + half;
  };
  return {Vector2(center(mirror.scaleX, p.view_offset_x, p.screen_offset_x, mirror.offsetX),
                  center(mirror.scaleY, p.view_offset_y, p.screen_offset_y, mirror.offsetY)),
          Vector2(half, half)};
}

Box2 CubeLayout::GetViewportBox() const {
  const Vector2 half(viewportWidth / 2.0, viewportHeight / 2.0);
  return {half, half};
}

// ---- the mouse in the corner ----

Vector2 CubeLayout::ToCorner(double x, double y) const {
  return {x * mirror.scaleX + mirror.offsetX, y * mirror.scaleY + mirror.offsetY};
}

bool CubeLayout::IsInRegion(const OrientorParameters& p, bool locked, const Vector2& inCorner) const {
  const double height = p.draw_compass ? REGION_HEIGHT_WITH_COMPASS : REGION_HEIGHT;
  const double width =
      (p.draw_compass ? REGION_WIDTH_WITH_COMPASS : REGION_WIDTH) + (locked ? LOCK_WIDTH : 0.0);
  const double edge = static_cast<double>(viewportHeight) + p.screen_offset_y;
  return inCorner.x < width * screenSize && inCorner.x > 0.0 && inCorner.y > edge - height * screenSize &&
         inCorner.y < viewportHeight;
}

float CubeLayout::GetNearness(const OrientorParameters& p, const Vector2& inCorner) const {
  const double size = screenSize;
  const double edge = static_cast<double>(viewportHeight) + p.screen_offset_y;
  const double tx = Math::EaseClamp(inCorner.x, NEAR_WITHIN * size, FAR_BEYOND * size);
  const double ty = Math::EaseClamp(inCorner.y, edge - FAR_BEYOND * size, edge - NEAR_WITHIN * size);
  return static_cast<float>(Math::Min(1.0 - tx, ty));
}

// ---- the overlay ----

Vector2 CubeLayout::GetOverlayPosition(const OrientorParameters& p, const Vector2& offset) const {
  const double cornerX = static_cast<double>(p.screen_offset_x) + mirror.offsetX;
  const double cornerY = static_cast<double>(p.screen_offset_y) + mirror.offsetY;
  const double size = screenSize;
  return {cornerX + mirror.scaleX * size * offset.x, cornerY + mirror.scaleY * size * offset.y};
}

// By what else stands there.
Vector2 CubeLayout::GetHomeOffset(const OrientorParameters& p, bool locked) {
  if (p.draw_compass && locked) {
    return {p.overlay_home_offset_compass_lock_x, p.overlay_home_offset_compass_lock_y};
  }
  if (p.draw_compass) return {p.overlay_home_offset_compass_x, p.overlay_home_offset_compass_y};
  if (locked) return {p.overlay_home_offset_lock_x, p.overlay_home_offset_lock_y};
  return {p.overlay_home_offset_x, p.overlay_home_offset_y};
}

Vector2 CubeLayout::GetContextOffset(const OrientorParameters& p) {
  if (p.draw_compass) return {p.overlay_context_offset_compass_x, p.overlay_context_offset_compass_y};
  return {p.overlay_context_offset_x, p.overlay_context_offset_y};
}

Vector2 CubeLayout::GetUCSOffset(const OrientorParameters& p) {
  Vector2 offset(p.overlay_ucs_offset_x, p.overlay_ucs_offset_y);
  if (p.draw_compass) offset = Vector2(p.overlay_ucs_offset_compass_x, p.overlay_ucs_offset_compass_y);
  if (IsAtBottom(p)) offset.y *= BOTTOM_LABEL_SCALE;
  return offset;
}

}  // namespace Korvane
