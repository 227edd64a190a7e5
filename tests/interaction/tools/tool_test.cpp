#include "korvane/tool.h"

#include "interaction/tools/tool_fakes.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

// Opens the protected side.
struct OpenTool : Tool {
  using Tool::controlKeyDown;
  using Tool::dragThreshold;
  using Tool::mouseDown;
  using Tool::SetAnimating;
  using Tool::SetCursorID;
  using Tool::SetDrawOnlyWhileOperating;
  using Tool::SetOperating;
  using Tool::SetViewHUDOffset;
  using Tool::SetWrapCursor;
};

struct ToolTest : ::testing::Test {
  ToolTest() { bench.Wire(tool); }

  DynamicIcon2D MakeNote(int id) {
    DynamicIcon2D note(id);
    note.SetSize(200, 40);
    return note;
  }

  ToolBench bench;
  OpenTool tool;
};

}  // namespace

TEST(Tool, virtual_operations_stand_in_their_order) {
  EXPECT_EQ(VirtualSlot(&Tool::SetKorvane), 2);
  EXPECT_EQ(VirtualSlot(&Tool::SetRenderer), 3);
  EXPECT_EQ(VirtualSlot(&Tool::SetRewindHistory), 4);
  EXPECT_EQ(VirtualSlot(&Tool::OnDraw), 5);
  EXPECT_EQ(VirtualSlot(&Tool::OnMouseMove), 6);
  EXPECT_EQ(VirtualSlot(&Tool::OnMouseWheel), 7);
  EXPECT_EQ(VirtualSlot(&Tool::OnMouseDown), 8);
  EXPECT_EQ(VirtualSlot(&Tool::OnMouseUp), 9);
  EXPECT_EQ(VirtualSlot(&Tool::OnKeyDown), 10);
  EXPECT_EQ(VirtualSlot(&Tool::OnKeyUp), 11);
  EXPECT_EQ(VirtualSlot(&Tool::Activate), 12);
  EXPECT_EQ(VirtualSlot(&Tool::Deactivate), 13);
}

TEST(Tool, starts_idle_and_unwired) {
  const OpenTool tool;
  EXPECT_EQ(tool.GetKorvane(), nullptr);
  EXPECT_EQ(tool.GetRenderer(), nullptr);
  EXPECT_EQ(tool.GetRewindHistory(), nullptr);
  EXPECT_EQ(tool.GetPivotBall(), nullptr);
  EXPECT_EQ(tool.GetCursorID(), CURSOR_NONE);
  EXPECT_EQ(tool.GetMouseX(), -1);
  EXPECT_EQ(tool.GetMouseY(), -1);
  EXPECT_EQ(tool.GetMouseDownX(), 0);
  EXPECT_EQ(tool.GetMouseDownY(), 0);
  EXPECT_FALSE(tool.WasMouseDragged());
  EXPECT_FALSE(tool.IsMouseDragging());
  EXPECT_FALSE(tool.IsShiftKeyDown());
  EXPECT_FALSE(tool.IsOperating());
  EXPECT_FALSE(tool.IsAnimating());
  EXPECT_FALSE(tool.WantCursorWrapping());
}

TEST_F(ToolTest, a_press_stores_its_position_and_forgets_the_last_drag) {
  EXPECT_FALSE(tool.OnMouseDown(10, 20));
  tool.OnMouseMove(11, 20);
  EXPECT_TRUE(tool.WasMouseDragged());
  EXPECT_FALSE(tool.OnMouseDown(30, 40));
  EXPECT_EQ(tool.GetMouseX(), 30);
  EXPECT_EQ(tool.GetMouseY(), 40);
  EXPECT_EQ(tool.GetMouseDownX(), 30);
  EXPECT_EQ(tool.GetMouseDownY(), 40);
  EXPECT_TRUE(tool.mouseDown);
  EXPECT_FALSE(tool.WasMouseDragged());
}

TEST_F(ToolTest, a_move_beyond_the_threshold_on_either_axis_makes_a_drag) {
  struct Row {
    int threshold, dx, dy;
    bool drags;
  };
  for (const Row& row : {Row{0, 0, 0, false}, Row{0, 1, 0, true}, Row{0, 0, -1, true}, Row{3, 3, -3, false},
                         Row{3, -4, 0, true}, Row{3, 0, 4, true}}) {
    tool.dragThreshold = row.threshold;
    tool.OnMouseDown(100, 100);
    EXPECT_FALSE(tool.OnMouseMove(100 + row.dx, 100 + row.dy));
    EXPECT_EQ(tool.WasMouseDragged(), row.drags) << row.threshold << ": " << row.dx << ", " << row.dy;
    EXPECT_EQ(tool.IsMouseDragging(), row.drags);
    tool.OnMouseUp(100, 100);
  }
}

