#pragma once

#include "korvane/export.h"
#include "korvane/timer.h"
#include "korvane/zoom_tool.h"

namespace Korvane {

/// Zooms by the wheel, as a drag without a button: each notch moves a virtual cursor up or down. The gesture
/// ends, in OnDraw, half a second after the last notch; until then the mouse is swallowed.
class ZOVTOOLS_API MouseWheelZoomTool : public ZoomTool {
 public:
  MouseWheelZoomTool();
  ~MouseWheelZoomTool() override;

  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseWheel(int x, int y, int delta) override;
  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;

  bool EndZoom() override;

 private:
  void UpdateGesture();

  int wheelAnchorX = 0;
  int wheelAnchorY = 0;
  int wheelTotal = 0;  // since the gesture began, as the window system counts
  Timer wheelTimer;    // since the last notch
};

}  // namespace Korvane
