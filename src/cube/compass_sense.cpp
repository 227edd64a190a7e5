#include "cube/compass_sense.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "cube/cube_picker.h"
#include "cube/cube_quads.h"
#include "cube/cube_space.h"
#include "cube/pass_view.h"
#include "korvane/application_parameters.h"
#include "korvane/orientor_parameters.h"

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

CompassSense FindCompassSense(const CameraParameters& camera, const ApplicationParameters& scene,
                              const Vector3& part, double compassAngle) {
  const WorldAxes world(scene);
  const View view(camera);

  const Vector3 direction = part.Normalized();
  double angle = GetAngle(-direction.z, direction.x) + compassAngle;
  if (angle > FULL_TURN) angle -= FULL_TURN;
  const double ahead = WrapNegative(angle - GetHeading(view, world));

  CompassSense sense{ahead < 90.0 || ahead > 270.0, ahead > 0.0 && ahead < 180.0};
  const double climb = view.direction.Dot(world.up);
  if (!IsNearlyOne(climb) && view.up.Dot(world.up) < 0.0) {  // on its head
    sense.reverseX = !sense.reverseX;
    sense.reverseY = !sense.reverseY;
  }
  if (climb > 0.0) sense.reverseY = !sense.reverseY;
  return sense;
}

// An orbit turns the scene about the world's up, and the other way round for a camera on its head or, when it
// lies, one that looks up.
Vector2 FindCompassTangent(const OrientorParameters& parameters, const CubeSpace& space,
                           const CameraParameters& camera, const Vector3& worldUp, int part) {
  const CubeQuads quads(parameters, space, QuadUse::Drawn, false);
  const Vector3 place = quads.GetCompassPlace(part);
  const double upright = worldUp.Dot(camera.up);
  const bool lies = std::abs(upright) < Math::EPSILON_VALUE;
  const bool reverses = lies ? worldUp.Dot(ViewDirection(camera)) > 0.0 : upright < 0.0;
  const Vector3 up = space.FromScene(worldUp).Normalize();
  const Vector3 axis = reverses ? -up : up;
  const PassView pass(MakeCubeCamera(parameters, space));
  Vector2 local;
  if (!pass.Project(place, local)) return {};
  const Vector2 tangent = pass.ProjectVelocity(place, axis.Cross(place));
  const double length = std::hypot(tangent.x, tangent.y);
  return length > Math::EPSILON_VALUE ? tangent / length : Vector2();
}

}  // namespace Korvane
