// What a host does to the hub from within the hub's own calls.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "camera/hub_fakes.h"
#include "korvane/camera_operations.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

using Log = std::vector<std::string>;

const OperationType KINDS[] = {OPERATION_PAN,   OPERATION_ORBIT, OPERATION_LOOK,   OPERATION_FLY,
                               OPERATION_DOLLY, OPERATION_ZOOM,  OPERATION_ZOOM2D, OPERATION_HEIGHT,
                               OPERATION_SLIDE, OPERATION_ROLL};

class HubReentry : public ::testing::Test {
 protected:
  HubReentry() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), observer(hub, "observer") {
    hub.recording = true;
    hub.AddOperationObserver(&observer);
  }
  ~HubReentry() override {
    hub.onRecalculateGlobal = hub.onRecalculateSelection = nullptr;
    hub.onBeginShotHook = hub.onEndShotHook = nullptr;
    hub.EndShot();
  }

  int CountInLog(const std::string& entry) const {
    return static_cast<int>(std::count(hub.log.begin(), hub.log.end(), entry));
  }

  ManualPlatform platform;
  MemoryHub hub;
  FakeObserver observer;
};

// Counts the calls that come through the virtual table.
struct CountingHub : MemoryHub {
  bool EndShot() override {
    ++ended;
    return MemoryHub::EndShot();
  }
  int ended = 0;
};

}  // namespace

// ---- operations ----

TEST_F(HubReentry, a_hook_that_ends_an_operation_within_its_begin_makes_the_begin_fail) {
  // Walk, height and dolly bring the bounds up to date while they begin; the others run no hook there.
  hub.onRecalculateGlobal = [&] { hub.EndOperation(OPERATION_ALL); };
  for (const OperationType kind : {OPERATION_FLY, OPERATION_HEIGHT, OPERATION_DOLLY}) {
    EXPECT_FALSE(hub.BeginOperation(kind, 10, 10)) << kind;
    EXPECT_FALSE(hub.IsOperationActive(kind)) << kind;
    EXPECT_FALSE(hub.PerformOperations()) << kind;
  }
  EXPECT_EQ(observer.begun, 0);
  EXPECT_EQ(observer.ended, 3);
}

TEST_F(HubReentry, a_hook_that_begins_the_kind_anew_within_its_begin_keeps_the_new_one) {
  for (const OperationType kind : {OPERATION_FLY, OPERATION_HEIGHT, OPERATION_DOLLY}) {
    const Operation* inner = nullptr;
    hub.onRecalculateGlobal = [&] {
      const auto once = std::exchange(hub.onRecalculateGlobal, nullptr);
      EXPECT_TRUE(hub.BeginOperation(kind, 1, 1));
      inner = hub.GetActiveOperation(kind);
    };
    observer.begun = 0;
    EXPECT_FALSE(hub.BeginOperation(kind, 10, 10)) << kind;
    EXPECT_EQ(hub.GetActiveOperation(kind), inner) << kind;
    EXPECT_EQ(observer.begun, 1) << kind;
    hub.EndOperation(kind);
  }
}

TEST_F(HubReentry, every_kind_may_be_ended_or_begun_anew_by_whoever_is_told_of_its_begin_step_or_end) {
  const std::function<void(OperationType)> actions[] = {
      [&](OperationType kind) { hub.EndOperation(kind); },
      [&](OperationType kind) {
        hub.EndOperation(kind);
        hub.BeginOperation(kind, 2, 2);
      },
      [&](OperationType kind) { hub.BeginOperation(kind, 3, 3); },
  };
  for (const OperationType kind : KINDS) {
    for (const auto& action : actions) {
      for (auto* const callback : {&observer.onBegin, &observer.onPerform, &observer.onEnd}) {
        *callback = [&, callback](OperationType told) {
          const auto once = std::exchange(*callback, nullptr);
          action(told);
        };
        hub.BeginOperation(kind, 1, 1);
        hub.UpdateOperationParams(20, 30, kind);
        platform.Advance(16);
        hub.PerformOperations();
        hub.EndOperation(kind);
        hub.EndOperation(kind);
        *callback = nullptr;
        EXPECT_FALSE(hub.IsOperationActive(OPERATION_ALL)) << kind;
        EXPECT_TRUE(hub.GetCameraParameters().IsFinite()) << kind;
      }
    }
  }
}

