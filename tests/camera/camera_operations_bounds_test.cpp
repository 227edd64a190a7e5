// The bounds of the hub: what counts as the scene, and which way is up.
#include <gtest/gtest.h>

#include <limits>

#include "korvane/camera_operations.h"
#include "support/cameras.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

using Log = std::vector<std::string>;

const Box3 GLOBAL_BOX(Vector3(100, 0, 0), Vector3(10, 20, 30));
const Box3 UCS_BOX(Vector3(200, 0, 0), Vector3(40, 50, 60));
const Box3 SELECTED_BOX(Vector3(300, 0, 0), Vector3(7, 8, 9));
const Box3 SOME_BOX(Vector3(1, 2, 3), Vector3(4, 5, 6));
const Box3 EMPTY_BOX(Vector3(1, 2, 3), Vector3(0, 0, 0));
const Vector3 CENTRE(11, 12, 13);

void ExpectSame(const Box3& actual, const Box3& expected) {
  EXPECT_EQ(actual.GetCenter(), expected.GetCenter());
  EXPECT_EQ(actual.GetExtent(), expected.GetExtent());
  for (int i = 0; i < 8; ++i) EXPECT_EQ(actual.GetCorner(i), expected.GetCorner(i)) << i;
}

// The global bounds are only right after the host's hook has run, so a setter that forgets to call it is
// seen.
class Bounds : public ::testing::Test {
 protected:
  Bounds() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), p(hub.GetApplicationParameters()) {
    hub.onRecalculateGlobal = [this] {
      p.global_bound_radius = 5.0;
      p.global_bound_centre = {100, 0, 0};
      p.global_bound_box = GLOBAL_BOX;
    };
  }

  MemoryHub hub;
  ApplicationParameters& p;
};

}  // namespace

// ---- setters ----

TEST_F(Bounds, a_scene_sphere_is_stored_as_given) {
  hub.SetSceneBoundingSphere(3.0, CENTRE);
  EXPECT_EQ(p.scene_bound_radius, 3.0);
  EXPECT_EQ(p.scene_bound_centre, CENTRE);
  EXPECT_EQ(hub.recalculatedGlobal, 0);
}

TEST_F(Bounds, a_scene_sphere_without_radius_takes_the_recalculated_global_radius_and_keeps_its_centre) {
  for (const double radius : {0.0, -1.0}) {
    hub.recalculatedGlobal = 0;
    hub.SetSceneBoundingSphere(radius, CENTRE);
    EXPECT_EQ(p.scene_bound_radius, 5.0);
    EXPECT_EQ(p.scene_bound_centre, CENTRE);
    EXPECT_EQ(hub.recalculatedGlobal, 1);
  }
}

TEST_F(Bounds, a_scene_box_is_stored_as_given_with_a_centre_of_its_own) {
  hub.SetSceneBoundingBox(SOME_BOX, CENTRE);
  ExpectSame(p.scene_bound_box, SOME_BOX);
  EXPECT_EQ(p.scene_bound_centre, CENTRE);
  EXPECT_EQ(hub.recalculatedGlobal, 0);
}

TEST_F(Bounds, an_empty_scene_box_takes_the_recalculated_global_box_and_keeps_its_centre) {
  hub.SetSceneBoundingBox(EMPTY_BOX, CENTRE);
  ExpectSame(p.scene_bound_box, GLOBAL_BOX);
  EXPECT_EQ(p.scene_bound_centre, CENTRE);
  EXPECT_EQ(hub.recalculatedGlobal, 1);
}

