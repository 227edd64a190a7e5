#include "korvane/shot_editor.h"

#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "korvane/walk_recorder.h"
#include "story/open_storyboard.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

const Lines NOTHING{};
const Lines SAVED{"editor transfers 1"};

/// A sequence of two shots.
struct ShotEditorTest : StoryboardTest {
  ShotEditorTest() {
    Frame();
    Frame();
    Frame();
    Forget();
  }
  void Open(ShotSpecification* shot) {
    editor.SetShot(sequence, shot);
    Forget();
  }

  Sequence* sequence = AddSequence(2);
  ShotSpecification* first = sequence->GetShot(0);
  ShotSpecification* second = sequence->GetShot(1);
};

// ---- what it shows ----

TEST_F(ShotEditorTest, shows_nothing_at_first) {
  EXPECT_EQ(editor.GetShot(), nullptr);
  EXPECT_EQ(editor.GetSequence(), nullptr);
  EXPECT_EQ(editor.GetThumbnail(), nullptr);
  EXPECT_EQ(editor.GetStoryboard(), board.get());
  EXPECT_FALSE(editor.Show());
  EXPECT_EQ(journal.Take(), NOTHING);
}

TEST_F(ShotEditorTest, a_shot_goes_into_the_controls_and_show_opens_them) {
  EXPECT_TRUE(editor.SetShot(sequence, first));
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 0"}));
  EXPECT_EQ(editor.GetShot(), first);
  EXPECT_EQ(editor.GetSequence(), sequence);
  EXPECT_TRUE(editor.Show());
  EXPECT_EQ(journal.Take(), (Lines{"editor visible 1"}));
}

TEST_F(ShotEditorTest, another_shot_saves_the_one_of_before) {
  Open(first);
  EXPECT_TRUE(editor.SetShot(sequence, second));
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 1", "editor transfers 0"}));
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 1);
  EXPECT_EQ(editor.GetThumbnail(), board->GetThumbnail(second));
}

TEST_F(ShotEditorTest, without_a_shot_or_a_sequence_it_closes) {
  struct Row {
    Sequence* sequence;
    ShotSpecification* shot;
  };
  for (const Row& row : {Row{nullptr, nullptr}, Row{sequence, nullptr}, Row{nullptr, first}}) {
    editor.SetShot(nullptr, nullptr);
    Open(first);
    EXPECT_TRUE(editor.SetShot(row.sequence, row.shot));
    EXPECT_EQ(journal.Take(), (Lines{"editor transfers 1", "editor visible 0"}));
    EXPECT_FALSE(editor.Show());
    EXPECT_EQ(journal.Take(), NOTHING);
  }
}

TEST_F(ShotEditorTest, a_shot_that_is_gone_is_not_saved) {
  Open(first);
  sequence->DeleteShot(first);
  EXPECT_EQ(editor.GetShot(), nullptr);
  EXPECT_FALSE(editor.Show());
  editor.SetShot(sequence, second);
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 0"}));
}

TEST_F(ShotEditorTest, asks_its_storyboard_whether_a_walk_can_be_recorded_and_is) {
  EXPECT_TRUE(editor.CanRecordWalk());
  EXPECT_FALSE(editor.IsRecordingWalk());
  ASSERT_TRUE(board->BeginRecordWalk());
  EXPECT_FALSE(editor.CanRecordWalk());
  EXPECT_TRUE(editor.IsRecordingWalk());
  const JournalEditor alone(journal);
  EXPECT_FALSE(alone.CanRecordWalk());
  EXPECT_FALSE(alone.IsRecordingWalk());
}

TEST_F(ShotEditorTest, takes_a_walk_only_for_a_shot_in_a_sequence) {
  const WalkRecorder walk;
  const auto type = first->GetShotType();
  editor.SetShot(nullptr, first);
  editor.WalkRecorded(&walk);
  EXPECT_EQ(first->GetShotType(), type);
  editor.SetShot(sequence, first);
  editor.WalkRecorded(nullptr);
  EXPECT_EQ(first->GetShotType(), type);
  JournalEditor alone(journal);
  alone.SetShot(sequence, first);
  alone.WalkRecorded(&walk);
  EXPECT_EQ(first->GetShotType(), ShotSpecification::SHOT_RECORDED_WALK);
}

// ---- saving ----

TEST_F(ShotEditorTest, saving_stops_what_plays_and_makes_the_picture_anew) {
  Open(first);
  board->PlaybackSingleShot(second);
  journal.Take();
  editor.SaveChanges();
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 1", "stopped"}));
  EXPECT_FALSE(board->IsPlayingBack());
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 1);
}

