// The life of the hub's one shot.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>

#include "camera/hub_fakes.h"
#include "korvane/camera_operations.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

using Log = std::vector<std::string>;

class HubShot : public ::testing::Test {
 protected:
  HubShot() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), observer(hub), other(hub) {
    hub.recording = true;
  }
  // A fake shot writes into the hub's log to its end, so it must end before the hub.
  ~HubShot() override {
    hub.onBeginShotHook = hub.onEndShotHook = nullptr;
    hub.EndShot();
  }

  FakeShot* Begin(FakeShot::Perform perform = nullptr, const std::string& name = "shot") {
    auto* const shot = new FakeShot(hub, std::move(perform), name);
    hub.BeginShot(shot);
    return shot;
  }

  static bool EndsAt77(double, CameraParameters& camera) {
    camera.eye = {0, 0, 77};
    return false;
  }
  static bool GoesOnAt77(double, CameraParameters& camera) {
    camera.eye = {0, 0, 77};
    return true;
  }

  ManualPlatform platform;
  MemoryHub hub;
  FakeShotObserver observer;
  FakeShotObserver other;
};

}  // namespace

TEST(ShotBase, virtual_operations_stand_in_slot_order) {
  EXPECT_EQ(VirtualSlot(&Shot::InitShot), 2);
  EXPECT_EQ(VirtualSlot(&Shot::PerformShot), 3);
  EXPECT_EQ(VirtualSlot(&ShotObserver::OnEndShot), 2);
}

// ---- beginning ----

TEST_F(HubShot, begin_takes_its_steps_in_order) {
  hub.view.eye = {0, 0, 55};
  Vector3 seen;
  hub.onBeginShotHook = [&](Shot* begun) {
    EXPECT_EQ(hub.GetActiveShot(), begun);
    seen = hub.GetCameraParameters().eye;
  };
  const FakeShot* const shot = Begin();
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "shot: init", "begin shot hook", "request"}));
  EXPECT_EQ(shot->initialisedWith, &hub);
  EXPECT_EQ(seen, Vector3(0, 0, 55));
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_EQ(hub.GetActiveShot(), shot);
}

TEST_F(HubShot, begin_of_null_fails_and_leaves_the_running_shot) {
  Begin();
  hub.TakeLog();
  EXPECT_FALSE(hub.BeginShot(nullptr));
  EXPECT_EQ(hub.TakeLog(), Log{});
  EXPECT_TRUE(hub.IsShotActive());
}

TEST_F(HubShot, begin_succeeds) { EXPECT_TRUE(hub.BeginShot(new FakeShot(hub))); }

TEST_F(HubShot, a_running_shot_ends_first_with_its_observer_told) {
  Begin(nullptr, "first");
  hub.SetActiveShotObserver(&observer);
  hub.TakeLog();
  Begin(nullptr, "second");
  EXPECT_EQ(hub.TakeLog(), (Log{"shot observer", "end shot hook", "first: destroyed", "request", "query",
                                "second: init", "begin shot hook", "request"}));
}

TEST_F(HubShot, begin_clears_the_observer_so_it_must_be_set_afterwards) {
  Begin();
  hub.SetActiveShotObserver(&observer);
  Begin();
  EXPECT_EQ(observer.told, 1);
  hub.EndShot();
  EXPECT_EQ(observer.told, 1);
}

// ---- the observer ----

TEST_F(HubShot, an_observer_without_a_shot_is_refused_and_never_called) {
  EXPECT_FALSE(hub.SetActiveShotObserver(&observer));
  Begin();
  hub.EndShot();
  EXPECT_EQ(observer.told, 0);
}

TEST_F(HubShot, a_null_observer_is_refused_and_the_one_before_stays) {
  Begin();
  EXPECT_TRUE(hub.SetActiveShotObserver(&observer));
  EXPECT_FALSE(hub.SetActiveShotObserver(nullptr));
  hub.EndShot();
  EXPECT_EQ(observer.told, 1);
}

TEST_F(HubShot, the_last_observer_that_was_set_is_the_one) {
  Begin();
  hub.SetActiveShotObserver(&observer);
  hub.SetActiveShotObserver(&other);
  hub.EndShot();
  EXPECT_EQ(observer.told, 0);
  EXPECT_EQ(other.told, 1);
}

TEST_F(HubShot, an_observer_that_dies_before_the_shot_ends_is_forgotten) {
  Begin();
  {
    FakeShotObserver dying(hub);
    EXPECT_TRUE(hub.SetActiveShotObserver(&dying));
  }
  hub.TakeLog();
  EXPECT_TRUE(hub.EndShot());
  EXPECT_EQ(hub.TakeLog(), (Log{"end shot hook", "shot: destroyed", "request"}));
}

