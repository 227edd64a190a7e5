// The storyboard in the viewer's window: keys, menus, a presentation, and the files of stories.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "korvane/platform.h"
#include "korvane/story.h"
#include "stories/story_places.h"
#include "viewer_fixture.h"
#include "views/view_tools.h"
#include "zovhost/story_file.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;
using Korvane::Storyboard;
using zovview::StoryDesk;
using zovview::StoryRequest;
using Kind = zovview::ViewerMenus::Kind;

// A story of one still of a tenth of a second.
constexpr const char* STILL = R"({"format": "zovtools story", "version": 1, "story": {"name": "one",
  "sequences": [{"shots": [{"duration": 0.1, "transitionType": "cut",
  "camera": {"eye": [3, 3, 3], "centre": [0, 0, 0], "up": [0, 1, 0]}}]}]}})";

class ViewerStoryTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    Press(SDLK_F1, KMOD_LSHIFT);  // the panel is in the way
    ComeToRest();
  }

  zovview::ViewStory& GetStory() const { return viewer->GetView(0).GetStory(); }
  Storyboard& GetBoard() const { return GetStory().GetBoard(); }
  StoryDesk& GetDesk() const { return viewer->GetDesk(); }
  std::uint64_t CountSequences() const { return GetBoard().GetStory()->GetSequenceCount(); }
  std::uint64_t CountShots() const {
    const Korvane::Sequence* const first = GetBoard().GetStory()->GetFirstSequence();
    return first != nullptr ? first->GetShotCount() : 0;
  }
  // For a file in the window.
  bool IsAsking(bool saves) const {
    return GetDesk().GetPage() == StoryDesk::Page::File && GetDesk().GetQuestion().saves == saves;
  }
  void Ask(StoryRequest request) {
    GetDesk().Ask(request, GetStory());
    ComeToRest();
  }
  // On the slide of a shot.
  static Korvane::Vector2 GetShot(int index) {
    int x = 0;
    int y = 0;
    zovview::FindStoryPart(zovview::StoryPart::Shot, index, x, y);
    return {static_cast<double>(x), static_cast<double>(y)};
  }
  void Close() {
    SDL_Event event = {};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
    window->Step(0);
  }
  // Until the board plays no more, for a minute at most.
  void PlayToTheEnd() {
    for (int i = 0; i < 6000 && GetBoard().IsPlayingBack(); ++i) window->Step(10);
    ComeToRest();
  }
};

// ---- the panel ----

TEST_F(ViewerStoryTest, a_key_opens_and_closes_the_storyboard) {
  EXPECT_FALSE(GetStory().IsShown());
  Press(SDLK_y);
  EXPECT_TRUE(GetStory().IsShown());
  Press(SDLK_y);
  EXPECT_FALSE(GetStory().IsShown());
  ComeToRest();
}

TEST_F(ViewerStoryTest, edits_are_undone_and_made_again_by_their_usual_keys) {
  Press(SDLK_n);
  Press(SDLK_n);
  ComeToRest();
  ASSERT_EQ(CountSequences(), 1U);
  ASSERT_EQ(CountShots(), 2U);
  EXPECT_TRUE(GetStory().IsShown()) << "a new shot shows where it is";
  PressControl(SDLK_z);
  EXPECT_EQ(CountShots(), 1U);
  PressControl(SDLK_z);
  EXPECT_EQ(CountSequences(), 0U);
  PressControl(SDLK_y);
  EXPECT_EQ(CountSequences(), 1U);
  PressControl(SDLK_z, KMOD_LSHIFT);
  EXPECT_EQ(CountShots(), 2U);
  EXPECT_EQ(viewer->GetView(0).GetManager().GetActiveTool(), zovview::TOOL_ORBIT) << "Ctrl+Z is no Z";
}

TEST_F(ViewerStoryTest, a_shot_has_a_menu_which_deletes_it) {
  Press(SDLK_n);
  Press(SDLK_n);
  ComeToRest();
  RightClick(static_cast<int>(GetShot(0).x), static_cast<int>(GetShot(0).y));
  EXPECT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::Shot);
  const Korvane::ShotSpecification* const second = GetBoard().GetStory()->GetFirstSequence()->GetShot(1);
  viewer->GetView(0).Run(*zovview::FindViewCommand("delete-shot"));
  ASSERT_EQ(CountShots(), 1U);
  EXPECT_EQ(GetBoard().GetStory()->GetFirstSequence()->GetFirstShot(), second);
  Press(SDLK_ESCAPE);
  ComeToRest();
}

