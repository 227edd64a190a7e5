#include "disc/disc_listeners.h"

#include "disc/center_region_listener.h"
#include "disc/close_region_listener.h"
#include "disc/forward_region_listener.h"
#include "disc/height_region_listener.h"
#include "disc/look_move_region_listener.h"
#include "disc/look_region_listener.h"
#include "disc/menu_region_listener.h"
#include "disc/orbit_region_listener.h"
#include "disc/pan_region_listener.h"
#include "disc/pivot_pick_region_listener.h"
#include "disc/rewind_region_listener.h"
#include "disc/roll_region_listener.h"
#include "disc/walk_region_listener.h"
#include "disc/zoom_region_listener.h"

namespace Korvane {

namespace {

using Made = std::unique_ptr<RegionListener>;
using Make = Made (*)(const DiscListener& what, HelmDisc& disc, TrackMenu& menu);

struct Maker {
  DiscListenerKind kind;
  Make make;
};

template <class Listener>
Made MakePlain(const DiscListener& /*what*/, HelmDisc& disc, TrackMenu& menu) {
  return std::make_unique<Listener>(&menu, &disc);
}

Made MakeNull(const DiscListener& /*what*/, HelmDisc& /*disc*/, TrackMenu& menu) {
  return std::make_unique<NullRegionListener>(&menu);
}

Made MakeCenter(const DiscListener& what, HelmDisc& disc, TrackMenu& menu) {
  return std::make_unique<CenterRegionListener>(&menu, &disc, what.texts[0]);
}

Made MakeLookMove(const DiscListener& what, HelmDisc& disc, TrackMenu& menu) {
  return std::make_unique<LookMoveRegionListener>(&menu, &disc, what.switches[0]);
}

Made MakeOrbit(const DiscListener& what, HelmDisc& disc, TrackMenu& menu) {
  return std::make_unique<OrbitRegionListener>(&menu, &disc, what.texts[0], what.texts[1], what.switches[0]);
}

Made MakeZoom(const DiscListener& what, HelmDisc& disc, TrackMenu& menu) {
  return std::make_unique<ZoomRegionListener>(&menu, &disc, what.texts[0], what.texts[1], what.texts[2],
                                              what.switches[0], what.switches[1]);
}

constexpr Maker MAKERS[] = {
    {DiscListenerKind::Null, MakeNull},
    {DiscListenerKind::Center, MakeCenter},
    {DiscListenerKind::Close, MakePlain<CloseRegionListener>},
    {DiscListenerKind::Forward, MakePlain<ForwardRegionListener>},
    {DiscListenerKind::Height, MakePlain<HeightRegionListener>},
    {DiscListenerKind::Look, MakePlain<LookRegionListener>},
    {DiscListenerKind::LookMove, MakeLookMove},
    {DiscListenerKind::Menu, MakePlain<MenuRegionListener>},
    {DiscListenerKind::Orbit, MakeOrbit},
    {DiscListenerKind::Pan, MakePlain<PanRegionListener>},
    {DiscListenerKind::PivotPick, MakePlain<PivotPickRegionListener>},
    {DiscListenerKind::Rewind, MakePlain<RewindRegionListener>},
    {DiscListenerKind::Roll, MakePlain<RollRegionListener>},
    {DiscListenerKind::Walk, MakePlain<WalkRegionListener>},
    {DiscListenerKind::Zoom, MakeZoom},
};

}  // namespace

std::unique_ptr<RegionListener> MakeDiscListener(const DiscListener& what, HelmDisc& disc, TrackMenu& menu) {
  for (const Maker& maker : MAKERS) {
    if (maker.kind == what.kind) return maker.make(what, disc, menu);
  }
  return nullptr;
}

}  // namespace Korvane
