#include "shots/view_align_shot.h"

#include <array>
#include <vector>

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

using Params = ViewAlignShotParameters;
using BoundGeometryType = ApplicationParameters::BoundGeometryType;
constexpr double TOLERANCE = 0x1p-23;

// A standard view by the signs of its components along front, up and side.
using View26 = std::array<int, 3>;

std::vector<View26> AllViews() {
  std::vector<View26> views;
  for (int a = -1; a <= 1; ++a) {
    for (int b = -1; b <= 1; ++b) {
      for (int c = -1; c <= 1; ++c) {
        if (a != 0 || b != 0 || c != 0) views.push_back({a, b, c});
      }
    }
  }
  return views;
}

Params Record(const View26& view, bool keepSceneUp = false, bool fit = false) {
  Params record;
  record.duration = 2.0;
  record.keepSceneUp = keepSceneUp;
  record.fit = fit;
  for (int axis = 0; axis < 3; ++axis) {
    record.directionFlags[2 * axis] = view[static_cast<std::size_t>(axis)] > 0;
    record.directionFlags[2 * axis + 1] = view[static_cast<std::size_t>(axis)] < 0;
  }
  return record;
}

Params Flags(std::initializer_list<Params::CameraDirection> directions) {
  Params record;
  record.duration = 2.0;
  for (const auto direction : directions) record.directionFlags[direction] = true;
  return record;
}

struct SceneAxes {
  Vec front;
  Vec up;
  Vec side;

  SceneAxes(const Vec& frontValue, const Vec& upValue)
      : front(frontValue.normalized()), up(upValue.normalized()), side(front.cross(up).normalized()) {}
  explicit SceneAxes(const Axes& axes) : SceneAxes(From(axes.front), From(axes.up)) {}

  Vec Compose(const Vec& v) const { return front * v.x() + up * v.y() + side * v.z(); }
  Vec Compose(const View26& v) const { return Compose(Vec(v[0], v[1], v[2])); }
};

const SceneAxes USUAL_AXES{Vec::UnitX(), Vec::UnitY()};

void SetScene(MemoryHub& hub, const SceneAxes& axes) {
  hub.GetApplicationParameters().scene_front_direction = To(axes.front);
  hub.GetApplicationParameters().scene_up_direction = To(axes.up);
}

Vec Nearest(const std::vector<Vec>& candidates, const Vec& wanted) {
  Vec nearest = candidates.front();
  for (const Vec& each : candidates) {
    if (each.dot(wanted) > nearest.dot(wanted)) nearest = each;
  }
  return nearest;
}

// Carries `from` onto `to` about their common normal; opposite ones by half a turn about an axis that is
// found by the larger of the first two components.
Eigen::Matrix3d Carry(const Vec& from, const Vec& to) {
  if ((from + to).norm() > 1e-9) return Eigen::Quaterniond::FromTwoVectors(from, to).toRotationMatrix();
  const Vec axis =
      std::abs(from.x()) >= std::abs(from.y()) ? Vec(-from.z(), 0, from.x()) : Vec(0, from.z(), -from.y());
  return oracle::RightHanded(axis.normalized(), oracle::PI);
}

// The up of the end view, retold.
Vec ChosenUp(const CameraParameters& start, const Params& record, const SceneAxes& scene,
             const Vec& towardsEye) {
  SceneAxes axes = record.useCustom ? SceneAxes(From(record.customFront), From(record.customUp)) : scene;
  const Vec forward = oracle::Forward(start);
  const Vec startUp = From(start.up);
  if (!record.keepSceneUp) {
    const std::vector<Vec> six = {axes.front, -axes.front, axes.side, -axes.side, axes.up, -axes.up};
    const Eigen::Matrix3d carry = Carry(axes.up, Nearest(six, startUp - forward * TOLERANCE));
    axes.front = carry * axes.front;
    axes.side = carry * axes.side;
    axes.up = carry * axes.up;
  }
  const Vec d = towardsEye.normalized();
  const double s = d.dot(axes.up);
  if (1.0 - std::abs(s) < TOLERANCE) {
    const double e = s > 0.0 ? 1.0 : -1.0;
    return e *
           Nearest({axes.front, -axes.front, axes.side, -axes.side}, (forward + e * startUp).normalized());
  }
  if (!record.useCustom && std::abs(1.0 + forward.dot(d)) < TOLERANCE) {
    for (const Vec& axis : {axes.front, axes.up, axes.side}) {
      if (1.0 - std::abs(axis.dot(startUp)) < TOLERANCE) return startUp;
    }
  }
  return axes.up;
}

Vec Perpendicular(const Vec& up, const Vec& forward) {
  return Vec(up - forward * forward.dot(up)).normalized();
}

