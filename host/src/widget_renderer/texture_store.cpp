#include "widget_renderer/texture_store.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "gl/gl_program.h"

namespace zovhost {

namespace {

constexpr std::size_t mostKept = std::size_t{64}
                                 << 20;  // bytes; all of the welcome screen at 2 pixels a point
constexpr double largestSide = 1e6;      // more than any picture can have
constexpr TextureOptions pictureOptions = {.mipmaps = true};

}  // namespace

void TextureStore::Replace(Slot& slot, const Slot& next) {
  if (slot.texture != 0) glDeleteTextures(1, &slot.texture);
  slot = next;
}

bool TextureStore::Load(const ResourcePack& resources, int id, double scale) {
  if (!IsSlot(id)) return false;
  if (TakeKept(id)) return true;
  const int pixels = sizes[static_cast<std::size_t>(id)];
  Image image;
  const bool drawn = pixels > 0 && resources.IsSizedPicture(id)
                         ? resources.RenderSizedPicture(id, pixels / scale, scale, image)
                         : resources.RenderPicture(id, scale, image);
  ++drawnCount;
  return drawn && LoadImage(resources, id, image);
}

bool TextureStore::LoadImage(const ResourcePack& resources, int id, const Image& image) {
  const GLuint texture = UploadTexture(image, pictureOptions);
  if (texture == 0) return false;
  Replace(slots[static_cast<std::size_t>(id)],
          {.texture = texture,
           .loaded = true,
           .shows = resources.HasPicture(id),
           .width = image.width,
           .bytes = resources.IsSizedPicture(id) ? image.rgba.size() : 0});
  return true;
}

void TextureStore::Release(int id) {
  if (!IsSlot(id)) return;
  Slot& slot = slots[static_cast<std::size_t>(id)];
  if (slot.bytes > 0) {
    Keep(id, std::exchange(slot, {}));
  } else {
    Replace(slot, {});
  }
}

// ---- pictures that were released ----

// One of each number.
void TextureStore::Keep(int id, const Slot& slot) {
  kept.push_back({id, slot});
  std::size_t bytes = 0;
  for (const KeptPicture& picture : kept) bytes += picture.slot.bytes;
  while (bytes > mostKept) {
    bytes -= kept.front().slot.bytes;
    Replace(kept.front().slot, {});
    kept.erase(kept.begin());
  }
}

bool TextureStore::TakeKept(int id) {
  const auto found =
      std::find_if(kept.begin(), kept.end(), [id](const KeptPicture& picture) { return picture.id == id; });
  if (found == kept.end()) return false;
  Replace(slots[static_cast<std::size_t>(id)], found->slot);
  kept.erase(found);
  return true;
}

void TextureStore::DropKept() {
  for (KeptPicture& picture : kept) Replace(picture.slot, {});
  kept.clear();
}

// ---- all of them ----

void TextureStore::Reload(const ResourcePack& resources, double scale) {
  DropKept();
  for (int id = 0; id < ResourcePack::pictureCount; ++id) {
    if (slots[static_cast<std::size_t>(id)].loaded) Load(resources, id, scale);
  }
}

void TextureStore::Clear() {
  DropKept();
  for (Slot& slot : slots) Replace(slot, {});
}

// ---- to draw with ----

GLuint TextureStore::Find(int id) {
  if (!IsSlot(id)) return 0;
  Slot& slot = slots[static_cast<std::size_t>(id)];
  if (slot.texture == 0) {
    slot.texture = UploadTexture(ResourcePack::RenderPlaceholder(id, 1.0), pictureOptions);
  }
  if (!slot.shows) {
    ++placeholderCount;
    lastPlaceholder = id;
  }
  return slot.texture;
}

GLuint TextureStore::FindSized(const ResourcePack& resources, int id, double pixels, double scale) {
  const bool sized = IsSlot(id) && resources.IsSizedPicture(id);
  if (!sized || !slots[static_cast<std::size_t>(id)].loaded) return Find(id);
  int& size = sizes[static_cast<std::size_t>(id)];
  const int wanted = static_cast<int>(std::lround(std::clamp(pixels, 1.0, largestSide)));
  const bool fits = wanted == size || wanted == slots[static_cast<std::size_t>(id)].width;
  size = wanted;  // also when it fails: it would again
  if (!fits) Load(resources, id, scale);
  return Find(id);
}

}  // namespace zovhost
