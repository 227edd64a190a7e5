// Events of the window as the view manager gets them. The renderer records, and answers rays with the model.
#include "views/viewer_view_manager.h"

#include <SDL_keycode.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "korvane/tool.h"
#include "views/view_tools.h"
#include "wired_view.h"
#include "zovhost/key_table.h"

namespace {

using Korvane::Box3;
using Korvane::CameraParameters;
using Korvane::Vector3;
using zovhost::MouseButton;
using zovhost::PixelPosition;
using zovhost::WindowEvent;
using Type = WindowEvent::Type;

const std::array<Box3, 1> HOUSE = {Box3({0, 0, 4}, {6, 5, 4})};

// Tells what is asked of it by its protected sides.
class OpenManager : public zovview::ViewerViewManager {
 public:
  using ViewerViewManager::ViewerViewManager;
  bool WantsWrapping() const { return wantCursorWrapping; }
  bool IsOrbiting() const { return navigation.present == Navigation::Orbiting; }
  bool IsPanning() const { return navigation.present == Navigation::Panning; }
  bool IsZooming() const { return navigation.present == Navigation::Zooming; }
  bool HoldsShift() const { return mouse.shiftDown; }
  PixelPosition GetMouse() const { return {mouse.x, mouse.y}; }
  Korvane::Tool& GetTool() { return *activeTool; }
};

class ViewerViewManagerTest : public apps_test::WiredView<OpenManager> {
 protected:
  ViewerViewManagerTest() : WiredView(HOUSE) {
    events.SetMovePointer([this](int x, int y) { jumps.push_back({x, y}); });
  }

  double Turned(const CameraParameters& before) const { return (hub.GetView().eye - before.eye).Length(); }

  std::vector<PixelPosition> jumps;
};

// ---- the tables ----

TEST_F(ViewerViewManagerTest, every_key_is_bound_once_and_every_number_of_the_library_has_one) {
  std::set<SDL_Keycode> keys;
  std::set<int> numbers;
  for (const zovhost::KeyBinding& binding : zovhost::GetKeyBindings()) {
    EXPECT_TRUE(keys.insert(binding.key).second) << binding.key;
    numbers.insert(binding.id);
    const bool isCommand = zovview::FindViewCommand(binding.key) != nullptr;
    EXPECT_EQ(isCommand, binding.key == SDLK_ESCAPE) << binding.key;
  }
  for (int number = Korvane::KEY_SHIFT; number <= Korvane::KEY_SPACE; ++number) {
    EXPECT_EQ(numbers.count(number), 1U) << number;
  }
}

TEST_F(ViewerViewManagerTest, has_all_tools_each_with_its_cursor_and_begins_with_the_orbit) {
  struct Row {
    zovview::ToolID id;
    Korvane::CursorID cursor;
  };
  EXPECT_EQ(events.GetActiveTool(), zovview::TOOL_ORBIT);
  for (const Row& row : {Row{zovview::TOOL_PAN, Korvane::CURSOR_PAN},
                         {zovview::TOOL_ZOOM, Korvane::CURSOR_ZOOM},
                         {zovview::TOOL_RECTANGLE, Korvane::CURSOR_ZOOM},
                         {zovview::TOOL_LOOK, Korvane::CURSOR_LOOK},
                         {zovview::TOOL_LOOK_MOVE, Korvane::CURSOR_LOOK},
                         {zovview::TOOL_LOOK_AT, Korvane::CURSOR_LOOK_AT},
                         {zovview::TOOL_CENTRE, Korvane::CURSOR_ARROW},
                         {zovview::TOOL_WALK, Korvane::CURSOR_WALK},
                         {zovview::TOOL_ORBIT, Korvane::CURSOR_ORBIT}}) {
    ASSERT_TRUE(events.SetActiveTool(row.id));
    Send(Type::MouseMove, 200, 200);
    Draw();
    EXPECT_EQ(renderer.GetCursorID(), row.cursor) << row.id;
  }
  EXPECT_EQ(zovview::GetViewTools().size(), 9U);
}

// ---- the left button ----

TEST_F(ViewerViewManagerTest, a_left_drag_orbits_and_what_moved_since_the_last_frame_counts) {
  const CameraParameters before = hub.GetView();
  EXPECT_TRUE(Send(Type::MouseDown, 200, 200));
  Send(Type::MouseUp, 200 + WIDTH / 5, 200);
  // A fifth of the width is one radian about the up axis.
  const auto level = [this](const CameraParameters& camera) {
    const Vector3 arm = camera.eye - camera.pivot;
    return (arm - scene->GetUpDirection() * arm.Dot(scene->GetUpDirection())).Normalized();
  };
  EXPECT_NEAR(std::acos(level(before).Dot(level(hub.GetView()))), 1.0, 1e-9);
  EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ALL));
}

