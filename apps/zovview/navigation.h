#pragma once

#include <functional>
#include <optional>

#include "korvane/operation.h"
#include "korvane/resource_ids.h"
#include "korvane/vector3.h"
#include "viewer_hub.h"
#include "zovhost/window.h"

namespace zovview {

/// The wheel of the mouse as zoom operations: each notch is a drag by some pixels, spread over a few frames
/// so that the view glides.
class WheelZoom {
 public:
  explicit WheelZoom(ViewerHub& hub);

  bool IsActive() const { return active; }
  /// Whether what is still to come would lead a running zoom to its halt near the pivot.
  bool IsExhausted() const;
  /// At a viewport pixel, origin at the bottom left. Adds to a zoom that runs.
  void Turn(int x, int y, double notches);
  /// Before the frame: moves the cursor of the zoom.
  void Advance();
  /// After the frame: ends a zoom that has arrived.
  void EndIfArrived();
  /// Ends at once; what has not been performed is kept for the next turn.
  void End();

 private:
  void Begin(int x, int y);

  ViewerHub& hub;
  bool active = false;
  int originX = 0;  // of the operation, origin at the top left
  int originY = 0;
  double target = 0.0;  // pixels of drag, positive towards the scene
  double reached = 0.0;
  int applied = 0;       // what the operation has been told
  double carried = 0.0;  // a fraction of a pixel left over from the zoom before
  std::uint32_t lastTick = 0;
};

/// Mouse buttons and the wheel as operations of the hub: the left button orbits, the middle one pans, the
/// right one and the wheel zoom. Pixels have their origin at the bottom left.
class Navigation {
 public:
  struct Surroundings {
    /// The first point of the scene along a ray; false when there is none.
    std::function<bool(const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                       Korvane::Vector3& hit)>
        hit;
    std::function<void(Korvane::CursorID)> showCursor;
  };

  Navigation(ViewerHub& hub, Surroundings surroundings);

  void OnMouseDown(zovhost::MouseButton button, int x, int y);
  void OnMouseMove(int x, int y);
  void OnMouseUp(zovhost::MouseButton button, int x, int y);
  void OnWheel(int x, int y, double notches);
  /// Ends whatever runs, where it is.
  void Cancel();

  /// The frame: to be called once for each, before it is drawn.
  void PerformFrame();

 private:
  void EndDrag();
  void SetPivotUnderCursor(int x, int y);
  int FromTop(int y) const { return hub.GetViewportHeight() - y - 1; }

  struct Drag {
    zovhost::MouseButton button;
    Korvane::OperationType operation;
  };

  ViewerHub& hub;
  Surroundings surroundings;
  std::optional<Drag> drag;
  WheelZoom wheel;
};

}  // namespace zovview
