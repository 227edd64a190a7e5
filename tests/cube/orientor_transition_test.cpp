#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <vector>

#include "cube/gesture_scene.h"
#include "korvane/quaternion.h"
#include "support/random.h"

using namespace Korvane;

namespace {

class OrientorTransitionTest : public ::testing::Test, protected GestureScene {
 protected:
  const ViewAlignShotParameters& LastShot() const { return hub.viewShots.back(); }
  // The flags as one word, +x -x +y -y +z -z.
  static std::string Flags(const ViewAlignShotParameters& shot) {
    std::string flags;
    for (const bool flag : shot.directionFlags) flags += flag ? '1' : '0';
    return flags;
  }
  void DragFront() {
    EXPECT_TRUE(PressOnPart(1));
    EXPECT_TRUE(cube.OnMouseMove(520, 300));
  }
};

// ---- parts of the cube ----

TEST_F(OrientorTransitionTest, every_part_sets_the_flags_of_its_direction) {
  static constexpr const char* FLAGS[26] = {
      "010000", "100000", "000100", "001000", "000001", "000010",                      // faces
      "010100", "011000", "100100", "101000",                                          // back and front edges
      "000101", "000110", "001001", "001010",                                          // right and left edges
      "010001", "100001", "010010", "100010",                                          // upright edges
      "010101", "010110", "011001", "011010", "100101", "100110", "101001", "101010",  // corners
  };
  for (int part = 0; part < 26; ++part) {
    cube.activePart = part;
    EXPECT_TRUE(cube.StartTransition());
    ASSERT_EQ(hub.viewShots.size(), static_cast<std::size_t>(part) + 1);
    const ViewAlignShotParameters& shot = LastShot();
    EXPECT_EQ(Flags(shot), FLAGS[part]) << part;
    EXPECT_EQ(shot.duration, 0.5);
    EXPECT_EQ(shot.rollAngle, 0.0);
    EXPECT_EQ(shot.panAngle, 0.0);
    EXPECT_TRUE(shot.fit);
    EXPECT_TRUE(shot.keepSceneUp);
    EXPECT_FALSE(shot.useCustom);
    EXPECT_EQ(shot.customDirection, Vector3::Zero);
    EXPECT_EQ(shot.customUp, Vector3::Zero);
    EXPECT_EQ(shot.customFront, Vector3::Zero);
    EXPECT_EQ(cube.highlightedPart, part);
  }
}

TEST_F(OrientorTransitionTest, the_angle_of_the_compass_is_for_the_letters_alone) {
  Parameters().compass_angle = 30.0F;
  cube.InjectClick(1);
  EXPECT_EQ(LastShot().panAngle, 0.0);
  cube.InjectClick(32);
  EXPECT_EQ(LastShot().panAngle, 0.0);
  cube.InjectClick(37);
  EXPECT_EQ(LastShot().panAngle, 120.0);
}

TEST_F(OrientorTransitionTest, the_duration_is_that_of_the_parameters) {
  Parameters().transition_duration = 1.25F;
  cube.InjectClick(1);
  EXPECT_EQ(LastShot().duration, 1.25);
  cube.InjectClick(34);
  EXPECT_EQ(hub.transitionShots.back().duration, 1.25);
}

TEST_F(OrientorTransitionTest, a_click_fits_by_the_parameters_or_when_locked_to_the_selection) {
  struct Row {
    bool zoom;
    bool locked;
    bool fit;
  };
  for (const Row& row :
       {Row{false, false, false}, {false, true, true}, {true, false, true}, {true, true, true}}) {
    Parameters().zoom_to_fit_scene = row.zoom;
    Scene().lock_to_selection = row.locked;
    for (const int part : {1, 37, 32}) {
      cube.InjectClick(part);
      EXPECT_EQ(LastShot().fit, row.fit) << row.zoom << row.locked << ", " << part;
    }
  }
}

TEST_F(OrientorTransitionTest, a_click_keeps_the_scene_up_by_the_parameter_in_force) {
  for (const bool replaced : {false, true}) {
    for (const bool preserve : {false, true}) {
      for (const bool onClick : {false, true}) {
        Parameters().use_preserve_scene_up_on_click = replaced;
        Parameters().preserve_scene_up = preserve;
        Parameters().preserve_scene_up_on_click = onClick;
        const bool expected = replaced ? onClick : preserve;
        cube.InjectClick(24);
        EXPECT_EQ(LastShot().keepSceneUp, expected);
        cube.InjectClick(33);
        EXPECT_EQ(LastShot().keepSceneUp, expected);
        cube.InjectClick(38);
        EXPECT_TRUE(LastShot().keepSceneUp);  // a letter always does
      }
    }
  }
}

TEST_F(OrientorTransitionTest, a_click_needs_a_hub) {
  cube.activePart = 1;
  cube.SetKorvane(nullptr);
  EXPECT_FALSE(cube.StartTransition());
  cube.GoToHomeView();
  EXPECT_TRUE(journal.Take().empty());
}

TEST_F(OrientorTransitionTest, a_part_goes_before_an_overlay_part) {
  cube.activePart = 1;
  cube.activeOverlayPart = 2;
  EXPECT_TRUE(cube.StartTransition());
  EXPECT_EQ(hub.viewShots.size(), 1U);
  EXPECT_TRUE(hub.transitionShots.empty());
}

TEST_F(OrientorTransitionTest, a_ring_direction_gives_way_to_the_overlay_part) {
  cube.activePart = 30;
  EXPECT_FALSE(cube.StartTransition());
  cube.activeOverlayPart = 2;
  EXPECT_TRUE(cube.StartTransition());
  EXPECT_EQ(hub.transitionShots.size(), 1U);
}

// ---- letters ----

TEST_F(OrientorTransitionTest, a_letter_goes_by_the_axes_of_the_world) {
  const Vector3 directions[4] = {{1, 0, 0}, {-1, 0, 0}, {0, 0, 1}, {0, 0, -1}};
  for (int letter = 0; letter < 4; ++letter) {
    cube.activePart = 26 + letter;
    EXPECT_TRUE(cube.StartTransition());
    EXPECT_TRUE(LastShot().useCustom);
    EXPECT_TRUE(LastShot().keepSceneUp);
    EXPECT_EQ(LastShot().customDirection, directions[letter]);
    EXPECT_EQ(LastShot().customUp, Vector3(0, 1, 0));
    EXPECT_EQ(LastShot().customFront, Vector3(1, 0, 0));
    EXPECT_EQ(LastShot().panAngle, 90.0);
    EXPECT_EQ(Flags(LastShot()), "000000");
    EXPECT_EQ(cube.highlightedPart, 26 + letter);
  }
}

// World: front z, up x, hence side y. Scene: front y, up z, hence side x. The letter along the world's front
// stands along z, which the scene counts as its up; the one along the side stands along y, its front.
TEST_F(OrientorTransitionTest, a_letter_is_carried_from_the_world_into_the_scene) {
  Scene().scene_is_world = false;
  Scene().world_front_direction = Vector3(0, 0, 2);
  Scene().world_up_direction = Vector3(2, 0, 0);
  Scene().scene_front_direction = Vector3(0, 3, 0);
  Scene().scene_up_direction = Vector3(0, 0, 3);
  const Vector3 expected[4] = {{0, 1, 0}, {0, -1, 0}, {1, 0, 0}, {-1, 0, 0}};
  for (int letter = 0; letter < 4; ++letter) {
    cube.InjectClick(37 + letter);
    EXPECT_NEAR((LastShot().customDirection - expected[letter]).Length(), 0.0, 1e-15) << letter;
    EXPECT_EQ(LastShot().customUp, Vector3(2, 0, 0));
    EXPECT_EQ(LastShot().customFront, Vector3(0, 0, 2));
  }
}

// ---- the overlay ----

TEST_F(OrientorTransitionTest, the_rotate_arrows_roll_and_are_mirrored_in_two_corners) {
  struct Row {
    int location;
    double counterClockwise;
    double clockwise;
  };
  for (const Row& row : {Row{0, 90.0, -90.0}, {1, -90.0, 90.0}, {2, -90.0, 90.0}, {3, 90.0, -90.0}}) {
    Parameters().screen_location = static_cast<OrientorParameters::Location>(row.location);
    cube.InjectClick(32);
    EXPECT_EQ(LastShot().rollAngle, row.counterClockwise) << row.location;
    cube.InjectClick(33);
    EXPECT_EQ(LastShot().rollAngle, row.clockwise) << row.location;
  }
}

TEST_F(OrientorTransitionTest, the_rotate_arrows_keep_the_axes_of_the_closest_part) {
  for (int closest = 0; closest < 26; ++closest) {
    cube.closestPart = closest;
    cube.InjectClick(closest);
    const std::string flags = Flags(LastShot());
    for (const int arrow : {32, 33}) {
      cube.closestPart = closest;
      cube.InjectClick(arrow);
      EXPECT_EQ(Flags(LastShot()), flags) << closest;
      EXPECT_FALSE(LastShot().useCustom);
    }
  }
  cube.open.closest = ClosestPart();
  cube.InjectClick(32);
  EXPECT_EQ(Flags(LastShot()), "000000");
}

TEST_F(OrientorTransitionTest, a_roll_is_a_move_with_observer_and_record) {
  cube.activeOverlayPart = 0;
  EXPECT_TRUE(cube.StartTransition());
  EXPECT_EQ(journal.Take(), (Lines{"begin view shot", "observe shot", "record begun"}));
}

TEST_F(OrientorTransitionTest, home_flies_to_the_home_camera) {
  hub.GetHomeCamera() = LookAt(Vector3(1, 2, 3), Vector3(4, 5, 6), Vector3(0, 0, 1));
  cube.activeOverlayPart = 2;
  EXPECT_TRUE(cube.StartTransition());
  EXPECT_EQ(journal.Take(), (Lines{"begin transition shot", "observe shot", "record begun"}));
  ASSERT_EQ(hub.transitionShots.size(), 1U);
  EXPECT_TRUE(SameBits(hub.transitionShots[0].targetCamera, hub.GetHomeCamera()));
  EXPECT_EQ(hub.transitionShots[0].easeEnd, 1.0);
  EXPECT_EQ(hub.transitionShots[0].duration, 0.5);
}

TEST_F(OrientorTransitionTest, home_needs_a_visible_cube) {
  Parameters().visible = false;
  cube.GoToHomeView();
  EXPECT_TRUE(journal.Take().empty());
}

TEST_F(OrientorTransitionTest, the_lock_button_toggles_the_lock_and_moves_nothing) {
  Scene().lock_to_selection = true;
  cube.activeOverlayPart = 3;
  EXPECT_FALSE(cube.StartTransition());
  EXPECT_FALSE(Scene().lock_to_selection);
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(OrientorTransitionTest, the_context_button_opens_the_menu) {
  cube.activeOverlayPart = 4;
  EXPECT_FALSE(cube.StartTransition());
  EXPECT_EQ(renderer.CountCalls("OpenMenu"), 1);
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(OrientorTransitionTest, lock_menu_and_label_bring_the_cube_up_to_date) {
  Parameters().draw_ucs_menu = true;
  for (int part = 3; part <= 5; ++part) {
    cube.activePart = -1;
    cube.activeOverlayPart = part;
    cube.open.closest = ClosestPart();
    const int requested = hub.requested;
    EXPECT_FALSE(cube.StartTransition());
    EXPECT_GE(cube.closestPart, 0) << part;
    EXPECT_GT(hub.requested, requested) << part;
  }
}

TEST_F(OrientorTransitionTest, without_the_overlay_its_parts_do_nothing) {
  Parameters().draw_overlay = false;
  Parameters().draw_ucs_menu = true;
  Scene().lock_to_selection = true;
  for (int part = -1; part <= 5; ++part) {
    cube.activeOverlayPart = part;
    EXPECT_FALSE(cube.StartTransition()) << part;
  }
  EXPECT_TRUE(hub.viewShots.empty());
  EXPECT_TRUE(hub.transitionShots.empty());
  EXPECT_TRUE(Scene().lock_to_selection);
  EXPECT_EQ(renderer.CountCalls("OpenMenu") + renderer.CountCalls("OpenUCSMenu"), 0);
}

// ---- a click from outside ----

TEST_F(OrientorTransitionTest, a_click_from_outside_presses_every_number) {
  Parameters().draw_ucs_menu = true;
  for (int number = -3; number <= 60; ++number) {
    hub.EndShot();
    hub.viewShots.clear();
    hub.transitionShots.clear();
    renderer.ClearCalls();
    Scene().lock_to_selection = true;
    cube.activePart = 7;
    cube.activeOverlayPart = 5;
    cube.InjectClick(number);
    const bool turns = (number >= 0 && number <= 25) || (number >= 37 && number <= 40);
    const bool rolls = number == 32 || number == 33;
    EXPECT_EQ(hub.viewShots.size(), turns || rolls ? 1U : 0U) << number;
    EXPECT_EQ(hub.transitionShots.size(), number == 34 ? 1U : 0U) << number;
    EXPECT_EQ(Scene().lock_to_selection, number != 35) << number;
    EXPECT_EQ(renderer.CountCalls("OpenMenu"), number == 36 ? 1 : 0) << number;
    EXPECT_EQ(renderer.CountCalls("OpenUCSMenu"), 0) << number;
    const int pressed = number <= 25 && number >= 0 ? number : turns ? number - 11 : -1;
    EXPECT_EQ(cube.activePart, pressed) << number;
    EXPECT_TRUE(!rolls || cube.activeOverlayPart == number - 32) << number;
  }
}

TEST_F(OrientorTransitionTest, a_click_from_outside_tells_no_observer) {
  cube.InjectClick(3);
  EXPECT_EQ(journal.Take(), (Lines{"begin view shot", "observe shot", "record begun"}));
}

TEST_F(OrientorTransitionTest, a_click_from_outside_with_extreme_numbers_presses_nothing) {
  cube.InjectClick(std::numeric_limits<int>::min());
  cube.InjectClick(std::numeric_limits<int>::max());
  EXPECT_EQ(cube.activePart, -1);
  EXPECT_EQ(cube.activeOverlayPart, -1);
  EXPECT_TRUE(journal.Take().empty());
}

// ---- the record ----

TEST_F(OrientorTransitionTest, a_move_is_recorded_once_from_its_begin_to_its_end) {
  const CameraParameters start = hub.view;
  for (const int number : {0, 13, 25, 32, 33, 34, 37, 40}) {
    history.begun = history.ended = 0;
    SetCamera(start);
    cube.InjectClick(number);
    EXPECT_EQ(history.begun, 1) << number;
    EXPECT_EQ(history.ended, 0) << number;
    EXPECT_TRUE(CameraCheckEqual(&history.beginCamera, &start)) << number;
    RunFrames();
    EXPECT_EQ(history.begun, 1) << number;
    EXPECT_EQ(history.ended, 1) << number;
    EXPECT_TRUE(CameraCheckEqual(&history.endCamera, &hub.view)) << number;
  }
}

TEST_F(OrientorTransitionTest, a_move_that_replaces_another_closes_its_record_first) {
  cube.InjectClick(1);
  cube.InjectClick(34);
  EXPECT_EQ(journal.Take(), (Lines{"begin view shot", "observe shot", "record begun", "begin transition shot",
                                   "record ended", "observe shot", "record begun"}));
  RunFrames();
  EXPECT_EQ(history.begun, 2);
  EXPECT_EQ(history.ended, 2);
}

TEST_F(OrientorTransitionTest, a_move_that_the_hub_refuses_counts_as_begun_all_the_same) {
  hub.refusesShots = true;
  cube.activePart = 3;
  EXPECT_TRUE(cube.StartTransition());
  EXPECT_EQ(journal.Take(), (Lines{"begin view shot", "observe shot", "record begun"}));
  EXPECT_EQ(cube.highlightedPart, 3);
  cube.GoToHomeView();
  EXPECT_EQ(journal.Take(), (Lines{"begin transition shot", "observe shot", "record begun"}));
}

TEST_F(OrientorTransitionTest, a_record_needs_hub_and_history) {
  cube.OnTransitionStarted();
  cube.OnTransitionEnded();
  EXPECT_EQ(journal.Take(), (Lines{"record begun", "record ended"}));
  cube.SetKorvane(nullptr);
  cube.OnTransitionStarted();
  cube.OnTransitionEnded();
  cube.SetKorvane(&hub);
  cube.SetRewindHistory(nullptr);
  cube.OnTransitionStarted();
  cube.OnTransitionEnded();
  EXPECT_TRUE(journal.Take().empty());
}

TEST_F(OrientorTransitionTest, a_hub_taken_away_during_the_move_closes_the_record_and_leaves_the_move_alone) {
  cube.InjectClick(1);
  cube.SetKorvane(nullptr);
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_TRUE(history.Has(1, 1));
  RunFrames();
  EXPECT_TRUE(history.Has(1, 1));
  EXPECT_TRUE(hub.view.IsFinite());
}

// The shot is the hub's that the click was made in, whoever comes after it.
TEST_F(OrientorTransitionTest, a_letters_move_begins_in_the_hub_of_its_click) {
  SpyHub other(journal);
  for (SpyHub* const next : {&other, static_cast<SpyHub*>(nullptr)}) {
    for (int part = 26; part < 30; ++part) {
      cube.SetKorvane(&hub);
      hub.EndShot();
      hub.viewShots.clear();
      hub.onQuery = [&] { cube.SetKorvane(next); };  // as the hub looks where its view is
      cube.activePart = part;
      EXPECT_TRUE(cube.StartTransition());
      hub.onQuery = nullptr;
      EXPECT_EQ(hub.viewShots.size(), 1U);
      EXPECT_TRUE(hub.IsShotActive());
    }
  }
  EXPECT_TRUE(other.viewShots.empty());
  EXPECT_EQ(history.GetOpenCount(), 0);
}

TEST_F(OrientorTransitionTest, no_move_begins_in_a_hub_that_is_taken_away_before_it) {
  SpyHub other(journal);
  for (SpyHub* const next : {&other, static_cast<SpyHub*>(nullptr)}) {
    cube.SetKorvane(&hub);
    hub.onWorldUp = [&] { cube.SetKorvane(next); };
    cube.activePart = 26;
    cube.StartTransition();
    hub.onWorldUp = nullptr;
    EXPECT_FALSE(hub.IsShotActive());
  }
  EXPECT_TRUE(hub.viewShots.empty());
  EXPECT_TRUE(other.viewShots.empty());
  EXPECT_EQ(history.begun, 0);
}

// ---- a host's own kind of cube ----

class WatchingOrientor : public TouchedOrientor {
 public:
  explicit WatchingOrientor(Journal& whatWasSeen) : journal(whatWasSeen) {}

  bool OpenMenu() override {
    journal.Add("open menu");
    return false;
  }
  void OpenUCSMenu() override { journal.Add("open UCS menu"); }
  void GoToHomeView() override { journal.Add("go home"); }
  void Update(bool redraw) override { journal.Add(redraw ? "update, redraw" : "update"); }
  void OnTransitionStarted() override { journal.Add("started"); }
  void OnTransitionEnded() override { journal.Add("ended"); }

 private:
  Journal& journal;
};

TEST_F(OrientorTransitionTest, a_host_may_put_its_own_operations_in_the_place_of_these) {
  WatchingOrientor watching(journal);
  watching.SetKorvane(&hub);
  watching.GetParameters().draw_ucs_menu = true;
  watching.InjectClick(34);
  watching.InjectClick(36);
  EXPECT_EQ(journal.Take(), (Lines{"go home", "open menu", "update, redraw"}));
  watching.activeOverlayPart = 5;
  EXPECT_FALSE(watching.StartTransition());
  EXPECT_EQ(journal.Take(), (Lines{"open UCS menu", "update, redraw"}));
  watching.InjectClick(1);
  hub.EndShot();
  EXPECT_EQ(journal.Take(), (Lines{"begin view shot", "observe shot", "started", "end shot", "ended"}));
}

// ---- straightening ----

TEST_F(OrientorTransitionTest, the_camera_is_straightened_where_the_scene_up_is_preserved) {
  cube.AlignToOrbitUpDirection();
  EXPECT_EQ(journal.Take(), Lines{"align 0.500000"});
  Parameters().preserve_scene_up = false;
  cube.AlignToOrbitUpDirection();
  Parameters().preserve_scene_up = true;
  cube.SetKorvane(nullptr);
  cube.AlignToOrbitUpDirection();
  EXPECT_TRUE(journal.Take().empty());
}

// ---- a cube that goes ----

TEST_F(OrientorTransitionTest, a_cube_that_is_destroyed_ends_the_record_of_its_move_which_goes_on) {
  cube.InjectClick(1);
  ASSERT_TRUE(hub.IsShotActive());
  journal.Take();
  cube.Destroy();
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_TRUE(history.Has(1, 1));
  hub.EndShot();
  EXPECT_TRUE(history.Has(1, 1));
}

TEST_F(OrientorTransitionTest, a_cube_that_is_destroyed_leaves_the_moves_of_others_alone) {
  TransitionShotParameters shot;
  shot.targetCamera = hub.view;
  shot.duration = 1.0;
  hub.BeginShot(shot);
  cube.Destroy();
  EXPECT_TRUE(hub.IsShotActive());
}

TEST_F(OrientorTransitionTest, a_cube_that_is_destroyed_amid_a_drag_ends_the_drag) {
  const double multiplier = Scene().orbit_multiplier;
  PressOnPart(1);
  cube.OnMouseMove(520, 300);
  ASSERT_TRUE(hub.IsOperationActive(OPERATION_ORBIT));
  cube.Destroy();
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
  EXPECT_EQ(Scene().orbit_multiplier, multiplier);
  EXPECT_FALSE(cube.IsDragActive());
  EXPECT_EQ(history.GetOpenCount(), 0);
}

TEST_F(OrientorTransitionTest, a_hidden_cube_that_is_destroyed_amid_a_drag_ends_the_drag) {
  const double multiplier = Scene().orbit_multiplier;
  for (const bool released : {false, true}) {
    Parameters().visible = true;
    PressOnPart(1);
    cube.OnMouseMove(520, 300);
    ASSERT_TRUE(hub.IsOperationActive(OPERATION_ORBIT));
    journal.Take();
    Parameters().visible = false;
    if (released) cube.OnLeftMouseUp(520, 300);
    cube.Destroy();
    EXPECT_EQ(journal.Count("drag ended"), 1);
    EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
    EXPECT_EQ(Scene().orbit_multiplier, multiplier);
    EXPECT_FALSE(cube.IsDragActive());
    EXPECT_EQ(history.GetOpenCount(), 0);
  }
}

TEST_F(OrientorTransitionTest, a_cube_may_be_destroyed_within_the_telling_of_the_end) {
  const double multiplier = Scene().orbit_multiplier;
  observer.onDragEnd = [&] { cube.Destroy(); };
  PressOnPart(1);
  cube.OnMouseMove(520, 300);
  cube.OnLeftMouseUp(520, 300);
  EXPECT_EQ(journal.Count("drag ended"), 1);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
  EXPECT_EQ(Scene().orbit_multiplier, multiplier);
  EXPECT_EQ(history.begun, 1);
  EXPECT_EQ(history.ended, 1);
}

// A host that chains its moves: the end of one record begins the next.
TEST_F(OrientorTransitionTest, no_move_begins_while_the_cube_is_destroyed) {
  history.onEnd = [&] { cube.GoToHomeView(); };
  cube.InjectClick(1);
  cube.Destroy();
  history.onEnd = [] {};
  EXPECT_TRUE(history.Has(1, 1));
  hub.EndShot();
  EXPECT_TRUE(history.Has(1, 1));
  cube.GoToHomeView();  // a destroyed cube may be created again, and moves as before
  EXPECT_TRUE(hub.IsShotActive());
}

TEST_F(OrientorTransitionTest, no_click_counts_while_the_cube_is_put_away) {
  bool setOut = true;
  observer.onDragEnd = [&] {
    cube.activePart = 1;
    setOut = cube.StartTransition();
  };
  const std::vector<std::function<void()>> ways = {
      [this] { cube.Destroy(); },
      [this] { cube.SetKorvane(nullptr); },
  };
  for (const auto& putAway : ways) {
    cube.SetKorvane(&hub);
    DragFront();
    setOut = true;
    putAway();
    EXPECT_FALSE(setOut);
    EXPECT_TRUE(hub.viewShots.empty());
    EXPECT_FALSE(hub.IsShotActive());
  }
}

// What an observer of the end presses and moves is dropped, however deep it is told.
TEST_F(OrientorTransitionTest, no_drag_begins_while_the_cube_is_put_away) {
  const double multiplier = Scene().orbit_multiplier;
  const std::vector<std::function<void()>> ways = {
      [this] { cube.Destroy(); },
      [this] { cube.SetKorvane(nullptr); },
  };
  for (const auto& putAway : ways) {
    for (const auto& putAwayAgain : ways) {
      cube.SetKorvane(&hub);
      DragFront();
      journal.Take();
      observer.onDragEnd = [&] {
        putAwayAgain();
        EXPECT_FALSE(PressOnPart(1));
        EXPECT_FALSE(cube.OnMouseMove(520, 300));
      };
      putAway();
      EXPECT_EQ(journal.Count("drag ended"), 1);
      EXPECT_FALSE(cube.IsDragActive());
      EXPECT_FALSE(cube.mousePressed);
      EXPECT_FALSE(hub.IsOperationActive(OPERATION_ORBIT));
      EXPECT_EQ(Scene().orbit_multiplier, multiplier);
      EXPECT_EQ(history.GetOpenCount(), 0);
    }
  }
  cube.SetKorvane(&hub);
  EXPECT_TRUE(PressOnPart(1));
}

// ---- a hub that goes ----

TEST_F(OrientorTransitionTest, a_hub_may_go_before_it_is_taken_away) {
  for (const bool dragging : {true, false}) {
    journal.Take();
    auto mortal = std::make_unique<SpyHub>(journal);
    mortal->view = hub.view;
    cube.SetKorvane(mortal.get());
    if (dragging) {
      DragFront();
    } else {
      cube.InjectClick(1);
    }
    mortal.reset();
    EXPECT_FALSE(cube.OnMouseMove(540, 300));
    cube.Draw();
    EXPECT_TRUE(!dragging || cube.OnLeftMouseUp(540, 300));
    cube.SetKorvane(nullptr);
    EXPECT_EQ(journal.Count("drag began 1"), dragging ? 1 : 0);
    EXPECT_EQ(journal.Count("drag ended"), dragging ? 1 : 0);
    EXPECT_FALSE(cube.IsDragActive());
  }
  cube.SetKorvane(&hub);
  DragFront();
  EXPECT_TRUE(hub.IsOperationActive(OPERATION_ORBIT));
}

TEST_F(OrientorTransitionTest, a_hub_that_is_gone_is_not_touched_by_the_next_one) {
  auto mortal = std::make_unique<SpyHub>(journal);
  mortal->view = hub.view;
  cube.SetKorvane(mortal.get());
  DragFront();
  journal.Take();
  mortal.reset();
  cube.SetKorvane(&hub);
  EXPECT_EQ(journal.Take(), Lines{"drag ended"});
  EXPECT_FALSE(cube.IsDragActive());
}

// ---- bad numbers ----

TEST_F(OrientorTransitionTest, no_click_moves_a_camera_to_what_is_no_number) {
  Random random;
  for (int i = 0; i < 100; ++i) {
    const bool broken = random.Coin();
    SetCamera(broken ? BrokenCamera(random) : ExtremeCamera(random));
    hub.GetHomeCamera() = BrokenCamera(random);
    Parameters().compass_angle = random.Coin() ? std::numeric_limits<float>::quiet_NaN() : 30.0F;
    Parameters().transition_duration = random.Coin() ? -std::numeric_limits<float>::infinity() : 0.1F;
    for (int number = 0; number <= 41; ++number) {
      cube.InjectClick(number);
      RunFrames();
      ASSERT_TRUE(broken || hub.view.IsFinite());
    }
  }
}

}  // namespace
