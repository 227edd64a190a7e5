// zov_large_model: makes a model of many triangles and times what a viewer does with it.
#include <sys/resource.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <epoxy/gl.h>

#include "generated_model.h"
#include "memory_watch.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/scene.h"
#include "zovhost/start_camera.h"
#include "zovhost/view_hub.h"
#include "zovhost/window.h"

namespace {

using Clock = std::chrono::steady_clock;
using Korvane::Vector3;
using zovhost::Scene;

constexpr int WIDTH = 800;
constexpr int HEIGHT = 600;
constexpr int SAMPLES = 4;
constexpr int FRAMES = 3;
constexpr int RAYS = 1000;
constexpr int FACES = 20;

double SecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

// How long each stage took, and the longest silence between two reports.
class Listener {
 public:
  bool Hear(const char* what) {
    const double gap = SecondsSince(last);
    if (stages.empty() || stages.back().what != before) stages.push_back({before, 0.0, 0.0});
    stages.back().seconds += gap;
    stages.back().silence = std::max(stages.back().silence, gap);
    last = Clock::now();
    before = what;
    return true;
  }
  void Print() const {
    for (const Stage& stage : stages) {
      std::printf("  %-24s %7.3f s, silent for %.3f s at most\n", stage.what.c_str(), stage.seconds,
                  stage.silence);
    }
  }

