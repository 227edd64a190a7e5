#pragma once

#include "disc/operation_region_listener.h"
#include "korvane/icon2d.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace Korvane {

/// The wedge that rolls the camera about the axis of the view through the pivot. A ring stands around the
/// pivot, and a tick on it shows where up was.
class RollRegionListener : public OperationRegionListener {
 public:
  RollRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnDraw() override;
  void OnTrackMenuActivate(bool active) override;

 private:
  void DrawGauge(const CameraOperations& hub);
  void DrawTick(Renderer& pass, const CameraOperations& hub, const Vector2& place) const;

  ResourceIcon2D ring;
};

}  // namespace Korvane
