// What rays met is kept with a recording, and a replay goes by it.
#include "recordings/recorded_rays.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "program.h"
#include "recordings/recording.h"
#include "replayed.h"
#include "zovhost/scene.h"

namespace {

using apps_test::ProgramResult;
using apps_test::ReadCameras;
using apps_test::RunViewer;
using apps_test::TemporaryFolder;
using Korvane::Vector3;
using zovhost::Scene;
using zovview::RayBook;
using zovview::RecordedRay;
using zovview::Recording;

constexpr double INF = std::numeric_limits<double>::infinity();

constexpr const char* HEAD =
    "zovview recording 1\nmodel building\nviewport 800 600\nprojection perspective\n";
// A double click, which makes a point of the building the centre.
constexpr const char* CENTRE =
    "100 move 400 300\n120 press left 400 300 1\n140 release left 400 300\n"
    "160 press left 400 300 2\n180 release left 400 300\n";

std::string ReadText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

Recording Read(const std::string& text) {
  std::istringstream input(text);
  Recording recording;
  std::string error;
  EXPECT_TRUE(zovview::ReadRecording(input, recording, error)) << error;
  return recording;
}

// ---- lines ----

class RecordedRaysTest : public testing::Test {
 protected:
  std::string Play(const std::string& text) {
    const ProgramResult result = RunViewer({"--replay", folder.Write("played.txt", text).string()});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    return result.out;
  }
  std::string Complete(const std::string& text) {
    const std::filesystem::path file = folder.Write("bare.txt", text);
    const std::filesystem::path whole = folder.GetPath() / "whole.txt";
    const ProgramResult result = RunViewer({"--replay", file.string(), "--record", whole.string()});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    return ReadText(whole);
  }

