// Whatever host and settings do, the cube stays whole: run under the sanitizers, where it counts most.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "cube/cube_scene.h"
#include "korvane/icon2d.h"
#include "support/random.h"

namespace {

using namespace Korvane;

constexpr int INT_LOW = std::numeric_limits<int>::min();
constexpr int INT_HIGH = std::numeric_limits<int>::max();
constexpr float NAN_FLOAT = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE_FLOAT = std::numeric_limits<float>::infinity();

constexpr int INTS[] = {0, 1, -1, 2, 35, 120, 1024, -1024, INT_LOW, INT_LOW + 1, INT_HIGH, INT_HIGH - 1};
constexpr float FLOATS[] = {0.0F,  -0.0F,  0.06F,     1.0F,      -1.0F,          1e-30F,
                            1e30F, -1e30F, 3.402e38F, NAN_FLOAT, INFINITE_FLOAT, -INFINITE_FLOAT};

constexpr int OrientorParameters::*INT_FIELDS[] = {
    &OrientorParameters::large_screen_size, &OrientorParameters::normal_screen_size,
    &OrientorParameters::small_screen_size, &OrientorParameters::tiny_screen_size,
    &OrientorParameters::drag_dead_zone,    &OrientorParameters::screen_offset_x,
    &OrientorParameters::screen_offset_y,
};
constexpr float OrientorParameters::*FLOAT_FIELDS[] = {
    &OrientorParameters::min_opacity,
    &OrientorParameters::auto_screen_size,
    &OrientorParameters::compass_select_radius,
    &OrientorParameters::face_size,
    &OrientorParameters::edge_size,
    &OrientorParameters::gap_size,
    &OrientorParameters::arrow_size,
    &OrientorParameters::arrow_offset,
    &OrientorParameters::shadow_size,
    &OrientorParameters::shadow_offset,
    &OrientorParameters::compass_size,
    &OrientorParameters::compass_offset,
    &OrientorParameters::compass_angle,
    &OrientorParameters::overlay_arrow_size,
    &OrientorParameters::overlay_home_size,
    &OrientorParameters::overlay_home_offset_x,
    &OrientorParameters::overlay_context_size,
    &OrientorParameters::overlay_ucs_offset_x,
    &OrientorParameters::overlay_ucs_offset_y,
    &OrientorParameters::overlay_ucs_offset_compass_y,
    &OrientorParameters::opacity_shadow,
    &OrientorParameters::opacity_compass,
    &OrientorParameters::opacity_text,
    &OrientorParameters::view_fov,
    &OrientorParameters::view_scale,
    &OrientorParameters::view_offset_x,
    &OrientorParameters::view_offset_y,
    &OrientorParameters::view_scale_compass,
    &OrientorParameters::opacity_step,
};
constexpr bool OrientorParameters::*SWITCHES[] = {
    &OrientorParameters::draw_overlay,  &OrientorParameters::draw_home_button,
    &OrientorParameters::draw_ucs_menu, &OrientorParameters::draw_labels,
    &OrientorParameters::draw_compass,  &OrientorParameters::draw_selected_face,
    &OrientorParameters::select_parts,  &OrientorParameters::select_faces_only,
    &OrientorParameters::orient_to_ucs, &OrientorParameters::overlay_always_on,
    &OrientorParameters::disabled,      &OrientorParameters::draw_closest_face,
};

struct RobustScene : CountingScene {
  // All that a host may call in a frame.
  void Exercise(int x, int y) {
    cube.SetViewportMousePosition(x, y);
    cube.Draw();
    cube.IsPointInBounds(x, y);
    int width = 0;
    int height = 0;
    cube.GetRegionSize(width, height);
    cube.GetTooltip();
    cube.GetActivePartName();
    Check();
  }

