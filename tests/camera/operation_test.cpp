#include "korvane/operation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "support/cameras.h"
#include "support/memory_hub.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

// Opens what an operation of the library sees.
class OpenOperation : public Operation {
 public:
  void PerformOperation(double /*dt*/, CameraParameters& /*camera*/) override {}

  using Operation::ConvertCoordsToWindow;
  using Operation::Cursor;
  using Operation::GetCursorMotion;

  using Operation::combined;
  using Operation::controllerOperation;
  using Operation::currentCursor;
  using Operation::downKey;
  using Operation::hub;
  using Operation::initialCursor;
  using Operation::previousCursor;
  using Operation::previousRotationInput;
  using Operation::previousTranslationInput;
  using Operation::rotationInput;
  using Operation::translationInput;
  using Operation::upKey;
};

template <class Cursor>
void ExpectCursor(const Cursor& cursor, int x, int y) {
  EXPECT_EQ(cursor.x, x);
  EXPECT_EQ(cursor.y, y);
}

}  // namespace

TEST(OperationBase, starts_with_everything_zero_and_no_hub) {
  const OpenOperation o;
  ExpectCursor(o.currentCursor, 0, 0);
  ExpectCursor(o.initialCursor, 0, 0);
  ExpectCursor(o.previousCursor, 0, 0);
  EXPECT_FALSE(o.upKey);
  EXPECT_FALSE(o.downKey);
  EXPECT_EQ(o.translationInput, Vector3());
  EXPECT_EQ(o.rotationInput, Vector3());
  EXPECT_EQ(o.previousTranslationInput, Vector3());
  EXPECT_EQ(o.previousRotationInput, Vector3());
  EXPECT_EQ(o.hub, nullptr);
  EXPECT_FALSE(o.IsCombined());
  EXPECT_FALSE(o.Is3DControllerOperation());
}

TEST(OperationBase, fields_lie_in_order) {
  const OpenOperation o;
  const void* const order[] = {&o.currentCursor,
                               &o.initialCursor,
                               &o.previousCursor,
                               &o.upKey,
                               &o.downKey,
                               &o.translationInput,
                               &o.rotationInput,
                               &o.previousTranslationInput,
                               &o.previousRotationInput,
                               &o.hub,
                               &o.combined,
                               &o.controllerOperation};
  for (std::size_t i = 1; i < std::size(order); ++i) {
    EXPECT_LT(reinterpret_cast<std::uintptr_t>(order[i - 1]), reinterpret_cast<std::uintptr_t>(order[i]))
        << i;
  }
}

TEST(OperationBase, virtual_operations_stand_in_slot_order) {
  EXPECT_EQ(VirtualSlot(&Operation::InitOperation), 2);  // after the destructor's two places
  EXPECT_EQ(VirtualSlot(&Operation::PerformOperation), 3);
  EXPECT_EQ(VirtualSlot(&Operation::Update3DControllerInput), 4);
  EXPECT_EQ(VirtualSlot(&Operation::Set3DControllerOperation), 5);
  EXPECT_EQ(VirtualSlot(&Operation::GetUpDirection), 6);
  EXPECT_EQ(VirtualSlot(&Operation::UpdateCursor), -1);
  EXPECT_EQ(VirtualSlot(&Operation::UpdateKey), -1);
  EXPECT_EQ(VirtualSlot(&Operation::UpdatePreviousCursor), -1);
}

TEST(OperationBase, observer_operations_stand_in_slot_order) {
  EXPECT_EQ(VirtualSlot(&OperationObserver::OnBeginOperation), 2);
  EXPECT_EQ(VirtualSlot(&OperationObserver::OnPerformOperation), 3);
  EXPECT_EQ(VirtualSlot(&OperationObserver::OnEndOperation), 4);
}

TEST(OperationBase, init_sets_the_three_cursors_and_stores_the_hub) {
  const MemoryHub hub;
  OpenOperation o;
  o.InitOperation(12, -34, &hub);
  ExpectCursor(o.currentCursor, 12, -34);
  ExpectCursor(o.initialCursor, 12, -34);
  ExpectCursor(o.previousCursor, 12, -34);
  EXPECT_EQ(o.hub, &hub);
}

TEST(OperationBase, a_cursor_becomes_current_and_then_previous_and_never_initial) {
  OpenOperation o;
  o.InitOperation(1, 2, nullptr);
  o.UpdateCursor(3, 4);
  ExpectCursor(o.currentCursor, 3, 4);
  ExpectCursor(o.previousCursor, 1, 2);
  o.UpdatePreviousCursor();
  ExpectCursor(o.previousCursor, 3, 4);
  ExpectCursor(o.initialCursor, 1, 2);
}

TEST(OperationBase, only_the_keys_3_and_4_are_kept) {
  OpenOperation o;
  for (int key = -1; key <= 20; ++key) {
    o.UpdateKey(static_cast<KeyID>(key), true);
    EXPECT_EQ(o.upKey, key == 3) << key;
    EXPECT_EQ(o.downKey, key == 4) << key;
    o.UpdateKey(static_cast<KeyID>(key), false);
    EXPECT_FALSE(o.upKey);
    EXPECT_FALSE(o.downKey);
  }
  o.UpdateKey(KEY_UP, true);
  o.UpdateKey(KEY_DOWN, true);
  o.UpdateKey(KEY_UP, false);
  EXPECT_FALSE(o.upKey);
  EXPECT_TRUE(o.downKey);
}

