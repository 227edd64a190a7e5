#pragma once

#include "cube/compass_sense.h"
#include "korvane/borrowed_settings.h"
#include "korvane/lifeline.h"
#include "korvane/observer_set.h"
#include "korvane/orientor_observer.h"
#include "korvane/rewind_record.h"
#include "korvane/vector2.h"

namespace Korvane {

/// A drag of the cube or its compass: an orbit of the hub, with the settings that it borrows and the record
/// that it opens. It ends once, whoever ends it, and also within any call that it makes; what was about to
/// happen to it then no longer does.
class CubeDrag {
 public:
  /// With whom it works. The host may exchange these at any time.
  struct Partners {
    Borrowed<CameraOperations> hub;
    Borrowed<RewindHistory> history;
    ObserverSet<OrientorObserver> observers;
  };

  CubeDrag(Partners& dragPartners, const OrientorParameters& cubeParameters)
      : partners(dragPartners), parameters(cubeParameters) {}

  /// A press, from which a drag may follow; viewport pixels, y upward.
  void Press(int x, int y);
  bool IsBeyondDeadZone(int x, int y) const;
  /// Needs a hub. `y` rows upward from the bottom of a viewport of `height` rows.
  void Begin(int x, int y, int height, OrientorObserver::OrientorPart part, bool compass);
  /// The compass turns by both axes of the mouse.
  void TurnCompass(int x, int y, int height);
  /// Gives back what it has of the hub, if that still lives. Nothing when it has ended.
  void End();

  bool IsActive() const { return active; }
  /// It goes on, or has still to be put away.
  bool IsOpen() const { return active || tellsEnd || draggedHub.Get() != nullptr; }
  /// Its end has been told, or need not be.
  void Rest() { active = false; }

  CompassSense sense;
  /// The way on the screen in which a drag of the compass counts, in place of the sense; zero for none.
  Vector2 tangent;

  bool active = false;
  int pressX = 0;  // the mouse at the last left press
  int pressY = 0;
  int lastX = 0;  // the mouse at the last step of a drag
  int lastY = 0;
  int accumulatedX = 0;  // steps of a compass drag
  int accumulatedY = 0;

 private:
  void BorrowSettings(CameraOperations& hub, bool compass);
  void BeginOrbit(CameraOperations& hub, int x, int y, int height, bool compass);
  static void ApplyOrbitStart(CameraOperations& hub);
  double GetWayAlongTangent(int x, int y) const;
  int GetCompassX(double way) const;

  using Settings = BorrowedSettings<&ApplicationParameters::orbit_multiplier,
                                    &ApplicationParameters::preserve_orbit_up_direction,
                                    &ApplicationParameters::align_orbit_up_direction>;

  Partners& partners;
  const OrientorParameters& parameters;
  Borrowed<CameraOperations> draggedHub;  // whose settings are borrowed
  Settings settings;
  RewindRecord record;
  Lifeline life;            // cut when the drag ends
  bool tellsEnd = false;    // its begin has been told
  bool tellingEnd = false;  // and the hub has not been given back
};

}  // namespace Korvane
