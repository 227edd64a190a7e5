#include "disc/center_region_listener.h"

namespace Korvane {

CenterRegionListener::CenterRegionListener(TrackMenu* menu, HelmDisc* helmDisc, StringID pivotLabel)
    : ToolRegionListener(menu, helmDisc, helmDisc, menu, pivotLabel), offModelHUD({STRING_OFF_MODEL}) {}

void CenterRegionListener::OnTrackMenuActivate(bool active) {
  ToolRegionListener::OnTrackMenuActivate(active);
  if (!active) {
    tool->SetOffModelHUD(nullptr);
    tool->SetViewportHUD(nullptr);
  }
  offModelHUD.Take(active ? GetRenderer() : nullptr);
}

void CenterRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  Press(*this).HideMenu().Then([&] {
    if (!tool.IsAnimating()) FreezeRegion(true);
    tool->SetOffModelHUD(ShowsMessages() ? offModelHUD.Get(0) : nullptr);
    tool->OnMouseDown(x, y);
  });
}

void CenterRegionListener::OnLeftMouseUp(int x, int y) {
  ToolRegionListener::OnLeftMouseUp(x, y);
  if (!tool.IsAnimating()) FreezeRegion(false);
}

void CenterRegionListener::OnDraw() {
  DiscRegionListener::OnDraw();  // NOLINT(bugprone-parent-virtual-call): the tool is drawn as a step
  DrawUntilDone([&] { tool->OnDraw(); }, [&] { return tool.IsBusy(); });
}

}  // namespace Korvane
