#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zovhost {

/// A typeface in a file, and which of the wanted characters it has.
struct Typeface {
  std::string file;     // UTF-8; empty: none was found
  int index = 0;        // within the file
  double height = 1.0;  // from the highest ascender to the lowest descender, in sizes of the type
  std::vector<wchar_t> characters;
};

/// The one that suits a language best: the kit's own, or with `needed` set one that has as many of these
/// characters as can be.
Typeface FindTypeface(std::string_view languageTag, const std::vector<wchar_t>& characters, bool needed);

}  // namespace zovhost
