#include <gtest/gtest.h>

#include "korvane/operation.h"
#include "korvane/shot.h"
#include "support/virtual_slot.h"

namespace {

using namespace Korvane;

TEST(VirtualSlots, of_an_operation_stand_in_their_order) {
  EXPECT_EQ(VirtualSlot(&Operation::InitOperation), 2);
  EXPECT_EQ(VirtualSlot(&Operation::PerformOperation), 3);
  EXPECT_EQ(VirtualSlot(&Operation::Update3DControllerInput), 4);
  EXPECT_EQ(VirtualSlot(&Operation::Set3DControllerOperation), 5);
  EXPECT_EQ(VirtualSlot(&Operation::GetUpDirection), 6);
}

TEST(VirtualSlots, hold_none_of_the_plain_operations) {
  EXPECT_EQ(VirtualSlot(&Operation::UpdateCursor), -1);
  EXPECT_EQ(VirtualSlot(&Operation::UpdateKey), -1);
  EXPECT_EQ(VirtualSlot(&Operation::UpdatePreviousCursor), -1);
  EXPECT_EQ(VirtualSlot(&Operation::IsCombined), -1);
  EXPECT_EQ(VirtualSlot(&Operation::SetCombined), -1);
  EXPECT_EQ(VirtualSlot(&Operation::Is3DControllerOperation), -1);
}

TEST(VirtualSlots, of_an_operation_observer_stand_in_their_order) {
  EXPECT_EQ(VirtualSlot(&OperationObserver::OnBeginOperation), 2);
  EXPECT_EQ(VirtualSlot(&OperationObserver::OnPerformOperation), 3);
  EXPECT_EQ(VirtualSlot(&OperationObserver::OnEndOperation), 4);
}

TEST(VirtualSlots, of_a_shot_stand_in_their_order) {
  EXPECT_EQ(VirtualSlot(&Shot::InitShot), 2);
  EXPECT_EQ(VirtualSlot(&Shot::PerformShot), 3);
  EXPECT_EQ(VirtualSlot(&Shot::GetElapsedTime), 4);
  EXPECT_EQ(VirtualSlot(&Shot::GetUnitTime), 5);
}

TEST(VirtualSlots, of_a_shot_observer_stand_in_their_order) {
  EXPECT_EQ(VirtualSlot(&ShotObserver::OnEndShot), 2);
}

}  // namespace
