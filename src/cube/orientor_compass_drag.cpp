// Dragging the compass: both axes of the mouse turn the view about the world's up, in a sense that goes by
// where the part stands from the camera.
#include <cmath>

#include "camera/camera_frame.h"
#include "cube/cube_model.h"
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"

namespace Korvane {

namespace {

constexpr double FULL_TURN = 360.0;  // degrees

bool IsNearlyOne(double cosine) { return 1.0 - std::abs(cosine) < Math::EPSILON_VALUE; }

// Degrees, 0 to 360; below 180 where `sine` is not negative. Only the sign of `sine` counts.
double GetAngle(double cosine, double sine) {
  const double angle = std::acos(Math::Clamp(cosine, -1.0, 1.0)) * Math::RAD_TO_DEG;
  return sine < 0.0 ? FULL_TURN - angle : angle;
}

// Raised by full turns until it is not negative.
double WrapNegative(double angle) {
  const double wrapped = angle < 0.0 ? std::fmod(angle, FULL_TURN) : angle;
  return wrapped < 0.0 ? wrapped + FULL_TURN : wrapped;
}

// Of unit length, perpendicular to each other.
struct WorldAxes {
  Vector3 front;
  Vector3 up;
  Vector3 side;

  explicit WorldAxes(const ApplicationParameters& scene)
      : front(scene.world_front_direction.Normalized()),
        up(scene.world_up_direction.Normalized()),
        side(front.Cross(up).Normalize()) {}

  // A direction on the ground: along the side in x, against the front in z.
  Vector3 LayFlat(const Vector3& direction) const {
    const Vector3 v = ChangeBasis(side, up, direction);
    return Vector3(v.x, 0.0, v.z).Normalize();
  }
};

struct View {
  Vector3 direction;
  Vector3 up;
  Vector3 right;

  explicit View(const CameraParameters& camera)
      : direction(ViewDirection(camera)),
        up(camera.up.Normalized()),
        right(direction.Cross(up).Normalize()) {}
};

// Which way the camera is turned, degrees. A camera that looks along the up axis is told by its up, one that
// lies on its side has no right on the ground. The readings of the cases lie a quarter turn apart; hosts know
// the compass so.
double GetHeading(const View& view, const WorldAxes& world) {
  if (IsNearlyOne(view.direction.Dot(world.up))) {
    return GetAngle(view.up.Dot(world.front), view.up.Dot(world.side));
  }
  if (IsNearlyOne(view.right.Dot(world.up))) {
    const Vector3 up = world.LayFlat(view.up);
    return GetAngle(up.x, up.z);
  }
  const Vector3 right = world.LayFlat(view.right);
  return GetAngle(-right.z, right.x);
}

}  // namespace

void Orientor::CalculateDirectionOfRotation() {
  if (cameraOperations == nullptr || !IsMouseOnCompassPart()) return;
  const WorldAxes world(cameraOperations->GetApplicationParameters());
  const View view(cameraOperations->GetCameraParameters());

  const Vector3 part = partDirections[activePart].Normalized();
  double angle = GetAngle(-part.z, part.x) + parameters.compass_angle;
  if (angle > FULL_TURN) angle -= FULL_TURN;
  const double ahead = WrapNegative(angle - GetHeading(view, world));

  reverseDragX = ahead < 90.0 || ahead > 270.0;
  reverseDragY = ahead > 0.0 && ahead < 180.0;
  const double climb = view.direction.Dot(world.up);
  if (!IsNearlyOne(climb) && view.up.Dot(world.up) < 0.0) {  // on its head
    reverseDragX = !reverseDragX;
    reverseDragY = !reverseDragY;
  }
  if (climb > 0.0) reverseDragY = !reverseDragY;
}

void Orientor::UpdateCompassDrag(int x, int y) {
  CameraOperations& hub = *cameraOperations;
  const double dx = static_cast<double>(x) - lastX;  // the difference of two ints may not fit an int
  const double dy = static_cast<double>(y) - lastY;
  accumulatedDragX = Truncate(accumulatedDragX + (reverseDragX ? -dx : dx));
  accumulatedDragY = Truncate(accumulatedDragY + (reverseDragY ? dy : -dy));

  ApplicationParameters& scene = hub.GetApplicationParameters();
  scene.do_custom_orbit = true;
  scene.custom_orbit_up = hub.GetWorldUpDirection();
  scene.custom_orbit_front = hub.GetWorldFrontDirection();
  const int way = Truncate((static_cast<double>(accumulatedDragX) + accumulatedDragY) / 2.0);
  hub.UpdateOperationParams(Truncate(static_cast<double>(way) + pressX), CountFromTop(pressY),
                            OPERATION_ORBIT);
  lastX = x;
  lastY = y;
}

}  // namespace Korvane
