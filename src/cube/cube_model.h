#pragma once

#include "korvane/vector3.h"

namespace Korvane {

// What the cube is made of, as tables and geometry, apart from any widget. Standard space: x front, y top,
// z left.

constexpr int CUBE_PART_COUNT = 26;
constexpr int COMPASS_LETTER_COUNT = 4;
constexpr int COMPASS_RING_COUNT = 28;

struct CubePart {
  Vector3 direction;  // from the centre outward, not normalised
  const char* name;
};

/// Faces, edges, corners.
extern const CubePart CUBE_PARTS[CUBE_PART_COUNT];
extern const Vector3 COMPASS_LETTERS[COMPASS_LETTER_COUNT];

/// The directions of the ring, of unit length, from -z through +x, +z and -x and back.
Vector3 GetCompassRingDirection(int index);

/// The coordinates of `v` along front, up and side, where front is the direction of `first`, side that of
/// first x second, and up completes the frame. Directions that are degenerate give zero.
Vector3 ChangeBasis(const Vector3& first, const Vector3& second, const Vector3& v);
/// The inverse: from these coordinates.
Vector3 ChangeInverseBasis(const Vector3& first, const Vector3& second, const Vector3& v);

/// The lengths that shape the cube.
struct CubeDimensions {
  double face;  // half the size of a face panel
  double edge;  // width of the rim
  double gap;   // between the parts

  double GetHalfSize() const { return edge + face + gap; }
};

/// The box of the part with this direction, for a view direction; both in standard space. With `select`
/// the parts on the outline of the cube reach further back, where the eye sees them end.
void GetPartBound(const CubeDimensions& cube, const Vector3& view, const Vector3& part, bool select,
                  Vector3& min, Vector3& max);

/// The outer sides of a box, as quads that face outward: clockwise as seen from there.
struct PartVertices {
  static constexpr unsigned MAX_COUNT = 24;

  float vertices[3 * MAX_COUNT];
  float texCoords[2 * MAX_COUNT];
  unsigned count = 0;
};

/// Sides that lie within the cube are left out. With `plain` each quad takes the whole texture, else its
/// piece out of the row of its face: six rows, from the top Top, Bottom, Right, Left, Back, Front.
void GetPartVertexArray(const CubeDimensions& cube, const Vector3& min, const Vector3& max, bool plain,
                        PartVertices& out);

}  // namespace Korvane
