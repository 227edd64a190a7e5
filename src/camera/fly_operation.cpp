#include "camera/fly_operation.h"

#include <cmath>
#include <cstdint>

#include "camera/camera_frame.h"
#include "camera/scene_bounds.h"
#include "korvane/camera_operations.h"

namespace Korvane {

namespace {

// A view steeper than this, 0.65 radians off the vertical, shows the way behind the walker.
const double STEEP = std::cos(0.65);
constexpr int RUN_CURSOR_OFFSET = CURSOR_RUN_FORWARD - CURSOR_WALK_FORWARD;

// Eases in across the ramp, then grows linearly; 1 at the end of the ramp on both sides.
double SpeedCurve(double b) {
  if (!(b > 0.0)) return 0.0;
  return b < 1.0 ? Math::EaseClamp(b, 0.0, 1.0) : b;
}

// How far beyond the dead zone, in ramps.
double BeyondDeadZone(double offset, double deadZone, double ramp) {
  const double beyond = std::abs(offset) - deadZone;
  return beyond > 0.0 ? beyond / ramp : 0.0;
}

// The remainder that the window system's wrapped pointer shows: 1 to the size.
std::int64_t WrapIntoViewport(int coordinate, int size) {
  if (size <= 0) return coordinate;
  const int remainder = coordinate % size;
  return remainder < 1 ? std::int64_t{remainder} + size : remainder;
}

int ReduceToViewport(int& coordinate, int initial, int size) {
  if (size <= 0) return 0;
  const std::int64_t offset = std::int64_t{coordinate} - initial;
  coordinate = static_cast<int>(offset % size + initial);
  return static_cast<int>(offset / size);
}

}  // namespace

bool FlyOperation::m_moveAccelerated = false;

void FlyOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  bias = Cursor();
  inDeadZone = true;
  if (hub == nullptr) return;
  RecalculateSceneBoundsOf(*hub);
  initialCamera = hub->GetCameraParameters();
}

// ---- the cursor ----

bool FlyOperation::IsMovingForward() const {
  return hub != nullptr && currentCursor.y - bias.y < initialCursor.y - GetParameters().fly_dead_zone_radius;
}
bool FlyOperation::IsMovingBack() const {
  return hub != nullptr && currentCursor.y - bias.y > initialCursor.y + GetParameters().fly_dead_zone_radius;
}
bool FlyOperation::IsMovingLeft() const {
  return hub != nullptr && currentCursor.x - bias.x < initialCursor.x - GetParameters().fly_dead_zone_radius;
}
bool FlyOperation::IsMovingRight() const {
  return hub != nullptr && currentCursor.x - bias.x > initialCursor.x + GetParameters().fly_dead_zone_radius;
}

bool FlyOperation::IsMoveAccelerated() const { return m_moveAccelerated; }
void FlyOperation::SetMoveAccelerated(bool accelerated) { m_moveAccelerated = accelerated; }

CursorID FlyOperation::GetWalkCursorID() const {
  // Rows: back, level, forward; columns: left, straight, right.
  static constexpr CursorID CURSORS[3][3] = {
      {CURSOR_WALK_BACK_LEFT, CURSOR_WALK_BACK, CURSOR_WALK_BACK_RIGHT},
      {CURSOR_WALK_LEFT, CURSOR_WALK, CURSOR_WALK_RIGHT},
      {CURSOR_WALK_FORWARD_LEFT, CURSOR_WALK_FORWARD, CURSOR_WALK_FORWARD_RIGHT},
  };
  if (IsInDeadZone()) return CURSOR_WALK;
  const int row = IsMovingForward() ? 2 : IsMovingBack() ? 0 : 1;
  const int column = IsMovingLeft() ? 0 : IsMovingRight() ? 2 : 1;
  const CursorID cursor = CURSORS[row][column];
  const bool runs = IsMoveAccelerated() && cursor != CURSOR_WALK;
  return runs ? static_cast<CursorID>(cursor + RUN_CURSOR_OFFSET) : cursor;
}

bool FlyOperation::IsInDeadZone() const {
  if (hub == nullptr) return true;
  const ApplicationParameters& parameters = GetParameters();
  const std::int64_t radius = parameters.fly_dead_zone_radius;
  const std::int64_t x = WrapIntoViewport(currentCursor.x, parameters.viewport_width);
  const std::int64_t y = WrapIntoViewport(currentCursor.y, parameters.viewport_height);
  return std::abs(x - initialCursor.x) < radius && std::abs(y - initialCursor.y) < radius;
}

FlyOperation::Wraps FlyOperation::GetXYAndWrapCounts(Cursor& cursor) const {
  const ApplicationParameters& parameters = GetParameters();
  return {ReduceToViewport(cursor.x, initialCursor.x, parameters.viewport_width),
          ReduceToViewport(cursor.y, initialCursor.y, parameters.viewport_height)};
}

