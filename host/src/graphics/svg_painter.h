#pragma once

#include <string>

#include "zovhost/image.h"

namespace zovhost {

/// Draws a vector picture at `scale` pixels a unit. `crisp`: without antialiasing. False, with `image`
/// untouched, when the drawing is broken or has no size.
bool PaintSvg(const std::string& svg, double scale, bool crisp, Image& image);

}  // namespace zovhost
