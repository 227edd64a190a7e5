#include "zovhost/window_view_manager.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "input/style_drag.h"
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
#include "korvane/zoom_tool.h"

namespace zovhost {

// ---- life ----

WindowViewManager::WindowViewManager()
    : style(&GetNavigationStyles().front()), styleDrag(std::make_unique<StyleDrag>()) {}
WindowViewManager::~WindowViewManager() = default;

bool WindowViewManager::Destroy() {
  Cancel();
  return ViewManager::Destroy();
}

void WindowViewManager::SetViewportSize(int width, int height) {
  pointer.SetSize(width, height);
  ViewManager::SetViewportSize(width, height);
}

void WindowViewManager::SetHelmDisc(Korvane::HelmDisc* disc) {
  if (stylePress.has_value()) Cancel();
  ViewManager::SetHelmDisc(disc);
  if (disc == nullptr) return;
  disc->SetOpensAtPointer(true);
  disc->SetMessagesAtOnce(reducedMotion);
}

void WindowViewManager::SetStoryboard(Korvane::Storyboard* panel) {
  ViewManager::SetStoryboard(panel);
  if (panel != nullptr) panel->SetCutsOnly(reducedMotion);
}

void WindowViewManager::SetReducedMotion(bool reduced) {
  reducedMotion = reduced;
  if (helmDisc != nullptr) helmDisc->SetMessagesAtOnce(reduced);
  if (storyboard != nullptr) storyboard->SetCutsOnly(reduced);
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
  if (auto* const zoom = dynamic_cast<Korvane::ZoomTool*>(tool)) zoom->SetUseCurrentPivotPoint(zoomsToPivot);
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
  if (activeToolID != 0 && std::exchange(notedTool, activeToolID) != activeToolID) namedNavigations = {};
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
    snapping = cameraOperations != nullptr && cameraOperations->GetApplicationParameters().do_snap_orbit;
  }
  const PixelPosition position = FollowPointer(event);
  if (stylePress.has_value()) {
    swallowed |= 1U << static_cast<unsigned>(event.button);
    return true;
  }
  // The wheel would hold on to the pointer.
  if (isFirst && navigation.present == Navigation::Zooming) EndMiddleMouseNavigation();
  if (isFirst && event.button != MouseButton::Right) EndRunningShot();
  const NavigationDrag* const drag = style->FindDrag(event.button, event.modifiers);
  if (isFirst && drag != nullptr && !IsStyleOwn() && PressStyle(event, drag->move)) return true;
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
  const unsigned bit = 1U << static_cast<unsigned>(event.button);
  if ((std::exchange(swallowed, swallowed & ~bit) & bit) != 0) return true;
  OnMove(event);
  if (stylePress.has_value() && stylePress->button == event.button) return ReleaseStyle(event);
  if (cameraOperations != nullptr && cameraOperations->IsOperationActive(Korvane::OPERATION_ALL)) {
    cameraOperations->PerformOperations();
  }
  const bool ofCube = orientorDrag.seen;
  const bool used = (this->*GetRelease(event.button))(mouse.x, mouse.y);
  if (ofCube) GiveSnappingBack();
  if (IsPressed()) return used;
  const PixelPosition shown = pointer.GetPosition();
  pointer.Restart(shown);
  if (shown != PixelPosition{mouse.x, mouse.y}) OnMouseMove(shown.x, shown.y);
  return used;
}

bool WindowViewManager::OnWheel(const WindowEvent& event) {
  const std::optional<int> counts = wheel.Turn(style->wheelReversed ? -event.wheel : event.wheel);
  if (!counts.has_value()) return false;
  if (styleDrag->IsOperating()) return true;
  if (!IsPressed()) EndRunningShot();
  const PixelPosition position = FollowPointer(event);
  if (style->zoomTarget == NavigationStyle::ZoomTarget::Pointer) {
    return OnMouseWheel(position.x, position.y, *counts);
  }
  const bool used = OnMouseWheel(viewportWidth / 2, viewportHeight / 2, *counts);
  mouse.x = position.x;
  mouse.y = position.y;
  return used;
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

// The cube, which pulls to its views by a setting of its own, leaves the hub's off.
void WindowViewManager::GiveSnappingBack() {
  if (cameraOperations != nullptr) cameraOperations->GetApplicationParameters().do_snap_orbit = snapping;
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
  FollowModifiers(event.modifiers);
  if (OnMoveKey(event)) return true;
  const std::optional<Korvane::KeyID> key = keys.OnKey(event);
  if (!key.has_value()) return false;
  if (event.type != WindowEvent::Type::KeyDown) return PassKey(*key, false);
  // A disc that was pressed stays until another key than its own has gone down.
  if (*key == Korvane::KEY_DISC && !IsPressed() && helmDisc != nullptr) helmDisc->LetHotKeyClose();
  return PassKey(*key, true);
}

// A drag of the style follows the modifiers by itself.
bool WindowViewManager::PassKey(Korvane::KeyID key, bool down) {
  if (styleDrag->Key(key, down)) return true;
  keepsDrag = stylePress.has_value();
  const bool used = down ? OnKeyDown(key) : OnKeyUp(key);
  keepsDrag = false;
  return used;
}

// ---- letting go ----

void WindowViewManager::Cancel() {
  while (const std::optional<Korvane::KeyID> key = keys.ReleaseNext()) PassKey(*key, false);
  const PixelPosition shown = pointer.GetPosition();
  const bool ofCube = orientorDrag.seen;
  CancelGesture();
  if (ofCube) GiveSnappingBack();
  ForgetStyleDrag();
  pointer.Restart(shown);
  clickFree = false;
  wheel.Restart();
}

}  // namespace zovhost
