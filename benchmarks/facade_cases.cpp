// The facade beside the classes that it stands before: a frame of a drag, a mouse move over the cube, and a
// frame in which the cube is drawn. What is looked at is how much it adds.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "benchmark_case.h"
#include "benchmark_hub.h"
#include "conversions.h"
#include "facade/facade_host.h"
#include "korvane/orientor.h"
#include "support/counting_renderer.h"
#include "support/manual_platform.h"
#include "zov/zov_orientor.h"
#include "zov/zov_renderer.h"

using namespace Korvane;

namespace {

constexpr int WIDTH = 1024;
constexpr int HEIGHT = 768;
// Nanoseconds that the facade may add to a step.
constexpr double MOST_ABOVE = 100.0;

// Counts what it is asked to draw, as the renderer beside which it is timed does. It overrides what a host
// must, and leaves the picks to the library.
class CountingFacadeRenderer : public zovRenderer {
 public:
  using Icon = std::shared_ptr<zovDynamicIcon2D>;

  bool create() override { return true; }
  bool destroy() override { return true; }
  bool begin_render(const qmBox2& /*viewport*/, const zovCameraParameters& /*camera*/,
                    zovRenderMode /*mode*/) override {
    return ++begun > 0;
  }
  bool end_render() override { return ++ended > 0; }
  bool render_geometry(unsigned count, qiIterator<float> /*vertices*/, qiIterator<float> /*tex_coords*/,
                       const zovMaterialParameters& /*material*/) override {
    vertexCount += count;
    return ++drawn > 0;
  }
  bool render(const std::shared_ptr<zovResourceIcon3D>& /*icon*/) override { return ++drawn > 0; }
  bool render(const Icon& /*icon*/) override { return ++drawn > 0; }
  bool render(const std::shared_ptr<zovResourceIcon2D>& /*icon*/) override { return ++drawn > 0; }
  qmString load_string_resource(zovStringID /*id*/) override { return {"text", qmStringUTF8}; }
  std::shared_ptr<zovPixelIcon2D> create_image_data(zovTextureID /*id*/) override { return nullptr; }
  Icon create_scene_screenshot(int /*width*/, int /*height*/,
                               const zovCameraParameters& /*camera*/) override {
    return Make();
  }
  Icon create_text_label(const qmString& /*text*/, float /*size*/, int /*width*/, int /*height*/) override {
    return Make();
  }
  Icon create_tooltip(const qmString& /*text*/) override { return Make(); }
  Icon create_tooltip_hud(const qmString& /*text*/) override { return Make(); }
  Icon create_message_hud(const qmString& /*text*/) override { return Make(); }
  Icon create_pivot_label(const qmString& /*text*/) override { return Make(); }
  Icon create_miniwheel_label(const qmString& /*text*/) override { return Make(); }
  Icon create_ucs_menu_label(const qmString& /*active_name*/, const qmString& /*default_name*/,
                             bool /*highlighted*/, int /*width*/) override {
    return Make();
  }
  bool destroy_icon(const Icon& icon) override { return icon != nullptr; }
  bool query_ray_scene_intersection(const qmPoint3& /*origin*/, const qmUnitVec3& /*direction*/,
                                    qmPoint3& /*hit*/) override {
    return false;
  }
  bool set_cursor_position(int /*x*/, int /*y*/) override { return true; }
  bool open_menu(zovMenuID /*id*/) override { return false; }
  bool open_ucs_menu(int /*x*/, int /*y*/) override { return false; }

  long begun = 0;
  long ended = 0;
  long drawn = 0;
  long vertexCount = 0;

 protected:
  bool load_texture(zovTextureID /*id*/) override { return true; }
  void release_texture(zovTextureID /*id*/) override { ++released; }
  bool set_cursor_icon(zovCursorID /*id*/) override { return true; }

 private:
  Icon Make() { return std::make_shared<zovDynamicIcon2D>(++made); }

  int made = 0;
  int released = 0;
};

// Copies what it is asked to draw, as the facade does before it hands it to a host.
class CopyingRenderer : public CountingRenderer {
 public:
  bool RenderGeometry(unsigned count, const float* corners, const float* textureCorners,
                      const MaterialParams* material) override {
    Copy(corners, std::size_t{3} * count, vertices);
    Copy(textureCorners, std::size_t{2} * count, texCoords);
    return CountingRenderer::RenderGeometry(count, corners, textureCorners, material);
  }

 private:
  static void Copy(const float* from, std::size_t count, std::vector<float>& to) {
    if (to.size() < count) to.resize(count);
    if (from != nullptr) std::copy_n(from, count, to.data());
  }

  std::vector<float> vertices;
  std::vector<float> texCoords;
};

// Two views alike, each with a cube that has the mouse.
class FacadeCase : public BenchmarkCase {
 public:
  explicit FacadeCase(std::string caseName) : name(std::move(caseName)) {}
  std::string GetName() const override { return name; }
  double GetAimAboveBare() const override { return MOST_ABOVE; }

