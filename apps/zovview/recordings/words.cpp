#include "recordings/words.h"

#include <array>

namespace zovview {

std::string FormatNumber(double value) {
  std::array<char, 32> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  return std::string(digits.data(), written.ptr);
}

}  // namespace zovview
