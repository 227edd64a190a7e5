#pragma once

#include <gtest/gtest.h>

#include <cmath>

#include "camera/oracle.h"
#include "korvane/shot_parameters.h"
#include "support/cameras.h"
#include "support/memory_hub.h"

/// What one step of a shot made of the camera.
struct Step {
  bool goesOn = false;
  double unitTime = 0.0;
  Korvane::CameraParameters camera;
};

/// Steps the hub's active shot, without the frame: the camera that it is given is the host's.
inline Step StepShot(MemoryHub& hub, double dt) {
  Step step;
  step.camera = hub.view;
  step.goesOn = hub.GetActiveShot()->PerformShot(dt, step.camera);
  step.unitTime = hub.GetActiveShot()->GetUnitTime();
  return step;
}

/// Begins the shot of a record and steps it once `fraction` of its duration has passed.
template <class Record>
Step StepAt(MemoryHub& hub, const Record& record, double fraction) {
  if (!hub.BeginShot(record)) {
    ADD_FAILURE() << "the shot does not begin";
    return Step();
  }
  StepShot(hub, fraction * record.duration);
  return StepShot(hub, 0.0);
}

/// Within `tolerance` times the size of what is expected, or times 1 where that is smaller.
inline ::testing::AssertionResult IsNear(double actual, double expected, double tolerance) {
  if (std::abs(actual - expected) <= tolerance * std::fmax(1.0, std::abs(expected))) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << actual << " instead of " << expected;
}

inline ::testing::AssertionResult IsNear(const Korvane::Vector3& actual, const oracle::Vec& expected,
                                         double tolerance) {
  if ((oracle::From(actual) - expected).norm() <= tolerance * std::fmax(1.0, expected.norm())) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure()
         << "(" << oracle::From(actual).transpose() << ") instead of (" << expected.transpose() << ")";
}

/// Every field of the record.
inline ::testing::AssertionResult IsNear(const Korvane::CameraParameters& actual,
                                         const Korvane::CameraParameters& expected, double tolerance) {
  using Korvane::CameraParameters;
  struct VectorField {
    const char* name;
    Korvane::Vector3 CameraParameters::*field;
  };
  struct NumberField {
    const char* name;
    double CameraParameters::*field;
  };
  static constexpr VectorField VECTORS[] = {{"eye", &CameraParameters::eye},
                                            {"centre", &CameraParameters::centre},
                                            {"up", &CameraParameters::up},
                                            {"pivot", &CameraParameters::pivot}};
  static constexpr NumberField NUMBERS[] = {
      {"left_fov", &CameraParameters::left_fov},
      {"right_fov", &CameraParameters::right_fov},
      {"top_fov", &CameraParameters::top_fov},
      {"bottom_fov", &CameraParameters::bottom_fov},
      {"ortho_width", &CameraParameters::ortho_width},
      {"ortho_height", &CameraParameters::ortho_height},
      {"projection_transition", &CameraParameters::projection_transition},
      {"page_scale", &CameraParameters::page_scale},
      {"page_origin_x", &CameraParameters::page_origin_x},
      {"page_origin_y", &CameraParameters::page_origin_y}};
  for (const VectorField& each : VECTORS) {
    const auto near = IsNear(actual.*each.field, oracle::From(expected.*each.field), tolerance);
    if (!near) return ::testing::AssertionFailure() << each.name << " is " << near.message();
  }
  for (const NumberField& each : NUMBERS) {
    const auto near = IsNear(actual.*each.field, expected.*each.field, tolerance);
    if (!near) return ::testing::AssertionFailure() << each.name << " is " << near.message();
  }
  if (actual.projection_type != expected.projection_type) {
    return ::testing::AssertionFailure() << "projection_type differs";
  }
  if (actual.perspective_with_ortho != expected.perspective_with_ortho) {
    return ::testing::AssertionFailure() << "perspective_with_ortho differs";
  }
  return ::testing::AssertionSuccess();
}

