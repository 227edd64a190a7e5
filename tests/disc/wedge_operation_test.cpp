// The operation that a wedge drives, in a hub that goes while it is open.
#include "disc/wedge_operation.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

#include "disc/close_region_listener.h"
#include "support/cameras.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

class EndingHub : public MemoryHub, public OperationObserver {
 public:
  EndingHub() : MemoryHub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) { AddOperationObserver(this); }
  ~EndingHub() override { RemoveOperationObserver(this); }

  void OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) override {}
  void OnPerformOperation(OperationType /*type*/, double /*dt*/,
                          const CameraParameters& /*camera*/) override {}
  void OnEndOperation(OperationType /*type*/) override {
    ++ended;
    if (const std::function<void()> act = std::exchange(onEnd, nullptr)) act();
  }
  bool IsRolling() const { return IsOperationActive(OPERATION_ROLL); }

  int ended = 0;
  std::function<void()> onEnd;
};

class WedgeOperationTest : public ::testing::Test {
 protected:
  EndingHub hub;
  std::unique_ptr<EndingHub> mortal = std::make_unique<EndingHub>();
  CloseRegionListener wedge{nullptr, nullptr};
  WedgeOperation operation{OPERATION_ROLL};
};

TEST_F(WedgeOperationTest, begins_in_another_hub_once_it_has_ended_in_the_first) {
  operation.Begin(hub, 10, 10);
  EXPECT_TRUE(hub.IsRolling());
  operation.Begin(*mortal, 10, 10);
  EXPECT_FALSE(hub.IsRolling());
  EXPECT_TRUE(mortal->IsRolling());
}

TEST_F(WedgeOperationTest, does_not_begin_in_a_hub_that_goes_as_the_one_before_ends) {
  operation.Begin(hub, 10, 10);
  hub.onEnd = [this] { mortal.reset(); };
  operation.Begin(*mortal, 10, 10);
  EXPECT_EQ(mortal, nullptr);
  EXPECT_EQ(hub.ended, 1);
  operation.End();
  EXPECT_EQ(hub.ended, 1);
}

TEST_F(WedgeOperationTest, does_not_begin_where_it_is_ended_as_the_one_before_ends) {
  operation.Begin(hub, 10, 10);
  hub.onEnd = [this] { operation.End(); };
  operation.Begin(*mortal, 10, 10);
  EXPECT_FALSE(mortal->IsRolling());
}

TEST_F(WedgeOperationTest, is_no_more_with_its_hub) {
  operation.Begin(*mortal, 10, 10);
  mortal.reset();
  operation.BeginRecord(wedge);
  operation.Move(20, 20);
  operation.Sample();
  operation.EndOperation();
  operation.Begin(hub, 10, 10);
  EXPECT_TRUE(hub.IsRolling());
  operation.EndOperation();
  EXPECT_FALSE(hub.IsRolling());
  operation.EndOperation();
  EXPECT_EQ(hub.ended, 1);
}

}  // namespace
