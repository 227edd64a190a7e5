// What a host, or another controller, may do to a motion at any moment.
#include <limits>
#include <optional>

#include "controller/controller_scene.h"

using namespace Korvane;

namespace {

using NavigationMode = Cam3DControllerParameters::NavigationMode;

class RobustnessTest : public HostScene {};

}  // namespace

// ---- somebody else ends the operation ----

TEST_F(RobustnessTest, an_operation_that_another_ends_is_put_away_at_once) {
  ShowBall();
  hub.EndOperation(OPERATION_ALL);
  EXPECT_FALSE(ball.IsVisible());
  ExpectAllGivenBack();
}

// It is deflected still, and operates: but it moves nothing until it has come to rest.
TEST_F(RobustnessTest, a_device_whose_operation_another_ends_has_to_come_to_rest) {
  ShowBall();
  hub.EndOperation(OPERATION_ALL);
  TakeLines();
  EXPECT_TRUE(controller->IsOperating());
  for (int i = 0; i < 6; ++i) {
    EXPECT_TRUE(Turn());
    Frame();
    EXPECT_EQ(TakeLines(), Lines{"input (0 0 0) (0 0.09 0)"});
    EXPECT_TRUE(controller->IsOperating());
  }
  ExpectAllGivenBack();
  EXPECT_TRUE(Rest());
  EXPECT_EQ(TakeLines(), Lines{"input (0 0 0) (0 0 0)"});
  EXPECT_FALSE(controller->IsOperating());
  Push();
  EXPECT_EQ(TakeLines(), (Lines{"open record", "begin 10 at 0 0", "input (0.054 0 0) (0 0 0)"}));
}

TEST_F(RobustnessTest, to_be_switched_off_or_to_another_mode_counts_as_rest) {
  for (const bool off : {true, false}) {
    Push();
    hub.EndOperation(OPERATION_ALL);
    if (off) {
      controller->SetEnabled(false);
      controller->SetEnabled(true);
    } else {
      controller->SetNavigationMode(Mode::MODE_FLY);
    }
    EXPECT_FALSE(controller->IsOperating());
    Push();
    EXPECT_TRUE(HasOperation());
    Rest();
    ExpectAllGivenBack();
  }
}

TEST_F(RobustnessTest, a_rest_within_the_end_that_another_brings_about_counts) {
  Push();
  history.onEnd = [this] { Rest(); };
  hub.EndOperation(OPERATION_ALL);
  EXPECT_FALSE(controller->IsOperating());
  history.onEnd = nullptr;
  Push();
  EXPECT_TRUE(HasOperation());
}

TEST_F(RobustnessTest, a_host_that_ends_it_and_begins_a_shot_keeps_its_view) {
  Push();
  hub.EndOperation(OPERATION_ALL);
  hub.BeginShot(TransitionShotParameters{LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}), 1.0, 0.4});
  for (int i = 0; i < 60; ++i) {
    Push();
    Frame();
  }
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_LT((hub.view.eye - Vector3(0, 0, 20)).Length(), 1e-12);
  ExpectAllGivenBack();
  Rest();
  Push();
  EXPECT_TRUE(HasOperation());
}

TEST_F(RobustnessTest, an_operation_that_is_replaced_is_noticed_with_the_next_input) {
  Push();
  hub.MemoryHub::BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0);  // the old one is gone without a word
  TakeLines();
  Push();
  EXPECT_EQ(TakeLines(), (Lines{"close record", "hide ball", "input (0.054 0 0) (0 0 0)"}));
  EXPECT_TRUE(HasOperation());  // that of the other
  Rest();
  hub.EndOperation(OPERATION_CAM3D_CONTROLLER);
  ExpectAllGivenBack();
}

TEST_F(RobustnessTest, a_hub_that_refuses_the_operation_is_not_asked_again_before_the_device_has_rested) {
  class RefusingHub : public ControllerHub {
   public:
    using ControllerHub::ControllerHub;
    bool BeginOperation(OperationType /*type*/, int /*x*/, int /*y*/) override {
      ++asked;
      return false;
    }
    int asked = 0;
  };
  RefusingHub refusing(journal, hub.view);
  controller->SetKorvane(&refusing);
  for (int i = 0; i < 5; ++i) Push();
  EXPECT_EQ(refusing.asked, 1);
  EXPECT_EQ(history.open, 0);
  EXPECT_TRUE(controller->IsOperating());
  Rest();
  EXPECT_FALSE(controller->IsOperating());
  controller->SetKorvane(&hub);
}