namespace oracle {

/// Half a sine wave from 0 to 1: (sin((x - 1/2) pi) + 1) / 2 is (1 - cos(pi x)) / 2, a squared sine.
inline double Ease(double x) {
  const double sine = std::sin(PI * x / 2.0);
  return sine * sine;
}

/// The part of a relative move that lies before the view of now.
inline double AnchorPart(Korvane::TargetCamPos anchor) { return static_cast<double>(anchor) / 2.0; }

/// By an angle of a record.
inline Vec TurnByDegrees(const Vec& axis, double degrees, const Vec& v) {
  return Turn(axis, degrees * PI / 180.0, v);
}

inline Vec Mix(double t, const Korvane::Vector3& a, const Korvane::Vector3& b) {
  return From(a) + t * (From(b) - From(a));
}

inline double Mix(double t, double a, double b) { return a + t * (b - a); }

inline Vec View(const Korvane::CameraParameters& c) { return From(c.centre) - From(c.eye); }
inline Vec Forward(const Korvane::CameraParameters& c) { return View(c).normalized(); }
inline Vec Right(const Korvane::CameraParameters& c) { return View(c).cross(From(c.up)).normalized(); }
/// The part of the up that is perpendicular to the view, of unit length.
inline Vec Upright(const Korvane::CameraParameters& c) { return Right(c).cross(Forward(c)); }

/// The camera's frame, its columns forward, up and right.
inline Eigen::Matrix3d Frame(const Korvane::CameraParameters& c) {
  Eigen::Matrix3d frame;
  frame << Forward(c), Upright(c), Right(c);
  return frame;
}

/// Half angles, orthographic size and page values on the line between two cameras.
inline void MixLens(double t, const Korvane::CameraParameters& a, const Korvane::CameraParameters& b,
                    Korvane::CameraParameters& out) {
  out.left_fov = Mix(t, a.left_fov, b.left_fov);
  out.right_fov = Mix(t, a.right_fov, b.right_fov);
  out.top_fov = Mix(t, a.top_fov, b.top_fov);
  out.bottom_fov = Mix(t, a.bottom_fov, b.bottom_fov);
  out.ortho_width = Mix(t, a.ortho_width, b.ortho_width);
  out.ortho_height = Mix(t, a.ortho_height, b.ortho_height);
  out.page_scale = Mix(t, a.page_scale, b.page_scale);
  out.page_origin_x = Mix(t, a.page_origin_x, b.page_origin_x);
  out.page_origin_y = Mix(t, a.page_origin_y, b.page_origin_y);
}

inline void ScaleOrthographic(const Korvane::CameraParameters& start, double scale,
                              Korvane::CameraParameters& out) {
  out.ortho_width = start.ortho_width * scale;
  out.ortho_height = start.ortho_height * scale;
}

}  // namespace oracle

/// The three anchors of a relative move.
inline constexpr Korvane::TargetCamPos ANCHORS[] = {Korvane::TARGET_CAM_START, Korvane::TARGET_CAM_MIDDLE,
                                                    Korvane::TARGET_CAM_END};

/// A record with a value outside its enumeration: the step is false, nothing is written, no time passes.
template <class Record>
void ExpectNoStep(MemoryHub& hub, const Record& record) {
  ASSERT_TRUE(hub.BeginShot(record));
  const Korvane::CameraParameters before = hub.view;
  const Step step = StepShot(hub, 0.25);
  EXPECT_FALSE(step.goesOn);
  EXPECT_TRUE(SameBits(step.camera, before));
  EXPECT_EQ(hub.GetActiveShot()->GetElapsedTime(), 0.0);
  EXPECT_EQ(hub.GetActiveShot()->GetUnitTime(), 0.0);
}

/// With an anchor outside the enumeration.
template <class Record>
void ExpectNoStepWithAnAnchorOutside(MemoryHub& hub, Record record) {
  for (const int anchor : {-1, 3, 1000}) {
    record.anchor = static_cast<Korvane::TargetCamPos>(anchor);
    ExpectNoStep(hub, record);
  }
}

/// A camera whose page values, blend and wish are other than the defaults, so that a shot that loses them
/// is seen.
inline Korvane::CameraParameters WithMarks(Korvane::CameraParameters camera) {
  camera.page_scale = 2.5;
  camera.page_origin_x = -3.5;
  camera.page_origin_y = 4.5;
  camera.projection_transition = 0.375;
  camera.perspective_with_ortho = true;
  return camera;
}
