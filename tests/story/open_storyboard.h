#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "korvane/shot_editor.h"
#include "korvane/story.h"
#include "korvane/storyboard_observer.h"
#include "korvane/undo_queue.h"
#include "story/storyboard_parts.h"
#include "support/cameras.h"
#include "support/journal.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/recording_history.h"
#include "support/recording_renderer.h"

/// An editor that writes down what it is told, and then does what the test wants.
class JournalEditor : public Korvane::ShotEditor {
 public:
  explicit JournalEditor(Journal& theJournal) : journal(theJournal) {}

  void OnEditorReserved() override {}
  void SetPreviewState(bool previewing) override { Note("editor previews ", previewing); }
  void SetRecordingState(bool recording) override { Note("editor records ", recording); }
  void SetPanelVisible(bool isVisible) override {
    visible = isVisible;
    Note("editor visible ", isVisible);
  }
  void TransferControls(bool toShot) override { Note("editor transfers ", toShot); }

  bool visible = false;
  std::function<void()> onCall;

 private:
  void Note(const std::string& what, bool value) {
    journal.Add(what + (value ? "1" : "0"));
    const std::function<void()> running(onCall);  // which may destroy the editor
    if (running) running();
  }

  Journal& journal;
};

/// An observer that writes down what it is told, and then does what the test wants.
class JournalStoryObserver : public Korvane::StoryboardObserver {
 public:
  JournalStoryObserver(Korvane::Storyboard* board, Journal& theJournal)
      : StoryboardObserver(board), journal(theJournal) {}

  void OnOpened(Korvane::Storyboard::Mode mode) override { Note("opened " + std::to_string(mode)); }
  void OnClosed() override { Note("closed"); }
  void OnModeChanged(Korvane::Storyboard::Mode mode) override { Note("mode " + std::to_string(mode)); }
  void OnPartClicked(StoryboardPart part) override { Note("part " + std::to_string(part)); }
  void OnShotCreated() override { Note("created"); }
  void OnPlaybackStory(Korvane::Story* /*story*/) override { Note("plays story"); }
  void OnPlaybackSequence(Korvane::Sequence* /*sequence*/) override { Note("plays sequence"); }
  void OnPlaybackSingleShot(Korvane::ShotSpecification* /*shot*/) override { Note("plays shot"); }
  void OnPreviewShot(Korvane::ShotSpecification* /*shot*/, bool loop) override {
    Note(std::string("previews ") + (loop ? "1" : "0"));
  }
  void OnPlaybackStopped() override { Note("stopped"); }
  void OnPlaybackResumed() override { Note("resumed"); }
  void OnTargetShot(Korvane::ShotSpecification* /*shot*/) override { Note("targets"); }

  std::function<void()> onCall;

 private:
  void Note(const std::string& what) {
    journal.Add(what);
    if (onCall) onCall();
  }

  Journal& journal;
};

class OpenStoryboard : public Korvane::Storyboard {
 public:
  using Storyboard::BeginShot;
  using Storyboard::GetParts;
};

template <typename Object>
Object* PointerTo(Object& object) {
  return &object;
}
template <typename Object>
Object* PointerTo(std::unique_ptr<Object>& object) {
  return object.get();
}

/// Gives the storyboard of a stage everything that it can be given, and its place.
template <typename Stage>
void FurnishBoard(Stage& stage) {
  stage.board->SetKorvane(&stage.hub);
  stage.board->SetRenderer(&stage.renderer);
  stage.board->SetRewindHistory(&stage.history);
  stage.board->SetShotEditor(PointerTo(stage.editor));
  stage.board->SetUndoQueue(PointerTo(stage.queue));
  stage.board->SetPosition(0, 0);
  stage.board->SetViewportSize(1000, 600);
}

/// A storyboard of 1000 by 600 pixels that shows, with everything that it can be given.
struct StoryboardStage {
  StoryboardStage() {
    hub.GetApplicationParameters().viewport_width = 1000;
    hub.GetApplicationParameters().viewport_height = 600;
    FurnishBoard(*this);
    board->Create();
    board->SetVisible(true);
    board->AddObserver(&observer);
    Forget();
  }

  void Forget() {
    journal.lines.clear();
    renderer.ClearCalls();
    hub.requested = hub.applied = 0;
  }

  /// A shot that turns by 90 degrees in `seconds`, seen from (10 n, 0, 10), without a fade.
  Korvane::ShotSpecification* AddShot(Korvane::Sequence& sequence, double seconds = 2.0) {
    ++shotsMade;
    auto* const shot = new Korvane::ShotSpecification(
        LookAt({10.0 * shotsMade, 0, 10}, {10.0 * shotsMade, 0, 0}, {0, 1, 0}));
    shot->SetShotType(Korvane::ShotSpecification::SHOT_ORBIT);
    shot->SetLeftRightAngle(90.0);
    shot->SetDuration(seconds);
    shot->SetTransitionType(Korvane::ShotSpecification::TRANSITION_CUT);
    shot->SetName(L"shot " + std::to_wstring(shotsMade));
    sequence.AddShot(shot);
    return shot;
  }

  Korvane::Sequence* AddSequence(int shots = 0) {
    auto* const sequence = new Korvane::Sequence;
    sequence->SetName(L"sequence " + std::to_wstring(board->GetStory()->GetSequenceCount() + 1));
    board->GetStory()->AddSequence(sequence);
    for (int i = 0; i < shots; ++i) AddShot(*sequence);
    return sequence;
  }

  /// So much time passes, and a frame comes.
  void Frame(unsigned milliseconds = 16) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    board->Draw();
  }
  void FramesFor(unsigned milliseconds, unsigned step = 100) {
    for (unsigned passed = 0; passed < milliseconds; passed += step) Frame(step);
  }
  int CountPictures() const {
    return renderer.CountCalls("RenderResource") + renderer.CountCalls("RenderDynamic");
  }
  bool Click(int x, int y) {
    board->OnMouseMove(x, y);
    const bool pressed = board->OnLeftMouseDown(x, y);
    return board->OnLeftMouseUp(x, y) && pressed;
  }

  int shotsMade = 0;
  ManualPlatform platform;
  Journal journal;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  RecordingRenderer renderer;
  RecordingHistory history;
  Korvane::UndoQueue queue;
  JournalEditor editor{journal};
  std::unique_ptr<OpenStoryboard> board = std::make_unique<OpenStoryboard>();
  JournalStoryObserver observer{board.get(), journal};
};

struct StoryboardTest : ::testing::Test, StoryboardStage {};
