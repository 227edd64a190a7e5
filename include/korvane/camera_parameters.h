#pragma once

#include "korvane/export.h"
#include "korvane/vector3.h"

namespace Korvane {

/// The camera of a view. Every operation and shot reads one and writes one; the host applies it.
///
/// Lengths are in world units, half angles in degrees. The frame is right-handed: view direction
/// (centre - eye), up, and right = view direction x up. Copied by value everywhere.
struct ZOVTOOLS_API CameraParameters {
  enum class ProjectionType : int { Perspective = 0, Orthographic = 1 };

  Vector3 eye;
  Vector3 centre;  ///< The point looked at; its distance from the eye is the viewing distance.
  Vector3 up;      ///< Needs neither unit length nor to be exactly perpendicular.
  Vector3 pivot;   ///< The point about which orbiting turns.

  /// Half angles on the four sides of the axis, in degrees. Kept apart throughout, so an asymmetric
  /// frustum stays one; a negative angle puts that side beyond the axis.
  double left_fov = 0.0;
  double right_fov = 0.0;
  double top_fov = 0.0;
  double bottom_fov = 0.0;

  double ortho_width = 0.0;   ///< Full width of the orthographic view.
  double ortho_height = 0.0;  ///< Full height of the orthographic view.
  ProjectionType projection_type = ProjectionType::Perspective;
  /// Perspective, except along an axis of the scene, where the hub turns the view orthographic by itself.
  bool perspective_with_ortho = false;
  /// Progress between perspective (0) and orthographic (1); -1: no change of projection is running.
  double projection_transition = -1.0;

  double page_scale = 1.0;  ///< Scale of a 2D page view.
  double page_origin_x = 0.0;
  double page_origin_y = 0.0;

  /// The greater of the two horizontal (vertical) half angles, in degrees.
  double GetHorizontalFOV() const { return Math::Max(left_fov, right_fov); }
  double GetVerticalFOV() const { return Math::Max(top_fov, bottom_fov); }
  /// Writes the angle, in degrees, to both halves.
  void SetHorizontalFOV(double halfAngle) { left_fov = right_fov = halfAngle; }
  void SetVerticalFOV(double halfAngle) { top_fov = bottom_fov = halfAngle; }

  bool IsOrthographic() const { return projection_type == ProjectionType::Orthographic; }
  /// Every number of the record is finite.
  bool IsFinite() const;
};

/// Whether two cameras count as the same view. Null is unequal to anything. Positions compare by squared
/// distance against the tolerance, so they resolve about 3.45e-4; `projection_transition` compares exactly;
/// `perspective_with_ortho` takes no part, since it is a wish and not a view.
[[nodiscard]] ZOVTOOLS_API bool CameraCheckEqual(const CameraParameters* a, const CameraParameters* b);

/// Straightens the camera: its up becomes the part of `up` perpendicular to the view, not normalised, on
/// the side where the camera's up was. False, with nothing changed, when there is nothing to do: the
/// camera's up is parallel or perpendicular to `up`, or the view runs along it or at right angles to it.
ZOVTOOLS_API bool AlignCameraToUpDirection(CameraParameters& camera, const Vector3& up);

/// The ray of a pixel. `x` and `y` count from the bottom left of a view of `width` by `height` pixels, y
/// upward. The direction has the length of (centre - eye), more or less, and is not normalised. In
/// orthographic the field of view, not `ortho_width`, defines the grid of rays. A view without size gives
/// the axis of the view, and false.
ZOVTOOLS_API bool GetScreenRay(double x, double y, double width, double height,
                               const CameraParameters& camera, Vector3& origin, Vector3& direction);

}  // namespace Korvane
