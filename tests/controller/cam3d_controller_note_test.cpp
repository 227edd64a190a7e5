// In which view the device may move, and what the view says where it may not.
#include "controller/controller_scene.h"

using namespace Korvane;

namespace {

using NavigationMode = Cam3DControllerParameters::NavigationMode;

class NoteTest : public ControllerScene {
 protected:
  /// An input where walking is not possible.
  void Refuse() {
    hub.GetApplicationParameters().auto_switch_projection = false;
    hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
    controller->SetNavigationMode(Mode::MODE_WALK);
    Push();
  }
};

}  // namespace

// ---- modes and projections ----

TEST_F(NoteTest, walk_and_fly_need_a_perspective_view) {
  for (const bool orthographic : {false, true}) {
    for (const bool alongAxes : {false, true}) {
      hub.view.projection_type = orthographic ? CameraParameters::ProjectionType::Orthographic
                                              : CameraParameters::ProjectionType::Perspective;
      hub.view.perspective_with_ortho = alongAxes;
      for (int mode = 0; mode < 4; ++mode) {
        controller->SetNavigationMode(static_cast<NavigationMode>(mode));
        const bool always = mode == 0 || mode == 3;
        EXPECT_EQ(controller->IsValidMode(), always || (!orthographic && !alongAxes)) << mode;
      }
    }
  }
  controller->SetKorvane(nullptr);
  EXPECT_TRUE(controller->IsValidMode());
}

TEST_F(NoteTest, an_invalid_mode_makes_the_view_perspective) {
  hub.notesCamera = true;
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  hub.view.perspective_with_ortho = true;
  controller->SetNavigationMode(Mode::MODE_WALK);
  TakeLines();
  EXPECT_TRUE(Push());
  EXPECT_EQ(TakeLines(), (Lines{"apply", "open record", "begin 10 at 0 0", "input (0.027 0 0) (0 0 0)"}));
  EXPECT_EQ(hub.view.projection_type, CameraParameters::ProjectionType::Perspective);
  EXPECT_FALSE(hub.view.perspective_with_ortho);
}

TEST_F(NoteTest, an_invalid_mode_is_warned_of_where_the_projection_may_not_change) {
  struct Row {
    NavigationMode mode;
    StringID text;
  };
  hub.GetApplicationParameters().auto_switch_projection = false;
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  ASSERT_TRUE(controller->Create());
  for (const Row& row :
       {Row{Mode::MODE_WALK, static_cast<StringID>(99)}, Row{Mode::MODE_FLY, static_cast<StringID>(100)}}) {
    controller->SetNavigationMode(row.mode);
    TakeLines();
    const int requested = hub.requested;
    EXPECT_TRUE(Push());
    EXPECT_EQ(TakeLines(), Lines{});  // nobody is told of the input
    EXPECT_EQ(hub.requested, requested + 1);
    EXPECT_FALSE(controller->IsOperating());
    DynamicIcon2D* const shown = controller->GetParts().note.Get();
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown, renderer.GetStringTexture(row.text));
    renderer.ReleaseStringTexture(row.text);
    platform.Advance(499);
    EXPECT_NE(controller->GetParts().note.Get(), nullptr);
    platform.Advance(1);
    EXPECT_EQ(controller->GetParts().note.Get(), nullptr);
    EXPECT_EQ(hub.requested, requested + 2);
    platform.Advance(2000);
    EXPECT_EQ(hub.requested, requested + 2);  // once
  }
}

TEST_F(NoteTest, a_switch_of_the_projection_takes_the_warning_away) {
  controller->Create();
  hub.GetApplicationParameters().auto_switch_projection = false;
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  controller->SetNavigationMode(Mode::MODE_FLY);
  Push();
  EXPECT_EQ(platform.GetTimerCount(), 1);
  hub.GetApplicationParameters().auto_switch_projection = true;
  Push();
  EXPECT_EQ(controller->GetParts().note.Get(), nullptr);
  EXPECT_EQ(platform.GetTimerCount(), 0);
  EXPECT_TRUE(controller->IsOperating());
}

