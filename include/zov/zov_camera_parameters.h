#pragma once

#include "korvane/camera_parameters.h"
#include "zov/qmcore.h"
#include "zov/zov_enums.h"
#include "zov/zov_geom_utils.h"

/// The camera of a view, a value: what is copied has a camera of its own. The one exception are the home
/// cameras that zovApplicationParameters and zovCameraOperations hand out by reference: what is written to
/// them, also by assignment, is written to the settings of the view.
///
/// Lengths are in world units. The frame is right-handed: view direction (centre - eye), up, and right = view
/// direction x up. A number that is not finite is stored as given; the library then applies no camera.
class zovCameraParameters {
 public:
  /// All zero, in perspective, with a page of scale 1.
  zovCameraParameters() = default;
  explicit zovCameraParameters(const Korvane::CameraParameters& values) : own(values) {}
  zovCameraParameters(const zovCameraParameters& other) : own(*other.record) {}
  zovCameraParameters& operator=(const zovCameraParameters& other) {
    if (this != &other) *record = *other.record;
    return *this;
  }
  ~zovCameraParameters() = default;

  qmPoint3 eye() const { return zovGeomUtils::kvvec_to_qmpnt(record->eye); }
  void set_eye(const qmPoint3& value) { record->eye = zovGeomUtils::qmpnt_to_kvvec(value); }
  /// The point looked at; its distance from the eye is the viewing distance.
  qmPoint3 centre() const { return zovGeomUtils::kvvec_to_qmpnt(record->centre); }
  void set_centre(const qmPoint3& value) { record->centre = zovGeomUtils::qmpnt_to_kvvec(value); }
  /// The direction only: within, an up needs no unit length, and keeps what it has as long as none is set.
  qmUnitVec3 up() const { return zovGeomUtils::kvvec_to_qmuvc(record->up); }
  void set_up(const qmUnitVec3& value) { record->up = zovGeomUtils::qmuvc_to_kvvec(value); }
  /// The point about which orbiting turns.
  qmPoint3 pivot() const { return zovGeomUtils::kvvec_to_qmpnt(record->pivot); }
  void set_pivot(const qmPoint3& value) { record->pivot = zovGeomUtils::qmpnt_to_kvvec(value); }

  // Half angles on the four sides of the axis, kept apart throughout; a negative one puts that side beyond
  // the axis.
  qmAngle left_fov() const { return {record->left_fov, qmAngleDegrees}; }
  void set_left_fov(const qmAngle& value) { record->left_fov = value.angle(qmAngleDegrees); }
  qmAngle right_fov() const { return {record->right_fov, qmAngleDegrees}; }
  void set_right_fov(const qmAngle& value) { record->right_fov = value.angle(qmAngleDegrees); }
  qmAngle top_fov() const { return {record->top_fov, qmAngleDegrees}; }
  void set_top_fov(const qmAngle& value) { record->top_fov = value.angle(qmAngleDegrees); }
  qmAngle bottom_fov() const { return {record->bottom_fov, qmAngleDegrees}; }
  void set_bottom_fov(const qmAngle& value) { record->bottom_fov = value.angle(qmAngleDegrees); }

  /// The greater of the two half angles; set, both of them.
  qmAngle horizontal_fov() const { return {record->GetHorizontalFOV(), qmAngleDegrees}; }
  void set_horizontal_fov(const qmAngle& value) { record->SetHorizontalFOV(value.angle(qmAngleDegrees)); }
  qmAngle vertical_fov() const { return {record->GetVerticalFOV(), qmAngleDegrees}; }
  void set_vertical_fov(const qmAngle& value) { record->SetVerticalFOV(value.angle(qmAngleDegrees)); }

  /// The full size of the orthographic view.
  double ortho_width() const { return record->ortho_width; }
  void set_ortho_width(double value) { record->ortho_width = value; }
  double ortho_height() const { return record->ortho_height; }
  void set_ortho_height(double value) { record->ortho_height = value; }

  zovProjectionType projection_type() const {
    return static_cast<zovProjectionType>(record->projection_type);
  }
  void set_projection_type(zovProjectionType value) {
    record->projection_type = static_cast<Korvane::CameraParameters::ProjectionType>(value);
  }
  /// Perspective, except along an axis of the scene, where the view turns orthographic by itself.
  bool perspective_with_ortho() const { return record->perspective_with_ortho; }
  void set_perspective_with_ortho(bool value) { record->perspective_with_ortho = value; }
  /// Progress between perspective (0) and orthographic (1); -1: no change of projection is running.
  double projection_transition() const { return record->projection_transition; }
  void set_projection_transition(double value) { record->projection_transition = value; }

  /// Of a 2D page view.
  double page_scale() const { return record->page_scale; }
  void set_page_scale(double value) { record->page_scale = value; }
  double page_origin_x() const { return record->page_origin_x; }
  void set_page_origin_x(double value) { record->page_origin_x = value; }
  double page_origin_y() const { return record->page_origin_y; }
  void set_page_origin_y(double value) { record->page_origin_y = value; }

  /// The record within, for a host that works with both layers.
  const Korvane::CameraParameters& korvane() const { return *record; }

 private:
  friend class zovApplicationParameters;
  friend class zovCameraOperationsP;

  // A view of a record that is somebody else's.
  explicit zovCameraParameters(Korvane::CameraParameters* viewed) : record(viewed) {}

  Korvane::CameraParameters own;
  Korvane::CameraParameters* record = &own;
};
