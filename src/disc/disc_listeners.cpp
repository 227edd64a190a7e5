#include "disc/disc_listeners.h"

#include "disc/rewind_region_listener.h"

namespace Korvane {

namespace {

using Make = std::unique_ptr<RegionListener> (*)(const DiscListener& what, HelmDisc& disc, TrackMenu& menu);

struct Maker {
  DiscListenerKind kind;
  Make make;
};

constexpr Maker MAKERS[] = {
    {DiscListenerKind::Null,
     [](const DiscListener&, HelmDisc&, TrackMenu& menu) -> std::unique_ptr<RegionListener> {
       return std::make_unique<NullRegionListener>(&menu);
     }},
    {DiscListenerKind::Rewind,
     [](const DiscListener&, HelmDisc& disc, TrackMenu& menu) -> std::unique_ptr<RegionListener> {
       return std::make_unique<RewindRegionListener>(&menu, &disc);
     }},
};

}  // namespace

std::unique_ptr<RegionListener> MakeDiscListener(const DiscListener& what, HelmDisc& disc, TrackMenu& menu) {
  for (const Maker& maker : MAKERS) {
    if (maker.kind == what.kind) return maker.make(what, disc, menu);
  }
  return nullptr;
}

}  // namespace Korvane
