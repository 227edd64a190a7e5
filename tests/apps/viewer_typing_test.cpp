// What the window asks where there is no desktop to ask it: answered by keys alone, no pointer is ever in the
// window.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "korvane/story.h"
#include "viewer_fixture.h"
#include "views/view_tools.h"
#include "zovhost/read_image.h"
#include "zovhost/story_file.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;
using zovview::StoryDesk;

class ViewerTypingTest : public ViewerTest {
 protected:
  StoryDesk& GetDesk() const { return viewer->GetDesk(); }
  zovview::ViewStory& GetStory() const { return viewer->GetView(0).GetStory(); }
  std::uint64_t CountShots() const {
    const Korvane::Sequence* const first = GetStory().GetBoard().GetStory()->GetFirstSequence();
    return first != nullptr ? first->GetShotCount() : 0;
  }
  void AddShot() { PressAndRest(SDLK_n); }
  void Ask(const char* command) {
    viewer->GetView(0).Run(*zovview::FindViewCommand(command));
    ComeToRest();
  }
  void ExpectQuestion(StoryDesk::Page page) const { ASSERT_EQ(GetDesk().GetPage(), page); }
  void AskForSquareWithChanges() {
    folder.Write("square.obj", SQUARE);
    AddShot();
    PressControl(SDLK_o);
    Type("square.obj");
    PressAndRest(SDLK_RETURN);
    ExpectQuestion(StoryDesk::Page::Losing);
  }
  std::vector<std::string> FindFiles() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.GetPath()))
      names.push_back(entry.path().filename().string());
    return names;
  }
};

// ---- models ----

