#pragma once

#include "disc/disc_region_listener.h"
#include "disc/wedge_operation.h"
#include "korvane/icon2d.h"
#include "korvane/renderer_loans.h"

namespace Korvane {

/// The wedge that lifts and lowers the camera. A gauge shows its height between the floor and the top of the
/// scene, and that of the start.
class HeightRegionListener : public DiscRegionListener {
 public:
  HeightRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnMouseMove(int x, int y) override;
  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnDraw() override;
  void OnTrackMenuActivate(bool active) override;

 private:
  void NoteStart();
  void DrawGauge(const CameraOperations& hub);

  WedgeOperation operation{OPERATION_HEIGHT};
  double startHeight = 0.0;  // -0.5 to 0.5
  TextureLoan textures;
  ResourceIcon2D gauge;
  ResourceIcon2D startMark;
  ResourceIcon2D mark;
};

}  // namespace Korvane
