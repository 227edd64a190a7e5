#pragma once

#include "disc/disc_region_listener.h"
#include "korvane/borrowed_settings.h"

namespace Korvane {

/// The wedge that takes the camera's pivot to a point of the scene. Let go off the scene, the pivot is where
/// it was.
class PivotPickRegionListener : public DiscRegionListener {
 public:
  using DiscRegionListener::DiscRegionListener;

  void OnMouseMove(int x, int y) override;
  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnDraw() override;
  void OnTrackMenuActivate(bool active) override;

  /// Moves the pivot to what the host shows at a viewport pixel.
  void UpdatePivotPosition(int x, int y);

 private:
  void EndPick();

  bool hit = false;          // the last pick has met the scene
  BorrowedPivot savedPivot;  // during a press
};

}  // namespace Korvane
