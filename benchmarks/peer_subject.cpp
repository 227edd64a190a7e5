// The library as a subject of a harness that times peers side by side; docs/performance.md tells how it is
// built. It goes the way of a host: through the hub, the wheel's tool and the cube.
#include <cmath>
#include <cstdint>

#include "harness.hpp"
#include "korvane/korvane.h"
#include "support/recording_renderer.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Vector3;

constexpr int FRAME_MILLISECONDS = 17;
constexpr int WHEEL_NOTCH = 120;
constexpr double SCENE_RADIUS = 3.75;  // about the box of the harness

// Frames come at their own time, not at that of the machine.
class StepClock : public Korvane::Platform {
 public:
  StepClock() { Korvane::SetPlatform(this); }
  std::uint32_t GetTickCount() override { return now; }
  std::uint64_t SetTimer(std::uint32_t /*milliseconds*/, Korvane::TimerProc /*callback*/) override {
    return 1;
  }
  bool KillTimer(std::uint64_t /*timer*/) override { return true; }
  void Advance() { now += FRAME_MILLISECONDS; }

 private:
  std::uint32_t now = 1000;
};
StepClock& GetClock() {
  static StepClock clock;
  return clock;
}

class View : public Korvane::CameraOperations {
 public:
  void ApplyCameraParameters(const CameraParameters& moved) override { camera = moved; }
  void QueryCameraParameters(CameraParameters& now) const override { now = camera; }
  void RequestApplicationUpdate() override {}

  CameraParameters camera;
};

// Keeps no record of what it is asked to draw.
class SilentRenderer : public RecordingRenderer {
 public:
  using RecordingRenderer::Render;
  bool BeginRender(const Korvane::Box2& /*box*/, const CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    return true;
  }
  bool EndRender() override { return true; }
  bool Render(Korvane::ResourceIcon3D* /*icon*/) override { return true; }
  bool Render(Korvane::DynamicIcon2D* /*icon*/) override { return true; }
  bool Render(Korvane::ResourceIcon2D* /*icon*/) override { return true; }
  bool RenderGeometry(unsigned /*count*/, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    return true;
  }
  bool SetCursorIcon(Korvane::CursorID /*id*/) override { return true; }
  bool QueryRaySceneIntersection(const Vector3& /*origin*/, const Vector3& /*direction*/,
                                 Vector3& /*point*/) override {
    return false;
  }
};

Vector3 ToVector(const wl::V3& v) { return {v.x, v.y, v.z}; }
wl::V3 FromVector(const Vector3& v) { return {v.x, v.y, v.z}; }

CameraParameters ToCamera(const wl::Look& look) {
  CameraParameters camera;
  camera.eye = ToVector(look.eye);
  camera.centre = camera.pivot = ToVector(look.target);
  camera.up = ToVector(look.up);
  camera.top_fov = camera.bottom_fov = wl::kFovYDeg / 2;
  camera.left_fov = camera.right_fov = std::atan(std::tan(wl::kFovY / 2) * wl::kAspect) * 180 / wl::kPi;
  return camera;
}

template <bool SNAPPING>
class Subject {
 public:
  Subject() {
    GetClock();
    Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
    parameters.viewport_width = wl::kWidth;
    parameters.viewport_height = wl::kHeight;
    parameters.do_snap_orbit = SNAPPING;
    hub.SetSceneBoundingSphere(SCENE_RADIUS, Vector3::Zero);
    wheel.SetKorvane(&hub);
    wheel.SetRenderer(&renderer);
    cube.SetKorvane(&hub);
    cube.SetRenderer(&renderer);
    cube.SetViewportSize(wl::kWidth, wl::kHeight);
  }

  void reset(const wl::Look& look) {
    hub.EndOperation(Korvane::OPERATION_ALL);
    hub.EndShot();
    hub.camera = ToCamera(look);
    hub.PerformOperations();
  }
  void orbit_begin(wl::Px at) { hub.BeginOperation(Korvane::OPERATION_ORBIT, at.x, at.y); }
  wl::Look orbit_step(wl::Px at) { return Step(Korvane::OPERATION_ORBIT, at); }
  void orbit_end(wl::Px /*at*/) { hub.EndOperation(Korvane::OPERATION_ORBIT); }

 protected:
  wl::Look Step(Korvane::OperationType type, wl::Px at) {
    hub.UpdateOperationParams(at.x, at.y, type);
    return Frame();
  }
  wl::Look Frame() {
    GetClock().Advance();
    hub.PerformOperations();
    return {FromVector(hub.camera.eye), FromVector(hub.camera.centre), FromVector(hub.camera.up)};
  }

  View hub;
  SilentRenderer renderer;
  Korvane::MouseWheelZoomTool wheel;
  Korvane::Orientor cube;
};

class Zovtools : public Subject<false> {
 public:
  static constexpr const char* name = "zovtools";

  void pan_begin(wl::Px at) { hub.BeginOperation(Korvane::OPERATION_PAN, at.x, at.y); }
  wl::Look pan_step(wl::Px at) { return Step(Korvane::OPERATION_PAN, at); }
  void pan_end(wl::Px /*at*/) { hub.EndOperation(Korvane::OPERATION_PAN); }

  wl::Look zoom_step(wl::Px at, int notches) {
    wheel.OnMouseWheel(at.x, wl::kHeight - at.y - 1, WHEEL_NOTCH * notches);
    return Frame();
  }

  void move_begin(const wl::Look& from, const wl::Look& to, double seconds) {
    hub.camera = ToCamera(from);
    Korvane::TransitionShotParameters transition;
    transition.targetCamera = ToCamera(to);
    transition.easeEnd = 1.0;
    transition.duration = seconds;
    hub.BeginShot(transition);
    hub.PerformOperations();
  }
  wl::Look move_frame(int /*frame*/, double /*seconds*/) { return Frame(); }

  wl::Look fit(const wl::Box& box) {
    const Vector3 least = ToVector(box.min);
    const Vector3 greatest = ToVector(box.max);
    const Vector3 centre = (least + greatest) * 0.5;
    CameraParameters fitted = hub.camera;
    const bool isFitted = hub.FitBoundingBoxToView(centre, Korvane::Box3(centre, (greatest - least) * 0.5),
                                                   fitted.centre - fitted.eye, fitted.up, fitted);
    const CameraParameters& shown = isFitted ? fitted : hub.camera;
    return {FromVector(shown.eye), FromVector(shown.centre), FromVector(shown.up)};
  }

  int hit(wl::Px at) {
    cube.OnMouseMove(at.x, at.y);
    cube.SetViewportMousePosition(at.x, at.y);
    return cube.GetActiveGeometryPart();
  }

  wl::Look idle_frame(double /*seconds*/) { return Frame(); }
};

class ZovtoolsSnapping : public Subject<true> {
 public:
  static constexpr const char* name = "zovtools_snapping";
};

REGISTER_SUBJECT(Zovtools);
REGISTER_SUBJECT(ZovtoolsSnapping);

}  // namespace
