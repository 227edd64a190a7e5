// A pick over the 26 parts of a cube, as the pointer passes over it.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "bare_pick.h"
#include "benchmark_case.h"
#include "conversions.h"
#include "korvane/renderer.h"
#include "support/recording_renderer.h"

using namespace Korvane;

namespace {

constexpr int PART_COUNT = 26;
constexpr double HALF_WIDTH = 512.0;
constexpr double HALF_HEIGHT = 384.0;
using Quad = std::array<float, 12>;

// A square that faces outward, some way out along each of the 26 directions.
std::vector<Quad> MakeParts() {
  std::vector<Quad> parts;
  for (int direction = 0; direction < 27; ++direction) {
    const Vector3 outward(direction / 9 - 1, direction / 3 % 3 - 1, direction % 3 - 1);
    if (outward == Vector3::Zero) continue;
    const Vector3 aside = outward.Cross(Vector3(0.31, 0.94, 0.12)).Normalize() * 1.1;
    const Vector3 upward = aside.Cross(outward).Normalize() * 1.1;
    const Vector3 middle = outward * 3.0;
    const Vector3 corners[4] = {middle - aside - upward, middle + aside - upward, middle + aside + upward,
                                middle - aside + upward};
    Quad quad;
    for (std::size_t i = 0; i < 4; ++i) corners[i].ToArray(quad.data() + 3 * i);
    parts.push_back(quad);
  }
  return parts;
}

class PickCase : public BenchmarkCase {
 public:
  std::string GetName() const override { return "pick of 26 quads"; }

  void Restart() override {
    libraryNext = bareNext = 0;
    librarySelection = bareSelection = -2;
  }

  void StepLibrary() override {
    const Vector2 pixel = pixels[libraryNext++ % pixels.size()];
    const Box2 viewport(Vector2(HALF_WIDTH, HALF_HEIGHT), Vector2(HALF_WIDTH, HALF_HEIGHT));
    if (!renderer.BeginSelection(pixel, viewport, camera, Renderer::RENDER_PERSPECTIVE)) return;
    for (int id = 0; id < PART_COUNT; ++id) {
      renderer.RenderSelectionGeometry(4, parts[static_cast<std::size_t>(id)].data(), id);
    }
    librarySelection = renderer.GetSelection();
    benchmark::DoNotOptimize(std::as_const(librarySelection));
  }

  void StepBare() override {
    const Vector2 pixel = pixels[bareNext++ % pixels.size()];
    barePick.Begin(pixel.x, pixel.y, HALF_WIDTH, HALF_HEIGHT, bareCamera);
    for (int id = 0; id < PART_COUNT; ++id) {
      barePick.Offer(parts[static_cast<std::size_t>(id)].data(), id);
    }
    bareSelection = barePick.GetSelection();
    benchmark::DoNotOptimize(std::as_const(bareSelection));
  }

  bool Agrees() const override { return librarySelection == bareSelection && librarySelection != -2; }

 private:
  // From the middle outward in a spiral: most of them over a part.
  static std::vector<Vector2> MakePixels() {
    std::vector<Vector2> spiral;
    for (int i = 0; i < 256; ++i) {
      const double angle = 0.37 * i;
      spiral.push_back(Vector2(HALF_WIDTH + i * std::cos(angle), HALF_HEIGHT + i * std::sin(angle)));
    }
    return spiral;
  }

  RecordingRenderer renderer;
  BarePick barePick;
  const CameraParameters camera = GetBenchmarkCamera();
  const BareCamera bareCamera = ToBare(camera);
  const std::vector<Quad> parts = MakeParts();
  const std::vector<Vector2> pixels = MakePixels();
  std::size_t libraryNext = 0;
  std::size_t bareNext = 0;
  int librarySelection = -2;
  int bareSelection = -2;
};

}  // namespace

std::vector<BenchmarkCase*> GetPickCases() {
  static PickCase pick;
  return {&pick};
}