 private:
  struct Stage {
    std::string what;
    double seconds;
    double silence;
  };
  Clock::time_point last = Clock::now();
  std::vector<Stage> stages;
  std::string before = "Beginning";
};

double TimeFrames(zovhost::GLSceneView& view, const zovhost::ViewHub& hub) {
  double best = 1e9;
  for (int i = 0; i < FRAMES; ++i) {
    const Clock::time_point begin = Clock::now();
    view.Draw(hub.GetView(), WIDTH, HEIGHT);
    glFinish();
    best = std::min(best, SecondsSince(begin));
  }
  return best;
}

void TimeRays(Scene& scene, const zovhost::ViewHub& hub) {
  Clock::time_point begin = Clock::now();
  std::vector<Scene::Hit> hits;
  for (int i = 0; i < RAYS; ++i) {
    Vector3 origin;
    Vector3 direction;
    Scene::Hit hit;
    if (hub.GetPixelRay(WIDTH * (i % 40 + 1) / 42, HEIGHT * (i / 40 + 1) / 27, origin, direction) &&
        scene.Intersect(origin, direction, hit)) {
      hits.push_back(hit);
    }
  }
  std::printf("a ray            %8.3f us %zu of %d hit\n", SecondsSince(begin) / RAYS * 1e6, hits.size(),
              RAYS);
  begin = Clock::now();
  scene.PrepareFaces();
  while (!scene.AreFacesReady()) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  std::printf("index of faces   %8.3f s\n", SecondsSince(begin));
  double worst = 0.0;
  double sum = 0.0;
  int count = 0;
  int large = 0;  // which are left to a thread
  for (std::size_t i = 0; i < hits.size(); i += std::max<std::size_t>(1, hits.size() / FACES), ++count) {
    zovhost::SceneFace face;
    begin = Clock::now();
    large += scene.FindSmallFace(hits[i], face) ? 0 : 1;
    const double taken = SecondsSince(begin);
    worst = std::max(worst, taken);
    sum += taken;
  }
  if (count == 0) return;
  std::printf("a new face       %8.3f ms, at most %.3f ms; %d of %d left to a thread\n", sum / count * 1e3,
              worst * 1e3, large, count);
}

int Measure(const std::filesystem::path& file) {
  std::string error;
  zovhost::Window::Options options;
  options.width = WIDTH;
  options.height = HEIGHT;
  options.offscreen = true;
  const auto window = zovhost::Window::Create(options, error);
  zovhost::OffscreenTarget target;
  if (window == nullptr || !target.Create(WIDTH, HEIGHT, SAMPLES)) {
    std::fprintf(stderr, "zov_large_model: %s\n", error.c_str());
    return 1;
  }
  target.Bind();
  std::printf("%s, %s\n", reinterpret_cast<const char*>(glGetString(GL_RENDERER)), file.filename().c_str());

  MemoryWatch memory;
  Listener listener;
  const auto listen = [&listener](double, const char* what) { return listener.Hear(what); };
  const Clock::time_point begin = Clock::now();
  const std::unique_ptr<Scene> scene = zovhost::LoadScene(file, listen, error);
  if (scene == nullptr) {
    std::fprintf(stderr, "zov_large_model: %s\n", error.c_str());
    return 2;
  }
  constexpr double MIB = 1024.0 * 1024.0;
  std::printf("read and indexed %8.3f s  %zu triangles in %zu parts, %.0f MiB at most\n", SecondsSince(begin),
              scene->GetTriangleCount(), scene->GetParts().size(), memory.GetPeak() / MIB);
  zovhost::GLSceneView view;
  zovhost::ViewHub hub([] {});
  const Clock::time_point upload = Clock::now();
  if (!view.SetScene(scene.get(), listen)) return 3;
  std::printf("brought to GL    %8.3f s  %.0f MiB at most so far\n", SecondsSince(upload),
              memory.GetPeak() / MIB);
  hub.SetViewportSize(WIDTH, HEIGHT);
  zovhost::EnterScene(hub, *scene);
  constexpr double PATIENCE = 0.05;
  const auto draw = [&] { return view.DrawGradually(hub.GetView(), 0, 0, WIDTH, HEIGHT, 1.0, PATIENCE); };
  listener.Hear("Drawing coarsely");
  bool whole = draw();
  glFinish();
  std::printf("coarse picture   %8.3f s  after the start\n", SecondsSince(begin));
  while (!whole) {
    listener.Hear("Drawing");
    whole = draw();
  }
  glFinish();
  std::printf("whole picture    %8.3f s  after the start\n", SecondsSince(begin));
  listener.Hear("");
  listener.Print();
  std::printf("frame at rest    %8.1f ms\n", TimeFrames(view, hub) * 1e3);
  const Clock::time_point kept = Clock::now();
  draw();
  glFinish();
  std::printf("kept frame       %8.1f ms\n", SecondsSince(kept) * 1e3);
  view.GetOptions().moving = true;
  std::printf("frame in motion  %8.1f ms\n", TimeFrames(view, hub) * 1e3);
  TimeRays(*scene, hub);
  memory.Stop();
  std::size_t raw = 0;
  for (const zovhost::SceneMesh& mesh : scene->GetMeshes()) {
    raw += 4 * (mesh.positions.size() + mesh.normals.size() + mesh.texCoords.size() + mesh.indices.size()) +
           mesh.colours.size();
  }
  std::printf("memory           %8.0f MiB at most, of %.0f MiB raw data: %.2f times\n",
              memory.GetPeak() / MIB, static_cast<double>(raw) / MIB,
              memory.GetPeak() / static_cast<double>(raw));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  CLI::App app("Makes a model of many triangles, and times reading, drawing and picking it.",
               "zov_large_model");
  std::string form = "stl";
  std::size_t triangles = 10'000'000;
  std::size_t parts = 1000;
  std::string file;
  app.add_option("--form", form, "stl or ply for one mesh, glb for many parts; stl if not given")
      ->check(CLI::IsMember({"stl", "ply", "glb"}));
  app.add_option("--triangles", triangles, "10 million if not given")->check(CLI::Range(100, 50'000'000));
  app.add_option("--parts", parts, "Of a glb, 1000 if not given")->check(CLI::Range(1, 1'000'000));
  app.add_option("--file", file, "Kept there and taken from there; a temporary one if not given");
  CLI11_PARSE(app, argc, argv);
  const bool kept = !file.empty();
  const std::filesystem::path path = kept ? std::filesystem::path(file)
                                          : std::filesystem::temp_directory_path() /
                                                ("zov_large_model_" + std::to_string(getpid()) + "." + form);
  if (!std::filesystem::exists(path) && !WriteGeneratedModel(path, triangles, parts)) {
    std::fprintf(stderr, "zov_large_model: %s cannot be written\n", path.c_str());
    return 1;
  }
  const int code = Measure(path);
  std::error_code ignored;
  if (!kept) std::filesystem::remove(path, ignored);
  return code;
}
