#include "window/panel_font.h"

#include <imgui.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include "zovhost/phrases.h"
#include "zovhost/wide_text.h"

namespace zovhost {

namespace {

constexpr float FONT_SIZE = 15.0F;      // points, the height of a line
constexpr float BUILT_IN_SIZE = 13.0F;  // of a font of dots, for a system without any
constexpr wchar_t FIRST_CHARACTER = 0x20;
constexpr wchar_t LAST_LATIN = 0xFF;                     // that are there in any case
constexpr wchar_t FURTHER[] = {0x202F, 0x2026, 0xFFFD};  // a narrow space, an ellipsis, what cannot be shown
constexpr std::size_t MANY_GLYPHS = 128;  // of a script whose glyphs take much room in the texture

std::size_t CodeOf(wchar_t character) { return static_cast<std::uint32_t>(character) & 0xFFFFFFFFU; }

// Pairs of the first and the last of each range, and 0.
std::vector<ImWchar> MakeRanges(const std::vector<wchar_t>& characters) {
  std::vector<ImWchar> ranges;
  for (const wchar_t character : characters) {
    const auto code = static_cast<ImWchar>(CodeOf(character));
    if (ranges.empty() || ranges.back() + 1 != code) ranges.insert(ranges.end(), {code, code});
    ranges.back() = code;
  }
  ranges.push_back(0);
  return ranges;
}

}  // namespace

bool PanelFont::Add(std::string_view text) {
  const std::size_t before = wantedCount;
  for (const wchar_t character : Utf8ToWide(text)) {
    const std::size_t code = CodeOf(character);
    if (code < FIRST_CHARACTER || code >= wanted.size() || wanted[code]) continue;
    if (wantedCount >= MOST_CHARACTERS) break;
    wanted.set(code);
    ++wantedCount;
  }
  return wantedCount != before;
}

void PanelFont::SetIcons(std::vector<int> pictures, IconPainter painter) {
  icons.Set(std::move(pictures), std::move(painter));
  iconsAreNew = true;
}

bool PanelFont::Update(ImFontAtlas& atlas, const Phrases& phrases, float wantedDensity) {
  const bool same = filledFor == &phrases && !IsOutdated() && density == wantedDensity;
  if (same && atlas.Fonts.Size > 0) return false;
  filledFor = &phrases;
  filledCount = wantedCount;
  density = wantedDensity;
  iconsAreNew = false;
  Fill(atlas);
  return true;
}

std::string PanelFont::TakeProblem() { return std::exchange(problem, {}); }

std::vector<wchar_t> PanelFont::CollectCharacters() const {
  std::bitset<CHARACTER_COUNT> all = wanted;
  const auto add = [&all](wchar_t character) {
    const std::size_t code = CodeOf(character);
    if (character >= FIRST_CHARACTER && code < all.size()) all.set(code);
  };
  for (wchar_t character = FIRST_CHARACTER; character <= LAST_LATIN; ++character) add(character);
  std::ranges::for_each(FURTHER, add);
  std::ranges::for_each(filledFor->GetCharacters(), add);
  std::vector<wchar_t> characters;
  for (std::size_t code = 0; code < all.size(); ++code) {
    if (all[code]) characters.push_back(static_cast<wchar_t>(code));
  }
  return characters;
}

// The kit's typeface first, then those that have what is missing, as many as it takes.
void PanelFont::Fill(ImFontAtlas& atlas) {
  atlas.Clear();
  ranges.clear();
  const std::string_view tag = filledFor->GetLanguage().tag;
  std::vector<wchar_t> missing = CollectCharacters();
  ImFontConfig config;
  double height = 0.0;
  for (bool first = true; !missing.empty(); first = false) {
    const Typeface typeface = FindTypeface(tag, missing, !first);
    if (typeface.file.empty() || typeface.characters.empty()) break;
    height = AddTypeface(atlas, typeface, config, height);
    if (height <= 0.0) break;
    std::vector<wchar_t> rest;
    std::ranges::set_difference(missing, typeface.characters, std::back_inserter(rest));
    missing = std::move(rest);
  }
  pointSize = FONT_SIZE;
  if (atlas.Fonts.Size == 0) {
    atlas.AddFontDefault();
    pointSize = BUILT_IN_SIZE;
  }
  icons.Reserve(atlas, *atlas.Fonts[0], density, filledFor->GetLanguage().rightToLeft);
  icons.Paint(atlas);
  NoteMissing(missing);
}

// Each in the size of type that the first one has: the typefaces differ in how much air they have above and
// below. The height of the first one; 0 when it cannot be read.
double PanelFont::AddTypeface(ImFontAtlas& atlas, const Typeface& typeface, ImFontConfig& config,
                              double height) {
  const double firstHeight = height > 0.0 ? height : typeface.height;
  ranges.push_back(MakeRanges(typeface.characters));
  config.FontNo = typeface.index;
  config.SizePixels = FONT_SIZE * density * static_cast<float>(typeface.height / firstHeight);
  config.OversampleH = typeface.characters.size() > MANY_GLYPHS && config.MergeMode ? 1 : 3;
  const bool added = atlas.AddFontFromFileTTF(typeface.file.c_str(), config.SizePixels, &config,
                                              ranges.back().data()) != nullptr;
  config.MergeMode = true;
  return added ? firstHeight : 0.0;
}

// Characters that no typeface may have, as the parts of an emoji, are no loss of the language.
void PanelFont::NoteMissing(const std::vector<wchar_t>& missing) {
  const std::wstring_view spoken = filledFor->GetCharacters();
  const auto count = std::ranges::count_if(
      missing, [spoken](wchar_t character) { return std::ranges::binary_search(spoken, character); });
  if (count == 0 || std::ranges::find(told, filledFor) != told.end()) return;
  told.push_back(filledFor);
  const Language& language = filledFor->GetLanguage();
  problem = "no typeface for " + std::string(language.englishName) + ": " + std::to_string(count) + " of " +
            std::to_string(spoken.size()) + " characters show as question marks";
}

}  // namespace zovhost
