#include "texts/reading_order.h"

#include <fribidi.h>

#include <algorithm>

namespace zovhost {

namespace {

bool IsFromRight(wchar_t character) {
  return FRIBIDI_IS_RTL(fribidi_get_bidi_type(static_cast<FriBidiChar>(character))) != 0;
}

// How a line is read: the kind of each character, and how deep it is nested; those of odd levels go to the
// left.
struct ReadLine {
  explicit ReadLine(const std::wstring& line, FriBidiParType direction)
      : length(static_cast<FriBidiStrIndex>(line.size())),
        characters(line.begin(), line.end()),
        types(line.size()),
        levels(line.size()) {
    fribidi_get_bidi_types(characters.data(), length, types.data());
    std::vector<FriBidiBracketType> brackets(line.size());
    fribidi_get_bracket_types(characters.data(), length, types.data(), brackets.data());
    valid = length > 0 && fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), length,
                                                              &direction, levels.data()) != 0;
    base = direction;
  }

  FriBidiStrIndex length;
  std::vector<FriBidiChar> characters;
  std::vector<FriBidiCharType> types;
  std::vector<FriBidiLevel> levels;
  FriBidiParType base = FRIBIDI_PAR_LTR;
  bool valid = false;  // not when memory is short
};

static_assert(JOINED_AWAY == FRIBIDI_CHAR_FILL);

}  // namespace

std::wstring JoinInPlace(const std::wstring& text) {
  ReadLine line(text, FRIBIDI_PAR_ON);
  if (!line.valid) return text;
  std::vector<FriBidiArabicProp> joins(text.size());
  fribidi_get_joining_types(line.characters.data(), line.length, joins.data());
  fribidi_join_arabic(line.types.data(), line.length, line.levels.data(), joins.data());
  fribidi_shape(FRIBIDI_FLAGS_ARABIC, line.levels.data(), line.length, joins.data(), line.characters.data());
  return {line.characters.begin(), line.characters.end()};
}

bool IsReadFromRight(const std::wstring& text) { return std::any_of(text.begin(), text.end(), IsFromRight); }

bool BeginsFromRight(const std::wstring& text) {
  const auto isLetter = [](wchar_t character) {
    return FRIBIDI_IS_STRONG(fribidi_get_bidi_type(static_cast<FriBidiChar>(character))) != 0;
  };
  const auto first = std::find_if(text.begin(), text.end(), isLetter);
  return first != text.end() && IsFromRight(*first);
}

std::wstring JoinLetters(const std::wstring& text) {
  if (!IsReadFromRight(text)) return text;
  std::wstring result;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(L'\n', start), text.size());
    std::wstring line = JoinInPlace(text.substr(start, end - start));
    std::erase(line, JOINED_AWAY);
    result += line;
    if (end < text.size()) result += L'\n';
    start = end + 1;
  }
  return result;
}

std::vector<PlacedCharacter> FindScreenOrder(const std::wstring& text, bool fromRight) {
  std::vector<PlacedCharacter> places(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) places[i] = {i, text[i], false};
  ReadLine line(text, fromRight ? FRIBIDI_PAR_RTL : FRIBIDI_PAR_LTR);
  if (!line.valid) return places;
  std::vector<FriBidiStrIndex> order(text.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<FriBidiStrIndex>(i);
  if (fribidi_reorder_line(FRIBIDI_FLAGS_DEFAULT, line.types.data(), line.length, 0, line.base,
                           line.levels.data(), nullptr, order.data()) == 0) {
    return places;
  }
  const auto index = [&](std::size_t place) { return static_cast<std::size_t>(order[place]); };
  for (std::size_t place = 0; place < places.size(); ++place) {
    FriBidiChar drawn = line.characters[index(place)];
    if (line.levels[index(place)] % 2 != 0) fribidi_get_mirror_char(drawn, &drawn);
    places[place] = {index(place), static_cast<wchar_t>(drawn), line.levels[index(place)] % 2 != 0};
  }
  return places;
}

}  // namespace zovhost
