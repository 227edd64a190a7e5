// A step of each interactive move, and a frame in which nothing moves.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <utility>

#include "bare_operations.h"
#include "benchmark_case.h"
#include "benchmark_hub.h"
#include "conversions.h"
#include "cursor_path.h"
#include "simplest_moves.h"

using namespace Korvane;

namespace {

BareSettings ToBare(const ApplicationParameters& p) {
  BareSettings bare;
  bare.width = p.viewport_width;
  bare.height = p.viewport_height;
  bare.up = ::ToBare(p.scene_up_direction);
  bare.front = ::ToBare(p.scene_front_direction);
  bare.orbitMultiplier = p.orbit_multiplier;
  bare.snapping = p.do_snap_orbit;
  bare.deadZone = p.snap_orbit_dead_zone;
  bare.horizontalSnap = {p.snap_orbit_threshold_h, p.snap_orbit_acceleration_ax, p.snap_orbit_acceleration_bx,
                         p.snap_orbit_acceleration_point_x};
  bare.verticalSnap = {p.snap_orbit_threshold_v, p.snap_orbit_acceleration_ay, p.snap_orbit_acceleration_by,
                       p.snap_orbit_acceleration_point_y};
  bare.panMultiplier = p.pan_multiplier;
  bare.zoomSensitivity = p.zoom_sensitivity;
  bare.zoomMinLimit = p.zoom_min_limit;
  bare.zoomBackDistance = p.zoom_back_distance;
  bare.zoomOutSnapSize = p.zoom_out_snap_size;
  return bare;
}

// The hub and the bare camera of a case. Neither side sees the other's.
class FrameCase : public BenchmarkCase {
 public:
  void Restart() override {
    hub = std::make_unique<BenchmarkHub>();
    ApplicationParameters& parameters = hub->GetApplicationParameters();
    parameters.preserve_orbit_up_direction = true;
    parameters.align_orbit_up_direction = false;
    Configure(parameters);
    settings = ToBare(parameters);
    hub->view = GetBenchmarkCamera();
    bareView = ::ToBare(hub->view);
    libraryPath.Restart();
    barePath.Restart();
    Begin();
  }

  bool Agrees() const override {
    // A chain of sums and products of lengths around 20, over a few hundred steps.
    const double tolerance = 1e-9;
    const CameraParameters& view = hub->view;
    return (::ToBare(view.eye) - bareView.eye).norm() < tolerance &&
           (::ToBare(view.centre) - bareView.centre).norm() < tolerance &&
           (::ToBare(view.up) - bareView.up).norm() < tolerance &&
           std::abs(view.ortho_width - bareView.orthoWidth) < tolerance &&
           std::abs(view.ortho_height - bareView.orthoHeight) < tolerance;
  }

 protected:
  virtual void Configure(ApplicationParameters& /*parameters*/) {}
  virtual void Begin() = 0;

  void StepHub(OperationType type) {
    const BareCursor cursor = libraryPath.Next();
    hub->UpdateOperationParams(cursor.x, cursor.y, type);
    hub->PerformOperations();
    benchmark::DoNotOptimize(std::as_const(hub->view));
  }

  std::unique_ptr<BenchmarkHub> hub;
  BareSettings settings;
  BareCamera bareView;
  CursorPath libraryPath;
  CursorPath barePath;
};

// The compiler must take it that the record has been read and changed.
void Forget(BareCamera& camera) {
  benchmark::DoNotOptimize(&camera);
  benchmark::ClobberMemory();
}

// `Bare` is the bare move. Its frame, as the hub's, reads the host's camera, moves it, and writes it back
// only when that made a difference.
template <class Bare, class Simplest>
class MoveCase : public FrameCase {
 public:
  void StepLibrary() override { StepHub(GetType()); }
  void StepBare() override {
    BareCamera camera = bareView;
    const BareCamera snapshot = camera;
    bare->Step(barePath.Next(), camera);
    if (!IsSameView(camera, snapshot)) bareView = camera;
    Forget(bareView);
  }
  SimplestMove* GetSimplest() override { return &simplest; }

 protected:
  virtual OperationType GetType() const = 0;
  virtual Bare MakeBare() const = 0;

  void Begin() override {
    hub->BeginOperation(GetType(), CursorPath::START.x, CursorPath::START.y);
    bare.reset(new Bare(MakeBare()));
  }

  std::unique_ptr<Bare> bare;
  Simplest simplest;
};

class OrbitCase : public MoveCase<BareOrbit, SimplestOrbit> {
 public:
  explicit OrbitCase(bool withSnapping) : snapping(withSnapping) {}
  std::string GetName() const override { return snapping ? "orbit step, snapping" : "orbit step"; }
  SimplestMove* GetSimplest() override { return snapping ? nullptr : MoveCase::GetSimplest(); }

 protected:
  void Configure(ApplicationParameters& parameters) override { parameters.do_snap_orbit = snapping; }
  OperationType GetType() const override { return OPERATION_ORBIT; }
  BareOrbit MakeBare() const override { return BareOrbit(settings, bareView, CursorPath::START); }

 private:
  bool snapping;
};

class PanCase : public MoveCase<BarePan, SimplestPan> {
 public:
  std::string GetName() const override { return "pan step"; }

 protected:
  OperationType GetType() const override { return OPERATION_PAN; }
  BarePan MakeBare() const override { return BarePan(settings, CursorPath::START); }
};

class ZoomCase : public MoveCase<BareZoom, SimplestZoom> {
 public:
  std::string GetName() const override { return "zoom step"; }

 protected:
  OperationType GetType() const override { return OPERATION_ZOOM; }
  BareZoom MakeBare() const override { return BareZoom(settings, bareView, CursorPath::START); }
};

// The bare side of a frame without motion: the host's camera is read, and compared with what it was.
class IdleCase : public FrameCase {
 public:
  std::string GetName() const override { return "idle frame"; }
  double GetAimInNanoseconds() const override { return 40.0; }
  void StepLibrary() override {
    libraryMoved = hub->PerformOperations();
    benchmark::DoNotOptimize(std::as_const(libraryMoved));
  }
  void StepBare() override {
    BareCamera camera = bareView;
    Forget(camera);
    BareCamera snapshot = camera;
    Forget(snapshot);
    bareMoved = !IsSameView(camera, snapshot);
    benchmark::DoNotOptimize(std::as_const(bareMoved));
  }
  bool Agrees() const override { return FrameCase::Agrees() && !libraryMoved && !bareMoved; }

 protected:
  void Begin() override {}

 private:
  bool libraryMoved = true;
  bool bareMoved = true;
};

}  // namespace

std::vector<BenchmarkCase*> GetFrameCases() {
  static OrbitCase orbit(false);
  static OrbitCase snappingOrbit(true);
  static PanCase pan;
  static ZoomCase zoom;
  static IdleCase idle;
  return {&orbit, &snappingOrbit, &pan, &zoom, &idle};
}
