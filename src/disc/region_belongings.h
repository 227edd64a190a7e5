#pragma once

#include <cstddef>
#include <vector>

#include "disc/listener_calls.h"
#include "korvane/track_menu.h"

namespace Korvane {

/// What regions own, taken out of them to be deleted: each once, also where two regions share it.
class RegionBelongings {
 public:
  using Region = TrackMenu::Region;

  /// For so many regions, whose Collect allocates nothing then.
  void Reserve(std::size_t regions);
  void Collect(const Region& region);
  /// Leaves with a region what belongs to it as well.
  void Leave(const Region& region);
  /// Whether a region has any of it.
  bool IsSharedBy(const Region& region) const;
  void Delete(ListenerCalls& calls);

 private:
  std::vector<RegionListener*> listeners;
  std::vector<ResourceIcon2D*> icons;
};

}  // namespace Korvane
