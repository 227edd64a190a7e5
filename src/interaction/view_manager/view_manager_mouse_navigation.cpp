// Navigation by the middle button and the wheel, while a disc is open.
#include <utility>

#include "camera/pixels.h"
#include "interaction/view_manager/view_manager_doors.h"
#include "korvane/icon2d.h"
#include "korvane/track_menu.h"

namespace Korvane {

bool ViewManager::OnMiddleMouseDown(int x, int y) {
  mouse.middleDown = true;
  StoreMousePosition(x, y);
  if (mouse.leftDown || mouse.rightDown) return false;
  EnableCam3DController(false);
  const bool result = BeginMiddleMouseNavigation();
  if (result) wantCursorWrapping = true;
  if (!result) EnableCam3DController(WantCam3DControllerEnabled());
  mouse.middleClickOpen = true;
  if (!mouse.middleDown) CancelGesture();  // whoever heard of the press has let go already
  return result;
}

bool ViewManager::OnMiddleMouseUp(int x, int y) {
  mouse.middleDown = false;
  StoreMousePosition(x, y);
  const bool wasTaken = std::exchange(mouse.middleClickOpen, false);
  if (wasTaken) wantCursorWrapping = false;
  const bool result = EndMiddleMouseNavigation();
  if (wasTaken) EnableCam3DController(WantCam3DControllerEnabled());  // else another button is held
  return result;
}

bool ViewManager::OnMouseWheel(int x, int y, int delta) {
  StoreMousePosition(x, y);
  mouse.wheelDelta = delta;
  const bool zooms = navigation.present == Navigation::Zooming && !cleanScreen;
  if (zooms && navigation.zoomTool->OnMouseWheel(x, y, delta)) return true;
  const bool busy = navigation.present == Navigation::Orbiting || navigation.present == Navigation::Panning;
  const bool idle = !busy && !mouse.leftDown && !IsMouseDragNoted();
  if (idle && !cleanScreen && WantMiddleMouseNavigation() && BeginZoomingWithMouse()) return true;
  return activeTool != nullptr && activeTool->OnMouseWheel(x, y, delta);
}

bool ViewManager::BeginMiddleMouseNavigation() {
  if (!WantMiddleMouseNavigation()) return false;
  if (navigation.present == Navigation::Zooming) EndZoomingWithMouse();  // a press takes over
  if (navigation.present != Navigation::None) return false;
  if (!(mouse.shiftDown ? BeginOrbitingWithMouse() : BeginPanningWithMouse())) return false;
  HideHelmDisc();
  return true;
}

bool ViewManager::EndMiddleMouseNavigation() {
  if (!EndPanningWithMouse() && !EndOrbitingWithMouse() && !EndZoomingWithMouse()) return false;
  if (HelmDisc* const disc = helmDisc) {
    RestoreHelmDiscPosition();
    disc->SetVisible(true);
    if (renderer != nullptr) renderer->SetCursorID(disc->GetCurrentCursor());
  }
  if (NoteMouseDrag(false)) RequestApplicationUpdate();
  return true;
}

// ---- the note beside the cursor; making and destroying it may take the tool away, or begin another ----

template <class NavigationTool>
void ViewManager::ShowNote(Navigation kind, const std::unique_ptr<NavigationTool>& tool, StringID note) {
  if (renderer == nullptr || navigation.present != kind) return;
  navigationNote.Take(renderer, note);
  HandNote(kind, tool);
}

template <class NavigationTool>
void ViewManager::HideNote(Navigation kind, const std::unique_ptr<NavigationTool>& tool) {
  if (navigation.present == Navigation::None) navigationNote.GiveBack();
  HandNote(kind, tool);
  if (renderer != nullptr) renderer->ApplyTextureUsage();
}

template <class NavigationTool>
void ViewManager::HandNote(Navigation kind, const std::unique_ptr<NavigationTool>& tool) {
  if (tool != nullptr) tool->SetMouseHUD(navigation.present == kind ? navigationNote.Get() : nullptr);
}

// ---- one of the three ----

// Whoever hears of the beginning may take the disc away, and the tool with it, or begin another, which stays.
template <class NavigationTool, class Start>
bool ViewManager::BeginNavigation(Navigation kind, const std::unique_ptr<NavigationTool>& tool, Start start) {
  if (navigation.present != Navigation::None) return navigation.present == kind;
  NavigationTool* const starting = tool.get();
  if (starting == nullptr) return false;
  const Lifeline::Watch alive(starting->GetLifeline());
  const bool begun = start(*starting);
  if (!alive) return false;
  if (navigation.present == Navigation::None) {
    if (begun) navigation.present = kind;
    return begun;
  }
  if (navigation.present != kind) starting->EndGesture(mouse.x, mouse.y);
  return navigation.present == kind;
}

// Whether it went on.
bool ViewManager::EndNavigation(Navigation kind) {
  if (navigation.present != kind) return false;
  navigation.present = Navigation::None;
  return true;
}

bool ViewManager::BeginOrbitingWithMouse() {
  const bool goesOn = navigation.present == Navigation::Orbiting;
  const auto press = [this](Tool& tool) { return tool.OnMouseDown(mouse.x, mouse.y); };
  if (!BeginNavigation(Navigation::Orbiting, navigation.orbitTool, press)) return false;
  if (goesOn) return true;
  ShowNote(Navigation::Orbiting, navigation.orbitTool, STRING_ORBIT);
  LabelPivot();
  return true;
}

bool ViewManager::EndOrbitingWithMouse() {
  if (!EndNavigation(Navigation::Orbiting)) return false;
  navigation.orbitTool->OnMouseUp(mouse.x, mouse.y);
  HideNote(Navigation::Orbiting, navigation.orbitTool);
  return true;
}

bool ViewManager::BeginPanningWithMouse() {
  const bool goesOn = navigation.present == Navigation::Panning;
  const auto press = [this](Tool& tool) { return tool.OnMouseDown(mouse.x, mouse.y); };
  if (!BeginNavigation(Navigation::Panning, navigation.panTool, press)) return false;
  if (!goesOn) ShowNote(Navigation::Panning, navigation.panTool, STRING_PAN);
  return true;
}

bool ViewManager::EndPanningWithMouse() {
  if (!EndNavigation(Navigation::Panning)) return false;
  navigation.panTool->OnMouseUp(mouse.x, mouse.y);
  HideNote(Navigation::Panning, navigation.panTool);
  return true;
}

bool ViewManager::BeginZoomingWithMouse() {
  const bool goesOn = navigation.present == Navigation::Zooming;
  const auto turn = [this](MouseWheelZoomTool& tool) {
    tool.SetUseCurrentPivotPoint(mouse.controlDown || GetEnabledDisc() == DiscType::ViewObject);
    return tool.OnMouseWheel(mouse.x, mouse.y, mouse.wheelDelta);
  };
  if (!BeginNavigation(Navigation::Zooming, navigation.zoomTool, turn)) return false;
  if (goesOn) return true;
  HideHelmDisc();
  ShowNote(Navigation::Zooming, navigation.zoomTool, STRING_WHEEL_ZOOM);
  LabelPivot();
  if (NoteMouseDrag(true)) RequestApplicationUpdate();
  return true;
}

bool ViewManager::EndZoomingWithMouse() {
  if (!EndNavigation(Navigation::Zooming)) return false;
  navigation.zoomTool->EndZoom();
  HideNote(Navigation::Zooming, navigation.zoomTool);
  return true;
}

// Of the disc that brings the tools of the middle button.
DiscType ViewManager::GetEnabledDisc() const {
  return helmDisc->GetEnabled() ? helmDisc->GetActiveDisc() : DiscType::None;
}

void ViewManager::LabelPivot() {
  if (pivotBall != nullptr) pivotBall->SetLabel(STRING_PIVOT);
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
  navigation.discOffsetX = Truncate(icon->GetPosition().x - mouse.x);
  navigation.discOffsetY = Truncate(icon->GetPosition().y - mouse.y);
}

void ViewManager::RestoreHelmDiscPosition() {
  TrackMenu* const menu = helmDisc != nullptr ? helmDisc->GetActiveTrackMenu() : nullptr;
  if (menu == nullptr) return;
  menu->OnMouseMove(Truncate(static_cast<double>(mouse.x) + navigation.discOffsetX),
                    Truncate(static_cast<double>(mouse.y) + navigation.discOffsetY));
}

}  // namespace Korvane
