#include "pictures/glyph_painter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "pictures/svg_painter.h"
#include "texts/embedded_files.h"

namespace zovhost {

namespace {

constexpr double gridUnits = 24.0;
constexpr double usualLine = 2.0;  // grid units
constexpr double heaviestLine = 3.0;

std::string_view FindFile(std::string_view name) {
  const EmbeddedFiles files = GetEmbeddedFiles();
  const EmbeddedFile* found =
      std::find_if(files.begin, files.end, [name](const EmbeddedFile& file) { return file.name == name; });
  return found != files.end ? found->content : std::string_view();
}

// What stands in the group, without its tags; empty for a file without the group.
std::string_view FindGroup(std::string_view svg) {
  constexpr std::string_view opening = "<g id=\"glyph\">";
  const std::size_t begin = svg.find(opening);
  if (begin == std::string_view::npos) return {};
  svg.remove_prefix(begin + opening.size());
  return svg.substr(0, svg.find("</g>"));
}

// A number as SVG has it, whatever the locale.
std::string Format(double value) {
  const long thousandths = std::lround(value * 1000.0);
  char text[32];
  std::snprintf(text, sizeof text, "%ld.%03ld", thousandths / 1000, thousandths % 1000);
  return text;
}

std::string FormatColour(const TextColour& colour) {
  const auto byte = [](double value) {
    return static_cast<int>(std::lround(255.0 * std::clamp(value, 0.0, 1.0)));
  };
  char text[16];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", byte(colour.red), byte(colour.green), byte(colour.blue));
  return text;
}

// The strokes of the group, `line` grid units wide.
std::string MakeLayer(std::string_view group, const std::string& colour, double line) {
  std::string layer =
      "<g color=\"" + colour + "\" stroke=\"" + colour + "\" stroke-width=\"" + Format(line) + "\">";
  return layer.append(group).append("</g>");
}

std::string MakeDrawing(std::string_view group, const GlyphStyle& style) {
  const double unit = style.size / gridUnits;
  const double line = std::clamp(style.thinnestLine / unit, usualLine, heaviestLine);
  std::string drawing =
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"24\" height=\"24\" viewBox=\"0 0 24 24\" "
      "overflow=\"visible\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">";
  if (style.edge > 0.0) {
    drawing += "<g opacity=\"0.9\">" + MakeLayer(group, "#ffffff", line + 2.0 * style.edge / unit) + "</g>";
  }
  return drawing + MakeLayer(group, FormatColour(style.colour), line) + "</svg>";
}

}  // namespace

bool DrawGlyph(cairo_t* context, std::string_view file, const GlyphStyle& style) {
  const std::string_view group = FindGroup(FindFile(file));
  if (group.empty() || !(style.size > 0.0)) return false;
  const double half = style.size / 2.0;
  return DrawSvg(MakeDrawing(group, style), {style.x - half, style.y - half, style.size, style.size},
                 context);
}

}  // namespace zovhost
