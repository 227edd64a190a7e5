// The hub under calls, cameras and settings made of arbitrary bytes. Whatever comes in, nothing crashes,
// nothing loops, and no camera that is not finite reaches the host.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "fuzz/fuzz_input.h"
#include "korvane/korvane.h"

namespace {

using Korvane::ApplicationParameters;
using Korvane::CameraParameters;
using Korvane::Vector3;

// Time passes when the bytes say so, for the moves that depend on it.
class Clock : public Korvane::Platform {
 public:
  Clock() { Korvane::SetPlatform(this); }
  ~Clock() override { Korvane::SetPlatform(nullptr); }
  std::uint32_t GetTickCount() override { return now; }
  std::uint64_t SetTimer(std::uint32_t /*milliseconds*/, Korvane::TimerProc /*proc*/) override { return 0; }
  bool KillTimer(std::uint64_t /*timerID*/) override { return false; }

  std::uint32_t now = 1;
};

class Hub : public Korvane::CameraOperations {
 public:
  void ApplyCameraParameters(const CameraParameters& moved) override {
    if (!moved.IsFinite()) std::abort();
    shown = moved;
  }
  void QueryCameraParameters(CameraParameters& now) const override { now = shown; }
  void RequestApplicationUpdate() override { frameWanted = true; }

