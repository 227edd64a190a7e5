#include "foundation/out_of_memory.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

using Korvane::OrFail;

namespace {

[[noreturn]] void RunOut() { throw std::bad_alloc(); }

TEST(OrFail, answers_what_the_call_does) {
  EXPECT_TRUE(OrFail([] { return true; }));
  EXPECT_EQ(*OrFail([] { return std::make_unique<int>(3); }), 3);
  EXPECT_EQ(OrFail([] { return std::wstring(L"text"); }), L"text");
  int calls = 0;
  OrFail([&] { ++calls; });
  EXPECT_EQ(calls, 1);
}

TEST(OrFail, answers_that_nothing_was_done_where_memory_runs_out) {
  EXPECT_FALSE(OrFail([] { return RunOut(), true; }));
  EXPECT_EQ(OrFail([] { return RunOut(), 5; }), 0);
  EXPECT_EQ(OrFail([] { return RunOut(), std::make_unique<int>(3); }), nullptr);
  EXPECT_TRUE(OrFail([] { return RunOut(), std::wstring(L"text"); }).empty());
  bool after = false;
  OrFail([&] {
    RunOut();
    after = true;
  });
  EXPECT_FALSE(after);
}

TEST(OrFail, lets_everything_else_pass) {
  EXPECT_THROW(OrFail([]() -> bool { throw std::runtime_error("a host's own"); }), std::runtime_error);
}

}  // namespace
