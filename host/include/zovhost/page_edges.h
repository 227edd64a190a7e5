#pragma once

namespace zovhost {

/// Where a page is, a panel that stands in the view: in points from the upper left corner of the window.
struct PageEdges {
  float left;
  float foot;
};

/// Of the panel that is being put together, within a frame of the Gui.
PageEdges FindPageEdges();

}  // namespace zovhost