TEST_F(RobustnessTest, the_end_of_another_kind_does_not_matter) {
  Push();
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.EndOperation(OPERATION_PAN);
  EXPECT_TRUE(controller->IsOperating());
  EXPECT_EQ(history.open, 1);
}

// ---- two controllers ----

TEST_F(RobustnessTest, of_two_controllers_the_one_that_begins_takes_over) {
  OpenController second;
  second.SetKorvane(&hub);
  second.SetRewindHistory(&history);
  second.SetNavigationMode(Mode::MODE_WALK);
  const auto tellSecond = [&](double x) {
    Vector3 translation(x, 0, 0);
    Vector3 rotation;
    second.On3DControllerInput(translation, rotation);
  };
  const auto modeIs = [&](NavigationMode mode) {
    return hub.GetApplicationParameters().cam3d_controller_mode == mode;
  };
  for (const bool firstEndsFirst : {true, false}) {
    Push();
    tellSecond(105);
    EXPECT_TRUE(modeIs(Mode::MODE_WALK));
    EXPECT_EQ(history.open, 1);
    Push();  // the first is deflected still
    EXPECT_TRUE(modeIs(Mode::MODE_WALK));
    tellSecond(205);
    EXPECT_EQ(hub.lastTranslation, Vector3(200 * 0.0009 * 0.3, 0, 0));
    Rest();
    Push();  // it has come to rest, and takes over again
    EXPECT_TRUE(modeIs(Mode::MODE_OBJECT));
    EXPECT_EQ(history.open, 1);
    tellSecond(305);
    EXPECT_TRUE(modeIs(Mode::MODE_OBJECT));
    EXPECT_EQ(history.open, 1);
    if (firstEndsFirst) controller->SetEnabled(false);
    second.SetEnabled(false);
    controller->SetEnabled(false);
    ExpectAllGivenBack();
    controller->SetEnabled(true);
    second.SetEnabled(true);
  }
}

// What a host does with a controller while another's motion ends for it: each keeps it from beginning.
TEST_F(RobustnessTest, a_begin_that_ends_anothers_motion_goes_no_further_than_the_host_lets_it) {
  const std::function<void(std::unique_ptr<OpenController>&)> deeds[] = {
      [](auto& second) { second->SetEnabled(false); },
      [](auto& second) { second.reset(); },
      [](auto& second) { second->SetNavigationMode(Mode::MODE_FLY); },
      [](auto& second) { second->SetKorvane(nullptr); },
      [this](auto& /*second*/) {
        hub.BeginShot(TransitionShotParameters{hub.view, 1.0, 0.4});
      },
  };
  for (const auto& deed : deeds) {
    auto second = std::make_unique<OpenController>();
    second->SetKorvane(&hub);
    second->SetRewindHistory(&history);
    Push();
    history.onEnd = [&] {
      history.onEnd = nullptr;
      deed(second);
    };
    Vector3 translation(105, 0, 0);
    Vector3 rotation;
    second->On3DControllerInput(translation, rotation);
    EXPECT_FALSE(HasOperation());
    ExpectAllGivenBack();
    hub.EndShot();
    Rest();
  }
}

// An observer that stands before the motion's own hears of its end first, and lets another begin.
TEST_F(RobustnessTest, a_motion_that_begins_within_the_end_of_anothers_gives_the_hosts_settings_back) {
  OperationHooks hooks;
  hub.AddOperationObserver(&hooks);
  OpenController second;
  second.SetKorvane(&hub);
  second.SetNavigationMode(Mode::MODE_FLY);
  hooks.onEnd = [&] {
    hooks.onEnd = nullptr;
    Vector3 translation(105, 0, 0);
    Vector3 rotation;
    second.On3DControllerInput(translation, rotation);
  };
  Push();
  hub.EndOperation(OPERATION_CAM3D_CONTROLLER);
  EXPECT_EQ(hub.GetApplicationParameters().cam3d_controller_mode, Mode::MODE_FLY);
  second.SetEnabled(false);
  Rest();
  ExpectAllGivenBack();
  hub.RemoveOperationObserver(&hooks);
}

TEST_F(RobustnessTest, a_partner_that_is_taken_away_while_another_is_being_set_stays_away) {
  ControllerHub other(journal, hub.view);
  Push();
  history.onEnd = [this] { controller->SetKorvane(nullptr); };
  controller->SetKorvane(&other);
  history.onEnd = nullptr;
  Push();
  EXPECT_FALSE(other.IsOperationActive(OPERATION_CAM3D_CONTROLLER));
  controller->SetKorvane(&hub);
  Rest();
  Push();
  ControllerHistory next(journal);
  history.onEnd = [this] { controller->SetRewindHistory(nullptr); };
  controller->SetRewindHistory(&next);
  history.onEnd = nullptr;
  Rest();
  Push();
  EXPECT_EQ(next.open, 0);
  EXPECT_EQ(history.open, 0);
}

