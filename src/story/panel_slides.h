#pragma once

#include <map>
#include <vector>

#include "korvane/lifeline.h"
#include "story/panel_layout.h"

namespace Korvane {

/// The slides of a story, and what is selected in it. The slides hold pointers that are only compared; what
/// they show may be gone by the next frame, which makes them anew.
class PanelSlides {
 public:
  using Sequences = std::vector<Storyboard::DisplayElement>;
  using Shots = std::vector<Storyboard::ShotDisplayElement>;

  /// To be made anew with the next Refresh.
  void Forget();
  /// Makes them anew where the story has others, places them, and finds the one under the mouse. While a
  /// slide is dragged none is made or goes, and the mouse marks where the drag lands. Whether anything has
  /// changed.
  struct Mouse {
    Vector2 point;
    const Sequence* draggedSequence = nullptr;
    const ShotSpecification* draggedShot = nullptr;
    double draggedBy = 0.0;  // pixels to the right
  };
  bool Refresh(Story* story, bool editing, const PanelRoom& room, const Mouse& mouse);
  /// A slide, or the row of the shots, is under the mouse.
  bool IsUnderMouse() const { return underMouse; }

  // ---- the selection ----

  Sequence* GetSelectedSequence() const { return selectedSequence.Get(); }
  void SelectSequence(Sequence* sequence) { selectedSequence.Set(sequence); }
  ShotSpecification* GetSelectedShot(const Sequence* sequence) const;
  /// Null for none.
  void SelectShot(Sequence& sequence, ShotSpecification* shot);
  /// SelectShot for this one needs no memory afterwards.
  void MakeRoomForChoice(const Sequence& sequence);
  void ClearSelection();
  /// -1 for none.
  int GetSelectedSequenceIndex() const { return selectedSequenceIndex; }

  /// Null where none is highlighted.
  const Storyboard::DisplayElement* GetHighlightedSequence() const;
  const Storyboard::ShotDisplayElement* GetHighlightedShot() const;

  Sequences sequences;
  Shots shots;
  RowStacks stacks;
  int scrollOffset = 0;  // pixels
  int shotScrollOffset = 0;

 private:
  struct Choice {
    Lifeline::Watch sequence;
    Borrowed<ShotSpecification> shot;
  };

  bool FitsSequences(const Story& story, bool editing) const;
  bool FitsShots(const Sequence* sequence, bool editing) const;
  void MakeSequences(Story& story, bool editing);
  void MakeShots(Sequence* sequence, bool editing);
  void Make(Story& story, bool editing);
  void ClearMouse();
  void Highlight(const Vector2& mouse);
  void MarkDrop(const Mouse& mouse);
  bool IsAnyUnder(const Vector2& mouse) const;

  Borrowed<Sequence> selectedSequence;
  int selectedSequenceIndex = -1;
  int highlightedSequence = -1;  // of the row; -1 for none
  int highlightedShot = -1;
  bool underMouse = false;
  std::map<const Sequence*, Choice> selectedShots;
  Sequences lastSequences;
  Shots lastShots;
};

}  // namespace Korvane
