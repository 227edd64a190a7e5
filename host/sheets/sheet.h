#pragma once

#include <array>
#include <string>

#include "zovhost/image.h"

namespace zovsheets {

/// The grounds that everything of the kit has to read on.
enum class Ground : int { White, Black, Gradient, Busy };
constexpr std::array<Ground, 4> grounds = {Ground::White, Ground::Black, Ground::Gradient, Ground::Busy};

/// An opaque picture of a ground; the same for the same size.
zovhost::Image MakeGround(Ground ground, int width, int height);

/// Lays a picture over an opaque one, its top left corner at (`x`, `y`); what does not fit is cut off.
/// `magnification`: sheet pixels for one of the picture, without smoothing.
void Lay(const zovhost::Image& picture, int x, int y, int magnification, zovhost::Image& sheet);

}  // namespace zovsheets
