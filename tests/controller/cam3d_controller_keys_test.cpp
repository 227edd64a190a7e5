// What the buttons of a device do.
#include <cmath>
#include <limits>

#include "controller/controller_scene.h"

using namespace Korvane;

namespace {

using Align = ViewAlignShotParameters;

constexpr int BUTTON = 40;

class KeysTest : public ControllerScene {
 protected:
  /// The button is pressed, and stands for this.
  bool Press(int id) {
    controller->MapKey(BUTTON, static_cast<Cam3DControllerKeyID>(id));
    return controller->On3DControllerKeyDown(BUTTON);
  }
  void LookFrom(const Vector3& eye, const Vector3& up) {
    hub.view = LookAt(eye, {0, 0, 0}, up);
    Frame();
    TakeLines();
  }
  /// A move goes along an arc, whose end takes some roundings.
  void ExpectEyeAt(const Vector3& eye) const { EXPECT_LT((hub.view.eye - eye).Length(), 1e-12); }
};

int FlagsOf(const Align& shot) {
  int bits = 0;
  for (int i = 0; i < 6; ++i) bits |= int{shot.directionFlags[i]} << i;
  return bits;
}

// Which of its commands a press has come to, through the slots.
class Listening : public OpenController {
 public:
  bool AlignToView(CameraDirection direction) override { return Add("align " + std::to_string(direction)); }
  bool FitToView() override { return Add("fit"); }
  bool GoToHomeView() override { return Add("home"); }
  bool RotateView(double degrees) override { return Add("roll " + std::to_string(degrees)); }
  bool StepHistory(bool forward) override { return Add(forward ? "forward" : "back"); }
  void Toggle2DNavigationMode() override { Add("toggle"); }
  void SetEnabled(bool value) override {
    Add(value ? "on" : "off");
    OpenController::SetEnabled(value);
  }

  Lines lines;

 private:
  bool Add(const std::string& line) {
    lines.push_back(line);
    return true;
  }
};

}  // namespace

// ---- the table ----

TEST_F(KeysTest, each_id_has_its_action) {
  struct Row {
    int id;
    const char* action;
  };
  constexpr Row TABLE[] = {
      {0, nullptr},    {1, "align 2"}, {2, "align 3"}, {3, "align 5"},         {4, "align 4"},
      {5, "align 1"},  {6, "align 0"}, {7, "home"},    {8, "roll -90.000000"}, {9, "roll 90.000000"},
      {10, "forward"}, {11, "back"},   {12, nullptr},  {13, nullptr},          {14, nullptr},
      {15, "fit"},     {16, nullptr},  {17, nullptr},  {18, nullptr},          {19, nullptr},
      {20, nullptr},   {21, "toggle"},
  };
  Listening device;
  device.SetKorvane(&hub);
  ControllerObserver heard(journal);
  device.AddObserver(&heard);
  for (const Row& row : TABLE) {
    device.lines.clear();
    TakeLines();
    EXPECT_TRUE(device.MapKey(row.id + 100, static_cast<Cam3DControllerKeyID>(row.id)));
    EXPECT_TRUE(device.On3DControllerKeyDown(row.id + 100));
    const Lines expected = row.action != nullptr ? Lines{"off", row.action, "on"} : Lines{"off", "on"};
    EXPECT_EQ(device.lines, expected) << row.id;
    EXPECT_EQ(TakeLines(), Lines{"key down " + std::to_string(row.id)});
  }
}

TEST_F(KeysTest, ids_have_their_numbers) {
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_TOP), 1);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_BOTTOM), 2);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_RIGHT), 3);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_LEFT), 4);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_BACK), 5);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_FRONT), 6);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_HOME), 7);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_ROLL_CLOCKWISE), 8);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_ROLL_COUNTER_CLOCKWISE), 9);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_HISTORY_FORWARD), 10);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_HISTORY_BACK), 11);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_FIT), 15);
  EXPECT_EQ(static_cast<int>(CAM3D_KEY_PAN_MODE), 21);
  EXPECT_EQ(CAM3D_KEY_COUNT, 22);
}

// ---- buttons ----

TEST_F(KeysTest, an_id_of_22_or_more_is_not_mapped) {
  for (const int id : {22, 23, 1000, std::numeric_limits<int>::max(), -1, std::numeric_limits<int>::min()}) {
    EXPECT_FALSE(controller->MapKey(1, static_cast<Cam3DControllerKeyID>(id))) << id;
  }
  EXPECT_FALSE(controller->On3DControllerKeyDown(1));
  EXPECT_FALSE(controller->On3DControllerKeyUp(1));
  EXPECT_EQ(TakeLines(), Lines{});
}