  TemporaryFolder folder;
};

TEST_F(RecordedRaysTest, a_ray_is_read_as_it_was_written) {
  RecordedRay ray{{0.1, -0.0, 1e300}, {1.0 / 3.0, -2.0, 5e-324}};
  const auto readBack = [](const RecordedRay& written) {
    const std::string text = zovview::FormatRay(written);
    zovview::Words words(text);
    RecordedRay read;
    EXPECT_TRUE(zovview::ReadRay(words, read)) << text;
    EXPECT_TRUE(words.IsAtEnd());
    EXPECT_EQ(zovview::FormatRay(read), text);
    return read;
  };
  EXPECT_FALSE(readBack(ray).hit.has_value());
  ray.hit = Scene::Hit{{1, 2, 3}, {0, 0, 1}, 4.5, 6, 7, true};
  const RecordedRay read = readBack(ray);
  EXPECT_EQ(read.origin, ray.origin);
  EXPECT_EQ(read.direction, ray.direction);
  EXPECT_EQ(read.hit->point, ray.hit->point);
  EXPECT_EQ(read.hit->normal, ray.hit->normal);
  EXPECT_EQ(read.hit->distance, 4.5);
  EXPECT_EQ(read.hit->part, 6);
  EXPECT_EQ(read.hit->triangle, 7U);
  EXPECT_TRUE(read.hit->fromBehind);
}

TEST_F(RecordedRaysTest, what_is_no_ray_breaks_the_recording) {
  for (const char* line :
       {"ray 1 2 3", "ray 1 2 3 4 5 six", "ray 1 2 3 4 5 nan", "ray 1 2 3 4 5 6 7",
        "ray 1 2 3 4 5 6 1 2 3 0 0 1 4 5 6 above", "ray 1 2 3 4 5 6 1 2 3 0 0 1 4 -5 6 front",
        "ray 1 2 3 4 5 6 1 2 3 0 0 1 -4 5 6 front", "ray 1 2 3 4 5 6 1 2 3 0 0 1 4 5 6 front more"}) {
    std::istringstream input(std::string(HEAD) + line + "\n10 end\n");
    Recording recording;
    std::string error;
    EXPECT_FALSE(zovview::ReadRecording(input, recording, error)) << line;
    EXPECT_NE(error.find("line 5"), std::string::npos) << error;
  }
}

TEST_F(RecordedRaysTest, rays_belong_to_the_model_that_was_opened_last) {
  const Recording recording =
      Read(std::string(HEAD) + "ray 1 0 0 0 0 1\n10 open a story.json\nray 2 0 0 0 0 1\n" +
           "20 open other.obj\n30 open third.obj\nray 3 0 0 0 0 1\n40 end\n");
  ASSERT_EQ(recording.rays.size(), 3U);
  ASSERT_EQ(recording.rays[0].size(), 2U);
  EXPECT_EQ(recording.rays[0][1].origin.x, 2.0);
  EXPECT_TRUE(recording.rays[1].empty());
  ASSERT_EQ(recording.rays[2].size(), 1U);
  EXPECT_EQ(recording.rays[2][0].origin.x, 3.0);
}

TEST_F(RecordedRaysTest, the_rays_of_each_model_are_put_behind_its_events_and_everything_else_stays) {
  std::istringstream input(
      "# By hand.\nzovview recording 1\nmodel building\n# 5 end\nray 9 9 9 9 9 9\n10 open a.json\n"
      "20 open b.obj\r\n30 wheel 1 1 1\n40 end\n");
  std::string text;
  ASSERT_TRUE(zovview::CompleteRecording(
      input, {{{{1, 0, 0}, {0, 0, 1}}}, {{{2, 0, 0}, {0, 0, 1}}, {{3, 0, 0}, {0, 0, 1}}}}, text));
  EXPECT_EQ(text,
            "# By hand.\nzovview recording 1\nmodel building\n# 5 end\n10 open a.json\n"
            "ray 1 0 0 0 0 1\n20 open b.obj\r\n30 wheel 1 1 1\nray 2 0 0 0 0 1\nray 3 0 0 0 0 1\n40 end\n");
}

TEST_F(RecordedRaysTest, a_recording_of_fewer_models_cannot_be_completed) {
  std::istringstream input("10 open b.obj\n");
  std::string text;
  EXPECT_FALSE(zovview::CompleteRecording(input, {{}, {}}, text));
}

// ---- answers ----

class RayBookTest : public testing::Test {
 protected:
  static constexpr Vector3 DOWN{0, 0, -1};
  RayBookTest() : scene(zovhost::MakeDemoBuilding()) {}
  Vector3 GetOrigin(double aside = 0.0) const {
    return scene->GetCentre() + Vector3(aside, 0.0, 10.0 * scene->GetRadius());
  }
  Scene::Hit Ask(const Vector3& origin) const {
    Scene::Hit hit;
    EXPECT_TRUE(scene->Intersect(origin, DOWN, hit));
    return hit;
  }

