#include "scene/scene_depths.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>

#include "scene/ground_place.h"
#include "zovhost/scene.h"

namespace zovhost {

using Korvane::CameraParameters;
using Korvane::Vector3;
using Box = SceneDepths::Box;

namespace {

constexpr std::size_t MOST_BOXES = 1000;  // more are joined: each is looked at in each frame
constexpr double CELLS = 8.0;             // along the longest side of the scene
constexpr double SLACK = 1e-3;            // for what rounding takes away
// What marks the pivot or the centre stands in the scene too. Distances from the eye to the centre.
constexpr double AROUND_MARKS = 0.5;

Box GetBox(const ScenePart& part) {
  const Vector3& half = part.bounds.GetExtent();
  return {part.bounds.GetCenter() - half, part.bounds.GetCenter() + half};
}

Box Join(Box box, const Box& other) {
  for (int axis = 0; axis < 3; ++axis) {
    box.low[axis] = std::min(box.low[axis], other.low[axis]);
    box.high[axis] = std::max(box.high[axis], other.high[axis]);
  }
  return box;
}

// Those of neighbours joined to one.
std::vector<Box> JoinByCell(const Scene& scene) {
  const Vector3 size = scene.GetMax() - scene.GetMin();
  const double side = std::max({size.x, size.y, size.z}) / CELLS;
  std::map<std::array<int, 3>, Box> cells;
  for (const ScenePart& part : scene.GetParts()) {
    const Vector3 place = (part.bounds.GetCenter() - scene.GetMin()) / side;
    const std::array<int, 3> cell = {static_cast<int>(place.x), static_cast<int>(place.y),
                                     static_cast<int>(place.z)};
    const auto [found, isNew] = cells.try_emplace(cell, GetBox(part));
    if (!isNew) found->second = Join(found->second, GetBox(part));
  }
  std::vector<Box> boxes;
  boxes.reserve(cells.size());
  for (const auto& [cell, box] : cells) boxes.push_back(box);
  return boxes;
}

Box FindGroundBox(const Scene& scene) {
  const GroundPlace ground = FindGroundPlace(scene);
  Box box = {ground.origin, ground.origin};
  for (const Vector3& side : {ground.sideU, ground.sideV, ground.sideU + ground.sideV})
    box = Join(box, {ground.origin + side, ground.origin + side});
  return box;
}

// The pyramid of what a view in perspective shows, without an end; all in its own axes: to the right, up,
// along the view.
class ViewPyramid {
 public:
  explicit ViewPyramid(const Projection& shown) : frame(shown.GetFrame()) {
    const Matrix4& p = shown.GetProjection();
    const auto row = [&p](std::size_t r) { return Plane{{p[r], p[4 + r], -p[8 + r]}, p[12 + r]}; };
    const Plane w = row(3);
    for (std::size_t side = 0; side < 4; ++side) {
      const Plane axis = row(side / 2);
      const double sign = side % 2 == 0 ? 1.0 : -1.0;
      sides[side] = {w.normal + axis.normal * sign, w.offset + axis.offset * sign};
    }
    apex = {0.0, 0.0, -w.offset / w.normal.z};
  }

