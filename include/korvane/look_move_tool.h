#pragma once

#include "korvane/export.h"
#include "korvane/look_tool.h"

namespace Korvane {

/// Looks with the mouse and, during the drag, moves with the four arrow keys.
class ZOVTOOLS_API LookMoveTool : public LookTool {
 public:
  LookMoveTool();
  ~LookMoveTool() override;

  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;
  bool OnKeyDown(KeyID key) override;
  bool OnKeyUp(KeyID key) override;

  /// Scales how fast the keys move; 1 is as fast as a cursor a thousand pixels from the start of a slide.
  void SetSpeedFactor(double factor) { speedFactor = factor; }

 private:
  bool SetSlideKey(KeyID key, bool down);
  void UpdateSlide();

  double speedFactor = 1.0;
  bool slideKeyA = false;  // right
  bool slideKeyB = false;  // left
  bool slideKeyC = false;  // forward
  bool slideKeyD = false;  // back
};

}  // namespace Korvane
