// Everything that a host is asked for fails once, or from then on, at every place of a long session.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "torture/trial.h"

using namespace torture;

namespace {

class EachRendererCall : public testing::TestWithParam<std::tuple<int, bool>> {};

TEST_P(EachRendererCall, may_fail) {
  const auto operation = static_cast<Operation>(std::get<0>(GetParam()));
  const bool forGood = std::get<1>(GetParam());
  const long calls = Trial::GetCounts().calls[static_cast<std::size_t>(operation)];
  RecordProperty("calls", std::to_string(calls));
  EXPECT_EQ(ForEachNumber(calls, 5,
                          [&](long n) {
                            Trial::Fault fault;
                            fault.begin = [&](FaultyClock& /*clock*/, FailingRenderer& renderer) {
                              renderer.Fail(operation, n, forGood);
                            };
                            fault.losesIcons = operation == Operation::DestroyIcon;
                            return Trial::Run(fault);
                          }),
            "");
}

INSTANTIATE_TEST_SUITE_P(Operations, EachRendererCall,
                         testing::Combine(testing::Range(0, OPERATION_COUNT), testing::Bool()),
                         [](const auto& instance) {
                           const auto operation = static_cast<Operation>(std::get<0>(instance.param));
                           return std::string(GetName(operation)) +
                                  (std::get<1>(instance.param) ? "_for_good" : "_once");
                         });

// The renderer ends when its host says so.
TEST(EachRendererCallTest, the_session_makes_use_of_all_operations_but_the_last) {
  std::vector<std::string> unused;
  for (int i = 0; i < OPERATION_COUNT; ++i) {
    if (Trial::GetCounts().calls[static_cast<std::size_t>(i)] == 0)
      unused.emplace_back(GetName(static_cast<Operation>(i)));
  }
  EXPECT_EQ(unused, std::vector<std::string>{"Destroy"});
}

TEST(EachRendererCallTest, nothing_is_wrong_where_nothing_fails) { EXPECT_EQ(Trial::Run({}), ""); }

TEST(ChosenNumbersTest, each_is_in_one_share) {
  for (const std::string wanted : {"all", ""}) {
    std::vector<long> numbers;
    for (const char* share : {"0/3", "1/3", "2/3"}) {
      const std::vector<long> part = ChooseNumbers(100, 7, wanted, share);
      EXPECT_GT(part.size(), 1U) << share;
      numbers.insert(numbers.end(), part.begin(), part.end());
    }
    std::sort(numbers.begin(), numbers.end());
    EXPECT_EQ(numbers, ChooseNumbers(100, 7, wanted, ""));
  }
  EXPECT_EQ(ChooseNumbers(100, 7, "all", "").size(), 100U);
}

TEST(ChosenNumbersTest, one_may_be_wanted_alone) {
  EXPECT_EQ(ChooseNumbers(100, 7, "42", ""), std::vector<long>{42});
  EXPECT_TRUE(ChooseNumbers(41, 7, "42", "").empty());
}

// ---- memory ----

class EachAllocation : public testing::TestWithParam<std::uint64_t> {};

TEST_P(EachAllocation, may_fail) {
  const auto allocations = static_cast<long>(Trial::GetCounts().allocations);
  EXPECT_GT(allocations, 1000);
  EXPECT_EQ(ForEachNumber(allocations, 120,
                          [&](long n) {
                            Trial::Fault fault;
                            fault.firstAllocation = static_cast<std::uint64_t>(n);
                            fault.failingAllocations = GetParam();
                            return Trial::Run(fault);
                          }),
            "");
}

std::string NameRun(const testing::TestParamInfo<std::uint64_t>& run) {
  if (run.param == 1) return "once";
  return run.param == 7 ? "seven_times" : "until_the_end_of_the_session";
}

INSTANTIATE_TEST_SUITE_P(Memory, EachAllocation, testing::Values(1, 7, ~std::uint64_t{0}), &NameRun);

// ---- time ----

class EachMoment : public testing::TestWithParam<FaultyClock::Clock> {};

TEST_P(EachMoment, may_be_one_at_which_the_clock_goes_wrong) {
  EXPECT_EQ(ForEachNumber(Trial::GetCounts().advances, 30,
                          [&](long n) {
                            Trial::Fault fault;
                            fault.begin = [&](FaultyClock& clock, FailingRenderer& /*renderer*/) {
                              clock.Let(GetParam(), n);
                            };
                            return Trial::Run(fault);
                          }),
            "");
}

std::string NameClock(const testing::TestParamInfo<FaultyClock::Clock>& run) {
  static constexpr const char* NAMES[] = {"", "jumps_forward", "jumps_back", "stands_still", "wraps"};
  return NAMES[static_cast<int>(run.param)];
}

INSTANTIATE_TEST_SUITE_P(Clocks, EachMoment,
                         testing::Values(FaultyClock::Clock::JumpsForward, FaultyClock::Clock::JumpsBack,
                                         FaultyClock::Clock::StandsStill, FaultyClock::Clock::Wraps),
                         &NameClock);

class EachTimer : public testing::TestWithParam<FaultyClock::Alarm> {};

TEST_P(EachTimer, may_be_deaf_late_or_tell_twice) {
  const bool ofAll = GetParam() == FaultyClock::Alarm::Late || GetParam() == FaultyClock::Alarm::Twice;
  const long timers = Trial::GetCounts().timersSet;
  EXPECT_GT(timers, 20);
  EXPECT_EQ(ForEachNumber(ofAll ? 1 : timers, 20,
                          [&](long n) {
                            Trial::Fault fault;
                            fault.begin = [&](FaultyClock& clock, FailingRenderer& /*renderer*/) {
                              clock.Let(GetParam(), n);
                            };
                            fault.timersStay = GetParam() == FaultyClock::Alarm::Twice;
                            return Trial::Run(fault);
                          }),
            "");
}

std::string NameAlarm(const testing::TestParamInfo<FaultyClock::Alarm>& run) {
  static constexpr const char* NAMES[] = {"", "refuses_once", "refuses_for_good", "late", "twice"};
  return NAMES[static_cast<int>(run.param)];
}

INSTANTIATE_TEST_SUITE_P(Alarms, EachTimer,
                         testing::Values(FaultyClock::Alarm::Refuses, FaultyClock::Alarm::RefusesForGood,
                                         FaultyClock::Alarm::Late, FaultyClock::Alarm::Twice),
                         &NameAlarm);

}  // namespace
