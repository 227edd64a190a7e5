#pragma once

#include <span>
#include <string>

#include "korvane/resource_ids.h"
#include "korvane/toolbar_item.h"

namespace Korvane {
class Toolbar;
}

namespace zovhost {

// What a toolbar of the host's own needs to look as the navigation bar does, and what either needs on a
// display of more than one pixel a point. The library counts pixels.

/// The corners, the arrow of flyouts, the grips and the buttons of more controls, for a display of `scale`
/// pixels a point. A scale that is not finite or below 1 counts as 1.
void DressToolbar(Korvane::Toolbar& toolbar, double scale = 1.0);

/// An item of the size of the navigation bar's, with a picture of the kit or of the host's own.
Korvane::ToolbarItem MakeToolbarButton(int tag, Korvane::TextureID picture, const std::wstring& tooltip);
/// A button with an arrow, which opens these; it stands for the first of them until another is chosen. Of
/// none it is a button without a tag.
Korvane::ToolbarItem MakeToolbarFlyoutButton(std::span<const Korvane::ToolbarItem> choices);
/// The grip by which a toolbar is dragged.
Korvane::ToolbarItem MakeToolbarGrip(int tag, const std::wstring& tooltip);
/// Offers what there is no room for.
Korvane::ToolbarItem MakeToolbarMoreControls(int tag, const std::wstring& tooltip);

/// Multiplies the sizes of all items, their pictures and their flyout items, rounded to whole pixels. Say so
/// to the toolbar with ApplyItemChanges. A factor that is not finite or not above 0 changes nothing.
void ResizeItems(Korvane::ToolbarItem::List& items, double factor);

}  // namespace zovhost