TEST_F(ShotEditorTest, saving_ends_a_recording_first) {
  Open(first);
  ASSERT_TRUE(editor.RecordWalk());
  journal.Take();
  editor.SaveChanges();
  EXPECT_EQ(journal.Take(), (Lines{"editor records 0", "editor transfers 1"}));
  EXPECT_FALSE(editor.IsRecordingWalk());
}

TEST_F(ShotEditorTest, another_shot_ends_a_recording_first) {
  Open(first);
  ASSERT_TRUE(editor.RecordWalk());
  journal.Take();
  editor.SetShot(sequence, second);
  EXPECT_EQ(journal.Take(), (Lines{"editor records 0", "editor transfers 1", "editor transfers 0"}));
}

// ---- the preview ----

TEST_F(ShotEditorTest, a_preview_saves_begins_and_is_stopped_by_the_same_button) {
  Open(first);
  EXPECT_TRUE(editor.PreviewShot(true));
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 1", "previews 1", "editor previews 1"}));
  EXPECT_TRUE(board->IsPreviewing());
  EXPECT_FALSE(editor.PreviewShot(true));
  EXPECT_EQ(journal.Take(), (Lines{"stopped", "editor previews 0"}));
  EXPECT_FALSE(board->IsPreviewing());
  EXPECT_TRUE(editor.PreviewShot(false));
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 1", "previews 0", "editor previews 1"}));
}

TEST_F(ShotEditorTest, without_a_shot_there_is_no_preview) {
  EXPECT_FALSE(editor.PreviewShot(false));
  EXPECT_FALSE(board->IsPreviewing());
}

// ---- resets ----

TEST_F(ShotEditorTest, the_camera_of_now_becomes_that_of_the_shot) {
  Open(first);
  hub.view = LookAt({1, 2, 30}, {1, 2, 0}, {0, 1, 0});
  hub.view.perspective_with_ortho = true;
  EXPECT_TRUE(editor.ResetCamera());
  EXPECT_EQ(first->GetCameraParameters().eye, Vector3(1, 2, 30));
  EXPECT_FALSE(first->GetCameraParameters().perspective_with_ortho);
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 1", "editor transfers 1"}));
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 1);
}

TEST_F(ShotEditorTest, without_a_hub_or_a_shot_no_camera_is_taken) {
  EXPECT_FALSE(editor.ResetCamera());
  Open(first);
  board->SetKorvane(nullptr);
  EXPECT_FALSE(editor.ResetCamera());
  EXPECT_EQ(first->GetCameraParameters().eye, Vector3(10, 0, 10));
}

/// What was set before is left where a row does not name it.
struct DefaultsRow {
  int type;
  int position;
  double leftRight, upDown, inOut, leftRightAngle, upDownAngle;
  bool looks;
};
constexpr double LEFT = -91.0;
constexpr double UP = -92.0;
constexpr double IN = -93.0;
constexpr double TURN = -94.0;
constexpr double TILT = -95.0;
// Seen from 10.2 units away, 6.3 wide and 4.9 high: 10.2 * 0.75 = 7.65, rounded up 8; 7; 5, of which half is
// 2.5. A type that leaves the position has 7, and what looked at the centre did so before.
constexpr DefaultsRow DEFAULTS[] = {
    {0, 1, 7.0, UP, IN, TURN, TILT, false},  {1, 1, 7.0, UP, IN, TURN, TILT, false},
    {2, 2, LEFT, UP, 8.0, TURN, TILT, true}, {3, 0, LEFT, UP, 8.0, TURN, TILT, true},
    {4, 0, 0.0, 5.0, 2.5, TURN, TILT, true}, {5, 2, 0.0, 5.0, 2.5, TURN, TILT, true},
    {6, 0, LEFT, UP, IN, 45.0, 0.0, true},   {7, 0, LEFT, UP, IN, 45.0, 0.0, true},
    {8, 0, 0.0, 0.0, 0.5, TURN, TILT, true}, {9, 7, LEFT, UP, IN, TURN, TILT, true},
    {10, 0, LEFT, UP, IN, TURN, TILT, true},
};

void SetAll(ShotSpecification& shot, bool looks) {
  CameraParameters camera = LookAt({0, 0, 10.2}, {0, 0, 0}, {0, 1, 0});
  camera.ortho_width = 6.3;
  camera.ortho_height = 4.9;
  shot.SetCameraParameters(camera);
  shot.SetCameraPosition(static_cast<TargetCamPos>(7));
  shot.SetLeftRightDistance(LEFT);
  shot.SetUpDownDistance(UP);
  shot.SetInOutDistance(IN);
  shot.SetLeftRightAngle(TURN);
  shot.SetUpDownAngle(TILT);
  shot.SetLookAtCenterOfInterest(looks);
}

