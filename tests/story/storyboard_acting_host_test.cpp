// What the user does with a storyboard, with a host that does something itself within one of the calls that
// the panel makes meanwhile: in each of them in turn. It may delete the panel in those that are not the
// renderer's; outside of a pass that does no harm either.
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <tuple>

#include "story/open_storyboard.h"
#include "support/acting_host.h"
#include "support/mischievous_hub.h"

using namespace Korvane;

namespace {

/// Acts in the calls of a pass, and apart from them in those that make pictures and texts.
class PanelRenderer : public ActingRenderer {
 public:
  PanelRenderer(ActingHost& drawing, ActingHost& makes) : ActingRenderer(drawing), making(makes) {}

  bool LoadTexture(TextureID id) override { return Tell(CountingRenderer::LoadTexture(id)); }
  void ReleaseTexture(TextureID id) override {
    CountingRenderer::ReleaseTexture(id);
    making.Call();
  }
  std::wstring LoadStringResource(int id) override { return Tell(CountingRenderer::LoadStringResource(id)); }
  DynamicIcon2D* CreateSceneScreenshot(int width, int height, const CameraParameters& camera) override {
    return Tell(CountingRenderer::CreateSceneScreenshot(width, height, camera));
  }
  DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int width, int height) override {
    return Tell(CountingRenderer::CreateTextLabel(text, size, width, height));
  }
  DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override {
    return Tell(CountingRenderer::CreateMessageHUD(text));
  }
  bool DestroyIcon(DynamicIcon2D*& icon) override { return Tell(CountingRenderer::DestroyIcon(icon)); }
  bool SetCursorIcon(CursorID id) override { return Tell(CountingRenderer::SetCursorIcon(id)); }

 private:
  template <class Answer>
  Answer Tell(Answer answer) {
    making.Call();
    return answer;
  }

  ActingHost& making;
};

struct Stage {
  Stage() {
    hub.GetApplicationParameters().viewport_width = 1000;
    hub.GetApplicationParameters().viewport_height = 600;
    editor->onCall = observer.onCall = history.onBegin = history.onEnd = [this] { calls.Call(); };
    Restore();
    board->Create();
    board->SetVisible(true);
    board->AddObserver(&observer);
    board->AddObserver(&lastObserver);
    for (int sequence = 0; sequence < 2; ++sequence) AddSequence(2);
    for (int i = 0; i < 8; ++i) Frame();  // until the pictures are made
    board->SetSelectedSequence(board->GetStory()->GetFirstSequence());
    Frame();
  }
  ~Stage() { EXPECT_FALSE(hub.broken || otherHub.broken); }

