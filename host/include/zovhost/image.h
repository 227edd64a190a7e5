#pragma once

#include <cstdint>
#include <vector>

namespace zovhost {

/// A picture in memory: 8 bits a channel, red, green, blue and straight (not premultiplied) alpha, sRGB,
/// rows from the top without padding.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgba;  // 4 * width * height bytes
};

}  // namespace zovhost
