// Views that are kept, in the viewer's window: the list, its keys and buttons, its file, and those of others.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "korvane/helm_disc.h"
#include "korvane/rewind_history.h"
#include "recordings/recorder.h"
#include "viewer_fixture.h"
#include "zovhost/bcf_file.h"
#include "zovhost/read_image.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;
using Korvane::CameraParameters;
using Korvane::Vector3;
using Part = zovview::NamedViewsPanel::Part;
using Names = std::vector<std::string>;

std::string ReadText(const fs::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

class NamedViewsInViewerTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    UnfoldPanel();
    window->RequestFrame();
    ComeToRest();
  }
  zovview::ViewList& GetList() const { return viewer->GetNamedViews(); }
  std::size_t CountViews() const { return GetList().GetViews().GetCount(); }
  const zovhost::NamedView& GetView(std::size_t index) const { return GetList().GetViews().Get()[index]; }
  Names GetNames() const {
    Names names;
    for (const auto& view : GetList().GetViews().Get()) names.push_back(view.name);
    return names;
  }
  fs::path GetFile() const { return folder.GetPath() / "triangle.obj.views.json"; }

  /// From the front, the right and above.
  void KeepThree() {
    for (const SDL_Keycode key : {SDLK_1, SDLK_4, SDLK_5}) {
      PressAndRest(key);
      PressAndRest(SDLK_v);
    }
    ASSERT_EQ(GetNames(), (Names{"View 1", "View 2", "View 3"}));
  }
  /// The pointer rests on the row, whose buttons then show.
  void ClickOn(std::size_t index, Part part) {
    const auto row = viewer->GetNamedViewsPanel().FindPart(index, Part::Picture);
    ASSERT_TRUE(row.has_value());
    Move(static_cast<int>(row->x), HEIGHT - 1 - static_cast<int>(row->y));
    const auto place = viewer->GetNamedViewsPanel().FindPart(index, part);
    ASSERT_TRUE(place.has_value());
    const Korvane::Vector2 pixel(place->x, HEIGHT - 1.0 - place->y);
    Move(static_cast<int>(pixel.x), static_cast<int>(pixel.y));
    Click(pixel);
  }
  void ExpectView(const CameraParameters& camera) const {
    EXPECT_TRUE(GetHub().CheckCamerasEqual(&camera, &GetHub().GetView()));
  }
};

TEST_F(NamedViewsInViewerTest, a_key_keeps_the_view_of_now) {
  PressAndRest(SDLK_v);
  ASSERT_EQ(CountViews(), 1U);
  EXPECT_EQ(GetView(0).name, "View 1");
  ExpectView(GetView(0).camera);
}

TEST_F(NamedViewsInViewerTest, the_list_unfolds_with_pictures_of_what_the_views_show) {
  KeepThree();
  EXPECT_TRUE(viewer->GetNamedViewsPanel().FindPart(0, Part::Picture).has_value());
  EXPECT_EQ(GetList().GetPictures().GetCount(), 3U);
  zovhost::Image front;
  zovhost::Image above;
  ASSERT_TRUE(GetList().GetPictures().Draw(GetView(0).camera, 96, front));
  ASSERT_TRUE(GetList().GetPictures().Draw(GetView(2).camera, 96, above));
  EXPECT_EQ(front.width, 96);
  EXPECT_EQ(front.height, 60);
  EXPECT_NE(front.rgba, above.rgba);
}

TEST_F(NamedViewsInViewerTest, a_click_on_a_row_flies_there_in_one_entry_of_the_history) {
  KeepThree();
  const CameraParameters before = GetHub().GetView();
  ClickOn(0, Part::Picture);
  ExpectView(GetView(0).camera);
  const CameraParameters arrived = GetHub().GetView();
  viewer->GetView(0).Run(*zovview::FindViewCommand("previous-view"));
  ComeToRest();
  ExpectView(before);
  viewer->GetView(0).Run(*zovview::FindViewCommand("next-view"));
  ComeToRest();
  ExpectView(arrived);
}

