#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "zovhost/panel_icons.h"

struct ImFont;
struct ImFontAtlas;

namespace zovhost {

/// The icons of panels as characters of their font, so that they are drawn as words are: in one go with them,
/// in their colour, and upright where panels are mirrored.
class IconGlyphs {
 public:
  void Set(std::vector<int> wantedPictures, IconPainter iconPainter);
  /// The character of a picture that was set.
  static unsigned short GetCharacter(int picture, IconSize size);

  /// Makes room in an atlas that is being filled. `density`: pixels for a point.
  void Reserve(ImFontAtlas& atlas, ImFont& font, float density, bool fromRight);
  /// Draws them, with the atlas filled.
  void Paint(ImFontAtlas& atlas);

 private:
  struct Place {
    int picture;
    int pixels;
    int rectangle;  // of the atlas
  };

  const std::vector<std::uint8_t>& FindCover(int picture, int pixels);

  std::vector<int> pictures;
  IconPainter painter;
  std::vector<Place> places;
  float coverDensity = 0.0F;
  bool turned = false;
  std::map<std::pair<int, int>, std::vector<std::uint8_t>> covers;  // by picture and pixels
};

}  // namespace zovhost
