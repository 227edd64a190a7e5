#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "zovhost/image.h"

namespace zovsheets {

/// The grounds that everything of the kit has to read on; the last two are those that a scene has by choice.
enum class Ground : int { White, Black, Gradient, Busy, Light, Dark };
constexpr std::array<Ground, 4> grounds = {Ground::White, Ground::Black, Ground::Gradient, Ground::Busy};

/// In names of files and on command lines.
std::string_view GetName(Ground ground);
std::optional<Ground> FindGround(std::string_view name);

/// An opaque picture of a ground; the same for the same size.
zovhost::Image MakeGround(Ground ground, int width, int height);

/// Lays a picture over an opaque one, its top left corner at (`x`, `y`); what does not fit is cut off.
/// `magnification`: sheet pixels for one of the picture, without smoothing.
void Lay(const zovhost::Image& picture, int x, int y, int magnification, zovhost::Image& sheet);

}  // namespace zovsheets
