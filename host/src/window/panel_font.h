#pragma once

#include <bitset>
#include <string>
#include <string_view>
#include <vector>

#include "window/find_typeface.h"
#include "window/icon_glyphs.h"

struct ImFontAtlas;
struct ImFontConfig;

namespace zovhost {

class Phrases;

/// The font of the panels: what the present phrases are drawn with, and the characters of texts that came
/// from elsewhere, from the typefaces that the system has for the language.
class PanelFont {
 public:
  /// Characters that are to be there; those that the panels draw are in the font from the next Update on.
  /// True when there are new ones.
  bool Add(std::string_view text);
  /// Pictures that stand among the words; they are in the font from the next Update on.
  void SetIcons(std::vector<int> pictures, IconPainter painter);
  /// Fills the atlas anew where the phrases, the characters or the density of the display, in pixels a point,
  /// are other ones than the last time. True when it has.
  bool Update(ImFontAtlas& atlas, const Phrases& phrases, float density);
  /// Whether characters or icons have come since.
  bool IsOutdated() const { return filledCount != wantedCount || iconsAreNew; }
  /// The height of a line, in points.
  float GetPointSize() const { return pointSize; }
  /// One line of what is missing, once for each language; empty for nothing.
  std::string TakeProblem();

 private:
  static constexpr std::size_t CHARACTER_COUNT = 0x10000;  // of those that a panel can draw
  static constexpr std::size_t MOST_CHARACTERS = 6000;     // of texts: what a texture has room for

  std::vector<wchar_t> CollectCharacters() const;
  void Fill(ImFontAtlas& atlas);
  double AddTypeface(ImFontAtlas& atlas, const Typeface& typeface, ImFontConfig& config, double height);
  void NoteMissing(const std::vector<wchar_t>& missing);

  std::bitset<CHARACTER_COUNT> wanted;  // by texts
  std::size_t wantedCount = 0;
  const Phrases* filledFor = nullptr;
  std::size_t filledCount = 0;
  IconGlyphs icons;
  bool iconsAreNew = false;
  float density = 1.0F;
  float pointSize = 0.0F;
  std::vector<std::vector<unsigned short>> ranges;  // of each typeface, as long as the atlas is filled
  std::string problem;
  std::vector<const Phrases*> told;
};

}  // namespace zovhost