TEST_F(ViewerStoryTest, escape_ends_what_plays_and_a_recording_that_waits_for_its_press) {
  Press(SDLK_n);
  ComeToRest();
  viewer->GetView(0).Run(*zovview::FindViewCommand("record-walk"));
  ASSERT_TRUE(GetBoard().IsRecordingWalk());
  Press(SDLK_ESCAPE);
  EXPECT_FALSE(GetBoard().IsRecordingWalk());
  GetStory().Show(false);
  Press(SDLK_F9);
  ASSERT_TRUE(GetBoard().IsPlayingBack());
  Press(SDLK_ESCAPE);
  EXPECT_FALSE(GetBoard().IsPlayingBack());
  ComeToRest();
}

// ---- in full view ----

TEST_F(ViewerStoryTest, a_presentation_ends_by_itself_and_leaves_the_panel_as_it_was) {
  Press(SDLK_n);
  ComeToRest();
  GetBoard().GetStory()->GetFirstSequence()->GetFirstShot()->SetDuration(0.1);
  Press(SDLK_F10);
  EXPECT_TRUE(GetStory().IsPresenting());
  PlayToTheEnd();
  EXPECT_FALSE(GetStory().IsPresenting());
  EXPECT_EQ(GetBoard().GetMode(), Storyboard::MODE_EDITING);
  EXPECT_TRUE(GetStory().IsShown());
}

TEST_F(ViewerStoryTest, a_presentation_that_pauses_shows_the_panel_and_goes_on) {
  Press(SDLK_n);
  ComeToRest();
  Press(SDLK_F10);
  Press(SDLK_SPACE);
  EXPECT_TRUE(GetBoard().IsPaused());
  EXPECT_FALSE(GetStory().IsPresenting());
  Press(SDLK_SPACE);
  EXPECT_TRUE(GetStory().IsPresenting());
  Press(SDLK_ESCAPE);
  EXPECT_EQ(GetBoard().GetMode(), Storyboard::MODE_EDITING);
  ComeToRest();
}

TEST_F(ViewerStoryTest, keys_and_wheel_mean_nothing_while_it_is_presented) {
  Press(SDLK_n);
  ComeToRest();
  Press(SDLK_F10);
  Press(SDLK_w);
  Press(SDLK_n);
  EXPECT_EQ(viewer->GetView(0).GetManager().GetActiveTool(), zovview::TOOL_ORBIT);
  EXPECT_EQ(CountShots(), 1U);
  EXPECT_TRUE(GetStory().IsPresenting());
  PushButton(SDL_MOUSEBUTTONDOWN, 300, 300, 1, SDL_BUTTON_RIGHT);
  PushButton(SDL_MOUSEBUTTONUP, 300, 300, 1, SDL_BUTTON_RIGHT);
  ComeToRest();
  EXPECT_FALSE(GetStory().IsPresenting()) << "a press of any button ends it";
  EXPECT_FALSE(viewer->IsMenuOpen()) << "and does no more";
}

TEST_F(ViewerStoryTest, a_story_without_shots_presents_nothing) {
  Press(SDLK_F10);
  EXPECT_FALSE(GetStory().IsPresenting());
  EXPECT_EQ(GetBoard().GetMode(), Storyboard::MODE_EDITING);
  ComeToRest();
}

// ---- files ----

TEST_F(ViewerStoryTest, a_story_is_saved_where_the_user_says_and_then_there) {
  EXPECT_FALSE(GetStory().IsChanged());
  Press(SDLK_n);
  ComeToRest();
  EXPECT_TRUE(GetStory().IsChanged());
  Ask(StoryRequest::Save);
  ASSERT_TRUE(IsAsking(true));
  EXPECT_EQ(fs::path(GetDesk().GetPath()), folder.GetPath() / "story.json") << "beside the model";
  const fs::path file = folder.GetPath() / "kept.json";
  Type(file.string());
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_FALSE(GetStory().IsChanged());
  EXPECT_EQ(GetStory().GetPath(), file);
  Press(SDLK_n);
  ComeToRest();
  EXPECT_EQ(CountShots(), 2U) << "the text that was typed has no more keys";
  Ask(StoryRequest::Save);
  EXPECT_FALSE(GetDesk().IsOpen()) << "it has a file";
  std::string error;
  const std::unique_ptr<Korvane::Story> kept = zovhost::StoryFile().Read(file, error);
  ASSERT_NE(kept, nullptr) << error;
  EXPECT_EQ(kept->GetFirstSequence()->GetShotCount(), 2U);
}

TEST_F(ViewerStoryTest, a_place_that_cannot_be_written_is_told_and_asked_for_again) {
  Press(SDLK_n);
  ComeToRest();
  Ask(StoryRequest::Save);
  GetDesk().SetPath((folder.GetPath() / "no such folder" / "s.json").string());
  GetDesk().Confirm();
  ComeToRest();
  EXPECT_TRUE(IsAsking(true));
  EXPECT_FALSE(GetDesk().GetProblem().empty());
  EXPECT_TRUE(GetStory().IsChanged());
  PressAndRest(SDLK_ESCAPE);
  EXPECT_FALSE(GetDesk().IsOpen());
}