TEST_F(KeysTest, a_button_can_be_mapped_anew) {
  controller->MapKey(-7, CAM3D_KEY_HOST_12);
  EXPECT_TRUE(controller->MapKey(-7, CAM3D_KEY_HOST_13));
  EXPECT_TRUE(controller->On3DControllerKeyDown(-7));
  EXPECT_TRUE(controller->On3DControllerKeyUp(-7));
  EXPECT_EQ(TakeLines(), (Lines{"key down 13", "key up 13"}));
}

TEST_F(KeysTest, a_button_without_an_action_still_ends_a_motion) {
  Push();
  TakeLines();
  EXPECT_TRUE(Press(12));
  EXPECT_EQ(TakeLines(),
            (Lines{"close record", "update (0 0 0) (0 0 0)", "end 10", "hide ball", "key down 12"}));
  EXPECT_TRUE(controller->GetEnabled());
  EXPECT_FALSE(controller->IsOperating());
}

TEST_F(KeysTest, switched_off_takes_no_button) {
  controller->MapKey(BUTTON, CAM3D_KEY_HOST_12);
  controller->SetEnabled(false);
  EXPECT_FALSE(controller->On3DControllerKeyDown(BUTTON));
  EXPECT_FALSE(controller->On3DControllerKeyUp(BUTTON));
  EXPECT_EQ(TakeLines(), Lines{});
  EXPECT_FALSE(controller->GetEnabled());
}

TEST_F(KeysTest, without_a_hub_a_press_is_nothing_and_a_release_is_told) {
  controller->MapKey(BUTTON, CAM3D_KEY_TOP);
  controller->SetKorvane(nullptr);
  EXPECT_FALSE(controller->On3DControllerKeyDown(BUTTON));
  EXPECT_TRUE(controller->On3DControllerKeyUp(BUTTON));
  EXPECT_EQ(TakeLines(), Lines{"key up 1"});
}

TEST_F(KeysTest, commands_are_false_without_a_hub) {
  controller->SetKorvane(nullptr);
  EXPECT_FALSE(controller->AlignToView(Align::CAMERA_TOP));
  EXPECT_FALSE(controller->FitToView());
  EXPECT_FALSE(controller->GoToHomeView());
  EXPECT_FALSE(controller->RotateView(90));
  EXPECT_FALSE(controller->StepHistory(true));
  EXPECT_EQ(controller->GetAlignDir(), -1);
  EXPECT_EQ(TakeLines(), Lines{});
}

// ---- the six sides ----

// The eye ends on that side of the scene: front is x, top is y, the side is z.
TEST_F(KeysTest, the_six_view_keys_go_to_the_six_sides) {
  struct Row {
    int id;
    int flag;
    Vector3 eye;
  };
  for (const Row& row : {Row{1, 2, {0, 1, 0}}, Row{2, 3, {0, -1, 0}}, Row{3, 5, {0, 0, -1}},
                         Row{4, 4, {0, 0, 1}}, Row{5, 1, {-1, 0, 0}}, Row{6, 0, {1, 0, 0}}}) {
    hub.view = LookAt({4, 5, 6}, {0, 0, 0}, {0, 1, 0});
    Frame();
    TakeLines();
    EXPECT_TRUE(Press(row.id));
    EXPECT_EQ(TakeLines(),
              (Lines{"open record", "align shot", "watch shot", "key down " + std::to_string(row.id)}));
    EXPECT_EQ(FlagsOf(hub.align), 1 << row.flag) << row.id;
    EXPECT_EQ(hub.align.duration, 0.4);
    EXPECT_EQ(hub.align.rollAngle, 0.0);
    EXPECT_EQ(hub.align.panAngle, 0.0);
    EXPECT_FALSE(hub.align.useCustom);
    EXPECT_FALSE(hub.align.fit);
    EXPECT_FALSE(hub.align.keepSceneUp);
    Land();
    EXPECT_EQ(TakeLines(), Lines{"close record"}) << row.id;
    EXPECT_NEAR((hub.view.eye.Normalized() - row.eye).Length(), 0.0, 1e-9) << row.id;
    EXPECT_EQ(history.open, 0);
    EXPECT_TRUE(SameBits(history.endCamera, hub.view));
  }
}

TEST_F(KeysTest, a_side_that_is_none_is_refused) {
  for (const int direction : {-1, 6, 7, std::numeric_limits<int>::max()}) {
    EXPECT_FALSE(controller->AlignToView(static_cast<Align::CameraDirection>(direction)));
  }
  EXPECT_EQ(TakeLines(), Lines{});
}

// ---- home and fit ----

