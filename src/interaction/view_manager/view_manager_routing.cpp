// Who gets an event. Every table is in the order of precedence: the first who takes the event ends it.
#include <utility>

#include "camera/host_camera.h"
#include "camera/pixels.h"
#include "interaction/tools/pivot_marker.h"
#include "interaction/view_manager/view_layout.h"
#include "interaction/view_manager/view_manager_doors.h"

namespace Korvane {

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
  if (mouse.leftDown || mouse.rightDown) return false;
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
  return navigation.present == Navigation::None;
}

// A drag of the cube that wanders over the ribbon is not cut off.
bool ViewManager::WantOrientorEnabled() const {
  if (storyboard != nullptr && (storyboard->IsMouseInRegion() || storyboard->DraggingStoryBoardItem())) {
    return false;
  }
  return !IsMouseInRibbonRegion() || (orientor != nullptr && orientor->IsDragActive());
}

bool ViewManager::IsMouseInRibbonRegion() const { return IsInRibbon(GetViewArea(), mouse.x, mouse.y); }

bool ViewManager::IsMouseInToolbarRegion() const {
  return toolbars.Any([](const Toolbar& toolbar) { return toolbar.IsMouseInRegion(); });
}

const std::wstring& ViewManager::GetTooltip() const {
  using D = Doors;
  static constexpr const std::wstring* (*TEXTS[])(const ViewManager&) = {
      D::GetToolbarTooltip,
      D::GetTooltip<&ViewManager::navigationBar, &NavigationBar::IsVisible>,
      D::GetTooltip<&ViewManager::storyboard, &Storyboard::IsVisible>,
      D::GetTooltip<&ViewManager::orientor>,
  };
  for (const auto getText : TEXTS) {
    const std::wstring* const text = getText(*this);
    if (text != nullptr && !text->empty()) return *text;
  }
  return emptyTooltip;
}

// ---- what every event does ----

void ViewManager::StoreMousePosition(int x, int y) {
  mouse.x = x;
  mouse.y = y;
  if (renderer != nullptr) renderer->SetPointerView(pointerLife);
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
  using D = Doors;
  static constexpr Door MOVE[] = {
      // These three take a move only while they operate.
      {D::OfferDrag<D::Orbit, &Tool::OnMouseMove, &Tool::IsMouseDragging>},
      {D::OfferDrag<D::Pan, &Tool::OnMouseMove, &Tool::IsMouseDragging>},
      {D::OfferDrag<D::Zoom, &Tool::OnMouseMove, &Tool::IsMouseDragging>},
      {D::Offer<&ViewManager::navigationBar, &NavigationBar::OnMouseMove>},
      {D::OfferToToolbars<&Toolbar::OnMouseMove>},
      {D::OfferMoveToOrientor},
      {D::OfferDrag<&ViewManager::helmDisc, &HelmDisc::OnMouseMove, &HelmDisc::IsDragActive>},
      {D::OfferDrag<&ViewManager::activeTool, &Tool::OnMouseMove, &Tool::IsMouseDragging>},
      {D::OfferDrag<&ViewManager::storyboard, &Storyboard::OnMouseMove, &Storyboard::DraggingStoryBoardItem>},
  };
  // The window system sends a move right after a press.
  const bool isOfThePress = x == mouse.x && y == mouse.y && x == mouse.leftDownX && y == mouse.leftDownY;
  if (mouse.leftDown && isOfThePress) return false;
  const bool wasInRibbon = IsMouseInRibbonRegion();
  StoreMousePosition(x, y);
  Event event{x, y};
  const bool result = D::Offer(*this, MOVE, event);
  const bool dragChanged = NoteMouseDrag(event.dragging);
  if (dragChanged || IsMouseInRibbonRegion() != wasInRibbon) RequestApplicationUpdate();
  return result;
}

void ViewManager::NoticeOrientorDrag(const Orientor& cube) {
  if (orientorDrag.seen) {
    if (!cube.IsMouseInRegion()) orientorDrag.leftRegion = true;
    return;
  }
  orientorDrag = {true, false};
  ShowPivotBall();
}

// Whoever the ball asks for a frame may be the one who puts it away.
void ViewManager::ShowPivotBall() {
  if (pivotBall != nullptr && cameraOperations != nullptr) {
    const CameraParameters camera = QueryCamera(*cameraOperations);
    FitPivotBall(pivotBall.get(), camera);
  }
  LabelPivot();
  if (pivotBall != nullptr) pivotBall->SetVisible(true);
}

// ---- the left button ----

