#include "korvane/cam3d_controller.h"

#include <limits>

#include "controller/controller_scene.h"
#include "support/allocation_counter.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

using C = OpenController;
using NavigationMode = Cam3DControllerParameters::NavigationMode;

class ControllerTest : public ControllerScene {};

// Which of both flags a hub has been lent, and the mode.
struct Lent {
  int mode;
  bool preserve;
  bool align;
  bool operator==(const Lent& other) const {
    return mode == other.mode && preserve == other.preserve && align == other.align;
  }
};
Lent SettingsOf(const CameraOperations& hub) {
  const ApplicationParameters& p = hub.GetApplicationParameters();
  return {p.cam3d_controller_mode, p.preserve_orbit_up_direction, p.align_orbit_up_direction};
}

}  // namespace

// ---- the interface ----

TEST(Cam3DController, slots_stand_in_their_order) {
  const int slots[] = {
      VirtualSlot(&C::SetPivotBall),
      VirtualSlot(&C::GetPivotBall),
      VirtualSlot(&C::SetRenderer),
      VirtualSlot(&C::GetRenderer),
      VirtualSlot(&C::Create),
      VirtualSlot(&C::Destroy),
      VirtualSlot(&C::Draw),
      VirtualSlot(&C::IsOperating),
      VirtualSlot(&C::SetEnabled),
      VirtualSlot(&C::GetEnabled),
      VirtualSlot(&C::SetNavigationMode),
      VirtualSlot(&C::Toggle2DNavigationMode),
      VirtualSlot(&C::On3DControllerInput),
      VirtualSlot(&C::On3DControllerKeyDown),
      VirtualSlot(&C::On3DControllerKeyUp),
      VirtualSlot(&C::AlignToView),
      VirtualSlot(&C::FitToView),
      VirtualSlot(&C::GoToHomeView),
      VirtualSlot(&C::RotateView),
      VirtualSlot(&C::StepHistory),
  };
  int expected = 2;
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(Cam3DController, everything_else_is_not_virtual) {
  EXPECT_EQ(VirtualSlot(&C::SetKorvane), -1);
  EXPECT_EQ(VirtualSlot(&C::SetRewindHistory), -1);
  EXPECT_EQ(VirtualSlot(&C::MapKey), -1);
  EXPECT_EQ(VirtualSlot(&C::GetNavigationMode), -1);
  EXPECT_EQ(VirtualSlot(&C::SetHUDMessage), -1);
}

TEST(Cam3DController, slots_of_the_observer_stand_in_their_order) {
  using O = Cam3DControllerObserver;
  EXPECT_EQ(VirtualSlot(&O::OnInput), 2);
  EXPECT_EQ(VirtualSlot(&O::OnKeyDown), 3);
  EXPECT_EQ(VirtualSlot(&O::OnKeyUp), 4);
  EXPECT_EQ(VirtualSlot(&O::OnNavigationModeChanged), 5);
}

TEST(Cam3DController, starts_enabled_idle_and_with_the_default_settings) {
  const Cam3DController controller;
  EXPECT_TRUE(controller.GetEnabled());
  EXPECT_FALSE(controller.IsOperating());
  EXPECT_EQ(controller.GetNavigationMode(), Cam3DControllerParameters::MODE_OBJECT);
  EXPECT_EQ(controller.GetSensitivity(), 0.0009);
  EXPECT_EQ(controller.GetInputThreshold(), 5.0);
  EXPECT_EQ(controller.GetPivotBallThreshold(), 3);
  EXPECT_TRUE(controller.GetEnableRotation());
  EXPECT_TRUE(controller.GetEnableTranslation());
  EXPECT_TRUE(controller.GetKeepSceneUpright());
  EXPECT_EQ(controller.GetPivotBall(), nullptr);
  EXPECT_EQ(controller.GetRenderer(), nullptr);
}

TEST(Cam3DController, hands_settings_on) {
  Cam3DController controller;
  controller.SetSensitivity(0.5);
  controller.SetInputThreshold(2.0);
  controller.SetPivotBallThreshold(9);
  controller.SetEnableRotation(false);
  controller.SetEnableTranslation(false);
  controller.SetKeepSceneUpright(false);
  const double translation[3] = {1, 2, 3};
  const double rotation[3] = {4, 5, 6};
  controller.SetTranslationMultipliers(Cam3DControllerParameters::MODE_WALK, translation);
  controller.SetRotationMultipliers(Cam3DControllerParameters::MODE_FLY, rotation);
  EXPECT_EQ(controller.GetSensitivity(), 0.5);
  EXPECT_EQ(controller.GetInputThreshold(), 2.0);
  EXPECT_EQ(controller.GetPivotBallThreshold(), 9);
  EXPECT_FALSE(controller.GetEnableRotation());
  EXPECT_FALSE(controller.GetEnableTranslation());
  EXPECT_FALSE(controller.GetKeepSceneUpright());
  double values[3];
  controller.GetTranslationMultipliers(Cam3DControllerParameters::MODE_WALK, values);
  for (int axis = 0; axis < 3; ++axis) EXPECT_EQ(values[axis], translation[axis]);
  controller.GetRotationMultipliers(Cam3DControllerParameters::MODE_FLY, values);
  for (int axis = 0; axis < 3; ++axis) EXPECT_EQ(values[axis], rotation[axis]);
}

TEST_F(ControllerTest, selection_sensitivity_is_that_of_the_hub) {
  EXPECT_TRUE(controller->GetSelectionSensitivity());
  controller->SetSelectionSensitivity(false);
  EXPECT_FALSE(hub.GetApplicationParameters().tool_selection_sensitivity);
  EXPECT_FALSE(controller->GetSelectionSensitivity());
  controller->SetSelectionSensitivity(true);
  EXPECT_TRUE(controller->GetSelectionSensitivity());
  controller->SetKorvane(nullptr);
  controller->SetSelectionSensitivity(false);
  EXPECT_FALSE(controller->GetSelectionSensitivity());
  EXPECT_TRUE(hub.GetApplicationParameters().tool_selection_sensitivity);
}

TEST_F(ControllerTest, a_null_observer_is_refused_and_one_is_told_once) {
  EXPECT_FALSE(controller->AddObserver(nullptr));
  EXPECT_TRUE(controller->AddObserver(&observer));
  Rest();
  EXPECT_EQ(observer.inputs, 1);
  controller->RemoveObserver(&observer);
  controller->RemoveObserver(nullptr);
  Rest();
  EXPECT_EQ(observer.inputs, 1);
}

TEST_F(ControllerTest, observers_are_told_in_the_order_of_their_coming) {
  ControllerObserver second(journal, "second ");
  controller->AddObserver(&second);
  Rest();
  EXPECT_EQ(TakeLines(), (Lines{"input (0 0 0) (0 0 0)", "second input (0 0 0) (0 0 0)"}));
}

// ---- what becomes of an input ----

TEST_F(ControllerTest, a_device_at_rest_is_at_rest_below_any_threshold) {
  controller->SetInputThreshold(-5.0);
  Push();
  Rest();
  EXPECT_FALSE(controller->IsOperating());
}

TEST_F(ControllerTest, the_threshold_itself_yields_nothing_and_six_yields_the_sensitivity) {
  EXPECT_EQ(C::AdjustInputParameter(0.0009, 5.0, 5.0), 0.0);
  EXPECT_EQ(C::AdjustInputParameter(0.0009, 5.0, -5.0), 0.0);
  EXPECT_EQ(C::AdjustInputParameter(0.0009, 5.0, 4.9), 0.0);
  EXPECT_EQ(C::AdjustInputParameter(0.0009, 5.0, 6.0), 0.0009);
  EXPECT_EQ(C::AdjustInputParameter(0.0009, 5.0, -6.0), -0.0009);
  EXPECT_EQ(C::AdjustInputParameter(0.5, 5.0, 105.0), 50.0);
  EXPECT_EQ(C::AdjustInputParameter(0.5, 0.0, 0.0), 0.0);
  // No step at the edge.
  EXPECT_NEAR(C::AdjustInputParameter(0.0009, 5.0, 5.0 + 1e-9), 0.0, 1e-11);
}

TEST_F(ControllerTest, arguments_are_changed_in_place) {
  struct Row {
    int mode;
    double translation[3];
    double rotation[3];
  };
  // 105, 205, 305 beyond the threshold: 100, 200, 300 times 0.001, times the multipliers.
  for (const Row& row :
       {Row{0, {0.06, 0.1, 0.24}, {0.1, 0.2, 0.3}}, Row{1, {0.03, 0.02, 0.12}, {0.02, 0.04, 0.06}},
        Row{2, {0.05, 0.1, 0.15}, {0.02, 0.04, 0.06}}, Row{3, {0.08, 0.16, 0.3}, {0, 0, 0}}}) {
    controller->SetSensitivity(0.001);
    controller->SetNavigationMode(static_cast<NavigationMode>(row.mode));
    for (const double sign : {1.0, -1.0}) {
      Vector3 translation = Vector3(105, 205, 305) * sign;
      Vector3 rotation = Vector3(105, 205, 305) * sign;
      EXPECT_TRUE(controller->On3DControllerInput(translation, rotation));
      for (int axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(translation[axis], row.translation[axis] * sign, 1e-15) << row.mode << axis;
        EXPECT_NEAR(rotation[axis], row.rotation[axis] * sign, 1e-15) << row.mode << axis;
      }
    }
  }
}

TEST_F(ControllerTest, without_rotation_or_translation_that_part_is_zero) {
  controller->SetEnableRotation(false);
  Vector3 translation(105, 0, 0);
  Vector3 rotation(105, 0, 0);
  controller->On3DControllerInput(translation, rotation);
  EXPECT_EQ(rotation, Vector3());
  EXPECT_NE(translation, Vector3());
  controller->SetEnableRotation(true);
  controller->SetEnableTranslation(false);
  translation = rotation = {105, 0, 0};
  controller->On3DControllerInput(translation, rotation);
  EXPECT_EQ(translation, Vector3());
  EXPECT_NE(rotation, Vector3());
}

TEST_F(ControllerTest, an_input_that_is_no_number_is_refused_and_changes_nothing) {
  Push();
  TakeLines();
  for (const double bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity()}) {
    for (int axis = 0; axis < 6; ++axis) {
      Vector3 translation(105, 105, 105);
      Vector3 rotation(105, 105, 105);
      (axis < 3 ? translation : rotation)[axis % 3] = bad;
      EXPECT_FALSE(controller->On3DControllerInput(translation, rotation));
      EXPECT_EQ((axis < 3 ? rotation : translation), Vector3(105, 105, 105));
    }
  }
  EXPECT_EQ(TakeLines(), Lines{});
  EXPECT_TRUE(controller->IsOperating());
  controller->SetSensitivity(1e300);
  Vector3 translation(1e300, 0, 0);
  Vector3 rotation;
  EXPECT_FALSE(controller->On3DControllerInput(translation, rotation));  // it would become infinite
  EXPECT_EQ(translation, Vector3(1e300, 0, 0));
}