  void Check() const {
    EXPECT_GE(cube.GetActiveGeometryPart(), -1);
    EXPECT_LT(cube.GetActiveGeometryPart(), 58);
    EXPECT_GE(cube.GetClosestGeometryPart(), -1);
    EXPECT_LT(cube.GetClosestGeometryPart(), 26);
    EXPECT_GE(cube.rawOverlayPart, -1);
    EXPECT_LT(cube.rawOverlayPart, 6);
    EXPECT_GE(cube.fade, 0.0F);
    EXPECT_LE(cube.fade, 1.0F);
  }
};

TEST(OrientorRobustness, stands_a_viewport_without_size) {
  for (const int size : {0, 1, -1, INT_LOW, INT_HIGH}) {
    RobustScene scene;
    scene.cube.SetViewportSize(size, size);
    for (const int at : INTS) scene.Exercise(at, at);
  }
}

TEST(OrientorRobustness, takes_the_corner_of_a_viewport_of_one_pixel_for_its_own) {
  RobustScene scene;
  scene.cube.SetViewportSize(1, 1);
  scene.Exercise(0, 0);
  EXPECT_EQ(scene.cube.GetScreenSize(), 35);
  EXPECT_EQ(scene.cube.fade, 1.0F);
}

TEST(OrientorRobustness, stands_any_mouse_position_in_any_viewport) {
  Random random;
  for (int i = 0; i < 2000; ++i) {
    RobustScene scene;
    scene.cube.GetParameters().screen_location =
        static_cast<OrientorParameters::Location>(random.Integer(-1, 4));
    scene.cube.SetViewportSize(random.OneOf(INTS), random.OneOf(INTS));
    scene.Exercise(random.OneOf(INTS), random.OneOf(INTS));
  }
}

TEST(OrientorRobustness, stands_any_setting_alone) {
  for (const auto field : INT_FIELDS) {
    for (const int value : INTS) {
      for (int size = 0; size <= 4; ++size) {
        RobustScene scene;
        scene.cube.GetParameters().*field = value;
        scene.cube.GetParameters().size = static_cast<OrientorParameters::Size>(size);
        scene.cube.GetParameters().draw_ucs_menu = true;
        scene.cube.GetParameters().draw_compass = size % 2 == 0;
        scene.cube.SetViewportSize(1024, 768);
        scene.Exercise(964, 60);
      }
    }
  }
  for (const auto field : FLOAT_FIELDS) {
    for (const float value : FLOATS) {
      for (const bool compass : {false, true}) {
        RobustScene scene;
        scene.cube.GetParameters().*field = value;
        scene.cube.GetParameters().draw_ucs_menu = true;
        scene.cube.GetParameters().draw_compass = compass;
        scene.cube.SetViewportSize(1024, 768);
        scene.Exercise(964, 60);
      }
    }
  }
}

TEST(OrientorRobustness, stands_any_settings_together) {
  Random random;
  for (int i = 0; i < 3000; ++i) {
    RobustScene scene;
    OrientorParameters& parameters = scene.cube.GetParameters();
    for (const auto field : INT_FIELDS) {
      if (random.Integer(0, 3) == 0) parameters.*field = random.OneOf(INTS);
    }
    for (const auto field : FLOAT_FIELDS) {
      if (random.Integer(0, 3) == 0) parameters.*field = random.OneOf(FLOATS);
    }
    for (const auto field : SWITCHES) parameters.*field = random.Coin();
    parameters.size = static_cast<OrientorParameters::Size>(random.Integer(-1, 5));
    parameters.screen_location = static_cast<OrientorParameters::Location>(random.Integer(-1, 4));
    scene.hub.GetApplicationParameters().scene_is_world = random.Coin();
    scene.hub.view = RandomCamera(random);
    scene.cube.SetViewportSize(1024, 768);
    scene.Exercise(random.Integer(-10, 1034), random.Integer(-10, 778));
    scene.Exercise(random.OneOf(INTS), random.OneOf(INTS));
  }
}

TEST(OrientorRobustness, stands_any_camera) {
  Random random;
  for (int i = 0; i < 3000; ++i) {
    RobustScene scene;
    scene.cube.GetParameters().draw_compass = random.Coin();
    scene.cube.SetViewportSize(1024, 768);
    scene.hub.view = random.Coin() ? ExtremeCamera(random) : BrokenCamera(random);
    scene.Exercise(964, 60);
    scene.Exercise(900, 30);
  }
}

TEST(OrientorRobustness, hits_nothing_and_stays_near_part_0_with_a_camera_that_is_not_a_number) {
  RobustScene scene;
  scene.cube.GetParameters().draw_overlay = false;
  scene.cube.SetViewportSize(1024, 768);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  scene.hub.view.eye = scene.hub.view.up = Vector3(nan, nan, nan);
  scene.Exercise(964, 60);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), -1);
  EXPECT_EQ(scene.cube.GetClosestGeometryPart(), 0);
  EXPECT_FALSE(scene.cube.ViewOnPartAxis());
}

