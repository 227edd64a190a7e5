// Random events on a storyboard whose host does at any moment within a call anything that a host may do: it
// edits the story behind the panel's back, replaces it, takes collaborators away, undoes, plays, records and
// destroys. For the sanitizers, and for what must hold afterwards.
#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>

#include "korvane/shot_editor.h"
#include "korvane/story.h"
#include "korvane/storyboard_observer.h"
#include "korvane/undo_queue.h"
#include "story/storyboard_parts.h"
#include "support/cameras.h"
#include "support/counted_history.h"
#include "support/counting_renderer.h"
#include "support/manual_platform.h"
#include "support/mischief.h"
#include "support/mischievous_hub.h"
#include "support/random.h"

using namespace Korvane;

namespace {

constexpr int WIDTH = 1000;
constexpr int HEIGHT = 600;
constexpr std::uint64_t MOST_SEQUENCES = 8;
constexpr std::uint64_t MOST_SHOTS = 12;

class StormRenderer : public CountingRenderer {
 public:
  explicit StormRenderer(Mischief& host) : mischief(host) {}

  bool BeginRender(const Box2& /*viewport*/, const CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    return !mischief.Fails();
  }
  bool RenderGeometry(unsigned /*count*/, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    return !mischief.Fails();
  }
  bool Render(ResourceIcon3D* /*icon*/) override { return !mischief.Fails(); }
  bool Render(DynamicIcon2D* icon) override {
    drawnTexts += icon->GetID() >= 0 ? 1 : 0;
    return !mischief.Fails();
  }
  bool Render(ResourceIcon2D* icon) override {
    drawnPictures += icon->GetTextureResourceID() != TEXTURE_NONE ? 1 : 0;
    return !mischief.Fails();
  }
  std::wstring LoadStringResource(int id) override {
    return mischief.Fails() ? L"" : CountingRenderer::LoadStringResource(id);
  }
  DynamicIcon2D* CreateSceneScreenshot(int width, int height, const CameraParameters& camera) override {
    return mischief.Fails(8) ? nullptr : CountingRenderer::CreateSceneScreenshot(width, height, camera);
  }
  DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int width, int height) override {
    return mischief.Fails() ? nullptr : CountingRenderer::CreateTextLabel(text, size, width, height);
  }
  DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override {
    return mischief.Fails() ? nullptr : CountingRenderer::CreateMessageHUD(text);
  }
  bool DestroyIcon(DynamicIcon2D*& icon) override {
    const bool destroyed = CountingRenderer::DestroyIcon(icon);
    mischief.Call();
    return destroyed;
  }
  bool SetCursorPosition(int /*x*/, int /*y*/) override { return !mischief.Fails(); }
  bool SetCursorIcon(CursorID /*id*/) override { return !mischief.Fails(); }
  bool OpenMenu(MenuID /*id*/) override { return !mischief.Fails(); }

  long drawnTexts = 0;
  long drawnPictures = 0;

 private:
  Mischief& mischief;
};

class StormEditor : public ShotEditor {
 public:
  explicit StormEditor(Mischief& host) : mischief(host) {}

  void OnEditorReserved() override {}
  void SetPreviewState(bool /*previewing*/) override { mischief.Call(); }
  void SetRecordingState(bool /*recording*/) override { mischief.Call(); }
  void SetPanelVisible(bool /*visible*/) override { mischief.Call(); }
  void TransferControls(bool /*toShot*/) override { mischief.Call(); }

 private:
  Mischief& mischief;
};

class StormObserver : public StoryboardObserver {
 public:
  StormObserver(Storyboard* board, Mischief& host) : StoryboardObserver(board), mischief(host) {}

  void OnOpened(Storyboard::Mode /*mode*/) override { mischief.Call(); }
  void OnClosed() override { mischief.Call(); }
  void OnModeChanged(Storyboard::Mode /*mode*/) override { mischief.Call(); }
  void OnPartClicked(StoryboardPart part) override {
    parts |= 1U << part;
    mischief.Call();
  }
  void OnShotCreated() override { mischief.Call(); }
  void OnPlaybackStory(Story* /*story*/) override { mischief.Call(); }
  void OnPlaybackSequence(Sequence* /*sequence*/) override { mischief.Call(); }
  void OnPlaybackSingleShot(ShotSpecification* /*shot*/) override { mischief.Call(); }
  void OnPreviewShot(ShotSpecification* /*shot*/, bool /*loop*/) override { mischief.Call(); }
  void OnPlaybackStopped() override { mischief.Call(); }
  void OnPlaybackResumed() override { mischief.Call(); }
  void OnTargetShot(ShotSpecification* /*shot*/) override { mischief.Call(); }