TEST_F(HubReentry, the_query_may_end_what_is_about_to_be_performed) {
  struct Querying : MemoryHub {
    void QueryCameraParameters(CameraParameters& out) const override {
      MemoryHub::QueryCameraParameters(out);
      if (onQuery) std::exchange(onQuery, nullptr)();
    }
    mutable std::function<void()> onQuery;
  };
  Querying querying;
  querying.BeginOperation(OPERATION_PAN, 0, 0);
  querying.BeginShot(new FakeShot(querying));
  querying.onQuery = [&] {
    querying.EndOperation(OPERATION_ALL);
    querying.EndShot();
  };
  EXPECT_FALSE(querying.PerformOperations());

  querying.BeginShot(new FakeShot(querying));
  querying.onQuery = [&] { querying.EndShot(); };
  querying.recording = true;
  EXPECT_TRUE(querying.AdvanceActiveShot(0.1));
  EXPECT_EQ(std::count(querying.log.begin(), querying.log.end(), "shot: perform"), 0);
  EXPECT_FALSE(querying.IsShotActive());
  EXPECT_FALSE(querying.AdvanceActiveShot(0.1));
}

TEST_F(HubReentry, an_operation_that_ends_within_its_own_step_is_not_told_to_have_been_performed) {
  struct Asked : MemoryHub {
    Vector3 GetWorldUpDirection() const override {
      if (onAsked) std::exchange(onAsked, nullptr)();
      return MemoryHub::GetWorldUpDirection();
    }
    mutable std::function<void()> onAsked;
  };
  Asked asked;
  asked.view = hub.view;
  FakeObserver told(asked, "told");
  asked.AddOperationObserver(&told);
  asked.BeginOperation(OPERATION_LOOK, 0, 0);
  asked.UpdateOperationParams(20, 30, OPERATION_LOOK);
  asked.onAsked = [&] { asked.EndOperation(OPERATION_ALL); };
  platform.Advance(16);
  asked.PerformOperations();
  EXPECT_FALSE(asked.onAsked);
  EXPECT_EQ(told.ended, 1);
  EXPECT_EQ(told.performed, 0);
}

// ---- shots ----

TEST_F(HubReentry, each_shot_has_a_number_of_its_own) {
  EXPECT_EQ(hub.GetShotNumber(), 0U);
  hub.BeginShot(new FakeShot(hub));
  const std::uint64_t first = hub.GetShotNumber();
  EXPECT_NE(first, 0U);
  hub.BeginShot(new FakeShot(hub));
  EXPECT_NE(hub.GetShotNumber(), first);
  EXPECT_NE(hub.GetShotNumber(), 0U);
  hub.EndShot();
  EXPECT_EQ(hub.GetShotNumber(), 0U);
}

TEST_F(HubReentry, the_begin_of_a_shot_ends_the_last_through_the_table_once) {
  CountingHub counting;
  counting.BeginShot(new FakeShot(counting));
  EXPECT_EQ(counting.ended, 1);
  counting.BeginShot(new FakeShot(counting));
  EXPECT_EQ(counting.ended, 2);
  counting.EndShot();
}

TEST_F(HubReentry, a_begin_within_the_hook_of_the_end_ends_the_last_through_the_table_once) {
  CountingHub counting;
  counting.BeginShot(new FakeShot(counting));
  counting.ended = 0;
  counting.onEndShotHook = [&](Shot*) {
    const auto once = std::exchange(counting.onEndShotHook, nullptr);
    counting.BeginShot(new FakeShot(counting));
  };
  counting.EndShot();
  EXPECT_EQ(counting.ended, 2);  // this end and the one of the begin
  EXPECT_TRUE(counting.IsShotActive());
  counting.EndShot();
}

TEST_F(HubReentry, the_outer_of_two_begins_stays_when_every_end_begins_another) {
  FakeShotObserver stubborn(hub);
  int refused = 0;
  stubborn.onEnd = [&] {
    if (hub.BeginShot(new FakeShot(hub, nullptr, "again"))) {
      hub.SetActiveShotObserver(&stubborn);
    } else {
      ++refused;
    }
  };
  hub.BeginShot(new FakeShot(hub, nullptr, "first"));
  hub.SetActiveShotObserver(&stubborn);
  auto* const outer = new FakeShot(hub, nullptr, "outer");
  EXPECT_TRUE(hub.BeginShot(outer));
  EXPECT_EQ(hub.GetActiveShot(), outer);
  EXPECT_EQ(stubborn.told, 2);  // of the end of the first, and of the one that it began
  EXPECT_EQ(refused, 1);
  EXPECT_EQ(CountInLog("again: destroyed"), 2);
}

