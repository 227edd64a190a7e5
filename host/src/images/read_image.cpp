#include "zovhost/read_image.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

namespace zovhost {

namespace {

// Beyond what graphics cards take as a texture; keeps a few bytes of header from asking for gigabytes.
constexpr int LARGEST_SIDE = 16384;
constexpr std::uintmax_t LARGEST_FILE = std::uintmax_t{256} << 20;

struct Release {
  void operator()(gpointer object) const { g_object_unref(object); }
};
using Loader = std::unique_ptr<GdkPixbufLoader, Release>;

std::string TakeMessage(GError* error) {
  std::string text = error != nullptr ? error->message : "it is damaged";
  g_clear_error(&error);
  return text;
}

struct Room {
  std::size_t bytes;
  std::string refusal;
};

// Told before the pixels are allocated; size 0 makes the loader give up.
void LimitSize(GdkPixbufLoader* loader, int width, int height, gpointer data) {
  Room& room = *static_cast<Room*>(data);
  const auto pixels =
      static_cast<std::uint64_t>(std::max(width, 0)) * static_cast<std::uint64_t>(std::max(height, 0));
  if (width <= LARGEST_SIDE && height <= LARGEST_SIDE && 4 * pixels <= room.bytes) return;
  room.refusal = "it is " + std::to_string(width) + " x " + std::to_string(height) +
                 ", which is more than there is room for";
  gdk_pixbuf_loader_set_size(loader, 0, 0);
}

Image CopyPixels(const GdkPixbuf& pixbuf) {
  Image image;
  image.width = gdk_pixbuf_get_width(&pixbuf);
  image.height = gdk_pixbuf_get_height(&pixbuf);
  const int channels = gdk_pixbuf_get_n_channels(&pixbuf);
  const int stride = gdk_pixbuf_get_rowstride(&pixbuf);
  const guint8* pixels = gdk_pixbuf_read_pixels(&pixbuf);
  image.rgba.reserve(4 * static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
  for (int y = 0; y < image.height; ++y) {
    const guint8* pixel = pixels + static_cast<std::ptrdiff_t>(y) * stride;
    for (int x = 0; x < image.width; ++x, pixel += channels) {
      const guint8 opacity = channels == 4 ? pixel[3] : guint8{255};
      image.rgba.insert(image.rgba.end(), {pixel[0], pixel[1], pixel[2], opacity});
    }
  }
  return image;
}

}  // namespace

bool DecodeImage(const std::uint8_t* bytes, std::size_t size, Image& image, std::string& error,
                 std::size_t mostBytes) {
  if (size == 0) {
    error = "the file is empty";
    return false;
  }
  Room room{mostBytes, {}};
  const Loader loader(gdk_pixbuf_loader_new());
  g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(LimitSize), &room);
  GError* failure = nullptr;
  const bool read = gdk_pixbuf_loader_write(loader.get(), bytes, size, &failure) != FALSE;
  // A loader wants to be closed in any case.
  const bool closed = gdk_pixbuf_loader_close(loader.get(), read ? &failure : nullptr) != FALSE;
  const GdkPixbuf* pixbuf = read && closed ? gdk_pixbuf_loader_get_pixbuf(loader.get()) : nullptr;
  if (pixbuf == nullptr) {
    error = TakeMessage(failure);
    if (!room.refusal.empty()) error = room.refusal;
    return false;
  }
  image = CopyPixels(*pixbuf);
  return true;
}

bool ReadImage(const std::filesystem::path& path, Image& image, std::string& error, std::size_t mostBytes) {
  const auto fail = [&](const std::string& reason) {
    error = path.string() + ": " + reason;
    return false;
  };
  std::error_code failure;
  const std::uintmax_t size = std::filesystem::file_size(path, failure);
  if (failure) return fail(failure.message());
  if (size > LARGEST_FILE) return fail("the picture is too large");
  std::ifstream file(path, std::ios::binary);
  if (!file) return fail("it cannot be opened");
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  std::string reason;
  const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
  return DecodeImage(data, bytes.size(), image, reason, mostBytes) || fail(reason);
}

}  // namespace zovhost
