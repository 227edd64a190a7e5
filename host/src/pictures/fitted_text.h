#pragma once

#include <cairo.h>

#include <string>
#include <vector>

namespace zovhost {

/// Where a text of a picture is set. In units of the Cairo context.
struct TextPlace {
  std::string text;  // UTF-8, one line
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;
  bool turned = false;  // upside down
  bool edged = false;   // with a dark edge
};

/// Sets each text in white into the middle of its place, all in the largest size that fits everywhere.
void DrawFittedTexts(cairo_t* context, const std::vector<TextPlace>& places);

}  // namespace zovhost
