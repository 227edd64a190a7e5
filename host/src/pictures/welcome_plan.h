#pragma once

#include <span>

#include "pictures/disc_plan.h"

namespace zovhost {

// Plans of the two pages of the welcome screen. Lengths in points from the top left of a page, y down.

inline constexpr double welcomePoints = 512.0;

struct WelcomePlace {
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;
  double radius = 0.0;  // of its corners

  bool Contains(const DiscPoint& point) const;
};

enum class WelcomeRole : int { Ground, Between, Title, Choice, Switch };

struct WelcomeArea {
  WelcomeRole role = WelcomeRole::Ground;
  WelcomePlace place;
  MapKey key = {};
  int picture = -1;  // the number of the page's picture with this area under the pointer; -1: it shows none
  int name = -1;     // numbers of texts; -1: none
  int line = -1;
  int disc = -1;  // which plan of a disc is pictured; -1: none
};

struct WelcomePage {
  int plain = 0;  // the number of the picture with nothing under the pointer
  int map = 0;
  std::span<const WelcomeArea> areas;

  /// The last one of the list that has the point, or null beside the page.
  const WelcomeArea* FindArea(const DiscPoint& point) const;
};

std::span<const WelcomePage> GetWelcomePages();

}  // namespace zovhost
