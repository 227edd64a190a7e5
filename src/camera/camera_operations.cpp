#include "korvane/camera_operations.h"

#include <utility>

#include "camera/shot_role.h"

namespace Korvane {

namespace {

// Perspective to orthographic takes a seventh of a second.
constexpr double PROJECTION_BLEND_RATE = 7.0;

// What a move made of a good camera must be good, too; otherwise the camera stays where it was.
void KeepFinite(const CameraParameters& before, CameraParameters& after) {
  if (!after.IsFinite() && before.IsFinite()) after = before;
}

}  // namespace

CameraOperations::CameraOperations() = default;
CameraOperations::~CameraOperations() = default;

// ---- operations ----

bool CameraOperations::IsOperationType(OperationType type) {
  return static_cast<unsigned>(type) < OPERATION_COUNT;
}

std::unique_ptr<Operation>& CameraOperations::SlotOf(OperationType type) {
  return activeOperations[static_cast<std::size_t>(type)];
}

template <class Call>
void CameraOperations::ForEachOperationType(Call call) {
  for (int type = 0; type < OPERATION_COUNT; ++type) call(static_cast<OperationType>(type));
}

bool CameraOperations::BeginOperation(OperationType type, int x, int y) {
  if (!IsOperationType(type)) return false;
  std::unique_ptr<Operation> operation = Operation::CreateOperation(type);
  if (operation == nullptr) return false;

  const Operation* const begun = operation.get();
  SlotOf(type) = std::move(operation);
  RecalculateSelectionBounds();
  QueryCameraParameters(currentCamera);
  if (SlotOf(type).get() != begun) return false;  // the host's own hook has ended it
  SlotOf(type)->InitOperation(x, y, this);
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
  if (!IsOperationType(type)) return false;
  if (SlotOf(type) != nullptr) one(*SlotOf(type));
  return true;
}

bool CameraOperations::EndOperation(OperationType type) {
  return Dispatch(
      type, [this](OperationType each) { EndOperation(each); },
      [&](Operation&) {
        SlotOf(type).reset();
        operationObservers.Notify([type](OperationObserver& observer) { observer.OnEndOperation(type); });
        RequestApplicationUpdate();
      });
}

bool CameraOperations::UpdateOperationParams(Vector3 translation, Vector3 rotation, OperationType type) {
  return Dispatch(
      type, [&](OperationType each) { UpdateOperationParams(translation, rotation, each); },
      [&](Operation& one) { one.Update3DControllerInput(translation, rotation); });
}

bool CameraOperations::UpdateOperationParams(KeyID key, bool pressed, OperationType type) {
  return Dispatch(
      type, [&](OperationType each) { UpdateOperationParams(key, pressed, each); },
      [&](Operation& one) { one.UpdateKey(key, pressed); });
}

bool CameraOperations::UpdateOperationParams(int x, int y, OperationType type) {
  return Dispatch(
      type, [&](OperationType each) { UpdateOperationParams(x, y, each); },
      [&](Operation& one) { one.UpdateCursor(x, y); });
}

bool CameraOperations::IsOperationActive(OperationType type) const {
  if (type != OPERATION_ALL) return GetActiveOperation(type) != nullptr;
  for (const auto& operation : activeOperations) {
    if (operation != nullptr) return true;
  }
  return false;
}

Operation* CameraOperations::GetActiveOperation(OperationType type) const {
  return IsOperationType(type) ? activeOperations[static_cast<std::size_t>(type)].get() : nullptr;
}

void CameraOperations::AddOperationObserver(OperationObserver* observer) { operationObservers.Add(observer); }

void CameraOperations::RemoveOperationObserver(OperationObserver* observer) {
  operationObservers.Remove(observer);
}

// ---- the frame ----

bool CameraOperations::PerformOperations() {
  QueryCameraParameters(currentCamera);
  const CameraParameters snapshot = currentCamera;

  frameTimer.Lap();
  frameDelta = Math::Max(0.0, frameTimer.GetLastInterval());  // the clock wraps

  FrameActivity activity = PerformActiveOperations();
  std::shared_ptr<Shot> doneShot = PerformActiveShot(activity);

  for (const auto& operation : activeOperations) {
    if (operation != nullptr) operation->UpdatePreviousCursor();
  }

  if (currentCamera.perspective_with_ortho) ChooseProjection(activity);
  const bool blending = BlendProjection(activity);

  if (!CheckCamerasEqual(&currentCamera, &snapshot)) ApplyIfFinite(currentCamera);
  const bool isDone = doneShot != nullptr && doneShot == activeShot;
  doneShot.reset();  // EndShot destroys it
  if (isDone) EndShot();

  if (activity.active || blending) {
    RequestApplicationUpdate();
    return true;
  }
  frameTimer.Reset();  // a pause must not turn into one huge step
  return false;
}

// Lowest kind first, on the same record, so that each observer sees the camera as its operation left
// it.
CameraOperations::FrameActivity CameraOperations::PerformActiveOperations() {
  FrameActivity activity;
  ForEachOperationType([&](OperationType type) {
    if (SlotOf(type) == nullptr) return;
    PerformActiveOperation(type);
    activity.active = true;
    activity.rotating = activity.rotating || type == OPERATION_ORBIT || type == OPERATION_LOOK;
  });
  return activity;
}

void CameraOperations::PerformActiveOperation(OperationType type) {
  const CameraParameters before = currentCamera;
  SlotOf(type)->PerformOperation(frameDelta, currentCamera);
  KeepFinite(before, currentCamera);
  operationObservers.Notify(
      [&](OperationObserver& observer) { observer.OnPerformOperation(type, frameDelta, currentCamera); });
}

// Returns the shot when this was its last step. A shot that ends in this frame does not make it active.
std::shared_ptr<Shot> CameraOperations::PerformActiveShot(FrameActivity& activity) {
  const std::shared_ptr<Shot> shot = activeShot;
  if (shot == nullptr) return nullptr;
  const CameraParameters before = currentCamera;
  const bool goesOn = shot->PerformShot(frameDelta, currentCamera);
  KeepFinite(before, currentCamera);
  const ShotRole role = GetShotRole(*shot);
  activity.active = activity.active || goesOn;
  activity.rotating = activity.rotating || role == ShotRole::Rotating;
  activity.aligning = role == ShotRole::Aligning;
  activity.changingProjection = role == ShotRole::ChangingProjection;
  return goesOn ? nullptr : shot;
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
  if (!view.IsFinite()) return false;
  ApplyCameraParameters(view);
  return true;
}

// ---- shots ----

bool CameraOperations::BeginShot(Shot* shot) {
  if (shot == nullptr) return false;
  std::shared_ptr<Shot> begun(shot);
  EndShot();
  QueryCameraParameters(currentCamera);
  begun->InitShot(this);
  EndShot();  // what the first one's observer, or a hook, may have begun meanwhile
  activeShot = std::move(begun);
  activeShotObserver.Set(nullptr);
  OnBeginShot(shot);
  RequestApplicationUpdate();
  return true;
}

// The observer, and the hook, may themselves end or begin shots. The ending one stays the active one until
// both have been told, each once, and what they began stays.
bool CameraOperations::EndShot() {
  std::shared_ptr<Shot> ending = activeShot;
  if (ending == nullptr || ending.get() == hookedShot) return true;
  if (ShotObserver* const observer = activeShotObserver.Get()) {
    activeShotObserver.Set(nullptr);
    observer->OnEndShot(ending.get(), currentCamera);
  }
  if (activeShot != ending) return true;
  hookedShot = ending.get();
  OnEndShot(ending.get());
  hookedShot = nullptr;
  if (activeShot == ending) activeShot.reset();
  ending.reset();
  RequestApplicationUpdate();
  return true;
}

bool CameraOperations::AdvanceActiveShot(double dt) {
  if (activeShot == nullptr) return false;
  QueryCameraParameters(currentCamera);
  const CameraParameters snapshot = currentCamera;
  const bool goesOn = std::shared_ptr<Shot>(activeShot)->PerformShot(dt, currentCamera);
  KeepFinite(snapshot, currentCamera);
  if (goesOn && !CheckCamerasEqual(&currentCamera, &snapshot) && ApplyIfFinite(currentCamera))
    RequestApplicationUpdate();
  return true;
}

bool CameraOperations::IsShotActive() const { return activeShot != nullptr; }

Shot* CameraOperations::GetActiveShot() const { return activeShot.get(); }

bool CameraOperations::SetActiveShotObserver(ShotObserver* observer) {
  if (activeShot == nullptr || observer == nullptr) return false;
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
