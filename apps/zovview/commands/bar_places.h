#pragma once

#include "korvane/toolbar.h"

namespace zovview {

/// Where a bar stands, as it is kept between two runs.
struct BarPlace {
  bool visible = true;
  bool linked = false;  ///< To the cube; only the navigation bar can be.
  Korvane::Toolbar::Position edge = Korvane::Toolbar::POSITION_RIGHT;  ///< One of the four edges.
  double offset = 0.0;  ///< Pixels from the middle of the edge, to the right or up.

  friend bool operator==(const BarPlace&, const BarPlace&) = default;
};

struct BarPlaces {
  BarPlace navigation;
  BarPlace tools = {false, false, Korvane::Toolbar::POSITION_BOTTOM};
};

}  // namespace zovview
