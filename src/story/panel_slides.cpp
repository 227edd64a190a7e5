#include "story/panel_slides.h"

#include <algorithm>
#include <cstdint>

namespace Korvane {

namespace {

template <class Slides>
bool AreSame(const Slides& left, const Slides& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](const Slide& a, const Slide& b) { return a == b; });
}

// -1 for none.
template <class Slides, class IsAbove>
int FindTopmost(const Slides& slides, const Vector2& mouse, const IsAbove& isFirstAbove) {
  int found = -1;
  for (int i = 0; i < static_cast<int>(slides.size()); ++i) {
    if (SlideAt(slides, i).GetBounds().IsPointInside(mouse) && (found < 0 || isFirstAbove(i, found)))
      found = i;
  }
  return found;
}

template <class Slides>
void ClearMouseIn(Slides& slides) {
  for (Slide& each : slides) {
    each.highlighted = each.overFirstButton = each.overSecondButton = false;
    each.dragging = each.dropBefore = each.dropAfter = false;
  }
}

bool IsAdding(const Storyboard::DisplayElement& slide) { return slide.sequence == nullptr; }
bool IsAdding(const Storyboard::ShotDisplayElement& slide) { return slide.shot == nullptr; }

// The one under the mouse, -1 for none. The slide that adds one has no buttons.
template <class Slides, class IsAbove>
int HighlightIn(Slides& slides, const Vector2& mouse, const SlideButtons& buttons,
                const IsAbove& isFirstAbove) {
  const int found = FindTopmost(slides, mouse, isFirstAbove);
  if (found < 0) return found;
  auto& slide = SlideAt(slides, found);
  slide.highlighted = true;
  slide.overFirstButton = !IsAdding(slide) && buttons.first.IsHit(slide, mouse);
  slide.overSecondButton = !IsAdding(slide) && buttons.second.IsHit(slide, mouse);
  return found;
}

// The one slide on which the drag lands. The slide that adds one stands for the end of the row.
template <class Slides, class IsDragged>
void MarkDropIn(Slides& slides, const Vector2& mouse, double draggedBy, const IsDragged& isDragged) {
  bool marked = false;
  for (auto& each : slides) {
    each.dragging = isDragged(each);
    if (each.dragging) {
      each.x += draggedBy;
    } else if (!marked && GetDropBounds(each).IsPointInside(mouse)) {
      marked = true;
      each.dropBefore = mouse.x < each.x || IsAdding(each);
      each.dropAfter = !each.dropBefore;
    }
  }
}

}  // namespace

void PanelSlides::Forget() {
  sequences.clear();
  shots.clear();
  ClearMouse();
}

bool PanelSlides::Refresh(Story* story, bool editing, const PanelRoom& room, const Mouse& mouse) {
  const bool dragging = mouse.draggedSequence != nullptr || mouse.draggedShot != nullptr;
  lastSequences = sequences;
  lastShots = shots;
  if (!dragging) {
    if (story != nullptr) {
      Make(*story, editing);
    } else {
      Forget();
    }
  }
  PlaceSequenceSlides(room, scrollOffset, sequences);
  stacks = PlaceShotSlides(room, shotScrollOffset, shots);
  ClearMouse();
  if (dragging) {
    MarkDrop(mouse);
  } else {
    Highlight(mouse.point);
  }
  underMouse = underMouse || (!shots.empty() && GetShotRow(room, shots).IsPointInside(mouse.point));
  return !AreSame(lastSequences, sequences) || !AreSame(lastShots, shots);
}

// ---- the slides of a story ----

void PanelSlides::Make(Story& story, bool editing) {
  Sequence* const selected = GetSelectedSequence();
  const bool shown = selected != nullptr && story.ContainsSequence(selected);
  if (!FitsSequences(story, editing)) MakeSequences(story, editing);
  if (!FitsShots(shown ? selected : nullptr, editing)) MakeShots(shown ? selected : nullptr, editing);
  selectedSequenceIndex = -1;
  for (std::size_t i = 0; i < sequences.size(); ++i) {
    sequences[i].selected = shown && sequences[i].sequence == selected;
    if (sequences[i].selected) selectedSequenceIndex = static_cast<int>(i);
  }
  const ShotSpecification* const shot = GetSelectedShot(selected);
  for (Storyboard::ShotDisplayElement& each : shots) each.selected = shot != nullptr && each.shot == shot;
}

