#pragma once

#include <gtest/gtest.h>

#include <initializer_list>

#include "camera/oracle.h"
#include "support/cameras.h"
#include "support/memory_hub.h"

/// An operation that a test steps by hand: the length of each frame and the camera it starts with are the
/// test's, and nothing but the operation touches the camera.
///
/// The viewport is 1000 by 500 pixels. Settings are made between construction and Begin.
template <class Kind>
class Stepper {
 public:
  explicit Stepper(const Korvane::CameraParameters& first)
      : hub(first), p(hub.GetApplicationParameters()), start(first), camera(first) {
    p.viewport_width = 1000;
    p.viewport_height = 500;
  }

  void Begin(int x = 0, int y = 0) {
    start = camera;
    hub.view = camera;
    hub.PerformOperations();  // fetches the camera
    operation.InitOperation(x, y, &hub);
  }
  void Step(int x, int y, double dt = 0.0) {
    operation.UpdateCursor(x, y);
    operation.PerformOperation(dt, camera);
    operation.UpdatePreviousCursor();
  }
  /// A frame of a six-axis controller that has just sent this.
  void StepController(const Korvane::Vector3& translation, const Korvane::Vector3& rotation) {
    operation.Update3DControllerInput(translation, rotation);
    operation.PerformOperation(0.0, camera);
  }
  /// Since Begin these moved, and no other field of the camera changed.
  void ExpectOnlyMoved(std::initializer_list<Korvane::Vector3 Korvane::CameraParameters::*> moved) const {
    Korvane::CameraParameters expected = start;
    for (const auto field : moved) {
      EXPECT_NE(camera.*field, start.*field);
      expected.*field = camera.*field;
    }
    EXPECT_TRUE(SameBits(camera, expected));
  }

  MemoryHub hub;
  Korvane::ApplicationParameters& p;
  Korvane::CameraParameters start;  // as it was at Begin
  Korvane::CameraParameters camera;
  Kind operation;
};

/// Positions of tens of units through a dozen roundings.
inline void ExpectNear(const Korvane::Vector3& v, const Korvane::Vector3& expected,
                       double tolerance = 1e-12) {
  EXPECT_NEAR(v.x, expected.x, tolerance);
  EXPECT_NEAR(v.y, expected.y, tolerance);
  EXPECT_NEAR(v.z, expected.z, tolerance);
}

/// The four points of a camera that an operation computed, against those of the oracle.
inline void AssertSame(const Korvane::CameraParameters& camera, const oracle::Camera& expected,
                       double tolerance) {
  ASSERT_LE((oracle::From(camera.eye) - expected.eye).norm(), tolerance);
  ASSERT_LE((oracle::From(camera.centre) - expected.centre).norm(), tolerance);
  ASSERT_LE((oracle::From(camera.up) - expected.up).norm(), tolerance);
  ASSERT_LE((oracle::From(camera.pivot) - expected.pivot).norm(), tolerance);
}

/// Directions of the scene and of the world, mostly of unit length, and which of the two holds.
inline void RandomDirections(Random& random, Korvane::ApplicationParameters& p) {
  const auto length = [&] { return random.Integer(0, 3) == 0 ? random.Uniform(0.5, 2.0) : 1.0; };
  const Axes scene = RandomAxes(random);
  const Axes world = RandomAxes(random);
  p.scene_up_direction = scene.up * length();
  p.scene_front_direction = scene.front * length();
  p.world_up_direction = world.up * length();
  p.world_front_direction = world.front * length();
  p.scene_is_world = random.Coin();
}
