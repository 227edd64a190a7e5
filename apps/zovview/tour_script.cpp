#include "tour_script.h"

#include <array>

#include "korvane/math.h"

namespace zovview {

using enum TourMove::Kind;
using enum zovhost::MouseButton;

namespace {

// A drag across the whole width turns by 5 radians; drags that begin at the edge of the picture miss the
// model and turn it about its centre.
constexpr std::array<TourMove, 29> SCRIPT = {{
    {"Start view", Rest, 0.3},
    {"Orbit: left drag", Drag, 1.2, 0.10, 0.92, 0.73, 0.92},
    {"Orbit: left drag", Drag, 1.2, 0.10, 0.92, 0.7266, 0.92},
    {"Orbit: tilt", Drag, 0.4, 0.95, 0.80, 0.95, 0.77},
    {"Orbit: tilt", Drag, 0.5, 0.95, 0.77, 0.95, 0.88},
    {"Orbit: tilt", Drag, 0.4, 0.95, 0.88, 0.95, 0.80},
    {"Pan: middle drag", Drag, 0.3, 0.50, 0.50, 0.58, 0.53, Middle},
    {"Pan: middle drag", Drag, 0.5, 0.58, 0.53, 0.42, 0.48, Middle},
    {"Pan: middle drag", Drag, 0.3, 0.42, 0.48, 0.50, 0.50, Middle},
    {"Zoom: right drag, out", Drag, 0.5, 0.50, 0.50, 0.47, 0.48, Right},
    {"Zoom: right drag, in", Drag, 0.5, 0.47, 0.48, 0.50, 0.50, Right},
    {"Zoom: wheel, out", Wheel, 0.4, 0.46, 0.46, 0.46, 0.46, Left, -3.0},
    {"Zoom: wheel, in at the pointer", Wheel, 0.5, 0.46, 0.46, 0.46, 0.46, Left, 4.0},
    {"Orbit about the point under the pointer", Drag, 0.5, 0.46, 0.46, 0.55, 0.45},
    {"Orbit about the point under the pointer", Drag, 0.5, 0.55, 0.45, 0.46, 0.46},
    {"Back to the start view", Home, 0.2},
    {"Snapping: drawn to the front", Snap, 0.0},
    {"Snapping: drawn to the front", Drag, 0.9, 0.10, 0.85, 0.23, 0.95},
    {"Held at the front", Rest, 0.2},
    {"Orthographic", Orthographic, 0.3},
    {"Orthographic: wheel", Wheel, 0.4, 0.05, 0.92, 0.05, 0.92, Left, 1.0},
    {"Orthographic: pan", Drag, 0.3, 0.05, 0.92, 0.11, 0.95, Middle},
    {"Orthographic: pan", Drag, 0.3, 0.11, 0.95, 0.05, 0.92, Middle},
    {"Orthographic: wheel", Wheel, 0.3, 0.05, 0.92, 0.05, 0.92, Left, -1.0},
    {"Snapping: drawn to the top", Drag, 0.9, 0.95, 0.95, 0.95, 0.55},
    {"Held at the top", Rest, 0.3},
    {"Perspective", Perspective, 0.3},
    {"Start view", Home, 0.4},
    {"Start view", Free, 0.0},
}};

}  // namespace

std::span<const TourMove> GetTourScript() { return SCRIPT; }

// Eased, as a hand moves.
TourPointer FindPointer(const TourMove& move, double fraction) {
  const double part = Korvane::Math::EaseClamp(fraction, 0.0, 1.0);
  return {Korvane::Math::LinearInterp(part, move.fromX, move.toX),
          Korvane::Math::LinearInterp(part, move.fromY, move.toY)};
}

}  // namespace zovview
