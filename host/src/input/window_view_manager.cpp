#include "zovhost/window_view_manager.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "korvane/cam3d_controller.h"
#include "korvane/camera_operations.h"
#include "korvane/center_tool.h"
#include "korvane/navigation_bar.h"
#include "korvane/orientor.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/storyboard.h"
#include "korvane/tool.h"
#include "korvane/track_menu.h"

namespace zovhost {

// ---- life ----

bool WindowViewManager::Destroy() {
  Cancel();
  return ViewManager::Destroy();
}

void WindowViewManager::SetViewportSize(int width, int height) {
  pointer.SetSize(width, height);
  ViewManager::SetViewportSize(width, height);
}

void WindowViewManager::SetHelmDisc(Korvane::HelmDisc* disc) {
  ViewManager::SetHelmDisc(disc);
  if (disc != nullptr) disc->SetOpensAtPointer(true);
}

void WindowViewManager::SetCam3DController(Korvane::Cam3DController* controller) {
  ViewManager::SetCam3DController(controller);
  if (controller != nullptr) controller->SetLimitOrthographicZoom(true);
}

void WindowViewManager::SetOrientor(Korvane::Orientor* cube) {
  ViewManager::SetOrientor(cube);
  if (cube != nullptr) cube->SetCompassFollowsPointer(true);
}

bool WindowViewManager::AddTool(int id, Korvane::Tool* tool) {
  if (auto* const rectangle = dynamic_cast<Korvane::RectZoomTool*>(tool)) rectangle->SetFlyToRectangle(true);
  if (auto* const center = dynamic_cast<Korvane::CenterTool*>(tool)) center->SetHideBallAtStrayRelease(true);
  return ViewManager::AddTool(id, tool);
}

// ---- the tool behind a disc ----

bool WindowViewManager::SetActiveTool(int id) {
  const bool forDisc = id == 0 && IsDiscOpen();
  if (forDisc) {
    if (activeToolID != 0) toolBehindDisc = activeToolID;
    return ViewManager::SetActiveTool(0);
  }
  // Whoever chooses a tool closes the disc, and wants this one.
  const int former = std::exchange(toolBehindDisc, 0);
  const bool chosen = ViewManager::SetActiveTool(id);
  if (!chosen) toolBehindDisc = former;
  return chosen;
}

// Comes when a disc has opened or closed, among others.
void WindowViewManager::Refresh() {
  ViewManager::Refresh();
  if (!IsDiscOpen() && toolBehindDisc != 0) SetActiveTool(toolBehindDisc);
}

bool WindowViewManager::WantMiddleMouseNavigation() const {
  return !mouse.leftDown && !mouse.rightDown && (storyboard == nullptr || !storyboard->IsPlayingBack());
}

// ---- events ----

// The side buttons are the host's.
bool WindowViewManager::OnEvent(const WindowEvent& event) {
  const bool ofButton =
      event.type == WindowEvent::Type::MouseDown || event.type == WindowEvent::Type::MouseUp;
  if (ofButton && event.button > MouseButton::Right) return false;
  switch (event.type) {
    case WindowEvent::Type::MouseDown:
      return OnPress(event);
    case WindowEvent::Type::MouseMove:
      return OnMove(event);
    case WindowEvent::Type::MouseUp:
      return OnRelease(event);
    case WindowEvent::Type::Wheel:
      return OnWheel(event);
    case WindowEvent::Type::KeyDown:
    case WindowEvent::Type::KeyUp:
      return OnKey(event);
    case WindowEvent::Type::MouseLeave:
      return OnLeave();
    case WindowEvent::Type::FocusLost:
      Cancel();
      return true;
    case WindowEvent::Type::FingerDown:
    case WindowEvent::Type::FingerMove:
    case WindowEvent::Type::FingerUp:
    case WindowEvent::Type::FingersLost:
    case WindowEvent::Type::Resized:
    case WindowEvent::Type::FileDropped:
    case WindowEvent::Type::Closing:
      return false;
  }
  return false;
}

WindowViewManager::PointerEvent WindowViewManager::GetPress(MouseButton button) {
  static constexpr std::array<PointerEvent, 3> PRESSES = {
      &ViewManager::OnLeftMouseDown, &ViewManager::OnMiddleMouseDown, &ViewManager::OnRightMouseDown};
  return PRESSES[static_cast<std::size_t>(button)];
}

WindowViewManager::PointerEvent WindowViewManager::GetRelease(MouseButton button) {
  static constexpr std::array<PointerEvent, 3> RELEASES = {
      &ViewManager::OnLeftMouseUp, &ViewManager::OnMiddleMouseUp, &ViewManager::OnRightMouseUp};
  return RELEASES[static_cast<std::size_t>(button)];
}

// The pointer may have come from outside without a motion.
bool WindowViewManager::OnPress(const WindowEvent& event) {
  const bool isFirst = !IsPressed();
  if (isFirst) {
    OnMove(event);
    pointer.Restart({event.x, event.y});
  }
  const PixelPosition position = FollowPointer(event);
  // The wheel would hold on to the pointer.
  if (isFirst && navigation.present == Navigation::Zooming) EndMiddleMouseNavigation();
  if (isFirst && event.button != MouseButton::Right) EndRunningShot();
  const bool isLeft = event.button == MouseButton::Left;
  const bool used = (this->*GetPress(event.button))(position.x, position.y);
  const bool ofTool = activeTool != nullptr && activeTool->IsOperating();
  clickFree = isFirst && isLeft && (!used || (ofTool && !WantToolClicks()));
  return used;
}

bool WindowViewManager::OnMove(const WindowEvent& event) {
  const PixelPosition position = FollowPointer(event);
  return OnMouseMove(position.x, position.y);
}

// The motion since the last frame counts, so one more is performed before the end. Afterwards the pointer is
// where it seems to be.
bool WindowViewManager::OnRelease(const WindowEvent& event) {
  OnMove(event);
  if (cameraOperations != nullptr && cameraOperations->IsOperationActive(Korvane::OPERATION_ALL)) {
    cameraOperations->PerformOperations();
  }
  const bool used = (this->*GetRelease(event.button))(mouse.x, mouse.y);
  if (IsPressed()) return used;
  const PixelPosition shown = pointer.GetPosition();
  pointer.Restart(shown);
  if (shown != PixelPosition{mouse.x, mouse.y}) OnMouseMove(shown.x, shown.y);
  return used;
}

bool WindowViewManager::OnWheel(const WindowEvent& event) {
  const std::optional<int> counts = wheel.Turn(event.wheel);
  if (!counts.has_value()) return false;
  if (!IsPressed()) EndRunningShot();
  const PixelPosition position = FollowPointer(event);
  return OnMouseWheel(position.x, position.y, *counts);
}

// To a place that is over nothing.
bool WindowViewManager::OnLeave() {
  if (IsPressed()) return false;
  pointer.Restart({-1, -1});
  return OnMouseMove(-1, -1);
}

void WindowViewManager::OnPointerSet(int x, int y) { pointer.Restart({x, y}); }

PixelPosition WindowViewManager::FollowPointer(const WindowEvent& event) {
  std::optional<PixelPosition> jump;
  const bool wraps = wantCursorWrapping && !event.ofTouch;
  const PixelPosition position = pointer.Follow({event.x, event.y}, wraps, jump);
  if (jump.has_value() && movePointer) movePointer(jump->x, jump->y);
  return position;
}

// Whoever begins a move ends the other. A click on the cube does so by itself, and a tool's own shot takes
// no second press.
void WindowViewManager::EndRunningShot() {
  const bool ofTool = activeTool != nullptr && activeTool->IsAnimating();
  if (ofTool || (!WantActiveToolEnabled() && !IsPressForDisc())) return;
  if (cameraOperations != nullptr) cameraOperations->EndShot();
}

// A disc hides while its own move runs, which is the disc's to end.
bool WindowViewManager::IsPressForDisc() const {
  if (helmDisc == nullptr || !helmDisc->GetEnabled()) return false;
  const Korvane::TrackMenu* const menu = helmDisc->GetActiveTrackMenu();
  return menu != nullptr && menu->GetVisible();
}

// ---- whose the view is ----

void WindowViewManager::PutPointer(int x, int y) {
  WindowEvent move;
  move.x = x;
  move.y = y;
  move.ofTouch = true;
  OnMove(move);
}

// Of the cube, what lies beside its parts as well.
bool WindowViewManager::IsFreeAt(int x, int y) {
  const auto isOnCube = [&] {
    return orientor != nullptr && orientor->GetParameters().visible && !cleanScreen &&
           orientor->IsPointInBounds(x, y);
  };
  if (IsDiscAt(x, y)) return false;
  const bool besideDisc = IsDiscOpen() && helmDisc->GetActiveTrackMenu() != nullptr;
  if (besideDisc) return IsFreeBesideDisc(x, y) && !isOnCube();
  PutPointer(x, y);
  return WantActiveToolEnabled() && !isOnCube();
}

// The disc is held where it is while the others look at the pointer.
bool WindowViewManager::IsFreeBesideDisc(int x, int y) {
  Korvane::TrackMenu* const menu = helmDisc->GetActiveTrackMenu();
  const bool wasLocked = menu->GetLocked();
  const PixelPosition before = {mouse.x, mouse.y};
  menu->SetLocked(true);
  PutPointer(x, y);
  const bool onBar = (navigationBar != nullptr && navigationBar->IsMouseInRegion()) ||
                     IsMouseInToolbarRegion() || IsMouseInRibbonRegion();
  const bool onStory = reelshowPlaying || (storyboard != nullptr && storyboard->IsMouseInRegion());
  const bool isFree = !onBar && !onStory && !helmDisc->IsOverWelcome();
  if (isFree) PutPointer(before.x, before.y);
  menu->SetLocked(wasLocked);
  return isFree;
}

bool WindowViewManager::IsDiscAt(int x, int y) const {
  Korvane::TrackMenu* const menu = IsDiscOpen() ? helmDisc->GetActiveTrackMenu() : nullptr;
  if (menu == nullptr) return false;
  if (!Korvane::HelmDisc::IsLargeDisc(helmDisc->GetActiveDisc())) return true;
  const Korvane::PixelIcon2D* const map = menu->GetRegionMap();
  Korvane::Vector3 colour;
  return map != nullptr && map->GetColor({static_cast<double>(x), static_cast<double>(y)}, colour);
}

bool WindowViewManager::TakeView() {
  if (cameraOperations == nullptr || reelshowPlaying) return false;
  if (storyboard != nullptr && storyboard->IsPlayingBack()) return false;
  if (IsPressed()) Cancel();
  EndMiddleMouseNavigation();
  cameraOperations->EndShot();
  return true;
}

// ---- keys ----

bool WindowViewManager::OnKey(const WindowEvent& event) {
  const std::optional<Korvane::KeyID> key = keys.OnKey(event);
  if (!key.has_value()) return false;
  if (event.type != WindowEvent::Type::KeyDown) return OnKeyUp(*key);
  // A disc that was pressed stays until another key than its own has gone down.
  if (*key == Korvane::KEY_DISC && !IsPressed() && helmDisc != nullptr) helmDisc->LetHotKeyClose();
  return OnKeyDown(*key);
}

// ---- letting go ----

void WindowViewManager::Cancel() {
  while (const std::optional<Korvane::KeyID> key = keys.ReleaseNext()) OnKeyUp(*key);
  const PixelPosition shown = pointer.GetPosition();
  CancelGesture();
  pointer.Restart(shown);
  clickFree = false;
  wheel.Restart();
}

}  // namespace zovhost
