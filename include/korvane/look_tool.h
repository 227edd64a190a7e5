#pragma once

#include <initializer_list>

#include "korvane/borrowed_settings.h"
#include "korvane/export.h"
#include "korvane/tool.h"

namespace Korvane {

/// Turns the camera on the spot.
class ZOVTOOLS_API LookTool : public Tool {
 public:
  LookTool();
  ~LookTool() override;

  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;

  /// A drag down looks up. Holds for the gestures to come, as does the next.
  void SetInvertVerticalAxis(bool invert) { invertVerticalAxis = invert; }
  /// Keeps the camera upright.
  void SetAlignUpDirection(bool align) { alignUpDirection = align; }

 protected:
  /// Ends these operations of the drag, in this order, and the drag.
  bool ReleaseLook(int x, int y, std::initializer_list<OperationType> operations);

 private:
  bool invertVerticalAxis = false;
  bool alignUpDirection = true;
  BorrowedSettings<&ApplicationParameters::look_invert_vertical_axis,
                   &ApplicationParameters::align_orbit_up_direction>
      settings;
};

}  // namespace Korvane
