// The cube without a hub, or with one that goes in the midst of an event; and what no camera shows.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <utility>

#include "cube/compass_sense.h"
#include "cube/gesture_scene.h"
#include "cube/pass_view.h"

using namespace Korvane;

namespace {

constexpr int UNTOUCHED = -12345;

class OrientorPartnersTest : public ::testing::Test, protected GestureScene {
 protected:
  bool FindsPart() {
    int x = UNTOUCHED;
    int y = UNTOUCHED;
    const bool found = cube.GetPartPosition(3, x, y);
    EXPECT_EQ(found, x != UNTOUCHED && y != UNTOUCHED);
    return found;
  }
  bool FindsHome() {
    int x = UNTOUCHED;
    int y = UNTOUCHED;
    const bool found = cube.GetOverlayPartPosition(Orientor::OVERLAY_HOME, x, y);
    EXPECT_EQ(found, x != UNTOUCHED && y != UNTOUCHED);
    return found;
  }
};

TEST_F(OrientorPartnersTest, a_part_has_a_place_on_a_visible_cube_with_a_hub) {
  EXPECT_TRUE(FindsPart());
  EXPECT_TRUE(FindsHome());
  Parameters().visible = false;
  EXPECT_FALSE(FindsPart());
  EXPECT_FALSE(FindsHome());
  Parameters().visible = true;
  cube.SetKorvane(nullptr);
  EXPECT_FALSE(FindsPart());
  EXPECT_FALSE(FindsHome());
}

TEST_F(OrientorPartnersTest, a_hub_that_is_taken_away_as_it_is_asked_has_no_parts) {
  hub.onQuery = [this] { cube.SetKorvane(nullptr); };
  EXPECT_FALSE(FindsPart());
  cube.SetKorvane(&hub);
  EXPECT_FALSE(cube.IsPointInBounds(WIDTH - 60, HEIGHT - 60));
  hub.onQuery = nullptr;
  cube.SetKorvane(&hub);
  EXPECT_TRUE(cube.IsPointInBounds(WIDTH - 60, HEIGHT - 60));
}

TEST_F(OrientorPartnersTest, no_part_has_a_place_before_an_eye_in_the_middle_of_the_cube) {
  Parameters().view_scale = 0.0F;
  EXPECT_FALSE(FindsPart());
}

TEST_F(OrientorPartnersTest, the_list_of_systems_needs_a_hub_without_a_move) {
  Parameters().draw_ucs_menu = true;
  cube.SetActiveUCS(L"Plan", false);
  const auto opens = [this] {
    cube.activeOverlayPart = Orientor::OVERLAY_UCS_MENU;
    renderer.ClearCalls();
    cube.OpenUCSMenu();
    return renderer.CountCalls("OpenUCSMenu") == 1;
  };
  EXPECT_TRUE(opens());
  cube.GoToHomeView();
  ASSERT_TRUE(hub.IsShotActive());
  EXPECT_FALSE(opens());
  hub.EndShot();
  EXPECT_TRUE(opens());
  cube.SetKorvane(nullptr);
  EXPECT_FALSE(opens());
}

TEST_F(OrientorPartnersTest, no_drag_begins_where_the_hub_goes_as_it_hears_of_the_move) {
  class LeavingHub : public MemoryHub {
   public:
    using MemoryHub::UpdateOperationParams;
    bool UpdateOperationParams(int x, int y, OperationType type) override {
      if (const std::function<void()> once = std::exchange(onUpdate, nullptr)) once();
      return MemoryHub::UpdateOperationParams(x, y, type);
    }
    std::function<void()> onUpdate;
  } leaving;
  for (const bool leaves : {true, false}) {
    cube.SetKorvane(&leaving);
    ASSERT_TRUE(PressOnPart(3));
    if (leaves)
      leaving.onUpdate = [this] {
        cube.SetKorvane(nullptr);
        cube.activePart = 3;
        cube.mousePressed = true;
      };
    EXPECT_EQ(cube.OnMouseMove(600, 400), !leaves);
  }
  cube.SetKorvane(&hub);
}

TEST_F(OrientorPartnersTest, a_press_anew_on_a_cube_that_is_then_hidden_is_no_click) {
  ASSERT_TRUE(PressOnPart(3));
  ASSERT_TRUE(cube.OnMouseMove(600, 400));
  Parameters().visible = false;
  observer.onDragEnd = [this] {
    Parameters().visible = true;
    PressOnPart(3);
    Parameters().visible = false;
  };
  cube.OnLeftMouseUp(600, 400);
  EXPECT_EQ(journal.Count("clicked 3"), 0);
  EXPECT_FALSE(cube.mousePressed);
}

TEST_F(OrientorPartnersTest, a_gesture_may_be_cancelled_into_another_and_without_the_hub) {
  for (const bool anew : {false, true}) {
    ASSERT_TRUE(PressOnPart(3));
    ASSERT_TRUE(cube.OnMouseMove(600, 400));
    if (anew) observer.onDragEnd = [this] { PressOnPart(3); };
    cube.CancelGesture();
    EXPECT_EQ(cube.mousePressed, anew);
    observer.onDragEnd = nullptr;
  }
  ASSERT_TRUE(cube.OnMouseMove(650, 450));
  observer.onDragEnd = [this] { cube.SetKorvane(nullptr); };
  cube.CancelGesture();
  EXPECT_FALSE(cube.mousePressed);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
}

TEST(OrientorView, that_its_host_never_brings_up_to_date_looks_onto_no_part) {
  class StaleOrientor : public OpenOrientor {
    void Update(bool /*redraw*/) override {}
  } stale;
  CubeScene scene;
  stale.SetKorvane(&scene.hub);
  stale.SetRenderer(&scene.renderer);
  stale.SetViewportSize(CubeScene::WIDTH, CubeScene::HEIGHT);
  const auto countDrawn = [&] {
    scene.renderer.ClearCalls();
    stale.Draw();
    return scene.renderer.CountCalls("RenderGeometry");
  };
  const int drawn = countDrawn();
  EXPECT_GT(drawn, 0);
  EXPECT_EQ(stale.GetClosestGeometryPart(), -1);
  stale.GetParameters().draw_closest_face = false;
  EXPECT_EQ(countDrawn(), drawn);
}

// ---- the way of the compass ----

class CompassTangentTest : public ::testing::Test {
 protected:
  Vector2 Find(const Vector3& view, const Vector3& up, const Vector3& worldUp = Vector3(0, 1, 0)) {
    const CameraParameters camera = LookAt(view * -10.0, Vector3(), up);
    CubeSpace space;
    space.Look(camera, scene);
    return FindCompassTangent(parameters, space, camera, worldUp, 33);
  }
  static void ExpectSame(const Vector2& a, const Vector2& b) { EXPECT_NEAR((a - b).Length(), 0.0, 1e-9); }

