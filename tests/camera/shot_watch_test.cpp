#include "korvane/shot_watch.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "support/manual_platform.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

struct Owner {
  void OnEnded(const CameraParameters& camera) {
    ++told;
    eye = camera.eye;
    if (onEnded) onEnded();
  }
  bool Begin(CameraOperations& hub, double duration = 1.0) {
    return watch->Watch(hub, [&] { hub.BeginShot(Shot(duration)); });
  }
  static SpinShotParameters Shot(double duration) {
    SpinShotParameters shot;
    shot.duration = duration;
    return shot;
  }

  std::unique_ptr<ShotWatch<Owner>> watch = std::make_unique<ShotWatch<Owner>>(this, &Owner::OnEnded);
  std::function<void()> onEnded;
  int told = 0;
  Vector3 eye;
};

struct ShotWatchTest : ::testing::Test {
  void RunFor(int milliseconds) {
    for (; milliseconds > 0; milliseconds -= 100) {
      platform.Advance(100);
      hub.PerformOperations();
    }
  }

  ManualPlatform platform;
  MemoryHub hub;
  Owner mine;
  Owner other;
};

}  // namespace

TEST_F(ShotWatchTest, tells_of_the_end_of_its_move_once) {
  hub.view.eye = {3, 4, 5};
  EXPECT_FALSE(mine.watch->IsWatching());
  EXPECT_TRUE(mine.Begin(hub, 0.5));
  EXPECT_TRUE(mine.watch->IsWatching());
  EXPECT_EQ(mine.told, 0);
  RunFor(1000);
  EXPECT_EQ(mine.told, 1);
  EXPECT_EQ(mine.eye, hub.GetCameraParameters().eye);
  EXPECT_FALSE(mine.watch->IsWatching());
  EXPECT_TRUE(IsShotOver(&hub));
}

TEST_F(ShotWatchTest, watches_nothing_in_a_hub_that_takes_no_observer) {
  class DeafHub : public MemoryHub {
   public:
    bool SetActiveShotObserver(ShotObserver* /*observer*/) override { return false; }
  } deaf;
  EXPECT_FALSE(mine.Begin(deaf));
  EXPECT_TRUE(deaf.IsShotActive());
  EXPECT_FALSE(mine.watch->IsWatching());
}

TEST_F(ShotWatchTest, tells_of_a_move_that_another_cuts_off) {
  ASSERT_TRUE(mine.Begin(hub));
  ASSERT_TRUE(other.Begin(hub));
  EXPECT_EQ(mine.told, 1);
  EXPECT_FALSE(mine.watch->IsWatching());
  EXPECT_EQ(other.told, 0);
  hub.EndShot();
  EXPECT_EQ(mine.told, 1);
  EXPECT_EQ(other.told, 1);
}

TEST_F(ShotWatchTest, watches_the_second_of_two_moves_of_its_own) {
  ASSERT_TRUE(mine.Begin(hub));
  ASSERT_TRUE(mine.Begin(hub));
  EXPECT_EQ(mine.told, 1);
  EXPECT_TRUE(mine.watch->IsWatching());
  hub.EndShot();
  EXPECT_EQ(mine.told, 2);
}

TEST_F(ShotWatchTest, leaves_the_move_of_another_to_its_watch_when_its_own_is_refused) {
  ASSERT_TRUE(other.Begin(hub));
  const double notANumber = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(mine.Begin(hub, notANumber));
  EXPECT_FALSE(mine.watch->IsWatching());
  EXPECT_TRUE(other.watch->IsWatching());
  hub.EndShot();
  EXPECT_EQ(mine.told, 0);
  EXPECT_EQ(other.told, 1);
}

TEST_F(ShotWatchTest, a_begin_that_begins_nothing_is_not_watched) {
  EXPECT_FALSE(mine.watch->Watch(hub, [] {}));
  EXPECT_FALSE(mine.watch->IsWatching());
}

TEST_F(ShotWatchTest, a_move_that_is_not_wanted_any_more_is_not_watched) {
  const auto begin = [this] { hub.BeginShot(Owner::Shot(1.0)); };
  EXPECT_FALSE(mine.watch->Watch(hub, begin, [] { return false; }));
  hub.EndShot();
  EXPECT_EQ(mine.told, 0);
}

TEST_F(ShotWatchTest, a_move_begun_within_the_begin_of_another_is_watched_once) {
  bool inner = false;
  hub.onBeginShotHook = [&](Shot*) {
    hub.onBeginShotHook = nullptr;
    inner = mine.Begin(hub);
  };
  EXPECT_FALSE(mine.Begin(hub));
  EXPECT_TRUE(inner);
  EXPECT_TRUE(mine.watch->IsWatching());
  hub.EndShot();
  EXPECT_EQ(mine.told, 1);
}

TEST_F(ShotWatchTest, a_watch_whose_move_another_has_taken_over_watches_the_next) {
  ASSERT_TRUE(mine.Begin(hub));
  hub.SetActiveShotObserver(other.watch.get());
  hub.EndShot();
  EXPECT_EQ(mine.told, 0);
  EXPECT_TRUE(mine.Begin(hub));
  hub.EndShot();
  EXPECT_EQ(mine.told, 1);
}

TEST_F(ShotWatchTest, a_watch_that_dies_before_its_move_is_forgotten) {
  ASSERT_TRUE(mine.Begin(hub));
  mine.watch.reset();
  hub.EndShot();
  EXPECT_EQ(mine.told, 0);
  EXPECT_TRUE(IsShotOver(&hub));
}

TEST_F(ShotWatchTest, a_dropped_move_goes_on_without_its_watch) {
  ASSERT_TRUE(mine.Begin(hub, 0.5));
  mine.watch->Drop();
  EXPECT_FALSE(mine.watch->IsWatching());
  EXPECT_FALSE(IsShotOver(&hub));
  RunFor(1000);
  EXPECT_TRUE(IsShotOver(&hub));
  EXPECT_EQ(mine.told, 0);
}

TEST_F(ShotWatchTest, may_die_while_it_tells) {
  ASSERT_TRUE(mine.Begin(hub));
  mine.onEnded = [this] { mine.watch.reset(); };
  hub.EndShot();
  EXPECT_EQ(mine.told, 1);
}

TEST_F(ShotWatchTest, may_die_while_its_move_begins) {
  hub.onBeginShotHook = [this](Shot*) { mine.watch.reset(); };
  EXPECT_FALSE(mine.Begin(hub));
  hub.EndShot();
  EXPECT_EQ(mine.told, 0);
}

TEST_F(ShotWatchTest, a_move_that_is_over_before_it_is_watched_is_not_watched) {
  hub.onBeginShotHook = [this](Shot*) { hub.EndShot(); };
  EXPECT_FALSE(mine.Begin(hub));
  EXPECT_FALSE(mine.watch->IsWatching());
}

TEST_F(ShotWatchTest, without_a_hub_no_move_runs) { EXPECT_TRUE(IsShotOver(nullptr)); }
