// The editor of a shot: from the shot into its controls and back, and what its controls do.
#include "zovhost/shot_editor_panel.h"

#include <gtest/gtest.h>
#include <imgui_internal.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/panel_hand.h"
#include "korvane/story.h"
#include "korvane/storyboard.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

namespace {

using Korvane::ShotSpecification;
using zovhost::ShotEditorPanel;

Korvane::CameraParameters MakeCamera() {
  Korvane::CameraParameters camera;
  camera.eye = {0.0, -10.0, 2.0};
  camera.centre = {0.0, 0.0, 2.0};
  camera.up = {0.0, 0.0, 1.0};
  return camera;
}

// A story with one shot, which is open in the panel.
class ShotEditorPanelTest : public testing::Test {
 protected:
  ShotEditorPanelTest() : hub(MakeCamera()) {
    board.SetKorvane(&hub);
    board.SetShotEditor(&panel);
    board.Create();
    board.SetVisible(true);
    sequence = board.CreateSequence();
    shot = sequence != nullptr ? sequence->GetFirstShot() : nullptr;
  }

  ManualPlatform platform;
  MemoryHub hub;
  ShotEditorPanel panel;
  Korvane::Storyboard board;
  Korvane::Sequence* sequence = nullptr;
  ShotSpecification* shot = nullptr;
};

TEST_F(ShotEditorPanelTest, a_new_shot_opens_it) {
  ASSERT_NE(shot, nullptr);
  EXPECT_TRUE(panel.IsPanelVisible());
  EXPECT_EQ(panel.GetShot(), shot);
}

// Each field, and each type: what does not show of a type must not be lost either.
TEST_F(ShotEditorPanelTest, what_it_has_read_it_writes_back_unchanged) {
  for (int type = 0; type < ShotSpecification::SHOT_TYPE_COUNT; ++type) {
    shot->SetShotType(static_cast<ShotSpecification::ShotType>(type));
    shot->SetName(L"\u5e84\u5bc5 house");
    shot->SetDuration(4.25);
    shot->SetTransitionDuration(0.75);
    shot->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_WHITE);
    shot->SetCameraPosition(Korvane::TARGET_CAM_END);
    shot->SetInOutDistance(1.5);
    shot->SetLeftRightDistance(-2.5);
    shot->SetUpDownDistance(3.5);
    shot->SetLeftRightAngle(-45.5);
    shot->SetUpDownAngle(30.25);
    shot->SetLookAtCenterOfInterest(true);
    panel.TransferControls(false);
    panel.TransferControls(true);
    EXPECT_EQ(shot->GetShotType(), type);
    EXPECT_EQ(shot->GetName(), L"\u5e84\u5bc5 house");
    EXPECT_EQ(shot->GetDuration(), 4.25);
    EXPECT_EQ(shot->GetTransitionDuration(), 0.75);
    EXPECT_EQ(shot->GetTransitionType(), ShotSpecification::TRANSITION_FADE_THROUGH_WHITE);
    EXPECT_EQ(shot->GetCameraPosition(), Korvane::TARGET_CAM_END);
    EXPECT_EQ(shot->GetInOutDistance(), 1.5);
    EXPECT_EQ(shot->GetLeftRightDistance(), -2.5);
    EXPECT_EQ(shot->GetUpDownDistance(), 3.5);
    EXPECT_EQ(shot->GetLeftRightAngle(), -45.5);
    EXPECT_EQ(shot->GetUpDownAngle(), 30.25);
    EXPECT_TRUE(shot->GetLookAtCenterOfInterest());
  }
}

TEST_F(ShotEditorPanelTest, a_shot_that_goes_takes_the_panel_with_it) {
  board.DeleteShot(shot);
  EXPECT_FALSE(panel.IsPanelVisible());
  panel.TransferControls(true);
  panel.TransferControls(false);
  EXPECT_EQ(panel.GetShot(), nullptr);
}

// ---- by hand ----

class ShotEditorHandTest : public ShotEditorPanelTest, public PanelHand {
 protected:
  void SetUp() override {
    Open([this] { panel.Draw(RIGHT, TOP); });
  }
};

TEST_F(ShotEditorHandTest, a_typed_name_is_taken_when_it_is_finished) {
  const std::wstring before = shot->GetName();
  Click(FIELD, GetLine(0));
  Type("A");
  EXPECT_EQ(shot->GetName(), before);
  Click(600, 400);
  EXPECT_EQ(shot->GetName().size(), before.size() + 1);
}

TEST_F(ShotEditorHandTest, a_number_is_typed_after_a_click_with_ctrl) {
  shot->SetDuration(3.0);
  panel.TransferControls(false);
  PushControl(true);
  Click(FIELD, GetLine(4));  // below name, move, view and begin
  PushControl(false);
  Type("5.5");
  EXPECT_EQ(shot->GetDuration(), 3.0);
  Click(600, 400);
  EXPECT_EQ(shot->GetDuration(), 5.5);
}

TEST_F(ShotEditorHandTest, what_is_not_live_waits_for_its_button) {
  panel.SetLive(false);
  const std::wstring before = shot->GetName();
  Click(FIELD, GetLine(0));
  Type("B");
  Click(600, 400);
  EXPECT_EQ(shot->GetName(), before);
  panel.SaveChanges();
  EXPECT_EQ(shot->GetName().size(), before.size() + 1);
}

class LowShotEditorTest : public ShotEditorPanelTest, public PanelHand {
 protected:
  static constexpr float FOOT = 200.0F;

  void SetUp() override {
    Open([this] { panel.Draw(RIGHT, TOP, FOOT); });
  }
  // By a finger: a button counts as held only while the system says so.
  void DragDown(int way) {
    constexpr int TITLE = 20;
    Touch(SDL_FINGERDOWN, FIELD, TITLE);
    Touch(SDL_FINGERMOTION, FIELD, TITLE + way / 2);
    Touch(SDL_FINGERMOTION, FIELD, TITLE + way);
    Touch(SDL_FINGERUP, FIELD, TITLE + way);
  }
  static float GetTop() {
    for (const ImGuiWindow* const page : ImGui::GetCurrentContext()->Windows) {
      if (std::string_view(page->Name).find("Shot") != std::string_view::npos) return page->Pos.y;
    }
    return 0.0F;
  }
};

TEST_F(LowShotEditorTest, ends_above_what_lies_below_it_also_where_it_has_been_moved_to) {
  EXPECT_NEAR(panel.GetEdges()->foot, FOOT, 1.0F);
  DragDown(40);
  EXPECT_NEAR(GetTop(), TOP + 40.0F, 1.0F);
  EXPECT_NEAR(panel.GetEdges()->foot, FOOT, 1.0F);
  board.DeleteShot(shot);
  Rest();
  ASSERT_FALSE(panel.GetEdges().has_value());
  ASSERT_NE(board.CreateSequence(), nullptr);
  Rest();
  EXPECT_NEAR(panel.GetEdges()->foot, FOOT, 1.0F) << "at its place again";
}

TEST_F(ShotEditorHandTest, its_cross_closes_it) {
  Click(static_cast<int>(RIGHT) - 14, static_cast<int>(TOP) + 12);
  EXPECT_FALSE(panel.IsPanelVisible());
  EXPECT_EQ(board.GetShotInShotEditor(), nullptr);
}

}  // namespace