TEST_F(ViewerTypingTest, a_model_is_opened_by_its_path) {
  const fs::path square = folder.Write("square.obj", SQUARE);
  PressControl(SDLK_o);
  ExpectQuestion(StoryDesk::Page::File);
  Type(square.string());
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

TEST_F(ViewerTypingTest, a_name_alone_is_one_beside_the_present_model) {
  folder.Write("square.obj", SQUARE);
  PressControl(SDLK_o);
  Type("square.obj");
  EXPECT_EQ(fs::path(GetDesk().GetPath()), "square.obj") << "instead of what was suggested";
  PressAndRest(SDLK_RETURN);
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

TEST_F(ViewerTypingTest, changes_that_are_to_be_saved_are_before_the_other_model_comes) {
  AskForSquareWithChanges();
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview") << "until that is answered";
  PressAndRest(SDLK_RETURN);
  ExpectQuestion(StoryDesk::Page::File);
  Type("mine.json");
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
  EXPECT_EQ(CountShots(), 0U);
  std::string error;
  const std::unique_ptr<Korvane::Story> kept =
      zovhost::StoryFile().Read(folder.GetPath() / "mine.json", error);
  ASSERT_NE(kept, nullptr) << error;
  EXPECT_EQ(kept->GetFirstSequence()->GetShotCount(), 1U);
}

TEST_F(ViewerTypingTest, changes_may_be_lost_by_the_button_that_arrows_lead_to) {
  AskForSquareWithChanges();
  PressAndRest(SDLK_RIGHT);  // from that which is marked at once
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
  EXPECT_EQ(FindFiles().size(), 2U) << "nothing is written";
}

TEST_F(ViewerTypingTest, changes_may_be_lost_by_the_button_that_tab_leads_to) {
  AskForSquareWithChanges();
  PressAndRest(SDLK_TAB);
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
  EXPECT_EQ(FindFiles().size(), 2U) << "nothing is written";
}

TEST_F(ViewerTypingTest, tab_goes_round_the_buttons_of_a_question_and_back_with_shift) {
  AskForSquareWithChanges();
  for (int i = 0; i < 3; ++i) PressAndRest(SDLK_TAB);
  PressAndRest(SDLK_TAB, KMOD_LSHIFT);  // from the first to the last, which cancels
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  EXPECT_EQ(CountShots(), 1U);
}

TEST_F(ViewerTypingTest, enter_is_the_question_s_answer_where_a_hand_has_marked_nothing) {
  AskForSquareWithChanges();
  PressAndRest(SDLK_SPACE);
  ExpectQuestion(StoryDesk::Page::File);  // saves, as that is marked at once
  Type("mine.json");
  PressAndRest(SDLK_RETURN);
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

TEST_F(ViewerTypingTest, tab_leads_from_the_text_to_the_buttons_and_back_to_it) {
  folder.Write("square.obj", SQUARE);
  PressControl(SDLK_o);
  Type("square.objx");
  for (int i = 0; i < 3; ++i) PressAndRest(SDLK_TAB);
  PressAndRest(SDLK_END);
  PressAndRest(SDLK_BACKSPACE);
  EXPECT_EQ(fs::path(GetDesk().GetPath()), "square.obj") << "is typed in again";
  PressAndRest(SDLK_TAB, KMOD_LSHIFT);
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen()) << "cancelled";
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
}

TEST_F(ViewerTypingTest, what_is_pressed_in_one_round_of_slow_frames_leads_on_from_the_text) {
  folder.Write("square.obj", SQUARE);
  PressControl(SDLK_o);
  PushText("square.obj");
  for (const SDL_Keycode key : {SDLK_TAB, SDLK_RETURN}) {
    PushKey(SDL_KEYDOWN, key);
    PushKey(SDL_KEYUP, key);
  }
  ComeToRest();
  EXPECT_FALSE(GetDesk().IsOpen()) << "by the button that opens";
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

TEST_F(ViewerTypingTest, tab_goes_through_the_lists_of_a_film_too) {
  AddShot();
  Ask("export-story");
  Type((folder.GetPath() / "film").string());
  for (int i = 0; i < 4; ++i) PressAndRest(SDLK_TAB);  // two lists, Export, Cancel
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_FALSE(fs::exists(folder.GetPath() / "film"));
}

TEST_F(ViewerTypingTest, who_keeps_the_changes_keeps_the_model) {
  AskForSquareWithChanges();
  PressAndRest(SDLK_ESCAPE);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  EXPECT_EQ(CountShots(), 1U);
}

TEST_F(ViewerTypingTest, a_story_may_be_named_where_models_are_asked_for) {
  std::string error;
  AddShot();
  ASSERT_TRUE(GetStory().Write(folder.GetPath() / "one.json", error)) << error;
  Ask("new-story");
  PressControl(SDLK_o);
  Type("one.json");
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_EQ(CountShots(), 1U);
}

// ---- pictures, stories and films ----

TEST_F(ViewerTypingTest, a_picture_is_written_where_it_is_typed) {
  PressControl(SDLK_s);
  ExpectQuestion(StoryDesk::Page::File);
  Type("front.png");
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  zovhost::Image picture;
  std::string error;
  ASSERT_TRUE(zovhost::ReadImage(folder.GetPath() / "front.png", picture, error)) << error;
  EXPECT_EQ(picture.width, WIDTH);
}

TEST_F(ViewerTypingTest, a_story_is_written_where_it_is_typed) {
  AddShot();
  Ask("save-story-as");
  ExpectQuestion(StoryDesk::Page::File);
  Type("kept.json");
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_FALSE(GetStory().IsChanged());
  EXPECT_TRUE(fs::exists(folder.GetPath() / "kept.json"));
}

TEST_F(ViewerTypingTest, a_place_that_cannot_be_written_is_typed_anew) {
  AddShot();
  Ask("save-story-as");
  Type("no folder/kept.json");
  PressAndRest(SDLK_RETURN);
  ExpectQuestion(StoryDesk::Page::File);
  EXPECT_NE(GetDesk().GetProblem(), "");
  Type("kept.json");
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_TRUE(fs::exists(folder.GetPath() / "kept.json"));
}

TEST_F(ViewerTypingTest, a_film_is_asked_for_and_left_by_keys) {
  AddShot();
  Ask("export-story");
  ExpectQuestion(StoryDesk::Page::Export);
  Type((folder.GetPath() / "film").string());
  PressAndRest(SDLK_ESCAPE);
  EXPECT_FALSE(GetDesk().IsOpen());
  Ask("export-story");
  Type((folder.GetPath() / "film").string());
  Press(SDLK_RETURN);
  for (int i = 0; i < 100 && !GetDesk().IsExporting(); ++i) window->Step(10);
  EXPECT_TRUE(GetDesk().IsExporting());
  PressAndRest(SDLK_ESCAPE);
  EXPECT_FALSE(GetDesk().IsOpen());
}

// ---- keys ----

TEST_F(ViewerTypingTest, escape_leaves_everything_as_it_was) {
  AddShot();
  for (const char* command : {"save-story-as", "save-picture", "open-model"}) {
    SCOPED_TRACE(command);
    Ask(command);
    ExpectQuestion(StoryDesk::Page::File);
    Type("never.png");
    PressAndRest(SDLK_ESCAPE);
    EXPECT_FALSE(GetDesk().IsOpen());
  }
  EXPECT_EQ(FindFiles().size(), 1U);
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  EXPECT_TRUE(GetStory().IsChanged());
}

TEST_F(ViewerTypingTest, keys_of_the_view_do_nothing_there) {
  const Korvane::CameraParameters before = GetHub().GetView();
  PressControl(SDLK_o);
  for (const SDL_Keycode key : {SDLK_1, SDLK_n, SDLK_w, SDLK_UP, SDLK_F1, SDLK_F2, SDLK_y}) PressAndRest(key);
  PressControl(SDLK_s);
  EXPECT_TRUE(GetDesk().IsOpen());
  EXPECT_FALSE(GetDesk().GetQuestion().saves) << "the question of before";
  EXPECT_EQ(viewer->GetView(0).GetManager().GetActiveTool(), zovview::TOOL_ORBIT);
  EXPECT_EQ(GetHub().GetView().eye, before.eye);
  EXPECT_EQ(CountShots(), 0U);
  EXPECT_FALSE(GetStory().IsShown());
}

TEST_F(ViewerTypingTest, a_key_that_is_held_when_the_question_comes_does_nothing_in_the_view) {
  PressControl(SDLK_o);
  PressAndRest(SDLK_TAB);  // away from the text
  const Korvane::CameraParameters before = GetHub().GetView();
  SDL_Event held = {};
  held.type = SDL_KEYDOWN;
  held.key.repeat = 1;
  held.key.keysym.sym = SDLK_1;
  held.key.keysym.scancode = SDL_SCANCODE_1;
  SDL_PushEvent(&held);
  ComeToRest();
  EXPECT_EQ(GetHub().GetView().eye, before.eye);
}

TEST_F(ViewerTypingTest, what_is_typed_in_one_round_is_taken_in_its_order) {
  folder.Write("square.obj", SQUARE);
  PressControl(SDLK_o);
  for (const char letter : std::string("square.objxyz")) PushText(std::string(1, letter));
  for (int i = 0; i < 3; ++i) {
    PushKey(SDL_KEYDOWN, SDLK_BACKSPACE);
    PushKey(SDL_KEYUP, SDLK_BACKSPACE);
  }
  PushKey(SDL_KEYDOWN, SDLK_RETURN);
  PushKey(SDL_KEYUP, SDLK_RETURN);
  ComeToRest();
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

TEST_F(ViewerTypingTest, a_question_at_rest_draws_no_frames) {
  PressControl(SDLK_o);
  EXPECT_FALSE(window->IsFrameRequested());
  Type("a");
  EXPECT_FALSE(window->IsFrameRequested());
}

}  // namespace
}  // namespace apps_test
