#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>
#include <vector>

#include "story/open_storyboard.h"
#include "support/allocation_counter.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

// The panel stands at (0, 0). Sequence slides: 128 pixels, from x 15 on, 134 apart, y 15 to 143. Shots of the
// selected sequence: 64 pixels, centres at x 33, 103, 173 ... and y 167.
constexpr int SEQUENCE_X[] = {79, 213, 347, 481};
constexpr int SEQUENCE_Y = 79;
constexpr int SHOT_X[] = {33, 103, 173, 243};
constexpr int SHOT_Y = 180;
constexpr int TITLE_Y = 243;

struct PanelTest : StoryboardTest {
  Sequence* AddSelected(int shots) {
    Sequence* const sequence = AddSequence(shots);
    board->SetSelectedSequence(sequence);
    Frame();
    Forget();
    return sequence;
  }
  void Press(int x, int y) {
    board->OnMouseMove(x, y);
    ASSERT_TRUE(board->OnLeftMouseDown(x, y));
  }
  void Drag(int fromX, int fromY, int toX, int toY) {
    Press(fromX, fromY);
    board->OnMouseMove((fromX + toX) / 2, (fromY + toY) / 2);
    board->OnMouseMove(toX, toY);
    board->OnLeftMouseUp(toX, toY);
  }
  std::vector<std::wstring> NamesOf(const Sequence& sequence) const {
    std::vector<std::wstring> names;
    for (std::uint64_t i = 0; i < sequence.GetShotCount(); ++i)
      names.push_back(sequence.GetShot(i)->GetName());
    return names;
  }
};
using Names = std::vector<std::wstring>;

// ---- where the mouse is ----

TEST_F(PanelTest, the_mouse_is_on_the_panel_over_its_bar_and_its_slides) {
  AddSelected(2);
  struct Row {
    int x, y;
    bool on;
  };
  for (const Row& row : {Row{7, 227, true}, Row{192, 258, true}, Row{193, 243, false}, Row{100, 259, false},
                         Row{15, 15, true}, Row{142, 79, true}, Row{146, 40, false}, Row{149, 79, true},
                         Row{33, 167, true}, Row{600, 400, false}, Row{600, 79, false}}) {
    board->OnMouseMove(row.x, row.y);
    EXPECT_EQ(board->IsMouseInRegion(), row.on) << row.x << ", " << row.y;
  }
  board->OnMouseMove(79, 79);
  board->SetVisible(false);
  EXPECT_FALSE(board->IsMouseInRegion());
  EXPECT_FALSE(board->OnMouseMove(79, 79));
  EXPECT_FALSE(board->OnLeftMouseDown(79, 79));
  EXPECT_FALSE(board->OnLeftMouseUp(79, 79));
}

TEST_F(PanelTest, the_title_buttons_act_at_the_press_and_say_their_part_first) {
  AddSelected(1);
  Press(142, TITLE_Y);
  EXPECT_EQ(journal.Take(), (Lines{"part 4"}));
  EXPECT_TRUE(board->GetLoop());
  board->OnLeftMouseUp(142, TITLE_Y);
  EXPECT_TRUE(Click(142, TITLE_Y));
  EXPECT_EQ(journal.Take(), (Lines{"part 5"}));
  EXPECT_FALSE(board->GetLoop());
  Click(100, TITLE_Y);
  EXPECT_EQ(journal.Take(), (Lines{"part 0", "plays story"}));
  Click(100, TITLE_Y);
  EXPECT_EQ(journal.Take(), (Lines{"part 1", "stopped"}));
  Click(100, TITLE_Y);
  EXPECT_EQ(journal.Take(), (Lines{"part 2", "resumed"}));
  Click(121, TITLE_Y);
  EXPECT_EQ(journal.Take(), (Lines{"part 3", "stopped"}));
  Click(175, TITLE_Y);
  EXPECT_EQ(journal.Take(), (Lines{"part 6", "editor visible 0", "closed"}));
  EXPECT_FALSE(board->IsVisible());
}

TEST_F(PanelTest, title_buttons_are_squares_of_eight_pixels_to_each_side) {
  for (const auto& [x, y, hit] : std::vector<std::tuple<int, int, bool>>{{134, 243, true},
                                                                         {133, 243, false},
                                                                         {149, 243, true},
                                                                         {150, 243, false},
                                                                         {142, 235, true},
                                                                         {142, 250, true},
                                                                         {142, 234, false}}) {
    const bool before = board->GetLoop();
    Click(x, y);
    EXPECT_EQ(board->GetLoop() != before, hit) << x << ", " << y;
  }
}

// ---- clicks on slides ----

