#pragma once

#include <vector>

#include "korvane/vector2.h"

namespace zovhost {

/// What the fingers have done together since one of them came or went: the nearest that a shift, a turn and
/// an enlargement about their middle come to it.
struct TouchMotion {
  Korvane::Vector2 from;  ///< Their middle then, pixels.
  Korvane::Vector2 to;    ///< Their middle now.
  double scale = 1.0;     ///< Above 1 when they have parted. 1 of a single finger.
  double turn = 0.0;      ///< Radians, counterclockwise; counts on past whole turns. 0 of a single finger.

  Korvane::Vector2 GetTranslation() const { return to - from; }
};

/// Fingers on a viewport, and what they mean together. It knows of no window and no clock.
///
/// Positions are viewport pixels, y upward. One that is not finite, or beyond FURTHEST, is refused. The
/// motion depends on where the fingers are and on whole turns, not on the way there nor on their order, so
/// that fingers that go back undo what they did.
class TouchGestures {
 public:
  static constexpr int MOST_FINGERS = 10;
  static constexpr double FURTHEST = 1e6;  ///< Pixels.
  /// Fingers that are closer than this, on the average and in pixels from their middle, count as so far
  /// apart, and do not turn.
  static constexpr double CLOSEST = 4.0;

  /// A finger comes down; the motion begins anew. False for one that is down, and for one too many.
  bool Press(int finger, const Korvane::Vector2& at);
  /// False for a finger that is not down.
  bool Move(int finger, const Korvane::Vector2& at);
  /// The motion of those that are left begins anew. False for a finger that is not down.
  bool Release(int finger);
  void ReleaseAll();
  /// The motion begins anew where the fingers are.
  void Restart();

  int GetFingerCount() const { return static_cast<int>(touches.size()); }
  bool IsDown(int finger) const;
  TouchMotion GetMotion() const;

 private:
  struct Touch {
    int finger;
    Korvane::Vector2 start;
    Korvane::Vector2 now;
  };

  void FollowTurn();

  std::vector<Touch> touches;  // by number
  double turn = 0.0;
};

}  // namespace zovhost
