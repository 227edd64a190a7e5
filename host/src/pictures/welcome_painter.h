#pragma once

#include "pictures/svg_painter.h"
#include "pictures/welcome_plan.h"
#include "zovhost/image.h"

namespace zovhost {

/// A page with `lit`, an area of it, under the pointer; null: none. `unit`: pixels for one point.
bool PaintWelcome(const WelcomePage& page, const WelcomeArea* lit, double unit, const FindText& findText,
                  Image& image);

/// The regions of a page, each in its key, without antialiasing, a pixel a point.
Image PaintWelcomeMap(const WelcomePage& page);

}  // namespace zovhost
