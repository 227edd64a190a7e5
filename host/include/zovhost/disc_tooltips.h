#pragma once

#include <optional>

#include "korvane/box2.h"
#include "korvane/resource_ids.h"

namespace Korvane {
class HelmDisc;
}

namespace zovhost {

// The tooltips of the discs for a host that shows them by itself, as TooltipNote does. A disc shows them in a
// place of its own, over its lower half and whatever covers the view, two seconds after it has come to rest.

/// The discs show none by themselves any more. Once after each Create of the disc, which makes its menus
/// anew.
void TakeTooltipsOf(Korvane::HelmDisc& disc);

/// The text of what the pointer is on, as a number for the renderer; STRING_NONE where there is none: no disc
/// is open or to be seen, one is being used, or its parameters want none.
Korvane::StringID FindDiscTooltip(const Korvane::HelmDisc& disc);

/// Where the open disc is, in viewport pixels, y upward; none while none shows.
std::optional<Korvane::Box2> FindDiscBounds(const Korvane::HelmDisc& disc);

}  // namespace zovhost
