// The hub: beginning, feeding and ending operations, and its observers. The frame and the shots have files
// of their own.
#include "korvane/camera_operations.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "camera/hub_fakes.h"
#include "camera/orbit_operation.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

using Log = std::vector<std::string>;

constexpr OperationType TYPE_11 = static_cast<OperationType>(11);
constexpr OperationType TYPE_13 = static_cast<OperationType>(13);
constexpr OperationType TYPE_MINUS_1 = static_cast<OperationType>(-1);

// Opens the members of an operation, which the hub hands out by its base.
class Peek : public Operation {
 public:
  static auto Current(const Operation& o) { return o.*&Peek::currentCursor; }
  static bool UpKey(const Operation& o) { return o.*&Peek::upKey; }
  static Vector3 Translation(const Operation& o) { return o.*&Peek::translationInput; }
  static Vector3 Rotation(const Operation& o) { return o.*&Peek::rotationInput; }
};

class CameraOperationsHub : public ::testing::Test {
 protected:
  CameraOperationsHub()
      : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), a(hub, "a"), b(hub, "b"), c(hub, "c") {
    hub.recording = true;
    hub.GetApplicationParameters().viewport_width = 1000;
    hub.GetApplicationParameters().viewport_height = 500;
  }

  void Watch(std::initializer_list<FakeObserver*> observers) {
    for (FakeObserver* const observer : observers) hub.AddOperationObserver(observer);
  }

  ManualPlatform platform;
  MemoryHub hub;
  FakeObserver a;
  FakeObserver b;
  FakeObserver c;
};

}  // namespace

// ---- beginning ----

TEST_F(CameraOperationsHub, begin_takes_its_steps_in_order) {
  Watch({&a, &b});
  EXPECT_TRUE(hub.BeginOperation(OPERATION_PAN, 5, 6));
  EXPECT_EQ(hub.TakeLog(), (Log{"recalculate selection", "query", "a: begin 0", "b: begin 0", "request"}));
}

TEST_F(CameraOperationsHub, observers_are_told_of_an_operation_that_has_its_slot_and_its_start) {
  Watch({&a});
  hub.view.eye = {0, 0, 20};
  bool seen = false;
  a.onBegin = [&](OperationType type) {
    const auto* const orbit = dynamic_cast<OrbitOperation*>(hub.GetActiveOperation(type));
    ASSERT_NE(orbit, nullptr);
    EXPECT_EQ(orbit->GetInitialCamera().eye, Vector3(0, 0, 20));
    EXPECT_EQ(Peek::Current(*orbit).x, 5);
    EXPECT_EQ(Peek::Current(*orbit).y, 6);
    seen = true;
  };
  hub.BeginOperation(OPERATION_ORBIT, 5, 6);
  EXPECT_TRUE(seen);
  EXPECT_EQ(a.lastCamera.eye, Vector3(0, 0, 20));
}

TEST_F(CameraOperationsHub, the_selection_is_recalculated_before_the_camera_is_queried) {
  hub.onRecalculateSelection = [&] { hub.view.eye = {0, 0, 30}; };
  hub.BeginOperation(OPERATION_ORBIT, 0, 0);
  EXPECT_EQ(hub.GetCameraParameters().eye, Vector3(0, 0, 30));
}

TEST_F(CameraOperationsHub, begin_with_type_11_or_12_fails_and_changes_nothing) {
  Watch({&a});
  for (const OperationType type : {TYPE_11, OPERATION_ALL, TYPE_13, TYPE_MINUS_1}) {
    EXPECT_FALSE(hub.BeginOperation(type, 0, 0)) << type;
    EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
  }
  EXPECT_EQ(hub.TakeLog(), Log{});
}

TEST_F(CameraOperationsHub, beginning_a_kind_again_starts_anew_without_an_end) {
  Watch({&a});
  hub.BeginOperation(OPERATION_PAN, 1, 1);
  EXPECT_TRUE(hub.BeginOperation(OPERATION_PAN, 2, 2));
  EXPECT_EQ(a.begun, 2);
  EXPECT_EQ(a.ended, 0);
  EXPECT_EQ(Peek::Current(*hub.GetActiveOperation(OPERATION_PAN)).x, 2);
}

