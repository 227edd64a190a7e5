#include "viewer_view_manager.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "key_table.h"
#include "korvane/orientor.h"
#include "korvane/renderer.h"
#include "korvane/shot.h"
#include "korvane/storyboard.h"
#include "korvane/tool.h"
#include "view_tools.h"
#include "viewer_hub.h"

namespace zovview {

using Korvane::KeyID;
using zovhost::MouseButton;
using zovhost::WindowEvent;

namespace {

constexpr double COUNTS_PER_NOTCH = 120.0;
constexpr double MOST_NOTCHES = 1000.0;  // at once; more come of no hand

}  // namespace

ViewerViewManager::ViewerViewManager(ViewerHub& operations) : hub(operations) {
  SetKorvane(&operations);
  for (const ViewTool& tool : GetViewTools()) AddTool(tool.id, tool.make());
  SetActiveTool(TOOL_ORBIT);
}

ViewerViewManager::~ViewerViewManager() = default;

// ---- life ----

bool ViewerViewManager::Create() {
  if (!ViewManager::Create()) return false;
  notes = std::make_unique<Notes>(*renderer);
  for (const ViewTool& row : GetViewTools()) {
    Korvane::Tool& tool = *tools.at(row.id);
    tool.SetMouseHUD(notes->Get(row.mouseNote));
    if (row.addNotes != nullptr) row.addNotes(tool, *notes);
  }
  return true;
}

bool ViewerViewManager::Destroy() {
  Cancel();
  notes.reset();
  return ViewManager::Destroy();
}

void ViewerViewManager::SetViewportSize(int width, int height) {
  pointer.SetSize(width, height);
  ViewManager::SetViewportSize(width, height);
}

bool ViewerViewManager::WantMiddleMouseNavigation() const {
  return !leftMouseDown && !rightMouseDown && (storyboard == nullptr || !storyboard->IsPlayingBack());
}

// ---- events ----

bool ViewerViewManager::OnEvent(const WindowEvent& event) {
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
    case WindowEvent::Type::Resized:
    case WindowEvent::Type::FileDropped:
    case WindowEvent::Type::Closing:
      return false;
  }
  return false;
}

ViewerViewManager::PointerEvent ViewerViewManager::GetPress(MouseButton button) {
  static constexpr std::array<PointerEvent, 3> PRESSES = {
      &ViewManager::OnLeftMouseDown, &ViewManager::OnMiddleMouseDown, &ViewManager::OnRightMouseDown};
  return PRESSES[static_cast<std::size_t>(button)];
}

ViewerViewManager::PointerEvent ViewerViewManager::GetRelease(MouseButton button) {
  static constexpr std::array<PointerEvent, 3> RELEASES = {
      &ViewManager::OnLeftMouseUp, &ViewManager::OnMiddleMouseUp, &ViewManager::OnRightMouseUp};
  return RELEASES[static_cast<std::size_t>(button)];
}

// The pointer may have come from outside without a motion.
bool ViewerViewManager::OnPress(const WindowEvent& event) {
  const bool isFirst = !IsPressed();
  if (isFirst) {
    OnMove(event);
    pointer.Restart({event.x, event.y});
  }
  const PixelPosition position = FollowPointer(event.x, event.y);
  if (isFirst && zoomingWithMouse) EndMiddleMouseNavigation();  // the wheel would hold on to the pointer
  if (isFirst && event.button != MouseButton::Right) EndRunningShot();
  const bool isLeft = event.button == MouseButton::Left;
  if (isLeft) ShowViewNote();
  const bool used = (this->*GetPress(event.button))(position.x, position.y);
  const ViewTool* const tool = FindViewTool(activeToolID);
  const bool ofTool = activeTool != nullptr && activeTool->IsOperating();
  clickFree = isFirst && isLeft && (!used || (ofTool && tool != nullptr && !tool->usesClicks));
  return used;
}

bool ViewerViewManager::OnMove(const WindowEvent& event) {
  const PixelPosition position = FollowPointer(event.x, event.y);
  return OnMouseMove(position.x, position.y);
}

// The motion since the last frame counts, so one more is performed before the end. Afterwards the pointer is
// where it seems to be.
bool ViewerViewManager::OnRelease(const WindowEvent& event) {
  OnMove(event);
  if (hub.IsOperationActive(Korvane::OPERATION_ALL)) hub.PerformOperations();
  const bool used = (this->*GetRelease(event.button))(mouseX, mouseY);
  if (IsPressed()) return used;
  const PixelPosition shown = pointer.GetPosition();
  pointer.Restart(shown);
  if (shown != PixelPosition{mouseX, mouseY}) OnMouseMove(shown.x, shown.y);
  return used;
}

