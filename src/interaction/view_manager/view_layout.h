#pragma once

#include <optional>

#include "korvane/box2.h"
#include "korvane/orientor_parameters.h"
#include "korvane/toolbar.h"

namespace Korvane {

// Where the widgets of one viewport stand relative to each other. Pixels in, pixels out, the origin at the
// bottom left; nothing here knows a widget.

struct PixelSize {
  int width = 0;
  int height = 0;
};

/// A viewport, and the ribbon that covers its top from the left.
struct ViewArea {
  PixelSize size;
  PixelSize ribbon;
  bool ribbonVisible = false;
};

/// A strip in the top right corner; without one nothing is in the way.
struct CornerStrip {
  bool exists = false;
  PixelSize size;
};

/// How a bar that hangs on the cube stands.
struct LinkedBarPlace {
  double offset = 0.0;  // from the edge of the viewport to the bar, across the cube
  int heightLimit = 0;
};

/// A panel in the lower left corner, up to the right edge of the room that is left to it.
struct PanelPlace {
  int x = 0;
  int y = 0;
  PixelSize viewport;  // the room that the panel may take for the viewport
};

bool IsAtTop(OrientorParameters::Location location);
bool IsAtRight(OrientorParameters::Location location);

bool IsInRibbon(const ViewArea& area, int x, int y);
/// The ribbon shows and leaves less than `width` beside it.
bool IsRibbonInTheWay(const ViewArea& area, double width);

/// How far the cube stands above its corner, negative for down: clear of the ribbon, or of the strip.
int GetCubeOffset(const ViewArea& area, const CornerStrip& strip, const OrientorParameters& cube,
                  int cubeSize);
/// The corner that a cube takes with the room around it, `room`.
Box2 GetCubeBounds(const ViewArea& area, OrientorParameters::Location location, const PixelSize& room);
/// Nothing for a location that is none of the four.
std::optional<Toolbar::Position> GetLinkedPosition(OrientorParameters::Location location);
/// `roomHeight` is that of the cube, `cubeOffset` its offset.
LinkedBarPlace PlaceLinkedBar(const ViewArea& area, OrientorParameters::Location location, int roomHeight,
                              double cubeOffset, double barWidth);
/// The height at which the welcome screen stands clear of a cube in its corner.
int GetHeightAboveCube(const OrientorParameters& cube, int cubeSize);
/// Beside a cube that shows, and above a bar along the lower edge. `cube` null for none.
PanelPlace PlacePanel(const ViewArea& area, const OrientorParameters* cube, int cubeSize, int barHeight);

}  // namespace Korvane
