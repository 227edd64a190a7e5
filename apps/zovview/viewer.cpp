#include "viewer.h"

#include <SDL_keycode.h>
#include <epoxy/gl.h>

#include <cstdio>
#include <utility>

#include "start_camera.h"
#include "view_commands.h"

namespace zovview {

using zovhost::WindowEvent;

namespace {

constexpr const char* PROGRAM = "zovview";
constexpr double MESSAGE_SECONDS = 8.0;
constexpr int EXIT_BAD_MODEL = 2;

}  // namespace

Viewer::MessageTimer::MessageTimer(Viewer& owner) : viewer(owner) {}

void Viewer::MessageTimer::Timeout() {
  viewer.contents.message.clear();
  viewer.window.RequestFrame();
}

Viewer::Pointer::Pointer(zovhost::Window& onWindow, const zovhost::ResourcePack& pack)
    : window(onWindow), resources(pack) {}

// Numbers without a picture of their own show the system's arrow.
bool Viewer::Pointer::ApplyCursor(Korvane::CursorID id) {
  zovhost::CursorPicture picture;
  if (resources.HasCursor(id) && resources.RenderCursor(id, window.GetScale(), picture)) {
    window.DefineCursor(id, picture.image, picture.hotX, picture.hotY);
  }
  window.SetCursor(id);
  return true;
}

bool Viewer::Pointer::WarpPointer(int x, int y) {
  window.WarpPointer(x, y);
  return true;
}

Viewer::Viewer(zovhost::Window& onWindow)
    : window(onWindow),
      hub([this] { window.RequestFrame(); }),
      selection(hub),
      pointer(window, renderer.GetResources()),
      navigation(hub, {[this](const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                              Korvane::Vector3& hit) {
                         return renderer.QueryRaySceneIntersection(origin, direction, hit);
                       },
                       [this](Korvane::CursorID id) { renderer.SetCursorID(id); }}),
      gui(window),
      panel({hub, selection}),
      messageTimer(*this),
      progress(ProgressLine::OffTerminal::Silent) {
  renderer.SetHost(&pointer);
  renderer.SetFaceShow([this](const zovhost::SceneFace* face) { sceneView.SetFaceHighlight(face); });
  renderer.Create();
  window.SetEventHandler([this](const WindowEvent& event) { OnEvent(event); });
  window.SetFrameHandler([this] { DrawFrame(); });
  window.SetWakeHandler([this] { LoadWaiting(); });
  OnResized();
}

Viewer::~Viewer() {
  window.SetEventHandler(nullptr);
  window.SetFrameHandler(nullptr);
  window.SetWakeHandler(nullptr);
  renderer.Destroy();
}

int Viewer::Run(const ModelSource& first) {
  Open(first);
  window.Run();
  return exitCode;
}

// ---- models ----

void Viewer::Open(const ModelSource& source) {
  waiting = source;
  window.Wake();
}

void Viewer::LoadWaiting() {
  if (contents.loading.has_value()) return;  // this round is one that a load has served
  while (waiting.has_value() && window.IsOpen()) Load(*std::exchange(waiting, std::nullopt));
}

// On the window's own thread, which serves its events meanwhile: the importer is contained in a forked
// process, and a fork wants all other threads at rest. Those of the graphics driver are, after glFinish.
void Viewer::Load(const ModelSource& source) {
  contents.loading = LoadingStatus{0.0, "", source.GetName()};
  glFinish();
  LoadedModel model =
      LoadModel(source, [this](double fraction, const char* step) { ShowProgress(fraction, step); });
  progress.Clear();
  contents.loading.reset();
  if (window.IsOpen()) ShowModel(std::move(model));
  window.RequestFrame();
}

void Viewer::ShowProgress(double fraction, const char* step) {
  progress.Show(fraction, step);
  contents.loading->fraction = fraction;
  contents.loading->step = step;
  window.RequestFrame();
  // A load cannot be broken off, but it must not keep a closed window on the screen.
  if (!window.Step(0)) window.Hide();
}

// What cannot be shown leaves the present model where it is; without one there is nothing to stay for.
void Viewer::ShowModel(LoadedModel model) {
  if (model.scene != nullptr && !sceneView.SetScene(model.scene.get())) {
    model.error = model.source.GetName() + ": the graphics memory does not hold this model";
    sceneView.SetScene(scene.get());
    model.scene.reset();
  }
  if (model.scene == nullptr) {
    std::fprintf(stderr, "%s: %s\n", PROGRAM, model.error.c_str());
    if (scene != nullptr) return ShowMessage(model.error);
    exitCode = EXIT_BAD_MODEL;
    window.Close();
    return;
  }
  navigation.Cancel();
  clicks.Cancel();
  selection.SetScene(model.scene.get());
  scene = std::move(model.scene);
  renderer.SetScene(scene.get());
  EnterScene(hub, *scene);
  contents.name = model.source.GetName();
  contents.triangleCount = scene->GetTriangleCount();
  contents.message.clear();
  window.SetTitle(contents.name + " - " + PROGRAM);
}

void Viewer::ShowMessage(const std::string& text) {
  contents.message = text;
  messageTimer.Start(MESSAGE_SECONDS, false);
  window.RequestFrame();
}

// ---- events ----

void Viewer::OnEvent(const WindowEvent& event) {
  switch (event.type) {
    case WindowEvent::Type::MouseDown:
      clicks.OnMouseDown(event);
      return navigation.OnMouseDown(event.button, event.x, event.y);
    case WindowEvent::Type::MouseMove:
      clicks.OnMouseMove(event);
      return navigation.OnMouseMove(event.x, event.y);
    case WindowEvent::Type::MouseUp:
      return OnMouseUp(event);
    case WindowEvent::Type::Wheel:
      return navigation.OnWheel(event.x, event.y, event.wheel);
    case WindowEvent::Type::FocusLost:
      clicks.Cancel();
      return navigation.Cancel();
    case WindowEvent::Type::Resized:
      return OnResized();
    case WindowEvent::Type::FileDropped:
      return Open({event.path});
    case WindowEvent::Type::KeyDown:
      if (!event.repeated) OnKey(event);
      return;
    case WindowEvent::Type::KeyUp:
    case WindowEvent::Type::MouseLeave:
    case WindowEvent::Type::Closing:
      return;
  }
}

// A click selects, the second one of a double click frames what is under it.
void Viewer::OnMouseUp(const WindowEvent& event) {
  navigation.OnMouseUp(event.button, event.x, event.y);
  const int count = clicks.OnMouseUp(event);
  if (count == 1) selection.PickAt(event.x, event.y);
  if (count == 2) CentreOnPixel({hub, selection}, event.x, event.y);
}

void Viewer::OnKey(const WindowEvent& event) {
  if ((event.modifiers & (WindowEvent::CONTROL | WindowEvent::ALT)) != 0) return;
  if (event.key == SDLK_F1) {
    panel.ToggleVisible();
    window.RequestFrame();
  }
  const ViewCommand* const command = FindViewCommand(event.key);
  if (command == nullptr) return;
  navigation.Cancel();  // a drag would take the change back
  clicks.Cancel();
  command->run({hub, selection});
}

void Viewer::OnResized() {
  hub.SetViewportSize(window.GetWidth(), window.GetHeight());
  renderer.SetViewport(0, 0, window.GetWidth(), window.GetHeight());
  renderer.SetDisplayScale(window.GetScale());
}

// ---- the frame ----

void Viewer::DrawFrame() {
  navigation.PerformFrame();
  renderer.SetCamera(hub.GetView());
  sceneView.GetOptions().selectedPart = selection.GetPart();
  sceneView.Draw(hub.GetView(), 0, 0, window.GetWidth(), window.GetHeight(), window.GetScale());
  glViewport(0, 0, window.GetWidth(), window.GetHeight());
  gui.BeginFrame();
  panel.Draw(contents);
  gui.EndFrame();
}

}  // namespace zovview
