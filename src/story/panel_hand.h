#pragma once

#include <memory>

#include "story/storyboard_parts.h"

namespace Korvane {

/// What a press and a click on the panel do. Made for one event of a storyboard.
class PanelHand {
 public:
  PanelHand(Storyboard& storyboard, const std::shared_ptr<StoryboardParts>& parts)
      : board(storyboard), now(parts) {}

  /// The buttons of the title bar act at once; a slide is taken, to be dragged.
  void Press();
  /// Drags what was taken, or scrolls the row that was pressed.
  void Drag(int by);
  /// What was dragged goes where it was let go.
  void Land();
  void Click();

 private:
  /// The three things that a play button says, and does.
  struct PlayParts {
    StoryboardObserver::StoryboardPart play;
    StoryboardObserver::StoryboardPart pause;
    StoryboardObserver::StoryboardPart resume;
  };
  enum class PlayState { Resting, Playing, Paused };

  /// Tells the observers. False when the storyboard is gone.
  bool Tell(StoryboardObserver::StoryboardPart part);
  bool Grab();
  void PressTitleButton(TitleButton button);
  void PressLoop();
  void ScrollShots(int by);
  void ClickSlide(const Storyboard::ShotDisplayElement& slide);
  void ClickSlide(const Storyboard::DisplayElement& slide);
  void SelectShot(Sequence* sequence, ShotSpecification* shot);
  template <class Play>
  void UsePlayButton(const PlayParts& parts, PlayState state, const Play& play);
  PlayState GetState(bool isPlaying, bool isPaused) const;

  Storyboard& board;
  Staying<StoryboardParts> now;
};

}  // namespace Korvane
