#include "korvane/walk_recorder.h"

#include <functional>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "camera/fly_operation.h"
#include "camera/height_operation.h"
#include "story/new_shot.h"
#include "story/open_storyboard.h"
#include "support/allocation_counter.h"
#include "support/mischievous_hub.h"

using namespace Korvane;

namespace {

template <class... Values>
std::string Line(const Values&... values) {
  std::ostringstream line;
  const char* separator = "";
  ((line << std::exchange(separator, " ") << values), ...);
  return line.str();
}

/// Acts in one of the calls that come to it.
struct Host {
  void Call() {
    if (++calls == at && act) act();
  }
  int calls = 0;
  int at = 0;
  std::function<void()> act;
};

class WalkHub : public MischievousHub<Host> {
 public:
  WalkHub(Host& theHost, Journal& theJournal)
      : MischievousHub<Host>(theHost, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), journal(theJournal) {
    GetApplicationParameters().viewport_width = 1000;
    GetApplicationParameters().viewport_height = 600;
  }
  bool BeginOperation(OperationType type, int x, int y) override {
    journal.Add(Line("begin", int{type}, "at", x, y));
    return MischievousHub::BeginOperation(type, x, y);
  }
  bool EndOperation(OperationType type) override {
    journal.Add(Line("end", int{type}));
    return MischievousHub::EndOperation(type);
  }
  using MischievousHub::UpdateOperationParams;
  bool UpdateOperationParams(int x, int y, OperationType type) override {
    journal.Add(Line("update", int{type}, "to", x, y));
    return MischievousHub::UpdateOperationParams(x, y, type);
  }
  void AddOperationObserver(OperationObserver* observer) override {
    journal.Add("watched");
    MischievousHub::AddOperationObserver(observer);
  }
  void RemoveOperationObserver(OperationObserver* observer) override {
    journal.Add("left");
    MischievousHub::RemoveOperationObserver(observer);
  }

 private:
  Journal& journal;
};

/// Writes down the pointer, and what is drawn, where and how large.
class WalkRenderer : public RecordingRenderer {
 public:
  WalkRenderer(Host& theHost, Journal& theJournal) : host(theHost), journal(theJournal) {}

  bool SetCursorPosition(int x, int y) override { return Note(Line("pointer", x, y)); }
  bool SetCursorID(CursorID id) override { return Note(Line("cursor", int{id})); }
  using RecordingRenderer::Render;
  bool Render(ResourceIcon2D* icon) override {
    return Note(Line("picture", int{icon->GetTextureResourceID()}, Place(*icon)));
  }
  bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
    const bool begun = RecordingRenderer::BeginRender(viewport, camera, mode);
    Tell();
    return begun;
  }
  bool called = false;  // one of its operations is
  bool Render(DynamicIcon2D* icon) override { return Note(Line("note", icon->GetID(), Place(*icon))); }

 private:
  template <class Icon>
  static std::string Place(const Icon& icon) {
    return Line("at", icon.GetPosition().x, icon.GetPosition().y, "of", icon.GetWidth(), icon.GetHeight());
  }
  bool Note(const std::string& line) {
    journal.Add(line);
    Tell();
    return true;
  }
  void Tell() {
    called = true;
    host.Call();
    called = false;
  }

  Host& host;
  Journal& journal;
};

/// A recorder of its own over a view of 1000 by 600 pixels, and a storyboard that can make another.
struct WalkStage {
  WalkStage() {
    history->onBegin = [this] { journal.Add("record begins"), host.Call(); };
    history->onEnd = [this] { journal.Add("record ends"), host.Call(); };
    editor.onCall = [this] { host.Call(); };
    recorder->SetKorvane(hub.get());
    recorder->SetRenderer(renderer.get());
    recorder->SetRewindHistory(history.get());
    recorder->SetViewportSize(1000, 600);
  }
  /// The storyboard makes a recorder for a new shot.
  void OpenBoard() {
    board->SetKorvane(hub.get());
    board->SetRenderer(renderer.get());
    board->SetRewindHistory(history.get());
    board->SetShotEditor(&editor);
    board->SetViewportSize(1000, 600);
    board->Create();
    auto* const sequence = new Sequence;
    shot = NewShot(L"walk");
    sequence->AddShot(shot);
    board->GetStory()->AddSequence(sequence);
    board->EditShot(shot);
    ASSERT_TRUE(board->BeginRecordWalk());
    journal.lines.clear();
  }
  void Press(int x = 30, int y = 40) {
    recorder->OnLeftMouseDown(x, y);
    journal.lines.clear();
  }
  void Frame() {
    platform.Advance(16);
    hub->PerformOperations();
  }
  bool IsAnyActive() const { return hub->IsOperationActive(OPERATION_ALL); }

