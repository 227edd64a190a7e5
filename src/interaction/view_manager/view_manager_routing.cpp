// Who gets an event. Every list runs in the order of precedence and stops at the first who takes it.
#include "camera/host_camera.h"
#include "camera/pixels.h"
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

template <class Event>
bool ViewManager::OfferToToolbars(Event event, int x, int y) {
  bool taken = false;
  toolbars.Notify([&](Toolbar& toolbar) { taken = taken || (toolbar.*event)(x, y); });
  return taken;
}

// ---- who is ready for what ----

bool ViewManager::WantActiveToolEnabled() const {
  if (orientor != nullptr && (orientor->IsMouseOnCompassPart() || orientor->IsMouseOnGeometryPart())) {
    return false;
  }
  if (helmDisc != nullptr && (helmDisc->GetEnabled() || helmDisc->IsOverWelcome())) return false;
  if (storyboard != nullptr && (storyboard->IsMouseInRegion() || reelshowPlaying)) return false;
  if (navigationBar != nullptr && navigationBar->IsMouseInRegion()) return false;
  return !IsMouseInRibbonRegion() && !IsMouseInToolbarRegion();
}

bool ViewManager::WantCam3DControllerEnabled() const {
  if (orientor != nullptr && orientor->IsDragActive()) return false;
  return storyboard == nullptr || !reelshowPlaying;
}

bool ViewManager::WantMiddleMouseNavigation() const {
  if (helmDisc == nullptr || !helmDisc->GetEnabled()) return false;
  const DiscType disc = helmDisc->GetActiveDisc();
  if (disc == DiscType::None || disc == DiscType::TourBuilding) return false;
  if (leftMouseDown || rightMouseDown) return false;
  return storyboard == nullptr || !storyboard->IsPlayingBack();
}

bool ViewManager::WantHelmDiscEnabled() const {
  if (orientor != nullptr && orientor->IsMouseInRegion() && orientor->GetParameters().visible) return false;
  if (storyboard != nullptr && (storyboard->IsMouseInRegion() || storyboard->DraggingStoryBoardItem())) {
    return false;
  }
  if (navigationBar != nullptr && navigationBar->IsMouseInRegion()) return false;
  return !IsMouseInRibbonRegion() && !IsMouseInToolbarRegion();
}

bool ViewManager::WantHelmDiscVisible() const {
  if (orientor != nullptr && orientor->IsDragActive()) return false;
  if (storyboard != nullptr && (storyboard->IsPlayingBack() || storyboard->IsRecordingWalk() ||
                                storyboard->DraggingStoryBoardItem())) {
    return false;
  }
  if (navigationBar != nullptr && navigationBar->IsMouseDownOnItem()) return false;
  return !orbitingWithMouse && !panningWithMouse && !zoomingWithMouse;
}

// A drag of the cube that wanders over the ribbon is not cut off.
bool ViewManager::WantOrientorEnabled() const {
  if (storyboard != nullptr && (storyboard->IsMouseInRegion() || storyboard->DraggingStoryBoardItem())) {
    return false;
  }
  return !IsMouseInRibbonRegion() || (orientor != nullptr && orientor->IsDragActive());
}

bool ViewManager::IsMouseInRibbonRegion() const {
  return ribbonVisible && mouseX < ribbonWidth &&
         mouseY >= static_cast<double>(viewportHeight) - ribbonHeight;
}

bool ViewManager::IsMouseInToolbarRegion() const {
  return toolbars.Any([](const Toolbar& toolbar) { return toolbar.IsMouseInRegion(); });
}

const std::wstring& ViewManager::GetTooltip() const {
  const std::wstring* tooltip = &emptyTooltip;
  toolbars.Any([&tooltip](const Toolbar& toolbar) {
    if (toolbar.IsVisible() && toolbar.IsMouseInRegion()) tooltip = &toolbar.GetTooltip();
    return !tooltip->empty();
  });
  if (tooltip->empty() && navigationBar != nullptr && navigationBar->IsVisible() &&
      navigationBar->IsMouseInRegion()) {
    tooltip = &navigationBar->GetTooltip();
  }
  if (tooltip->empty() && storyboard != nullptr && storyboard->IsVisible() && storyboard->IsMouseInRegion()) {
    tooltip = &storyboard->GetTooltip();
  }
  if (tooltip->empty() && orientor != nullptr && orientor->IsMouseInRegion()) {
    tooltip = &orientor->GetTooltip();
  }
  return tooltip->empty() ? emptyTooltip : *tooltip;
}

