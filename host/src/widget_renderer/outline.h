#pragma once

#include <vector>

#include "zovhost/projection.h"

namespace zovhost {

/// A vertex on its way to the graphics card.
struct StreamVertex {
  float position[4] = {};
  float texCoord[2] = {};
};

/// Where lines are drawn: either over the viewport, in its pixels, or in a projected space.
struct OutlineView {
  const Projection* projection = nullptr;  // null: vertices are viewport pixels
  Matrix4 matrix = identityMatrix;         // world to clip space, with a projection
  double width = 0.0;                      // of the viewport in pixels
  double height = 0.0;
  double lineWidth = 1.0;  // pixels
};

/// Turns lines into triangles in clip space, since OpenGL's own lines are one pixel wide on most machines.
///
/// A projected line is moved a little nearer than what it bounds, so that it is not half hidden by it, and
/// is cut at the near plane. Over the viewport, a line along the pixel grid is put on it and stays sharp.
void AppendLine(const OutlineView& view, const float* vertices, const float* texCoords,
                std::vector<StreamVertex>& out);

/// The four sides of each quad. A quad that shows its back to a projected view is left out, but for a
/// triangle (third and fourth corner the same). A side that two quads share is drawn once.
void AppendOutlines(const OutlineView& view, unsigned quadCount, const float* vertices,
                    const float* texCoords, std::vector<StreamVertex>& out);

}  // namespace zovhost
