#include "cube/cube_model.h"

#include <cmath>
#include <cstddef>

namespace Korvane {

// ---- tables ----

const CubePart CUBE_PARTS[CUBE_PART_COUNT] = {
    {Vector3(-1, 0, 0), "Back"},
    {Vector3(1, 0, 0), "Front"},
    {Vector3(0, -1, 0), "Bottom"},
    {Vector3(0, 1, 0), "Top"},
    {Vector3(0, 0, -1), "Right"},
    {Vector3(0, 0, 1), "Left"},
    {Vector3(-1, -1, 0), "Back Bottom"},
    {Vector3(-1, 1, 0), "Back Top"},
    {Vector3(1, -1, 0), "Front Bottom"},
    {Vector3(1, 1, 0), "Front Top"},
    {Vector3(0, -1, -1), "Right Bottom"},
    {Vector3(0, -1, 1), "Left Bottom"},
    {Vector3(0, 1, -1), "Right Top"},
    {Vector3(0, 1, 1), "Left Top"},
    {Vector3(-1, 0, -1), "Back Right"},
    {Vector3(1, 0, -1), "Front Right"},
    {Vector3(-1, 0, 1), "Back Left"},
    {Vector3(1, 0, 1), "Front Left"},
    {Vector3(-1, -1, -1), "Back Right Bottom"},
    {Vector3(-1, -1, 1), "Back Left Bottom"},
    {Vector3(-1, 1, -1), "Back Right Top"},
    {Vector3(-1, 1, 1), "Back Left Top"},
    {Vector3(1, -1, -1), "Front Right Bottom"},
    {Vector3(1, -1, 1), "Front Left Bottom"},
    {Vector3(1, 1, -1), "Front Right Top"},
    {Vector3(1, 1, 1), "Front Left Top"},
};

const Vector3 COMPASS_LETTERS[COMPASS_LETTER_COUNT] = {
    Vector3(1, 0, 0),
    Vector3(-1, 0, 0),
    Vector3(0, 0, 1),
    Vector3(0, 0, -1),
};

Vector3 GetCompassRingDirection(int index) {
  // The cardinal directions round the ring; seven directions lie between each and the next.
  static constexpr Vector3 CARDINALS[5] = {
      Vector3(0, 0, -1), Vector3(1, 0, 0), Vector3(0, 0, 1), Vector3(-1, 0, 0), Vector3(0, 0, -1),
  };
  static constexpr int STEPS = 7;
  struct Ratio {
    int approached;
    int leftBehind;
  };
  static constexpr Ratio RATIOS[STEPS] = {{1, 3}, {1, 2}, {2, 3}, {1, 1}, {3, 2}, {2, 1}, {3, 1}};

  const int quadrant = index / STEPS;
  const Ratio& ratio = RATIOS[index % STEPS];
  return (CARDINALS[quadrant] * ratio.leftBehind + CARDINALS[quadrant + 1] * ratio.approached).Normalize();
}

namespace {

struct PartTable {
  Vector3 directions[ALL_PART_COUNT];
  Vector3 views[CUBE_PART_COUNT];
  std::string names[CUBE_PART_COUNT];

