#pragma once

#include <string>

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

constexpr int CUBE_FACE_COUNT = 6;
constexpr int COMPASS_LETTERS_FROM = CUBE_PART_COUNT;
constexpr int COMPASS_RING_FROM = COMPASS_LETTERS_FROM + COMPASS_LETTER_COUNT;
constexpr int ALL_PART_COUNT = COMPASS_RING_FROM + COMPASS_RING_COUNT;

/// Whether a part is one of these faces, of which each is a bit.
constexpr bool IsFaceAmong(unsigned faces, int part) {
  return part >= 0 && part < CUBE_FACE_COUNT && (faces >> part & 1U) != 0;
}

/// Of all parts in one numbering: those of the cube, the letters, the ring.
const Vector3& GetPartDirection(int part);
/// From the eye to the centre of a part of the cube, of unit length.
const Vector3& GetPartView(int part);
/// English, of a part of the cube.
const std::string& GetPartName(int part);

/// Front, up and side, where front is the direction of `first`, side that of first x second, and up completes
/// the frame. Directions that are degenerate are zero.
struct Basis {
  Vector3 front;
  Vector3 up;
  Vector3 side;

  Basis() = default;
  Basis(const Vector3& first, const Vector3& second)
      : front(first.Normalized()), up(), side(first.Cross(second).Normalize()) {
    up = side.Cross(front).Normalize();
  }

  /// The coordinates of `v` along front, up and side.
  Vector3 Into(const Vector3& v) const { return {v.Dot(front), v.Dot(up), v.Dot(side)}; }
  /// The inverse: from these coordinates.
  Vector3 OutOf(const Vector3& v) const { return front * v.x + up * v.y + side * v.z; }
};

inline Vector3 ChangeBasis(const Vector3& first, const Vector3& second, const Vector3& v) {
  return Basis(first, second).Into(v);
}
inline Vector3 ChangeInverseBasis(const Vector3& first, const Vector3& second, const Vector3& v) {
  return Basis(first, second).OutOf(v);
}

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