// ---- what every event does ----

void ViewManager::StoreMousePosition(int x, int y) {
  mouseX = x;
  mouseY = y;
}

void ViewManager::EnableCam3DController(bool enabled) {
  if (cam3DController != nullptr) cam3DController->SetEnabled(enabled);
}

bool ViewManager::IsMouseDragNoted() const {
  return cameraOperations != nullptr && cameraOperations->GetApplicationParameters().mouse_drag;
}

bool ViewManager::NoteMouseDrag(bool dragging) {
  if (cameraOperations == nullptr || IsMouseDragNoted() == dragging) return false;
  cameraOperations->GetApplicationParameters().mouse_drag = dragging;
  return true;
}

void ViewManager::RequestApplicationUpdate() {
  if (cameraOperations != nullptr) cameraOperations->RequestApplicationUpdate();
}

// ---- moves ----

bool ViewManager::OnMouseMove(int x, int y) {
  // The window system sends a move right after a press.
  const bool isOfThePress = x == mouseX && y == mouseY && x == leftDownX && y == leftDownY;
  if (leftMouseDown && isOfThePress) return false;
  const bool wasInRibbon = IsMouseInRibbonRegion();
  StoreMousePosition(x, y);
  bool dragging = false;
  const bool result = OfferMouseMove(x, y, dragging);
  const bool dragChanged = NoteMouseDrag(dragging);
  if (dragChanged || IsMouseInRibbonRegion() != wasInRibbon) RequestApplicationUpdate();
  return result;
}

bool ViewManager::OfferMouseMove(int x, int y, bool& dragging) {
  // These three take a move only while they operate.
  if (OfferMoveToTool(orbitTool.get(), x, y, dragging)) return true;
  if (OfferMoveToTool(panTool.get(), x, y, dragging)) return true;
  if (OfferMoveToTool(zoomTool.get(), x, y, dragging)) return true;
  if (navigationBar != nullptr && navigationBar->OnMouseMove(x, y)) return true;
  if (OfferToToolbars(&Toolbar::OnMouseMove, x, y)) return true;
  if (OfferMoveToOrientor(x, y, dragging)) return true;
  if (helmDisc != nullptr) {
    const bool taken = helmDisc->OnMouseMove(x, y);
    dragging = dragging || (helmDisc != nullptr && helmDisc->IsDragActive());
    if (taken) return true;
  }
  if (activeTool != nullptr) {
    const bool taken = activeTool->OnMouseMove(x, y);
    dragging = dragging || (activeTool != nullptr && activeTool->IsMouseDragging());
    if (taken) return true;
  }
  if (storyboard == nullptr) return false;
  const bool taken = storyboard->OnMouseMove(x, y);
  dragging = dragging || (storyboard != nullptr && storyboard->DraggingStoryBoardItem());
  return taken;
}

bool ViewManager::OfferMoveToTool(Tool* tool, int x, int y, bool& dragging) {
  if (tool == nullptr) return false;
  const bool taken = tool->OnMouseMove(x, y);
  dragging = dragging || tool->IsMouseDragging();
  return taken;
}

bool ViewManager::OfferMoveToOrientor(int x, int y, bool& dragging) {
  if (orientor == nullptr) return false;
  const bool taken = orientor->OnMouseMove(x, y);
  if (orientor == nullptr) return taken;
  orientor->SetViewportMousePosition(x, FlipRow(viewportHeight, y));
  if (orientor->IsDragActive()) {
    NoticeOrientorDrag();
    dragging = true;
  }
  return taken;
}

