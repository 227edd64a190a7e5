#include "camera/operation_factory.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>

#include "camera/dolly_operation.h"
#include "camera/fly_operation.h"
#include "camera/height_operation.h"
#include "camera/look_operation.h"
#include "camera/orbit_operation.h"
#include "camera/pan_operation.h"
#include "camera/roll_operation.h"
#include "camera/slide_operation.h"
#include "camera/zoom2d_operation.h"
#include "camera/zoom_operation.h"
#include "controller/cam3d_controller_operation.h"
#include "support/cameras.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

template <class Kind>
bool Makes(OperationType type) {
  const auto operation = Operation::CreateOperation(type);
  return dynamic_cast<Kind*>(operation.get()) != nullptr;
}

// As a class of a higher shelf.
class Rising : public Operation {
 public:
  void PerformOperation(double /*dt*/, CameraParameters& camera) override { camera.eye.y += 1.0; }
};

std::unique_ptr<Operation> MakeRising() { return std::make_unique<Rising>(); }

// While this lives, nobody makes the kind of the controller.
class FreeKind {
 public:
  FreeKind() { std::destroy_at(&cam3DControllerKind); }
  ~FreeKind() {
    std::construct_at(&cam3DControllerKind, OPERATION_CAM3D_CONTROLLER, &Cam3DControllerOperation::Make);
  }
  FreeKind(const FreeKind&) = delete;
  FreeKind& operator=(const FreeKind&) = delete;
};

}  // namespace

TEST(OperationFactory, no_kind_moves_a_camera_without_a_hub) {
  const CameraParameters before = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
  for (int type = 0; type < OPERATION_KIND_COUNT; ++type) {
    const auto operation = Operation::CreateOperation(static_cast<OperationType>(type));
    ASSERT_NE(operation, nullptr) << type;
    operation->InitOperation(10, 20, nullptr);
    operation->UpdateCursor(400, 300);
    operation->UpdateKey(KEY_UP, true);
    CameraParameters camera = before;
    operation->PerformOperation(0.1, camera);
    EXPECT_EQ(camera.eye, before.eye) << type;
    EXPECT_EQ(camera.centre, before.centre) << type;
    EXPECT_EQ(camera.ortho_width, before.ortho_width) << type;
  }
}

TEST(OperationFactory, kinds_have_their_numbers) {
  EXPECT_EQ(sizeof(OperationType), 4U);
  EXPECT_EQ(static_cast<int>(OPERATION_PAN), 0);
  EXPECT_EQ(static_cast<int>(OPERATION_ORBIT), 1);
  EXPECT_EQ(static_cast<int>(OPERATION_LOOK), 2);
  EXPECT_EQ(static_cast<int>(OPERATION_FLY), 3);
  EXPECT_EQ(static_cast<int>(OPERATION_DOLLY), 4);
  EXPECT_EQ(static_cast<int>(OPERATION_ZOOM), 5);
  EXPECT_EQ(static_cast<int>(OPERATION_ZOOM2D), 6);
  EXPECT_EQ(static_cast<int>(OPERATION_HEIGHT), 7);
  EXPECT_EQ(static_cast<int>(OPERATION_SLIDE), 8);
  EXPECT_EQ(static_cast<int>(OPERATION_ROLL), 9);
  EXPECT_EQ(static_cast<int>(OPERATION_CAM3D_CONTROLLER), 10);
  EXPECT_EQ(static_cast<int>(OPERATION_ALL), 12);
}

TEST(OperationFactory, each_kind_makes_its_class) {
  EXPECT_TRUE(Makes<PanOperation>(OPERATION_PAN));
  EXPECT_TRUE(Makes<OrbitOperation>(OPERATION_ORBIT));
  EXPECT_TRUE(Makes<LookOperation>(OPERATION_LOOK));
  EXPECT_TRUE(Makes<FlyOperation>(OPERATION_FLY));
  EXPECT_TRUE(Makes<DollyOperation>(OPERATION_DOLLY));
  EXPECT_TRUE(Makes<ZoomOperation>(OPERATION_ZOOM));
  EXPECT_TRUE(Makes<Zoom2DOperation>(OPERATION_ZOOM2D));
  EXPECT_TRUE(Makes<HeightOperation>(OPERATION_HEIGHT));
  EXPECT_TRUE(Makes<SlideOperation>(OPERATION_SLIDE));
  EXPECT_TRUE(Makes<RollOperation>(OPERATION_ROLL));
  EXPECT_TRUE(Makes<Cam3DControllerOperation>(OPERATION_CAM3D_CONTROLLER));
}