TEST_F(ViewerStoryTest, a_story_is_opened_from_its_file) {
  const fs::path file = folder.Write("still.json", STILL);
  Ask(StoryRequest::Open);
  ASSERT_TRUE(IsAsking(false));
  GetDesk().SetPath(file.string());
  GetDesk().Confirm();
  ComeToRest();
  EXPECT_EQ(CountSequences(), 1U);
  EXPECT_TRUE(GetStory().IsShown());
  EXPECT_FALSE(GetStory().IsChanged());
}

TEST_F(ViewerStoryTest, a_dropped_story_is_opened_and_a_broken_one_changes_nothing) {
  Drop(folder.Write("still.json", STILL));
  EXPECT_EQ(CountSequences(), 1U);
  Drop(folder.Write("broken.json", "{"));
  EXPECT_NE(viewer->GetMessage().find("broken.json"), std::string::npos);
  EXPECT_EQ(CountSequences(), 1U);
}

TEST_F(ViewerStoryTest, changes_are_not_lost_without_a_question) {
  const fs::path file = folder.Write("still.json", STILL);
  Press(SDLK_n);
  ComeToRest();
  Drop(file);
  ASSERT_EQ(GetDesk().GetPage(), StoryDesk::Page::Losing);
  EXPECT_EQ(CountShots(), 1U);
  GetDesk().Cancel();
  ComeToRest();
  EXPECT_TRUE(GetStory().IsChanged()) << "cancelled: all is as it was";
  Drop(file);
  GetDesk().Drop();
  ComeToRest();
  EXPECT_EQ(GetStory().GetPath(), file) << "lost: the other is opened";
}

TEST_F(ViewerStoryTest, changes_that_are_saved_on_the_way_are_in_the_file) {
  const fs::path file = folder.GetPath() / "mine.json";
  Press(SDLK_n);
  ComeToRest();
  Ask(StoryRequest::New);
  ASSERT_EQ(GetDesk().GetPage(), StoryDesk::Page::Losing);
  GetDesk().Confirm();
  ASSERT_TRUE(IsAsking(true)) << "it has no file yet";
  GetDesk().SetPath(file.string());
  GetDesk().Confirm();
  ComeToRest();
  EXPECT_EQ(CountSequences(), 0U) << "a new one has begun";
  EXPECT_TRUE(fs::exists(file));
}

TEST_F(ViewerStoryTest, another_model_asks_as_well_and_begins_a_story) {
  const fs::path square = folder.Write("square.obj", SQUARE);
  Press(SDLK_n);
  ComeToRest();
  Drop(square);
  ASSERT_EQ(GetDesk().GetPage(), StoryDesk::Page::Losing);
  EXPECT_NE(GetTitle().find("triangle"), std::string::npos);
  GetDesk().Drop();
  ComeToRest();
  EXPECT_NE(GetTitle().find("square"), std::string::npos);
  EXPECT_EQ(CountSequences(), 0U);
}

TEST_F(ViewerStoryTest, a_window_with_changes_stays_until_they_are_saved_or_lost) {
  Press(SDLK_n);
  ComeToRest();
  Close();
  EXPECT_TRUE(window->IsOpen());
  EXPECT_EQ(GetDesk().GetPage(), StoryDesk::Page::Losing);
  GetDesk().Cancel();
  ComeToRest();
  EXPECT_TRUE(window->IsOpen());
  Close();
  GetDesk().Drop();
  EXPECT_FALSE(window->IsOpen());
}

TEST_F(ViewerStoryTest, who_closes_the_window_twice_means_it) {
  Press(SDLK_n);
  ComeToRest();
  Close();
  Close();
  EXPECT_FALSE(window->IsOpen());
}

TEST_F(ViewerStoryTest, keys_are_the_questions_own) {
  Ask(StoryRequest::Open);
  Press(SDLK_w);
  EXPECT_EQ(viewer->GetView(0).GetManager().GetActiveTool(), zovview::TOOL_ORBIT);
  PressAndRest(SDLK_ESCAPE);
  EXPECT_FALSE(GetDesk().IsOpen());
}

// ---- films ----

