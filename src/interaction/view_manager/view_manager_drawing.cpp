// A frame: the order of drawing is the order of stacking.
#include "korvane/cam3d_controller.h"
#include "korvane/helm_disc.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/navigation_bar.h"
#include "korvane/orbit_tool.h"
#include "korvane/orientor.h"
#include "korvane/pan_tool.h"
#include "korvane/pivot_ball.h"
#include "korvane/renderer.h"
#include "korvane/storyboard.h"
#include "korvane/toolbar.h"
#include "korvane/view_manager.h"

namespace Korvane {

void ViewManager::OnDraw() {
  OnDrawInScene();
  OnDrawOverlay();
}

void ViewManager::OnDrawInScene() {
  if (pivotBall != nullptr) pivotBall->Draw();
}

void ViewManager::OnDrawOverlay() {
  if (renderer != nullptr) renderer->QueueSetCursorID(true);
  if (storyboard != nullptr) storyboard->Draw();
  DrawMiddleMouseTools();
  DrawActiveTool();
  if (!cleanScreen) {
    DrawHelmDisc();
    DrawOrientor();
    if (navigationBar != nullptr) navigationBar->Draw();
  }
  toolbars.Notify([](Toolbar& toolbar) { toolbar.Draw(); });
  if (cam3DController != nullptr) cam3DController->Draw();
  if (renderer != nullptr) renderer->QueueSetCursorID(false);
}

void ViewManager::DrawMiddleMouseTools() {
  if (orbitTool != nullptr) orbitTool->OnDraw();
  if (panTool != nullptr) panTool->OnDraw();
  if (zoomTool == nullptr) return;
  zoomTool->OnDraw();
  if (!zoomingWithMouse || zoomTool->IsOperating()) return;
  EndMiddleMouseNavigation();  // the wheel has been at rest long enough
  OnMouseMove(mouseX, mouseY);
}

void ViewManager::DrawActiveTool() {
  if (activeTool == nullptr) return;
  activeTool->OnDraw();
  if (renderer == nullptr || activeTool == nullptr) return;
  if (!activeTool->IsOperating() && WantActiveToolEnabled()) renderer->SetCursorID(activeTool->GetCursorID());
}

void ViewManager::DrawHelmDisc() {
  if (helmDisc == nullptr) return;
  helmDisc->SetEnabled(WantHelmDiscEnabled());
  helmDisc->SetVisible(WantHelmDiscVisible());
  helmDisc->DrawOverlay();
}

void ViewManager::DrawOrientor() {
  if (orientor == nullptr) return;
  Orientor* const cube = orientor;
  const bool disabled = cube->GetParameters().disabled;
  cube->GetParameters().disabled = disabled || !WantOrientorEnabled();
  cube->Draw();
  cube->GetParameters().disabled = disabled;
  if (orientor == nullptr) return;
  const CursorID cursor = GetOrientorCursor();
  if (renderer != nullptr && cursor != CURSOR_NONE) renderer->SetCursorID(cursor);
}

// CURSOR_NONE: the cube asks for none.
CursorID ViewManager::GetOrientorCursor() const {
  if (orientorDragSeen) return orientorDragLeftRegion ? CURSOR_ORBIT_CUBE : CURSOR_ORBIT;
  if (orientor->IsMouseOnCompassPart() || orientor->IsMouseOnViewableOverlayPart()) return CURSOR_ARROW;
  return orientor->IsMouseOnGeometryPart() ? CURSOR_CUBE_PART : CURSOR_NONE;
}

bool ViewManager::OnSetCursor() {
  if (renderer == nullptr) return false;
  const CursorID cursor = renderer->GetCursorID();
  return cursor != CURSOR_NONE && renderer->SetCursorID(cursor);
}

}  // namespace Korvane
