#include "korvane/camera_operations.h"

#include <algorithm>
#include <cassert>
#include <memory>
#include <utility>

#include "camera/finite_camera.h"

namespace Korvane {

namespace {

// Perspective to orthographic takes a seventh of a second.
constexpr double PROJECTION_BLEND_RATE = 7.0;

}  // namespace

CameraOperations::CameraOperations() = default;
CameraOperations::~CameraOperations() {
  assert(callsOut == 0 && "destroyed by what the hub has called");
  lifeline.Cut();
}

// ---- operations ----

Running<Operation>& CameraOperations::SlotOf(OperationType type) {
  return activeOperations[static_cast<std::size_t>(type)];
}

template <class Call>
void CameraOperations::ForEachOperationType(Call call) {
  for (int type = 0; type < OPERATION_KIND_COUNT; ++type) call(static_cast<OperationType>(type));
}

bool CameraOperations::BeginOperation(OperationType type, int x, int y) {
  if (!IsOperationKind(type)) return false;
  std::unique_ptr<Operation> operation = Operation::CreateOperation(type);
  if (operation == nullptr) return false;

  const CallingOut out(callsOut);
  Running<Operation>& slot = SlotOf(type);
  slot.Set(std::move(operation));
  const Running<Operation>::Call begun(slot);
  RecalculateSelectionBounds();
  QueryCameraParameters(currentCamera);
  if (!begun.IsCurrent()) return false;  // the host's own hook has ended it
  begun->InitOperation(x, y, this);
  if (!begun.IsCurrent()) return false;
  operationObservers.Notify(
      [&](OperationObserver& observer) { observer.OnBeginOperation(type, currentCamera); });
  RequestApplicationUpdate();
  return true;
}

// Runs `each` for all kinds, through the virtual forms, or `one` for one kind; false for no kind.
template <class Each, class One>
bool CameraOperations::Dispatch(OperationType type, Each each, One one) {
  if (type == OPERATION_ALL) {
    ForEachOperationType(each);
    return true;
  }
  if (!IsOperationKind(type)) return false;
  Running<Operation>& slot = SlotOf(type);
  if (slot) one(slot);
  return true;
}

bool CameraOperations::EndOperation(OperationType type) {
  return Dispatch(
      type, [this](OperationType each) { EndOperation(each); },
      [&](Running<Operation>& slot) {
        const CallingOut out(callsOut);
        slot.Set(nullptr);
        operationObservers.Notify([type](OperationObserver& observer) { observer.OnEndOperation(type); });
        RequestApplicationUpdate();
      });
}

bool CameraOperations::UpdateOperationParams(Vector3 translation, Vector3 rotation, OperationType type) {
  return Dispatch(
      type, [&](OperationType each) { UpdateOperationParams(translation, rotation, each); },
      [&](Running<Operation>& slot) {
        const Running<Operation>::Call call(slot);
        call->Update3DControllerInput(translation, rotation);
      });
}

bool CameraOperations::UpdateOperationParams(KeyID key, bool pressed, OperationType type) {
  return Dispatch(
      type, [&](OperationType each) { UpdateOperationParams(key, pressed, each); },
      [&](Running<Operation>& slot) { slot.Get()->UpdateKey(key, pressed); });
}

bool CameraOperations::UpdateOperationParams(int x, int y, OperationType type) {
  return Dispatch(
      type, [&](OperationType each) { UpdateOperationParams(x, y, each); },
      [&](Running<Operation>& slot) { slot.Get()->UpdateCursor(x, y); });
}

bool CameraOperations::IsOperationActive(OperationType type) const {
  if (type != OPERATION_ALL) return GetActiveOperation(type) != nullptr;
  for (const auto& operation : activeOperations) {
    if (operation) return true;
  }
  return false;
}

Operation* CameraOperations::GetActiveOperation(OperationType type) const {
  return IsOperationKind(type) ? activeOperations[static_cast<std::size_t>(type)].Get() : nullptr;
}

void CameraOperations::AddOperationObserver(OperationObserver* observer) { operationObservers.Add(observer); }

void CameraOperations::RemoveOperationObserver(OperationObserver* observer) {
  operationObservers.Remove(observer);
}

// ---- the frame ----

bool CameraOperations::PerformOperations() {
  if (callsOut != 0) return false;
  const CallingOut out(callsOut);
  QueryCameraParameters(currentCamera);
  const CameraParameters snapshot = currentCamera;

  const bool atRest = IsAtRest();
  if (!atRest) MeasureFrame();

  FrameActivity activity = PerformActiveOperations();
  PerformActiveShot(activity);

  for (const auto& operation : activeOperations) {
    if (operation) operation.Get()->UpdatePreviousCursor();
  }

  if (currentCamera.perspective_with_ortho) ChooseProjection(activity);
  const bool blending = BlendProjection(activity);
  if (atRest && blending) MeasureFrame();

  if (!CheckCamerasEqual(&currentCamera, &snapshot)) ApplyIfFinite(currentCamera);
  if (activeShot && activity.doneShot == shotNumber) EndShot();

  if (activity.active || blending) {
    RequestApplicationUpdate();
    return true;
  }
  frameTimer.Reset();  // a pause must not turn into one huge step
  frameDelta = 0.0;
  return false;
}

// Nothing runs, and nothing did in the last frame: the step is 0, and the clock need not be read.
bool CameraOperations::IsAtRest() const {
  return !frameTimer.IsStarted() && !activeShot &&
         std::none_of(activeOperations.begin(), activeOperations.end(),
                      [](const Running<Operation>& operation) { return static_cast<bool>(operation); });
}

void CameraOperations::MeasureFrame() {
  frameTimer.Lap();
  frameDelta = Math::Max(0.0, frameTimer.GetLastInterval());  // the clock wraps
}

// Lowest kind first, on the same record, so that each observer sees the camera as its operation left
// it.
CameraOperations::FrameActivity CameraOperations::PerformActiveOperations() {
  FrameActivity activity;
  ForEachOperationType([&](OperationType type) {
    if (!SlotOf(type)) return;
    PerformActiveOperation(type);
    activity.active = true;
    activity.rotating = activity.rotating || type == OPERATION_ORBIT || type == OPERATION_LOOK;
  });
  return activity;
}

void CameraOperations::PerformActiveOperation(OperationType type) {
  const CameraParameters before = currentCamera;
  const Running<Operation>::Call operation(SlotOf(type));
  operation->PerformOperation(frameDelta, currentCamera);
  KeepView(before, currentCamera);
  if (!operation.IsCurrent()) return;  // nobody hears of it after its end
  operationObservers.Notify(
      [&](OperationObserver& observer) { observer.OnPerformOperation(type, frameDelta, currentCamera); });
}

// A shot that ends in this frame does not make it active.
void CameraOperations::PerformActiveShot(FrameActivity& activity) {
  if (!activeShot) return;
  const std::uint64_t number = shotNumber;
  const Running<Shot>::Call shot(activeShot);
  const CameraParameters before = currentCamera;
  const bool goesOn = shot->PerformShot(frameDelta, currentCamera);
  KeepView(before, currentCamera);
  const ShotRole role = shot->GetRole();
  activity.active = activity.active || goesOn;
  activity.rotating = activity.rotating || role == ShotRole::Rotating;
  activity.aligning = role == ShotRole::Aligning;
  activity.changingProjection = role == ShotRole::ChangingProjection;
  if (!goesOn) activity.doneShot = number;
}

// While the view rotates the tolerance is negative, which no direction meets (the axes are of unit length):
// the view turns orthographic only once the motion has stopped on an axis. An aligning view may turn a
// little early, so that the blend has time to run.
void CameraOperations::ChooseProjection(const FrameActivity& activity) {
  double tolerance = activity.rotating ? -Math::EPSILON_VALUE : Math::EPSILON_VALUE;
  if (applicationParameters.use_projection_transitions && activity.aligning) tolerance = orthoTolerance;
  currentCamera.projection_type = IsInOrthoRange(currentCamera.eye - currentCamera.centre, tolerance)
                                      ? CameraParameters::ProjectionType::Orthographic
                                      : CameraParameters::ProjectionType::Perspective;
}

bool CameraOperations::BlendProjection(const FrameActivity& activity) {
  if (!applicationParameters.use_projection_transitions || activity.changingProjection) return false;
  const bool toOrthographic = currentCamera.IsOrthographic();
  const bool toPerspective = currentCamera.projection_type == CameraParameters::ProjectionType::Perspective;
  double& blend = currentCamera.projection_transition;
  const double step = frameDelta * PROJECTION_BLEND_RATE;
  const bool atRest = !activity.active && frameDelta < Math::EPSILON_VALUE;

  if (toOrthographic && blend < 1.0) {
    blend = atRest ? 1.0 : Math::Min(1.0, blend + step);
    return true;
  }
  if (toPerspective && blend > 0.0) {
    blend = atRest ? 0.0 : Math::Max(0.0, blend - step);
    return true;
  }
  return false;
}

// No bad number reaches the host, not even its own.
bool CameraOperations::ApplyIfFinite(const CameraParameters& view) {
  if (!IsCameraFinite(view)) return false;
  ApplyCameraParameters(view);
  return true;
}

// ---- shots ----

bool CameraOperations::BeginShot(Shot* shot) {
  if (shot == nullptr) return false;
  std::unique_ptr<Shot> begun(shot);
  if (endingIntruder) return false;
  const CallingOut out(callsOut);
  const std::uint64_t last = shotNumber;
  EndShot();
  QueryCameraParameters(currentCamera);
  begun->InitShot(this);
  if (activeShot && shotNumber != last) EndIntruder();
  activeShot.Set(std::move(begun));
  ++shotNumber;
  activeShotObserver.Set(nullptr);
  const Running<Shot>::Call call(activeShot);
  OnBeginShot(shot);
  RequestApplicationUpdate();
  return true;
}

// What the observer of the last shot, or a hook, has begun within the begin of another.
void CameraOperations::EndIntruder() {
  endingIntruder = true;
  EndShot();
  endingIntruder = false;
}

// The observer, and the hook, may themselves end or begin shots. The ending one stays the active one until
// both have been told, each once, and what they began stays.
bool CameraOperations::EndShot() {
  if (!activeShot || activeShot.Get() == hookedShot) return true;
  const CallingOut out(callsOut);
  if (EndActiveShot()) RequestApplicationUpdate();
  return true;
}

// False when the observer has ended the shot itself.
bool CameraOperations::EndActiveShot() {
  const Running<Shot>::Call ending(activeShot);
  if (ShotObserver* const observer = activeShotObserver.Get()) {
    activeShotObserver.Set(nullptr);
    observer->OnEndShot(ending.Get(), currentCamera);
  }
  if (!ending.IsCurrent()) return false;
  hookedShot = ending.Get();
  OnEndShot(ending.Get());
  hookedShot = nullptr;
  if (ending.IsCurrent()) activeShot.Set(nullptr);
  return true;
}

bool CameraOperations::AdvanceActiveShot(double dt) {
  if (!activeShot) return false;
  const CallingOut out(callsOut);
  const Running<Shot>::Call shot(activeShot);
  QueryCameraParameters(currentCamera);
  if (!shot.IsCurrent()) return true;
  const CameraParameters snapshot = currentCamera;
  const bool goesOn = shot->PerformShot(dt, currentCamera);
  KeepView(snapshot, currentCamera);
  if (goesOn && !CheckCamerasEqual(&currentCamera, &snapshot) && ApplyIfFinite(currentCamera))
    RequestApplicationUpdate();
  return true;
}

bool CameraOperations::IsShotActive() const { return static_cast<bool>(activeShot); }

Shot* CameraOperations::GetActiveShot() const { return activeShot.Get(); }

bool CameraOperations::SetActiveShotObserver(ShotObserver* observer) {
  if (!activeShot || observer == nullptr) return false;
  activeShotObserver.Set(observer);
  return true;
}

void CameraOperations::OnBeginShot(Shot* /*shot*/) {}
void CameraOperations::OnEndShot(Shot* /*shot*/) {}

// ---- parameters and cameras ----

ApplicationParameters& CameraOperations::GetApplicationParameters() { return applicationParameters; }
const ApplicationParameters& CameraOperations::GetApplicationParameters() const {
  return applicationParameters;
}
const CameraParameters& CameraOperations::GetCameraParameters() const { return currentCamera; }
CameraParameters& CameraOperations::GetHomeCamera() { return applicationParameters.home_camera; }

bool CameraOperations::CheckCamerasEqual(const CameraParameters* a, const CameraParameters* b) const {
  return CameraCheckEqual(a, b);
}

}  // namespace Korvane
