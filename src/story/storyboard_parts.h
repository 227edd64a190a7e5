#pragma once

#include <memory>
#include <string>

#include "foundation/staying.h"
#include "korvane/camera_operations.h"
#include "korvane/observer_set.h"
#include "korvane/renderer_loans.h"
#include "korvane/rewind_history.h"
#include "korvane/shot_editor.h"
#include "korvane/storyboard_observer.h"
#include "korvane/undo_queue.h"
#include "korvane/walk_recorder.h"
#include "story/message_icon.h"
#include "story/panel_slides.h"
#include "story/story_pictures.h"
#include "story/story_playback.h"
#include "story/storyboard_painter.h"

namespace Korvane {

/// The texts of the panel, from the first on.
constexpr int STORY_MESSAGE_COUNT = STRING_STORY_SLIDE - STRING_STORY_PLAY + 1;

/// What a storyboard is made of, by what changes together.
struct StoryboardParts {
  struct Partners {
    Borrowed<CameraOperations> hub;
    Borrowed<Renderer> renderer;
    Borrowed<RewindHistory> history;
    Borrowed<ShotEditor> editor;
    Borrowed<UndoQueue> queue;
    ObserverSet<StoryboardObserver> observers;
  };

  struct Life {
    bool created = false;
    bool visible = false;
    Storyboard::Mode mode = Storyboard::MODE_EDITING;
    bool fadeWhilePresenting = false;
    bool cutsOnly = false;
    bool releaseEndsHeight = false;
  };

  struct Mouse {
    int x = 0;  // in pixels of the panel's own
    int y = 0;
    bool leftDown = false;
    int downX = 0;
    bool dragging = false;     // the press has moved far enough to the side
    bool dragInStrip = false;  // it began on the row of the shots
    bool inRegion = false;
    bool controlDown = false;
    bool titleButtonHovered[TITLE_BUTTON_COUNT] = {};

    Vector2 GetPoint() const { return {static_cast<double>(x), static_cast<double>(y)}; }
  };

  /// The slide that a press took, and the drag of it.
  struct Grab {
    Borrowed<Sequence> sequence;
    Borrowed<ShotSpecification> shot;
    bool active = false;  // it is being dragged

    void Clear();
    bool IsDragging() const { return active && (sequence.Get() != nullptr || shot.Get() != nullptr); }
  };

  struct Walk {
    std::shared_ptr<WalkRecorder> recorder;
    MessageIcon beginMessage;
    MessageIcon upDownMessage;
  };

  StoryboardParts();

  bool CanDraw() const { return partners.hub.Get() != nullptr && partners.renderer.Get() != nullptr; }
  bool IsEditing() const { return life.mode == Storyboard::MODE_EDITING; }
  void RequestUpdate() const;
  void SetCursor(CursorID id) const;
  /// Each observer, as long as the storyboard is there.
  template <class Tell>
  void TellObservers(const Tell& tell) {
    const Lifeline::Watch alive(lifeline);
    partners.observers.Notify([&](StoryboardObserver& each) {
      if (alive) tell(each);
    });
  }
  void ForgetPress();
  /// The mouse is on a pixel of the viewport.
  void MoveMouse(int x, int y);
  /// The messages of a walk, for a recorder to draw; and from it again.
  void LendMessages(WalkRecorder& recorder) const;
  static void TakeMessages(WalkRecorder& recorder);
  /// It has none of the storyboard any more, and no storyboard.
  static void Dismiss(WalkRecorder& recorder);
  void GiveMessagesBack();
  /// Brings the slides and what the mouse is on up to date. Whether anything has changed.
  bool Refresh();
  /// For slides that are up to date, the labels that they lack, and one picture of the scene. Whether
  /// anything was made: there may be more to make.
  bool MakePictures();

  Partners partners;
  Life life;
  PanelPlace place;
  PanelRoom room;
  Mouse mouse;
  Grab grab;
  PanelSlides slides;
  StoryPictures pictures;
  StoryPlayback playback{*this};
  Walk walk;
  std::unique_ptr<Story> story;
  Borrowed<ShotSpecification> menuShot;
  bool menuMarked = false;  // its slide shows that its menu is open
  FadeOverlay overlay;
  StoryboardPainter painter;
  TextureLoan textures;
  std::wstring messages[STORY_MESSAGE_COUNT];
  std::wstring tooltip;
  Lifeline lifeline;

 private:
  void Measure();
  bool RefreshSlides();
  bool MakeEachPicture();
  bool UpdateMouse();
  StringID FindTooltip() const;
  enum class Made { Nothing, Label, Thumbnail };
  Made MakePicture();
  template <class Slides, class Subject>
  bool MakeLabel(const Slides& row, Subject*& withoutThumbnail);
};

}  // namespace Korvane
