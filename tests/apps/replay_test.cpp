// Recordings, played: every run gives the same cameras to the last bit, and they are what the recorded hand
// meant.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "korvane/math.h"
#include "korvane/vector3.h"
#include "program.h"
#include "replayed.h"
#include "stored_stream.h"
#include "zovhost/scene.h"

namespace {

namespace fs = std::filesystem;
using apps_test::AngleBetween;
using apps_test::Camera;
using apps_test::CLOSE;
using apps_test::GetRecording;
using apps_test::Level;
using apps_test::Play;
using apps_test::ProgramResult;
using apps_test::ReadCameras;
using apps_test::RunViewer;
using apps_test::UP;
using Korvane::Math;
using Korvane::Vector3;

// ---- every recording ----

class EveryRecording : public testing::TestWithParam<std::string> {};

TEST_P(EveryRecording, gives_the_same_cameras_to_the_last_bit_on_every_run_and_in_every_build) {
  const apps_test::TemporaryFolder folder;
  const std::string whole = (folder.GetPath() / "whole.txt").string();
  const ProgramResult first = RunViewer({"--replay", GetRecording(GetParam()).string(), "--record", whole});
  const ProgramResult second = RunViewer({"--replay", whole});  // with what its rays met
  EXPECT_EQ(first.exitCode, 0) << first.error;
  EXPECT_EQ(first.error, "");
  EXPECT_EQ(first.out, second.out);
  const std::vector<Camera> cameras = ReadCameras(first.out);
  ASSERT_FALSE(cameras.empty());
  for (std::size_t i = 1; i < cameras.size(); ++i) EXPECT_GT(cameras[i].time, cameras[i - 1].time);
  apps_test::ExpectStoredStream(GetParam(), first.out);
}

std::vector<std::string> ListRecordings() {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(ZOVVIEW_RECORDINGS)) {
    names.push_back(entry.path().stem().string());
  }
  return names;
}

INSTANTIATE_TEST_SUITE_P(each, EveryRecording, testing::ValuesIn(ListRecordings()),
                         [](const testing::TestParamInfo<std::string>& name) { return name.param; });

// ---- the tools ----

TEST(ReplayTest, an_orbit_of_a_fifth_of_the_width_turns_by_a_radian_about_the_pivot) {
  const std::vector<Camera> cameras = Play("orbit");
  const Camera& first = cameras.front();
  const Camera& last = cameras.back();
  EXPECT_NEAR(last.ToPivot(), first.ToPivot(), CLOSE);
  EXPECT_NEAR(AngleBetween(Level(first.Direction()), Level(last.Direction())), Math::RAD_TO_DEG, 1e-6);
  EXPECT_NEAR(last.eye.z, first.eye.z, CLOSE) << "the drag was level";
}

TEST(ReplayTest, an_orbit_over_the_edge_of_the_viewport_turns_as_far_as_one_inside) {
  const Camera inside = Play("orbit").back();
  const Camera over = Play("orbit_wrapped").back();
  EXPECT_EQ(over.eye, inside.eye);
  EXPECT_EQ(over.up, inside.up);
}

TEST(ReplayTest, a_pan_moves_sideways_only_and_leaves_the_pivot) {
  for (const char* name : {"pan", "parallel_pan"}) {
    const std::vector<Camera> cameras = Play(name);
    const Vector3 way = cameras.back().eye - cameras.front().eye;
    EXPECT_GT(way.Length(), 1.0) << name;
    EXPECT_NEAR(way.Dot(cameras.front().Direction()), 0.0, CLOSE) << name;
    EXPECT_NEAR(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 0.0, 1e-6) << name;
    EXPECT_EQ(cameras.back().pivot, cameras.front().pivot) << name;
  }
  // 80 pixels to the left and 60 up, of 600 that show the orthographic height.
  const std::vector<Camera> cameras = Play("parallel_pan");
  const Vector3 way = cameras.back().eye - cameras.front().eye;
  const double perPixel = cameras.front().orthoHeight / 600.0;
  EXPECT_NEAR(way.Length(), 100.0 * perPixel, CLOSE);
  EXPECT_NEAR(way.Dot(cameras.front().up), -60.0 * perPixel, CLOSE);
}

