// The frame of the hub: its eleven steps, the choice of the projection, and the blend.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "camera/hub_fakes.h"
#include "camera/oracle.h"
#include "korvane/camera_operations.h"
#include "support/allocation_counter.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

using Log = std::vector<std::string>;
using ProjectionType = CameraParameters::ProjectionType;

constexpr ProjectionType PERSPECTIVE = ProjectionType::Perspective;
constexpr ProjectionType ORTHOGRAPHIC = ProjectionType::Orthographic;

// The view is 20 units wide and high at the depth of the pivot, on 1000 by 500 pixels: a pan of 100 pixels
// to the right moves the eye by -2 along x.
class Frame : public ::testing::Test {
 protected:
  Frame() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), observer(hub, "observer"), shotObserver(hub) {
    hub.recording = true;
    hub.AddOperationObserver(&observer);
    Parameters().viewport_width = 1000;
    Parameters().viewport_height = 500;
  }

  // A fake shot writes into the hub's log to its end, so it must end before the hub.
  ~Frame() override { hub.EndShot(); }

  ApplicationParameters& Parameters() { return hub.GetApplicationParameters(); }

  FakeShot& BeginShot(FakeShot::Perform perform = nullptr) {
    auto* const shot = new FakeShot(hub, std::move(perform));
    hub.BeginShot(shot);
    return *shot;
  }

  // A clock that moved by whole milliseconds is read in seconds near 1: the difference carries 1e-16.
  static constexpr double CLOCK = 1e-12;

  ManualPlatform platform;
  MemoryHub hub;
  FakeObserver observer;
  FakeShotObserver shotObserver;
};

}  // namespace

// ---- the steps ----

TEST_F(Frame, takes_its_steps_in_order) {
  hub.BeginOperation(OPERATION_ORBIT, 0, 0);
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  BeginShot([](double, CameraParameters&) { return false; });
  hub.SetActiveShotObserver(&shotObserver);
  hub.UpdateOperationParams(10, 0, OPERATION_ALL);
  hub.TakeLog();
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.TakeLog(),
            (Log{"query", "observer: perform 0", "observer: perform 1", "shot: perform", "apply",
                 "shot observer", "end shot hook", "shot: destroyed", "request", "request"}));
}

TEST_F(Frame, with_nothing_to_do_resets_the_clock_returns_false_and_calls_no_host_operation_but_query) {
  EXPECT_FALSE(hub.PerformOperations());
  EXPECT_EQ(hub.TakeLog(), (Log{"query"}));
  platform.Advance(5000);
  EXPECT_FALSE(hub.PerformOperations());
  EXPECT_EQ(hub.TakeLog(), (Log{"query"}));
  // The pause of five seconds is no step.
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  platform.Advance(5000);
  hub.PerformOperations();
  EXPECT_EQ(observer.lastDelta, 0.0);
}

TEST_F(Frame, at_rest_does_not_read_the_clock) {
  hub.PerformOperations();
  EXPECT_EQ(platform.GetClockReads(), 0);
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.PerformOperations();
  EXPECT_EQ(platform.GetClockReads(), 1);
  hub.EndOperation(OPERATION_PAN);
  hub.PerformOperations();  // the clock still runs
  EXPECT_EQ(platform.GetClockReads(), 2);
  hub.PerformOperations();
  EXPECT_EQ(platform.GetClockReads(), 2);
}

TEST_F(Frame, measures_the_time_since_the_frame_before) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  FakeShot& shot = BeginShot();
  hub.PerformOperations();
  EXPECT_EQ(observer.lastDelta, 0.0);
  EXPECT_EQ(shot.lastDelta, 0.0);
  platform.Advance(40);
  hub.PerformOperations();
  EXPECT_NEAR(observer.lastDelta, 0.04, CLOCK);
  EXPECT_NEAR(shot.lastDelta, 0.04, CLOCK);
  platform.Advance(25);
  hub.PerformOperations();
  EXPECT_NEAR(observer.lastDelta, 0.025, CLOCK);
}

