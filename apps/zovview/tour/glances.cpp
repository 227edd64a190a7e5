#include "tour/glances.h"

#include <algorithm>
#include <array>

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

constexpr auto ALL = std::to_array<TourMove>({
    {"A house", Rest, 0.2},
    MakeCommand("The navigation bar", 0.0, "toggle-bar"),
    MakeCubeDrag("The cube: a drag", 1.3, OrientorObserver::PART_FRONT, -0.10, -0.03),
    MakeCommand("The cube: a click on its top", 0.6, "home"),
    MakeCubeClick("The cube: a click on its top", 0.9, OrientorObserver::PART_TOP),
    MakeBarMove("The navigation bar: home", Click, 0.9, HOME_ITEM),
    {"A disc: orbit by its wedge", Hover, 0.4, 0.90, 0.62, 0.42, 0.56},
    MakeCommand("A disc: orbit by its wedge", 0.0, "disc-full-navigation"),
    MakeWedgeHover("A disc: orbit by its wedge", 0.5, HelmDiscZone::Zoom),
    MakeWedgeHover("A disc: orbit by its wedge", 0.3, HelmDiscZone::Orbit),
    MakeWedgeDrag("A disc: orbit by its wedge", 1.3, HelmDiscZone::Orbit, 0.16, 0.02),
    MakeCommand("A flight to the front", 0.0, "close-disc"),
    MakeCommand("A flight to the front", 1.0, "front"),
    MakeCommand("And back", 1.0, "previous-view"),
    MakeCommand("And back", 0.8, "home"),
});

constexpr auto CUBE = std::to_array<TourMove>({
    {"The cube", Rest, 0.3},
    MakeCubeDrag("A drag orbits", 1.2, OrientorObserver::PART_FRONT, -0.10, -0.03),
    MakeCubeClick("A click shows a side", 1.0, OrientorObserver::PART_RIGHT),
    MakeOverlayClick("An arrow rolls the view", 0.8, Orientor::OVERLAY_ROTATE_CLOCKWISE),
    MakeOverlayClick("And back", 0.8, Orientor::OVERLAY_ROTATE_COUNTER_CLOCKWISE),
    MakeOverlayClick("Home", 1.0, Orientor::OVERLAY_HOME),
    MakeCubeClick("A corner", 1.0, OrientorObserver::PART_FRONT_RIGHT_TOP),
    MakeOverlayClick("Home", 1.0, Orientor::OVERLAY_HOME),
});

constexpr auto DISCS = std::to_array<TourMove>({
    {"A disc under the pointer", Hover, 0.3, 0.80, 0.62, 0.42, 0.56},
    MakeCommand("A disc under the pointer", 0.0, "disc-full-navigation"),
    MakeWedgeHover("Zoom, by its wedge", 0.4, HelmDiscZone::Zoom),
    MakeWedgeDrag("Zoom, by its wedge", 0.9, HelmDiscZone::Zoom, 0.0, 0.02),
    MakeWedgeHover("Orbit, by its wedge", 0.4, HelmDiscZone::Orbit),
    MakeWedgeDrag("Orbit, by its wedge", 1.2, HelmDiscZone::Orbit, 0.16, 0.02),
    MakeWedgeHover("Pan, by its wedge", 0.4, HelmDiscZone::Pan),
    MakeWedgeDrag("Pan, by its wedge", 0.9, HelmDiscZone::Pan, -0.08, 0.03),
    MakeWedgeClick("The disc is put away", 0.3, HelmDiscZone::Close),
    MakeCommand("Home", 1.0, "home"),
});

constexpr auto BARS = std::to_array<TourMove>({
    MakeCommand("The navigation bar fades in", 0.7, "toggle-bar"),
    MakeBarMove("A tooltip, after half a second", Hover, 0.9, HOME_ITEM),
    MakeArrowClick("Discs to choose from", 0.8, NavigationBar::TAG_FULL_NAVIGATION),
    MakeCommand("It is dragged by its grip", 0.0, "disc-view-object"),
    MakeCommand("It is dragged by its grip", 0.0, "close-disc"),
    MakeBarDrag("It is dragged by its grip", 1.0, -0.93, -0.1),
    {"It docks", Rest, 0.4},
    MakeBarDrag("And to the top", 0.9, 0.45, 0.25),
    {"It docks", Rest, 0.4},
    MakeCommand("Or hangs at the cube", 0.7, "bar-linked"),
    MakeCommand("A toolbar of the tools", 0.0, "bar-right"),
    MakeCommand("A toolbar of the tools", 0.7, "toggle-tools"),
    MakeBarMove("A toolbar of the tools", Click, 0.5, TOOL_PAN),
});