TEST_F(ControllerTest, a_number_that_is_not_used_need_not_be_one) {
  const double bad = std::numeric_limits<double>::quiet_NaN();
  controller->SetNavigationMode(Mode::MODE_PAN);
  for (const NavigationMode mode : {Mode::MODE_PAN, Mode::MODE_OBJECT}) {
    controller->SetNavigationMode(mode);
    controller->SetEnableRotation(mode == Mode::MODE_PAN);
    Vector3 translation(105, 0, 0);
    Vector3 rotation(bad, bad, bad);
    EXPECT_TRUE(controller->On3DControllerInput(translation, rotation));
    EXPECT_EQ(rotation, Vector3());
    EXPECT_TRUE(controller->IsOperating());
    Rest();
  }
  controller->SetEnableRotation(true);
  controller->SetEnableTranslation(false);
  Vector3 translation(0, bad, 0);
  Vector3 rotation(105, 0, 0);
  EXPECT_TRUE(controller->On3DControllerInput(translation, rotation));
  EXPECT_EQ(translation, Vector3());
  EXPECT_TRUE(controller->IsOperating());
}

TEST_F(ControllerTest, switched_off_takes_no_input) {
  controller->SetEnabled(false);
  Vector3 translation(105, 0, 0);
  Vector3 rotation;
  EXPECT_FALSE(controller->On3DControllerInput(translation, rotation));
  EXPECT_EQ(translation, Vector3(105, 0, 0));
  EXPECT_EQ(TakeLines(), Lines{});
}

