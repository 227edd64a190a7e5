#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "zovhost/scene.h"

namespace zovhost {

using Korvane::Vector3;

namespace {

// Metres; x along the front, y from the front to the back, z up; the lawn lies at z = 0.
constexpr double HALF_WIDTH = 5.5;
constexpr double HALF_DEPTH = 4.0;
constexpr double WALL = 0.3;
constexpr double FLOOR_0 = 0.45;  // top of the ground slab
constexpr double FLOOR_1 = 3.45;
constexpr double EAVES = 6.0;
constexpr double RIDGE = 8.9;
constexpr double SLAB = 0.3;

enum MaterialNumber : int {
  LAWN,
  PAVING,
  CONCRETE,
  RENDER,
  TIMBER,
  ROOF_TILES,
  FRAME,
  GLASS,
  DOOR,
  FLOORING,
  BRICK,
  LEAVES,
  BARK,
};

struct NamedColour {
  const char* name;
  std::array<float, 4> colour;
};
// In the order of MaterialNumber.
constexpr NamedColour COLOURS[] = {
    {"Lawn", {0.50f, 0.62f, 0.38f, 1.0f}},     {"Paving", {0.72f, 0.70f, 0.66f, 1.0f}},
    {"Concrete", {0.64f, 0.64f, 0.63f, 1.0f}}, {"Render", {0.94f, 0.92f, 0.87f, 1.0f}},
    {"Timber", {0.66f, 0.49f, 0.33f, 1.0f}},   {"Roof tiles", {0.60f, 0.29f, 0.22f, 1.0f}},
    {"Frame", {0.27f, 0.29f, 0.32f, 1.0f}},    {"Glass", {0.62f, 0.78f, 0.88f, 0.38f}},
    {"Door", {0.20f, 0.36f, 0.44f, 1.0f}},     {"Flooring", {0.78f, 0.65f, 0.49f, 1.0f}},
    {"Brick", {0.65f, 0.40f, 0.33f, 1.0f}},    {"Leaves", {0.36f, 0.52f, 0.28f, 1.0f}},
    {"Bark", {0.42f, 0.33f, 0.25f, 1.0f}},
};

struct Block {
  Vector3 low;
  Vector3 high;
};

// A hole in a wall, in the wall's own plane: along it, and above the lawn.
struct Opening {
  double from, to;
  double sill, head;
};

// A wall along x or y; `outer` and `inner` are its two faces on the other axis.
struct Wall {
  int axis;  // 0: runs along x, 1: along y
  double from, to;
  double outer, inner;
  double bottom, top;
  std::vector<Opening> openings;
};

// A point of a wall: along it, across it, up.
Vector3 GetWallPoint(int axis, double along, double across, double up) {
  return axis == 0 ? Vector3(along, across, up) : Vector3(across, along, up);
}

class Builder {
 public:
  SceneData data;

  Builder() {
    for (const NamedColour& colour : COLOURS)
      data.materials.push_back({colour.name, colour.colour, -1, true});
    data.upDirection = {0.0, 0.0, 1.0};
  }

  // Faces added until the next part belong to this one.
  void Begin(std::string name, int material) {
    ScenePart part;
    part.name = std::move(name);
    part.mesh = static_cast<int>(data.meshes.size());
    data.parts.push_back(std::move(part));
    data.meshes.emplace_back().material = material;
  }

  // Counter-clockwise from outside.
  void AddQuad(const Vector3& a, const Vector3& b, const Vector3& c, const Vector3& d) {
    AddTriangle(a, b, c);
    AddTriangle(a, c, d);
  }

  void AddTriangle(const Vector3& a, const Vector3& b, const Vector3& c) {
    SceneMesh& mesh = data.meshes.back();
    for (const Vector3& p : {a, b, c}) {
      mesh.indices.push_back(static_cast<std::uint32_t>(mesh.positions.size() / 3));
      for (int axis = 0; axis < 3; ++axis) mesh.positions.push_back(static_cast<float>(p[axis]));
    }
  }

