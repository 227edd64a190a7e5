// Files of stories are asked for by the desktop's own dialog, where there is one.
#include <gtest/gtest.h>

#include <cstdlib>

#include "host/fake_portal.h"
#include "korvane/story.h"
#include "stories/story_desk.h"
#include "viewer_fixture.h"

namespace {

namespace fs = std::filesystem;
using host_test::FakePortal;
using zovview::StoryDesk;
using zovview::StoryRequest;
using Manner = FakePortal::Manner;

constexpr const char* SESSION = "DBUS_SESSION_BUS_ADDRESS";

// Other tests of the process have no desktop.
class ViewerPortalTest : public apps_test::ViewerTest {
 protected:
  void SetUp() override {
    portal.Set(Manner::Cancels);
    static const std::string address = std::getenv(SESSION);  // NOLINT(concurrency-mt-unsafe)
    setenv(SESSION, address.c_str(), 1);                      // NOLINT(concurrency-mt-unsafe)
    ViewerTest::SetUp();
    Press(SDLK_n);  // a shot
    ComeToRest();
  }
  void TearDown() override {
    ViewerTest::TearDown();
    unsetenv(SESSION);  // NOLINT(concurrency-mt-unsafe)
  }

  StoryDesk& GetDesk() const { return viewer->GetDesk(); }
  zovview::ViewStory& GetStory() const { return viewer->GetView(0).GetStory(); }
  std::uint64_t CountSequences() const { return GetStory().GetBoard().GetStory()->GetSequenceCount(); }
  void Ask(StoryRequest request) { GetDesk().Ask(request, GetStory()); }
  template <class Condition>
  bool WaitFor(Condition condition) {
    for (int i = 0; i < 6000 && !condition(); ++i) window->Step(10);
    return condition();
  }

  FakePortal& portal = FakePortal::Get();
};

TEST_F(ViewerPortalTest, a_story_is_saved_where_the_dialog_says) {
  const fs::path file = folder.GetPath() / "kept.json";
  portal.Set(Manner::Chooses, "file://" + file.string());
  Ask(StoryRequest::Save);
  EXPECT_FALSE(GetDesk().IsOpen()) << "nothing is asked in the window";
  EXPECT_TRUE(WaitFor([this] { return !GetStory().IsChanged(); }));
  EXPECT_EQ(GetStory().GetPath(), file);
  EXPECT_TRUE(fs::exists(file));
  EXPECT_EQ(portal.GetMethod(), "SaveFile");
  EXPECT_EQ(portal.GetTitle(), "Save the story as");
  EXPECT_EQ(portal.GetName(), "'story.json'");
}

TEST_F(ViewerPortalTest, a_story_is_opened_from_there_once_the_changes_may_be_lost) {
  const fs::path file = folder.GetPath() / "one.json";
  std::string error;
  ASSERT_TRUE(GetStory().Write(file, error)) << error;
  GetStory().BeginEmpty();
  Press(SDLK_n);
  ComeToRest();
  portal.Set(Manner::Chooses, "file://" + file.string());
  Ask(StoryRequest::Open);
  ASSERT_EQ(GetDesk().GetPage(), StoryDesk::Page::Losing);
  GetDesk().Drop();
  EXPECT_TRUE(WaitFor([&] { return GetStory().GetPath() == file; }));
  EXPECT_EQ(portal.GetMethod(), "OpenFile");
  EXPECT_FALSE(GetDesk().IsOpen());
}

TEST_F(ViewerPortalTest, what_was_to_follow_on_saving_follows) {
  const fs::path file = folder.GetPath() / "mine.json";
  portal.Set(Manner::Chooses, "file://" + file.string());
  Ask(StoryRequest::New);
  ASSERT_EQ(GetDesk().GetPage(), StoryDesk::Page::Losing);
  GetDesk().Confirm();
  EXPECT_TRUE(WaitFor([this] { return CountSequences() == 0; })) << "a new one has begun";
  EXPECT_TRUE(fs::exists(file));
}

TEST_F(ViewerPortalTest, who_cancels_the_dialog_keeps_all_as_it_was) {
  portal.Set(Manner::Cancels);
  Ask(StoryRequest::New);
  GetDesk().Confirm();
  EXPECT_TRUE(portal.AwaitQuestion());
  ComeToRest();
  EXPECT_TRUE(GetStory().IsChanged());
  EXPECT_EQ(CountSequences(), 1U);
  EXPECT_FALSE(GetDesk().IsOpen());
}

TEST_F(ViewerPortalTest, a_place_that_cannot_be_written_is_told) {
  portal.Set(Manner::Chooses, "file://" + (folder.GetPath() / "no such folder" / "s.json").string());
  Ask(StoryRequest::SaveAs);
  EXPECT_TRUE(WaitFor([this] { return !viewer->GetMessage().empty(); }));
  EXPECT_TRUE(GetStory().IsChanged());
}

TEST_F(ViewerPortalTest, a_model_that_has_been_loaded_waits_for_the_dialog_and_is_shown_after_it) {
  const zovhost::Scene* const before = viewer->GetScene();
  const fs::path picture = folder.GetPath() / "view.png";
  GetStory().BeginEmpty();
  portal.Set(Manner::Waits, "file://" + picture.string());
  PressControl(SDLK_s);
  ASSERT_TRUE(portal.AwaitQuestion());
  Drop(folder.Write("square.obj", apps_test::SQUARE));
  DrawFrames(3);
  EXPECT_TRUE(viewer->HasArrival());
  EXPECT_FALSE(GetDesk().IsOpen());
  EXPECT_EQ(viewer->GetScene(), before);
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  portal.Answer(Manner::Chooses);
  EXPECT_TRUE(WaitFor([this] { return !viewer->HasArrival(); }));
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
  EXPECT_TRUE(fs::exists(picture)) << "what was asked is done, and before";
}

TEST_F(ViewerPortalTest, another_question_while_the_dialog_is_open_is_told_and_not_asked) {
  portal.Set(Manner::Waits);
  PressControl(SDLK_s);
  ASSERT_TRUE(portal.AwaitQuestion());
  EXPECT_EQ(viewer->GetMessage(), "");
  PressControl(SDLK_o);
  EXPECT_NE(viewer->GetMessage().find("is open already"), std::string::npos);
  EXPECT_EQ(portal.GetMethod(), "SaveFile");
  EXPECT_FALSE(GetDesk().IsOpen());
  portal.Answer(Manner::Cancels);
  EXPECT_TRUE(WaitFor([this] {
    PressControl(SDLK_o);
    return portal.GetMethod() == "OpenFile";
  })) << "once it is closed";
}

TEST_F(ViewerPortalTest, a_desktop_without_the_dialog_leaves_the_question_to_the_window) {
  portal.Set(Manner::Refuses);
  Ask(StoryRequest::SaveAs);
  EXPECT_TRUE(WaitFor([this] { return GetDesk().GetPage() == StoryDesk::Page::File; }));
  EXPECT_TRUE(GetDesk().GetQuestion().saves);
  const fs::path file = folder.GetPath() / "kept.json";
  GetDesk().SetPath(file.string());
  Press(SDLK_RETURN);
  ComeToRest();
  EXPECT_TRUE(fs::exists(file));
  EXPECT_FALSE(GetDesk().IsOpen());
}

}  // namespace
