#include "controller/device_motion.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "camera/host_camera.h"

namespace Korvane {

using Mode = Cam3DControllerParameters;

DeviceMotion::~DeviceMotion() { End(); }

bool DeviceMotion::IsOwnOperationActive() const {
  const CameraOperations* const open = hub.Get();
  const Operation* const own = operation.Get();
  return open != nullptr && own != nullptr && open->GetActiveOperation(OPERATION_CAM3D_CONTROLLER) == own;
}

// ---- the begin ----

bool DeviceMotion::CanBegin() const {
  const CameraOperations* const begun = partners.hub.Get();
  return state == State::Idle && begun != nullptr && !begun->IsShotActive();
}

bool DeviceMotion::Begin() {
  if (!CanBegin()) return false;
  Open(*partners.hub.Get());
  return operating;
}

// One of another controller ends first, while its settings can still be given back before new ones are lent.
// False where it will not go, and where this motion is over meanwhile.
bool DeviceMotion::EndOther(CameraOperations& occupied) {
  const Lifeline::Watch goesOn(life);
  for (int tries = 0; tries < 3 && occupied.IsOperationActive(OPERATION_CAM3D_CONTROLLER); ++tries) {
    occupied.EndOperation(OPERATION_CAM3D_CONTROLLER);
    if (!goesOn) return false;
  }
  return !occupied.IsOperationActive(OPERATION_CAM3D_CONTROLLER);
}

// Whoever hears of the other's end or of the record may destroy the hub, begin a shot, and end the motion.
void DeviceMotion::Open(CameraOperations& begun) {
  const Lifeline::Watch goesOn(life);
  state = State::Opening;
  hub.Set(&begun);
  const auto isFree = [&] { return EndOther(begun) && !begun.IsShotActive(); };
  if (isFree() && Lend(begun) && isFree()) return Run(begun);
  if (goesOn) Close(Device::AtRest);
}

// False where the motion or its hub has ended meanwhile.
bool DeviceMotion::Lend(CameraOperations& begun) {
  const Lifeline::Watch goesOn(life);
  const auto isThere = [&] { return goesOn && hub.Get() != nullptr; };
  SetApplicationParameters(begun);
  const CameraParameters camera = QueryCamera(begun);
  if (isThere()) record.Begin(partners.history.Get(), camera);
  return isThere();
}

// Somebody may have seen to it, within the begin, that there is none.
void DeviceMotion::Run(CameraOperations& begun) {
  const Lifeline::Watch goesOn(life);
  state = State::Running;
  operating = true;
  movingFrames = 0;
  pivotTimer.Reset();
  begun.AddOperationObserver(&ends);
  beginning = true;
  begun.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0);
  if (!goesOn) return;
  beginning = false;
  Adopt(begun);
  if (operation.Get() == nullptr) BreakOff();
}

void DeviceMotion::Adopt(const CameraOperations& begun) {
  Operation* const active = begun.GetActiveOperation(OPERATION_CAM3D_CONTROLLER);
  operation.Set(dynamic_cast<Cam3DControllerOperation*>(active));
  if (Cam3DControllerOperation* const own = operation.Get()) own->SetOwner(&ends);
  LimitOrthographicZoom(limitsOrthographicZoom);
}

void DeviceMotion::LimitOrthographicZoom(bool limit) {
  limitsOrthographicZoom = limit;
  if (Cam3DControllerOperation* const own = operation.Get()) own->LimitOrthographicZoom(limit);
}

void DeviceMotion::SetApplicationParameters(CameraOperations& lender) {
  settings.Borrow(lender);
  ApplicationParameters& scene = lender.GetApplicationParameters();
  scene.cam3d_controller_mode = parameters.GetNavigationMode();
  scene.preserve_orbit_up_direction = scene.align_orbit_up_direction = ShouldKeepSceneUpright(parameters);
}

// ---- within it ----

bool DeviceMotion::Perform(const Vector3& translation, const Vector3& rotation) {
  const bool isThere = operating && partners.hub.Get() != nullptr;
  if (IsRunning() && beginning) Adopt(*hub.Get());
  if (IsRunning() && IsOwnOperationActive()) {
    Step(translation, rotation);
  } else if (IsRunning() && !beginning) {
    BreakOff();
  }
  return isThere;
}

