// Items by their tags.
#include <type_traits>

#include "toolbar/toolbar_parts.h"

namespace Korvane {

namespace {

template <class List>
auto* FindItem(List& items, int tag) {
  decltype(&items.GetAt(0)) found = nullptr;
  for (int i = 0; found == nullptr && i < items.GetCount(); ++i) {
    if (items.GetAt(i).GetTag() == tag) found = &items.GetAt(i);
  }
  return found;
}

// A flyout item and the item that owns it; both null where there is none of the tag.
template <class Item>
struct Flyout {
  Item* owner = nullptr;
  Item* item = nullptr;
};

template <class List>
auto FindFlyout(List& items, int tag) {
  Flyout<std::remove_reference_t<decltype(items.GetAt(0))>> found;
  for (int i = 0; found.item == nullptr && i < items.GetCount(); ++i) {
    auto& owner = items.GetAt(i);
    found = {&owner, FindItem(owner.GetFlyoutItems(), tag)};
  }
  if (found.item == nullptr) found.owner = nullptr;
  return found;
}

template <class List>
auto* FindAnyItem(List& items, int tag) {
  auto* const item = FindItem(items, tag);
  return item != nullptr ? item : FindFlyout(items, tag).item;
}

void Choose(const Flyout<ToolbarItem>& flyout) {
  ToolbarItem& owner = *flyout.owner;
  owner.SetTag(flyout.item->GetTag());
  owner.SetIcon(flyout.item->GetIcon());
  owner.SetTooltip(flyout.item->GetTooltip());
  owner.SetData(flyout.item->GetData());
}

using Question = bool (ToolbarItem::*)() const;
using Command = void (ToolbarItem::*)(bool);

// True when that is a change.
bool Switch(ToolbarItem* item, Question question, Command command, bool on) {
  if (item == nullptr) return false;
  const bool isOn = (item->*question)();
  if (isOn == on) return false;
  (item->*command)(on);
  return true;
}

}  // namespace

bool Toolbar::ChooseFlyoutItem(int tag) {
  if (FindItem(parts->items, tag) != nullptr) return false;
  const auto flyout = FindFlyout(parts->items, tag);
  if (flyout.item == nullptr) return false;
  Choose(flyout);
  PostRefresh();
  return true;
}

bool Toolbar::IsFlyoutItemChosen(int tag) const {
  const ToolbarItem::List& items = parts->items;
  const auto flyout = FindFlyout(items, tag);
  return flyout.item != nullptr && flyout.owner->GetTag() == tag;
}

bool Toolbar::IsItemEnabled(int tag) const {
  const ToolbarItem* const item = FindAnyItem(parts->items, tag);
  return item != nullptr && item->IsEnabled();
}

bool Toolbar::SetItemEnabled(int tag, bool enabled) {
  ToolbarItem* const item = FindAnyItem(parts->items, tag);
  const bool changed = Switch(item, &ToolbarItem::IsEnabled, &ToolbarItem::SetEnabled, enabled);
  if (changed) PostRefresh();
  return changed;
}

bool Toolbar::IsItemSelected(int tag) const {
  const ToolbarItem* const item = FindItem(parts->items, tag);
  return item != nullptr && item->IsSelected();
}

bool Toolbar::SetItemSelected(int tag, bool selected) {
  ToolbarItem* item = FindItem(parts->items, tag);
  bool changed = false;
  if (item == nullptr) {
    const auto flyout = FindFlyout(parts->items, tag);
    item = flyout.owner;
    changed = selected && item != nullptr;
    if (changed) Choose(flyout);
  }
  changed = Switch(item, &ToolbarItem::IsSelected, &ToolbarItem::SetSelected, selected) || changed;
  if (changed) PostRefresh();
  return changed;
}

bool Toolbar::IsItemHidden(int tag) const {
  const ToolbarItem* const item = FindAnyItem(parts->items, tag);
  return item != nullptr && item->IsHidden();
}

bool Toolbar::IsItemExcluded(int tag) const {
  const ToolbarItem* const item = FindAnyItem(parts->items, tag);
  return item != nullptr && (item->IsHidden() || item->IsExcluded());
}

// What the layout finds no room for it excludes by itself; the wish of the owner has to outlast it.
bool Toolbar::SetItemExcluded(int tag, bool excluded) {
  ToolbarItem* const item = FindAnyItem(parts->items, tag);
  if (!Switch(item, &ToolbarItem::IsHidden, &ToolbarItem::SetHidden, excluded)) return false;
  parts->motion.wantSize = parts->motion.HasExtent();
  PostRefresh();
  return true;
}

}  // namespace Korvane
