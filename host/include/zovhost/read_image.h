#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "zovhost/image.h"

namespace zovhost {

/// Decodes a PNG, JPEG or any other picture that gdk-pixbuf knows. False leaves `image` alone and puts the
/// reason into `error`.
bool DecodeImage(const std::uint8_t* bytes, std::size_t size, Image& image, std::string& error);

/// Reads and decodes a picture file; `error` names the file.
bool ReadImage(const std::filesystem::path& path, Image& image, std::string& error);

}  // namespace zovhost