  unsigned parts = 0;

 private:
  Mischief& mischief;
};

class OpenBoard : public Storyboard {
 public:
  using Storyboard::GetParts;
};

/// The storyboard, and everything that its host may do at any moment.
class Scene {
 public:
  Scene(Mischief& host, StormRenderer& first, StormRenderer& second)
      : random(host.random),
        renderers{&first, &second},
        hub(host, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})),
        editor(host),
        observer(&board, host) {
    hub.GetApplicationParameters().viewport_width = WIDTH;
    hub.GetApplicationParameters().viewport_height = HEIGHT;
    Restore();
    board.Create();
    board.SetVisible(true);
    board.AddObserver(&observer);
  }
  ~Scene() { board.Destroy(); }

  void Act() {
    using Action = void (Scene::*)();
    static constexpr Action ACTIONS[] = {
        &Scene::Aim,        &Scene::Aim,    &Scene::Aim,        &Scene::Down,    &Scene::Down,
        &Scene::Up,         &Scene::Up,     &Scene::Move,       &Scene::Key,     &Scene::KeyUp,
        &Scene::Menu,       &Scene::Click,  &Scene::Click,      &Scene::Click,   &Scene::Show,
        &Scene::ChangeMode, &Scene::Add,    &Scene::Add,        &Scene::Delete,  &Scene::Order,
        &Scene::Play,       &Scene::Play,   &Scene::Halt,       &Scene::Preview, &Scene::Undo,
        &Scene::Undo,       &Scene::Redo,   &Scene::ClearQueue, &Scene::Cut,     &Scene::CutSequence,
        &Scene::Replace,    &Scene::Select, &Scene::TakeAway,   &Scene::Restore, &Scene::Restore,
        &Scene::Swap,       &Scene::Life,   &Scene::Resize,     &Scene::Record,  &Scene::Record,
        &Scene::Walk,       &Scene::Edit,   &Scene::Change,     &Scene::EndMove, &Scene::Observe,
        &Scene::Fly};
    (this->*random.OneOf(ACTIONS))();
  }
  void Frame() {
    hub.PerformOperations();
    board.Draw();
  }
  /// As the user sees it, as a rule.
  void Present(bool shown) {
    Restore();
    board.OnLeftMouseUp(-1, -1);
    board.SetMode(Storyboard::MODE_EDITING);
    board.SetVisible(shown);
  }
  void Rest() {
    Restore();
    board.OnLeftMouseUp(1, 1);
    board.CancelRecordWalk();
    board.StopPlayback();
    board.StopPlayback();
    hub.EndShot();
    hub.EndOperation(OPERATION_ALL);
    Frame();
    Frame();
  }
  void Restore() {
    board.SetKorvane(&hub);
    board.SetRenderer(renderers[0]);
    board.SetRewindHistory(&history);
    board.SetShotEditor(&editor);
    board.SetUndoQueue(&queue);
    board.SetReleaseEndsHeight(true);
    board.SetViewportSize(WIDTH, HEIGHT);
    board.SetPosition(0, 0);
  }

  CountedHistory history;  // dies last
  OpenBoard& GetBoard() { return board; }
  MischievousHub<Mischief>& GetHub() { return hub; }
  const StormObserver& GetObserver() const { return observer; }

 private:
  bool OneOf(int count) { return random.Integer(1, count) == 1; }
  Story* GetStory() { return board.GetStory(); }
  Sequence* AnySequence() {
    Story* const story = GetStory();
    if (story == nullptr || story->IsEmpty()) return nullptr;
    return story->GetSequence(static_cast<std::uint64_t>(random.Integer(0, 7)) % story->GetSequenceCount());
  }
  ShotSpecification* AnyShot() {
    Sequence* const sequence = AnySequence();
    if (sequence == nullptr || sequence->IsEmpty()) return nullptr;
    return sequence->GetShot(static_cast<std::uint64_t>(random.Integer(0, 11)) % sequence->GetShotCount());
  }

  // ---- the user ----

  void MoveTo(int x, int y) {
    mouseX = x;
    mouseY = y;
    board.OnMouseMove(x, y);
  }
  void Move() { MoveTo(random.Integer(-20, WIDTH), random.Integer(-20, HEIGHT)); }
  // Over a slide, a button of it, or the title bar.
  void Aim() {
    static constexpr int X[] = {79, 126, 213, 260, 347, 33, 53, 103, 123, 173, 193, 243, 100, 121, 142, 175};
    static constexpr int Y[] = {79, 125, 49, 167, 187, 163, 180, 243, 243};
    MoveTo(random.OneOf(X), random.OneOf(Y));
  }
  void Down() { board.OnLeftMouseDown(mouseX, mouseY); }
  void Up() { board.OnLeftMouseUp(mouseX, mouseY); }
  void Click() {
    Aim();
    Down();
    if (OneOf(3)) Aim();
    Up();
  }
  void Key() { board.OnKeyDown(static_cast<KeyID>(random.Integer(0, 13))); }
  void KeyUp() { board.OnKeyUp(static_cast<KeyID>(random.Integer(0, 13))); }
  void Menu() {
    Aim();
    board.OnRightMouseDown(mouseX, mouseY);
    board.OpenMenu();
  }
  void Record() { board.BeginRecordWalk(); }
  void Walk() {
    board.BeginRecordWalk();
    Down();
    if (random.Coin()) board.OnKeyDown(KEY_SHIFT);
    Move();
    if (random.Coin()) board.OnKeyUp(KEY_SHIFT);
    if (random.Coin()) Up();
  }

  // ---- the host ----

  void Show() { board.SetVisible(!OneOf(6)); }
  void ChangeMode() { board.SetMode(OneOf(4) ? Storyboard::MODE_PRESENTING : Storyboard::MODE_EDITING); }
  void Add() {
    Sequence* const sequence = AnySequence();
    if (sequence == nullptr || OneOf(4)) {
      if (GetStory() != nullptr && GetStory()->GetSequenceCount() < MOST_SEQUENCES) board.CreateSequence();
    } else if (sequence->GetShotCount() < MOST_SHOTS) {
      board.CreateShot(sequence);
    }
  }
  void Delete() { board.DeleteShot(AnyShot()); }
  void Order() {
    board.MoveShot(AnyShot(), AnyShot());
    board.MoveSequence(AnySequence(), AnySequence());
  }
  void Play() {
    if (OneOf(3)) board.PlaybackStory(GetStory());
    if (OneOf(3)) board.PlaybackSequence(AnySequence());
    if (OneOf(3)) board.PlaybackSingleShot(AnyShot());
    board.SetLoop(OneOf(4));
    board.SetFadeWhilePresenting(random.Coin());
  }
  void Halt() {
    if (random.Coin()) board.PausePlayback();
    if (random.Coin()) board.ResumePlayback();
    if (OneOf(4)) board.StopPlayback();
  }
  void Preview() {
    if (random.Coin()) {
      board.PreviewShot(AnyShot(), random.Coin());
    } else {
      editor.PreviewShot(random.Coin());
    }
  }
  void Fly() {
    board.TargetShot(AnyShot());
    if (OneOf(4)) board.TargetSequence(AnySequence());
  }
  void Undo() { queue.Undo(); }
  void Redo() { queue.Redo(); }
  void ClearQueue() {
    if (OneOf(8)) queue.Clear();
  }
  void Cut() {
    Sequence* const sequence = AnySequence();
    if (sequence != nullptr && OneOf(3)) sequence->DeleteShot(sequence->GetFirstShot());
  }
  void CutSequence() {
    if (OneOf(6) && GetStory() != nullptr) GetStory()->DeleteSequence(AnySequence());
  }
  void Replace() {
    if (!OneOf(12)) return;
    if (random.Coin()) {
      board.ResetToEmptyStory();
    } else {
      board.SetStory(MakeStory().release());
    }
  }
  std::unique_ptr<Story> MakeStory() {
    auto story = std::make_unique<Story>();
    auto sequence = std::make_unique<Sequence>();
    for (int i = 0; i < 3; ++i) sequence->AddShot(std::make_unique<ShotSpecification>(hub.view).release());
    story->AddSequence(sequence.release());
    return story;
  }
  void Select() { board.SetSelectedSequence(AnySequence()); }
  void TakeAway() {
    switch (random.Integer(0, 9)) {
      case 0:
        return board.SetKorvane(nullptr);
      case 1:
        return board.SetRenderer(nullptr);
      case 2:
        return board.SetShotEditor(nullptr);
      case 3:
        return board.SetUndoQueue(nullptr);
      case 4:
        return board.SetRewindHistory(nullptr);
      default:
        return;
    }
  }
  void Swap() { board.SetRenderer(renderers[1]); }
  void Life() {
    if (!OneOf(12)) return;
    board.Destroy();
    if (random.Coin()) board.Create();
  }
  void Resize() {
    static constexpr int SIDES[] = {0, 1, -5, 300, 1000, 65535};
    board.SetViewportSize(random.OneOf(SIDES), random.OneOf(SIDES));
    if (OneOf(4)) board.SetPosition(random.OneOf(SIDES), random.OneOf(SIDES));
  }
  void Edit() {
    if (ShotSpecification* const shot = AnyShot()) board.EditShot(shot);
    if (OneOf(4)) editor.SaveChanges();
    if (OneOf(4)) editor.ResetCamera();
    if (OneOf(4)) editor.ResetParameters();
    if (OneOf(4)) board.CloseShotEditor();
  }
  void Change() {
    static constexpr double VALUES[] = {0.0,  -1.0,
                                        0.25, 3.0,
                                        1e9,  std::numeric_limits<double>::quiet_NaN(),
                                        1e-9, std::numeric_limits<double>::infinity()};
    ShotSpecification* const shot = AnyShot();
    if (shot == nullptr) return;
    shot->SetShotType(static_cast<ShotSpecification::ShotType>(random.Integer(-1, 11)));
    shot->SetTransitionType(static_cast<ShotSpecification::TransitionType>(random.Integer(-1, 3)));
    shot->SetDuration(random.OneOf(VALUES));
    shot->SetTransitionDuration(random.OneOf(VALUES));
    shot->SetInOutDistance(random.OneOf(VALUES));
    shot->SetLeftRightAngle(random.OneOf(VALUES));
    shot->SetUpDownDistance(random.OneOf(VALUES));
    shot->SetName(std::wstring(static_cast<std::size_t>(random.Integer(0, 3)), L'x'));
  }
  void EndMove() {
    if (random.Coin()) hub.EndShot();
    if (OneOf(4)) hub.EndOperation(OPERATION_ALL);
  }
  void Observe() {
    board.RemoveObserver(&observer);
    if (!OneOf(8)) board.AddObserver(&observer);
  }

  Random& random;
  StormRenderer* renderers[2];
  MischievousHub<Mischief> hub;
  StormEditor editor;
  OpenBoard board;
  UndoQueue queue;
  StormObserver observer;
  int mouseX = 0;
  int mouseY = 0;
};

