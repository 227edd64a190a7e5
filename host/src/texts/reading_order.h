#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zovhost {

/// Each letter in the form in which it is joined to its neighbours, in the order in which it is written.
std::wstring JoinLetters(const std::wstring& text);

/// The same of one line, with as many characters as it had: where two letters have become one, the second is
/// this, which nothing shows.
inline constexpr wchar_t JOINED_AWAY = L'\uFEFF';
std::wstring JoinInPlace(const std::wstring& line);

/// Whether anything in it is read from the right.
bool IsReadFromRight(const std::wstring& text);

/// Whether its first letter is; signs and digits are none.
bool BeginsFromRight(const std::wstring& text);

/// For each place of a line, from left to right on the screen, what stands there: an index into the text.
/// `fromRight`: the line begins at the right.
struct PlacedCharacter {
  std::size_t index = 0;
  wchar_t drawn = 0;  // a bracket that is read from the right is the opposite one
  bool fromRight = false;
};
std::vector<PlacedCharacter> FindScreenOrder(const std::wstring& line, bool fromRight);

}  // namespace zovhost
