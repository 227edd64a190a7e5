// Where the parts are on the screen, for tours and tests that point at them.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "cube/cube_scene.h"
#include "support/random.h"

namespace {

using namespace Korvane;

constexpr int UNTOUCHED = -12345;

class PartPosition : public ::testing::Test {
 protected:
  // `y` upward, as for the events of the mouse.
  void PointAt(int x, int y) { scene.Point(x, CubeScene::HEIGHT - y - 1); }

  bool ShowsFace(int face) const {
    const Vector3 view = (scene.hub.view.centre - scene.hub.view.eye).Normalized();
    return scene.cube.GetGeometryPartDirection(face).Dot(view) < -0.3;
  }

  CubeScene scene;
};

TEST_F(PartPosition, every_piece_of_the_compass_is_found_from_above_at_every_size_and_roll) {
  scene.Parameters().draw_compass = true;
  for (const OrientorParameters::Size size :
       {OrientorParameters::SIZE_TINY, OrientorParameters::SIZE_SMALL, OrientorParameters::SIZE_NORMAL}) {
    scene.Parameters().size = size;
    for (int degrees = 0; degrees < 360; degrees += 15) {
      const double angle = degrees * Math::DEG_TO_RAD;
      scene.Look({0, -1, 0});
      scene.hub.view.up = Vector3(std::sin(angle), 0, std::cos(angle));
      for (int part = Orientor::COMPASS_LETTERS_BEGIN; part < Orientor::PART_COUNT; ++part) {
        int x = 0;
        int y = 0;
        EXPECT_TRUE(scene.cube.GetPartPosition(part, x, y)) << part << " of size " << size << ", " << degrees;
      }
    }
  }
}

TEST_F(PartPosition, the_mouse_at_the_place_of_a_part_is_on_that_part) {
  Random random(5);
  int found = 0;
  for (int round = 0; round < 40; ++round) {
    scene.Parameters().screen_location = static_cast<OrientorParameters::Location>(random.Integer(0, 3));
    scene.Parameters().draw_compass = random.Coin();
    scene.SetViewport(CubeScene::WIDTH, CubeScene::HEIGHT);
    scene.Look(random.Direction());
    for (int part = 0; part < Orientor::PART_COUNT; ++part) {
      PointAt(CubeScene::WIDTH / 2, CubeScene::HEIGHT / 2);
      int x = UNTOUCHED;
      int y = UNTOUCHED;
      if (!scene.cube.GetPartPosition(part, x, y)) {
        EXPECT_EQ(x, UNTOUCHED);
        continue;
      }
      PointAt(x, y);
      if (part >= Orientor::COMPASS_LETTERS_BEGIN && scene.cube.IsMouseOnOverlayPart()) continue;
      EXPECT_EQ(scene.cube.GetActiveGeometryPart(), part) << "round " << round;
      ++found;
    }
  }
  EXPECT_GT(found, 40 * 3);
}

TEST_F(PartPosition, every_face_that_the_view_looks_onto_has_a_place) {
  Random random(6);
  for (int round = 0; round < 200; ++round) {
    scene.Look(random.Direction());
    for (int face = 0; face < Orientor::FACE_COUNT; ++face) {
      if (!ShowsFace(face)) continue;
      int x = 0;
      int y = 0;
      EXPECT_TRUE(scene.cube.GetPartPosition(face, x, y)) << face << " in " << round;
    }
  }
}

TEST_F(PartPosition, a_face_seen_from_behind_has_none) {
  scene.Look(Vector3(-1.0, -0.2, -0.1));  // onto the front
  int x = 0;
  int y = 0;
  EXPECT_TRUE(scene.cube.GetPartPosition(OrientorObserver::PART_FRONT, x, y));
  EXPECT_FALSE(scene.cube.GetPartPosition(OrientorObserver::PART_BACK, x, y));
}

TEST_F(PartPosition, the_mouse_at_the_place_of_a_button_is_on_that_button) {
  scene.Parameters().draw_home_button = true;
  scene.Scene().lock_to_selection = true;
  scene.Look(Vector3(-1.0, 0.0, 0.0));  // along a face, so that the arrows show
  for (const Orientor::OverlayPart part :
       {Orientor::OVERLAY_ROTATE_COUNTER_CLOCKWISE, Orientor::OVERLAY_ROTATE_CLOCKWISE,
        Orientor::OVERLAY_HOME, Orientor::OVERLAY_LOCK, Orientor::OVERLAY_CONTEXT_MENU}) {
    int x = 0;
    int y = 0;
    ASSERT_TRUE(scene.cube.GetOverlayPartPosition(part, x, y)) << part;
    PointAt(x, y);
    PointAt(x, y);
    EXPECT_EQ(scene.cube.GetActiveOverlayPart(), part);
  }
}

TEST_F(PartPosition, what_is_not_there_has_no_place_and_writes_nothing) {
  int x = UNTOUCHED;
  int y = UNTOUCHED;
  for (const int part : {-1, static_cast<int>(Orientor::PART_COUNT), 1 << 30, -(1 << 30)}) {
    EXPECT_FALSE(scene.cube.GetPartPosition(part, x, y));
    EXPECT_FALSE(scene.cube.GetOverlayPartPosition(static_cast<Orientor::OverlayPart>(part), x, y));
  }
  scene.Parameters().draw_overlay = false;
  EXPECT_FALSE(scene.cube.GetOverlayPartPosition(Orientor::OVERLAY_HOME, x, y));
  scene.Parameters().visible = false;
  EXPECT_FALSE(scene.cube.GetPartPosition(OrientorObserver::PART_FRONT, x, y));
  scene.cube.SetKorvane(nullptr);
  EXPECT_FALSE(scene.cube.GetPartPosition(OrientorObserver::PART_FRONT, x, y));
  EXPECT_EQ(x, UNTOUCHED);
  EXPECT_EQ(y, UNTOUCHED);
}

}  // namespace
