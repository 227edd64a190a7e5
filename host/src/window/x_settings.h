#pragma once

#include <span>

namespace zovhost {

/// Pixels for one point, of what the settings manager of an X display offers (the property of XSETTINGS, with
/// "Xft/DPI" and "Gdk/WindowScalingFactor"): the larger of the two, as it stands. 0 where they say nothing
/// usable, and for bytes that are broken; the order of each number's bytes is that which they tell.
double ParseXSettings(std::span<const unsigned char> bytes);

}  // namespace zovhost