// The whole move without a fit: the frame turns from the start's to the target's about one axis, and the
// pivot keeps its direction in that frame.
CameraParameters ExpectedWithoutFit(const CameraParameters& start, const Params& record,
                                    const Vec& towardsEye, const Vec& chosenUp, double t) {
  const Vec forward = -towardsEye.normalized();
  const Vec up = Perpendicular(chosenUp, forward);
  Eigen::Matrix3d target;
  target << forward, up, forward.cross(up);
  // The roll is applied negated, right-handed then about the view; the pan turns left-handed about the up.
  const Eigen::Matrix3d rolled = oracle::RightHanded(forward, record.rollAngle * oracle::PI / 180.0) * target;
  const Eigen::Matrix3d end = oracle::RightHanded(up, -record.panAngle * oracle::PI / 180.0) * rolled;

  const Eigen::Matrix3d begin = oracle::Frame(start);
  const Eigen::AngleAxisd whole(Eigen::Matrix3d(end * begin.transpose()));
  const Eigen::Matrix3d turn = oracle::RightHanded(whole.axis(), whole.angle() * t);
  const Vec toPivot = From(start.pivot) - From(start.eye);

  CameraParameters camera = start;
  camera.eye = To(From(start.pivot) - turn * toPivot);
  camera.centre = To(From(camera.eye) + turn * begin.col(0) * toPivot.norm());
  camera.up = To(turn * begin.col(1));
  return camera;
}

// Cameras of every sort: anywhere, rolled onto each axis of the scene and between them, upside down, along
// an axis, in each of the 26 views.
std::vector<CameraParameters> StartCameras(Random& random, const SceneAxes& scene) {
  std::vector<CameraParameters> cameras;
  const auto add = [&](const Vec& forward, const Vec& up) {
    const Vector3 eye = random.Point(20);
    CameraParameters camera = LookAt(eye, eye + To(forward * random.Uniform(2, 30)), To(up));
    camera.pivot = random.Coin() ? camera.centre : random.Point(20);
    cameras.push_back(camera);
  };
  for (int i = 0; i < 60; ++i) cameras.push_back(RandomCamera(random, Frustum::Asymmetric));
  for (int i = 0; i < 40; ++i) {
    const Vec forward = From(random.Direction());
    add(forward, Perpendicular(i % 2 == 0 ? Vec(-scene.up) : scene.up, forward));
  }
  for (const View26& view : AllViews()) {
    const Vec forward = scene.Compose(view).normalized();
    const Vec first = Perpendicular(std::abs(forward.dot(scene.up)) > 0.9 ? scene.front : scene.up, forward);
    for (const double roll : {0.0, 30.0, 90.0, 180.0, 270.0}) {
      add(forward, oracle::TurnByDegrees(forward, roll, first));
    }
  }
  return cameras;
}

std::vector<Vec> SignedAxes(const SceneAxes& axes) {
  return {axes.front, -axes.front, axes.up, -axes.up, axes.side, -axes.side};
}

bool IsPerpendicularisedAxis(const Vec& up, const Vec& forward, const std::vector<Vec>& axes) {
  for (const Vec& axis : axes) {
    if (std::abs(axis.dot(forward)) < 1.0 - 1e-9 && (Perpendicular(axis, forward) - up).norm() < 1e-6) {
      return true;
    }
  }
  return false;
}

// Frames whose axes are those of space, so that half a turn maps axes onto axes, and leaning ones.
std::vector<SceneAxes> Scenes(Random& random) {
  return {USUAL_AXES, SceneAxes(Vec::UnitX(), Vec::UnitZ()), SceneAxes(-Vec::UnitZ(), Vec::UnitX()),
          SceneAxes(RandomAxes(random))};
}

}  // namespace

TEST(ViewAlignShot, directions_have_their_numbers) {
  EXPECT_EQ(Params::CAMERA_FRONT, 0);
  EXPECT_EQ(Params::CAMERA_BACK, 1);
  EXPECT_EQ(Params::CAMERA_TOP, 2);
  EXPECT_EQ(Params::CAMERA_BOTTOM, 3);
  EXPECT_EQ(Params::CAMERA_SIDE, 4);
  EXPECT_EQ(Params::CAMERA_OPPOSITE_SIDE, 5);
}

TEST(ViewAlignShot, each_flag_brings_the_eye_to_its_side_of_the_target) {
  // Front is x, up is y, side is x cross y.
  const Vec sides[] = {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}};
  MemoryHub hub(LookAt({3, 4, 12}, {0, 0, 0}, {0, 1, 0}));
  for (int flag = 0; flag < 6; ++flag) {
    Params record;
    record.directionFlags[flag] = true;
    record.duration = 2.0;
    const Step step = StepAt(hub, record, 1.0);
    EXPECT_FALSE(step.goesOn);
    EXPECT_TRUE(IsNear(step.camera.eye, 13 * sides[flag], 1e-12)) << flag;
    EXPECT_TRUE(IsNear(step.camera.centre, Vec(0, 0, 0), 1e-12)) << flag;
  }
}

