// Navigation by the middle button and the wheel, while a disc is open.
#include "camera/pixels.h"
#include "korvane/camera_operations.h"
#include "korvane/helm_disc.h"
#include "korvane/icon2d.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/pivot_ball.h"
#include "korvane/renderer.h"
#include "korvane/track_menu.h"
#include "korvane/view_manager.h"

namespace Korvane {

bool ViewManager::OnMiddleMouseDown(int x, int y) {
  middleMouseDown = true;
  StoreMousePosition(x, y);
  if (leftMouseDown || rightMouseDown) return false;
  const bool result = BeginMiddleMouseNavigation();
  if (result) wantCursorWrapping = true;
  middleClickOpen = true;
  return result;
}

bool ViewManager::OnMiddleMouseUp(int x, int y) {
  middleMouseDown = false;
  StoreMousePosition(x, y);
  if (middleClickOpen) {
    middleClickOpen = false;
    wantCursorWrapping = false;
  }
  return EndMiddleMouseNavigation();
}

bool ViewManager::OnMouseWheel(int x, int y, int delta) {
  StoreMousePosition(x, y);
  mouseWheelDelta = delta;
  if (zoomingWithMouse && !cleanScreen && zoomTool != nullptr && zoomTool->OnMouseWheel(x, y, delta)) {
    return true;
  }
  const bool idle = !orbitingWithMouse && !panningWithMouse && !leftMouseDown && !IsMouseDragNoted();
  if (idle && !cleanScreen && WantMiddleMouseNavigation() && BeginZoomingWithMouse()) return true;
  return activeTool != nullptr && activeTool->OnMouseWheel(x, y, delta);
}

bool ViewManager::BeginMiddleMouseNavigation() {
  if (!WantMiddleMouseNavigation() || orbitingWithMouse || panningWithMouse) return false;
  if (zoomingWithMouse) EndZoomingWithMouse();  // a press takes over
  if (!(shiftKeyDown ? BeginOrbitingWithMouse() : BeginPanningWithMouse())) return false;
  HideHelmDisc();
  return true;
}

bool ViewManager::EndMiddleMouseNavigation() {
  if (!EndPanningWithMouse() && !EndOrbitingWithMouse() && !EndZoomingWithMouse()) return false;
  if (helmDisc != nullptr) {
    RestoreHelmDiscPosition();
    helmDisc->SetVisible(true);
    if (renderer != nullptr) renderer->SetCursorID(helmDisc->GetCurrentCursor());
  }
  if (NoteMouseDrag(false)) RequestApplicationUpdate();
  return true;
}

// ---- orbit and pan ----

bool ViewManager::BeginOrbitingWithMouse() {
  if (orbitingWithMouse || panningWithMouse || zoomingWithMouse) return orbitingWithMouse;
  if (orbitTool == nullptr) return false;
  orbitingWithMouse = orbitTool->OnMouseDown(mouseX, mouseY);
  if (!orbitingWithMouse) return false;
  ShowNote(*orbitTool, STRING_ORBIT);
  if (pivotBall != nullptr) pivotBall->SetLabel(STRING_PIVOT);
  return true;
}

bool ViewManager::EndOrbitingWithMouse() {
  if (!orbitingWithMouse) return false;
  orbitingWithMouse = false;
  if (orbitTool == nullptr) return true;
  orbitTool->OnMouseUp(mouseX, mouseY);
  HideNote(*orbitTool, STRING_ORBIT);
  return true;
}

bool ViewManager::BeginPanningWithMouse() {
  if (orbitingWithMouse || panningWithMouse || zoomingWithMouse) return panningWithMouse;
  if (panTool == nullptr) return false;
  panningWithMouse = panTool->OnMouseDown(mouseX, mouseY);
  if (!panningWithMouse) return false;
  ShowNote(*panTool, STRING_PAN);
  return true;
}

bool ViewManager::EndPanningWithMouse() {
  if (!panningWithMouse) return false;
  panningWithMouse = false;
  if (panTool == nullptr) return true;
  panTool->OnMouseUp(mouseX, mouseY);
  HideNote(*panTool, STRING_PAN);
  return true;
}

// ---- zoom by the wheel ----

bool ViewManager::BeginZoomingWithMouse() {
  if (orbitingWithMouse || panningWithMouse || zoomingWithMouse) return zoomingWithMouse;
  if (zoomTool == nullptr) return false;
  zoomTool->SetUseCurrentPivotPoint(controlKeyDown || GetEnabledDisc() == DiscType::ViewObject);
  zoomingWithMouse = zoomTool->OnMouseWheel(mouseX, mouseY, mouseWheelDelta);
  if (!zoomingWithMouse) return false;
  HideHelmDisc();
  ShowNote(*zoomTool, STRING_WHEEL_ZOOM);
  if (pivotBall != nullptr) pivotBall->SetLabel(STRING_PIVOT);
  if (NoteMouseDrag(true)) RequestApplicationUpdate();
  return true;
}

bool ViewManager::EndZoomingWithMouse() {
  if (!zoomingWithMouse) return false;
  zoomingWithMouse = false;
  if (zoomTool == nullptr) return true;
  zoomTool->EndZoom();
  HideNote(*zoomTool, STRING_WHEEL_ZOOM);
  return true;
}

DiscType ViewManager::GetEnabledDisc() const {
  return helmDisc != nullptr && helmDisc->GetEnabled() ? helmDisc->GetActiveDisc() : DiscType::None;
}

// ---- the note beside the cursor ----

void ViewManager::ShowNote(Tool& tool, StringID note) {
  if (renderer != nullptr) tool.SetMouseHUD(renderer->GetStringTexture(note));
}

void ViewManager::HideNote(Tool& tool, StringID note) {
  tool.SetMouseHUD(renderer != nullptr ? renderer->ReleaseStringTexture(note) : nullptr);
  if (renderer != nullptr) renderer->ApplyTextureUsage();
}

// ---- the disc comes back where the cursor then is ----

void ViewManager::HideHelmDisc() {
  if (helmDisc == nullptr) return;
  SaveHelmDiscPosition();
  helmDisc->SetVisible(false);
}

void ViewManager::SaveHelmDiscPosition() {
  TrackMenu* const menu = helmDisc != nullptr ? helmDisc->GetActiveTrackMenu() : nullptr;
  const Icon2D* const icon = menu != nullptr ? menu->GetActiveRegion().icon : nullptr;
  if (icon == nullptr) return;
  helmDiscOffsetX = ToPixels(icon->GetPosition().x - mouseX);
  helmDiscOffsetY = ToPixels(icon->GetPosition().y - mouseY);
}

void ViewManager::RestoreHelmDiscPosition() {
  TrackMenu* const menu = helmDisc != nullptr ? helmDisc->GetActiveTrackMenu() : nullptr;
  if (menu == nullptr) return;
  menu->OnMouseMove(ToPixels(static_cast<double>(mouseX) + helmDiscOffsetX),
                    ToPixels(static_cast<double>(mouseY) + helmDiscOffsetY));
}

}  // namespace Korvane
