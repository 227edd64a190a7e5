#include "korvane/cam3d_controller_parameters.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <type_traits>

using namespace Korvane;

namespace {

using P = Cam3DControllerParameters;
using Mode = P::NavigationMode;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

struct Row {
  Mode mode;
  double translation[3];
  double rotation[3];
};
constexpr Row TABLE[] = {
    {P::MODE_OBJECT, {0.6, 0.5, 0.8}, {1.0, 1.0, 1.0}},
    {P::MODE_WALK, {0.3, 0.1, 0.4}, {0.2, 0.2, 0.2}},
    {P::MODE_FLY, {0.5, 0.5, 0.5}, {0.2, 0.2, 0.2}},
    {P::MODE_PAN, {0.8, 0.8, 1.0}, {0.0, 0.0, 0.0}},
};
constexpr Mode NO_MODES[] = {static_cast<Mode>(4), static_cast<Mode>(7), static_cast<Mode>(-1),
                             static_cast<Mode>(std::numeric_limits<int>::max()),
                             static_cast<Mode>(std::numeric_limits<int>::min())};

void ExpectRow(const double (&values)[3], const double (&expected)[3], int row) {
  for (int axis = 0; axis < 3; ++axis) EXPECT_EQ(values[axis], expected[axis]) << row << ", " << axis;
}
void ExpectRow(const double* values, double x, double y, double z) {
  EXPECT_EQ(values[0], x);
  EXPECT_EQ(values[1], y);
  EXPECT_EQ(values[2], z);
}

// The multipliers as they are stored: seven rows at the end of the record.
void StoredRows(const P& parameters, double (&rows)[7][3]) {
  static_assert(std::is_trivially_copyable_v<P>);
  const char* const end = reinterpret_cast<const char*>(&parameters) + sizeof(P);
  std::memcpy(rows, end - sizeof(rows), sizeof(rows));
}

}  // namespace

TEST(Cam3DControllerParameters, modes_have_their_numbers) {
  EXPECT_EQ(sizeof(Mode), 4U);
  EXPECT_EQ(static_cast<int>(P::MODE_OBJECT), 0);
  EXPECT_EQ(static_cast<int>(P::MODE_WALK), 1);
  EXPECT_EQ(static_cast<int>(P::MODE_FLY), 2);
  EXPECT_EQ(static_cast<int>(P::MODE_PAN), 3);
}

TEST(Cam3DControllerParameters, start_with_their_defaults) {
  const P p;
  EXPECT_EQ(p.GetNavigationMode(), P::MODE_OBJECT);
  EXPECT_EQ(p.GetSensitivity(), 0.0009);
  EXPECT_EQ(p.GetInputThreshold(), 5.0);
  EXPECT_EQ(p.GetPivotBallThreshold(), 3);
  EXPECT_EQ(p.GetPivotBallHideDelay(), 0.5);
  EXPECT_TRUE(p.GetEnableRotation());
  EXPECT_TRUE(p.GetEnableTranslation());
  EXPECT_TRUE(p.GetKeepSceneUpright());
}

TEST(Cam3DControllerParameters, multipliers_start_with_the_values_of_each_mode) {
  const P p;
  for (const Row& row : TABLE) {
    double values[3];
    p.GetTranslationMultipliers(row.mode, values);
    ExpectRow(values, row.translation, row.mode);
    p.GetRotationMultipliers(row.mode, values);
    ExpectRow(values, row.rotation, row.mode);
  }
}

TEST(Cam3DControllerParameters, the_exported_constants_hold_the_same_values) {
  ExpectRow(P::m_defaultObjectTranslationMultipliers, 0.6, 0.5, 0.8);
  ExpectRow(P::m_defaultObjectRotationMultipliers, 1.0, 1.0, 1.0);
  ExpectRow(P::m_defaultWalkTranslationMultipliers, 0.3, 0.1, 0.4);
  ExpectRow(P::m_defaultWalkRotationMultipliers, 0.2, 0.2, 0.2);
  ExpectRow(P::m_defaultFlyTranslationMultipliers, 0.5, 0.5, 0.5);
  ExpectRow(P::m_defaultFlyRotationMultipliers, 0.2, 0.2, 0.2);
  ExpectRow(P::m_defaultPanTranslationMultipliers, 0.8, 0.8, 1.0);
}