// ---- ending ----

TEST_F(CameraOperationsHub, end_clears_the_slot_then_tells_the_observers_then_asks_for_a_frame) {
  Watch({&a, &b});
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.TakeLog();
  bool active = true;
  a.onEnd = [&](OperationType type) { active = hub.IsOperationActive(type); };
  EXPECT_TRUE(hub.EndOperation(OPERATION_PAN));
  EXPECT_FALSE(active);
  EXPECT_EQ(hub.TakeLog(), (Log{"a: end 0", "b: end 0", "request"}));
}

TEST_F(CameraOperationsHub, ending_an_empty_slot_succeeds_and_tells_nobody) {
  Watch({&a});
  EXPECT_TRUE(hub.EndOperation(OPERATION_PAN));
  EXPECT_TRUE(hub.EndOperation(OPERATION_CAM3D_CONTROLLER));
  EXPECT_EQ(hub.TakeLog(), Log{});
}

TEST_F(CameraOperationsHub, ending_type_11_fails_and_ending_all_succeeds_also_when_nothing_is_active) {
  EXPECT_FALSE(hub.EndOperation(TYPE_11));
  EXPECT_FALSE(hub.EndOperation(TYPE_13));
  EXPECT_FALSE(hub.EndOperation(TYPE_MINUS_1));
  EXPECT_TRUE(hub.EndOperation(OPERATION_ALL));
  EXPECT_EQ(hub.TakeLog(), Log{});
}

TEST_F(CameraOperationsHub, ending_all_ends_each_in_ascending_order) {
  Watch({&a});
  hub.BeginOperation(OPERATION_ZOOM, 0, 0);
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.BeginOperation(OPERATION_ORBIT, 0, 0);
  hub.TakeLog();
  EXPECT_TRUE(hub.EndOperation(OPERATION_ALL));
  EXPECT_EQ(hub.TakeLog(), (Log{"a: end 0", "request", "a: end 1", "request", "a: end 5", "request"}));
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
}

// ---- input ----

TEST_F(CameraOperationsHub, input_only_stores_and_never_moves_the_camera) {
  Watch({&a});
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.TakeLog();
  EXPECT_TRUE(hub.UpdateOperationParams(7, 8, OPERATION_PAN));
  EXPECT_TRUE(hub.UpdateOperationParams(KEY_UP, true, OPERATION_PAN));
  EXPECT_TRUE(hub.UpdateOperationParams({1, 2, 3}, {4, 5, 6}, OPERATION_PAN));
  const Operation& pan = *hub.GetActiveOperation(OPERATION_PAN);
  EXPECT_EQ(Peek::Current(pan).x, 7);
  EXPECT_EQ(Peek::Current(pan).y, 8);
  EXPECT_TRUE(Peek::UpKey(pan));
  EXPECT_EQ(Peek::Translation(pan), Vector3(1, 2, 3));
  EXPECT_EQ(Peek::Rotation(pan), Vector3(4, 5, 6));
  EXPECT_EQ(hub.TakeLog(), Log{});
}

TEST_F(CameraOperationsHub, input_for_an_inactive_type_succeeds_and_has_no_effect) {
  hub.BeginOperation(OPERATION_ZOOM, 0, 0);
  hub.TakeLog();
  EXPECT_TRUE(hub.UpdateOperationParams(7, 8, OPERATION_PAN));
  EXPECT_TRUE(hub.UpdateOperationParams(KEY_UP, true, OPERATION_PAN));
  EXPECT_TRUE(hub.UpdateOperationParams({1, 2, 3}, {4, 5, 6}, OPERATION_PAN));
  EXPECT_EQ(Peek::Current(*hub.GetActiveOperation(OPERATION_ZOOM)).x, 0);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_PAN));
  EXPECT_EQ(hub.TakeLog(), Log{});
}

