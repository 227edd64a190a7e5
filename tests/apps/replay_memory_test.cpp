#include <gtest/gtest.h>

#include <string>

#include "program.h"

namespace {

using apps_test::ProgramResult;

// A zoom, a view of the cube and the way home, over and over.
std::string MakeSession(int rounds) {
  std::string text = "zovview recording 1\nmodel building\nviewport 800 600\nprojection perspective\n";
  int begin = 0;
  const auto add = [&](int time, const std::string& what) {
    text += std::to_string(begin + time) + " " + what + "\n";
  };
  for (int round = 0; round < rounds; ++round, begin += 6000) {
    add(10, "command zoom");
    add(120, "press left 400 300 1");
    for (int i = 1; i <= 10; ++i) {
      add(140 + 40 * i, "move 400 " + std::to_string(300 + (round % 2 == 0 ? 4 : -4) * i));
    }
    add(600, "release left 400 340");
    add(900, "command home");
    add(2500, "move 740 560");
    add(2600, "press left 740 560 1");
    add(2700, "release left 740 560");
    add(5000, "command home");
  }
  add(0, "end");
  return text;
}

// What a session of an hour keeps shows within a minute: on a busy machine, frames that
// waited in the driver made it a gigabyte.
TEST(ReplayMemory, stays_flat_over_a_long_session) {
  const apps_test::TemporaryFolder folder;
  const auto play = [&folder](int rounds) {
    const ProgramResult result =
        apps_test::RunViewer({"--replay", folder.Write("session.txt", MakeSession(rounds)).string()});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    return result.peakMegabytes;
  };
  const double once = play(1);
  EXPECT_GT(once, 10.0);
  EXPECT_LT(play(12), once + 200.0);
}

}  // namespace
