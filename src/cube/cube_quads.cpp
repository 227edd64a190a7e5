#include "cube/cube_quads.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "cube/cube_space.h"
#include "korvane/orientor_parameters.h"
#include "korvane/quaternion.h"

namespace Korvane {

namespace {

constexpr double LETTER_HALF_SIZE = 0.05;
constexpr double RING_PART_HALF_SIZE = 0.0325;
constexpr double COMPASS_TURN = 90.0;  // degrees by which the compass stands off its directions
// Keeps things that lie on the ground apart.
constexpr double RING_BELOW_SHADOW = 0.0005;
constexpr double LETTER_BACK_BELOW = 0.001;
// The hit area of an arrow, in its own sizes.
constexpr double ARROW_PICK_LENGTH = 2.5;
constexpr double ARROW_PICK_HALF_WIDTH = 2.0;

bool NearlyEqual(const Vector3& a, const Vector3& b) {
  const auto near = [](double x, double y) { return std::abs(x - y) <= Math::EPSILON_VALUE; };
  return near(a.x, b.x) && near(a.y, b.y) && near(a.z, b.z);
}

bool IsAlongAFace(const Vector3& view) {
  for (int face = 0; face < CUBE_FACE_COUNT; ++face) {
    if (NearlyEqual(view, GetPartDirection(face))) return true;
  }
  return false;
}

}  // namespace

CubeQuads::CubeQuads(const OrientorParameters& settings, const CubeSpace& cubeSpace, QuadUse quadUse,
                     bool arrows)
    : parameters(settings),
      space(cubeSpace),
      use(quadUse),
      hasArrows(arrows && IsAlongAFace(cubeSpace.GetView())),
      cube{settings.face_size, settings.edge_size, settings.gap_size} {}

// ---- the cube ----

void CubeQuads::LayPart(int part, QuadSink& sink) const {
  Vector3 min;
  Vector3 max;
  GetPartBound(cube, space.GetView(), GetPartDirection(part), use == QuadUse::Offered, min, max);
  PartVertices sides;
  GetPartVertexArray(cube, min, max, false, sides);
  sink.Take(part, sides.count, sides.vertices, sides.texCoords);
  LayArrow(part, sink);
}

void CubeQuads::LayBody(QuadSink& sink) const {
  const Vector3 corner(cube.GetHalfSize());
  PartVertices sides;
  GetPartVertexArray(cube, -corner, corner, true, sides);
  sink.Take(0, sides.count, sides.vertices, sides.texCoords);
}

// Beside the face that is looked along, and not on the one behind it.
bool CubeQuads::HasArrow(int part) const {
  if (!hasArrows || part >= CUBE_FACE_COUNT) return false;
  const double cosine = GetPartDirection(part).Dot(space.GetView());
  return std::abs(1.0 - cosine) > Math::EPSILON_VALUE && std::abs(1.0 + cosine) > Math::EPSILON_VALUE;
}

void CubeQuads::LayArrow(int part, QuadSink& sink) const {
  static constexpr float TEXTURE[8] = {0.1F, 0.1F, 0.1F, 1.0F / 6.0F, 0.9F, 1.0F / 6.0F, 0.9F, 0.1F};
  if (!HasArrow(part)) return;
  const Vector3& direction = GetPartDirection(part);
  const Vector3 aside = space.GetView().Cross(direction).Normalize();
  const double outside = cube.GetHalfSize();
  const double size = parameters.arrow_size;
  const double offset = parameters.arrow_offset;
  Vector3 corners[4];
  if (use == QuadUse::Offered) {
    const Vector3 near = direction * outside;
    const Vector3 far = direction * (outside + ARROW_PICK_LENGTH * size + offset);
    const Vector3 width = aside * (ARROW_PICK_HALF_WIDTH * size);
    corners[0] = near - width;
    corners[1] = near + width;
    corners[2] = far + width;
    corners[3] = far - width;
  } else {
    const Vector3 tip = direction * (outside + offset);
    const Vector3 base = direction * (outside + offset + size);
    const Vector3 width = aside * size;
    corners[0] = base - width;
    corners[1] = base + width;
    corners[2] = corners[3] = tip;
  }
  float vertices[12];
  for (std::size_t i = 0; i < 4; ++i) corners[i].ToArray(vertices + 3 * i);
  sink.Take(part, 4, vertices, TEXTURE);
}

// ---- the ground ----

double CubeQuads::GetGround() const { return -(cube.GetHalfSize() + parameters.shadow_offset); }

void CubeQuads::LayShadow(QuadSink& sink) const {
  const double half = cube.GetHalfSize() + parameters.shadow_size;
  LayQuad(0, Vector3(0.0, GetGround(), 0.0), Vector3(half, 0.0, 0.0), Vector3(0.0, 0.0, half),
          Vector2(0.0, 0.0), Vector2(1.0, 1.0), sink);
}

void CubeQuads::LayRing(QuadSink& sink) const {
  const double half = cube.GetHalfSize() + parameters.compass_size;
  const Vector3 centre = space.FromGround(Vector3(0.0, GetGround() - RING_BELOW_SHADOW, 0.0));
  const Vector3 a = space.FromGround(Vector3(half, 0.0, 0.0));
  const Vector3 b = space.FromGround(Vector3(0.0, 0.0, half));
  LayQuad(0, centre, a, b, Vector2(0.0, 0.0), Vector2(1.0, 1.0), sink);
  LayQuad(0, centre, -a, b, Vector2(0.0, 0.0), Vector2(1.0, 1.0), sink);
}

double CubeQuads::GetCompassHalfSize(int part) {
  return part >= COMPASS_RING_FROM ? RING_PART_HALF_SIZE : LETTER_HALF_SIZE;
}

Vector3 CubeQuads::GetGroundPlace(int part) const {
  Vector3 direction = GetPartDirection(part);
  if (part >= COMPASS_RING_FROM) direction *= parameters.compass_select_radius;
  const double angle = (parameters.compass_angle + COMPASS_TURN) * Math::DEG_TO_RAD;
  const Quaternion turn = Quaternion::AxisAngle(Vector3(0.0, 1.0, 0.0), angle);
  Vector3 centre =
      turn.Rotate(direction) * (cube.GetHalfSize() + parameters.compass_offset + GetCompassHalfSize(part));
  centre.y -= cube.GetHalfSize() + parameters.shadow_offset;
  return centre;
}

Vector3 CubeQuads::GetCompassPlace(int part) const { return space.FromGround(GetGroundPlace(part)); }

void CubeQuads::LayCompassPart(int part, QuadSink& sink) const {
  const double angle = (parameters.compass_angle + COMPASS_TURN) * Math::DEG_TO_RAD;
  const Quaternion turn = Quaternion::AxisAngle(Vector3(0.0, 1.0, 0.0), angle);
  const double half = GetCompassHalfSize(part);
  const Vector3 ground = GetGroundPlace(part);
  const Vector3 centre = space.FromGround(ground);
  const Vector3 below = space.FromGround(ground - Vector3(0.0, LETTER_BACK_BELOW, 0.0));
  const Vector3 a = space.FromGround(turn.Rotate(Vector3(1.0, 0.0, 0.0)) * half);
  const Vector3 b = space.FromGround(turn.Rotate(Vector3(0.0, 0.0, 1.0)) * half);
  // The letters stand one above the other in their texture. They read from both sides.
  const Vector2 low(0.0, (29 - part) / 4.0);
  const Vector2 high(1.0, (30 - part) / 4.0);
  LayQuad(part, centre, a, b, low, high, sink);
  LayQuad(part, below, a, -b, low, high, sink);
}

// About `centre`, with the half axes `a` and `b`.
void CubeQuads::LayQuad(int id, const Vector3& centre, const Vector3& a, const Vector3& b,
                        const Vector2& texCorner1, const Vector2& texCorner2, QuadSink& sink) const {
  const Vector3 corners[4] = {centre - a - b, centre + a - b, centre + a + b, centre - a + b};
  const Vector2 texture[4] = {
      texCorner1, {texCorner2.x, texCorner1.y}, texCorner2, {texCorner1.x, texCorner2.y}};
  float vertices[12];
  float texCoords[8];
  for (std::size_t i = 0; i < 4; ++i) {
    corners[i].ToArray(vertices + 3 * i);
    texture[i].ToArray(texCoords + 2 * i);
  }
  sink.Take(id, 4, vertices, texCoords);
}

// Sums of absolute lengths: a bound, whatever the settings are.
double CubeQuads::GetReach() const {
  static constexpr double DIAGONAL = 1.7320508075688774;  // of a cube of size 1
  static constexpr double OUTLINE = 3.0;                  // edges by which a part on the outline reaches back
  const auto length = [](float value) { return std::abs(static_cast<double>(value)); };
  const double half = std::abs(cube.face) + std::abs(cube.edge) + std::abs(cube.gap);
  const double parts = DIAGONAL * (half + OUTLINE * std::abs(cube.edge));
  const double arrows = half + (ARROW_PICK_LENGTH + ARROW_PICK_HALF_WIDTH) * length(parameters.arrow_size) +
                        length(parameters.arrow_offset);
  if (!parameters.draw_compass) return std::max(parts, arrows);
  const double out = std::max(1.0, length(parameters.compass_select_radius)) *
                     (half + length(parameters.compass_offset) + LETTER_HALF_SIZE);
  const double down = half + length(parameters.shadow_offset) + LETTER_BACK_BELOW;
  return std::max({parts, arrows, out + down + 2.0 * LETTER_HALF_SIZE});
}

}  // namespace Korvane
