#pragma once

#include <string_view>

namespace zovhost {

constexpr double LEAST_DISPLAY_SCALE = 1.0;
constexpr double LARGEST_DISPLAY_SCALE = 4.0;

/// Pixels for one point, of what a desktop writes into the resources of an X display ("Xft.dpi:\t144"), to
/// the nearest quarter and from 1 to 4; 0 where it says nothing usable.
double ParseDesktopScale(std::string_view resources);

/// Of the X display that the session names, to the nearest quarter and from 1 to 4: as the manager of its
/// settings tells now, or else its resources; where they say nothing, by GDK_SCALE. 1 without all of them.
double FindDesktopScale();

}  // namespace zovhost
