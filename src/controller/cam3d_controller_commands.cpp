// What the buttons of a device do.
#include <cmath>
#include <utility>

#include "camera/camera_frame.h"
#include "camera/host_camera.h"
#include "controller/cam3d_controller_parts.h"
#include "korvane/cam3d_controller.h"

namespace Korvane {

namespace {

constexpr double ALIGN_DURATION = 0.4;       // seconds
constexpr double TRANSITION_DURATION = 0.5;  // seconds
constexpr double RIGHT_ANGLE = 90.0;         // degrees

using Side = ViewAlignShotParameters;

// To a side of the scene, -1 for none.
ViewAlignShotParameters MakeAlignShot(int direction, double rollAngle) {
  ViewAlignShotParameters shot;
  if (direction >= 0) shot.directionFlags[direction] = true;
  shot.duration = ALIGN_DURATION;
  shot.rollAngle = rollAngle;
  return shot;
}

TransitionShotParameters MakeTransition(const CameraParameters& target) {
  TransitionShotParameters shot;
  shot.targetCamera = target;
  shot.easeEnd = 1.0;
  shot.duration = TRANSITION_DURATION;
  return shot;
}

bool IsAlong(double cosine) { return std::abs(cosine - 1.0) <= Math::EPSILON_VALUE; }

}  // namespace

// ---- keys ----

struct Cam3DController::Keys {
  struct Row {
    Cam3DControllerKeyID id;
    void (*act)(Cam3DController& controller);
  };

  template <CameraDirection DIRECTION>
  static void Align(Cam3DController& controller) {
    controller.AlignToView(DIRECTION);
  }
  template <bool FORWARD>
  static void Step(Cam3DController& controller) {
    controller.StepHistory(FORWARD);
  }
  template <bool POSITIVE>
  static void Roll(Cam3DController& controller) {
    controller.RotateView(POSITIVE ? RIGHT_ANGLE : -RIGHT_ANGLE);
  }
  static void GoHome(Cam3DController& controller) { controller.GoToHomeView(); }
  static void Fit(Cam3DController& controller) { controller.FitToView(); }
  static void TogglePan(Cam3DController& controller) { controller.Toggle2DNavigationMode(); }

  static constexpr Row ROWS[] = {
      {CAM3D_KEY_TOP, &Align<Side::CAMERA_TOP>},
      {CAM3D_KEY_BOTTOM, &Align<Side::CAMERA_BOTTOM>},
      {CAM3D_KEY_RIGHT, &Align<Side::CAMERA_OPPOSITE_SIDE>},
      {CAM3D_KEY_LEFT, &Align<Side::CAMERA_SIDE>},
      {CAM3D_KEY_BACK, &Align<Side::CAMERA_BACK>},
      {CAM3D_KEY_FRONT, &Align<Side::CAMERA_FRONT>},
      {CAM3D_KEY_HOME, &GoHome},
      {CAM3D_KEY_ROLL_CLOCKWISE, &Roll<false>},
      {CAM3D_KEY_ROLL_COUNTER_CLOCKWISE, &Roll<true>},
      {CAM3D_KEY_HISTORY_FORWARD, &Step<true>},
      {CAM3D_KEY_HISTORY_BACK, &Step<false>},
      {CAM3D_KEY_FIT, &Fit},
      {CAM3D_KEY_PAN_MODE, &TogglePan},
  };