TEST_F(CameraOperationsHub, input_for_a_type_out_of_range_fails) {
  for (const OperationType type : {TYPE_11, TYPE_13, TYPE_MINUS_1}) {
    EXPECT_FALSE(hub.UpdateOperationParams(7, 8, type)) << type;
    EXPECT_FALSE(hub.UpdateOperationParams(KEY_UP, true, type)) << type;
    EXPECT_FALSE(hub.UpdateOperationParams({1, 2, 3}, {4, 5, 6}, type)) << type;
  }
}

namespace {

// Writes down which kinds come through the virtual table.
class TableHub : public MemoryHub {
 public:
  bool EndOperation(OperationType type) override {
    Record("end " + std::to_string(type));
    return MemoryHub::EndOperation(type);
  }
  bool UpdateOperationParams(Vector3 translation, Vector3 rotation, OperationType type) override {
    Record("vectors " + std::to_string(type));
    return MemoryHub::UpdateOperationParams(translation, rotation, type);
  }
  bool UpdateOperationParams(KeyID key, bool pressed, OperationType type) override {
    Record("key " + std::to_string(type));
    return MemoryHub::UpdateOperationParams(key, pressed, type);
  }
  bool UpdateOperationParams(int x, int y, OperationType type) override {
    Record("cursor " + std::to_string(type));
    return MemoryHub::UpdateOperationParams(x, y, type);
  }
};

Log AllOf(const std::string& what) {
  Log expected = {what + " 12"};
  for (int type = 0; type <= 10; ++type) expected.push_back(what + " " + std::to_string(type));
  return expected;
}

}  // namespace

TEST(CameraOperationsAll, each_form_calls_itself_for_the_eleven_types_through_the_virtual_table) {
  TableHub hub;
  hub.recording = true;
  EXPECT_TRUE(hub.UpdateOperationParams(1, 2, OPERATION_ALL));
  EXPECT_EQ(hub.TakeLog(), AllOf("cursor"));
  EXPECT_TRUE(hub.UpdateOperationParams(KEY_UP, true, OPERATION_ALL));
  EXPECT_EQ(hub.TakeLog(), AllOf("key"));
  EXPECT_TRUE(hub.UpdateOperationParams(Vector3(), Vector3(), OPERATION_ALL));
  EXPECT_EQ(hub.TakeLog(), AllOf("vectors"));
  EXPECT_TRUE(hub.EndOperation(OPERATION_ALL));
  EXPECT_EQ(hub.TakeLog(), AllOf("end"));
}

TEST_F(CameraOperationsHub, all_reaches_every_active_operation) {
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.BeginOperation(OPERATION_ZOOM2D, 0, 0);
  EXPECT_TRUE(hub.UpdateOperationParams(3, 4, OPERATION_ALL));
  EXPECT_EQ(Peek::Current(*hub.GetActiveOperation(OPERATION_PAN)).x, 3);
  EXPECT_EQ(Peek::Current(*hub.GetActiveOperation(OPERATION_ZOOM2D)).y, 4);
}

// ---- queries ----

TEST_F(CameraOperationsHub, queries_tell_which_slots_are_in_use) {
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
  hub.BeginOperation(OPERATION_ZOOM, 0, 0);
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_ZOOM));
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_ALL));
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_PAN));
  EXPECT_NE(hub.GetActiveOperation(OPERATION_ZOOM), nullptr);
  EXPECT_EQ(hub.GetActiveOperation(OPERATION_PAN), nullptr);
  for (const OperationType type : {TYPE_11, TYPE_13, TYPE_MINUS_1}) {
    EXPECT_FALSE(hub.IsOperationActive(type)) << type;
    EXPECT_EQ(hub.GetActiveOperation(type), nullptr) << type;
  }
  EXPECT_EQ(hub.GetActiveOperation(OPERATION_ALL), nullptr);
}

