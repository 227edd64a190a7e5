// A fit of a box and the question whether the scene is out of view, from ever new directions.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "bare_turn.h"
#include "benchmark_case.h"
#include "benchmark_hub.h"
#include "conversions.h"
#include "simplest_moves.h"

using namespace Korvane;

namespace {

using Eigen::Vector3d;

// Directions in a spiral from pole to pole, none of them along an axis.
class Directions {
 public:
  Directions() {
    for (std::size_t i = 0; i < COUNT; ++i) {
      const double height = 0.98 - 1.96 * static_cast<double>(i) / (COUNT - 1);
      const double angle = 2.4 * static_cast<double>(i);
      const double radius = std::sqrt(1.0 - height * height);
      directions[i] = Vector3(radius * std::cos(angle), height, radius * std::sin(angle));
    }
  }
  void Restart() { next = 0; }
  const Vector3& Next() { return directions[next++ % COUNT]; }

 private:
  static constexpr std::size_t COUNT = 256;
  std::array<Vector3, COUNT> directions;
  std::size_t next = 0;
};

class PlacingCase : public BenchmarkCase {
 public:
  void Restart() override {
    path.Restart();
    turn.Restart();
  }
  void StepBare() override { turn.Step(); }

 protected:
  BenchmarkHub hub;
  Directions path;
  BareTurn turn;
};

// The tangents of a point seen by a camera: to the right and upward.
struct Seen {
  double across;
  double upward;
};
Seen See(const BareCamera& camera, const Vector3d& point) {
  const Vector3d forward = (camera.centre - camera.eye).normalized();
  const Vector3d right = forward.cross(camera.up).normalized();
  const Vector3d offset = point - camera.eye;
  const double depth = offset.dot(forward);
  return {offset.dot(right) / depth, offset.dot(right.cross(forward)) / depth};
}

class FitCase : public PlacingCase {
 public:
  std::string GetName() const override { return "FitBoundingBoxToView"; }

  void StepLibrary() override {
    fitted = GetBenchmarkCamera();
    done = hub.FitBoundingBoxToView(box.GetCenter(), box, path.Next(), UP, fitted);
    benchmark::DoNotOptimize(std::as_const(fitted));
  }

  // All corners are in view, and those furthest out touch two opposite sides.
  bool Agrees() const override {
    const BareCamera camera = ToBare(fitted);
    std::array<double, 4> slack;  // left, right, top, bottom: the tangent that is left
    slack.fill(1e9);
    for (int corner = 0; corner < 8; ++corner) {
      const Seen seen = See(camera, ToBare(box.GetCorner(corner)));
      const std::array<double, 4> outward = {-seen.across, seen.across, seen.upward, -seen.upward};
      for (std::size_t side = 0; side < 4; ++side) {
        const double edge = std::tan(camera.halfAngles[side] * Math::DEG_TO_RAD);
        slack[side] = std::min(slack[side], edge - outward[side]);
      }
    }
    const double tolerance = 1e-9;
    const bool inView = *std::min_element(slack.begin(), slack.end()) > -tolerance;
    const bool touches = std::min(std::max(slack[0], slack[1]), std::max(slack[2], slack[3])) < tolerance;
    return done && inView && touches && turn.LooksAtTarget();
  }
  SimplestMove* GetSimplest() override { return &simplest; }

 private:
  const Vector3 UP = Vector3(0.0, 1.0, 0.0);
  const Box3 box = Box3(Vector3(1.0, -2.0, 0.5), Vector3(4.0, 1.5, 2.5));
  CameraParameters fitted;
  SimplestFit simplest;
  bool done = false;
};

class OutsideCase : public PlacingCase {
 public:
  OutsideCase() {
    ApplicationParameters& parameters = hub.GetApplicationParameters();
    parameters.global_bound_centre = Vector3(CENTRE.x(), CENTRE.y(), CENTRE.z());
    parameters.global_bound_radius = RADIUS;
    camera = GetBenchmarkCamera();
    camera.SetHorizontalFOV(HALF_ANGLE);
    camera.SetVerticalFOV(HALF_ANGLE);
  }
  std::string GetName() const override { return "IsSceneOutsideView"; }

  void StepLibrary() override {
    camera.centre = camera.eye + path.Next();
    outside = hub.IsSceneOutsideView(camera);
    benchmark::DoNotOptimize(std::as_const(outside));
  }

  // A side of the view passes at this distance from the middle of the sphere: the offset of the middle from
  // the axis and its depth, turned by the half angle.
  bool Agrees() const override {
    const Vector3d forward = ToBare(camera.centre - camera.eye).normalized();
    const Vector3d right = forward.cross(ToBare(camera.up)).normalized();
    const Vector3d offset = CENTRE - ToBare(camera.eye);
    const double depth = offset.dot(forward);
    const double half = HALF_ANGLE * Math::DEG_TO_RAD;
    const auto beyond = [&](double aside) {
      return std::abs(aside) * std::cos(half) - depth * std::sin(half) > RADIUS;
    };
    const bool expected =
        depth < -RADIUS || beyond(offset.dot(right)) || beyond(offset.dot(right.cross(forward)));
    return outside == expected && turn.LooksAtTarget();
  }

 private:
  static constexpr double RADIUS = 3.0;
  static constexpr double HALF_ANGLE = 30.0;
  const Vector3d CENTRE = Vector3d(1.0, 0.0, -1.0);
  CameraParameters camera;
  bool outside = false;
};

}  // namespace

std::vector<BenchmarkCase*> GetFitCases() {
  static FitCase fit;
  static OutsideCase outside;
  return {&fit, &outside};
}