bool PanelSlides::FitsSequences(const Story& story, bool editing) const {
  const std::uint64_t count = story.GetSequenceCount();
  if (sequences.size() != count + (editing ? 1 : 0)) return false;
  for (std::uint64_t i = 0; i < sequences.size(); ++i) {
    if (sequences[i].sequence != story.GetSequence(i) || sequences[i].story != &story) return false;
  }
  return true;
}

bool PanelSlides::FitsShots(const Sequence* sequence, bool editing) const {
  if (sequence == nullptr) return shots.empty();
  if (shots.size() != sequence->GetShotCount() + (editing ? 1 : 0)) return false;
  for (std::uint64_t i = 0; i < shots.size(); ++i) {
    if (shots[i].shot != sequence->GetShot(i) || shots[i].sequence != sequence) return false;
  }
  return true;
}

void PanelSlides::MakeSequences(Story& story, bool editing) {
  sequences.assign(story.GetSequenceCount() + (editing ? 1 : 0), {});
  for (std::uint64_t i = 0; i < sequences.size(); ++i) {
    sequences[i].story = &story;
    sequences[i].sequence = story.GetSequence(i);
  }
}

void PanelSlides::MakeShots(Sequence* sequence, bool editing) {
  shots.clear();
  if (sequence == nullptr) return;
  shots.assign(sequence->GetShotCount() + (editing ? 1 : 0), {});
  for (std::uint64_t i = 0; i < shots.size(); ++i) {
    shots[i].sequence = sequence;
    shots[i].shot = sequence->GetShot(i);
  }
}

// ---- the mouse ----

void PanelSlides::ClearMouse() {
  ClearMouseIn(sequences);
  ClearMouseIn(shots);
  highlightedSequence = highlightedShot = -1;
  underMouse = false;
}

// The shots lie above the sequences.
void PanelSlides::Highlight(const Vector2& mouse) {
  const auto isShotAbove = [this](int a, int b) { return IsFirstAboveSecondShot(shots, a, b); };
  const auto isSequenceAbove = [this](int a, int b) {
    return IsFirstAboveSecondSequence(a, b, selectedSequenceIndex);
  };
  highlightedShot = HighlightIn(shots, mouse, SHOT_BUTTONS, isShotAbove);
  if (highlightedShot < 0) {
    highlightedSequence = HighlightIn(sequences, mouse, SEQUENCE_BUTTONS, isSequenceAbove);
  }
  underMouse = highlightedShot >= 0 || highlightedSequence >= 0;
}

void PanelSlides::MarkDrop(const Mouse& mouse) {
  if (mouse.draggedShot != nullptr) {
    MarkDropIn(shots, mouse.point, mouse.draggedBy,
               [&](const Storyboard::ShotDisplayElement& each) { return each.shot == mouse.draggedShot; });
  } else {
    MarkDropIn(sequences, mouse.point, mouse.draggedBy, [&](const Storyboard::DisplayElement& each) {
      return each.sequence == mouse.draggedSequence;
    });
  }
  underMouse = IsAnyUnder(mouse.point);
}

bool PanelSlides::IsAnyUnder(const Vector2& mouse) const {
  const auto isUnder = [&](const Slide& each) { return each.GetBounds().IsPointInside(mouse); };
  return std::any_of(sequences.begin(), sequences.end(), isUnder) ||
         std::any_of(shots.begin(), shots.end(), isUnder);
}

const Storyboard::DisplayElement* PanelSlides::GetHighlightedSequence() const {
  return highlightedSequence >= 0 ? &SlideAt(sequences, highlightedSequence) : nullptr;
}
const Storyboard::ShotDisplayElement* PanelSlides::GetHighlightedShot() const {
  return highlightedShot >= 0 ? &SlideAt(shots, highlightedShot) : nullptr;
}

// ---- the selection ----

ShotSpecification* PanelSlides::GetSelectedShot(const Sequence* sequence) const {
  const auto found = selectedShots.find(sequence);
  return found != selectedShots.end() && found->second.sequence ? found->second.shot.Get() : nullptr;
}

void PanelSlides::SelectShot(Sequence& sequence, ShotSpecification* shot) {
  Choice& choice = selectedShots[&sequence];
  choice.sequence.Attach(sequence.GetLifeline());
  choice.shot.Set(shot);
}

void PanelSlides::MakeRoomForChoice(const Sequence& sequence) { selectedShots.try_emplace(&sequence); }

void PanelSlides::ClearSelection() {
  selectedSequence.Set(nullptr);
  selectedShots.clear();
}

}  // namespace Korvane
