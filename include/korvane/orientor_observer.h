#pragma once

#include "korvane/export.h"
#include "korvane/orientor_parameters.h"

namespace Korvane {

class Orientor;

/// Is told what the user does with an orientation cube. Borrowed by the cube, which it must leave with
/// Orientor::RemoveObserver before it goes.
///
/// While it is being told it may begin and end operations and shots, add and remove observers, itself
/// included, change the parameters, hide the cube, take its collaborators away, and take the cube away from
/// the view manager. It must not destroy the cube or the hub.
class ZOVTOOLS_API OrientorObserver {
 public:
  /// What a click or a drag was on. The same numbers name a part to be pressed from outside, but for the
  /// arrows to the faces and the ring of the compass, which are only told of.
  enum OrientorPart : int {
    PART_NONE = -1,

    PART_BACK = 0,
    PART_FRONT = 1,
    PART_BOTTOM = 2,
    PART_TOP = 3,
    PART_RIGHT = 4,
    PART_LEFT = 5,
    PART_BACK_BOTTOM = 6,
    PART_BACK_TOP = 7,
    PART_FRONT_BOTTOM = 8,
    PART_FRONT_TOP = 9,
    PART_RIGHT_BOTTOM = 10,
    PART_LEFT_BOTTOM = 11,
    PART_RIGHT_TOP = 12,
    PART_LEFT_TOP = 13,
    PART_BACK_RIGHT = 14,
    PART_FRONT_RIGHT = 15,
    PART_BACK_LEFT = 16,
    PART_FRONT_LEFT = 17,
    PART_BACK_RIGHT_BOTTOM = 18,
    PART_BACK_LEFT_BOTTOM = 19,
    PART_BACK_RIGHT_TOP = 20,
    PART_BACK_LEFT_TOP = 21,
    PART_FRONT_RIGHT_BOTTOM = 22,
    PART_FRONT_LEFT_BOTTOM = 23,
    PART_FRONT_RIGHT_TOP = 24,
    PART_FRONT_LEFT_TOP = 25,

    // A face reached by the arrow beside it.
    PART_BACK_ARROW = 26,
    PART_FRONT_ARROW = 27,
    PART_BOTTOM_ARROW = 28,
    PART_TOP_ARROW = 29,
    PART_RIGHT_ARROW = 30,
    PART_LEFT_ARROW = 31,

    // The overlay. The menu of coordinate systems has no number.
    PART_ROTATE_COUNTER_CLOCKWISE = 32,
    PART_ROTATE_CLOCKWISE = 33,
    PART_HOME = 34,
    PART_LOCK = 35,
    PART_CONTEXT_MENU = 36,

    // The compass: a letter by the direction for which it stands, and any place of the ring.
    PART_COMPASS_FRONT = 37,
    PART_COMPASS_BACK = 38,
    PART_COMPASS_LEFT = 39,
    PART_COMPASS_RIGHT = 40,
    PART_COMPASS_RING = 41,
  };

  /// Only keeps the cube; Orientor::AddObserver makes the two known to each other.
  explicit OrientorObserver(Orientor* cube);
  virtual ~OrientorObserver();
  OrientorObserver(const OrientorObserver&) = delete;
  OrientorObserver& operator=(const OrientorObserver&) = delete;

  /// A press and release within the dead zone; the move that follows from it has not begun.
  virtual void OnClicked(OrientorPart part) = 0;
  virtual void OnDragBegin(OrientorPart part) = 0;
  virtual void OnDragEnd() = 0;
  /// The cube has gone to another corner.
  virtual void OnPositionChange(OrientorParameters::Location location) = 0;

 protected:
  Orientor* GetOrientor() const { return orientor; }

 private:
  Orientor* orientor;
};

}  // namespace Korvane
