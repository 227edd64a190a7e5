#pragma once

#include <optional>
#include <span>

#include "zovhost/window.h"

namespace zovview {

/// One stretch of the tour. Positions are fractions of the viewport from its bottom left.
struct TourMove {
  enum class Kind : int {
    Rest,          // nothing moves
    Drag,          // `button` held from one position to another
    Wheel,         // `notches` turned at the first position
    Home,          // back to the start view
    Snap,          // snapping on
    Free,          // snapping off
    Orthographic,  // the projection
    Perspective,
  };
  const char* caption;
  Kind kind;
  double seconds;
  double fromX = 0.5;
  double fromY = 0.5;
  double toX = 0.5;
  double toY = 0.5;
  zovhost::MouseButton button = zovhost::MouseButton::Left;
  double notches = 0.0;
};

std::span<const TourMove> GetTourScript();

/// Where the pointer is at a moment of a move; `fraction` of its time, 0 to 1.
struct TourPointer {
  double x;
  double y;
};
TourPointer FindPointer(const TourMove& move, double fraction);

}  // namespace zovview