constexpr auto TOOLS = std::to_array<TourMove>({
    {"Orbit: left drag", Drag, 1.2, 0.30, 0.60, 0.45, 0.56},
    {"Pan: middle drag", Drag, 0.8, 0.50, 0.50, 0.42, 0.54, Middle},
    {"The wheel, in at the pointer", Wheel, 0.7, 0.46, 0.46, 0.46, 0.46, Left, {}, 8.0},
    {"And out", Wheel, 0.7, 0.46, 0.46, 0.46, 0.46, Left, {}, -8.0},
    MakeCommand("A rectangle", 0.0, "rectangle-zoom"),
    {"A rectangle", Drag, 0.8, 0.28, 0.60, 0.58, 0.32, Left, {}, 0.0, 0.6},
    {"What was in it fills the view", Rest, 1.0},
    MakeCommand("A walk", 0.0, "walk"),
    MakeCommand("A walk", 0.8, "front"),
    {"A walk", Drag, 1.4, 0.50, 0.30, 0.55, 0.50},
    MakeCommand("Home", 1.0, "home"),
});

constexpr auto MOVES = std::to_array<TourMove>({
    {"A house", Rest, 0.2},
    MakeCommand("The front, fitted", 1.1, "front"),
    MakeCommand("The top, fitted", 1.1, "top"),
    MakeCommand("From the corner", 1.1, "isometric"),
    MakeCommand("Without perspective", 0.8, "toggle-projection"),
    MakeCommand("And with it", 0.8, "toggle-projection"),
    {"A part is selected", Click, 0.4, 0.50, 0.50},
    MakeCommand("And fitted", 1.1, "fit-selection"),
    MakeCommand("All is fitted", 1.1, "fit-all"),
    MakeCommand("Home", 1.0, "home"),
});

constexpr auto HISTORY = std::to_array<TourMove>({
    MakeCommand("Four views", 0.8, "front"),
    MakeCommand("Four views", 0.8, "top"),
    MakeCommand("Four views", 0.8, "isometric"),
    MakeCommand("Four views", 0.8, "right"),
    {"The wedge of the disc opens their film", Hover, 0.3, 0.80, 0.62, 0.55, 0.56},
    MakeCommand("The wedge of the disc opens their film", 0.0, "disc-full-navigation"),
    MakeWedgeHover("The wedge of the disc opens their film", 0.5, HelmDiscZone::Rewind),
    MakeWedgeDrag("Back along the film", 2.2, HelmDiscZone::Rewind, -0.24, 0.0),
    MakeWedgeClick("The disc is put away", 0.4, HelmDiscZone::Close),
    MakeCommand("A step back by a key", 0.9, "previous-view"),
    MakeCommand("And forward again", 0.9, "next-view"),
});

constexpr auto STORYBOARD = std::to_array<TourMove>({
    MakeCommand("The storyboard", 0.6, "toggle-storyboard"),
    MakeStoryMove("A sequence, and its first shot", Click, 0.6, StoryPart::Sequence, 0),
    MakeCommand("A second shot, of another view", 0.8, "isometric"),
    MakeStoryMove("A second shot, of another view", Click, 0.6, StoryPart::Shot, 1),
    MakeStoryMove("The sequence plays", Click, 5.0, StoryPart::SequencePlay, 0),
});

constexpr auto SIX_AXIS = std::to_array<TourMove>({
    {"The model in the hand", Rest, 0.2},
    MakeDeviceMove("Turned, and lifted", 1.8, {0, 12, 0, 0, 180, 0}),
    MakeDeviceMove("Tilted", 0.9, {0, 0, 0, 25, 0, 0}),
    MakeDeviceMove("And back", 0.9, {0, 0, 0, -25, 0, 0}),
    MakeDeviceMove("To the side, and away", 0.9, {15, 0, 20, 0, 0, 0}),
    MakeDeviceMove("And nearer", 0.9, {-15, 0, -20, 0, 0, 0}),
    MakeCommand("A walk", 0.8, "front"),
    MakeCommand("A walk", 0.0, "device-walk"),
    MakeDeviceMove("A walk", 1.6, {0, 0, 90, 0, 0, 0}),
    MakeCommand("The page of the device", 0.0, "device-object"),
    MakeCommand("The page of the device", 0.8, "home"),
    MakeCommand("The page of the device", 0.0, "device-page"),
    MakeDeviceMove("What it says, as it comes", 1.4, {0, 0, 0, 0, 120, 0}),
});

struct Glance {
  std::string_view name;
  std::span<const TourMove> script;
};
constexpr auto GLANCES = std::to_array<Glance>({
    {WHOLE_GLANCE, ALL},
    {"cube", CUBE},
    {"discs", DISCS},
    {"bars", BARS},
    {"tools", TOOLS},
    {"moves", MOVES},
    {"history", HISTORY},
    {"storyboard", STORYBOARD},
    {"six-axis", SIX_AXIS},
});

}  // namespace

std::vector<std::string> GetGlanceNames() {
  std::vector<std::string> names;
  names.reserve(GLANCES.size());
  for (const Glance& glance : GLANCES) names.emplace_back(glance.name);
  return names;
}

std::span<const TourMove> FindGlance(std::string_view name) {
  const auto* const found =
      std::find_if(GLANCES.begin(), GLANCES.end(), [&](const Glance& glance) { return glance.name == name; });
  return found != GLANCES.end() ? found->script : std::span<const TourMove>();
}

}  // namespace zovview