  ApplicationParameters scene;
  OrientorParameters parameters;
};

// The orbit turns the other way there, and so does the picture.
TEST_F(CompassTangentTest, is_the_same_on_the_head) {
  const Vector3 view = Vector3(-3, -2, -1).Normalized();
  const Vector2 upright = Find(view, Vector3(0, 1, 0));
  EXPECT_NEAR(upright.Length(), 1.0, 1e-9);
  ExpectSame(Find(view, Vector3(0, -1, 0)), upright);
}

TEST_F(CompassTangentTest, of_a_camera_that_lies_turns_with_it) {
  for (const double height : {-1.0, 1.0}) {
    const Vector3 view(0, height, 0);
    const Vector2 one = Find(view, Vector3(1, 0, 0));
    EXPECT_NEAR(one.Length(), 1.0, 1e-9);
    ExpectSame(Find(view, Vector3(-1, 0, 0)), -one);
  }
}

TEST_F(CompassTangentTest, is_none_without_a_world_or_before_the_eye) {
  const Vector3 view = Vector3(-3, -2, -1).Normalized();
  EXPECT_EQ(Find(view, Vector3(0, 1, 0), Vector3()), Vector2());
  parameters.view_scale = 0.0F;
  parameters.compass_offset = parameters.face_size = parameters.edge_size = -1.0F;
  EXPECT_EQ(Find(Vector3(0, -1, 0), Vector3(1, 0, 0)).IsFinite(), true);
  parameters.view_scale = -1.0F;
  EXPECT_EQ(Find(view, Vector3(0, 1, 0)), Vector2());
}

// ---- what a pass shows ----

TEST(PassView, shows_no_point_that_has_no_place_in_it) {
  const Vector3 ahead(0.25, 0.25, 0);
  CameraParameters camera = LookAt({0, 0, 1}, {0, 0, 0}, {0, 1, 0});
  Vector2 local;
  EXPECT_TRUE(PassView(camera).Project(ahead, local));
  EXPECT_FALSE(PassView(camera).Project({0, 0, 2}, local));
  EXPECT_FALSE(PassView(camera).Project({1e308, 0, 1 - 1e-5}, local));
  EXPECT_FALSE(PassView(camera).Project({0, 1e308, 1 - 1e-5}, local));
  EXPECT_FALSE(PassView(WithSymmetricFrustum(camera, 45, 0)).Project(ahead, local));
  EXPECT_FALSE(PassView(WithSymmetricFrustum(camera, 0, 45)).Project(ahead, local));
}

}  // namespace
