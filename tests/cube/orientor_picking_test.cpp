// What is under the mouse: cube, compass and overlay, against a brute-force pick.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "cube/cube_scene.h"
#include "cube/pick_oracle.h"
#include "korvane/icon2d.h"
#include "support/allocation_counter.h"
#include "support/random.h"

namespace {

using namespace Korvane;

constexpr int RING = 30;  // any direction of it

// The 26 views straight onto a part, and as many again from anywhere.
std::vector<Vector3> Views(Random& random, int arbitrary) {
  std::vector<Vector3> views;
  for (int part = 0; part < 26; ++part) views.push_back(-PickOracle::DirectionOf(part).Normalized());
  for (int i = 0; i < arbitrary; ++i) views.push_back(random.Direction());
  return views;
}

// A cube in some state and the brute-force pick for the same state.
class PickScene : public CubeScene {
 public:
  void Place(int location, int size) {
    Parameters().screen_location = static_cast<OrientorParameters::Location>(location);
    Parameters().size = static_cast<OrientorParameters::Size>(size);
    SetViewport(WIDTH, HEIGHT);
    if (cube.ucsLabel.Get() != nullptr) cube.ucsLabel.Get()->SetSize(80.0, 24.0);
  }

  PickOracle MakeOracle() {
    PickOracle::Setup setup;
    setup.parameters = Parameters();
    setup.screenSize = cube.GetScreenSize();
    setup.viewportWidth = WIDTH;
    setup.viewportHeight = HEIGHT;
    cube.GetStandardView(setup.view, setup.up);
    setup.cameraLooksUp = (hub.view.centre - hub.view.eye).Dot(Scene().world_up_direction) > 0.0;
    setup.lockedToSelection = Scene().lock_to_selection;
    setup.sceneIsWorld = Scene().scene_is_world;
    setup.worldFront = ToStandard(Scene().world_front_direction);
    setup.worldUp = ToStandard(Scene().world_up_direction);
    if (cube.ucsLabel.Get() != nullptr) {
      setup.labelWidth = 80.0;
      setup.labelHeight = 24.0;
    }
    return PickOracle(setup);
  }

  // The mouse at a pixel, y upward, long enough for all that lags behind.
  void Settle(int x, int y) {
    Point(x, HEIGHT - y);
    cube.arrowsVisible = false;  // as after a draw without arrows; the hit test may set it
    Point(x, HEIGHT - y);
  }