TEST_F(Frame, operations_act_one_after_the_other_lowest_first_and_each_observer_sees_what_its_own_left) {
  // The pan moves the eye to x = -2; the zoom, which starts from its own initial camera, then puts the eye
  // back on the line to the pivot: 1.015^-20 of the way, x = 0.
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.BeginOperation(OPERATION_ZOOM, 0, 0);
  std::vector<Vector3> eyes;
  observer.onPerform = [&](OperationType) { eyes.push_back(observer.lastCamera.eye); };
  hub.UpdateOperationParams(100, 0, OPERATION_PAN);
  hub.UpdateOperationParams(20, 0, OPERATION_ZOOM);
  hub.PerformOperations();
  ASSERT_EQ(eyes.size(), 2U);
  EXPECT_NEAR(eyes[0].x, -2.0, 1e-14);
  EXPECT_NEAR(eyes[0].z, 10.0, 1e-14);
  EXPECT_NEAR(eyes[1].x, 0.0, 1e-14);
  EXPECT_NEAR(eyes[1].z, 10.0 * std::pow(1.015, -20.0), 1e-12);
}

TEST_F(Frame, the_shot_acts_after_the_operations_and_the_last_writer_wins) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  Vector3 seen;
  BeginShot([&](double, CameraParameters& camera) {
    seen = camera.eye;
    camera.eye = {0, 0, 77};
    return true;
  });
  hub.Drag(OPERATION_PAN, 100, 0);
  EXPECT_NEAR(seen.x, -2.0, 1e-14);
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 77));
}

TEST_F(Frame, several_cursor_moves_between_two_frames_are_one_step) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.UpdateOperationParams(900, 400, OPERATION_PAN);
  hub.UpdateOperationParams(-300, 50, OPERATION_PAN);
  hub.Drag(OPERATION_PAN, 100, 0);
  EXPECT_EQ(hub.applied, 1);
  EXPECT_NEAR(hub.view.eye.x, -2.0, 1e-14);
  EXPECT_NEAR(hub.view.eye.y, 0.0, 1e-14);
}

TEST_F(Frame, the_previous_cursor_moves_up_after_the_shot) {
  // A cursor that comes during the shot's step counts as seen: the next frame moves nothing.
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  BeginShot([&](double, CameraParameters&) {
    hub.UpdateOperationParams(100, 0, OPERATION_PAN);
    return true;
  });
  hub.PerformOperations();
  EXPECT_EQ(hub.applied, 0);
  hub.EndShot();
  hub.PerformOperations();
  EXPECT_EQ(hub.applied, 0);
}

TEST_F(Frame, the_previous_cursor_moves_up_before_the_camera_goes_to_the_host) {
  // A cursor that comes while the host takes the camera is new for the next frame.
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.onApply = [&] {
    hub.onApply = nullptr;
    hub.UpdateOperationParams(200, 0, OPERATION_PAN);
  };
  hub.Drag(OPERATION_PAN, 100, 0);
  EXPECT_NEAR(hub.view.eye.x, -2.0, 1e-14);
  hub.PerformOperations();
  EXPECT_NEAR(hub.view.eye.x, -4.0, 1e-14);
}

TEST_F(Frame, applies_the_camera_only_when_it_changed) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.applied, 0);
  EXPECT_TRUE(hub.Drag(OPERATION_PAN, 100, 0));
  EXPECT_EQ(hub.applied, 1);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.applied, 1);
}

TEST_F(Frame, asks_the_hubs_own_check_whether_the_camera_changed) {
  class IndifferentHub : public MemoryHub {
   public:
    using MemoryHub::MemoryHub;
    bool CheckCamerasEqual(const CameraParameters*, const CameraParameters*) const override { return true; }
  };
  IndifferentHub indifferent(hub.view);
  indifferent.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_TRUE(indifferent.Drag(OPERATION_PAN, 100, 0));
  EXPECT_EQ(indifferent.applied, 0);
}

TEST_F(Frame, asks_for_the_next_frame_as_long_as_an_operation_runs) {
  hub.BeginOperation(OPERATION_ZOOM2D, 0, 0);
  for (int i = 0; i < 3; ++i) {
    hub.TakeLog();
    EXPECT_TRUE(hub.PerformOperations());
    EXPECT_EQ(hub.TakeLog(), (Log{"query", "observer: perform 6", "request"}));
  }
  hub.EndOperation(OPERATION_ZOOM2D);
  hub.TakeLog();
  EXPECT_FALSE(hub.PerformOperations());
  EXPECT_EQ(hub.TakeLog(), (Log{"query"}));
}

TEST_F(Frame, a_camera_changed_by_the_host_between_two_frames_is_the_start_of_the_next_step) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.Drag(OPERATION_PAN, 100, 0);
  // Twice as far from the pivot, so a pixel moves twice as much.
  hub.view = LookAt({50, 0, 20}, {50, 0, 0}, {0, 1, 0});
  hub.Drag(OPERATION_PAN, 200, 0);
  EXPECT_NEAR(hub.view.eye.x, 50.0 - 4.0, 1e-13);
}