TEST_F(KeysTest, goes_home) {
  EXPECT_TRUE(Press(7));
  EXPECT_EQ(TakeLines(), (Lines{"open record", "transition shot", "watch shot", "key down 7"}));
  EXPECT_TRUE(SameBits(hub.transition.targetCamera, hub.GetHomeCamera()));
  EXPECT_EQ(hub.transition.easeEnd, 1.0);
  EXPECT_EQ(hub.transition.duration, 0.5);
  Land();
  EXPECT_EQ(TakeLines(), Lines{"close record"});
  ExpectEyeAt(hub.GetHomeCamera().eye);
}

TEST_F(KeysTest, fits_the_scene_and_places_the_ball) {
  hub.view.pivot = {1, 2, 3};
  EXPECT_TRUE(Press(15));
  EXPECT_EQ(TakeLines(), (Lines{"open record", "fit", "transition shot", "watch shot", "place ball (1 2 3)",
                                "size ball", "key down 15"}));
  Land();
  EXPECT_EQ(history.open, 0);
}

TEST_F(KeysTest, commands_go_without_a_ball_and_without_a_history) {
  controller->SetPivotBall(nullptr);
  controller->SetRewindHistory(nullptr);
  EXPECT_TRUE(Press(15));
  EXPECT_TRUE(Press(1));
  EXPECT_EQ(TakeLines(), (Lines{"fit", "transition shot", "watch shot", "key down 15", "align shot",
                                "watch shot", "key down 1"}));
  Land();
  EXPECT_FALSE(controller->StepHistory(false));
}

// ---- the roll ----

TEST_F(KeysTest, knows_the_side_from_which_the_view_looks_along_an_axis) {
  struct Row {
    Vector3 eye;
    Vector3 up;
    int direction;
  };
  for (const Row& row :
       {Row{{10, 0, 0}, {0, 1, 0}, 0}, Row{{-10, 0, 0}, {0, 1, 0}, 1}, Row{{0, 10, 0}, {1, 0, 0}, 2},
        Row{{0, -10, 0}, {1, 0, 0}, 3}, Row{{0, 0, 10}, {0, 1, 0}, 4}, Row{{0, 0, -10}, {0, 1, 0}, 5},
        Row{{1, 0, 10}, {0, 1, 0}, -1}, Row{{0.01, 0, 10}, {0, 1, 0}, -1},
        Row{{0.001, 0, 10}, {0, 1, 0}, 4}}) {
    LookFrom(row.eye, row.up);
    EXPECT_EQ(controller->GetAlignDir(), row.direction);
  }
}

// The eye on +y of a scene whose world has z up and x in front looks from the side that front x up names.
TEST_F(KeysTest, the_sides_are_those_of_the_world) {
  ApplicationParameters& p = hub.GetApplicationParameters();
  p.scene_is_world = false;
  p.world_up_direction = {0, 0, 2};
  p.world_front_direction = {3, 0, 0};
  LookFrom({0, 0, 10}, {1, 0, 0});
  EXPECT_EQ(controller->GetAlignDir(), 2);
  LookFrom({0, 10, 0}, {0, 0, 1});  // looks along -y, which is front x up
  EXPECT_EQ(controller->GetAlignDir(), 5);
  LookFrom({10, 0, 0}, {0, 0, 1});
  EXPECT_EQ(controller->GetAlignDir(), 0);
}

TEST_F(KeysTest, rolls_from_each_side) {
  struct Row {
    Vector3 eye;
    Vector3 up;
    int direction;
  };
  for (const Row& row :
       {Row{{10, 0, 0}, {0, 1, 0}, 0}, Row{{-10, 0, 0}, {0, 1, 0}, 1}, Row{{0, 10, 0}, {1, 0, 0}, 2},
        Row{{0, -10, 0}, {1, 0, 0}, 3}, Row{{0, 0, 10}, {0, 1, 0}, 4}, Row{{0, 0, -10}, {0, 1, 0}, 5}}) {
    for (const int id : {8, 9}) {
      LookFrom(row.eye, row.up);
      EXPECT_TRUE(Press(id));
      EXPECT_EQ(TakeLines(),
                (Lines{"open record", "align shot", "watch shot", "key down " + std::to_string(id)}));
      EXPECT_EQ(FlagsOf(hub.align), 1 << row.direction);
      EXPECT_EQ(hub.align.duration, 0.4);
      EXPECT_EQ(hub.align.rollAngle, id == 8 ? -90.0 : 90.0);
      EXPECT_EQ(hub.align.panAngle, 0.0);
      EXPECT_FALSE(hub.align.fit || hub.align.keepSceneUp || hub.align.useCustom);
      Land();
      EXPECT_NEAR((hub.view.eye.Normalized() - row.eye.Normalized()).Length(), 0.0, 1e-9);
      EXPECT_NEAR(hub.view.up.Normalized().Dot(row.up), 0.0, 1e-9) << row.direction;
      EXPECT_EQ(history.open, 0);
    }
  }
}