TEST_F(HubShot, the_observer_sees_the_shot_while_it_still_exists) {
  const FakeShot* const shot = Begin();
  hub.SetActiveShotObserver(&observer);
  hub.TakeLog();
  bool active = false;
  observer.onEnd = [&] { active = hub.GetActiveShot() == shot; };
  EXPECT_TRUE(hub.EndShot());
  EXPECT_TRUE(active);
  EXPECT_EQ(observer.lastShot, shot);
  EXPECT_EQ(hub.TakeLog(), (Log{"shot observer", "end shot hook", "shot: destroyed", "request"}));
}

TEST_F(HubShot, ending_without_a_shot_succeeds_and_does_nothing) {
  EXPECT_TRUE(hub.EndShot());
  EXPECT_EQ(hub.TakeLog(), Log{});
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_EQ(hub.GetActiveShot(), nullptr);
}

TEST_F(HubShot, the_observer_fires_once_also_when_the_shot_is_ended_twice) {
  Begin();
  hub.SetActiveShotObserver(&observer);
  hub.EndShot();
  hub.EndShot();
  EXPECT_EQ(observer.told, 1);
}

TEST_F(HubShot, an_observer_that_ends_the_shot_again_is_told_once) {
  Begin();
  hub.SetActiveShotObserver(&observer);
  observer.onEnd = [&] { hub.EndShot(); };
  hub.TakeLog();
  EXPECT_TRUE(hub.EndShot());
  EXPECT_EQ(observer.told, 1);
  EXPECT_FALSE(hub.IsShotActive());
  const Log log = hub.TakeLog();
  EXPECT_EQ(std::count(log.begin(), log.end(), "end shot hook"), 1);
  EXPECT_EQ(std::count(log.begin(), log.end(), "shot: destroyed"), 1);
}

TEST_F(HubShot, an_observer_set_while_a_shot_is_ending_does_not_pass_to_the_next_shot) {
  Begin();
  hub.SetActiveShotObserver(&observer);
  observer.onEnd = [&] { hub.SetActiveShotObserver(&other); };
  hub.EndShot();
  Begin();
  hub.EndShot();
  EXPECT_EQ(observer.told, 1);
  EXPECT_EQ(other.told, 0);
}

TEST_F(HubShot, an_observer_that_begins_a_new_shot_is_told_once_and_the_new_shot_stays) {
  Begin(nullptr, "first");
  hub.SetActiveShotObserver(&observer);
  const FakeShot* second = nullptr;
  observer.onEnd = [&] {
    second = Begin(nullptr, "second");
    hub.SetActiveShotObserver(&other);
  };
  hub.TakeLog();
  EXPECT_TRUE(hub.EndShot());
  EXPECT_EQ(observer.told, 1);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(hub.GetActiveShot(), second);
  EXPECT_EQ(other.told, 0);
  const Log log = hub.TakeLog();
  EXPECT_EQ(std::count(log.begin(), log.end(), "end shot hook"), 1);
  EXPECT_EQ(std::count(log.begin(), log.end(), "first: destroyed"), 1);
  EXPECT_EQ(std::count(log.begin(), log.end(), "second: destroyed"), 0);
  hub.EndShot();
  EXPECT_EQ(other.told, 1);
}

TEST_F(HubShot, an_observer_that_begins_a_new_shot_at_the_end_of_a_frame_keeps_it) {
  Begin(EndsAt77, "first");
  hub.SetActiveShotObserver(&observer);
  observer.onEnd = [&] { Begin(nullptr, "second"); };
  hub.PerformOperations();
  EXPECT_EQ(observer.told, 1);
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_TRUE(hub.PerformOperations());
}

TEST_F(HubShot, one_begun_by_the_observer_of_the_shot_that_another_replaces_is_ended_too) {
  Begin(nullptr, "first");
  hub.SetActiveShotObserver(&observer);
  observer.onEnd = [&] {
    Begin(nullptr, "second");
    hub.SetActiveShotObserver(&other);
  };
  hub.TakeLog();
  const FakeShot* const third = Begin(nullptr, "third");
  EXPECT_EQ(hub.GetActiveShot(), third);
  EXPECT_EQ(observer.told, 1);
  EXPECT_EQ(other.told, 1);
  const Log log = hub.TakeLog();
  EXPECT_EQ(std::count(log.begin(), log.end(), "end shot hook"), 2);
  EXPECT_EQ(std::count(log.begin(), log.end(), "second: destroyed"), 1);
}

