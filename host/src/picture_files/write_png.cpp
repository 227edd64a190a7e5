#include <png.h>

#include <csetjmp>
#include <cstddef>
#include <new>
#include <utility>

#include "picture_files/image_check.h"
#include "zovhost/picture.h"
#include "zovhost/whole_file.h"

namespace zovhost {

namespace {

// Of 1 (fast) to 9 (small). What is drawn has few colours side by side and a grain: it takes a fifth of the
// time of zlib's own choice, at no more bytes, as long as no filter makes differences of it.
constexpr int COMPRESSION = 3;

struct Sink {
  std::string bytes = {};
  bool full = false;
};

void WriteBytes(png_structp png, png_bytep bytes, std::size_t size) {
  auto* sink = static_cast<Sink*>(png_get_io_ptr(png));
  try {
    sink->bytes.append(reinterpret_cast<const char*>(bytes), size);
    return;
  } catch (const std::bad_alloc&) {  // libpng is C, which no exception passes
    sink->full = true;
  }
  png_error(png, "");
}

void FlushNothing(png_structp) {}

// The default handlers print.
[[noreturn]] void Leave(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void Ignore(png_structp, png_const_charp) {}

bool IsOpaque(const Image& image) {
  for (std::size_t i = 3; i < image.rgba.size(); i += 4) {
    if (image.rgba[i] != 255) return false;
  }
  return true;
}

// libpng leaves by longjmp, so nothing here may need a destructor.
bool Encode(Sink& sink, const Image& image, bool opaque, png_structp png, png_infop info) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_set_write_fn(png, &sink, WriteBytes, FlushNothing);
  png_set_IHDR(png, info, static_cast<png_uint_32>(image.width), static_cast<png_uint_32>(image.height), 8,
               opaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(png, COMPRESSION);
  png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
  png_set_sRGB(png, info, PNG_sRGB_INTENT_PERCEPTUAL);
  png_write_info(png, info);
  if (opaque) png_set_filler(png, 0, PNG_FILLER_AFTER);
  const std::size_t rowSize = 4 * static_cast<std::size_t>(image.width);
  for (int row = 0; row < image.height; ++row)
    png_write_row(png, image.rgba.data() + static_cast<std::size_t>(row) * rowSize);
  png_write_end(png, info);
  return true;
}

}  // namespace

bool EncodePng(const Image& image, std::string& bytes, std::string& error) {
  if (!IsDrawable(image, error)) return false;
  Sink sink;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Leave, Ignore);
  png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
  const bool encoded = info != nullptr && Encode(sink, image, IsOpaque(image), png, info);
  png_destroy_write_struct(&png, &info);
  if (!encoded) {
    error = sink.full ? "there is no memory for it" : "it cannot be encoded as PNG";
    return false;
  }
  bytes = std::move(sink.bytes);
  return true;
}

bool WritePng(const std::filesystem::path& path, const Image& image, std::string& error) {
  std::string bytes;
  std::string reason;
  if (!EncodePng(image, bytes, reason)) {
    error = path.string() + ": " + reason;
    return false;
  }
  WholeFile file(path);
  file.Write(bytes.data(), bytes.size());
  return file.Finish(error);
}

}  // namespace zovhost
