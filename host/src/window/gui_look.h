#pragma once

struct ImGuiStyle;

namespace zovhost {

/// Sizes of panels and menus, in points.
void SetShapes(ImGuiStyle& style);
/// Neutral and translucent, with the one accent of the kit; light ones with dark words, or the reverse.
void SetColours(ImGuiStyle& style, bool light);

}  // namespace zovhost
