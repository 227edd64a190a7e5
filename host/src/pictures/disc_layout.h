#pragma once

#include <functional>
#include <string>
#include <vector>

#include "pictures/caption_setter.h"
#include "pictures/disc_plan.h"
#include "pictures/svg_painter.h"

namespace zovhost {

/// The size at which a disc is drawn.
struct DiscSize {
  double points = discUnits;  // its width
  double scale = 1.0;         // pixels for one point

  double GetPixels() const { return points * scale; }
  double GetUnit() const { return GetPixels() / discUnits; }  // pixels for one unit of the plan
};

struct PlacedLine {
  std::string text;
  DiscPoint middle;
};

/// What stands in one wedge. In pixels from the top left of the picture.
struct WedgeContent {
  const DiscWedge* wedge = nullptr;
  DiscAction action = DiscAction::Rewind;  // the wedge's
  DiscPoint glyphMiddle;
  double glyphSize = 0.0;
  std::vector<PlacedLine> caption;  // none, one line or two
};

struct DiscLayout {
  double capHeight = 0.0;  // pixels, of all captions
  std::vector<WedgeContent> contents;
};

/// Finds the largest size in which every caption has room; one that has none even at the smallest size is
/// broken into two lines, and where these have no room either the glyph stands alone. A disc of less than
/// 100 points and a small one have no captions.
DiscLayout LayOutDisc(const DiscPlan& plan, const DiscSize& size, const FindText& findText,
                      const CaptionSetter& setter);

}  // namespace zovhost
