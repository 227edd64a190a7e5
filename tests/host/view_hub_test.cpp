// The hub of the kit: a drag shows the same in a model of whatever size.
#include "zovhost/view_hub.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "korvane/math.h"
#include "support/manual_platform.h"

namespace {

using Korvane::CameraParameters;
using Korvane::OperationType;
using Korvane::Vector3;
using zovhost::ViewHub;

constexpr int WIDTH = 1280;
constexpr int HEIGHT = 800;
constexpr int FRAMES = 12;

enum class Kind { Perspective, Orthographic };

// The view of a model of this size that stands on the origin: from (3, -4, 2) sizes.
CameraParameters MakeView(double size, Kind kind) {
  CameraParameters camera;
  camera.eye = Vector3(3.0, -4.0, 2.0) * size;
  camera.centre = camera.pivot = Vector3(0.0, 0.0, 0.5) * size;
  camera.up = Vector3(0.0, 0.0, 1.0);
  camera.SetHorizontalFOV(30.0);
  camera.SetVerticalFOV(20.0);
  camera.projection_transition = kind == Kind::Orthographic ? 1.0 : 0.0;
  camera.projection_type = kind == Kind::Orthographic ? CameraParameters::ProjectionType::Orthographic
                                                      : CameraParameters::ProjectionType::Perspective;
  camera.ortho_width = 3.2 * size;
  camera.ortho_height = 2.0 * size;
  return camera;
}

struct Case {
  const char* name;
  OperationType type;
  Kind kind;
  int step;  // pixels to the right, each frame
};

// Eye, centre and orthographic size at each frame of the slowest drag there is, a pixel a frame, in sizes of
// the model.
std::vector<Vector3> Drag(const Case& drag, double size) {
  ManualPlatform clock;
  ViewHub hub([] {});
  hub.SetView(MakeView(size, drag.kind));
  Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
  parameters.viewport_width = WIDTH;
  parameters.viewport_height = HEIGHT;
  parameters.scene_up_direction = parameters.world_up_direction = Vector3(0.0, 0.0, 1.0);
  parameters.global_bound_radius = size;
  parameters.global_bound_box = Korvane::Box3({0.0, 0.0, 0.5 * size}, {0.5 * size, 0.5 * size, 0.5 * size});

  std::vector<Vector3> path;
  EXPECT_TRUE(hub.BeginOperation(drag.type, WIDTH / 2, HEIGHT / 2));
  for (int frame = 1; frame <= FRAMES; ++frame) {
    hub.UpdateOperationParams(WIDTH / 2 + frame * drag.step, HEIGHT / 2, drag.type);
    clock.Advance(16);
    hub.PerformOperations();
    path.push_back(hub.GetView().eye / size);
    path.push_back(hub.GetView().centre / size);
    path.push_back(Vector3(hub.GetView().ortho_width, hub.GetView().ortho_height, 0.0) / size);
  }
  hub.EndOperation(drag.type);
  return path;
}

class SlowDragTest : public testing::TestWithParam<Case> {};

TEST_P(SlowDragTest, moves_a_model_of_any_size_alike) {
  const Case& drag = GetParam();
  // At this size a pixel is larger than what the library takes for the same.
  const std::vector<Vector3> expected = Drag(drag, 100.0);
  for (std::size_t i = 3; i < expected.size(); i += 3) {
    double moved = 0.0;
    for (std::size_t part = i; part < i + 3; ++part) moved += (expected[part] - expected[part - 3]).Length();
    EXPECT_GT(moved, 0.0) << "frame " << i / 3;
  }
  for (int exponent = -4; exponent <= 7; ++exponent) {
    SCOPED_TRACE("a model of 1e" + std::to_string(exponent) + " units");
    const std::vector<Vector3> path = Drag(drag, std::pow(10.0, exponent));
    for (std::size_t i = 0; i < path.size(); ++i) EXPECT_LT((path[i] - expected[i]).Length(), 1e-9) << i;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Drags, SlowDragTest,
    testing::Values(Case{"pan", Korvane::OPERATION_PAN, Kind::Perspective, 1},
                    Case{"orbit", Korvane::OPERATION_ORBIT, Kind::Perspective, 1},
                    Case{"zoom", Korvane::OPERATION_ZOOM, Kind::Perspective, 1},
                    Case{"pan_orthographic", Korvane::OPERATION_PAN, Kind::Orthographic, 1},
                    Case{"orbit_orthographic", Korvane::OPERATION_ORBIT, Kind::Orthographic, 1},
                    Case{"zoom_out_orthographic", Korvane::OPERATION_ZOOM, Kind::Orthographic, -1}),
    [](const testing::TestParamInfo<Case>& each) { return std::string(each.param.name); });

// ---- when two cameras show the same ----

TEST(ViewHub, takes_cameras_for_one_that_are_closer_than_a_ten_thousandth_of_what_is_seen) {
  const ViewHub hub([] {});
  CameraParameters a = MakeView(1e-3, Kind::Perspective);
  CameraParameters b = a;
  const double distance = (a.centre - a.eye).Length();
  b.eye.x += 0.9e-4 * distance;
  EXPECT_TRUE(hub.CheckCamerasEqual(&a, &b));
  b.eye.x = a.eye.x + 1.1e-4 * distance;
  EXPECT_FALSE(hub.CheckCamerasEqual(&a, &b));
}

// 30 degrees by 20 is what a viewport of 1.586 to 1 shows.
TEST(ViewHub, gives_a_camera_that_was_kept_in_another_shape_the_shape_of_its_viewport) {
  ViewHub hub([] {});
  const CameraParameters kept = MakeView(1.0, Kind::Perspective);
  hub.ApplyCameraParameters(kept);
  EXPECT_EQ(hub.GetView().left_fov, kept.left_fov) << "nobody has told of a viewport";
  hub.SetViewportSize(400, 800);
  hub.ApplyCameraParameters(kept);
  const CameraParameters& shaped = hub.GetView();
  const auto tangent = [](double degrees) { return std::tan(degrees * Korvane::Math::DEG_TO_RAD); };
  EXPECT_NEAR(shaped.GetHorizontalFOV(), kept.GetVerticalFOV(), 1e-12) << "the narrower side keeps its angle";
  EXPECT_NEAR(tangent(shaped.GetVerticalFOV()), 2.0 * tangent(shaped.GetHorizontalFOV()), 1e-12);
  EXPECT_EQ(shaped.ortho_height, 2.0 * shaped.ortho_width);
  EXPECT_EQ(shaped.eye, kept.eye);
}

TEST(ViewHub, leaves_a_camera_of_its_shape_as_it_is_to_the_last_bit) {
  ViewHub hub([] {});
  hub.SetViewportSize(WIDTH, HEIGHT);
  hub.ApplyCameraParameters(MakeView(1.0, Kind::Perspective));
  const CameraParameters shaped = hub.GetView();
  hub.ApplyCameraParameters(shaped);
  EXPECT_EQ(hub.GetView().left_fov, shaped.left_fov);
  EXPECT_EQ(hub.GetView().top_fov, shaped.top_fov);
  EXPECT_EQ(hub.GetView().ortho_width, shaped.ortho_width);
}

TEST(ViewHub, measures_an_orthographic_view_by_its_size) {
  const ViewHub hub([] {});
  CameraParameters a = MakeView(1e-3, Kind::Orthographic);
  a.eye = a.centre + (a.eye - a.centre) * 1000.0;  // from far away the view is the same
  CameraParameters b = a;
  b.centre.x += 1.1e-4 * a.ortho_height;
  EXPECT_FALSE(hub.CheckCamerasEqual(&a, &b));
}

// Where the view is wide, the library's own measure is the finer one: 3.45e-4 units.
TEST(ViewHub, is_as_fine_as_the_library_in_a_wide_view) {
  const ViewHub hub([] {});
  CameraParameters a = MakeView(1e4, Kind::Perspective);
  for (const double move : {1e-4, 3.4e-4, 3.5e-4, 1e-3}) {
    CameraParameters b = a;
    b.eye.y += move;
    EXPECT_EQ(hub.CheckCamerasEqual(&a, &b), Korvane::CameraCheckEqual(&a, &b)) << move;
  }
  EXPECT_FALSE(hub.CheckCamerasEqual(&a, nullptr));
  EXPECT_FALSE(hub.CheckCamerasEqual(nullptr, &a));
}

// Its steps become smaller and smaller, and the one before may come any time.
TEST(ViewHub, ends_a_move_at_its_goal_however_small_the_last_step_is) {
  ManualPlatform clock;
  ViewHub hub([] {});
  hub.SetView(MakeView(10.0, Kind::Perspective));
  Korvane::TransitionShotParameters move;
  move.targetCamera = hub.GetView();
  move.targetCamera.eye += {1.0, 2.0, 3.0};
  move.duration = move.easeEnd = 1.0;
  ASSERT_TRUE(hub.BeginShot(move));
  hub.PerformOperations();
  for (const unsigned step : {500U, 499U, 1U}) {
    clock.Advance(step);
    hub.PerformOperations();
  }
  const double before = (hub.GetView().eye - move.targetCamera.eye).Length();
  EXPECT_GT(before, 1e-6) << "there is a step left";
  EXPECT_LT(before, 1e-4) << "and it shows the same";
  clock.Advance(16);
  hub.PerformOperations();
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_LT((hub.GetView().eye - move.targetCamera.eye).Length(), 1e-12);
}

// ---- reduced motion ----

TEST(ViewHub, changes_the_projection_in_one_frame_where_motion_is_reduced) {
  for (const bool reduced : {false, true}) {
    ManualPlatform clock;
    ViewHub hub([] {});
    hub.SetReducedMotion(reduced);
    hub.GetApplicationParameters().use_projection_transitions = true;
    CameraParameters camera = MakeView(10.0, Kind::Perspective);
    camera.projection_type =
        CameraParameters::ProjectionType::Orthographic;  // and still drawn as a perspective
    hub.SetView(camera);
    Korvane::TransitionShotParameters move;
    move.targetCamera = camera;
    move.duration = 1.0;
    ASSERT_TRUE(hub.BeginShot(move));
    for (int i = 0; i < 2; ++i) {
      clock.Advance(16);
      hub.PerformOperations();
    }
    EXPECT_EQ(hub.GetView().projection_transition == 1.0, reduced);
  }
}

// How many frames a shot of one second takes, of a sixtieth each.
template <class Parameters>
int CountFrames(Parameters parameters, bool reduced) {
  ManualPlatform clock;
  ViewHub hub([] {});
  hub.SetView(MakeView(10.0, Kind::Perspective));
  hub.SetReducedMotion(reduced);
  hub.GetApplicationParameters().use_projection_transitions = true;
  parameters.duration = 1.0;
  EXPECT_TRUE(hub.BeginShot(parameters));
  int count = 0;
  while (hub.IsShotActive() && count < 1000) {
    clock.Advance(16);
    hub.PerformOperations();
    ++count;
  }
  return count;
}

template <class Parameters>
void ExpectCut(const Parameters& parameters, const char* name) {
  EXPECT_GT(CountFrames(parameters, false), 50) << name;
  EXPECT_LE(CountFrames(parameters, true), 2) << name;
}

TEST(ReducedMotion, arrives_at_once_wherever_a_move_leads) {
  Korvane::TransitionShotParameters transition;
  transition.targetCamera = MakeView(5.0, Kind::Perspective);
  ExpectCut(transition, "transition");
  Korvane::CenterShotParameters centre;
  centre.point = Vector3(2.0, 1.0, 0.0);
  ExpectCut(centre, "centre");
  Korvane::LookAtShotParameters face;
  face.point = Vector3(2.0, 1.0, 0.0);
  face.direction = Vector3(0.0, -1.0, 0.0);
  face.distance = 4.0;
  ExpectCut(face, "a face");
  Korvane::ZoomRectShotParameters rectangle;
  rectangle.sidewaysOffset = 1.0;
  rectangle.forwardOffset = 5.0;
  ExpectCut(rectangle, "a rectangle");
  Korvane::ViewAlignShotParameters align;
  align.directionFlags[Korvane::ViewAlignShotParameters::CAMERA_TOP] = true;
  ExpectCut(align, "align");
  Korvane::ProjectionTransitionShotParameters blend;
  blend.targetProjection = Korvane::ProjectionTransitionShotParameters::PROJECTION_ORTHOGRAPHIC;
  ExpectCut(blend, "projection");
}

TEST(ReducedMotion, lets_the_shots_of_a_story_run) {
  Korvane::OrbitShotParameters orbit;
  EXPECT_EQ(CountFrames(orbit, true), CountFrames(orbit, false));
  EXPECT_GT(CountFrames(orbit, true), 50);
}

TEST(ReducedMotion, is_wanted_by_the_environment) {
  const struct {
    const char* value;
    bool wanted;
  } rows[] = {{nullptr, false}, {"", false}, {"0", false}, {"1", true}, {"yes", true}};
  for (const auto& row : rows) {
    if (row.value != nullptr) {
      setenv("ZOV_REDUCED_MOTION", row.value, 1);  // NOLINT(concurrency-mt-unsafe)
    } else {
      unsetenv("ZOV_REDUCED_MOTION");  // NOLINT(concurrency-mt-unsafe)
    }
    EXPECT_EQ(ViewHub::WantsReducedMotion(), row.wanted) << (row.value != nullptr ? row.value : "none");
  }
  unsetenv("ZOV_REDUCED_MOTION");  // NOLINT(concurrency-mt-unsafe)
}

}  // namespace