TEST(ViewAlignShot, three_flags_at_once_are_a_corner_and_opposite_flags_cancel) {
  MemoryHub hub(LookAt({0, 0, 12}, {0, 0, 0}, {0, 1, 0}));
  const Vec corner = Vec(1, 1, -1).normalized() * 12;
  EXPECT_TRUE(
      IsNear(StepAt(hub, Flags({Params::CAMERA_FRONT, Params::CAMERA_TOP, Params::CAMERA_OPPOSITE_SIDE}), 1.0)
                 .camera.eye,
             corner, 1e-12));
  EXPECT_TRUE(IsNear(
      StepAt(hub, Flags({Params::CAMERA_FRONT, Params::CAMERA_BACK, Params::CAMERA_TOP}), 1.0).camera.eye,
      Vec(0, 12, 0), 1e-12));
}

TEST(ViewAlignShot, with_no_flags_the_chosen_up_stands_and_nothing_breaks) {
  for (const bool fit : {false, true}) {
    for (const auto geometry : {BoundGeometryType::Sphere, BoundGeometryType::Box}) {
      MemoryHub hub(WithPivot(LookAt({3, 4, 12}, {0, 0, 0}, {0, 1, 0}), {1, 1, 1}));
      hub.GetApplicationParameters().global_bound_geometry = geometry;
      Params record = Record({0, 0, 0}, false, fit);
      for (const double fraction : {0.0, 0.5, 1.0}) {
        const Step step = StepAt(hub, record, fraction);
        EXPECT_TRUE(step.camera.IsFinite());
        EXPECT_EQ(step.goesOn, fraction < 1.0);
      }
      if (fit) continue;
      // Without a direction the target's eye falls onto its centre; the distance stays that to the pivot.
      const CameraParameters end = StepAt(hub, record, 1.0).camera;
      EXPECT_TRUE(IsNear((end.pivot - end.eye).Length(), Vec(2, 3, 11).norm(), 1e-12));
    }
  }
}

TEST(ViewAlignShot, with_no_flags_a_fit_runs_with_a_zero_direction) {
  MemoryHub hub(LookAt({3, 4, 12}, {0, 0, 0}, {0, 1, 0}));
  ApplicationParameters& p = hub.GetApplicationParameters();
  p.global_bound_centre = {5, 6, 7};
  p.global_bound_radius = 2.0;
  const CameraParameters end = StepAt(hub, Record({0, 0, 0}, false, true), 1.0).camera;
  // Only the up has a length among the axes of the fit: the eye rises by the sphere's height above it.
  EXPECT_TRUE(IsNear(end.centre, Vec(3, 6, 12), 1e-12));
  EXPECT_TRUE(IsNear(end.pivot, Vec(3, 6, 12), 1e-12));
}

// ---- the up of the end view ----

TEST(ViewAlignShot, a_top_view_takes_the_horizontal_axis_nearest_to_the_sum_of_the_view_and_the_up) {
  struct Row {
    Vec forward;
    Vec up;
    Vec topUp;
    Vec bottomUp;
  };
  // Where the camera looks ahead is up in the picture from above, and down in the one from below.
  const Row rows[] = {
      {{-1, -0.2, 0}, {0, 1, 0}, {-1, 0, 0}, {1, 0, 0}},
      {{1, -0.2, 0.1}, {0, 1, 0}, {1, 0, 0}, {-1, 0, 0}},
      {{0.1, 0.2, -1}, {0, 1, 0}, {0, 0, -1}, {0, 0, 1}},
      {{0.1, 0.2, 1}, {0, 1, 0}, {0, 0, 1}, {0, 0, -1}},
      // Down the diagonal of the scene, a little nearer to one of the axes.
      {{-1, -1, -1.01}, {0, 1, 0}, {0, 0, -1}, {0, 0, 1}},
      {{-1.01, -1, -1}, {0, 1, 0}, {-1, 0, 0}, {1, 0, 0}},
      {{1.01, -1, -1}, {0, 1, 0}, {1, 0, 0}, {-1, 0, 0}},
  };
  for (const Row& row : rows) {
    MemoryHub hub(LookAt({0, 0, 0}, To(row.forward), To(row.up)));
    EXPECT_TRUE(IsNear(StepAt(hub, Flags({Params::CAMERA_TOP}), 1.0).camera.up, row.topUp, 1e-12))
        << row.forward.transpose();
    EXPECT_TRUE(IsNear(StepAt(hub, Flags({Params::CAMERA_BOTTOM}), 1.0).camera.up, row.bottomUp, 1e-12))
        << row.forward.transpose();
  }
}

