#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Texts between UTF-8 and wide characters of two or four bytes. Nothing here fails: what is no text reads as
// the replacement character.
namespace Korvane::Unicode {

constexpr char32_t REPLACEMENT = 0xFFFD;
constexpr char32_t LAST_CHARACTER = 0x10FFFF;
constexpr char32_t BEYOND_BASIC_PLANE = 0x10000;
constexpr char32_t FIRST_HIGH_SURROGATE = 0xD800;
constexpr char32_t FIRST_LOW_SURROGATE = 0xDC00;
constexpr char32_t LAST_SURROGATE = 0xDFFF;

constexpr bool IsHighSurrogate(char32_t unit) {
  return unit >= FIRST_HIGH_SURROGATE && unit < FIRST_LOW_SURROGATE;
}
constexpr bool IsLowSurrogate(char32_t unit) { return unit >= FIRST_LOW_SURROGATE && unit <= LAST_SURROGATE; }
constexpr bool IsCharacter(char32_t value) {
  return value <= LAST_CHARACTER && !IsHighSurrogate(value) && !IsLowSurrogate(value);
}

/// What a byte that begins a character of UTF-8 says of those that follow: how many, and what the first of
/// them may be, which keeps out longer ways to write a character, surrogates, and numbers beyond the last.
struct Lead {
  unsigned char first;
  unsigned char last;
  int following;
  unsigned char lowest;
  unsigned char highest;
};

constexpr Lead LEADS[] = {
    {0x00, 0x7F, 0, 0x80, 0xBF}, {0xC2, 0xDF, 1, 0x80, 0xBF}, {0xE0, 0xE0, 2, 0xA0, 0xBF},
    {0xE1, 0xEC, 2, 0x80, 0xBF}, {0xED, 0xED, 2, 0x80, 0x9F}, {0xEE, 0xEF, 2, 0x80, 0xBF},
    {0xF0, 0xF0, 3, 0x90, 0xBF}, {0xF1, 0xF3, 3, 0x80, 0xBF}, {0xF4, 0xF4, 3, 0x80, 0x8F},
};

constexpr const Lead* FindLead(unsigned char byte) {
  for (const Lead& lead : LEADS) {
    if (byte >= lead.first && byte <= lead.last) return &lead;
  }
  return nullptr;
}

/// The character at `at`, which moves behind it, or behind as much of it as there is. `at` is within the
/// text.
constexpr char32_t ReadCharacter(std::string_view text, std::size_t& at) {
  const auto first = static_cast<unsigned char>(text[at++]);
  const Lead* const lead = FindLead(first);
  if (lead == nullptr) return REPLACEMENT;
  char32_t value = lead->following == 0 ? first : first & (0x3FU >> lead->following);
  for (int i = 0; i < lead->following; ++i) {
    if (at == text.size()) return REPLACEMENT;
    const auto byte = static_cast<unsigned char>(text[at]);
    const bool fits = i == 0 ? byte >= lead->lowest && byte <= lead->highest : byte >= 0x80 && byte <= 0xBF;
    if (!fits) return REPLACEMENT;
    value = value << 6U | (byte & 0x3FU);
    ++at;
  }
  return value;
}

/// The same of wide characters, by their width.
template <class Unit>
constexpr char32_t ReadCharacter(std::basic_string_view<Unit> text, std::size_t& at) {
  const auto first = static_cast<char32_t>(text[at++]);
  if constexpr (sizeof(Unit) == 2) {
    if (IsHighSurrogate(first) && at < text.size()) {
      const auto second = static_cast<char32_t>(text[at]);
      if (!IsLowSurrogate(second)) return REPLACEMENT;
      ++at;
      return BEYOND_BASIC_PLANE + ((first - FIRST_HIGH_SURROGATE) << 10U) + (second - FIRST_LOW_SURROGATE);
    }
  }
  return IsCharacter(first) ? first : REPLACEMENT;
}

inline void Append(std::string& text, char32_t character) {
  constexpr unsigned LEADING[] = {0x00, 0xC0, 0xE0, 0xF0};
  const int following = character < 0x80 ? 0 : character < 0x800 ? 1 : character < BEYOND_BASIC_PLANE ? 2 : 3;
  text += static_cast<char>(LEADING[following] | character >> (6 * following));
  for (int i = following - 1; i >= 0; --i) text += static_cast<char>(0x80U | (character >> (6 * i) & 0x3FU));
}

template <class Unit>
void Append(std::basic_string<Unit>& text, char32_t character) {
  if (sizeof(Unit) == 2 && character >= BEYOND_BASIC_PLANE) {
    const char32_t rest = character - BEYOND_BASIC_PLANE;
    text += static_cast<Unit>(FIRST_HIGH_SURROGATE + (rest >> 10U));
    text += static_cast<Unit>(FIRST_LOW_SURROGATE + (rest & 0x3FFU));
  } else {
    text += static_cast<Unit>(character);
  }
}

/// From one form to another, or to the same, well formed.
template <class To, class From>
std::basic_string<To> Convert(std::basic_string_view<From> text) {
  std::basic_string<To> result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) Append(result, ReadCharacter(text, at));
  return result;
}

}  // namespace Korvane::Unicode
