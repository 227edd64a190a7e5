#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "zovhost/image.h"

namespace zovhost {

/// Bytes of pixels, 8192 x 8192 of them: the largest picture that is decoded unless told otherwise.
inline constexpr std::size_t LARGEST_IMAGE = std::size_t{4} * 8192 * 8192;

/// Decodes a PNG, JPEG or any other picture that gdk-pixbuf knows. False leaves `image` alone and puts the
/// reason into `error`. A picture whose pixels would take more than `mostBytes`, or that has a side of more
/// than 16384 pixels, is refused by its header, before there is memory for it.
bool DecodeImage(const std::uint8_t* bytes, std::size_t size, Image& image, std::string& error,
                 std::size_t mostBytes = LARGEST_IMAGE);

/// Reads and decodes a picture file; `error` names the file.
bool ReadImage(const std::filesystem::path& path, Image& image, std::string& error,
               std::size_t mostBytes = LARGEST_IMAGE);

}  // namespace zovhost
