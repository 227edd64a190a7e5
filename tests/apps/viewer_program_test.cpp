// The program as a person or a script starts it, without a display.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>

#include "program.h"
#include "tour/glances.h"
#include "tour/tour_pace.h"
#include "tour/tour_script.h"
#include "zovhost/read_image.h"

namespace {

namespace fs = std::filesystem;
using apps_test::CountLines;
using apps_test::LastLine;
using apps_test::ProgramResult;
using apps_test::RunViewer;
using apps_test::TemporaryFolder;

constexpr const char* PYRAMID =
    "v 0 0 0\nv 1 0 0\nv 1 0 1\nv 0 0 1\nv 0.5 1 0.5\n"
    "f 1 2 3\nf 1 3 4\nf 1 5 2\nf 2 5 3\nf 3 5 4\nf 4 5 1\n";

// A cube on the y axis.
constexpr const char* CUBE =
    "v 0 0 0\nv 1 0 0\nv 1 0 1\nv 0 0 1\nv 0 1 0\nv 1 1 0\nv 1 1 1\nv 0 1 1\n"
    "f 1 2 3 4\nf 5 8 7 6\nf 1 5 6 2\nf 2 6 7 3\nf 3 7 8 4\nf 4 8 5 1\n";

// A valid file with two triangles whose last vertex has the given coordinate.
std::string PlyWithVertex(const std::string& coordinate) {
  return "ply\nformat ascii 1.0\nelement vertex 4\nproperty float x\nproperty float y\nproperty float z\n"
         "element face 2\nproperty list uchar int vertex_indices\nend_header\n"
         "0 0 0\n1 0 0\n0 1 0\n" +
         coordinate + " 1 1\n3 0 1 2\n3 1 3 2\n";
}

struct BadInput {
  const char* name;
  const char* file;
  std::string contents;
};

class BadInputTest : public testing::TestWithParam<BadInput> {};

TEST_P(BadInputTest, is_told_in_one_line_with_code_2_and_leaves_nothing_behind) {
  const TemporaryFolder inputs;
  const TemporaryFolder outputs;
  const fs::path file = inputs.Write(GetParam().file, GetParam().contents);
  const ProgramResult result =
      RunViewer({file.string(), "--headless", "--out", (outputs.GetPath() / "tour").string()});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
  EXPECT_NE(result.error.find(GetParam().file), std::string::npos) << result.error;
  EXPECT_EQ(result.out, "");
  EXPECT_TRUE(outputs.IsEmpty());
}

std::string Garbage() {
  std::string bytes;
  unsigned state = 12345;
  for (int i = 0; i < 20000; ++i) {
    state = state * 1664525U + 1013904223U;
    bytes += static_cast<char>(state >> 24U);
  }
  return bytes;
}

INSTANTIATE_TEST_SUITE_P(
    every_kind, BadInputTest,
    testing::Values(
        BadInput{"empty_obj", "empty.obj", ""}, BadInput{"empty_gltf", "empty.gltf", ""},
        BadInput{"empty_ifc", "empty.ifc", ""}, BadInput{"empty_stl", "empty.stl", ""},
        BadInput{"empty_picture", "empty.png", ""},
        BadInput{"truncated_gltf", "cut.gltf", "{\"asset\": {\"version\": \"2.0\"}, \"mesh"},
        BadInput{"truncated_ply", "cut.ply", PlyWithVertex("1").substr(0, PlyWithVertex("1").size() - 30)},
        BadInput{"garbage_glb", "garbage.glb", Garbage()}, BadInput{"garbage_obj", "garbage.obj", Garbage()},
        BadInput{"garbage_fbx", "garbage.fbx", Garbage()}, BadInput{"garbage_3mf", "garbage.3mf", Garbage()},
        BadInput{"unknown_kind", "letter.txt", "Dear reader,\n"},
        BadInput{"no_triangles", "points.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\n"},
        BadInput{"only_a_line", "line.obj", "v 0 0 0\nv 1 0 0\nl 1 2\n"},
        BadInput{"nothing_but_nan", "nan.obj", "v nan nan nan\nv nan 1 0\nv 0 nan 1\nf 1 2 3\n"}),
    [](const testing::TestParamInfo<BadInput>& parameter) { return std::string(parameter.param.name); });

TEST(viewer_program, a_missing_file_is_named) {
  const ProgramResult result = RunViewer({"no/such/model.glb", "--headless"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
  EXPECT_NE(result.error.find("no/such/model.glb"), std::string::npos) << result.error;
}

TEST(viewer_program, a_directory_is_no_model) {
  const TemporaryFolder folder;
  const ProgramResult result = RunViewer({folder.GetPath().string(), "--headless"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
}

TEST(viewer_program, refuses_a_language_that_there_is_none_of) {
  const ProgramResult result = RunViewer({"--language", "xx"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
  EXPECT_NE(result.error.find("there is no language xx"), std::string::npos) << result.error;
}

TEST(viewer_program, bad_input_is_the_only_line_even_without_a_display) {
  const ProgramResult result = RunViewer({"missing.obj"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
}

class BadArgumentsTest : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(BadArgumentsTest, are_told_in_one_line_with_code_2) {
  const ProgramResult result = RunViewer(GetParam());
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
  EXPECT_EQ(result.out, "");
}

using Words = std::vector<std::string>;
INSTANTIATE_TEST_SUITE_P(each, BadArgumentsTest,
                         testing::Values(Words{"--size", "1280"}, Words{"--size", "0x0"},
                                         Words{"--size", "-5x200"}, Words{"--size", "99999x99999"},
                                         Words{"--size", "800x600x2"}, Words{"--size"}, Words{"--out"},
                                         Words{"--view", ""}, Words{"--out", ""}, Words{""},
                                         Words{"--no-such-option"}, Words{"one.obj", "two.obj"}));

TEST(viewer_program, tells_its_version) {
  const ProgramResult result = RunViewer({"--version"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out, "zovview " ZOVVIEW_VERSION "\n");
  EXPECT_EQ(result.error, "");
}

TEST(viewer_program, tells_its_use) {
  const ProgramResult result = RunViewer({"--help"});
  EXPECT_EQ(result.exitCode, 0);
  for (const char* word : {"MODEL", "--headless", "--size", "--out", "--version"}) {
    EXPECT_NE(result.out.find(word), std::string::npos) << word;
  }
  for (const char* word : {"Excludes", "Needs", "TEXT", "INT"}) {
    EXPECT_EQ(result.out.find(word), std::string::npos) << word;
  }
}

TEST(viewer_program, an_output_that_is_a_file_is_refused_and_kept) {
  const TemporaryFolder folder;
  const fs::path model = folder.Write("pyramid.obj", PYRAMID);
  const fs::path file = folder.Write("taken", "precious");
  const ProgramResult result = RunViewer({model.string(), "--headless", "--out", file.string()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
  EXPECT_EQ(fs::file_size(file), 8U);
}

TEST(viewer_program, a_glance_is_a_few_seconds_of_the_tour) {
  const TemporaryFolder folder;
  const fs::path model = folder.Write("pyramid.obj", PYRAMID);
  const fs::path out = folder.GetPath() / "glance";
  const ProgramResult result =
      RunViewer({model.string(), "--headless", "--glance", "--size", "320x200", "--out", out.string()});
  ASSERT_EQ(result.exitCode, 0) << result.error;
  double seconds = 0.0;
  for (const zovview::TourMove& move : zovview::FindGlance(zovview::WHOLE_GLANCE)) seconds += move.seconds;
  const auto pictures =
      static_cast<int>(std::ceil(seconds * 60.0 / zovview::FRAMES_PER_GLANCE_PICTURE - 1e-6));
  EXPECT_NE(LastLine(result.out).find(std::to_string(pictures) + " pictures"), std::string::npos)
      << result.out;
  EXPECT_NE(LastLine(result.out).find("ms a picture"), std::string::npos) << result.out;
  EXPECT_TRUE(fs::exists(out / "tour.webp"));
}

// Each finds what its hand takes hold of: a tour whose move begins nowhere fails.
TEST(viewer_program, has_a_glance_of_each_device) {
  const TemporaryFolder folder;
  const fs::path model = folder.Write("pyramid.obj", PYRAMID);
  for (const std::string& name : zovview::GetGlanceNames()) {
    const fs::path out = folder.GetPath() / name;
    const ProgramResult result = RunViewer(
        {model.string(), "--headless", "--glance=" + name, "--size", "320x240", "--out", out.string()});
    EXPECT_EQ(result.exitCode, 0) << name << ": " << result.error;
    EXPECT_TRUE(fs::exists(out / "tour.webp")) << name;
  }
}

TEST(viewer_program, a_glance_of_nothing_is_refused) {
  const TemporaryFolder folder;
  const fs::path out = folder.GetPath() / "glance";
  const ProgramResult result = RunViewer({"--headless", "--glance=tree", "--out", out.string()});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(CountLines(result.error), 1) << result.error;
  EXPECT_FALSE(fs::exists(out));
}

// ---- the tour ----

// The greatest difference of a channel between two pixels of a grid over the picture.
int Contrast(const zovhost::Image& image) {
  int least = 255;
  int greatest = 0;
  for (std::size_t i = 0; i < image.rgba.size(); i += 4 * 37) {
    least = std::min<int>(least, image.rgba[i]);
    greatest = std::max<int>(greatest, image.rgba[i]);
  }
  return greatest - least;
}

bool IsPictureName(const std::string& name) {
  return name.size() == 7 && name.find_first_not_of("0123456789") == 3 && name.substr(3) == ".png";
}

std::size_t CountDifferences(const zovhost::Image& a, const zovhost::Image& b) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < a.rgba.size(); i += 4) {
    if (std::abs(a.rgba[i] - b.rgba[i]) > 16) ++count;
  }
  return count;
}

std::string PictureName(int number) {
  std::array<char, 16> name{};
  std::snprintf(name.data(), name.size(), "%03d.png", number);
  return name.data();
}

// The last picture under a caption.
std::string FindLastPicture(const std::string& caption) {
  int frame = 0;
  int number = -1;
  for (const zovview::TourMove& move : zovview::GetTourScript()) {
    const int frames = static_cast<int>(std::lround(move.seconds * 60.0));
    if (move.caption == caption && frames > 0) number = (frame + frames - 1) / zovview::FRAMES_PER_PICTURE;
    frame += frames;
  }
  EXPECT_GE(number, 0) << caption;
  return PictureName(number);
}

int RedAt(const zovhost::Image& picture, int x, int y) {
  return picture.rgba[static_cast<std::size_t>(4 * (y * picture.width + x))];
}

struct PixelBox {
  int left = 1'000'000;
  int top = 1'000'000;
  int right = -1;
  int bottom = -1;
};

// Of the dark edges of the model; the corner at the bottom left belongs to the caption, the one at the top
// right to the cube. Rows from the top.
PixelBox FindEdges(const zovhost::Image& picture) {
  PixelBox box;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const bool isCaption = y > picture.height - 45 && x < picture.width / 2;
      const bool isCube = y < 130 && x > picture.width - 58;  // beside a square of the picture's height
      if (isCaption || isCube || RedAt(picture, x, y) > 120) continue;
      box.left = std::min(box.left, x);
      box.right = std::max(box.right, x);
      box.top = std::min(box.top, y);
      box.bottom = std::max(box.bottom, y);
    }
  }
  return box;
}

// A line may lie between two pixels.
int BrightestAround(const zovhost::Image& picture, int x, int y) {
  int brightest = 0;
  for (int dy = -1; dy <= 1; ++dy) {
    for (int dx = -1; dx <= 1; ++dx) brightest = std::max(brightest, RedAt(picture, x + dx, y + dy));
  }
  return brightest;
}

class TourTest : public testing::Test {
 protected:
  // One tour for all tests: the pictures take a while.
  static void SetUpTestSuite() {
    folder = new TemporaryFolder();
    const fs::path model = folder->Write("cube.obj", CUBE);
    fs::create_directories(GetTour());
    std::ofstream(GetTour() / "999.png") << "left by the user";
    std::ofstream(GetTour() / "notes.txt") << "left by the user";
    result = RunViewer({model.string(), "--size", "320x200", "--out", GetTour().string()});
  }
  static void TearDownTestSuite() {
    delete folder;
    folder = nullptr;
  }

  static fs::path GetTour() { return folder->GetPath() / "out" / "tour"; }
  static zovhost::Image ReadPicture(const std::string& name) {
    zovhost::Image image;
    std::string error;
    EXPECT_TRUE(zovhost::ReadImage(GetTour() / name, image, error)) << error;
    return image;
  }
  static int CountPictures() {
    int count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(GetTour())) {
      const std::string name = entry.path().filename().string();
      if (name != "999.png" && IsPictureName(name)) ++count;
    }
    return count;
  }

  static TemporaryFolder* folder;
  static ProgramResult result;
};

TemporaryFolder* TourTest::folder = nullptr;
ProgramResult TourTest::result;

TEST_F(TourTest, is_played_with_a_note_when_there_is_no_display) {
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_NE(result.error.find("no display"), std::string::npos) << result.error;
}

TEST_F(TourTest, tells_at_the_end_where_it_is) {
  EXPECT_NE(LastLine(result.out).find(GetTour().string()), std::string::npos) << result.out;
}

TEST_F(TourTest, shows_its_progress) { EXPECT_NE(result.error.find("50 %"), std::string::npos); }

TEST_F(TourTest, has_enough_pictures_of_the_size_asked_for_none_of_them_blank) {
  const int count = CountPictures();
  EXPECT_GE(count, 48);
  EXPECT_LE(count, 480);
  for (const char* name : {"000.png", "017.png", "040.png"}) {
    const zovhost::Image picture = ReadPicture(name);
    EXPECT_EQ(picture.width, 320);
    EXPECT_EQ(picture.height, 200);
    EXPECT_GT(Contrast(picture), 60) << name;
  }
}

TEST_F(TourTest, moves_the_model) {
  const zovhost::Image first = ReadPicture("000.png");
  EXPECT_GT(CountDifferences(first, ReadPicture("010.png")), 1000U);
  EXPECT_GT(CountDifferences(first, ReadPicture("030.png")), 1000U);
}

TEST_F(TourTest, ends_where_it_began) {
  const std::string last = PictureName(CountPictures() - 1);
  EXPECT_EQ(FindLastPicture("Start view"), last);
  EXPECT_LT(CountDifferences(ReadPicture("000.png"), ReadPicture(last)), 300U);
}

// The cube is as high as the view, and stands in its middle.
TEST_F(TourTest, a_fitted_model_touches_the_frame) {
  for (const char* caption : {"Fit all", "Corner view, fitted", "Top view, fitted", "Front view, fitted"}) {
    const std::string name = FindLastPicture(caption);
    const PixelBox edges = FindEdges(ReadPicture(name));
    EXPECT_LE(edges.top, 1) << caption << " " << name;
    EXPECT_GE(edges.bottom, 198) << caption << " " << name;
    EXPECT_LE(std::abs(edges.left - (319 - edges.right)), 40) << caption << " " << name;
  }
  const PixelBox top = FindEdges(ReadPicture(FindLastPicture("Top view, fitted")));
  EXPECT_NEAR(top.left, 60, 1);  // a square of 200 pixels
  EXPECT_NEAR(top.right, 259, 1);
}

// From 28 to 58 hundredths of the width and 27 to 50 of the height, on the face of the cube, which fills the
// view after it.
TEST_F(TourTest, a_rectangle_is_drawn_and_then_flown_into) {
  const zovhost::Image drawn = ReadPicture(FindLastPicture("Draw a rectangle"));
  const zovhost::Image reached = ReadPicture(FindLastPicture("Zoom into the rectangle"));
  const int face = RedAt(drawn, 120, 120);
  for (const int x : {89, 185}) EXPECT_GT(BrightestAround(drawn, x, 125), face + 30) << x;
  for (const int y : {100, 146}) EXPECT_GT(BrightestAround(drawn, 110, y), face + 30) << y;
  for (const int x : {1, 318}) {
    for (const int y : {1, 150}) EXPECT_NEAR(RedAt(reached, x, y), face, 12) << x << " " << y;
  }
}

TEST_F(TourTest, has_a_contact_sheet_an_animation_and_a_page) {
  EXPECT_GT(ReadPicture("contact_sheet.png").width, 1000);
  EXPECT_GT(fs::file_size(GetTour() / "tour.webp"), 5000U);
  std::ifstream page(GetTour() / "index.html");
  const std::string text((std::istreambuf_iterator<char>(page)), std::istreambuf_iterator<char>());
  EXPECT_NE(text.find("tour.webp"), std::string::npos);
  EXPECT_NE(text.find("contact_sheet.png"), std::string::npos);
}

TEST_F(TourTest, leaves_the_rest_of_the_folder_alone_and_nothing_beside_it) {
  EXPECT_TRUE(fs::exists(GetTour() / "notes.txt"));
  EXPECT_TRUE(fs::exists(GetTour() / "999.png"));
  int beside = 0;
  for ([[maybe_unused]] const fs::directory_entry& entry : fs::directory_iterator(GetTour().parent_path())) {
    ++beside;
  }
  EXPECT_EQ(beside, 1);
}

}  // namespace