  void Restore() { FurnishBoard(*this); }
  void AddSequence(int shots) {
    auto* const sequence = new Sequence;
    sequence->SetName(L"sequence");
    board->GetStory()->AddSequence(sequence);
    for (int i = 0; i < shots; ++i) {
      auto* const shot = new ShotSpecification(hub.view);
      shot->SetShotType(ShotSpecification::SHOT_ORBIT);
      shot->SetLeftRightAngle(30.0);
      shot->SetDuration(0.3);
      shot->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_WHITE);
      shot->SetTransitionDuration(0.1);
      sequence->AddShot(shot);
    }
  }

  Sequence* GetSequence(std::uint64_t index = 0) const {
    Story* const story = board->GetStory();
    return story != nullptr && index < story->GetSequenceCount() ? story->GetSequence(index) : nullptr;
  }
  ShotSpecification* GetShot(std::uint64_t index = 0) const {
    Sequence* const sequence = GetSequence();
    return sequence != nullptr && index < sequence->GetShotCount() ? sequence->GetShot(index) : nullptr;
  }

  /// As long as there is a panel.
  void Do(const std::function<void()>& step) const {
    if (board != nullptr) step();
  }
  /// As long as there is an editor, or a queue.
  void UseEditor(void (*step)(JournalEditor& editor)) const {
    if (editor != nullptr) step(*editor);
  }
  void Step(bool (UndoQueue::*step)(), int times) const {
    for (int i = 0; i < times && queue != nullptr; ++i) ((*queue).*step)();
  }
  void Frame(unsigned milliseconds = 40) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    if (board != nullptr) board->Draw();
  }
  void Frames(int count, unsigned milliseconds = 100) {
    for (int i = 0; i < count; ++i) Frame(milliseconds);
  }
  void Press(const Box2& place) {
    const int x = static_cast<int>(place.center.x);
    const int y = static_cast<int>(place.center.y);
    Do([&] { board->OnMouseMove(x, y); });
    Do([&] { board->OnLeftMouseDown(x, y); });
  }
  void Release(int x, int y) {
    Do([&] { board->OnMouseMove(x, y); });
    Frame();
    Do([&] { board->OnLeftMouseUp(x, y); });
    Frame();
  }
  void Click(const Box2& place) {
    Press(place);
    Release(static_cast<int>(place.center.x), static_cast<int>(place.center.y));
  }
  void ClickShot(std::uint64_t index, Storyboard::SlidePart part) {
    Box2 place;
    if (board != nullptr && board->GetSlideBounds(GetShot(index), part, place)) Click(place);
  }
  void ClickSequence(std::uint64_t index, Storyboard::SlidePart part) {
    Box2 place;
    if (board != nullptr && board->GetSlideBounds(GetSequence(index), part, place)) Click(place);
  }
  void ClickTitle(Storyboard::TitlePart part) {
    if (board != nullptr) Click(board->GetTitleBounds(part));
  }

  ManualPlatform platform;
  ActingHost calls;    // but for those of the renderer
  ActingHost drawing;  // those of a pass
  ActingHost making;   // and those of pictures and texts
  Journal journal;
  MischievousHub<ActingHost> hub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  MischievousHub<ActingHost> otherHub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  PanelRenderer renderer{drawing, making};
  PanelRenderer otherRenderer{drawing, making};
  RecordingHistory history;
  std::unique_ptr<UndoQueue> queue = std::make_unique<UndoQueue>();
  std::unique_ptr<JournalEditor> editor = std::make_unique<JournalEditor>(journal);
  std::unique_ptr<OpenStoryboard> board = std::make_unique<OpenStoryboard>();
  JournalStoryObserver observer{board.get(), journal};
  JournalStoryObserver lastObserver{board.get(), journal};
};

// ---- what the user does ----

void Edit(Stage& s) {
  s.Do([&] { s.board->CreateSequence(); });
  s.Do([&] { s.board->CreateShot(s.GetSequence()); });
  s.Frame();
  s.Do([&] { s.board->MoveShot(s.GetShot(), nullptr); });
  s.Do([&] { s.board->MoveSequence(s.GetSequence(), nullptr); });
  s.Do([&] { s.board->EditShot(s.GetShot()); });
  s.UseEditor([](JournalEditor& editor) { editor.SaveChanges(); });
  s.UseEditor([](JournalEditor& editor) { editor.ResetParameters(); });
  s.UseEditor([](JournalEditor& editor) { editor.ResetCamera(); });
  s.Do([&] { s.board->RefreshThumbnail(s.GetSequence(), s.GetShot()); });
  s.Frames(3);
  s.Do([&] { s.board->DeleteShot(s.GetShot()); });
  s.Frame();
  s.Step(&UndoQueue::Undo, 4);
  s.Frame();
  s.Step(&UndoQueue::Redo, 2);
  s.Frame();
}

void Play(Stage& s) {
  s.Do([&] { s.board->PlaybackStory(s.board->GetStory()); });
  s.Frames(4);
  s.Do([&] { s.board->PausePlayback(); });
  s.Frame();
  s.Do([&] { s.board->ResumePlayback(); });
  s.Frames(12, 150);
  s.Do([&] { s.board->PlaybackSequence(s.GetSequence()); });
  s.Frames(2);
  s.Do([&] { s.board->StopPlayback(); });
  s.Frame();
}

void PlayShots(Stage& s) {
  s.Do([&] { s.board->SetLoop(true); });
  s.Do([&] { s.board->PlaybackSingleShot(s.GetShot(1)); });
  s.Frames(5, 150);
  s.Do([&] { s.board->StopPlayback(); });
  s.Do([&] { s.board->PreviewShot(s.GetShot(), false); });
  s.Frames(5, 150);
  s.Do([&] { s.board->PreviewShot(s.GetShot(), true); });
  s.Do([&] { s.board->PlaybackSingleShot(s.GetShot(1)); });
  s.Frame();
  s.Do([&] { s.board->PreviewShot(s.GetShot(), true); });
  s.Frames(4, 150);
  s.Do([&] { s.board->PausePlayback(); });
  s.Do([&] { s.board->EditShot(s.GetShot(1)); });
  s.UseEditor([](JournalEditor& editor) { editor.PreviewShot(false); });
  s.Frames(2);
  s.Do([&] { s.board->TargetShot(s.GetShot()); });
  s.Frames(2);
  s.Do([&] { s.board->TargetSequence(s.GetSequence(1)); });
  s.Frames(2, 1000);
}