void ViewManager::NoticeOrientorDrag() {
  if (orientorDragSeen) {
    if (!orientor->IsMouseInRegion()) orientorDragLeftRegion = true;
    return;
  }
  orientorDragSeen = true;
  orientorDragLeftRegion = false;
  if (pivotBall == nullptr) return;
  if (cameraOperations != nullptr) {
    const CameraParameters camera = QueryCamera(*cameraOperations);
    pivotBall->SetPosition(camera.pivot);
    pivotBall->UpdateSize(camera);
  }
  pivotBall->SetLabel(STRING_PIVOT);
  pivotBall->SetVisible(true);
}

// ---- the left button ----

bool ViewManager::OnLeftMouseDown(int x, int y) {
  leftMouseDown = true;
  StoreMousePosition(x, y);
  leftDownX = x;
  leftDownY = y;
  if (middleMouseDown || rightMouseDown) return false;
  wantCursorWrapping = false;
  EnableCam3DController(false);
  const bool result = OfferLeftMouseDown(x, y);
  if (!result) EnableCam3DController(WantCam3DControllerEnabled());
  leftClickOpen = true;
  return result;
}

bool ViewManager::OfferLeftMouseDown(int x, int y) {
  if (!cleanScreen && navigationBar != nullptr && navigationBar->OnLeftMouseDown(x, y)) return true;
  if (OfferToToolbars(&Toolbar::OnLeftMouseDown, x, y)) return true;
  if (IsRibbonVisible() && IsMouseInRibbonRegion()) return true;
  if (!cleanScreen && orientor != nullptr) {
    wantCursorWrapping = orientor->OnLeftMouseDown(x, y);
    if (wantCursorWrapping) return true;
  }
  if (!cleanScreen && helmDisc != nullptr && WrapIfTaken(helmDisc->OnLeftMouseDown(x, y), helmDisc))
    return true;
  if (storyboard != nullptr && storyboard->OnLeftMouseDown(x, y)) return true;
  if (activeTool == nullptr || !WantActiveToolEnabled()) return false;
  return WrapIfTaken(activeTool->OnMouseDown(x, y), activeTool);
}

// Whoever has taken a press or a key says whether the cursor is to be wrapped.
template <class Owner>
bool ViewManager::WrapIfTaken(bool taken, Owner* const& owner) {
  wantCursorWrapping = taken && owner != nullptr && owner->WantCursorWrapping();
  return taken;
}

bool ViewManager::OnLeftMouseUp(int x, int y) {
  StoreMousePosition(x, y);
  leftMouseDown = false;
  bool result = false;
  if (leftClickOpen) {
    leftClickOpen = false;
    wantCursorWrapping = false;
    result = OfferLeftMouseUp(x, y);
  }
  if (orientorDragSeen) FinishOrientorDrag();
  if (NoteMouseDrag(false)) RequestApplicationUpdate();
  EnableCam3DController(WantCam3DControllerEnabled());
  return result;
}

bool ViewManager::OfferLeftMouseUp(int x, int y) {
  if (!cleanScreen && navigationBar != nullptr) {
    HandOrientorToBar();
    if (navigationBar->OnLeftMouseUp(x, y)) return true;
  }
  if (OfferToToolbars(&Toolbar::OnLeftMouseUp, x, y)) return true;
  if (!cleanScreen && orientor != nullptr && orientor->OnLeftMouseUp(x, y)) return true;
  if (!cleanScreen && helmDisc != nullptr && helmDisc->OnLeftMouseUp(x, y)) return true;
  if (storyboard != nullptr && storyboard->OnLeftMouseUp(x, y)) return true;
  return activeTool != nullptr && activeTool->OnMouseUp(x, y);
}

void ViewManager::FinishOrientorDrag() {
  orientorDragSeen = false;
  if (pivotBall != nullptr) pivotBall->SetVisible(false);
  if (orientorDragLeftRegion && renderer != nullptr) PutCursorBack();
  if (helmDisc == nullptr || orientor == nullptr) return;
  helmDisc->SetEnabled(!orientor->IsMouseInRegion());
  helmDisc->SetVisible(!orientor->IsDragActive());
}

