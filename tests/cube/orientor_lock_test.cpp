#include <gtest/gtest.h>

#include "cube/gesture_scene.h"

using namespace Korvane;

namespace {

class OrientorLockTest : public ::testing::Test, protected GestureScene {
 protected:
  OrientorLockTest() {
    Scene().global_bound_geometry = ApplicationParameters::BoundGeometryType::Sphere;
    Scene().global_bound_radius = 50.0;
  }
  void Select() {
    hub.SetGeometrySelection(2.0, Vector3(1, 2, 3));
    hub.SetBoundingBoxSelection(Box3(Vector3(-1, -1, -1), Vector3(1, 1, 1)), Vector3(1, 2, 3));
    journal.Take();
  }
};

TEST_F(OrientorLockTest, turns_on_with_the_bounds_of_the_selection) {
  Select();
  cube.LockToCurrentSelection(true);
  EXPECT_TRUE(Scene().lock_to_selection);
  EXPECT_EQ(journal.Take(), (Lines{"recalculate selection", "set scene sphere", "set scene box"}));
  EXPECT_EQ(Scene().scene_bound_radius, 2.0);
  EXPECT_EQ(Scene().scene_bound_centre, Vector3(1, 2, 3));
}

TEST_F(OrientorLockTest, off_on_an_unlocked_view_with_a_selection_turns_it_on) {
  Select();
  cube.LockToCurrentSelection(false);
  EXPECT_TRUE(Scene().lock_to_selection);
}

TEST_F(OrientorLockTest, off_on_a_locked_view_leaves_it_on) {
  Select();
  Scene().lock_to_selection = true;
  cube.LockToCurrentSelection(false);
  EXPECT_TRUE(Scene().lock_to_selection);
  EXPECT_EQ(journal.Take(), (Lines{"recalculate selection", "set scene sphere", "set scene box"}));
}

TEST_F(OrientorLockTest, on_without_a_selection_leaves_the_flag_as_it_was) {
  cube.LockToCurrentSelection(true);
  EXPECT_FALSE(Scene().lock_to_selection);
  EXPECT_EQ(journal.Take(), Lines{"recalculate selection"});
  Scene().lock_to_selection = true;
  cube.LockToCurrentSelection(false);
  EXPECT_TRUE(Scene().lock_to_selection);
}

TEST_F(OrientorLockTest, turns_off_with_a_selection_and_keeps_its_bounds) {
  Select();
  Scene().lock_to_selection = true;
  cube.LockToCurrentSelection(true);
  EXPECT_FALSE(Scene().lock_to_selection);
  EXPECT_EQ(journal.Take(),
            (Lines{"recalculate selection", "recalculate selection", "set scene sphere", "set scene box"}));
}

TEST_F(OrientorLockTest, turns_off_without_a_selection_and_gives_the_bounds_back) {
  Scene().lock_to_selection = true;
  cube.LockToCurrentSelection(true);
  EXPECT_FALSE(Scene().lock_to_selection);
  EXPECT_EQ(journal.Take(), (Lines{"recalculate selection", "reset scene sphere", "reset scene box"}));
  EXPECT_EQ(Scene().scene_bound_radius, 50.0);
}

TEST_F(OrientorLockTest,
       turns_off_the_bounds_of_the_coordinate_system_where_the_scene_is_not_oriented_to_it) {
  Parameters().orient_to_ucs = false;
  Scene().lock_to_selection = true;
  cube.LockToCurrentSelection(true);
  EXPECT_EQ(journal.Take(), (Lines{"recalculate selection", "reset UCS sphere", "reset UCS box",
                                   "reset scene sphere", "reset scene box"}));
  Select();
  cube.LockToCurrentSelection(true);  // on: the system's bounds stay
  EXPECT_EQ(journal.Take(), (Lines{"recalculate selection", "set scene sphere", "set scene box"}));
}

// A host that computes the selection late does so in the hook.
TEST_F(OrientorLockTest, takes_the_selection_that_the_host_computes_late) {
  hub.onRecalculateSelection = [&] { hub.SetGeometrySelection(4.0, Vector3(9, 9, 9)); };
  cube.LockToCurrentSelection(true);
  EXPECT_TRUE(Scene().lock_to_selection);
  EXPECT_EQ(Scene().scene_bound_radius, 4.0);
}

TEST_F(OrientorLockTest, needs_a_hub_and_lets_the_host_take_it_away) {
  hub.onRecalculateSelection = [&] { cube.SetKorvane(nullptr); };
  cube.LockToCurrentSelection(true);
  cube.LockToCurrentSelection(true);
  EXPECT_EQ(journal.Take(), Lines{"recalculate selection"});
}

}  // namespace