TEST_F(ToolTest, a_drag_stays_one_when_the_cursor_comes_back) {
  tool.OnMouseDown(100, 100);
  tool.OnMouseMove(105, 100);
  tool.OnMouseMove(100, 100);
  EXPECT_TRUE(tool.WasMouseDragged());
}

TEST_F(ToolTest, a_move_without_a_button_is_no_drag) {
  tool.OnMouseMove(50, 60);
  EXPECT_FALSE(tool.WasMouseDragged());
  EXPECT_EQ(tool.GetMouseX(), 50);
  EXPECT_EQ(tool.GetMouseY(), 60);
}

TEST_F(ToolTest, a_release_keeps_the_drag_so_that_it_can_be_told_from_a_click) {
  tool.OnMouseDown(100, 100);
  tool.OnMouseMove(105, 100);
  EXPECT_FALSE(tool.OnMouseUp(106, 107));
  EXPECT_TRUE(tool.WasMouseDragged());
  EXPECT_FALSE(tool.IsMouseDragging());
  EXPECT_EQ(tool.GetMouseX(), 106);
  EXPECT_EQ(tool.GetMouseY(), 107);
  EXPECT_EQ(tool.GetMouseDownX(), 100);
}

TEST_F(ToolTest, the_wheel_stores_its_position) {
  EXPECT_FALSE(tool.OnMouseWheel(7, 8, 120));
  EXPECT_EQ(tool.GetMouseX(), 7);
  EXPECT_EQ(tool.GetMouseY(), 8);
}

TEST_F(ToolTest, an_animating_tool_swallows_the_mouse) {
  tool.SetAnimating(true);
  EXPECT_TRUE(tool.OnMouseDown(1, 1));
  EXPECT_TRUE(tool.OnMouseMove(2, 2));
  EXPECT_TRUE(tool.OnMouseUp(3, 3));
  EXPECT_TRUE(tool.OnMouseWheel(4, 4, 1));
  EXPECT_FALSE(tool.OnKeyDown(KEY_ESCAPE));
  EXPECT_FALSE(tool.OnKeyUp(KEY_ESCAPE));
}

TEST_F(ToolTest, shift_and_control_are_tracked_and_never_consumed) {
  EXPECT_FALSE(tool.OnKeyDown(KEY_SHIFT));
  EXPECT_TRUE(tool.IsShiftKeyDown());
  EXPECT_FALSE(tool.controlKeyDown);
  EXPECT_FALSE(tool.OnKeyDown(KEY_CONTROL));
  EXPECT_TRUE(tool.controlKeyDown);
  EXPECT_FALSE(tool.OnKeyUp(KEY_SHIFT));
  EXPECT_FALSE(tool.IsShiftKeyDown());
  EXPECT_TRUE(tool.controlKeyDown);
  EXPECT_FALSE(tool.OnKeyUp(KEY_CONTROL));
  EXPECT_FALSE(tool.controlKeyDown);
  EXPECT_FALSE(tool.OnKeyDown(KEY_SPACE));
}

TEST_F(ToolTest, the_cursor_wraps_only_during_a_gesture_of_a_tool_that_wants_it) {
  for (const bool wrap : {false, true}) {
    for (const bool operating : {false, true}) {
      tool.SetWrapCursor(wrap);
      tool.SetOperating(operating);
      EXPECT_EQ(tool.WantCursorWrapping(), wrap && operating);
    }
  }
}

TEST_F(ToolTest, an_idle_tool_draws_only_when_it_says_so) {
  DynamicIcon2D note = MakeNote(1);
  tool.SetViewportHUD(&note);
  tool.SetCursorID(CURSOR_PAN);
  tool.OnDraw();
  EXPECT_TRUE(bench.renderer.TakeCalls().empty());
  tool.SetDrawOnlyWhileOperating(false);
  tool.OnDraw();
  EXPECT_EQ(bench.renderer.TakeCalls(), Lines({"BeginRender(512, 384, 512, 384, 0)", "RenderDynamic(1)",
                                               "EndRender()", "SetCursorIcon(3)"}));
}