 private:
  // Along front, up and side of the scene, which are orthonormal here.
  Vector3 ToStandard(const Vector3& v) {
    const Vector3 front = Scene().scene_front_direction;
    const Vector3 up = Scene().scene_up_direction;
    return {v.Dot(front), v.Dot(up), v.Dot(front.Cross(up))};
  }
};

int RingAsOne(int part) { return part > RING ? RING : part; }

// Whether the pick is the same a little to all sides: on an edge rounding may choose.
template <class Pick>
bool IsClear(const Vector2& pixel, Pick pick) {
  const int middle = pick(pixel);
  for (const Vector2& step : {Vector2(0.02, 0), Vector2(-0.02, 0), Vector2(0, 0.02), Vector2(0, -0.02)}) {
    if (pick(pixel + step) != middle) return false;
  }
  return true;
}

struct Tally {
  int compared = 0;
  int unclear = 0;
  std::vector<int> hits = std::vector<int>(64, 0);
};

// The mouse at a pixel, on both sides.
void Compare(PickScene& scene, PickOracle& oracle, int x, int y, Tally& tally) {
  const Vector2 pixel(x, y);
  scene.Settle(x, y);
  // What the cube has found about the mouse's place is tested elsewhere; here it is an input.
  oracle.setup.mouseInRegion = scene.cube.mouseInRegion;
  oracle.setup.overlayShown = scene.cube.mouseInRegion || scene.cube.fade >= 0.0001F;
  const bool arrows = !oracle.GetArrow(0).empty() || !oracle.GetArrow(2).empty();
  oracle.setup.arrowsVisible = arrows;
  const auto pickOverlay = [&](const Vector2& at) { return oracle.PickOverlay(at); };
  const int overlay = pickOverlay(pixel);
  oracle.setup.mouseOnOverlay = overlay >= 0 && scene.Parameters().draw_overlay;
  const auto pickGeometry = [&](const Vector2& at) { return oracle.PickGeometry(at); };
  ++tally.compared;
  if (!IsClear(pixel, pickOverlay) || !IsClear(pixel, pickGeometry) || oracle.IsOnEdge(pixel)) {
    ++tally.unclear;
    return;
  }
  const int geometry = pickGeometry(pixel);
  ASSERT_EQ(RingAsOne(scene.cube.GetActiveGeometryPart()), geometry) << x << ", " << y;
  ASSERT_EQ(scene.cube.rawOverlayPart, overlay) << x << ", " << y;
  ASSERT_EQ(scene.cube.activeOverlayPart, overlay);
  ASSERT_EQ(scene.cube.highlightedPart, scene.cube.activePart);
  ++tally.hits[static_cast<std::size_t>(geometry + 1)];
}

// The cells of a grid along each side. Under the sanitizers a pick takes seven times as long.
#ifdef __SANITIZE_ADDRESS__
constexpr int GRID_CELLS = 5;
#else
constexpr int GRID_CELLS = 7;
#endif

// A grid over the region, some pixel in each of its cells.
void CompareGrid(PickScene& scene, Random& random, int cells, Tally& tally) {
  PickOracle oracle = scene.MakeOracle();
  const double reach = 1.7 * scene.cube.GetScreenSize();
  const bool right = scene.cube.mirror.scaleX < 0.0F;
  const bool top = scene.cube.mirror.scaleY < 0.0F;
  for (int column = 0; column < cells; ++column) {
    for (int row = 0; row < cells; ++row) {
      const int inX = static_cast<int>(reach * (column + random.Uniform(0.0, 1.0)) / cells);
      const int inY = static_cast<int>(reach * (row + random.Uniform(0.0, 1.0)) / cells);
      Compare(scene, oracle, right ? CubeScene::WIDTH - inX : inX, top ? CubeScene::HEIGHT - inY : inY,
              tally);
      if (::testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(OrientorPicking, finds_what_brute_force_finds_at_every_size_and_in_every_corner_from_60_views) {
  Random random;
  Tally tally;
  for (const Vector3& view : Views(random, 34)) {
    for (int location = 0; location < 4; ++location) {
      for (int size = 0; size <= 4; ++size) {
        PickScene scene;
        ASSERT_TRUE(scene.cube.Create());
        scene.Look(view);
        OrientorParameters& parameters = scene.Parameters();
        parameters.draw_compass = random.Coin();
        parameters.draw_ucs_menu = random.Coin();
        parameters.select_faces_only = random.Integer(0, 3) == 0;
        parameters.draw_overlay = random.Integer(0, 3) != 0;
        parameters.compass_angle = static_cast<float>(random.Coin() ? 0.0 : random.Uniform(-360.0, 360.0));
        parameters.gap_size = random.Coin() ? 0.0F : 0.004F;
        parameters.screen_offset_x = random.Coin() ? 0 : random.Integer(-30, 30);
        parameters.screen_offset_y = random.Coin() ? 0 : random.Integer(-30, 30);
        scene.Scene().lock_to_selection = random.Coin();
        SCOPED_TRACE(::testing::Message()
                     << "view " << view.x << " " << view.y << " " << view.z << ", corner " << location
                     << ", size " << size << ", compass " << parameters.draw_compass << ", faces only "
                     << parameters.select_faces_only);
        scene.Place(location, size);
        CompareGrid(scene, random, GRID_CELLS, tally);
        if (HasFatalFailure()) return;
      }
    }
  }
  EXPECT_EQ(tally.compared, 60 * 4 * 5 * GRID_CELLS * GRID_CELLS);
  EXPECT_LT(tally.unclear, tally.compared / 50);
  for (int part = -1; part <= RING; ++part) {
    EXPECT_GT(tally.hits[static_cast<std::size_t>(part + 1)], tally.compared / 2500) << "part " << part;
  }
}

TEST(OrientorPicking, finds_the_compass_where_the_world_has_it_in_a_turned_scene) {
  Random random;
  Tally tally;
  for (const Vector3& view : Views(random, 34)) {
    PickScene scene;
    scene.Look(view);
    const Axes axes = RandomAxes(random);
    scene.Scene().scene_front_direction = axes.front;
    scene.Scene().scene_up_direction = axes.up;
    scene.Scene().scene_is_world = false;
    scene.Parameters().draw_compass = true;
    scene.Place(0, 4);
    CompareGrid(scene, random, 20, tally);
    if (HasFatalFailure()) return;
  }
  for (int part = 26; part <= RING; ++part) {
    EXPECT_GT(tally.hits[static_cast<std::size_t>(part + 1)], 20) << part;
  }
}

// ---- by the point that should hit ----

// All corners and sizes, each with a scene that looks along `view`.
template <class Each>
void ForEachPlace(const Vector3& view, Each each) {
  for (int location = 0; location < 4; ++location) {
    for (int size = 0; size <= 4; ++size) {
      SCOPED_TRACE(::testing::Message() << "view " << view.x << " " << view.y << " " << view.z << ", corner "
                                        << location << ", size " << size);
      PickScene scene;
      ASSERT_TRUE(scene.cube.Create());
      scene.Look(view);
      each(scene, location, size);
    }
  }
}

int PickAt(PickScene& scene, const Vector2& pixel) { return scene.cube.PickGeometry(pixel).part; }

Vector3 MiddleOf(const PickOracle::Quad& quad) {
  return (quad.corners[0] + quad.corners[1] + quad.corners[2] + quad.corners[3]) / 4.0;
}

TEST(OrientorPicking, hits_each_of_the_26_parts_in_the_middle_of_a_side_that_faces_the_eye) {
  Random random;
  int hits[26] = {};
  for (const Vector3& view : Views(random, 30)) {
    ForEachPlace(view, [&](PickScene& scene, int location, int size) {
      scene.Place(location, size);
      const PickOracle oracle = scene.MakeOracle();
      for (int part = 0; part < 26; ++part) {
        // A side of the cube as it is drawn: what reaches back on the outline is left out.
        for (int axis = 0; axis < 3; ++axis) {
          Vector3 middle = PickOracle::DirectionOf(part) * 0.0775;  // between face and outside
          if (PickOracle::DirectionOf(part)[axis] == 0.0) continue;
          middle[axis] = PickOracle::DirectionOf(part)[axis] * 0.095;
          const double toward = (oracle.GetEye() - middle)[axis] * middle[axis];
          if (toward < 0.005) continue;  // turned away, or seen edge on
          EXPECT_EQ(PickAt(scene, oracle.Project(middle)), part);
          ++hits[part];
        }
      }
    });
  }
  for (const int count : hits) EXPECT_GT(count, 200);
}

TEST(OrientorPicking, hits_the_four_arrows_beside_a_face_that_is_looked_at_and_tells_them_from_the_faces) {
  for (int face = 0; face < 6; ++face) {
    const Vector3 view = -PickOracle::DirectionOf(face);
    ForEachPlace(view, [&](PickScene& scene, int location, int size) {
      scene.Place(location, size);
      scene.cube.mouseInRegion = true;
      PickOracle oracle = scene.MakeOracle();
      oracle.setup.mouseInRegion = true;
      int arrows = 0;
      for (int other = 0; other < 6; ++other) {
        for (const PickOracle::Quad& arrow : oracle.GetArrow(other)) {
          ++arrows;
          EXPECT_NE(other / 2, face / 2);
          const CubePicker::Hit hit = scene.cube.PickGeometry(oracle.Project(MiddleOf(arrow)));
          EXPECT_EQ(hit.part, other);
          EXPECT_TRUE(hit.IsByArrow());
        }
      }
      EXPECT_EQ(arrows, 4);
      // The face itself has none, and is hit as such.
      const CubePicker::Hit hit = scene.cube.PickGeometry(oracle.Project(Vector3()));
      EXPECT_EQ(hit.part, face);
      EXPECT_FALSE(hit.IsByArrow());
      EXPECT_NE(hit.arrowFaces, 0U);
    });
  }
}

TEST(OrientorPicking, offers_no_arrows_away_from_the_region_or_off_the_axis) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  PickOracle oracle = scene.MakeOracle();
  oracle.setup.mouseInRegion = true;
  const Vector2 pixel = oracle.Project(MiddleOf(oracle.GetArrow(3)[0]));
  EXPECT_EQ(PickAt(scene, pixel), -1);
  EXPECT_EQ(scene.cube.PickGeometry(pixel).arrowFaces, 0U);
  scene.cube.dragging = true;  // a drag offers them, too
  EXPECT_EQ(PickAt(scene, pixel), 3);
  scene.cube.dragging = false;
  scene.cube.mouseInRegion = true;
  scene.Look(Vector3(-1, 1e-6, 0));
  EXPECT_EQ(PickAt(scene, pixel), -1);
  scene.Look(Vector3(-1, 1e-8, 0));
  EXPECT_EQ(PickAt(scene, pixel), 3);
  EXPECT_TRUE(scene.cube.PickGeometry(pixel).IsByArrow());
  scene.Look(Vector3(-1, 1, 0));
  EXPECT_EQ(scene.cube.PickGeometry(pixel).arrowFaces, 0U);
}

TEST(OrientorPicking, hits_each_letter_from_below_before_the_cube) {
  Random random;
  int tested = 0;
  int overCube = 0;
  while (tested < 60) {
    const Vector3 view = random.Direction();
    if (view.y < 0.35) continue;  // seen well from below
    ++tested;
    ForEachPlace(view, [&](PickScene& scene, int location, int size) {
      scene.Parameters().draw_compass = true;
      scene.Place(location, size);
      PickOracle oracle = scene.MakeOracle();
      for (int letter = 26; letter < 30; ++letter) {
        const Vector2 pixel = oracle.Project(MiddleOf(oracle.GetCompassPart(letter)[0]));
        EXPECT_EQ(PickAt(scene, pixel), letter);
        scene.Parameters().draw_compass = false;
        oracle.setup.parameters.draw_compass = false;
        overCube += oracle.PickGeometry(pixel) >= 0 ? 1 : 0;
        scene.Parameters().draw_compass = true;
        oracle.setup.parameters.draw_compass = true;
      }
    });
  }
  EXPECT_GT(overCube, 20);  // some of them had the cube behind them
}

TEST(OrientorPicking, hits_a_letter_from_above_only_beside_the_cube) {
  Random random;
  int beside = 0;
  int hidden = 0;
  int tested = 0;
  while (tested < 60) {
    const Vector3 view = random.Direction();
    if (view.y > -0.35) continue;
    ++tested;
    ForEachPlace(view, [&](PickScene& scene, int location, int size) {
      scene.Parameters().draw_compass = true;
      scene.Place(location, size);
      PickOracle oracle = scene.MakeOracle();
      for (int letter = 26; letter < 30; ++letter) {
        const Vector2 pixel = oracle.Project(MiddleOf(oracle.GetCompassPart(letter)[0]));
        oracle.setup.parameters.draw_compass = false;
        const int cube = oracle.PickGeometry(pixel);
        const bool clear = IsClear(pixel, [&](const Vector2& at) { return oracle.PickGeometry(at); });
        oracle.setup.parameters.draw_compass = true;
        if (!clear) continue;
        EXPECT_EQ(PickAt(scene, pixel), cube >= 0 ? cube : letter);
        ++(cube >= 0 ? hidden : beside);
      }
    });
  }
  EXPECT_GT(beside, 1000);
  EXPECT_GT(hidden, 100);
}

TEST(OrientorPicking, hits_the_ring_at_each_of_its_28_directions) {
  Random random;
  int tested = 0;
  while (tested < 60) {
    const Vector3 view = random.Direction();
    if (std::abs(view.y) < 0.35) continue;
    ++tested;
    ForEachPlace(view, [&](PickScene& scene, int location, int size) {
      scene.Parameters().draw_compass = true;
      scene.Place(location, size);
      const PickOracle oracle = scene.MakeOracle();
      for (int part = 30; part < 58; ++part) {
        const Vector2 pixel = oracle.Project(MiddleOf(oracle.GetCompassPart(part)[0]));
        const auto pick = [&](const Vector2& at) { return oracle.PickGeometry(at); };
        if (pick(pixel) != RING || !IsClear(pixel, pick)) continue;  // behind the cube or a letter
        const int hit = PickAt(scene, pixel);
        EXPECT_GE(hit, 30);
        EXPECT_LT(hit, 58);
        // Its own place or one beside it, since they overlap.
        const Vector3 found = PickOracle::DirectionOf(hit);
        EXPECT_GT(found.Dot(PickOracle::DirectionOf(part)), 0.9);
      }
    });
  }
}

TEST(OrientorPicking, hits_nothing_of_the_compass_without_it) {
  PickScene scene;
  scene.Look(Vector3(0, -1, 0));
  scene.Parameters().draw_compass = true;
  scene.Place(0, 3);
  const Vector2 pixel = scene.MakeOracle().Project(MiddleOf(scene.MakeOracle().GetCompassPart(28)[0]));
  EXPECT_EQ(PickAt(scene, pixel), 28);
  scene.Parameters().draw_compass = false;
  EXPECT_EQ(PickAt(scene, pixel), -1);
}

TEST(OrientorPicking, hits_no_letter_and_no_ring_behind_an_overlay_part) {
  PickScene scene;
  scene.Look(Vector3(0, -1, 0));
  scene.Parameters().draw_compass = true;
  scene.Place(0, 3);
  const PickOracle oracle = scene.MakeOracle();
  const Vector2 letter = oracle.Project(MiddleOf(oracle.GetCompassPart(28)[0]));
  const Vector2 ring = oracle.Project(MiddleOf(oracle.GetCompassPart(33)[0]));
  EXPECT_EQ(PickAt(scene, letter), 28);
  EXPECT_GE(PickAt(scene, ring), 30);
  scene.cube.activeOverlayPart = 2;
  EXPECT_EQ(PickAt(scene, letter), -1);
  EXPECT_EQ(PickAt(scene, ring), -1);
  scene.Look(Vector3(0, 1, 0));
  EXPECT_EQ(PickAt(scene, scene.MakeOracle().Project(MiddleOf(oracle.GetCompassPart(28)[0]))), -1);
}

TEST(OrientorPicking, hits_no_edge_with_faces_only_but_still_the_ring_behind_it) {
  PickScene scene;
  scene.Look(Vector3(-1, -1, 0));
  scene.Place(0, 4);
  const Vector2 edge = scene.MakeOracle().Project(Vector3(0.095, 0.0775, 0.0));
  const Vector2 face = scene.MakeOracle().Project(Vector3(0.095, 0.0, 0.0));
  EXPECT_EQ(PickAt(scene, edge), 9);
  scene.Parameters().select_faces_only = true;
  EXPECT_EQ(PickAt(scene, edge), -1);
  EXPECT_EQ(PickAt(scene, face), 1);

  // With the compass: a place of the ring that an edge hides.
  scene.Parameters().draw_compass = true;
  PickOracle oracle = scene.MakeOracle();
  int behind = 0;
  for (int part = 30; part < 58; ++part) {
    const Vector2 pixel = oracle.Project(MiddleOf(oracle.GetCompassPart(part)[0]));
    oracle.setup.parameters.select_faces_only = false;
    const bool hidden = oracle.PickGeometry(pixel) >= 6 && oracle.PickGeometry(pixel) < 26;
    oracle.setup.parameters.select_faces_only = true;
    if (!hidden || oracle.PickGeometry(pixel) != RING) continue;
    ++behind;
    EXPECT_GE(PickAt(scene, pixel), 30);
  }
  EXPECT_GT(behind, 0);
}

TEST(OrientorPicking, hits_each_overlay_part_in_its_middle_from_50_views) {
  Random random;
  int hits[6] = {};
  for (const Vector3& view : Views(random, 26)) {
    ForEachPlace(view, [&](PickScene& scene, int location, int size) {
      scene.Parameters().draw_ucs_menu = true;
      scene.Scene().lock_to_selection = true;
      scene.Parameters().draw_compass = random.Coin();
      scene.Parameters().overlay_always_on = true;
      scene.Place(location, size);
      scene.cube.arrowsVisible = true;
      PickOracle oracle = scene.MakeOracle();
      oracle.setup.arrowsVisible = true;
      for (const PickOracle::Quad& quad : oracle.GetOverlay()) {
        const Vector3 middle = MiddleOf(quad);
        const Vector2 pixel(middle.x, middle.y);
        // At the smallest sizes a later part may lie on it; then the earlier of the two is hit.
        const auto pick = [&](const Vector2& at) { return oracle.PickOverlay(at); };
        if (pick(pixel) != quad.id || !IsClear(pixel, pick)) continue;
        EXPECT_EQ(scene.cube.PickOverlay(pixel), quad.id);
        ++hits[quad.id];
      }
    });
  }
  for (const int count : hits) EXPECT_GT(count, 500);
}

TEST(OrientorPicking, hits_the_menu_button_on_twice_its_picture) {
  PickScene scene;
  scene.Place(0, 3);
  // 0.125 and 0.77 of 120 inward from the corner, half of 0.12 of 120 in its picture.
  const double x = CubeScene::WIDTH - 15.0;
  const double y = CubeScene::HEIGHT - 92.4;
  scene.Parameters().overlay_always_on = true;
  const auto pick = [&](double dx) { return scene.cube.PickOverlay(Vector2(x + dx, y)); };
  EXPECT_EQ(pick(7.1), 4);
  EXPECT_EQ(pick(14.3), 4);
  EXPECT_EQ(pick(14.5), -1);
}

// ---- the state that follows ----

TEST(OrientorSelection, follows_the_mouse_onto_the_cube_and_off_it) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Point(964, 60);  // its middle: 6 pixels inward of half the size
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), 1);
  EXPECT_EQ(scene.cube.highlightedPart, 1);
  scene.Point(10, 700);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), -1);
  EXPECT_EQ(scene.cube.highlightedPart, -1);
}