TEST_F(NoteTest, a_second_refusal_starts_the_half_second_anew) {
  ASSERT_TRUE(controller->Create());
  Refuse();
  platform.Advance(300);
  Push();
  platform.Advance(499);
  EXPECT_NE(controller->GetParts().note.Get(), nullptr);
  platform.Advance(1);
  EXPECT_EQ(controller->GetParts().note.Get(), nullptr);
}

TEST_F(NoteTest, the_end_of_a_warning_takes_a_note_of_the_host_along) {
  DynamicIcon2D note(3);
  Refuse();
  controller->SetHUDMessage(&note);
  platform.Advance(499);
  EXPECT_EQ(controller->GetParts().note.Get(), &note);
  platform.Advance(1);
  EXPECT_EQ(controller->GetParts().note.Get(), nullptr);
}

// A shot is not interrupted, but the view becomes perspective under it.
TEST_F(NoteTest, an_invalid_mode_makes_the_view_perspective_also_while_a_shot_runs) {
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  hub.view.perspective_with_ortho = true;
  controller->SetNavigationMode(Mode::MODE_FLY);
  hub.BeginShot(TransitionShotParameters{LookAt({0, 0, 20}, {0, 0, 0}, {0, 1, 0}), 1.0, 1.0});
  TakeLines();
  EXPECT_TRUE(Push());
  EXPECT_EQ(TakeLines(), Lines{"input (0.045 0 0) (0 0 0)"});
  EXPECT_EQ(hub.view.projection_type, CameraParameters::ProjectionType::Perspective);
  EXPECT_FALSE(hub.view.perspective_with_ortho);
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_TRUE(hub.IsShotActive());
}

// ---- the texts ----

TEST_F(NoteTest, create_takes_two_texts_and_destroy_gives_them_back) {
  EXPECT_TRUE(controller->Create());
  EXPECT_EQ(renderer.CountCalls("CreateMessageHUD"), 2);
  const int icons = renderer.GetLiveIconCount();
  EXPECT_TRUE(controller->Create());  // once is enough
  EXPECT_EQ(renderer.GetLiveIconCount(), icons);
  EXPECT_TRUE(controller->Destroy());
  EXPECT_EQ(renderer.GetLiveIconCount(), icons - 2);
  EXPECT_TRUE(controller->Destroy());
  controller->SetRenderer(nullptr);
  EXPECT_FALSE(controller->Create());
  EXPECT_FALSE(controller->Destroy());
}

TEST_F(NoteTest, draws_the_note_in_the_middle_of_the_bottom) {
  DynamicIcon2D note(3);
  note.SetSize(100, 20);
  controller->SetHUDMessage(&note);
  renderer.ClearCalls();
  controller->Draw();
  EXPECT_EQ(note.GetPosition(), Vector2(400, 20));
  // The whole view, by its centre and half extents, in the mode of what lies over it.
  EXPECT_EQ(renderer.GetCalls().front(), "BeginRender(400, 300, 400, 300, 0)");
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 1);
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 1);
  EXPECT_EQ(renderer.CountCalls("EndRender"), 1);
  controller->SetHUDMessage(nullptr);
  renderer.ClearCalls();
  controller->Draw();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 1);
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 0);
  EXPECT_EQ(renderer.CountCalls("EndRender"), 1);
}

TEST_F(NoteTest, draws_nothing_where_the_pass_does_not_open_or_somebody_is_missing) {
  DynamicIcon2D note(3);
  controller->SetHUDMessage(&note);
  renderer.FailOnce("BeginRender");
  controller->Draw();
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 0);
  EXPECT_EQ(renderer.CountCalls("EndRender"), 0);
  renderer.ClearCalls();
  controller->SetKorvane(nullptr);
  controller->Draw();
  controller->SetKorvane(&hub);
  controller->SetRenderer(nullptr);
  controller->Draw();
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(NoteTest, a_warning_does_not_outlive_its_text) {
  controller->Create();
  hub.GetApplicationParameters().auto_switch_projection = false;
  hub.view.projection_type = CameraParameters::ProjectionType::Orthographic;
  controller->SetNavigationMode(Mode::MODE_WALK);
  Push();
  controller->Destroy();
  renderer.ClearCalls();
  controller->Draw();
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 0);
  EXPECT_EQ(controller->GetParts().note.Get(), nullptr);
}