TEST_F(NamedViewsInViewerTest, a_flight_changes_the_projection_as_well) {
  PressAndRest(SDLK_v);
  PressAndRest(SDLK_p);
  PressAndRest(SDLK_5);
  PressAndRest(SDLK_v);
  ASSERT_TRUE(GetView(1).camera.IsOrthographic());
  GetList().Fly(0);
  ComeToRest();
  EXPECT_FALSE(GetHub().GetView().IsOrthographic());
  EXPECT_EQ(GetHub().GetView().projection_transition, 0.0);
  ExpectView(GetView(0).camera);
  GetList().Fly(1);
  ComeToRest();
  EXPECT_TRUE(GetHub().GetView().IsOrthographic());
  EXPECT_EQ(GetHub().GetView().projection_transition, 1.0);
  ExpectView(GetView(1).camera);
}

TEST_F(NamedViewsInViewerTest, buttons_move_a_view_up_and_down_and_delete_it) {
  KeepThree();
  ClickOn(0, Part::Down);
  EXPECT_EQ(GetNames(), (Names{"View 2", "View 1", "View 3"}));
  ClickOn(2, Part::Up);
  EXPECT_EQ(GetNames(), (Names{"View 2", "View 3", "View 1"}));
  ClickOn(0, Part::Up);
  ClickOn(2, Part::Down);
  EXPECT_EQ(GetNames(), (Names{"View 2", "View 3", "View 1"})) << "there is nothing beyond";
  ClickOn(1, Part::Delete);
  EXPECT_EQ(GetNames(), (Names{"View 2", "View 3", "View 1"})) << "it is asked about";
  ClickOn(1, Part::Delete);
  EXPECT_EQ(GetNames(), (Names{"View 2", "View 1"}));
}

TEST_F(NamedViewsInViewerTest, a_view_that_is_not_to_be_deleted_after_all_stays) {
  KeepThree();
  ClickOn(1, Part::Delete);
  ASSERT_TRUE(viewer->GetNamedViewsPanel().FindPart(1, Part::Keep).has_value());
  EXPECT_FALSE(viewer->GetNamedViewsPanel().FindPart(1, Part::Rename).has_value());
  ClickOn(1, Part::Keep);
  EXPECT_EQ(CountViews(), 3U);
  ClickOn(1, Part::Delete);
  ClickOn(0, Part::Picture);  // something else
  EXPECT_FALSE(viewer->GetNamedViewsPanel().FindPart(1, Part::Keep).has_value());
  EXPECT_EQ(CountViews(), 3U);
}

TEST_F(NamedViewsInViewerTest, a_second_click_at_the_same_place_deletes_nothing) {
  KeepThree();
  ClickOn(1, Part::Delete);
  const auto cancel = viewer->GetNamedViewsPanel().FindPart(1, Part::Keep);
  const auto again = viewer->GetNamedViewsPanel().FindPart(1, Part::Delete);
  ASSERT_TRUE(cancel.has_value() && again.has_value());
  Click({WIDTH / 2.0, HEIGHT / 2.0});
  EXPECT_LT(again->x, cancel->x);
  EXPECT_EQ(CountViews(), 3U);
}

TEST_F(NamedViewsInViewerTest, a_name_that_is_out_of_sight_is_typed_no_more) {
  KeepThree();
  ClickOn(1, Part::Rename);
  ASSERT_TRUE(viewer->GetNamedViewsPanel().IsRenaming());
  Type("The stairs");
  viewer->GetPreferences().Edit(
      [](zovview::Choices& choices) { choices.panel = zovview::Choices::PANEL_FOLDED; });
  DrawFrames(3);
  UnfoldPanel();
  DrawFrames(3);
  ComeToRest();
  EXPECT_FALSE(viewer->GetNamedViewsPanel().IsRenaming());
  EXPECT_EQ(GetNames(), (Names{"View 1", "The stairs", "View 3"})) << "what was typed is not lost";
}

TEST_F(NamedViewsInViewerTest, a_name_that_scrolls_away_is_typed_no_more) {
  KeepThree();
  for (int i = 0; i < 9; ++i) PressAndRest(SDLK_v);
  ClickOn(10, Part::Rename);
  ASSERT_TRUE(viewer->GetNamedViewsPanel().IsRenaming());
  GetList().Move(10, 0);  // the end of the list shows
  DrawFrames(4);
  ComeToRest();
  EXPECT_FALSE(viewer->GetNamedViewsPanel().IsRenaming());
}

