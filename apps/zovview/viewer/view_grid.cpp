#include "viewer/view_grid.h"

#include <algorithm>

namespace zovview {

namespace {

constexpr int DIVIDER = 2;  // pixels between two views

// A side of the window shared by two; the first part begins it, the second ends it.
struct Halves {
  explicit Halves(int whole) : length(std::max(1, (whole - DIVIDER) / 2)), second(whole - length) {}
  int length;
  int second;
};

int DistanceTo(int position, int start, int length) {
  return std::max({0, start - position, position - (start + length - 1)});
}

}  // namespace

std::vector<ViewPlace> PlaceViews(int count, int width, int height) {
  const Halves across(width);
  const Halves upward(height);
  const ViewPlace left = {0, 0, across.length, height};
  const ViewPlace right = {across.second, 0, across.length, height};
  const auto upper = [&](const ViewPlace& side) {
    return ViewPlace{side.x, upward.second, side.width, upward.length};
  };
  const auto lower = [&](const ViewPlace& side) { return ViewPlace{side.x, 0, side.width, upward.length}; };
  if (count <= 1) return {{0, 0, width, height}};
  if (count == 2) return {left, right};
  if (count == 3) return {left, upper(right), lower(right)};
  return {upper(left), upper(right), lower(left), lower(right)};
}

std::size_t FindViewAt(const std::vector<ViewPlace>& places, int x, int y) {
  const auto distance = [x, y](const ViewPlace& place) {
    return std::max(DistanceTo(x, place.x, place.width), DistanceTo(y, place.y, place.height));
  };
  const auto nearest =
      std::min_element(places.begin(), places.end(),
                       [&](const ViewPlace& a, const ViewPlace& b) { return distance(a) < distance(b); });
  return static_cast<std::size_t>(nearest - places.begin());
}

}  // namespace zovview
