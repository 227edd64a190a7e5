// How the cube comes and goes with the distance of the mouse.
#include <gtest/gtest.h>

#include <cmath>

#include "cube/cube_scene.h"

namespace {

using namespace Korvane;

constexpr int SIZE = 100;  // pixels: 1.05 and 1.8 sizes are whole pixels

struct FadeScene : CubeScene {
  FadeScene() {
    Parameters().size = OrientorParameters::SIZE_TINY;
    Parameters().tiny_screen_size = SIZE;
    cube.SetSize(OrientorParameters::SIZE_TINY);
  }

  // `x` and `y` from the cube's corner inward, both growing.
  void PointFromCorner(int x, int y) {
    const bool right = cube.mirror.scaleX < 0.0F;
    const bool top = cube.mirror.scaleY < 0.0F;
    // In y-down pixels the corner is at height minus my, and my is mirrored as x is.
    const int down = top ? y : HEIGHT - y;
    cube.SetViewportMousePosition(right ? WIDTH - x : x, down);
  }
};

// The documented curve, on 0 (near) to 1 (far).
double Curve(double distance) {
  const double near = 1.05 * SIZE;
  const double far = 1.8 * SIZE;
  if (distance <= near) return 0.0;
  if (distance >= far) return 1.0;
  return (std::sin(((distance - near) / (far - near) - 0.5) * 3.141592653589793) + 1.0) / 2.0;
}

TEST(OrientorFade, is_whole_at_105_percent_of_the_size_and_gone_at_180) {
  for (const bool sideways : {true, false}) {
    FadeScene scene;
    const auto fadeAt = [&](int distance) {
      scene.PointFromCorner(sideways ? distance : 50, sideways ? 50 : distance);
      return scene.cube.fade;
    };
    EXPECT_EQ(fadeAt(105), 1.0F);
    EXPECT_EQ(scene.cube.opacity, 1.0F);
    EXPECT_LT(fadeAt(106), 1.0F);
    EXPECT_GT(fadeAt(179), 0.0F);
    EXPECT_EQ(fadeAt(180), 0.0F);
  }
}

TEST(OrientorFade, follows_half_a_sine_wave_by_the_farther_axis_in_every_corner) {
  for (int location = 0; location < 4; ++location) {
    FadeScene scene;
    scene.Parameters().opacity_step = 0.0F;
    scene.Parameters().screen_location = static_cast<OrientorParameters::Location>(location);
    scene.SetViewport(CubeScene::WIDTH, CubeScene::HEIGHT);
    for (int x = 0; x <= 200; x += 7) {
      for (int y = 0; y <= 200; y += 7) {
        scene.PointFromCorner(x, y);
        const double expected = std::min(1.0 - Curve(x), 1.0 - Curve(y));
        EXPECT_NEAR(scene.cube.fade, expected, 1e-6) << location << ": " << x << ", " << y;  // a float
      }
    }
  }
}

TEST(OrientorFade, moves_with_the_vertical_offset_of_the_cube) {
  FadeScene scene;
  scene.Parameters().screen_offset_y = -40;
  scene.PointFromCorner(50, 145);
  EXPECT_EQ(scene.cube.fade, 1.0F);
  scene.PointFromCorner(50, 146);
  EXPECT_LT(scene.cube.fade, 1.0F);
  // The horizontal one is left out of it.
  scene.Parameters().screen_offset_x = -40;
  scene.PointFromCorner(106, 50);
  EXPECT_LT(scene.cube.fade, 1.0F);
}

TEST(OrientorFade, leads_the_opacity_from_its_rest_to_1) {
  FadeScene scene;
  scene.Parameters().opacity_step = 0.0F;
  scene.Parameters().min_opacity = 0.2F;
  scene.PointFromCorner(50, 50);
  EXPECT_EQ(scene.cube.opacity, 1.0F);
  // Halfway of the curve: 142.5 is no pixel, so take one and its fade.
  scene.PointFromCorner(142, 50);
  EXPECT_NEAR(scene.cube.opacity, 0.8F * scene.cube.fade + 0.2F, 1e-6);
  EXPECT_NEAR(scene.cube.fade, 1.0 - Curve(142), 1e-6);
  scene.PointFromCorner(600, 50);
  EXPECT_EQ(scene.cube.opacity, 0.2F);
}

TEST(OrientorFade, and_opacity_are_1_while_dragging_wherever_the_mouse_is) {
  FadeScene scene;
  scene.PointFromCorner(600, 600);
  scene.cube.dragging = true;
  for (const int x : {-5000, 0, 50, 600, 5000}) {
    scene.cube.SetViewportMousePosition(x, x);
    EXPECT_EQ(scene.cube.fade, 1.0F);
    EXPECT_EQ(scene.cube.opacity, 1.0F);
  }
  // A move of the camera by the mouse is under way, too: by the drag itself.
  scene.Scene().mouse_drag = true;
  scene.PointFromCorner(600, 600);
  EXPECT_EQ(scene.cube.fade, 1.0F);
}

TEST(OrientorFade, is_gone_while_disabled_even_in_a_drag) {
  FadeScene scene;
  scene.Parameters().disabled = true;
  scene.cube.dragging = true;
  scene.PointFromCorner(50, 50);
  EXPECT_EQ(scene.cube.fade, 0.0F);
  EXPECT_EQ(scene.cube.opacity, 0.5F);
  EXPECT_FALSE(scene.cube.IsMouseInRegion());
}

TEST(OrientorFade, is_gone_while_something_else_is_dragged) {
  FadeScene scene;
  scene.PointFromCorner(50, 50);
  EXPECT_TRUE(scene.cube.IsMouseInRegion());
  scene.Scene().mouse_drag = true;
  scene.PointFromCorner(50, 51);
  EXPECT_EQ(scene.cube.fade, 0.0F);
  EXPECT_EQ(scene.cube.opacity, 0.5F);
  EXPECT_FALSE(scene.cube.IsMouseInRegion());
}

TEST(OrientorFade, is_gone_with_the_mouse_outside_the_viewport) {
  FadeScene scene;
  const int outside[][2] = {{1025, 20}, {-1, 20}, {1000, -1}, {1000, 769}};
  for (const auto& point : outside) {
    scene.PointFromCorner(50, 50);
    scene.cube.SetViewportMousePosition(point[0], point[1]);
    EXPECT_EQ(scene.cube.fade, 0.0F) << point[0] << ", " << point[1];
  }
  // Its very edges belong to it.
  scene.cube.SetViewportMousePosition(1024, 0);
  EXPECT_EQ(scene.cube.fade, 1.0F);
}

// ---- the region ----

struct RegionCase {
  bool compass, locked;
  int width, height;  // of the region, for a size of 100
};

TEST(OrientorRegionOfMouse, reaches_as_far_as_the_cube_the_compass_and_the_lock) {
  const RegionCase cases[] = {
      {false, false, 100, 120}, {false, true, 114, 120}, {true, false, 131, 161}, {true, true, 145, 161}};
  for (const RegionCase& each : cases) {
    FadeScene scene;
    scene.Parameters().draw_compass = each.compass;
    scene.Scene().lock_to_selection = each.locked;
    const auto inRegion = [&](int x, int y) {
      scene.PointFromCorner(x, y);
      return scene.cube.IsMouseInRegion();
    };
    EXPECT_TRUE(inRegion(each.width - 1, 50));
    EXPECT_FALSE(inRegion(each.width + 1, 50));
    EXPECT_TRUE(inRegion(50, each.height - 1));
    EXPECT_FALSE(inRegion(50, each.height + 1));
  }
}

TEST(OrientorRegionOfMouse, leaves_out_its_own_edges) {
  FadeScene scene;
  const auto inRegion = [&](int x, int y) {
    scene.PointFromCorner(x, y);
    return scene.cube.IsMouseInRegion();
  };
  EXPECT_TRUE(inRegion(1, 1));
  EXPECT_FALSE(inRegion(0, 1));
  EXPECT_FALSE(inRegion(1, 0));
  EXPECT_FALSE(inRegion(100, 50));  // 1.0 times 100 is exact
  EXPECT_FALSE(inRegion(50, 120));  // so is 1.2 times 100
}

TEST(OrientorRegionOfMouse, stands_in_the_corner_of_the_cube) {
  for (int location = 0; location < 4; ++location) {
    FadeScene scene;
    scene.Parameters().screen_location = static_cast<OrientorParameters::Location>(location);
    scene.SetViewport(CubeScene::WIDTH, CubeScene::HEIGHT);
    scene.PointFromCorner(50, 50);
    EXPECT_TRUE(scene.cube.IsMouseInRegion()) << location;
    scene.cube.SetViewportMousePosition(CubeScene::WIDTH / 2, CubeScene::HEIGHT / 2);
    EXPECT_FALSE(scene.cube.IsMouseInRegion()) << location;
  }
}

TEST(OrientorRegionOfMouse, moves_with_the_vertical_offset_at_its_inner_edge_only) {
  FadeScene scene;
  scene.Parameters().screen_offset_y = -40;
  const auto inRegion = [&](int x, int y) {
    scene.PointFromCorner(x, y);
    return scene.cube.IsMouseInRegion();
  };
  EXPECT_TRUE(inRegion(50, 159));
  EXPECT_FALSE(inRegion(50, 160));
  EXPECT_TRUE(inRegion(50, 1));
}

// ---- asking for frames ----

// No parts and no region to cross: what is left is the opacity.
TEST(OrientorFrames, are_asked_for_only_when_the_opacity_has_moved_by_more_than_a_step) {
  FadeScene scene;
  scene.Parameters().select_parts = false;
  scene.Parameters().draw_overlay = false;
  scene.PointFromCorner(300, 50);
  ASSERT_EQ(scene.cube.opacity, 0.5F);
  int asked = 0;
  float shown = 0.5F;
  for (int x = 300; x > 110; --x) {
    const int before = scene.hub.requested;
    scene.PointFromCorner(x, 50);
    const auto wanted = static_cast<float>(0.5 * (1.0 - Curve(x)) + 0.5);
    const bool step = std::abs(wanted - shown) > 0.01F;
    if (step) shown = wanted;
    asked += step ? 1 : 0;
    EXPECT_EQ(scene.hub.requested - before, step ? 1 : 0) << x;
    EXPECT_NEAR(scene.cube.opacity, shown, 1e-6) << x;
  }
  // The opacity moves by 0.5 in steps of more than 0.01: far fewer than the 190 moves, and far from none.
  EXPECT_GT(asked, 20);
  EXPECT_LT(asked, 50);
}

TEST(OrientorFrames, are_few_while_the_mouse_crosses_the_view) {
  CubeScene scene;
  scene.cube.SetViewportMousePosition(0, 384);
  const int before = scene.hub.requested;
  for (int x = 0; x < 800; ++x) scene.cube.SetViewportMousePosition(x, 384);
  EXPECT_EQ(scene.hub.requested, before);  // nowhere near the cube
}

TEST(OrientorFrames, are_asked_for_when_the_mouse_enters_the_region_or_a_part) {
  FadeScene scene;
  scene.Parameters().draw_overlay = false;
  scene.PointFromCorner(100, 119);  // whole opacity, one pixel before the region
  int before = scene.hub.requested;
  scene.PointFromCorner(99, 119);
  EXPECT_EQ(scene.hub.requested, before + 1);
  before = scene.hub.requested;
  scene.PointFromCorner(50, 50);  // onto the cube
  EXPECT_GE(scene.cube.GetActiveGeometryPart(), 0);
  EXPECT_EQ(scene.hub.requested, before + 1);
  scene.PointFromCorner(50, 50);
  EXPECT_EQ(scene.hub.requested, before + 1);
}

TEST(OrientorFrames, are_asked_for_when_the_camera_comes_onto_another_part) {
  CubeScene scene;
  scene.Point(10, 10);
  const int before = scene.hub.requested;
  scene.Look(Vector3(3.0, 2.0, 1.0));
  scene.cube.Update(true);
  EXPECT_EQ(scene.hub.requested, before + 1);
}

TEST(OrientorFrames, are_not_asked_for_by_a_draw_or_by_an_invisible_cube) {
  CubeScene scene;
  scene.cube.SetViewportMousePosition(964, 60);
  scene.Point(10, 10);
  int before = scene.hub.requested;
  scene.Look(Vector3(3.0, 2.0, 1.0));
  scene.cube.Draw();
  EXPECT_EQ(scene.hub.requested, before);
  scene.Parameters().visible = false;
  before = scene.hub.requested;
  scene.Look(Vector3(-3.0, 2.0, 1.0));
  scene.cube.SetViewportMousePosition(964, 60);
  EXPECT_EQ(scene.hub.requested, before);
}

}  // namespace