  void AddBlock(const Block& block) {
    // Corner i lies on the high side of x, y, z by its bits 0, 1, 2.
    const auto corner = [&block](int i) {
      return Vector3((i & 1) != 0 ? block.high.x : block.low.x, (i & 2) != 0 ? block.high.y : block.low.y,
                     (i & 4) != 0 ? block.high.z : block.low.z);
    };
    constexpr int faces[6][4] = {{0, 4, 6, 2}, {1, 3, 7, 5}, {0, 1, 5, 4},
                                 {2, 6, 7, 3}, {0, 2, 3, 1}, {4, 5, 7, 6}};
    for (const auto& f : faces) AddQuad(corner(f[0]), corner(f[1]), corner(f[2]), corner(f[3]));
  }

  void AddBlock(std::string name, int material, const Block& block) {
    Begin(std::move(name), material);
    AddBlock(block);
  }
};

// The cuts that the edges of all openings make through a wall on one of its two axes.
std::vector<double> GetCuts(double from, double to, const std::vector<Opening>& openings,
                            double Opening::*first, double Opening::*second) {
  std::vector<double> cuts = {from, to};
  for (const Opening& opening : openings) {
    cuts.push_back(opening.*first);
    cuts.push_back(opening.*second);
  }
  std::sort(cuts.begin(), cuts.end());
  cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
  return cuts;
}

bool IsOpen(const Wall& wall, double along, double up) {
  return std::any_of(wall.openings.begin(), wall.openings.end(), [&](const Opening& o) {
    return along > o.from && along < o.to && up > o.sill && up < o.head;
  });
}

// The cuts divide the wall into cells. A solid cell has a face on either side of the wall, and one towards
// each neighbour that is open or beyond the wall.
void AddWall(Builder& builder, const Wall& wall) {
  const std::vector<double> columns =
      GetCuts(wall.from, wall.to, wall.openings, &Opening::from, &Opening::to);
  const std::vector<double> rows =
      GetCuts(wall.bottom, wall.top, wall.openings, &Opening::sill, &Opening::head);
  const auto isSolid = [&](std::size_t column, std::size_t row) {  // counted from 1; 0 lies outside
    if (column == 0 || row == 0 || column >= columns.size() || row >= rows.size()) return false;
    return !IsOpen(wall, (columns[column - 1] + columns[column]) / 2, (rows[row - 1] + rows[row]) / 2);
  };
  const auto point = [&](double along, double across, double up) {
    return GetWallPoint(wall.axis, along, across, up);
  };
  for (std::size_t c = 1; c < columns.size(); ++c)
    for (std::size_t r = 1; r < rows.size(); ++r) {
      if (!isSolid(c, r)) continue;
      const double a = columns[c - 1], b = columns[c], low = rows[r - 1], high = rows[r];
      for (const double across : {wall.outer, wall.inner})
        builder.AddQuad(point(a, across, low), point(b, across, low), point(b, across, high),
                        point(a, across, high));
      const auto addReveal = [&](double along0, double up0, double along1, double up1) {
        builder.AddQuad(point(along0, wall.outer, up0), point(along1, wall.outer, up1),
                        point(along1, wall.inner, up1), point(along0, wall.inner, up0));
      };
      if (!isSolid(c - 1, r)) addReveal(a, low, a, high);
      if (!isSolid(c + 1, r)) addReveal(b, low, b, high);
      if (!isSolid(c, r - 1)) addReveal(a, low, b, low);
      if (!isSolid(c, r + 1)) addReveal(a, high, b, high);
    }
}

Block GetWallBlock(const Wall& wall, double from, double to, double across0, double across1, double low,
                   double high) {
  return {GetWallPoint(wall.axis, from, std::min(across0, across1), low),
          GetWallPoint(wall.axis, to, std::max(across0, across1), high)};
}

// A frame around the opening with a mullion in the middle, and the pane behind it.
void AddWindow(Builder& builder, const Wall& wall, const Opening& o, const std::string& name) {
  constexpr double bar = 0.07;
  const double inwards = wall.inner > wall.outer ? 1.0 : -1.0;
  const double front = wall.outer + 0.10 * inwards;
  const double back = wall.outer + 0.18 * inwards;
  const double middle = (o.from + o.to) / 2;
  builder.Begin(name + " frame", FRAME);
  for (const Opening& piece :
       {Opening{o.from, o.to, o.sill, o.sill + bar}, Opening{o.from, o.to, o.head - bar, o.head},
        Opening{o.from, o.from + bar, o.sill + bar, o.head - bar},
        Opening{o.to - bar, o.to, o.sill + bar, o.head - bar},
        Opening{middle - bar / 2, middle + bar / 2, o.sill + bar, o.head - bar}})
    builder.AddBlock(GetWallBlock(wall, piece.from, piece.to, front, back, piece.sill, piece.head));
  builder.AddBlock(name + " glass", GLASS,
                   GetWallBlock(wall, o.from + bar, o.to - bar, wall.outer + 0.13 * inwards,
                                wall.outer + 0.15 * inwards, o.sill + bar, o.head - bar));
}

void AddWallWithWindows(Builder& builder, const Wall& wall, const std::string& name, int material,
                        std::size_t firstWindow) {
  builder.Begin(name, material);
  AddWall(builder, wall);
  for (std::size_t i = firstWindow; i < wall.openings.size(); ++i)
    AddWindow(builder, wall, wall.openings[i], name + " window " + std::to_string(i + 1 - firstWindow));
}

void AddGround(Builder& builder) {
  builder.AddBlock("Lawn", LAWN, {{-11.0, -9.5, -0.25}, {11.0, 9.5, 0.0}});
  builder.AddBlock(
      "Ground slab", CONCRETE,
      {{-HALF_WIDTH - 0.1, -HALF_DEPTH - 0.1, -0.2}, {HALF_WIDTH + 0.1, HALF_DEPTH + 0.1, FLOOR_0}});
  builder.Begin("Garden path", PAVING);
  for (int i = 0; i < 6; ++i) {
    const double y = -9.3 + i * 0.62;
    builder.AddBlock({{-2.7, y, 0.0}, {-1.1, y + 0.52, 0.04}});
  }
  builder.Begin("Entrance steps", CONCRETE);
  for (int i = 0; i < 3; ++i) {
    const double height = FLOOR_0 - 0.03 - i * 0.14;
    builder.AddBlock({{-2.9, -HALF_DEPTH - 0.1 - 0.95 - i * 0.32, 0.0}, {-0.9, -HALF_DEPTH - 0.1, height}});
  }
}

// The windows of the ground floor and of the upper one.
constexpr double LOW_1 = FLOOR_0 + 0.9, HIGH_1 = FLOOR_0 + 2.3;
constexpr double LOW_2 = FLOOR_1 + 0.9, HIGH_2 = FLOOR_1 + 2.1;

// The first opening below is the door, without a window.
void AddFrontWall(Builder& builder) {
  const double w = HALF_WIDTH, d = HALF_DEPTH;
  AddWallWithWindows(builder,
                     {0,
                      -w,
                      w,
                      -d,
                      -d + WALL,
                      FLOOR_0,
                      FLOOR_1,
                      {{-2.45, -1.35, FLOOR_0, FLOOR_0 + 2.25},
                       {-4.6, -3.3, LOW_1, HIGH_1},
                       {0.6, 2.2, LOW_1, HIGH_1},
                       {3.0, 4.6, LOW_1, HIGH_1}}},
                     "Front wall, ground floor", RENDER, 1);
  AddWallWithWindows(builder,
                     {0,
                      -w,
                      w,
                      -d,
                      -d + WALL,
                      FLOOR_1,
                      EAVES,
                      {{-4.6, -3.3, LOW_2, HIGH_2},
                       {-2.55, -1.25, LOW_2, HIGH_2},
                       {0.6, 2.2, LOW_2, HIGH_2},
                       {3.0, 4.6, LOW_2, HIGH_2}}},
                     "Front wall, upper floor", TIMBER, 0);
}

void AddGardenWall(Builder& builder) {
  const double w = HALF_WIDTH, d = HALF_DEPTH;
  AddWallWithWindows(builder,
                     {0,
                      -w,
                      w,
                      d,
                      d - WALL,
                      FLOOR_0,
                      FLOOR_1,
                      {{-4.4, -3.0, LOW_1, HIGH_1},
                       {-1.2, 1.4, FLOOR_0 + 0.05, FLOOR_0 + 2.35},
                       {2.0, 4.6, FLOOR_0 + 0.05, FLOOR_0 + 2.35}}},
                     "Garden wall, ground floor", RENDER, 0);
  AddWallWithWindows(builder,
                     {0,
                      -w,
                      w,
                      d,
                      d - WALL,
                      FLOOR_1,
                      EAVES,
                      {{-4.4, -3.0, LOW_2, HIGH_2}, {-0.7, 0.9, LOW_2, HIGH_2}, {2.5, 4.1, LOW_2, HIGH_2}}},
                     "Garden wall, upper floor", TIMBER, 0);
}

void AddSideWalls(Builder& builder) {
  const double w = HALF_WIDTH, d = HALF_DEPTH;
  for (const double side : {-1.0, 1.0}) {
    const std::string name = side < 0.0 ? "West wall" : "East wall";
    AddWallWithWindows(builder,
                       {1,
                        -d + WALL,
                        d - WALL,
                        side * w,
                        side * (w - WALL),
                        FLOOR_0,
                        FLOOR_1,
                        {{-2.6, -1.2, LOW_1, HIGH_1}, {0.8, 2.6, LOW_1, HIGH_1}}},
                       name + ", ground floor", RENDER, 0);
    AddWallWithWindows(
        builder,
        {1, -d + WALL, d - WALL, side * w, side * (w - WALL), FLOOR_1, EAVES, {{-0.8, 0.8, LOW_2, HIGH_2}}},
        name + ", upper floor", TIMBER, 0);
  }
}

void AddDoor(Builder& builder) {
  const double y = -HALF_DEPTH;
  builder.AddBlock("Front door", DOOR, {{-2.38, y + 0.10, FLOOR_0}, {-1.42, y + 0.17, FLOOR_0 + 2.18}});
  builder.Begin("Front door frame", FRAME);
  builder.AddBlock({{-2.45, y + 0.08, FLOOR_0}, {-2.38, y + 0.20, FLOOR_0 + 2.25}});
  builder.AddBlock({{-1.42, y + 0.08, FLOOR_0}, {-1.35, y + 0.20, FLOOR_0 + 2.25}});
  builder.AddBlock({{-2.38, y + 0.08, FLOOR_0 + 2.18}, {-1.42, y + 0.20, FLOOR_0 + 2.25}});
  builder.AddBlock("Front door handle", FRAME,
                   {{-1.56, y + 0.02, FLOOR_0 + 1.0}, {-1.51, y + 0.10, FLOOR_0 + 1.3}});
  builder.AddBlock("Porch roof", FRAME, {{-3.0, y - 1.25, FLOOR_0 + 2.5}, {-0.8, y, FLOOR_0 + 2.62}});
  builder.Begin("Porch posts", TIMBER);
  for (const double x : {-2.92, -1.0})
    builder.AddBlock({{x, y - 1.15, 0.0}, {x + 0.12, y - 1.03, FLOOR_0 + 2.5}});
}

// The upper floor leaves an opening above the stairs, which climb along the garden side.
void AddInside(Builder& builder) {
  const double w = HALF_WIDTH - WALL, d = HALF_DEPTH - WALL;
  constexpr double openFrom = -4.4, openTo = -1.6, openY = 2.5;
  builder.AddBlock("Floor, ground floor", FLOORING, {{-w, -d, FLOOR_0}, {w, d, FLOOR_0 + 0.02}});
  builder.Begin("Floor, upper floor", FLOORING);
  const double low = FLOOR_1 - SLAB;
  builder.AddBlock({{-w, -d, low}, {w, openY, FLOOR_1}});
  builder.AddBlock({{-w, openY, low}, {openFrom, d, FLOOR_1}});
  builder.AddBlock({{openTo, openY, low}, {w, d, FLOOR_1}});
  builder.Begin("Stairs", TIMBER);
  constexpr int steps = 16;
  constexpr double going = 0.26, rise = (FLOOR_1 - FLOOR_0) / steps;
  for (int i = 0; i < steps; ++i) {
    const double x = openFrom + (steps - 1 - i) * going;
    const double top = FLOOR_0 + (i + 1) * rise;
    builder.AddBlock({{x, openY + 0.1, top - 0.06}, {x + going + 0.03, openY + 1.1, top}});
  }
  builder.AddBlock("Inner wall, ground floor", RENDER, {{-0.1, -d, FLOOR_0 + 0.02}, {0.1, 0.6, low}});
  builder.AddBlock("Inner wall, upper floor", RENDER, {{-w, 0.9, FLOOR_1}, {w, 1.05, EAVES}});
}

// A saddle roof with its ridge along x, overhanging on all sides; the gables close the wall below it.
void AddRoof(Builder& builder) {
  constexpr double overhang = 0.6, thickness = 0.22;
  const double slope = (RIDGE - EAVES) / HALF_DEPTH;
  const double x = HALF_WIDTH + overhang;
  const double eaves = EAVES - slope * overhang;
  for (const double side : {-1.0, 1.0}) {
    builder.Begin(side < 0.0 ? "Roof, front" : "Roof, garden side", ROOF_TILES);
    const double y = side * (HALF_DEPTH + overhang);
    const Vector3 up(0.0, 0.0, thickness);
    const Vector3 a(-x, y, eaves), b(x, y, eaves), c(x, 0.0, RIDGE), d(-x, 0.0, RIDGE);
    builder.AddQuad(a + up, b + up, c + up, d + up);
    builder.AddQuad(a, b, c, d);
    builder.AddQuad(a, b, b + up, a + up);
    builder.AddQuad(b, c, c + up, b + up);
    builder.AddQuad(d, a, a + up, d + up);
  }
  for (const double side : {-1.0, 1.0}) {
    builder.Begin(side < 0.0 ? "Gable, west" : "Gable, east", TIMBER);
    const double gable = side * HALF_WIDTH, inside = side * (HALF_WIDTH - WALL);
    for (const double at : {gable, inside})
      builder.AddTriangle({at, -HALF_DEPTH, EAVES}, {at, HALF_DEPTH, EAVES}, {at, 0.0, RIDGE});
  }
  builder.AddBlock("Attic floor", CONCRETE,
                   {{-HALF_WIDTH + WALL, -HALF_DEPTH + WALL, EAVES - 0.05},
                    {HALF_WIDTH - WALL, HALF_DEPTH - WALL, EAVES}});
  builder.AddBlock("Chimney", BRICK, {{2.3, 0.7, EAVES}, {3.1, 1.4, RIDGE + 0.8}});
  builder.AddBlock("Chimney cap", CONCRETE, {{2.2, 0.6, RIDGE + 0.8}, {3.2, 1.5, RIDGE + 0.92}});
}

// On the garden side, under a pergola.
void AddTerrace(Builder& builder) {
  const double y0 = HALF_DEPTH + 0.1, y1 = HALF_DEPTH + 3.4;
  builder.AddBlock("Terrace", PAVING, {{-2.0, y0, 0.0}, {HALF_WIDTH, y1, FLOOR_0 - 0.05}});
  builder.Begin("Terrace steps", PAVING);
  builder.AddBlock({{-0.6, y1, 0.0}, {1.4, y1 + 0.35, 0.27}});
  builder.AddBlock({{-0.6, y1 + 0.35, 0.0}, {1.4, y1 + 0.7, 0.13}});
  builder.Begin("Pergola posts", TIMBER);
  for (const double x : {-1.8, 1.7, 5.2})
    builder.AddBlock({{x, y1 - 0.3, FLOOR_0 - 0.05}, {x + 0.14, y1 - 0.16, FLOOR_0 + 2.4}});
  builder.Begin("Pergola beams", TIMBER);
  builder.AddBlock({{-2.0, y1 - 0.31, FLOOR_0 + 2.4}, {HALF_WIDTH, y1 - 0.15, FLOOR_0 + 2.58}});
  for (int i = 0; i < 12; ++i) {
    const double x = -1.9 + i * 0.655;
    builder.AddBlock({{x, HALF_DEPTH, FLOOR_0 + 2.58}, {x + 0.07, y1, FLOOR_0 + 2.70}});
  }
  builder.AddBlock("Garden table", TIMBER, {{2.2, y0 + 1.0, 1.10}, {4.0, y0 + 1.9, 1.16}});
  builder.Begin("Garden table legs", FRAME);
  for (const double x : {2.3, 3.84})
    for (const double y : {y0 + 1.08, y0 + 1.76})
      builder.AddBlock({{x, y, FLOOR_0 - 0.05}, {x + 0.06, y + 0.06, 1.10}});
  builder.Begin("Garden benches", TIMBER);
  for (const double y : {y0 + 0.5, y0 + 2.05})
    builder.AddBlock({{2.2, y, FLOOR_0 - 0.05}, {4.0, y + 0.35, FLOOR_0 + 0.4}});
}

void AddEllipsoid(Builder& builder, const Vector3& centre, const Vector3& radii) {
  constexpr int rings = 8, sectors = 14;
  const auto point = [&](int ring, int sector) {
    const double polar = Korvane::Math::PI * ring / rings;
    const double around = 2.0 * Korvane::Math::PI * (sector % sectors) / sectors;
    const double reach = ring == rings ? 0.0 : std::sin(polar);
    return centre + Vector3(radii.x * reach * std::cos(around), radii.y * reach * std::sin(around),
                            radii.z * std::cos(polar));
  };
  for (int ring = 0; ring < rings; ++ring)
    for (int sector = 0; sector < sectors; ++sector) {
      const Vector3 a = point(ring, sector), b = point(ring + 1, sector);
      const Vector3 c = point(ring + 1, sector + 1), d = point(ring, sector + 1);
      if (ring > 0) builder.AddTriangle(a, c, d);
      if (ring + 1 < rings) builder.AddTriangle(a, b, c);
    }
}

void AddGarden(Builder& builder) {
  const Vector3 tree(-8.2, -5.6, 0.0);
  builder.AddBlock("Tree trunk", BARK, {tree + Vector3(-0.14, -0.14, 0.0), tree + Vector3(0.14, 0.14, 2.2)});
  builder.Begin("Tree crown", LEAVES);
  AddEllipsoid(builder, tree + Vector3(0.0, 0.0, 3.3), {1.5, 1.5, 1.7});
  builder.Begin("Hedge", LEAVES);
  for (int i = 0; i < 7; ++i) AddEllipsoid(builder, {-9.9, -1.0 + i * 1.35, 0.45}, {0.75, 0.8, 0.68});
  builder.Begin("Shrubs", LEAVES);
  for (const double x : {1.4, 3.8}) AddEllipsoid(builder, {x, -HALF_DEPTH - 0.75, 0.3}, {0.7, 0.45, 0.5});
}

}  // namespace

std::unique_ptr<Scene> MakeDemoBuilding() {
  Builder builder;
  AddGround(builder);
  AddFrontWall(builder);
  AddGardenWall(builder);
  AddSideWalls(builder);
  AddDoor(builder);
  AddInside(builder);
  AddRoof(builder);
  AddTerrace(builder);
  AddGarden(builder);
  std::string error;
  return MakeScene(std::move(builder.data), error);
}

}  // namespace zovhost