// ---- the motion ----

TEST_F(ControllerTest, the_input_that_begins_the_operation_is_dropped) {
  EXPECT_TRUE(Push());
  EXPECT_EQ(TakeLines(), (Lines{"open record", "begin 10 at 0 0", "input (0.054 0 0) (0 0 0)"}));
  EXPECT_TRUE(controller->IsOperating());
  Frame();
  EXPECT_EQ(hub.applied, 0);  // nothing has moved
  EXPECT_TRUE(Push());
  EXPECT_EQ(TakeLines(), (Lines{"update (0.054 0 0) (0 0 0)", "input (0.054 0 0) (0 0 0)"}));
  Frame();
  EXPECT_EQ(hub.applied, 1);
}

TEST_F(ControllerTest, a_device_at_rest_ends_the_operation) {
  Push();
  Push();
  TakeLines();
  EXPECT_TRUE(Rest());
  EXPECT_EQ(TakeLines(), (Lines{"close record", "update (0 0 0) (0 0 0)", "end 10", "hide ball",
                                "input (0 0 0) (0 0 0)"}));
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_FALSE(HasOperation());
}

TEST_F(ControllerTest, a_zero_input_while_idle_starts_nothing_and_still_notifies) {
  EXPECT_TRUE(Rest());
  EXPECT_TRUE(Input({5, -5, 4}, {5, 0, -3}));  // within the dead zone
  EXPECT_EQ(TakeLines(), (Lines{"input (0 0 0) (0 0 0)", "input (0 0 0) (0 0 0)"}));
  EXPECT_FALSE(controller->IsOperating());
}

