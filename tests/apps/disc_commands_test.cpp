// Discs and the way back, as the keys, the panel and the menus of the viewer have them.
#include "commands/disc_commands.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "commands/cube_commands.h"
#include "commands/viewer_menus.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"
#include "views/view_tools.h"
#include "wired_view.h"

namespace {

using Korvane::Box3;
using Korvane::CameraParameters;
using Korvane::DiscType;
using Korvane::HelmDiscParameters;
using Korvane::RewindHistory;
using Korvane::Vector3;
using zovhost::MouseButton;
using zovhost::WindowEvent;
using zovview::ViewCommand;
using Type = WindowEvent::Type;

const std::array<Box3, 1> HOUSE = {Box3({0, 0, 4}, {6, 5, 4})};

class DiscCommandsTest : public apps_test::WiredView<zovview::ViewerViewManager> {
 protected:
  DiscCommandsTest()
      : WiredView(HOUSE), view{hub, selection, events, ownCube, disc, [this] { ++helpCount; }} {
    Wait(0.1);
  }

  void Tap(SDL_Keycode key) {
    Key(Type::KeyDown, key);
    Key(Type::KeyUp, key);
  }
  void Drag(int x, int y, int toX, int toY, MouseButton button = MouseButton::Left) {
    Send(Type::MouseMove, x, y, button);
    Draw();
    Send(Type::MouseDown, x, y, button);
    for (int i = 1; i <= 5; ++i) {
      Send(Type::MouseMove, x + (toX - x) * i / 5, y + (toY - y) * i / 5, button);
      Draw();
    }
    Send(Type::MouseUp, toX, toY, button);
    Wait(1.5);
  }
  void Run(const char* name) {
    zovview::FindViewCommand(name)->run(view);
    Wait(1.5);
  }
  RewindHistory& GetHistory() { return *disc.GetHistory(); }

  const zovview::ViewTarget view;
  int helpCount = 0;
};

// ---- kinds ----

TEST_F(DiscCommandsTest, each_kind_opens_by_its_command_and_is_the_one_that_is_lit) {
  struct Row {
    const char* name;
    SDL_Keycode key;
    DiscType type;
  };
  const std::vector<Row> rows = {{"disc-view-object", SDLK_F2, DiscType::ViewObject},
                                 {"disc-tour-building", SDLK_F3, DiscType::TourBuilding},
                                 {"disc-full-navigation", SDLK_F4, DiscType::FullNavigation},
                                 {"disc-2d", SDLK_F5, DiscType::TwoD},
                                 {"disc-mini-view-object", SDLK_F6, DiscType::MiniViewObject},
                                 {"disc-mini-tour-building", SDLK_F7, DiscType::MiniTourBuilding},
                                 {"disc-mini-full-navigation", SDLK_F8, DiscType::MiniFullNavigation}};
  for (const Row& row : rows) {
    Run(row.name);
    EXPECT_EQ(disc.GetActiveDisc(), row.type) << row.name;
    EXPECT_EQ(zovview::FindViewCommand(row.key), zovview::FindViewCommand(row.name));
    for (const Row& other : rows) {
      EXPECT_EQ(zovview::FindViewCommand(other.name)->isOn(view), other.type == row.type) << other.name;
    }
  }
  Run("close-disc");
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
}

TEST_F(DiscCommandsTest, a_kind_opens_where_the_pointer_is_or_in_the_place_of_the_other) {
  const auto place = [this] {
    const Korvane::Vector2 at = disc.GetActiveTrackMenu()->GetRegionMap()->GetPosition();
    return zovhost::PixelPosition{static_cast<int>(at.x), static_cast<int>(at.y)};
  };
  Send(Type::MouseMove, 500, 300);
  Draw();
  Run("disc-2d");
  EXPECT_EQ(place(), (zovhost::PixelPosition{500, 300}));
  Send(Type::MouseMove, 510, 290);
  Draw();
  const zovhost::PixelPosition before = place();
  Run("disc-tour-building");
  EXPECT_NEAR(place().x, before.x, 1);  // places are fractions of pixels
  EXPECT_NEAR(place().y, before.y, 1);
  Send(Type::MouseMove, 520, 290);
  EXPECT_EQ(disc.GetActiveTrackMenu()->GetMouseCoords(), Korvane::Vector2(520, 290));
}

TEST_F(DiscCommandsTest, the_hot_key_opens_the_last_kind_and_closes_it) {
  Run("disc-mini-tour-building");
  Run("close-disc");
  Tap(SDLK_d);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::MiniTourBuilding);
  Tap(SDLK_d);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
}

