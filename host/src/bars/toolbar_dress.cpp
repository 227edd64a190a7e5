#include "zovhost/toolbar_dress.h"

#include <cmath>

#include "korvane/navigation_bar.h"
#include "korvane/toolbar.h"

namespace zovhost {

using Korvane::Toolbar;
using Korvane::ToolbarItem;

namespace {

// Points, as the navigation bar has them.
constexpr int smallIcon = 8;
constexpr int gripLength = 24;
constexpr int gripRoom = 12;
constexpr int gripThickness = 4;
constexpr int moreControls = 12;
constexpr int flyoutArrow = 10;
constexpr int buttonPicture = 32;
constexpr double largestFactor = 16.0;
constexpr auto gripHorizontal = static_cast<Korvane::TextureID>(150);
constexpr auto gripVertical = static_cast<Korvane::TextureID>(151);

int Scale(int size, double factor) { return static_cast<int>(std::lround(size * factor)); }

ToolbarItem MakeItem(int tag, ToolbarItem::Type type, const std::wstring& tooltip) {
  ToolbarItem item;
  item.SetTag(tag);
  item.SetType(type);
  item.SetTooltip(tooltip);
  return item;
}

void Resize(ToolbarItem& item, double factor) {
  Korvane::ResourceIcon2D& icon = item.GetIcon();
  item.SetSize(Scale(item.GetWidth(), factor), Scale(item.GetHeight(), factor));
  item.SetFlyoutIconSize(Scale(item.GetFlyoutIconSize(), factor));
  icon.SetSize(std::round(icon.GetWidth() * factor), std::round(icon.GetHeight() * factor));
}

}  // namespace

void DressToolbar(Toolbar& toolbar, double scale) {
  const double usable = scale >= 1.0 && scale <= largestFactor ? scale : 1.0;
  const int small = Scale(smallIcon, usable);
  const int length = Scale(gripLength, usable);
  const int thickness = Scale(gripThickness, usable);
  toolbar.SetFlyoutIcon(Korvane::TEXTURE_BAR_FLYOUT, small, small);
  toolbar.SetGripHandleIcon(Toolbar::ORIENTATION_VERTICAL, gripVertical, length, thickness);
  toolbar.SetGripHandleIcon(Toolbar::ORIENTATION_HORIZONTAL, gripHorizontal, thickness, length);
  toolbar.SetMoreControlsIcon(Toolbar::ORIENTATION_VERTICAL, Korvane::TEXTURE_BAR_MORE_VERTICAL, small,
                              small);
  toolbar.SetMoreControlsIcon(Toolbar::ORIENTATION_HORIZONTAL, Korvane::TEXTURE_BAR_MORE_HORIZONTAL, small,
                              small);
  toolbar.SetCornerIcons(Korvane::TEXTURE_BAR_TOP_LEFT, Korvane::TEXTURE_BAR_TOP_RIGHT,
                         Korvane::TEXTURE_BAR_BOTTOM_RIGHT, Korvane::TEXTURE_BAR_BOTTOM_LEFT, small, small);
  toolbar.SetCornerHighlightedIcons(Korvane::TEXTURE_BAR_TOP_LEFT_EDGE, Korvane::TEXTURE_BAR_TOP_RIGHT_EDGE,
                                    Korvane::TEXTURE_BAR_BOTTOM_RIGHT_EDGE,
                                    Korvane::TEXTURE_BAR_BOTTOM_LEFT_EDGE, small, small);
}

ToolbarItem MakeToolbarButton(int tag, Korvane::TextureID picture, const std::wstring& tooltip) {
  using Bar = Korvane::NavigationBar;
  ToolbarItem item = MakeItem(tag, ToolbarItem::TYPE_BUTTON, tooltip);
  item.SetSize(Bar::APPLICATION_ITEM_WIDTH, Bar::APPLICATION_ITEM_HEIGHT);
  item.SetIcon(picture, buttonPicture, buttonPicture);
  return item;
}

ToolbarItem MakeToolbarFlyoutButton(std::span<const ToolbarItem> choices) {
  ToolbarItem item = choices.empty() ? ToolbarItem() : choices.front();
  item.SetType(ToolbarItem::TYPE_FLYOUT_BUTTON);
  item.SetFlyoutIconSize(flyoutArrow);
  for (const ToolbarItem& choice : choices) item.GetFlyoutItems().Append(choice);
  return item;
}

ToolbarItem MakeToolbarGrip(int tag, const std::wstring& tooltip) {
  ToolbarItem item = MakeItem(tag, ToolbarItem::TYPE_GRIP, tooltip);
  item.SetSize(gripLength, gripRoom);
  return item;
}

ToolbarItem MakeToolbarMoreControls(int tag, const std::wstring& tooltip) {
  ToolbarItem item = MakeItem(tag, ToolbarItem::TYPE_MORE_CONTROLS, tooltip);
  item.SetSize(moreControls, moreControls);
  return item;
}

void ResizeItems(ToolbarItem::List& items, double factor) {
  if (!(factor > 0.0) || !(factor <= largestFactor)) return;
  for (int i = 0; i < items.GetCount(); ++i) {
    Resize(items.GetAt(i), factor);
    ResizeItems(items.GetAt(i).GetFlyoutItems(), factor);
  }
}

}  // namespace zovhost
