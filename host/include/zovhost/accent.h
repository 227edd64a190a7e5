#pragma once

#include <array>

namespace zovhost {

/// The one colour that stands out from the neutral ones of the kit: red, green, blue, sRGB, 0 to 1.
inline constexpr std::array<double, 3> ACCENT_COLOUR = {0.0, 0.38, 0.75};

/// Its light form, for the ground of what is under the pointer.
inline constexpr std::array<double, 3> ACCENT_LIGHT_COLOUR = {0.71, 0.84, 0.95};

}  // namespace zovhost
