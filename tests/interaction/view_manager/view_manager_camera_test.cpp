#include <cmath>
#include <functional>
#include <limits>

#include "interaction/view_manager/fakes.h"

using namespace Korvane;

namespace {

const Vector3 UP(0, 1, 0);

class CameraMovesTest : public ViewManagerTest {
 protected:
  CameraMovesTest() {
    Start();
    hub.GetApplicationParameters().global_bound_radius = 5.0;
    hub.GetApplicationParameters().scene_bound_radius = 3.0;
    LookFrom(WithPivot(LookAt({0, 0, 10}, {0, 0, 0}, UP), Vector3(0, 2, 0)));
  }

  void LookFrom(const CameraParameters& camera) {
    hub.view = camera;
    hub.PerformOperations();
  }
  void RunFor(int milliseconds) {
    for (; milliseconds > 0; milliseconds -= 10) {
      platform.Advance(10);
      hub.PerformOperations();
    }
  }
  // Frames until the shot is over; how long that took in milliseconds.
  int RunShot() {
    int elapsed = 0;
    for (; hub.IsShotActive() && elapsed < 5000; elapsed += 10) RunFor(10);
    return elapsed;
  }
  static void ExpectNear(const Vector3& a, const Vector3& b, double tolerance = 1e-9) {
    EXPECT_LE((a - b).Length(), tolerance) << a.x << " " << a.y << " " << a.z;
  }
};

TEST_F(CameraMovesTest, are_each_one_record_that_closes_with_the_shot) {
  const std::function<bool()> moves[] = {
      [this] { return manager.FitAllToView(); },
      [this] { return manager.FitSelectionToView(); },
      [this] { return manager.FitToView(); },
      [this] { return manager.FitBoundsToView(Vector3(1, 0, 0), 2.0); },
      [this] {
        return manager.FitBoundBoxToView(Vector3(1, 0, 0), Box3(Vector3(1, 0, 0), Vector3(1, 1, 1)));
      },
      [this] { return manager.LevelCamera(); },
      [this] { return manager.RestoreCenter(Vector3(1, 1, 0)); },
  };
  int count = 0;
  for (const auto& move : moves) {
    LookFrom(LookAt({0, 3, 10}, {0, 0, 0}, UP));
    const CameraParameters before = hub.view;
    EXPECT_TRUE(move()) << count;
    ++count;
    EXPECT_EQ(disc.record->begun, count);
    EXPECT_EQ(disc.record->ended, count - 1);
    EXPECT_TRUE(SameBits(disc.record->beginCamera, before)) << count;
    EXPECT_TRUE(hub.IsShotActive()) << count;
    RunShot();
    EXPECT_EQ(disc.record->begun, count);
    EXPECT_EQ(disc.record->ended, count);
    ExpectNear(disc.record->endCamera.eye, hub.view.eye);
    hub.EndShot();
    EXPECT_EQ(disc.record->ended, count);
  }
}

TEST_F(CameraMovesTest, of_the_hosts_own_are_one_record_with_its_result) {
  const auto lift = [this](CameraOperations& moved) {
    EXPECT_EQ(&moved, &hub);
    hub.view.eye.y += 1.0;
    return true;
  };
  EXPECT_TRUE(manager.MoveCamera(lift));
  EXPECT_EQ(disc.record->begun, 1);
  EXPECT_EQ(disc.record->ended, 1);
  EXPECT_EQ(disc.record->endCamera.eye.y, 1.0);
  EXPECT_FALSE(manager.MoveCamera([](CameraOperations&) { return false; }));
  EXPECT_FALSE(manager.MoveCamera(nullptr));
  manager.SetKorvane(nullptr);
  EXPECT_FALSE(manager.MoveCamera(lift));
}

TEST_F(CameraMovesTest, need_a_hub) {
  manager.SetKorvane(nullptr);
  EXPECT_FALSE(manager.FitAllToView());
  EXPECT_FALSE(manager.FitSelectionToView());
  EXPECT_FALSE(manager.FitToView());
  EXPECT_FALSE(manager.FitBoundsToView(Vector3(), 1.0));
  EXPECT_FALSE(manager.FitBoundBoxToView(Vector3(), Box3()));
  EXPECT_FALSE(manager.LevelCamera());
  EXPECT_FALSE(manager.RestoreCenter(Vector3()));
  EXPECT_EQ(disc.record->begun, 0);
  manager.SetKorvane(&hub);
}

TEST_F(CameraMovesTest, need_no_history) {
  manager.SetHelmDisc(nullptr);
  EXPECT_TRUE(manager.FitAllToView());
  EXPECT_TRUE(manager.LevelCamera());
  EXPECT_TRUE(manager.RestoreCenter(Vector3(1, 0, 0)));
  RunShot();
}

// Neither recorded nor begun, and a move that runs goes on and ends its own record.
TEST_F(CameraMovesTest, to_where_no_view_is_are_none) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Vector3 nowhere(nan, 0, 0);
  ASSERT_TRUE(manager.RestoreCenter(Vector3(1, 0, 0)));
  const Shot* const running = hub.GetActiveShot();
  const auto tryAll = [&] {
    EXPECT_FALSE(manager.RestoreCenter(nowhere));
    EXPECT_FALSE(manager.FitBoundsToView(nowhere, 1.0));
    EXPECT_FALSE(manager.FitBoundsToView(Vector3(), nan));
    EXPECT_FALSE(manager.FitBoundBoxToView(nowhere, Box3()));
    EXPECT_FALSE(manager.FitBoundBoxToView(Vector3(), Box3(Vector3(), nowhere)));
  };
  tryAll();
  hub.view.eye.x = nan;
  tryAll();
  EXPECT_FALSE(manager.LevelCamera());
  EXPECT_FALSE(manager.FitAllToView());
  EXPECT_FALSE(manager.FitSelectionToView());
  EXPECT_FALSE(manager.RestoreCenter(Vector3()));
  EXPECT_EQ(hub.GetActiveShot(), running);
  EXPECT_TRUE(disc.record->Has(1, 0));
  hub.EndShot();
  EXPECT_TRUE(disc.record->Has(1, 1));
}

