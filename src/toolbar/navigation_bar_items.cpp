// The items of the bar, and what observers hear of them.
#include "foundation/truncate.h"
#include "korvane/helm_disc.h"
#include "toolbar/bar_tables.h"
#include "toolbar/navigation_bar_parts.h"

namespace Korvane {

namespace {

struct Pixel {
  int x;
  int y;
};

// Where a menu of the item opens.
Pixel GetMenuPlace(const Box2& bounds) {
  return {Truncate(bounds.center.x + bounds.halfExtent.x), Truncate(bounds.center.y - bounds.halfExtent.y)};
}

ToolbarItem MakeItem(const BarItem& row, Renderer* renderer) {
  ToolbarItem item;
  item.SetTag(row.tag);
  item.SetType(row.type);
  item.SetSize(row.width, row.height);
  item.SetFlyoutIconSize(row.flyoutIconSize);
  item.SetIcon(row.texture, row.iconSize, row.iconSize);
  if (row.tooltip != STRING_NONE && renderer != nullptr)
    item.SetTooltip(renderer->LoadStringResource(row.tooltip));
  return item;
}

// The disc button has the tag of the disc that it shows; its first one stands for whichever that is.
int GetPresentTag(const Toolbar& toolbar, int tag) {
  if (tag != NavigationBar::TAG_FULL_NAVIGATION) return tag;
  for (const BarItem& disc : GetDiscItems()) {
    if (toolbar.IsFlyoutItemChosen(disc.tag)) return disc.tag;
  }
  return tag;
}

// Null: it has gone meanwhile.
void Append(Toolbar* toolbar, const ToolbarItem::List& items) {
  if (toolbar == nullptr) return;
  for (int i = 0; i < items.GetCount(); ++i) toolbar->GetItems().Append(items.GetAt(i));
}

}  // namespace

// ---- filling ----

void NavigationBar::PopulateItems() {
  const Staying now(parts);
  const Borrowed<Toolbar> filled(now->toolbar.get());
  const auto goesOn = [&] { return now && filled.Get() != nullptr; };
  AppendItems(GetItemsBefore());
  if (goesOn()) PopulateApplicationItems();
  if (goesOn()) AppendItems(GetItemsAfter());
  if (goesOn()) ApplyWishes();
  if (goesOn()) OnItemsPopulated();
}

// The texts are the host's, who may let go of the bar while it is asked for them.
void NavigationBar::AppendItems(std::span<const BarItem> rows) {
  const Staying now(parts);
  const Borrowed<Toolbar> toolbar(now->toolbar.get());
  const Borrowed<Renderer> renderer(now->partners.renderer.Get());
  ToolbarItem::List items;
  for (const BarItem& row : rows) {
    items.Append(MakeItem(row, renderer.Get()));
    if (row.type != ToolbarItem::TYPE_FLYOUT_BUTTON) continue;
    ToolbarItem::List& discs = items.GetAt(items.GetCount() - 1).GetFlyoutItems();
    for (const BarItem& disc : GetDiscItems()) discs.Append(MakeItem(disc, renderer.Get()));
  }
  Append(toolbar.Get(), items);
}

void NavigationBar::PopulateApplicationItems() {
  const Staying now(parts);
  const Borrowed<Toolbar> toolbar(now->toolbar.get());
  ToolbarItem::List items;
  OnPopulateApplicationItems(items);
  Append(toolbar.Get(), items);
}

// What was wished for before there were items.
void NavigationBar::ApplyWishes() {
  const Staying now(parts);
  const Borrowed<Toolbar> toolbar(now->toolbar.get());
  toolbar.Get()->SetItemExcluded(TAG_GRIP, GetLocation() == LOCATION_LINKED);
  if (toolbar.Get() == nullptr) return;
  toolbar.Get()->SetItemExcluded(TAG_ORIENTOR, now->orientorExcluded || now->orientorShown);
  if (toolbar.Get() == nullptr) return;
  ToolbarItem::List& items = toolbar.Get()->GetItems();
  for (int i = 0; i < items.GetCount(); ++i) {
    if (items.GetAt(i).GetTag() == TAG_MORE_CONTROLS) items.GetAt(i).SetExcluded(true);
  }
  if (const int tag = GetDiscTag(now->activeDisc)) toolbar.Get()->SetItemSelected(tag, true);
}

// ---- discs and cube ----

void NavigationBar::SetActiveHelmDisc(DiscType type) {
  const int tag = GetDiscTag(type);
  if (type == parts->activeDisc || (tag == 0 && type != DiscType::None)) return;
  parts->activeDisc = type;
  if (tag != 0) {
    SetItemSelected(tag, true);
  } else {
    SetItemSelected(TAG_FULL_NAVIGATION, false);
  }
}

void NavigationBar::SetOrientorIsVisible(bool value) {
  if (parts->orientorShown == value) return;
  parts->orientorShown = value;
  SetItemExcluded(TAG_ORIENTOR, parts->orientorExcluded);
}

bool NavigationBar::SetItemExcluded(int tag, bool excluded) {
  const Staying now(parts);
  if (tag == TAG_ORIENTOR) {
    now->orientorExcluded = excluded;
    excluded = excluded || now->orientorShown;
  }
  if (now->toolbar == nullptr) return false;
  if (!now->toolbar->SetItemExcluded(GetPresentTag(*now->toolbar, tag), excluded)) return false;
  if (now) HideLonelySeparators();
  return true;
}

void NavigationBar::HideLonelySeparators() {
  const Staying now(parts);
  if (now->toolbar == nullptr) return;
  const Toolbar& toolbar = *now->toolbar;
  const int discs = GetPresentTag(toolbar, TAG_FULL_NAVIGATION);
  for (const int tag : {int{TAG_ORIENTOR}, discs, int{TAG_STORYBOARD}}) {
    if (!toolbar.IsItemHidden(tag)) return;
  }
  now->toolbar->SetItemExcluded(TAG_FIRST_SEPARATOR, true);
  if (now->toolbar != nullptr) now->toolbar->SetItemExcluded(TAG_SECOND_SEPARATOR, true);
}

bool NavigationBar::IsItemExcluded(int tag) {
  if (tag == TAG_ORIENTOR) return parts->orientorExcluded;
  return parts->toolbar != nullptr && parts->toolbar->IsItemExcluded(GetPresentTag(*parts->toolbar, tag));
}

// ---- as the toolbar ----

bool NavigationBar::ChooseFlyoutItem(int tag) {
  return parts->toolbar != nullptr && parts->toolbar->ChooseFlyoutItem(tag);
}
bool NavigationBar::IsFlyoutItemChosen(int tag) {
  return parts->toolbar != nullptr && parts->toolbar->IsFlyoutItemChosen(tag);
}
bool NavigationBar::SetItemEnabled(int tag, bool enabled) {
  return parts->toolbar != nullptr && parts->toolbar->SetItemEnabled(tag, enabled);
}
bool NavigationBar::IsItemEnabled(int tag) {
  return parts->toolbar != nullptr && parts->toolbar->IsItemEnabled(tag);
}
bool NavigationBar::SetItemSelected(int tag, bool selected) {
  return parts->toolbar != nullptr && parts->toolbar->SetItemSelected(tag, selected);
}
bool NavigationBar::IsItemSelected(int tag) {
  return parts->toolbar != nullptr && parts->toolbar->IsItemSelected(tag);
}

// ---- what observers hear ----

void NavigationBar::OnItemClicked(const ToolbarItem& item) {
  const int tag = item.GetTag();
  Staying(parts).TellObservers([tag](NavigationBarObserver& each) { each.OnItemClicked(tag); });
}

bool NavigationBar::OnItemPressed(const ToolbarItem& item) {
  const Pixel place = GetMenuPlace(item.GetBounds());
  switch (item.GetTag()) {
    case TAG_MENU:
      return Staying(parts).OfferToObservers(
          [place](NavigationBarObserver& each) { return each.OnBarMenuPressed(place.x, place.y); });
    case TAG_MORE_CONTROLS:
      return OfferMoreControls(place.x, place.y);
    default:
      return false;
  }
}

// The item that is chosen takes its place on the bar, where it is one of a flyout.
bool NavigationBar::OfferMoreControls(int x, int y) {
  const Staying now(parts);
  int chosen = 0;
  const bool taken = now.OfferToObservers([&](NavigationBarObserver& each) {
    chosen = each.OnMoreControlsPressed(x, y);
    return chosen != 0;
  });
  if (!taken) return false;
  if (now) ChooseFlyoutItem(chosen);
  if (now) now.TellObservers([chosen](NavigationBarObserver& each) { each.OnItemClicked(chosen); });
  return true;
}

bool NavigationBar::OnItemFlyoutPressed(ToolbarItem& item) {
  const Pixel place = GetMenuPlace(item.GetBounds());
  const int tag = item.GetTag();
  return Staying(parts).OfferToObservers(
      [=](NavigationBarObserver& each) { return each.OnItemFlyoutPressed(tag, place.x, place.y); });
}

bool NavigationBar::OnItemContextMenu(const ToolbarItem& item) {
  const int tag = item.GetTag();
  if (tag < TAG_MORE_CONTROLS || tag == TAG_FIRST_SEPARATOR || tag == TAG_SECOND_SEPARATOR) return false;
  const Box2& lower = item.HasFlyoutItems() ? item.GetNonFlyoutIconBounds() : item.GetBounds();
  const int x = GetMenuPlace(item.GetBounds()).x;
  const int y = GetMenuPlace(lower).y;
  return Staying(parts).OfferToObservers(
      [=](NavigationBarObserver& each) { return each.OnItemContextMenu(tag, x, y); });
}

void NavigationBar::OnItemVisibilityChanged(const ToolbarItem& item) {
  if (item.GetTag() != TAG_MORE_CONTROLS) return;
  const bool shown = !item.IsExcluded();
  Staying(parts).TellObservers(
      [shown](NavigationBarObserver& each) { each.OnMoreControlsVisibilityChanged(shown); });
}

void NavigationBar::OnItemsPopulated() {
  Staying(parts).TellObservers([](NavigationBarObserver& each) { each.OnItemsPopulated(); });
}

void NavigationBar::OnPopulateApplicationItems(ToolbarItem::List& items) {
  Staying(parts).TellObservers(
      [&items](NavigationBarObserver& each) { each.OnPopulateApplicationItems(items); });
}

// Whoever drags the bar off the cube unlinks it, also where it was linked only after the press.
void NavigationBar::OnPositionChanged(bool dragged) {
  const Staying now(parts);
  const bool wasLinked = now->location == LOCATION_LINKED;
  if (dragged) TakeLocation();
  if (dragged && wasLinked) SetItemExcluded(TAG_GRIP, now->location == LOCATION_LINKED);
  now.TellObservers([dragged](NavigationBarObserver& each) { each.OnPositionChanged(dragged); });
}

}  // namespace Korvane
