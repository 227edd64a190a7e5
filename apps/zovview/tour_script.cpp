#include "tour_script.h"

#include <array>

#include "korvane/math.h"

namespace zovview {

using enum TourMove::Kind;
using enum zovhost::MouseButton;

namespace {

constexpr TourMove MakeCommand(const char* caption, double seconds, void (*command)(const ViewTarget&)) {
  TourMove move = {caption, Command, seconds};
  move.command = command;
  return move;
}

// A drag across the whole width turns by 5 radians; drags that begin at the edge of the picture miss the
// model and turn it about its centre.
constexpr std::array<TourMove, 40> SCRIPT = {{
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
    MakeCommand("Fit all", 0.8, FitAll),
    MakeCommand("Home", 0.8, GoHome),
    MakeCommand("Snapping: drawn to the front", 0.0, ToggleSnapping),
    {"Snapping: drawn to the front", Drag, 0.9, 0.10, 0.85, 0.23, 0.95},
    {"Held at the front", Rest, 0.2},
    MakeCommand("Orthographic", 0.6, ToggleProjection),
    {"Orthographic: wheel", Wheel, 0.4, 0.05, 0.92, 0.05, 0.92, Left, 1.0},
    {"Orthographic: pan", Drag, 0.3, 0.05, 0.92, 0.11, 0.95, Middle},
    {"Orthographic: pan", Drag, 0.3, 0.11, 0.95, 0.05, 0.92, Middle},
    {"Orthographic: wheel", Wheel, 0.3, 0.05, 0.92, 0.05, 0.92, Left, -1.0},
    {"Snapping: drawn to the top", Drag, 0.9, 0.95, 0.95, 0.95, 0.55},
    {"Held at the top", Rest, 0.2},
    MakeCommand("Snapping: drawn to the top", 0.0, ToggleSnapping),
    MakeCommand("Perspective", 0.6, ToggleProjection),
    MakeCommand("Corner view, fitted", 0.9, ShowIsometric),
    MakeCommand("Top view, fitted", 0.9, ShowTop),
    MakeCommand("Front view, fitted", 0.9, ShowFront),
    {"Draw a rectangle", Rectangle, 0.7, 0.28, 0.50, 0.58, 0.27},
    {"Zoom into the rectangle", Rest, 1.0},
    {"Double click: to the middle", DoubleClick, 0.8, 0.224, 0.60},
    {"Click: select a part", Click, 0.4, 0.50, 0.50},
    MakeCommand("Fit the selection", 0.9, FitSelection),
    MakeCommand("Home", 0.0, ClearSelection),
    MakeCommand("Home", 0.6, GoHome),
    {"Start view", Rest, 0.3},
}};

}  // namespace

std::span<const TourMove> GetTourScript() { return SCRIPT; }

// Eased, as a hand moves. A rectangle is held for a moment before it is let go.
TourPointer FindPointer(const TourMove& move, double fraction) {
  const double end = move.kind == Rectangle ? 0.6 : 1.0;
  const double part = Korvane::Math::EaseClamp(fraction, 0.0, end);
  return {Korvane::Math::LinearInterp(part, move.fromX, move.toX),
          Korvane::Math::LinearInterp(part, move.fromY, move.toY)};
}

}  // namespace zovview