  void Restart() override {
    outside = std::make_shared<FacadeHost>();
    drawing = std::make_shared<CountingFacadeRenderer>();
    cube = std::make_unique<zovOrientor>();
    plainHub = std::make_unique<BenchmarkHub>();
    plainRenderer = std::make_unique<CopyingRenderer>();
    plainCube = std::make_unique<Orientor>();
    plainHub->view = GetBenchmarkCamera();
    outside->view = zovCameraParameters(plainHub->view);
    for (CameraOperations* const hub :
         {&outside->korvane(), static_cast<CameraOperations*>(plainHub.get())}) {
      hub->GetApplicationParameters().viewport_width = WIDTH;
      hub->GetApplicationParameters().viewport_height = HEIGHT;
    }
    cube->set_camera_operations(outside);
    cube->set_renderer(drawing);
    plainCube->SetKorvane(plainHub.get());
    plainCube->SetRenderer(plainRenderer.get());
    for (Orientor* const each : {&cube->korvane(), plainCube.get()}) {
      each->SetViewportSize(WIDTH, HEIGHT);
      each->SetViewportMousePosition(MIDDLE_X, HEIGHT - MIDDLE_Y - 1);
    }
    outsideStep = plainStep = 0;
  }

 protected:
  // Of the cube.
  static constexpr int MIDDLE_X = 964;
  static constexpr int MIDDLE_Y = 708;

  static int OffsetOf(int step) { return (step * 7) % 41 - 20; }

  bool SeeTheSame() const { return CameraCheckEqual(&outside->view.korvane(), &plainHub->view); }

  std::shared_ptr<FacadeHost> outside;
  std::shared_ptr<CountingFacadeRenderer> drawing;
  std::unique_ptr<zovOrientor> cube;
  std::unique_ptr<BenchmarkHub> plainHub;
  std::unique_ptr<CopyingRenderer> plainRenderer;
  std::unique_ptr<Orientor> plainCube;
  int outsideStep = 0;
  int plainStep = 0;

 private:
  std::string name;
};

class FrameOfADrag : public FacadeCase {
 public:
  FrameOfADrag() : FacadeCase("facade: frame of an orbit") {}

  void Restart() override {
    FacadeCase::Restart();
    outside->korvane().BeginOperation(OPERATION_ORBIT, 400, 300);
    plainHub->BeginOperation(OPERATION_ORBIT, 400, 300);
  }
  void StepLibrary() override {
    outside->korvane().UpdateOperationParams(400 + OffsetOf(++outsideStep), 300, OPERATION_ORBIT);
    outside->perform_operations();
  }
  void StepBare() override {
    plainHub->UpdateOperationParams(400 + OffsetOf(++plainStep), 300, OPERATION_ORBIT);
    plainHub->PerformOperations();
  }
  bool Agrees() const override { return SeeTheSame(); }
};

class MoveOverTheCube : public FacadeCase {
 public:
  explicit MoveOverTheCube(std::string caseName, int fromLeft, int fromBottom)
      : FacadeCase(std::move(caseName)), x(fromLeft), y(fromBottom) {}

  void StepLibrary() override {
    const int offset = OffsetOf(++outsideStep);
    cube->on_mouse_move(x + offset, y + offset / 2);
    cube->set_viewport_mouse_position(x + offset, HEIGHT - y - offset / 2 - 1);
  }
  void StepBare() override {
    const int offset = OffsetOf(++plainStep);
    plainCube->OnMouseMove(x + offset, y + offset / 2);
    plainCube->SetViewportMousePosition(x + offset, HEIGHT - y - offset / 2 - 1);
  }
  bool Agrees() const override {
    return cube->get_active_geometry_part() == plainCube->GetActiveGeometryPart();
  }

 private:
  int x;
  int y;
};

class DrawnFrame : public FacadeCase {
 public:
  DrawnFrame() : FacadeCase("facade: frame with the cube drawn") {}
  void StepLibrary() override {
    outside->perform_operations();
    cube->draw();
  }
  void StepBare() override {
    plainHub->PerformOperations();
    plainCube->Draw();
  }
  bool Agrees() const override {
    return drawing->vertexCount == plainRenderer->vertexCount && drawing->begun == plainRenderer->begun &&
           drawing->drawn == plainRenderer->drawn && drawing->drawn > 0;
  }
};

}  // namespace

std::vector<BenchmarkCase*> GetFacadeCases() {
  static FrameOfADrag frame;
  static MoveOverTheCube over("facade: mouse over the cube", 964, 708);
  static MoveOverTheCube far("facade: mouse far from the cube", 300, 300);
  static DrawnFrame drawn;
  return {&frame, &over, &far, &drawn};
}