TEST_F(PanelTest, a_click_on_the_slide_that_adds_makes_a_sequence_with_a_shot) {
  EXPECT_TRUE(Click(SEQUENCE_X[0], SEQUENCE_Y));
  ASSERT_EQ(board->GetStory()->GetSequenceCount(), 1U);
  Sequence* const sequence = board->GetStory()->GetSequence(0);
  EXPECT_EQ(sequence->GetShotCount(), 1U);
  EXPECT_EQ(board->GetSelectedSequence(), sequence);
  EXPECT_EQ(editor.GetShot(), sequence->GetShot(0));
  EXPECT_EQ(journal.Take(), (Lines{"part 7", "editor transfers 0", "editor visible 1", "created"}));
  EXPECT_TRUE(queue.Undo());
  EXPECT_TRUE(board->GetStory()->IsEmpty());
  EXPECT_EQ(editor.GetShot(), nullptr);
  EXPECT_TRUE(queue.Redo());
  EXPECT_EQ(board->GetStory()->GetSequence(0), sequence);
  EXPECT_EQ(editor.GetShot(), sequence->GetShot(0));
  EXPECT_FALSE(queue.Redo());
}

TEST_F(PanelTest, without_an_editor_nothing_is_added) {
  board->SetShotEditor(nullptr);
  Click(SEQUENCE_X[0], SEQUENCE_Y);
  EXPECT_TRUE(board->GetStory()->IsEmpty());
  EXPECT_FALSE(queue.CanUndo());
}

TEST_F(PanelTest, the_buttons_of_a_sequence_play_pause_resume_and_target) {
  Sequence* const sequence = AddSelected(1);
  const int playX = SEQUENCE_X[0] + 47;
  const int playY = SEQUENCE_Y + 46;
  Click(playX, playY);
  EXPECT_EQ(journal.Take(), (Lines{"part 8", "plays sequence"}));
  Click(playX, playY);
  EXPECT_EQ(journal.Take(), (Lines{"part 9", "stopped"}));
  Click(playX, playY);
  EXPECT_EQ(journal.Take(), (Lines{"part 10", "resumed"}));
  Click(playX, SEQUENCE_Y - 30);
  EXPECT_EQ(journal.Take(), (Lines{"part 11", "stopped", "targets"}));
  FramesFor(400);
  EXPECT_EQ(hub.view.eye, sequence->GetShot(0)->GetCameraParameters().eye);
}

TEST_F(PanelTest, the_body_of_a_sequence_selects_it) {
  AddSequence(1);
  Sequence* const second = AddSequence(2);
  Click(SEQUENCE_X[1], SEQUENCE_Y);
  EXPECT_EQ(board->GetSelectedSequence(), second);
  Click(SEQUENCE_X[1], SEQUENCE_Y - 20);
  EXPECT_EQ(journal.Take(), (Lines{"part 12", "part 13"}));
}

TEST_F(PanelTest, the_buttons_of_a_shot_play_pause_resume_and_target) {
  AddSelected(2);
  const int playX = SHOT_X[1] + 20;
  Click(playX, 167 + 20);
  EXPECT_EQ(journal.Take(), (Lines{"part 15", "plays shot"}));
  Click(playX, 167 + 20);
  EXPECT_EQ(journal.Take(), (Lines{"part 16", "stopped"}));
  Click(playX, 167 + 20);
  EXPECT_EQ(journal.Take(), (Lines{"part 17", "resumed"}));
  Click(SHOT_X[0] + 20, 167 + 20);
  EXPECT_EQ(journal.Take(), (Lines{"part 15", "plays shot"}));
  Click(playX, 167 - 4);
  EXPECT_EQ(journal.Take(), (Lines{"part 18", "stopped", "targets"}));
}

TEST_F(PanelTest, the_body_of_a_shot_selects_it_and_shows_it_to_the_editor) {
  Sequence* const sequence = AddSelected(2);
  Click(SHOT_X[1], SHOT_Y);
  EXPECT_EQ(journal.Take(), (Lines{"part 19", "editor transfers 0"}));
  EXPECT_EQ(editor.GetShot(), sequence->GetShot(1));
  EXPECT_FALSE(editor.visible);
}

TEST_F(PanelTest, the_slide_behind_the_shots_adds_one) {
  Sequence* const sequence = AddSelected(2);
  Click(SHOT_X[2], SHOT_Y);
  EXPECT_EQ(sequence->GetShotCount(), 3U);
  EXPECT_EQ(journal.lines.front(), "part 14");
  EXPECT_EQ(journal.lines.back(), "created");
  queue.Undo();
  EXPECT_EQ(sequence->GetShotCount(), 2U);
}