TEST_F(Frame, an_operation_works_from_the_hosts_camera_of_the_moment_it_began) {
  hub.view.eye = {0, 0, 20};
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_EQ(hub.GetCameraParameters().eye, Vector3(0, 0, 20));
}

// ---- the choice of the projection ----

namespace {

CameraParameters AlongAxis(const Vector3& fromEye) {
  CameraParameters camera = LookAt(-fromEye, {0, 0, 0}, {0.3, 0.5, 0.7});
  camera.perspective_with_ortho = true;
  return camera;
}

}  // namespace

TEST_F(Frame, a_view_along_an_axis_of_the_scene_turns_orthographic_and_back) {
  Parameters().scene_up_direction = {0, 0, 1};
  Parameters().scene_front_direction = {1, 0, 0};
  for (const Vector3& axis : {Vector3(5, 0, 0), Vector3(0, 5, 0), Vector3(0, 0, 5)}) {
    for (const double side : {1.0, -1.0}) {
      hub.view = AlongAxis(axis * side);
      EXPECT_FALSE(hub.PerformOperations());  // it changed the camera, but nothing is active
      EXPECT_EQ(hub.view.projection_type, ORTHOGRAPHIC);
    }
  }
  EXPECT_EQ(hub.applied, 6);
  hub.view = AlongAxis({5, 1, 0});
  hub.view.projection_type = ORTHOGRAPHIC;
  EXPECT_FALSE(hub.PerformOperations());
  EXPECT_EQ(hub.view.projection_type, PERSPECTIVE);
  EXPECT_EQ(hub.requested, 0);
}

TEST_F(Frame, the_axes_are_those_of_the_scene_whatever_counts_as_the_world) {
  Parameters().scene_is_world = false;
  Parameters().world_up_direction = oracle::To(oracle::Vec(1, 1, 1).normalized());
  hub.view = AlongAxis({1, 1, 1});
  hub.PerformOperations();
  EXPECT_EQ(hub.view.projection_type, PERSPECTIVE);
  hub.view = AlongAxis({0, 1, 0});
  hub.PerformOperations();
  EXPECT_EQ(hub.view.projection_type, ORTHOGRAPHIC);
}

TEST_F(Frame, a_view_off_the_axis_by_more_than_the_tolerance_stays_in_perspective) {
  // 1 - cos(s) = s^2 / 2 reaches 2^-23 at s = 2^-11 = 4.883e-4.
  const auto isOrthographic = [&](double offAxis) {
    hub.view = AlongAxis({std::cos(offAxis), std::sin(offAxis), 0});
    hub.PerformOperations();
    return hub.view.IsOrthographic();
  };
  EXPECT_TRUE(isOrthographic(4.87e-4));
  EXPECT_FALSE(isOrthographic(4.90e-4));
}

TEST_F(Frame, without_the_wish_the_projection_stays) {
  hub.view = AlongAxis({5, 0, 0});
  hub.view.perspective_with_ortho = false;
  hub.PerformOperations();
  EXPECT_EQ(hub.view.projection_type, PERSPECTIVE);
  hub.view = AlongAxis({5, 1, 0});
  hub.view.perspective_with_ortho = false;
  hub.view.projection_type = ORTHOGRAPHIC;
  hub.PerformOperations();
  EXPECT_EQ(hub.view.projection_type, ORTHOGRAPHIC);
}

TEST_F(Frame,
       during_an_orbit_the_view_stays_in_perspective_and_turns_orthographic_once_it_stopped_on_an_axis) {
  hub.view = AlongAxis({5, 0, 0});
  hub.PerformOperations();
  ASSERT_EQ(hub.view.projection_type, ORTHOGRAPHIC);
  hub.BeginOperation(OPERATION_ORBIT, 0, 0);
  hub.PerformOperations();
  EXPECT_EQ(hub.view.projection_type, PERSPECTIVE);
  hub.EndOperation(OPERATION_ORBIT);
  hub.PerformOperations();
  EXPECT_EQ(hub.view.projection_type, ORTHOGRAPHIC);
}