TEST(ViewAlignShot, from_a_top_view_another_top_view_keeps_the_turn_of_the_screen) {
  for (const Vec& up : {Vec(1, 0, 0), Vec(-1, 0, 0), Vec(0, 0, 1), Vec(0, 0, -1)}) {
    MemoryHub hub(LookAt({0, 10, 0}, {0, 0, 0}, To(up)));
    // Kept upright by the scene the view runs along the up, and the sum is that of view and up.
    Params record = Flags({Params::CAMERA_TOP});
    record.keepSceneUp = true;
    EXPECT_TRUE(IsNear(StepAt(hub, record, 1.0).camera.up, up, 1e-12));
    // Otherwise the frame turns so that its up is the camera's: the view is held already.
    record.keepSceneUp = false;
    EXPECT_TRUE(IsNear(StepAt(hub, record, 1.0).camera.up, up, 1e-12));
  }
}

TEST(ViewAlignShot, a_tie_on_a_diagonal_goes_to_the_axis_that_the_view_comes_from) {
  // The up stands between two axes exactly; the view, tilted towards one of them, decides.
  const CameraParameters camera = LookAt({0, 0, 0}, {1, -1, 0}, {1, 1, 0});
  MemoryHub hub(camera);
  // Along the view the axes y and x differ in sign: +y lies against the view.
  const CameraParameters end = StepAt(hub, Flags({Params::CAMERA_SIDE}), 1.0).camera;
  EXPECT_TRUE(IsNear(end.up, Vec(0, 1, 0), 1e-12));
  hub.view = LookAt({0, 0, 0}, {-1, 1, 0}, {1, 1, 0});
  EXPECT_TRUE(IsNear(StepAt(hub, Flags({Params::CAMERA_SIDE}), 1.0).camera.up, Vec(1, 0, 0), 1e-12));
}

TEST(ViewAlignShot, of_axes_equally_near_to_the_up_the_first_of_their_order_is_taken) {
  struct Row {
    Vec forward;
    Vec up;
    Params::CameraDirection held;
    Vec chosen;
  };
  // Front is x, up is y, side is z; their order is front, -front, side, -side, up, -up. The view stands at a
  // right angle to both axes of a tie, so it cannot settle it.
  const Row rows[] = {
      {{0, 0, -1}, {1, 1, 0}, Params::CAMERA_SIDE, {1, 0, 0}},
      {{0, 0, -1}, {-1, 1, 0}, Params::CAMERA_SIDE, {-1, 0, 0}},
      {{0, 0, -1}, {1, -1, 0}, Params::CAMERA_SIDE, {1, 0, 0}},
      {{0, -1, 0}, {1, 0, 1}, Params::CAMERA_TOP, {1, 0, 0}},
      {{0, -1, 0}, {-1, 0, 1}, Params::CAMERA_TOP, {-1, 0, 0}},
      {{0, -1, 0}, {1, 0, -1}, Params::CAMERA_TOP, {1, 0, 0}},
      {{-1, 0, 0}, {0, 1, 1}, Params::CAMERA_FRONT, {0, 0, 1}},
      {{-1, 0, 0}, {0, 1, -1}, Params::CAMERA_FRONT, {0, 0, -1}},
      {{-1, 0, 0}, {0, -1, 1}, Params::CAMERA_FRONT, {0, 0, 1}},
  };
  for (const Row& row : rows) {
    MemoryHub hub(LookAt({0, 0, 0}, To(row.forward), To(row.up.normalized())));
    EXPECT_TRUE(IsNear(StepAt(hub, Flags({row.held}), 1.0).camera.up, row.chosen, 1e-12))
        << row.forward.transpose() << " up " << row.up.transpose();
  }
}

TEST(ViewAlignShot, a_top_view_from_exactly_the_diagonal_takes_the_first_axis_of_its_order) {
  struct Row {
    Vec forward;
    Vec topUp;
  };
  // front, -front, side, -side
  const Row rows[] = {{{-1, -1, -1}, {-1, 0, 0}},
                      {{-1, -1, 1}, {-1, 0, 0}},
                      {{1, -1, -1}, {1, 0, 0}},
                      {{1, -1, 1}, {1, 0, 0}}};
  for (const Row& row : rows) {
    MemoryHub hub(LookAt({0, 0, 0}, To(row.forward), {0, 1, 0}));
    EXPECT_TRUE(IsNear(StepAt(hub, Flags({Params::CAMERA_TOP}), 1.0).camera.up, row.topUp, 1e-12));
    EXPECT_TRUE(IsNear(StepAt(hub, Flags({Params::CAMERA_BOTTOM}), 1.0).camera.up, -row.topUp, 1e-12));
  }
}

TEST(ViewAlignShot, without_keep_scene_up_the_nearest_axis_of_the_scene_becomes_the_up) {
  // The front view, from cameras rolled near each axis across it.
  for (const Vec& axis : {Vec(0, 1, 0), Vec(0, -1, 0), Vec(0, 0, 1), Vec(0, 0, -1)}) {
    MemoryHub hub(LookAt({10, 1, 2}, {0, 0, 0}, To(axis + Vec(0.1, 0.3, 0.2))));
    EXPECT_TRUE(IsNear(StepAt(hub, Flags({Params::CAMERA_FRONT}), 1.0).camera.up, axis, 1e-12));
    Params kept = Flags({Params::CAMERA_FRONT});
    kept.keepSceneUp = true;
    EXPECT_TRUE(IsNear(StepAt(hub, kept, 1.0).camera.up, Vec(0, 1, 0), 1e-12));
  }
}

