#pragma once

#include <span>

#include "korvane/box2.h"

namespace zovhost {

/// What a note has to mind. Viewport pixels, origin at the bottom left.
struct NoteRoom {
  Korvane::Vector2 pointer;
  Korvane::Vector2 half;      ///< Of the note.
  Korvane::Vector2 viewport;  ///< Its width and height.
  double scale = 1.0;         ///< Pixels for a point.
  Korvane::Box2 thing;        ///< What it tells of; without extent: nothing that has a place.
  std::span<const Korvane::Box2> panels;
};

/// The middle of a note: below the pointer and to its right, or else as near to it as leaves what it tells
/// of, and panels, to be seen; within the viewport in any case. Where there is no room for all of that it
/// keeps clear of the panels alone, and then of nothing.
Korvane::Vector2 FindNotePlace(const NoteRoom& room);

}  // namespace zovhost
