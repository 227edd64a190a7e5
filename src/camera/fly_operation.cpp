#include "camera/fly_operation.h"

#include <cmath>
#include <cstdint>

#include "camera/camera_frame.h"
#include "camera/scene_bounds.h"
#include "foundation/one_thread.h"
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
std::int64_t WrapIntoViewport(std::int64_t coordinate, int size) {
  if (size <= 0) return coordinate;
  const std::int64_t remainder = coordinate % size;
  return remainder < 1 ? remainder + size : remainder;
}

// The offset from the start of the walk without whole viewports, and how many those were.
std::int64_t Remainder(std::int64_t offset, int size) { return size > 0 ? offset % size : offset; }
std::int64_t WrapCount(std::int64_t offset, int size) { return size > 0 ? offset / size : 0; }

// What a wrapped cursor has to be brought back by: whole viewports, counted a little outside the dead zone,
// on the side where the cursor stands.
std::int64_t WrappedBy(std::int64_t offset, int size, std::int64_t margin) {
  const std::int64_t outside = offset + (Remainder(offset, size) < 0 ? -margin : margin);
  return WrapCount(outside, size) * size;
}

}  // namespace

bool FlyOperation::m_moveAccelerated = false;

void FlyOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  bias = Offset();
  inDeadZone = true;
  if (hub == nullptr) return;
  RecalculateSceneBoundsOf(*hub);
  initialCamera = hub->GetCameraParameters();
}

// ---- the cursor ----

FlyOperation::Offset FlyOperation::GetOffset() const {
  return {std::int64_t{currentCursor.x} - bias.x - initialCursor.x,
          std::int64_t{currentCursor.y} - bias.y - initialCursor.y};
}

std::int64_t FlyOperation::GetDeadRadius() const {
  return hub != nullptr ? GetParameters().fly_dead_zone_radius : 0;
}

bool FlyOperation::IsMovingForward() const { return GetOffset().y < -GetDeadRadius(); }
bool FlyOperation::IsMovingBack() const { return GetOffset().y > GetDeadRadius(); }
bool FlyOperation::IsMovingLeft() const { return GetOffset().x < -GetDeadRadius(); }
bool FlyOperation::IsMovingRight() const { return GetOffset().x > GetDeadRadius(); }

bool FlyOperation::IsMoveAccelerated() const { return m_moveAccelerated; }
void FlyOperation::SetMoveAccelerated(bool accelerated) {
  AssertOneThread();
  m_moveAccelerated = accelerated;
}

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
  const std::int64_t x = WrapIntoViewport(currentCursor.x, parameters.viewport_width);
  const std::int64_t y = WrapIntoViewport(currentCursor.y, parameters.viewport_height);
  return std::abs(x - initialCursor.x) < GetDeadRadius() && std::abs(y - initialCursor.y) < GetDeadRadius();
}

// The host wraps the pointer at the edge of the viewport and the cursor runs on past it. Wrapping must not
// change the speed, so wraps are forgotten only when the cursor comes back into the dead zone.
void FlyOperation::SetBias(bool inZone) {
  const bool entered = !inDeadZone && inZone;
  inDeadZone = inZone;
  if (!entered) return;
  const ApplicationParameters& parameters = GetParameters();
  const std::int64_t margin = 2 * GetDeadRadius();
  bias = {WrappedBy(std::int64_t{currentCursor.x} - initialCursor.x, parameters.viewport_width, margin),
          WrappedBy(std::int64_t{currentCursor.y} - initialCursor.y, parameters.viewport_height, margin)};
}

// ---- the motion ----

FlyOperation::Steering FlyOperation::GetSteering(double dt) const {
  const ApplicationParameters& parameters = GetParameters();
  double wx = 0.0;
  double wy = 0.0;
  double deadX = 0.0;
  double deadY = 0.0;
  const Offset offset = GetOffset();
  ConvertCoordsToWindow(static_cast<double>(offset.x), static_cast<double>(offset.y), wx, wy);
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
  const double distance = ViewingDistance(camera);
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