void ClickAround(Stage& s) {
  s.ClickSequence(1, Storyboard::SLIDE_ITSELF);
  s.ClickSequence(0, Storyboard::SLIDE_PLAY);
  s.ClickTitle(Storyboard::TITLE_STOP);
  s.ClickSequence(0, Storyboard::SLIDE_TARGET);
  s.ClickSequence(0, Storyboard::SLIDE_ITSELF);
  s.ClickShot(0, Storyboard::SLIDE_ITSELF);
  s.ClickShot(1, Storyboard::SLIDE_PLAY);
  s.ClickTitle(Storyboard::TITLE_PLAY);
  s.ClickTitle(Storyboard::TITLE_PLAY);
  s.ClickTitle(Storyboard::TITLE_STOP);
  s.ClickShot(1, Storyboard::SLIDE_TARGET);
  s.ClickTitle(Storyboard::TITLE_LOOP);
  Box2 place;
  if (s.board != nullptr && s.board->GetSlideBounds(static_cast<const ShotSpecification*>(nullptr),
                                                    Storyboard::SLIDE_ITSELF, place))
    s.Click(place);
  if (s.board != nullptr &&
      s.board->GetSlideBounds(static_cast<const Sequence*>(nullptr), Storyboard::SLIDE_ITSELF, place))
    s.Click(place);
  s.ClickTitle(Storyboard::TITLE_CLOSE);
}

void Drag(Stage& s) {
  Box2 from;
  if (s.board != nullptr && s.board->GetSlideBounds(s.GetShot(), Storyboard::SLIDE_ITSELF, from)) {
    s.Press(from);
    s.Release(static_cast<int>(from.center.x) + 300, static_cast<int>(from.center.y));
  }
  if (s.board != nullptr && s.board->GetSlideBounds(s.GetSequence(), Storyboard::SLIDE_ITSELF, from)) {
    s.Press(from);
    s.Release(static_cast<int>(from.center.x) + 300, static_cast<int>(from.center.y));
  }
  if (s.board != nullptr && s.board->GetSlideBounds(s.GetShot(), Storyboard::SLIDE_ITSELF, from)) {
    const int x = static_cast<int>(from.center.x);
    const int y = static_cast<int>(from.center.y);
    s.Do([&] { s.board->OnMouseMove(x, y); });
    s.Do([&] { s.board->OnRightMouseDown(x, y); });
    s.Do([&] { s.board->OpenMenu(); });
  }
  for (const KeyID key : {KEY_SPACE, KEY_ESCAPE}) {
    s.Do([&] { s.board->OnKeyDown(key); });
    s.Do([&] { s.board->OnKeyUp(key); });
    s.Frame();
  }
}

void Walk(Stage& s) {
  s.Do([&] { s.board->EditShot(s.GetShot()); });
  if (ShotSpecification* const shot = s.board != nullptr ? s.GetShot() : nullptr)
    shot->SetShotType(ShotSpecification::SHOT_RECORDED_WALK);
  for (const bool cancelled : {true, false}) {
    s.Do([&] { s.board->BeginRecordWalk(); });
    s.Frame();
    s.Press(Box2(Vector2(400, 300), Vector2()));
    s.Do([&] { s.board->OnKeyDown(KEY_SHIFT); });
    s.Frame();
    s.Do([&] { s.board->OnMouseMove(420, 330); });
    s.Frames(2);
    s.Do([&] { s.board->OnKeyUp(KEY_SHIFT); });
    s.Frame();
    if (cancelled) s.Do([&] { s.board->CancelRecordWalk(); });
    s.Release(430, 340);
  }
  s.Do([&] { s.board->CloseShotEditor(); });
}

