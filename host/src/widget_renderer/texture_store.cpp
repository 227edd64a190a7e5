#include "widget_renderer/texture_store.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "gl/gl_program.h"

namespace zovhost {

namespace {

constexpr double largestSide = 1e6;  // more than any picture can have
constexpr TextureOptions pictureOptions = {.mipmaps = true};

}  // namespace

void TextureStore::Replace(Slot& slot, const Slot& next) {
  if (slot.texture != 0) glDeleteTextures(1, &slot.texture);
  slot = next;
}

bool TextureStore::Load(const ResourcePack& resources, int id, double scale) {
  if (!IsSlot(id)) return false;
  const int pixels = sizes[static_cast<std::size_t>(id)];
  Image image;
  const bool drawn = pixels > 0 && resources.IsSizedPicture(id)
                         ? resources.RenderSizedPicture(id, pixels / scale, scale, image)
                         : resources.RenderPicture(id, scale, image);
  return drawn && LoadImage(resources, id, image);
}

bool TextureStore::LoadImage(const ResourcePack& resources, int id, const Image& image) {
  const GLuint texture = UploadTexture(image, pictureOptions);
  if (texture == 0) return false;
  Replace(slots[static_cast<std::size_t>(id)],
          {.texture = texture, .loaded = true, .shows = resources.HasPicture(id)});
  return true;
}

void TextureStore::Release(int id) {
  if (IsSlot(id)) Replace(slots[static_cast<std::size_t>(id)], {});
}

void TextureStore::Reload(const ResourcePack& resources, double scale) {
  for (int id = 0; id < ResourcePack::pictureCount; ++id) {
    if (slots[static_cast<std::size_t>(id)].loaded) Load(resources, id, scale);
  }
}

void TextureStore::Clear() {
  for (Slot& slot : slots) Replace(slot, {});
}

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
  if (wanted != size) {
    size = wanted;  // also when it fails: it would again
    Load(resources, id, scale);
  }
  return Find(id);
}

}  // namespace zovhost
