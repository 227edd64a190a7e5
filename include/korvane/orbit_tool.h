#pragma once

#include "korvane/borrowed_settings.h"
#include "korvane/export.h"
#include "korvane/tool.h"

namespace Korvane {

/// Turns the camera about its pivot, which is marked and brought back into the view first.
class ZOVTOOLS_API OrbitTool : public Tool {
 public:
  OrbitTool();
  ~OrbitTool() override;

  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;

  /// A turntable about the up of the world, for the gestures to come; else freely.
  void SetPreserveSceneUp(bool preserve) { preserveSceneUp = preserve; }
  bool GetPreserveSceneUp() const { return preserveSceneUp; }

 protected:
  bool preserveSceneUp = true;
  /// Turns about the up axis of the world alone, and does not straighten the camera. To be changed between
  /// two gestures.
  bool fixedAxesOrbit = false;

 private:
  void BorrowSettings(CameraOperations& hub);

  BorrowedSettings<&ApplicationParameters::preserve_orbit_up_direction,
                   &ApplicationParameters::align_orbit_up_direction>
      settings;
};

}  // namespace Korvane
