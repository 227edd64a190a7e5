#pragma once

#include "korvane/borrowed_settings.h"
#include "korvane/export.h"
#include "korvane/tool.h"

namespace Korvane {

/// Zooms by a drag, towards the point of the scene that was under the cursor, or by a click, in or, with
/// Shift, out. The point becomes the pivot of the camera and is marked.
class ZOVTOOLS_API ZoomTool : public Tool {
 public:
  ZoomTool();
  ~ZoomTool() override;

  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;

  /// Opens a gesture at a viewport pixel. False when one goes on, and without a hub or a renderer.
  virtual bool BeginZoom(int x, int y);
  /// Hands the cursor to the gesture. False without one.
  virtual bool UpdateZoom(int x, int y);
  /// Closes the gesture and puts the application parameters back as they were, but for the size of the
  /// viewport. A gesture that was a click begins a shot. False without one.
  virtual bool EndZoom();

  /// A press and release without a drag zooms, by a shot of half a second.
  void SetClickZoomEnabled(bool enabled) { clickZoomEnabled = enabled; }
  bool GetClickZoomEnabled() const { return clickZoomEnabled; }
  /// Keeps the drag between the pivot and a distance from which the whole scene is seen.
  void SetConstrainZoom(bool constrain) { constrainZoom = constrain; }
  /// Zooms about the pivot that the camera has.
  void SetUseCurrentPivotPoint(bool use) { useCurrentPivotPoint = use; }
  /// What a constrained zoom shows at its ends. The renderer owns them.
  void SetMaxZoomInHUD(DynamicIcon2D* icon) { maxZoomInHUD = icon; }
  void SetMaxZoomOutHUD(DynamicIcon2D* icon) { maxZoomOutHUD = icon; }

 protected:
  bool clickZoomEnabled = true;
  bool constrainZoom = false;
  bool useCurrentPivotPoint = false;
  DynamicIcon2D* maxZoomInHUD = nullptr;
  DynamicIcon2D* maxZoomOutHUD = nullptr;

 private:
  void LimitZoom(Steps& steps);
  void AnchorZoom(Steps& steps, int x, int y);
  void BeginClickShot();
  void ChooseLimitNote();

  BorrowedParameters settings;
};

}  // namespace Korvane