bool ViewManager::OnLeftMouseDown(int x, int y) {
  using D = Doors;
  static constexpr Door PRESS[] = {
      {D::Offer<&ViewManager::navigationBar, &NavigationBar::OnLeftMouseDown>, CleanScreen::Hides},
      {D::OfferToToolbars<&Toolbar::OnLeftMouseDown>},
      {D::IsOnRibbon},
      {D::OfferPressToOrientor, CleanScreen::Hides},
      {D::OfferWrapping<&ViewManager::helmDisc, &HelmDisc::OnLeftMouseDown>, CleanScreen::Hides},
      {D::Offer<&ViewManager::storyboard, &Storyboard::OnLeftMouseDown>},
      {D::OfferPressToTool},
  };
  mouse.leftDown = true;
  StoreMousePosition(x, y);
  mouse.leftDownX = x;
  mouse.leftDownY = y;
  if (mouse.middleDown || mouse.rightDown) return false;
  wantCursorWrapping = false;
  EnableCam3DController(false);
  Event event{x, y};
  const bool result = D::Offer(*this, PRESS, event);
  if (!result) EnableCam3DController(WantCam3DControllerEnabled());
  mouse.leftClickOpen = true;
  if (!mouse.leftDown) CancelGesture();  // whoever heard of the press has let go already
  return result;
}

bool ViewManager::OnLeftMouseUp(int x, int y) {
  using D = Doors;
  static constexpr Door RELEASE[] = {
      {D::OfferReleaseToBar, CleanScreen::Hides},
      {D::OfferToToolbars<&Toolbar::OnLeftMouseUp>},
      {D::Offer<&ViewManager::orientor, &Orientor::OnLeftMouseUp>, CleanScreen::Hides},
      {D::Offer<&ViewManager::helmDisc, &HelmDisc::OnLeftMouseUp>, CleanScreen::Hides},
      {D::Offer<&ViewManager::storyboard, &Storyboard::OnLeftMouseUp>},
      {D::Offer<&ViewManager::activeTool, &Tool::OnMouseUp>},
  };
  StoreMousePosition(x, y);
  mouse.leftDown = false;
  bool result = false;
  if (std::exchange(mouse.leftClickOpen, false)) {
    wantCursorWrapping = false;
    Event event{x, y};
    result = D::Offer(*this, RELEASE, event);
  }
  if (orientorDrag.seen) FinishOrientorDrag();
  if (NoteMouseDrag(false)) RequestApplicationUpdate();
  GiveCam3DControllerBack();
  return result;
}

void ViewManager::FinishOrientorDrag() {
  orientorDrag.seen = false;
  if (pivotBall != nullptr) pivotBall->SetVisible(false);
  if (orientorDrag.leftRegion && renderer != nullptr) PutCursorBack();
  if (helmDisc != nullptr && orientor != nullptr) helmDisc->SetEnabled(!orientor->IsMouseInRegion());
  if (helmDisc != nullptr && orientor != nullptr) helmDisc->SetVisible(!orientor->IsDragActive());
}

// To where the drag of the cube began.
void ViewManager::PutCursorBack() {
  Renderer& pictures = *renderer;
  Event event{mouse.leftDownX, mouse.leftDownY};
  pictures.SetCursorPosition(event.x, event.y);
  pictures.SetCursorID(CURSOR_ARROW);
  Doors::Offer<&ViewManager::helmDisc, &HelmDisc::OnMouseMove>(*this, event);
  Doors::Offer<&ViewManager::orientor, &Orientor::OnMouseMove>(*this, event);
  if (orientor != nullptr) orientor->SetViewportMousePosition(event.x, FlipRow(viewportHeight, event.y));
}

// ---- the right button ----

bool ViewManager::OnRightMouseDown(int x, int y) {
  using D = Doors;
  static constexpr Door PRESS[] = {
      {D::IsPlaying},
      {D::Offer<&ViewManager::navigationBar, &NavigationBar::OnRightMouseDown>, CleanScreen::Hides},
      {D::OfferToToolbars<&Toolbar::OnRightMouseDown>},
      {D::Is<&ViewManager::IsRightPressOnOrientor>},
      {D::HasDiscMenu},
      {D::Offer<&ViewManager::storyboard, &Storyboard::OnRightMouseDown>},
  };
  mouse.rightDown = true;
  StoreMousePosition(x, y);
  if (mouse.leftDown || mouse.middleDown) return false;
  EnableCam3DController(false);
  Event event{x, y};
  const bool result = D::Offer(*this, PRESS, event);
  if (!result) EnableCam3DController(WantCam3DControllerEnabled());
  mouse.rightClickOpen = mouse.rightDown;
  return result;
}

bool ViewManager::IsRightPressOnOrientor() const {
  return orientor != nullptr && (orientorDrag.seen || orientor->IsMouseOnCompassPart() ||
                                 orientor->IsMouseOnGeometryPart() || orientor->IsMouseOnOverlayPart());
}

bool ViewManager::OnRightMouseUp(int x, int y) {
  using D = Doors;
  static constexpr Door RELEASE[] = {
      {D::IsPlaying},
      {D::Offer<&ViewManager::navigationBar, &NavigationBar::OnRightMouseUp>, CleanScreen::Hides},
      {D::OfferToToolbars<&Toolbar::OnRightMouseUp>},
      {D::Offer<&ViewManager::orientor, &Orientor::OpenMenu>, CleanScreen::Hides},
      {D::Offer<&ViewManager::helmDisc, &HelmDisc::OpenMenu>, CleanScreen::Hides},
      {D::Offer<&ViewManager::storyboard, &Storyboard::OpenMenu>},
  };
  StoreMousePosition(x, y);
  mouse.rightDown = false;
  mouse.rightClickOpen = false;
  Event event{x, y};
  const bool result = D::Offer(*this, RELEASE, event);
  GiveCam3DControllerBack();
  return result;
}

