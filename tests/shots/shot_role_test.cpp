// What the hub's frame makes of the role of its active shot.
#include "camera/hub_fakes.h"
#include "shots/shot_steps.h"
#include "support/manual_platform.h"

using namespace Korvane;

namespace {

using ProjectionType = CameraParameters::ProjectionType;

// A frame every 50 ms over a view that wants to be orthographic along the axes of the scene.
class ShotFrame : public ::testing::Test {
 protected:
  ShotFrame() : hub(LookAt({10, 0, 0}, {0, 0, 0}, {0, 1, 0})) { hub.view.perspective_with_ortho = true; }

  bool Frame() {
    platform.Advance(50);
    return hub.PerformOperations();
  }
  ProjectionType TypeAfterAFrame() {
    Frame();
    return hub.view.projection_type;
  }
  void UseTransitions() { hub.GetApplicationParameters().use_projection_transitions = true; }

  ManualPlatform platform;
  MemoryHub hub;
};

ShotRole RoleOfActive(MemoryHub& hub) { return hub.GetActiveShot()->GetRole(); }

}  // namespace

TEST(ShotRoles, crane_look_and_orbit_rotate_and_two_more_are_told_apart) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  const auto roleOf = [&](const auto& record) {
    EXPECT_TRUE(hub.BeginShot(record));
    return RoleOfActive(hub);
  };
  EXPECT_EQ(roleOf(CraneShotParameters()), ShotRole::Rotating);
  EXPECT_EQ(roleOf(LookShotParameters()), ShotRole::Rotating);
  EXPECT_EQ(roleOf(OrbitShotParameters()), ShotRole::Rotating);
  EXPECT_EQ(roleOf(ViewAlignShotParameters()), ShotRole::Aligning);
  EXPECT_EQ(roleOf(ProjectionTransitionShotParameters()), ShotRole::ChangingProjection);
  EXPECT_EQ(roleOf(LookAtShotParameters()), ShotRole::Plain);
  EXPECT_EQ(roleOf(ZoomRectShotParameters()), ShotRole::Plain);
  EXPECT_EQ(roleOf(PanZoomShotParameters()), ShotRole::Plain);
  EXPECT_EQ(roleOf(CenterShotParameters()), ShotRole::Plain);
  EXPECT_EQ(roleOf(KeyframeShotParameters{{hub.view}, {}, 1.0}), ShotRole::Plain);
  EXPECT_EQ(roleOf(TransitionShotParameters()), ShotRole::Plain);
  EXPECT_EQ(roleOf(ClosestViewAlignShotParameters()), ShotRole::Plain);
  EXPECT_EQ(roleOf(SpinShotParameters()), ShotRole::Plain);
  EXPECT_EQ(roleOf(ZoomShotParameters()), ShotRole::Plain);
  EXPECT_EQ(roleOf(TrackShotParameters()), ShotRole::Plain);
}

TEST(ShotRoles, a_shot_of_another_class_is_plain) {
  MemoryHub hub;
  hub.BeginShot(new FakeShot(hub));
  EXPECT_EQ(RoleOfActive(hub), ShotRole::Plain);
  hub.EndShot();
}

TEST_F(ShotFrame, rotating_shots_keep_perspective_and_the_view_turns_orthographic_once_they_stopped) {
  // Moves of no size: the view stays on the axis all the time.
  const auto check = [&](const auto& record) {
    hub.view.projection_type = ProjectionType::Orthographic;
    ASSERT_TRUE(hub.BeginShot(record));
    for (int i = 0; i < 3; ++i) EXPECT_EQ(TypeAfterAFrame(), ProjectionType::Perspective);
    hub.EndShot();
    EXPECT_EQ(TypeAfterAFrame(), ProjectionType::Orthographic);
  };
  CraneShotParameters crane;
  LookShotParameters look;
  OrbitShotParameters orbit;
  crane.duration = look.duration = orbit.duration = 1.0;
  check(crane);
  check(look);
  check(orbit);
}

TEST_F(ShotFrame, also_with_transitions_rotating_shots_keep_perspective) {
  UseTransitions();
  hub.view.projection_type = ProjectionType::Orthographic;
  OrbitShotParameters orbit;
  orbit.duration = 1.0;
  ASSERT_TRUE(hub.BeginShot(orbit));
  EXPECT_EQ(TypeAfterAFrame(), ProjectionType::Perspective);
}