TEST_F(Bounds, a_coordinate_system_is_bounded_in_the_same_way) {
  hub.SetUCSBoundingSphere(3.0, CENTRE);
  EXPECT_EQ(p.ucs_bound_radius, 3.0);
  EXPECT_EQ(p.ucs_bound_centre, CENTRE);
  hub.SetUCSBoundingBox(SOME_BOX, -CENTRE);
  ExpectSame(p.ucs_bound_box, SOME_BOX);
  EXPECT_EQ(p.ucs_bound_centre, -CENTRE);
  EXPECT_EQ(hub.recalculatedGlobal, 0);
  hub.SetUCSBoundingSphere(0.0, CENTRE);
  EXPECT_EQ(p.ucs_bound_radius, 5.0);
  EXPECT_EQ(p.ucs_bound_centre, CENTRE);
  hub.SetUCSBoundingBox(EMPTY_BOX, -CENTRE);
  ExpectSame(p.ucs_bound_box, GLOBAL_BOX);
  EXPECT_EQ(p.ucs_bound_centre, -CENTRE);
  EXPECT_EQ(hub.recalculatedGlobal, 2);
}

TEST_F(Bounds, setting_one_group_leaves_the_others) {
  const ApplicationParameters before = p;
  hub.SetSceneBoundingSphere(3.0, CENTRE);
  hub.SetSceneBoundingBox(SOME_BOX, CENTRE);
  EXPECT_EQ(p.ucs_bound_radius, before.ucs_bound_radius);
  EXPECT_EQ(p.ucs_bound_centre, before.ucs_bound_centre);
  EXPECT_EQ(p.global_bound_radius, before.global_bound_radius);
  EXPECT_EQ(p.selected_bound_radius, before.selected_bound_radius);
}

// ---- resets ----

TEST_F(Bounds, resetting_the_coordinate_system_takes_the_recalculated_global_bounds) {
  hub.SetUCSBoundingSphere(3.0, CENTRE);
  hub.ResetUCSBoundingSphere();
  EXPECT_EQ(p.ucs_bound_radius, 5.0);
  EXPECT_EQ(p.ucs_bound_centre, Vector3(100, 0, 0));
  EXPECT_EQ(hub.recalculatedGlobal, 1);
  p.ucs_bound_centre = CENTRE;
  p.global_bound_radius = 0.0;
  hub.ResetUCSBoundingBox();
  ExpectSame(p.ucs_bound_box, GLOBAL_BOX);
  EXPECT_EQ(p.ucs_bound_centre, Vector3(100, 0, 0));
  EXPECT_EQ(hub.recalculatedGlobal, 2);
}

TEST_F(Bounds, resetting_the_scene_takes_the_coordinate_system_when_it_has_bounds) {
  p.ucs_bound_radius = 3.0;
  p.ucs_bound_centre = CENTRE;
  p.ucs_bound_box = UCS_BOX;
  hub.ResetSceneBoundingSphere();
  EXPECT_EQ(p.scene_bound_radius, 3.0);
  EXPECT_EQ(p.scene_bound_centre, CENTRE);
  p.scene_bound_centre = {};
  hub.ResetSceneBoundingBox();
  ExpectSame(p.scene_bound_box, UCS_BOX);
  EXPECT_EQ(p.scene_bound_centre, CENTRE);
  EXPECT_EQ(hub.recalculatedGlobal, 0);
}

TEST_F(Bounds, resetting_the_scene_takes_the_recalculated_global_bounds_otherwise) {
  p.ucs_bound_centre = CENTRE;
  p.ucs_bound_radius = 0.0;
  p.ucs_bound_box = EMPTY_BOX;
  hub.ResetSceneBoundingSphere();
  EXPECT_EQ(p.scene_bound_radius, 5.0);
  EXPECT_EQ(p.scene_bound_centre, Vector3(100, 0, 0));
  EXPECT_EQ(hub.recalculatedGlobal, 1);
  p.scene_bound_centre = {};
  hub.ResetSceneBoundingBox();
  ExpectSame(p.scene_bound_box, GLOBAL_BOX);
  EXPECT_EQ(p.scene_bound_centre, Vector3(100, 0, 0));
  EXPECT_EQ(hub.recalculatedGlobal, 2);
}

// ---- the selection ----

