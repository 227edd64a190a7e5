#include "widget_renderer/texture_store.h"

#include <cstddef>

#include "gl/gl_program.h"

namespace zovhost {

namespace {

constexpr TextureOptions pictureOptions = {.mipmaps = true};

}  // namespace

void TextureStore::Replace(Slot& slot, const Slot& next) {
  if (slot.texture != 0) glDeleteTextures(1, &slot.texture);
  slot = next;
}

bool TextureStore::Load(const ResourcePack& resources, int id, double scale) {
  Image image;
  if (!IsSlot(id) || !resources.RenderPicture(id, scale, image)) return false;
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

}  // namespace zovhost