bool ViewerViewManager::OnWheel(const WindowEvent& event) {
  if (!(std::abs(event.wheel) <= MOST_NOTCHES)) return false;
  const double counts = event.wheel * COUNTS_PER_NOTCH + wheelRest;
  const double whole = std::trunc(counts);
  wheelRest = counts - whole;
  if (!IsPressed()) EndRunningShot();
  const PixelPosition position = FollowPointer(event.x, event.y);
  return OnMouseWheel(position.x, position.y, static_cast<int>(whole));
}

// To a place that is over nothing.
bool ViewerViewManager::OnLeave() {
  if (IsPressed()) return false;
  pointer.Restart({-1, -1});
  return OnMouseMove(-1, -1);
}

void ViewerViewManager::OnPointerSet(int x, int y) { pointer.Restart({x, y}); }

PixelPosition ViewerViewManager::FollowPointer(int x, int y) {
  std::optional<PixelPosition> jump;
  const PixelPosition position = pointer.Follow({x, y}, wantCursorWrapping, jump);
  if (jump.has_value() && movePointer) movePointer(jump->x, jump->y);
  return position;
}

// Whoever begins a move ends the other. A click on the cube does so by itself, and a tool's own shot takes
// no second press.
void ViewerViewManager::EndRunningShot() {
  const bool ofTool = activeTool != nullptr && activeTool->IsAnimating();
  if (!ofTool && WantActiveToolEnabled()) hub.EndShot();
}

// A tool may have put another note there.
void ViewerViewManager::ShowViewNote() {
  const ViewTool* const row = FindViewTool(activeToolID);
  if (row == nullptr || activeTool == nullptr || renderer == nullptr) return;
  if (activeTool->IsOperating() || row->viewNote == Korvane::STRING_NONE) return;
  activeTool->SetViewportHUD(notes != nullptr ? notes->Get(row->viewNote) : nullptr);
}

// ---- keys ----

// Two keys may stand for one: it is down while either is.
bool ViewerViewManager::OnKey(const WindowEvent& event) {
  const bool down = event.type == WindowEvent::Type::KeyDown;
  const auto bindings = GetKeyBindings();
  for (std::size_t i = 0; i < bindings.size(); ++i) {
    if (bindings[i].key == event.key) return PressKey(i, down);
  }
  return false;
}

bool ViewerViewManager::PressKey(std::size_t binding, bool down) {
  const auto bindings = GetKeyBindings();
  const KeyID id = bindings[binding].id;
  const auto isHeld = [&] {
    for (std::size_t i = 0; i < bindings.size(); ++i) {
      if (heldKeys[i] && bindings[i].id == id) return true;
    }
    return false;
  };
  const bool before = isHeld();
  heldKeys[binding] = down;
  if (isHeld() == before) return false;
  return down ? OnKeyDown(id) : OnKeyUp(id);
}

void ViewerViewManager::ReleaseKeys() {
  for (std::size_t i = 0; i < GetKeyBindings().size(); ++i) {
    if (heldKeys[i]) PressKey(i, false);
  }
}

// ---- letting go ----

// Some tools act on the release: the key that cancels keeps them from it, and a shot that another begins ends
// at once.
void ViewerViewManager::Cancel() {
  ReleaseKeys();
  if (activeTool != nullptr && activeTool->IsOperating()) {
    OnKeyDown(Korvane::KEY_ESCAPE);
    OnKeyUp(Korvane::KEY_ESCAPE);
  }
  const Korvane::Shot* const shot = hub.GetActiveShot();
  ReleaseButtons();
  if (hub.GetActiveShot() != shot) hub.EndShot();
  if (zoomingWithMouse) EndMiddleMouseNavigation();
  clickFree = false;
  wheelRest = 0.0;
}

// A cube that does not show takes no click.
void ViewerViewManager::ReleaseButtons() {
  const PixelPosition shown = pointer.GetPosition();
  const bool cubeShows = orientor != nullptr && orientor->GetParameters().visible;
  if (cubeShows) orientor->GetParameters().visible = orientor->IsDragActive();
  if (leftMouseDown) OnLeftMouseUp(mouseX, mouseY);
  if (cubeShows) orientor->GetParameters().visible = true;
  if (middleMouseDown) OnMiddleMouseUp(mouseX, mouseY);
  rightMouseDown = rightClickOpen = false;  // a release would open a menu
  pointer.Restart(shown);
}

}  // namespace zovview
