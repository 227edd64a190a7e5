// What is done in the viewer's window while a model loads, and what comes along with one.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#if defined(__GLIBC__)
#  include <pthread.h>
#endif

#include "../host/large_meshes.h"
#include "korvane/interval_timer.h"
#include "korvane/story.h"
#include "viewer_fixture.h"
#include "zovhost/story_file.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;
using zovview::StoryDesk;
using zovview::StoryRequest;
using Page = StoryDesk::Page;

constexpr const char* STILL = R"({"format": "zovtools story", "version": 1, "story": {"name": "one",
  "sequences": [{"shots": [{"duration": 0.1, "transitionType": "cut",
  "camera": {"eye": [3, 3, 3], "centre": [0, 0, 0], "up": [0, 1, 0]}}]}]}})";

// In the next round of the window's loop, which a load serves as well.
class Soon : public Korvane::IntervalTimer {
 public:
  explicit Soon(std::function<void()> toDo) : action(std::move(toDo)) { Start(0.0, false); }
  void Timeout() override { action(); }

 private:
  const std::function<void()> action;
};

class ViewerArrivalTest : public ViewerTest {
 protected:
  zovview::ViewStory& GetStory() const { return viewer->GetView(0).GetStory(); }
  StoryDesk& GetDesk() const { return viewer->GetDesk(); }
  std::uint64_t CountShots() const {
    const Korvane::Sequence* const first = GetStory().GetBoard().GetStory()->GetFirstSequence();
    return first != nullptr ? first->GetShotCount() : 0;
  }
  /// While another model loads, and until that has come to its end.
  void LoadAnd(const std::function<void()>& meanwhile) {
    bool wasLoading = false;
    viewer->Open({folder.Write("hills.stl", zovtest::MakeHillsStl(40))});
    const Soon soon([&] {
      wasLoading = viewer->IsLoading();
      meanwhile();
    });
    ComeToRest();
    ASSERT_TRUE(wasLoading);
  }
  void MakeShot() { viewer->GetView(0).Run(*zovview::FindViewCommand("add-shot")); }
  void MakeShotsInLoad() {
    LoadAnd([this] { MakeShot(); });
    ASSERT_EQ(GetDesk().GetPage(), Page::Losing);
    ASSERT_TRUE(viewer->HasArrival());
    EXPECT_EQ(viewer->GetScene(), before);
    EXPECT_EQ(CountShots(), 1U);
  }
  void ExpectHills() const {
    EXPECT_EQ(GetTitle(), "hills.stl - zovview");
    EXPECT_EQ(viewer->GetScene()->GetTriangleCount(), 3200U);
    EXPECT_FALSE(viewer->HasArrival());
    EXPECT_FALSE(GetStory().IsChanged());
  }
  void SetUp() override {
    ViewerTest::SetUp();
    before = viewer->GetScene();
  }
  const zovhost::Scene* before = nullptr;
};

TEST_F(ViewerArrivalTest, shots_made_while_a_model_loads_are_asked_about_before_it_shows) {
  MakeShotsInLoad();
  GetDesk().Drop();
  ComeToRest();
  ExpectHills();
  EXPECT_EQ(CountShots(), 0U);
}

