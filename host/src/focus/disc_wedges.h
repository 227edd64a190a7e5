#pragma once

#include <vector>

#include "zovhost/pointer_wrap.h"

namespace Korvane {
class TrackMenu;
}

namespace zovhost {

/// A region of a menu, and a viewport pixel well within what shows of it.
struct DiscWedge {
  int region = 0;
  PixelPosition at;
};

/// Those that can be pressed, found in the menu's map; the one in the middle first.
std::vector<DiscWedge> FindWedges(Korvane::TrackMenu& menu);

}  // namespace zovhost