TEST_F(ToolTest, the_notes_are_drawn_over_the_whole_view_and_the_cursor_set_after_them) {
  DynamicIcon2D mouseNote = MakeNote(1);
  DynamicIcon2D viewNote = MakeNote(2);
  tool.SetMouseHUD(&mouseNote);
  tool.SetViewportHUD(&viewNote);
  tool.SetViewHUDOffset({5, -7});
  tool.SetCursorID(CURSOR_LOOK);
  tool.SetOperating(true);
  tool.OnMouseMove(300, 200);
  tool.OnDraw();
  EXPECT_EQ(bench.renderer.TakeCalls(), Lines({"BeginRender(512, 384, 512, 384, 0)", "RenderDynamic(1)",
                                               "RenderDynamic(2)", "EndRender()", "SetCursorIcon(4)"}));
  EXPECT_EQ(mouseNote.GetPosition(), Vector2(300, 136));  // 64 pixels below the cursor
  EXPECT_EQ(viewNote.GetPosition(), Vector2(517, 33));    // 1024 / 2 + 5, its height 40 - 7
}

TEST_F(ToolTest, without_notes_no_pass_is_opened_and_without_a_cursor_none_is_set) {
  tool.SetOperating(true);
  tool.OnDraw();
  EXPECT_TRUE(bench.renderer.TakeCalls().empty());
  tool.SetCursorID(CURSOR_ARROW);
  tool.OnDraw();
  EXPECT_EQ(bench.renderer.TakeCalls(), Lines({"SetCursorIcon(26)"}));
}

TEST_F(ToolTest, a_refused_pass_draws_nothing_and_is_not_closed) {
  DynamicIcon2D note = MakeNote(1);
  tool.SetMouseHUD(&note);
  tool.SetCursorID(CURSOR_ZOOM);
  tool.SetOperating(true);
  bench.renderer.FailAlways("BeginRender");
  tool.OnDraw();
  EXPECT_EQ(bench.renderer.TakeCalls(), Lines({"BeginRender(512, 384, 512, 384, 0)", "SetCursorIcon(2)"}));
}

TEST_F(ToolTest, the_mouse_note_stays_on_screen_when_the_wrapped_cursor_has_left_by_several_widths) {
  DynamicIcon2D note = MakeNote(1);
  tool.SetMouseHUD(&note);
  tool.SetOperating(true);
  struct Row {
    int x, y;
    double noteX, cursorY;
  };
  for (const Row& row : {Row{1024, 768, 0, 0}, Row{1023, 767, 1023, 767}, Row{-1, -1, 1023, 767},
                         Row{3 * 1024 + 17, 5 * 768 + 9, 17, 9}, Row{-3 * 1024 - 17, -5 * 768 - 9, 1007, 759},
                         Row{-1024, -768, 0, 0}}) {
    tool.OnMouseMove(row.x, row.y);
    tool.OnDraw();
    EXPECT_EQ(note.GetPosition(), Vector2(row.noteX, row.cursorY - 64)) << row.x << ", " << row.y;
  }
}

TEST_F(ToolTest, a_note_taken_away_as_its_pass_begins_is_not_drawn) {
  struct TakingRenderer : ToolRenderer {
    bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
      taker->SetMouseHUD(nullptr);
      return ToolRenderer::BeginRender(viewport, camera, mode);
    }
    Tool* taker = nullptr;
  } renderer;
  renderer.taker = &tool;
  DynamicIcon2D mouseNote = MakeNote(1);
  DynamicIcon2D viewNote = MakeNote(2);
  tool.SetRenderer(&renderer);
  tool.SetMouseHUD(&mouseNote);
  tool.SetViewportHUD(&viewNote);
  tool.SetDrawOnlyWhileOperating(false);
  tool.OnDraw();
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 1);
}

// A host's own tool says that a shot of it runs, and not which.
TEST_F(ToolTest, a_shot_of_a_tool_that_says_it_flies_is_cut_off_with_it) {
  SpinShotParameters spin;
  spin.duration = 10.0;
  bench.hub.BeginShot(spin);
  tool.SetAnimating(true);
  tool.EndGesture();
  EXPECT_FALSE(bench.hub.IsShotActive());
}