TEST_F(KeysTest, rolls_from_no_side) {
  LookFrom({4, 5, 6}, {0, 1, 0});
  EXPECT_EQ(controller->GetAlignDir(), -1);
  Press(9);
  EXPECT_EQ(FlagsOf(hub.align), 0);
  EXPECT_EQ(hub.align.rollAngle, 90.0);
  Land();
  EXPECT_TRUE(hub.view.IsFinite());
  EXPECT_EQ(history.open, 0);
}

// ---- the history ----

TEST_F(KeysTest, steps_through_the_history_and_records_nothing) {
  const CameraParameters first = hub.view;
  Press(1);
  Land();
  const CameraParameters second = hub.view;
  ASSERT_EQ(history.GetElementCount(), 2);
  TakeLines();
  EXPECT_TRUE(Press(11));
  EXPECT_EQ(TakeLines(), (Lines{"transition shot", "key down 11"}));
  EXPECT_TRUE(SameBits(hub.transition.targetCamera, first));
  EXPECT_EQ(hub.transition.easeEnd, 1.0);
  EXPECT_EQ(hub.transition.duration, 0.5);
  Land();
  ExpectEyeAt(first.eye);
  EXPECT_TRUE(Press(11));  // there is nothing before
  EXPECT_EQ(TakeLines(), Lines{"key down 11"});
  EXPECT_FALSE(controller->StepHistory(false));
  EXPECT_TRUE(controller->StepHistory(true));
  Land();
  ExpectEyeAt(second.eye);
  EXPECT_FALSE(controller->StepHistory(true));
  EXPECT_EQ(history.GetElementCount(), 2);
  EXPECT_EQ(history.open, 0);
}

// With the scene kept upright the target is straightened; a free model comes back as it was.
TEST_F(KeysTest, a_step_straightens_the_view_where_the_scene_is_upright) {
  const CameraParameters leaning = LookAt({5, 5, 5}, {0, 0, 0}, {0.3, 1, 0});
  for (const bool upright : {true, false}) {
    history.ClearHistory();
    history.AddHistoryElement(leaning, nullptr);
    history.AddHistoryElement(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}), nullptr);
    controller->SetKeepSceneUpright(upright);
    ASSERT_TRUE(controller->StepHistory(false));
    const CameraParameters target = hub.transition.targetCamera;
    const Vector3 right = (target.centre - target.eye).Cross(target.up).Normalized();
    EXPECT_EQ(std::abs(right.y) < 1e-12, upright);
    EXPECT_EQ(target.eye, leaning.eye);
    Land();
  }
}

TEST_F(KeysTest, a_step_in_an_empty_history_is_refused) {
  EXPECT_FALSE(controller->StepHistory(true));
  EXPECT_FALSE(controller->StepHistory(false));
  EXPECT_EQ(TakeLines(), Lines{});
}

// ---- commands and records ----

TEST_F(KeysTest, a_second_command_ends_the_first_and_both_are_recorded) {
  Press(1);
  Frame(200);
  Press(7);
  EXPECT_TRUE(hub.IsShotActive());
  Land();
  EXPECT_EQ(history.open, 0);
  ExpectEyeAt(hub.GetHomeCamera().eye);
  EXPECT_EQ(journal.Count("open record"), 2);
  EXPECT_EQ(journal.Count("close record"), 2);
}

TEST_F(KeysTest, a_command_that_the_hub_refuses_closes_its_record_at_once) {
  hub.GetHomeCamera().eye.x = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(controller->GoToHomeView());
  EXPECT_EQ(TakeLines(), (Lines{"open record", "transition shot", "close record"}));
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(KeysTest, a_history_that_is_taken_away_has_its_record_closed) {
  Press(1);
  EXPECT_EQ(history.open, 1);
  controller->SetRewindHistory(nullptr);
  EXPECT_EQ(history.open, 0);
  Land();
  EXPECT_EQ(history.open, 0);
  Press(6);
  EXPECT_EQ(history.open, 0);
}

TEST_F(KeysTest, a_hub_that_is_taken_away_has_the_record_closed_and_the_move_goes_on) {
  Press(1);
  controller->SetKorvane(nullptr);
  EXPECT_EQ(history.open, 0);
  EXPECT_TRUE(hub.IsShotActive());
  Land();
  EXPECT_NEAR(hub.view.eye.y, 10.0, 1e-9);
}