TEST(OrientorSelection, is_kept_while_dragging) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Point(964, 60);
  scene.cube.dragging = true;
  scene.Point(10, 700);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), 1);
}

TEST(OrientorSelection, of_a_cube_hidden_under_the_mouse_is_none_until_it_shows_again) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Point(964, 60);
  ASSERT_EQ(scene.cube.GetActiveGeometryPart(), 1);
  scene.Parameters().visible = false;
  scene.Point(964, 60);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), -1);
  scene.Parameters().visible = true;
  scene.Point(964, 60);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), 1);
}

TEST(OrientorSelection, is_none_while_disabled_and_while_a_menu_is_open) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Point(964, 60);
  scene.Parameters().disabled = true;
  scene.Point(964, 60);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), -1);
  scene.Parameters().disabled = false;
  scene.cube.menuOpen = true;
  scene.Point(964, 60);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), -1);
  EXPECT_EQ(scene.cube.rawOverlayPart, -1);
}

TEST(OrientorSelection, leaves_the_parts_out_when_they_cannot_be_selected_but_not_the_overlay) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Parameters().select_parts = false;
  scene.Point(964, 60);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), -1);
  scene.Point(932, 15);  // home: 0.77 and 0.125 of 120 inward from the corner
  EXPECT_EQ(scene.cube.GetActiveOverlayPart(), 2);
}

