// What the cube does with the mouse.
#include "cube/orientor_transition_shot_observer.h"
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/orientor.h"
#include "korvane/rewind_history.h"

namespace Korvane {

// ---- the mouse ----

bool Orientor::OnMouseMove(int /*x*/, int /*y*/) {
  if (cameraOperations == nullptr || !parameters.visible || parameters.disabled) return false;
  return IsDragActive();
}

bool Orientor::OnLeftMouseDown(int x, int y) {
  if (cameraOperations == nullptr || !parameters.visible || parameters.disabled) return false;
  if (cameraOperations->IsShotActive()) return false;
  pressedOverlayPart = activeOverlayPart;
  accumulatedDragX = accumulatedDragY = 0;
  dragging = false;
  mousePressed = true;
  pressX = lastX = x;
  pressY = lastY = y;
  if (!IsMouseOnPart() && !IsMouseOnCompassPart() && !IsMouseOnUCSMenu()) return false;
  mouseCaptured = true;
  return true;
}

bool Orientor::OnLeftMouseUp(int /*x*/, int /*y*/) {
  const bool captured = mouseCaptured;
  mouseCaptured = dragging = mousePressed = false;
  return captured;
}

// ---- menus ----

bool Orientor::OpenMenu() {
  if (cameraOperations == nullptr || cameraOperations->IsShotActive() || parameters.disabled) return false;
  if (!IsMouseOnPart() && !IsMouseOnCompassPart() && !IsMouseOnUCSMenu()) return false;
  if (mousePressed && !IsMouseOnContextMenuPart()) return false;
  if (renderer == nullptr) return false;
  activePart = highlightedPart = activeOverlayPart = -1;
  menuOpen = true;
  renderer->OpenMenu(MENU_ORIENTOR);
  menuOpen = false;
  return true;
}

void Orientor::OpenUCSMenu() {
  if (!IsMouseOnUCSMenu() || cameraOperations == nullptr || cameraOperations->IsShotActive()) return;
  if (parameters.disabled || renderer == nullptr || ucsLabel == nullptr) return;
  const Vector2 centre = ucsLabel->GetPosition();
  const int height = cameraOperations->GetApplicationParameters().viewport_height;
  activePart = highlightedPart = activeOverlayPart = -1;
  menuOpen = true;
  renderer->OpenUCSMenu(Truncate(centre.x), Truncate(height - centre.y));
  menuOpen = false;
}

// ---- moves of the camera ----

void Orientor::GoToHomeView() {
  if (cameraOperations == nullptr || !parameters.visible) return;
  TransitionShotParameters shot;
  shot.targetCamera = cameraOperations->GetHomeCamera();
  shot.easeEnd = 1.0;
  shot.duration = parameters.transition_duration;
  cameraOperations->BeginShot(shot);
  cameraOperations->SetActiveShotObserver(transitionObserver.get());
  OnTransitionStarted();
}

void Orientor::AlignToOrbitUpDirection() {
  if (!parameters.preserve_scene_up || cameraOperations == nullptr) return;
  cameraOperations->AlignToSceneUpDirection(parameters.transition_duration);
}

void Orientor::OnTransitionStarted() {
  if (cameraOperations == nullptr || rewindHistory == nullptr) return;
  rewindHistory->BeginElementRecord(cameraOperations->GetCameraParameters());
}

void Orientor::OnTransitionEnded() {
  if (cameraOperations == nullptr || rewindHistory == nullptr) return;
  rewindHistory->EndElementRecord(cameraOperations->GetCameraParameters());
}

}  // namespace Korvane
