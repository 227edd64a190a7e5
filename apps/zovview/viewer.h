#pragma once

#include <memory>
#include <optional>
#include <string>

#include "click_watch.h"
#include "korvane/interval_timer.h"
#include "model_source.h"
#include "navigation.h"
#include "progress_line.h"
#include "selection.h"
#include "viewer_hub.h"
#include "viewer_panel.h"
#include "zovhost/gl_renderer.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/gui.h"
#include "zovhost/resource_pack.h"
#include "zovhost/window.h"

namespace zovview {

/// The viewer in a window.
class Viewer {
 public:
  explicit Viewer(zovhost::Window& window);
  ~Viewer();
  Viewer(const Viewer&) = delete;
  Viewer& operator=(const Viewer&) = delete;

  /// Until the window is closed, or the first model turns out not to be one. The exit code of the program.
  int Run(const ModelSource& first);

  /// Loads a model in one of the next rounds of the window's loop; it replaces the present one when that has
  /// succeeded. While another is loading, this one follows it; of several only the last.
  void Open(const ModelSource& source);
  bool IsLoading() const { return waiting.has_value() || contents.loading.has_value(); }
  /// Of the last failure, for a while; empty for none.
  const std::string& GetMessage() const { return contents.message; }
  const zovhost::Scene* GetScene() const { return scene.get(); }
  ViewerHub& GetHub() { return hub; }
  const Selection& GetSelection() const { return selection; }
  int GetExitCode() const { return exitCode; }

 private:
  // Lets a message go after a while.
  class MessageTimer : public Korvane::IntervalTimer {
   public:
    explicit MessageTimer(Viewer& owner);
    void Timeout() override;

   private:
    Viewer& viewer;
  };

  // Gives the library's renderer the pointer of the window.
  class Pointer : public zovhost::RendererHost {
   public:
    Pointer(zovhost::Window& window, const zovhost::ResourcePack& resources);
    bool ApplyCursor(Korvane::CursorID id) override;
    bool WarpPointer(int x, int y) override;

   private:
    zovhost::Window& window;
    const zovhost::ResourcePack& resources;
  };

  void OnEvent(const zovhost::WindowEvent& event);
  void OnMouseUp(const zovhost::WindowEvent& event);
  void OnKey(const zovhost::WindowEvent& event);
  void OnResized();
  void LoadWaiting();
  void Load(const ModelSource& source);
  void ShowProgress(double fraction, const char* step);
  void ShowModel(LoadedModel model);
  void ShowMessage(const std::string& text);
  void DrawFrame();

  zovhost::Window& window;
  ViewerHub hub;
  Selection selection;
  zovhost::GLSceneView sceneView;
  zovhost::GLRenderer renderer;
  Pointer pointer;
  Navigation navigation;
  ClickWatch clicks;
  zovhost::Gui gui;
  ViewerPanel panel;
  PanelContents contents;
  std::unique_ptr<zovhost::Scene> scene;
  MessageTimer messageTimer;
  ProgressLine progress;
  std::optional<ModelSource> waiting;
  int exitCode = 0;
};

}  // namespace zovview