TEST_F(PanelTest, in_presentation_nothing_is_added_deleted_or_moved_and_no_menu_opens) {
  Sequence* const sequence = AddSelected(2);
  ShotSpecification* const first = sequence->GetShot(0);
  board->SetMode(Storyboard::MODE_PRESENTING);
  EXPECT_EQ(board->CreateShot(sequence), nullptr);
  EXPECT_EQ(board->CreateSequence(), nullptr);
  EXPECT_FALSE(board->DeleteShot(first));
  EXPECT_FALSE(board->MoveShot(first, nullptr));
  EXPECT_FALSE(board->MoveSequence(sequence, nullptr));
  EXPECT_FALSE(board->EditShot(first));
  EXPECT_FALSE(board->CanRecordWalk());
  Drag(SHOT_X[0], SHOT_Y, SHOT_X[1] + 20, SHOT_Y);
  EXPECT_EQ(sequence->GetShot(0), first);
  board->OnMouseMove(SHOT_X[0], SHOT_Y);
  EXPECT_FALSE(board->OnRightMouseDown(SHOT_X[0], SHOT_Y));
  EXPECT_FALSE(board->OpenMenu());
  EXPECT_FALSE(queue.CanUndo());
  EXPECT_FALSE(Click(SHOT_X[2], SHOT_Y));  // no slide that adds
  Click(SHOT_X[0] + 20, 167 + 20);
  EXPECT_TRUE(board->IsPlayingBack());
}

// ---- drags ----

TEST_F(PanelTest, a_click_and_a_drag_are_told_apart_by_the_way_to_the_side_alone) {
  Sequence* const sequence = AddSelected(2);
  Press(SHOT_X[0], SHOT_Y);
  board->OnMouseMove(SHOT_X[0] + 2, SHOT_Y - 300);
  EXPECT_FALSE(board->DraggingStoryBoardItem());
  board->OnMouseMove(SHOT_X[0] + 3, SHOT_Y - 300);
  EXPECT_TRUE(board->DraggingStoryBoardItem());
  board->OnMouseMove(SHOT_X[0], SHOT_Y);  // it stays a drag
  EXPECT_TRUE(board->DraggingStoryBoardItem());
  board->OnLeftMouseUp(SHOT_X[0], SHOT_Y);
  EXPECT_FALSE(board->DraggingStoryBoardItem());
  EXPECT_TRUE(journal.lines.empty());
  Press(SHOT_X[0], SHOT_Y);
  board->OnLeftMouseUp(SHOT_X[0] + 2, SHOT_Y + 5);
  EXPECT_EQ(board->GetParts().slides.GetSelectedShot(sequence), sequence->GetShot(0));
}

TEST_F(PanelTest, a_shot_is_dragged_before_or_behind_another) {
  Sequence* const sequence = AddSelected(3);
  Drag(SHOT_X[0], SHOT_Y, SHOT_X[2] + 10, SHOT_Y);
  EXPECT_EQ(NamesOf(*sequence), (Names{L"shot 2", L"shot 3", L"shot 1"}));
  Drag(SHOT_X[2], SHOT_Y, SHOT_X[1] - 10, SHOT_Y);
  EXPECT_EQ(NamesOf(*sequence), (Names{L"shot 2", L"shot 1", L"shot 3"}));
  Drag(SHOT_X[0], SHOT_Y, SHOT_X[3], SHOT_Y);  // on the slide that adds: to the end
  EXPECT_EQ(NamesOf(*sequence), (Names{L"shot 1", L"shot 3", L"shot 2"}));
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(queue.Undo());
  EXPECT_EQ(NamesOf(*sequence), (Names{L"shot 1", L"shot 2", L"shot 3"}));
  EXPECT_FALSE(queue.Undo());
}

TEST_F(PanelTest, a_drag_that_lands_beside_its_own_place_loses_nothing) {
  Sequence* const sequence = AddSelected(3);
  Drag(SHOT_X[1], SHOT_Y, SHOT_X[0] + 10, SHOT_Y);  // behind the one before
  Drag(SHOT_X[1], SHOT_Y, SHOT_X[2] - 10, SHOT_Y);  // before the one behind
  Drag(SHOT_X[1], SHOT_Y, 900, 500);                // nowhere
  EXPECT_EQ(NamesOf(*sequence), (Names{L"shot 1", L"shot 2", L"shot 3"}));
}

TEST_F(PanelTest, a_drag_that_lands_nowhere_puts_its_slide_back_at_once) {
  AddSelected(2);
  const auto& shots = board->GetParts().slides.shots;
  const double place = shots[0].x;
  Press(SHOT_X[0], SHOT_Y);
  board->OnMouseMove(SHOT_X[0] + 300, 400);
  EXPECT_NE(shots[0].x, place);
  Forget();
  board->OnLeftMouseUp(SHOT_X[0] + 300, 400);
  EXPECT_EQ(shots[0].x, place);
  EXPECT_GE(hub.requested, 1);
}