TEST_F(CameraOperationsHub, home_camera_and_both_forms_of_the_parameters_are_the_hubs_own) {
  hub.GetApplicationParameters().home_camera.eye = {9, 9, 9};
  EXPECT_EQ(hub.GetHomeCamera().eye, Vector3(9, 9, 9));
  hub.GetHomeCamera().eye = {8, 8, 8};
  const CameraOperations& reading = hub;
  EXPECT_EQ(reading.GetApplicationParameters().home_camera.eye, Vector3(8, 8, 8));
  EXPECT_EQ(&reading.GetApplicationParameters(), &hub.GetApplicationParameters());
}

// ---- observers ----

TEST_F(CameraOperationsHub, null_observers_are_ignored) {
  hub.AddOperationObserver(nullptr);
  hub.RemoveOperationObserver(nullptr);
  Watch({&a});
  hub.RemoveOperationObserver(nullptr);
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_EQ(a.begun, 1);
}

TEST_F(CameraOperationsHub, two_observers_registered_twice_are_called_twice_each_and_one_remove_takes_both) {
  Watch({&a, &b, &a, &b});
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_EQ(hub.TakeLog(), (Log{"recalculate selection", "query", "a: begin 0", "b: begin 0", "a: begin 0",
                                "b: begin 0", "request"}));
  hub.RemoveOperationObserver(&a);
  hub.EndOperation(OPERATION_PAN);
  EXPECT_EQ(a.ended, 0);
  EXPECT_EQ(b.ended, 2);
}

TEST_F(CameraOperationsHub, removing_an_observer_that_was_never_added_changes_nothing) {
  Watch({&a});
  hub.RemoveOperationObserver(&b);
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_EQ(a.begun, 1);
}

TEST_F(CameraOperationsHub, an_observer_may_remove_itself_while_being_told) {
  Watch({&a, &b, &c});
  b.onBegin = [&](OperationType) { hub.RemoveOperationObserver(&b); };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.EndOperation(OPERATION_PAN);
  EXPECT_EQ(hub.TakeLog(), (Log{"recalculate selection", "query", "a: begin 0", "b: begin 0", "c: begin 0",
                                "request", "a: end 0", "c: end 0", "request"}));
}

TEST_F(CameraOperationsHub, an_observer_listed_twice_in_a_row_may_remove_itself_while_being_told) {
  Watch({&a, &a, &b});
  a.onBegin = [&](OperationType) { hub.RemoveOperationObserver(&a); };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_EQ(a.begun, 1);
  EXPECT_EQ(b.begun, 1);
}

TEST_F(CameraOperationsHub, an_observer_may_remove_the_next_and_the_previous_while_being_told) {
  Watch({&a, &b, &c});
  a.onBegin = [&](OperationType) { hub.RemoveOperationObserver(&b); };
  c.onBegin = [&](OperationType) { hub.RemoveOperationObserver(&a); };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_EQ(b.begun, 0);
  EXPECT_EQ(c.begun, 1);
  hub.EndOperation(OPERATION_PAN);
  EXPECT_EQ(a.ended, 0);
  EXPECT_EQ(c.ended, 1);
}

TEST_F(CameraOperationsHub, an_observer_may_remove_all_while_being_told) {
  Watch({&a, &b, &c});
  a.onPerform = [&](OperationType) {
    for (FakeObserver* const each : {&a, &b, &c}) hub.RemoveOperationObserver(each);
  };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(a.performed, 1);
  EXPECT_EQ(b.performed + c.performed, 0);
}

TEST_F(CameraOperationsHub, an_observer_that_is_added_while_another_is_told_is_told_from_then_on) {
  Watch({&a, &b});
  a.onBegin = [&](OperationType) {
    a.onBegin = nullptr;
    hub.AddOperationObserver(&c);
  };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_EQ(c.begun, 1);  // it stands behind b, which is still to come
  hub.EndOperation(OPERATION_PAN);
  EXPECT_EQ(c.ended, 1);
}

