#pragma once

#include <functional>

#include "sheet.h"
#include "zovhost/image.h"

namespace zovsheets {

/// What `draw` draws over a ground, in an OpenGL context that is current. It is called twice, and has to draw
/// the same both times, with a framebuffer of the size bound. False when the driver refuses.
bool PaintOnGround(const std::function<void()>& draw, Ground ground, int width, int height,
                   zovhost::Image& image);

}  // namespace zovsheets
