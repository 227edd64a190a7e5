// A disc that finds no memory at one of the places of its making.
#include <gtest/gtest.h>

#include "torture/whole_view.h"

using namespace torture;

namespace {

struct Making {
  bool created = false;
  std::uint64_t allocations = 0;
};

// At the allocation of this number there is no memory.
Making Make(FailingRenderer& renderer, View& hub, std::uint64_t number) {
  Making making;
  OpenDisc disc;
  disc.SetKorvane(&hub);
  disc.SetRenderer(&renderer);
  {
    const AllocationFault fault(number, 1);
    making.created = disc.Create();
    making.allocations = fault.GetCounted();
  }
  disc.Destroy();
  EXPECT_TRUE(disc.Create()) << number;  // once there is memory again
  for (int i = 0; i < 10; ++i) disc.SetActiveDisc(static_cast<Korvane::DiscType>(i % 7));
  EXPECT_TRUE(disc.Destroy()) << number;
  return making;
}

TEST(DiscMemory, each_region_that_finds_none_leaves_nothing_and_the_disc_can_be_made_anew) {
  FailingRenderer renderer;
  View hub;
  const Making whole = Make(renderer, hub, ~std::uint64_t{0});
  ASSERT_TRUE(whole.created);
  ASSERT_GT(whole.allocations, 100U);
  const AllocationCounter counter;
  long refused = 0;
  for (std::uint64_t number = 1; number <= whole.allocations; ++number) {
    refused += Make(renderer, hub, number).created ? 0 : 1;
    ASSERT_EQ(renderer.GetLiveIcons(), 0) << number;
    ASSERT_EQ(renderer.GetHeldTextures(), 0) << number;
  }
  EXPECT_GT(refused, 100);
  EXPECT_EQ(renderer.GetForeignDestroys(), 0);
  EXPECT_LE(counter.GetLive(), 0);
}

}  // namespace
