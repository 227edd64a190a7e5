#pragma once

#include <memory>

#include "disc/disc_tables.h"
#include "korvane/region_listener.h"

namespace Korvane {

/// Makes the listener of a region of a disc. Null for a number that is no kind: such a region shows itself,
/// is told to observers, and does nothing.
std::unique_ptr<RegionListener> MakeDiscListener(const DiscListener& what, HelmDisc& disc, TrackMenu& menu);

}  // namespace Korvane
