#include "widget_renderer/icon_store.h"

#include <algorithm>

namespace zovhost {

using Korvane::DynamicIcon2D;

DynamicIcon2D* IconStore::Add(GLuint texture, int width, int height) {
  const int id = nextID++;
  auto icon = std::make_unique<DynamicIcon2D>(id);
  icon->SetSize(width, height);
  return entries.emplace(id, Entry{std::move(icon), texture}).first->second.icon.get();
}

GLuint IconStore::FindTexture(int id) const {
  const auto found = entries.find(id);
  return found != entries.end() ? found->second.texture : 0;
}

bool IconStore::Destroy(const DynamicIcon2D* icon) {
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [icon](const auto& entry) { return entry.second.icon.get() == icon; });
  if (found == entries.end()) return false;
  if (found->second.texture != 0) glDeleteTextures(1, &found->second.texture);
  entries.erase(found);
  return true;
}

void IconStore::DestroyTextures() {
  for (auto& [id, entry] : entries) {
    if (entry.texture != 0) glDeleteTextures(1, &entry.texture);
    entry.texture = 0;
  }
}

}  // namespace zovhost
