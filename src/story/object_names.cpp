#include "story/object_names.h"

#include <algorithm>
#include <cstddef>

namespace Korvane {

namespace {

constexpr std::size_t LONGEST_NAME = 255;
constexpr std::size_t LONGEST_WIDTH = 2;  // digits

/// A place for the number in a format.
struct Field {
  std::size_t begin = 0;
  std::size_t end = 0;  // begin: there is none
  std::size_t width = 0;
  bool zeros = false;
};

Field ReadField(const std::wstring& format, std::size_t percent) {
  Field field{percent, percent};
  std::size_t at = percent + 1;
  field.zeros = at < format.size() && format[at] == L'0';
  const std::size_t digits = at;
  while (at < format.size() && format[at] >= L'0' && format[at] <= L'9') ++at;
  if (at >= format.size() || format[at] != L'd' || at - digits > LONGEST_WIDTH) return field;
  for (std::size_t i = digits; i < at; ++i)
    field.width = field.width * 10 + static_cast<std::size_t>(format[i] - L'0');
  field.end = at + 1;
  return field;
}

std::wstring WriteNumber(const Field& field, unsigned number) {
  std::wstring digits = std::to_wstring(number);
  if (digits.size() < field.width) digits.insert(0, field.width - digits.size(), field.zeros ? L'0' : L' ');
  return digits;
}

}  // namespace

// The number is never cut off, so that each number has a name of its own.
std::wstring FormatName(const std::wstring& format, unsigned number) {
  std::wstring name;
  bool numbered = false;
  for (std::size_t at = 0; at < format.size();) {
    const Field field = format[at] == L'%' ? ReadField(format, at) : Field{at, at};
    if (field.end > field.begin) {
      const std::wstring digits = WriteNumber(field, number);
      if (!numbered) name.resize(std::min(name.size(), LONGEST_NAME - digits.size()));
      name += digits;
      numbered = true;
      at = field.end;
    } else {
      if (format.compare(at, 2, L"%%") == 0) ++at;
      name += format[at++];
    }
  }
  if (numbered) return name.substr(0, LONGEST_NAME);
  const std::wstring digits = L" " + std::to_wstring(number);
  return name.substr(0, LONGEST_NAME - digits.size()) + digits;
}

std::wstring LoadNameFormat(Renderer* renderer, StringID id, const wchar_t* otherwise) {
  std::wstring format = renderer != nullptr ? renderer->LoadStringResource(id) : std::wstring();
  if (format.empty()) return otherwise;
  return format;
}

}  // namespace Korvane