// Translation of 0, rotation of 0, translation of 1, rotation of 1, translation of 2, rotation of 2,
// translation of 3.
TEST(Cam3DControllerParameters, multipliers_are_stored_by_mode_with_translation_first) {
  P p;
  for (int mode = 0; mode < 4; ++mode) {
    const double translation[3] = {mode * 10.0 + 1.0, mode * 10.0 + 2.0, mode * 10.0 + 3.0};
    const double rotation[3] = {mode * 10.0 + 4.0, mode * 10.0 + 5.0, mode * 10.0 + 6.0};
    p.SetTranslationMultipliers(static_cast<Mode>(mode), translation);
    p.SetRotationMultipliers(static_cast<Mode>(mode), rotation);
  }
  double rows[7][3];
  StoredRows(p, rows);
  for (int row = 0; row < 7; ++row) {
    const double first = row / 2 * 10.0 + (row % 2 == 0 ? 1.0 : 4.0);
    ExpectRow(rows[row], first, first + 1.0, first + 2.0);
  }
}

TEST(Cam3DControllerParameters, multipliers_of_other_modes_read_as_one) {
  const P p;
  for (const Mode mode : NO_MODES) {
    double values[3] = {9, 9, 9};
    p.GetTranslationMultipliers(mode, values);
    ExpectRow(values, 1.0, 1.0, 1.0);
    values[0] = values[1] = values[2] = 9.0;
    p.GetRotationMultipliers(mode, values);
    ExpectRow(values, 1.0, 1.0, 1.0);
  }
}

TEST(Cam3DControllerParameters, multipliers_that_are_not_there_are_not_set) {
  P p;
  double before[7][3];
  StoredRows(p, before);
  const double nines[3] = {9, 9, 9};
  for (const Mode mode : NO_MODES) {
    p.SetTranslationMultipliers(mode, nines);
    p.SetRotationMultipliers(mode, nines);
  }
  p.SetRotationMultipliers(P::MODE_PAN, nines);
  double after[7][3];
  StoredRows(p, after);
  for (int row = 0; row < 7; ++row) ExpectRow(after[row], before[row], row);
}

TEST(Cam3DControllerParameters, a_mode_above_3_is_ignored) {
  P p;
  p.SetNavigationMode(P::MODE_FLY);
  for (const Mode mode : NO_MODES) {
    p.SetNavigationMode(mode);
    EXPECT_EQ(p.GetNavigationMode(), P::MODE_FLY);
  }
  for (int mode = 0; mode <= 3; ++mode) {
    p.SetNavigationMode(static_cast<Mode>(mode));
    EXPECT_EQ(static_cast<int>(p.GetNavigationMode()), mode);
  }
}

TEST(Cam3DControllerParameters, settings_are_kept) {
  P p;
  p.SetSensitivity(0.25);
  p.SetInputThreshold(2.0);
  p.SetPivotBallThreshold(8);
  p.SetEnableRotation(false);
  p.SetEnableTranslation(false);
  p.SetKeepSceneUpright(false);
  EXPECT_EQ(p.GetSensitivity(), 0.25);
  EXPECT_EQ(p.GetInputThreshold(), 2.0);
  EXPECT_EQ(p.GetPivotBallThreshold(), 8);
  EXPECT_FALSE(p.GetEnableRotation());
  EXPECT_FALSE(p.GetEnableTranslation());
  EXPECT_FALSE(p.GetKeepSceneUpright());
}

TEST(Cam3DControllerParameters, what_is_no_number_is_ignored) {
  P p;
  double before[7][3];
  StoredRows(p, before);
  for (const double bad : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
    p.SetSensitivity(bad);
    p.SetInputThreshold(bad);
    for (int axis = 0; axis < 3; ++axis) {
      double row[3] = {9, 9, 9};
      row[axis] = bad;
      for (const Row& each : TABLE) {
        p.SetTranslationMultipliers(each.mode, row);
        p.SetRotationMultipliers(each.mode, row);
      }
    }
  }
  p.SetTranslationMultipliers(P::MODE_WALK, nullptr);
  p.SetRotationMultipliers(P::MODE_WALK, nullptr);
  p.GetTranslationMultipliers(P::MODE_WALK, nullptr);
  p.GetRotationMultipliers(P::MODE_PAN, nullptr);
  EXPECT_EQ(p.GetSensitivity(), 0.0009);
  EXPECT_EQ(p.GetInputThreshold(), 5.0);
  double after[7][3];
  StoredRows(p, after);
  for (int row = 0; row < 7; ++row) ExpectRow(after[row], before[row], row);
}
