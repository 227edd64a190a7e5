#pragma once

#include "disc/wedge_texts.h"
#include "disc/wedge_tool.h"
#include "korvane/orbit_tool.h"

namespace Korvane {

/// The wedge that orbits. Where the camera may roll, a message says so during the drag.
class OrbitRegionListener : public ToolRegionListener<OrbitTool> {
 public:
  /// The text of the pivot ball, and the message; `keepUp` keeps the scene upright whatever the settings say.
  OrbitRegionListener(TrackMenu* menu, HelmDisc* helmDisc, StringID pivotLabelString, StringID viewHUDString,
                      bool keepUp);

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnTrackMenuActivate(bool active) override;

 private:
  void PrepareTool();

  StringID pivotLabel;
  bool forceUp;
  WedgeTexts<1> viewHUD;
};

}  // namespace Korvane
