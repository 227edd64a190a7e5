#include "picture_files/image_check.h"

#include <cstddef>

namespace zovhost {

bool IsDrawable(const Image& image, std::string& error) {
  if (image.width <= 0 || image.height <= 0) {
    error = "the picture has no pixels";
    return false;
  }
  const std::size_t bytes =
      4 * static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
  if (image.rgba.size() != bytes) error = "the picture's bytes do not fit its size";
  return image.rgba.size() == bytes;
}

}  // namespace zovhost