  const std::unique_ptr<Scene> scene;
};

TEST_F(RayBookTest, a_recorded_ray_meets_what_it_met_and_another_what_the_scene_has) {
  const Scene::Hit real = Ask(GetOrigin());
  Scene::Hit moved = real;
  moved.point.x += 3.0;
  const RayBook book(*scene, {{GetOrigin(), DOWN, moved}, {GetOrigin(0.25), DOWN}}, false);
  EXPECT_EQ(Ask(GetOrigin()).point, moved.point);
  Scene::Hit none;
  EXPECT_FALSE(scene->Intersect(GetOrigin(0.25), DOWN, none)) << "it met nothing";
  Scene::Hit triangles;
  ASSERT_TRUE(scene->IntersectTriangles(GetOrigin(0.5), DOWN, triangles));
  EXPECT_EQ(Ask(GetOrigin(0.5)).point, triangles.point);
  ASSERT_TRUE(scene->IntersectTriangles(GetOrigin(), DOWN, triangles));
  EXPECT_EQ(triangles.point, real.point);
  EXPECT_TRUE(book.GetAsked().empty()) << "it was not to note any";
}

TEST_F(RayBookTest, what_met_a_part_or_a_triangle_that_the_scene_has_not_is_asked_anew) {
  const Scene::Hit real = Ask(GetOrigin());
  Scene::Hit ofPart = real;
  ofPart.part = static_cast<int>(scene->GetParts().size());
  Scene::Hit ofTriangle = real;
  ofTriangle.triangle = std::numeric_limits<std::uint32_t>::max();
  for (Scene::Hit wrong : {ofPart, ofTriangle}) {
    wrong.point.x += 3.0;
    const RayBook book(*scene, {{GetOrigin(), DOWN, wrong}}, true);
    EXPECT_EQ(Ask(GetOrigin()).point, real.point);
  }
}

TEST_F(RayBookTest, what_was_asked_is_noted_once_and_in_its_order) {
  const RayBook book(*scene, {{GetOrigin(0.75), DOWN}}, true);
  for (const double aside : {0.5, 0.0, 0.5}) Ask(GetOrigin(aside));
  ASSERT_EQ(book.GetAsked().size(), 2U);
  EXPECT_EQ(book.GetAsked()[0].origin, GetOrigin(0.5));
  EXPECT_EQ(book.GetAsked()[1].origin, GetOrigin());
  EXPECT_TRUE(book.GetAsked()[1].hit.has_value());
}

TEST_F(RayBookTest, a_ray_that_is_not_finite_meets_nothing_and_is_not_noted) {
  const RayBook book(*scene, {}, true);
  Scene::Hit hit;
  EXPECT_FALSE(scene->Intersect({INF, 0, 0}, DOWN, hit));
  EXPECT_FALSE(scene->Intersect(GetOrigin(), {0, std::numeric_limits<double>::quiet_NaN(), 0}, hit));
  EXPECT_TRUE(book.GetAsked().empty());
}

TEST_F(RayBookTest, a_scene_answers_by_itself_again_when_the_book_is_gone) {
  const Scene::Hit real = Ask(GetOrigin());
  { const RayBook book(*scene, {{GetOrigin(), DOWN}}, false); }
  EXPECT_EQ(Ask(GetOrigin()).point, real.point);
}

// ---- sessions ----

TEST_F(RecordedRaysTest, a_replay_goes_by_the_rays_of_its_recording) {
  const std::string bare = std::string(HEAD) + CENTRE + "1400 end\n";
  const std::string whole = Complete(bare);
  const std::string stream = Play(bare);
  EXPECT_EQ(Play(whole), stream);
  EXPECT_EQ(Complete(whole), whole) << "completing it once more changes nothing";

  // The model of whoever reads it stands elsewhere.
  Recording recording = Read(whole);
  ASSERT_EQ(recording.rays.size(), 1U);
  const Vector3 centre = ReadCameras(stream).back().centre;
  int moved = 0;
  for (RecordedRay& ray : recording.rays[0]) {
    if (!ray.hit.has_value() || (ray.hit->point - centre).Length() > 1e-6) continue;
    ray.hit->point.z += 0.5;
    ++moved;
  }
  ASSERT_GT(moved, 0);
  std::istringstream input(whole);
  std::string changed;
  ASSERT_TRUE(zovview::CompleteRecording(input, recording.rays, changed));
  EXPECT_NEAR(ReadCameras(Play(changed)).back().centre.z, centre.z + 0.5, 1e-6);
}

TEST_F(RecordedRaysTest, each_model_of_a_session_has_its_rays) {
  folder.Write("wall.obj", "v 0 0 0\nv 8 0 0\nv 8 6 0\nv 0 6 0\nf 1 2 3 4\n");
  const std::string bare = std::string(HEAD) + CENTRE +
                           "1400 open wall.obj\n2000 press left 400 300 1\n2020 release left 400 300\n"
                           "2040 press left 400 300 2\n2060 release left 400 300\n3400 end\n";
  const std::string whole = Complete(bare);
  const Recording recording = Read(whole);
  ASSERT_EQ(recording.rays.size(), 2U);
  EXPECT_FALSE(recording.rays[0].empty());
  EXPECT_FALSE(recording.rays[1].empty());
  EXPECT_EQ(Play(whole), Play(bare));
}

TEST_F(RecordedRaysTest, a_place_that_cannot_be_written_is_told_and_leaves_no_file) {
  const std::string file = folder.Write("bare.txt", std::string(HEAD) + "10 end\n").string();
  const ProgramResult result =
      RunViewer({"--replay", file, "--record", (folder.GetPath() / "none" / "whole.txt").string()});
  EXPECT_NE(result.exitCode, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(apps_test::CountLines(result.error), 1) << result.error;
}

}  // namespace