void DeviceMotion::Step(const Vector3& translation, const Vector3& rotation) {
  const Cam3DControllerParameters::NavigationMode mode = parameters.GetNavigationMode();
  const bool turnsHead = mode == Mode::MODE_WALK || mode == Mode::MODE_FLY;
  const Lifeline::Watch goesOn(life);
  CountRotation(rotation);
  UpdateBall();
  if (!goesOn || hub.Get() == nullptr) return;
  hub.Get()->UpdateOperationParams(translation, turnsHead ? -rotation : rotation, OPERATION_CAM3D_CONTROLLER);
}

void DeviceMotion::CountRotation(const Vector3& rotation) {
  if (rotation == Vector3::Zero) {
    movingFrames = 0;
  } else {
    movingFrames = std::min(movingFrames, std::numeric_limits<int>::max() - 1) + 1;
  }
}

void DeviceMotion::UpdateBall() {
  PivotBall* const ball = partners.ball.Get();
  if (ball == nullptr) return;
  const bool turnsModel = parameters.GetNavigationMode() == Mode::MODE_OBJECT;
  if (movingFrames > parameters.GetPivotBallThreshold() && turnsModel) {
    ShowBall();
  } else if (movingFrames == 0 && ball->IsVisible()) {
    HideBallInTime(*ball);
  }
}

// Each step may call out to the host, who may take the ball away.
void DeviceMotion::ShowBall() {
  const Lifeline::Watch goesOn(life);
  const auto with = [&](const auto& step) {
    PivotBall* const ball = partners.ball.Get();
    if (goesOn && ball != nullptr && hub.Get() != nullptr) step(*ball);
  };
  if (!partners.ball.Get()->IsVisible()) {
    with([&](PivotBall& ball) { ball.UpdateSize(hub.Get()->GetCameraParameters()); });
    with([](PivotBall& ball) { ball.SetLabel(STRING_PIVOT); });
  }
  with([](PivotBall& ball) { ball.SetVisible(true); });
  pivotTimer.Reset();
}

void DeviceMotion::HideBallInTime(PivotBall& ball) {
  pivotTimer.End();
  const double rested = pivotTimer.GetLastInterval();
  if (rested == 0.0) {
    pivotTimer.Start();
  } else if (rested > parameters.GetPivotBallHideDelay()) {
    pivotTimer.Reset();
    ball.SetVisible(false);
  }
}

// ---- the end ----

bool DeviceMotion::End() {
  const bool isThere = operating && partners.hub.Get() != nullptr;
  if (state == State::Opening || state == State::Running) {
    Close(Device::AtRest);
  } else {
    operating = false;
  }
  return isThere;
}

void DeviceMotion::BreakOff() {
  if (state == State::Opening || state == State::Running) Close(Device::Deflected);
}

void DeviceMotion::EndWatch::OnEndOperation(OperationType type) {
  if (type == OPERATION_CAM3D_CONTROLLER && !motion.IsOwnOperationActive()) motion.BreakOff();
}

// What is to end is taken out first, since each call out may bring about the end of whoever holds the motion.
// Nothing begins until the record is closed.
void DeviceMotion::Close(Device device) {
  state = State::Closing;
  life.Cut();
  if (std::exchange(beginning, false)) Adopt(*hub.Get());
  const Lifeline::Watch alive(existence);
  const Borrowed<CameraOperations> open(hub.Get());
  const Borrowed<Cam3DControllerOperation> ending(operation.Get());
  const Borrowed<PivotBall> ball(partners.ball.Get());
  RewindRecord closing(std::move(record));
  hub.Set(nullptr);
  operation.Set(nullptr);
  RestoreApplicationParameters(open.Get());
  if (Cam3DControllerOperation* const own = ending.Get()) own->SetOwner(nullptr);
  if (CameraOperations* const lender = open.Get()) lender->RemoveOperationObserver(&ends);
  closing.End(open.Get());
  if (alive) {
    state = State::Idle;
    operating = operating && device == Device::Deflected;
  }
  if (open.Get() != nullptr) EndIfActive(*open.Get(), ending);
  if (ball.Get() != nullptr) ball.Get()->SetVisible(false);
}

void DeviceMotion::EndIfActive(CameraOperations& hub, const Borrowed<Cam3DControllerOperation>& ending) {
  const auto isActive = [&] {
    const Operation* const own = ending.Get();
    return own != nullptr && hub.GetActiveOperation(OPERATION_CAM3D_CONTROLLER) == own;
  };
  if (isActive()) hub.UpdateOperationParams(Vector3(), Vector3(), OPERATION_CAM3D_CONTROLLER);
  if (isActive()) hub.EndOperation(OPERATION_CAM3D_CONTROLLER);
}

}  // namespace Korvane
