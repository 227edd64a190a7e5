#pragma once

#include <cairo.h>

#include <string_view>

#include "pictures/text_painter.h"

namespace zovhost {

/// How a line icon of the 24-unit grid is drawn. In units of the context.
struct GlyphStyle {
  double x = 0.0;  // of its middle
  double y = 0.0;
  double size = 24.0;
  TextColour colour = {};     // opaque
  double thinnestLine = 0.0;  // the strokes are widened to it, up to a heavier weight
  double edge = 0.0;          // of white, around the strokes
};

/// Draws the group "glyph" of one of the kit's resources. False for a file that is not there or has none.
bool DrawGlyph(cairo_t* context, std::string_view file, const GlyphStyle& style);

}  // namespace zovhost