TEST_F(ShotEditorTest, the_parameters_of_each_type_become_what_suits_it) {
  Open(first);
  for (const DefaultsRow& row : DEFAULTS) {
    SetAll(*first, row.type != 4 && row.type != 5);
    first->SetShotType(static_cast<ShotSpecification::ShotType>(row.type));
    journal.Take();
    EXPECT_TRUE(editor.ResetParameters()) << row.type;
    EXPECT_EQ(journal.Take(), (Lines{"editor transfers 1", "editor transfers 0"}));
    EXPECT_EQ(first->GetCameraPosition(), row.position) << row.type;
    EXPECT_EQ(first->GetLeftRightDistance(), row.leftRight) << row.type;
    EXPECT_EQ(first->GetUpDownDistance(), row.upDown) << row.type;
    EXPECT_EQ(first->GetInOutDistance(), row.inOut) << row.type;
    EXPECT_EQ(first->GetLeftRightAngle(), row.leftRightAngle) << row.type;
    EXPECT_EQ(first->GetUpDownAngle(), row.upDownAngle) << row.type;
    EXPECT_EQ(first->GetLookAtCenterOfInterest(), row.looks) << row.type;
    EXPECT_EQ(first->GetDuration(), 2.0);
  }
}

TEST_F(ShotEditorTest, a_type_that_is_none_has_no_parameters) {
  Open(first);
  for (const int type : {-1, 11, 1000}) {
    SetAll(*first, true);
    first->SetShotType(static_cast<ShotSpecification::ShotType>(type));
    EXPECT_FALSE(editor.ResetParameters());
    EXPECT_EQ(first->GetInOutDistance(), IN);
  }
  board->SetShotEditor(nullptr);
  journal.Take();
  EXPECT_FALSE(editor.ResetParameters());
  EXPECT_EQ(journal.Take(), NOTHING);
}

// ---- a recorded walk ----

TEST_F(ShotEditorTest, a_walk_becomes_the_shot_with_its_times) {
  Open(first);
  first->AddRecordedElement(hub.view, 99.0);
  first->SetCameraPosition(TARGET_CAM_END);
  WalkRecorder recorder;
  CameraParameters camera = hub.view;
  const double steps[] = {0.0, 0.25, 0.5, 0.27};
  const double times[] = {0.0, 0.0, 0.25, 0.75, 1.02};
  for (const double step : steps) {
    camera.eye.x += 1.0;
    recorder.OnPerformOperation(OPERATION_FLY, step, camera);
  }
  editor.WalkRecorded(&recorder);
  EXPECT_EQ(first->GetShotType(), ShotSpecification::SHOT_RECORDED_WALK);
  EXPECT_EQ(first->GetCameraPosition(), TARGET_CAM_START);
  EXPECT_EQ(first->GetCameraParameters().eye, recorder.GetBeginCamera().eye);
  ASSERT_EQ(first->GetRecordedElementCount(), 5U);
  for (std::uint64_t i = 0; i < 5; ++i) {
    EXPECT_DOUBLE_EQ(first->GetRecordedElement(i).time, times[i]);
    const Vector3 eye = i == 0 ? recorder.GetBeginCamera().eye : recorder.GetCameras()[i - 1].eye;
    EXPECT_EQ(first->GetRecordedElement(i).camera.eye, eye);
  }
  EXPECT_EQ(first->GetDuration(), 1.1);  // 1.02 rounded up to tenths
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 0"}));
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 1);
}

TEST_F(ShotEditorTest, a_walk_of_whole_tenths_lasts_as_long) {
  Open(first);
  WalkRecorder recorder;
  recorder.OnPerformOperation(OPERATION_FLY, 0.5, hub.view);
  recorder.OnPerformOperation(OPERATION_FLY, 1.0, hub.view);
  editor.WalkRecorded(&recorder);
  EXPECT_EQ(first->GetDuration(), 1.5);
}

TEST_F(ShotEditorTest, a_walk_without_a_frame_is_its_first_camera_and_lasts_no_time) {
  Open(first);
  const WalkRecorder recorder;
  editor.WalkRecorded(&recorder);
  EXPECT_EQ(first->GetRecordedElementCount(), 1U);
  EXPECT_EQ(first->GetDuration(), 0.0);
}

TEST_F(ShotEditorTest, a_walk_into_nothing_only_refreshes_the_controls) {
  const WalkRecorder recorder;
  editor.WalkRecorded(&recorder);
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 0"}));
  Open(first);
  editor.WalkRecorded(nullptr);
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 0"}));
  EXPECT_EQ(first->GetShotType(), ShotSpecification::SHOT_ORBIT);
}