TEST_F(CameraOperationsHub, an_observer_that_the_last_one_adds_is_told_from_the_next_round_on) {
  Watch({&a});
  a.onBegin = [&](OperationType) { hub.AddOperationObserver(&b); };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_EQ(b.begun, 0);
  hub.EndOperation(OPERATION_PAN);
  EXPECT_EQ(b.ended, 1);
}

TEST_F(CameraOperationsHub, an_observer_may_end_the_operation_that_it_is_told_of) {
  Watch({&a, &b});
  a.onPerform = [&](OperationType type) { hub.EndOperation(type); };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.TakeLog();
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.TakeLog(),
            (Log{"query", "a: perform 0", "a: end 0", "b: end 0", "request", "b: perform 0", "request"}));
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_PAN));
  EXPECT_FALSE(hub.PerformOperations());
}

TEST_F(CameraOperationsHub, an_observer_may_end_the_operation_whose_begin_it_is_told_of) {
  Watch({&a});
  a.onBegin = [&](OperationType type) { hub.EndOperation(type); };
  EXPECT_TRUE(hub.BeginOperation(OPERATION_PAN, 0, 0));
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL));
}

TEST_F(CameraOperationsHub, a_begin_whose_operation_the_hosts_own_hook_has_ended_fails) {
  Watch({&a});
  hub.onRecalculateSelection = [&] { hub.EndOperation(OPERATION_ALL); };
  EXPECT_FALSE(hub.BeginOperation(OPERATION_PAN, 0, 0));
  EXPECT_EQ(a.begun, 0);
  EXPECT_FALSE(hub.PerformOperations());
}

TEST_F(CameraOperationsHub,
       an_operation_that_an_observer_begins_runs_in_the_same_frame_when_its_kind_is_higher) {
  Watch({&a});
  a.onPerform = [&](OperationType type) {
    if (type == OPERATION_ORBIT && !hub.IsOperationActive(OPERATION_PAN)) {
      hub.BeginOperation(OPERATION_PAN, 0, 0);
      hub.BeginOperation(OPERATION_ZOOM, 0, 0);
    }
  };
  hub.BeginOperation(OPERATION_ORBIT, 0, 0);
  hub.TakeLog();
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.TakeLog(),
            (Log{"query", "a: perform 1", "recalculate selection", "query", "a: begin 0", "request",
                 "recalculate selection", "query", "a: begin 5", "request", "a: perform 5", "request"}));
  hub.PerformOperations();
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "a: perform 0", "a: perform 1", "a: perform 5", "request"}));
}

TEST_F(CameraOperationsHub, an_observer_that_ends_everything_stops_the_kinds_still_to_come) {
  Watch({&a});
  a.onPerform = [&](OperationType) { hub.EndOperation(OPERATION_ALL); };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.BeginOperation(OPERATION_ZOOM, 0, 0);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(a.performed, 1);
  EXPECT_EQ(a.ended, 2);
}

TEST_F(CameraOperationsHub, rounds_of_notification_may_be_nested_while_the_list_changes) {
  // a ends the pan; within that inner round b removes itself and c, so the outer round has nobody left.
  Watch({&a, &b, &c});
  a.onPerform = [&](OperationType type) { hub.EndOperation(type); };
  b.onEnd = [&](OperationType) {
    hub.RemoveOperationObserver(&b);
    hub.RemoveOperationObserver(&c);
  };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.PerformOperations();
  EXPECT_EQ(b.performed + c.performed, 0);
  EXPECT_EQ(b.ended, 1);
  EXPECT_EQ(c.ended, 0);
}

TEST_F(CameraOperationsHub, a_hub_that_is_destroyed_drops_what_runs_without_a_word) {
  FakeObserver* told = nullptr;
  {
    MemoryHub dying;
    FakeObserver observer(hub, "dying");
    told = &observer;
    dying.AddOperationObserver(told);
    dying.BeginOperation(OPERATION_PAN, 0, 0);
    dying.BeginShot(new FakeShot(hub));
    hub.TakeLog();
    EXPECT_EQ(observer.ended, 0);
  }
  EXPECT_EQ(hub.TakeLog(), (Log{"shot: destroyed"}));
}
