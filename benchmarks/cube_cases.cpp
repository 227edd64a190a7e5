// The orientation cube: the mouse over it and far from it, beside the same picks without the cube; and a
// draw, beside its picks and a copy of what it hands to the renderer.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bare_pick.h"
#include "benchmark_case.h"
#include "benchmark_hub.h"
#include "conversions.h"
#include "frame_copy.h"
#include "korvane/orientor.h"
#include "support/counting_renderer.h"

using namespace Korvane;

namespace {

constexpr int WIDTH = 1024;
constexpr int HEIGHT = 768;

struct Pixel {
  int x;
  int y;  // upward
};

// Every pass that the cube opens for one place of the mouse, with the quads that it offers.
class PassCapture : public CountingRenderer {
 public:
  struct Pass {
    Box2 viewport;
    BareCamera camera;
    std::vector<std::array<float, 12>> quads;
    std::vector<int> ids;
  };

  bool BeginSelection(const Vector2& point, const Box2& viewport, const CameraParameters& camera,
                      RenderMode mode) override {
    inPerspective = mode == RENDER_PERSPECTIVE;
    if (inPerspective) passes.push_back({viewport, ToBare(camera), {}, {}});
    return RecordingRenderer::BeginSelection(point, viewport, camera, mode);
  }
  bool RenderSelectionGeometry(unsigned count, const float* corners, int id) override {
    for (unsigned first = 0; inPerspective && first + 4 <= count; first += 4) {
      std::array<float, 12> quad;
      std::memcpy(quad.data(), corners + std::size_t{3} * first, sizeof(quad));
      passes.back().quads.push_back(quad);
      passes.back().ids.push_back(id);
    }
    return RecordingRenderer::RenderSelectionGeometry(count, corners, id);
  }

  std::vector<Pass> passes;

 private:
  bool inPerspective = false;
};

// The mouse within a circle.
class MoveCase : public BenchmarkCase {
 public:
  MoveCase(std::string caseName, Pixel middle, double radius, double aimInNanoseconds = 0.0)
      : name(std::move(caseName)), aim(aimInNanoseconds) {
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      const double angle = 2.399963 * static_cast<double>(i);
      const double distance = radius * std::sqrt(static_cast<double>(i) / static_cast<double>(pixels.size()));
      pixels[i] = {middle.x + static_cast<int>(distance * std::cos(angle)),
                   middle.y + static_cast<int>(distance * std::sin(angle))};
    }
  }

  std::string GetName() const override { return name; }
  double GetAimInNanoseconds() const override { return aim; }

  void Restart() override {
    cube = std::make_unique<Orientor>();
    hub.view = GetBenchmarkCamera();
    cube->SetKorvane(&hub);
    cube->SetRenderer(&renderer);
    cube->SetViewportSize(WIDTH, HEIGHT);
    libraryNext = bareNext = 0;
    PassCapture capture;
    cube->SetRenderer(&capture);
    Move(pixels[0]);
    cube->SetRenderer(&renderer);
    passes = capture.passes;
    barePick = BarePick();  // far from the cube no pass is opened
    librarySelection = bareSelection = -2;
  }

  void StepLibrary() override {
    Move(pixels[libraryNext++ % pixels.size()]);
    librarySelection = cube->GetActiveGeometryPart();
    benchmark::DoNotOptimize(std::as_const(librarySelection));
  }

  // The last of the passes is the one over all parts.
  void StepBare() override {
    const Pixel& pixel = pixels[bareNext++ % pixels.size()];
    for (const PassCapture::Pass& pass : passes) {
      const Vector2 low = pass.viewport.Min();
      barePick.Begin(pixel.x - low.x, pixel.y - low.y, pass.viewport.halfExtent.x, pass.viewport.halfExtent.y,
                     pass.camera);
      for (std::size_t i = 0; i < pass.quads.size(); ++i) barePick.Offer(pass.quads[i].data(), pass.ids[i]);
    }
    bareSelection = barePick.GetSelection();
    benchmark::DoNotOptimize(std::as_const(bareSelection));
  }

  bool Agrees() const override { return librarySelection == bareSelection && librarySelection != -2; }

 protected:
  int GetBareSelection() const { return bareSelection; }
  void Move(const Pixel& pixel) {
    cube->OnMouseMove(pixel.x, pixel.y);
    cube->SetViewportMousePosition(pixel.x, HEIGHT - pixel.y);
  }

  BenchmarkHub hub;
  CountingRenderer renderer;
  std::unique_ptr<Orientor> cube;

 private:
  std::string name;
  double aim;
  std::array<Pixel, 256> pixels;
  std::size_t libraryNext = 0;
  std::size_t bareNext = 0;
  std::vector<PassCapture::Pass> passes;
  BarePick barePick;
  int librarySelection = -2;
  int bareSelection = -2;
};

// A draw looks first at what the resting mouse is on.
class DrawCase : public MoveCase {
 public:
  DrawCase() : MoveCase("cube drawn", {964, 708}, 0.0) {}

  void Restart() override {
    MoveCase::Restart();
    copy.Restart(renderer, [this] { cube->Draw(); });
  }

  void StepLibrary() override { cube->Draw(); }

  void StepBare() override {
    MoveCase::StepBare();
    copy.Step();
  }

  bool Agrees() const override {
    return copy.Agrees(renderer) && cube->GetActiveGeometryPart() == GetBareSelection();
  }

 private:
  FrameCopy copy;
};

}  // namespace

std::vector<BenchmarkCase*> GetCubeCases() {
  static MoveCase over("mouse over the cube", {964, 708}, 40.0);
  static MoveCase far("mouse far from the cube", {300, 300}, 200.0, 150.0);
  static DrawCase draw;
  return {&over, &far, &draw};
}