TEST_F(DiscCommandsTest, the_hot_key_closes_a_disc_that_was_used_and_a_press_while_it_is_held_keeps_it) {
  Send(Type::MouseMove, 500, 300);
  Tap(SDLK_d);
  Drag(500, 300, 540, 300);
  Tap(SDLK_d);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  Tap(SDLK_d);
  Key(Type::KeyDown, SDLK_d);
  Drag(500, 300, 540, 300);
  Key(Type::KeyUp, SDLK_d);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
}

TEST_F(DiscCommandsTest, the_hot_key_leaves_a_disc_that_was_used_alone_while_a_button_is_held) {
  Send(Type::MouseMove, 500, 300);
  Tap(SDLK_d);
  Drag(500, 300, 540, 300);
  Send(Type::MouseDown, 540, 300, MouseButton::Middle);
  Tap(SDLK_d);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::FullNavigation);
  Send(Type::MouseUp, 540, 300, MouseButton::Middle);
  Tap(SDLK_d);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
}

TEST_F(DiscCommandsTest, escape_closes_the_disc_and_selects_nothing_the_next_time) {
  Send(Type::MouseMove, WIDTH / 2, HEIGHT / 2);
  selection.PickAt(WIDTH / 2, HEIGHT / 2);
  ASSERT_EQ(selection.GetPart(), 0);
  Run("disc-2d");
  Run("dismiss");
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  EXPECT_EQ(selection.GetPart(), 0);
  Run("dismiss");
  EXPECT_EQ(selection.GetPart(), -1);
  EXPECT_EQ(zovview::FindViewCommand(SDLK_ESCAPE), zovview::FindViewCommand("dismiss"));
}

TEST_F(DiscCommandsTest, the_tool_of_before_comes_back_when_a_disc_closes) {
  Run("walk");
  Run("disc-full-navigation");
  EXPECT_EQ(events.GetActiveTool(), 0);
  Run("disc-2d");
  Run("close-disc");
  EXPECT_EQ(events.GetActiveTool(), zovview::TOOL_WALK);
}

TEST_F(DiscCommandsTest, a_tool_that_is_chosen_closes_the_disc_and_stays) {
  Run("walk");
  Run("disc-full-navigation");
  Run("pan");
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  EXPECT_EQ(events.GetActiveTool(), zovview::TOOL_PAN);
  events.SetActiveTool(0);
  events.SetViewportSize(WIDTH - 10, HEIGHT);
  EXPECT_EQ(events.GetActiveTool(), 0) << "nobody asks for a tool";
}

TEST_F(DiscCommandsTest, a_press_on_a_disc_ends_a_travelling_camera) {
  Send(Type::MouseMove, 500, 300);
  Run("disc-full-navigation");
  zovview::ShowTop(view);
  ASSERT_TRUE(hub.IsShotActive());
  Send(Type::MouseDown, 500, 300);
  EXPECT_FALSE(hub.IsShotActive());
  Send(Type::MouseUp, 500, 300);
}

// It hides while a move of its own runs.
TEST_F(DiscCommandsTest, a_press_on_a_disc_that_hides_leaves_the_travelling_camera_to_it) {
  Send(Type::MouseMove, 500, 300);
  Run("disc-full-navigation");
  zovview::ShowTop(view);
  disc.GetActiveTrackMenu()->SetVisible(false);
  Send(Type::MouseDown, 500, 300);
  EXPECT_TRUE(hub.IsShotActive());
  Send(Type::MouseUp, 500, 300);
}

TEST_F(DiscCommandsTest, a_tool_that_does_not_exist_leaves_the_one_behind_the_disc) {
  Run("walk");
  Run("disc-full-navigation");
  EXPECT_FALSE(events.SetActiveTool(12345));
  Run("close-disc");
  EXPECT_EQ(events.GetActiveTool(), zovview::TOOL_WALK);
}

TEST_F(DiscCommandsTest, help_is_shown_by_whoever_can) {
  Run("disc-help");
  EXPECT_EQ(helpCount, 1);
  zovview::FindViewCommand("disc-help")->run(target);  // nobody can
}

// ---- settings ----