  Clock clock;
  CameraParameters shown;
  bool frameWanted = false;
};

void SetCamera(Hub& hub, Input& input) {
  CameraParameters& camera = hub.shown;
  for (Vector3* vector : {&camera.eye, &camera.centre, &camera.up, &camera.pivot}) {
    *vector = input.TakeVector();
  }
  for (double* number : {&camera.left_fov, &camera.right_fov, &camera.top_fov, &camera.bottom_fov,
                         &camera.ortho_width, &camera.ortho_height, &camera.projection_transition}) {
    *number = input.TakeDouble();
  }
  const auto bits = input.Take<std::uint8_t>();
  camera.projection_type = static_cast<CameraParameters::ProjectionType>(bits & 1U);
  camera.perspective_with_ortho = (bits & 2U) != 0;
}

void SetNumbers(Hub& hub, Input& input) {
  ApplicationParameters& p = hub.GetApplicationParameters();
  double* const numbers[] = {
      &p.fly_turn_multiplier,       &p.fly_ramp_up_radius,        &p.fly_up_down_sensitivity,
      &p.look_invert_tolerance,     &p.look_multiplier,           &p.dolly_multiplier,
      &p.height_multiplier,         &p.slide_multiplier,          &p.scene_scale,
      &p.global_bound_radius,       &p.ucs_bound_radius,          &p.pan_multiplier,
      &p.orbit_multiplier,          &p.zoom_sensitivity,          &p.zoom_min_limit,
      &p.zoom_back_distance,        &p.zoom_min_limit_multiplier, &p.snap_orbit_dead_zone,
      &p.snap_orbit_threshold_h,    &p.snap_orbit_threshold_v,    &p.snap_orbit_acceleration_ax,
      &p.snap_orbit_acceleration_by};
  *numbers[input.Take<std::uint8_t>() % std::size(numbers)] = input.TakeDouble();
}

void SetSwitches(Hub& hub, Input& input) {
  ApplicationParameters& p = hub.GetApplicationParameters();
  bool* const switches[] = {&p.preserve_orbit_up_direction,
                            &p.align_orbit_up_direction,
                            &p.constrain_orbit_horizontal,
                            &p.constrain_orbit_vertical,
                            &p.do_custom_orbit,
                            &p.do_snap_orbit,
                            &p.scene_is_world,
                            &p.use_projection_transitions,
                            &p.zoom_sense_reversed,
                            &p.zoom_min_limit_motion,
                            &p.fly_planar_motion,
                            &p.look_invert_vertical_axis,
                            &p.lock_to_selection};
  const auto bits = input.Take<std::uint16_t>();
  for (std::size_t i = 0; i < std::size(switches); ++i) *switches[i] = ((bits >> i) & 1U) != 0;
}

void SetDirections(Hub& hub, Input& input) {
  ApplicationParameters& p = hub.GetApplicationParameters();
  Vector3* const directions[] = {&p.scene_up_direction,    &p.scene_front_direction, &p.world_up_direction,
                                 &p.world_front_direction, &p.custom_orbit_up,       &p.custom_orbit_front,
                                 &p.global_bound_centre,   &p.ucs_bound_centre};
  *directions[input.Take<std::uint8_t>() % std::size(directions)] = input.TakeVector();
}

void SetViewport(Hub& hub, Input& input) {
  hub.GetApplicationParameters().viewport_width = input.TakeInt();
  hub.GetApplicationParameters().viewport_height = input.TakeInt();
}

void SetWalk(Hub& hub, Input& input) {
  ApplicationParameters& p = hub.GetApplicationParameters();
  p.fly_dead_zone_radius = input.TakeInt();
  p.cam3d_controller_mode =
      static_cast<Korvane::Cam3DControllerParameters::NavigationMode>(input.Take<std::uint8_t>() % 6 - 1);
  const double initial = input.TakeDouble();
  const double final = input.TakeDouble();
  p.ChangeFlyMoveMultiplierInTime(initial, final, input.TakeDouble());
}

void Begin(Hub& hub, Input& input) {
  const int x = input.TakeInt();
  hub.BeginOperation(input.TakeOperation(), x, input.TakeInt());
}

void End(Hub& hub, Input& input) { hub.EndOperation(input.TakeOperation()); }

void Move(Hub& hub, Input& input) {
  const int x = input.TakeInt();
  const int y = input.TakeInt();
  hub.UpdateOperationParams(x, y, input.TakeOperation());
}

// A step that stays within a screen, where most of the arithmetic is.
void MoveOnScreen(Hub& hub, Input& input) {
  const int x = input.Take<std::int16_t>();
  const int y = input.Take<std::int16_t>();
  hub.UpdateOperationParams(x, y, Korvane::OPERATION_ALL);
}

void Push(Hub& hub, Input& input) {
  const Vector3 translation = input.TakeVector();
  const Vector3 rotation = input.TakeVector();
  hub.UpdateOperationParams(translation, rotation, input.TakeOperation());
}

void PressKey(Hub& hub, Input& input) {
  const auto bits = input.Take<std::uint8_t>();
  hub.UpdateOperationParams(static_cast<Korvane::KeyID>(bits % 7), (bits & 128U) != 0, input.TakeOperation());
}

void Mark(Hub& hub, Input& input) {
  const auto bits = input.Take<std::uint8_t>();
  Korvane::Operation* const operation = hub.GetActiveOperation(input.TakeOperation());
  if (operation == nullptr) return;
  operation->Set3DControllerOperation((bits & 1U) != 0);
  operation->SetCombined((bits & 2U) != 0);
}

void Wait(Hub& hub, Input& input) { hub.clock.now += input.Take<std::uint16_t>(); }

void Select(Hub& hub, Input& input) {
  const double radius = input.TakeDouble();
  hub.SetGeometrySelection(radius, input.TakeVector());
}

void Frame(Hub& hub, Input& /*input*/) { hub.PerformOperations(); }

using Step = void (*)(Hub&, Input&);
constexpr Step STEPS[] = {&SetCamera,    &SetNumbers, &SetSwitches,  &SetDirections, &SetViewport, &Begin,
                          &End,          &Move,       &MoveOnScreen, &Push,          &Select,      &Frame,
                          &MoveOnScreen, &Frame,      &SetWalk,      &PressKey,      &Mark,        &Wait};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  Input input(bytes, count);
  Hub hub;
  hub.shown = hub.GetHomeCamera();
  while (!input.IsEmpty()) STEPS[input.Take<std::uint8_t>() % std::size(STEPS)](hub, input);
  hub.EndOperation(Korvane::OPERATION_ALL);
  hub.PerformOperations();
  return 0;
}
