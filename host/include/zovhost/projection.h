#pragma once

#include <array>

#include "korvane/camera_parameters.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace zovhost {

/// Four by four, column major as OpenGL reads it; element (row, column) stands at 4 * column + row. Double,
/// so that models far from the origin are rounded only after the camera has been subtracted.
using Matrix4 = std::array<double, 16>;

inline constexpr Matrix4 identityMatrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// a b: b is applied first.
Matrix4 Multiply(const Matrix4& a, const Matrix4& b);
std::array<float, 16> ToFloat(const Matrix4& matrix);

/// What must lie between the near and the far plane: the sphere around a scene, in world units.
struct SceneSphere {
  Korvane::Vector3 centre;
  double radius = 1.0;
};

/// The axes of a camera in the world, of unit length and perpendicular, whatever the camera: parts that are
/// zero, parallel or not finite are replaced by a usable choice.
struct CameraFrame {
  Korvane::Vector3 eye;
  Korvane::Vector3 forward;
  Korvane::Vector3 right;
  Korvane::Vector3 up;
  double distance = 1.0;  // from the eye to the centre, above zero
};
CameraFrame MakeCameraFrame(const Korvane::CameraParameters& camera);

/// How far the projection has gone from perspective (0) to orthographic (1): `projection_transition` held to
/// that range, or the projection type while no transition runs.
double GetProjectionBlend(const Korvane::CameraParameters& camera);

/// World to clip space, and what it was made from.
///
/// The view is fixed by its window at the depth of the centre. In perspective that is given by the four half
/// angles, in orthographic by the width and height, split to both sides of the axis as the angles split
/// theirs. A blend moves the point where the rays meet backwards to infinity while the window stays, so
/// things at the depth of the centre keep their size. Depth runs from -1 at the near to +1 at the far plane,
/// which enclose the sphere; a perspective near plane stays in front of the eye, and an orthographic view
/// shows what lies behind its eye as well.
class Projection {
 public:
  Projection() = default;
  Projection(const Korvane::CameraParameters& camera, const SceneSphere& sphere);
  /// With given distances of the near and far plane along the view.
  Projection(const Korvane::CameraParameters& camera, double nearDistance, double farDistance);

  const Matrix4& GetView() const { return view; }
  const Matrix4& GetProjection() const { return projection; }
  Matrix4 GetViewProjection() const { return Multiply(projection, view); }
  const CameraFrame& GetFrame() const { return frame; }
  double GetNear() const { return nearDepth; }
  double GetFar() const { return farDepth; }

  /// The size of one pixel in world units, at a depth along the view, for a viewport of `height` pixels.
  double GetPixelSize(double depth, double height) const;
  /// Pixels count from the bottom left of a viewport of `width` by `height`. False, with `pixel` untouched,
  /// for a point that is not in front of the camera or not finite, and for a viewport without size.
  bool WorldToPixel(const Korvane::Vector3& point, double width, double height,
                    Korvane::Vector2& pixel) const;
  /// The ray through a pixel, from the near plane on, its direction of unit length.
  bool PixelToRay(const Korvane::Vector2& pixel, double width, double height, Korvane::Vector3& origin,
                  Korvane::Vector3& direction) const;
  /// The point of a pixel at a depth along the view.
  bool PixelToWorld(const Korvane::Vector2& pixel, double depth, double width, double height,
                    Korvane::Vector3& point) const;

 private:
  void SetWindow(const Korvane::CameraParameters& camera);
  void SetDepthRange(const Korvane::CameraParameters& camera, const SceneSphere& sphere);
  void MakeMatrices();

  CameraFrame frame;
  // The window at the depth of the centre, world units from the axis.
  double left = -1.0;
  double right = 1.0;
  double bottom = -1.0;
  double top = 1.0;
  // The window grows with the depth z along the view by slope * z + base, which is 1 at the centre.
  double slope = 1.0;
  double base = 0.0;
  double nearDepth = 0.1;
  double farDepth = 10.0;
  Matrix4 view = identityMatrix;
  Matrix4 projection = identityMatrix;
};

/// The same camera with the narrower direction of its view widened to the proportions of a viewport, so that
/// a picture is never stretched and all that was seen is still seen. A viewport without size changes nothing.
Korvane::CameraParameters WidenToViewport(const Korvane::CameraParameters& camera, double width,
                                          double height);

}  // namespace zovhost
