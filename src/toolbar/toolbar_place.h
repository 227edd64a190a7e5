#pragma once

#include "korvane/box2.h"
#include "korvane/orientor_parameters.h"
#include "korvane/toolbar.h"

namespace Korvane {

/// What a strip finds around it. Viewport pixels.
struct StripRoom {
  int viewportWidth = 0;
  int viewportHeight = 0;
  int ribbonWidth = 0;
  int ribbonHeight = 0;
  int sizeLimitWidth = -1;  // -1: none
  int sizeLimitHeight = -1;
  Box2 orientorBounds;
  OrientorParameters::Location orientorLocation = OrientorParameters::LOCATION_TOP_RIGHT;

  bool HasViewport() const { return viewportWidth > 0 && viewportHeight > 0; }
  Vector2 GetMiddle() const { return {viewportWidth / 2.0, viewportHeight / 2.0}; }
};

/// Where a strip is to stand.
struct StripPlace {
  Toolbar::Position position = Toolbar::POSITION_RIGHT;
  Toolbar::Orientation orientation = Toolbar::ORIENTATION_VERTICAL;
  Vector2 cornerOffset;
  Vector2 edgeOffset;
};

bool IsToolbarPosition(Toolbar::Position position);
bool IsToolbarCorner(Toolbar::Position position);
/// The strip runs along the top or the bottom.
bool IsAlongTopOrBottom(Toolbar::Position position);
Toolbar::Orientation GetOrientationAt(Toolbar::Position position);

/// How long a strip of a thickness may be.
double GetAvailableLength(const StripRoom& room, const StripPlace& place, double thickness);
/// The centre of a strip of that half size.
Vector2 GetStripCenter(const StripRoom& room, const StripPlace& place, const Vector2& half);
/// The edge offset of a strip that stays in the viewport, under the ribbon and, unless it is pressed, beside
/// the cube. That of a strip in a corner stays.
Vector2 GetConstrainedOffset(const StripRoom& room, const StripPlace& place, const Vector2& half,
                             bool pressed);
/// The edge, and the place on it, where a strip that is let go at `strip` docks.
StripPlace GetDock(const StripRoom& room, const StripPlace& place, const Box2& strip);
/// The edge beside a corner, with the strip in the same place; an edge stays.
StripPlace GetEdgeBeside(const StripRoom& room, const StripPlace& place, const Vector2& half);

}  // namespace Korvane