TEST_F(ControllerTest, the_record_holds_the_cameras_before_and_after) {
  Push();
  EXPECT_TRUE(SameBits(history.beginCamera, hub.view));
  const CameraParameters before = hub.view;
  for (int i = 0; i < 5; ++i) {
    Push();
    Frame();
  }
  Rest();
  EXPECT_TRUE(SameBits(history.endCamera, hub.view));
  EXPECT_NE(hub.view.eye, before.eye);
  ASSERT_EQ(history.GetElementCount(), 2);
  EXPECT_EQ(history.open, 0);
}

TEST_F(ControllerTest, a_shot_is_never_interrupted) {
  hub.BeginShot(TransitionShotParameters{LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}), 1.0, 1.0});
  TakeLines();
  EXPECT_TRUE(Push());
  EXPECT_EQ(TakeLines(), Lines{"input (0.054 0 0) (0 0 0)"});
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_TRUE(hub.IsShotActive());
  Land();
  EXPECT_TRUE(Push());
  EXPECT_TRUE(controller->IsOperating());
}

TEST_F(ControllerTest, without_a_hub_observers_are_told_and_nothing_begins) {
  controller->SetKorvane(nullptr);
  EXPECT_TRUE(Push());
  EXPECT_EQ(TakeLines(), Lines{"input (0.054 0 0) (0 0 0)"});
  EXPECT_FALSE(controller->IsOperating());
}

TEST_F(ControllerTest, settings_of_the_hub_are_borrowed_while_it_operates) {
  struct Row {
    int mode;
    bool keepsUpright;
    bool expected;
  };
  for (const Row& row : {Row{0, true, true}, Row{0, false, false}, Row{1, false, true}, Row{2, false, true},
                         Row{3, false, true}, Row{1, true, true}}) {
    for (const bool before : {true, false}) {
      ApplicationParameters& p = hub.GetApplicationParameters();
      p.cam3d_controller_mode = Cam3DControllerParameters::MODE_FLY;
      p.preserve_orbit_up_direction = before;
      p.align_orbit_up_direction = !before;
      controller->SetKeepSceneUpright(row.keepsUpright);
      controller->SetNavigationMode(static_cast<NavigationMode>(row.mode));
      EXPECT_EQ(controller->ShouldKeepSceneUpright(), row.expected);
      Push();
      EXPECT_EQ(SettingsOf(hub), (Lent{row.mode, row.expected, row.expected})) << row.mode;
      Rest();
      EXPECT_EQ(SettingsOf(hub), (Lent{2, before, !before})) << row.mode;
    }
  }
}

