#include "zov/zov_camera_operations.h"

#include "facade/zov_camera_operations_p.h"
#include "zov/zov_geom_utils.h"

using Korvane::Box3;
using Korvane::CameraOperations;
using Korvane::CameraParameters;
using Utils = zovGeomUtils;

// ---- inward ----

zovCameraOperationsP::zovCameraOperationsP(zovCameraOperations& outside)
    : settings(GetApplicationParameters()), owner(outside) {}

void zovCameraOperationsP::ApplyCameraParameters(const CameraParameters& camera) {
  owner->apply_camera_parameters(zovCameraParameters(camera));
}

void zovCameraOperationsP::QueryCameraParameters(CameraParameters& camera) const {
  zovCameraParameters outside(&camera);  // what is written to it is written to the camera
  owner->query_camera_parameters(outside);
}

void zovCameraOperationsP::RequestApplicationUpdate() { owner->request_application_update(); }
bool zovCameraOperationsP::PerformOperations() { return owner->perform_operations(); }
bool zovCameraOperationsP::IsShotActive() const { return owner->is_shot_active(); }
void zovCameraOperationsP::RecalculateSelectionBounds() { owner->recalculate_selection_bounds(); }
void zovCameraOperationsP::RecalculateGlobalBounds() { owner->recalculate_global_bounds(); }

// ---- outside ----

zovCameraOperations::zovCameraOperations() : inner(std::make_unique<zovCameraOperationsP>(*this)) {}
zovCameraOperations::~zovCameraOperations() = default;

bool zovCameraOperations::perform_operations() { return inner->CameraOperations::PerformOperations(); }
bool zovCameraOperations::is_shot_active() const { return inner->CameraOperations::IsShotActive(); }
void zovCameraOperations::recalculate_selection_bounds() {
  inner->CameraOperations::RecalculateSelectionBounds();
}
void zovCameraOperations::recalculate_global_bounds() { inner->CameraOperations::RecalculateGlobalBounds(); }

zovApplicationParameters& zovCameraOperations::get_application_parameters() { return inner->settings; }
const zovApplicationParameters& zovCameraOperations::get_application_parameters() const {
  return inner->settings;
}
zovCameraParameters zovCameraOperations::get_camera_parameters() const {
  return zovCameraParameters(inner->GetCameraParameters());
}
zovCameraParameters& zovCameraOperations::get_home_camera() { return inner->settings.home_camera(); }
bool zovCameraOperations::check_cameras_equal(const zovCameraParameters& a,
                                              const zovCameraParameters& b) const {
  return inner->CheckCamerasEqual(&a.korvane(), &b.korvane());
}
qmUnitVec3 zovCameraOperations::get_world_up_direction() const {
  return Utils::kvvec_to_qmuvc(inner->GetWorldUpDirection());
}
qmUnitVec3 zovCameraOperations::get_world_front_direction() const {
  return Utils::kvvec_to_qmuvc(inner->GetWorldFrontDirection());
}

void zovCameraOperations::set_scene_bounding_sphere(double radius, const qmPoint3& centre) {
  inner->SetSceneBoundingSphere(radius, Utils::qmpnt_to_kvvec(centre));
}
void zovCameraOperations::set_scene_bounding_box(const qmBox3& box) {
  const Box3 within = Utils::qmbox_to_kvbox(box);
  inner->SetSceneBoundingBox(within, within.GetCenter());
}
void zovCameraOperations::reset_scene_bounding_sphere() { inner->ResetSceneBoundingSphere(); }
void zovCameraOperations::reset_scene_bounding_box() { inner->ResetSceneBoundingBox(); }
void zovCameraOperations::set_ucs_bounding_sphere(double radius, const qmPoint3& centre) {
  inner->SetUCSBoundingSphere(radius, Utils::qmpnt_to_kvvec(centre));
}
void zovCameraOperations::set_ucs_bounding_box(const qmBox3& box) {
  const Box3 within = Utils::qmbox_to_kvbox(box);
  inner->SetUCSBoundingBox(within, within.GetCenter());
}
void zovCameraOperations::reset_ucs_bounding_sphere() { inner->ResetUCSBoundingSphere(); }
void zovCameraOperations::reset_ucs_bounding_box() { inner->ResetUCSBoundingBox(); }
bool zovCameraOperations::is_geometry_selected() const { return inner->IsGeometrySelected(); }
void zovCameraOperations::set_geometry_selection(double radius, const qmPoint3& centre) {
  inner->SetGeometrySelection(radius, Utils::qmpnt_to_kvvec(centre));
}
void zovCameraOperations::set_bounding_box_selection(const qmBox3& box) {
  const Box3 within = Utils::qmbox_to_kvbox(box);
  inner->SetBoundingBoxSelection(within, within.GetCenter());
}
void zovCameraOperations::reset_geometry_selection() { inner->ResetGeometrySelection(); }
void zovCameraOperations::recalculate_scene_bounds() { inner->RecalculateSceneBounds(); }

bool zovCameraOperations::constrain_pivot_to_viewport() { return inner->ConstrainPivotToViewport(); }
bool zovCameraOperations::align_to_scene_up_direction(double duration) {
  return inner->AlignToSceneUpDirection(duration);
}
bool zovCameraOperations::auto_switch_to_perspective_projection() {
  return inner->AutoSwitchToPerspectiveProjection();
}
bool zovCameraOperations::is_scene_outside_view(const zovCameraParameters& camera) {
  return inner->IsSceneOutsideView(camera.korvane());
}
bool zovCameraOperations::fit_all_to_view() { return inner->FitAllToView(); }
bool zovCameraOperations::fit_selection_to_view() { return inner->FitSelectionToView(); }
bool zovCameraOperations::transition_camera_to_fit_bounding_box(const qmBox3& box) {
  const Box3 within = Utils::qmbox_to_kvbox(box);
  return inner->TransitionCameraToFitBoundingBox(within.GetCenter(), within);
}
bool zovCameraOperations::transition_camera_to_fit_bounding_sphere(const qmPoint3& centre, double radius) {
  return inner->TransitionCameraToFitBoundingSphere(Utils::qmpnt_to_kvvec(centre), radius);
}

bool zovCameraOperations::fit_bounding_box_to_view(const qmBox3& box, qmUnitVec3 direction, qmUnitVec3 up,
                                                   zovCameraParameters& camera) const {
  const Box3 within = Utils::qmbox_to_kvbox(box);
  CameraParameters fitted = camera.korvane();
  if (!inner->FitBoundingBoxToView(within.GetCenter(), within, Utils::qmuvc_to_kvvec(direction),
                                   Utils::qmuvc_to_kvvec(up), fitted)) {
    return false;
  }
  camera = zovCameraParameters(fitted);
  return true;
}

bool zovCameraOperations::fit_bounding_sphere_to_view(const qmPoint3& centre, double radius,
                                                      const qmUnitVec3& direction, const qmUnitVec3& up,
                                                      zovCameraParameters& camera) const {
  CameraParameters fitted = camera.korvane();
  if (!inner->FitBoundingSphereToView(Utils::qmpnt_to_kvvec(centre), radius, Utils::qmuvc_to_kvvec(direction),
                                      Utils::qmuvc_to_kvvec(up), fitted)) {
    return false;
  }
  camera = zovCameraParameters(fitted);
  return true;
}

CameraOperations& zovCameraOperations::korvane() { return *inner; }
const CameraOperations& zovCameraOperations::korvane() const { return *inner; }
