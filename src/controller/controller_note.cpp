#include "controller/controller_note.h"

#include "korvane/camera_operations.h"
#include "korvane/resource_ids.h"

namespace Korvane {

namespace {

constexpr double WARNING_TIME = 0.5;  // seconds

}  // namespace

void Cam3DHideHUDTimer::Timeout() { note.TimeOut(); }

void ControllerNote::Take(Renderer& renderer) {
  const Borrowed<Renderer> lender(&renderer);
  walkWarning.Take(lender.Get(), STRING_DEVICE_WALK_REFUSED);
  flyWarning.Take(lender.Get(), STRING_DEVICE_FLY_REFUSED);
}

void ControllerNote::GiveBack() {
  walkWarning.GiveBack();
  flyWarning.GiveBack();
}

void ControllerNote::Warn(Cam3DControllerParameters::NavigationMode mode) {
  warning = mode == Cam3DControllerParameters::MODE_WALK ? &walkWarning : &flyWarning;
  hideTimer.Start(WARNING_TIME, false);
  RequestUpdate();
}

void ControllerNote::Show(DynamicIcon2D* icon) {
  warning = nullptr;
  message = icon;
}

void ControllerNote::Hide() {
  Show(nullptr);
  hideTimer.Stop();
}

void ControllerNote::TimeOut() {
  Show(nullptr);
  RequestUpdate();
}

void ControllerNote::RequestUpdate() const {
  if (CameraOperations* const asked = hub.Get()) asked->RequestApplicationUpdate();
}

}  // namespace Korvane
