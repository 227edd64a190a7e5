#include "zovhost/touch_camera.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "korvane/application_parameters.h"
#include "korvane/camera_operations.h"
#include "korvane/math.h"
#include "korvane/pivot_ball.h"
#include "korvane/renderer.h"
#include "korvane/rewind_history.h"

namespace zovhost {

using Korvane::ApplicationParameters;
using Korvane::CameraParameters;
using Korvane::Math;
using Korvane::Vector2;
using Korvane::Vector3;

namespace {

constexpr double LARGEST_VIEW = 4.0;    // half of what shows at most, in radii of the scene
constexpr double SMALLEST_VIEW = 1e-4;  // radii: how near the camera comes
constexpr double ZOOMED = 0.02;         // from which change of size on the next orbit is about the anchor

struct Frame {
  Vector3 forward;
  Vector3 right;
  Vector3 up;

  explicit Frame(const CameraParameters& camera)
      : forward((camera.centre - camera.eye).Normalized()), right(forward.Cross(camera.up).Normalized()) {
    up = right.Cross(forward);
  }
  bool IsProper() const { return right != Vector3::Zero; }
};

// Right-handed, about an axis of unit length.
Vector3 Turn(const Vector3& v, const Vector3& axis, double angle) {
  return v * std::cos(angle) + axis.Cross(v) * std::sin(angle) +
         axis * (axis.Dot(v) * (1.0 - std::cos(angle)));
}

// What a pixel stands beside the axis of the view, at a depth.
Vector2 GetOffset(const CameraParameters& camera, const ApplicationParameters& parameters,
                  const Vector2& pixel, double depth) {
  const double x = (pixel.x + 0.5) / std::max(1, parameters.viewport_width);
  const double y = (pixel.y + 0.5) / std::max(1, parameters.viewport_height);
  if (camera.IsOrthographic()) return {(x - 0.5) * camera.ortho_width, (y - 0.5) * camera.ortho_height};
  const auto tangent = [](double degrees) { return std::tan(degrees * Math::DEG_TO_RAD); };
  const double left = tangent(camera.left_fov);
  const double bottom = tangent(camera.bottom_fov);
  return Vector2(x * (left + tangent(camera.right_fov)) - left,
                 y * (bottom + tangent(camera.top_fov)) - bottom) *
         depth;
}

// By what the distance to the anchor is multiplied, and the size of a parallel view.
double LimitApproach(const CameraParameters& camera, const ApplicationParameters& parameters, double depth,
                     double scale) {
  const Vector2 corner = GetOffset(camera, parameters, {0.0, 0.0}, 1.0);
  const double halfAngle = std::min(std::abs(corner.x), std::abs(corner.y));
  const bool parallel = camera.IsOrthographic();
  const double size = parallel ? std::min(camera.ortho_width, camera.ortho_height) : depth;
  const double reach = parameters.scene_bound_radius * LARGEST_VIEW;
  const double largest = parallel ? 2.0 * reach : reach / std::max(halfAngle, Math::EPSILON_VALUE);
  const double smallest = parameters.scene_bound_radius * SMALLEST_VIEW;
  if (!(size > 0.0)) return 1.0;
  return std::clamp(1.0 / scale, std::min(1.0, smallest / size), std::max(1.0, largest / size));
}

double LeaveDeadZone(double turn) {
  return std::copysign(std::max(0.0, std::abs(turn) - TURN_DEAD_ZONE), turn);
}

// The picture turns with the fingers: the camera the other way.
void TurnCamera(CameraParameters& camera, double turn, const ApplicationParameters& parameters,
                const Vector3& worldUp) {
  const Frame frame(camera);
  const bool upright = parameters.preserve_orbit_up_direction && worldUp != Vector3::Zero;
  if (upright && parameters.constrain_orbit_horizontal) return;
  const bool fromBelow = upright && frame.forward.Dot(worldUp) > 0.0;
  const Vector3 axis = upright ? worldUp : -frame.forward;
  const double angle = fromBelow ? turn : -turn;
  camera.centre = camera.eye + Turn(camera.centre - camera.eye, axis, angle);
  camera.up = Turn(camera.up, axis, angle);
}

bool IsSamePlace(const CameraParameters& a, const CameraParameters& b) {
  return a.eye == b.eye && a.centre == b.centre && a.up == b.up && a.ortho_width == b.ortho_width &&
         a.ortho_height == b.ortho_height && a.projection_type == b.projection_type;
}

CameraParameters Query(const Korvane::CameraOperations& hub) {
  CameraParameters camera;
  hub.QueryCameraParameters(camera);
  return camera;
}

}  // namespace

CameraParameters MoveWithFingers(const CameraParameters& camera, const Vector3& anchor,
                                 const TouchMotion& motion, const ApplicationParameters& parameters,
                                 const Vector3& worldUp) {
  const Frame before(camera);
  const double depth = (anchor - camera.eye).Dot(before.forward);
  if (!before.IsProper() || !(depth > 0.0)) return camera;
  const double approach = LimitApproach(camera, parameters, depth, motion.scale);

  CameraParameters moved = camera;
  TurnCamera(moved, LeaveDeadZone(motion.turn), parameters, worldUp.Normalized());
  moved.ortho_width *= approach;
  moved.ortho_height *= approach;
  const Frame frame(moved);
  const Vector3 view = (moved.centre - moved.eye) * approach;
  const double nearer = depth * approach;
  const Vector2 offset = GetOffset(moved, parameters, motion.to, nearer);
  moved.eye = anchor - frame.forward * nearer - frame.right * offset.x - frame.up * offset.y;
  moved.centre = moved.eye + view;
  return frame.IsProper() && moved.IsFinite() ? moved : camera;
}

TouchCamera::TouchCamera(Korvane::CameraOperations& ofHub, Korvane::Renderer& onRenderer)
    : hub(ofHub), renderer(onRenderer) {
  for (Korvane::Tool* const tool :
       {static_cast<Korvane::Tool*>(&orbit), static_cast<Korvane::Tool*>(&look)}) {
    tool->SetKorvane(&hub);
    tool->SetRenderer(&renderer);
  }
}

TouchCamera::~TouchCamera() = default;

int TouchCamera::FlipRow(double y) const {
  return hub.GetApplicationParameters().viewport_height - 1 - static_cast<int>(std::floor(y));
}

// ---- the kinds ----

TouchCamera::Kind TouchCamera::ChooseKind(int count) {
  if (count < 2) return Kind::Orbit;
  if (count == 2 || !hub.AutoSwitchToPerspectiveProjection()) return Kind::Picture;
  return threeFingers == ThreeFingers::Walk ? Kind::Walk : Kind::Look;
}

// The camera shows the same.
void TouchCamera::Mark() {
  Korvane::PivotBall* const ball = orbit.GetPivotBall();
  if (ball == nullptr || hub.IsShotActive()) return;
  hub.ConstrainPivotToViewport();
  const CameraParameters camera = Query(hub);
  ball->SetPosition(camera.pivot);
  ball->UpdateSize(camera);
  ball->SetVisible(true);
  marked = true;
  hub.RequestApplicationUpdate();
}

void TouchCamera::Unmark() {
  Korvane::PivotBall* const ball = orbit.GetPivotBall();
  if (!std::exchange(marked, false) || ball == nullptr) return;
  ball->SetVisible(false);
  hub.RequestApplicationUpdate();
}

void TouchCamera::Begin(TouchGestures& fingers) {
  Pause();
  Unmark();
  if (fingers.GetFingerCount() == 0) return;
  fingers.Restart();
  if (!record.IsOpen()) record.Begin(history, Query(hub));
  const bool upright = hub.GetApplicationParameters().preserve_orbit_up_direction;
  orbit.SetPreserveSceneUp(upright);
  look.SetAlignUpDirection(upright);
  const Vector2 at = fingers.GetMotion().to;
  const int x = static_cast<int>(std::floor(at.x));
  const int y = static_cast<int>(std::floor(at.y));
  kind = ChooseKind(fingers.GetFingerCount());
  if (kind == Kind::Orbit) orbit.OnMouseDown(x, y);
  if (kind == Kind::Look) look.OnMouseDown(x, y);
  if (kind == Kind::Walk) hub.BeginOperation(Korvane::OPERATION_FLY, x, FlipRow(at.y));
  if (kind == Kind::Picture) BeginPicture(at);
}

void TouchCamera::Follow(TouchGestures& fingers) {
  const Vector2 at = fingers.GetMotion().to;
  const int x = static_cast<int>(std::floor(at.x));
  const int y = static_cast<int>(std::floor(at.y));
  if (kind == Kind::Orbit) orbit.OnMouseMove(x, y);
  if (kind == Kind::Look) look.OnMouseMove(x, y);
  if (kind == Kind::Walk) hub.UpdateOperationParams(x, FlipRow(at.y), Korvane::OPERATION_FLY);
  if (kind == Kind::Picture) FollowPicture(fingers);
}

// The motion since the last frame counts.
void TouchCamera::Pause() {
  if (kind == Kind::Orbit || kind == Kind::Look) hub.PerformOperations();
  if (kind == Kind::Orbit) orbit.EndGesture();
  if (kind == Kind::Look) look.EndGesture();
  if (kind == Kind::Walk) hub.EndOperation(Korvane::OPERATION_FLY);
  kind = Kind::None;
}

void TouchCamera::End() {
  Pause();
  if (record.IsOpen()) record.End(&hub);
}

// ---- the picture ----

// What the model shows there; else the depth of the pivot.
void TouchCamera::BeginPicture(const Vector2& at) {
  base = last = Query(hub);
  const ApplicationParameters& parameters = hub.GetApplicationParameters();
  const Frame frame(base);
  Vector3 origin;
  Vector3 direction;
  Vector3 point;
  const int x = static_cast<int>(std::floor(at.x));
  const int y = static_cast<int>(std::floor(at.y));
  onModel = Korvane::GetScreenRay(x, y, parameters.viewport_width, parameters.viewport_height, base, origin,
                                  direction) &&
            renderer.QueryMouseRaySceneIntersection(x, y, origin, direction, point);
  double depth = onModel ? (point - base.eye).Dot(frame.forward) : 0.0;
  onModel = depth > 0.0;
  if (!onModel) depth = (base.pivot - base.eye).Dot(frame.forward);
  if (!(depth > 0.0)) depth = (base.centre - base.eye).Length();
  const Vector2 offset = GetOffset(base, parameters, at, depth);
  anchor = base.eye + frame.forward * depth + frame.right * offset.x + frame.up * offset.y;
}

// From a camera that others have moved meanwhile it goes on as from a new one.
void TouchCamera::FollowPicture(TouchGestures& fingers) {
  const CameraParameters present = Query(hub);
  if (!IsSamePlace(present, last)) {
    fingers.Restart();
    return BeginPicture(fingers.GetMotion().to);
  }
  const TouchMotion motion = fingers.GetMotion();
  CameraParameters moved =
      MoveWithFingers(base, anchor, motion, hub.GetApplicationParameters(), hub.GetWorldUpDirection());
  moved.projection_transition = present.projection_transition;
  if (onModel && !keepsPivot) moved.pivot = std::abs(motion.scale - 1.0) > ZOOMED ? anchor : base.pivot;
  hub.ApplyCameraParameters(moved);
  hub.RequestApplicationUpdate();
  last = Query(hub);
}

}  // namespace zovhost
