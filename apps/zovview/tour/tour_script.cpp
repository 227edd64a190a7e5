#include "tour/tour_script.h"

#include <algorithm>
#include <array>

#include "korvane/math.h"
#include "korvane/navigation_bar.h"
#include "korvane/orientor.h"
#include "tour/tour_moves.h"
#include "views/view_tools.h"

namespace zovview {

using enum TourMove::Kind;
using enum zovhost::MouseButton;
using Korvane::HelmDiscZone;
using Korvane::NavigationBar;
using Korvane::Orientor;
using Korvane::OrientorObserver;

namespace {

// The regions of the welcome screen, in its order.
constexpr int WELCOME_TITLE = 1;
constexpr int WELCOME_TO_BASIC = 4;
constexpr int WELCOME_MINI_OBJECT = 5;
constexpr int WELCOME_OBJECT = 9;
constexpr int WELCOME_BUILDING = 10;

// A drag across the whole width turns by 5 radians.
constexpr auto SCRIPT = std::to_array<TourMove>({
    {"Start view", Rest, 0.3},
    {"Orbit", Drag, 0.9, 0.10, 0.92, 0.73, 0.92},
    {"Orbit", Drag, 0.9, 0.10, 0.92, 0.7266, 0.92},
    {"Orbit: tilt", Drag, 0.4, 0.90, 0.70, 0.90, 0.67},
    {"Orbit: tilt", Drag, 0.5, 0.90, 0.67, 0.90, 0.78},
    {"Orbit: tilt", Drag, 0.4, 0.90, 0.78, 0.90, 0.70},
    {"Pan: middle drag", Drag, 0.3, 0.50, 0.50, 0.58, 0.53, Middle},
    {"Pan: middle drag", Drag, 0.5, 0.58, 0.53, 0.42, 0.48, Middle},
    {"Pan: middle drag", Drag, 0.3, 0.42, 0.48, 0.50, 0.50, Middle},
    MakeCommand("Zoom tool, out", 0.0, "zoom"),
    {"Zoom tool, out", Drag, 0.5, 0.50, 0.50, 0.50, 0.45},
    {"Zoom tool, in", Drag, 0.5, 0.50, 0.45, 0.50, 0.50},
    {"Wheel, out", Wheel, 0.4, 0.46, 0.46, 0.46, 0.46, Left, {}, -9.0},
    {"Wheel, in at the pointer", Wheel, 0.5, 0.46, 0.46, 0.46, 0.46, Left, {}, 12.0},
    MakeCommand("Centre tool: a click", 0.0, "centre"),
    {"Centre tool: a click", Click, 0.6, 0.46, 0.46},
    MakeCommand("Orbit about the new centre", 0.0, "orbit"),
    {"Orbit about the new centre", Drag, 0.3, 0.46, 0.46, 0.55, 0.45},
    {"Orbit about the new centre", Drag, 0.3, 0.55, 0.45, 0.46, 0.46},
    MakeCommand("Fit all", 0.8, "fit-all"),
    MakeCommand("Home", 0.8, "home"),
    MakeCommand("Snapping: drawn to the front", 0.0, "toggle-snapping"),
    {"Snapping: drawn to the front", Drag, 0.9, 0.10, 0.85, 0.23, 0.95},
    {"Held at the front", Rest, 0.2},
    MakeCommand("Orthographic", 0.6, "toggle-projection"),
    {"Orthographic: wheel", Wheel, 0.4, 0.50, 0.55, 0.50, 0.55, Left, {}, 3.0},
    {"Orthographic: pan", Drag, 0.3, 0.05, 0.92, 0.11, 0.95, Middle},
    {"Orthographic: pan", Drag, 0.3, 0.11, 0.95, 0.05, 0.92, Middle},
    {"Orthographic: wheel", Wheel, 0.3, 0.50, 0.55, 0.50, 0.55, Left, {}, -3.0},
    {"Snapping: drawn to the top", Drag, 0.9, 0.90, 0.75, 0.90, 0.35},
    {"Held at the top", Rest, 0.2},
    MakeCommand("Snapping: drawn to the top", 0.0, "toggle-snapping"),
    MakeCommand("Perspective", 0.6, "toggle-projection"),
    MakeCommand("Corner view, fitted", 0.9, "isometric"),
    MakeCubeClick("The cube: a click on its top", 0.8, OrientorObserver::PART_TOP),
    MakeCubeDrag("The cube: a drag", 0.6, OrientorObserver::PART_TOP, 0.017, -0.125),
    MakeCommand("Top view, fitted", 0.9, "top"),
    MakeCommand("The cube: a drag of the compass", 0.0, "toggle-compass"),
    MakeCubeDrag("The cube: a drag of the compass", 0.7, TourMove::COMPASS_RING, -0.066, 0.0),
    MakeCommand("The cube: a roll", 0.0, "toggle-compass"),
    MakeCommand("The cube: a roll", 0.7, "front"),
    MakeOverlayClick("The cube: a roll", 0.7, Orientor::OVERLAY_ROTATE_CLOCKWISE),
    MakeCommand("The cube: a click on an edge", 0.6, "home"),
    MakeCommand("The cube: a click on an edge", 0.7, "front"),
    MakeCubeClick("The cube: a click on an edge", 0.8, OrientorObserver::PART_FRONT_RIGHT),
    MakeCubeClick("The cube: a click on a corner", 0.8, OrientorObserver::PART_FRONT_RIGHT_TOP),
    MakeOverlayClick("The cube: home", 0.8, Orientor::OVERLAY_HOME),
    MakeCommand("Front view, fitted", 0.9, "front"),
    MakeCommand("Draw a rectangle", 0.0, "rectangle-zoom"),
    {"Draw a rectangle", Drag, 0.7, 0.28, 0.50, 0.58, 0.27, Left, {}, 0.0, 0.6},
    {"Zoom into the rectangle", Rest, 1.0},
    MakeCommand("Double click: to the middle", 0.0, "orbit"),
    {"Double click: to the middle", DoubleClick, 1.1, 0.224, 0.60},
    {"Click: select a part", Click, 0.4, 0.50, 0.50},
    MakeCommand("Fit the selection", 0.9, "fit-selection"),
    MakeCommand("Walk", 0.0, "clear-selection"),
    MakeCommand("Walk", 0.6, "home"),
    {"The discs introduce themselves", Welcome, 0.4},
    MakeWelcome("The discs introduce themselves", Hover, 0.4, WELCOME_TITLE),
    MakeWelcome("A mini disc to choose", Hover, 0.5, WELCOME_MINI_OBJECT),
    MakeWelcome("The page for a start", Click, 0.5, WELCOME_TO_BASIC),
    MakeWelcome("A disc to choose", Hover, 0.5, WELCOME_BUILDING),
    MakeWelcome("The disc of an object, chosen", Click, 0.4, WELCOME_OBJECT),
    MakeWedgeHover("The disc of an object", 0.5, HelmDiscZone::Orbit),
    MakeCommand("The disc of a plan", 0.0, "disc-2d"),
    MakeWedgeHover("The disc of a plan", 0.5, HelmDiscZone::Pan),
    MakeCommand("The disc of a building", 0.0, "disc-tour-building"),
    MakeWedgeHover("The disc of a building", 0.5, HelmDiscZone::Look),
    MakeWedgeHover("Forward, by its wedge", 0.2, HelmDiscZone::Forward),
    MakeWedgeDrag("Forward, by its wedge", 1.2, HelmDiscZone::Forward, 0.0, 0.06),
    MakeCommand("The disc of full navigation", 0.0, "disc-full-navigation"),
    MakeWedgeHover("The disc of full navigation", 0.5, HelmDiscZone::Zoom),
    MakeWedgeHover("Orbit, by its wedge", 0.2, HelmDiscZone::Orbit),
    MakeWedgeDrag("Orbit, by its wedge", 0.8, HelmDiscZone::Orbit, 0.12, 0.02),
    MakeWedgeHover("Zoom, by its wedge", 0.2, HelmDiscZone::Zoom),
    MakeWedgeDrag("Zoom, by its wedge", 0.6, HelmDiscZone::Zoom, 0.0, 0.02),
    MakeCommand("Before the house", 0.8, "front"),
    MakeWedgeHover("Walk, by its wedge", 0.2, HelmDiscZone::Walk),
    MakeWedgeDrag("Walk, by its wedge", 1.3, HelmDiscZone::Walk, 0.02, 0.10),
    MakeWedgeHover("Rewind: back along the film", 0.3, HelmDiscZone::Rewind),
    MakeWedgeDrag("Rewind: back along the film", 2.0, HelmDiscZone::Rewind, -0.17, 0.0),
    MakeWedgeHover("Rewind: a step", 0.2, HelmDiscZone::Rewind),
    MakeWedgeClick("Rewind: a step", 0.9, HelmDiscZone::Rewind),
    MakeWedgeClick("The disc is put away", 0.3, HelmDiscZone::Close),
    MakeCommand("Walk", 0.0, "walk"),
    {"Walk", Drag, 1.3, 0.50, 0.20, 0.56, 0.40},
    MakeCommand("The view before", 0.0, "orbit"),
    MakeCommand("The view before", 0.8, "previous-view"),
    MakeCommand("And forward again", 0.8, "next-view"),
    MakeCommand("The navigation bar fades in", 0.6, "toggle-bar"),
    MakeBarMove("The navigation bar: home", Hover, 0.7, HOME_ITEM),
    MakeBarMove("The navigation bar: home", Click, 0.6, HOME_ITEM),
    MakeArrowClick("Discs to choose from", 0.5, NavigationBar::TAG_FULL_NAVIGATION),
    MakeCommand("The button has the disc that was chosen", 0.0, "disc-view-object"),
    {"The button has the disc that was chosen", Hover, 0.5, 0.97, 0.5, 0.6, 0.5},
    MakeCommand("The bar is dragged", 0.0, "close-disc"),
    MakeBarDrag("The bar is dragged to the left edge", 0.7, -0.93, -0.1),
    {"It docks", Rest, 0.25},
    MakeBarDrag("The bar is dragged to the top", 0.7, 0.45, 0.25),
    {"It docks", Rest, 0.25},
    MakeCommand("The bar under the cube", 0.6, "bar-linked"),
    MakeCommand("A toolbar of the tools", 0.0, "bar-right"),
    MakeCommand("A toolbar of the tools", 0.5, "toggle-tools"),
    MakeBarMove("A toolbar of the tools", Click, 0.3, TOOL_PAN),
    MakeCommand("A low window", 0.0, "toggle-tools"),
    MakeCommand("A low window", 0.0, "orbit"),
    {"A low window: more controls", Low, 0.3},
    MakeBarMove("A low window: more controls", Click, 0.5, NavigationBar::TAG_MORE_CONTROLS),
    {"The storyboard", High, 0.0},
    MakeCommand("The storyboard", 0.6, "toggle-storyboard"),
    MakeStoryMove("A sequence, and its first shot", Click, 0.6, StoryPart::Sequence, 0),
    MakeCommand("A second shot, of another view", 0.7, "isometric"),
    MakeStoryMove("A second shot, of another view", Click, 0.6, StoryPart::Shot, 1),
    MakeStoryDrag("Shots are dragged into their order", 0.8, StoryPart::Shot, 1, -0.07),
    {"Shots are dragged into their order", Rest, 0.3},
    MakeCommand("And back, by undo", 0.6, "undo"),
    MakeStoryMove("The sequence plays", Click, 6.6, StoryPart::SequencePlay, 0),
    MakeCommand("The bar goes", 0.0, "toggle-storyboard"),
    MakeCommand("Six axes: the model in the hand", 0.5, "home"),
    MakeCommand("Six axes: the model in the hand", 0.0, "device-page"),
    MakeDeviceMove("Six axes: the model in the hand", 1.8, {0, 0, -60, 0, 200, 0}),
    MakeDeviceMove("Six axes: the model in the hand", 1.8, {0, 0, 60, 0, 200, 0}),
    MakeCommand("Six axes: a walk through the door", 0.6, "front"),
    MakeCommand("Six axes: a walk through the door", 0.0, "device-page"),
    MakeCommand("Six axes: a walk through the door", 0.0, "device-walk"),
    MakeDeviceMove("Six axes: a walk through the door", 0.6, {0, -110, 0, 0, 0, 0}),
    MakeDeviceMove("Six axes: a walk through the door", 2.4, {0, 0, 250, 0, 0, 0}),
    MakeDeviceMove("Six axes: a look around inside", 1.6, {0, 0, 0, 0, 150, 0}),
    MakeCommand("The bar goes", 0.0, "device-object"),
    MakeCommand("The bar goes", 0.0, "toggle-bar"),
    MakeCommand("Home", 0.6, "home"),
    {"Start view", Rest, 0.3},
});

}  // namespace

std::span<const TourMove> GetTourScript() { return SCRIPT; }

// A hand presses a cap and lets go of it by degrees.
zovhost::SixAxes FindAxes(const TourMove& move, double fraction) {
  constexpr double STEEPNESS = 4.0;
  const double part = std::clamp(STEEPNESS * std::min(fraction, 1.0 - fraction), 0.0, 1.0);
  zovhost::SixAxes axes = move.axes;
  for (double& axis : axes) axis *= part;
  return axes;
}

// Eased, as a hand moves.
TourPointer FindPointer(const TourMove& move, double fraction) {
  const double part = Korvane::Math::EaseClamp(fraction, 0.0, move.arrival);
  return {Korvane::Math::LinearInterp(part, move.fromX, move.toX),
          Korvane::Math::LinearInterp(part, move.fromY, move.toY)};
}

}  // namespace zovview