TEST(ReplayTest, a_zoom_comes_nearer_along_the_line_to_the_point_under_the_pointer) {
  for (const char* name : {"zoom_drag", "zoom_click"}) {
    const std::vector<Camera> cameras = Play(name);
    const Vector3 start = cameras.front().eye;
    const Vector3 end = cameras.back().eye;
    const Vector3 point = cameras.back().pivot;
    EXPECT_LT(AngleBetween(point - start, end - start), 1e-6) << name;
    EXPECT_LT((point - end).Length(), (point - start).Length() * 0.8) << name;
    EXPECT_GT((point - end).Length(), (point - start).Length() * 0.2) << name;
    EXPECT_NEAR(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 0.0, 1e-6) << name;
  }
  // The click covers a third of the way.
  const std::vector<Camera> click = Play("zoom_click");
  EXPECT_NEAR(
      (click.back().pivot - click.back().eye).Length() / (click.back().pivot - click.front().eye).Length(),
      2.0 / 3.0, 1e-6);
}

// The rectangle is a quarter of the viewport on each side, so the view comes four times nearer to what is in
// its middle; that lies on the axis, and so does the rectangle's middle.
TEST(ReplayTest, a_rectangle_is_flown_into) {
  const std::vector<Camera> cameras = Play("rectangle");
  const Vector3 point = cameras.back().pivot;
  EXPECT_NEAR((point - cameras.back().eye).Length() / (point - cameras.front().eye).Length(), 0.25, 1e-6);
  EXPECT_NEAR(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 0.0, 1e-6);
}

TEST(ReplayTest, a_cancelled_rectangle_moves_nothing) { EXPECT_EQ(Play("rectangle_cancelled").size(), 1U); }

TEST(ReplayTest, a_look_turns_the_head_and_keeps_the_place) {
  const std::vector<Camera> cameras = Play("look");
  for (const Camera& camera : cameras) {
    EXPECT_EQ(camera.eye, cameras.front().eye);
    EXPECT_NEAR(camera.Direction().Cross(camera.up).Dot(UP), 0.0, CLOSE) << "upright";
  }
  EXPECT_GT(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 5.0);
}

TEST(ReplayTest, a_slide_goes_forward_while_its_key_is_held) {
  const std::vector<Camera> cameras = Play("look_move");
  const Vector3 forward = cameras.front().Direction();
  const Vector3 way = cameras.back().eye - cameras.front().eye;
  EXPECT_GT(way.Dot(forward), 0.1);
  EXPECT_LT(AngleBetween(way, forward), 1e-5);
  for (const Camera& camera : cameras) {
    if (camera.time <= 740) continue;
    EXPECT_NEAR((camera.eye - cameras.back().eye).Length(), 0.0, CLOSE) << "let go";
  }
}

TEST(ReplayTest, a_face_that_is_clicked_on_is_looked_at_straight) {
  const Camera last = Play("look_at").back();
  // The roof over the front falls towards it: no part of its normal runs along the house.
  EXPECT_NEAR(last.Direction().x, 0.0, 1e-6);
  EXPECT_LT(last.FromAxis(), 1e-6) << "the point clicked on is in the middle";
}

TEST(ReplayTest, a_new_centre_comes_to_the_middle_and_the_view_keeps_its_direction) {
  const std::vector<Camera> cameras = Play("centre");
  EXPECT_LT(cameras.back().FromAxis(), 1e-6);
  EXPECT_NE(cameras.back().pivot, cameras.front().pivot);
  EXPECT_NEAR(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 0.0, 1e-6);
}

// The pointer is held 421 pixels to the right from 660 on, of which 800 are behind the edge: the walker turns
// on at the same speed.
TEST(ReplayTest, a_walk_keeps_its_height_and_turns_on_at_one_speed_behind_the_edge) {
  const std::vector<Camera> cameras = Play("walk_wrapped");
  std::vector<double> speeds;  // degrees a second
  for (std::size_t i = 1; i < cameras.size(); ++i) {
    const Camera& now = cameras[i];
    const Camera& before = cameras[i - 1];
    EXPECT_NEAR(now.eye.z, cameras.front().eye.z, CLOSE);
    const double angle = AngleBetween(Level(before.Direction()), Level(now.Direction()));
    if (before.time > 700 && now.time < 1690) speeds.push_back(angle / (now.time - before.time) * 1000.0);
  }
  ASSERT_GT(speeds.size(), 40U);
  for (const double speed : speeds) EXPECT_NEAR(speed, speeds.front(), speeds.front() * 0.01);
  EXPECT_GT(speeds.front(), 10.0);
  EXPECT_GT((cameras.back().eye - cameras.front().eye).Length(), 0.05) << "and walked";
}

// ---- the middle button and the wheel ----

