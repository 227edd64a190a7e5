#include "camera/combined_operation.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "camera/hub_fakes.h"
#include "support/allocation_counter.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

using Log = std::vector<std::string>;

std::string Describe(const Vector3& v) { return std::to_string(static_cast<int>(v.x)); }

// A member that writes what it hears, with the state that its base is then in.
class Member : public Operation {
 public:
  Member(Log& all, std::string whoAmI) : log(all), name(std::move(whoAmI)) {}
  ~Member() override { log.push_back(name + " destroyed"); }

  void InitOperation(int x, int y, const CameraOperations* operations) override {
    Operation::InitOperation(x, y, operations);
    log.push_back(name + " init " + std::to_string(x) + " " + std::to_string(y));
    hubSeen = operations;
  }
  void PerformOperation(double /*dt*/, CameraParameters& /*camera*/) override {}
  void Update3DControllerInput(Vector3 translation, Vector3 rotation) override {
    Operation::Update3DControllerInput(translation, rotation);
    log.push_back(name + " input " + Describe(translation) + " " + Describe(rotation) +
                  (ownInputIsSet() ? " after the whole" : " before the whole"));
  }
  void Set3DControllerOperation(bool isController) override {
    Operation::Set3DControllerOperation(isController);
    log.push_back(name + (isController ? " on" : " off") +
                  (ownFlag() == isController ? " after the whole" : " before the whole"));
  }

  std::function<bool()> ownFlag = [] { return false; };
  std::function<bool()> ownInputIsSet = [] { return false; };
  const CameraOperations* hubSeen = nullptr;

 private:
  Log& log;
  std::string name;
};

class Whole : public CombinedOperation {
 public:
  void PerformOperation(double /*dt*/, CameraParameters& /*camera*/) override {}

  using Operation::currentCursor;
  using Operation::hub;
  using Operation::rotationInput;
  using Operation::translationInput;
};

class Combined : public ::testing::Test {
 protected:
  Member* Add(const std::string& name) {
    auto member = std::make_unique<Member>(log, name);
    member->ownFlag = [this] { return whole->Is3DControllerOperation(); };
    member->ownInputIsSet = [this] { return whole->translationInput != Vector3(); };
    Member* const borrowed = member.get();
    whole->AddOperation(std::move(member));
    return borrowed;
  }
  void AddThree() {
    a = Add("a");
    b = Add("b");
    c = Add("c");
  }

  Log log;
  std::unique_ptr<Whole> whole = std::make_unique<Whole>();
  Member* a = nullptr;
  Member* b = nullptr;
  Member* c = nullptr;
};

}  // namespace

TEST(CombinedTable, adds_no_virtual_operation_and_leaves_performing_to_the_subclass) {
  EXPECT_EQ(VirtualSlot(&CombinedOperation::AddOperation), -1);
  EXPECT_EQ(VirtualSlot(&CombinedOperation::GetOperationCount), -1);
  EXPECT_EQ(VirtualSlot(&CombinedOperation::GetOperation), -1);
  EXPECT_EQ(VirtualSlot(&CombinedOperation::RemoveOperation), -1);
  EXPECT_EQ(VirtualSlot(&CombinedOperation::RemoveAll), -1);
  EXPECT_TRUE(std::is_abstract_v<CombinedOperation>);
}

TEST_F(Combined, starts_empty) {
  EXPECT_EQ(whole->GetOperationCount(), 0);
  EXPECT_EQ(whole->GetOperation(0), nullptr);
}

TEST_F(Combined, adding_appends_and_takes_ownership) {
  AddThree();
  EXPECT_EQ(whole->GetOperationCount(), 3);
  EXPECT_EQ(whole->GetOperation(0), a);
  EXPECT_EQ(whole->GetOperation(1), b);
  EXPECT_EQ(whole->GetOperation(2), c);
  EXPECT_FALSE(a->IsCombined());  // marking a member is the caller's
  EXPECT_EQ(log, Log());
}

