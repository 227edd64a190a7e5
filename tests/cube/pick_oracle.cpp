#include "cube/pick_oracle.h"

#include <cmath>

using namespace Korvane;

namespace {

using Quad = PickOracle::Quad;

// The distance along the ray at which it meets the quad; below 0 for a miss.
double Meet(const Vector3& origin, const Vector3& direction, const Quad& quad) {
  const Vector3 normal = (quad.corners[2] - quad.corners[0]).Cross(quad.corners[3] - quad.corners[1]);
  const double approach = direction.Dot(normal);
  if (std::abs(approach) < 1e-14) return -1.0;
  const double distance = (quad.corners[0] - origin).Dot(normal) / approach;
  const Vector3 point = origin + direction * distance;
  bool left = false;
  bool right = false;
  for (int i = 0; i < 4; ++i) {
    const Vector3 side = quad.corners[(i + 1) % 4] - quad.corners[i];
    const double turn = side.Cross(point - quad.corners[i]).Dot(normal);
    left = left || turn > 0.0;
    right = right || turn < 0.0;
  }
  return left && right ? -1.0 : distance;
}

// Whether the ray all but meets the line through two points.
bool Touches(const Vector3& origin, const Vector3& direction, const Vector3& from, const Vector3& to) {
  const double tolerance = 1e-6;  // floats of size 0.3 are within 3e-8, and the cube is 0.2 wide
  const Vector3 across = direction.Cross(to - from);
  if (across.Length() < 1e-12) return false;
  return std::abs((from - origin).Dot(across.Normalized())) < tolerance;
}

int Nearest(const Vector3& origin, const Vector3& direction, const std::vector<Quad>& quads) {
  int id = -1;
  double nearest = 1e300;
  for (const Quad& quad : quads) {
    const double distance = Meet(origin, direction, quad);
    if (distance <= 0.0 || distance >= nearest) continue;
    nearest = distance;
    id = quad.id;
  }
  return id;
}

void Append(std::vector<Quad>& all, const std::vector<Quad>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

Quad About(const Vector3& centre, const Vector3& a, const Vector3& b, int id) {
  return {{centre - a - b, centre + a - b, centre + a + b, centre - a + b}, id};
}

bool IsAlongAxis(const Vector3& v) {
  const double largest = std::max(std::abs(v.x), std::max(std::abs(v.y), std::abs(v.z)));
  return largest > 1.0 - 1e-7 && std::abs(v.x) + std::abs(v.y) + std::abs(v.z) < 1.0 + 2e-7;
}

std::vector<Vector3> AllDirections() {
  std::vector<Vector3> all;
  for (int axis = 0; axis < 3; ++axis) {
    for (int end = -1; end <= 1; end += 2) {
      Vector3 v;
      v[axis] = end;
      all.push_back(v);
    }
  }
  for (int axis = 0; axis < 3; ++axis) {
    for (int first = -1; first <= 1; first += 2) {
      for (int second = -1; second <= 1; second += 2) {
        Vector3 v;
        v[axis] = first;
        v[(axis + 1) % 3] = second;
        all.push_back(v);
      }
    }
  }
  for (int x = -1; x <= 1; x += 2) {
    for (int y = -1; y <= 1; y += 2) {
      for (int z = -1; z <= 1; z += 2) all.emplace_back(x, y, z);
    }
  }
  for (const Vector3& letter : {Vector3(1, 0, 0), Vector3(-1, 0, 0), Vector3(0, 0, 1), Vector3(0, 0, -1)}) {
    all.push_back(letter);
  }
  // Quarters of the ring: from the angle whose tangent is a third to that whose tangent is three.
  const double ratios[7] = {1.0 / 3.0, 1.0 / 2.0, 2.0 / 3.0, 1.0, 3.0 / 2.0, 2.0, 3.0};
  for (int quarter = 0; quarter < 4; ++quarter) {
    for (const double ratio : ratios) {
      const double angle = std::atan(ratio) + quarter * 3.141592653589793 / 2.0;  // from -z toward +x
      all.emplace_back(std::sin(angle), 0.0, -std::cos(angle));
    }
  }
  return all;
}

}  // namespace

Vector3 PickOracle::DirectionOf(int part) {
  static const std::vector<Vector3> all = AllDirections();
  return all.at(static_cast<std::size_t>(part));
}

PickOracle::PickOracle(const Setup& values)
    : setup(values),
      face(values.parameters.face_size),
      edge(values.parameters.edge_size),
      gap(values.parameters.gap_size),
      half(face + edge + gap) {
  const OrientorParameters& p = setup.parameters;
  const double pass =
      p.draw_compass ? std::floor(setup.screenSize * double{p.view_scale_compass} + 1e-6) : setup.screenSize;
  halfPass = pass / 2.0;
  // The view offset of 5 percent toward the corner: from the corner inward the pass spans -0.05 to 0.95.
  const double nearX = p.view_offset_x * pass;
  const double nearY = p.view_offset_y * pass;
  const bool rightSide = p.screen_location == 0 || p.screen_location == 1;
  const bool topSide = p.screen_location == 0 || p.screen_location == 2;
  const double lowX = rightSide ? setup.viewportWidth - nearX - pass : nearX;
  const double lowY = topSide ? setup.viewportHeight - nearY - pass : nearY;
  // The low corner is cut to whole pixels; floats blur it, so what is a whole pixel stays one.
  const auto cut = [](double v) {
    return std::abs(v - std::round(v)) < 1e-3 ? std::round(v) : std::trunc(v);
  };
  centre = Vector2(cut(lowX + p.screen_offset_x) + halfPass, cut(lowY + p.screen_offset_y) + halfPass);

  const double distance = p.draw_compass ? double{p.view_scale} * p.view_scale_compass : double{p.view_scale};
  forward = setup.view;
  eye = forward * -distance;
  right = forward.Cross(setup.up).Normalize();
  upward = right.Cross(forward);
  tangent = std::tan(p.view_fov * 3.141592653589793 / 180.0);
  for (int part = 0; part < 58; ++part) {
    Append(part < 26 ? parts : part < 30 ? letters : ring, part < 26 ? GetPart(part) : GetCompassPart(part));
  }
}

Vector3 PickOracle::RayOf(const Vector2& pixel) const {
  const double x = (pixel.x - centre.x) / halfPass;
  const double y = (pixel.y - centre.y) / halfPass;
  return (forward + right * (tangent * x) + upward * (tangent * y)).Normalize();
}

Vector2 PickOracle::Project(const Vector3& point) const {
  const Vector3 v = point - eye;
  const double depth = v.Dot(forward) * tangent;
  return {centre.x + halfPass * v.Dot(right) / depth, centre.y + halfPass * v.Dot(upward) / depth};
}

std::vector<Quad> PickOracle::GetPart(int part) const {
  const Vector3 direction = DirectionOf(part);
  double low[3];
  double high[3];
  for (int axis = 0; axis < 3; ++axis) {
    const double component = direction[axis];
    if (component == 0.0) {
      low[axis] = -(face - gap);
      high[axis] = face - gap;
      continue;
    }
    // Away from the eye on this axis and toward it on another: on the outline.
    bool onOutline = false;
    const double facing = component * setup.view[axis];
    for (int other = 0; other < 3; ++other) {
      if (facing > 0.0 && direction[other] * setup.view[other] < 0.0) onOutline = true;
    }
    const double reach = face + edge + (onOutline ? 3.0 * edge * std::abs(facing) : 0.0);
    low[axis] = component > 0.0 ? face : -reach;
    high[axis] = component > 0.0 ? reach : -face;
  }
  std::vector<Quad> quads;
  for (int axis = 0; axis < 3; ++axis) {
    const int b = (axis + 1) % 3;
    const int c = (axis + 2) % 3;
    for (const double at : {low[axis], high[axis]}) {
      if (std::abs(at) < face + edge - 1e-9) continue;
      Vector3 corner;
      corner[axis] = at;
      Quad quad;
      quad.id = part;
      const double bs[4] = {low[b], high[b], high[b], low[b]};
      const double cs[4] = {low[c], low[c], high[c], high[c]};
      for (int i = 0; i < 4; ++i) {
        corner[b] = bs[i];
        corner[c] = cs[i];
        quad.corners[i] = corner;
      }
      quads.push_back(quad);
    }
  }
  return quads;
}

std::vector<Quad> PickOracle::GetArrow(int faceIndex) const {
  if (!setup.mouseInRegion || faceIndex >= 6 || !IsAlongAxis(setup.view)) return {};
  const Vector3 outward = DirectionOf(faceIndex);
  if (std::abs(outward.Dot(setup.view)) > 0.5) return {};
  const double size = setup.parameters.arrow_size;
  const Vector3 aside = outward.Cross(setup.view) * (2.0 * size);
  const Vector3 near = outward * half;
  const Vector3 far = outward * (half + 2.5 * size + setup.parameters.arrow_offset);
  return {{{near - aside, near + aside, far + aside, far - aside}, faceIndex}};
}

Vector3 PickOracle::TurnedToWorld(const Vector3& v) const {
  if (setup.sceneIsWorld) return v;
  const Vector3 side = setup.worldFront.Cross(setup.worldUp);
  return setup.worldFront * v.x + setup.worldUp * v.y + side * v.z;
}

std::vector<Quad> PickOracle::GetCompassPart(int part) const {
  const OrientorParameters& p = setup.parameters;
  const bool letter = part < 30;
  const double halfSize = letter ? 0.05 : 0.0325;
  const double radius =
      (half + p.compass_offset + halfSize) * (letter ? 1.0 : double{p.compass_select_radius});
  const double angle = (p.compass_angle + 90.0) * 3.141592653589793 / 180.0;
  // From -z toward +x, as the ring is numbered.
  const auto turn = [&](const Vector3& v) {
    return Vector3(v.x * std::cos(angle) - v.z * std::sin(angle), 0.0,
                   v.x * std::sin(angle) + v.z * std::cos(angle));
  };
  const Vector3 ground(0.0, -(half + p.shadow_offset), 0.0);
  const Vector3 middle = turn(DirectionOf(part)) * radius + ground;
  const Vector3 a = turn(Vector3(halfSize, 0, 0));
  const Vector3 b = turn(Vector3(0, 0, halfSize));
  const int id = letter ? part : 30;
  return {About(TurnedToWorld(middle), TurnedToWorld(a), TurnedToWorld(b), id),
          About(TurnedToWorld(middle - Vector3(0, 0.001, 0)), TurnedToWorld(a), TurnedToWorld(-b), id)};
}

int PickOracle::PickGeometry(const Vector2& pixel) const {
  const Vector3 ray = RayOf(pixel);
  std::vector<Quad> arrows;
  for (int part = 0; part < 6; ++part) Append(arrows, GetArrow(part));

  std::vector<Quad> faces(parts.begin(), parts.begin() + 6);
  Append(faces, arrows);
  const int faceHit = Nearest(eye, ray, faces);
  if (faceHit >= 0 && !GetArrow(faceHit).empty()) return faceHit;

  const bool compass = setup.parameters.draw_compass && !setup.mouseOnOverlay;
  const int letterHit = compass ? Nearest(eye, ray, letters) : -1;
  if (setup.cameraLooksUp && letterHit >= 0) return letterHit;

  std::vector<Quad> solid = parts;
  Append(solid, arrows);
  const int partHit = Nearest(eye, ray, solid);
  if (partHit >= 0 && (partHit < 6 || !setup.parameters.select_faces_only)) return partHit;
  if (letterHit >= 0) return letterHit;
  return compass ? Nearest(eye, ray, ring) : -1;
}

bool PickOracle::IsOnEdge(const Vector2& pixel) const {
  const Vector3 ray = RayOf(pixel);
  for (const std::vector<Quad>* const quads : {&parts, &letters, &ring}) {
    for (const Quad& quad : *quads) {
      bool touches = Touches(eye, ray, quad.corners[0], quad.corners[2]) ||
                     Touches(eye, ray, quad.corners[1], quad.corners[3]);
      for (int i = 0; i < 4; ++i) {
        touches = touches || Touches(eye, ray, quad.corners[i], quad.corners[(i + 1) % 4]);
      }
      if (touches) return true;
    }
  }
  return false;
}

Vector2 PickOracle::OverlayPosition(double x, double y) const {
  const OrientorParameters& p = setup.parameters;
  const bool rightSide = p.screen_location == 0 || p.screen_location == 1;
  const bool topSide = p.screen_location == 0 || p.screen_location == 2;
  const double offX = x * setup.screenSize;
  const double offY = y * setup.screenSize;
  return {p.screen_offset_x + (rightSide ? setup.viewportWidth - offX : offX),
          p.screen_offset_y + (topSide ? setup.viewportHeight - offY : offY)};
}

std::vector<Quad> PickOracle::GetOverlay() const {
  const OrientorParameters& p = setup.parameters;
  std::vector<Quad> quads;
  const auto at = [](const Vector2& v) { return Vector3(v.x, v.y, 0.0); };
  const auto square = [&](double x, double y, double size, int id) {
    const double halfSize = setup.screenSize * size / 2.0;
    quads.push_back(About(at(OverlayPosition(x, y)), Vector3(halfSize, 0, 0), Vector3(0, halfSize, 0), id));
  };
  if (p.draw_overlay && setup.overlayShown) {
    if (setup.arrowsVisible) {
      // Two triangles on either side of the diagonal from the corner; as quads with a corner twice.
      const double k = p.overlay_arrow_size;
      const Vector3 corner = at(OverlayPosition(0, 0));
      const Vector3 middle = at(OverlayPosition(k / 2, k / 2));
      quads.push_back({{corner, middle, at(OverlayPosition(k, 0)), corner}, 0});
      quads.push_back({{corner, at(OverlayPosition(0, k)), middle, corner}, 1});
    }
    const bool locked = setup.lockedToSelection;
    const double homeX = p.draw_compass ? (locked ? 1.34 : 1.2) : (locked ? 0.91 : 0.77);
    if (p.draw_home_button) square(homeX, 0.125, p.overlay_home_size, 2);
    if (locked) square(p.draw_compass ? 1.2 : 0.77, 0.125, p.overlay_lock_size, 3);
    square(0.125, p.draw_compass ? 1.2 : 0.77, 2.0 * p.overlay_context_size, 4);
  }
  if (p.draw_ucs_menu && setup.labelWidth > 0.0) {
    const bool bottom = p.screen_location == 1 || p.screen_location == 3;
    const double y = (p.draw_compass ? 1.4 : 0.86) * (bottom ? 0.925 : 1.0);
    Vector2 middle = OverlayPosition(p.draw_compass ? 0.675 : 0.45, y);
    middle.y += (bottom ? 0.5 : -0.5) * setup.labelHeight;
    quads.push_back(
        About(at(middle), Vector3(setup.labelWidth / 2.0, 0, 0), Vector3(0, setup.labelHeight / 2.0, 0), 5));
  }
  return quads;
}

int PickOracle::PickOverlay(const Vector2& pixel) const {
  return Nearest(Vector3(pixel.x, pixel.y, -1.0), Vector3(0, 0, 1), GetOverlay());
}
