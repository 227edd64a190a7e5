#pragma once

#include <array>

namespace zovhost {

/// The one colour that stands out from the neutral ones of the kit: red, green, blue, sRGB, 0 to 1.
inline constexpr std::array<double, 3> ACCENT_COLOUR = {0.0, 0.38, 0.75};

}  // namespace zovhost