  static void Act(Cam3DController& controller, Cam3DControllerKeyID id) {
    for (const Row& row : ROWS) {
      if (row.id == id) return row.act(controller);
    }
  }
};

bool Cam3DController::On3DControllerKeyDown(int button) {
  const Staying now(parts);
  if (!GetEnabled() || now->partners.hub.Get() == nullptr) return false;
  const auto key = now->keyMap.find(button);
  if (key == now->keyMap.end()) return false;
  const Cam3DControllerKeyID id = key->second;
  SetEnabled(false);
  if (now) Keys::Act(*this, id);
  if (now) SetEnabled(true);
  now.TellObservers([id](Cam3DControllerObserver& each) { each.OnKeyDown(id); });
  return true;
}

bool Cam3DController::On3DControllerKeyUp(int button) {
  const Staying now(parts);
  const auto key = now->keyMap.find(button);
  if (!GetEnabled() || key == now->keyMap.end()) return false;
  const Cam3DControllerKeyID id = key->second;
  now.TellObservers([id](Cam3DControllerObserver& each) { each.OnKeyUp(id); });
  return true;
}

// ---- camera moves ----

// The record closes when the shot of the move ends. Where the move begins none it closes at once, and a shot
// that ran before stays with whoever watches it. Whoever hears of it may put all of that away, or begin
// another command, which then has the shot.
template <class Begin>
bool Cam3DController::Record(const Begin& begin) {
  const Staying now(parts);
  CameraOperations* const hub = now->partners.hub.Get();
  if (hub == nullptr) return false;
  const CameraParameters camera = QueryCamera(*hub);
  if (!now || now->partners.hub.Get() != hub) return false;
  RewindRecord record;
  record.Begin(now->partners.history.Get(), camera);
  const auto isOwn = [&] { return now && now->IsOwnCommand(*hub, record); };
  if (!isOwn()) {
    record.End(camera);
    return false;
  }
  bool begun = false;
  if (now->rewindShotObserver.Watch(
          *hub, [&] { begun = begin(*hub); }, isOwn)) {
    RewindRecord unwatched(std::exchange(now->commandRecord, std::move(record)));  // of a move taken over
    unwatched.End(hub);
  } else {
    record.End(hub);
  }
  return begun;
}

bool Cam3DController::AlignToView(CameraDirection direction) {
  if (static_cast<unsigned>(direction) >= Side::DIRECTION_COUNT) return false;
  return Record([direction](CameraOperations& hub) { return hub.BeginShot(MakeAlignShot(direction, 0.0)); });
}

bool Cam3DController::FitToView() {
  const Staying now(parts);
  const bool begun = Record([](CameraOperations& hub) { return hub.FitAllToView(); });
  const CameraOperations* const hub = now->partners.hub.Get();
  if (!now || hub == nullptr) return begun;
  const CameraParameters camera = QueryCamera(*hub);
  if (PivotBall* const ball = now->partners.ball.Get()) ball->SetPosition(camera.pivot);
  if (PivotBall* const ball = now->partners.ball.Get()) ball->UpdateSize(camera);
  return begun;
}

bool Cam3DController::GoToHomeView() {
  return Record([](CameraOperations& hub) { return hub.BeginShot(MakeTransition(hub.GetHomeCamera())); });
}

bool Cam3DController::RotateView(double degrees) {
  const Staying now(parts);
  const int direction = GetAlignDir();
  if (!now) return false;
  return Record([&](CameraOperations& hub) { return hub.BeginShot(MakeAlignShot(direction, degrees)); });
}

bool Cam3DController::StepHistory(bool forward) {
  const Staying now(parts);
  RewindHistory* const history = now->partners.history.Get();
  if (now->partners.hub.Get() == nullptr || history == nullptr) return false;
  const bool shifted = forward ? history->ShiftForwardOneElement() : history->ShiftBackOneElement();
  CameraOperations* const hub = now->partners.hub.Get();
  CameraParameters camera;
  if (!shifted || !now || hub == nullptr || now->partners.history.Get() != history) return false;
  if (!history->GetTransitionCamera(camera)) return false;
  if (ShouldKeepSceneUpright()) {
    AlignCameraToUpDirection(camera, hub->GetApplicationParameters().scene_up_direction);
  }
  return hub->BeginShot(MakeTransition(camera));
}

int Cam3DController::GetAlignDir() const {
  const CameraOperations* const hub = parts->partners.hub.Get();
  if (hub == nullptr) return -1;
  const Vector3 up = hub->GetWorldUpDirection().Normalized();
  const Vector3 front = hub->GetWorldFrontDirection().Normalized();
  const Vector3 view = ViewDirection(QueryCamera(*hub));
  const struct {
    Vector3 axis;
    int along;
    int against;
  } rows[] = {
      {up, Side::CAMERA_BOTTOM, Side::CAMERA_TOP},
      {front, Side::CAMERA_BACK, Side::CAMERA_FRONT},
      {front.Cross(up), Side::CAMERA_OPPOSITE_SIDE, Side::CAMERA_SIDE},
  };
  for (const auto& row : rows) {
    const double cosine = view.Dot(row.axis);
    if (IsAlong(cosine)) return row.along;
    if (IsAlong(-cosine)) return row.against;
  }
  return -1;
}

}  // namespace Korvane