  PartTable() {
    for (int part = 0; part < CUBE_PART_COUNT; ++part) {
      directions[part] = CUBE_PARTS[part].direction;
      views[part] = (-directions[part]).Normalize();
      names[part] = CUBE_PARTS[part].name;
    }
    for (int i = 0; i < COMPASS_LETTER_COUNT; ++i) directions[COMPASS_LETTERS_FROM + i] = COMPASS_LETTERS[i];
    for (int i = 0; i < COMPASS_RING_COUNT; ++i) {
      directions[COMPASS_RING_FROM + i] = GetCompassRingDirection(i);
    }
  }
};

const PartTable& GetPartTable() {
  static const PartTable table;
  return table;
}

}  // namespace

const Vector3& GetPartDirection(int part) { return GetPartTable().directions[part]; }
const Vector3& GetPartView(int part) { return GetPartTable().views[part]; }
const std::string& GetPartName(int part) { return GetPartTable().names[part]; }

// ---- the box of a part ----

namespace {

// How much further a part on the outline reaches, by axis. Where one axis of the part looks away from the
// eye and its neighbour in the cycle x, y, z looks toward it, the first reaches back.
Vector3 GetOutlineOffset(const CubeDimensions& cube, const Vector3& view, const Vector3& part) {
  static constexpr int NEIGHBOURS[3][2] = {{0, 1}, {1, 2}, {2, 0}};

  Vector3 offset;
  const auto reachBack = [&](int away, int toward) {
    const double facing = part[away] * view[away];
    if (facing > 0.0 && part[toward] * view[toward] < 0.0) {
      offset[away] = std::abs(facing) * cube.edge * part[away] * 3.0;
    }
  };
  for (const auto& pair : NEIGHBOURS) {
    reachBack(pair[0], pair[1]);
    reachBack(pair[1], pair[0]);
  }
  return offset;
}

}  // namespace

void GetPartBound(const CubeDimensions& cube, const Vector3& view, const Vector3& part, bool select,
                  Vector3& min, Vector3& max) {
  const Vector3 offset = select ? GetOutlineOffset(cube, view, part) : Vector3::Zero;
  for (int axis = 0; axis < 3; ++axis) {
    double outer = cube.face - cube.gap;
    double inner = -outer;
    if (part[axis] != 0.0) {
      outer = (cube.edge + cube.face) * part[axis];
      inner = cube.face * part[axis];
    }
    outer += offset[axis];
    min[axis] = Math::Min(outer, inner);
    max[axis] = Math::Max(outer, inner);
  }
}

// ---- the sides of a box ----

namespace {

// Where a face's row lies in the texture and which way it runs.
struct TextureRow {
  double baseU;
  double baseV;
  double scaleU;
  double scaleV;
};
constexpr int ROW_COUNT = 6;
constexpr TextureRow TEXTURE_ROWS[ROW_COUNT] = {
    {0.0, 5.0, 1.0, -1.0},   // Back
    {1.0, 6.0, -1.0, -1.0},  // Front
    {1.0, 2.0, -1.0, -1.0},  // Bottom
    {0.0, 1.0, 1.0, -1.0},   // Top
    {1.0, 3.0, -1.0, -1.0},  // Right
    {0.0, 4.0, 1.0, -1.0},   // Left
};

// Which end of the box, 0 low and 1 high, each vertex takes on the two other axes, for the low and for the
// high side: clockwise as seen from outside, which is how all quads of the cube face outward.
struct Corner {
  int b;
  int c;
};
constexpr Corner CORNERS[2][4] = {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}, {{0, 1}, {1, 1}, {1, 0}, {0, 0}}};
constexpr float PLAIN_TEXTURE[4][2] = {{0, 0}, {1, 0}, {0, 1}, {1, 1}};

class SideWriter {
 public:
  SideWriter(const CubeDimensions& cube, const Vector3& min, const Vector3& max, bool plainTexture,
             PartVertices& vertices)
      : width(2.0 * cube.GetHalfSize()),
        outside(cube.edge + cube.face),
        bound{min, max},
        plain(plainTexture),
        out(vertices) {}

  // `axis` across the side; `end` 0 for the low side, 1 for the high one.
  void WriteSide(int axis, int end) {
    if (std::abs(bound[end][axis]) < outside) return;
    const int b = (axis + 1) % 3;
    const int c = (axis + 2) % 3;
    for (int i = 0; i < 4; ++i) {
      const Corner& corner = CORNERS[end][i];
      Vector3 vertex;
      vertex[axis] = bound[end][axis];
      vertex[b] = bound[corner.b][b];
      vertex[c] = bound[corner.c][c];
      float* const texCoord = out.texCoords + std::size_t{2} * out.count;
      if (plain) {
        texCoord[0] = PLAIN_TEXTURE[i][0];
        texCoord[1] = PLAIN_TEXTURE[i][1];
      } else {
        WriteRowTexture(2 * axis + end, vertex[b], vertex[c], texCoord);
      }
      vertex.ToArray(out.vertices + std::size_t{3} * out.count);
      ++out.count;
    }
  }

 private:
  void WriteRowTexture(int face, double onB, double onC, float* texCoord) const {
    const bool acrossFront = face < 2;
    const double p = acrossFront ? onC : onB;
    const double q = acrossFront ? onB : onC;
    const TextureRow& row = TEXTURE_ROWS[face];
    texCoord[0] = static_cast<float>(row.scaleU * (p / width + 0.5) + row.baseU);
    texCoord[1] = static_cast<float>((row.scaleV * (q / width + 0.5) + row.baseV) / ROW_COUNT);
  }

  double width;
  double outside;
  Vector3 bound[2];
  bool plain;
  PartVertices& out;
};

}  // namespace

void GetPartVertexArray(const CubeDimensions& cube, const Vector3& min, const Vector3& max, bool plain,
                        PartVertices& out) {
  out.count = 0;
  SideWriter writer(cube, min, max, plain, out);
  for (int axis = 0; axis < 3; ++axis) {
    for (int end = 0; end < 2; ++end) writer.WriteSide(axis, end);
  }
}

}  // namespace Korvane
