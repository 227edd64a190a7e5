#include "controller/cam3d_controller_operation.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "camera/finite_camera.h"
#include "camera/look_operation.h"
#include "korvane/application_parameters.h"
#include "korvane/camera_operations.h"

namespace Korvane {

namespace {

enum Member : int { LOOK = 0, PAN = 1, DOLLY = 2 };

constexpr OperationType MEMBERS[] = {OPERATION_LOOK, OPERATION_PAN, OPERATION_DOLLY};

constexpr double WALKER_SPEED = 1.25;

// Times the square of the length of the view; one so short that nothing of the up would be left counts as of
// unit length.
void SquareUp(CameraParameters& camera) {
  const auto squareTo = [up = camera.up](const Vector3& view) { return view.Cross(up).Cross(view); };
  const Vector3 view = camera.centre - camera.eye;
  camera.up = squareTo(view);
  if (!HasUp(camera)) camera.up = squareTo(view.Normalized());
}

double NotZero(double component) { return component == 0.0 ? Math::EPSILON_VALUE : component; }

// From the centre of the box to its surface, on the way to a point at `distance`. Its axes are those of the
// world here.
double DistanceToSurface(const Vector3& extent, const Vector3& toPoint, double distance) {
  double nearest = Math::MAX_VALUE;
  for (int axis = 0; axis < 3; ++axis) {
    nearest = Math::Min(nearest, std::abs(extent[axis] / NotZero(toPoint[axis])));
  }
  return distance * nearest;
}

}  // namespace

OperationKind cam3DControllerKind(OPERATION_CAM3D_CONTROLLER, &Cam3DControllerOperation::Make);

std::unique_ptr<Operation> Cam3DControllerOperation::Make() {
  auto made = std::make_unique<Cam3DControllerOperation>();
  if (!made->HasMembers()) made.reset();  // no memory for one of them
  return made;
}

Cam3DControllerOperation::Cam3DControllerOperation() {
  for (const OperationType type : MEMBERS) AddOperation(CreateOperation(type));
  if (Operation* const look = GetOperation(LOOK)) look->SetCombined(true);
  CombinedOperation::Set3DControllerOperation(true);
}

Cam3DControllerOperation::~Cam3DControllerOperation() {
  if (owner != nullptr) owner->OnOperationGoes();
}

bool Cam3DControllerOperation::HasMembers() const {
  return GetOperation(LOOK) != nullptr && GetOperation(PAN) != nullptr && GetOperation(DOLLY) != nullptr;
}

void Cam3DControllerOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  CombinedOperation::InitOperation(x, y, operations);
  translationInput = previousTranslationInput = Vector3();
  rotationInput = previousRotationInput = Vector3();
  if (const auto* const look = dynamic_cast<const LookOperation*>(GetOperation(LOOK))) {
    workingCamera = startCamera = look->GetInitialCamera();
  }
}

void Cam3DControllerOperation::PerformOperation(double dt, CameraParameters& camera) {
  if (hub == nullptr || !HasMembers()) return;
  camera = workingCamera;
  SquareUp(camera);
  Move(dt, camera);
  KeepView(workingCamera, camera);
  workingCamera = camera;
}

void Cam3DControllerOperation::Move(double dt, CameraParameters& camera) {
  switch (GetParameters().cam3d_controller_mode) {
    case Cam3DControllerParameters::MODE_OBJECT:
    case Cam3DControllerParameters::MODE_PAN:
      return MoveModel(dt, camera);
    case Cam3DControllerParameters::MODE_WALK:
      return MoveWalker(dt, camera, true);
    case Cam3DControllerParameters::MODE_FLY:
      return MoveWalker(dt, camera, false);
    default:
      return;
  }
}

void Cam3DControllerOperation::MoveModel(double dt, CameraParameters& camera) {
  DoOrbit(dt, camera);
  GetOperation(PAN)->PerformOperation(dt, camera);
  if (camera.IsOrthographic()) {
    ScaleView(camera);
  } else {
    GetOperation(DOLLY)->PerformOperation(dt, camera);
  }
}

void Cam3DControllerOperation::MoveWalker(double dt, CameraParameters& camera, bool planar) {
  GetOperation(LOOK)->PerformOperation(dt, camera);
  DoTrackAndDolly(dt, camera, planar);
}

