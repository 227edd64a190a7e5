#include "interaction/view_manager/view_layout.h"

#include <cmath>

#include "camera/pixels.h"

namespace Korvane {

namespace {

using Location = OrientorParameters::Location;

constexpr double COMPASS_WIDTH = 1.4;             // of the cube with a compass, to its size
constexpr double COMPASS_STORYBOARD_WIDTH = 1.3;  // the same, for the panel beside it
constexpr int LINKED_BAR_GAP = 2;                 // pixels
constexpr int WELCOME_ABOVE_UCS_MENU = 50;

// By the cube's location.
constexpr Toolbar::Position LINKED_POSITIONS[] = {
    Toolbar::POSITION_TOP_RIGHT,
    Toolbar::POSITION_BOTTOM_RIGHT,
    Toolbar::POSITION_TOP_LEFT,
    Toolbar::POSITION_BOTTOM_LEFT,
};

// The parameters of the cube hold floats, and so the products are.
int ScaledUp(int size, float factor) { return Truncate(std::ceil(static_cast<float>(size) * factor)); }

double WidthBeside(const ViewArea& area, int width) { return static_cast<double>(area.size.width) - width; }

// Whatever is as wide as the cube and stands in its corner has the ribbon above it on the left always, and on
// the right only where the ribbon reaches that far.
bool IsUnderRibbon(const ViewArea& area, Location location, double width) {
  return IsAtRight(location) ? IsRibbonInTheWay(area, width) : area.ribbonVisible;
}

}  // namespace

bool IsAtTop(Location location) {
  return location == OrientorParameters::LOCATION_TOP_RIGHT ||
         location == OrientorParameters::LOCATION_TOP_LEFT;
}

bool IsAtRight(Location location) {
  return location == OrientorParameters::LOCATION_TOP_RIGHT ||
         location == OrientorParameters::LOCATION_BOTTOM_RIGHT;
}

bool IsInRibbon(const ViewArea& area, int x, int y) {
  return area.ribbonVisible && x < area.ribbon.width &&
         y >= static_cast<double>(area.size.height) - area.ribbon.height;
}

bool IsRibbonInTheWay(const ViewArea& area, double width) {
  return area.ribbonVisible && WidthBeside(area, area.ribbon.width) < width;
}

int GetCubeOffset(const ViewArea& area, const CornerStrip& strip, const OrientorParameters& cube,
                  int cubeSize) {
  if (!IsAtTop(cube.screen_location)) return 0;
  const int cubeWidth = cube.draw_compass ? Truncate(cubeSize * COMPASS_WIDTH) : cubeSize;
  if (IsUnderRibbon(area, cube.screen_location, cubeWidth))
    return Truncate(-static_cast<double>(area.ribbon.height));
  const bool isStripInTheWay =
      strip.exists && (IsAtRight(cube.screen_location) || WidthBeside(area, strip.size.width) < cubeWidth);
  return isStripInTheWay ? Truncate(-static_cast<double>(strip.size.height)) : 0;
}

Box2 GetCubeBounds(const ViewArea& area, Location location, const PixelSize& room) {
  const int halfWidth = room.width / 2;  // whole pixels
  const int halfHeight = room.height / 2;
  const Vector2 half(halfWidth, halfHeight);
  Vector2 centre = half;
  if (IsAtRight(location)) centre.x = area.size.width - half.x;
  if (IsAtTop(location)) {
    const bool drops = IsUnderRibbon(area, location, room.width);
    centre.y = area.size.height - half.y - (drops ? area.ribbon.height : 0);
  }
  return {centre, half};
}

std::optional<Toolbar::Position> GetLinkedPosition(Location location) {
  if (location < OrientorParameters::LOCATION_TOP_RIGHT ||
      location > OrientorParameters::LOCATION_BOTTOM_LEFT)
    return std::nullopt;
  return LINKED_POSITIONS[location];
}

LinkedBarPlace PlaceLinkedBar(const ViewArea& area, Location location, int roomHeight, double cubeOffset,
                              double barWidth) {
  const double room = static_cast<double>(area.size.height) - roomHeight - LINKED_BAR_GAP;
  if (IsAtTop(location)) return {roomHeight - cubeOffset, Truncate(room + cubeOffset)};
  const int covered = IsUnderRibbon(area, location, barWidth) ? area.ribbon.height : 0;
  return {roomHeight + cubeOffset, Truncate(Math::Max(0.0, room - covered))};
}

int GetHeightAboveCube(const OrientorParameters& cube, int cubeSize) {
  if (cube.draw_ucs_menu) {
    const float factor = cube.draw_compass ? cube.overlay_ucs_offset_compass_y : cube.overlay_ucs_offset_y;
    return Truncate(static_cast<double>(ScaledUp(cubeSize, factor)) + WELCOME_ABOVE_UCS_MENU);
  }
  return cube.draw_compass ? ScaledUp(cubeSize, cube.view_scale_compass) : cubeSize;
}

PanelPlace PlacePanel(const ViewArea& area, const OrientorParameters* cube, int cubeSize, int barHeight) {
  PanelPlace place{0, barHeight, area.size};
  if (cube == nullptr) return place;
  const double width = std::ceil(cubeSize * (cube->draw_compass ? COMPASS_STORYBOARD_WIDTH : 1.0));
  if (cube->screen_location == OrientorParameters::LOCATION_BOTTOM_LEFT) place.x = Truncate(width);
  if (cube->screen_location == OrientorParameters::LOCATION_BOTTOM_RIGHT) {
    place.viewport.width = Truncate(area.size.width - width);
  }
  return place;
}

}  // namespace Korvane
