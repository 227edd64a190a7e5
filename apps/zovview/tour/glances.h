#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tour/tour_script.h"

namespace zovview {

/// Tours of a few seconds: one of the whole viewer and one for each device.
std::vector<std::string> GetGlanceNames();
/// Empty where there is none of that name.
std::span<const TourMove> FindGlance(std::string_view name);
/// The one that shows a little of each: the cube, the bar, a disc, a flight and back.
inline constexpr const char* WHOLE_GLANCE = "all";

}  // namespace zovview
