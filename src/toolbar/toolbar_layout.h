#pragma once

#include <span>

#include "korvane/box2.h"
#include "korvane/toolbar.h"

namespace Korvane {

/// An item as the layout sees it, which goes through the steps below in their order. Pixels.
struct StripItem {
  ToolbarItem::Type type = ToolbarItem::TYPE_BUTTON;
  double width = 0.0;
  double height = 0.0;
  double flyoutSize = 0.0;
  bool hidden = false;
  bool excluded = false;

  Box2 bounds;  // empty while it does not show
  Box2 nonFlyoutBounds;
  Box2 flyoutBounds;

  bool IsShown() const { return !hidden && !excluded; }
};

struct StripSpacing {
  double inner = 2.0;
  double outer = 2.0;
  double grip = 5.0;  // between the handles of the strip and its items

  /// Between the edge of the strip and its items.
  double GetPadding() const;
};

/// Along the strip and across it.
struct StripSize {
  double length = 0.0;
  double thickness = 0.0;
};

/// How the strip would be with all its items. Hides all but the first of each kind of handle.
StripSize MeasureStrip(std::span<StripItem> items, Toolbar::Orientation orientation,
                       const StripSpacing& spacing);

/// Leaves out what does not fit, from the end; the length of what is left.
double FitStrip(std::span<StripItem> items, Toolbar::Orientation orientation, double length,
                double available);

/// Gives every item its place in a strip of that size: the grip and the head corner at the head, the tail
/// corner and the more-controls button at the tail, the others in their order. The head is at the top, or on
/// the left. In a horizontal strip the two corner buttons stand one above the other, at its right end.
void LayStrip(std::span<StripItem> items, Toolbar::Orientation orientation, const Box2& strip,
              const StripSpacing& spacing);

}  // namespace Korvane