void Live(Stage& s) {
  s.Do([&] { s.board->EditShot(s.GetShot()); });
  s.Do([&] { s.board->PlaybackStory(s.board->GetStory()); });
  s.Frame();
  s.Do([&] { s.board->SetVisible(false); });
  s.Do([&] { s.board->SetVisible(true); });
  s.Do([&] { s.board->SetMode(Storyboard::MODE_PRESENTING); });
  s.Frame();
  s.Do([&] { s.board->SetMode(Storyboard::MODE_EDITING); });
  s.Do([&] { s.board->SetKorvane(nullptr); });
  s.Do([&] { s.board->SetKorvane(&s.hub); });
  s.Do([&] { s.board->SetRenderer(nullptr); });
  s.Do([&] { s.board->SetRenderer(&s.renderer); });
  s.Frames(2);
  s.Do([&] { s.board->PlaybackStory(s.board->GetStory()); });
  s.Do([&] { s.board->SetStory(new Story); });
  s.Do([&] { s.board->CreateSequence(); });
  s.Do([&] { s.board->EditShot(s.GetShot()); });
  s.Do([&] { s.board->BeginRecordWalk(); });
  s.Do([&] { s.board->ResetToEmptyStory(); });
  s.Do([&] { s.board->Destroy(); });
  for (int i = 0; i < 2; ++i) s.Do([&] { s.board->Create(); });
  s.Frame();
}

// While something goes on that another hub, or none, ends.
void ChangePartners(Stage& s) {
  s.Do([&] { s.board->BeginShot(s.GetShot()); });
  s.Do([&] { s.board->SetKorvane(nullptr); });
  s.Do([&] { s.board->SetKorvane(&s.otherHub); });
  s.Do([&] { s.board->PlaybackStory(s.board->GetStory()); });
  s.Frame();
  s.Do([&] { s.board->SetRenderer(&s.otherRenderer); });
  s.Do([&] { s.board->SetKorvane(&s.hub); });
  s.Do([&] { s.board->PreviewShot(s.GetShot(1), true); });
  s.Frame();
  s.Do([&] { s.board->SetKorvane(&s.otherHub); });
  s.Do([&] { s.board->EditShot(s.GetShot()); });
  s.Do([&] { s.board->BeginRecordWalk(); });
  s.Press(Box2(Vector2(400, 300), Vector2()));
  s.Do([&] { s.board->OnKeyDown(KEY_SHIFT); });
  s.Do([&] { s.board->SetKorvane(&s.hub); });
  s.Do([&] { s.board->BeginRecordWalk(); });
  s.Press(Box2(Vector2(400, 300), Vector2()));
  s.Do([&] { s.board->DeleteShot(s.GetShot()); });
  s.Do([&] { s.board->BeginShot(s.GetShot()); });
  s.Do([&] { s.board->Destroy(); });
  s.Do([&] { s.board->Create(); });
  s.Do([&] { s.board->PlaybackSequence(s.GetSequence()); });
  s.Do([&] { s.board->SetShotEditor(nullptr); });
}

// What is torn down while a walk is recorded, or a story played.
void TearDown(Stage& s) {
  s.Do([&] { s.board->EditShot(s.GetShot()); });
  s.Do([&] { s.board->BeginRecordWalk(); });
  s.Press(Box2(Vector2(400, 300), Vector2()));
  s.Do([&] { s.board->TargetShot(s.GetShot()); });
  s.Frame();
  s.Do([&] { s.board->BeginRecordWalk(); });
  s.Press(Box2(Vector2(400, 300), Vector2()));
  s.Do([&] { s.board->Destroy(); });
  s.Do([&] { s.board->Create(); });
  s.Do([&] { s.AddSequence(1); });
  s.Do([&] { s.board->PlaybackStory(s.board->GetStory()); });
  s.Frame();
  s.Do([&] { s.board->ResetToEmptyStory(); });
  s.Do([&] { s.AddSequence(1); });
  s.Do([&] { s.board->PreviewShot(s.GetShot(), false); });
  s.Do([&] { s.board->Destroy(); });
  s.Do([&] { s.board->SetRenderer(nullptr); });
  s.Do([&] { s.board->Create(); });
}

// Without a queue each edit is made at once.
void EditWithoutQueue(Stage& s) {
  s.Do([&] { s.board->SetUndoQueue(nullptr); });
  s.Do([&] { s.board->EditShot(s.GetShot(1)); });
  s.Do([&] { s.board->MoveShot(s.GetShot(), nullptr); });
  s.Do([&] { s.board->MoveSequence(s.GetSequence(), nullptr); });
  s.Do([&] { s.board->PlaybackStory(s.board->GetStory()); });
  for (int i = 0; i < 2; ++i) s.Do([&] { s.board->DeleteShot(s.GetShot()); });
  s.Do([&] { s.board->CreateSequence(); });
  s.Frames(2);
}