TEST_F(ViewerStoryTest, an_export_makes_pictures_and_an_animation) {
  Drop(folder.Write("still.json", STILL));
  const Korvane::CameraParameters before = GetHub().GetView();
  const Korvane::Platform* const platform = &Korvane::GetPlatform();
  Ask(StoryRequest::Export);
  ASSERT_EQ(GetDesk().GetPage(), StoryDesk::Page::Export);
  const fs::path film = folder.GetPath() / "film";
  GetDesk().SetPath(film.string());
  GetDesk().Confirm();
  EXPECT_TRUE(GetDesk().IsExporting());
  for (int i = 0; i < 6000 && GetDesk().IsExporting(); ++i) window->Step(10);
  ComeToRest();
  for (const char* name : {"000.png", "contact_sheet.png", "story.webp", "index.html"}) {
    EXPECT_TRUE(fs::exists(film / name)) << name;
  }
  EXPECT_NE(viewer->GetMessage().find("film"), std::string::npos);
  EXPECT_EQ(GetHub().GetView().eye, before.eye) << "the view has not moved";
  EXPECT_EQ(&Korvane::GetPlatform(), platform);
}

TEST_F(ViewerStoryTest, an_export_that_is_cancelled_leaves_nothing) {
  Press(SDLK_n);
  ComeToRest();
  Ask(StoryRequest::Export);
  const fs::path film = folder.GetPath() / "film";
  GetDesk().SetPath(film.string());
  GetDesk().Confirm();
  for (int i = 0; i < 3; ++i) window->Step(10);
  ASSERT_TRUE(GetDesk().IsExporting());
  Press(SDLK_ESCAPE);
  ComeToRest();
  EXPECT_FALSE(GetDesk().IsExporting());
  for (const fs::directory_entry& entry : fs::directory_iterator(folder.GetPath())) {
    EXPECT_EQ(entry.path().filename().string().find("film"), std::string::npos) << entry.path();
  }
}

TEST_F(ViewerStoryTest, an_export_that_cannot_begin_is_told) {
  Ask(StoryRequest::Export);
  GetDesk().SetPath((folder.GetPath() / "film").string());
  GetDesk().Confirm();
  EXPECT_FALSE(GetDesk().GetProblem().empty()) << "no shots";
  GetDesk().Cancel();
  Press(SDLK_n);
  Ask(StoryRequest::Export);
  GetDesk().SetPath((folder.GetPath() / "triangle.obj").string());
  GetDesk().Confirm();
  EXPECT_FALSE(GetDesk().GetProblem().empty()) << "a file is no folder";
  GetDesk().Cancel();
  ComeToRest();
}

// ---- the program ----

TEST(PlayedStoryTest, becomes_a_film_without_a_display) {
  TemporaryFolder folder;
  const fs::path story = folder.Write("still.json", STILL);
  const fs::path model = folder.Write("triangle.obj", TRIANGLE);
  const fs::path out = folder.GetPath() / "out";
  const ProgramResult result = RunViewer({model.string(), "--headless", "--play", story.string(), "--rate",
                                          "30", "--size", "320x200", "--out", out.string()});
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_TRUE(fs::exists(out / "000.png"));
  EXPECT_TRUE(fs::exists(out / "story.webp"));
  EXPECT_NE(result.out.find(out.string()), std::string::npos);
}

TEST(PlayedStoryTest, that_is_broken_is_told_in_one_line_and_leaves_nothing) {
  TemporaryFolder folder;
  const fs::path story = folder.Write("broken.json", "[]");
  const fs::path out = folder.GetPath() / "out";
  const ProgramResult result = RunViewer({"--headless", "--play", story.string(), "--out", out.string()});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_NE(result.error.find("broken.json"), std::string::npos) << result.error;
  EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
  EXPECT_FALSE(fs::exists(out));
}

TEST(PlayedStoryTest, that_has_no_shots_is_told) {
  TemporaryFolder folder;
  const fs::path story =
      folder.Write("empty.json", R"({"format": "zovtools story", "version": 1, "story": {}})");
  const fs::path model = folder.Write("triangle.obj", TRIANGLE);
  const fs::path out = folder.GetPath() / "out";
  const ProgramResult result =
      RunViewer({model.string(), "--headless", "--play", story.string(), "--out", out.string()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_FALSE(fs::exists(out));
}

TEST(HouseStoryTest, has_shots_of_many_kinds_that_can_all_be_played) {
  std::string error;
  const std::unique_ptr<Korvane::Story> story = zovhost::StoryFile().Read(ZOVVIEW_STORY, error);
  ASSERT_NE(story, nullptr) << error;
  zovhost::ViewHub hub([] {});
  std::set<int> types;
  for (std::uint64_t i = 0; i < story->GetSequenceCount(); ++i) {
    const Korvane::Sequence& sequence = *story->GetSequence(i);
    for (std::uint64_t k = 0; k < sequence.GetShotCount(); ++k) {
      Korvane::ShotSpecification& shot = *sequence.GetShot(k);
      hub.SetView(shot.GetCameraParameters());
      EXPECT_TRUE(shot.BeginShot(&hub));
      types.insert(shot.GetShotType());
    }
  }
  EXPECT_GE(types.size(), 5U);
}

}  // namespace
}  // namespace apps_test
