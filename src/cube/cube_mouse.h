#pragma once

#include "cube/cube_model.h"

namespace Korvane {

/// Where the mouse is, what it is on, and what its left button does.
struct CubeMouse {
  int x = 0;  // viewport pixels, y downward
  int y = 0;
  int activePart = -1;          // of cube or compass, under the mouse
  int highlightedPart = -1;     // the same as last shown; stays during a shot
  int activeOverlayPart = -1;   // as shown; none during a shot
  int rawOverlayPart = -1;      // under the mouse
  int pressedOverlayPart = -1;  // shown at the last left press
  unsigned arrowFaces = 0;      // a bit for each face whose arrow the last look for the part offered
  bool menuOpen = false;
  bool pressed = false;
  bool captured = false;   // the last press was kept, and so will be its release
  bool releasing = false;  // the release of the last press is being told

  /// The letters of the compass count, since a click on them turns the view.
  bool IsOnGeometry() const { return activePart >= 0 && activePart < COMPASS_RING_FROM; }
  /// On a face, by the arrow beside it.
  bool IsOnArrow() const { return IsFaceAmong(arrowFaces, activePart); }
  /// On something that shows it.
  bool IsOnAny() const { return activePart >= 0 || highlightedPart >= 0 || activeOverlayPart >= 0; }
  bool IsOnCompass() const { return activePart >= COMPASS_LETTERS_FROM && activePart < ALL_PART_COUNT; }

  /// While a menu is open the mouse is on nothing.
  void LeaveParts() { activePart = highlightedPart = activeOverlayPart = -1; }
  void ForgetParts() {
    LeaveParts();
    rawOverlayPart = -1;
  }
};

}  // namespace Korvane
