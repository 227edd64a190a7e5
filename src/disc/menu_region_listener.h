#pragma once

#include "disc/disc_region_listener.h"

namespace Korvane {

/// The wedge that opens the context menu of the disc.
class MenuRegionListener : public DiscRegionListener {
 public:
  using DiscRegionListener::DiscRegionListener;

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
};

}  // namespace Korvane
