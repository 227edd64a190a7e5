#pragma once

#include "disc/disc_region_listener.h"
#include "disc/wedge_operation.h"
#include "korvane/icon2d.h"
#include "korvane/renderer_loans.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace Korvane {

/// The wedge that rolls the camera about the axis of the view through the pivot. A ring stands around the
/// pivot, and a tick on it shows where up was.
class RollRegionListener : public DiscRegionListener {
 public:
  RollRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnMouseMove(int x, int y) override;
  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnDraw() override;
  void OnTrackMenuActivate(bool active) override;

 private:
  void DrawGauge(const CameraOperations& hub);
  void DrawTick(Renderer& pass, const CameraOperations& hub, const Vector2& place) const;

  WedgeOperation operation{OPERATION_ROLL};
  TextureLoan textures;
  ResourceIcon2D ring;
};

}  // namespace Korvane
