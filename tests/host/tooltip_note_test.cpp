// A tooltip by the rules of a desktop.
#include "zovhost/tooltip_note.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"

namespace {

using zovhost::TooltipNote;

class TooltipNoteTest : public testing::Test {
 protected:
  TooltipNoteTest() { note.SetRenderer(&renderer); }
  void Over(const std::wstring& text, int x, int y = 50) { note.Follow(text, x, y, false); }
  void Wait(std::uint32_t milliseconds) { platform.Advance(milliseconds); }

  ManualPlatform platform;
  RecordingRenderer renderer;
  MemoryHub hub;
  int frames = 0;
  TooltipNote note{[this] { ++frames; }};
};

TEST_F(TooltipNoteTest, shows_when_the_pointer_has_rested_for_half_a_second) {
  Over(L"Home", 10);
  Wait(499);
  EXPECT_FALSE(note.IsShown());
  Wait(1);
  EXPECT_TRUE(note.IsShown());
  EXPECT_EQ(note.GetText(), L"Home");
  EXPECT_EQ(frames, 1);
  EXPECT_EQ(renderer.CountCalls("CreateTooltip"), 1);
}

TEST_F(TooltipNoteTest, a_pointer_that_moves_on_the_thing_has_not_rested) {
  Over(L"Home", 10);
  Wait(400);
  Over(L"Home", 11);
  Wait(400);
  EXPECT_FALSE(note.IsShown());
  Wait(100);
  EXPECT_TRUE(note.IsShown());
}

TEST_F(TooltipNoteTest, being_asked_again_is_no_motion) {
  Over(L"Home", 10);
  Wait(400);
  Over(L"Home", 10);
  Wait(100);
  EXPECT_TRUE(note.IsShown());
}

TEST_F(TooltipNoteTest, stays_while_the_pointer_moves_on_the_thing_and_goes_with_it) {
  Over(L"Home", 10);
  Wait(500);
  Over(L"Home", 20);
  EXPECT_TRUE(note.IsShown());
  Over(L"", 30);
  EXPECT_FALSE(note.IsShown());
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(frames, 2);
}

TEST_F(TooltipNoteTest, changes_at_once_from_one_thing_to_the_next) {
  Over(L"Home", 10);
  Wait(500);
  Over(L"Fit", 40);
  EXPECT_TRUE(note.IsShown());
  EXPECT_EQ(note.GetText(), L"Fit");
  EXPECT_EQ(renderer.GetLiveIconCount(), 1);
}

TEST_F(TooltipNoteTest, after_nothing_the_next_thing_takes_its_time) {
  Over(L"Home", 10);
  Wait(500);
  Over(L"", 20);
  Over(L"Fit", 40);
  EXPECT_FALSE(note.IsShown());
  Wait(500);
  EXPECT_TRUE(note.IsShown());
}

TEST_F(TooltipNoteTest, goes_with_a_press_until_the_pointer_comes_to_another_thing) {
  Over(L"Home", 10);
  Wait(500);
  note.Follow(L"Home", 10, 50, true);
  EXPECT_FALSE(note.IsShown());
  Over(L"Home", 11);
  Wait(1000);
  EXPECT_FALSE(note.IsShown());
  Over(L"Fit", 40);
  Wait(500);
  EXPECT_TRUE(note.IsShown());
}

TEST_F(TooltipNoteTest, what_has_no_text_during_a_press_is_no_other_thing_after_it) {
  Over(L"Home", 10);
  note.Follow(L"", 10, 50, true);
  Over(L"Home", 10);
  Wait(1000);
  EXPECT_FALSE(note.IsShown());
}

TEST_F(TooltipNoteTest, goes_when_it_is_dismissed_until_the_pointer_comes_to_another_thing) {
  Over(L"Home", 10);
  Wait(500);
  note.Dismiss();
  EXPECT_FALSE(note.IsShown());
  Over(L"Home", 20);
  Wait(1000);
  EXPECT_FALSE(note.IsShown());
  Over(L"Fit", 40);
  Wait(500);
  EXPECT_TRUE(note.IsShown());
}

TEST_F(TooltipNoteTest, what_comes_under_a_pointer_that_rests_has_no_note_until_it_moves) {
  Over(L"", 10);
  Over(L"Home", 10);
  Wait(1000);
  EXPECT_FALSE(note.IsShown());
  Over(L"Home", 11);
  Wait(500);
  EXPECT_TRUE(note.IsShown());
}

TEST_F(TooltipNoteTest, none_comes_during_a_press) {
  Over(L"Home", 10);
  note.Follow(L"Home", 10, 50, true);
  Wait(1000);
  EXPECT_FALSE(note.IsShown());
}

TEST_F(TooltipNoteTest, what_has_no_text_has_no_note) {
  Over(L"", 10);
  Wait(1000);
  EXPECT_FALSE(note.IsShown());
  EXPECT_EQ(renderer.CountCalls("CreateTooltip"), 0);
}

TEST_F(TooltipNoteTest, a_renderer_that_makes_nothing_of_the_text_and_none_at_all_show_nothing) {
  renderer.FailOnce("CreateTooltip");
  Over(L"Home", 10);
  Wait(500);
  EXPECT_FALSE(note.IsShown());
  note.SetRenderer(nullptr);
  Over(L"Fit", 10);
  Wait(500);
  EXPECT_FALSE(note.IsShown());
  note.Draw(hub, 800, 600);
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 0);
}

TEST_F(TooltipNoteTest, gives_its_picture_back_to_the_renderer_that_made_it) {
  Over(L"Home", 10);
  Wait(500);
  note.SetRenderer(nullptr);
  EXPECT_FALSE(note.IsShown());
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(renderer.GetForeignDestroyCount(), 0);
}

TEST_F(TooltipNoteTest, is_drawn_in_a_pass_of_its_own_while_it_shows) {
  note.Draw(hub, 800, 600);
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 0);
  Over(L"Home", 10);
  Wait(500);
  note.Draw(hub, 800, 600);
  note.Draw(hub, 0, 600);
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 1);
  EXPECT_EQ(renderer.CountCalls("EndRender"), 1);
}

TEST_F(TooltipNoteTest, a_pass_that_cannot_begin_draws_nothing) {
  Over(L"Home", 10);
  Wait(500);
  renderer.FailOnce("BeginRender");
  note.Draw(hub, 800, 600);
  EXPECT_EQ(renderer.CountCalls("EndRender"), 0);
}

}  // namespace