  ManualPlatform platform;
  Journal journal;
  Host host;
  std::unique_ptr<WalkHub> hub = std::make_unique<WalkHub>(host, journal);
  std::unique_ptr<WalkRenderer> renderer = std::make_unique<WalkRenderer>(host, journal);
  std::unique_ptr<RecordingHistory> history = std::make_unique<RecordingHistory>();
  JournalEditor editor{journal};
  ShotSpecification* shot = nullptr;  // the storyboard's
  std::unique_ptr<OpenStoryboard> board = std::make_unique<OpenStoryboard>();
  std::unique_ptr<WalkRecorder> recorder = std::make_unique<WalkRecorder>();
};
struct WalkRecorderTest : ::testing::Test, WalkStage {};

// ---- the press ----

// Row 120 from the bottom is row 600 - 120 - 1 from the top.
TEST_F(WalkRecorderTest, the_pointer_jumps_to_a_fifth_of_the_height_wherever_it_was) {
  for (const auto& [x, y] : {std::pair(0, 0), std::pair(999, 599), std::pair(-50, 7000)}) {
    recorder->OnLeftMouseDown(x, y);
    EXPECT_EQ(journal.Take(), (Lines{"pointer 500 120", "begin 3 at 500 479", "watched", "record begins"}));
    EXPECT_TRUE(recorder->IsRecording());
    recorder->Stop();
    journal.Take();
  }
}

TEST_F(WalkRecorderTest, the_place_of_a_walk_is_in_whole_pixels) {
  recorder->SetViewportSize(1001, 604);
  recorder->OnLeftMouseDown(0, 0);
  EXPECT_EQ(journal.Take(), (Lines{"pointer 500 120", "begin 3 at 500 483", "watched", "record begins"}));
}

