#include "tour.h"

#include <epoxy/gl.h>
#include <imgui.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <utility>

#include "navigation.h"
#include "progress_line.h"
#include "start_camera.h"
#include "tour_clock.h"
#include "tour_output.h"
#include "tour_pace.h"
#include "tour_script.h"
#include "viewer_hub.h"
#include "viewer_panel.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/gui.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/window.h"

namespace zovview {

namespace {

constexpr int SAMPLES = 4;
constexpr int PICTURES_PER_SHEET_PICTURE = 4;
constexpr int EXIT_INTERRUPTED = 130;

int CountFrames(const TourMove& move) {
  return static_cast<int>(std::lround(move.seconds * TourClock::FRAMES_PER_SECOND));
}

int CountFrames() {
  int count = 0;
  for (const TourMove& move : GetTourScript()) count += CountFrames(move);
  return count;
}

/// Plays the tour in a context that is current.
class Tour {
 public:
  Tour(zovhost::Window& window, const zovhost::Scene& scene, const TourOptions& options);

  bool Prepare(std::string& error);
  /// False when it failed, or was interrupted, which leaves `error` empty.
  bool Play(TourOutput& output, std::string& error);

 private:
  bool PlayMove(const TourMove& move, TourOutput& output, std::string& error);
  void Begin(const TourMove& move);
  void End(const TourMove& move);
  bool TakePicture(const TourMove& move, TourOutput& output, std::string& error);
  void DrawCaption(const TourMove& move) const;

