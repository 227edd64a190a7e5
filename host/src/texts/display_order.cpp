#include "texts/display_order.h"

#include <fribidi.h>

#include <algorithm>
#include <vector>

namespace zovhost {

namespace {

// In the order of Reading.
constexpr FriBidiParType directions[] = {FRIBIDI_PAR_WLTR, FRIBIDI_PAR_WRTL, FRIBIDI_PAR_RTL};

bool IsFromRight(wchar_t character) {
  return FRIBIDI_IS_RTL(fribidi_get_bidi_type(static_cast<FriBidiChar>(character))) != 0;
}

std::wstring ReorderLine(const std::wstring& line, Reading reading) {
  const auto length = static_cast<FriBidiStrIndex>(line.size());
  std::vector<FriBidiChar> written(line.begin(), line.end());
  std::vector<FriBidiChar> drawn(line.size() + 1);
  FriBidiParType direction = directions[static_cast<std::size_t>(reading)];
  if (fribidi_log2vis(written.data(), length, &direction, drawn.data(), nullptr, nullptr, nullptr) == 0) {
    return line;  // memory is short
  }
  // Two letters that have become one leave a mark without width.
  const FriBidiStrIndex kept = fribidi_remove_bidi_marks(drawn.data(), length, nullptr, nullptr, nullptr);
  return {drawn.begin(), drawn.begin() + kept};
}

}  // namespace

std::wstring ToDisplayOrder(const std::wstring& text, Reading reading) {
  if (reading == Reading::FromLeft && std::none_of(text.begin(), text.end(), IsFromRight)) return text;
  std::wstring result;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(L'\n', start), text.size());
    if (end > start) result += ReorderLine(text.substr(start, end - start), reading);
    if (end < text.size()) result += L'\n';
    start = end + 1;
  }
  return result;
}

}  // namespace zovhost