// A drag of the middle button holds it off until its own release.
void ViewManager::GiveCam3DControllerBack() {
  if (!mouse.middleClickOpen) EnableCam3DController(WantCam3DControllerEnabled());
}

// ---- keys ----

bool ViewManager::OnKeyDown(KeyID key) {
  using D = Doors;
  static constexpr Door PRESS[] = {
      {D::OfferWrapping<&ViewManager::helmDisc, &HelmDisc::OnKeyDown>},
      {D::OfferKeyToStoryboard},
      {D::OfferWrapping<&ViewManager::activeTool, &Tool::OnKeyDown>},
  };
  if (key == KEY_SHIFT) {
    mouse.shiftDown = true;
    if (EndPanningWithMouse()) BeginOrbitingWithMouse();
  }
  if (key == KEY_CONTROL) mouse.controlDown = true;
  Event event{mouse.x, mouse.y, key};
  return D::Offer(*this, PRESS, event);
}

bool ViewManager::OnKeyUp(KeyID key) {
  using D = Doors;
  static constexpr Door RELEASE[] = {
      {D::OfferWrapping<&ViewManager::helmDisc, &HelmDisc::OnKeyUp>},
      {D::Offer<&ViewManager::storyboard, &Storyboard::OnKeyUp>},
      {D::OfferWrapping<&ViewManager::activeTool, &Tool::OnKeyUp>},
  };
  if (key == KEY_SHIFT) {
    mouse.shiftDown = false;
    if (EndOrbitingWithMouse()) BeginPanningWithMouse();
  }
  if (key == KEY_CONTROL) mouse.controlDown = false;
  Event event{mouse.x, mouse.y, key};
  return D::Offer(*this, RELEASE, event);
}

// ---- letting go ----

void ViewManager::CancelGesture() {
  mouse.leftDown = mouse.middleDown = mouse.rightDown = false;
  mouse.middleClickOpen = mouse.rightClickOpen = false;
  wantCursorWrapping = false;
  EndMiddleMouseNavigation();
  CancelToolGesture();
  CancelOrientorGesture();
  LetGo(false);
  if (NoteMouseDrag(false)) RequestApplicationUpdate();
  EnableCam3DController(WantCam3DControllerEnabled());
}

// Some tools act on the release: the key that cancels keeps them from it, and a shot that another begins ends
// at once.
void ViewManager::CancelToolGesture() {
  Tool* const tool = activeTool;
  if (tool == nullptr) return;
  const Lifeline::Watch alive(tool->GetLifeline());
  const auto isChosen = [&] { return alive && activeTool == tool; };
  if (tool->IsOperating()) {
    tool->OnKeyDown(KEY_ESCAPE);
    if (isChosen()) tool->OnKeyUp(KEY_ESCAPE);
  }
  const std::uint64_t before = cameraOperations != nullptr ? cameraOperations->GetShotNumber() : 0;
  if (isChosen() && tool->IsOperating()) {
    tool->EndGesture(mouse.x, mouse.y);
  } else {
    if (isChosen() && !tool->IsAnimating()) tool->EndGesture(mouse.x, mouse.y);  // one about to begin or end
    if (isChosen() && mouse.leftClickOpen) tool->OnMouseUp(mouse.x, mouse.y);
  }
  if (cameraOperations != nullptr && cameraOperations->GetShotNumber() != before) cameraOperations->EndShot();
}

// The cursor stays where it is.
void ViewManager::CancelOrientorGesture() {
  if (orientor != nullptr) orientor->CancelGesture();
  orientorDrag.leftRegion = false;
  if (orientorDrag.seen) FinishOrientorDrag();
}

// A release outside the viewport, which clicks nothing, for whoever else has taken the press.
void ViewManager::LetGo(bool onlyHidden) {
  using D = Doors;
  static constexpr Door RELEASE[] = {
      {D::Offer<&ViewManager::navigationBar, &NavigationBar::OnLeftMouseUp>, CleanScreen::Hides},
      {D::Offer<&ViewManager::helmDisc, &HelmDisc::OnLeftMouseUp>, CleanScreen::Hides},
      {D::OfferToToolbars<&Toolbar::OnLeftMouseUp>},
      {D::Offer<&ViewManager::storyboard, &Storyboard::OnLeftMouseUp>},
  };
  if (!mouse.leftClickOpen) return;
  if (!onlyHidden) mouse.leftClickOpen = false;
  Event event{-1, -1};
  for (const Door& door : RELEASE) {
    const bool isHidden = door.cleanScreen == CleanScreen::Hides;
    if (onlyHidden ? !isHidden : isHidden && cleanScreen) continue;
    if (OrFail([&] { return door.offer(*this, event); })) return;
  }
}

}  // namespace Korvane
