#pragma once

#include "foundation/truncate.h"
#include "korvane/application_parameters.h"

namespace Korvane {

/// The row of a viewport pixel counted from the top, as operations take it, or back from there.
inline int FlipRow(int viewportHeight, int y) {
  return Truncate(static_cast<double>(viewportHeight) - y - 1.0);
}
inline int FlipRow(const ApplicationParameters& parameters, int y) {
  return FlipRow(parameters.viewport_height, y);
}

/// Where a cursor shows that has been wrapped at the edges of the viewport and counts on past them: 0 to
/// size - 1. A viewport without size wraps nothing.
inline int WrapIntoView(int coordinate, int size) {
  if (size <= 0) return coordinate;
  const int remainder = coordinate % size;
  return remainder < 0 ? remainder + size : remainder;
}

/// The same, but 1 to size, so that a coordinate of 0 stands at the far edge.
inline int WrapAround(int coordinate, int size) {
  if (size <= 0) return coordinate;
  const int remainder = coordinate % size;
  return coordinate <= 0 ? remainder + size : remainder;
}

/// Both edges of the viewport belong to it.
inline bool IsInView(const ApplicationParameters& parameters, int x, int y) {
  return x >= 0 && x <= parameters.viewport_width && y >= 0 && y <= parameters.viewport_height;
}

}  // namespace Korvane
