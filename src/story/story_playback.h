#pragma once

#include <cstdint>

#include "korvane/camera_parameters.h"
#include "korvane/lifeline.h"
#include "korvane/rewind_record.h"
#include "korvane/shot.h"
#include "korvane/story.h"

namespace Korvane {

struct StoryboardParts;

/// How a shot comes in: over how many seconds, and from which grey, 0 black to 1 white.
struct FadeTransition {
  double duration = 0.0;
  double level = 0.0;
};
/// Not longer than the shot. None for null.
FadeTransition GetFadeTransition(const ShotSpecification* shot);

/// What lies over the view.
struct FadeOverlay {
  double alpha = 0.0;
  double level = 0.0;
};

/// Plays the shots of a story, one after the other, and previews single ones. It belongs to a storyboard.
class StoryPlayback {
 public:
  explicit StoryPlayback(StoryboardParts& board) : parts(board) {}
  StoryPlayback(const StoryPlayback&) = delete;
  StoryPlayback& operator=(const StoryPlayback&) = delete;

  bool PlayStory(Story* story);
  bool PlaySequence(Sequence* sequence);
  bool PlaySingleShot(ShotSpecification* shot);
  bool Preview(ShotSpecification* shot, bool again);
  bool Pause();
  bool Resume();
  bool Stop();
  bool Target(ShotSpecification* shot);

  /// Applies the camera of the shot and begins its move, recorded in the history.
  bool BeginShot(ShotSpecification* shot);
  /// Ends the record that is open, with the move that it is of.
  void Close();
  /// A frame: begins what follows when a move has ended. What lies over the view then.
  FadeOverlay Step();

  bool IsPlaying() const { return playing; }
  bool IsPaused() const { return paused; }
  bool IsPreviewing() const { return previewing; }
  bool IsRecordingHistory() const { return record.IsOpen(); }
  ShotSpecification* GetCurrentShot() const { return currentShot.Get(); }
  /// Null where no sequence plays, or pauses.
  Sequence* GetPlayingSequence() const { return playing ? place.sequence.Get() : nullptr; }
  Sequence* GetPausedSequence() const { return paused ? pausedPlace.sequence.Get() : nullptr; }

  bool loop = false;

 private:
  /// Where in a story it plays.
  struct Place {
    Borrowed<Story> story;
    std::uint64_t sequenceIndex = 0;
    Borrowed<Sequence> sequence;
    std::uint64_t shotIndex = 0;

    void Set(Story* inStory, std::uint64_t atSequence, Sequence* inSequence, std::uint64_t atShot);
    void Set(const Place& other);
    void Clear() { Set(nullptr, 0, nullptr, 0); }
    ShotSpecification* GetShot() const;
    /// The next sequence of the story that is not empty, or the sequence itself where there is no story. Null
    /// past the end, unless it goes on from the begin.
    ShotSpecification* FindNext(bool again, Place& next) const;
    ShotSpecification* FindNextSequence(bool again, Place& next) const;
  };

  /// A stretch within which the host is called: a frame that it draws there begins nothing and ends nothing.
  class CallingOut {
   public:
    explicit CallingOut(int& callsOut) : depth(callsOut) { ++depth; }
    CallingOut(const CallingOut&) = delete;
    CallingOut& operator=(const CallingOut&) = delete;
    ~CallingOut() { --depth; }

   private:
    int& depth;
  };

  template <class Tell>
  bool Play(Story* story, Sequence* sequence, ShotSpecification* shot, const Tell& tell);
  void EndPreviewBefore();
  ShotSpecification* FindNext(Place& next) const;
  FadeOverlay GetOverlay(const Shot& move, const FadeTransition& fade) const;
  FadeOverlay GoOn();
  bool StartNext(ShotSpecification* shot);
  void Record(const CameraParameters& before);
  void End();
  void EndPreview();
  void EndHistoryRecord();
  void ForgetPause();

  StoryboardParts& parts;
  bool playing = false;
  Place place;
  Borrowed<ShotSpecification> currentShot;
  bool paused = false;
  Place pausedPlace;
  Borrowed<ShotSpecification> pausedShot;
  double pausedSeconds = 0.0;
  bool previewing = false;
  CameraParameters previewStartCamera;
  bool previewLoop = false;
  int callsOut = 0;
  std::uint64_t turns = 0;  // counts what begins or halts a playback
  RewindRecord record;
};

}  // namespace Korvane