// The record of a move that the hub does not begin closes at once, and whoever watches the move that runs
// meanwhile is told of its end.
TEST_F(CameraMovesTest, that_the_hub_refuses_take_over_nobodys_move) {
  class Refusing : public MemoryHub {
   public:
    using MemoryHub::BeginShot;
    using MemoryHub::MemoryHub;
    bool BeginShot(const CenterShotParameters& /*shot*/) override { return false; }
  } refusing(hub.view);
  class Waiting : public ShotObserver {
   public:
    void OnEndShot(Shot* /*shot*/, const CameraParameters& /*camera*/) override { ++told; }
    int told = 0;
  } waiting;
  refusing.PerformOperations();
  manager.SetKorvane(&refusing);
  TransitionShotParameters shot;
  shot.targetCamera = LookAt({0, 0, 20}, {0, 0, 0}, UP);
  shot.duration = 1.0;
  ASSERT_TRUE(refusing.BeginShot(shot));
  ASSERT_TRUE(refusing.SetActiveShotObserver(&waiting));
  EXPECT_FALSE(manager.RestoreCenter(Vector3(1, 0, 0)));
  EXPECT_TRUE(disc.record->Has(1, 1));
  refusing.EndShot();
  EXPECT_EQ(waiting.told, 1);
  EXPECT_TRUE(disc.record->Has(1, 1));
  manager.SetKorvane(&hub);
}