TEST_F(HubShot, the_hook_sees_the_shot_while_it_is_still_the_active_one) {
  const FakeShot* const shot = Begin();
  const Shot* active = nullptr;
  bool refused = false;
  hub.onEndShotHook = [&](Shot*) {
    active = hub.GetActiveShot();
    refused = hub.EndShot() && hub.GetActiveShot() == shot;  // it is ending already
  };
  hub.EndShot();
  EXPECT_EQ(active, shot);
  EXPECT_TRUE(refused);
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(HubShot, a_shot_at_the_very_place_of_one_that_ended_can_be_ended_too) {
  struct Resident : FakeShot {
    using FakeShot::FakeShot;
    static void* operator new(std::size_t) {
      alignas(Resident) static std::byte place[sizeof(Resident)];
      return place;
    }
    static void operator delete(void*) {}
  };
  for (int i = 0; i < 2; ++i) {
    hub.BeginShot(new Resident(hub));
    EXPECT_TRUE(hub.IsShotActive());
    hub.EndShot();
    EXPECT_FALSE(hub.IsShotActive());
  }
}

TEST_F(HubShot, the_hook_may_begin_and_end_another_shot_and_hears_of_both_once) {
  const FakeShot* const first = Begin(nullptr, "first");
  const FakeShot* second = nullptr;
  std::vector<const Shot*> ended;
  hub.onEndShotHook = [&](const Shot* shot) {
    ended.push_back(shot);
    if (second != nullptr) return;
    second = Begin(nullptr, "second");
    hub.EndShot();
    EXPECT_FALSE(hub.IsShotActive());
  };
  hub.TakeLog();
  hub.EndShot();
  EXPECT_EQ(ended, (std::vector<const Shot*>{first, second}));
  EXPECT_FALSE(hub.IsShotActive());
  const Log log = hub.TakeLog();
  EXPECT_EQ(std::count(log.begin(), log.end(), "first: destroyed"), 1);
  EXPECT_EQ(std::count(log.begin(), log.end(), "second: destroyed"), 1);
}

TEST_F(HubShot, the_hook_may_begin_a_new_shot_and_hears_of_each_end_once) {
  Begin(nullptr, "first");
  std::vector<Shot*> ended;
  const FakeShot* second = nullptr;
  hub.onEndShotHook = [&](Shot* shot) {
    ended.push_back(shot);
    if (second == nullptr) {
      auto* const begun = new FakeShot(hub, nullptr, "second");
      second = begun;
      hub.BeginShot(begun);
    }
  };
  Shot* const first = hub.GetActiveShot();
  hub.EndShot();
  EXPECT_EQ(ended, (std::vector<Shot*>{first}));
  EXPECT_EQ(hub.GetActiveShot(), second);
}

TEST_F(HubShot, the_hook_may_end_the_shot_again_and_hears_of_it_once) {
  Begin();
  int told = 0;
  hub.onEndShotHook = [&](Shot*) {
    if (++told < 10) hub.EndShot();
  };
  hub.EndShot();
  EXPECT_EQ(told, 1);
  EXPECT_FALSE(hub.IsShotActive());
}

// ---- within the frame ----

TEST_F(HubShot, its_last_camera_is_applied_before_the_observer_fires_with_it) {
  Begin(EndsAt77);
  hub.SetActiveShotObserver(&observer);
  hub.TakeLog();
  EXPECT_FALSE(hub.PerformOperations());  // nothing else was active
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "shot: perform", "apply", "shot observer", "end shot hook",
                                "shot: destroyed", "request"}));
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 77));
  EXPECT_EQ(observer.lastCamera.eye, Vector3(0, 0, 77));
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(HubShot, one_that_goes_on_keeps_the_frames_coming) {
  Begin(GoesOnAt77);
  hub.TakeLog();
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "shot: perform", "apply", "request"}));
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "shot: perform", "request"}));
}

TEST_F(HubShot, one_that_ends_resets_the_frame_clock) {
  Begin(EndsAt77);
  hub.PerformOperations();
  platform.Advance(3000);
  const FakeShot* const next = Begin();
  hub.PerformOperations();
  EXPECT_EQ(next->lastDelta, 0.0);
}

TEST_F(HubShot, one_begun_by_an_operation_observer_runs_in_the_same_frame) {
  FakeObserver operationObserver(hub, "observer");
  hub.AddOperationObserver(&operationObserver);
  operationObserver.onPerform = [&](OperationType) {
    operationObserver.onPerform = nullptr;
    Begin(GoesOnAt77);
  };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  hub.PerformOperations();
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 77));
}

TEST_F(HubShot, an_operation_observer_may_end_it) {
  FakeObserver operationObserver(hub, "observer");
  hub.AddOperationObserver(&operationObserver);
  operationObserver.onPerform = [&](OperationType) { hub.EndShot(); };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  Begin(GoesOnAt77);
  hub.SetActiveShotObserver(&observer);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(observer.told, 1);
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 10));
}

