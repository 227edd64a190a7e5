#include "panel/cube_place.h"

#include <algorithm>

#include "commands/bar_commands.h"
#include "viewport/viewport.h"

namespace zovview {

namespace {

constexpr float USUAL_ROOM = 220.0F;  // at the right of a page, for a cube of the usual size and the bars
constexpr float BESIDE_CUBE = 12.0F;
constexpr float PAGE_WIDTH = 380.0F;  // of the widest, with its margin

}  // namespace

std::optional<CubePlace> FindCubePlace(Viewport& view, int windowHeight, double scale) {
  if (!IsCubeShown(view.GetTarget())) return std::nullopt;
  const double points = 1.0 / scale;
  const Korvane::Box2 bounds = view.GetManager().GetOrientorBounds();
  const double left = view.GetX() + bounds.Min().x;
  const double top = windowHeight - view.GetY() - bounds.Max().y;
  return CubePlace{static_cast<float>(left * points), static_cast<float>(top * points),
                   static_cast<float>((left + 2.0 * bounds.halfExtent.x) * points),
                   static_cast<float>((top + 2.0 * bounds.halfExtent.y) * points)};
}

std::optional<CubePlace> FindBoardPlace(Viewport& view, int windowHeight, double scale) {
  if (!view.GetStory().IsShown()) return std::nullopt;
  const double points = 1.0 / scale;
  const auto left = static_cast<float>(view.GetX() * points);
  const auto foot = static_cast<float>((windowHeight - view.GetY()) * points);
  return CubePlace{left, foot - ViewStory::HEIGHT, left + static_cast<float>(view.GetWidth() * points), foot};
}

float FindPageRight(std::span<const CubePlace> cubes, float windowWidth) {
  float right = windowWidth - USUAL_ROOM;
  for (const CubePlace& cube : cubes) {
    if (cube.left + cube.right > windowWidth) right = std::min(right, cube.left - BESIDE_CUBE);
  }
  return std::max(right, std::min(PAGE_WIDTH, windowWidth));
}

}  // namespace zovview