// As if the eye went nearer or away. A step beyond the centre turns the view inside out.
void Cam3DControllerOperation::ScaleView(CameraParameters& camera) const {
  const ApplicationParameters& scene = GetParameters();
  const double step =
      (translationInput.z - previousTranslationInput.z) * scene.scene_scale * scene.dolly_multiplier;
  const double distance = ViewingDistance(camera);
  const double scale = (distance + step) / distance;
  if (limitsOrthographicZoom && !(scale > 0.0)) return;
  camera.ortho_width *= scale;
  camera.ortho_height *= scale;
}

void Cam3DControllerOperation::DoOrbit(double /*dt*/, CameraParameters& camera) {
  const double distance = ViewingDistance(camera);
  CameraFrame frame(camera);
  Vector3 relative = camera.eye - camera.pivot;
  const Vector3 angles = rotationInput - previousRotationInput;
  const Vector3 axis = frame.right * angles.x + frame.up * angles.y + frame.forward * angles.z;
  const auto turn = [&](const Vector3& about, double angle) {
    const Quaternion q = Quaternion::AxisAngle(about, angle);
    frame.up = q.Rotate(frame.up);
    frame.forward = q.Rotate(frame.forward);
    relative = q.Rotate(relative);
    return q;
  };

  if (GetParameters().preserve_orbit_up_direction) {
    const Vector3 worldUp = hub->GetWorldUpDirection().Normalized();
    const Quaternion turntable = turn(worldUp, worldUp.Dot(axis));
    turn(turntable.Rotate(frame.right).Normalized(), angles.x);
  } else {
    turn(axis.Normalized(), axis.Length());
  }
  camera.eye = camera.pivot + relative;
  camera.centre = camera.eye + frame.forward * distance;
  camera.up = frame.up;
}

void Cam3DControllerOperation::DoTrackAndDolly(double /*dt*/, CameraParameters& camera, bool planar) {
  const double distance = ViewingDistance(camera);
  const CameraFrame frame(camera);
  const Vector3 change = translationInput - previousTranslationInput;
  const Vector3 move = change * (GetParameters().scene_scale * WALKER_SPEED) * GetPace(camera.eye);
  const Ways ways = planar ? GetWaysOnGround(frame.forward, frame.up) : Ways{frame.up, frame.forward};
  camera.eye += frame.right * move.x + ways.upward * move.y + ways.forward * move.z;
  camera.centre = camera.eye + frame.forward * distance;
}

// Far out, where the model is small, in step with the distance; 1 within the model.
double Cam3DControllerOperation::GetPace(const Vector3& eye) const {
  const ApplicationParameters& scene = GetParameters();
  const bool isBox = scene.global_bound_geometry == ApplicationParameters::BoundGeometryType::Box;
  const Vector3 middle = isBox ? scene.global_bound_box.GetCenter() : scene.global_bound_centre;
  const Vector3 toEye = eye - middle;
  const double from = toEye.Length();
  if (!(from > Math::EPSILON_VALUE)) return 1.0;
  const double bound =
      isBox ? DistanceToSurface(scene.global_bound_box.GetExtent(), toEye, from) : scene.global_bound_radius;
  return bound > Math::EPSILON_VALUE && from > bound ? from / bound : 1.0;
}

// The view laid flat; straight down or up there is none, and the camera's own up leads on. An upside-down
// camera still walks where it looks, until it is too far beyond the vertical: then its up is down.
Cam3DControllerOperation::Ways Cam3DControllerOperation::GetWaysOnGround(const Vector3& direction,
                                                                         const Vector3& trueUp) const {
  const Vector3 worldUp = hub->GetWorldUpDirection().Normalized();
  const Vector3 worldFront = hub->GetWorldFrontDirection().Normalized();
  const Vector3 worldRight = worldFront.Cross(worldUp).Normalized();
  const double limit = std::cos((GetParameters().look_invert_tolerance + 90.0) * Math::DEG_TO_RAD);
  const double uprightness = trueUp.Dot(worldUp);

  Ways ways{worldUp, worldFront * worldFront.Dot(direction) + worldRight * worldRight.Dot(direction)};
  if (ways.forward.Length() < Math::EPSILON_VALUE) {
    ways.forward = direction.Dot(worldUp) < 0.0 ? trueUp : -trueUp;
  } else if (uprightness < 0.0) {
    Vector3& turned = uprightness > limit ? ways.forward : ways.upward;
    turned = -turned;
  }
  ways.forward.Normalize();
  return ways;
}

}  // namespace Korvane
