#pragma once

#include <span>
#include <string_view>

#include "korvane/helm_disc_observer.h"
#include "korvane/orientor.h"
#include "stories/story_places.h"
#include "zovhost/six_axis_settings.h"
#include "zovhost/window.h"

namespace zovview {

/// One stretch of the tour. Positions are fractions of the viewport from its bottom left, or from the place
/// of a part of the cube or the wedge of a disc.
struct TourMove {
  enum class Kind : int {
    Rest,         // nothing is done; what travels goes on
    Hover,        // the pointer goes from one position to another
    Drag,         // `button` held from one position to another
    Wheel,        // `notches` turned at the first position
    Click,        // at the first position
    DoubleClick,  // at the first position
    Command,      // of the panel
    Device,       // a six-axis device is held in `axes`, less so at the begin and the end
    Welcome,      // the welcome screen of the discs shows
    Low,          // the view is made as low as that bars have no room for all their items
    High,         // and as high as the picture again
  };
  const char* caption;
  Kind kind;
  double seconds;
  double fromX = 0.5;
  double fromY = 0.5;
  double toX = 0.5;
  double toY = 0.5;
  zovhost::MouseButton button = zovhost::MouseButton::Left;
  std::string_view command = {};  // its name
  double notches = 0.0;
  double arrival = 1.0;  // of the pointer, as a fraction of the time
  // The lowest piece of the compass's ring.
  static constexpr int COMPASS_RING = Korvane::Orientor::PART_COUNT;
  // Where the move begins, if that is on the cube; by the numbers of Korvane::Orientor, or the ring.
  int cubePart = -1;
  int overlayPart = -1;

  // Where it begins, if that is on the open disc (a Korvane::HelmDiscZone), or on the welcome screen (the
  // index of its region).
  int wedge = -1;
  int welcomePart = -1;
  // Where it begins, if that is on the navigation bar or, from the tags of the tools on, on their toolbar; or
  // on the arrow of that item.
  int barItem = -1;
  bool onArrow = false;
  // Where it begins, if that is on the storyboard: a part, and which of its kind.
  StoryPart storyPart = StoryPart::None;
  int storyIndex = 0;
  zovhost::SixAxes axes{};

  constexpr bool IsOnCube() const { return cubePart >= 0 || overlayPart >= 0; }
};

std::span<const TourMove> GetTourScript();

/// Where the pointer is at a moment of a move; `fraction` of its time, 0 to 1.
struct TourPointer {
  double x;
  double y;
};
TourPointer FindPointer(const TourMove& move, double fraction);
/// As a hand holds a six-axis device then.
zovhost::SixAxes FindAxes(const TourMove& move, double fraction);

}  // namespace zovview
