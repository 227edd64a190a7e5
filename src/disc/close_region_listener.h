#pragma once

#include "disc/disc_region_listener.h"

namespace Korvane {

/// The wedge that closes the disc.
class CloseRegionListener : public DiscRegionListener {
 public:
  using DiscRegionListener::DiscRegionListener;

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
};

}  // namespace Korvane
