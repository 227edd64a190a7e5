#pragma once

#include <cairo.h>

#include "pictures/text_painter.h"
#include "zovhost/accent.h"

namespace zovhost {

// What the discs and their welcome screen are painted in.

inline constexpr TextColour discInk = {0.106, 0.122, 0.141, 1.0};
inline constexpr TextColour discGround = {0.965, 0.970, 0.976, 0.78};
inline constexpr TextColour discPlate = {0.985, 0.985, 0.99, 1.0};
inline constexpr TextColour discHairline = {0.10, 0.12, 0.15, 0.34};
inline constexpr TextColour discLit = {ACCENT_LIGHT_COLOUR[0], ACCENT_LIGHT_COLOUR[1], ACCENT_LIGHT_COLOUR[2],
                                       0.98};
inline constexpr TextColour discAccent = {ACCENT_COLOUR[0], ACCENT_COLOUR[1], ACCENT_COLOUR[2], 1.0};

inline void SetColour(cairo_t* context, const TextColour& colour) {
  cairo_set_source_rgba(context, colour.red, colour.green, colour.blue, colour.alpha);
}

}  // namespace zovhost
