#include "korvane/orientor.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "cube/cube_scene.h"
#include "korvane/rewind_history.h"
#include "support/virtual_slot.h"

namespace {

using namespace Korvane;

using Calls = std::vector<std::string>;

// ---- slots ----

class Slots : public Orientor {
 public:
  static int UpdateSlot() { return VirtualSlot(&Slots::Update); }
  static int OnTransitionStartedSlot() { return VirtualSlot(&Slots::OnTransitionStarted); }
  static int OnTransitionEndedSlot() { return VirtualSlot(&Slots::OnTransitionEnded); }
};

TEST(OrientorSlots, stand_in_their_order_after_the_destructor) {
  const int slots[] = {
      VirtualSlot(&Orientor::SetKorvane),
      VirtualSlot(&Orientor::SetRenderer),
      VirtualSlot(&Orientor::SetRewindHistory),
      VirtualSlot(&Orientor::Create),
      VirtualSlot(&Orientor::Destroy),
      VirtualSlot(&Orientor::Draw),
      VirtualSlot(&Orientor::OnMouseMove),
      VirtualSlot(&Orientor::OnLeftMouseDown),
      VirtualSlot(&Orientor::OnLeftMouseUp),
      VirtualSlot(&Orientor::OpenMenu),
      VirtualSlot(&Orientor::OpenUCSMenu),
      VirtualSlot(&Orientor::GoToHomeView),
      Slots::UpdateSlot(),
      Slots::OnTransitionStartedSlot(),
      Slots::OnTransitionEndedSlot(),
  };
  int expected = 2;  // the destructor takes the first two places
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(OrientorSlots, hold_none_of_the_plain_operations) {
  EXPECT_EQ(VirtualSlot(&Orientor::AddObserver), -1);
  EXPECT_EQ(VirtualSlot(&Orientor::SetViewportSize), -1);
  EXPECT_EQ(VirtualSlot(&Orientor::SetViewportMousePosition), -1);
  EXPECT_EQ(VirtualSlot(&Orientor::IsPointInBounds), -1);
  EXPECT_EQ(VirtualSlot(&Orientor::GetTooltip), -1);
  EXPECT_EQ(VirtualSlot(&Orientor::LockToCurrentSelection), -1);
}

TEST(OrientorSlots, of_an_observer_stand_in_their_order) {
  EXPECT_EQ(VirtualSlot(&OrientorObserver::OnClicked), 2);
  EXPECT_EQ(VirtualSlot(&OrientorObserver::OnDragBegin), 3);
  EXPECT_EQ(VirtualSlot(&OrientorObserver::OnDragEnd), 4);
  EXPECT_EQ(VirtualSlot(&OrientorObserver::OnPositionChange), 5);
}

// ---- birth ----

TEST(Orientor, begins_at_rest_with_nothing_active) {
  const OpenOrientor cube;
  EXPECT_EQ(cube.GetActiveGeometryPart(), -1);
  EXPECT_EQ(cube.GetClosestGeometryPart(), -1);
  EXPECT_EQ(cube.GetActiveOverlayPart(), -1);
  EXPECT_EQ(cube.highlightedPart, -1);
  EXPECT_EQ(cube.rawOverlayPart, -1);
  EXPECT_EQ(cube.pressedOverlayPart, -1);
  EXPECT_EQ(cube.closestDot, 0.0F);
  EXPECT_EQ(cube.fade, 0.0F);
  EXPECT_EQ(cube.opacity, 1.0F);
  EXPECT_FALSE(cube.IsDragActive());
  EXPECT_FALSE(cube.IsMouseInRegion());
  EXPECT_FALSE(cube.menuOpen);
  EXPECT_FALSE(cube.mousePressed);
  EXPECT_FALSE(cube.mouseCaptured);
  EXPECT_FALSE(cube.arrowsVisible);
  EXPECT_EQ(cube.GetClosestViewDirection(), Vector3::Zero);
  EXPECT_EQ(cube.GetActivePartDirection(), Vector3::Zero);
  EXPECT_EQ(cube.GetActivePartName(), "");
  EXPECT_EQ(cube.GetTooltip(), L"");
  EXPECT_STREQ(cube.GetActiveUCS(), L"");
}

TEST(Orientor, has_taken_its_first_place_and_size_when_it_is_born) {
  const OpenOrientor cube;
  EXPECT_EQ(cube.lastLocation, 0);
  EXPECT_EQ(cube.mirror.scaleX, -1.0F);
  EXPECT_EQ(cube.GetScreenSize(), 35);  // a viewport of 0 pixels, raised to tiny
}

// ---- Create and Destroy ----

TEST(Orientor, is_not_created_or_destroyed_without_a_renderer) {
  OpenOrientor cube;
  EXPECT_FALSE(cube.Create());
  EXPECT_FALSE(cube.Destroy());
}

TEST(Orientor, takes_sixteen_textures_and_then_its_texts_when_it_is_created) {
  CubeScene scene;
  EXPECT_TRUE(scene.cube.Create());
  Calls expected;
  for (int id = 0; id < 16; ++id) expected.push_back("LoadTexture(" + std::to_string(id) + ")");
  for (const int id : {68, 69, 70, 71, 72, 67}) {
    expected.push_back("LoadStringResource(" + std::to_string(id) + ")");
  }
  EXPECT_EQ(scene.renderer.GetCalls(), expected);
  EXPECT_STREQ(scene.cube.GetActiveUCS(), L"text 67");
}

TEST(Orientor, gives_its_textures_and_labels_back_when_it_is_destroyed) {
  CubeScene scene;
  scene.Parameters().draw_ucs_menu = true;
  ASSERT_TRUE(scene.cube.Create());
  EXPECT_EQ(scene.renderer.GetLiveIconCount(), 2);
  scene.renderer.ClearCalls();
  EXPECT_TRUE(scene.cube.Destroy());
  Calls expected = {"DestroyIcon(1)", "DestroyIcon(2)"};
  for (int id = 0; id < 16; ++id) expected.push_back("ReleaseTexture(" + std::to_string(id) + ")");
  EXPECT_EQ(scene.renderer.GetCalls(), expected);
  EXPECT_EQ(scene.renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(scene.cube.ucsLabel.Get(), nullptr);
  EXPECT_EQ(scene.cube.highlightedUCSLabel.Get(), nullptr);
}

TEST(Orientor, may_be_destroyed_twice_and_created_again) {
  CubeScene scene;
  scene.Parameters().draw_ucs_menu = true;
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(scene.cube.Create());
    EXPECT_TRUE(scene.cube.Destroy());
    EXPECT_TRUE(scene.cube.Destroy());
  }
  EXPECT_EQ(scene.renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(scene.renderer.GetForeignDestroyCount(), 0);
}

// ---- observers ----

class CountingObserver : public OrientorObserver {
 public:
  using OrientorObserver::GetOrientor;
  using OrientorObserver::OrientorObserver;
  void OnClicked(OrientorPart /*part*/) override {}
  void OnDragBegin(OrientorPart /*part*/) override {}
  void OnDragEnd() override {}
  void OnPositionChange(OrientorParameters::Location location) override {
    locations.push_back(location);
    if (leaves) GetOrientor()->RemoveObserver(this);
  }

  std::vector<int> locations;
  bool leaves = false;
};

TEST(OrientorObservers, are_refused_when_null_and_else_accepted) {
  OpenOrientor cube;
  CountingObserver observer(&cube);
  EXPECT_FALSE(cube.AddObserver(nullptr));
  EXPECT_TRUE(cube.AddObserver(&observer));
  EXPECT_TRUE(cube.AddObserver(&observer));
  EXPECT_EQ(observer.GetOrientor(), &cube);
}

TEST(OrientorObservers, hear_once_of_each_new_corner) {
  CubeScene scene;
  CountingObserver observer(&scene.cube);
  scene.cube.AddObserver(&observer);
  scene.cube.AddObserver(&observer);
  scene.cube.SetViewportSize(800, 600);
  EXPECT_EQ(observer.locations, std::vector<int>());
  scene.Parameters().screen_location = OrientorParameters::LOCATION_BOTTOM_LEFT;
  scene.cube.SetViewportSize(800, 600);
  scene.cube.SetViewportSize(800, 600);
  EXPECT_EQ(observer.locations, std::vector<int>({3}));
  // An update notices, too.
  scene.Parameters().screen_location = OrientorParameters::LOCATION_TOP_LEFT;
  scene.cube.SetViewportMousePosition(0, 0);
  EXPECT_EQ(observer.locations, std::vector<int>({3, 2}));
  scene.cube.RemoveObserver(&observer);
  scene.Parameters().screen_location = OrientorParameters::LOCATION_TOP_RIGHT;
  scene.cube.SetViewportSize(800, 600);
  EXPECT_EQ(observer.locations, std::vector<int>({3, 2}));
}

TEST(OrientorObservers, may_leave_while_they_are_told) {
  CubeScene scene;
  CountingObserver first(&scene.cube);
  CountingObserver second(&scene.cube);
  first.leaves = true;
  scene.cube.AddObserver(&first);
  scene.cube.AddObserver(&second);
  for (const auto location :
       {OrientorParameters::LOCATION_BOTTOM_LEFT, OrientorParameters::LOCATION_TOP_LEFT}) {
    scene.Parameters().screen_location = location;
    scene.cube.SetLocation(location);
  }
  EXPECT_EQ(first.locations, std::vector<int>({3}));
  EXPECT_EQ(second.locations, std::vector<int>({3, 2}));
  scene.cube.RemoveObserver(nullptr);
  scene.cube.RemoveObserver(&first);
}

// ---- queries about what the mouse is on ----

TEST(OrientorQueries, count_the_letters_as_geometry_and_as_compass) {
  OpenOrientor cube;
  for (int part = -1; part <= 58; ++part) {
    cube.activePart = part;
    EXPECT_EQ(cube.IsMouseOnGeometryPart(), part >= 0 && part <= 29) << part;
    EXPECT_EQ(cube.IsMouseOnCompassPart(), part >= 26 && part <= 57) << part;
    EXPECT_EQ(cube.IsMouseOnPart(), part >= 0 && part <= 29) << part;
  }
}

TEST(OrientorQueries, tell_the_direction_of_the_part_under_the_mouse) {
  OpenOrientor cube;
  cube.activePart = 9;
  EXPECT_EQ(cube.GetActivePartDirection(), Vector3(1, 1, 0));
  cube.activePart = 28;
  EXPECT_EQ(cube.GetActivePartDirection(), Vector3(0, 0, 1));
  cube.activePart = 30;
  EXPECT_EQ(cube.GetActivePartDirection(), Vector3::Zero);
}

TEST(OrientorQueries, tell_the_direction_of_the_closest_part) {
  OpenOrientor cube;
  cube.closestPart = 25;
  EXPECT_EQ(cube.GetClosestViewDirection(), Vector3(1, 1, 1));
  cube.closestPart = 26;
  EXPECT_EQ(cube.GetClosestViewDirection(), Vector3::Zero);
}

TEST(OrientorQueries, know_the_overlay_only_while_it_is_drawn) {
  OpenOrientor cube;
  for (int part = -1; part <= 6; ++part) {
    const bool any = part >= 0 && part <= 5;
    cube.activeOverlayPart = cube.rawOverlayPart = part;
    cube.GetParameters().draw_overlay = true;
    EXPECT_EQ(cube.GetActiveOverlayPart(), part);
    EXPECT_EQ(cube.IsMouseOnOverlayPart(), any) << part;
    EXPECT_EQ(cube.IsMouseOnViewableOverlayPart(), any) << part;
    EXPECT_EQ(cube.IsMouseOnPart(), any) << part;
    EXPECT_EQ(cube.IsMouseOnContextMenuPart(), part == 4) << part;
    EXPECT_EQ(cube.IsMouseOnUCSMenu(), part == 5) << part;
    cube.GetParameters().draw_overlay = false;
    EXPECT_EQ(cube.GetActiveOverlayPart(), -1);
    EXPECT_FALSE(cube.IsMouseOnOverlayPart());
    EXPECT_FALSE(cube.IsMouseOnViewableOverlayPart());
    EXPECT_FALSE(cube.IsMouseOnPart());
    EXPECT_FALSE(cube.IsMouseOnContextMenuPart());
    EXPECT_FALSE(cube.IsMouseOnUCSMenu());
  }
}

TEST(OrientorQueries, tell_a_viewable_overlay_part_by_the_mouse_and_another_by_what_is_shown) {
  OpenOrientor cube;
  cube.activeOverlayPart = 2;
  cube.rawOverlayPart = -1;
  EXPECT_TRUE(cube.IsMouseOnOverlayPart());
  EXPECT_FALSE(cube.IsMouseOnViewableOverlayPart());
}

TEST(OrientorQueries, name_the_highlighted_part_and_rather_the_overlay_part) {
  OpenOrientor cube;
  cube.highlightedPart = 22;
  EXPECT_EQ(cube.GetActivePartName(), "Front Right Bottom");
  cube.activeOverlayPart = 1;
  EXPECT_EQ(cube.GetActivePartName(), "Rotate Clockwise");
  cube.activeOverlayPart = 4;  // replaces the other though it has no name
  EXPECT_EQ(cube.GetActivePartName(), "");
  cube.activeOverlayPart = -1;
  cube.highlightedPart = 26;
  EXPECT_EQ(cube.GetActivePartName(), "");
  cube.highlightedPart = -1;
  EXPECT_EQ(cube.GetActivePartName(), "");
}

TEST(OrientorQueries, find_the_view_on_an_axis_by_the_closest_cosine) {
  OpenOrientor cube;
  cube.closestPart = 3;
  cube.closestDot = 1.0F;
  EXPECT_TRUE(cube.ViewOnPartAxis());
  EXPECT_TRUE(cube.ViewOnPrincipalAxis());
  cube.closestDot = 1.0F - 1.1920929e-7F;  // at most the tolerance
  EXPECT_TRUE(cube.ViewOnPartAxis());
  cube.closestDot = 1.0F + 1.1920929e-7F;
  EXPECT_TRUE(cube.ViewOnPartAxis());
  cube.closestDot = 1.0F - 2.3841858e-7F;
  EXPECT_FALSE(cube.ViewOnPartAxis());
  EXPECT_FALSE(cube.ViewOnPrincipalAxis());

  cube.closestDot = 1.0F;
  cube.closestPart = 6;
  EXPECT_TRUE(cube.ViewOnPartAxis());
  EXPECT_FALSE(cube.ViewOnPrincipalAxis());
  cube.GetParameters().select_faces_only = true;
  EXPECT_FALSE(cube.ViewOnPartAxis());
  cube.closestPart = 5;
  EXPECT_TRUE(cube.ViewOnPartAxis());
  for (const int none : {-1, 26}) {
    cube.GetParameters().select_faces_only = false;
    cube.closestPart = none;
    EXPECT_FALSE(cube.ViewOnPartAxis());
    EXPECT_FALSE(cube.ViewOnPrincipalAxis());
  }
}

// ---- tooltips ----

TEST(OrientorTooltip, is_that_of_the_first_thing_that_fits) {
  CubeScene scene;
  OpenOrientor& cube = scene.cube;
  ASSERT_TRUE(cube.Create());
  EXPECT_EQ(cube.GetTooltip(), L"");
  cube.activeOverlayPart = 4;
  EXPECT_EQ(cube.GetTooltip(), L"text 72");
  cube.activePart = 40;  // the ring goes before the menu
  EXPECT_EQ(cube.GetTooltip(), L"text 71");
  cube.activePart = 12;
  EXPECT_EQ(cube.GetTooltip(), L"text 70");
  cube.activeOverlayPart = 3;
  EXPECT_EQ(cube.GetTooltip(), L"text 69");
  cube.activeOverlayPart = 2;
  EXPECT_EQ(cube.GetTooltip(), L"text 68");
  cube.activePart = -1;
  cube.activeOverlayPart = 5;
  EXPECT_EQ(cube.GetTooltip(), L"");
}

TEST(OrientorTooltip, of_a_letter_is_that_of_a_part) {
  CubeScene scene;
  ASSERT_TRUE(scene.cube.Create());
  scene.cube.activePart = 27;
  EXPECT_EQ(scene.cube.GetTooltip(), L"text 70");
}

TEST(OrientorTooltip, is_none_while_invisible_or_disabled) {
  CubeScene scene;
  ASSERT_TRUE(scene.cube.Create());
  scene.cube.activePart = 3;
  scene.Parameters().visible = false;
  EXPECT_EQ(scene.cube.GetTooltip(), L"");
  scene.Parameters().visible = true;
  scene.Parameters().disabled = true;
  EXPECT_EQ(scene.cube.GetTooltip(), L"");
}

// ---- the label of the coordinate system ----

TEST(OrientorLabel, is_made_in_two_forms_when_it_is_wanted) {
  CubeScene scene;
  ASSERT_TRUE(scene.cube.Create());
  scene.renderer.ClearCalls();
  scene.Parameters().draw_ucs_menu = true;
  scene.cube.SetSize(OrientorParameters::SIZE_TINY);
  EXPECT_EQ(scene.renderer.GetCalls(),
            Calls({"CreateUCSMenuLabel(text 67, , 0, 120)", "CreateUCSMenuLabel(text 67, , 1, 120)"}));
  // It stays as long as nothing changes, and goes when it is not wanted any more.
  scene.renderer.ClearCalls();
  scene.cube.SetSize(OrientorParameters::SIZE_TINY);
  EXPECT_EQ(scene.renderer.GetCalls(), Calls());
  scene.Parameters().draw_ucs_menu = false;
  scene.cube.SetSize(OrientorParameters::SIZE_TINY);
  EXPECT_EQ(scene.renderer.GetCalls(), Calls({"DestroyIcon(1)", "DestroyIcon(2)"}));
  EXPECT_EQ(scene.cube.ucsLabel.Get(), nullptr);
}

TEST(OrientorLabel, is_made_anew_with_another_size_or_compass) {
  CubeScene scene;
  ASSERT_TRUE(scene.cube.Create());
  scene.Parameters().draw_ucs_menu = true;
  scene.cube.SetSize(OrientorParameters::SIZE_AUTOMATIC);
  scene.renderer.ClearCalls();
  scene.Parameters().size = OrientorParameters::SIZE_LARGE;
  scene.cube.SetSize(OrientorParameters::SIZE_AUTOMATIC);
  EXPECT_EQ(scene.renderer.GetCalls(),
            Calls({"DestroyIcon(1)", "DestroyIcon(2)", "CreateUCSMenuLabel(text 67, , 0, 170)",
                   "CreateUCSMenuLabel(text 67, , 1, 170)"}));
  scene.renderer.ClearCalls();
  scene.Parameters().draw_compass = true;
  scene.cube.SetSize(OrientorParameters::SIZE_AUTOMATIC);
  // 170 times 1.4, which as a double lies just below: 237.99999999999997.
  EXPECT_EQ(scene.renderer.GetCalls(),
            Calls({"DestroyIcon(3)", "DestroyIcon(4)", "CreateUCSMenuLabel(text 67, , 0, 237)",
                   "CreateUCSMenuLabel(text 67, , 1, 237)"}));
  scene.renderer.ClearCalls();
  scene.cube.SetSize(OrientorParameters::SIZE_AUTOMATIC);
  EXPECT_EQ(scene.renderer.GetCalls(), Calls());
}

TEST(OrientorLabel, remembers_the_compass_also_without_a_label) {
  CubeScene scene;
  scene.Parameters().draw_compass = true;
  scene.cube.SetSize(OrientorParameters::SIZE_AUTOMATIC);
  EXPECT_TRUE(scene.cube.labelCompassState);
}

TEST(OrientorLabel, has_the_default_name_below_another_when_the_cube_does_not_follow_it) {
  CubeScene scene;
  ASSERT_TRUE(scene.cube.Create());
  scene.Parameters().draw_ucs_menu = true;
  scene.Parameters().orient_to_ucs = false;
  scene.renderer.ClearCalls();
  scene.cube.SetActiveUCS(L"Roof", false);
  EXPECT_EQ(scene.renderer.GetCalls(), Calls({"CreateUCSMenuLabel(Roof, text 67, 0, 120)",
                                              "CreateUCSMenuLabel(Roof, text 67, 1, 120)"}));
}

TEST(OrientorLabel, asks_for_a_frame_only_when_told_to) {
  CubeScene scene;
  ASSERT_TRUE(scene.cube.Create());
  const int before = scene.hub.requested;
  scene.cube.SetActiveUCS(L"Roof", false);
  EXPECT_EQ(scene.hub.requested, before);
  scene.cube.SetActiveUCS(L"Cellar", true);
  EXPECT_EQ(scene.hub.requested, before + 1);
  scene.cube.SetActiveUCS(L"Cellar", true);  // nothing new
  EXPECT_EQ(scene.hub.requested, before + 1);
  scene.Parameters().draw_ucs_menu = true;  // the same name, but a label is missing
  scene.cube.SetActiveUCS(L"Cellar", true);
  EXPECT_EQ(scene.hub.requested, before + 2);
  scene.Parameters().draw_ucs_menu = false;  // and now one is left over
  scene.cube.SetActiveUCS(L"Cellar", true);
  EXPECT_EQ(scene.hub.requested, before + 3);
  EXPECT_EQ(scene.renderer.GetLiveIconCount(), 0);
}

TEST(OrientorLabel, takes_null_for_an_empty_name_and_its_own_name_again) {
  CubeScene scene;
  ASSERT_TRUE(scene.cube.Create());
  scene.cube.SetActiveUCS(scene.cube.GetActiveUCS(), true);
  EXPECT_STREQ(scene.cube.GetActiveUCS(), L"text 67");
  scene.cube.SetActiveUCS(nullptr, true);
  EXPECT_STREQ(scene.cube.GetActiveUCS(), L"");
}

TEST(OrientorLabel, is_done_without_when_the_renderer_makes_none) {
  CubeScene scene;
  scene.Parameters().draw_ucs_menu = true;
  scene.renderer.FailAlways("CreateUCSMenuLabel");
  ASSERT_TRUE(scene.cube.Create());
  scene.cube.Draw();
  scene.Point(960, 64);
  EXPECT_EQ(scene.cube.ucsLabel.Get(), nullptr);
  EXPECT_TRUE(scene.cube.Destroy());
  EXPECT_EQ(scene.renderer.GetForeignDestroyCount(), 0);
}

TEST(OrientorLabel, goes_with_the_renderer_that_made_it) {
  CubeScene scene;
  scene.Parameters().draw_ucs_menu = true;
  auto ending = std::make_unique<RecordingRenderer>();
  scene.cube.SetRenderer(ending.get());
  EXPECT_TRUE(scene.cube.Create());
  ASSERT_NE(scene.cube.ucsLabel.Get(), nullptr);
  ending = nullptr;  // while the cube has it
  EXPECT_EQ(scene.cube.ucsLabel.Get(), nullptr);
  EXPECT_EQ(scene.cube.highlightedUCSLabel.Get(), nullptr);
  scene.cube.Draw();
  scene.Point(960, 60);
  scene.cube.activeOverlayPart = 5;
  scene.cube.OpenUCSMenu();
  scene.cube.SetActiveUCS(L"Roof", true);
  int x = 0;
  int y = 0;
  EXPECT_FALSE(scene.cube.GetPartPosition(1, x, y));
  EXPECT_FALSE(scene.cube.IsPointInBounds(960, 700));
  EXPECT_FALSE(scene.cube.Create());
  EXPECT_FALSE(scene.cube.Destroy());

  scene.cube.SetRenderer(&scene.renderer);
  scene.cube.Draw();
  EXPECT_EQ(scene.renderer.GetLiveIconCount(), 2);
  EXPECT_EQ(scene.renderer.GetForeignDestroyCount(), 0);
}

TEST(OrientorLabel, goes_with_a_renderer_that_was_taken_away_before) {
  CubeScene scene;
  scene.Parameters().draw_ucs_menu = true;
  auto ending = std::make_unique<RecordingRenderer>();
  scene.cube.SetRenderer(ending.get());
  EXPECT_TRUE(scene.cube.Create());
  scene.cube.SetRenderer(nullptr);
  ASSERT_NE(scene.cube.ucsLabel.Get(), nullptr);
  ending = nullptr;
  scene.cube.SetRenderer(&scene.renderer);
  scene.cube.Draw();
  EXPECT_EQ(scene.renderer.GetLiveIconCount(), 2);
  EXPECT_TRUE(scene.cube.Destroy());
  EXPECT_EQ(scene.renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(scene.renderer.GetForeignDestroyCount(), 0);
}

TEST(OrientorLabel, needs_a_renderer) {
  OpenOrientor cube;
  cube.GetParameters().draw_ucs_menu = true;
  cube.SetActiveUCS(L"Roof", true);
  EXPECT_STREQ(cube.GetActiveUCS(), L"Roof");
  EXPECT_EQ(cube.ucsLabel.Get(), nullptr);
}

// ---- the corner ----

TEST(OrientorPlace, mirrors_each_corner_to_the_origin) {
  struct Row {
    int location;
    float offsetX, offsetY, scaleX, scaleY;
  };
  const Row rows[] = {
      {0, 800, 600, -1, -1}, {1, 800, 0, -1, 1}, {2, 0, 600, 1, -1},
      {3, 0, 0, 1, 1},       {4, 0, 0, 1, 1},    {-1, 0, 0, 1, 1},
  };
  for (const Row& row : rows) {
    CubeScene scene;
    scene.Parameters().screen_location = static_cast<OrientorParameters::Location>(row.location);
    scene.cube.SetViewportSize(800, 600);
    EXPECT_EQ(scene.cube.mirror.offsetX, row.offsetX) << row.location;
    EXPECT_EQ(scene.cube.mirror.offsetY, row.offsetY) << row.location;
    EXPECT_EQ(scene.cube.mirror.scaleX, row.scaleX) << row.location;
    EXPECT_EQ(scene.cube.mirror.scaleY, row.scaleY) << row.location;
    EXPECT_EQ(scene.cube.lastLocation, row.location);
  }
}

TEST(OrientorPlace, goes_by_the_parameters_and_not_by_the_argument) {
  CubeScene scene;
  scene.cube.SetLocation(OrientorParameters::LOCATION_TOP_LEFT);
  EXPECT_EQ(scene.cube.mirror.offsetX, 1024.0F);
  EXPECT_EQ(scene.cube.mirror.scaleX, -1.0F);
  EXPECT_EQ(scene.cube.lastLocation, 0);
}

// ---- the size ----

TEST(OrientorSize, follows_its_table) {
  struct Row {
    int size;
    int pixels;
  };
  const Row rows[] = {{1, 35}, {2, 70}, {3, 120}, {4, 170}};
  for (const Row& row : rows) {
    CubeScene scene;
    scene.Parameters().size = static_cast<OrientorParameters::Size>(row.size);
    scene.cube.SetSize(OrientorParameters::SIZE_AUTOMATIC);
    EXPECT_EQ(scene.cube.GetScreenSize(), row.pixels);
  }
  CubeScene scene;
  scene.Parameters().tiny_screen_size = 11;
  scene.Parameters().size = OrientorParameters::SIZE_TINY;
  scene.cube.SetSize(OrientorParameters::SIZE_LARGE);
  EXPECT_EQ(scene.cube.GetScreenSize(), 11);
}

TEST(OrientorSize, is_left_alone_by_an_unknown_number) {
  CubeScene scene;
  for (const int size : {5, -1, 2147483647}) {
    scene.Parameters().size = static_cast<OrientorParameters::Size>(size);
    scene.cube.SetViewportSize(100, 100);
    EXPECT_EQ(scene.cube.GetScreenSize(), 120);
  }
}

TEST(OrientorSize, goes_by_the_smaller_side_when_automatic) {
  struct Row {
    int width, height, pixels;
  };
  const Row rows[] = {
      {100, 100, 35},     // 17, raised to tiny
      {4000, 4000, 120},  // 680, lowered to normal: never large
      {500, 4000, 85},    // 85 by the width
      {4000, 500, 85},    // and by the height
      {503, 503, 85},     // 85.51, truncated
      {0, 0, 35},        {1, 1, 35}, {-500, -500, 35},
  };
  for (const Row& row : rows) {
    CubeScene scene;
    scene.cube.SetViewportSize(row.width, row.height);
    EXPECT_EQ(scene.cube.GetScreenSize(), row.pixels) << row.width << " by " << row.height;
  }
}

TEST(OrientorSize, is_first_raised_and_then_lowered) {
  CubeScene scene;
  scene.Parameters().tiny_screen_size = 200;  // above normal
  scene.cube.SetViewportSize(100, 100);
  EXPECT_EQ(scene.cube.GetScreenSize(), 120);
}

TEST(OrientorSize, of_the_viewport_asks_for_a_frame_when_the_cube_is_visible) {
  CubeScene scene;
  const int before = scene.hub.requested;
  scene.cube.SetViewportSize(640, 480);
  EXPECT_EQ(scene.hub.requested, before + 1);
  scene.Parameters().visible = false;
  scene.cube.SetViewportSize(640, 480);
  EXPECT_EQ(scene.hub.requested, before + 1);
  scene.cube.SetKorvane(nullptr);
  scene.cube.SetViewportSize(320, 240);
}

// ---- the region ----

struct RegionRow {
  OrientorParameters::Size size;
  bool compass, label, secondName;
  int width, height;
};

TEST(OrientorRegion, has_the_size_of_what_is_drawn) {
  const auto TINY = OrientorParameters::SIZE_TINY;
  const auto SMALL = OrientorParameters::SIZE_SMALL;
  const auto NORMAL = OrientorParameters::SIZE_NORMAL;
  const RegionRow rows[] = {
      {NORMAL, false, false, false, 120, 120},
      {NORMAL, true, false, false, 168, 171},  // 1.4 and 1.425 of 120
      {NORMAL, false, true, false, 120, 135},  // 0.86 of 120 is 103.2; 32 more
      {NORMAL, false, true, true, 120, 149},   // and 14
      {NORMAL, true, true, false, 168, 200},   // 1.4 of 120 and 32
      {NORMAL, false, false, true, 120, 120},  // no label, no second line
      {TINY, false, true, false, 35, 54},      // 30.1 and, below 48 pixels, 24
      {TINY, true, false, false, 49, 49},      // 1.425 of 35 is 49.875
      {TINY, true, true, true, 49, 87},        // 49, 24 and 14
      {SMALL, true, false, false, 98, 99},     // 99.75
      {SMALL, false, true, false, 70, 92},     // 60.2 and 32
  };
  int index = 0;
  for (const RegionRow& row : rows) {
    SCOPED_TRACE(index++);
    CubeScene scene;
    ASSERT_TRUE(scene.cube.Create());
    OrientorParameters& parameters = scene.Parameters();
    parameters.size = row.size;
    parameters.draw_compass = row.compass;
    parameters.draw_ucs_menu = row.label;
    parameters.orient_to_ucs = !row.secondName;
    if (row.secondName) scene.cube.SetActiveUCS(L"Roof", false);
    scene.cube.SetSize(row.size);
    int width = 0;
    int height = 0;
    scene.cube.GetRegionSize(width, height);
    EXPECT_EQ(width, row.width);
    EXPECT_EQ(height, row.height);
  }
}

TEST(OrientorRegion, has_no_second_line_for_the_default_name) {
  CubeScene scene;
  ASSERT_TRUE(scene.cube.Create());
  scene.Parameters().draw_ucs_menu = true;
  scene.Parameters().orient_to_ucs = false;
  int width = 0;
  int height = 0;
  scene.cube.GetRegionSize(width, height);
  EXPECT_EQ(height, 135);
  // Nor when the cube follows the coordinate system.
  scene.cube.SetActiveUCS(L"Roof", false);
  scene.Parameters().orient_to_ucs = true;
  scene.cube.GetRegionSize(width, height);
  EXPECT_EQ(height, 135);
}

TEST(OrientorRegion, has_small_labels_only_below_48_pixels) {
  for (const int size : {47, 48}) {
    CubeScene scene;
    scene.Parameters().draw_ucs_menu = true;
    scene.Parameters().tiny_screen_size = size;
    scene.Parameters().size = OrientorParameters::SIZE_TINY;
    scene.cube.SetSize(OrientorParameters::SIZE_TINY);
    int width = 0;
    int height = 0;
    scene.cube.GetRegionSize(width, height);
    // 0.86 of 47 and 48 is 40.42 and 41.28.
    EXPECT_EQ(height, size == 47 ? 40 + 24 : 41 + 32);
  }
}

// ---- the closest part ----

TEST(OrientorClosestPart, is_the_face_in_a_view_straight_onto_it) {
  for (int part = 0; part < 6; ++part) {
    CubeScene scene;
    scene.Look(-GetPartDirection(part));
    scene.cube.Update(false);
    EXPECT_EQ(scene.cube.GetClosestGeometryPart(), part);
    EXPECT_EQ(scene.cube.closestDot, 1.0F);
    EXPECT_TRUE(scene.cube.ViewOnPrincipalAxis());
    EXPECT_TRUE(scene.cube.ViewOnPartAxis());
  }
}

TEST(OrientorClosestPart, is_an_edge_45_degrees_off_in_one_axis) {
  for (int part = 6; part < 18; ++part) {
    CubeScene scene;
    scene.Look(-GetPartDirection(part));
    scene.cube.Update(false);
    EXPECT_EQ(scene.cube.GetClosestGeometryPart(), part);
    EXPECT_FALSE(scene.cube.ViewOnPrincipalAxis());
    EXPECT_TRUE(scene.cube.ViewOnPartAxis());
  }
}

TEST(OrientorClosestPart, is_the_one_with_the_smallest_angle) {
  Random random;
  for (int i = 0; i < 500; ++i) {
    CubeScene scene;
    const Vector3 view = random.Direction();
    scene.Look(view);
    scene.cube.Update(false);
    double best = -2.0;
    for (int x = -1; x <= 1; ++x) {
      for (int y = -1; y <= 1; ++y) {
        for (int z = -1; z <= 1; ++z) {
          const Vector3 part(x, y, z);
          if (part != Vector3()) best = std::max(best, -view.Dot(part) / part.Length());
        }
      }
    }
    const Vector3 closest = scene.cube.GetClosestViewDirection();
    EXPECT_NEAR(-view.Dot(closest) / closest.Length(), best, 1e-6);  // compared as floats
    EXPECT_NEAR(scene.cube.closestDot, best, 1e-6);
  }
}

TEST(OrientorClosestPart, is_the_first_of_equals) {
  // Without a direction of view every part has a cosine of 0.
  CubeScene scene;
  scene.hub.view = CameraParameters();
  scene.cube.Update(false);
  EXPECT_EQ(scene.cube.GetClosestGeometryPart(), 0);
  EXPECT_EQ(scene.cube.closestDot, 0.0F);
}

TEST(OrientorClosestPart, is_told_in_the_space_of_the_scene) {
  CubeScene scene;
  scene.Scene().scene_front_direction = Vector3(0, -1, 0);
  scene.Scene().scene_up_direction = Vector3(0, 0, 1);
  scene.hub.view = LookAt(Vector3(0, -10, 0), Vector3(), Vector3(0, 0, 1));  // from the front
  scene.cube.Update(false);
  EXPECT_EQ(scene.cube.GetClosestGeometryPart(), 1);
  scene.hub.view = LookAt(Vector3(-10, 0, 0), Vector3(), Vector3(0, 0, 1));  // the side -y x z = -x is left
  scene.cube.Update(false);
  EXPECT_EQ(scene.cube.GetClosestGeometryPart(), 5);
}

// ---- without collaborators ----

TEST(OrientorWithoutHub, does_nothing_and_finds_nothing) {
  RecordingRenderer renderer;
  OpenOrientor cube;
  cube.SetRenderer(&renderer);
  cube.SetViewportSize(1024, 768);
  cube.SetViewportMousePosition(1000, 20);
  cube.Draw();
  EXPECT_FALSE(cube.IsPointInBounds(964, 708));
  EXPECT_EQ(cube.GetActiveGeometryPart(), -1);
  EXPECT_EQ(cube.GetClosestGeometryPart(), -1);
  EXPECT_FALSE(cube.OnMouseMove(1000, 700));
  EXPECT_FALSE(cube.OnLeftMouseDown(1000, 700));
  EXPECT_FALSE(cube.OnLeftMouseUp(1000, 700));
  EXPECT_FALSE(cube.OpenMenu());
  cube.OpenUCSMenu();
  cube.GoToHomeView();
  cube.AlignToOrbitUpDirection();
  cube.LockToCurrentSelection(true);
  EXPECT_EQ(renderer.GetCalls(), Calls());
}

TEST(OrientorWithoutRenderer, follows_the_mouse_but_hits_and_draws_nothing) {
  MemoryHub hub(LookAlong(Vector3(-1, 0, 0)));
  RewindHistory history;
  OpenOrientor cube;
  cube.SetKorvane(&hub);
  cube.SetRewindHistory(&history);
  cube.SetViewportSize(1024, 768);
  cube.SetViewportMousePosition(964, 60);
  EXPECT_EQ(cube.fade, 1.0F);
  EXPECT_TRUE(cube.IsMouseInRegion());
  EXPECT_EQ(cube.GetClosestGeometryPart(), 1);
  EXPECT_EQ(cube.GetActiveGeometryPart(), -1);
  EXPECT_EQ(cube.rawOverlayPart, -1);
  EXPECT_FALSE(cube.IsPointInBounds(964, 708));
  cube.Draw();
}

}  // namespace