// A host whose device is read while the library asks it for something.
TEST_F(RobustnessTest, an_input_within_the_begin_of_the_motion_is_a_step_of_it) {
  OperationHooks hooks;
  hub.AddOperationObserver(&hooks);
  hooks.onBegin = [this] { Push(); };
  Push();
  EXPECT_TRUE(HasOperation());
  EXPECT_EQ(history.open, 1);
  Push();
  EXPECT_TRUE(HasOperation());
  hooks.onBegin = nullptr;
  hub.onRequest = [this] { Push(); };
  Rest();
  hub.onRequest = nullptr;
  Rest();
  ExpectAllGivenBack();
  hub.RemoveOperationObserver(&hooks);
}

TEST_F(RobustnessTest, a_controller_may_be_deleted_while_the_record_of_a_command_ends_as_it_is_switched_off) {
  class OtherWatch : public ShotObserver {
   public:
    void OnEndShot(Shot* /*shot*/, const CameraParameters& /*camera*/) override {}
  };
  OtherWatch other;
  controller->GoToHomeView();
  hub.SetActiveShotObserver(&other);
  Land();
  ASSERT_EQ(history.open, 1);
  history.onEnd = [this] { controller.reset(); };
  controller->SetEnabled(false);
  history.onEnd = nullptr;
  EXPECT_EQ(controller, nullptr);
  EXPECT_EQ(history.open, 0);
}

// ---- collaborators that go ----

TEST_F(RobustnessTest, another_hub_ends_the_motion_in_the_one_that_was_there) {
  ControllerHub other(journal, LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}));
  Push();
  controller->SetKorvane(&hub);  // the same: nothing
  EXPECT_TRUE(controller->IsOperating());
  controller->SetKorvane(&other);
  ExpectAllGivenBack();
  Push();  // what was deflected in the one does not carry the other away
  EXPECT_TRUE(controller->IsOperating());
  EXPECT_FALSE(other.IsOperationActive(OPERATION_CAM3D_CONTROLLER));
  Rest();
  Push();
  EXPECT_TRUE(other.IsOperationActive(OPERATION_CAM3D_CONTROLLER));
  controller->SetKorvane(nullptr);
  EXPECT_FALSE(other.IsOperationActive(OPERATION_CAM3D_CONTROLLER));
}

TEST_F(RobustnessTest, a_hub_that_is_destroyed_is_forgotten) {
  auto other = std::make_unique<ControllerHub>(journal, LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}));
  controller->SetKorvane(other.get());
  ShowBall();
  other.reset();
  controller->Draw();
  EXPECT_TRUE(Push());
  EXPECT_FALSE(ball.IsVisible());  // with the next input
  EXPECT_TRUE(controller->IsOperating());
  EXPECT_TRUE(Rest());
  EXPECT_FALSE(controller->IsOperating());
  controller->SetKorvane(&hub);
  EXPECT_TRUE(Push());
  EXPECT_TRUE(controller->IsOperating());
  Rest();
  EXPECT_FALSE(HasOperation());
}

TEST_F(RobustnessTest, what_a_destroyed_hub_has_left_goes_with_the_rest_or_with_the_next_hub) {
  for (const bool rests : {true, false}) {
    auto other = std::make_unique<ControllerHub>(journal, LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}));
    controller->SetKorvane(other.get());
    ShowBall();
    other.reset();
    rests ? static_cast<void>(Rest()) : controller->SetKorvane(nullptr);
    EXPECT_FALSE(ball.IsVisible()) << rests;
    Rest();
    EXPECT_FALSE(controller->IsOperating());
  }
}

TEST_F(RobustnessTest, what_is_being_set_may_die_before_it_is) {
  auto other = std::make_unique<ControllerHub>(journal, LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}));
  auto otherHistory = std::make_unique<ControllerHistory>(journal);
  Push();
  history.onEnd = [&] { other.reset(); };
  controller->SetKorvane(other.get());
  EXPECT_EQ(controller->GetParts().partners.hub.Get(), nullptr);
  controller->SetKorvane(&hub);
  Rest();
  Push();
  history.onEnd = [&] { otherHistory.reset(); };
  controller->SetRewindHistory(otherHistory.get());
  EXPECT_EQ(controller->GetParts().partners.history.Get(), nullptr);
  Rest();
  ExpectAllGivenBack();
}

