#include "story/panel_hand.h"

#include <algorithm>
#include <cstddef>

namespace Korvane {

namespace {

using Observer = StoryboardObserver;

// The element before which a drag lands: that of the marked slide, or of the one behind it. Null at the end
// of the row. False where no slide is marked.
template <class Slides, class Of>
bool FindLanding(const Slides& slides, const Of& elementOf, decltype(elementOf(slides.front()))& before) {
  for (std::size_t i = 0; i < slides.size(); ++i) {
    if (!slides[i].dropBefore && !slides[i].dropAfter) continue;
    const std::size_t place = slides[i].dropBefore ? i : i + 1;
    before = place < slides.size() ? elementOf(slides[place]) : nullptr;
    return true;
  }
  return false;
}

}  // namespace

bool PanelHand::Tell(Observer::StoryboardPart part) {
  now.TellObservers([&](Observer& each) { each.OnPartClicked(part); });
  return static_cast<bool>(now);
}

// ---- the press ----

void PanelHand::Press() {
  now->grab.Clear();
  for (int i = 0; i < TITLE_BUTTON_COUNT; ++i) {
    if (now->mouse.titleButtonHovered[i]) return PressTitleButton(static_cast<TitleButton>(i));
  }
  Grab();
}

bool PanelHand::Grab() {
  if (!now->IsEditing()) return false;
  const auto isFree = [](const Slide& slide) { return !slide.overFirstButton && !slide.overSecondButton; };
  if (const Storyboard::ShotDisplayElement* const slide = now->slides.GetHighlightedShot()) {
    if (isFree(*slide)) now->grab.shot.Set(slide->shot);
  } else if (const Storyboard::DisplayElement* const sequence = now->slides.GetHighlightedSequence()) {
    if (isFree(*sequence)) now->grab.sequence.Set(sequence->sequence);
  }
  return now->grab.shot.Get() != nullptr || now->grab.sequence.Get() != nullptr;
}

void PanelHand::PressTitleButton(TitleButton button) {
  constexpr PlayParts STORY{Observer::PART_PLAY_STORY, Observer::PART_PAUSE, Observer::PART_RESUME};
  switch (button) {
    case TITLE_BUTTON_PLAY:
      return UsePlayButton(STORY, GetState(board.IsPlayingBack(), board.IsPaused()),
                           [this] { board.PlaybackStory(board.GetStory()); });
    case TITLE_BUTTON_STOP:
      if (Tell(Observer::PART_STOP)) board.StopPlayback();
      return;
    case TITLE_BUTTON_LOOP:
      return PressLoop();
    default:  // TITLE_BUTTON_CLOSE
      if (Tell(Observer::PART_CLOSE)) board.StopPlayback();
      if (now) board.SetVisible(false);
      return;
  }
}

void PanelHand::PressLoop() {
  const bool wanted = !board.GetLoop();
  if (Tell(wanted ? Observer::PART_LOOP_ON : Observer::PART_LOOP_OFF)) board.SetLoop(wanted);
}

// ---- the drag ----

void PanelHand::Drag(int by) {
  StoryboardParts::Grab& grab = now->grab;
  if (grab.active) return;
  if (grab.sequence.Get() != nullptr || grab.shot.Get() != nullptr) {
    grab.active = true;
  } else if (now->mouse.dragInStrip) {
    ScrollShots(by);
  } else {
    now->slides.scrollOffset = AddPixels(now->slides.scrollOffset, by);
  }
}

// To the left as long as shots are stacked at the right edge.
void PanelHand::ScrollShots(int by) {
  if (by < 0 && now->slides.stacks.right == 0) return;
  now->slides.shotScrollOffset = std::min(AddPixels(now->slides.shotScrollOffset, by), 0);
}

void PanelHand::Land() {
  StoryboardParts::Grab& grab = now->grab;
  const Borrowed<ShotSpecification> shot(grab.shot.Get());
  const Borrowed<Sequence> sequence(grab.sequence.Get());
  ShotSpecification* beforeShot = nullptr;
  Sequence* beforeSequence = nullptr;
  const bool landsShot =
      shot.Get() != nullptr &&
      FindLanding(
          now->slides.shots, [](const Storyboard::ShotDisplayElement& each) { return each.shot; },
          beforeShot);
  const bool landsSequence =
      sequence.Get() != nullptr &&
      FindLanding(
          now->slides.sequences, [](const Storyboard::DisplayElement& each) { return each.sequence; },
          beforeSequence);
  grab.Clear();
  if (landsShot) {
    board.MoveShot(shot.Get(), beforeShot);
  } else if (landsSequence) {
    board.MoveSequence(sequence.Get(), beforeSequence);
  }
}

// ---- the click ----

void PanelHand::Click() {
  if (const Storyboard::ShotDisplayElement* const shot = now->slides.GetHighlightedShot()) {
    ClickSlide(Storyboard::ShotDisplayElement(*shot));
  } else if (const Storyboard::DisplayElement* const sequence = now->slides.GetHighlightedSequence()) {
    ClickSlide(Storyboard::DisplayElement(*sequence));
  }
}

void PanelHand::ClickSlide(const Storyboard::ShotDisplayElement& slide) {
  constexpr PlayParts SHOT{Observer::PART_PLAY_SHOT, Observer::PART_PAUSE_SHOT, Observer::PART_RESUME_SHOT};
  const Borrowed<Sequence> sequence(slide.sequence);
  const Borrowed<ShotSpecification> shot(slide.shot);
  if (slide.shot == nullptr) {
    if (Tell(Observer::PART_ADD_SHOT)) board.CreateShot(sequence.Get());
  } else if (slide.overFirstButton) {
    const bool current = now->playback.GetCurrentShot() == slide.shot;
    UsePlayButton(SHOT, GetState(current && board.IsPlayingBack(), current && board.IsPaused()),
                  [&] { board.PlaybackSingleShot(shot.Get()); });
  } else if (slide.overSecondButton) {
    if (Tell(Observer::PART_TARGET_SHOT)) board.TargetShot(shot.Get());
  } else if (Tell(Observer::PART_SELECT_SHOT)) {
    SelectShot(sequence.Get(), shot.Get());
  }
}

void PanelHand::SelectShot(Sequence* sequence, ShotSpecification* shot) {
  if (sequence == nullptr || shot == nullptr) return;
  now->slides.SelectShot(*sequence, shot);
  if (!now->IsEditing()) return;
  if (ShotEditor* const editor = now->partners.editor.Get()) editor->SetShot(sequence, shot);
}

void PanelHand::ClickSlide(const Storyboard::DisplayElement& slide) {
  constexpr PlayParts SEQUENCE{Observer::PART_PLAY_SEQUENCE, Observer::PART_PAUSE_SEQUENCE,
                               Observer::PART_RESUME_SEQUENCE};
  const Borrowed<Sequence> sequence(slide.sequence);
  if (slide.sequence == nullptr) {
    if (Tell(Observer::PART_ADD_SEQUENCE)) board.CreateSequence();
  } else if (slide.overSecondButton) {
    if (Tell(Observer::PART_TARGET_SEQUENCE)) board.TargetSequence(sequence.Get());
  } else if (slide.overFirstButton) {
    const StoryPlayback& playback = now->playback;
    UsePlayButton(SEQUENCE,
                  GetState(playback.GetPlayingSequence() == slide.sequence,
                           playback.GetPausedSequence() == slide.sequence),
                  [&] { board.PlaybackSequence(sequence.Get()); });
  } else if (Tell(slide.selected ? Observer::PART_SELECT_SEQUENCE_SLIDE : Observer::PART_SELECT_SEQUENCE)) {
    board.SetSelectedSequence(sequence.Get());
  }
}

// ---- play buttons ----

PanelHand::PlayState PanelHand::GetState(bool isPlaying, bool isPaused) const {
  if (isPlaying) return PlayState::Playing;
  return isPaused ? PlayState::Paused : PlayState::Resting;
}

template <class Play>
void PanelHand::UsePlayButton(const PlayParts& parts, PlayState state, const Play& play) {
  switch (state) {
    case PlayState::Playing:
      if (Tell(parts.pause)) board.PausePlayback();
      return;
    case PlayState::Paused:
      if (Tell(parts.resume)) board.ResumePlayback();
      return;
    case PlayState::Resting:
      if (Tell(parts.play)) play();
      return;
  }
}

}  // namespace Korvane
