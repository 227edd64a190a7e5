#include "korvane/changing_in_time.h"

#include <gtest/gtest.h>

#include "support/manual_platform.h"

namespace {

using Korvane::Box2;
using Korvane::ChangingInTimeBox2;
using Korvane::ChangingInTimeValue;
using Korvane::ChangingInTimeValueChain;
using Korvane::ChangingInTimeVector2;
using Korvane::INTERPOLATION_LINEAR;
using Korvane::Vector2;

// The clock reads seconds of about 1 to 100 and subtracts them: 1.4e-14 a step, times spans up to 100 and a
// few dozen steps.
constexpr double TOLERANCE = 1e-10;

ChangingInTimeValue Linear(double initial, double final, double seconds) {
  return {initial, final, seconds, INTERPOLATION_LINEAR};
}

class ChangingInTimeBoxTest : public ::testing::Test {
 protected:
  ManualPlatform platform;
};

ChangingInTimeVector2 Moving() {
  ChangingInTimeVector2 vector;
  vector.x.Add(Linear(0.0, 10.0, 1.0));
  vector.y.Add(Linear(100.0, 200.0, 1.0));
  vector.x.Start();
  vector.y.Start();
  return vector;
}

TEST_F(ChangingInTimeBoxTest, a_vector_from_nothing_is_zero_and_from_two_numbers_rests_there) {
  EXPECT_EQ(Vector2(ChangingInTimeVector2()), Vector2());
  const ChangingInTimeVector2 vector(3.0, 4.0);
  EXPECT_EQ(Vector2(vector), Vector2(3.0, 4.0));
  EXPECT_FALSE(vector.IsChangingInTime());
}

TEST_F(ChangingInTimeBoxTest, a_vector_reads_both_chains_and_copies_them) {
  const ChangingInTimeVector2 vector = Moving();
  EXPECT_EQ(Vector2(vector), Vector2(0.0, 100.0));
  ChangingInTimeVector2 assigned;
  assigned = vector;
  const ChangingInTimeVector2 copied(vector);
  platform.Advance(500);
  for (const ChangingInTimeVector2& each : {vector, assigned, copied}) {
    const Vector2 now = each;
    EXPECT_NEAR(now.x, 5.0, TOLERANCE);
    EXPECT_NEAR(now.y, 150.0, TOLERANCE);
  }
}

TEST_F(ChangingInTimeBoxTest, a_vector_is_changing_while_either_chain_is) {
  ChangingInTimeVector2 vector(1.0, 2.0);
  EXPECT_FALSE(vector.IsChangingInTime());
  vector.x.Add(Linear(0.0, 10.0, 1.0));
  vector.x.Start();
  EXPECT_TRUE(vector.IsChangingInTime());
  vector = ChangingInTimeVector2(1.0, 2.0);
  vector.y.Add(Linear(0.0, 10.0, 1.0));
  vector.y.Start();
  EXPECT_TRUE(vector.IsChangingInTime());
}

TEST_F(ChangingInTimeBoxTest, adding_and_subtracting_a_vector_uses_its_current_value) {
  const ChangingInTimeVector2 moving = Moving();
  Vector2 now = moving;
  platform.Advance(500);
  const ChangingInTimeVector2 sum = ChangingInTimeVector2(1.0, 2.0) + moving;
  const ChangingInTimeVector2 difference = ChangingInTimeVector2(1.0, 2.0) - moving;
  platform.Advance(250);
  now = sum;
  EXPECT_NEAR(now.x, 6.0, TOLERANCE);
  EXPECT_NEAR(now.y, 152.0, TOLERANCE);
  now = difference;
  EXPECT_NEAR(now.x, -4.0, TOLERANCE);
  EXPECT_NEAR(now.y, -148.0, TOLERANCE);
}

TEST_F(ChangingInTimeBoxTest, the_left_side_of_a_sum_of_vectors_goes_on_moving) {
  const ChangingInTimeVector2 sum = Moving() + ChangingInTimeVector2(1.0, 2.0);
  EXPECT_TRUE(sum.IsChangingInTime());
  Vector2 now = sum;
  EXPECT_EQ(now, Vector2(1.0, 102.0));
  platform.Advance(500);
  now = sum;
  EXPECT_NEAR(now.x, 6.0, TOLERANCE);
  EXPECT_NEAR(now.y, 152.0, TOLERANCE);
}

TEST_F(ChangingInTimeBoxTest, adding_a_number_to_a_vector_adds_it_to_both) {
  const ChangingInTimeVector2 sum = ChangingInTimeVector2(1.0, 2.0) + 10.0;
  EXPECT_EQ(Vector2(sum), Vector2(11.0, 12.0));
}

// Tells the order of reads: every running chain reads the clock, and this clock jumps at each read, so a
// chain that is read later has moved further.
class JumpingPlatform : public Korvane::Platform {
 public:
  JumpingPlatform() { Korvane::SetPlatform(this); }
  ~JumpingPlatform() override { Korvane::SetPlatform(nullptr); }
  std::uint32_t GetTickCount() override { return jumping ? tick += 1000 : tick; }
  std::uint64_t SetTimer(std::uint32_t, Korvane::TimerProc) override { return 0; }
  bool KillTimer(std::uint64_t) override { return false; }

