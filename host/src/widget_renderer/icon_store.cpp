#include "widget_renderer/icon_store.h"

#include <algorithm>
#include <utility>

namespace zovhost {

using Korvane::Box2;
using Korvane::DynamicIcon2D;

DynamicIcon2D* IconStore::Add(GLuint texture, int width, int height) {
  const int id = nextID++;
  auto icon = std::make_unique<DynamicIcon2D>(id);
  icon->SetSize(width, height);
  const Korvane::Vector2 half(width / 2.0, height / 2.0);
  return entries.emplace(id, Entry{.icon = std::move(icon), .texture = texture, .half = half})
      .first->second.icon.get();
}

DynamicIcon2D* IconStore::AddLabel(LabelText label, const LabelPicture& picture) {
  DynamicIcon2D* const icon = Add(picture.texture, picture.width, picture.height);
  entries.at(icon->GetID()).label = std::move(label);
  return icon;
}

void IconStore::RedrawLabels(const Draw& draw, double growth) {
  for (auto& [id, entry] : entries) {
    if (!entry.label) continue;
    entry.gap *= growth;
    const LabelPicture picture = draw(*entry.label);
    if (picture.texture != 0) Show(entry, picture);
  }
}

void IconStore::Show(Entry& entry, const LabelPicture& picture) {
  const Korvane::Vector2 shown = entry.icon->GetBounds().halfExtent;
  const bool hasItsOwnSize = shown.x == entry.half.x && shown.y == entry.half.y;
  entry.half = {picture.width / 2.0, picture.height / 2.0};
  if (hasItsOwnSize) entry.icon->SetSize(picture.width, picture.height);
  if (entry.texture != 0) glDeleteTextures(1, &entry.texture);
  entry.texture = picture.texture;
}

void IconStore::SetRiding(int id, double gap) {
  const auto found = entries.find(id);
  if (found == entries.end()) return;
  found->second.rides = true;
  found->second.gap = gap;
}

Box2 IconStore::FindPlace(const DynamicIcon2D& icon) const {
  const Box2& bounds = icon.GetBounds();
  const auto found = entries.find(icon.GetID());
  if (found == entries.end() || !found->second.rides) return bounds;
  const Entry& entry = found->second;
  if (bounds.halfExtent.x == entry.half.x && bounds.halfExtent.y == entry.half.y) return bounds;
  const double top = bounds.center.y + bounds.halfExtent.y / 2.0;  // of the disc
  return {{bounds.center.x, top + entry.gap + entry.half.y}, entry.half};
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