// The host wraps the pointer at the edge of the viewport and the cursor runs on past it. Wrapping must not
// change the speed, so wraps are forgotten only when the cursor comes back into the dead zone.
void FlyOperation::SetBias(bool inZone) {
  const bool entered = !inDeadZone && inZone;
  inDeadZone = inZone;
  if (!entered) return;
  const ApplicationParameters& parameters = GetParameters();
  const int margin = 2 * parameters.fly_dead_zone_radius;
  Cursor reduced = currentCursor;
  GetXYAndWrapCounts(reduced);
  Cursor outside = {currentCursor.x + (reduced.x < initialCursor.x ? -margin : margin),
                    currentCursor.y + (reduced.y < initialCursor.y ? -margin : margin)};
  const Wraps wraps = GetXYAndWrapCounts(outside);
  bias = {parameters.viewport_width * wraps.x, parameters.viewport_height * wraps.y};
}

// ---- the motion ----

FlyOperation::Steering FlyOperation::GetSteering(double dt) const {
  const ApplicationParameters& parameters = GetParameters();
  double wx = 0.0;
  double wy = 0.0;
  double deadX = 0.0;
  double deadY = 0.0;
  const Cursor origin = {initialCursor.x + bias.x, initialCursor.y + bias.y};
  GetCursorMotion(origin, currentCursor, wx, wy);
  ConvertCoordsToWindow(parameters.fly_dead_zone_radius, parameters.fly_dead_zone_radius, deadX, deadY);
  const double ramp = parameters.fly_ramp_up_radius;
  const double turn = SpeedCurve(BeyondDeadZone(wx, deadX, ramp)) * dt;
  const double go = SpeedCurve(BeyondDeadZone(wy, deadY, ramp)) * dt;
  return {wx > 0.0 ? turn : -turn, wy > 0.0 ? -go : go};
}

// The view laid flat; a view straight up or down goes where the top of the picture points.
Vector3 FlyOperation::GetWayForward(const Vector3& forward, const Vector3& up) const {
  if (!GetParameters().fly_planar_motion) return forward;
  const Vector3 front = hub->GetWorldFrontDirection();
  const Vector3 side = front.Cross(hub->GetWorldUpDirection());
  const Vector3 flat = (side * side.Dot(forward) + front * front.Dot(forward)).Normalize();
  const Vector3 way = flat == Vector3::Zero ? up : flat;
  return WalksBackwards(forward, up) ? -way : way;
}

bool FlyOperation::WalksBackwards(const Vector3& forward, const Vector3& up) const {
  const Vector3 worldUp = hub->GetWorldUpDirection();
  const double upright = worldUp.Dot(up);
  const double climb = worldUp.Dot(forward);
  if (upright < -Math::EPSILON_VALUE && climb < -STEEP) return true;
  return upright > Math::EPSILON_VALUE && climb > STEEP;
}

double FlyOperation::GetTurnAngle(double turn, const Vector3& forward, const Vector3& up) const {
  const double angle = turn * GetParameters().fly_turn_multiplier;
  if (!GetParameters().fly_planar_motion) return angle;
  const Vector3 worldUp = hub->GetWorldUpDirection();
  const double upright = worldUp.Dot(up);
  if (upright < -Math::EPSILON_VALUE) return -angle;
  const bool level = std::abs(upright) < Math::EPSILON_VALUE;
  return level && worldUp.Dot(forward) > Math::EPSILON_VALUE ? -angle : angle;
}

void FlyOperation::PerformOperation(double dt, CameraParameters& camera) {
  if (hub == nullptr) return;
  const ApplicationParameters& parameters = GetParameters();
  SetBias(IsInDeadZone());
  const Steering steering = GetSteering(dt);

  Vector3 forward = ViewDirection(camera);
  const double distance = (camera.centre - camera.eye).Length();
  const double move = parameters.GetFlyMoveMultiplier() * parameters.scene_scale * steering.go;
  const Vector3 way = GetWayForward(forward, camera.up);
  const double angle = GetTurnAngle(steering.turn, forward, camera.up);
  const Vector3 axis = parameters.fly_planar_motion ? hub->GetWorldUpDirection() : camera.up;

  Quaternion turn = Quaternion::AxisAngle(axis, angle);
  turn.Normalize();
  forward = turn.Rotate(forward).Normalized();
  camera.up = turn.Rotate(camera.up).Normalized();
  camera.eye += way * move;
  camera.centre = camera.eye + forward * distance;
  Climb(move, camera);
}

// The keys lift at the speed of the walk, and a standing walker by a fixed step each frame.
void FlyOperation::Climb(double move, CameraParameters& camera) const {
  const ApplicationParameters& parameters = GetParameters();
  const Vector3 up = parameters.fly_planar_motion ? hub->GetWorldUpDirection() : camera.up;
  if (move == 0.0) move = parameters.fly_up_down_sensitivity;
  const int sign = (upKey ? 1 : 0) - (downKey ? 1 : 0);
  const Vector3 lift = up.Normalized() * (std::abs(move) * sign);
  camera.eye += lift;
  camera.centre += lift;
}

}  // namespace Korvane