TEST_F(CameraMovesTest, go_through_the_hub_of_each) {
  // Whole scene: a radius of 5; selection: 3; given: 2.
  hub.SetGeometrySelection(3.0, Vector3());
  struct Row {
    std::function<bool()> fit;
    double radius;
  };
  const Row rows[] = {{[this] { return manager.FitAllToView(); }, 5.0},
                      {[this] { return manager.FitSelectionToView(); }, 3.0},
                      {[this] { return manager.FitToView(); }, 3.0},
                      {[this] { return manager.FitBoundsToView(Vector3(), 2.0); }, 2.0}};
  for (const Row& row : rows) {
    LookFrom(LookAt({0, 0, 10}, {0, 0, 0}, UP));
    EXPECT_TRUE(row.fit());
    RunShot();
    // The sphere touches a view of 45 degrees on each side from radius / sin 45 away.
    EXPECT_NEAR(hub.view.eye.z, row.radius * std::sqrt(2.0), 1e-6) << row.radius;
  }
}

TEST_F(CameraMovesTest, fit_a_box) {
  // A cube of 2 units: its near face touches at a distance of 1 from its corners, 2 from its middle.
  EXPECT_TRUE(manager.FitBoundBoxToView(Vector3(4, 0, 0), Box3(Vector3(4, 0, 0), Vector3(1, 1, 1))));
  RunShot();
  EXPECT_NEAR(hub.view.eye.x, 4.0, 1e-6);
  EXPECT_NEAR(hub.view.eye.z, 2.0, 1e-6);
}

TEST_F(CameraMovesTest, mark_the_pivot_of_the_camera_that_was) {
  const std::function<bool()> fits[] = {[this] { return manager.FitAllToView(); },
                                        [this] { return manager.FitSelectionToView(); },
                                        [this] { return manager.FitBoundsToView(Vector3(), 1.0); }};
  for (const auto& fit : fits) {
    LookFrom(WithPivot(LookAt({0, 0, 10}, {0, 0, 0}, UP), Vector3(0, 2, 0)));
    manager.GetPivotBall()->SetPosition(Vector3(9, 9, 9));
    fit();
    EXPECT_EQ(manager.GetPivotBall()->GetPosition(), Vector3(0, 2, 0));
    EXPECT_NEAR(manager.GetPivotBall()->GetSize(), 0.5, 1e-12);
    EXPECT_FALSE(manager.GetPivotBall()->IsVisible());
    RunShot();
  }
}

TEST_F(CameraMovesTest, fit_to_view_through_the_selection) {
  class Redirecting : public OpenViewManager {
   public:
    bool FitSelectionToView() override { return ++asked > 0; }
    int asked = 0;
  } redirecting;
  EXPECT_TRUE(redirecting.FitToView());
  EXPECT_EQ(redirecting.asked, 1);
}

TEST_F(CameraMovesTest, count_from_the_camera_of_the_host) {
  hub.view = LookAt({5, 0, 10}, {5, 0, 0}, UP);  // since the last frame
  manager.LevelCamera();
  EXPECT_EQ(disc.record->beginCamera.eye, Vector3(5, 0, 10));
  RunShot();
  ExpectNear(hub.view.eye, Vector3(5, 0, 10));
}

// ---- level ----

TEST_F(CameraMovesTest, level_the_view_and_stand_upright) {
  CameraParameters start = LookAt({1, 2, 3}, {1, -2, 0}, Vector3(0.1, 1, 0.3));  // down by 4 over 3, 5 long
  start.pivot = Vector3(7, 8, 9);
  LookFrom(start);
  EXPECT_TRUE(manager.LevelCamera());
  EXPECT_NEAR(RunShot(), 500, 50);
  ExpectNear(hub.view.eye, Vector3(1, 2, 3));
  ExpectNear(hub.view.centre, Vector3(1, 2, -2));  // as far as before, at the height of the eye
  ExpectNear(hub.view.up, UP);
  ExpectNear(hub.view.pivot, Vector3(7, 8, 9));
}

