#include "disc/region_belongings.h"

#include <algorithm>
#include <utility>

#include "korvane/icon2d.h"

namespace Korvane {

namespace {

template <class Owned>
bool Contains(const std::vector<Owned*>& all, const Owned* owned) {
  return owned != nullptr && std::find(all.begin(), all.end(), owned) != all.end();
}

template <class Owned>
void CollectOne(std::vector<Owned*>& all, Owned* owned) {
  if (owned != nullptr && !Contains(all, owned)) all.push_back(owned);
}

}  // namespace

void RegionBelongings::Reserve(std::size_t regions) {
  listeners.reserve(regions);
  icons.reserve(2 * regions);
}

void RegionBelongings::Collect(const Region& region) {
  CollectOne(listeners, region.listener);
  CollectOne(icons, region.icon);
  CollectOne(icons, region.overlayIcon);
}

void RegionBelongings::Leave(const Region& region) {
  std::erase(listeners, region.listener);
  std::erase(icons, region.icon);
  std::erase(icons, region.overlayIcon);
}

bool RegionBelongings::IsSharedBy(const Region& region) const {
  return Contains(listeners, region.listener) || Contains(icons, region.icon) ||
         Contains(icons, region.overlayIcon);
}

void RegionBelongings::Delete(ListenerCalls& calls) {
  for (ResourceIcon2D* const icon : std::exchange(icons, {})) {
    delete icon;
  }
  for (RegionListener* const listener : std::exchange(listeners, {}))
    calls.GiveUp(std::unique_ptr<RegionListener>(listener));
}

}  // namespace Korvane
