// A step of each shot. A shot is begun once and then taken back and forth, so that a run of any length stays
// within the move.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <memory>
#include <utility>

#include "bare_turn.h"
#include "benchmark_case.h"
#include "benchmark_hub.h"
#include "conversions.h"
#include "simplest_moves.h"
#include "support/manual_platform.h"

using namespace Korvane;

namespace {

using Eigen::AngleAxisd;
using Eigen::Matrix3d;
using Eigen::Vector3d;

constexpr double DURATION = 2.0;
constexpr double STEP = 1.0 / 64.0;  // exact, so that the way back ends where it began
constexpr int STEPS_ONE_WAY = 127;   // the last one stands before the end
// A move that no run comes to the end of, within what the clock counts in.
constexpr double LONG_DURATION = 4e6;

const Vector3 UP(0.0, 1.0, 0.0);
const Vector3 POINT(2.0, 1.5, -1.0);
const Vector3d SCENE_UP = ToBare(UP);

// Where a shot must have put the camera.
struct Expected {
  Vector3d eye;
  Vector3d direction;  // of the view, any length
  double transition = -1.0;
};

// The axes of the start, from its record: `up` is the record's own, of unit length but not perpendicular.
struct Start {
  BareCamera camera = ToBare(GetBenchmarkCamera());
  Vector3d forward = (camera.centre - camera.eye).normalized();
  Vector3d right = forward.cross(camera.up).normalized();
  Vector3d upright = right.cross(forward);
  Vector3d up = camera.up;
  double distance = (camera.centre - camera.eye).norm();