TEST_F(WalkRecorderTest, a_press_in_the_walk_begins_no_other) {
  Press();
  recorder->OnLeftMouseDown(5, 5);
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(WalkRecorderTest, the_camera_at_the_press_is_kept_as_a_plain_perspective) {
  hub->view.eye = {1, 2, 30};
  hub->view.perspective_with_ortho = true;
  Press();
  EXPECT_EQ(recorder->GetBeginCamera().eye, Vector3(1, 2, 30));
  EXPECT_FALSE(recorder->GetBeginCamera().perspective_with_ortho);
  EXPECT_EQ(history->beginCamera.eye, Vector3(1, 2, 30));
  EXPECT_TRUE(recorder->GetCameras().empty());
}

TEST_F(WalkRecorderTest, without_hub_or_renderer_the_press_sets_recording_and_no_more) {
  recorder->SetKorvane(nullptr);
  EXPECT_FALSE(recorder->OnLeftMouseDown(5, 5));
  EXPECT_TRUE(recorder->IsRecording());
  recorder->OnMouseMove(6, 6);
  recorder->OnKeyDown(KEY_SHIFT);
  recorder->OnDraw();
  recorder->OnLeftMouseUp(7, 7);
  EXPECT_FALSE(recorder->IsRecording());
  recorder->SetKorvane(hub.get());
  recorder->SetRenderer(nullptr);
  recorder->OnLeftMouseDown(5, 5);
  EXPECT_TRUE(recorder->IsRecording());
  recorder->OnDraw();
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_FALSE(IsAnyActive());
  EXPECT_TRUE(history->Has(0, 0));
}

// ---- the move ----

TEST_F(WalkRecorderTest, a_move_steers_the_walk_or_the_height) {
  recorder->OnMouseMove(10, 20);
  EXPECT_TRUE(journal.lines.empty());
  Press();
  recorder->OnMouseMove(510, 11);
  EXPECT_EQ(journal.Take(), (Lines{"update 3 to 510 588"}));
  recorder->OnKeyDown(KEY_SHIFT);
  journal.Take();
  recorder->OnMouseMove(520, 599);
  EXPECT_EQ(journal.Take(), (Lines{"update 7 to 520 0"}));
}

TEST_F(WalkRecorderTest, uses_no_event) {
  EXPECT_FALSE(recorder->OnLeftMouseDown(1, 1));
  EXPECT_FALSE(recorder->OnMouseMove(2, 2));
  EXPECT_FALSE(recorder->OnKeyDown(KEY_SHIFT));
  EXPECT_FALSE(recorder->OnKeyUp(KEY_SHIFT));
  EXPECT_FALSE(recorder->OnKeyDown(KEY_CONTROL));
  EXPECT_FALSE(recorder->OnLeftMouseUp(3, 3));
}

// ---- the height ----

TEST_F(WalkRecorderTest, shift_adjusts_the_height_and_the_walk_goes_on_where_it_set_out) {
  Press();
  recorder->OnMouseMove(510, 11);
  journal.Take();
  recorder->OnKeyDown(KEY_SHIFT);
  EXPECT_EQ(journal.Take(),
            (Lines{"end 3", "cursor 26", "record ends", "begin 7 at 510 588", "record begins"}));
  EXPECT_TRUE(recorder->IsAdjustingHeight());
  recorder->OnKeyDown(KEY_SHIFT);
  EXPECT_TRUE(journal.lines.empty());
  recorder->OnMouseMove(700, 300);
  journal.Take();
  recorder->OnKeyUp(KEY_SHIFT);
  EXPECT_EQ(journal.Take(),
            (Lines{"end 7", "cursor 26", "record ends", "begin 3 at 500 479", "record begins"}));
  EXPECT_FALSE(recorder->IsAdjustingHeight());
  recorder->OnKeyUp(KEY_SHIFT);
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(WalkRecorderTest, before_the_press_no_key_does_anything) {
  for (const KeyID key : {KEY_SHIFT, KEY_ESCAPE, KEY_CONTROL}) {
    recorder->OnKeyDown(key);
    recorder->OnKeyUp(key);
  }
  EXPECT_TRUE(journal.lines.empty());
}

// ---- samples ----

TEST_F(WalkRecorderTest, samples_each_frame_of_the_walk_and_of_the_height) {
  hub->view.perspective_with_ortho = true;
  Press();
  recorder->OnMouseMove(500, 400);
  for (int i = 1; i <= 10; ++i) {
    Frame();
    ASSERT_EQ(recorder->GetCameras().size(), static_cast<std::size_t>(i));
    EXPECT_EQ(recorder->GetCameras().back().eye, hub->view.eye);
  }
  EXPECT_NE(hub->view.eye, Vector3(0, 0, 10));
  recorder->OnKeyDown(KEY_SHIFT);
  for (int i = 0; i < 5; ++i) Frame();
  EXPECT_EQ(recorder->GetCameras().size(), 15U);
  EXPECT_EQ(recorder->GetDeltaTimes().size(), 15U);
  for (const CameraParameters& each : recorder->GetCameras()) EXPECT_FALSE(each.perspective_with_ortho);
  EXPECT_NEAR(recorder->GetDeltaTimes()[5], 0.016, 1e-12);
}

TEST_F(WalkRecorderTest, samples_operations_of_every_kind_for_as_long_as_it_watches) {
  Press();
  hub->BeginOperation(OPERATION_PAN, 10, 10);
  Frame();
  EXPECT_EQ(recorder->GetCameras().size(), 2U);
  recorder->OnLeftMouseUp(1, 1);
  Frame();
  EXPECT_EQ(recorder->GetCameras().size(), 2U);
  for (int kind = 0; kind < OPERATION_KIND_COUNT; ++kind) {
    recorder->OnPerformOperation(static_cast<OperationType>(kind), 0.25, hub->view);
  }
  EXPECT_EQ(recorder->GetCameras().size(), 2U + OPERATION_KIND_COUNT);
  EXPECT_EQ(recorder->GetDeltaTimes().back(), 0.25);
}

// ---- the release ----

TEST_F(WalkRecorderTest, a_release_ends_the_walk) {
  Press();
  recorder->OnLeftMouseUp(1, 1);
  EXPECT_EQ(journal.Take(), (Lines{"end 3", "cursor 26", "record ends", "left"}));
  EXPECT_FALSE(IsAnyActive());
  recorder->OnLeftMouseUp(1, 1);
  recorder->OnMouseMove(2, 2);
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(WalkRecorderTest, a_release_in_an_adjustment_ends_the_walk_that_does_not_run) {
  Press();
  recorder->OnKeyDown(KEY_SHIFT);
  journal.Take();
  recorder->OnLeftMouseUp(1, 1);
  EXPECT_EQ(journal.Take(), (Lines{"end 3", "record ends", "left"}));
  EXPECT_TRUE(hub->IsOperationActive(OPERATION_HEIGHT));
  EXPECT_FALSE(hub->IsOperationActive(OPERATION_FLY));
  EXPECT_EQ(history->GetOpenCount(), 0);
}

TEST_F(WalkRecorderTest, the_key_that_is_let_go_after_the_release_ends_the_adjustment) {
  Press();
  recorder->OnKeyDown(KEY_SHIFT);
  recorder->OnLeftMouseUp(1, 1);
  journal.Take();
  EXPECT_TRUE(recorder->IsAdjustingHeight());
  recorder->OnKeyUp(KEY_SHIFT);
  EXPECT_EQ(journal.Take(), (Lines{"end 7"}));
  EXPECT_FALSE(recorder->IsAdjustingHeight());
  EXPECT_FALSE(IsAnyActive());
  EXPECT_EQ(history->GetOpenCount(), 0);
}

TEST_F(WalkRecorderTest, a_release_that_ends_the_height_as_well_leaves_nothing) {
  recorder->SetReleaseEndsHeight(true);
  Press();
  recorder->OnKeyDown(KEY_SHIFT);
  journal.Take();
  recorder->OnLeftMouseUp(1, 1);
  EXPECT_EQ(journal.Take(), (Lines{"end 3", "record ends", "end 7", "cursor 26", "left"}));
  EXPECT_FALSE(IsAnyActive());
}

TEST_F(WalkRecorderTest, the_storyboard_hands_its_walk_to_the_editor) {
  OpenBoard();
  EXPECT_TRUE(board->IsRecordingWalk());
  board->OnLeftMouseDown(30, 40);
  board->OnMouseMove(500, 400);
  for (int i = 0; i < 20; ++i) Frame();
  journal.Take();
  EXPECT_FALSE(board->OnLeftMouseUp(500, 400));
  EXPECT_EQ(journal.Take(),
            (Lines{"end 3", "cursor 26", "record ends", "left", "editor records 0", "editor transfers 0"}));
  EXPECT_FALSE(board->IsRecordingWalk());
  EXPECT_EQ(shot->GetShotType(), ShotSpecification::SHOT_RECORDED_WALK);
  EXPECT_EQ(shot->GetRecordedElementCount(), 21U);
  EXPECT_EQ(shot->GetRecordedElement(20).camera.eye, hub->view.eye);
}

// ---- cancelling ----

TEST_F(WalkRecorderTest, escape_ends_what_runs) {
  Press();
  recorder->OnKeyDown(KEY_ESCAPE);
  EXPECT_EQ(journal.Take(), (Lines{"end 3", "cursor 26", "record ends", "left", "cursor 26"}));
  Press();
  recorder->OnKeyDown(KEY_SHIFT);
  journal.Take();
  recorder->OnKeyDown(KEY_ESCAPE);
  EXPECT_EQ(journal.Take(), (Lines{"end 7", "cursor 26", "record ends", "left", "cursor 26"}));
  EXPECT_FALSE(recorder->IsAdjustingHeight());
  EXPECT_FALSE(IsAnyActive());
}

TEST_F(WalkRecorderTest, a_recording_that_is_cancelled_leaves_the_shot_as_it_was) {
  OpenBoard();
  board->OnLeftMouseDown(30, 40);
  board->OnMouseMove(500, 400);
  for (int i = 0; i < 20; ++i) Frame();
  journal.Take();
  board->OnKeyDown(KEY_ESCAPE);
  EXPECT_EQ(journal.Take(),
            (Lines{"end 3", "cursor 26", "record ends", "left", "cursor 26", "editor records 0"}));
  EXPECT_FALSE(board->IsRecordingWalk());
  EXPECT_EQ(shot->GetShotType(), ShotSpecification::SHOT_STILL);
  EXPECT_EQ(shot->GetRecordedElementCount(), 0U);
  EXPECT_EQ(shot->GetCameraParameters().eye, Vector3(0, 0, 10));
  EXPECT_EQ(shot->GetDuration(), 3.0);
}

// ---- drawing ----

TEST_F(WalkRecorderTest, draws_the_first_note_before_the_press_and_the_second_in_the_walk) {
  DynamicIcon2D before(7);
  DynamicIcon2D during(8);
  before.SetSize(200, 40);
  during.SetSize(300, 50);
  recorder->SetBeginWalkingMessageHUD(&before);
  recorder->SetMoveUpDownMessageHUD(&during);
  recorder->OnDraw();
  EXPECT_EQ(journal.Take(), (Lines{"note 7 at 500 40 of 200 40"}));
  Press();
  hub->GetApplicationParameters().fly_dead_zone_radius = 21;
  recorder->OnDraw();
  EXPECT_EQ(journal.Take(), (Lines{"picture 94 at 500 120 of 42 42", "note 8 at 500 50 of 300 50",
                                   Line("cursor", int{CURSOR_WALK})}));
  EXPECT_EQ(renderer->GetCalls(), (Lines{"BeginRender(500, 300, 500, 300, 0)", "EndRender()",
                                         "BeginRender(500, 300, 500, 300, 0)", "EndRender()"}));
}

TEST_F(WalkRecorderTest, draws_the_gauge_of_the_height_wrapped_into_the_view) {
  Press();
  recorder->OnMouseMove(1010, -5);
  recorder->OnKeyDown(KEY_SHIFT);
  auto* const height = dynamic_cast<HeightOperation*>(hub->GetActiveOperation(OPERATION_HEIGHT));
  ASSERT_NE(height, nullptr);
  const double start = (height->GetUnitHeight() - 0.5) * 86.0;
  recorder->OnMouseMove(1010, 90);
  Frame();
  journal.Take();
  recorder->OnDraw();
  const double now = (height->GetUnitHeight() - 0.5) * 86.0;
  EXPECT_NE(now, start);
  EXPECT_EQ(journal.lines,
            (Lines{"picture 95 at 10 595 of 128 128", Line("picture 96 at 10", 595.0 + start, "of 32 32"),
                   Line("picture 97 at 10", 595.0 + now, "of 32 32"), "cursor 0"}));
  hub->EndOperation(OPERATION_HEIGHT);
  journal.Take();
  recorder->OnDraw();
  EXPECT_EQ(journal.lines[2], Line("picture 97 at 10", 595.0 + start, "of 32 32"));
}

TEST_F(WalkRecorderTest, shows_the_cursor_of_the_walk) {
  recorder->OnDraw();
  EXPECT_TRUE(journal.lines.empty());
  Press();
  recorder->OnMouseMove(500, 500);
  Frame();
  const auto* const fly = dynamic_cast<FlyOperation*>(hub->GetActiveOperation(OPERATION_FLY));
  ASSERT_NE(fly, nullptr);
  EXPECT_NE(fly->GetWalkCursorID(), CURSOR_WALK);
  journal.Take();
  recorder->OnDraw();
  EXPECT_EQ(journal.lines.back(), Line("cursor", int{fly->GetWalkCursorID()}));
  hub->EndOperation(OPERATION_FLY);
  journal.Take();
  recorder->OnDraw();
  EXPECT_EQ(journal.lines.size(), 1U);  // the circle, and no cursor
}

TEST_F(WalkRecorderTest, draws_nothing_without_a_pass) {
  Press();
  renderer->FailAlways("BeginRender");
  recorder->OnDraw();
  EXPECT_EQ(renderer->GetCalls().size(), 1U);
  EXPECT_TRUE(journal.lines.empty());
}

// ---- what a host begins meanwhile ----

TEST_F(WalkRecorderTest, a_walk_that_the_host_begins_in_the_end_of_a_cancelled_one_stays) {
  OpenBoard();
  board->OnLeftMouseDown(30, 40);
  Frame();
  bool again = false;
  history->onEnd = [&] {
    history->onEnd = nullptr;
    EXPECT_TRUE(board->CancelRecordWalk());
    again = board->BeginRecordWalk();
  };
  board->OnKeyDown(KEY_ESCAPE);
  EXPECT_TRUE(again);
  EXPECT_TRUE(board->IsRecordingWalk());
  board->OnLeftMouseDown(30, 40);
  EXPECT_TRUE(hub->IsOperationActive(OPERATION_FLY));
  board->CancelRecordWalk();
  EXPECT_FALSE(IsAnyActive());
}

// ---- who is missing ----

enum class Partner { Hub, Renderer, History, Board };

void Lose(WalkStage& stage, Partner partner, bool ends) {
  if (partner == Partner::Hub) ends ? stage.hub.reset() : stage.board->SetKorvane(nullptr);
  if (partner == Partner::Renderer) ends ? stage.renderer.reset() : stage.board->SetRenderer(nullptr);
  if (partner == Partner::History) ends ? stage.history.reset() : stage.board->SetRewindHistory(nullptr);
  if (partner == Partner::Board) stage.board.reset();
}

TEST(WalkRecorderStages, may_lose_anyone_in_the_middle_of_a_walk) {
  for (const Partner partner : {Partner::Hub, Partner::Renderer, Partner::History, Partner::Board}) {
    for (const int kind : {0, 1, 2, 3}) {
      WalkStage stage;
      stage.OpenBoard();
      stage.board->SetReleaseEndsHeight(true);
      stage.board->CancelRecordWalk();
      stage.board->BeginRecordWalk();
      stage.board->OnLeftMouseDown(1, 2);
      stage.Frame();
      if (kind >= 2) stage.board->OnKeyDown(KEY_SHIFT);
      Lose(stage, partner, kind % 2 == 1);
      if (stage.hub != nullptr) stage.Frame();
      if (stage.board != nullptr) {
        stage.board->OnMouseMove(3, 4);
        stage.board->OnKeyDown(KEY_SHIFT);
        stage.board->Draw();
        stage.board->OnKeyUp(KEY_SHIFT);
        stage.board->OnLeftMouseUp(5, 6);
        EXPECT_FALSE(stage.board->IsRecordingWalk() && partner != Partner::Hub);
      }
      EXPECT_FALSE(stage.hub != nullptr && stage.IsAnyActive());
      const bool counted = stage.hub != nullptr && stage.history != nullptr;
      EXPECT_EQ(counted ? stage.history->GetOpenCount() : 0, 0);
    }
  }
}

// ---- who ends it ----

void Walk(WalkStage& stage) {
  const auto board = [&] { return stage.board.get(); };
  if (board()) board()->OnLeftMouseDown(30, 40);
  if (board()) board()->OnMouseMove(500, 400);
  stage.Frame();
  if (board()) board()->Draw();
  if (board()) board()->OnKeyDown(KEY_SHIFT);
  stage.Frame();
  if (board()) board()->Draw();
  if (board()) board()->OnKeyUp(KEY_SHIFT);
  stage.Frame();
  if (board()) board()->OnLeftMouseUp(500, 400);
}

using Ending = void (*)(WalkStage& stage);
constexpr Ending ENDINGS[] = {
    [](WalkStage& stage) { stage.board->CancelRecordWalk(); },
    [](WalkStage& stage) { stage.board->Destroy(); },
    [](WalkStage& stage) { stage.board->SetKorvane(nullptr); },
    [](WalkStage& stage) { stage.board->OnLeftMouseUp(9, 9); },
    [](WalkStage& stage) { stage.board->OnKeyDown(KEY_ESCAPE); },
    [](WalkStage& stage) { stage.board->SetStory(new Story); },
    [](WalkStage& stage) {
      if (!stage.renderer->called) stage.board.reset();  // within its operations the storyboard stays
    },
};

// In the first call to the host, in the second ... until the walk ends before the call comes.
void TryInEveryCall(Ending act) {
  int reached = 0;
  for (int call = 1; call < 200; ++call) {
    WalkStage stage;
    stage.OpenBoard();
    stage.board->CancelRecordWalk();
    stage.board->SetReleaseEndsHeight(true);
    stage.board->BeginRecordWalk();
    stage.host.act = [&] { act(stage); };
    stage.host.calls = 0;
    stage.host.at = call;
    Walk(stage);
    EXPECT_FALSE(stage.IsAnyActive()) << "call " << call;
    EXPECT_EQ(stage.history->GetOpenCount(), 0) << "call " << call;
    if (stage.host.calls < call) break;
    reached = call;
  }
  EXPECT_GT(reached, 20);
  EXPECT_LT(reached, 199);
}

TEST(WalkRecorderStages, a_walk_that_ends_in_any_call_leaves_no_record_and_no_operation) {
  for (std::size_t ending = 0; ending < std::size(ENDINGS); ++ending) {
    SCOPED_TRACE(ending);
    TryInEveryCall(ENDINGS[ending]);
  }
}

// As a recorder by itself, whose hub is taken away in the first call, in the second ...
TEST(WalkRecorderStages, a_walk_that_loses_its_hub_in_any_call_comes_to_its_end) {
  for (const bool stops : {false, true}) {
    for (int call = 1; call < 40; ++call) {
      WalkStage stage;
      stage.host.act = [&] {
        stage.recorder->SetKorvane(nullptr);
        if (stops) stage.recorder->Stop();
      };
      stage.host.at = call;
      stage.recorder->OnLeftMouseDown(30, 40);
      stage.Frame();
      stage.recorder->OnDraw();
      stage.recorder->OnKeyDown(KEY_SHIFT);
      stage.Frame();
      stage.recorder->OnDraw();
      stage.recorder->OnKeyUp(KEY_SHIFT);
      stage.Frame();
      stage.recorder->OnLeftMouseUp(500, 400);
      EXPECT_FALSE(stage.recorder->IsRecording()) << call;
    }
  }
}

TEST_F(WalkRecorderTest, one_that_ends_without_its_hub_is_over) {
  Press();
  recorder->SetKorvane(nullptr);
  recorder->Stop();
  EXPECT_FALSE(recorder->IsRecording());
  EXPECT_EQ(journal.Take(), (Lines{"left"}));
}

TEST_F(WalkRecorderTest, a_sample_for_which_there_is_no_memory_is_left_out_whole) {
  Press();
  for (std::uint64_t failed = 1; failed < 4; ++failed) {
    const AllocationFault fault(failed, 1);
    recorder->OnPerformOperation(OPERATION_FLY, 0.1, hub->view);
    EXPECT_EQ(recorder->GetCameras().size(), recorder->GetDeltaTimes().size());
  }
}

TEST(WalkRecorderStages, a_host_that_uses_the_key_of_the_height_in_any_call_leaves_nothing_either) {
  TryInEveryCall([](WalkStage& stage) { stage.board->OnKeyDown(KEY_SHIFT); });
  TryInEveryCall([](WalkStage& stage) { stage.board->OnKeyUp(KEY_SHIFT); });
  TryInEveryCall([](WalkStage& stage) {
    stage.board->OnKeyDown(KEY_SHIFT);
    stage.board->OnKeyUp(KEY_SHIFT);
  });
}

}  // namespace