TEST(ViewAlignShot, the_same_view_held_with_an_up_along_an_axis_gives_a_target_equal_to_the_start) {
  for (const Vec& up : {Vec(0, 1, 0), Vec(0, -1, 0), Vec(0, 0, 1), Vec(0, 0, -1)}) {
    for (const bool keepSceneUp : {false, true}) {
      MemoryHub hub(LookAt({10, 0, 0}, {0, 0, 0}, To(up)));
      Params record = Flags({Params::CAMERA_FRONT});
      record.keepSceneUp = keepSceneUp;
      for (const double fraction : {0.0, 0.5, 1.0}) {
        EXPECT_TRUE(IsNear(StepAt(hub, record, fraction).camera, hub.view, 1e-13)) << up.transpose();
      }
    }
  }
}

TEST(ViewAlignShot, the_same_view_held_with_a_fit_only_moves) {
  MemoryHub hub(LookAt({10, 0, 0}, {0, 0, 0}, {0, 0, 1}));
  hub.GetApplicationParameters().global_bound_centre = {0, 3, 0};
  Params record = Flags({Params::CAMERA_FRONT});
  record.fit = true;
  record.keepSceneUp = true;
  const CameraParameters end = StepAt(hub, record, 1.0).camera;
  EXPECT_TRUE(IsNear(end.up, Vec(0, 0, 1), 1e-13));
  EXPECT_TRUE(IsNear(end.centre, Vec(0, 3, 0), 1e-13));
  EXPECT_TRUE(IsNear(end.eye, Vec(std::sqrt(2.0), 3, 0), 1e-13));  // the unit sphere in 45 degrees
}

TEST(ViewAlignShot, the_same_view_held_with_a_leaning_up_is_straightened) {
  MemoryHub hub(LookAt({10, 0, 0}, {0, 0, 0}, {0, 0.96, 0.28}));
  EXPECT_TRUE(IsNear(StepAt(hub, Flags({Params::CAMERA_FRONT}), 1.0).camera.up, Vec(0, 1, 0), 1e-13));
}

TEST(ViewAlignShot, with_custom_axes_a_held_roll_is_not_kept) {
  MemoryHub hub(LookAt({10, 0, 0}, {0, 0, 0}, {0, 0, 1}));
  Params record;
  record.duration = 2.0;
  record.useCustom = true;
  record.keepSceneUp = true;
  record.customDirection = {1, 0, 0};
  record.customUp = {0, 1, 0};
  record.customFront = {1, 0, 0};
  EXPECT_TRUE(IsNear(StepAt(hub, record, 1.0).camera.up, Vec(0, 1, 0), 1e-13));
}

TEST(ViewAlignShot, the_fit_of_a_box_squares_custom_vectors_and_replaces_an_up_along_the_view) {
  // From (1, 0, 0): of an up twice as long as it should be, of one that leans into the view, and of one along
  // it. For the last the empirical up is the first of a list that is perpendicular to the view.
  struct Row {
    Vector3 up;
    Vec wanted;
  };
  const Row rows[] = {{{0, 0, 2}, {0, 0, 1}}, {{0.6, 0, 0.8}, {0, 0, 1}}, {{3, 0, 0}, {0, 1, 0}}};
  for (const Row& row : rows) {
    MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    ApplicationParameters& p = hub.GetApplicationParameters();
    p.global_bound_geometry = BoundGeometryType::Box;
    p.global_bound_box = Box3({0, 0, 0}, {1, 1, 1});
    Params record;
    record.duration = 2.0;
    record.fit = true;
    record.useCustom = true;
    record.keepSceneUp = true;
    record.customDirection = {1, 0, 0};
    record.customUp = row.up;
    record.customFront = {0, 1, 0};
    const CameraParameters end = StepAt(hub, record, 1.0).camera;
    EXPECT_TRUE(IsNear(end.up, row.wanted, 1e-13));
    EXPECT_NEAR((oracle::Forward(end) - Vec(-1, 0, 0)).norm(), 0.0, 1e-13);
  }
}

TEST(ViewAlignShot, a_custom_direction_counts_in_the_axes_of_the_scene_and_the_up_in_its_own) {
  MemoryHub hub(LookAt({10, 0, 0}, {0, 0, 0}, {0, 1, 0}));
  SetScene(hub, SceneAxes(Vec::UnitY(), Vec::UnitZ()));  // so side is x
  Params record = Flags({Params::CAMERA_BOTTOM});        // the flags do not count
  record.useCustom = true;
  record.keepSceneUp = true;
  record.customDirection = {3, 4, 0};
  record.customUp = {5, 0, 0};
  record.customFront = {0, 1, 0};
  const CameraParameters end = StepAt(hub, record, 1.0).camera;
  EXPECT_TRUE(IsNear(end.eye, Vec(0, 6, 8), 1e-12));
  EXPECT_TRUE(IsNear(end.up, Vec(1, 0, 0), 1e-12));
}

