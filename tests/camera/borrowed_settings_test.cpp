#include "korvane/borrowed_settings.h"

#include <gtest/gtest.h>

#include "support/memory_hub.h"

using namespace Korvane;

namespace {

using Loan = BorrowedSettings<&ApplicationParameters::orbit_multiplier,
                              &ApplicationParameters::preserve_orbit_up_direction>;

struct BorrowedSettingsTest : ::testing::Test {
  BorrowedSettingsTest() { Set(hub, 2.0, true); }

  static void Set(MemoryHub& hub, double multiplier, bool preserve) {
    hub.GetApplicationParameters().orbit_multiplier = multiplier;
    hub.GetApplicationParameters().preserve_orbit_up_direction = preserve;
  }
  static ::testing::AssertionResult Has(MemoryHub& hub, double multiplier, bool preserve) {
    const ApplicationParameters& now = hub.GetApplicationParameters();
    if (now.orbit_multiplier == multiplier && now.preserve_orbit_up_direction == preserve) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << now.orbit_multiplier << ", " << now.preserve_orbit_up_direction;
  }

  MemoryHub hub;
  MemoryHub other;
  Loan loan;
};

}  // namespace

TEST_F(BorrowedSettingsTest, puts_its_fields_back_and_no_other) {
  loan.Borrow(hub);
  Set(hub, 5.0, false);
  hub.GetApplicationParameters().pan_multiplier = 7.0;
  loan.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 2.0, true));
  EXPECT_EQ(hub.GetApplicationParameters().pan_multiplier, 7.0);
}

TEST_F(BorrowedSettingsTest, gives_back_once) {
  loan.Borrow(hub);
  loan.GiveBack(&hub);
  Set(hub, 5.0, false);
  loan.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 5.0, false));
}

TEST_F(BorrowedSettingsTest, nothing_borrowed_gives_nothing_back) {
  loan.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 2.0, true));
  EXPECT_FALSE(loan.IsBorrowedFrom(&hub));
  EXPECT_FALSE(loan.IsBorrowedFrom(nullptr));
}

TEST_F(BorrowedSettingsTest, gives_back_only_to_the_hub_that_lent) {
  Set(other, 3.0, false);
  loan.Borrow(hub);
  Set(hub, 5.0, false);
  loan.GiveBack(&other);
  EXPECT_TRUE(Has(other, 3.0, false));
  loan.GiveBack(&hub);  // the loan was over
  EXPECT_TRUE(Has(hub, 5.0, false));
}

TEST_F(BorrowedSettingsTest, a_hub_that_has_been_taken_away_gets_nothing_back) {
  loan.Borrow(hub);
  Set(hub, 5.0, false);
  loan.GiveBack(nullptr);
  EXPECT_FALSE(loan.IsBorrowedFrom(&hub));
  EXPECT_TRUE(Has(hub, 5.0, false));
}

TEST_F(BorrowedSettingsTest, borrowed_twice_the_first_values_come_back) {
  loan.Borrow(hub);
  Set(hub, 5.0, false);
  loan.Borrow(hub);
  loan.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 2.0, true));
}

TEST_F(BorrowedSettingsTest, borrowed_from_another_hub_that_one_counts) {
  Set(other, 3.0, false);
  loan.Borrow(hub);
  loan.Borrow(other);
  Set(other, 9.0, true);
  loan.GiveBack(&other);
  EXPECT_TRUE(Has(other, 3.0, false));
}

TEST_F(BorrowedSettingsTest, a_loan_that_is_handed_over_is_given_back_by_its_new_holder_alone) {
  loan.Borrow(hub);
  Set(hub, 5.0, false);
  Loan taken = loan.Take();
  EXPECT_FALSE(loan.IsBorrowedFrom(&hub));
  loan.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 5.0, false));
  taken.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 2.0, true));
}

TEST_F(BorrowedSettingsTest, all_settings_come_back_but_for_the_size_of_the_viewport) {
  BorrowedParameters all;
  hub.GetApplicationParameters().zoom_back_distance = 11.0;
  all.Borrow(hub);
  ApplicationParameters& now = hub.GetApplicationParameters();
  Set(hub, 5.0, false);
  now.zoom_back_distance = 12.0;
  now.viewport_width = 640;
  now.viewport_height = 480;
  all.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 2.0, true));
  EXPECT_EQ(now.zoom_back_distance, 11.0);
  EXPECT_EQ(now.viewport_width, 640);
  EXPECT_EQ(now.viewport_height, 480);
}

TEST_F(BorrowedSettingsTest, all_settings_go_back_once_and_to_their_hub_alone) {
  BorrowedParameters all;
  all.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 2.0, true));
  all.Borrow(hub);
  Set(hub, 5.0, false);
  all.Borrow(hub);
  Set(other, 3.0, false);
  all.GiveBack(&other);
  EXPECT_TRUE(Has(other, 3.0, false));
  all.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 5.0, false));
  all.Borrow(hub);
  Set(hub, 6.0, true);
  all.Borrow(hub);
  all.GiveBack(&hub);
  EXPECT_TRUE(Has(hub, 5.0, false));
}
