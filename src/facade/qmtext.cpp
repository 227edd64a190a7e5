#include "zov/qmtext.h"

#include <climits>

#include "foundation/unicode.h"

namespace {

// What `length` asks for, and into it what there is.
template <class Unit>
std::basic_string_view<Unit> Take(const Unit* text, int& length) {
  if (text == nullptr) {
    length = 0;
    return {};
  }
  if (length >= 0) return {text, static_cast<std::size_t>(length)};
  std::basic_string_view<Unit> all(text);
  all = all.substr(0, INT_MAX);
  length = static_cast<int>(all.size());
  return all;
}

}  // namespace

qmString::qmString(const char* source, qmStringUTF8Tag tag, int& length)
    : qmString(Take(source, length), tag) {}
qmString::qmString(const wchar_t* source, qmStringWcsTag tag, int& length)
    : qmString(Take(source, length), tag) {}
qmString::qmString(std::string_view source, qmStringUTF8Tag)
    : text(Korvane::Unicode::Convert<wchar_t>(source)) {}
qmString::qmString(std::wstring_view source, qmStringWcsTag)
    : text(Korvane::Unicode::Convert<wchar_t>(source)) {}

std::string qmString::convert(qmStringUTF8Tag) const {
  return Korvane::Unicode::Convert<char>(std::wstring_view(text));
}
