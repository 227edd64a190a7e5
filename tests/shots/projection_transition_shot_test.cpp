#include "shots/projection_transition_shot.h"

#include "shots/shot_steps.h"

using namespace Korvane;

namespace {

using ProjectionType = CameraParameters::ProjectionType;
constexpr double TOLERANCE = 0x1p-23;

ProjectionTransitionShotParameters Record(std::int32_t target, double duration = 2.0, double easeEnd = 1.0) {
  return ProjectionTransitionShotParameters{easeEnd, duration, target};
}

class ProjectionTransition : public ::testing::Test {
 protected:
  ProjectionTransition() : hub(WithMarks(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}))) {
    hub.GetApplicationParameters().use_projection_transitions = true;
  }
  void Show(ProjectionType type) { hub.view.projection_type = type; }

  // The start camera but for the blend and the type.
  CameraParameters Expected(ProjectionType type, double blend) const {
    CameraParameters camera = hub.view;
    camera.projection_type = type;
    camera.projection_transition = blend;
    return camera;
  }

  MemoryHub hub;
};

}  // namespace

TEST_F(ProjectionTransition, from_perspective_the_blend_grows_from_the_tolerance_to_1) {
  for (const double fraction : {0.0, 0.25, 0.5, 0.75}) {
    const Step step = StepAt(hub, Record(1), fraction);
    EXPECT_TRUE(step.goesOn);
    EXPECT_TRUE(IsNear(step.camera,
                       Expected(ProjectionType::Orthographic, TOLERANCE + oracle::Ease(fraction)), 1e-14));
  }
  const Step last = StepAt(hub, Record(1), 1.0);
  EXPECT_FALSE(last.goesOn);
  EXPECT_EQ(last.camera.projection_transition, 1.0);
}

TEST_F(ProjectionTransition, from_orthographic_the_blend_falls_from_1_to_0) {
  Show(ProjectionType::Orthographic);
  for (const double fraction : {0.0, 0.25, 0.5, 0.75}) {
    const Step step = StepAt(hub, Record(0), fraction);
    EXPECT_TRUE(step.goesOn);
    EXPECT_TRUE(IsNear(
        step.camera, Expected(ProjectionType::Perspective, 1.0 - TOLERANCE - oracle::Ease(fraction)), 1e-14));
  }
  const Step last = StepAt(hub, Record(0), 1.0);
  EXPECT_FALSE(last.goesOn);
  EXPECT_EQ(last.camera.projection_transition, 0.0);
}

TEST_F(ProjectionTransition, to_the_projection_it_already_has_it_ends_at_its_first_step) {
  for (const auto type : {ProjectionType::Perspective, ProjectionType::Orthographic}) {
    Show(type);
    hub.BeginShot(Record(static_cast<std::int32_t>(type)));
    const Step step = StepShot(hub, 0.1);
    EXPECT_FALSE(step.goesOn);
    EXPECT_EQ(step.camera.projection_type, type);
  }
}

TEST_F(ProjectionTransition, to_a_projection_outside_the_enumeration_it_ends_at_its_first_step) {
  for (const std::int32_t target : {-1, 2, 1000}) {
    hub.BeginShot(Record(target));
    const Step step = StepShot(hub, 0.1);
    EXPECT_FALSE(step.goesOn);
    EXPECT_EQ(step.camera.projection_type, ProjectionType::Perspective);
  }
}

TEST_F(ProjectionTransition, with_an_ease_end_of_one_half_it_arrives_early_and_waits) {
  const Step half = StepAt(hub, Record(1, 2.0, 0.5), 0.25);
  EXPECT_NEAR(half.camera.projection_transition, TOLERANCE + 0.5, 1e-15);
  const Step arrived = StepAt(hub, Record(1, 2.0, 0.5), 0.5);
  EXPECT_TRUE(arrived.goesOn);
  EXPECT_EQ(arrived.camera.projection_transition, 1.0);
}

TEST_F(ProjectionTransition, without_transitions_it_has_no_cameras_and_writes_a_default_record) {
  hub.GetApplicationParameters().use_projection_transitions = false;
  const Step step = StepAt(hub, Record(1), 0.5);
  CameraParameters expected;
  // A blend of -1 on its way to -1: 0 unless the unit time brings it above 0, and no more than -1 then.
  expected.projection_transition = 0.0;
  EXPECT_TRUE(IsNear(step.camera, expected, 0.0));
}

TEST_F(ProjectionTransition, moves_nothing_but_blend_and_type) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    hub.view = WithMarks(RandomCamera(random));
    const double fraction = random.Uniform(0.0, 1.1);
    const Step step = StepAt(hub, Record(random.Integer(0, 1)), fraction);
    CameraParameters expected = hub.view;
    expected.projection_transition = step.camera.projection_transition;
    expected.projection_type = step.camera.projection_type;
    ASSERT_TRUE(SameBits(step.camera, expected)) << i;
    ASSERT_GE(step.camera.projection_transition, -TOLERANCE);
    ASSERT_LE(step.camera.projection_transition, 1.0);
  }
}
