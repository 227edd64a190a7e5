#pragma once

#include "commands/view_commands.h"
#include "korvane/toolbar.h"

namespace zovview {

// Which bars show, and where; none of them does anything in a view without bars.

void ToggleBar(const ViewTarget& target);
bool IsBarShown(const ViewTarget& target);
void ToggleTools(const ViewTarget& target);
bool AreToolsShown(const ViewTarget& target);
void ToggleCube(const ViewTarget& target);
bool IsCubeShown(const ViewTarget& target);
/// Below the cube, or above it where that is in a lower corner.
void LinkBar(const ViewTarget& target);
bool IsBarLinked(const ViewTarget& target);

void MoveBar(const ViewTarget& target, Korvane::Toolbar::Position edge);
bool IsBarAt(const ViewTarget& target, Korvane::Toolbar::Position edge);
template <Korvane::Toolbar::Position EDGE>
void MoveBarTo(const ViewTarget& target) {
  MoveBar(target, EDGE);
}
template <Korvane::Toolbar::Position EDGE>
bool IsBarAtEdge(const ViewTarget& target) {
  return IsBarAt(target, EDGE);
}

}  // namespace zovview
