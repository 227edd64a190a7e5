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

}  // namespace Korvane