TEST_F(Bounds, a_selection_is_stored_and_moves_the_pivot_to_it) {
  hub.recording = true;
  EXPECT_FALSE(hub.IsGeometrySelected());
  hub.SetGeometrySelection(2.0, CENTRE);
  EXPECT_TRUE(hub.IsGeometrySelected());
  EXPECT_EQ(p.selected_bound_radius, 2.0);
  EXPECT_EQ(p.selected_bound_centre, CENTRE);
  EXPECT_EQ(hub.view.pivot, CENTRE);
  EXPECT_EQ(hub.view.eye, Vector3(0, 0, 10));
  EXPECT_EQ(hub.TakeLog(), (Log{"query", "apply"}));
}

TEST_F(Bounds, a_selection_leaves_the_pivot_when_tools_are_not_to_follow_it) {
  p.tool_selection_sensitivity = false;
  hub.recording = true;
  hub.SetGeometrySelection(2.0, CENTRE);
  EXPECT_TRUE(hub.IsGeometrySelected());
  EXPECT_EQ(p.selected_bound_centre, CENTRE);
  EXPECT_EQ(hub.view.pivot, Vector3(0, 0, 0));
  EXPECT_EQ(hub.TakeLog(), Log{});
}

TEST_F(Bounds, a_selection_without_radius_takes_the_recalculated_global_radius) {
  hub.SetGeometrySelection(0.0, CENTRE);
  EXPECT_EQ(p.selected_bound_radius, 5.0);
  EXPECT_EQ(p.selected_bound_centre, CENTRE);
  EXPECT_EQ(hub.recalculatedGlobal, 1);
}

TEST_F(Bounds, a_box_selection_is_stored_around_its_centre) {
  hub.SetBoundingBoxSelection(SOME_BOX, CENTRE);
  EXPECT_TRUE(hub.IsGeometrySelected());
  EXPECT_EQ(p.selected_bound_centre, CENTRE);
  ExpectSame(p.selected_bound_box, Box3(CENTRE, SOME_BOX.GetExtent()));
  EXPECT_EQ(hub.view.pivot, Vector3(0, 0, 0));
  EXPECT_EQ(hub.applied, 0);
}

TEST_F(Bounds, an_empty_box_selection_takes_the_recalculated_global_box_around_its_centre) {
  hub.SetBoundingBoxSelection(EMPTY_BOX, CENTRE);
  EXPECT_EQ(p.selected_bound_centre, CENTRE);
  ExpectSame(p.selected_bound_box, Box3(CENTRE, GLOBAL_BOX.GetExtent()));
  EXPECT_EQ(hub.recalculatedGlobal, 1);
}

TEST_F(Bounds, resetting_a_sphere_selection_zeroes_the_sphere_and_leaves_the_box) {
  hub.SetBoundingBoxSelection(SOME_BOX, CENTRE);
  hub.SetGeometrySelection(2.0, CENTRE);
  hub.ResetGeometrySelection();
  EXPECT_FALSE(hub.IsGeometrySelected());
  EXPECT_EQ(p.selected_bound_radius, 0.0);
  EXPECT_EQ(p.selected_bound_centre, Vector3());
  ExpectSame(p.selected_bound_box, Box3(CENTRE, SOME_BOX.GetExtent()));
}

TEST_F(Bounds, resetting_a_box_selection_empties_the_box_and_leaves_the_sphere) {
  p.global_bound_geometry = ApplicationParameters::BoundGeometryType::Box;
  hub.SetGeometrySelection(2.0, CENTRE);
  hub.SetBoundingBoxSelection(SOME_BOX, CENTRE);
  hub.ResetGeometrySelection();
  EXPECT_FALSE(hub.IsGeometrySelected());
  ExpectSame(p.selected_bound_box, Box3(Vector3(), Vector3()));
  EXPECT_EQ(p.selected_bound_radius, 2.0);
  EXPECT_EQ(p.selected_bound_centre, CENTRE);
}

// ---- what the scene is ----