struct Use {
  const char* name;
  void (*play)(Stage&);
};
constexpr Use USES[] = {{"edits", Edit},
                        {"plays", Play},
                        {"plays_shots", PlayShots},
                        {"clicks", ClickAround},
                        {"drags", Drag},
                        {"walks", Walk},
                        {"lives", Live},
                        {"changes_partners", ChangePartners},
                        {"tears_down", TearDown},
                        {"edits_without_a_queue", EditWithoutQueue}};

// ---- what the host does ----

struct Act {
  const char* name;
  void (*commit)(Stage&);
  bool isForRenderer = true;  // may be done in its calls as well
};
constexpr Act ACTS[] = {
    {"deletes_the_panel", [](Stage& s) { s.board.reset(); }, false},
    {"takes_the_hub", [](Stage& s) { s.Do([&] { s.board->SetKorvane(nullptr); }); }},
    {"takes_the_renderer", [](Stage& s) { s.Do([&] { s.board->SetRenderer(nullptr); }); }},
    {"takes_the_editor", [](Stage& s) { s.Do([&] { s.board->SetShotEditor(nullptr); }); }},
    {"takes_the_queue", [](Stage& s) { s.Do([&] { s.board->SetUndoQueue(nullptr); }); }},
    {"takes_the_history", [](Stage& s) { s.Do([&] { s.board->SetRewindHistory(nullptr); }); }},
    {"destroys", [](Stage& s) { s.Do([&] { s.board->Destroy(); }); }},
    {"hides", [](Stage& s) { s.Do([&] { s.board->SetVisible(false); }); }},
    {"presents", [](Stage& s) { s.Do([&] { s.board->SetMode(Storyboard::MODE_PRESENTING); }); }},
    {"stops", [](Stage& s) { s.Do([&] { s.board->StopPlayback(); }); }},
    {"plays_a_story", [](Stage& s) { s.Do([&] { s.board->PlaybackStory(s.board->GetStory()); }); }},
    {"previews", [](Stage& s) { s.Do([&] { s.board->PreviewShot(s.GetShot(1), true); }); }},
    {"pauses", [](Stage& s) { s.Do([&] { s.board->PausePlayback(); }); }},
    {"records", [](Stage& s) { s.Do([&] { s.board->BeginRecordWalk(); }); }},
    {"edits_another", [](Stage& s) { s.Do([&] { s.board->EditShot(s.GetShot(1)); }); }},
    {"closes_the_editor", [](Stage& s) { s.Do([&] { s.board->CloseShotEditor(); }); }},
    {"replaces_the_story", [](Stage& s) { s.Do([&] { s.board->SetStory(new Story); }); }},
    {"empties_the_story",
     [](Stage& s) { s.Do([&] { s.board->GetStory()->DeleteSequence(s.GetSequence()); }); }},
    {"deletes_a_shot", [](Stage& s) { s.Do([&] { s.board->DeleteShot(s.GetShot()); }); }},
    {"selects_another", [](Stage& s) { s.Do([&] { s.board->SetSelectedSequence(s.GetSequence(1)); }); }},
    {"ends_the_move", [](Stage& s) { s.hub.EndShot(); }},
    {"gives_another_hub", [](Stage& s) { s.Do([&] { s.board->SetKorvane(&s.otherHub); }); }},
    {"gives_another_renderer", [](Stage& s) { s.Do([&] { s.board->SetRenderer(&s.otherRenderer); }); }},
    {"destroys_the_editor", [](Stage& s) { s.editor.reset(); }, false},
    {"destroys_the_queue", [](Stage& s) { s.queue.reset(); }, false},
    {"clears_the_queue",
     [](Stage& s) {
       if (s.queue != nullptr) s.queue->Clear();
     }},
    {"adds_an_edit", [](Stage& s) { s.Do([&] { s.board->MoveSequence(s.GetSequence(), nullptr); }); }},
    {"deletes_a_shot_itself",
     [](Stage& s) {
       if (Sequence* const sequence = s.board != nullptr ? s.GetSequence() : nullptr)
         sequence->DeleteShot(sequence->GetFirstShot());
     }},
    {"creates_a_sequence", [](Stage& s) { s.Do([&] { s.board->CreateSequence(); }); }},
    {"creates_again", [](Stage& s) { s.Do([&] { s.board->Create(); }); }},
    {"fills_what_is_new_and_takes_the_editor",
     [](Stage& s) {
       s.Do([&] { s.board->SetShotEditor(nullptr); });
       Story* const story = s.board != nullptr ? s.board->GetStory() : nullptr;
       if (story == nullptr || story->GetSequenceCount() == 0) return;
       Sequence* const last = story->GetSequence(story->GetSequenceCount() - 1);
       if (last->IsEmpty()) last->AddShot(new ShotSpecification(s.hub.view));
     }},
    {"presses_elsewhere",
     [](Stage& s) {
       s.Do([&] { s.board->OnLeftMouseUp(1, 1); });
       s.Do([&] { s.board->OnLeftMouseDown(60, 260); });
     }},
};

