// Models that are opened and pictures that are saved from within the viewer. There is no desktop here whose
// dialog would ask for them: the window asks.
#include <gtest/gtest.h>

#include "stories/story_desk.h"
#include "viewer_fixture.h"
#include "zovhost/read_image.h"

namespace {

namespace fs = std::filesystem;
using apps_test::HEIGHT;
using apps_test::SQUARE;
using apps_test::TRIANGLE;
using apps_test::WIDTH;
using zovview::StoryDesk;

class ViewerFilesTest : public apps_test::ViewerTest {
 protected:
  void Answer(const fs::path& file) {
    ASSERT_EQ(viewer->GetDesk().GetPage(), StoryDesk::Page::File);
    viewer->GetDesk().SetPath(file.string());
    viewer->GetDesk().Confirm();
    ComeToRest();
  }
  void Run(const char* command) {
    viewer->GetView(0).Run(*zovview::FindViewCommand(command));
    ComeToRest();
  }
  const std::vector<std::string>& GetRecent() { return viewer->GetPreferences().Get().recentFiles; }
};

TEST_F(ViewerFilesTest, a_model_is_opened_by_its_key) {
  PressControl(SDLK_o);
  Answer(folder.Write("square.obj", SQUARE));
  EXPECT_FALSE(viewer->GetDesk().IsOpen());
  EXPECT_EQ(GetTitle(), "square.obj - zovview");
}

TEST_F(ViewerFilesTest, who_cancels_keeps_the_model) {
  PressControl(SDLK_o);
  viewer->GetDesk().Cancel();
  ComeToRest();
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
}

TEST_F(ViewerFilesTest, a_picture_is_as_large_as_the_view_or_larger) {
  struct Row {
    const char* command;
    int enlargement;
  };
  for (const Row& row : {Row{"save-picture", 1}, {"save-picture-2", 2}, {"save-picture-4", 4}}) {
    const fs::path file = folder.GetPath() / (std::string(row.command) + ".png");
    Run(row.command);
    Answer(file);
    zovhost::Image picture;
    std::string error;
    ASSERT_TRUE(zovhost::ReadImage(file, picture, error)) << error;
    EXPECT_EQ(picture.width, WIDTH * row.enlargement);
    EXPECT_EQ(picture.height, HEIGHT * row.enlargement);
  }
}

TEST_F(ViewerFilesTest, a_picture_shows_the_model) {
  PressControl(SDLK_s);
  const fs::path file = folder.GetPath() / "view.png";
  Answer(file);
  zovhost::Image picture;
  std::string error;
  ASSERT_TRUE(zovhost::ReadImage(file, picture, error)) << error;
  const Korvane::Vector2 middle = Project({0.3, 0.3, 0.0});
  const auto at = [&picture](double x, double y) {
    const auto row = static_cast<std::size_t>(HEIGHT - 1 - static_cast<int>(y));
    return picture.rgba[(row * WIDTH + static_cast<std::size_t>(x)) * 4];
  };
  EXPECT_NE(at(middle.x, middle.y), at(2.0, middle.y)) << "of the model, and beside it";
}

TEST_F(ViewerFilesTest, a_picture_that_cannot_be_written_leaves_the_question_open) {
  PressControl(SDLK_s);
  Answer(folder.GetPath() / "no folder" / "view.png");
  EXPECT_TRUE(viewer->GetDesk().IsOpen());
  EXPECT_NE(viewer->GetDesk().GetProblem(), "");
  viewer->GetDesk().Cancel();
}

TEST_F(ViewerFilesTest, what_was_opened_is_known_the_latest_first_and_each_once) {
  const fs::path triangle = folder.GetPath() / "triangle.obj";
  ASSERT_EQ(GetRecent(), std::vector<std::string>{triangle.string()});
  const fs::path square = folder.Write("square.obj", SQUARE);
  Drop(square);
  EXPECT_EQ(GetRecent(), (std::vector<std::string>{square.string(), triangle.string()}));
  Drop(triangle);
  EXPECT_EQ(GetRecent(), (std::vector<std::string>{triangle.string(), square.string()}));
}

TEST_F(ViewerFilesTest, what_cannot_be_opened_is_not_known_as_opened) {
  Drop(folder.Write("broken.obj", "no model"));
  EXPECT_EQ(GetRecent().size(), 1U);
}

TEST_F(ViewerFilesTest, no_more_are_known_than_a_list_has_room_for) {
  for (int i = 0; i < 12; ++i) Drop(folder.Write("model" + std::to_string(i) + ".obj", TRIANGLE));
  ASSERT_EQ(GetRecent().size(), 10U);
  EXPECT_EQ(GetRecent().front(), (folder.GetPath() / "model11.obj").string());
}

TEST_F(ViewerFilesTest, one_of_them_is_opened_again) {
  Drop(folder.Write("square.obj", SQUARE));
  viewer->GetView(0).GetTarget().openFile(GetRecent().back());
  ComeToRest();
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
}

}  // namespace