TEST_F(DiscCommandsTest, each_family_has_its_sizes_and_opacities) {
  struct Row {
    const char* name;
    double value;
    bool large;
    bool isSize;
  };
  const std::vector<Row> rows = {
      {"disc-size-small", 64, true, true},         {"disc-size-normal", 128, true, true},
      {"disc-size-large", 256, true, true},        {"mini-disc-size-small", 32, false, true},
      {"mini-disc-size-normal", 64, false, true},  {"mini-disc-size-large", 128, false, true},
      {"mini-disc-size-extra", 256, false, true},  {"disc-opacity-25", 0.5, true, false},
      {"disc-opacity-50", 1.0, true, false},       {"disc-opacity-75", 2.0, true, false},
      {"disc-opacity-100", 3.0, true, false},      {"mini-disc-opacity-25", 0.5, false, false},
      {"mini-disc-opacity-50", 1.0, false, false}, {"mini-disc-opacity-75", 2.0, false, false},
      {"mini-disc-opacity-100", 3.0, false, false}};
  for (const Row& row : rows) {
    const HelmDiscParameters before = disc.GetParameters();
    zovview::FindViewCommand(row.name)->run(view);
    EXPECT_TRUE(zovview::FindViewCommand(row.name)->isOn(view)) << row.name;
    const HelmDiscParameters& now = disc.GetParameters();
    EXPECT_EQ(now.largeDiscSize, row.isSize && row.large ? row.value : before.largeDiscSize) << row.name;
    EXPECT_EQ(now.miniDiscSize, row.isSize && !row.large ? row.value : before.miniDiscSize) << row.name;
    EXPECT_EQ(now.largeDiscOpacity, !row.isSize && row.large ? row.value : before.largeDiscOpacity);
    EXPECT_EQ(now.miniDiscOpacity, !row.isSize && !row.large ? row.value : before.miniDiscOpacity);
  }
  for (const Row& row : rows) {
    const bool isLast = std::string(row.name).find("extra") != std::string::npos ||
                        std::string(row.name).find("100") != std::string::npos ||
                        std::string(row.name) == "disc-size-large";
    EXPECT_EQ(zovview::FindViewCommand(row.name)->isOn(view), isLast) << row.name;
  }
}

TEST_F(DiscCommandsTest, the_walking_speed_has_steps_and_values) {
  double& speed = disc.GetParameters().walkSpeedFactor;
  Run("walk-faster");
  EXPECT_NEAR(speed, 1.3, 1e-12);  // ceil(1.25 times 10 - 0.1) tenths
  Run("walk-slower");
  EXPECT_NEAR(speed, 1.0, 1e-12);  // floor(1.3 times 0.8 times 10 + 0.1) tenths
  for (const int percent : {50, 200, 500, 100}) {
    const ViewCommand& command = *zovview::FindViewCommand("walk-speed-" + std::to_string(percent));
    command.run(view);
    EXPECT_TRUE(command.isOn(view)) << percent;
    EXPECT_EQ(speed, percent / 100.0);
    EXPECT_EQ(hub.GetApplicationParameters().GetFlyMoveMultiplier(), percent / 100.0);
  }
}

TEST_F(DiscCommandsTest, a_switch_of_the_discs_says_whether_it_is_on) {
  int count = 0;
  for (const ViewCommand& command : zovview::GetViewCommands()) {
    if (command.place != ViewCommand::Place::DiscSettings) continue;
    ++count;
    const bool before = command.isOn(view);
    command.run(view);
    EXPECT_NE(command.isOn(view), before) << command.name;
    command.run(view);
    EXPECT_EQ(command.isOn(view), before) << command.name;
  }
  EXPECT_EQ(count, 5);
}

TEST_F(DiscCommandsTest, upright_is_one_setting_for_the_tool_and_the_discs) {
  Run("toggle-upright");
  EXPECT_FALSE(disc.GetParameters().keepSceneUpright);
  Run("toggle-upright");
  EXPECT_TRUE(disc.GetParameters().keepSceneUpright);
}

TEST_F(DiscCommandsTest, each_menu_that_the_library_asks_for_is_known_and_no_other) {
  using Kind = zovview::ViewerMenus::Kind;
  const auto find = [](int id) { return zovview::ViewerMenus::FindKind(static_cast<Korvane::MenuID>(id)); };
  EXPECT_EQ(find(0), Kind::TourBuilding);
  EXPECT_EQ(find(1), Kind::ViewObject);
  EXPECT_EQ(find(2), Kind::FullNavigation);
  EXPECT_EQ(find(3), Kind::TwoD);
  EXPECT_EQ(find(4), Kind::Cube);
  EXPECT_EQ(find(5), Kind::Shot);
  for (const int id : {-1, 6, 100}) EXPECT_FALSE(find(id).has_value()) << id;
}

// ---- one entry for each move ----

// The first leaves the view of before besides.
#define EXPECT_ONE_ENTRY(action, what)                             \
  {                                                                \
    const int before = GetHistory().GetElementCount();             \
    action;                                                        \
    Wait(0.5);                                                     \
    EXPECT_EQ(GetHistory().GetElementCount(), before + 1) << what; \
  }

TEST_F(DiscCommandsTest, every_command_that_moves_the_camera_is_one_entry) {
  Run("top");
  for (const char* name : {"home", "isometric", "fit-all", "front", "back", "left", "right", "top", "bottom",
                           "front", "toggle-projection", "toggle-projection", "isometric", "level",
                           "parallel", "perspective", "cube-home"}) {
    EXPECT_ONE_ENTRY(Run(name), name);
  }
}

