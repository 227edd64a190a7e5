#pragma once

#include "korvane/borrowed_settings.h"
#include "korvane/export.h"
#include "korvane/tool.h"

namespace Korvane {

/// Moves the camera parallel to the view, so that the point of the scene under the cursor stays under it.
/// The pivot of the camera is that point during the gesture, and is put back after it.
class ZOVTOOLS_API PanTool : public Tool {
 public:
  PanTool();
  ~PanTool() override;

  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;

 private:
  BorrowedPivot savedPivot;  // during a gesture
};

}  // namespace Korvane