TEST_F(HubShot, it_may_end_itself_while_it_performs) {
  Begin([&](double, CameraParameters& camera) {
    hub.EndShot();
    camera.eye = {0, 0, 77};
    return false;
  });
  hub.SetActiveShotObserver(&observer);
  hub.TakeLog();
  hub.PerformOperations();
  const Log log = hub.TakeLog();
  EXPECT_EQ(std::count(log.begin(), log.end(), "shot: destroyed while performing"), 0);
  EXPECT_EQ(std::count(log.begin(), log.end(), "shot: destroyed"), 1);
  EXPECT_EQ(observer.told, 1);
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(HubShot, it_may_begin_another_while_it_performs_and_the_other_stays) {
  const FakeShot* second = nullptr;
  Begin([&](double, CameraParameters&) {
    second = Begin(nullptr, "second");
    return false;
  });
  hub.SetActiveShotObserver(&observer);
  hub.TakeLog();
  hub.PerformOperations();
  const Log log = hub.TakeLog();
  EXPECT_EQ(std::count(log.begin(), log.end(), "shot: destroyed while performing"), 0);
  EXPECT_EQ(observer.told, 1);
  EXPECT_EQ(hub.GetActiveShot(), second);
}

TEST_F(HubShot, one_that_breaks_the_camera_leaves_it_where_it_was) {
  Begin([](double, CameraParameters& camera) {
    camera.eye.x = std::numeric_limits<double>::quiet_NaN();
    return true;
  });
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.applied, 0);
  EXPECT_TRUE(hub.GetCameraParameters().IsFinite());
  EXPECT_TRUE(hub.AdvanceActiveShot(0.1));
  EXPECT_EQ(hub.applied, 0);
}

TEST_F(HubShot, one_that_takes_the_up_from_the_camera_leaves_it_where_it_was) {
  Begin([](double, CameraParameters& camera) {
    camera.eye = {0, 0, 77};
    camera.up = {0, 1e-8, 0};  // too short to be normalised
    return true;
  });
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_TRUE(hub.AdvanceActiveShot(0.1));
  EXPECT_EQ(hub.applied, 0);
  EXPECT_EQ(hub.GetCameraParameters().eye, Vector3(0, 0, 10));
  EXPECT_EQ(hub.GetCameraParameters().up, Vector3(0, 1, 0));
}

TEST_F(HubShot, one_moves_a_camera_of_the_host_that_never_had_an_up) {
  hub.view.up = {0, 0, 0};
  Begin(GoesOnAt77);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 77));
}

// ---- stepping by hand ----

TEST_F(HubShot, advancing_without_a_shot_fails) {
  EXPECT_FALSE(hub.AdvanceActiveShot(0.5));
  EXPECT_EQ(hub.TakeLog(), Log{});
}

TEST_F(HubShot, advancing_steps_it_by_the_callers_time_from_the_hosts_camera) {
  Vector3 seen;
  const FakeShot* const shot = Begin([&](double, CameraParameters& camera) {
    seen = camera.eye;
    camera.eye = {0, 0, 77};
    return true;
  });
  hub.view.eye = {0, 0, 33};
  hub.TakeLog();
  EXPECT_TRUE(hub.AdvanceActiveShot(1.25));
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "shot: perform", "apply", "request"}));
  EXPECT_EQ(shot->lastDelta, 1.25);
  EXPECT_EQ(seen, Vector3(0, 0, 33));
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 77));
}

TEST_F(HubShot, advancing_applies_nothing_when_the_camera_did_not_change) {
  Begin();
  hub.TakeLog();
  EXPECT_TRUE(hub.AdvanceActiveShot(0.5));
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "shot: perform"}));
}

TEST_F(HubShot, advancing_does_not_apply_the_last_step_and_never_ends_the_shot) {
  Begin(EndsAt77);
  hub.SetActiveShotObserver(&observer);
  hub.TakeLog();
  EXPECT_TRUE(hub.AdvanceActiveShot(0.5));
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "shot: perform"}));
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_EQ(observer.told, 0);
}

TEST_F(HubShot, advancing_performs_no_operation_and_leaves_the_frame_clock) {
  FakeObserver operationObserver(hub, "observer");
  hub.AddOperationObserver(&operationObserver);
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  Begin();
  hub.PerformOperations();
  platform.Advance(100);
  hub.AdvanceActiveShot(9.0);
  EXPECT_EQ(operationObserver.performed, 1);
  platform.Advance(100);
  hub.PerformOperations();
  EXPECT_NEAR(operationObserver.lastDelta, 0.2, 1e-12);  // a clock in seconds near 1 carries 1e-16
}