TEST_F(ViewerViewManagerTest, a_press_takes_over_from_a_travelling_camera) {
  zovview::ShowTop(target);
  Send(Type::MouseDown, 200, 200);
  EXPECT_FALSE(hub.IsShotActive());
  Send(Type::MouseUp, 200, 200);
  zovview::ShowTop(target);
  Turn(1.0);
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(ViewerViewManagerTest, a_right_press_lets_a_travelling_camera_go_on) {
  zovview::ShowTop(target);
  Send(Type::MouseDown, 200, 200, MouseButton::Right);
  EXPECT_TRUE(hub.IsShotActive());
  Send(Type::MouseUp, 200, 200, MouseButton::Right);
}

TEST_F(ViewerViewManagerTest, a_second_press_leaves_the_journey_of_a_tool_to_the_tool) {
  renderer.SetSceneHit({1, 2, 3});
  events.SetActiveTool(zovview::TOOL_CENTRE);
  Send(Type::MouseDown, WIDTH / 2, HEIGHT / 2);
  Send(Type::MouseUp, WIDTH / 2, HEIGHT / 2);
  ASSERT_TRUE(events.GetTool().IsAnimating());
  Send(Type::MouseDown, WIDTH / 2, HEIGHT / 2);
  EXPECT_TRUE(hub.IsShotActive());
  Send(Type::MouseUp, WIDTH / 2, HEIGHT / 2);
}

TEST_F(ViewerViewManagerTest, a_press_without_a_motion_before_it_is_on_what_lies_there) {
  Send(Type::MouseMove, 200, 200);
  Draw();
  Send(Type::MouseDown, WIDTH - 60, HEIGHT - 60);
  Send(Type::MouseUp, WIDTH - 60, HEIGHT - 60);
  EXPECT_TRUE(hub.IsShotActive()) << "a click on the cube";
}

TEST_F(ViewerViewManagerTest, a_click_is_free_where_the_tool_only_drags) {
  const std::set<int> useClicks = {zovview::TOOL_ZOOM, zovview::TOOL_LOOK_AT, zovview::TOOL_CENTRE,
                                   zovview::TOOL_WALK};
  for (const zovview::ViewTool& tool : zovview::GetViewTools()) {
    if (tool.id == zovview::TOOL_LOOK_AT) continue;  // this renderer has no faces, so the press is of no use
    events.Cancel();
    ASSERT_TRUE(events.SetActiveTool(tool.id));
    Send(Type::MouseDown, 200, 200);
    EXPECT_EQ(events.IsClickFree(), useClicks.count(tool.id) == 0) << tool.id;
    Send(Type::MouseUp, 200, 200);
    Wait(1.0);
  }
}

// ---- wrapping ----

TEST_F(ViewerViewManagerTest, a_drag_past_the_edge_sets_the_pointer_back_and_turns_on) {
  const CameraParameters before = hub.GetView();
  Send(Type::MouseDown, WIDTH - 100, 300);
  ASSERT_TRUE(events.WantsWrapping());
  Send(Type::MouseMove, WIDTH + 20, 300);
  ASSERT_EQ(jumps, std::vector<PixelPosition>({{20, 300}}));
  EXPECT_EQ(events.GetMouse(), (PixelPosition{WIDTH + 20, 300}));
  Send(Type::MouseMove, 120, 300);
  EXPECT_EQ(events.GetMouse(), (PixelPosition{WIDTH + 120, 300}));
  Send(Type::MouseUp, 120, 300);
  EXPECT_EQ(events.GetMouse(), (PixelPosition{120, 300})) << "the drag is over";

  // The same turn in one sweep.
  const CameraParameters wrapped = hub.GetView();
  hub.SetView(before);
  Send(Type::MouseDown, 100, 300);
  Send(Type::MouseUp, 320, 300);
  EXPECT_LT(Turned(wrapped), 1e-9);
  EXPECT_EQ(jumps.size(), 1U);
}

TEST_F(ViewerViewManagerTest, a_rectangle_and_a_pointer_without_a_button_are_not_wrapped) {
  Send(Type::MouseMove, WIDTH + 20, 300);
  events.SetActiveTool(zovview::TOOL_RECTANGLE);
  Send(Type::MouseDown, WIDTH - 100, 300);
  Send(Type::MouseMove, WIDTH + 20, 300);
  EXPECT_TRUE(jumps.empty());
  events.Cancel();
}

TEST_F(ViewerViewManagerTest, where_the_library_sets_the_pointer_is_no_motion) {
  Send(Type::MouseDown, WIDTH - 10, 300);
  Send(Type::MouseMove, WIDTH + 20, 300);
  events.OnPointerSet(640, 160);
  Send(Type::MouseMove, 641, 160);
  EXPECT_EQ(events.GetMouse(), (PixelPosition{641, 160}));
  events.Cancel();
}

// ---- the middle button and the wheel ----

TEST_F(ViewerViewManagerTest, the_middle_button_pans_and_orbits_while_shift_is_held) {
  Send(Type::MouseDown, 300, 300, MouseButton::Middle);
  EXPECT_TRUE(events.IsPanning());
  Key(Type::KeyDown, SDLK_LSHIFT);
  EXPECT_TRUE(events.IsOrbiting());
  Key(Type::KeyDown, SDLK_RSHIFT);
  Key(Type::KeyUp, SDLK_LSHIFT);
  EXPECT_TRUE(events.IsOrbiting()) << "the other Shift is still held";
  Key(Type::KeyUp, SDLK_RSHIFT);
  EXPECT_TRUE(events.IsPanning());
  Send(Type::MouseUp, 300, 300, MouseButton::Middle);
  EXPECT_FALSE(events.IsPanning() || events.IsOrbiting());
}

TEST_F(ViewerViewManagerTest, the_middle_button_does_nothing_while_another_is_held) {
  Send(Type::MouseDown, 300, 300);
  Send(Type::MouseDown, 300, 300, MouseButton::Middle);
  EXPECT_FALSE(events.IsPanning());
  events.Cancel();
  Send(Type::MouseDown, 300, 300, MouseButton::Right);
  Send(Type::MouseDown, 300, 300, MouseButton::Middle);
  EXPECT_FALSE(events.IsPanning());
}

TEST_F(ViewerViewManagerTest, the_wheel_zooms_in_away_from_the_user_and_ends_by_itself) {
  const double before = (hub.GetView().eye - scene->GetCentre()).Length();
  EXPECT_TRUE(Turn(3.0));
  Draw();
  EXPECT_TRUE(events.IsZooming());
  EXPECT_LT((hub.GetView().eye - scene->GetCentre()).Length(), before);
  Wait(0.4);
  EXPECT_TRUE(events.IsZooming());
  Wait(0.2);
  EXPECT_FALSE(events.IsZooming());
}

TEST_F(ViewerViewManagerTest, a_fine_wheel_adds_up_to_notches) {
  const CameraParameters start = hub.GetView();
  Turn(3.0);
  Wait(0.7);
  const CameraParameters whole = hub.GetView();
  hub.SetView(start);
  // 30 times a tenth; a count of 120 to the notch makes 12 of each.
  for (int i = 0; i < 30; ++i) Turn(0.1);
  Wait(0.7);
  EXPECT_LT(Turned(whole), 1e-9);
  EXPECT_GT(Turned(start), 0.1);
}

TEST_F(ViewerViewManagerTest, a_wheel_out_of_this_world_is_ignored) {
  const CameraParameters before = hub.GetView();
  const double infinity = HUGE_VAL;
  for (const double notches : {std::nan(""), infinity, -infinity, 1e9, -1e9}) EXPECT_FALSE(Turn(notches));
  Wait(0.1);
  EXPECT_LT(Turned(before), 1e-12);
}

TEST_F(ViewerViewManagerTest, a_press_right_after_the_wheel_drags_at_once) {
  Turn(1.0);
  Draw();
  const CameraParameters before = hub.GetView();
  Send(Type::MouseDown, 300, 300);
  EXPECT_FALSE(events.IsZooming());
  Send(Type::MouseMove, 400, 300);
  Draw();
  EXPECT_GT(Turned(before), 1.0);
  events.Cancel();
}

// ---- letting go ----

TEST_F(ViewerViewManagerTest, a_lost_focus_lets_go_of_buttons_and_keys_and_begins_nothing) {
  for (const zovview::ViewTool& tool : zovview::GetViewTools()) {
    events.SetActiveTool(tool.id);
    Key(Type::KeyDown, SDLK_LSHIFT);
    Send(Type::MouseDown, 640, 400);
    Draw();
    WindowEvent lost;
    lost.type = Type::FocusLost;
    events.OnEvent(lost);
    EXPECT_FALSE(events.IsPressed()) << tool.id;
    EXPECT_FALSE(events.HoldsShift()) << tool.id;
    EXPECT_FALSE(events.GetTool().IsOperating()) << tool.id;
    EXPECT_FALSE(hub.IsShotActive()) << tool.id;
    EXPECT_FALSE(hub.IsOperationActive(Korvane::OPERATION_ALL)) << tool.id;
    Draw();
  }
  Send(Type::MouseDown, 300, 300, MouseButton::Middle);
  events.Cancel();
  EXPECT_FALSE(events.IsPanning());
}

TEST_F(ViewerViewManagerTest, escape_drops_a_rectangle) {
  events.SetActiveTool(zovview::TOOL_RECTANGLE);
  Send(Type::MouseDown, 300, 300);
  Send(Type::MouseMove, 500, 400);
  EXPECT_TRUE(Key(Type::KeyDown, SDLK_ESCAPE));
  Send(Type::MouseUp, 500, 400);
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(ViewerViewManagerTest, a_pointer_that_leaves_is_over_nothing) {
  Send(Type::MouseMove, WIDTH - 60, HEIGHT - 60);
  Draw();
  EXPECT_TRUE(ownCube.IsMouseInRegion());
  Send(Type::MouseLeave, 0, 0);
  Draw();
  EXPECT_FALSE(ownCube.IsMouseInRegion());
}

// ---- what the hand borrows ----

TEST_F(ViewerViewManagerTest, a_drag_of_the_cube_gives_the_choice_to_snap_back) {
  bool& snapping = hub.GetApplicationParameters().do_snap_orbit;
  const auto drag = [this](auto end) {
    const Vector3 before = hub.GetView().eye;
    Send(Type::MouseDown, WIDTH - 60, HEIGHT - 60);
    Send(Type::MouseMove, WIDTH - 90, HEIGHT - 60);
    Draw();
    ASSERT_TRUE(ownCube.IsDragActive());
    Send(Type::MouseMove, WIDTH - 120, HEIGHT - 60);
    Draw();
    end();
    EXPECT_FALSE(ownCube.IsDragActive());
    EXPECT_NE(hub.GetView().eye, before);
  };
  for (const bool chosen : {true, false}) {
    snapping = chosen;
    drag([this] { Send(Type::MouseUp, WIDTH - 120, HEIGHT - 60); });
    EXPECT_EQ(snapping, chosen) << "a release";
    drag([this] { Send(Type::FocusLost); });
    EXPECT_EQ(snapping, chosen) << "a lost focus";
  }
}

TEST_F(ViewerViewManagerTest, the_keys_of_look_and_move_take_the_same_share_of_every_model_in_a_second) {
  constexpr double SHARE = 0.125;  // of the radius
  for (const double size : {0.001, 1.0, 1000.0}) {
    const std::array<Box3, 1> box = {Box3({0, 0, 0}, Vector3(size / 2))};
    Show(box);
    events.SetActiveTool(zovview::TOOL_LOOK_MOVE);
    Send(Type::MouseDown, 300, 300);
    Draw();
    const Vector3 before = hub.GetView().eye;
    Key(Type::KeyDown, SDLK_UP);
    Wait(1.0);
    Key(Type::KeyUp, SDLK_UP);
    Send(Type::MouseUp, 300, 300);
    EXPECT_NEAR((hub.GetView().eye - before).Length() / scene->GetRadius(), SHARE, 1e-9) << size;
  }
}

// ---- the note that names a tool ----

TEST_F(ViewerViewManagerTest, the_note_names_a_tool_when_it_is_chosen_and_in_its_first_drag) {
  const auto countNotes = [this] {
    renderer.ClearCalls();
    Draw();
    return renderer.CountCalls("RenderDynamic");
  };
  const auto drag = [this, &countNotes] {
    Send(Type::MouseDown, 300, 300);
    Send(Type::MouseMove, 340, 300);
    const int notes = countNotes();
    Send(Type::MouseUp, 340, 300);
    Draw();
    return notes;
  };
  Send(Type::MouseMove, 300, 300);
  EXPECT_EQ(countNotes(), 0) << "nobody has chosen the first";
  const int first = drag();
  EXPECT_EQ(drag(), first - 1) << "that of the pivot stays";

  events.SetActiveTool(zovview::TOOL_PAN);
  EXPECT_EQ(countNotes(), 1);
  Send(Type::MouseLeave);
  EXPECT_EQ(countNotes(), 0) << "there is no pointer";
  Send(Type::MouseMove, 300, 300);
  EXPECT_EQ(drag(), 1);
  EXPECT_EQ(countNotes(), 0);
  EXPECT_EQ(drag(), 0);

  events.SetActiveTool(zovview::TOOL_PAN);
  EXPECT_EQ(countNotes(), 0) << "the same";
  disc.SetActiveDisc(Korvane::DiscType::FullNavigation);
  disc.SetActiveDisc(Korvane::DiscType::None);
  EXPECT_EQ(events.GetActiveTool(), zovview::TOOL_PAN);
  EXPECT_FALSE(events.GetToolNote().IsShown()) << "a disc has come and gone";
}

TEST_F(ViewerViewManagerTest,
       the_middle_button_and_the_wheel_name_what_they_do_once_until_another_tool_is_chosen) {
  const auto countNotes = [this] {
    renderer.ClearCalls();
    Draw();
    return renderer.CountCalls("RenderDynamic");
  };
  const auto drag = [&](int x) {
    Send(Type::MouseDown, x, 300, MouseButton::Middle);
    Send(Type::MouseMove, x + 20, 300);
    const int notes = countNotes();
    Send(Type::MouseUp, x + 20, 300, MouseButton::Middle);
    Draw();
    return notes;
  };
  const auto turn = [&](int x) {
    Send(Type::MouseMove, x, 300);
    Turn(1.0);
    const int notes = countNotes();
    Wait(2.0);
    EXPECT_FALSE(events.IsZooming());
    return notes;
  };
  Send(Type::MouseMove, 300, 300);
  EXPECT_EQ(drag(300), 1);
  EXPECT_EQ(drag(310), 0);
  const int first = turn(320);
  EXPECT_GE(first, 1);
  EXPECT_EQ(turn(330), first - 1) << "that of the pivot stays";
  EXPECT_EQ(drag(340), 0);

  events.SetActiveTool(zovview::TOOL_ORBIT);
  EXPECT_EQ(drag(350), 0) << "it was the tool before";
  disc.SetActiveDisc(Korvane::DiscType::FullNavigation);
  disc.SetActiveDisc(Korvane::DiscType::None);
  EXPECT_EQ(drag(360), 0) << "a disc has come and gone";
  events.SetActiveTool(zovview::TOOL_LOOK);
  Wait(3.0);  // the note of the tool has gone
  Draw();
  EXPECT_EQ(drag(370), 1);
  EXPECT_EQ(drag(380), 0);
}

// The window system may tell of it also where it has given the pointer to the window.
TEST_F(ViewerViewManagerTest, a_pointer_that_leaves_in_a_drag_is_no_motion) {
  const CameraParameters before = hub.GetView();
  Send(Type::MouseDown, 300, 300);
  EXPECT_FALSE(Send(Type::MouseLeave, 0, 0));
  Draw();
  EXPECT_LT(Turned(before), 1e-12);
  events.Cancel();
}

TEST_F(ViewerViewManagerTest, keys_that_are_bound_to_nothing_are_left_to_others) {
  EXPECT_FALSE(Key(Type::KeyDown, SDLK_q));
  EXPECT_FALSE(Key(Type::KeyUp, SDLK_q));
  EXPECT_FALSE(Key(Type::KeyDown, SDLK_ESCAPE)) << "nothing to cancel";
}

}  // namespace
