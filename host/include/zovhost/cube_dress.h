#pragma once

#include "korvane/orientor_parameters.h"

namespace zovhost {

// The kit's own choices for the orientation cube, where they differ from those that the library has without
// them: its words read at rest on any view, and it is large enough to be pointed at. Write them before the
// cube is created, or tell it afterwards with SetSize.

/// All of them, for a display of `scale` pixels a point. A scale that is not finite or below 1 counts as 1.
void DressCube(Korvane::OrientorParameters& parameters, double scale = 1.0);
/// The lengths that count in pixels alone, for a display that has become another; what a user has chosen
/// stays.
void ResizeCube(Korvane::OrientorParameters& parameters, double scale);

}  // namespace zovhost
