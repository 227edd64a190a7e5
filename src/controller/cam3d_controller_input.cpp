// What an input of the six axes does.
#include <cmath>

#include "camera/host_camera.h"
#include "controller/cam3d_controller_parts.h"
#include "korvane/cam3d_controller.h"

namespace Korvane {

namespace {

bool IsAtRest(const Vector3& translation, const Vector3& rotation) {
  return translation == Vector3::Zero && rotation == Vector3::Zero;
}

}  // namespace

bool Cam3DController::On3DControllerInput(Vector3& translation, Vector3& rotation) {
  const Staying now(parts);
  if (!GetEnabled()) return false;
  const bool turns = now->parameters.GetEnableRotation() &&
                     now->parameters.GetNavigationMode() != Cam3DControllerParameters::MODE_PAN;
  Vector3 moved = now->parameters.GetEnableTranslation() ? translation : Vector3();
  Vector3 turned = turns ? rotation : Vector3();
  AdjustInput(moved, turned);
  if (!moved.IsFinite() || !turned.IsFinite()) return false;
  translation = moved;
  rotation = turned;
  if (!Move(moved, turned)) return true;
  now.TellObservers([&](Cam3DControllerObserver& each) { each.OnInput(moved, turned); });
  return true;
}

// False when the view may not be moved so, which the note says.
bool Cam3DController::Move(const Vector3& translation, const Vector3& rotation) {
  const Staying now(parts);
  const bool atRest = IsAtRest(translation, rotation);
  if (now->motion.IsOperating()) {
    atRest ? End3DControllerOperation() : Perform3DControllerOperation(translation, rotation);
  }
  if (!now || atRest || now->motion.IsOperating() || !GetEnabled()) return true;
  const bool isValid = IsValidMode();
  if (now && !isValid && !MakeModeValid()) return false;
  if (now && GetEnabled()) Begin3DControllerOperation();
  return true;
}

bool Cam3DController::Begin3DControllerOperation() {
  const Staying now(parts);
  return now->motion.Begin();
}
bool Cam3DController::Perform3DControllerOperation(const Vector3& translation, const Vector3& rotation) {
  const Staying now(parts);
  return now->motion.Perform(translation, rotation);
}
bool Cam3DController::End3DControllerOperation() {
  const Staying now(parts);
  return now->motion.End();
}

void Cam3DController::AdjustInput(Vector3& translation, Vector3& rotation) const {
  const Cam3DControllerParameters& settings = parts->parameters;
  const NavigationMode mode = settings.GetNavigationMode();
  double ofTranslation[3];
  double ofRotation[3];
  settings.GetTranslationMultipliers(mode, ofTranslation);
  settings.GetRotationMultipliers(mode, ofRotation);
  const auto adjust = [&](double value) {
    return AdjustInputParameter(settings.GetSensitivity(), settings.GetInputThreshold(), value);
  };
  for (int axis = 0; axis < 3; ++axis) {
    translation[axis] = adjust(translation[axis]) * ofTranslation[axis];
    rotation[axis] = adjust(rotation[axis]) * ofRotation[axis];
  }
}

// No step at the edge of the dead zone. A device at rest is at rest, whatever the threshold.
double Cam3DController::AdjustInputParameter(double sensitivity, double threshold, double value) {
  if (value == 0.0 || std::abs(value) <= threshold) return 0.0;
  return (value > 0.0 ? value - threshold : value + threshold) * sensitivity;
}

bool Cam3DController::IsValidMode() const {
  const NavigationMode mode = GetNavigationMode();
  if (mode == Cam3DControllerParameters::MODE_OBJECT || mode == Cam3DControllerParameters::MODE_PAN) {
    return true;
  }
  const CameraOperations* const hub = parts->partners.hub.Get();
  if (hub == nullptr) return true;
  const CameraParameters camera = QueryCamera(*hub);
  return !camera.IsOrthographic() && !camera.perspective_with_ortho;
}

// Makes the view perspective, or says that it is not. Whether it is now.
bool Cam3DController::MakeModeValid() {
  const Staying now(parts);
  CameraOperations* const hub = now->partners.hub.Get();
  if (hub == nullptr) return false;
  if (!hub->GetApplicationParameters().auto_switch_projection) {
    now->note.Warn(now->parameters.GetNavigationMode());
    return false;
  }
  CameraParameters camera = QueryCamera(*hub);
  camera.projection_type = CameraParameters::ProjectionType::Perspective;
  camera.perspective_with_ortho = false;
  if (now->partners.hub.Get() == hub) ApplyIfFinite(*hub, camera);
  now->note.Hide();
  return true;
}

}  // namespace Korvane
