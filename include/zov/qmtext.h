#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "korvane/export.h"

// The texts of a host of the facade, in place of a string class of its own.

/// Says that a text comes, or is wanted, as UTF-8.
struct qmStringUTF8Tag {
  explicit qmStringUTF8Tag() = default;
};
inline constexpr qmStringUTF8Tag qmStringUTF8{};

/// Says the same of wide characters: UTF-16 where they are two bytes long, UTF-32 where they are four.
struct qmStringWcsTag {
  explicit qmStringWcsTag() = default;
};
inline constexpr qmStringWcsTag qmStringWcs{};

/// A text of Unicode. Zeros within it are kept. What is no text - a broken sequence, half of a pair, a number
/// beyond the last character - becomes U+FFFD on its way in, one for each stretch that begins like a
/// character and does not go on like one; so whatever comes out is well formed.
class ZOVTOOLS_API qmString {
 public:
  /// Empty.
  qmString() = default;
  /// `length` counts bytes: in, how many to read, below 0 up to the first zero; out, how many have been read.
  /// Null is empty.
  qmString(const char* text, qmStringUTF8Tag, int& length);
  /// `length` counts wide characters, likewise.
  qmString(const wchar_t* text, qmStringWcsTag, int& length);
  qmString(std::string_view text, qmStringUTF8Tag);
  qmString(std::wstring_view text, qmStringWcsTag);
  qmString(const qmString&) = default;
  qmString(qmString&&) = default;
  qmString& operator=(const qmString&) = default;
  qmString& operator=(qmString&&) = default;
  ~qmString() = default;

  /// The text itself, and so valid until it is assigned to or goes.
  const std::wstring& convert(qmStringWcsTag) const& { return text; }
  std::wstring convert(qmStringWcsTag) && { return std::move(text); }
  std::string convert(qmStringUTF8Tag) const;

  bool empty() const { return text.empty(); }

  /// By the numbers of the wide characters, which is no order of any language.
  bool operator==(const qmString&) const = default;
  bool operator<(const qmString& other) const { return text < other.text; }

 private:
  std::wstring text;  // well formed
};
