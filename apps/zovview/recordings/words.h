#pragma once

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace zovview {

/// The words of a line, and the rest of it.
class Words {
 public:
  explicit Words(std::string_view line) : rest(line) {}

  std::string_view Next() {
    const std::string_view word = rest.substr(0, rest.find(' '));
    rest.remove_prefix(std::min(rest.size(), word.size() + 1));
    return word;
  }
  std::string_view Rest() { return std::exchange(rest, {}); }
  bool IsAtEnd() const { return rest.empty(); }

  template <class Number>
  bool Read(Number& value, Number least, Number most) {
    const std::string_view word = Next();
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), value);
    return failure == std::errc() && end == word.data() + word.size() && value >= least && value <= most;
  }

 private:
  std::string_view rest;
};

/// The shortest text that is read as the same number again.
std::string FormatNumber(double value);

}  // namespace zovview
