#pragma once

#include <cairo.h>

#include <functional>
#include <string>

#include "zovhost/image.h"

namespace zovhost {

/// The text of a number; empty for none.
using FindText = std::function<const std::string&(int number)>;

/// Draws a vector picture at `scale` pixels a unit. `crisp`: without antialiasing, and without texts. False,
/// with `image` untouched, when the drawing is broken or has no size.
///
/// A rectangle whose identifier begins with "text-" and a number is a place for that text: it is set there
/// in white, as large as fits, and all texts of a picture in one size, that of the longest. Words after the
/// number change it: "text-7-turned" is set upside down, "text-7-edged" has a dark edge. `findText` may be
/// empty.
bool PaintSvg(const std::string& svg, double scale, bool crisp, const FindText& findText, Image& image);

struct SvgPlace {
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;
};

/// Draws a vector picture into a place of a drawing, in units of the context. False when it is broken.
bool DrawSvg(const std::string& svg, const SvgPlace& place, cairo_t* context);

}  // namespace zovhost