TEST_F(NamedViewsInViewerTest, a_name_is_typed_in_its_place) {
  KeepThree();
  ClickOn(1, Part::Rename);
  ASSERT_TRUE(viewer->GetNamedViewsPanel().IsRenaming());
  Type("The stairs");
  PressAndRest(SDLK_RETURN);
  EXPECT_FALSE(viewer->GetNamedViewsPanel().IsRenaming());
  EXPECT_EQ(GetNames(), (Names{"View 1", "The stairs", "View 3"}));
}

TEST_F(NamedViewsInViewerTest, escape_leaves_a_name_as_it_was) {
  KeepThree();
  ClickOn(0, Part::Rename);
  Type("Never");
  PressAndRest(SDLK_ESCAPE);
  EXPECT_FALSE(viewer->GetNamedViewsPanel().IsRenaming());
  EXPECT_EQ(GetNames(), (Names{"View 1", "View 2", "View 3"}));
}

// ---- the file ----

TEST_F(NamedViewsInViewerTest, views_come_back_with_their_model) {
  KeepThree();
  ASSERT_TRUE(fs::exists(GetFile()));
  const CameraParameters kept = GetView(1).camera;
  Drop(folder.Write("square.obj", SQUARE));
  EXPECT_EQ(CountViews(), 0U);
  Drop(folder.GetPath() / "triangle.obj");
  ASSERT_EQ(GetNames(), (Names{"View 1", "View 2", "View 3"}));
  EXPECT_EQ(GetView(1).camera.eye, kept.eye);
}

TEST_F(NamedViewsInViewerTest, nothing_is_written_of_a_model_without_views) {
  PressAndRest(SDLK_1);
  EXPECT_FALSE(fs::exists(GetFile()));
}

TEST_F(NamedViewsInViewerTest, a_broken_file_is_told_and_stays) {
  folder.Write("square.obj", SQUARE);
  folder.Write("square.obj.views.json", "{");
  testing::internal::CaptureStderr();
  Drop(folder.GetPath() / "square.obj");
  EXPECT_EQ(CountLines(testing::internal::GetCapturedStderr()), 1);
  EXPECT_NE(viewer->GetMessage().find("square.obj.views.json"), std::string::npos) << viewer->GetMessage();
  testing::internal::CaptureStderr();
  PressAndRest(SDLK_v);
  EXPECT_EQ(CountLines(testing::internal::GetCapturedStderr()), 1);
  EXPECT_EQ(CountViews(), 1U);
  EXPECT_EQ(ReadText(folder.GetPath() / "square.obj.views.json"), "{");
}

// ---- files of others ----

TEST_F(NamedViewsInViewerTest, a_dropped_viewpoint_is_added_and_flown_to) {
  Drop(folder.Write("From the door.bcfv", VIEWPOINT));
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview") << "the model stays";
  ASSERT_EQ(GetNames(), Names{"From the door"});
  // The triangle stands on y, so its north is -z.
  EXPECT_LT((GetHub().GetView().eye - Vector3(3, 2, 8)).Length(), 1e-6);
  EXPECT_NEAR(GetHub().GetView().GetVerticalFOV(), 25.0, 1e-6);
  Drop(folder.GetPath() / "From the door.bcfv");
  EXPECT_EQ(CountViews(), 1U) << "it is there already";
}

TEST_F(NamedViewsInViewerTest, a_dropped_file_that_is_none_is_told_in_a_line) {
  for (const char* const name : {"broken.bcfv", "broken.bcf", "broken.views.json"}) {
    testing::internal::CaptureStderr();
    Drop(folder.Write(name, "<VisualizationInfo>"));
    EXPECT_EQ(CountLines(testing::internal::GetCapturedStderr()), 1);
    EXPECT_NE(viewer->GetMessage().find(name), std::string::npos) << viewer->GetMessage();
  }
  EXPECT_EQ(CountViews(), 0U);
}

