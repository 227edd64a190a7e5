#include <chrono>
#include <cmath>
#include <condition_variable>
#include <ctime>
#include <mutex>
#include <random>
#include <set>
#include <thread>

#if defined(__GLIBC__)
#  include <malloc.h>
#endif

#include "host/large_meshes.h"
#include "host/scene_files.h"
#include "scene/background_work.h"
#include "scene/face_finder.h"
#include "scene/face_index.h"
#include "scene/work_report.h"

namespace {

using Clock = std::chrono::steady_clock;
using zovhost::BackgroundWork;
using zovhost::Scene;
using zovhost::SceneFace;
using zovhost::SceneMesh;
using zovtest::MakeHills;

double SecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

// What is reported, and when; from some step on it breaks the work off.
struct Listener {
  zovhost::Progress GetProgress() {
    return [this](double, const char* what) {
      longestSilence = std::max(longestSilence, SecondsSince(last));
      last = Clock::now();
      steps.insert(what);
      if (what == unwanted && refused == Clock::time_point()) refused = Clock::now();
      return refused == Clock::time_point();
    };
  }
  std::string unwanted;
  std::set<std::string> steps;
  double longestSilence = 0.0;
  Clock::time_point last = Clock::now();
  Clock::time_point refused;
};

class LargeScene : public testing::Test {
 protected:
  TemporaryFolder folder;
  std::string error;
};

TEST_F(LargeScene, is_made_with_a_report_at_every_moment_and_broken_off_in_any_step) {
  const zovhost::SceneData data = zovtest::MakeSceneData(MakeHills(600));
  Listener whole;
  ASSERT_NE(zovhost::MakeScene(data, whole.GetProgress(), error), nullptr) << error;
  EXPECT_GE(whole.steps.size(), 2u);
  EXPECT_LT(whole.longestSilence, 1.0);  // 50 ms, but for a busy machine
  for (const std::string& step : whole.steps) {
    SCOPED_TRACE(step);
    Listener impatient;
    impatient.unwanted = step;
    const auto scene = zovhost::MakeScene(data, impatient.GetProgress(), error);
    if (impatient.refused == Clock::time_point()) continue;  // too short to be seen this time
    EXPECT_EQ(scene, nullptr);
    EXPECT_NE(error.find("broken off"), std::string::npos) << error;
    EXPECT_LT(SecondsSince(impatient.refused), 1.0);
  }
}

TEST_F(LargeScene, is_loaded_with_a_report_at_every_moment_and_broken_off_in_any_step) {
  const std::filesystem::path file = folder.Write("hills.stl", zovtest::MakeHillsStl(500));
  Listener whole;
  ASSERT_NE(zovhost::LoadScene(file, whole.GetProgress(), error), nullptr) << error;
  EXPECT_LT(whole.longestSilence, 1.0);
  for (const std::string& step : whole.steps) {
    SCOPED_TRACE(step);
    Listener impatient;
    impatient.unwanted = step;
    const auto scene = zovhost::LoadScene(file, impatient.GetProgress(), error);
    if (impatient.refused == Clock::time_point()) continue;
    EXPECT_EQ(scene, nullptr);
    EXPECT_EQ(error, file.string() + ": loading it was broken off");
    EXPECT_LT(SecondsSince(impatient.refused), 1.0);
  }
}

TEST_F(LargeScene, throws_what_its_thread_has_thrown) {
  EXPECT_THROW(zovhost::RunReported([](double, const char*) { return true; },
                                    [](zovhost::WorkReport&) { throw std::bad_alloc(); }),
               std::bad_alloc);
}

// ---- faces ----

// Small flat squares at random places of a small lattice, so that many share sides and planes, some thrice.
SceneMesh MakeTangle(unsigned seed) {
  std::mt19937 random(seed);
  const auto pick = [&random](int count) {
    return static_cast<int>(random() % static_cast<unsigned>(count));
  };
  SceneMesh mesh;
  for (int i = 0; i < 120; ++i) {
    const int across = pick(3);
    std::array<float, 3> corner = {};
    for (float& c : corner) c = static_cast<float>(pick(4)) - 2.0F;
    std::array<std::array<float, 3>, 2> sides = {};
    sides[0][static_cast<std::size_t>((across + 1) % 3)] = 1.0F;
    sides[1][static_cast<std::size_t>((across + 2) % 3)] = 1.0F;
    const auto first = static_cast<std::uint32_t>(mesh.positions.size() / 3);
    for (const auto& [u, v] : {std::pair(0.0F, 0.0F), {1.0F, 0.0F}, {1.0F, 1.0F}, {0.0F, 1.0F}}) {
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const float place = corner[axis] + u * sides[0][axis] + v * sides[1][axis];
        mesh.positions.push_back(place == 0.0F && pick(2) == 0 ? -0.0F : place);
      }
    }
    for (const std::uint32_t k : {0U, 1U, 2U, 0U, 2U, 3U}) mesh.indices.push_back(first + k);
  }
  return mesh;
}

