// A model in a window, with the cube and the tools. Left drag: the tool that 1 to 4 choose, at first the
// orbit; the middle button pans, the wheel zooms, A fits the model, a click on the cube shows that side.
//   window_view [MODEL] [--check]   to check: without a display, until the view has come to rest
#include <cstdio>
#include <memory>
#include <string>

#include "korvane/korvane.h"
#include "zovhost/gl_renderer.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/resource_pack.h"
#include "zovhost/scene.h"
#include "zovhost/start_camera.h"
#include "zovhost/view_hub.h"
#include "zovhost/window.h"
#include "zovhost/window_view_manager.h"

namespace {

using zovhost::WindowEvent;

class View : private zovhost::RendererHost {
 public:
  explicit View(zovhost::Window& onWindow) : window(onWindow), hub([this] { window.RequestFrame(); }) {
    renderer.SetHost(this);
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetOrientor(&cube);
    disc.GetParameters().suppressWelcome = true;
    manager.SetHelmDisc(&disc);
    manager.SetMovePointer([this](int x, int y) { window.WarpPointer(x, y); });
    manager.AddTool('1', new Korvane::OrbitTool);  // the manager owns them
    manager.AddTool('2', new Korvane::PanTool);
    manager.AddTool('3', new Korvane::ZoomTool);
    manager.AddTool('4', new Korvane::WalkTool);
    manager.SetActiveTool('1');
    window.SetEventHandler([this](const WindowEvent& event) { OnEvent(event); });
    window.SetFrameHandler([this] { DrawFrame(); });
  }

  ~View() override {
    manager.Destroy();
    renderer.Destroy();
  }

  // With a first move, to show the whole model, which has to outlive the view.
  bool Create(const zovhost::Scene& scene) {
    if (!picture.SetScene(&scene) || !manager.Create()) return false;
    renderer.SetScene(&scene);
    OnResized();
    zovhost::EnterScene(hub, scene);
    return manager.FitAllToView();
  }

  bool HasAllPictures() const { return renderer.GetPlaceholderCount() == 0; }

 private:
  void OnEvent(const WindowEvent& event) {
    if (event.type == WindowEvent::Type::Resized) return OnResized();
    if (manager.OnEvent(event) || event.type != WindowEvent::Type::KeyDown) return;
    if (event.key == 'a') manager.FitAllToView();
    if (event.key >= '1' && event.key <= '4') manager.SetActiveTool(event.key);
  }

  void OnResized() {
    renderer.SetViewport(0, 0, window.GetWidth(), window.GetHeight());
    renderer.SetDisplayScale(window.GetScale());
    manager.SetViewportSize(window.GetWidth(), window.GetHeight());
    hub.SetViewportSize(window.GetWidth(), window.GetHeight());
    hub.GetApplicationParameters().pixels_per_point = static_cast<float>(window.GetScale());
  }

  // The hub moves the camera, and asks for the next frame as long as anything goes on.
  void DrawFrame() {
    hub.PerformOperations();
    renderer.SetCamera(hub.GetView());
    picture.Draw(hub.GetView(), 0, 0, window.GetWidth(), window.GetHeight(), window.GetScale());
    manager.OnDraw();
  }

  bool ApplyCursor(Korvane::CursorID id) override {
    zovhost::CursorPicture cursor;
    if (renderer.GetResources().RenderCursor(id, window.GetScale(), cursor)) {
      window.DefineCursor(id, cursor.image, cursor.hotX, cursor.hotY);
    }
    window.SetCursor(id);
    return true;
  }

  bool WarpPointer(int x, int y) override {
    window.WarpPointer(x, y);
    manager.OnPointerSet(x, y);
    return true;
  }

  zovhost::Window& window;
  zovhost::ViewHub hub;
  zovhost::GLSceneView picture;
  zovhost::GLRenderer renderer;
  Korvane::Orientor cube;
  Korvane::HelmDisc disc;              // brings the tools of the middle button and the wheel
  zovhost::WindowViewManager manager;  // after all that it borrows, so that it goes first
};

}  // namespace

int main(int argc, char** argv) {
  const bool check = argc > 1 && std::string(argv[argc - 1]) == "--check";
  const std::string model = argc > (check ? 2 : 1) ? argv[1] : "";
  std::string error;
  const auto scene = model.empty() ? zovhost::MakeDemoBuilding() : zovhost::LoadScene(model, nullptr, error);
  const auto window = scene != nullptr
                          ? zovhost::Window::Create({.title = "window_view", .offscreen = check}, error)
                          : nullptr;
  if (window == nullptr) return std::fprintf(stderr, "%s\n", error.c_str()), 1;
  View view(*window);
  if (!view.Create(*scene)) return 1;
  if (!check) window->Run();
  while (check && window->IsFrameRequested()) window->Step(10);
  return view.HasAllPictures() ? 0 : 1;
}
