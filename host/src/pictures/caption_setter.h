#pragma once

#include <cairo.h>

#include <string>

#include "pictures/canvas.h"
#include "pictures/text_painter.h"

namespace zovhost {

/// Sets short lines of text by the height of their capitals. Lengths in pixels.
class CaptionSetter {
 public:
  CaptionSetter();

  /// Of the font in which capitals have a height.
  double GetFontSize(double capHeight) const { return capHeight / capRatio; }
  double GetWidth(const std::string& text, double capHeight) const;
  /// The capitals stand around `y`, the line around `x`; the base line on a whole pixel.
  void Draw(cairo_t* context, const std::string& text, double capHeight, double x, double y,
            const TextColour& colour) const;

 private:
  Canvas measure;
  double capRatio = 0.7;  // the height of capitals, in sizes of the font
};

}  // namespace zovhost