TEST(OrientorSelection, keeps_the_part_while_the_button_is_down) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Point(964, 60);
  scene.cube.mousePressed = true;
  scene.Point(10, 700);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), 1);
  EXPECT_EQ(scene.cube.highlightedPart, 1);
}

TEST(OrientorSelection, knows_only_the_pressed_overlay_part_while_the_button_is_down) {
  PickScene scene;
  scene.Point(932, 15);
  ASSERT_EQ(scene.cube.GetActiveOverlayPart(), 2);
  scene.cube.mousePressed = true;
  scene.cube.pressedOverlayPart = 4;
  scene.Point(932, 15);
  EXPECT_EQ(scene.cube.rawOverlayPart, -1);
  EXPECT_EQ(scene.cube.GetActiveOverlayPart(), -1);
  scene.cube.pressedOverlayPart = 2;
  scene.Point(932, 15);
  EXPECT_EQ(scene.cube.GetActiveOverlayPart(), 2);
}

TEST(OrientorSelection, shows_the_same_during_a_shot_wherever_the_mouse_goes) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Point(964, 60);
  TransitionShotParameters shot;
  shot.targetCamera = LookAlong(Vector3(0, -1, 0));
  shot.easeEnd = 1.0;
  shot.duration = 1.0;
  ASSERT_TRUE(scene.hub.BeginShot(shot));
  scene.Point(932, 15);
  EXPECT_EQ(scene.cube.GetActiveGeometryPart(), -1);
  EXPECT_EQ(scene.cube.highlightedPart, 1);
  EXPECT_EQ(scene.cube.rawOverlayPart, 2);
  // What is shown of the overlay is cleared, and comes back after the shot.
  EXPECT_EQ(scene.cube.GetActiveOverlayPart(), -1);
  scene.hub.EndShot();
  scene.Point(932, 15);
  EXPECT_EQ(scene.cube.highlightedPart, -1);
  EXPECT_EQ(scene.cube.GetActiveOverlayPart(), 2);
}