TEST_F(Combined, getting_with_the_count_as_index_returns_null) {
  AddThree();
  for (const int index : {3, 4, std::numeric_limits<int>::max(), -1, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(whole->GetOperation(index), nullptr) << index;
  }
}

TEST_F(Combined, removing_the_first_of_three_leaves_the_other_two_in_order) {
  AddThree();
  whole->RemoveOperation(0);
  EXPECT_EQ(log, Log({"a destroyed"}));
  EXPECT_EQ(whole->GetOperationCount(), 2);
  EXPECT_EQ(whole->GetOperation(0), b);
  EXPECT_EQ(whole->GetOperation(1), c);
}

TEST_F(Combined, removing_another_closes_the_gap) {
  AddThree();
  whole->RemoveOperation(1);
  EXPECT_EQ(log, Log({"b destroyed"}));
  EXPECT_EQ(whole->GetOperation(0), a);
  EXPECT_EQ(whole->GetOperation(1), c);
  whole->RemoveOperation(1);
  EXPECT_EQ(log, Log({"b destroyed", "c destroyed"}));
  EXPECT_EQ(whole->GetOperationCount(), 1);
}

TEST_F(Combined, removing_at_an_index_at_or_past_the_end_does_nothing) {
  AddThree();
  for (const int index : {3, 4, std::numeric_limits<int>::max(), -1, std::numeric_limits<int>::min()}) {
    whole->RemoveOperation(index);
    EXPECT_EQ(whole->GetOperationCount(), 3) << index;
  }
  EXPECT_EQ(log, Log());
}

TEST_F(Combined, removing_all_destroys_all_and_leaves_it_usable) {
  AddThree();
  whole->RemoveAll();
  EXPECT_EQ(log, Log({"a destroyed", "b destroyed", "c destroyed"}));
  EXPECT_EQ(whole->GetOperationCount(), 0);
  whole->RemoveAll();
  EXPECT_EQ(log.size(), 3U);
  EXPECT_EQ(whole->GetOperation(0), nullptr);
  Add("d");
  EXPECT_EQ(whole->GetOperationCount(), 1);
}

TEST_F(Combined, destroying_the_whole_destroys_its_members) {
  AddThree();
  whole.reset();
  EXPECT_EQ(log, Log({"a destroyed", "b destroyed", "c destroyed"}));
}

TEST_F(Combined, an_init_reaches_the_whole_and_then_each_member_in_order) {
  const MemoryHub hub;
  AddThree();
  whole->InitOperation(3, -4, &hub);
  EXPECT_EQ(whole->hub, &hub);
  EXPECT_EQ(whole->currentCursor.x, 3);
  EXPECT_EQ(whole->currentCursor.y, -4);
  EXPECT_EQ(log, Log({"a init 3 -4", "b init 3 -4", "c init 3 -4"}));
  EXPECT_EQ(a->hubSeen, &hub);
  EXPECT_EQ(c->hubSeen, &hub);
}

TEST_F(Combined, six_axis_input_reaches_the_whole_and_then_each_member_in_order) {
  AddThree();
  whole->Update3DControllerInput({1, 2, 3}, {4, 5, 6});
  EXPECT_EQ(whole->translationInput, Vector3(1, 2, 3));
  EXPECT_EQ(whole->rotationInput, Vector3(4, 5, 6));
  EXPECT_EQ(log, Log({"a input 1 4 after the whole", "b input 1 4 after the whole",
                      "c input 1 4 after the whole"}));
}

TEST_F(Combined, the_controller_flag_reaches_each_member_in_order_and_then_the_whole) {
  AddThree();
  whole->Set3DControllerOperation(true);
  EXPECT_TRUE(whole->Is3DControllerOperation());
  EXPECT_TRUE(a->Is3DControllerOperation());
  EXPECT_TRUE(c->Is3DControllerOperation());
  whole->Set3DControllerOperation(false);
  EXPECT_FALSE(whole->Is3DControllerOperation());
  EXPECT_FALSE(b->Is3DControllerOperation());
  EXPECT_EQ(log, Log({"a on before the whole", "b on before the whole", "c on before the whole",
                      "a off before the whole", "b off before the whole", "c off before the whole"}));
}

TEST_F(Combined, a_null_entry_is_skipped_by_all_three) {
  whole->AddOperation(nullptr);
  a = Add("a");
  whole->AddOperation(nullptr);
  EXPECT_EQ(whole->GetOperationCount(), 3);
  EXPECT_EQ(whole->GetOperation(0), nullptr);
  EXPECT_EQ(whole->GetOperation(1), a);
  whole->InitOperation(1, 2, nullptr);
  whole->Update3DControllerInput({7, 0, 0}, {8, 0, 0});
  whole->Set3DControllerOperation(true);
  EXPECT_EQ(log, Log({"a init 1 2", "a input 7 8 after the whole", "a on before the whole"}));
  whole->RemoveOperation(0);
  EXPECT_EQ(whole->GetOperation(0), a);
}

TEST_F(Combined, cursors_keys_and_the_combined_flag_stay_with_the_whole) {
  AddThree();
  whole->UpdateCursor(5, 6);
  whole->UpdateKey(KEY_UP, true);
  whole->UpdatePreviousCursor();
  whole->SetCombined(true);
  EXPECT_FALSE(a->IsCombined());
  EXPECT_EQ(log, Log());
}

TEST(CombinedAllocations, none_while_input_is_passed_on) {
  class Silent : public Operation {
   public:
    void PerformOperation(double /*dt*/, CameraParameters& /*camera*/) override {}
  };
  Whole whole;
  for (int i = 0; i < 3; ++i) whole.AddOperation(std::make_unique<Silent>());
  const AllocationCounter counter;
  whole.InitOperation(1, 2, nullptr);
  whole.Update3DControllerInput({1, 2, 3}, {4, 5, 6});
  whole.Set3DControllerOperation(true);
  EXPECT_EQ(counter.GetAllocations(), 0U);
}
