#include "story/story_playback.h"

#include "camera/host_camera.h"
#include "korvane/math.h"
#include "korvane/shot_parameters.h"
#include "korvane/shot_watch.h"
#include "story/storyboard_parts.h"

namespace Korvane {

namespace {

constexpr double TARGET_TIME = 0.25;  // seconds
constexpr double BLACK = 0.0;
constexpr double WHITE = 1.0;

FadeOverlay CoverBy(const FadeTransition& fade) { return {fade.duration > 0.0 ? 1.0 : 0.0, fade.level}; }

}  // namespace

FadeTransition GetFadeTransition(const ShotSpecification* shot) {
  if (shot == nullptr) return {};
  const auto type = shot->GetTransitionType();
  const bool fades = type == ShotSpecification::TRANSITION_FADE_THROUGH_BLACK ||
                     type == ShotSpecification::TRANSITION_FADE_THROUGH_WHITE;
  if (!fades) return {};
  const double level = type == ShotSpecification::TRANSITION_FADE_THROUGH_WHITE ? WHITE : BLACK;
  return {Math::Min(shot->GetTransitionDuration(), shot->GetDuration()), level};
}

// ---- the place ----

void StoryPlayback::Place::Set(Story* inStory, std::uint64_t atSequence, Sequence* inSequence,
                               std::uint64_t atShot) {
  story.Set(inStory);
  sequenceIndex = atSequence;
  sequence.Set(inSequence);
  shotIndex = atShot;
}

void StoryPlayback::Place::Set(const Place& other) {
  Set(other.story.Get(), other.sequenceIndex, other.sequence.Get(), other.shotIndex);
}

ShotSpecification* StoryPlayback::Place::GetShot() const {
  const Sequence* const shown = sequence.Get();
  if (shown == nullptr) return nullptr;
  ShotSpecification* const shot = shown->GetShot(shotIndex);
  return shot != nullptr ? shot : shown->GetFirstShot();
}

// Of a sequence that is there.
ShotSpecification* StoryPlayback::Place::FindNext(bool again, Place& next) const {
  Sequence* const shown = sequence.Get();
  if (ShotSpecification* const shot = shown->GetShot(shotIndex + 1)) {
    next.Set(story.Get(), sequenceIndex, shown, shotIndex + 1);
    return shot;
  }
  if (story.Get() != nullptr) return FindNextSequence(again, next);
  next.Set(nullptr, 0, shown, 0);
  return again ? shown->GetFirstShot() : nullptr;
}

ShotSpecification* StoryPlayback::Place::FindNextSequence(bool again, Place& next) const {
  Story* const told = story.Get();
  const std::uint64_t count = told->GetSequenceCount();
  for (std::uint64_t step = 1; step <= count; ++step) {
    const std::uint64_t index = sequenceIndex + step;
    if (index >= count && !again) return nullptr;
    Sequence* const shown = told->GetSequence(index % count);
    if (shown->IsEmpty()) continue;
    next.Set(told, index % count, shown, 0);
    return shown->GetFirstShot();
  }
  return nullptr;
}

// A preview and a single shot play in no sequence.
ShotSpecification* StoryPlayback::FindNext(Place& next) const {
  if (place.sequence.Get() != nullptr) return place.FindNext(loop, next);
  return (previewing ? previewLoop : loop) ? currentShot.Get() : nullptr;
}

// ---- what begins it ----

bool StoryPlayback::PlayStory(Story* story) {
  Sequence* const sequence = story != nullptr ? story->GetFirstSequence() : nullptr;
  ShotSpecification* const shot = sequence != nullptr ? sequence->GetFirstShot() : nullptr;
  return Play(story, sequence, shot, [=](StoryboardObserver& each) { each.OnPlaybackStory(story); });
}

bool StoryPlayback::PlaySequence(Sequence* sequence) {
  ShotSpecification* const shot = sequence != nullptr ? sequence->GetFirstShot() : nullptr;
  return Play(nullptr, sequence, shot, [=](StoryboardObserver& each) { each.OnPlaybackSequence(sequence); });
}

bool StoryPlayback::PlaySingleShot(ShotSpecification* shot) {
  return Play(nullptr, nullptr, shot, [=](StoryboardObserver& each) { each.OnPlaybackSingleShot(shot); });
}

template <class Tell>
bool StoryPlayback::Play(Story* story, Sequence* sequence, ShotSpecification* shot, const Tell& tell) {
  if (parts.partners.hub.Get() == nullptr || shot == nullptr) return false;
  const CallingOut out(callsOut);
  const Lifeline::Watch alive(parts.lifeline);
  Place begin;
  begin.Set(story, 0, sequence, 0);
  const Borrowed<ShotSpecification> first(shot);
  EndPreviewBefore();
  if (alive && first.Get() != nullptr) parts.TellObservers(tell);
  if (!alive || first.Get() == nullptr) return false;
  playing = true;
  ++turns;
  ForgetPause();
  place.Set(begin);
  if (!BeginShot(first.Get()) && alive) parts.RequestUpdate();
  return true;
}

void StoryPlayback::EndPreviewBefore() {
  if (!previewing) return;
  previewing = false;
  if (ShotEditor* const editor = parts.partners.editor.Get()) editor->SetPreviewState(false);
}

void StoryPlayback::ForgetPause() {
  paused = false;
  pausedPlace.Clear();
  pausedShot.Set(nullptr);
  pausedSeconds = 0.0;
}

bool StoryPlayback::Preview(ShotSpecification* shot, bool again) {
  if (parts.partners.hub.Get() == nullptr || shot == nullptr) return false;
  const Lifeline::Watch alive(parts.lifeline);
  const CallingOut out(callsOut);
  const Borrowed<ShotSpecification> shown(shot);
  playing = previewing = true;
  const std::uint64_t turn = ++turns;
  previewLoop = again;
  ForgetPause();
  place.Clear();
  parts.TellObservers([&](StoryboardObserver& each) { each.OnPreviewShot(shot, again); });
  if (!alive) return false;
  if (ShotEditor* const editor = parts.partners.editor.Get()) editor->SetPreviewState(true);
  CameraOperations* const hub = alive ? parts.partners.hub.Get() : nullptr;
  if (hub == nullptr || turns != turn) return false;
  const CameraParameters before = QueryCamera(*hub);
  if (!alive || turns != turn) return false;
  previewStartCamera = before;
  StartNext(shown.Get());
  return true;
}

bool StoryPlayback::BeginShot(ShotSpecification* shot) {
  CameraOperations* const hub = parts.partners.hub.Get();
  if (hub == nullptr || shot == nullptr) return false;
  const Lifeline::Watch alive(parts.lifeline);
  const std::uint64_t turn = turns;
  const Borrowed<ShotSpecification> wanted(shot);
  const CameraParameters before = QueryCamera(*hub);
  if (!alive || turns != turn) return false;
  if (!StartNext(wanted.Get())) return false;
  Record(before);
  return true;
}

// Until the next rest of the camera.
void StoryPlayback::Record(const CameraParameters& before) {
  if (RewindHistory* const history = parts.partners.history.Get()) record.Begin(history, before);
}

// The camera of the shot, and its move. False where on the way the host has halted what plays or begun
// something else, and where the storyboard is gone by then.
bool StoryPlayback::StartNext(ShotSpecification* shot) {
  const CallingOut out(callsOut);
  const std::uint64_t turn = turns;
  const Lifeline::Watch alive(parts.lifeline);
  const Borrowed<ShotSpecification> started(shot);
  currentShot.Set(shot);
  if (CameraOperations* const hub = parts.partners.hub.Get(); hub != nullptr && shot != nullptr) {
    hub->ApplyCameraParameters(CameraParameters(shot->GetCameraParameters()));
  }
  CameraOperations* const hub = alive && turns == turn ? parts.partners.hub.Get() : nullptr;
  if (hub == nullptr || started.Get() == nullptr) return false;
  return started.Get()->BeginShot(hub) && alive && turns == turn;
}

bool StoryPlayback::Target(ShotSpecification* shot) {
  if (parts.partners.hub.Get() == nullptr || shot == nullptr) return false;
  const CallingOut out(callsOut);
  const std::uint64_t turn = turns;
  const Lifeline::Watch alive(parts.lifeline);
  const Borrowed<ShotSpecification> wanted(shot);
  parts.TellObservers([&](StoryboardObserver& each) { each.OnTargetShot(shot); });
  CameraOperations* const hub = alive && turns == turn ? parts.partners.hub.Get() : nullptr;
  if (hub == nullptr || wanted.Get() == nullptr) return false;
  currentShot.Set(nullptr);
  TransitionShotParameters move;
  move.targetCamera = wanted.Get()->GetCameraParameters();
  move.easeEnd = 1.0;
  move.duration = TARGET_TIME;
  const CameraParameters before = QueryCamera(*hub);
  CameraOperations* const flown = alive && turns == turn ? parts.partners.hub.Get() : nullptr;
  const bool flies = flown != nullptr && flown->BeginShot(move);
  if (!alive || turns != turn || !flies) return false;
  Record(before);
  return true;
}

// ---- what halts it ----

bool StoryPlayback::Pause() {
  if (!playing || paused) return false;
  if (previewing) return Stop();
  const CallingOut out(callsOut);
  const std::uint64_t turn = ++turns;
  const Lifeline::Watch alive(parts.lifeline);
  pausedPlace.Set(place);
  paused = true;
  pausedShot.Set(currentShot.Get());
  CameraOperations* const hub = parts.partners.hub.Get();
  const Shot* const move = hub != nullptr ? hub->GetActiveShot() : nullptr;
  pausedSeconds = move != nullptr ? move->GetElapsedTime() : 0.0;
  parts.TellObservers([](StoryboardObserver& each) { each.OnPlaybackStopped(); });
  if (!alive || turns != turn) return true;  // the host has begun another
  CameraOperations* const halted = parts.partners.hub.Get();
  if (!IsShotOver(halted)) halted->EndShot();
  if (!alive || turns != turn) return true;
  playing = false;
  place.Clear();
  parts.RequestUpdate();
  return true;
}

bool StoryPlayback::Resume() {
  if (!paused || playing) return false;
  const CallingOut out(callsOut);
  const std::uint64_t turn = ++turns;
  const Lifeline::Watch alive(parts.lifeline);
  place.Set(pausedPlace);
  playing = true;
  paused = false;
  const double seconds = pausedSeconds;
  parts.TellObservers([](StoryboardObserver& each) { each.OnPlaybackResumed(); });
  if (!alive || turns != turn) return true;
  ShotSpecification* const shot = pausedShot.Get() != nullptr ? pausedShot.Get() : place.GetShot();
  ForgetPause();
  if (!BeginShot(shot)) {
    if (alive) parts.RequestUpdate();
    return true;
  }
  CameraOperations* const hub = parts.partners.hub.Get();
  if (hub != nullptr && seconds > 0.0) hub->AdvanceActiveShot(seconds);
  return true;
}

bool StoryPlayback::Stop() {
  if (paused) {
    ForgetPause();
    return true;
  }
  if (!playing) return false;
  const CallingOut out(callsOut);
  const std::uint64_t turn = ++turns;
  const Lifeline::Watch alive(parts.lifeline);
  CameraOperations* const hub = parts.partners.hub.Get();
  if (!IsShotOver(hub)) hub->EndShot();
  if (!alive || !playing || turns != turn)
    return true;  // the host has stopped it meanwhile, or begun another
  playing = false;
  place.Clear();
  currentShot.Set(nullptr);
  parts.TellObservers([](StoryboardObserver& each) { each.OnPlaybackStopped(); });
  if (alive && previewing && !playing) EndPreview();
  if (alive) parts.RequestUpdate();
  return true;
}

void StoryPlayback::EndPreview() {
  const Lifeline::Watch alive(parts.lifeline);
  previewing = false;
  const CameraParameters before = previewStartCamera;
  if (CameraOperations* const hub = parts.partners.hub.Get()) hub->ApplyCameraParameters(before);
  if (alive) parts.RequestUpdate();
  ShotEditor* const editor = alive ? parts.partners.editor.Get() : nullptr;
  if (editor != nullptr) editor->SetPreviewState(false);
}

// ---- a frame ----

FadeOverlay StoryPlayback::Step() {
  const CameraOperations* const hub = parts.partners.hub.Get();
  if (hub == nullptr || callsOut > 0) return parts.overlay;
  const Lifeline::Watch alive(parts.lifeline);
  const FadeTransition fade = GetFadeTransition(currentShot.Get());
  FadeOverlay overlay{0.0, fade.level};
  if (playing) {
    const Shot* const move = hub->GetActiveShot();
    if (move != nullptr) {
      overlay = GetOverlay(*move, fade);
    } else {
      overlay = GoOn();
    }
  }
  if (!alive) return {};
  if (previewing && !playing) {
    overlay = CoverBy(fade);
    EndPreview();
  }
  if (alive) EndHistoryRecord();
  return overlay;
}

// The fade out is that of the shot to come.
FadeOverlay StoryPlayback::GetOverlay(const Shot& move, const FadeTransition& fade) const {
  const double elapsed = move.GetElapsedTime();
  if (elapsed < fade.duration) return {1.0 - elapsed / fade.duration, fade.level};
  const double progress = move.GetUnitTime();
  if (!(progress > 0.0)) return {0.0, fade.level};
  Place next;
  const FadeTransition coming = GetFadeTransition(FindNext(next));
  const double remaining = elapsed / progress - elapsed;
  if (!(remaining >= 0.0) || remaining >= coming.duration) return {0.0, fade.level};
  return {1.0 - remaining / coming.duration, coming.level};
}

// What the shot fades in from covers the view at first. One that has no move is passed over in the next
// frame, unless it is the only one.
FadeOverlay StoryPlayback::GoOn() {
  const Lifeline::Watch alive(parts.lifeline);
  const std::uint64_t turn = turns;
  Place next;
  ShotSpecification* const shot = FindNext(next);
  if (shot == nullptr) {
    End();
    return {};
  }
  const bool single = place.sequence.Get() == nullptr;
  place.Set(next);
  if (StartNext(shot)) return CoverBy(GetFadeTransition(currentShot.Get()));
  if (!alive || turns != turn) return {};
  if (single) {
    End();
  } else {
    parts.RequestUpdate();
  }
  return {};
}

void StoryPlayback::End() {
  const Lifeline::Watch alive(parts.lifeline);
  playing = false;
  place.Clear();
  parts.TellObservers([](StoryboardObserver& each) { each.OnPlaybackStopped(); });
  if (!alive) return;
  if (!playing) currentShot.Set(nullptr);
  parts.RequestUpdate();
}

void StoryPlayback::Close() {
  if (!record.IsOpen()) return;
  CameraOperations* const hub = parts.partners.hub.Get();
  if (!IsShotOver(hub)) hub->EndShot();
  record.End(parts.partners.hub.Get());
}

void StoryPlayback::EndHistoryRecord() {
  const CameraOperations* const hub = parts.partners.hub.Get();
  if (!playing && IsShotOver(hub)) record.End(hub);
}

}  // namespace Korvane