// To where the drag of the cube began.
void ViewManager::PutCursorBack() {
  renderer->SetCursorPosition(leftDownX, leftDownY);
  renderer->SetCursorID(CURSOR_ARROW);
  if (helmDisc != nullptr) helmDisc->OnMouseMove(leftDownX, leftDownY);
  if (orientor == nullptr) return;
  orientor->OnMouseMove(leftDownX, leftDownY);
  orientor->SetViewportMousePosition(leftDownX, FlipRow(viewportHeight, leftDownY));
}

// ---- the right button ----

bool ViewManager::OnRightMouseDown(int x, int y) {
  rightMouseDown = true;
  StoreMousePosition(x, y);
  if (leftMouseDown || middleMouseDown) return false;
  EnableCam3DController(false);
  const bool result = OfferRightMouseDown(x, y);
  if (!result) EnableCam3DController(WantCam3DControllerEnabled());
  rightClickOpen = true;
  return result;
}

bool ViewManager::OfferRightMouseDown(int x, int y) {
  if (storyboard != nullptr && storyboard->IsPlayingBack()) return true;
  if (!cleanScreen && navigationBar != nullptr && navigationBar->OnRightMouseDown(x, y)) return true;
  if (OfferToToolbars(&Toolbar::OnRightMouseDown, x, y)) return true;
  if (IsRightPressOnOrientor()) return true;
  if (helmDisc != nullptr && helmDisc->GetEnabled() && helmDisc->GetActiveTrackMenu() != nullptr) return true;
  return storyboard != nullptr && storyboard->OnRightMouseDown(x, y);
}

bool ViewManager::IsRightPressOnOrientor() const {
  return orientor != nullptr && (orientorDragSeen || orientor->IsMouseOnCompassPart() ||
                                 orientor->IsMouseOnGeometryPart() || orientor->IsMouseOnOverlayPart());
}

bool ViewManager::OnRightMouseUp(int x, int y) {
  StoreMousePosition(x, y);
  rightMouseDown = false;
  rightClickOpen = false;
  const bool result = OfferRightMouseUp(x, y);
  EnableCam3DController(WantCam3DControllerEnabled());
  return result;
}

bool ViewManager::OfferRightMouseUp(int x, int y) {
  if (storyboard != nullptr && storyboard->IsPlayingBack()) return true;
  if (!cleanScreen && navigationBar != nullptr && navigationBar->OnRightMouseUp(x, y)) return true;
  if (OfferToToolbars(&Toolbar::OnRightMouseUp, x, y)) return true;
  if (!cleanScreen && orientor != nullptr && orientor->OpenMenu()) return true;
  if (!cleanScreen && helmDisc != nullptr && helmDisc->OpenMenu()) return true;
  return storyboard != nullptr && storyboard->OpenMenu();
}

// ---- keys ----

bool ViewManager::OnKeyDown(KeyID key) {
  if (key == KEY_SHIFT) {
    shiftKeyDown = true;
    if (EndPanningWithMouse()) BeginOrbitingWithMouse();
  }
  if (key == KEY_CONTROL) controlKeyDown = true;
  if (helmDisc != nullptr && WrapIfTaken(helmDisc->OnKeyDown(key), helmDisc)) return true;
  const bool pastStoryboard = key == KEY_SPACE && leftMouseDown;
  if (storyboard != nullptr && !pastStoryboard && storyboard->OnKeyDown(key)) return true;
  return activeTool != nullptr && WrapIfTaken(activeTool->OnKeyDown(key), activeTool);
}

bool ViewManager::OnKeyUp(KeyID key) {
  if (key == KEY_SHIFT) {
    shiftKeyDown = false;
    if (EndOrbitingWithMouse()) BeginPanningWithMouse();
  }
  if (key == KEY_CONTROL) controlKeyDown = false;
  if (helmDisc != nullptr && WrapIfTaken(helmDisc->OnKeyUp(key), helmDisc)) return true;
  if (storyboard != nullptr && storyboard->OnKeyUp(key)) return true;
  return activeTool != nullptr && WrapIfTaken(activeTool->OnKeyUp(key), activeTool);
}

}  // namespace Korvane
