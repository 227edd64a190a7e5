#include "zovhost/wide_text.h"

#include <cstdint>

namespace zovhost {

namespace {

constexpr std::uint32_t replacement = 0xFFFD;

bool IsCharacter(std::uint32_t code) { return code < 0xD800 || (code > 0xDFFF && code <= 0x10FFFF); }

// One character from the front of a text that is not empty. What is malformed costs one byte.
std::uint32_t TakeUtf8(std::string_view& text) {
  const auto byte = [&](std::size_t i) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(text[i]));
  };
  const std::uint32_t lead = byte(0);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  std::uint32_t code = length < 2 ? lead : lead & (0x7FU >> length);
  bool valid = length > 0 && length <= text.size();
  for (std::size_t i = 1; valid && i < length; ++i) {
    valid = (byte(i) & 0xC0U) == 0x80U;
    code = code << 6U | (byte(i) & 0x3FU);
  }
  // A longer form than needed would let one character be written in several ways.
  constexpr std::uint32_t smallest[5] = {0, 0, 0x80, 0x800, 0x10000};
  valid = valid && IsCharacter(code) && code >= smallest[length];
  text.remove_prefix(valid ? length : 1);
  return valid ? code : replacement;
}

void AppendUtf8(std::uint32_t code, std::string& out) {
  const auto put = [&out](std::uint32_t value) { out.push_back(static_cast<char>(value)); };
  const auto putTail = [&](int shift) { put(0x80U | ((code >> shift) & 0x3FU)); };
  if (code < 0x80) return put(code);
  if (code < 0x800) return put(0xC0U | code >> 6U), putTail(0);
  if (code < 0x10000) return put(0xE0U | code >> 12U), putTail(6), putTail(0);
  put(0xF0U | code >> 18U), putTail(12), putTail(6), putTail(0);
}

// Wide characters are UTF-16 on some systems, whole characters on the others.
constexpr bool wideIsUtf16 = sizeof(wchar_t) == 2;

std::uint32_t CodeOf(wchar_t unit) {
  return static_cast<std::uint32_t>(unit) & (wideIsUtf16 ? 0xFFFFU : 0xFFFFFFFFU);
}

std::uint32_t TakeWide(std::wstring_view& text) {
  std::uint32_t code = CodeOf(text.front());
  text.remove_prefix(1);
  if (wideIsUtf16 && code >= 0xD800 && code < 0xDC00 && !text.empty()) {
    const std::uint32_t low = CodeOf(text.front());
    if (low >= 0xDC00 && low <= 0xDFFF) {
      text.remove_prefix(1);
      return 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
    }
  }
  return IsCharacter(code) ? code : replacement;
}

void AppendWide(std::uint32_t code, std::wstring& out) {
  if (!wideIsUtf16 || code < 0x10000) return out.push_back(static_cast<wchar_t>(code));
  code -= 0x10000;
  out.push_back(static_cast<wchar_t>(0xD800 + (code >> 10U)));
  out.push_back(static_cast<wchar_t>(0xDC00 + (code & 0x3FFU)));
}

}  // namespace

std::wstring Utf8ToWide(std::string_view text) {
  std::wstring result;
  result.reserve(text.size());
  while (!text.empty()) AppendWide(TakeUtf8(text), result);
  return result;
}

std::string WideToUtf8(std::wstring_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) AppendUtf8(TakeWide(text), result);
  return result;
}

}  // namespace zovhost
