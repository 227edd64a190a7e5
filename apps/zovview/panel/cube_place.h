#pragma once

#include <optional>
#include <span>

namespace zovview {

class Viewport;

/// A cube, or a storyboard, which panels keep clear of: points from the top left of the window.
struct CubePlace {
  float left = 0.0F;
  float top = 0.0F;
  float right = 0.0F;
  float bottom = 0.0F;
};

/// That of a view in a window of this height, in pixels, with so many of them a point. None while the cube
/// does not show.
std::optional<CubePlace> FindCubePlace(Viewport& view, int windowHeight, double scale);
/// The same of its storyboard.
std::optional<CubePlace> FindBoardPlace(Viewport& view, int windowHeight, double scale);

/// Where pages that come at the right end: to the left of the cubes in the right half of a window of this
/// width, but not so far that the page is not in the window. Points.
float FindPageRight(std::span<const CubePlace> cubes, float windowWidth);

}  // namespace zovview
