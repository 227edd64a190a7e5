#pragma once

#include <span>

#include "korvane/navigation_bar.h"

namespace Korvane {

/// An item of the bar. Pixels.
struct BarItem {
  int tag;
  ToolbarItem::Type type;
  int width;
  int height;
  int flyoutIconSize;
  TextureID texture;
  int iconSize;
  StringID tooltip;
};

/// In the order of the strip, before and after the items of the host.
std::span<const BarItem> GetItemsBefore();
std::span<const BarItem> GetItemsAfter();
/// What the disc button offers.
std::span<const BarItem> GetDiscItems();
/// The tag of a disc; 0 for a number that is none.
int GetDiscTag(DiscType type);

}  // namespace Korvane
