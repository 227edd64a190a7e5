// The menus that the host opens for the cube.
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/orientor.h"

namespace Korvane {

bool Orientor::OpenMenu() {
  if (cameraOperations == nullptr || cameraOperations->IsShotActive() || parameters.disabled) return false;
  if (!IsMouseOnPart() && !IsMouseOnCompassPart() && !IsMouseOnUCSMenu()) return false;
  if (mousePressed && activeOverlayPart != OVERLAY_CONTEXT_MENU) return false;
  if (renderer == nullptr) return false;
  LeaveParts();
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
  LeaveParts();
  menuOpen = true;
  renderer->OpenUCSMenu(Truncate(centre.x), Truncate(height - centre.y));
  menuOpen = false;
}

// While a menu is open the mouse is on nothing.
void Orientor::LeaveParts() { activePart = highlightedPart = activeOverlayPart = -1; }

}  // namespace Korvane