  Matrix3d Axes() const { return MakeAxes(forward, up); }
  static Matrix3d MakeAxes(const Vector3d& forward, const Vector3d& up) {
    const Vector3d right = forward.cross(up).normalized();
    Matrix3d axes;
    axes << forward, right.cross(forward), right;
    return axes;
  }
};

// The library turns against the right-hand rule.
Vector3d Turn(const Vector3d& axis, double degrees, const Vector3d& v) {
  return AngleAxisd(-degrees * Math::DEG_TO_RAD, axis.normalized()) * v;
}

Matrix3d TurnBetween(const Matrix3d& from, const Matrix3d& to, double t) {
  return Eigen::Quaterniond(from).slerp(t, Eigen::Quaterniond(to)).toRotationMatrix();
}

double Mix(double t, double a, double b) { return (1.0 - t) * a + t * b; }
Vector3d Mix(double t, const Vector3d& a, const Vector3d& b) { return (1.0 - t) * a + t * b; }

// ---- the shots: what begins each, and where it must be at a part of its way ----

CameraParameters GetTarget() {
  CameraParameters target = GetBenchmarkCamera();
  target.eye = Vector3(-6.0, 4.0, 3.0);
  target.centre = Vector3(0.0, 1.0, 0.5);
  return target;
}

bool BeginTransition(BenchmarkHub& hub, double duration) {
  TransitionShotParameters p;
  p.targetCamera = GetTarget();
  p.easeEnd = 1.0;
  p.duration = duration;
  return hub.BeginShot(p);
}
bool BeginTransition(BenchmarkHub& hub) { return BeginTransition(hub, DURATION); }
bool BeginLongTransition(BenchmarkHub& hub) { return BeginTransition(hub, LONG_DURATION); }
Expected ExpectTransition(const Start& start, double t) {
  const BareCamera target = ToBare(GetTarget());
  const Vector3d view = target.centre - target.eye;
  const Matrix3d axes = TurnBetween(start.Axes(), Start::MakeAxes(view.normalized(), target.up), t);
  const Vector3d centre = Mix(t, start.camera.centre, target.centre);
  return {centre - axes.col(0) * Mix(t, start.distance, view.norm()), axes.col(0)};
}

bool BeginViewAlign(BenchmarkHub& hub) {
  ViewAlignShotParameters p;
  p.directionFlags[ViewAlignShotParameters::CAMERA_FRONT] = true;
  p.directionFlags[ViewAlignShotParameters::CAMERA_TOP] = true;
  p.keepSceneUp = true;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
// The pivot stays where it is, also in the picture.
Expected ExpectViewAlign(const Start& start, double t) {
  const Vector3d front(1.0, 0.0, 0.0);
  const Matrix3d to = Start::MakeAxes(-(front + SCENE_UP).normalized(), SCENE_UP);
  const Matrix3d axes = TurnBetween(start.Axes(), to, t);
  const Vector3d toPivot = start.Axes().transpose() * (start.camera.pivot - start.camera.eye);
  return {start.camera.pivot - axes * toPivot, axes.col(0)};
}

bool BeginClosestViewAlign(BenchmarkHub& hub) {
  ClosestViewAlignShotParameters p;
  p.threshold = 10.0;  // reaches every view
  return hub.BeginShot(p);
}
// The nearest of the 26 to a view from (8, 6.5, 14) is the corner; the pivot stays in the picture.
Expected ExpectClosestViewAlign(const Start& start, double) {
  const Vector3d corner = -Vector3d(1.0, 1.0, 1.0).normalized();
  const Vector3d offset = start.camera.centre - start.camera.pivot;
  const Vector3d across = start.up.cross(start.forward).normalized();
  const Vector3d below = across.cross(start.forward).normalized();
  const Vector3d newAcross = start.up.cross(corner).normalized();
  const Vector3d newBelow = newAcross.cross(corner).normalized();
  const double depth = (start.camera.pivot - start.camera.eye).dot(start.forward);
  return {start.camera.pivot + newAcross * offset.dot(across) + newBelow * offset.dot(below) - corner * depth,
          corner};
}

bool BeginCenter(BenchmarkHub& hub) {
  CenterShotParameters p;
  p.point = POINT;
  p.easeEnd = 1.0;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectCenter(const Start& start, double t) {
  const Vector3d point = ToBare(POINT);
  const Vector3d toPoint = point - start.camera.eye;
  const Vector3d target = start.camera.eye + toPoint - start.forward * toPoint.dot(start.forward);
  const Vector3d eye = Mix(t, start.camera.eye, target);
  return {eye, Mix(t, start.camera.centre, point) - eye};
}

bool BeginLookAt(BenchmarkHub& hub) {
  LookAtShotParameters p;
  p.point = POINT;
  p.direction = Vector3(1.0, 0.5, -0.5);
  p.distance = 8.0;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
// The heading and the height of the view go evenly. Heading: about the y axis, from z to x.
Expected ExpectLookAt(const Start& start, double t) {
  const Vector3d toEye = Vector3d(1.0, 0.5, -0.5).normalized();
  const auto heading = [](const Vector3d& v) { return std::atan2(v.x(), v.z()); };
  const double turn = std::remainder(heading(-toEye) - heading(start.forward), 2.0 * Math::PI);
  const double angle = heading(start.forward) + t * turn;
  const double height = Mix(t, std::asin(start.forward.y()), std::asin(-toEye.y()));
  const Vector3d direction(std::cos(height) * std::sin(angle), std::sin(height),
                           std::cos(height) * std::cos(angle));
  return {Mix(t, start.camera.eye, ToBare(POINT) + toEye * 8.0), direction};
}

bool BeginZoomRect(BenchmarkHub& hub) {
  ZoomRectShotParameters p;
  p.sidewaysOffset = 2.0;
  p.upwardOffset = -1.0;
  p.forwardOffset = 6.0;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectZoomRect(const Start& start, double t) {
  return {start.camera.eye + t * (2.0 * start.right - start.up + 6.0 * start.forward), start.forward};
}

bool BeginPanZoom(BenchmarkHub& hub) {
  PanZoomShotParameters p;
  p.sidewaysDistance = 3.0;
  p.upwardDistance = 1.0;
  p.zoomDistance = 5.0;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectPanZoom(const Start& start, double t) {
  return {start.camera.eye + t * (3.0 * start.right + start.up + 5.0 * start.forward), start.forward};
}

bool BeginZoom(BenchmarkHub& hub) {
  ZoomShotParameters p;
  p.amount = 0.4;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectZoom(const Start& start, double t) {
  return {Mix(0.4 * t, start.camera.eye, start.camera.pivot), start.forward};
}

bool BeginProjectionTransition(BenchmarkHub& hub) {
  hub.GetApplicationParameters().use_projection_transitions = true;
  ProjectionTransitionShotParameters p;
  p.targetProjection = ProjectionTransitionShotParameters::PROJECTION_ORTHOGRAPHIC;
  p.easeEnd = 1.0;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectProjectionTransition(const Start& start, double t) {
  return {start.camera.eye, start.forward, std::min(1.0, t + Math::EPSILON_VALUE)};
}

// Eyes on a parabola, which look at one point.
CameraParameters GetKeyframe(int index) {
  CameraParameters keyframe = GetBenchmarkCamera();
  keyframe.eye = Vector3(4.0 * index, 1.0 + 0.5 * index * index, 10.0);
  keyframe.centre = POINT;
  return keyframe;
}
constexpr int KEYFRAME_COUNT = 9;

bool BeginKeyframe(BenchmarkHub& hub) {
  KeyframeShotParameters p;
  for (int i = 0; i < KEYFRAME_COUNT; ++i) p.keyframes.push_back(GetKeyframe(i));
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectKeyframe(const Start&, double t) {
  const double place = t * (KEYFRAME_COUNT - 1);
  const int before = static_cast<int>(place);
  const int after = std::min(before + 1, KEYFRAME_COUNT - 1);
  const Vector3d eye = Mix(place - before, ToBare(GetKeyframe(before).eye), ToBare(GetKeyframe(after).eye));
  return {eye, ToBare(POINT) - eye};
}

bool BeginTrack(BenchmarkHub& hub) {
  TrackShotParameters p;
  p.distance = 5.0;
  p.keepTarget = true;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectTrack(const Start& start, double t) {
  const Vector3d eye = start.camera.eye + start.right * 5.0 * t;
  return {eye, start.camera.centre - eye};
}

bool BeginSpin(BenchmarkHub& hub) {
  SpinShotParameters p;
  p.angle = 120.0;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectSpin(const Start& start, double t) {
  return {start.camera.eye, Turn(SCENE_UP, 120.0 * t, start.forward)};
}

// Both turn the view about the up of the scene and then tilt it.
Vector3d TurnAndTilt(const Start& start, double t) {
  const Vector3d turned = Turn(SCENE_UP, 80.0 * t, start.forward);
  return Turn(turned.cross(SCENE_UP), 25.0 * t, turned);
}

bool BeginOrbit(BenchmarkHub& hub) {
  OrbitShotParameters p;
  p.horizontalAngle = 80.0;
  p.verticalAngle = 25.0;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectOrbit(const Start& start, double t) {
  const Vector3d direction = TurnAndTilt(start, t);
  return {start.camera.centre - direction * start.distance, direction};
}

bool BeginLook(BenchmarkHub& hub) {
  LookShotParameters p;
  p.horizontalAngle = 80.0;
  p.verticalAngle = 25.0;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
Expected ExpectLook(const Start& start, double t) { return {start.camera.eye, TurnAndTilt(start, t)}; }

bool BeginCrane(BenchmarkHub& hub) {
  CraneShotParameters p;
  p.height = 4.0;
  p.sidewaysDistance = 2.0;
  p.forwardRatio = 0.5;
  p.duration = DURATION;
  return hub.BeginShot(p);
}
// Down: a quarter of an ellipse from above, 4 high and 2 deep.
Expected ExpectCrane(const Start& start, double t) {
  const double angle = t * Math::PI / 2.0;
  return {start.camera.eye + start.forward * 2.0 * (1.0 - std::cos(angle)) -
              start.up * 4.0 * std::sin(angle) + start.right * 2.0 * t,
          start.forward};
}

struct ShotRow {
  const char* name;
  bool (*begin)(BenchmarkHub& hub);
  Expected (*expect)(const Start& start, double t);
  bool eased = true;
  double duration = DURATION;
};

constexpr std::array<ShotRow, 15> SHOTS = {{
    {"TransitionShot", BeginTransition, ExpectTransition},
    {"ViewAlignShot", BeginViewAlign, ExpectViewAlign},
    {"ClosestViewAlignShot", BeginClosestViewAlign, ExpectClosestViewAlign},
    {"CenterShot", BeginCenter, ExpectCenter},
    {"LookAtShot", BeginLookAt, ExpectLookAt},
    {"ZoomRectShot", BeginZoomRect, ExpectZoomRect},
    {"PanZoomShot", BeginPanZoom, ExpectPanZoom},
    {"ZoomShot", BeginZoom, ExpectZoom},
    {"ProjectionTransitionShot", BeginProjectionTransition, ExpectProjectionTransition},
    {"KeyframeShot", BeginKeyframe, ExpectKeyframe, false},
    {"TrackShot", BeginTrack, ExpectTrack},
    {"SpinShot", BeginSpin, ExpectSpin},
    {"OrbitShot", BeginOrbit, ExpectOrbit},
    {"LookShot", BeginLook, ExpectLook},
    {"CraneShot", BeginCrane, ExpectCrane},
}};
constexpr ShotRow LONG_TRANSITION = {"frame of a move", BeginLongTransition, ExpectTransition, true,
                                     LONG_DURATION};

class ShotCase : public BenchmarkCase {
 public:
  explicit ShotCase(const ShotRow& shotRow) : row(shotRow) {}

  std::string GetName() const override { return row.name; }

  void Restart() override { Begin(std::make_unique<BenchmarkHub>()); }

  // As in the hub's frame, the shot writes over the host's camera of now.
  void StepLibrary() override {
    const double dt = step++ / STEPS_ONE_WAY % 2 == 0 ? STEP : -STEP;
    reached = start;
    shot->PerformShot(dt, reached);
    benchmark::DoNotOptimize(std::as_const(reached));
    elapsed = shot->GetElapsedTime() - dt;
  }

  void StepBare() override { turn.Step(); }

  bool Agrees() const override { return IsAt(reached, elapsed); }

 protected:
  void Begin(std::unique_ptr<BenchmarkHub> newHub) {
    hub = std::move(newHub);
    hub->view = start;
    begun = row.begin(*hub);
    shot = hub->GetActiveShot();
    step = 0;
    turn.Restart();
  }

  double GetElapsedTime() const { return shot->GetElapsedTime(); }

  bool IsAt(const CameraParameters& camera, double time) const {
    const double part = time / row.duration;
    const double t = row.eased ? (std::sin((part - 0.5) * Math::PI) + 1.0) / 2.0 : part;
    const Expected expected = row.expect(Start(), t);
    // A few products of lengths around 20.
    const double tolerance = 1e-9;
    const Vector3d direction = ToBare(camera.centre - camera.eye).normalized();
    return begun && turn.LooksAtTarget() && (ToBare(camera.eye) - expected.eye).norm() < tolerance &&
           (direction - expected.direction.normalized()).norm() < tolerance &&
           std::abs(camera.projection_transition - expected.transition) < tolerance;
  }

 private:
  const ShotRow& row;
  const CameraParameters start = GetBenchmarkCamera();
  std::unique_ptr<BenchmarkHub> hub;
  Shot* shot = nullptr;
  bool begun = false;
  int step = 0;
  double elapsed = 0.0;
  CameraParameters reached;
  BareTurn turn;
};

// A host that keeps showing the start of the move, so that every frame differs from what it shows and is
// applied, however slowly the move goes.
class HeldHub : public BenchmarkHub {
 public:
  void ApplyCameraParameters(const CameraParameters& moved) override { applied = moved; }

  CameraParameters applied;
};

// The whole frame of the hub while a shot runs, somewhere in the fast middle of the move.
class FrameOfMoveCase : public ShotCase {
 public:
  FrameOfMoveCase() : ShotCase(LONG_TRANSITION) {}

  void Restart() override {
    SetPlatform(&clock);
    auto held = std::make_unique<HeldHub>();
    heldHub = held.get();
    Begin(std::move(held));
    heldHub->PerformOperations();
    clock.Advance(static_cast<std::uint32_t>(0.4 * LONG_DURATION * 1000.0));
    heldHub->PerformOperations();
  }

  void StepLibrary() override {
    clock.Advance(MILLISECONDS_A_FRAME);
    heldHub->PerformOperations();
    benchmark::DoNotOptimize(std::as_const(heldHub->applied));
  }

  bool Agrees() const override {
    return IsAt(heldHub->applied, GetElapsedTime() - MILLISECONDS_A_FRAME / 1000.0);
  }
  SimplestMove* GetSimplest() override { return &simplest; }

 private:
  static constexpr std::uint32_t MILLISECONDS_A_FRAME = 16;

  ManualPlatform clock;
  HeldHub* heldHub = nullptr;
  SimplestTransition simplest;
};

}  // namespace

std::vector<BenchmarkCase*> GetShotCases() {
  static std::vector<std::unique_ptr<ShotCase>> cases;
  std::vector<BenchmarkCase*> all;
  for (const ShotRow& row : SHOTS) {
    cases.push_back(std::make_unique<ShotCase>(row));
    all.push_back(cases.back().get());
  }
  static FrameOfMoveCase frameOfMove;
  all.push_back(&frameOfMove);
  return all;
}