TEST_F(Frame, a_pan_or_a_zoom_along_an_axis_stays_orthographic) {
  for (const OperationType type : {OPERATION_PAN, OPERATION_ZOOM, OPERATION_ZOOM2D}) {
    hub.view = AlongAxis({5, 0, 0});
    hub.BeginOperation(type, 0, 0);
    hub.Drag(type, 20, 0);
    EXPECT_EQ(hub.view.projection_type, ORTHOGRAPHIC) << type;
    hub.EndOperation(type);
  }
}

TEST_F(Frame, a_camera_without_a_view_direction_stays_in_perspective) {
  hub.view = AlongAxis({0, 0, 0});
  EXPECT_FALSE(hub.PerformOperations());
  EXPECT_EQ(hub.view.projection_type, PERSPECTIVE);
}

// ---- the blend ----

namespace {

class Blend : public Frame {
 protected:
  Blend() {
    Parameters().use_projection_transitions = true;
    hub.BeginOperation(OPERATION_PAN, 0, 0);
    hub.PerformOperations();  // starts the clock
    hub.TakeLog();
  }

  void Show(ProjectionType type, double blend) {
    hub.view.projection_type = type;
    hub.view.projection_transition = blend;
  }
  double BlendAfter(std::uint32_t milliseconds) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    return hub.view.projection_transition;
  }
};

}  // namespace

TEST_F(Blend, runs_towards_orthographic_at_seven_per_second) {
  Show(ORTHOGRAPHIC, 0.0);
  EXPECT_NEAR(BlendAfter(50), 0.35, 1e-11);
  EXPECT_NEAR(BlendAfter(50), 0.70, 1e-11);
  EXPECT_EQ(BlendAfter(50), 1.0);
  EXPECT_EQ(BlendAfter(50), 1.0);
}

TEST_F(Blend, runs_towards_perspective_at_seven_per_second) {
  Show(PERSPECTIVE, 1.0);
  EXPECT_NEAR(BlendAfter(50), 0.65, 1e-11);
  EXPECT_NEAR(BlendAfter(50), 0.30, 1e-11);
  EXPECT_EQ(BlendAfter(50), 0.0);
  EXPECT_EQ(BlendAfter(50), 0.0);
}

TEST_F(Blend, starts_from_minus_one_towards_orthographic_and_does_nothing_from_there_towards_perspective) {
  Show(ORTHOGRAPHIC, -1.0);
  EXPECT_NEAR(BlendAfter(100), -0.3, 1e-11);
  Show(PERSPECTIVE, -1.0);
  EXPECT_EQ(BlendAfter(100), -1.0);
  EXPECT_EQ(hub.applied, 1);
}

TEST_F(Blend, while_something_is_active_a_frame_without_time_leaves_it) {
  Show(ORTHOGRAPHIC, 0.5);
  EXPECT_EQ(BlendAfter(0), 0.5);
  Show(PERSPECTIVE, 0.5);
  EXPECT_EQ(BlendAfter(0), 0.5);
}

TEST_F(Blend, at_rest_a_frame_without_time_forces_it_to_its_end) {
  hub.EndOperation(OPERATION_PAN);
  hub.PerformOperations();  // resets the clock
  Show(ORTHOGRAPHIC, 0.25);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.view.projection_transition, 1.0);
  EXPECT_FALSE(hub.PerformOperations());
  Show(PERSPECTIVE, 0.75);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.view.projection_transition, 0.0);
  EXPECT_FALSE(hub.PerformOperations());
}

TEST_F(Blend, that_begins_at_rest_starts_the_clock) {
  hub.EndOperation(OPERATION_PAN);
  hub.PerformOperations();  // resets the clock
  Show(ORTHOGRAPHIC, 0.25);
  EXPECT_EQ(BlendAfter(20), 1.0);
  Show(PERSPECTIVE, 1.0);
  EXPECT_NEAR(BlendAfter(50), 0.65, 1e-11);
}

TEST_F(Blend, goes_on_by_itself_after_the_operation_and_asks_for_frames_until_it_is_done) {
  Show(ORTHOGRAPHIC, 0.0);
  platform.Advance(50);
  hub.PerformOperations();
  hub.EndOperation(OPERATION_PAN);
  platform.Advance(50);
  hub.TakeLog();
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "apply", "request"}));
  EXPECT_NEAR(hub.view.projection_transition, 0.7, 1e-11);
  platform.Advance(50);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.view.projection_transition, 1.0);
  EXPECT_FALSE(hub.PerformOperations());
}

