#pragma once

#include "disc/wedge_texts.h"
#include "disc/wedge_tool.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/zoom_tool.h"

namespace Korvane {

/// The wedge that zooms: by a drag or a click, or, with Shift, by a rectangle. The disc comes back when the
/// animated end of a zoom is over.
class ZoomRegionListener : public ShiftToolRegionListener<ZoomTool, RectZoomTool> {
 public:
  /// The text of the pivot ball; the messages at the ends of a constrained zoom. `constrain` keeps the zoom
  /// between these, `rectangle` allows one.
  ZoomRegionListener(TrackMenu* menu, HelmDisc* helmDisc, StringID pivotLabelString, StringID maxZoomInString,
                     StringID maxZoomOutString, bool constrain, bool rectangle);

  void OnMouseMove(int x, int y) override;
  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnKeyDown(KeyID key) override;
  void OnKeyUp(KeyID key) override;
  void OnTrackMenuActivate(bool active) override;

 private:
  enum Text : int { TEXT_MAX_IN, TEXT_MAX_OUT, TEXT_ZOOM, TEXT_CLICK_ZOOM, TEXT_RECTANGLE };

  void TellKeys();
  void PassKey(KeyID key, bool down);
  void PrepareTools();
  void PressTool(int x, int y);
  void RedoPress();
  void ReleaseZoom(int x, int y);
  void ReleaseRectangle(int x, int y);
  void ShowZoomNote();

  const StringID pivotLabel;
  WedgeTexts<5> texts;
};

}  // namespace Korvane