TEST_F(ControllerTest, settings_are_lent_around_the_record_and_it_operates_within_it) {
  const Lent hosts{2, true, false};
  const Lent devices{3, true, true};
  hub.GetApplicationParameters().cam3d_controller_mode = Mode::MODE_FLY;
  hub.GetApplicationParameters().preserve_orbit_up_direction = true;
  hub.GetApplicationParameters().align_orbit_up_direction = false;
  controller->SetNavigationMode(Mode::MODE_PAN);
  Lines seen;
  const auto see = [&](const char* moment, const Lent& settings, bool operates) {
    EXPECT_EQ(SettingsOf(hub), settings) << moment;
    EXPECT_EQ(controller->IsOperating(), operates) << moment;
    seen.emplace_back(moment);
  };
  history.onBegin = [&] { see("record opens", devices, false); };
  hub.onRecalculateSelection = [&] { see("operation begins", devices, true); };
  history.onEnd = [&] { see("record closes", hosts, true); };
  hub.onUpdate = [&] { see("last update", hosts, false); };
  Push();
  Rest();
  // Hub and operation both ask for bounds when the operation begins.
  EXPECT_EQ(seen,
            (Lines{"record opens", "operation begins", "operation begins", "record closes", "last update"}));
}

TEST_F(ControllerTest, an_orthographic_zoom_has_a_limit_where_the_host_wants_one) {
  EXPECT_FALSE(controller->GetLimitOrthographicZoom());
  controller->SetNavigationMode(Mode::MODE_PAN);
  const auto push = [this] {  // (1 - 345 * 0.0009 * 4) / 1 = -0.242
    Input({0, 0, -350}, {});
    Frame();
  };
  for (const bool before : {true, false}) {
    hub.view = WithOrthographic(LookAt({0, 0, 1}, {0, 0, 0}, {0, 1, 0}), 30, 20);
    controller->SetLimitOrthographicZoom(before);
    push();
    push();
    EXPECT_NEAR(hub.view.ortho_width, before ? 30.0 : 30.0 * -0.242, 1e-12);
    controller->SetLimitOrthographicZoom(!before);  // counts from the next frame on
    EXPECT_EQ(controller->GetLimitOrthographicZoom(), !before);
    push();
    EXPECT_NEAR(hub.view.ortho_width, 30.0 * -0.242, 1e-12);
    Rest();
  }
}

TEST_F(ControllerTest, walk_and_fly_turn_the_other_way) {
  for (const NavigationMode mode : {Mode::MODE_OBJECT, Mode::MODE_WALK, Mode::MODE_FLY}) {
    controller->SetNavigationMode(mode);
    Input({}, {105, 205, -305});
    Input({}, {105, 205, -305});
    const double factor = mode == Mode::MODE_OBJECT ? 0.0009 : -0.0009 * 0.2;
    EXPECT_LT((hub.lastRotation - Vector3(100, 200, -300) * factor).Length(), 1e-15) << mode;
    Rest();
  }
}

TEST_F(ControllerTest, in_pan_mode_no_rotation_reaches_the_operation_and_the_ball_never_shows) {
  controller->SetNavigationMode(Mode::MODE_PAN);
  for (int i = 0; i < 20; ++i) {
    Input({105, 0, 0}, {105, 105, 105});
    EXPECT_EQ(hub.lastRotation, Vector3());
    EXPECT_FALSE(ball.IsVisible());
    Frame();
  }
  Input({}, {105, 105, 105});
  EXPECT_FALSE(controller->IsOperating());  // which is a device at rest
}

TEST_F(ControllerTest, the_camera_follows_the_device_in_every_mode) {
  for (const NavigationMode mode : {Mode::MODE_OBJECT, Mode::MODE_WALK, Mode::MODE_FLY, Mode::MODE_PAN}) {
    controller->SetNavigationMode(mode);
    const Vector3 before = hub.view.eye;
    for (int i = 0; i < 10; ++i) {
      Input({105, 0, 105}, {0, 105, 0});
      Frame();
    }
    Rest();
    EXPECT_GT((hub.view.eye - before).Length(), 0.1) << mode;
    EXPECT_TRUE(hub.view.IsFinite());
  }
}

// ---- derived classes ----

namespace {

class Stubborn : public Cam3DController {
 public:
  bool GetEnabled() const override { return true; }
  bool IsOperating() const override { return false; }
};

}  // namespace

// What it is asked is not how it is steered; whether an input counts is what GetEnabled says.
TEST_F(ControllerTest, an_answer_of_a_derived_class_counts_where_it_is_asked) {
  Stubborn device;
  device.SetKorvane(&hub);
  device.SetEnabled(false);
  const auto push = [&device] {
    Vector3 translation(105, 0, 0);
    Vector3 rotation;
    return device.On3DControllerInput(translation, rotation);
  };
  EXPECT_TRUE(push());
  EXPECT_TRUE(HasOperation());
  TakeLines();
  EXPECT_TRUE(push());
  EXPECT_EQ(TakeLines(), Lines{"update (0.054 0 0) (0 0 0)"});
}

