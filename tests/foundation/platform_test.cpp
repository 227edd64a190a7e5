#include "korvane/platform.h"

#include <gtest/gtest.h>

#include "support/manual_platform.h"

namespace {

using Korvane::GetPlatform;
using Korvane::Platform;
using Korvane::SetPlatform;

TEST(Platform, is_the_one_that_was_set_until_null_puts_the_default_back) {
  Platform& usual = GetPlatform();
  {
    ManualPlatform manual;
    EXPECT_EQ(&GetPlatform(), &manual);
  }
  EXPECT_EQ(&GetPlatform(), &usual);
  SetPlatform(nullptr);
  EXPECT_EQ(&GetPlatform(), &usual);
}

#if !defined(_WIN32)
TEST(Platform, is_by_default_a_queue_that_the_host_pumps) {
  auto* const queue = dynamic_cast<Korvane::TimerQueue*>(&GetPlatform());
  ASSERT_NE(queue, nullptr);
  EXPECT_EQ(queue->MillisecondsToNextTimer(), -1);
}
#endif

}  // namespace