TEST_F(PanelTest, a_sequence_is_dragged) {
  Sequence* const first = AddSequence(1);
  Sequence* const second = AddSequence(1);
  Frame();
  Drag(SEQUENCE_X[0], SEQUENCE_Y, SEQUENCE_X[1] + 20, SEQUENCE_Y);
  EXPECT_EQ(board->GetStory()->GetSequence(0), second);
  EXPECT_EQ(board->GetStory()->GetSequence(1), first);
  queue.Undo();
  EXPECT_EQ(board->GetStory()->GetSequence(0), first);
}

TEST_F(PanelTest, a_shot_that_the_host_deletes_in_its_drag_lands_nowhere) {
  Sequence* const sequence = AddSelected(3);
  Press(SHOT_X[0], SHOT_Y);
  board->OnMouseMove(SHOT_X[2], SHOT_Y);
  sequence->DeleteShot(sequence->GetShot(2));
  Frame();
  sequence->DeleteShot(sequence->GetShot(0));
  Frame();
  board->OnLeftMouseUp(SHOT_X[2], SHOT_Y);
  EXPECT_EQ(NamesOf(*sequence), (Names{L"shot 2"}));
  EXPECT_FALSE(queue.CanUndo());
}

TEST_F(PanelTest, with_control_held_a_drag_scrolls) {
  for (int i = 0; i < 10; ++i) AddSequence(1);
  Frame();
  board->OnKeyDown(KEY_CONTROL);
  Drag(SEQUENCE_X[2], SEQUENCE_Y, SEQUENCE_X[2] - 100, SEQUENCE_Y);
  EXPECT_EQ(board->GetParts().slides.scrollOffset, -100);
  EXPECT_FALSE(queue.CanUndo());
  Drag(SEQUENCE_X[2], SEQUENCE_Y, SEQUENCE_X[2] + 300, SEQUENCE_Y);
  EXPECT_EQ(board->GetParts().slides.scrollOffset, 0);  // no further than the row
  board->OnKeyUp(KEY_CONTROL);
  Drag(SEQUENCE_X[2], SEQUENCE_Y, SEQUENCE_X[1] - 20, SEQUENCE_Y);
  EXPECT_TRUE(queue.CanUndo());
}

TEST_F(PanelTest, a_press_above_the_sequences_scrolls_the_shots) {
  AddSelected(30);
  ASSERT_GT(board->GetParts().slides.stacks.right, 0);
  board->OnKeyDown(KEY_CONTROL);
  Drag(500, SHOT_Y, 300, SHOT_Y);
  EXPECT_EQ(board->GetParts().slides.shotScrollOffset, -200);
  EXPECT_EQ(board->GetParts().slides.scrollOffset, 0);
  EXPECT_GT(board->GetParts().slides.stacks.left, 0);
  Drag(500, SHOT_Y, 900, SHOT_Y);
  EXPECT_EQ(board->GetParts().slides.shotScrollOffset, 0);
}

// ---- the context menu ----

TEST_F(PanelTest, the_menu_opens_on_the_shot_under_the_mouse) {
  Sequence* const sequence = AddSelected(2);
  EXPECT_FALSE(board->OnRightMouseDown(SEQUENCE_X[2], 20));
  EXPECT_FALSE(board->OpenMenu());
  EXPECT_TRUE(board->OnRightMouseDown(SHOT_X[1], SHOT_Y));
  EXPECT_TRUE(board->OpenMenu());
  EXPECT_EQ(renderer.CountCalls("OpenMenu"), 1);
  EXPECT_EQ(board->GetShotForOpenMenu(), sequence->GetShot(1));
  Press(SHOT_X[0], SHOT_Y);
  EXPECT_FALSE(board->OpenMenu());  // not in a press
  board->OnLeftMouseUp(SHOT_X[0], SHOT_Y);
  sequence->DeleteShot(sequence->GetShot(1));
  EXPECT_EQ(board->GetShotForOpenMenu(), nullptr);
}

// ---- keys ----

TEST_F(PanelTest, keys_scroll_delete_stop_and_play) {
  Sequence* const sequence = AddSelected(2);
  EXPECT_FALSE(board->OnKeyDown(KEY_SHIFT));
  EXPECT_TRUE(board->OnKeyDown(KEY_RIGHT));
  EXPECT_EQ(board->GetParts().slides.scrollOffset, 5);
  EXPECT_TRUE(board->OnKeyDown(KEY_LEFT));
  EXPECT_TRUE(board->OnKeyDown(KEY_LEFT));
  EXPECT_EQ(board->GetParts().slides.scrollOffset, -5);
  EXPECT_FALSE(board->OnKeyDown(KEY_DELETE));
  board->OnMouseMove(SHOT_X[0], SHOT_Y);
  EXPECT_TRUE(board->OnKeyDown(KEY_DELETE));
  EXPECT_EQ(NamesOf(*sequence), (Names{L"shot 2"}));
  EXPECT_FALSE(board->OnKeyDown(KEY_ESCAPE));
  journal.lines.clear();
  EXPECT_TRUE(board->OnKeyDown(KEY_SPACE));
  EXPECT_TRUE(board->OnKeyDown(KEY_SPACE));
  EXPECT_TRUE(board->OnKeyDown(KEY_SPACE));
  EXPECT_EQ(journal.lines, (Lines{"plays story", "stopped", "resumed"}));
  EXPECT_TRUE(board->OnKeyDown(KEY_ESCAPE));
  EXPECT_FALSE(board->IsPlayingBack());
  board->SetVisible(false);
  EXPECT_FALSE(board->OnKeyDown(KEY_SPACE));
}