TEST_F(HubReentry, a_shot_may_be_begun_again_after_a_refused_begin) {
  FakeShotObserver stubborn(hub);
  stubborn.onEnd = [&] {
    hub.BeginShot(new FakeShot(hub));
    hub.SetActiveShotObserver(&stubborn);
  };
  hub.BeginShot(new FakeShot(hub));
  hub.SetActiveShotObserver(&stubborn);
  hub.BeginShot(new FakeShot(hub));
  EXPECT_TRUE(hub.BeginShot(new FakeShot(hub)));
}

TEST_F(HubReentry, a_hook_that_ends_the_shot_that_it_is_told_has_begun_may_still_read_it) {
  hub.onBeginShotHook = [&](Shot* shot) {
    hub.EndShot();
    EXPECT_EQ(shot->GetElapsedTime(), 0.0);
    EXPECT_EQ(CountInLog("shot: destroyed"), 0);
  };
  EXPECT_TRUE(hub.BeginShot(new FakeShot(hub)));
  EXPECT_EQ(CountInLog("shot: destroyed"), 1);
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(HubReentry, a_shot_that_another_replaces_in_its_own_last_step_does_not_end_the_other) {
  hub.BeginShot(new FakeShot(hub, [&](double, CameraParameters&) {
    hub.BeginShot(new FakeShot(hub, nullptr, "second"));
    return false;
  }));
  hub.PerformOperations();
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_EQ(CountInLog("shot: destroyed"), 1);
  EXPECT_EQ(CountInLog("second: destroyed"), 0);
}

TEST_F(HubReentry, an_observer_may_destroy_itself_when_it_is_told_of_the_end) {
  auto dying = std::make_unique<FakeShotObserver>(hub);
  dying->onEnd = [&] {
    const auto last = std::move(dying);
    EXPECT_EQ(last->told, 1);
  };
  hub.BeginShot(new FakeShot(hub));
  hub.SetActiveShotObserver(dying.get());
  hub.EndShot();
  EXPECT_EQ(dying, nullptr);
}

// ---- what may not happen ----

// A host may hand an event to its window within a callback, and the window may ask for a frame.
TEST_F(HubReentry, a_frame_within_a_call_of_the_hub_does_nothing) {
  bool asked = false;
  const auto askForFrame = [&] {
    asked = true;
    EXPECT_FALSE(hub.PerformOperations());
  };
  observer.onPerform = [&](OperationType) { askForFrame(); };
  hub.BeginOperation(OPERATION_PAN, 0, 0);
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_TRUE(std::exchange(asked, false));
  EXPECT_EQ(observer.performed, 1);

  hub.onRecalculateGlobal = askForFrame;
  hub.onApply = askForFrame;
  const std::function<void()> calls[] = {
      [&] { EXPECT_TRUE(hub.FitAllToView()); },
      [&] { hub.RecalculateSceneBounds(); },
      [&] { hub.ResetUCSBoundingBox(); },
      [&] { hub.SetSceneBoundingSphere(0.0, {}); },
      [&] { hub.IsSceneOutsideView(hub.view); },
      [&] {
        hub.GetApplicationParameters().tool_selection_sensitivity = true;
        hub.SetGeometrySelection(1.0, {1, 2, 3});
      },
      [&] {
        hub.view.pivot = {1e6, 0, 0};  // far out of the view
        hub.ConstrainPivotToViewport();
      },
  };
  for (const auto& call : calls) {
    asked = false;
    call();
    EXPECT_TRUE(asked) << &call - calls;
    EXPECT_EQ(observer.performed, 1) << &call - calls;
  }
}

#ifndef NDEBUG
TEST(HubReentryDeathTest, the_end_of_the_hub_within_a_call_of_it_is_asserted) {
  EXPECT_DEATH(
      {
        auto hub = std::make_unique<MemoryHub>();
        hub->onRecalculateSelection = [&] { hub.reset(); };
        hub->BeginOperation(OPERATION_PAN, 0, 0);
      },
      "destroyed by");
}
#endif