  // The least depth of what it holds of a box, as far as that is below `most`; else `most`.
  double FindNearest(const Box& box, double most) const {
    std::array<Vector3, 8> corners;
    for (std::size_t i = 0; i < 8; ++i) corners[i] = Turn(CornerOf(box, i) - frame.eye);
    const auto byDepth = [](const Vector3& a, const Vector3& b) { return a.z < b.z; };
    if (std::min_element(corners.begin(), corners.end(), byDepth)->z >= most) return most;
    const auto passes = [&corners](const Plane& side) {
      return std::all_of(corners.begin(), corners.end(),
                         [&](const Vector3& c) { return side.Measure(c) < 0.0; });
    };
    if (std::any_of(sides.begin(), sides.end(), passes)) return most;
    if (Holds(box, TurnBack(apex) + frame.eye)) return apex.z;
    constexpr std::size_t FACES[6][4] = {{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                         {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 3, 7, 5}};
    for (const auto& face : FACES) {
      Polygon seen;
      for (const std::size_t corner : face) seen.Add(corners[corner]);
      Cut(seen);
      for (std::size_t i = 0; i < seen.count; ++i) most = std::min(most, seen.corners[i].z);
    }
    return most;
  }

 private:
  struct Plane {
    Vector3 normal;
    double offset = 0.0;
    double Measure(const Vector3& point) const { return normal.Dot(point) + offset; }
  };

  // A face of a box: each side that cuts it gives it one corner more. In a frame no memory is asked for.
  struct Polygon {
    std::array<Vector3, 8> corners;
    std::size_t count = 0;
    void Add(const Vector3& corner) {
      if (count < corners.size()) corners[count++] = corner;
    }
  };

  static Vector3 CornerOf(const Box& box, std::size_t number) {
    return {(number & 1) != 0 ? box.high.x : box.low.x, (number & 2) != 0 ? box.high.y : box.low.y,
            (number & 4) != 0 ? box.high.z : box.low.z};
  }
  static bool Holds(const Box& box, const Vector3& point) {
    const auto within = [&](int axis) {
      return point[axis] >= box.low[axis] && point[axis] <= box.high[axis];
    };
    return within(0) && within(1) && within(2);
  }

  Vector3 Turn(const Vector3& offset) const {
    return {offset.Dot(frame.right), offset.Dot(frame.up), offset.Dot(frame.forward)};
  }
  Vector3 TurnBack(const Vector3& own) const {
    return frame.right * own.x + frame.up * own.y + frame.forward * own.z;
  }

  // Leaves of a polygon what all sides leave of it.
  void Cut(Polygon& polygon) const {
    for (const Plane& side : sides) {
      Polygon left;
      for (std::size_t i = 0; i < polygon.count; ++i) {
        const Vector3& from = polygon.corners[i];
        const Vector3& to = polygon.corners[(i + 1) % polygon.count];
        const double a = side.Measure(from);
        const double b = side.Measure(to);
        if (a >= 0.0) left.Add(from);
        if ((a >= 0.0) != (b >= 0.0)) left.Add(from + (to - from) * (a / (a - b)));
      }
      polygon = left;
    }
  }

  const CameraFrame frame;
  std::array<Plane, 4> sides;
  Vector3 apex;
};

}  // namespace

SceneDepths::SceneDepths(const Scene& scene) : sphere{scene.GetCentre(), scene.GetRadius()} {
  if (scene.GetParts().size() > MOST_BOXES) {
    boxes = JoinByCell(scene);
  } else {
    for (const ScenePart& part : scene.GetParts()) boxes.push_back(GetBox(part));
  }
  boxes.push_back(FindGroundBox(scene));
}

Projection SceneDepths::MakeProjection(const CameraParameters& camera) const {
  Projection usual(camera, sphere);
  const bool orthographic = usual.GetProjection()[11] == 0.0;
  if (boxes.empty() || orthographic) return usual;
  const CameraFrame& frame = usual.GetFrame();
  const double pivot = (camera.pivot - frame.eye).Dot(frame.forward);
  double nearest = AROUND_MARKS * frame.distance;
  if (pivot > 0.0) nearest = std::min(nearest, AROUND_MARKS * pivot);
  const ViewPyramid pyramid(usual);
  for (const Box& box : boxes) {
    nearest = pyramid.FindNearest(box, nearest);
    if (!(nearest > usual.GetNear())) return usual;
  }
  nearest -= SLACK * (nearest - usual.GetNear());
  const bool fits = nearest > usual.GetNear() && nearest < usual.GetFar();
  return fits ? Projection(camera, nearest, usual.GetFar()) : usual;
}

}  // namespace zovhost