TEST(OperationBase, six_axis_input_is_a_running_sum_and_the_sum_before_is_kept) {
  OpenOperation o;
  o.Update3DControllerInput({1, 2, 3}, {4, 5, 6});
  EXPECT_EQ(o.translationInput, Vector3(1, 2, 3));
  EXPECT_EQ(o.rotationInput, Vector3(4, 5, 6));
  EXPECT_EQ(o.previousTranslationInput, Vector3());
  EXPECT_EQ(o.previousRotationInput, Vector3());
  o.Update3DControllerInput({10, 20, 30}, {40, 50, 60});
  EXPECT_EQ(o.translationInput, Vector3(11, 22, 33));
  EXPECT_EQ(o.rotationInput, Vector3(44, 55, 66));
  EXPECT_EQ(o.previousTranslationInput, Vector3(1, 2, 3));
  EXPECT_EQ(o.previousRotationInput, Vector3(4, 5, 6));
}

TEST(OperationBase, six_axis_input_that_is_not_finite_is_ignored) {
  OpenOperation o;
  o.Update3DControllerInput({1, 2, 3}, {4, 5, 6});
  o.Update3DControllerInput({std::numeric_limits<double>::quiet_NaN(), 0, 0}, {});
  o.Update3DControllerInput({}, {0, 0, std::numeric_limits<double>::infinity()});
  EXPECT_EQ(o.translationInput, Vector3(1, 2, 3));
  EXPECT_EQ(o.rotationInput, Vector3(4, 5, 6));
  EXPECT_EQ(o.previousTranslationInput, Vector3());
}

TEST(OperationBase, flags_are_set_and_cleared) {
  OpenOperation o;
  o.SetCombined(true);
  EXPECT_TRUE(o.IsCombined());
  EXPECT_FALSE(o.Is3DControllerOperation());
  o.SetCombined(false);
  o.Set3DControllerOperation(true);
  EXPECT_FALSE(o.IsCombined());
  EXPECT_TRUE(o.Is3DControllerOperation());
  o.Set3DControllerOperation(false);
  EXPECT_FALSE(o.Is3DControllerOperation());
}

TEST(OperationBase, motion_is_measured_in_fractions_of_the_viewport) {
  MemoryHub hub;
  hub.GetApplicationParameters().viewport_width = 800;
  hub.GetApplicationParameters().viewport_height = 400;
  OpenOperation o;
  o.InitOperation(0, 0, &hub);
  double wx = 0.0;
  double wy = 0.0;
  o.ConvertCoordsToWindow(200.0, -100.0, wx, wy);
  EXPECT_EQ(wx, 0.25);
  EXPECT_EQ(wy, -0.25);
}

TEST(OperationBase, a_viewport_without_size_gives_no_motion) {
  MemoryHub hub;
  OpenOperation o;
  o.InitOperation(0, 0, &hub);
  for (const int size : {0, -1, std::numeric_limits<int>::min()}) {
    hub.GetApplicationParameters().viewport_width = size;
    hub.GetApplicationParameters().viewport_height = size;
    double wx = 1.0;
    double wy = 1.0;
    o.ConvertCoordsToWindow(200.0, 100.0, wx, wy);
    EXPECT_EQ(wx, 0.0);
    EXPECT_EQ(wy, 0.0);
  }
}

TEST(OperationBase, cursors_at_both_ends_of_int_do_not_overflow) {
  MemoryHub hub;
  hub.GetApplicationParameters().viewport_width = 1;
  hub.GetApplicationParameters().viewport_height = 1;
  OpenOperation o;
  o.InitOperation(0, 0, &hub);
  double wx = 0.0;
  double wy = 0.0;
  const int lowest = std::numeric_limits<int>::min();
  const int highest = std::numeric_limits<int>::max();
  o.GetCursorMotion({lowest, highest}, {highest, lowest}, wx, wy);
  EXPECT_EQ(wx, 4294967295.0);
  EXPECT_EQ(wy, -4294967295.0);
}

TEST(OperationBase, without_a_hub_there_is_no_motion) {
  OpenOperation o;
  o.InitOperation(0, 0, nullptr);
  double wx = 1.0;
  double wy = 1.0;
  o.GetCursorMotion({0, 0}, {100, 100}, wx, wy);
  EXPECT_EQ(wx, 0.0);
  EXPECT_EQ(wy, 0.0);
}

TEST(OperationUpDirection, is_the_y_axis_without_a_hub) {
  OpenOperation o;
  EXPECT_EQ(o.GetUpDirection(), Vector3(0, 1, 0));
  o.InitOperation(0, 0, nullptr);
  EXPECT_EQ(o.GetUpDirection(), Vector3(0, 1, 0));
}

TEST(OperationUpDirection, is_the_hubs_world_up_with_planar_motion_and_the_cameras_up_without) {
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 0, -7}));
  ASSERT_FALSE(hub.PerformOperations());  // fetches the camera
  ApplicationParameters& p = hub.GetApplicationParameters();
  p.scene_up_direction = {5, 0, 0};
  p.world_up_direction = {0, -4, 0};
  OpenOperation o;
  o.InitOperation(0, 0, &hub);

  p.fly_planar_motion = true;
  EXPECT_EQ(o.GetUpDirection(), Vector3(1, 0, 0));  // normalised
  p.scene_is_world = false;
  EXPECT_EQ(o.GetUpDirection(), Vector3(0, -1, 0));
  p.fly_planar_motion = false;
  EXPECT_EQ(o.GetUpDirection(), Vector3(0, 0, -1));
}

TEST(OperationUpDirection, asks_the_hubs_virtual_operation) {
  class TiltedHub : public MemoryHub {
   public:
    Vector3 GetWorldUpDirection() const override { return {0, 0, 9}; }
  };
  const TiltedHub hub;
  OpenOperation o;
  o.InitOperation(0, 0, &hub);
  EXPECT_EQ(o.GetUpDirection(), Vector3(0, 0, 1));
}