// ---- tooltips ----

TEST_F(PanelTest, tells_what_is_under_the_mouse) {
  AddSelected(1);
  struct Row {
    int x, y, text;
  };
  for (const Row& row :
       {Row{100, 243, 75}, Row{121, 243, 77}, Row{142, 243, 78}, Row{175, 243, 79}, Row{213, 79, 80},
        Row{79 + 47, 79 + 46, 81}, Row{79 + 47, 79 - 30, 82}, Row{79, 79, 85}, Row{103, 180, 83},
        Row{53, 187, 84}, Row{53, 163, 82}, Row{20, 180, 85}}) {
    board->OnMouseMove(row.x, row.y);
    EXPECT_EQ(board->GetTooltip(), L"text " + std::to_wstring(row.text)) << row.x << ", " << row.y;
  }
  board->OnMouseMove(600, 400);
  EXPECT_TRUE(board->GetTooltip().empty());
}

// ---- pictures ----

TEST_F(PanelTest, where_slides_overlap_the_selected_one_is_under_the_mouse) {
  board->SetViewportSize(300, 600);
  for (int i = 0; i < 12; ++i) AddSequence(1);
  const auto& slides = board->GetParts().slides.sequences;
  board->SetSelectedSequence(board->GetStory()->GetSequence(0));
  Frame();
  const Box2 first = slides[0].GetBounds();
  int overlaps = 0;
  for (int x = static_cast<int>(first.Min().x) + 1; x < first.Max().x; ++x) {
    const Vector2 point(x, first.center.y);
    const auto lies = [&](const auto& each) { return each.GetBounds().IsPointInside(point); };
    if (!std::any_of(slides.begin() + 1, slides.end(), lies)) continue;
    ++overlaps;
    board->OnMouseMove(x, static_cast<int>(point.y));
    EXPECT_TRUE(slides[0].highlighted) << x;
  }
  EXPECT_GT(overlaps, 0);
}

TEST_F(PanelTest, slides_and_their_buttons_lie_where_a_click_finds_them) {
  Sequence* const sequence = AddSelected(2);
  const ShotSpecification* const none = nullptr;
  Box2 bounds;
  for (std::uint64_t i = 0; i < 2; ++i) {
    ASSERT_TRUE(board->GetSlideBounds(sequence->GetShot(i), Storyboard::SLIDE_ITSELF, bounds));
    EXPECT_TRUE(bounds.IsPointInside(Vector2(SHOT_X[i], SHOT_Y))) << i;
    ASSERT_TRUE(board->GetSlideBounds(sequence->GetShot(i), Storyboard::SLIDE_PLAY, bounds));
    Click(static_cast<int>(bounds.center.x), static_cast<int>(bounds.center.y));
    EXPECT_TRUE(board->IsPlayingBack()) << i;
    board->StopPlayback();
  }
  ASSERT_TRUE(board->GetSlideBounds(sequence, Storyboard::SLIDE_PLAY, bounds));
  Click(static_cast<int>(bounds.center.x), static_cast<int>(bounds.center.y));
  EXPECT_TRUE(board->IsPlayingBack());
  // The one that adds has no buttons, and what is not there has no place.
  EXPECT_TRUE(board->GetSlideBounds(none, Storyboard::SLIDE_ITSELF, bounds));
  EXPECT_FALSE(board->GetSlideBounds(none, Storyboard::SLIDE_PLAY, bounds));
  const ShotSpecification foreign(hub.view);
  EXPECT_FALSE(board->GetSlideBounds(&foreign, Storyboard::SLIDE_ITSELF, bounds));
}

