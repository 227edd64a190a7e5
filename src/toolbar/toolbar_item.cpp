#include "korvane/toolbar_item.h"

#include <cstddef>

namespace Korvane {

ToolbarItem::ToolbarItem() = default;
ToolbarItem::ToolbarItem(const ToolbarItem&) = default;
ToolbarItem& ToolbarItem::operator=(const ToolbarItem&) = default;
ToolbarItem::~ToolbarItem() = default;

void ToolbarItem::SetSize(int widthValue, int heightValue) {
  width = widthValue;
  height = heightValue;
}

void ToolbarItem::SetIcon(TextureID texture, int iconWidth, int iconHeight) {
  icon = ResourceIcon2D(texture);
  icon.SetSize(iconWidth, iconHeight);
}

// ---- lists ----

ToolbarItem::List::List() = default;
ToolbarItem::List::~List() = default;

ToolbarItem::List::List(const List& other) {
  items.reserve(other.items.size());
  for (const std::shared_ptr<ToolbarItem>& each : other.items) Append(*each);
}

// What is assigned may be part of what is replaced.
ToolbarItem::List& ToolbarItem::List::operator=(const List& other) {
  if (this == &other) return *this;
  List copy(other);
  items.swap(copy.items);
  return *this;
}

void ToolbarItem::List::Append(const ToolbarItem& item) {
  items.push_back(std::make_shared<ToolbarItem>(item));
}

bool ToolbarItem::List::InsertAt(int index, const ToolbarItem& item) {
  if (index != GetCount() && !Has(index)) return false;
  items.insert(items.begin() + index, std::make_shared<ToolbarItem>(item));
  return true;
}

bool ToolbarItem::List::RemoveAt(int index) {
  if (!Has(index)) return false;
  items.erase(items.begin() + index);
  return true;
}

void ToolbarItem::List::RemoveAll() { items.clear(); }

std::shared_ptr<ToolbarItem> ToolbarItem::List::Share(int index) const {
  return Has(index) ? items[static_cast<std::size_t>(index)] : nullptr;
}

ToolbarItem& ToolbarItem::List::MakeStray() const {
  stray = std::make_shared<ToolbarItem>();
  return *stray;
}

}  // namespace Korvane
