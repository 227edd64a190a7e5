// The same motion told in 30, 60 and 144 portions a second.
#include <cmath>

#include "controller/controller_scene.h"
#include "controller/device_steps.h"

using namespace Korvane;

namespace {

using Mode = Cam3DControllerParameters;
using NavigationMode = Mode::NavigationMode;

constexpr int RATES[] = {30, 60, 144};

double PitchOf(const CameraParameters& camera) {
  const Vector3 view = (camera.centre - camera.eye).Normalized();
  return std::asin(view.y);
}

// One second of a swelling deflection, as a host tells of it: a state before each frame, then rest.
class RatesTest : public ControllerScene {
 protected:
  RatesTest() { hub.GetApplicationParameters().global_bound_radius = 1000.0; }

  /// `translation` and `rotation`, which are what is felt of the deflection, grow by up to SWELL and shrink.
  CameraParameters Tell(NavigationMode mode, int rate, const Vector3& translation, const Vector3& rotation) {
    hub.view = START;
    controller->SetNavigationMode(mode);
    controller->SetSensitivity(0.0009 * 60 / rate);
    for (int k = 0; k < rate; ++k) {
      const double swell = 1.0 + SWELL * std::sin(oracle::PI * k / rate);
      Input(Deflect(translation * swell), Deflect(rotation * swell));
      Frame();
    }
    Rest();
    return hub.view;
  }
  /// Of sixty steps of unit size, swollen. The integral of a sine over half a turn is 2 / pi.
  static constexpr double WAY = 60.0 * (1.0 + 0.6 * 2.0 / oracle::PI);
  /// A sum of n values of a function differs from its integral by at most its variation over n, which is
  /// twice the swell; and the first input, which only begins, is one of them.
  static double GetBound(int rate) { return 60.0 * (2.0 * SWELL + 1.0) / rate; }

 private:
  static constexpr double SWELL = 0.6;

  /// With the threshold, which is not felt.
  static Vector3 Deflect(const Vector3& felt) {
    const auto deflect = [](double value) { return value == 0.0 ? 0.0 : value + std::copysign(5.0, value); };
    return {deflect(felt.x), deflect(felt.y), deflect(felt.z)};
  }
};

// One second of a motion, in `rate` inputs with a frame each.
CameraParameters MoveInPortions(Steps& steps, int rate, const Vector3& translation, const Vector3& rotation) {
  steps.Begin();
  for (int i = 0; i < rate; ++i) steps.StepController(translation / rate, rotation / rate);
  return steps.camera;
}

}  // namespace

// A turn about an axis that turns with itself, a shift at one depth, and a flight within the bounds add up:
// the same at every rate, but for the roundings of 144 frames.
TEST(Cam3DControllerOperation, plain_motions_come_out_the_same_in_any_number_of_portions) {
  struct Row {
    NavigationMode mode;
    bool upright;
    Vector3 translation;
    Vector3 rotation;
  };
  for (const Row& row :
       {Row{Mode::MODE_OBJECT, true, {}, {0, 2, 0}}, Row{Mode::MODE_OBJECT, true, {}, {1, 0, 0}},
        Row{Mode::MODE_OBJECT, false, {}, {0.5, -1, 0.7}}, Row{Mode::MODE_PAN, true, {3, -2, 0}, {}},
        Row{Mode::MODE_WALK, true, {1, 2, 3}, {}}, Row{Mode::MODE_FLY, true, {1, 2, 3}, {}},
        Row{Mode::MODE_FLY, true, {}, {0, 1, 0}}}) {
    CameraParameters ends[3];
    for (int i = 0; i < 3; ++i) {
      Steps steps(row.mode);
      steps.p.preserve_orbit_up_direction = steps.p.align_orbit_up_direction = row.upright;
      ends[i] = MoveInPortions(steps, RATES[i], row.translation, row.rotation);
      ExpectNear(ends[i].eye, ends[0].eye, 1e-11);
      ExpectNear(ends[i].centre, ends[0].centre, 1e-11);
      ExpectNear(ends[i].up, ends[0].up, 1e-11);
    }
    EXPECT_GT((ends[0].eye - START.eye).Length() + (ends[0].centre - START.centre).Length(), 1.0);
  }
}

// Towards the pivot each step is a part of the depth: after n portions the depth is 10 (1 - c / n)^n, with
// c = 0.5 * 4 * 3 / 10 for an input of -3. That nears 10 e^-c, from below, by at most 10 c^2 / 2n.
TEST(Cam3DControllerOperation, an_approach_nears_the_exponential_with_more_portions) {
  const double c = 0.6;
  for (const int rate : RATES) {
    Steps steps(Mode::MODE_OBJECT);
    const CameraParameters end = MoveInPortions(steps, rate, {0, 0, -3}, {});
    EXPECT_NEAR(end.eye.z, 10.0 * std::pow(1.0 - c / rate, rate), 1e-11);
    EXPECT_LE(end.eye.z, 10.0 * std::exp(-c));
    EXPECT_GE(end.eye.z, 10.0 * std::exp(-c) - 10.0 * c * c / (2.0 * rate));
  }
}

