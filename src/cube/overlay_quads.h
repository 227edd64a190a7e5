#pragma once

#include "cube/cube_layout.h"
#include "cube/quad_sink.h"
#include "korvane/vector2.h"

namespace Korvane {

/// Lays the screen-space controls beside the cube into a sink; viewport pixels. The label of the coordinate
/// system is an icon and lays itself.
class OverlayQuads {
 public:
  struct State {
    bool shown = false;   // any of it
    bool locked = false;  // to the selection
    bool arrows = false;  // a face arrow shows
  };

  OverlayQuads(const OrientorParameters& settings, const CubeLayout& cubeLayout, QuadUse quadUse,
               const State& now)
      : parameters(settings), layout(cubeLayout), use(quadUse), state(now) {}

  /// By the number of the part; nothing for one that does not show now.
  void Lay(int part, QuadSink& sink) const;

 private:
  void LayRotateArrow(int part, QuadSink& sink) const;
  void LaySquare(int part, const Vector2& offset, double halfSize, QuadSink& sink) const;

  const OrientorParameters& parameters;
  const CubeLayout& layout;
  QuadUse use;
  State state;
};

}  // namespace Korvane
