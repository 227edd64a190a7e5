#include "disc/orbit_region_listener.h"

namespace Korvane {

OrbitRegionListener::OrbitRegionListener(TrackMenu* menu, HelmDisc* helmDisc, StringID pivotLabelString,
                                         StringID viewHUDString, bool keepUp)
    : ToolRegionListener(menu, helmDisc),
      pivotLabel(pivotLabelString),
      forceUp(keepUp),
      viewHUD({viewHUDString}) {}

void OrbitRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  Press(*this).HideMenu().Then([&] { LabelPivotBall(pivotLabel); }).Then([&] { PrepareTool(); }).Then([&] {
    tool->OnMouseDown(x, y);
  });
}

void OrbitRegionListener::PrepareTool() {
  const bool preserves = forceUp || IsSet(&HelmDiscParameters::keepSceneUpright);
  const bool shows = IsSet(&HelmDiscParameters::showMessages) && !preserves;
  tool->SetPreserveSceneUp(preserves);
  tool->SetViewportHUD(shows ? viewHUD.Get(0) : nullptr);
}

void OrbitRegionListener::OnLeftMouseUp(int x, int y) {
  // NOLINTNEXTLINE(bugprone-parent-virtual-call): the tool gets its release as a step
  DiscRegionListener::OnLeftMouseUp(x, y);
  Press(*this).Then([&] { tool->OnMouseUp(x, y); }).Then([&] { tool->SetViewportHUD(nullptr); }).ShowMenu();
}

void OrbitRegionListener::OnTrackMenuActivate(bool active) {
  ToolRegionListener::OnTrackMenuActivate(active);
  if (!active) tool->SetViewportHUD(nullptr);
  viewHUD.Take(active ? GetRenderer() : nullptr);
}

}  // namespace Korvane