// The width grows by (1 + c / n) each time, with c = 0.5 * 4 / 10.
TEST(Cam3DControllerOperation, a_scaled_view_nears_the_exponential_with_more_portions) {
  const double c = 0.2;
  for (const int rate : RATES) {
    Steps steps(Mode::MODE_PAN, WithOrthographic(START, 30, 20));
    const CameraParameters end = MoveInPortions(steps, rate, {0, 0, 0.5}, {});
    EXPECT_NEAR(end.ortho_width, 30.0 * std::pow(1.0 + c / rate, rate), 1e-11);
    EXPECT_LE(std::abs(end.ortho_width - 30.0 * std::exp(c)), 30.0 * std::exp(c) * c * c / (2.0 * rate));
  }
}

// On the turntable the pitch adds up whatever the rate. The heading turns by the part of the step about the
// world's up, which is its cosine at the pitch of that moment: the sum below. Two rates differ by less than
// the product of both angles over the lower one.
TEST(Cam3DControllerOperation, a_turntable_differs_between_rates_by_the_step_of_its_pitch) {
  const double pitch = 1.0;
  const double turn = 1.5;
  double heading[3] = {};
  for (int i = 0; i < 3; ++i) {
    Steps steps(Mode::MODE_OBJECT);
    const CameraParameters end = MoveInPortions(steps, RATES[i], {}, {pitch, turn, 0});
    EXPECT_NEAR(PitchOf(end), -pitch, 1e-11);
    double expected = 0.0;
    for (int k = 0; k < RATES[i]; ++k) expected += turn / RATES[i] * std::cos(pitch * k / RATES[i]);
    heading[i] = std::atan2(-end.eye.x, end.eye.z);
    EXPECT_NEAR(heading[i], expected, 1e-11);
  }
  EXPECT_GT(std::abs(heading[0] - heading[2]), 1e-4);
  EXPECT_LT(std::abs(heading[0] - heading[1]), pitch * turn / 30.0);
  EXPECT_LT(std::abs(heading[1] - heading[2]), pitch * turn / 60.0);
}

// ---- through the controller ----

// The step of an input does not know how often inputs come: a host that has them at another rate scales the
// sensitivity, and then the same deflection for the same time pans the same way.
TEST_F(RatesTest, a_scaled_sensitivity_makes_rates_equal) {
  Vector3 ends[3];
  for (int i = 0; i < 3; ++i) {
    hub.view = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    controller->SetNavigationMode(Mode::MODE_PAN);
    controller->SetSensitivity(0.0009 * 60 / RATES[i]);
    Input({105, -55, 0}, {});
    for (int k = 0; k < RATES[i]; ++k) {
      Input({105, -55, 0}, {});
      Frame();
    }
    Rest();
    ends[i] = hub.view.eye;
  }
  // 60 times 100 * 0.0009 * 0.8 * 0.5 of a view of 20 units, to the left.
  EXPECT_NEAR(ends[0].x, -60 * 100 * 0.0009 * 0.8 * 0.5 * 20, 1e-9);
  EXPECT_NEAR(ends[0].y, -60 * 50 * 0.0009 * 0.8 * -0.5 * 20, 1e-9);
  EXPECT_NEAR((ends[1] - ends[0]).Length(), 0.0, 1e-9);
  EXPECT_NEAR((ends[2] - ends[0]).Length(), 0.0, 1e-9);
}

// What a unit step moves the eye by: 0.0009, the multiplier of the axis, and for the page half of a view of
// 20 units, for who walks or flies 1.25.
TEST_F(RatesTest, a_swelling_shift_goes_the_same_way_at_any_rate) {
  struct Row {
    NavigationMode mode;
    Vector3 translation;
    Vector3 step;
  };
  for (const Row& row : {Row{Mode::MODE_PAN, {100, -50, 0}, Vector3(-800, 400, 0)},
                         Row{Mode::MODE_WALK, {100, -50, 80}, Vector3(37.5, -6.25, -40)},
                         Row{Mode::MODE_FLY, {100, -50, 80}, Vector3(62.5, -31.25, -50)}}) {
    const Vector3 step = row.step * 0.0009;
    for (const int rate : RATES) {
      const Vector3 moved = Tell(row.mode, rate, row.translation, {}).eye - START.eye;
      EXPECT_LE((moved - step * WAY).Length(), step.Length() * GetBound(rate)) << row.mode << " " << rate;
    }
  }
}

TEST_F(RatesTest, a_swelling_turn_goes_the_same_way_at_any_rate) {
  for (const bool upright : {true, false}) {
    controller->SetKeepSceneUpright(upright);
    for (const int rate : RATES) {
      const Vector3 eye = Tell(Mode::MODE_OBJECT, rate, {}, {0, 20, 0}).eye;
      const double step = 20 * 0.0009;
      EXPECT_NEAR(std::atan2(-eye.x, eye.z), step * WAY, step * GetBound(rate)) << rate;
    }
  }
}
