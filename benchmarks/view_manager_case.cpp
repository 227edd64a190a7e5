// One mouse move of a drag on its way through the view manager: the routing, the tool, the camera of the
// frame, the drawing, with a host that only counts. Beside it the same move of the hub alone, so that the
// difference is what the routing and the drawing cost. And a mouse move without a button, beside the same of
// the cube alone.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "benchmark_case.h"
#include "conversions.h"
#include "korvane/camera_operations.h"
#include "korvane/orbit_tool.h"
#include "korvane/orientor.h"
#include "korvane/view_manager.h"
#include "support/recording_renderer.h"

using namespace Korvane;

namespace {

constexpr int WIDTH = 1024;
constexpr int HEIGHT = 768;
constexpr int START_X = 512;
constexpr int START_Y = 384;

class MemoryView : public CameraOperations {
 public:
  void ApplyCameraParameters(const CameraParameters& moved) override { view = moved; }
  void QueryCameraParameters(CameraParameters& out) const override { out = view; }
  void RequestApplicationUpdate() override { ++requests; }

  CameraParameters view;
  long requests = 0;
};

class CountingRenderer : public RecordingRenderer {
 public:
  using RecordingRenderer::Render;
  bool BeginRender(const Box2& /*viewport*/, const CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    return ++passes > 0;
  }
  bool EndRender() override { return true; }
  bool Render(ResourceIcon3D* /*icon*/) override { return ++icons > 0; }
  bool Render(DynamicIcon2D* /*icon*/) override { return ++icons > 0; }
  bool SetCursorIcon(CursorID /*id*/) override { return true; }

  long passes = 0;
  long icons = 0;
};

class ViewManagerCase : public BenchmarkCase {
 public:
  std::string GetName() const override { return "view manager: move, frame, draw"; }

  void Restart() override {
    library = std::make_unique<Library>();
    bare = std::make_unique<MemoryView>();
    bare->view = GetBenchmarkCamera();
    Describe(*bare);
    bare->ConstrainPivotToViewport();
    bare->BeginOperation(OPERATION_ORBIT, START_X, HEIGHT - START_Y - 1);
    libraryStep = bareStep = 0;
  }

  void StepLibrary() override {
    const int x = XOf(++libraryStep);
    library->manager.OnMouseMove(x, START_Y);
    library->hub.PerformOperations();
    library->manager.OnDraw();
    benchmark::DoNotOptimize(std::as_const(library->hub.view));
  }

  void StepBare() override {
    bare->UpdateOperationParams(XOf(++bareStep), HEIGHT - START_Y - 1, OPERATION_ORBIT);
    bare->PerformOperations();
    benchmark::DoNotOptimize(std::as_const(bare->view));
  }

  bool Agrees() const override {
    const CameraParameters& view = library->hub.view;
    const bool drawn = library->renderer.passes > 0 && library->renderer.icons > 0;
    return drawn && view.eye == bare->view.eye && view.up == bare->view.up;
  }

 private:
  struct Library {
    Library() {
      hub.view = GetBenchmarkCamera();
      manager.SetKorvane(&hub);
      manager.SetRenderer(&renderer);
      manager.AddTool(1, new OrbitTool);
      manager.SetViewportSize(WIDTH, HEIGHT);
      Describe(hub);
      manager.Create();
      manager.SetActiveTool(1);
      manager.OnLeftMouseDown(START_X, START_Y);
    }
    ~Library() {
      manager.OnLeftMouseUp(START_X, START_Y);
      manager.Destroy();
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    MemoryView hub;
    CountingRenderer renderer;
    ViewManager manager;
  };

  static void Describe(CameraOperations& hub) {
    ApplicationParameters& parameters = hub.GetApplicationParameters();
    parameters.viewport_width = WIDTH;
    parameters.viewport_height = HEIGHT;
    parameters.preserve_orbit_up_direction = true;  // as the tool sets them
    parameters.align_orbit_up_direction = true;
  }

  // To and fro, a pixel a step.
  static int XOf(int step) {
    const int phase = step % 400;
    return START_X + (phase < 200 ? phase : 400 - phase);
  }

  std::unique_ptr<Library> library;
  std::unique_ptr<MemoryView> bare;
  int libraryStep = 0;
  int bareStep = 0;
};

// Where the mouse moves about.
enum class Place { OutsideSquare, InSquare, OverCube };

struct Pixel {
  int x;
  int y;  // upward
};

class MouseMoveCase : public BenchmarkCase {
 public:
  MouseMoveCase(std::string caseName, Place mousePlace) : name(std::move(caseName)), place(mousePlace) {}

  std::string GetName() const override { return name; }

  void Restart() override {
    library = std::make_unique<Library>();
    hub.view = GetBenchmarkCamera();
    alone = std::make_unique<Orientor>();
    alone->SetKorvane(&hub);
    alone->SetRenderer(&renderer);
    alone->SetViewportSize(WIDTH, HEIGHT);
    if (pixels.empty()) FindPixels();
    libraryNext = bareNext = 0;
  }

  void StepLibrary() override {
    const Pixel& pixel = pixels[libraryNext++ % pixels.size()];
    library->manager.OnMouseMove(pixel.x, pixel.y);
    benchmark::DoNotOptimize(library->cube.GetActiveGeometryPart());
  }

  void StepBare() override { MoveAlone(pixels[bareNext++ % pixels.size()]); }

  bool Agrees() const override {
    return library->cube.GetActiveGeometryPart() == alone->GetActiveGeometryPart() && GetPlace() == place;
  }

 private:
  struct Library {
    Library() {
      hub.view = GetBenchmarkCamera();
      manager.SetKorvane(&hub);
      manager.SetRenderer(&renderer);
      manager.SetOrientor(&cube);
      manager.AddTool(1, new OrbitTool);
      manager.SetViewportSize(WIDTH, HEIGHT);
      manager.Create();
      manager.SetActiveTool(1);
    }
    ~Library() { manager.Destroy(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    MemoryView hub;
    CountingRenderer renderer;
    Orientor cube;
    ViewManager manager;
  };

  void MoveAlone(const Pixel& pixel) {
    alone->OnMouseMove(pixel.x, pixel.y);
    alone->SetViewportMousePosition(pixel.x, HEIGHT - pixel.y - 1);
    benchmark::DoNotOptimize(alone->GetActiveGeometryPart());
  }

  Place GetPlace() const {
    if (!alone->IsMouseInRegion()) return Place::OutsideSquare;
    return alone->IsMouseOnGeometryPart() ? Place::OverCube : Place::InSquare;
  }

  // In steps that meet every part of the top right corner.
  void FindPixels() {
    for (int y = HEIGHT - 1; y > HEIGHT - 250; y -= 7) {
      for (int x = WIDTH - 1; x > WIDTH - 250; x -= 5) {
        MoveAlone({x, y});
        if (GetPlace() == place) pixels.push_back({x, y});
      }
    }
  }

  std::string name;
  Place place;
  std::vector<Pixel> pixels;
  std::unique_ptr<Library> library;
  MemoryView hub;
  CountingRenderer renderer;
  std::unique_ptr<Orientor> alone;
  std::size_t libraryNext = 0;
  std::size_t bareNext = 0;
};

}  // namespace

std::vector<BenchmarkCase*> GetViewManagerCases() {
  static ViewManagerCase drag;
  static MouseMoveCase outside("view manager: mouse far off", Place::OutsideSquare);
  static MouseMoveCase inSquare("view manager: mouse by the cube", Place::InSquare);
  static MouseMoveCase over("view manager: mouse over the cube", Place::OverCube);
  return {&drag, &outside, &inSquare, &over};
}
