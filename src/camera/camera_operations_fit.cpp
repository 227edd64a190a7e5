// Fit to view, and the small corrections of the camera that widgets ask for.
#include <algorithm>
#include <cmath>

#include "camera/camera_frame.h"
#include "camera/free_view.h"
#include "camera/view_size.h"
#include "korvane/aspect_ratio_adjuster.h"
#include "korvane/camera_operations.h"
#include "korvane/plane3d.h"

namespace Korvane {

namespace {

constexpr double FIT_DURATION = 0.5;  // seconds
constexpr double NEAR_DISTANCE = 0.001;
constexpr int CORNER_COUNT = 8;

// The first direction of a fixed list that is perpendicular to the view; zero when none is.
Vector3 GetEmpiricalUpDirection(const Vector3& direction) {
  static constexpr Vector3 CANDIDATES[] = {
      {0.0, 1.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, {0.0, 1.0, 1.0},
      {1.0, 0.0, 1.0}, {1.0, 1.0, 0.0}, {1.0, 1.0, 1.0},
  };
  for (const Vector3& candidate : CANDIDATES) {
    if (std::abs(candidate.Dot(direction)) < Math::EPSILON_VALUE) return candidate;
  }
  return Vector3::Zero;
}

// The up of a view along `direction` that comes nearest to `up`.
Vector3 GetUpDirection(const Vector3& up, const Vector3& direction) {
  if (std::abs(up.Dot(direction)) <= Math::EPSILON_VALUE) return up.Normalized();
  const Vector3 projected = ProjectOnPlane(up, direction.Normalized());
  const bool parallel = projected.Length() < Math::EPSILON_VALUE;
  return (parallel ? GetEmpiricalUpDirection(direction) : projected).Normalized();
}

// The axes of a fit and the point it starts from.
struct FitFrame {
  Vector3 origin;
  Vector3 right;
  Vector3 up;
  Vector3 forward;

  Vector3 ToLocal(const Vector3& point) const {
    const Vector3 offset = point - origin;
    return {offset.Dot(right), offset.Dot(up), offset.Dot(forward)};
  }
  Vector3 ToWorld(const Vector3& local) const {
    return origin + right * local.x + up * local.y + forward * local.z;
  }
};

struct Range {
  double low = Math::MAX_VALUE;
  double high = -Math::MAX_VALUE;

  void Include(double value) {
    low = Math::Min(low, value);
    high = Math::Max(high, value);
  }
  double Size() const { return high - low; }
  double Middle() const { return (high + low) / 2.0; }
};

// A wedge of the view, in the plane of one axis and the depth, has its middle line at this slope: position
// against depth. Zero but for an asymmetric frustum.
double MiddleSlope(double lowAngle, double highAngle) {
  const double skew = (highAngle - lowAngle) / 2.0;
  return std::abs(skew) > Math::EPSILON_VALUE ? std::tan(skew) : 0.0;
}

// Two opposite planes of the frustum, as lines in the plane of one axis of the view and its depth. The
// slopes are those of depth against the axis; each line is pushed against the corners from inside.
class FrustumWedge {
 public:
  // `lowAngle` and `highAngle` are the half angles, in radians, on the negative and the positive side, and
  // the tangents theirs.
  FrustumWedge(double lowAngle, double lowTangent, double highAngle, double highTangent)
      : low(lowAngle, -1.0 / lowTangent), high(highAngle, 1.0 / highTangent) {}

  void Include(double position, double depth) {
    low.Include(position, depth);
    high.Include(position, depth);
  }

  // Where the two lines meet, as (position, depth): the eye that this axis alone would ask for.
  Vector2 Apex() const {
    const double position = (high.offset - low.offset) / (low.slope - high.slope);
    return {position, position * low.slope + low.offset};
  }

  // The position of the eye at another depth, moved along the middle of the wedge.
  double PositionAtDepth(double depth) const {
    const Vector2 apex = Apex();
    return apex.x + (depth - apex.y) * MiddleSlope(low.angle, high.angle);
  }

 private:
  struct Side {
    double angle;
    double slope;
    double offset;

    Side(double angleValue, double slopeValue)
        : angle(angleValue),
          slope(slopeValue),
          offset(angleValue < 0.0 ? -Math::MAX_VALUE : Math::MAX_VALUE) {}

    // A side beyond the axis bounds the corners from the other direction.
    void Include(double position, double depth) {
      const double candidate = depth - position * slope;
      offset = angle < 0.0 ? Math::Max(offset, candidate) : Math::Min(offset, candidate);
    }
  };

  Side low;
  Side high;
};

// A camera that was never given an orthographic size takes its aspect from the frustum.
double OrthographicAspect(const CameraParameters& camera) {
  if (camera.ortho_width > 0.0 && camera.ortho_height > 0.0) return camera.ortho_width / camera.ortho_height;
  const FrustumTangents tangents(camera);
  return (tangents.left + tangents.right) / (tangents.top + tangents.bottom);
}

void FitOrthographicSize(double width, double height, CameraParameters& camera) {
  if (width <= 0.0 && height <= 0.0) return;
  const double aspect = OrthographicAspect(camera);
  const bool wide = width / height > aspect;
  camera.ortho_width = wide ? width : aspect * height;
  camera.ortho_height = wide ? width / aspect : height;
}

// The smaller side shows the whole sphere.
void FitOrthographicSizeToSphere(double radius, CameraParameters& camera) {
  const double aspect = OrthographicAspect(camera);
  const double diameter = 2.0 * radius;
  camera.ortho_width = aspect > 1.0 ? diameter * aspect : diameter;
  camera.ortho_height = aspect > 1.0 ? diameter : diameter / aspect;
}

bool Store(const CameraParameters& result, CameraParameters& camera) {
  if (!result.IsFinite()) return false;
  camera = result;
  return true;
}

// A wedge of half angles, in radians, whose planes a sphere touches: the eye that it alone would ask for, as
// (position, depth) relative to the middle of the sphere.
Vector2 TouchSphere(double lowAngle, double highAngle, double radius) {
  const double distance = std::abs(radius / std::sin((lowAngle + highAngle) / 2.0));
  const double skew = std::atan(MiddleSlope(lowAngle, highAngle));
  return {-std::sin(skew) * distance, -std::cos(skew) * distance};
}

}  // namespace

// ---- fitting ----

bool CameraOperations::ShowsOrthographic(const CameraParameters& view, const Vector3& direction) const {
  if (view.perspective_with_ortho) return IsInOrthoRange(direction, orthoTolerance);
  return view.projection_type != CameraParameters::ProjectionType::Perspective;
}

// The four planes of the frustum are pushed against the box from inside. The two wedges that they form ask
// for an eye each; the one further back wins, and the other slides back along its middle.
bool CameraOperations::FitBox(const Vector3& centre, Box3 box, Vector3 direction, const Vector3& up,
                              CameraParameters& view) const {
  box.SetCenter(centre);
  direction.Normalize();
  CameraParameters result = view;
  result.up = GetUpDirection(up, direction);
  const FitFrame frame{view.eye, direction.Cross(result.up).Normalized(), result.up, direction};

  Range across;
  Range upward;
  const FrustumTangents tangents(view);
  FrustumWedge horizontal(view.left_fov * Math::DEG_TO_RAD, tangents.left, view.right_fov * Math::DEG_TO_RAD,
                          tangents.right);
  FrustumWedge vertical(view.bottom_fov * Math::DEG_TO_RAD, tangents.bottom, view.top_fov * Math::DEG_TO_RAD,
                        tangents.top);
  for (int i = 0; i < CORNER_COUNT; ++i) {
    const Vector3 corner = frame.ToLocal(box.GetCorner(i));
    across.Include(corner.x);
    upward.Include(corner.y);
    horizontal.Include(corner.x, corner.z);
    vertical.Include(corner.y, corner.z);
  }
  FitOrthographicSize(across.Size(), upward.Size(), result);

  const bool orthographic = ShowsOrthographic(view, direction);
  double depth = Math::Min(horizontal.Apex().y, vertical.Apex().y);
  if (orthographic && !std::isfinite(depth)) depth = 0.0;  // no half angles: the eye keeps its depth
  const Vector3 offset =
      orthographic ? Vector3(across.Middle(), upward.Middle(), depth)
                   : Vector3(horizontal.PositionAtDepth(depth), vertical.PositionAtDepth(depth), depth);
  result.eye = frame.ToWorld(offset);
  result.centre = result.eye + direction * (centre - result.eye).Dot(direction);
  result.pivot = centre;
  return Store(result, view);
}

bool CameraOperations::FitSphere(const Vector3& centre, double radius, Vector3 direction, const Vector3& up,
                                 CameraParameters& view) const {
  if (!(radius > 0.0)) return false;
  const Vector3 frameUp = GetUpDirection(up, direction);  // by the direction as given, of any length
  direction.Normalize();
  const FitFrame frame{view.eye, direction.Cross(up).Normalized(), frameUp, direction};
  const Vector3 middle = frame.ToLocal(centre);

  const double left = view.left_fov * Math::DEG_TO_RAD;
  const double right = view.right_fov * Math::DEG_TO_RAD;
  const double bottom = view.bottom_fov * Math::DEG_TO_RAD;
  const double top = view.top_fov * Math::DEG_TO_RAD;
  const Vector2 horizontal = TouchSphere(left, right, radius);
  const Vector2 vertical = TouchSphere(bottom, top, radius);
  // The eye further back rules; the other slides back along its middle.
  const double depth = Math::Min(horizontal.y, vertical.y);
  const Vector3 offset(horizontal.x + (depth - horizontal.y) * MiddleSlope(left, right),
                       vertical.x + (depth - vertical.y) * MiddleSlope(bottom, top), depth);

  CameraParameters result = view;
  FitOrthographicSizeToSphere(radius, result);
  if (ShowsOrthographic(view, direction)) {
    const Vector2& narrower = left + right > top + bottom ? vertical : horizontal;
    const double distance = narrower.Length();
    const double present = ViewingDistance(view);  // for a view without half angles
    result.eye = centre - direction * (std::isfinite(distance) ? distance : present);
    result.centre = centre;
  } else {
    result.eye = frame.ToWorld(middle + offset);
    result.centre = result.eye + direction * (centre - result.eye).Length();
  }
  result.pivot = result.centre;
  return Store(result, view);
}

bool CameraOperations::SetFitMargins(const FitMargins& margins) {
  if (margins.IsUsable()) fitMargins = margins;
  return margins.IsUsable();
}

// Without margins nothing is computed twice, and so nothing rounded twice.
template <class Fit>
bool CameraOperations::FitBesideMargins(const Vector3& centre, const Vector3& direction,
                                        CameraParameters& view, Fit fit) const {
  if (fitMargins.IsNone()) return fit(view);
  const FreeView freeView(view, fitMargins);
  CameraParameters fitted = freeView.GetCamera();
  if (!fit(fitted)) return false;
  fitted = freeView.Widen(fitted, centre);
  const Vector3 along = direction.Normalized();
  if (ShowsOrthographic(view, along)) freeView.StepAside(along, fitted);
  return Store(fitted, view);
}

bool CameraOperations::FitBoundingBoxToView(const Vector3& centre, Box3 box, Vector3 direction,
                                            const Vector3& up, CameraParameters& view) const {
  return FitBesideMargins(centre, direction, view,
                          [&](CameraParameters& free) { return FitBox(centre, box, direction, up, free); });
}

bool CameraOperations::FitBoundingSphereToView(const Vector3& centre, double radius, Vector3 direction,
                                               const Vector3& up, CameraParameters& view) const {
  return FitBesideMargins(centre, direction, view, [&](CameraParameters& free) {
    return FitSphere(centre, radius, direction, up, free);
  });
}

bool CameraOperations::TransitionTo(const CameraParameters& target, double duration) {
  TransitionShotParameters transition;
  transition.targetCamera = target;
  transition.easeEnd = 1.0;
  transition.duration = duration;
  return BeginShot(transition);
}

// What cannot be fitted leaves the target where the camera is: the move is made, and stays there.
bool CameraOperations::TransitionCameraToFitBoundingBox(const Vector3& centre, Box3 box) {
  const CallingOut out(callsOut);
  CameraParameters target;
  QueryCameraParameters(target);
  (void)FitBoundingBoxToView(centre, box, ViewDirection(target), target.up.Normalized(), target);
  return TransitionTo(target, FIT_DURATION);
}

bool CameraOperations::TransitionCameraToFitBoundingSphere(const Vector3& centre, double radius) {
  const CallingOut out(callsOut);
  CameraParameters target;
  QueryCameraParameters(target);
  (void)FitBoundingSphereToView(centre, radius, ViewDirection(target), target.up.Normalized(), target);
  return TransitionTo(target, FIT_DURATION);
}

bool CameraOperations::FitsBox() const {
  return applicationParameters.global_bound_geometry == ApplicationParameters::BoundGeometryType::Box;
}

bool CameraOperations::FitAllToView() {
  const CallingOut out(callsOut);
  RecalculateGlobalBounds();
  const ApplicationParameters& p = applicationParameters;
  return FitsBox() ? TransitionCameraToFitBoundingBox(p.global_bound_centre, p.global_bound_box)
                   : TransitionCameraToFitBoundingSphere(p.global_bound_centre, p.global_bound_radius);
}

bool CameraOperations::FitSelectionToView() {
  const CallingOut out(callsOut);
  RecalculateSceneBounds();
  const ApplicationParameters& p = applicationParameters;
  return FitsBox() ? TransitionCameraToFitBoundingBox(p.scene_bound_centre, p.scene_bound_box)
                   : TransitionCameraToFitBoundingSphere(p.scene_bound_centre, p.scene_bound_radius);
}

// ---- what is in view ----

bool CameraOperations::IsSceneOutsideView(const CameraParameters& view) {
  const CallingOut out(callsOut);
  RecalculateGlobalBounds();
  const ApplicationParameters& p = applicationParameters;
  const CameraFrame frame(view);
  const bool orthographic = view.IsOrthographic();
  double halfWidth = view.ortho_width / 2.0;
  double halfHeight = view.ortho_height / 2.0;
  if (!orthographic) {
    const FrustumTangents tangents(view);
    halfWidth = NEAR_DISTANCE * Math::Max(tangents.left, tangents.right);
    halfHeight = NEAR_DISTANCE * Math::Max(tangents.top, tangents.bottom);
    AdjustForAspectRatio(view, p.viewport_width, p.viewport_height, halfWidth, halfHeight);
  }

  const auto isBehind = [&p](const Vector3& inward, const Vector3& point) {
    Plane3D plane;
    plane.SetNormalAndPoint(inward, point);
    const double distance = plane.Distance(p.global_bound_centre);
    return distance < 0.0 && -distance > p.global_bound_radius;
  };
  // The plane of one edge of the near rectangle: through the eye, or parallel to the view.
  const auto isBeyondEdge = [&](const Vector3& outward, double halfExtent) {
    if (orthographic) return isBehind(-outward, view.eye + outward * halfExtent);
    return isBehind(frame.forward * halfExtent - outward * NEAR_DISTANCE, view.eye);
  };
  return isBehind(frame.forward, view.eye) || isBeyondEdge(-frame.right, halfWidth) ||
         isBeyondEdge(frame.right, halfWidth) || isBeyondEdge(frame.up, halfHeight) ||
         isBeyondEdge(-frame.up, halfHeight);
}

namespace {

// Half the size of the view at a depth; in orthographic the full size, which lets the pivot stray further.
Vector2 PivotLimits(const CameraParameters& view, double depth) {
  if (view.IsOrthographic()) return {view.ortho_width, view.ortho_height};
  const FrustumTangents tangents(view);
  return {Math::Max(tangents.left * depth, tangents.right * depth),
          Math::Max(tangents.top * depth, tangents.bottom * depth)};
}

}  // namespace

bool CameraOperations::ConstrainPivotToViewport() {
  const CallingOut out(callsOut);
  CameraParameters view;
  QueryCameraParameters(view);
  if (!view.IsFinite()) return false;
  ApplicationParameters& p = applicationParameters;
  const Vector3 forward = view.centre - view.eye;
  const Vector3 horizontal = view.up.Cross(forward);
  const Vector3 vertical = forward.Cross(horizontal);
  const Vector3 axis = forward.Normalized();
  const Vector3 toPivot = view.pivot - view.eye;
  const double depth = toPivot.Dot(axis);

  Vector2 limits = PivotLimits(view, depth);
  AdjustForAspectRatio(view, p.viewport_width, p.viewport_height, limits.x, limits.y);
  const bool inView = !(std::abs(toPivot.Dot(horizontal.Normalized())) > limits.x) &&
                      !(std::abs(toPivot.Dot(vertical.Normalized())) > limits.y) && depth > 0.0;
  if (inView) return false;

  view.pivot = view.eye + axis * std::abs(depth);
  RecalculateSceneBounds();
  const Vector3 fromEye = p.scene_bound_centre - view.eye;
  const Vector3 fromPivot = p.scene_bound_centre - view.pivot;
  const bool sceneIsBetween = fromEye.Dot(forward) * fromPivot.Dot(forward) < 0.0;
  view.centre = sceneIsBetween ? view.eye + axis * fromEye.Length() : view.pivot + axis * fromPivot.Length();
  if (!ApplyIfFinite(view)) return false;
  QueryCameraParameters(currentCamera);
  return true;
}

bool CameraOperations::AlignToSceneUpDirection(double duration) {
  const CallingOut out(callsOut);
  CameraParameters target;
  QueryCameraParameters(target);
  if (!AlignCameraToUpDirection(target, applicationParameters.scene_up_direction)) return false;
  return TransitionTo(target, duration);
}

bool CameraOperations::AutoSwitchToPerspectiveProjection() {
  const CallingOut out(callsOut);
  CameraParameters view;
  QueryCameraParameters(view);
  const bool perspective = view.projection_type == CameraParameters::ProjectionType::Perspective;
  if (perspective && !view.perspective_with_ortho) return true;
  if (!applicationParameters.auto_switch_projection) return false;
  if (!view.IsOrthographic() && !view.perspective_with_ortho) return false;

  if (applicationParameters.use_projection_transitions) {
    view.projection_transition = 1.0 - Math::EPSILON_VALUE;  // the frame blends on from here
  }
  view.projection_type = CameraParameters::ProjectionType::Perspective;
  view.perspective_with_ortho = false;
  return ApplyIfFinite(view);
}

}  // namespace Korvane
