#include "focus/disc_wedges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "korvane/pixel_icon2d.h"
#include "korvane/track_menu.h"

namespace zovhost {

using Korvane::PixelIcon2D;
using Korvane::TrackMenu;
using Korvane::Vector2;
using Korvane::Vector3;

namespace {

constexpr double SAME_COLOUR = 0.02;
constexpr int STEPS = 64;  // of the grid across a map

constexpr std::array<std::array<int, 2>, 8> AROUND = {
    {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}}};

// Which region each place of a grid over the map shows, -1 for none.
class Grid {
 public:
  Grid(TrackMenu& menu, const PixelIcon2D& map)
      : corner(map.GetPosition() - map.GetBounds().halfExtent),
        cell(std::max(1.0, map.GetWidth() / STEPS), std::max(1.0, map.GetHeight() / STEPS)) {
    for (int row = 0; row < STEPS; ++row) {
      for (int column = 0; column < STEPS; ++column) {
        Vector3 colour;
        const bool shows = map.GetColor(GetPlace(column, row), colour);
        regions[Index(column, row)] = shows ? FindRegion(menu, colour) : -1;
      }
    }
  }

  // The middle of a pixel.
  Vector2 GetPlace(int column, int row) const {
    return {std::floor(corner.x + (column + 0.5) * cell.x) + 0.5,
            std::floor(corner.y + (row + 0.5) * cell.y) + 0.5};
  }

  // That which is furthest from any other region.
  std::optional<Vector2> FindMiddle(int region) const {
    std::optional<Vector2> middle;
    int deepest = 0;
    for (int row = 0; row < STEPS; ++row) {
      for (int column = 0; column < STEPS; ++column) {
        const int depth = GetDepth(region, column, row);
        if (depth <= deepest) continue;
        deepest = depth;
        middle = GetPlace(column, row);
      }
    }
    return middle;
  }

 private:
  static std::size_t Index(int column, int row) {
    return static_cast<std::size_t>(row) * STEPS + static_cast<std::size_t>(column);
  }

  static int FindRegion(TrackMenu& menu, const Vector3& colour) {
    int found = -1;
    for (int i = 0; const TrackMenu::Region* const region = menu.GetRegion(i); ++i) {
      if (region->enabled && (region->color - colour).Length() < SAME_COLOUR) found = i;
    }
    return found;
  }

  bool IsOf(int region, int column, int row) const {
    const bool within = column >= 0 && row >= 0 && column < STEPS && row < STEPS;
    return within && regions[Index(column, row)] == region;
  }

  // How far in all directions it is the same.
  int GetDepth(int region, int column, int row) const {
    if (!IsOf(region, column, row)) return 0;
    for (int depth = 1; depth < STEPS; ++depth) {
      for (const auto& way : AROUND) {
        if (!IsOf(region, column + way[0] * depth, row + way[1] * depth)) return depth;
      }
    }
    return STEPS;
  }

  Vector2 corner;
  Vector2 cell;
  std::array<int, std::size_t{STEPS} * STEPS> regions{};
};

}  // namespace

std::vector<DiscWedge> FindWedges(TrackMenu& menu) {
  std::vector<DiscWedge> wedges;
  const PixelIcon2D* const map = menu.GetRegionMap();
  if (map == nullptr) return wedges;
  const Grid grid(menu, *map);
  for (int i = 0; menu.GetRegion(i) != nullptr; ++i) {
    const std::optional<Vector2> middle = grid.FindMiddle(i);
    if (!middle.has_value()) continue;
    wedges.push_back({i, {static_cast<int>(std::floor(middle->x)), static_cast<int>(std::floor(middle->y))}});
  }
  const auto getDistance = [&map](const DiscWedge& wedge) {
    return (Vector2(wedge.at.x, wedge.at.y) - map->GetPosition()).Length();
  };
  const auto inner = std::min_element(wedges.begin(), wedges.end(), [&](const auto& a, const auto& b) {
    return getDistance(a) < getDistance(b);
  });
  if (inner != wedges.end()) std::iter_swap(wedges.begin(), inner);
  return wedges;
}

}  // namespace zovhost
