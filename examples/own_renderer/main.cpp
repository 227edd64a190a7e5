// A view with the cube and a tool, drawn by a renderer of one's own. This one only counts what it is asked to
// draw: derive the like from NullRenderer, and put your graphics into it one operation at a time.
#include <cstdio>

#include "korvane/korvane.h"
#include "null_renderer.h"

namespace {

class View : public Korvane::CameraOperations {
 public:
  void ApplyCameraParameters(const Korvane::CameraParameters& moved) override { camera = moved; }
  void QueryCameraParameters(Korvane::CameraParameters& now) const override { now = camera; }
  void RequestApplicationUpdate() override { frameWanted = true; }

  Korvane::CameraParameters camera;
  bool frameWanted = true;
};

class CountingRenderer : public NullRenderer {
 public:
  bool BeginRender(const Korvane::Box2& viewport, const Korvane::CameraParameters& camera,
                   RenderMode mode) override {
    ++passes;
    return NullRenderer::BeginRender(viewport, camera, mode);
  }
  bool RenderGeometry(unsigned vertexCount, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    quads += vertexCount / 4;
    return true;
  }

  unsigned passes = 0;
  unsigned quads = 0;
};

}  // namespace

int main() {
  View hub;
  hub.camera = hub.GetHomeCamera();
  CountingRenderer renderer;
  Korvane::Orientor cube;
  Korvane::ViewManager manager;  // after what it borrows, so that it goes first

  manager.SetKorvane(&hub);
  manager.SetRenderer(&renderer);
  manager.SetOrientor(&cube);
  manager.AddTool(1, new Korvane::OrbitTool);  // the manager owns it
  if (!manager.Create()) return 1;             // creates the renderer, too
  manager.SetViewportSize(800, 600);
  manager.SetActiveTool(1);

  const Korvane::Vector3 before = hub.camera.eye;
  manager.OnLeftMouseDown(400, 300);  // pixels from the bottom left
  for (int x = 410; x <= 500; x += 10) {
    manager.OnMouseMove(x, 300);
    if (!hub.frameWanted) continue;
    hub.frameWanted = false;
    hub.PerformOperations();
    manager.OnDraw();
  }
  manager.OnLeftMouseUp(500, 300);

  std::printf("%u passes with %u quads; the eye went from x %.3f to %.3f\n", renderer.passes, renderer.quads,
              before.x, hub.camera.eye.x);
  manager.Destroy();
  renderer.Destroy();
  return renderer.quads > 0 && hub.camera.eye != before ? 0 : 1;
}