TEST_F(DiscCommandsTest, every_gesture_of_the_tools_the_cube_and_the_middle_button_is_one_entry) {
  Run("top");
  Run("home");
  for (const char* tool : {"orbit", "pan", "zoom", "look", "look-and-move"}) {
    Run(tool);
    EXPECT_ONE_ENTRY(Drag(600, 300, 660, 340), tool);
  }
  Run("orbit");
  EXPECT_ONE_ENTRY(Drag(600, 300, 640, 330, MouseButton::Middle), "pan by the middle button");
  WindowEvent wheel;
  wheel.type = Type::Wheel;
  wheel.x = 600;
  wheel.y = 300;
  wheel.wheel = 2.0;
  EXPECT_ONE_ENTRY(events.OnEvent(wheel); Draw(); events.OnEvent(wheel);
                   Wait(1.0), "the wheel, turned twice");
  int x = 0;
  int y = 0;
  Run("home");
  ASSERT_TRUE(ownCube.GetPartPosition(Korvane::OrientorObserver::PART_TOP, x, y));
  EXPECT_ONE_ENTRY(Drag(x, y, x + 30, y - 30), "a drag of the cube");
  ASSERT_TRUE(ownCube.GetPartPosition(Korvane::OrientorObserver::PART_TOP, x, y));
  EXPECT_ONE_ENTRY(Drag(x, y, x, y), "a click on the cube");
}

TEST_F(DiscCommandsTest, a_command_during_a_move_makes_two_entries) {
  Run("home");
  const int before = GetHistory().GetElementCount();
  zovview::FitAll(view);
  Wait(0.2);
  Run("top");
  EXPECT_EQ(GetHistory().GetElementCount(), before + 2);
}

// ---- back and forward ----

TEST_F(DiscCommandsTest, back_and_forward_lead_through_the_views) {
  std::vector<Vector3> eyes = {hub.GetView().eye};
  for (const char* name : {"top", "front", "right"}) {
    Run(name);
    eyes.push_back(hub.GetView().eye);
  }
  const auto expectAt = [&](std::size_t index) {
    EXPECT_LT((hub.GetView().eye - eyes[index]).Length(), 1e-9) << index;
  };
  for (const std::size_t index : {2U, 1U, 0U, 0U}) {
    Run("previous-view");
    expectAt(index);
  }
  for (const std::size_t index : {1U, 2U, 3U, 3U}) {
    Run("next-view");
    expectAt(index);
  }
  EXPECT_EQ(GetHistory().GetElementCount(), 4) << "the way itself is none";
}

TEST_F(DiscCommandsTest, back_travels_for_half_a_second) {
  const Vector3 start = hub.GetView().eye;
  Run("top");
  const Vector3 top = hub.GetView().eye;
  zovview::StepBack(view);
  Wait(0.45);
  EXPECT_TRUE(hub.IsShotActive());
  EXPECT_NE(hub.GetView().eye, top);
  EXPECT_GT((hub.GetView().eye - start).Length(), 1e-3)
      << "it slows down at the end, and does not wait there";
  Wait(0.1);
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_LT((hub.GetView().eye - start).Length(), 1e-9);
}

TEST_F(DiscCommandsTest, a_move_after_back_cuts_off_what_came_later) {
  Run("top");
  Run("front");
  Run("previous-view");
  Run("left");
  EXPECT_EQ(GetHistory().GetElementCount(), 3);
  const Vector3 left = hub.GetView().eye;
  Run("next-view");
  EXPECT_EQ(hub.GetView().eye, left);
}

TEST_F(DiscCommandsTest, back_during_a_move_leads_to_where_it_set_out) {
  const Vector3 start = hub.GetView().eye;
  zovview::ShowTop(view);
  Wait(0.2);
  Run("previous-view");
  EXPECT_LT((hub.GetView().eye - start).Length(), 1e-9);
}

TEST_F(DiscCommandsTest, the_keys_of_back_and_forward_need_alt) {
  EXPECT_EQ(zovview::FindViewCommand(SDLK_LEFT), nullptr);
  EXPECT_EQ(zovview::FindViewCommand(SDLK_LEFT, WindowEvent::ALT), zovview::FindViewCommand("previous-view"));
  EXPECT_EQ(zovview::FindViewCommand(SDLK_RIGHT, WindowEvent::ALT), zovview::FindViewCommand("next-view"));
  EXPECT_EQ(zovview::FindViewCommand(SDLK_LEFT, WindowEvent::ALT | WindowEvent::CONTROL), nullptr);
}

}  // namespace