TEST(ViewAlignShot, scene_directions_of_any_length_count_as_unit_vectors) {
  MemoryHub hub(LookAt({1, 2, 10}, {0, 0, 0}, {0, 1, 0}));
  const Params record = Flags({Params::CAMERA_FRONT, Params::CAMERA_TOP});
  const CameraParameters expected = StepAt(hub, record, 1.0).camera;
  hub.GetApplicationParameters().scene_up_direction = {0, 7, 0};
  hub.GetApplicationParameters().scene_front_direction = {0.2, 0, 0};
  EXPECT_TRUE(IsNear(StepAt(hub, record, 1.0).camera, expected, 1e-13));
}

// ---- the way ----

TEST(ViewAlignShot, roll_and_pan_turn_the_end_view_about_its_own_axes) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  Params rolled = Flags({Params::CAMERA_SIDE});
  rolled.rollAngle = 90;  // right-handed about the view, -z: the up goes from y to x
  const CameraParameters afterRoll = StepAt(hub, rolled, 1.0).camera;
  EXPECT_TRUE(IsNear(afterRoll.up, Vec(1, 0, 0), 1e-13));
  EXPECT_TRUE(IsNear(afterRoll.eye, Vec(0, 0, 10), 1e-13));
  Params panned = Flags({Params::CAMERA_SIDE});
  panned.panAngle = 90;  // left-handed about y: the view goes from -z to x
  const CameraParameters afterPan = StepAt(hub, panned, 1.0).camera;
  EXPECT_TRUE(IsNear(To(oracle::Forward(afterPan)), Vec(1, 0, 0), 1e-13));
  EXPECT_TRUE(IsNear(afterPan.up, Vec(0, 1, 0), 1e-13));
  EXPECT_TRUE(IsNear(afterPan.eye, Vec(-10, 0, 0), 1e-13));  // about the pivot
}

TEST(ViewAlignShot, without_a_fit_the_camera_turns_about_the_pivot) {
  MemoryHub hub(WithPivot(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), {0, 0, 4}));
  const CameraParameters end = StepAt(hub, Flags({Params::CAMERA_FRONT}), 1.0).camera;
  EXPECT_EQ(end.pivot, Vector3(0, 0, 4));
  EXPECT_TRUE(IsNear(end.eye, Vec(6, 0, 4), 1e-13));
  EXPECT_TRUE(IsNear(end.centre, Vec(0, 0, 4), 1e-13));  // the distance to the pivot is the viewing distance
}

TEST(ViewAlignShot, projection_wish_and_blend_stay_those_of_the_camera_that_is_passed_in) {
  for (const bool fit : {false, true}) {
    MemoryHub hub(LookAt({1, 2, 10}, {0, 0, 0}, {0, 1, 0}));
    hub.BeginShot(Record({1, 0, 0}, false, fit));
    hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
    hub.view.perspective_with_ortho = true;
    hub.view.projection_transition = 0.625;
    StepShot(hub, 1.0);
    const Step step = StepShot(hub, 0.0);
    EXPECT_TRUE(step.camera.IsOrthographic());
    EXPECT_TRUE(step.camera.perspective_with_ortho);
    EXPECT_EQ(step.camera.projection_transition, 0.625);
  }
}

TEST(ViewAlignShot, the_lens_is_that_of_the_start_unless_the_fit_sizes_it) {
  MemoryHub hub(WithAsymmetricFrustum(LookAt({1, 2, 10}, {0, 0, 0}, {0, 1, 0}), 20, 30, 40, 50));
  hub.view = WithMarks(hub.view);
  hub.view.ortho_width = 8;
  hub.view.ortho_height = 6;
  hub.BeginShot(Record({1, 0, 0}, false, true));
  hub.view.left_fov = hub.view.page_scale = 77;  // written over from the shot's own cameras
  StepShot(hub, 1.0);
  const CameraParameters half = StepShot(hub, 1.0).camera;
  EXPECT_NEAR(half.left_fov, 20, 1e-13);
  EXPECT_NEAR(half.page_scale, 2.5, 1e-13);
  EXPECT_NEAR(half.page_origin_x, -3.5, 1e-13);
  EXPECT_NEAR(half.ortho_height, (6.0 + 2.0) / 2, 1e-13);  // a unit sphere: 2 on the smaller side
  EXPECT_NEAR(half.ortho_width, (8.0 + 8.0 / 3) / 2, 1e-13);
}