// ---- switching off ----

TEST_F(ControllerTest, to_be_switched_off_ends_a_motion) {
  Push();
  TakeLines();
  controller->SetEnabled(false);
  EXPECT_EQ(TakeLines(), (Lines{"close record", "update (0 0 0) (0 0 0)", "end 10", "hide ball"}));
  EXPECT_FALSE(controller->GetEnabled());
  controller->SetEnabled(false);
  controller->SetEnabled(true);
  controller->SetEnabled(true);
  EXPECT_EQ(TakeLines(), Lines{});
  EXPECT_TRUE(controller->GetEnabled());
}

// ---- modes ----

TEST_F(ControllerTest, a_mode_that_stays_tells_nobody) {
  controller->SetNavigationMode(Mode::MODE_OBJECT);
  EXPECT_EQ(TakeLines(), Lines{});
}

TEST_F(ControllerTest, another_mode_ends_a_motion_and_is_told) {
  Push();
  TakeLines();
  controller->SetNavigationMode(Mode::MODE_FLY);
  EXPECT_EQ(TakeLines(), (Lines{"close record", "update (0 0 0) (0 0 0)", "end 10", "hide ball", "mode 2"}));
  EXPECT_EQ(controller->GetNavigationMode(), Mode::MODE_FLY);
}

TEST_F(ControllerTest, mode_7_is_told_and_not_taken) {
  controller->SetNavigationMode(Mode::MODE_WALK);
  Push();
  TakeLines();
  controller->SetNavigationMode(static_cast<NavigationMode>(7));
  EXPECT_EQ(controller->GetNavigationMode(), Mode::MODE_WALK);
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_EQ(journal.Count("mode 7"), 1);
  controller->SetNavigationMode(static_cast<NavigationMode>(7));
  EXPECT_EQ(journal.Count("mode 7"), 2);
}

TEST_F(ControllerTest, a_toggle_of_the_pan_mode_twice_restores_the_earlier_mode) {
  for (const NavigationMode mode : {Mode::MODE_OBJECT, Mode::MODE_WALK, Mode::MODE_FLY}) {
    controller->SetNavigationMode(mode);
    TakeLines();
    controller->Toggle2DNavigationMode();
    EXPECT_EQ(controller->GetNavigationMode(), Mode::MODE_PAN);
    controller->Toggle2DNavigationMode();
    EXPECT_EQ(controller->GetNavigationMode(), mode);
    EXPECT_EQ(TakeLines(), (Lines{"mode 3", "mode " + std::to_string(mode)}));
  }
}

// ---- what may be missing ----

TEST_F(ControllerTest, everything_goes_without_a_ball_and_without_a_history) {
  controller->SetPivotBall(nullptr);
  controller->SetRewindHistory(nullptr);
  for (int i = 0; i < 8; ++i) {
    Turn();
    Frame();
  }
  EXPECT_TRUE(controller->IsOperating());
  EXPECT_NE(hub.view.eye, Vector3(0, 0, 10));
  Rest();
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_EQ(controller->GetPivotBall(), nullptr);
}

// ---- no allocation ----

TEST_F(ControllerTest, inputs_and_frames_allocate_nothing) {
  journal.recording = false;
  for (const NavigationMode mode : {Mode::MODE_OBJECT, Mode::MODE_WALK, Mode::MODE_FLY, Mode::MODE_PAN}) {
    controller->SetNavigationMode(mode);
    for (int i = 0; i < 8; ++i) {
      Input({105, 0, 105}, {0, 105, 0});
      Frame();
    }
    const AllocationCounter counter;
    for (int i = 0; i < 100; ++i) {
      Input({105, 0, 105}, {0, i % 8 == 0 ? 0.0 : 105.0, 0});
      Frame();
    }
    EXPECT_EQ(counter.GetAllocations(), 0U) << mode;
    Rest();
  }
  const AllocationCounter idle;
  for (int i = 0; i < 100; ++i) Rest();
  EXPECT_EQ(idle.GetAllocations(), 0U);
}