// ---- without a storyboard ----

TEST(ShotEditor, does_nothing_without_a_storyboard) {
  Journal journal;
  JournalEditor editor(journal);
  Sequence sequence;
  auto* const shot = new ShotSpecification(CameraParameters{});
  sequence.AddShot(shot);
  editor.SetShot(&sequence, shot);
  EXPECT_EQ(journal.Take(), (Lines{"editor transfers 0"}));
  editor.SaveChanges();
  EXPECT_EQ(journal.Take(), SAVED);
  EXPECT_FALSE(editor.PreviewShot(true));
  EXPECT_FALSE(editor.RecordWalk());
  EXPECT_FALSE(editor.CancelRecordWalk());
  EXPECT_FALSE(editor.CanRecordWalk());
  EXPECT_FALSE(editor.IsRecordingWalk());
  EXPECT_FALSE(editor.ResetParameters());
  EXPECT_EQ(editor.GetThumbnail(), nullptr);
  EXPECT_EQ(journal.Take(), NOTHING);
  EXPECT_FALSE(editor.ResetCamera());
  EXPECT_EQ(journal.Take(), SAVED);
}

TEST_F(ShotEditorTest, forgets_a_storyboard_that_is_gone) {
  Open(first);
  board.reset();
  EXPECT_EQ(editor.GetStoryboard(), nullptr);
  EXPECT_EQ(editor.GetShot(), nullptr);
  EXPECT_FALSE(editor.RecordWalk());
}

// ---- the host ends it ----

/// An editor that ends within so many calls of its own operations.
struct MortalStage : StoryboardStage {
  MortalStage() {
    board->SetShotEditor(mortal.get());
    mortal->onCall = [this] {
      if (++calls == last) (endsBoard ? EndBoard() : EndEditor());
    };
  }
  void EndEditor() { mortal.reset(); }
  void EndBoard() { board.reset(); }

  int calls = 0;
  int last = 0;
  bool endsBoard = false;
  std::unique_ptr<JournalEditor> mortal = std::make_unique<JournalEditor>(journal);
  Sequence* sequence = AddSequence(2);
};

using Use = void (*)(MortalStage& stage);
constexpr Use USES[] = {
    [](MortalStage& stage) { stage.board->EditShot(stage.sequence->GetShot(0)); },
    [](MortalStage& stage) { stage.mortal->SetShot(nullptr, nullptr); },
    [](MortalStage& stage) { stage.mortal->SaveChanges(); },
    [](MortalStage& stage) { stage.mortal->PreviewShot(true); },
    [](MortalStage& stage) { stage.mortal->ResetCamera(); },
    [](MortalStage& stage) { stage.mortal->ResetParameters(); },
    [](MortalStage& stage) { stage.mortal->RecordWalk(); },
    [](MortalStage& stage) { stage.board->CreateShot(stage.sequence); },
    [](MortalStage& stage) { stage.board->SetVisible(false); },
};

TEST(ShotEditorStages, editor_or_storyboard_may_end_in_each_call_to_the_host) {
  for (const bool endsBoard : {false, true}) {
    for (const Use use : USES) {
      for (const bool records : {false, true}) {
        for (int last = 1; last <= 5; ++last) {
          MortalStage stage;
          stage.board->EditShot(stage.sequence->GetShot(1));
          if (records) stage.board->BeginRecordWalk();
          stage.endsBoard = endsBoard;
          stage.calls = 0;
          stage.last = last;
          use(stage);
          const bool reached = stage.calls >= last;
          EXPECT_EQ((endsBoard ? stage.board == nullptr : stage.mortal == nullptr), reached);
          if (stage.board != nullptr) stage.Frame();
          EXPECT_FALSE(stage.hub.IsOperationActive(OPERATION_ALL));
        }
      }
    }
  }
}

TEST(ShotEditorSlots, stand_in_their_order) {
  const std::vector<int> slots = {
      VirtualSlot(&ShotEditor::SetShot),           VirtualSlot(&ShotEditor::Show),
      VirtualSlot(&ShotEditor::OnEditorReserved),  VirtualSlot(&ShotEditor::SetPreviewState),
      VirtualSlot(&ShotEditor::SetRecordingState), VirtualSlot(&ShotEditor::SetPanelVisible),
      VirtualSlot(&ShotEditor::TransferControls)};
  EXPECT_EQ(slots, (std::vector<int>{2, 3, 4, 5, 6, 7, 8}));
}

}  // namespace