  bool jumping = false;

 private:
  std::uint32_t tick = 1000;
};

ChangingInTimeValueChain Running() {
  ChangingInTimeValueChain chain;
  chain.Add(Linear(0.0, 1000.0, 1000.0));
  chain.Start();
  chain.GetValue();
  return chain;
}

TEST(ChangingInTimeOrder, a_vector_reads_y_first) {
  JumpingPlatform platform;
  ChangingInTimeVector2 vector;
  vector.x = Running();
  vector.y = Running();
  platform.jumping = true;
  const Vector2 now = vector;
  EXPECT_LT(now.y, now.x);
}

TEST(ChangingInTimeOrder, a_box_reads_from_its_vertical_extent_back_to_its_horizontal_centre) {
  JumpingPlatform platform;
  ChangingInTimeBox2 box;
  for (ChangingInTimeValueChain* chain : {&box.centerX, &box.centerY, &box.extentX, &box.extentY}) {
    *chain = Running();
  }
  platform.jumping = true;
  const Box2 now = box;
  EXPECT_LT(now.halfExtent.y, now.halfExtent.x);
  EXPECT_LT(now.halfExtent.x, now.center.y);
  EXPECT_LT(now.center.y, now.center.x);
}

ChangingInTimeBox2 RestingBox() {
  ChangingInTimeBox2 box;  // x from -1 to 7, y from 4 to 6
  box.centerX = 3.0;
  box.centerY = 5.0;
  box.extentX = 4.0;
  box.extentY = 1.0;
  return box;
}

TEST_F(ChangingInTimeBoxTest, a_box_from_nothing_is_empty) {
  const Box2 box = ChangingInTimeBox2();
  EXPECT_EQ(box.center, Vector2());
  EXPECT_EQ(box.halfExtent, Vector2());
}

TEST_F(ChangingInTimeBoxTest, a_box_reads_its_centre_and_its_half_sizes) {
  const Box2 box = RestingBox();
  EXPECT_EQ(box.center, Vector2(3.0, 5.0));
  EXPECT_EQ(box.halfExtent, Vector2(4.0, 1.0));
}

TEST_F(ChangingInTimeBoxTest, a_box_gives_its_corners_with_the_current_extents) {
  EXPECT_EQ(Vector2(RestingBox().Min()), Vector2(-1.0, 4.0));
  EXPECT_EQ(Vector2(RestingBox().Max()), Vector2(7.0, 6.0));
  ChangingInTimeBox2 box = RestingBox();
  box.centerX = ChangingInTimeValueChain();
  box.centerX.Add(Linear(0.0, 10.0, 1.0));
  box.centerX.Start();
  const ChangingInTimeVector2 low = box.Min();
  EXPECT_TRUE(low.IsChangingInTime());
  EXPECT_EQ(Vector2(low).x, -4.0);
}

TEST_F(ChangingInTimeBoxTest, a_box_has_its_low_edges_inside_and_its_high_edges_outside) {
  const ChangingInTimeBox2 box = RestingBox();
  EXPECT_TRUE(box.IsPointInside(Vector2(3.0, 5.0)));
  EXPECT_TRUE(box.IsPointInside(Vector2(-1.0, 4.0)));
  EXPECT_FALSE(box.IsPointInside(Vector2(7.0, 5.0)));
  EXPECT_FALSE(box.IsPointInside(Vector2(3.0, 6.0)));
  EXPECT_FALSE(box.IsPointInside(Vector2(-1.5, 5.0)));
  EXPECT_FALSE(box.IsPointInside(Vector2(3.0, 3.5)));
}

TEST_F(ChangingInTimeBoxTest, a_box_tests_a_point_on_fresh_reads) {
  ChangingInTimeBox2 box = RestingBox();
  box.centerX = ChangingInTimeValueChain();
  box.centerX.Add(Linear(0.0, 100.0, 1.0));
  box.centerX.Start();
  EXPECT_TRUE(box.IsPointInside(Vector2(0.0, 5.0)));
  platform.Advance(500);
  EXPECT_FALSE(box.IsPointInside(Vector2(0.0, 5.0)));
  EXPECT_TRUE(box.IsPointInside(Vector2(50.0, 5.0)));
}

TEST(ChangingInTimeOrder, a_box_tests_the_low_x_first_and_stops_at_the_first_failure) {
  ManualPlatform platform;
  ChangingInTimeBox2 box = RestingBox();
  box.centerY = Running();
  const int before = platform.GetClockReads();
  EXPECT_FALSE(box.IsPointInside(Vector2(-2.0, 5.0)));
  EXPECT_FALSE(box.IsPointInside(Vector2(9.0, 5.0)));
  EXPECT_EQ(platform.GetClockReads(), before) << "x decided, so y was not read";
  box.IsPointInside(Vector2(0.0, 5.0));
  EXPECT_GT(platform.GetClockReads(), before);
}

}  // namespace