TEST(ReplayTest, shift_turns_a_pan_into_an_orbit_and_back) {
  const std::vector<Camera> cameras = Play("middle_shift");
  for (std::size_t i = 1; i < cameras.size(); ++i) {
    const double angle = AngleBetween(cameras[i].Direction(), cameras[i - 1].Direction());
    const bool withShift = cameras[i - 1].time > 320 && cameras[i].time < 620;
    const bool without = cameras[i].time < 320 || cameras[i - 1].time > 640;
    EXPECT_TRUE(!withShift || angle > 0.1) << cameras[i].time;
    EXPECT_TRUE(!without || angle < 1e-5) << cameras[i].time;
  }
  // 100 of 800 pixels at 5 radians a width.
  EXPECT_NEAR(AngleBetween(Level(cameras.front().Direction()), Level(cameras.back().Direction())),
              0.625 * Math::RAD_TO_DEG, 1e-6);
}

// Each notch is 4 pixels of drag, and each pixel comes nearer by the factor 1.015, up to the last stretch
// before the point.
TEST(ReplayTest, a_wheel_zooms_to_the_point_under_the_pointer_and_an_orbit_follows_about_it) {
  const std::vector<Camera> cameras = Play("wheel_runs_out");
  std::size_t zoomed = 0;
  while (zoomed + 1 < cameras.size() && cameras[zoomed + 1].time < 990) ++zoomed;
  const Vector3 point = cameras[zoomed].pivot;
  const double nearer = (point - cameras[zoomed].eye).Length() / (point - cameras.front().eye).Length();
  EXPECT_NEAR(nearer, std::pow(1.015, -12.0), 0.02);
  EXPECT_LT(cameras[zoomed].time, 350) << "moved after the last notch";
  EXPECT_NEAR(cameras.back().ToPivot(), cameras[zoomed].ToPivot(), CLOSE);
  EXPECT_NEAR(AngleBetween(Level(cameras[zoomed].Direction()), Level(cameras.back().Direction())),
              0.5 * Math::RAD_TO_DEG, 1e-6);
}

// ---- the cube ----

TEST(ReplayTest, a_click_on_the_top_of_the_cube_shows_the_model_from_above) {
  const std::vector<Camera> cameras = Play("cube_click");
  EXPECT_LT(AngleBetween(cameras.back().Direction(), -UP), 1e-5);
  EXPECT_GT(cameras.back().time - cameras.front().time, 600) << "it travels for half a second";
}

TEST(ReplayTest, a_drag_of_the_cube_turns_the_view_about_the_pivot) {
  const std::vector<Camera> cameras = Play("cube_drag");
  EXPECT_GT(AngleBetween(cameras.back().Direction(), cameras.front().Direction()), 5.0);
  for (const Camera& camera : cameras) {
    EXPECT_NEAR(camera.ToPivot(), cameras.front().ToPivot(), CLOSE);
    EXPECT_EQ(camera.pivot, cameras.front().pivot);
  }
}

// ---- commands ----

TEST(ReplayTest, the_projection_blends_to_parallel_and_back) {
  const std::vector<Camera> cameras = Play("projection");
  bool wasParallel = false;
  for (const Camera& camera : cameras) {
    wasParallel = wasParallel || (camera.projection == "orthographic" && camera.blend == 1.0);
  }
  EXPECT_TRUE(wasParallel);
  EXPECT_EQ(cameras.back().projection, "perspective");
  EXPECT_EQ(cameras.back().blend, 0.0);
  EXPECT_EQ(Play("parallel_pan").front().projection, "orthographic");
}

TEST(ReplayTest, a_viewport_that_becomes_narrow_keeps_its_narrow_angle) {
  const std::vector<Camera> cameras = Play("resized");
  const double narrow = cameras.front().angles[2];
  EXPECT_NEAR(cameras.back().angles[0], narrow, CLOSE);
  // Twice as high as wide.
  EXPECT_NEAR(std::tan(cameras.back().angles[2] * Math::DEG_TO_RAD),
              2.0 * std::tan(narrow * Math::DEG_TO_RAD), CLOSE);
  EXPECT_LT(AngleBetween(cameras.back().Direction(), -UP), 1e-5);
}

TEST(ReplayTest, home_leads_back_to_the_start_of_the_house) {
  const std::vector<Camera> cameras = Play("house_tour");
  EXPECT_LT((cameras.back().eye - cameras.front().eye).Length(), CLOSE);
  double nearest = cameras.front().ToPivot();
  for (const Camera& camera : cameras) nearest = std::min(nearest, (camera.centre - camera.eye).Length());
  EXPECT_LT(nearest, cameras.front().ToPivot() * 0.8) << "the selection was fitted";
}

// ---- recordings that are none ----

struct BrokenRecording {
  const char* name;
  const char* text;
  const char* told;  // a part of the line
};

constexpr const char* HEADER =
    "zovview recording 1\nmodel building\nviewport 80 60\nprojection perspective\n";

class BrokenRecordingTest : public testing::TestWithParam<BrokenRecording> {};