TEST_F(ViewerArrivalTest, who_cancels_that_question_keeps_the_shots_and_the_model_of_before) {
  MakeShotsInLoad();
  GetDesk().Cancel();
  ComeToRest();
  EXPECT_FALSE(viewer->HasArrival());
  EXPECT_EQ(viewer->GetScene(), before);
  EXPECT_EQ(CountShots(), 1U);
  EXPECT_EQ(viewer->GetMessage(), "hills.stl: loading was cancelled");
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  GetDesk().Guard(GetStory(), [] {});
  GetDesk().Drop();
  Drop(folder.Write("square.obj", SQUARE));  // and the next one comes as ever
  if (GetDesk().IsOpen()) GetDesk().Drop();
  ComeToRest();
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

TEST_F(ViewerArrivalTest, who_saves_the_shots_gets_the_model) {
  MakeShotsInLoad();
  GetDesk().Confirm();
  ASSERT_EQ(GetDesk().GetPage(), Page::File);
  const fs::path file = folder.GetPath() / "kept.json";
  GetDesk().SetPath(file.string());
  GetDesk().Confirm();
  ComeToRest();
  ExpectHills();
  std::string error;
  const auto story = zovhost::StoryFile().Read(file, error);
  ASSERT_NE(story, nullptr) << error;
  EXPECT_EQ(story->GetFirstSequence()->GetShotCount(), 1U);
}

TEST_F(ViewerArrivalTest, a_model_waits_for_a_question_that_is_open_and_what_was_asked_is_written) {
  MakeShot();
  ComeToRest();
  std::string error;
  ASSERT_TRUE(GetStory().Write(folder.GetPath() / "first.json", error)) << error;
  LoadAnd([this] { GetDesk().Ask(StoryRequest::SaveAs, GetStory()); });
  ASSERT_EQ(GetDesk().GetPage(), Page::File);
  EXPECT_TRUE(viewer->HasArrival());
  EXPECT_EQ(viewer->GetScene(), before);
  const fs::path file = folder.GetPath() / "second.json";
  GetDesk().SetPath(file.string());
  GetDesk().Confirm();
  ComeToRest();
  ExpectHills();
  const auto story = zovhost::StoryFile().Read(file, error);
  ASSERT_NE(story, nullptr) << error;
  ASSERT_EQ(story->GetSequenceCount(), 1U) << "the story of the model that showed";
  EXPECT_EQ(story->GetFirstSequence()->GetShotCount(), 1U);
}

TEST_F(ViewerArrivalTest, an_export_goes_on_to_its_end_before_the_model_shows) {
  std::string story = STILL;
  story.replace(story.find("0.1"), 3, "3.0");
  viewer->Open({folder.Write("story.json", story)});
  ComeToRest();
  const fs::path out = folder.GetPath() / "film";
  viewer->Open({folder.Write("hills.stl", zovtest::MakeHillsStl(40))});
  const Soon soon([&] {
    GetDesk().Ask(StoryRequest::Export, GetStory());
    GetDesk().SetPath(out.string());
    GetDesk().Confirm();
  });
  while (viewer->IsLoading()) window->Step(10);
  EXPECT_TRUE(GetDesk().IsExporting());
  EXPECT_TRUE(viewer->HasArrival());
  EXPECT_EQ(viewer->GetScene(), before);
  ComeToRest();
  EXPECT_FALSE(GetDesk().IsExporting());
  EXPECT_TRUE(fs::exists(out / "index.html"));
  EXPECT_TRUE(fs::exists(out / "017.png"));
  ExpectHills();
}

TEST_F(ViewerArrivalTest, a_model_that_follows_takes_the_place_of_one_that_waits) {
  LoadAnd([this] { GetDesk().Ask(StoryRequest::Export, GetStory()); });
  ASSERT_TRUE(viewer->HasArrival());
  Drop(folder.Write("square.obj", SQUARE));
  ASSERT_TRUE(viewer->HasArrival());
  GetDesk().Cancel();
  ComeToRest();
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

// ---- what comes along ----

TEST_F(ViewerArrivalTest, views_that_are_dropped_together_with_a_model_are_views_of_it) {
  const fs::path square = folder.Write("square.obj", SQUARE);
  const fs::path views = folder.Write("a.bcfv", VIEWPOINT);
  for (const bool first : {true, false}) {
    SCOPED_TRACE(first);
    viewer->Open({folder.GetPath() / "triangle.obj"});
    ComeToRest();
    ASSERT_EQ(viewer->GetNamedViews().GetViews().GetCount(), 0U);
    DropTogether(first ? std::vector<fs::path>{views, square} : std::vector<fs::path>{square, views});
    EXPECT_EQ(GetTitle(), "square.obj - zovview");
    EXPECT_EQ(viewer->GetNamedViews().GetViews().GetCount(), 1U);
    EXPECT_TRUE(fs::remove(folder.GetPath() / "square.obj.views.json"));
    viewer->GetNamedViews().Remove(0);
  }
  EXPECT_FALSE(fs::exists(folder.GetPath() / "triangle.obj.views.json"));
}

TEST_F(ViewerArrivalTest, a_story_that_is_dropped_while_a_model_loads_is_one_of_it) {
  const fs::path story = folder.Write("story.json", STILL);
  LoadAnd([&] { viewer->Open({story}); });
  ExpectHills();
  EXPECT_EQ(CountShots(), 1U);
  EXPECT_EQ(GetStory().GetPath(), story);
}

TEST_F(ViewerArrivalTest, views_go_with_a_model_that_cannot_be_read) {
  DropTogether({folder.Write("a.bcfv", VIEWPOINT), folder.Write("bad.obj", "f 1 2 3\n")});
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  EXPECT_EQ(viewer->GetNamedViews().GetViews().GetCount(), 0U);
  EXPECT_NE(viewer->GetMessage().find("bad.obj"), std::string::npos);
}

// ---- what a load lacks ----

#if defined(__GLIBC__)

// Threads with stacks that no memory holds.
class NoThreads {
 public:
  NoThreads() {
    pthread_getattr_default_np(&former);
    pthread_attr_t endless;
    pthread_attr_init(&endless);
    pthread_attr_setstacksize(&endless, std::size_t{1} << 46U);
    pthread_setattr_default_np(&endless);
    pthread_attr_destroy(&endless);
  }
  ~NoThreads() {
    pthread_setattr_default_np(&former);
    pthread_attr_destroy(&former);
  }
  NoThreads(const NoThreads&) = delete;
  NoThreads& operator=(const NoThreads&) = delete;

 private:
  pthread_attr_t former = {};
};

TEST_F(ViewerArrivalTest, where_no_thread_can_be_had_the_model_of_before_stays) {
  {
    const NoThreads none;
    viewer->Open({folder.Write("square.obj", SQUARE)});
    ComeToRest();
  }
  EXPECT_EQ(viewer->GetScene(), before);
  EXPECT_EQ(viewer->GetMessage().rfind("square.obj: ", 0), 0U) << viewer->GetMessage();
  viewer->Open({folder.GetPath() / "square.obj"});
  ComeToRest();
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

#endif

}  // namespace
}  // namespace apps_test