TEST(OrientorRobustness, stands_any_directions_of_the_scene_and_the_world) {
  Random random;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Vector3 directions[] = {Vector3(),
                                Vector3(1, 0, 0),
                                Vector3(0, 1, 0),
                                Vector3(nan, 0, 0),
                                Vector3(1e300, 0, 0),
                                Vector3(0, 1e-300, 0),
                                Vector3(0, INFINITY, 0),
                                Vector3(1, 1, 1)};
  for (int i = 0; i < 1000; ++i) {
    RobustScene scene;
    ApplicationParameters& application = scene.hub.GetApplicationParameters();
    application.scene_front_direction = random.OneOf(directions);
    application.scene_up_direction = random.OneOf(directions);
    application.world_front_direction = random.OneOf(directions);
    application.world_up_direction = random.OneOf(directions);
    application.scene_is_world = random.Coin();
    scene.cube.GetParameters().draw_compass = true;
    scene.cube.SetViewportSize(1024, 768);
    scene.Exercise(964, 60);
  }
}

// The label's size is the host's.
TEST(OrientorRobustness, stands_a_label_of_any_size) {
  for (const double size : {0.0, -1.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    RobustScene scene;
    scene.cube.GetParameters().draw_ucs_menu = true;
    scene.cube.SetViewportSize(1024, 768);
    ASSERT_NE(scene.cube.ucsLabel.Get(), nullptr);
    scene.cube.ucsLabel.Get()->SetSize(size, size);
    scene.Exercise(964, 120);
    scene.cube.activeOverlayPart = Orientor::OVERLAY_UCS_MENU;
    scene.cube.OpenUCSMenu();
    EXPECT_FALSE(scene.cube.menuOpen);
  }
}

TEST(OrientorRobustness, loses_its_collaborators_at_any_moment) {
  RobustScene scene;
  scene.cube.SetViewportSize(1024, 768);
  scene.Exercise(964, 60);
  scene.cube.SetRenderer(nullptr);
  scene.Exercise(965, 60);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), -1);
  scene.cube.SetRenderer(&scene.renderer);
  scene.cube.SetKorvane(nullptr);
  scene.Exercise(964, 60);
  scene.cube.SetKorvane(&scene.hub);
  scene.Exercise(964, 60);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), 1);
}

// A pick that the host refuses hits nothing.
class RefusingRenderer : public CountingRenderer {
 public:
  bool BeginSelection(const Vector2& /*point*/, const Box2& /*viewport*/, const CameraParameters& /*camera*/,
                      RenderMode /*mode*/) override {
    return false;
  }
};

TEST(OrientorRobustness, hits_nothing_when_no_pick_can_be_opened) {
  RobustScene scene;
  scene.cube.SetViewportSize(1024, 768);
  scene.Exercise(964, 60);
  ASSERT_EQ(scene.cube.GetActiveGeometryPart(), 1);
  RefusingRenderer refusing;
  scene.cube.SetRenderer(&refusing);
  scene.Exercise(964, 60);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), -1);
  EXPECT_EQ(scene.cube.rawOverlayPart, -1);
}

TEST(OrientorRobustness, finds_no_arrows_when_no_pick_can_be_opened) {
  RefusingRenderer refusing;
  for (const bool refused : {false, true}) {
    RobustScene scene;  // straight from the front
    scene.cube.SetViewportSize(1024, 768);
    if (refused) scene.cube.SetRenderer(&refusing);
    scene.cube.mouseInRegion = true;
    scene.cube.SetViewportMousePosition(964, 60);
    EXPECT_EQ(scene.cube.arrowFaces == 0, refused);
    EXPECT_EQ(scene.cube.arrowsVisible, !refused);
  }
}

// A host with a pick of its own may answer any number.
class StrayRenderer : public CountingRenderer {
 public:
  int GetSelection() const override { return answer; }
  int answer = 0;
};

TEST(OrientorRobustness, takes_no_number_from_a_hosts_pick_that_was_not_offered) {
  for (const int answer : INTS) {
    RobustScene scene;
    StrayRenderer stray;
    stray.answer = answer;
    scene.cube.GetParameters().draw_compass = true;
    scene.cube.SetRenderer(&stray);
    scene.cube.SetViewportSize(1024, 768);
    scene.Exercise(964, 60);
    EXPECT_EQ(scene.cube.GetActiveGeometryPart(), answer >= 0 && answer < 58 ? answer : -1);
    EXPECT_EQ(scene.cube.rawOverlayPart, answer >= 0 && answer < 6 ? answer : -1);
  }
}

}  // namespace
