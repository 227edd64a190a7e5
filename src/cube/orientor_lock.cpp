// Keeping the scene bounds on the selection.
#include "cube/orientor_parts.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"

namespace Korvane {

void Orientor::LockToCurrentSelection(bool toggle) {
  if (parts->partners.hub.Get() == nullptr) return;
  CameraOperations& hub = *parts->partners.hub.Get();
  ApplicationParameters& scene = hub.GetApplicationParameters();
  const bool lock = !(toggle && scene.lock_to_selection);
  hub.RecalculateSelectionBounds();
  if (!lock && !parameters.orient_to_ucs) {
    hub.ResetUCSBoundingSphere();
    hub.ResetUCSBoundingBox();
  }
  if (hub.IsGeometrySelected()) {
    if (!lock) hub.RecalculateSelectionBounds();
    hub.SetSceneBoundingSphere(scene.selected_bound_radius, scene.selected_bound_centre);
    hub.SetSceneBoundingBox(scene.selected_bound_box, scene.selected_bound_centre);
  } else if (lock) {
    return;
  } else {
    hub.ResetSceneBoundingSphere();
    hub.ResetSceneBoundingBox();
  }
  scene.lock_to_selection = lock;
}

}  // namespace Korvane