  zovhost::Window& window;
  const zovhost::Scene& scene;
  const int width;
  const int height;
  TourClock clock;
  zovhost::GLSceneView sceneView;
  zovhost::OffscreenTarget target;
  zovhost::Gui gui;
  ViewerHub hub;
  Navigation navigation;
  ProgressLine progress;
  TourPointer pointer = {0.5, 0.5};
  bool pressed = false;
  int frame = 0;
  const int frameCount = CountFrames();
};

Tour::Tour(zovhost::Window& onWindow, const zovhost::Scene& ofScene, const TourOptions& options)
    : window(onWindow),
      scene(ofScene),
      width(options.width),
      height(options.height),
      gui(options.width, options.height),
      hub([this] { window.RequestFrame(); }),
      navigation(hub, {[this](const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                              Korvane::Vector3& point) {
                         zovhost::Scene::Hit hit;
                         if (!scene.Intersect(origin, direction, hit)) return false;
                         point = hit.point;
                         return true;
                       },
                       [](Korvane::CursorID) {}}),
      progress(ProgressLine::OffTerminal::Quarters) {}

bool Tour::Prepare(std::string& error) {
  if (!target.Create(width, height, SAMPLES) || !sceneView.SetScene(&scene)) {
    error = "the graphics memory does not hold this model at this size";
    return false;
  }
  hub.SetViewportSize(width, height);
  EnterScene(hub, scene);
  return true;
}

bool Tour::Play(TourOutput& output, std::string& error) {
  for (const TourMove& move : GetTourScript()) {
    if (!PlayMove(move, output, error)) return false;
  }
  progress.Show(1.0, "writing the contact sheet and the animation");
  return true;
}

bool Tour::PlayMove(const TourMove& move, TourOutput& output, std::string& error) {
  Begin(move);
  const int frames = CountFrames(move);
  for (int i = 1; i <= frames; ++i) {
    if (!window.Step(0)) return false;  // interrupted
    clock.Advance();
    pointer = FindPointer(move, static_cast<double>(i) / frames);
    navigation.OnMouseMove(static_cast<int>(pointer.x * width), static_cast<int>(pointer.y * height));
    navigation.PerformFrame();
    progress.Show(static_cast<double>(frame) / frameCount, "tour: " + std::string(move.caption));
    if (frame++ % FRAMES_PER_PICTURE == 0 && !TakePicture(move, output, error)) return false;
  }
  End(move);
  return true;
}

void Tour::Begin(const TourMove& move) {
  pointer = FindPointer(move, 0.0);
  const int x = static_cast<int>(pointer.x * width);
  const int y = static_cast<int>(pointer.y * height);
  bool& snapping = hub.GetApplicationParameters().do_snap_orbit;
  switch (move.kind) {
    case TourMove::Kind::Rest:
      return;
    case TourMove::Kind::Drag:
      pressed = true;
      return navigation.OnMouseDown(move.button, x, y);
    case TourMove::Kind::Wheel:
      return navigation.OnWheel(x, y, move.notches);
    case TourMove::Kind::Home:
      return GoHome(hub);
    case TourMove::Kind::Snap:
      snapping = true;
      return;
    case TourMove::Kind::Free:
      snapping = false;
      return;
    case TourMove::Kind::Orthographic:
      return SetOrthographic(hub, true);
    case TourMove::Kind::Perspective:
      return SetOrthographic(hub, false);
  }
}

void Tour::End(const TourMove& move) {
  if (move.kind != TourMove::Kind::Drag) return;
  pressed = false;
  navigation.OnMouseUp(move.button, static_cast<int>(move.toX * width), static_cast<int>(move.toY * height));
}

bool Tour::TakePicture(const TourMove& move, TourOutput& output, std::string& error) {
  zovhost::Image picture;
  bool taken = target.Bind() && sceneView.Draw(hub.GetView(), width, height);
  gui.BeginFrame();
  DrawCaption(move);
  gui.EndFrame();
  taken = taken && target.Read(picture);
  if (!taken) {
    error = "a picture could not be drawn";
    return false;
  }
  const bool onSheet = output.GetPictureCount() % PICTURES_PER_SHEET_PICTURE == 0;
  return output.Add(std::move(picture), move.caption, onSheet, error);
}

// The caption in the corner where it covers least, and the pointer where something is done with it.
void Tour::DrawCaption(const TourMove& move) const {
  const ImU32 dark = IM_COL32(28, 30, 33, 200);
  const ImU32 light = IM_COL32(255, 255, 255, 255);
  const ImU32 accent = IM_COL32(0, 97, 191, 255);
  ImDrawList& list = *ImGui::GetForegroundDrawList();
  const auto w = static_cast<float>(width);
  const auto h = static_cast<float>(height);

  const ImVec2 text = ImGui::CalcTextSize(move.caption);
  const ImVec2 corner(28.0F, h - text.y - 22.0F);
  list.AddRectFilled(ImVec2(corner.x - 12.0F, corner.y - 6.0F),
                     ImVec2(corner.x + text.x + 12.0F, corner.y + text.y + 6.0F), dark, 6.0F);
  list.AddText(corner, light, move.caption);

  const bool points = move.kind == TourMove::Kind::Drag || move.kind == TourMove::Kind::Wheel;
  if (!points) return;
  const ImVec2 tip(static_cast<float>(pointer.x) * w, (1.0F - static_cast<float>(pointer.y)) * h);
  list.AddCircleFilled(tip, 9.0F, light);
  list.AddCircleFilled(tip, 7.0F, pressed ? accent : dark);
}

int Fail(const std::string& error) {
  std::fprintf(stderr, "zovview: %s\n", error.c_str());
  return 1;
}

}  // namespace

int RunTour(const LoadedModel& model, const TourOptions& options) {
  std::string error;
  zovhost::Window::Options windowOptions;
  windowOptions.offscreen = true;
  const std::unique_ptr<zovhost::Window> window = zovhost::Window::Create(windowOptions, error);
  if (window == nullptr) return Fail(error);

  TourOutput output(options.directory, model.source.GetName());
  {
    Tour tour(*window, *model.scene, options);
    if (!tour.Prepare(error) || !output.Begin(error)) return Fail(error);
    if (!tour.Play(output, error)) return error.empty() ? EXIT_INTERRUPTED : Fail(error);
    if (!output.Publish(error)) return Fail(error);
  }
  std::printf("The tour of %s is in %s: %d pictures, contact_sheet.png, tour.webp and index.html\n",
              model.source.GetName().c_str(), output.GetDirectory().string().c_str(),
              output.GetPictureCount());
  return 0;
}

}  // namespace zovview