TEST_F(RobustnessTest, what_is_set_while_another_is_being_set_stays) {
  ControllerHub other(journal, LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}));
  ControllerHistory otherHistory(journal);
  ControllerHistory last(journal);
  Push();
  history.onEnd = [&] { controller->SetRewindHistory(&last); };
  controller->SetRewindHistory(&otherHistory);
  EXPECT_EQ(controller->GetParts().partners.history.Get(), &last);
  controller->SetRewindHistory(&history);
  Rest();
  Push();
  history.onEnd = [&] { controller->SetKorvane(&other); };
  controller->SetKorvane(nullptr);
  EXPECT_EQ(controller->GetParts().partners.hub.Get(), &other);
  history.onEnd = nullptr;
  controller->SetKorvane(&hub);
  ExpectAllGivenBack();
}

TEST_F(RobustnessTest, a_history_that_is_taken_away_in_a_motion_has_its_record_closed) {
  Push();
  ControllerHistory other(journal);
  controller->SetRewindHistory(&history);
  EXPECT_EQ(history.open, 1);
  controller->SetRewindHistory(&other);
  EXPECT_EQ(history.open, 0);
  EXPECT_TRUE(controller->IsOperating());
  Rest();
  EXPECT_EQ(other.open, 0);
  ExpectAllGivenBack();
}

TEST_F(RobustnessTest, a_history_a_ball_and_a_renderer_may_die_in_a_motion) {
  auto mortalHistory = std::make_unique<ControllerHistory>(journal);
  auto mortalBall = std::make_unique<ControllerBall>(journal);
  auto mortalRenderer = std::make_unique<RecordingRenderer>();
  mortalBall->SetKorvane(&hub);
  controller->SetRewindHistory(mortalHistory.get());
  controller->SetPivotBall(mortalBall.get());
  controller->SetRenderer(mortalRenderer.get());
  controller->Create();
  for (int i = 0; i < 6; ++i) Turn();
  EXPECT_TRUE(mortalBall->IsVisible());
  mortalHistory.reset();
  mortalBall.reset();
  mortalRenderer.reset();
  Turn();
  controller->Draw();
  EXPECT_EQ(controller->GetPivotBall(), nullptr);
  EXPECT_EQ(controller->GetRenderer(), nullptr);
  EXPECT_TRUE(Rest());
  ExpectAllGivenBack();
}

TEST_F(RobustnessTest, another_ball_hides_the_one_that_shows) {
  ShowBall();
  ControllerBall other(journal);
  other.SetKorvane(&hub);
  controller->SetPivotBall(&other);
  EXPECT_FALSE(ball.IsVisible());
  Turn();
  EXPECT_TRUE(other.IsVisible());
  controller->SetPivotBall(nullptr);
  EXPECT_FALSE(other.IsVisible());
}

TEST_F(RobustnessTest, a_controller_that_goes_gives_everything_back) {
  ShowBall();
  controller.reset();
  EXPECT_FALSE(ball.IsVisible());
  ExpectAllGivenBack();
  hub.PerformOperations();
}

TEST_F(RobustnessTest, a_controller_that_goes_closes_the_record_of_a_command_whose_move_goes_on) {
  controller->GoToHomeView();
  controller.reset();
  EXPECT_EQ(history.open, 0);
  EXPECT_TRUE(hub.IsShotActive());
  Land();
  EXPECT_EQ(history.open, 0);
}

TEST_F(RobustnessTest, a_warning_of_a_controller_that_goes_is_not_taken_down) {
  controller->Create();
  hub.GetApplicationParameters().auto_switch_projection = false;
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  controller->SetNavigationMode(Mode::MODE_WALK);
  Push();
  EXPECT_EQ(platform.GetTimerCount(), 1);
  controller.reset();
  EXPECT_EQ(platform.GetTimerCount(), 0);
  platform.Advance(1000);
}

// A command whose shot another has watched to its end, and a motion: two records that end with the hub, in
// the first of which the history goes.
TEST_F(RobustnessTest, a_history_that_goes_while_the_hub_goes_has_every_record_closed) {
  class OtherWatch : public ShotObserver {
   public:
    void OnEndShot(Shot* /*shot*/, const CameraParameters& /*camera*/) override {}
  };
  OtherWatch other;
  controller->GoToHomeView();
  hub.SetActiveShotObserver(&other);
  Land();
  Push();
  ASSERT_EQ(history.open, 2);
  history.onEnd = [this] { controller->SetRewindHistory(nullptr); };
  controller->SetKorvane(nullptr);
  ExpectAllGivenBack();
}