TEST_F(LargeScene, has_the_same_faces_by_its_index_as_by_a_walk_over_all_triangles) {
  const std::atomic<bool> stopped = false;
  std::vector<SceneMesh> meshes = {MakeHills(20)};
  for (unsigned seed = 1; seed <= 20; ++seed) meshes.push_back(MakeTangle(seed));
  std::size_t largest = 0;
  for (const SceneMesh& mesh : meshes) {
    zovhost::SideIndex sides;
    ASSERT_TRUE(sides.Build(mesh, stopped));
    for (std::uint32_t triangle = 0; triangle < mesh.indices.size() / 3; ++triangle) {
      SceneFace walked;
      SceneFace indexed;
      zovhost::FindFaceOf(mesh, nullptr, triangle, walked);
      zovhost::FindFaceOf(mesh, &sides, triangle, indexed);
      ASSERT_EQ(indexed.triangles, walked.triangles) << "triangle " << triangle;
      ASSERT_EQ(indexed.corners, walked.corners);
      largest = std::max(largest, walked.triangles.size());
    }
  }
  EXPECT_GT(largest, 10u);
}

// At its middle all triangles meet: a walk that looked at all of them for each would take minutes.
TEST_F(LargeScene, has_the_face_of_a_large_fan_by_its_index) {
  constexpr std::uint32_t TRIANGLES = 50'000;
  SceneMesh mesh;
  mesh.positions = {0.0F, 0.0F, 0.0F};
  for (std::uint32_t i = 0; i < TRIANGLES; ++i) {
    const double angle = 6.283185307179586 * i / TRIANGLES;
    mesh.positions.insert(mesh.positions.end(),
                          {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)), 0.0F});
    mesh.indices.insert(mesh.indices.end(), {0, i + 1, (i + 1) % TRIANGLES + 1});
  }
  const std::atomic<bool> stopped = false;
  zovhost::SideIndex sides;
  ASSERT_TRUE(sides.Build(mesh, stopped));
  SceneFace face;
  const std::clock_t begin = std::clock();
  zovhost::FindFaceOf(mesh, &sides, TRIANGLES / 3, face);
  EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, 1.0);
  EXPECT_EQ(face.triangles.size(), TRIANGLES);
}

#if defined(__GLIBC__)
// It stays for as long as the scene does.
TEST_F(LargeScene, the_index_of_its_faces_takes_less_than_half_the_memory_of_its_triangles) {
  const auto countBytes = [] {
    const struct mallinfo2 held = mallinfo2();
    return held.uordblks + held.hblkhd;
  };
  const std::atomic<bool> stopped = false;
  const SceneMesh hills = MakeHills(700);
  const std::size_t before = countBytes();
  zovhost::SideIndex sides;
  ASSERT_TRUE(sides.Build(hills, stopped));
  EXPECT_LT(countBytes() - before, hills.indices.size() * sizeof(std::uint32_t) / 2);
}
#endif

TEST_F(LargeScene, finds_faces_before_and_after_they_were_prepared_and_while_another_is_loaded) {
  const auto scene = zovhost::MakeScene(zovtest::MakeSceneData(MakeHills(300)), error);
  ASSERT_NE(scene, nullptr) << error;
  Scene::Hit hit;
  ASSERT_TRUE(scene->Intersect({0.301, 0.402, 5}, {0, 0, -1}, hit));
  SceneFace before;
  ASSERT_TRUE(scene->FindFace(hit, before));
  EXPECT_FALSE(scene->AreFacesReady());
  scene->PrepareFaces();
  EXPECT_NE(LoadWhole(folder.Write("slab.stl", MakeStlSlab())), nullptr);  // forks, with no thread about
  const Clock::time_point begin = Clock::now();
  while (!scene->AreFacesReady() && SecondsSince(begin) < 60.0) std::this_thread::yield();
  ASSERT_TRUE(scene->AreFacesReady());
  SceneFace after;
  ASSERT_TRUE(scene->FindFace(hit, after));
  EXPECT_EQ(after.triangles, before.triangles);
}

TEST_F(LargeScene, background_work_gives_way_and_begins_anew) {
  std::mutex mutex;
  std::condition_variable changed;
  int begun = 0;
  int running = 0;
  const auto count = [&](int& number, int step) {
    const std::lock_guard lock(mutex);
    number += step;
    changed.notify_all();
  };
  BackgroundWork work([&](const std::atomic<bool>& stopped) {
    count(begun, 1);
    count(running, 1);
    while (!stopped) std::this_thread::yield();
    count(running, -1);
    return false;
  });
  const auto waitFor = [&](int wanted) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::seconds(60), [&] { return begun == wanted; });
  };
  ASSERT_TRUE(waitFor(1));
  {
    const BackgroundWork::Pause pause;
    EXPECT_EQ(running, 0);
    const BackgroundWork::Pause another;
    EXPECT_EQ(begun, 1);
  }
  EXPECT_TRUE(waitFor(2));
  EXPECT_FALSE(work.IsFinished());
}

}  // namespace