int GetStormEvents() {
  const char* const value = std::getenv("ZOV_TEST_STORY_STORM");
  return value != nullptr ? std::atoi(value) : 20000;
}

class StoryboardStorm : public ::testing::TestWithParam<int> {};

TEST_P(StoryboardStorm, leaves_nothing_open_and_nothing_behind) {
  Random random(static_cast<std::uint64_t>(GetParam()));
  ManualPlatform platform;
  Mischief mischief(random, 25);
  StormRenderer first(mischief);
  StormRenderer second(mischief);
  unsigned parts = 0;
  {
    Scene scene(mischief, first, second);
    const int events = GetStormEvents();
    for (int event = 1; event <= events; ++event) {
      mischief.act = [&] { scene.Act(); };
      if (event % 40 == 0) scene.Present(true);
      scene.Act();
      if (random.Integer(0, 2) == 0) {
        platform.Advance(static_cast<std::uint32_t>(random.Integer(0, 300)));
        scene.Frame();
      }
      mischief.act = nullptr;
      if (event % 500 != 0) continue;
      scene.Rest();
      ASSERT_FALSE(scene.GetBoard().IsPlayingBack()) << event;
      ASSERT_FALSE(scene.GetBoard().IsPaused()) << event;
      ASSERT_FALSE(scene.GetBoard().IsRecordingWalk()) << event;
      ASSERT_FALSE(scene.GetHub().IsOperationActive(OPERATION_ALL)) << event;
      ASSERT_FALSE(scene.GetHub().broken) << event;
      ASSERT_FALSE(scene.GetBoard().GetParts().playback.IsRecordingHistory()) << event;
    }
    parts = scene.GetObserver().parts;
  }
  EXPECT_EQ(first.GetLiveIconCount(), 0);
  EXPECT_EQ(second.GetLiveIconCount(), 0);
  EXPECT_EQ(first.GetForeignDestroyCount(), 0);
  EXPECT_EQ(second.GetForeignDestroyCount(), 0);
  EXPECT_GT(mischief.actions, 100);
  EXPECT_GT(first.drawnPictures, 1000);
  EXPECT_GE(std::popcount(parts), 14);  // of the 20 parts of the panel that can be clicked
}

INSTANTIATE_TEST_SUITE_P(Streams, StoryboardStorm, ::testing::Range(0, 4));

}  // namespace