TEST_F(PanelTest, the_last_of_a_stack_shows_that_others_lie_under_it) {
  board->SetViewportSize(300, 600);
  for (int i = 0; i < 12; ++i) AddSequence(1);
  board->SetSelectedSequence(board->GetStory()->GetSequence(6));
  for (int i = 0; i < 3; ++i) Frame();
  Forget();
  Frame();
  const auto& slides = board->GetParts().slides.sequences;
  const auto countDrawn = [&](TextureID id) {
    const auto& calls = renderer.GetCalls();
    return std::count(calls.begin(), calls.end(), "RenderResource(" + std::to_string(id) + ")");
  };
  const auto left =
      std::count_if(slides.begin(), slides.end(), [](const auto& each) { return each.fadeLeft; });
  const auto right =
      std::count_if(slides.begin(), slides.end(), [](const auto& each) { return each.fadeRight; });
  EXPECT_EQ(countDrawn(TEXTURE_SEQUENCE_STACK_LEFT), left);
  EXPECT_EQ(countDrawn(TEXTURE_SEQUENCE_STACK_RIGHT), right);
  EXPECT_GT(left + right, 0);
}

TEST_F(PanelTest, a_frame_that_finds_a_shot_gone_asks_for_another_one) {
  Sequence* const sequence = AddSelected(2);
  for (int i = 0; i < 4; ++i) Frame();
  Forget();
  Frame();
  EXPECT_EQ(hub.requested, 0);
  sequence->DeleteShot(sequence->GetShot(1));
  Forget();
  Frame();
  EXPECT_EQ(hub.requested, 1);
}

TEST_F(PanelTest, a_slide_that_rests_offers_to_play_and_one_that_plays_to_pause) {
  Sequence* const sequence = AddSelected(1);
  const auto shows = [&](TextureID id) {
    const auto& calls = renderer.GetCalls();
    return std::count(calls.begin(), calls.end(), "RenderResource(" + std::to_string(id) + ")") > 0;
  };
  board->OnMouseMove(SHOT_X[0], SHOT_Y);
  Forget();
  Frame();
  EXPECT_TRUE(shows(TEXTURE_SHOT_PLAY));
  EXPECT_FALSE(shows(TEXTURE_SHOT_PAUSE));
  board->PlaybackSingleShot(sequence->GetShot(0));
  Frame();
  Forget();
  Frame();
  EXPECT_FALSE(shows(TEXTURE_SHOT_PLAY));
  EXPECT_TRUE(shows(TEXTURE_SHOT_PAUSE));
}

TEST_F(PanelTest, makes_one_picture_of_the_scene_a_frame_and_each_once) {
  AddSequence(3);
  board->SetSelectedSequence(board->GetStory()->GetSequence(0));
  for (int made = 1; made <= 4; ++made) {
    Forget();
    Frame();
    EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 1);
    EXPECT_GT(hub.requested, 0);
  }
  Forget();
  Frame();
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 0);
  EXPECT_EQ(renderer.CountCalls("CreateTextLabel"), 0);
}

/// A host that acts once, where it is first asked for a label.
class LabelHost : public RecordingRenderer {
 public:
  DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int width, int height) override {
    if (const std::function<void()> once = std::exchange(act, nullptr)) once();
    return RecordingRenderer::CreateTextLabel(text, size, width, height);
  }
  std::function<void()> act;
};

// The slides stay as they are until the drag is over, also those of shots that are gone.
TEST_F(PanelTest, makes_no_more_pictures_once_a_slide_is_dragged) {
  LabelHost host;
  Sequence* const sequence = AddSelected(3);
  board->SetRenderer(&host);
  host.act = [&] {
    Press(SHOT_X[0], SHOT_Y);
    board->OnMouseMove(SHOT_X[0] + 20, SHOT_Y);
    sequence->DeleteShot(sequence->GetShot(2));
  };
  Frame();
  EXPECT_TRUE(board->DraggingStoryBoardItem());
  EXPECT_EQ(host.CountCalls("CreateTextLabel"), 1);
  EXPECT_EQ(host.CountCalls("CreateSceneScreenshot"), 0);
  board->OnLeftMouseUp(SHOT_X[0] + 20, SHOT_Y);
  Frame();
  EXPECT_EQ(host.CountCalls("CreateTextLabel"), 3);  // the sequence's, and two shots'
  board.reset();
  EXPECT_EQ(host.GetLiveIconCount(), 0);
}

TEST_F(PanelTest, asks_for_no_frame_while_nobody_can_make_its_pictures) {
  const std::function<void()> ends[] = {[this] { board->SetRenderer(nullptr); },
                                        [this] { board->Destroy(); }};
  AddSelected(3);
  for (const auto& end : ends) {
    board->SetRenderer(&renderer);
    end();
    board->OnMouseMove(SHOT_X[0], SHOT_Y);
    Frame();
    Forget();
    Frame();
    EXPECT_EQ(hub.requested, 0);
  }
}

TEST_F(PanelTest, gives_all_pictures_back) {
  Sequence* const sequence = AddSelected(3);
  for (int i = 0; i < 6; ++i) Frame();
  const int live = renderer.GetLiveIconCount();
  sequence->DeleteShot(sequence->GetShot(2));
  Frame();
  EXPECT_EQ(renderer.GetLiveIconCount(), live - 2);
  board->Destroy();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(renderer.GetForeignDestroyCount(), 0);
  board->Create();
  Frame();
  RecordingRenderer other;
  board->SetRenderer(&other);
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  Frame();
  board.reset();
  EXPECT_EQ(other.GetLiveIconCount(), 0);
}