// ---- within the begin ----

TEST_F(RobustnessTest, switched_off_within_the_begin_begins_nothing) {
  history.onBegin = [this] { controller->SetEnabled(false); };
  Push();
  EXPECT_FALSE(controller->IsOperating());
  ExpectAllGivenBack();
  history.onBegin = nullptr;
  controller->SetEnabled(true);
  hub.onRecalculateSelection = [this] { controller->SetEnabled(false); };
  Push();
  EXPECT_FALSE(controller->IsOperating());
  ExpectAllGivenBack();
}

TEST_F(RobustnessTest, a_begin_that_the_host_ends_within_leaves_nothing_open) {
  hub.onRecalculateSelection = [this] { hub.EndOperation(OPERATION_ALL); };
  Push();
  EXPECT_TRUE(controller->IsOperating());  // until the device has come to rest
  ExpectAllGivenBack();
  Push();
  ExpectAllGivenBack();
  Rest();
  EXPECT_FALSE(controller->IsOperating());
}

TEST_F(RobustnessTest, a_mode_or_a_hub_that_is_set_when_the_record_opens_begins_nothing) {
  history.onBegin = [this] { controller->SetNavigationMode(Mode::MODE_FLY); };
  Push();
  EXPECT_FALSE(controller->IsOperating());
  ExpectAllGivenBack();
  history.onBegin = [this] { controller->SetKorvane(nullptr); };
  Push();
  EXPECT_FALSE(controller->IsOperating());
  ExpectAllGivenBack();
}

TEST_F(RobustnessTest, a_hub_may_die_when_the_record_opens) {
  auto other = std::make_unique<ControllerHub>(journal, LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}));
  controller->SetKorvane(other.get());
  history.onBegin = [&] { other.reset(); };
  Push();
  EXPECT_FALSE(controller->IsOperating());
  history.onBegin = nullptr;
  controller->SetKorvane(&hub);
  Push();
  EXPECT_TRUE(HasOperation());
}

// Somebody who begins a shot while the way is being cleared has the shot.
TEST_F(RobustnessTest, a_shot_that_begins_within_the_begin_is_not_interrupted) {
  const auto shoot = [this] {
    hub.BeginShot(TransitionShotParameters{LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}), 1.0, 1.0});
  };
  OperationHooks watch;
  watch.onEnd = shoot;
  for (const bool atRecord : {true, false}) {
    if (atRecord) {
      history.onBegin = shoot;
    } else {
      hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0);  // of another
      hub.AddOperationObserver(&watch);
    }
    TakeLines();
    Push();
    EXPECT_EQ(journal.Count("open record"), int{atRecord});
    EXPECT_FALSE(controller->IsOperating()) << atRecord;
    EXPECT_TRUE(hub.IsShotActive());
    ExpectAllGivenBack();
    history.onBegin = nullptr;
    hub.RemoveOperationObserver(&watch);
    hub.EndShot();
  }
}

TEST_F(RobustnessTest, an_input_within_the_end_is_heard_and_begins_nothing_before_it) {
  Push();
  int within = 0;
  history.onEnd = [&] {
    if (++within == 1) Push();
  };
  controller->SetEnabled(false);
  EXPECT_EQ(within, 1);
  EXPECT_FALSE(controller->IsOperating());
  ExpectAllGivenBack();
}

// ---- observers ----

TEST_F(RobustnessTest, observers_may_remove_themselves_while_they_are_told) {
  ControllerObserver last(journal, "last ");
  controller->AddObserver(&last);
  observer.onInput = [this] { controller->RemoveObserver(&observer); };
  Rest();
  Rest();
  EXPECT_EQ(observer.inputs, 1);
  EXPECT_EQ(last.inputs, 2);
}

TEST_F(RobustnessTest, nobody_is_told_of_a_controller_that_an_observer_has_deleted) {
  ControllerObserver last(journal, "last ");
  controller->AddObserver(&last);
  controller->MapKey(1, CAM3D_KEY_TOP);
  observer.onInput = [this] { controller.reset(); };
  Vector3 translation(105, 0, 0);
  Vector3 rotation;
  EXPECT_TRUE(controller->On3DControllerInput(translation, rotation));
  EXPECT_EQ(last.inputs, 0);
  ExpectAllGivenBack();
}