TEST_P(BrokenRecordingTest, is_told_in_one_line_with_code_2_and_prints_nothing) {
  const apps_test::TemporaryFolder folder;
  const fs::path file = folder.Write("broken.txt", GetParam().text);
  const ProgramResult result = RunViewer({"--replay", file.string()});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(apps_test::CountLines(result.error), 1) << result.error;
  EXPECT_NE(result.error.find(GetParam().told), std::string::npos) << result.error;
  EXPECT_NE(result.error.find("broken.txt"), std::string::npos) << result.error;
}

INSTANTIATE_TEST_SUITE_P(
    each, BrokenRecordingTest,
    testing::Values(
        BrokenRecording{"empty", "", "ends without"}, BrokenRecording{"no_recording", "v 0 0 0\n", "line 1"},
        BrokenRecording{"later_version", "zovview recording 2\n", "line 1"},
        BrokenRecording{"no_model", "zovview recording 1\nmodel\n", "line 2"},
        BrokenRecording{"unknown_model", "zovview recording 1\nmodel castle\n", "line 2"},
        BrokenRecording{"no_viewport", "zovview recording 1\nmodel building\nviewport 0 60\n", "line 3"},
        BrokenRecording{"vast_viewport", "zovview recording 1\nmodel building\nviewport 9000 60\n", "line 3"},
        BrokenRecording{"no_projection",
                        "zovview recording 1\nmodel building\nviewport 80 60\nprojection skewed\n", "line 4"},
        BrokenRecording{"missing_file",
                        "zovview recording 1\nmodel file nothing.obj\nviewport 80 60\nprojection "
                        "perspective\n0 end\n",
                        "nothing.obj"}),
    [](const testing::TestParamInfo<BrokenRecording>& test) { return std::string(test.param.name); });

TEST(BrokenEventTest, is_told_with_its_line_and_prints_nothing) {
  const apps_test::TemporaryFolder folder;
  for (const char* line : {"move 1 2",
                           "5 move 1",
                           "5 move 1 2 3",
                           "5 move one 2",
                           "5 move 1 2.5",
                           "5 press left 1 2",
                           "5 press thumb 1 2 1",
                           "5 press left 1 2 0",
                           "5 release 1 2",
                           "5 wheel 1 2 nan",
                           "5 wheel 1 2 1e9",
                           "5 key-down",
                           "5 key-down NoSuchKey",
                           "5 resize 0 5",
                           "5 command nothing",
                           "5 command Fit all",
                           "5 command fit-all now",
                           "5 open",
                           "5 axes 1 2 3 4 5",
                           "5 axes 1 2 3 4 5 nan",
                           "5 axes 0 0 0 0 0 2001",
                           "5 device-press 22",
                           "5 device-release -1",
                           "5 device mode 4",
                           "5 device mode 0.5",
                           "5 device speed 0",
                           "5 device colour 1",
                           "5 jump",
                           "-5 leave",
                           "5 leave now",
                           "99999999999 leave",
                           "5 end of it",
                           "\x01\x02\xff"}) {
    // A good event before, so that a half-played recording would have printed something.
    const std::string text = std::string(HEADER) + "1 move 1 2\n" + line + "\n9 end\n";
    const ProgramResult result = RunViewer({"--replay", folder.Write("broken.txt", text).string()});
    EXPECT_EQ(result.exitCode, 2) << line;
    EXPECT_EQ(result.out, "") << line;
    EXPECT_EQ(apps_test::CountLines(result.error), 1) << result.error;
    EXPECT_NE(result.error.find("line 6"), std::string::npos) << result.error;
  }
}

TEST(BrokenEventTest, times_run_forward_and_nothing_follows_the_end) {
  const apps_test::TemporaryFolder folder;
  for (const char* events : {"5 move 1 2\n4 leave\n9 end\n", "5 move 1 2\n", "1 end\n2 leave\n"}) {
    const fs::path file = folder.Write("broken.txt", std::string(HEADER) + events);
    const ProgramResult result = RunViewer({"--replay", file.string()});
    EXPECT_EQ(result.exitCode, 2) << events;
    EXPECT_EQ(result.out, "") << events;
    EXPECT_EQ(apps_test::CountLines(result.error), 1) << result.error;
  }
}

TEST(BrokenEventTest, a_folder_and_a_file_that_is_not_there_are_told) {
  const apps_test::TemporaryFolder folder;
  for (const fs::path& file : {folder.GetPath(), folder.GetPath() / "none.txt"}) {
    const ProgramResult result = RunViewer({"--replay", file.string()});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(apps_test::CountLines(result.error), 1) << result.error;
  }
}

}  // namespace
