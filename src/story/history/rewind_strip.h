#pragma once

#include <span>

#include "korvane/rewind_history.h"

namespace Korvane {

/// The film strip: where its elements stand, where the bracket stands between them, and how much each element
/// weighs in the view. It only computes. Pixels, y upward, but for sizes; the strip runs along x.
struct RewindStrip {
  using Element = RewindHistory::HistoryElement;
  using Elements = std::span<Element>;

  /// From one element to the next.
  double GetPitch() const { return (static_cast<double>(thumbnailSize) + thumbnailGapSize) * scale; }
  /// A picture, wherever it stands.
  Vector2 GetHalfSize() const { return Vector2(thumbnailSize * scale / 2.0); }
  /// The bracket has been left beside the current element: after it (1), before it (-1).
  bool LeansTo(int side) const { return bracketOffset.x * side < 0.0 && !layoutStale; }

  /// Stands the elements around the mouse and opens.
  void Open(Elements elements, int current, const Vector2& position);
  /// After an element has come, or another size: in place again while open.
  void Space(Elements elements) const;
  /// Follows the mouse; not empty. The element that weighs most.
  int Slide(Elements elements, const Vector2& position);

  float thumbnailSize = 0.0F;
  float thumbnailGapSize = 0.0F;
  double scale = 1.0;  // pixels for each of a size
  int viewportWidth = 0;
  int viewportHeight = 0;

  bool open = false;
  bool layoutStale = false;  // to be laid out anew at the next opening
  bool snapEnabled = true;
  bool snapped = false;   // the bracket is on an element
  Vector2 bracketOrigin;  // goes with the strip when it scrolls
  Vector2 bracketPosition;
  Vector2 bracketOffset;    // from the bracket to the element next to it; kept from one opening to the next
  Vector2 openPosition;     // of the mouse
  Vector2 mouseCorrection;  // to each position of the mouse, which has gone on where the bracket was held
  Vector2 scrollLeft;       // beyond these the strip scrolls
  Vector2 scrollRight;
  double pendingShift = 0.0;  // what the last snap has kept back of the way of the strip

 private:
  double GetMargin() const { return 2.0 * GetPitch(); }
  double FindScroll(double mouseX, double first, double last) const;
  double Snap(Elements elements, double scroll, double shift);
  double Weigh(const Element& element) const;
  void Move(Elements elements, double shift) const;
  int NoteHeaviest(Elements elements);
  void HoldBracket(double first, double last);
  void HoldBracketAt(double end);
};

}  // namespace Korvane