class ActingHostTest : public ::testing::TestWithParam<std::tuple<int, int>> {};

void Rest(Stage& s) {
  if (s.board == nullptr) return;
  s.Restore();
  s.board->OnLeftMouseUp(1, 1);
  s.board->CancelRecordWalk();
  for (int i = 0; i < 2; ++i) s.board->StopPlayback();
  for (auto* const each : {&s.hub, &s.otherHub}) {
    each->EndShot();
    each->EndOperation(OPERATION_ALL);
  }
  s.Frames(2);
  EXPECT_FALSE(s.board->IsPlayingBack() || s.board->IsPaused() || s.board->IsRecordingWalk());
  EXPECT_FALSE(s.board->GetParts().playback.IsRecordingHistory());
}

// The act comes within the call of this number of `host`; the answer is how many there were.
long RunWith(const Use& use, ActingHost Stage::*host, const Act& act, long number) {
  Stage stage;
  (stage.*host).ActIn(number, [&] { act.commit(stage); });
  use.play(stage);
  const long calls = (stage.*host).GetCalls();
  Rest(stage);
  EXPECT_FALSE(stage.hub.IsOperationActive(OPERATION_ALL));
  EXPECT_FALSE(stage.otherHub.IsOperationActive(OPERATION_ALL));
  stage.board.reset();
  for (const PanelRenderer* const each : {&stage.renderer, &stage.otherRenderer}) {
    EXPECT_EQ(each->GetLiveIconCount(), 0);
    EXPECT_EQ(each->GetForeignDestroyCount(), 0);
    EXPECT_EQ(each->begun, each->ended);
  }
  return calls;
}

TEST_P(ActingHostTest, may_do_it_in_each_call) {
  const Use& use = USES[std::get<0>(GetParam())];
  const Act& act = ACTS[std::get<1>(GetParam())];
  TryInEachCall([&](long number) { return RunWith(use, &Stage::calls, act, number); });
}

TEST_P(ActingHostTest, may_do_it_while_the_panel_is_drawn) {
  constexpr long STRIDE = 41;  // much is drawn alike
  const Use& use = USES[std::get<0>(GetParam())];
  const Act& act = ACTS[std::get<1>(GetParam())];
  if (!act.isForRenderer) return;
  TryInEachCall([&](long number) { return RunWith(use, &Stage::drawing, act, number); }, STRIDE);
}

TEST_P(ActingHostTest, may_do_it_while_pictures_and_texts_are_made) {
  constexpr long STRIDE = 17;
  const Use& use = USES[std::get<0>(GetParam())];
  const Act& act = ACTS[std::get<1>(GetParam())];
  const bool deletes = &act == ACTS;
  if (!act.isForRenderer && !deletes) return;
  TryInEachCall([&](long number) { return RunWith(use, &Stage::making, act, number); }, deletes ? 1 : STRIDE);
}

INSTANTIATE_TEST_SUITE_P(Uses, ActingHostTest,
                         ::testing::Combine(::testing::Range(0, static_cast<int>(std::size(USES))),
                                            ::testing::Range(0, static_cast<int>(std::size(ACTS)))),
                         [](const auto& instance) {
                           return std::string(USES[std::get<0>(instance.param)].name) + "_and_the_host_" +
                                  ACTS[std::get<1>(instance.param)].name;
                         });

}  // namespace
