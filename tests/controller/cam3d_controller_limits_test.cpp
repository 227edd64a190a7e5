// A device for whose operation there is no memory, no room in the hub, or no beginning.
#include <memory>
#include <optional>
#include <utility>

#include "controller/cam3d_controller_operation.h"
#include "controller/controller_scene.h"
#include "support/allocation_counter.h"

using namespace Korvane;

namespace {

/// Lets the test act before it begins an operation.
class EarlyHub : public ControllerHub {
 public:
  using ControllerHub::ControllerHub;
  bool BeginOperation(OperationType type, int x, int y) override {
    if (const auto once = std::exchange(onEarly, nullptr)) once();
    return ControllerHub::BeginOperation(type, x, y);
  }
  std::function<void()> onEarly;
};

class PerformingController : public OpenController {
 public:
  using Cam3DController::End3DControllerOperation;
  using Cam3DController::Perform3DControllerOperation;
};

class LimitsTest : public ControllerScene {};

}  // namespace

// ---- its operation ----

TEST(Cam3DControllerLimits, the_operation_is_made_whole_or_not_at_all) {
  int failures = 0;
  for (std::uint64_t failed = 1;; ++failed) {
    std::unique_ptr<Operation> made;
    bool met = false;
    {
      const AllocationFault fault(failed, 1);
      made = Operation::CreateOperation(OPERATION_CAM3D_CONTROLLER);
      met = fault.GetCounted() >= failed;
    }
    failures += made == nullptr ? 1 : 0;
    if (!met) break;
    EXPECT_EQ(made, nullptr) << failed;
  }
  EXPECT_GE(failures, 4);  // itself and each of its members
}

TEST(Cam3DControllerLimits, an_operation_that_lacks_members_leaves_the_camera) {
  const MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  for (int left = 0; left < 3; ++left) {
    Cam3DControllerOperation operation;
    while (operation.GetOperationCount() > left) operation.RemoveOperation(left == 2 ? 0 : left);
    operation.InitOperation(0, 0, &hub);
    operation.Update3DControllerInput({1, 0, 0}, {0, 1, 0});
    CameraParameters camera = hub.view;
    operation.PerformOperation(0.1, camera);
    EXPECT_EQ(camera.eye, hub.view.eye) << left;
  }
  std::optional<Cam3DControllerOperation> blind;
  {
    const AllocationFault fault(1, 1);
    blind.emplace();
  }
  EXPECT_EQ(blind->GetOperation(0), nullptr);
  blind->InitOperation(0, 0, &hub);
  CameraParameters camera = hub.view;
  blind->PerformOperation(0.1, camera);
  EXPECT_EQ(camera.eye, hub.view.eye);
}

// ---- its motion ----

TEST_F(LimitsTest, an_operation_of_another_that_begins_anew_each_time_that_it_is_ended_keeps_the_hub) {
  OperationHooks hooks;
  hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0);
  hub.AddOperationObserver(&hooks);
  int ended = 0;
  hooks.onEnd = [&] {
    ++ended;
    hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0);
  };
  Push();
  EXPECT_FALSE(controller->IsOperating());
  EXPECT_EQ(ended, 3);
  EXPECT_EQ(history.open, 0);
  hooks.onEnd = nullptr;
  hub.EndOperation(OPERATION_CAM3D_CONTROLLER);
  hub.RemoveOperationObserver(&hooks);
  Push();
  EXPECT_TRUE(controller->IsOperating());
}

TEST_F(LimitsTest, an_input_without_a_begin_moves_nothing) {
  PerformingController idle;
  idle.SetKorvane(&hub);
  EXPECT_FALSE(idle.Perform3DControllerOperation({1, 0, 0}, {0, 1, 0}));
  EXPECT_FALSE(idle.End3DControllerOperation());
  EXPECT_FALSE(HasOperation());
}

TEST_F(LimitsTest, an_input_before_the_hub_has_made_the_operation_does_not_end_the_motion) {
  EarlyHub early(journal, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  controller->SetKorvane(&early);
  bool acted = false;
  early.onEarly = [&] {
    acted = true;
    Push();
    EXPECT_FALSE(early.IsOperationActive(OPERATION_CAM3D_CONTROLLER));
  };
  Push();
  EXPECT_TRUE(acted);
  EXPECT_TRUE(controller->IsOperating());
  EXPECT_TRUE(early.IsOperationActive(OPERATION_CAM3D_CONTROLLER));
  Rest();
  EXPECT_FALSE(early.IsOperationActive(OPERATION_CAM3D_CONTROLLER));
  EXPECT_EQ(history.open, 0);
  controller->SetKorvane(&hub);
}
