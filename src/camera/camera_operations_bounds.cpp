// The bounds of the hub: what counts as the scene, and which way is up.
#include <cmath>

#include "camera/scene_bounds.h"
#include "korvane/camera_operations.h"

namespace Korvane {

double CameraOperations::RadiusOrGlobal(double radius) {
  const CallingOut out(callsOut);
  if (radius > 0.0) return radius;
  RecalculateGlobalBounds();
  return applicationParameters.global_bound_radius;
}

Box3 CameraOperations::BoxOrGlobal(const Box3& box) {
  const CallingOut out(callsOut);
  if (!box.IsEmpty()) return box;
  RecalculateGlobalBounds();
  return applicationParameters.global_bound_box;
}

void CameraOperations::SetSceneBoundingSphere(double radius, Vector3 centre) {
  if (!std::isfinite(radius) || !centre.IsFinite()) return;
  applicationParameters.scene_bound_radius = RadiusOrGlobal(radius);
  applicationParameters.scene_bound_centre = centre;
}

void CameraOperations::SetSceneBoundingBox(Box3 box, Vector3 centre) {
  if (!IsFinite(box) || !centre.IsFinite()) return;
  applicationParameters.scene_bound_box = BoxOrGlobal(box);
  applicationParameters.scene_bound_centre = centre;
}

void CameraOperations::SetUCSBoundingSphere(double radius, Vector3 centre) {
  if (!std::isfinite(radius) || !centre.IsFinite()) return;
  applicationParameters.ucs_bound_radius = RadiusOrGlobal(radius);
  applicationParameters.ucs_bound_centre = centre;
}

void CameraOperations::SetUCSBoundingBox(Box3 box, Vector3 centre) {
  if (!IsFinite(box) || !centre.IsFinite()) return;
  applicationParameters.ucs_bound_box = BoxOrGlobal(box);
  applicationParameters.ucs_bound_centre = centre;
}

void CameraOperations::ResetUCSBoundingSphere() {
  const CallingOut out(callsOut);
  RecalculateGlobalBounds();
  applicationParameters.ucs_bound_centre = applicationParameters.global_bound_centre;
  applicationParameters.ucs_bound_radius = applicationParameters.global_bound_radius;
}

void CameraOperations::ResetUCSBoundingBox() {
  const CallingOut out(callsOut);
  RecalculateGlobalBounds();
  applicationParameters.ucs_bound_centre = applicationParameters.global_bound_centre;
  applicationParameters.ucs_bound_box = applicationParameters.global_bound_box;
}

void CameraOperations::ResetSceneBoundingSphere() {
  const CallingOut out(callsOut);
  ApplicationParameters& p = applicationParameters;
  const bool fromUCS = p.ucs_bound_radius > 0.0;
  if (!fromUCS) RecalculateGlobalBounds();
  p.scene_bound_centre = fromUCS ? p.ucs_bound_centre : p.global_bound_centre;
  p.scene_bound_radius = fromUCS ? p.ucs_bound_radius : p.global_bound_radius;
}

void CameraOperations::ResetSceneBoundingBox() {
  const CallingOut out(callsOut);
  ApplicationParameters& p = applicationParameters;
  const bool fromUCS = !p.ucs_bound_box.IsEmpty();
  if (!fromUCS) RecalculateGlobalBounds();
  p.scene_bound_centre = fromUCS ? p.ucs_bound_centre : p.global_bound_centre;
  p.scene_bound_box = fromUCS ? p.ucs_bound_box : p.global_bound_box;
}

bool CameraOperations::IsGeometrySelected() { return geometrySelected; }

void CameraOperations::SetGeometrySelection(double radius, Vector3 centre) {
  const CallingOut out(callsOut);
  if (!std::isfinite(radius) || !centre.IsFinite()) return;
  geometrySelected = true;
  applicationParameters.selected_bound_radius = RadiusOrGlobal(radius);
  applicationParameters.selected_bound_centre = centre;
  if (!applicationParameters.tool_selection_sensitivity) return;
  QueryCameraParameters(currentCamera);
  currentCamera.pivot = centre;
  ApplyIfFinite(currentCamera);
}

void CameraOperations::SetBoundingBoxSelection(Box3 box, Vector3 centre) {
  if (!IsFinite(box) || !centre.IsFinite()) return;
  geometrySelected = true;
  box = BoxOrGlobal(box);
  box.SetCenter(centre);
  applicationParameters.selected_bound_centre = centre;
  applicationParameters.selected_bound_box = box;
}

void CameraOperations::ResetGeometrySelection() {
  geometrySelected = false;
  ApplicationParameters& p = applicationParameters;
  if (p.global_bound_geometry == ApplicationParameters::BoundGeometryType::Sphere) {
    p.selected_bound_radius = 0.0;
    p.selected_bound_centre = Vector3::Zero;
    return;
  }
  p.selected_bound_box.SetCenter(Vector3::Zero);
  p.selected_bound_box.SetExtent(Vector3::Zero);
}

void CameraOperations::RecalculateSceneBounds() {
  const CallingOut out(callsOut);
  ApplicationParameters& p = applicationParameters;
  if (p.lock_to_selection) return;
  RecalculateSelectionBounds();
  if (IsGeometrySelected()) {
    SetSceneBoundingSphere(p.selected_bound_radius, p.selected_bound_centre);
    SetSceneBoundingBox(p.selected_bound_box, p.selected_bound_centre);
    return;
  }
  if (p.scene_is_world) {
    RecalculateGlobalBounds();
    SetSceneBoundingSphere(p.global_bound_radius, p.global_bound_centre);
    SetSceneBoundingBox(p.global_bound_box, p.global_bound_centre);
    return;
  }
  SetSceneBoundingSphere(p.ucs_bound_radius, p.ucs_bound_centre);
  SetSceneBoundingBox(p.ucs_bound_box, p.ucs_bound_centre);
}

void CameraOperations::RecalculateSelectionBounds() {}
void CameraOperations::RecalculateGlobalBounds() {}

// The snap table of the orbit reads the same pair the other way round; hosts rely on both.
Vector3 CameraOperations::GetWorldUpDirection() const {
  const ApplicationParameters& p = applicationParameters;
  return p.scene_is_world ? p.scene_up_direction : p.world_up_direction;
}

Vector3 CameraOperations::GetWorldFrontDirection() const {
  const ApplicationParameters& p = applicationParameters;
  return p.scene_is_world ? p.scene_front_direction : p.world_front_direction;
}

// The axes are those of the scene, whatever counts as the world.
bool CameraOperations::IsInOrthoRange(const Vector3& direction, double tolerance) const {
  const Vector3 view = direction.Normalized();
  const Vector3& up = applicationParameters.scene_up_direction;
  const Vector3& front = applicationParameters.scene_front_direction;
  for (const Vector3& axis : {up, front, front.Cross(up)}) {
    if (std::abs(view.Dot(axis)) >= 1.0 - tolerance) return true;
  }
  return false;
}

}  // namespace Korvane