TEST(OperationFactory, a_value_above_10_yields_null) {
  for (const int value : {11, 12, 13, 1000, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(Operation::CreateOperation(static_cast<OperationType>(value)), nullptr) << value;
  }
  for (const int value : {-1, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(Operation::CreateOperation(static_cast<OperationType>(value)), nullptr) << value;
  }
}

TEST(OperationFactory, an_operation_that_was_made_waits_for_its_init) {
  for (int value = 0; value <= 10; ++value) {
    const auto operation = Operation::CreateOperation(static_cast<OperationType>(value));
    ASSERT_NE(operation, nullptr) << value;
    CameraParameters camera;
    camera.eye = {1, 2, 3};
    operation->PerformOperation(0.1, camera);  // without a hub it has nothing to do
    EXPECT_EQ(camera.eye, Vector3(1, 2, 3)) << value;
    EXPECT_FALSE(operation->IsCombined());
    EXPECT_EQ(operation->Is3DControllerOperation(), value == OPERATION_CAM3D_CONTROLLER);
  }
}

TEST(OperationFactory, the_hub_begins_what_the_factory_makes_and_nothing_else) {
  for (int value = -2; value <= 14; ++value) {
    const auto type = static_cast<OperationType>(value);
    MemoryHub hub;
    const bool makes = Operation::CreateOperation(type) != nullptr;
    EXPECT_EQ(hub.BeginOperation(type, 0, 0), makes) << value;
    EXPECT_EQ(hub.IsOperationActive(type) && type != OPERATION_ALL, makes) << value;
  }
}

// ---- kinds made elsewhere ----

TEST(OperationKinds, a_registered_kind_is_begun_and_performed_like_any_other) {
  const FreeKind freed;
  const OperationKind rising(OPERATION_CAM3D_CONTROLLER, &MakeRising);
  EXPECT_TRUE(rising.IsHeld());
  EXPECT_TRUE(Makes<Rising>(OPERATION_CAM3D_CONTROLLER));
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  EXPECT_TRUE(hub.BeginOperation(OPERATION_CAM3D_CONTROLLER, 0, 0));
  EXPECT_TRUE(hub.PerformOperations());
  EXPECT_EQ(hub.view.eye, Vector3(0, 1, 10));
}

TEST(OperationKinds, a_kind_is_made_no_more_once_its_registration_is_gone) {
  const FreeKind freed;
  std::optional<OperationKind> rising;
  rising.emplace(OPERATION_CAM3D_CONTROLLER, &MakeRising);
  rising.reset();
  EXPECT_EQ(Operation::CreateOperation(OPERATION_CAM3D_CONTROLLER), nullptr);
}

TEST(OperationKinds, a_kind_that_is_made_already_stays_with_its_maker) {
  const FreeKind freed;
  const OperationKind rising(OPERATION_CAM3D_CONTROLLER, &MakeRising);
  for (int value = 0; value < OPERATION_KIND_COUNT; ++value) {
    const OperationKind second(static_cast<OperationType>(value), &MakeRising);
    EXPECT_FALSE(second.IsHeld()) << value;
  }
  EXPECT_TRUE(Makes<PanOperation>(OPERATION_PAN));
  EXPECT_TRUE(Makes<Rising>(OPERATION_CAM3D_CONTROLLER));  // a refused registration takes nothing away
}

TEST(OperationKinds, no_kind_out_of_range_and_no_maker_that_is_null_is_taken) {
  const FreeKind freed;
  for (const int value : {-1, 11, 12, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    const OperationKind outside(static_cast<OperationType>(value), &MakeRising);
    EXPECT_FALSE(outside.IsHeld()) << value;
    EXPECT_EQ(Operation::CreateOperation(static_cast<OperationType>(value)), nullptr) << value;
  }
  const OperationKind nothing(OPERATION_CAM3D_CONTROLLER, nullptr);
  EXPECT_FALSE(nothing.IsHeld());
  EXPECT_EQ(Operation::CreateOperation(OPERATION_CAM3D_CONTROLLER), nullptr);
}

TEST(OperationKinds, the_controller_has_its_own_for_the_life_of_the_library) {
  EXPECT_TRUE(cam3DControllerKind.IsHeld());
  { const FreeKind freed; }
  EXPECT_TRUE(cam3DControllerKind.IsHeld());
  EXPECT_TRUE(Makes<Cam3DControllerOperation>(OPERATION_CAM3D_CONTROLLER));
}
