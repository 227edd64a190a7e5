// The drags and the wheel of a navigation style. To the library a drag of whatever button is one of the
// middle button, which it keeps apart from the widgets and the active tool.
#include <cstdlib>
#include <utility>

#include "input/style_drag.h"
#include "korvane/camera_operations.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/tool.h"
#include "zovhost/click_watch.h"
#include "zovhost/window_view_manager.h"

namespace zovhost {

bool WindowViewManager::IsStyleOwn() const { return style == &GetNavigationStyles().front(); }

void WindowViewManager::SetNavigationStyle(const NavigationStyle& wanted) {
  if (style == &wanted) return;
  Cancel();
  style = &wanted;
}

void WindowViewManager::SetKorvane(Korvane::CameraOperations* hub) {
  if (stylePress.has_value()) Cancel();
  ViewManager::SetKorvane(hub);
}

void WindowViewManager::SetRenderer(Korvane::Renderer* value) {
  if (stylePress.has_value()) Cancel();
  ViewManager::SetRenderer(value);
}

void WindowViewManager::SetZoomsToPivot(bool wanted) {
  zoomsToPivot = wanted;
  styleDrag->SetZoomsToPivot(wanted);
  for (const auto& [id, tool] : tools) {
    if (auto* const zoom = dynamic_cast<Korvane::ZoomTool*>(tool.get()))
      zoom->SetUseCurrentPivotPoint(wanted);
  }
}

// The library's wheel goes to the pivot while Ctrl is held.
bool WindowViewManager::BeginZoomingWithMouse() {
  const Navigation before = navigation.present;
  const bool held = mouse.controlDown;
  mouse.controlDown = held || zoomsToPivot;
  const bool begun = ViewManager::BeginZoomingWithMouse();
  mouse.controlDown = held;
  return begun && NoteOnce(before, navigation.zoomTool.get());
}

bool WindowViewManager::BeginOrbitingWithMouse() {
  const Navigation before = navigation.present;
  return ViewManager::BeginOrbitingWithMouse() && NoteOnce(before, navigation.orbitTool.get());
}

bool WindowViewManager::BeginPanningWithMouse() {
  const Navigation before = navigation.present;
  return ViewManager::BeginPanningWithMouse() && NoteOnce(before, navigation.panTool.get());
}

// The library names it each time. Always true.
bool WindowViewManager::NoteOnce(Navigation before, Korvane::Tool* tool) {
  bool& known = namedNavigations[static_cast<std::size_t>(navigation.present)];
  const bool begins = navigation.present != before;
  if (begins && std::exchange(known, true) && tool != nullptr) tool->SetMouseHUD(nullptr);
  return true;
}

// ---- a press and its release ----

// A menu that opens under the right button goes before a drag.
bool WindowViewManager::PressStyle(const WindowEvent& event, NavigationMove move) {
  if (cameraOperations == nullptr) return false;
  clickFree = false;
  if (event.button == MouseButton::Right) {
    if (OnRightMouseDown(mouse.x, mouse.y)) return true;
    EndRunningShot();
    mouse.rightDown = mouse.rightClickOpen = false;
  }
  stylePress = {event.button, move, {mouse.x, mouse.y}, false, {}};
  cameraOperations->QueryCameraParameters(stylePress->camera);
  OnMiddleMouseDown(mouse.x, mouse.y);
  return true;
}

// A right click has moved nothing, and opens what a right click opens.
bool WindowViewManager::ReleaseStyle(const WindowEvent& event) {
  const StylePress press = *std::exchange(stylePress, std::nullopt);
  const bool isClick = press.button == MouseButton::Right && !press.strayed;
  if (cameraOperations != nullptr) {
    if (isClick) cameraOperations->ApplyCameraParameters(press.camera);
    if (!isClick) cameraOperations->PerformOperations();
  }
  OnMiddleMouseUp(mouse.x, mouse.y);
  const PixelPosition shown = pointer.GetPosition();
  pointer.Restart(shown);
  if (shown != PixelPosition{mouse.x, mouse.y}) OnMouseMove(shown.x, shown.y);
  if (!isClick) return true;
  OnRightMouseDown(event.x, event.y);
  return OnRightMouseUp(event.x, event.y);
}

void WindowViewManager::ForgetStyleDrag() {
  stylePress.reset();
  swallowed = 0;
}

// ---- the drag ----

bool WindowViewManager::BeginStyleMove(NavigationMove move) {
  switch (move) {
    case NavigationMove::Orbit:
      return BeginOrbitingWithMouse();
    case NavigationMove::Pan:
      return BeginPanningWithMouse();
    case NavigationMove::Zoom:
    case NavigationMove::Look:
    case NavigationMove::Roll:
      break;
  }
  return styleDrag->Begin(move, {cameraOperations, renderer, GetRewindHistory(), GetPivotBall()}, mouse.x,
                          mouse.y);
}

bool WindowViewManager::BeginMiddleMouseNavigation() {
  if (IsStyleOwn()) return ViewManager::BeginMiddleMouseNavigation();
  if (!stylePress.has_value() || !WantMiddleMouseNavigation()) return false;
  if (navigation.present != Navigation::None || !BeginStyleMove(stylePress->move)) return false;
  if (helmDisc == nullptr) return true;
  SaveHelmDiscPosition();
  helmDisc->SetVisible(false);
  return true;
}

bool WindowViewManager::EndMiddleMouseNavigation() {
  if (!styleDrag->End(mouse.x, mouse.y)) return ViewManager::EndMiddleMouseNavigation();
  if (helmDisc != nullptr) {
    RestoreHelmDiscPosition();
    helmDisc->SetVisible(true);
  }
  NoteDrag(false);
  return true;
}

bool WindowViewManager::EndOrbitingWithMouse() { return !keepsDrag && ViewManager::EndOrbitingWithMouse(); }
bool WindowViewManager::EndPanningWithMouse() { return !keepsDrag && ViewManager::EndPanningWithMouse(); }

bool WindowViewManager::WantHelmDiscVisible() const {
  return !styleDrag->IsOperating() && ViewManager::WantHelmDiscVisible();
}

// As when a button is held: another move begins where the one before has ended.
void WindowViewManager::FollowModifiers(unsigned modifiers) {
  if (!stylePress.has_value()) return;
  const NavigationDrag* const drag = style->FindDrag(stylePress->button, modifiers);
  if (drag == nullptr || drag->move == stylePress->move) return;
  if (cameraOperations != nullptr) cameraOperations->PerformOperations();
  EndMiddleMouseNavigation();
  stylePress->move = drag->move;
  BeginMiddleMouseNavigation();
}

bool WindowViewManager::OnMouseMove(int x, int y) {
  if (stylePress.has_value()) {
    const double scale =
        cameraOperations != nullptr ? cameraOperations->GetApplicationParameters().pixels_per_point : 1.0;
    const auto isFar = [reach = ClickWatch::REACH * scale](int a, int b) { return std::abs(a - b) > reach; };
    if (isFar(x, stylePress->position.x) || isFar(y, stylePress->position.y)) stylePress->strayed = true;
  }
  if (!styleDrag->IsOperating()) return ViewManager::OnMouseMove(x, y);
  mouse.x = x;
  mouse.y = y;
  const bool used = styleDrag->Move(x, y);
  NoteDrag(styleDrag->IsDragging());
  return used;
}

void WindowViewManager::NoteDrag(bool dragging) {
  if (cameraOperations == nullptr) return;
  bool& noted = cameraOperations->GetApplicationParameters().mouse_drag;
  if (std::exchange(noted, dragging) != dragging) cameraOperations->RequestApplicationUpdate();
}

// The letters that move count only while a look is dragged. A release is for whoever has heard the press as
// well.
bool WindowViewManager::OnMoveKey(const WindowEvent& event) {
  const MoveKey* const key = styleDrag->IsLooking() ? style->FindMoveKey(event.key) : nullptr;
  if (key == nullptr) return false;
  const bool down = event.type == WindowEvent::Type::KeyDown;
  if (!event.repeated) styleDrag->Key(key->id, down);
  return down;
}

// ---- a frame ----

void WindowViewManager::OnDrawOverlay() {
  ViewManager::OnDrawOverlay();
  styleDrag->Draw();
}

}  // namespace zovhost