TEST_F(ShotFrame, other_shots_along_an_axis_are_orthographic) {
  const auto check = [&](const auto& record) {
    hub.view.projection_type = ProjectionType::Perspective;
    ASSERT_TRUE(hub.BeginShot(record));
    EXPECT_EQ(TypeAfterAFrame(), ProjectionType::Orthographic);
  };
  check(TrackShotParameters{0, TARGET_CAM_START, 1.0, 5.0, false});
  check(SpinShotParameters{0, TARGET_CAM_START, 1.0, 0.0});
  check(PanZoomShotParameters{TARGET_CAM_START, 1.0, 1, 1, 1});
}

TEST_F(ShotFrame, during_a_view_alignment_with_transitions_the_view_turns_orthographic_a_little_early) {
  // The first frame of the shot is its start. 1 - cos(s) reaches 0.01 at s = 8.1096 degrees.
  const auto typeAt = [&](double degrees) {
    const double s = degrees * oracle::PI / 180.0;
    hub.view = LookAt({10 * std::cos(s), 0, 10 * std::sin(s)}, {0, 0, 0}, {0, 1, 0});
    hub.view.perspective_with_ortho = true;
    ViewAlignShotParameters record;
    record.directionFlags[ViewAlignShotParameters::CAMERA_FRONT] = true;
    record.duration = 1.0;
    EXPECT_TRUE(hub.BeginShot(record));
    Frame();
    EXPECT_NEAR(oracle::Forward(hub.view).x(), -std::cos(s), 1e-12);
    hub.EndShot();
    return hub.view.projection_type;
  };
  UseTransitions();
  EXPECT_EQ(typeAt(8.10), ProjectionType::Orthographic);
  EXPECT_EQ(typeAt(8.12), ProjectionType::Perspective);
  hub.GetApplicationParameters().use_projection_transitions = false;
  EXPECT_EQ(typeAt(8.10), ProjectionType::Perspective);
  EXPECT_EQ(typeAt(0.02), ProjectionType::Orthographic);  // within the usual tolerance, 0.028 degrees
  EXPECT_EQ(typeAt(0.03), ProjectionType::Perspective);
}

TEST_F(ShotFrame, a_view_alignment_ends_orthographic_with_the_blend_on_its_way) {
  UseTransitions();
  hub.view = LookAt({10, 0, 10}, {0, 0, 0}, {0, 1, 0});
  hub.view.perspective_with_ortho = true;
  hub.view.projection_transition = 0.0;
  ViewAlignShotParameters record;
  record.directionFlags[ViewAlignShotParameters::CAMERA_FRONT] = true;
  record.duration = 0.5;
  ASSERT_TRUE(hub.BeginShot(record));
  double blend = 0.0;
  while (hub.IsShotActive()) {
    Frame();
    EXPECT_GE(hub.view.projection_transition, blend);
    blend = hub.view.projection_transition;
  }
  EXPECT_EQ(hub.view.projection_type, ProjectionType::Orthographic);
  EXPECT_GT(blend, 0.0);
  while (Frame()) {
  }
  EXPECT_EQ(hub.view.projection_transition, 1.0);
}

TEST_F(ShotFrame, during_a_projection_transition_the_hubs_own_blend_stands_still) {
  UseTransitions();
  hub.view.perspective_with_ortho = false;
  ASSERT_TRUE(hub.BeginShot(ProjectionTransitionShotParameters{1.0, 1.0, 1}));
  hub.PerformOperations();  // starts the clock
  for (int i = 1; i <= 4; ++i) {
    Frame();
    // The steps of the shot alone, each written before its time passes.
    EXPECT_NEAR(hub.view.projection_transition, 0x1p-23 + oracle::Ease(0.05 * (i - 1)), 1e-11) << i;
  }
}

TEST_F(ShotFrame, after_a_projection_transition_nothing_is_left_to_blend) {
  UseTransitions();
  hub.view.perspective_with_ortho = false;
  ASSERT_TRUE(hub.BeginShot(ProjectionTransitionShotParameters{1.0, 0.2, 1}));
  while (hub.IsShotActive()) Frame();
  EXPECT_EQ(hub.view.projection_transition, 1.0);
  EXPECT_TRUE(hub.view.IsOrthographic());
  EXPECT_FALSE(Frame());
}