TEST(ViewAlignShot, a_fit_recalculates_the_bounds_of_the_scene_and_follows_the_selection) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  ApplicationParameters& p = hub.GetApplicationParameters();
  hub.onRecalculateGlobal = [&] { p.global_bound_centre = {1, 2, 3}; };
  EXPECT_TRUE(IsNear(StepAt(hub, Record({0, 0, 1}, false, true), 1.0).camera.centre, Vec(1, 2, 3), 1e-13));
  p.tool_selection_sensitivity = false;
  hub.SetGeometrySelection(2.0, {4, 5, 6});
  EXPECT_TRUE(IsNear(StepAt(hub, Record({0, 0, 1}, false, true), 1.0).camera.centre, Vec(4, 5, 6), 1e-13));
  hub.recalculatedGlobal = hub.recalculatedSelection = 0;
  StepAt(hub, Record({0, 0, 1}, false, false), 1.0);
  EXPECT_EQ(hub.recalculatedGlobal + hub.recalculatedSelection, 0);
}

TEST(ViewAlignShot, a_fit_moves_the_centre_and_the_distance_on_lines) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    MemoryHub hub(RandomCamera(random));
    ApplicationParameters& p = hub.GetApplicationParameters();
    p.global_bound_centre = random.Point(50);
    p.global_bound_radius = random.Magnitude(0.1, 50);
    p.global_bound_box = Box3(p.global_bound_centre, random.Point(10) + Vector3(11, 11, 11));
    p.global_bound_geometry = random.Coin() ? BoundGeometryType::Box : BoundGeometryType::Sphere;
    static const View26 VIEWS[] = {{1, 0, 0}, {1, 1, 0}, {-1, 1, 1}, {0, 0, -1}};
    const View26& view = random.OneOf(VIEWS);
    const Params record = Record(view, true, true);

    // The hub's own fit has tests of its own.
    const Vec towardsEye = USUAL_AXES.Compose(view);
    CameraParameters target = hub.view;
    const Vector3 up = To(ChosenUp(hub.view, record, USUAL_AXES, towardsEye));
    if (p.global_bound_geometry == BoundGeometryType::Box) {
      ASSERT_TRUE(
          hub.FitBoundingBoxToView(p.global_bound_centre, p.global_bound_box, To(-towardsEye), up, target));
    } else {
      ASSERT_TRUE(hub.FitBoundingSphereToView(p.global_bound_centre, p.global_bound_radius, To(-towardsEye),
                                              up, target));
    }
    const double fraction = random.Uniform(0.0, 1.0);
    const double t = oracle::Ease(fraction);
    const CameraParameters camera = StepAt(hub, record, fraction).camera;
    ASSERT_TRUE(IsNear(camera.centre, oracle::Mix(t, hub.view.centre, target.centre), 1e-11));
    ASSERT_EQ(camera.pivot, camera.centre);
    ASSERT_TRUE(IsNear(oracle::View(camera).norm(),
                       oracle::Mix(t, oracle::View(hub.view).norm(), oracle::View(target).norm()), 1e-11));
    const CameraParameters end = StepAt(hub, record, 1.0).camera;
    ASSERT_TRUE(IsNear(end.eye, From(target.eye), 1e-11));
    ASSERT_TRUE(IsNear(end.ortho_width, target.ortho_width, 1e-12));
    ASSERT_TRUE(IsNear(end.ortho_height, target.ortho_height, 1e-12));
  }
}

TEST(ViewAlignShot, random_moves_without_a_fit_turn_about_one_axis) {
  Random random;
  const std::vector<View26> views = AllViews();
  for (int i = 0; i < 10000; ++i) {
    const SceneAxes scene = i % 2 == 0 ? USUAL_AXES : SceneAxes(RandomAxes(random));
    MemoryHub hub(WithMarks(RandomCamera(random)));
    SetScene(hub, scene);
    const View26& view = views[static_cast<std::size_t>(random.Integer(0, 25))];
    Params record = Record(view, random.Coin());
    if (random.Coin()) {
      record.rollAngle = random.Uniform(-180, 180);
      record.panAngle = random.Uniform(-180, 180);
    }
    if (random.Coin()) {
      const Axes custom = RandomAxes(random);
      record.useCustom = true;
      record.customDirection = random.Direction() * random.Magnitude(0.1, 10);
      record.customUp = custom.up;
      record.customFront = custom.front;
    }
    const Vec towardsEye =
        record.useCustom ? scene.Compose(From(record.customDirection)) : scene.Compose(view);
    const Vec up = ChosenUp(hub.view, record, scene, towardsEye);
    const double fraction = random.Uniform(0.0, 1.1);
    const Step step = StepAt(hub, record, fraction);
    ASSERT_EQ(step.goesOn, fraction < 1.0);
    const double t = fraction < 1.0 ? oracle::Ease(fraction) : 1.0;
    // Near half a turn the axis of the turn is ill-conditioned, in either computation.
    ASSERT_TRUE(IsNear(step.camera, ExpectedWithoutFit(hub.view, record, towardsEye, up, t), 1e-7)) << i;
  }
}

// ---- what holds for all 26 views from anywhere ----

