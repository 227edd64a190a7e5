#pragma once

#include <string>
#include <string_view>

namespace zovhost {

/// Malformed UTF-8, and wide characters that are no characters, become U+FFFD.
std::wstring Utf8ToWide(std::string_view text);
std::string WideToUtf8(std::wstring_view text);

}  // namespace zovhost