TEST_F(PanelTest, a_renderer_that_makes_no_picture_is_asked_once) {
  renderer.FailAlways("CreateSceneScreenshot");
  renderer.FailAlways("CreateTextLabel");
  AddSelected(1);
  for (int i = 0; i < 5; ++i) Frame();
  Forget();
  Frame();
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 0);
  EXPECT_EQ(renderer.CountCalls("CreateTextLabel"), 0);
}

TEST_F(PanelTest, the_textures_are_held_while_it_shows) {
  board->SetVisible(false);
  renderer.ClearCalls();
  board->SetVisible(true);
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 45 + 4);
  board->SetVisible(true);
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), 45 + 4);
  board->SetVisible(false);
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 45 + 4);
}

TEST_F(PanelTest, a_frame_and_a_move_allocate_nothing) {
  AddSelected(100);
  for (int i = 0; i < 120; ++i) Frame();
  board->PlaybackSequence(board->GetSelectedSequence());
  renderer.ClearCalls();
  for (int i = 0; i < 5; ++i) {
    Frame();
    board->OnMouseMove(300 + i, SHOT_Y);
  }
  board->SetRenderer(nullptr);  // its log allocates
  board->OnMouseMove(300, SHOT_Y);
  const AllocationCounter counter;
  for (int i = 0; i < 20; ++i) {
    board->OnMouseMove(100 + 20 * i, SHOT_Y - i);
    board->Draw();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

// ---- edits ----

TEST_F(PanelTest, a_story_that_is_null_changes_nothing) {
  Sequence* const sequence = AddSelected(1);
  Story* const story = board->GetStory();
  board->SetStory(nullptr);
  EXPECT_EQ(board->GetStory(), story);
  EXPECT_EQ(story->GetSequence(0), sequence);
  board->SetStory(story);
  EXPECT_EQ(story->GetSequence(0), sequence);
}

TEST_F(PanelTest, the_sequence_goes_with_its_last_shot_in_one_step) {
  Sequence* const sequence = AddSelected(1);
  ShotSpecification* const shot = sequence->GetShot(0);
  EXPECT_TRUE(board->DeleteShot(shot));
  EXPECT_TRUE(board->GetStory()->IsEmpty());
  EXPECT_TRUE(queue.Undo());
  EXPECT_FALSE(queue.CanUndo());
  EXPECT_EQ(board->GetStory()->GetSequence(0), sequence);
  EXPECT_EQ(sequence->GetShot(0), shot);
}

TEST_F(PanelTest, without_an_undo_queue_edits_are_made_at_once) {
  Sequence* const sequence = AddSelected(2);
  board->SetUndoQueue(nullptr);
  EXPECT_TRUE(board->MoveShot(sequence->GetShot(0), nullptr));
  EXPECT_EQ(NamesOf(*sequence), (Names{L"shot 2", L"shot 1"}));
  EXPECT_TRUE(board->DeleteShot(sequence->GetShot(0)));
  EXPECT_TRUE(board->DeleteShot(sequence->GetShot(0)));
  EXPECT_TRUE(board->GetStory()->IsEmpty());
}

TEST_F(PanelTest, names_are_the_lowest_that_are_free) {
  renderer.FailAlways("LoadStringResource");
  Sequence* const sequence = board->CreateSequence();
  EXPECT_EQ(sequence->GetName(), L"Sequence #1");
  for (int i = 0; i < 2; ++i) board->CreateShot(sequence);
  EXPECT_EQ(NamesOf(*sequence), (Names{L"Shot #1", L"Shot #2", L"Shot #3"}));
  board->DeleteShot(sequence->GetShot(1));
  EXPECT_EQ(board->CreateShot(sequence)->GetName(), L"Shot #2");
  EXPECT_EQ(board->CreateSequence()->GetName(), L"Sequence #2");
}

TEST_F(PanelTest, a_refused_target_leaves_what_plays) {
  Sequence* const empty = AddSequence(0);
  AddSequence(1);
  board->PlaybackSequence(board->GetStory()->GetSequence(1));
  EXPECT_FALSE(board->TargetShot(nullptr));
  EXPECT_FALSE(board->TargetSequence(empty));
  EXPECT_TRUE(board->IsPlayingBack());
}

TEST_F(PanelTest, the_mark_of_a_menu_goes_with_the_next_move) {
  AddSelected(1);
  board->OnRightMouseDown(SHOT_X[0], SHOT_Y);
  board->OpenMenu();
  EXPECT_TRUE(board->GetParts().slides.shots[0].menuOpen);
  board->OnMouseMove(600, 400);
  EXPECT_FALSE(board->GetParts().slides.shots[0].menuOpen);
  EXPECT_NE(board->GetShotForOpenMenu(), nullptr);
}

// ---- the end of it ----

TEST_F(PanelTest, the_mark_of_a_menu_goes_with_a_press_without_a_move) {
  AddSelected(1);
  board->OnRightMouseDown(SHOT_X[0], SHOT_Y);
  board->OpenMenu();
  board->OnLeftMouseDown(SHOT_X[0], SHOT_Y);
  board->OnLeftMouseUp(SHOT_X[0], SHOT_Y);
  EXPECT_FALSE(board->GetParts().slides.shots[0].menuOpen);
}

TEST_F(PanelTest, what_plays_leaves_no_record_open_whatever_ends_it) {
  AddSelected(1);
  const std::function<void()> ends[] = {[this] { board.reset(); }, [this] { board->SetKorvane(nullptr); },
                                        [this] { board->Destroy(); }};
  int begun = 0;
  for (auto end = std::rbegin(ends); end != std::rend(ends); ++end) {
    board->SetKorvane(&hub);
    ASSERT_TRUE(board->PlaybackStory(board->GetStory()));
    ++begun;
    Frame();
    (*end)();
    EXPECT_TRUE(history.Has(begun, begun));
    EXPECT_FALSE(hub.IsShotActive());
  }
}

TEST_F(PanelTest, a_host_that_draws_within_a_call_neither_begins_nor_ends_a_playback) {
  Sequence* const sequence = AddSelected(2);
  hub.onApply = [this] { board->Draw(); };
  hub.onEndShotHook = [this](Shot*) { board->Draw(); };
  board->PlaybackSequence(sequence);
  EXPECT_TRUE(board->IsPlayingBack());
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), sequence->GetShot(0));
  board->PausePlayback();
  EXPECT_TRUE(board->IsPaused());
  EXPECT_FALSE(board->IsPlayingBack());
  board->ResumePlayback();
  EXPECT_EQ(board->GetParts().playback.GetCurrentShot(), sequence->GetShot(0));
  board->StopPlayback();
  EXPECT_FALSE(board->IsPlayingBack());
  hub.onApply = nullptr;
  hub.onEndShotHook = nullptr;
}

