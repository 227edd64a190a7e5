#pragma once

#include <string>

#include "zovhost/image.h"

namespace zovhost {

struct TextColour {
  double red = 0.0;
  double green = 0.0;
  double blue = 0.0;
  double alpha = 0.0;  // 0: nothing is drawn
};

/// How a text is set. Lengths in points: pixels of a display of scale 1.
struct TextStyle {
  double size = 12.0;
  bool bold = false;
  TextColour text = {0.0, 0.0, 0.0, 1.0};
  double secondSize = 10.0;  // of a second text below the first
  TextColour secondText = {};

  // The edge around the glyphs that keeps them readable on any ground.
  TextColour edge = {};
  double edgeWidth = 0.0;

  // The plate below the text, its border, and the soft shadow around it.
  TextColour plate = {};
  TextColour border = {};
  double radius = 0.0;
  double paddingX = 0.0;
  double paddingY = 0.0;
  double shadow = 0.0;  // reach; 0: none

  double wrapWidth = 420.0;  // longer lines are broken
  int maximumLines = 12;     // beyond that the text ends in an ellipsis
  double width = 0.0;        // of the plate; 0: as wide as the text needs
  double height = 0.0;
  double roomBelow = 0.0;  // of the picture, with nothing on it
  bool hugs = false;       // the plate is narrower than `width` around a shorter text
  bool marker = false;  // a small triangle that points down, at the right, as on a button that opens a list
};

/// Sets `text`, and `second` below it unless empty, for a display of `scale` pixels a point. UTF-8. False,
/// with `image` untouched, for a text without anything to draw.
bool PaintText(const TextStyle& style, const std::string& text, const std::string& second, double scale,
               Image& image);

}  // namespace zovhost