TEST_F(Blend, a_shot_that_ends_in_the_frame_does_not_count_as_active) {
  hub.EndOperation(OPERATION_PAN);
  hub.PerformOperations();
  BeginShot([](double, CameraParameters&) { return false; });
  Show(ORTHOGRAPHIC, 0.25);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.view.projection_transition, 1.0);
}

TEST_F(Blend, a_shot_that_goes_on_counts_as_active) {
  hub.EndOperation(OPERATION_PAN);
  hub.PerformOperations();
  BeginShot();
  Show(ORTHOGRAPHIC, 0.25);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.view.projection_transition, 0.25);
}

TEST_F(Blend, does_not_run_without_transitions) {
  Parameters().use_projection_transitions = false;
  Show(ORTHOGRAPHIC, 0.5);
  EXPECT_EQ(BlendAfter(50), 0.5);
  Show(PERSPECTIVE, 0.5);
  EXPECT_EQ(BlendAfter(50), 0.5);
  hub.EndOperation(OPERATION_PAN);
  EXPECT_FALSE(hub.PerformOperations());
}

TEST_F(Blend, follows_the_projection_that_the_same_frame_has_chosen) {
  hub.view = AlongAxis({5, 0, 0});
  hub.view.projection_transition = 0.0;
  EXPECT_NEAR(BlendAfter(100), 0.7, 1e-11);
  EXPECT_EQ(hub.view.projection_type, ORTHOGRAPHIC);
}

// ---- input at odd times ----

TEST(HubBeforeAnything, frames_and_input_with_no_camera_set_are_harmless) {
  ManualPlatform platform;
  MemoryHub hub;  // a camera of zeros
  EXPECT_FALSE(hub.PerformOperations());
  for (int value = -1; value <= 13; ++value) {
    const auto type = static_cast<OperationType>(value);
    hub.UpdateOperationParams(100, 100, type);
    hub.BeginOperation(type, 0, 0);
    hub.Drag(type, 300, -200);
    hub.Drag(type, -300, 200);
    EXPECT_TRUE(hub.view.IsFinite());
  }
  hub.EndOperation(OPERATION_ALL);
  EXPECT_FALSE(hub.PerformOperations());
}

TEST(HubBeforeAnything, input_before_a_viewport_size_moves_nothing_that_depends_on_it) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  hub.GetApplicationParameters().viewport_width = 0;
  hub.GetApplicationParameters().viewport_height = 0;
  const CameraParameters before = hub.view;
  for (const OperationType type : {OPERATION_PAN, OPERATION_ORBIT}) {
    hub.BeginOperation(type, 0, 0);
    EXPECT_TRUE(hub.Drag(type, 400, 300));
    hub.EndOperation(type);
  }
  EXPECT_TRUE(CameraCheckEqual(&hub.view, &before));
}

// ---- allocations ----

TEST(HubAllocations, none_in_steady_state) {
  ManualPlatform platform;
  for (const bool snap : {false, true}) {
    for (const OperationType type :
         {OPERATION_PAN, OPERATION_ORBIT, OPERATION_LOOK, OPERATION_FLY, OPERATION_DOLLY, OPERATION_ZOOM,
          OPERATION_ZOOM2D, OPERATION_HEIGHT, OPERATION_SLIDE, OPERATION_ROLL}) {
      MemoryHub hub(LookAt({3, 4, 10}, {0, 0, 0}, {0, 1, 0}));
      hub.GetApplicationParameters().do_snap_orbit = snap;
      hub.GetApplicationParameters().global_bound_radius = 1000.0;  // room to rise in
      FakeObserver observer(hub, "");
      hub.BeginOperation(type, 0, 0);
      hub.UpdateOperationParams(KEY_UP, true, type);
      hub.Drag(type, 1, 1);
      const AllocationCounter counter;
      for (int i = 0; i < 100; ++i) {
        platform.Advance(16);
        hub.Drag(type, 3 * i, -2 * i);
      }
      EXPECT_EQ(counter.GetAllocations(), 0U) << type << " snap " << snap;
      EXPECT_GT(hub.applied, 10) << type;
    }
  }
}

TEST(HubAllocations, none_in_an_idle_frame) {
  MemoryHub hub(LookAt({3, 4, 10}, {0, 0, 0}, {0, 1, 0}));
  hub.PerformOperations();  // the first look at the clock makes the default platform
  const AllocationCounter counter;
  EXPECT_FALSE(hub.PerformOperations());
  EXPECT_EQ(counter.GetAllocations(), 0U);
}
