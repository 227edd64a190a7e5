#include "korvane/running.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using Korvane::Running;

// Writes its end into a log.
struct Move {
  Move(std::vector<std::string>& log, std::string whoAmI) : ends(log), name(std::move(whoAmI)) {}
  ~Move() { ends.push_back(name); }

  std::vector<std::string>& ends;
  std::string name;
};

class RunningMove : public ::testing::Test {
 protected:
  using Call = Running<Move>::Call;
  using Ends = std::vector<std::string>;

  void Start(const std::string& name) { running.Set(std::make_unique<Move>(ends, name)); }

  Ends ends;  // outlives the moves
  Running<Move> running;
};

TEST_F(RunningMove, holds_nothing_at_first) {
  EXPECT_FALSE(running);
  EXPECT_EQ(running.Get(), nullptr);
  const Call call(running);
  EXPECT_EQ(call.Get(), nullptr);
  EXPECT_TRUE(call.IsCurrent());
}

TEST_F(RunningMove, what_is_replaced_or_dropped_outside_a_call_dies_at_once) {
  Start("first");
  Start("second");
  EXPECT_EQ(ends, Ends{"first"});
  running.Set(nullptr);
  EXPECT_EQ(ends, (Ends{"first", "second"}));
  EXPECT_FALSE(running);
}

TEST_F(RunningMove, what_is_dropped_within_a_call_is_gone_at_once_and_lives_until_the_call_is_over) {
  Start("first");
  {
    const Call call(running);
    EXPECT_TRUE(call.IsCurrent());
    running.Set(nullptr);
    EXPECT_FALSE(running);
    EXPECT_FALSE(call.IsCurrent());
    EXPECT_EQ(call->name, "first");
    EXPECT_EQ(ends, Ends{});
  }
  EXPECT_EQ(ends, Ends{"first"});
}

TEST_F(RunningMove, what_is_dropped_in_the_inner_of_two_calls_lives_until_the_outer_is_over) {
  Start("first");
  {
    const Call outer(running);
    {
      const Call inner(running);
      running.Set(nullptr);
    }
    EXPECT_EQ(ends, Ends{});
    EXPECT_EQ(outer->name, "first");
  }
  EXPECT_EQ(ends, Ends{"first"});
}

TEST_F(RunningMove, each_of_several_that_are_replaced_while_called_lives_as_long_as_its_own_call) {
  Start("first");
  {
    const Call callOfFirst(running);
    Start("second");
    {
      const Call callOfSecond(running);
      Start("third");
      EXPECT_EQ(callOfFirst->name, "first");
      EXPECT_EQ(callOfSecond->name, "second");
    }
    EXPECT_EQ(ends, Ends{"second"});
    Start("fourth");  // nobody calls the third
    EXPECT_EQ(ends, (Ends{"second", "third"}));
  }
  EXPECT_EQ(ends, (Ends{"second", "third", "first"}));
  EXPECT_EQ(running.Get()->name, "fourth");
}

TEST_F(RunningMove, a_call_into_nothing_keeps_nothing_that_comes_later) {
  const Call call(running);
  Start("first");
  EXPECT_FALSE(call.IsCurrent());
  running.Set(nullptr);
  EXPECT_EQ(ends, Ends{"first"});
}

TEST_F(RunningMove, a_call_that_is_over_keeps_nothing) {
  Start("first");
  { const Call call(running); }
  running.Set(nullptr);
  EXPECT_EQ(ends, Ends{"first"});
}

}  // namespace
