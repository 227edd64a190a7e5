// The menus that the host opens for the cube.
#include "cube/orientor_parts.h"
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/orientor.h"

namespace Korvane {

bool Orientor::OpenMenu() {
  CubeMouse& mouse = parts->mouse;
  const CameraOperations* const hub = parts->partners.hub.Get();
  if (hub == nullptr || hub->IsShotActive() || parameters.disabled) return false;
  if (!IsMouseOnPart() && !mouse.IsOnCompass()) return false;
  if (mouse.pressed && mouse.activeOverlayPart != OVERLAY_CONTEXT_MENU) return false;
  Renderer* const renderer = parts->renderer.Get();
  if (renderer == nullptr) return false;
  mouse.LeaveParts();
  mouse.menuOpen = true;
  renderer->OpenMenu(MENU_ORIENTOR);
  mouse.menuOpen = false;
  return true;
}

void Orientor::OpenUCSMenu() {
  CubeMouse& mouse = parts->mouse;
  const CameraOperations* const hub = parts->partners.hub.Get();
  if (!IsMouseOnUCSMenu() || hub == nullptr || hub->IsShotActive()) return;
  Renderer* const renderer = parts->renderer.Get();
  const DynamicIcon2D* const label = parts->label.GetPlain();
  if (parameters.disabled || renderer == nullptr || label == nullptr) return;
  const Vector2 centre = label->GetPosition();
  const int height = hub->GetApplicationParameters().viewport_height;
  mouse.LeaveParts();
  mouse.menuOpen = true;
  renderer->OpenUCSMenu(Truncate(centre.x), Truncate(height - centre.y));
  mouse.menuOpen = false;
}

}  // namespace Korvane