TEST(ViewAlignShot, from_anywhere_every_view_ends_along_its_direction_with_an_axis_for_its_up) {
  Random random;
  for (const SceneAxes& scene : Scenes(random)) {
    const std::vector<CameraParameters> starts = StartCameras(random, scene);
    ASSERT_GE(starts.size(), 200U);
    const SceneAxes custom(scene.side, scene.front);
    // Half a turn of a leaning frame lands beside the axes of the scene, so its turned frame is what counts.
    const bool leaning = scene.up.cwiseAbs().maxCoeff() < 1.0;
    for (const CameraParameters& start : starts) {
      MemoryHub hub(start);
      SetScene(hub, scene);
      for (const View26& view : AllViews()) {
        for (int variant = 0; variant < 8; ++variant) {
          Params record = Record(view, (variant & 1) != 0, (variant & 2) != 0);
          record.useCustom = (variant & 4) != 0;
          record.customDirection = Vector3(view[0], view[1], view[2]);
          record.customUp = To(custom.up);
          record.customFront = To(custom.front);
          hub.GetApplicationParameters().global_bound_geometry =
              variant % 3 == 0 ? BoundGeometryType::Box : BoundGeometryType::Sphere;

          const CameraParameters end = StepAt(hub, record, 1.0).camera;
          const Vec wanted = -scene.Compose(view).normalized();
          const Vec forward = oracle::Forward(end);
          ASSERT_NEAR((forward - wanted).norm(), 0.0, 1e-9);
          ASSERT_NEAR(From(end.up).norm(), 1.0, 1e-12);
          ASSERT_NEAR(From(end.up).dot(forward), 0.0, 1e-9);

          const SceneAxes& own = record.useCustom ? custom : scene;
          const bool along = std::abs(wanted.dot(own.up)) > 1.0 - 1e-9;
          const bool upsideDown = !record.keepSceneUp && From(start.up).dot(own.up) < 0.0;
          if (!(leaning && along && upsideDown)) {
            ASSERT_TRUE(IsPerpendicularisedAxis(From(end.up), forward, SignedAxes(own)))
                << From(end.up).transpose() << " along " << forward.transpose();
          }
          const bool held = !record.useCustom && (oracle::Forward(start) - wanted).norm() < 1e-3;
          if (record.keepSceneUp && !along && !held) {
            ASSERT_NEAR((From(end.up) - Perpendicular(own.up, forward)).norm(), 0.0, 1e-9);
          }
        }
      }
    }
  }
}

TEST(ViewAlignShot, nothing_rolls_on_the_way_when_the_ups_of_start_and_end_agree) {
  Random random;
  int agreed = 0;
  for (const SceneAxes& scene : Scenes(random)) {
    for (const CameraParameters& start : StartCameras(random, scene)) {
      MemoryHub hub(start);
      SetScene(hub, scene);
      for (const View26& view : AllViews()) {
        const Params record = Record(view, random.Coin(), random.Coin());
        const CameraParameters end = StepAt(hub, record, 1.0).camera;
        const bool sameUp = (oracle::Upright(start) - oracle::Upright(end)).norm() < 1e-9;
        const bool sameRight = (oracle::Right(start) - oracle::Right(end)).norm() < 1e-9;
        if (!sameUp && !sameRight) continue;
        ++agreed;
        for (const double fraction : {0.1, 0.35, 0.5, 0.8}) {
          const CameraParameters camera = StepAt(hub, record, fraction).camera;
          if (sameUp) {
            ASSERT_NEAR((From(camera.up) - oracle::Upright(start)).norm(), 0.0, 1e-8);
          }
          if (sameRight) {
            ASSERT_NEAR((oracle::Right(camera) - oracle::Right(start)).norm(), 0.0, 1e-8);
          }
        }
      }
    }
  }
  EXPECT_GT(agreed, 1000);
}

TEST(ViewAlignShot, the_choice_of_the_up_is_that_of_the_rule_from_all_starts_without_a_tie) {
  Random random;
  for (const SceneAxes& scene : Scenes(random)) {
    for (int i = 0; i < 200; ++i) {
      CameraParameters start = RandomCamera(random);
      if (i % 2 == 0)
        start.up = To(Perpendicular(Vec(-scene.up + 0.2 * From(random.Direction())), oracle::Forward(start)));
      MemoryHub hub(start);
      SetScene(hub, scene);
      for (const View26& view : AllViews()) {
        for (const bool keepSceneUp : {false, true}) {
          const Params record = Record(view, keepSceneUp, random.Coin());
          const CameraParameters end = StepAt(hub, record, 1.0).camera;
          const Vec towardsEye = scene.Compose(view);
          const Vec up = ChosenUp(start, record, scene, towardsEye);
          ASSERT_NEAR((From(end.up) - Perpendicular(up, -towardsEye.normalized())).norm(), 0.0, 1e-9)
              << view[0] << view[1] << view[2];
        }
      }
    }
  }
}
