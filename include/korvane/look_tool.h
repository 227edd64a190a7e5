#pragma once

#include <optional>

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
  /// Ends the drag, and before that, while the tool still operates, the operation that a derived tool runs
  /// beside the look.
  bool ReleaseLook(int x, int y, std::optional<OperationType> beside = std::nullopt);

 private:
  bool invertVerticalAxis = false;
  bool alignUpDirection = true;
  BorrowedSettings<&ApplicationParameters::look_invert_vertical_axis,
                   &ApplicationParameters::align_orbit_up_direction>
      settings;
};

}  // namespace Korvane