TEST_F(NamedViewsInViewerTest, views_go_out_with_their_pictures_and_come_in_again) {
  KeepThree();
  const std::vector<zovhost::NamedView> before = GetList().GetViews().Get();
  const fs::path file = folder.GetPath() / "three.bcf";
  std::string error;
  ASSERT_TRUE(GetList().Export(file, error)) << error;
  EXPECT_NE(ReadText(file).find("snapshot.png"), std::string::npos);
  while (CountViews() > 0) GetList().Remove(0);
  Drop(file);
  ASSERT_EQ(CountViews(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(GetView(i).name, before[i].name);
    EXPECT_EQ(GetView(i).guid, before[i].guid);
    EXPECT_LT((GetView(i).camera.eye - before[i].camera.eye).Length(), 1e-12);
    const Vector3 direction = (before[i].camera.centre - before[i].camera.eye).Normalize();
    EXPECT_LT(((GetView(i).camera.centre - GetView(i).camera.eye).Normalize() - direction).Length(), 1e-12);
    EXPECT_NEAR(GetView(i).camera.GetVerticalFOV(), before[i].camera.GetVerticalFOV(), 1e-12);
  }
}

TEST_F(NamedViewsInViewerTest, views_that_a_list_has_no_room_for_are_counted_in_one_line) {
  constexpr std::size_t MORE = 5;
  PressAndRest(SDLK_v);
  std::string error;
  std::vector<zovhost::BcfView> views;
  const fs::path file = folder.GetPath() / "many.bcf";
  ASSERT_TRUE(GetList().Export(file, error) && zovhost::ReadBcfFile(file, views, error)) << error;
  views.resize(zovhost::NamedViews::MOST - 1 + MORE, views.front());
  for (zovhost::BcfView& view : views) view.viewpoint.guid.clear();
  ASSERT_TRUE(zovhost::WriteBcfFile(file, views, error)) << error;
  testing::internal::CaptureStderr();
  Drop(file);
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_EQ(CountViews(), zovhost::NamedViews::MOST);
  EXPECT_EQ(CountLines(told), 1) << told;
  EXPECT_NE(told.find("many.bcf: only 999 of 1004 views were added"), std::string::npos) << told;
}

TEST_F(NamedViewsInViewerTest, the_desk_asks_for_the_files) {
  KeepThree();
  zovview::StoryDesk& desk = viewer->GetDesk();
  viewer->GetView(0).Run(*zovview::FindViewCommand("export-views"));
  ComeToRest();
  ASSERT_EQ(desk.GetPage(), zovview::StoryDesk::Page::File);
  EXPECT_EQ(desk.GetPath(), (folder.GetPath() / "triangle-views.bcf").string());
  desk.SetPath((folder.GetPath() / "views.txt").string());
  desk.Confirm();
  EXPECT_TRUE(desk.IsOpen());
  EXPECT_NE(desk.GetProblem().find("its name ends neither"), std::string::npos) << desk.GetProblem();
  desk.SetPath((folder.GetPath() / "out.bcfzip").string());
  desk.Confirm();
  EXPECT_FALSE(desk.IsOpen());
  EXPECT_TRUE(fs::exists(folder.GetPath() / "out.bcfzip"));

  while (CountViews() > 0) GetList().Remove(0);
  viewer->GetView(0).Run(*zovview::FindViewCommand("import-views"));
  ComeToRest();
  desk.SetPath((folder.GetPath() / "out.bcfzip").string());
  desk.Confirm();
  ComeToRest();
  EXPECT_EQ(CountViews(), 3U);
  ExpectView(GetView(0).camera);
}

TEST_F(NamedViewsInViewerTest, a_view_may_be_shown_first) {
  KeepThree();
  const CameraParameters wanted = GetView(1).camera;
  struct Row {
    std::string view;
    bool isThere;
  };
  for (const Row& row : {Row{"View 2", true}, Row{folder.Write("door.bcfv", VIEWPOINT).string(), true},
                         Row{"No such view", false}}) {
    viewer.reset();
    zovview::Viewer::Options options;
    options.view = row.view;
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    testing::internal::CaptureStderr();
    viewer->Open({folder.GetPath() / "triangle.obj"});
    ComeToRest();
    EXPECT_EQ(CountLines(testing::internal::GetCapturedStderr()), row.isThere ? 0 : 1);
    EXPECT_EQ(viewer->GetMessage().empty(), row.isThere) << viewer->GetMessage();
    if (row.view == "View 2") ExpectView(wanted);
    if (row.view.ends_with(".bcfv")) {
      EXPECT_EQ(GetHub().GetView().eye, Vector3(3, 2, 8));
      EXPECT_EQ(CountViews(), 3U) << "it is shown, and not added";
    }
  }
}

TEST(ViewOfProgramTest, a_broken_file_ends_it_in_one_line_before_anything_opens) {
  const TemporaryFolder folder;
  const ProgramResult result =
      RunViewer({"--view", folder.Write("door.bcfv", "<Door/>").string(), "missing.obj"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
  EXPECT_NE(result.error.find("door.bcfv: it is no viewpoint, but \"Door\""), std::string::npos)
      << result.error;
}

TEST(ViewOfProgramTest, without_a_display_a_view_is_one_picture) {
  const TemporaryFolder folder;
  const fs::path model = folder.Write("triangle.obj", "v 0 0 0\nv 4 0 0\nv 0 3 0\nf 1 2 3\n");
  const std::string door = folder.Write("door.bcfv", VIEWPOINT).string();
  const fs::path out = folder.GetPath() / "pictures";
  const ProgramResult inFolder = RunViewer({model.string(), "--headless", "--no-settings", "--view", door,
                                            "--size", "300x200", "--out", out.string()});
  EXPECT_EQ(inFolder.exitCode, 0) << inFolder.error;
  EXPECT_NE(inFolder.out.find("view.png"), std::string::npos) << inFolder.out;
  const fs::path file = out / "white.png";
  const ProgramResult named = RunViewer({model.string(), "--headless", "--no-settings", "--view", door,
                                         "--size", "300x200", "--ground", "white", "--out", file.string()});
  EXPECT_EQ(named.exitCode, 0) << named.error;
  zovhost::Image first;
  zovhost::Image white;
  std::string error;
  ASSERT_TRUE(zovhost::ReadImage(out / "view.png", first, error)) << error;
  ASSERT_TRUE(zovhost::ReadImage(file, white, error)) << error;
  EXPECT_EQ(first.width, 300);
  EXPECT_EQ(first.height, 200);
  EXPECT_NE(first.rgba, white.rgba);
  EXPECT_EQ(std::distance(fs::directory_iterator(out), fs::directory_iterator()), 2);
  EXPECT_FALSE(fs::exists(folder.GetPath() / "triangle.obj.views.json"));
}

TEST(ViewOfProgramTest, a_name_of_no_view_is_told_and_writes_no_picture) {
  const TemporaryFolder folder;
  const fs::path model = folder.Write("triangle.obj", "v 0 0 0\nv 4 0 0\nv 0 3 0\nf 1 2 3\n");
  const fs::path out = folder.GetPath() / "pictures";
  const ProgramResult result =
      RunViewer({model.string(), "--headless", "--no-settings", "--view", "Kitchen", "--out", out.string()});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
  EXPECT_NE(result.error.find("Kitchen: no view of this model has that name"), std::string::npos)
      << result.error;
  EXPECT_FALSE(fs::exists(out));
}

// ---- recordings ----

TEST_F(NamedViewsInViewerTest, a_flight_is_recorded) {
  std::string error;
  const fs::path file = folder.GetPath() / "flight.txt";
  const auto recorder = zovview::Recorder::Create(file, error);
  ASSERT_NE(recorder, nullptr) << error;
  viewer.reset();
  zovview::Viewer::Options options;
  options.recorder = recorder.get();
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  viewer->Open({folder.GetPath() / "triangle.obj"});
  ComeToRest();
  PressAndRest(SDLK_v);
  PressAndRest(SDLK_5);
  GetList().Fly(0);
  ComeToRest();
  ASSERT_TRUE(recorder->Finish(error)) << error;
  const CameraParameters shown = GetHub().GetView();

  zovview::Recording recording;
  std::ifstream input(file);
  ASSERT_TRUE(zovview::ReadRecording(input, recording, error)) << error;
  int flights = 0;
  for (const zovview::RecordedEvent& event : recording.events) {
    if (!event.flight.has_value()) continue;
    ++flights;
    EXPECT_EQ(event.flight->eye, GetView(0).camera.eye);
    EXPECT_EQ(event.flight->right_fov, GetView(0).camera.right_fov);
    EXPECT_TRUE(GetHub().CheckCamerasEqual(&*event.flight, &shown));
  }
  EXPECT_EQ(flights, 1);
}

}  // namespace
}  // namespace apps_test
