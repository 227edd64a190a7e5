#pragma once

#include "disc/operation_region_listener.h"
#include "render/height_gauge.h"

namespace Korvane {

/// The wedge that lifts and lowers the camera. A gauge shows its height between the floor and the top of the
/// scene, and that of the start.
class HeightRegionListener : public OperationRegionListener {
 public:
  HeightRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnDraw() override;

 private:
  void NoteStart();
  void DrawGauge(const CameraOperations& hub);

  double startHeight = 0.0;  // -0.5 to 0.5
  HeightGauge gauge;
};

}  // namespace Korvane
