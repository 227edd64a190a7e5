#pragma once

#include "korvane/export.h"
#include "korvane/storyboard.h"

namespace Korvane {

class Story;

/// Is told what happens on the storyboard panel. Borrowed by the panel; see Storyboard::AddObserver.
class ZOVTOOLS_API StoryboardObserver {
 public:
  /// What was clicked.
  enum StoryboardPart : int {
    PART_PLAY_STORY = 0,
    PART_PAUSE = 1,
    PART_RESUME = 2,
    PART_STOP = 3,
    PART_LOOP_ON = 4,
    PART_LOOP_OFF = 5,
    PART_CLOSE = 6,
    PART_ADD_SEQUENCE = 7,
    PART_PLAY_SEQUENCE = 8,
    PART_PAUSE_SEQUENCE = 9,
    PART_RESUME_SEQUENCE = 10,
    PART_TARGET_SEQUENCE = 11,
    PART_SELECT_SEQUENCE = 12,
    PART_SELECT_SEQUENCE_SLIDE = 13,
    PART_ADD_SHOT = 14,
    PART_PLAY_SHOT = 15,
    PART_PAUSE_SHOT = 16,
    PART_RESUME_SHOT = 17,
    PART_TARGET_SHOT = 18,
    PART_SELECT_SHOT = 19,
  };

  virtual ~StoryboardObserver();
  StoryboardObserver(const StoryboardObserver&) = delete;
  StoryboardObserver& operator=(const StoryboardObserver&) = delete;

  virtual void OnOpened(Storyboard::Mode mode) = 0;
  virtual void OnClosed() = 0;
  virtual void OnModeChanged(Storyboard::Mode mode) = 0;
  virtual void OnPartClicked(StoryboardPart part) = 0;
  virtual void OnShotCreated() = 0;
  /// The four kinds of playback begin.
  virtual void OnPlaybackStory(Story* story) = 0;
  virtual void OnPlaybackSequence(Sequence* sequence) = 0;
  virtual void OnPlaybackSingleShot(ShotSpecification* shot) = 0;
  virtual void OnPreviewShot(ShotSpecification* shot, bool loop) = 0;
  virtual void OnPlaybackStopped() = 0;
  virtual void OnPlaybackResumed() = 0;
  virtual void OnTargetShot(ShotSpecification* shot) = 0;

 protected:
  /// Does not add itself to the panel.
  explicit StoryboardObserver(Storyboard* subject) : storyboard(subject) {}

  Storyboard* storyboard;
};

}  // namespace Korvane