// Eased from the first moment to the last, so that half of the time is half of the way; a frame more or less
// is a twentieth of a unit there.
TEST_F(CameraMovesTest, ease_over_their_whole_time) {
  LookFrom(LookAt({0, 0, 10}, {0, 0, 0}, UP));
  EXPECT_TRUE(manager.RestoreCenter(Vector3(3, 0, 0)));
  RunFor(500);
  EXPECT_NEAR(hub.view.eye.x, 1.5, 0.1);
  RunShot();
  // Down by 4 over 3: of an angle whose tangent is 4/3, half has the tangent 1/2, and so the sine 1/sqrt(5).
  LookFrom(LookAt({1, 2, 3}, {1, -2, 0}, UP));
  EXPECT_TRUE(manager.LevelCamera());
  RunFor(250);
  EXPECT_NEAR(hub.view.centre.y, 2.0 - std::sqrt(5.0), 0.3);
}

TEST_F(CameraMovesTest, level_a_view_straight_down_to_where_its_up_points) {
  LookFrom(LookAt({0, 10, 0}, {0, 0, 0}, Vector3(0, 0, -2)));
  EXPECT_TRUE(manager.LevelCamera());
  RunShot();
  ExpectNear(hub.view.eye, Vector3(0, 10, 0));
  ExpectNear(hub.view.centre, Vector3(0, 10, -10));
  ExpectNear(hub.view.up, UP);
  LookFrom(LookAt({0, 0, 0}, {0, 10, 0}, Vector3(3, 0, 0)));
  manager.LevelCamera();
  RunShot();
  ExpectNear(hub.view.centre, Vector3(10, 0, 0));
}

TEST_F(CameraMovesTest, level_about_the_up_of_the_scene_whatever_its_length) {
  hub.GetApplicationParameters().scene_up_direction = Vector3(0, 0, 4);
  LookFrom(LookAt({0, 0, 0}, {3, 0, -4}, Vector3(0, 1, 0)));
  EXPECT_TRUE(manager.LevelCamera());
  RunShot();
  ExpectNear(hub.view.centre, Vector3(5, 0, 0));
  ExpectNear(hub.view.up, Vector3(0, 0, 1));
}

TEST_F(CameraMovesTest, level_any_camera) {
  Random random;
  for (int i = 0; i < 500; ++i) {
    const CameraParameters start = RandomCamera(random);
    LookFrom(start);
    EXPECT_TRUE(manager.LevelCamera());
    RunShot();
    const double distance = (start.centre - start.eye).Length();
    // A last step below the tolerance of equal views, 3.45e-4 units, is not applied.
    ASSERT_NEAR((hub.view.centre - hub.view.eye).Dot(UP), 0.0, 1e-3);
    ASSERT_NEAR((hub.view.centre - hub.view.eye).Length(), distance, 1e-3);
    ExpectNear(hub.view.eye, start.eye, 1e-3);
    ASSERT_EQ(hub.view.left_fov, start.left_fov);
  }
  EXPECT_EQ(disc.record->begun, 500);
  EXPECT_EQ(disc.record->ended, 500);
}

TEST_F(CameraMovesTest, level_degenerate_cameras_without_a_number_that_is_not_finite) {
  Random random;
  for (int i = 0; i < 500; ++i) {
    LookFrom(random.Coin() ? ExtremeCamera(random) : BrokenCamera(random));
    hub.GetApplicationParameters().scene_up_direction = random.Coin() ? Vector3() : UP;
    const bool finite = hub.view.IsFinite();
    manager.LevelCamera();
    RunShot();
    ASSERT_TRUE(!finite || hub.view.IsFinite());
    hub.EndShot();
  }
  EXPECT_EQ(disc.record->begun, disc.record->ended);
}

// ---- restore ----

TEST_F(CameraMovesTest, bring_a_point_to_the_middle_in_a_second) {
  EXPECT_TRUE(manager.RestoreCenter(Vector3(3, 1, 0)));
  EXPECT_NEAR(RunShot(), 1000, 50);
  const Vector3 direction = (hub.view.centre - hub.view.eye).Normalized();
  ExpectNear((Vector3(3, 1, 0) - hub.view.eye).Cross(direction), Vector3(), 1e-9);
}

}  // namespace
