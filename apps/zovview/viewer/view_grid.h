#pragma once

#include <cstddef>
#include <vector>

namespace zovview {

/// Where a view stands in a window; pixels, from the bottom left.
struct ViewPlace {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

constexpr int MOST_VIEWS = 4;

/// One view has the whole window, two share it side by side, the third and the fourth stand below those: of
/// three the first keeps its whole side. The first is the one at the top left. For other numbers the nearest.
std::vector<ViewPlace> PlaceViews(int count, int width, int height);

/// The view at a pixel; on the line between two, or outside, the nearest.
std::size_t FindViewAt(const std::vector<ViewPlace>& places, int x, int y);

}  // namespace zovview