namespace {

class SceneBounds : public Bounds {
 protected:
  SceneBounds() {
    p.ucs_bound_radius = 6.0;
    p.ucs_bound_centre = {200, 0, 0};
    p.ucs_bound_box = UCS_BOX;
  }

  void ExpectScene(double radius, const Vector3& centre, const Box3& box) {
    EXPECT_EQ(p.scene_bound_radius, radius);
    EXPECT_EQ(p.scene_bound_centre, centre);
    ExpectSame(p.scene_bound_box, box);
  }
};

}  // namespace

TEST_F(SceneBounds, are_those_of_the_selection_that_the_host_has_just_recalculated) {
  hub.onRecalculateSelection = [&] {
    p.tool_selection_sensitivity = false;
    hub.SetGeometrySelection(4.0, {300, 0, 0});
    hub.SetBoundingBoxSelection(SELECTED_BOX, {300, 0, 0});
  };
  hub.RecalculateSceneBounds();
  ExpectScene(4.0, {300, 0, 0}, SELECTED_BOX);
  EXPECT_EQ(hub.recalculatedSelection, 1);
  EXPECT_EQ(hub.recalculatedGlobal, 0);
}

TEST_F(SceneBounds, are_those_of_the_model_when_the_scene_is_the_world) {
  hub.RecalculateSceneBounds();
  ExpectScene(5.0, {100, 0, 0}, GLOBAL_BOX);
  EXPECT_EQ(hub.recalculatedSelection, 1);
  EXPECT_EQ(hub.recalculatedGlobal, 1);
}

TEST_F(SceneBounds, are_those_of_the_coordinate_system_otherwise) {
  p.scene_is_world = false;
  hub.RecalculateSceneBounds();
  ExpectScene(6.0, {200, 0, 0}, UCS_BOX);
  EXPECT_EQ(hub.recalculatedGlobal, 0);
}

TEST_F(SceneBounds, stay_as_they_are_when_locked) {
  hub.SetGeometrySelection(4.0, {300, 0, 0});
  p.lock_to_selection = true;
  const ApplicationParameters before = p;
  hub.RecalculateSceneBounds();
  ExpectScene(before.scene_bound_radius, before.scene_bound_centre, before.scene_bound_box);
  EXPECT_EQ(hub.recalculatedSelection, 0);
  EXPECT_EQ(hub.recalculatedGlobal, 0);
  EXPECT_EQ(p.selected_bound_radius, 4.0);
  EXPECT_EQ(p.selected_bound_centre, Vector3(300, 0, 0));
  ExpectSame(p.selected_bound_box, before.selected_bound_box);
  EXPECT_EQ(p.global_bound_radius, before.global_bound_radius);
  EXPECT_EQ(p.ucs_bound_radius, before.ucs_bound_radius);
}

TEST_F(SceneBounds, go_through_the_setters_sphere_first) {
  class SetterHub : public MemoryHub {
   public:
    void SetSceneBoundingSphere(double radius, Vector3 centre) override {
      Record("sphere");
      MemoryHub::SetSceneBoundingSphere(radius, centre);
    }
    void SetSceneBoundingBox(Box3 box, Vector3 centre) override {
      Record("box");
      MemoryHub::SetSceneBoundingBox(box, centre);
    }
  };
  SetterHub setters;
  setters.recording = true;
  setters.RecalculateSceneBounds();
  EXPECT_EQ(setters.TakeLog(), (Log{"recalculate selection", "recalculate global", "sphere", "box"}));
}

TEST_F(SceneBounds, of_a_selection_without_size_fall_back_to_the_model_around_its_centre) {
  // The selection's radius is 0 and its box is empty: both setters take the model's.
  p.tool_selection_sensitivity = false;
  hub.SetGeometrySelection(2.0, CENTRE);
  p.selected_bound_radius = 0.0;
  p.selected_bound_box = EMPTY_BOX;
  hub.RecalculateSceneBounds();
  ExpectScene(5.0, CENTRE, GLOBAL_BOX);
}

