#include "pictures/glyph_painter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "pictures/embedded_files.h"
#include "pictures/svg_painter.h"

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

std::string MakeDrawing(std::string_view group, const GlyphStyle& style) {
  const double wanted = style.thinnestLine * gridUnits / style.size;
  const double line = std::clamp(wanted, usualLine, heaviestLine);
  const auto byte = [](double value) {
    return static_cast<int>(std::lround(255.0 * std::clamp(value, 0.0, 1.0)));
  };
  char head[256];
  std::snprintf(head, sizeof head,
                "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"24\" height=\"24\" viewBox=\"0 0 24 24\" "
                "fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\" stroke=\"#%02x%02x%02x\" "
                "stroke-width=\"%d.%03d\">",
                byte(style.colour.red), byte(style.colour.green), byte(style.colour.blue),
                static_cast<int>(line), static_cast<int>(std::lround(line * 1000.0)) % 1000);
  return std::string(head).append(group).append("</svg>");
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
