// Where a click takes the view.
#include "cube/orientor_parts.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"

namespace Korvane {

namespace {

constexpr double ROLL_STEP = 90.0;          // degrees
constexpr double COMPASS_PAN_ANGLE = 90.0;  // degrees by which the letters stand off their directions

void SetDirection(ViewAlignShotParameters& shot, const Vector3& part) {
  shot.directionFlags[ViewAlignShotParameters::CAMERA_FRONT] = part.x == 1.0;
  shot.directionFlags[ViewAlignShotParameters::CAMERA_BACK] = part.x == -1.0;
  shot.directionFlags[ViewAlignShotParameters::CAMERA_TOP] = part.y == 1.0;
  shot.directionFlags[ViewAlignShotParameters::CAMERA_BOTTOM] = part.y == -1.0;
  shot.directionFlags[ViewAlignShotParameters::CAMERA_SIDE] = part.z == 1.0;
  shot.directionFlags[ViewAlignShotParameters::CAMERA_OPPOSITE_SIDE] = part.z == -1.0;
}

// What is laid out along the axes of the world, in the standard space of the scene.
Vector3 FromWorldAxes(const ApplicationParameters& scene, const Vector3& v) {
  return ChangeBasis(scene.scene_front_direction, scene.scene_up_direction,
                     ChangeInverseBasis(scene.world_front_direction, scene.world_up_direction, v));
}

}  // namespace

bool Orientor::StartTransition() {
  if (parts->partners.hub.Get() == nullptr || parts->closing) return false;
  if (IsMouseOnGeometryPart()) {
    TurnToActivePart();
    return true;
  }
  switch (GetActiveOverlayPart()) {
    case OVERLAY_ROTATE_COUNTER_CLOCKWISE:
    case OVERLAY_ROTATE_CLOCKWISE:
      RollView();
      return true;
    case OVERLAY_HOME:
      GoToHomeView();
      return true;
    case OVERLAY_LOCK:
      LockToCurrentSelection(true);
      break;
    case OVERLAY_CONTEXT_MENU:
      (void)OpenMenu();  // opened or not, no camera has set out
      break;
    default:
      if (!parameters.draw_ucs_menu || parts->mouse.activeOverlayPart != OVERLAY_UCS_MENU) return false;
      OpenUCSMenu();
      break;
  }
  Update(true);
  return false;
}

// What every click on the cube asks of the move.
ViewAlignShotParameters Orientor::MakeViewShot() const {
  ViewAlignShotParameters shot;
  shot.duration = parameters.transition_duration;
  shot.fit = parameters.zoom_to_fit_scene || parts->IsLockedToSelection();
  shot.keepSceneUp = parameters.use_preserve_scene_up_on_click ? parameters.preserve_scene_up_on_click
                                                               : parameters.preserve_scene_up;
  return shot;
}

// The letters stand by the world, which the scene may be turned against.
void Orientor::TurnToActivePart() {
  CameraOperations& hub = *parts->partners.hub.Get();
  const int part = parts->mouse.activePart;
  ViewAlignShotParameters shot = MakeViewShot();
  if (part < GEOMETRY_PART_COUNT) {
    SetDirection(shot, GetPartDirection(part));
  } else {
    shot.keepSceneUp = shot.useCustom = true;
    shot.customDirection = FromWorldAxes(hub.GetApplicationParameters(), GetPartDirection(part)).Normalize();
    shot.customUp = hub.GetWorldUpDirection();
    shot.customFront = hub.GetWorldFrontDirection();
    shot.panAngle = parameters.compass_angle + COMPASS_PAN_ANGLE;
  }
  BeginTransition(hub, shot);
  parts->mouse.highlightedPart = parts->mouse.activePart;
}

// In two of the corners the pictures of the arrows are mirrored, and so is what they do.
void Orientor::RollView() {
  CameraOperations& hub = *parts->partners.hub.Get();
  const bool mirrored = parameters.screen_location == OrientorParameters::LOCATION_BOTTOM_RIGHT ||
                        parameters.screen_location == OrientorParameters::LOCATION_TOP_LEFT;
  const bool counterClockwise = parts->mouse.activeOverlayPart == OVERLAY_ROTATE_COUNTER_CLOCKWISE;
  ViewAlignShotParameters shot = MakeViewShot();
  SetDirection(shot, GetClosestViewDirection());
  shot.rollAngle = counterClockwise != mirrored ? ROLL_STEP : -ROLL_STEP;
  BeginTransition(hub, shot);
}

void Orientor::GoToHomeView() {
  CameraOperations* const hub = parts->partners.hub.Get();
  if (hub == nullptr || !parameters.visible) return;
  TransitionShotParameters shot;
  shot.targetCamera = hub->GetHomeCamera();
  shot.easeEnd = 1.0;
  shot.duration = parameters.transition_duration;
  BeginTransition(*hub, shot);
}

// `hub` is the one that the shot was made for, and is taken away when the host does so while asked about it.
// Whether it takes the shot is not looked at: the move counts as begun either way.
template <class ShotParameters>
void Orientor::BeginTransition(CameraOperations& hub, const ShotParameters& shot) {
  if (parts->closing || parts->partners.hub.Get() != &hub) return;
  hub.BeginShot(shot);
  if (parts->partners.hub.Get() != &hub) return;  // taken away meanwhile
  const bool watching = hub.SetActiveShotObserver(&parts->transitionObserver);
  parts->transitionObserver.SetWatching(watching);
  OnTransitionStarted();
}

// The move goes on without the cube; its record ends here.
void Orientor::LeaveMove() {
  if (!parts->transitionObserver.IsWatching()) return;
  parts->transitionObserver.Drop();
  OnTransitionEnded();
}

void Orientor::OnTransitionStarted() {
  const CameraOperations* const hub = parts->partners.hub.Get();
  if (hub != nullptr)
    parts->transitionRecord.Begin(parts->partners.history.Get(), hub->GetCameraParameters());
}

void Orientor::OnTransitionEnded() {
  const CameraOperations* const hub = parts->partners.hub.Get();
  if (hub != nullptr) parts->transitionRecord.End(hub->GetCameraParameters());
}

void Orientor::AlignToOrbitUpDirection() {
  CameraOperations* const hub = parts->partners.hub.Get();
  if (!parameters.preserve_scene_up || hub == nullptr) return;
  (void)hub->AlignToSceneUpDirection(parameters.transition_duration);  // or nothing to straighten
}

void Orientor::InjectClick(int part) {
  CubeMouse& mouse = parts->mouse;
  mouse.activePart = mouse.activeOverlayPart = -1;
  if (part >= 0 && part < GEOMETRY_PART_COUNT) {
    mouse.activePart = part;
  } else if (part >= OrientorObserver::PART_COMPASS_FRONT && part <= OrientorObserver::PART_COMPASS_RIGHT) {
    mouse.activePart = COMPASS_LETTERS_BEGIN + (part - OrientorObserver::PART_COMPASS_FRONT);
  } else if (part >= OrientorObserver::PART_ROTATE_COUNTER_CLOCKWISE &&
             part <= OrientorObserver::PART_CONTEXT_MENU) {
    mouse.activeOverlayPart = part - OrientorObserver::PART_ROTATE_COUNTER_CLOCKWISE;
  }
  StartTransition();
}

}  // namespace Korvane