TEST(BoundsHooks, do_nothing_of_themselves) {
  class BareHub : public CameraOperations {
   public:
    void ApplyCameraParameters(const CameraParameters&) override {}
    void QueryCameraParameters(CameraParameters&) const override {}
    void RequestApplicationUpdate() override {}
  };
  BareHub hub;
  hub.RecalculateSelectionBounds();
  hub.RecalculateGlobalBounds();
  EXPECT_EQ(hub.GetApplicationParameters().global_bound_radius, 1.0);
  EXPECT_EQ(hub.GetApplicationParameters().selected_bound_radius, 0.0);
  EXPECT_FALSE(hub.IsGeometrySelected());
}

// ---- directions ----

TEST_F(Bounds, world_directions_are_the_scenes_when_the_scene_is_the_world_and_the_worlds_otherwise) {
  p.scene_up_direction = {0, 0, 2};
  p.scene_front_direction = {0, 3, 0};
  p.world_up_direction = {4, 0, 0};
  p.world_front_direction = {0, 0, 5};
  EXPECT_EQ(hub.GetWorldUpDirection(), Vector3(0, 0, 2));
  EXPECT_EQ(hub.GetWorldFrontDirection(), Vector3(0, 3, 0));
  p.scene_is_world = false;
  EXPECT_EQ(hub.GetWorldUpDirection(), Vector3(4, 0, 0));
  EXPECT_EQ(hub.GetWorldFrontDirection(), Vector3(0, 0, 5));
}

// ---- bad numbers ----

TEST_F(Bounds, numbers_that_are_not_finite_change_nothing) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const ApplicationParameters before = p;
  for (const double bad : {nan, infinity, -infinity}) {
    const Vector3 badPoint(0, bad, 0);
    const Box3 badBox(Vector3(), badPoint);
    hub.SetSceneBoundingSphere(bad, CENTRE);
    hub.SetSceneBoundingSphere(1.0, badPoint);
    hub.SetSceneBoundingBox(badBox, CENTRE);
    hub.SetSceneBoundingBox(SOME_BOX, badPoint);
    hub.SetUCSBoundingSphere(bad, CENTRE);
    hub.SetUCSBoundingSphere(1.0, badPoint);
    hub.SetUCSBoundingBox(badBox, CENTRE);
    hub.SetUCSBoundingBox(SOME_BOX, badPoint);
    hub.SetGeometrySelection(bad, CENTRE);
    hub.SetGeometrySelection(1.0, badPoint);
    hub.SetBoundingBoxSelection(badBox, CENTRE);
    hub.SetBoundingBoxSelection(SOME_BOX, badPoint);
  }
  EXPECT_FALSE(hub.IsGeometrySelected());
  EXPECT_EQ(hub.applied, 0);
  EXPECT_EQ(p.scene_bound_radius, before.scene_bound_radius);
  EXPECT_EQ(p.scene_bound_centre, before.scene_bound_centre);
  ExpectSame(p.scene_bound_box, before.scene_bound_box);
  EXPECT_EQ(p.ucs_bound_radius, before.ucs_bound_radius);
  EXPECT_EQ(p.ucs_bound_centre, before.ucs_bound_centre);
  ExpectSame(p.ucs_bound_box, before.ucs_bound_box);
  EXPECT_EQ(p.selected_bound_radius, before.selected_bound_radius);
  EXPECT_EQ(p.selected_bound_centre, before.selected_bound_centre);
  ExpectSame(p.selected_bound_box, before.selected_bound_box);
}

TEST_F(Bounds, a_selection_does_not_send_a_broken_camera_back_to_the_host) {
  hub.view.eye.x = std::numeric_limits<double>::quiet_NaN();
  hub.SetGeometrySelection(2.0, CENTRE);
  EXPECT_TRUE(hub.IsGeometrySelected());
  EXPECT_EQ(hub.applied, 0);
}