// ---- bounds ----

TEST(OrientorBounds, hold_the_cube_and_the_overlay_and_nothing_else) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Parameters().overlay_always_on = true;
  EXPECT_TRUE(scene.cube.IsPointInBounds(964, 708));  // y upward
  EXPECT_TRUE(scene.cube.IsPointInBounds(932, 753));  // home
  EXPECT_FALSE(scene.cube.IsPointInBounds(10, 10));
  EXPECT_FALSE(scene.cube.IsPointInBounds(964, 60));
}

TEST(OrientorBounds, show_the_arrows_that_are_looked_for_on_the_way) {
  PickScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.cube.mouseInRegion = true;
  scene.cube.arrowsVisible = false;
  scene.cube.IsPointInBounds(964, 708);
  EXPECT_TRUE(scene.cube.arrowsVisible);
  EXPECT_EQ(scene.cube.arrowFaces, 0b111100U);  // beside back and front
  scene.Look(Vector3(-1, -1, 0));
  scene.cube.IsPointInBounds(964, 708);
  EXPECT_EQ(scene.cube.arrowFaces, 0U);
  EXPECT_TRUE(scene.cube.arrowsVisible);  // until the next draw
}

// ---- what a move costs ----

TEST(OrientorPicking, allocates_nothing_in_a_move) {
  CountingScene scene;
  OpenOrientor& cube = scene.cube;
  cube.GetParameters().draw_compass = true;
  cube.GetParameters().draw_ucs_menu = true;
  cube.SetViewportSize(1024, 768);
  cube.SetViewportMousePosition(0, 0);
  const AllocationCounter counter;
  for (int x = 700; x < 1024; ++x) {
    cube.OnMouseMove(x, 700);
    cube.SetViewportMousePosition(x, 67);
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_GT(scene.hub.queried, 300);
}

}  // namespace