// ---- the slots ----

TEST(StoryboardSlots, stand_in_their_order) {
  const std::vector<int> slots = {
      VirtualSlot(&Storyboard::SetKorvane),       VirtualSlot(&Storyboard::SetRenderer),
      VirtualSlot(&Storyboard::SetRewindHistory), VirtualSlot(&Storyboard::SetShotEditor),
      VirtualSlot(&Storyboard::SetUndoQueue),     VirtualSlot(&Storyboard::Create),
      VirtualSlot(&Storyboard::Destroy),          VirtualSlot(&Storyboard::Draw),
      VirtualSlot(&Storyboard::OnMouseMove),      VirtualSlot(&Storyboard::OnLeftMouseDown),
      VirtualSlot(&Storyboard::OnLeftMouseUp),    VirtualSlot(&Storyboard::OnRightMouseDown),
      VirtualSlot(&Storyboard::OnKeyDown),        VirtualSlot(&Storyboard::OnKeyUp),
      VirtualSlot(&Storyboard::OpenMenu)};
  EXPECT_EQ(slots, (std::vector<int>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
}

TEST(StoryboardObserverSlots, stand_in_their_order) {
  using Observer = StoryboardObserver;
  const std::vector<int> slots = {
      VirtualSlot(&Observer::OnOpened),           VirtualSlot(&Observer::OnClosed),
      VirtualSlot(&Observer::OnModeChanged),      VirtualSlot(&Observer::OnPartClicked),
      VirtualSlot(&Observer::OnShotCreated),      VirtualSlot(&Observer::OnPlaybackStory),
      VirtualSlot(&Observer::OnPlaybackSequence), VirtualSlot(&Observer::OnPlaybackSingleShot),
      VirtualSlot(&Observer::OnPreviewShot),      VirtualSlot(&Observer::OnPlaybackStopped),
      VirtualSlot(&Observer::OnPlaybackResumed),  VirtualSlot(&Observer::OnTargetShot)};
  EXPECT_EQ(slots, (std::vector<int>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
}

// The button that closes is at (175, 243) of the panel.
TEST_F(StoryboardTest, a_margin_counts_whichever_is_set_first) {
  board->SetMargin(12);
  board->Draw();
  EXPECT_FALSE(Click(175 - 8, 243 - 8));
  EXPECT_TRUE(board->IsVisible());
  board->SetPosition(100, 0);
  board->Draw();
  Click(100 + 175 + 12, 243 + 12);
  EXPECT_FALSE(board->IsVisible());
}

}  // namespace
