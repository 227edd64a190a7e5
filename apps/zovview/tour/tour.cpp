#include "tour/tour.h"

#include <imgui.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "commands/view_commands.h"
#include "commands/viewer_menus.h"
#include "files/film_output.h"
#include "files/progress_line.h"
#include "korvane/track_menu.h"
#include "panel/cube_place.h"
#include "recordings/scripted_device.h"
#include "stories/tour_clock.h"
#include "tour/disc_wedges.h"
#include "tour/glances.h"
#include "tour/scene_keeper.h"
#include "tour/tour_pace.h"
#include "tour/tour_script.h"
#include "viewport/viewport.h"
#include "views/view_tools.h"
#include "zovhost/accent.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/gui.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/six_axis_panel.h"
#include "zovhost/window.h"

namespace zovview {

namespace {

constexpr int SAMPLES = 4;
constexpr int PICTURES_PER_SHEET_PICTURE = 4;
constexpr int LOW_VIEW = 150;  // pixels
constexpr float EDITOR_TOP = 16.0F;
constexpr int EXIT_INTERRUPTED = 130;
constexpr ImU32 DARK = IM_COL32(28, 30, 33, 200);
constexpr ImU32 LIGHT = IM_COL32(255, 255, 255, 255);
const ImU32 ACCENT =
    ImColor(static_cast<float>(zovhost::ACCENT_COLOUR[0]), static_cast<float>(zovhost::ACCENT_COLOUR[1]),
            static_cast<float>(zovhost::ACCENT_COLOUR[2]));

int CountFrames(const TourMove& move) {
  return static_cast<int>(std::lround(move.seconds * TourClock::FRAMES_PER_SECOND));
}

int CountFrames(std::span<const TourMove> script) {
  int count = 0;
  for (const TourMove& move : script) count += CountFrames(move);
  return count;
}

struct Place {
  int x = 0;
  int y = 0;
};

// The lowest of the pieces of the ring that can be hit: there a drag to the left turns it, whichever way is
// up.
bool FindOnRing(Korvane::Orientor& cube, Place& lowest) {
  bool found = false;
  for (int piece = Korvane::Orientor::COMPASS_RING_BEGIN; piece < Korvane::Orientor::PART_COUNT; ++piece) {
    Place place;
    if (!cube.GetPartPosition(piece, place.x, place.y) || (found && place.y >= lowest.y)) continue;
    lowest = place;
    found = true;
  }
  return found;
}

// What a move begins on.
bool FindOnCube(Korvane::Orientor& cube, const TourMove& move, Place& place) {
  using Korvane::Orientor;
  if (move.cubePart == TourMove::COMPASS_RING) return FindOnRing(cube, place);
  if (move.cubePart >= 0) return cube.GetPartPosition(move.cubePart, place.x, place.y);
  return cube.GetOverlayPartPosition(static_cast<Orientor::OverlayPart>(move.overlayPart), place.x, place.y);
}

bool FindOnWelcome(Korvane::TrackMenu* welcome, int part, Place& place) {
  const Korvane::TrackMenu::Region* const region = welcome != nullptr ? welcome->GetRegion(part) : nullptr;
  return region != nullptr && FindColour(*welcome, region->color, place.x, place.y);
}

bool FindOnBar(ViewBars& bars, const TourMove& move, Place& place) {
  Korvane::Toolbar* const strip =
      move.barItem >= TOOL_ORBIT && move.barItem <= TOOL_WALK ? &bars.GetTools() : bars.GetBar().GetToolbar();
  const int count = strip != nullptr ? strip->GetItems().GetCount() : 0;
  for (int i = 0; i < count; ++i) {
    const Korvane::ToolbarItem& item = strip->GetItems().GetAt(i);
    if (item.GetTag() != move.barItem || item.IsHidden() || item.IsExcluded()) continue;
    const Korvane::Box2& bounds = move.onArrow ? item.GetFlyoutIconBounds() : item.GetNonFlyoutIconBounds();
    place = {static_cast<int>(bounds.center.x), static_cast<int>(bounds.center.y)};
    return true;
  }
  return false;
}

bool FindOnStory(const TourMove& move, Place& place) {
  FindStoryPart(move.storyPart, move.storyIndex, place.x, place.y);
  return true;
}

/// Plays the tour in a context that is current.
class Tour {
 public:
  Tour(zovhost::Window& window, const zovhost::Scene& scene, const TourOptions& options);

  bool Prepare(std::string& error);
  /// False when it failed, or was interrupted, which leaves `error` empty.
  bool Play(FilmOutput& output, std::string& error);

 private:
  bool PlayMove(const TourMove& move, FilmOutput& output, std::string& error);
  bool FindOrigin(const TourMove& move, std::string& error);
  void MovePointer(const TourMove& move, double fraction);
  void Begin(const TourMove& move);
  void Continue(const TourMove& move, int frameCountOfMove);
  void End(const TourMove& move);
  void Send(zovhost::WindowEvent::Type type, zovhost::MouseButton button, int clicks = 0);
  void DrawUnseen();
  void DrawPages();
  Korvane::TrackMenu* GetWelcome() { return view.GetDisc().GetWelcomeTrackMenu(); }
  void ShowWelcome(bool shown);
  void HideBar();
  void SetViewHeight(int value);
  void CloseMenu();
  void OpenBarMenu(ViewBars::Menu menu, const zovhost::BarMenuPlace& place);
  bool TakePicture(const TourMove& move, bool isLast, FilmOutput& output, std::string& error);
  void DrawCaption(const TourMove& move);
  void DrawPointer() const;
  ImVec2 ToScreen(const TourPointer& position) const;

  zovhost::Window& window;
  const zovhost::Scene& scene;
  const zovhost::SceneGround& ground;
  const int width;
  const int height;
  TourClock clock;
  zovhost::GLSceneView sceneView;
  SceneKeeper keeper;
  zovhost::OffscreenTarget target;
  zovhost::OffscreenTarget unseen;  // a pixel, for what is drawn for its effects
  zovhost::Gui gui;
  zovhost::RendererHost host;  // without a pointer and menus
  Viewport view;
  ScriptedDevice device;
  zovhost::SixAxisPanel devicePage;
  ViewerMenus menus;
  int viewHeight;  // of the picture, from its lower edge
  ProgressLine progress;
  TourPointer pointer = {0.5, 0.5};
  TourPointer origin{};  // what the positions of the present move count from
  bool pressed = false;
  bool points = false;  // the pointer does something in the present move
  int frame = 0;
  const std::span<const TourMove> script;
  const int framesPerPicture;
  const int frameCount;
};

Tour::Tour(zovhost::Window& onWindow, const zovhost::Scene& ofScene, const TourOptions& options)
    : window(onWindow),
      scene(ofScene),
      ground(FindGround(options.ground)),
      width(options.width),
      height(options.height),
      keeper(sceneView),
      gui(options.width, options.height),
      view({[this] { window.RequestFrame(); },
            host,
            [](int, int) {},
            {},
            [this](ViewBars::Menu menu, const zovhost::BarMenuPlace& place) { OpenBarMenu(menu, place); },
            true,
            {},
            [this] { devicePage.SetVisible(!devicePage.IsVisible()); }}),
      devicePage(device.GetHand()),
      viewHeight(options.height),
      progress(ProgressLine::OffTerminal::Quarters),
      script(options.glance.empty() ? GetTourScript() : FindGlance(options.glance)),
      framesPerPicture(options.glance.empty() ? FRAMES_PER_PICTURE : FRAMES_PER_GLANCE_PICTURE),
      frameCount(CountFrames(script)) {}

bool Tour::Prepare(std::string& error) {
  const bool ready = target.Create(width, height, SAMPLES) && unseen.Create(1, 1, 0);
  if (!ready || !sceneView.SetScene(&scene) || !view.Create()) {
    error = "the graphics memory does not hold this model at this size";
    return false;
  }
  sceneView.GetOptions().ground = ground;
  gui.SetLight(ground.lightPanels);
  view.GetRenderer().SetSceneDraw(
      [this](const Korvane::CameraParameters& camera, int w, int h) { sceneView.Draw(camera, w, h); });
  view.SetPlace(0, 0, width, height, 1.0);
  view.SetScene(scene);
  device.SetController(&view.GetDevice());
  devicePage.AddSource(&device.GetSource(), "Six-axis device");
  ShowWelcome(false);
  HideBar();
  return true;
}

bool Tour::Play(FilmOutput& output, std::string& error) {
  for (const TourMove& move : script) {
    if (!PlayMove(move, output, error)) return false;
  }
  progress.Show(1.0, "writing the contact sheet and the animation");
  return true;
}

bool Tour::PlayMove(const TourMove& move, FilmOutput& output, std::string& error) {
  if (!FindOrigin(move, error)) return false;
  Begin(move);
  const int frames = CountFrames(move);
  for (int i = 1; i <= frames; ++i) {
    if (!window.Step(0)) return false;  // interrupted
    clock.Advance();
    MovePointer(move, static_cast<double>(i) / frames);
    Continue(move, frames);
    device.Feed(FindAxes(move, static_cast<double>(i) / frames));
    device.Advance();
    view.PerformFrame();
    progress.Show(static_cast<double>(frame) / frameCount, "tour: " + std::string(move.caption));
    const bool isLastPicture = i + framesPerPicture > frames;
    if (frame++ % framesPerPicture != 0) {
      DrawUnseen();
    } else if (!TakePicture(move, isLastPicture, output, error)) {
      return false;
    }
  }
  End(move);
  return true;
}

void Tour::Send(zovhost::WindowEvent::Type type, zovhost::MouseButton button, int clicks) {
  zovhost::WindowEvent event;
  event.type = type;
  event.x = static_cast<int>(pointer.x * width);
  event.y = static_cast<int>(pointer.y * viewHeight);
  event.button = button;
  event.clicks = clicks;
  view.OnEvent(event);
}

// The middle of a pixel, so that a fraction of the viewport finds it again.
bool Tour::FindOrigin(const TourMove& move, std::string& error) {
  origin = {};
  const bool isOnDisc = move.wedge >= 0;
  const bool isOnWelcome = move.welcomePart >= 0;
  const bool isOnBar = move.barItem >= 0;
  const bool isOnStory = move.storyPart != StoryPart::None;
  if (!isOnDisc && !isOnWelcome && !isOnBar && !isOnStory && !move.IsOnCube()) return true;
  Place place;
  const bool found = isOnDisc      ? FindWedge(view.GetDisc(), move.wedge, place.x, place.y)
                     : isOnBar     ? FindOnBar(view.GetBars(), move, place)
                     : isOnStory   ? FindOnStory(move, place)
                     : isOnWelcome ? FindOnWelcome(GetWelcome(), move.welcomePart, place)
                                   : FindOnCube(view.GetCube(), move, place);
  if (!found) error = "nothing shows what \"" + std::string(move.caption) + "\" begins on";
  origin = {(place.x + 0.5) / width, (place.y + 0.5) / viewHeight};
  return found;
}

void Tour::MovePointer(const TourMove& move, double fraction) {
  pointer = FindPointer(move, fraction);
  pointer.x += origin.x;
  pointer.y += origin.y;
}

void Tour::Begin(const TourMove& move) {
  using Type = zovhost::WindowEvent::Type;
  MovePointer(move, 0.0);
  pressed = move.kind == TourMove::Kind::Drag;
  points = move.kind <= TourMove::Kind::DoubleClick && move.kind != TourMove::Kind::Rest;
  if (points) Send(Type::MouseMove, move.button);           // the pointer is there before it presses
  if (move.IsOnCube()) Send(Type::MouseMove, move.button);  // and the buttons beside the cube have come
  switch (move.kind) {
    case TourMove::Kind::Rest:
    case TourMove::Kind::Hover:
    case TourMove::Kind::Wheel:
      return;
    case TourMove::Kind::Device:
      return view.GetBars().ShowDevice(true);
    case TourMove::Kind::Drag:
      return Send(Type::MouseDown, move.button, 1);
    case TourMove::Kind::Click:
    case TourMove::Kind::DoubleClick:
      Send(Type::MouseDown, move.button, move.kind == TourMove::Kind::Click ? 1 : 2);
      return Send(Type::MouseUp, move.button);
    case TourMove::Kind::Welcome:
      return ShowWelcome(true);
    case TourMove::Kind::Low:
      return SetViewHeight(LOW_VIEW);
    case TourMove::Kind::High:
      return SetViewHeight(height);
    case TourMove::Kind::Command:
      CloseMenu();
      return view.Run(*FindViewCommand(move.command));
  }
}

// At once, until its turn comes.
void Tour::HideBar() {
  Korvane::NavigationBar& bar = view.GetBars().GetBar();
  bar.GetToolbar()->SetWantAnimation(false);
  bar.SetVisible(false);
  bar.GetToolbar()->SetWantAnimation(true);
}

void Tour::SetViewHeight(int value) {
  viewHeight = std::min(value, height);
  CloseMenu();
  view.SetPlace(0, 0, width, viewHeight, 1.0);
}

void Tour::OpenBarMenu(ViewBars::Menu menu, const zovhost::BarMenuPlace& place) {
  menus.Open(ViewerMenus::FindKind(menu),
             ViewerMenus::Corner{static_cast<double>(place.x), static_cast<double>(height - place.y),
                                 place.atRight ? 1.0 : 0.0, place.atBottom ? 1.0 : 0.0});
}

// A menu that is told to close is still there in the next frame, which nobody sees here.
void Tour::CloseMenu() {
  if (!menus.IsOpen()) return;
  menus.Close();
  target.Bind();
  gui.BeginFrame();
  menus.Draw(view.GetTarget());
  gui.EndFrame();
}

// It waits for its turn.
void Tour::ShowWelcome(bool shown) {
  if (Korvane::TrackMenu* const welcome = GetWelcome()) welcome->SetVisible(shown);
  view.GetRenderer().ApplyTextureUsage();
}

void Tour::Continue(const TourMove& move, int frameCountOfMove) {
  if (points) Send(zovhost::WindowEvent::Type::MouseMove, move.button);
  if (move.kind != TourMove::Kind::Wheel) return;
  zovhost::WindowEvent event;
  event.type = zovhost::WindowEvent::Type::Wheel;
  event.x = static_cast<int>(pointer.x * width);
  event.y = static_cast<int>(pointer.y * viewHeight);
  event.wheel = move.notches / frameCountOfMove;
  view.OnEvent(event);
}

void Tour::End(const TourMove& move) {
  if (pressed) Send(zovhost::WindowEvent::Type::MouseUp, move.button);
}

void Tour::DrawPages() {
  std::vector<CubePlace> cubes;
  if (const auto cube = FindCubePlace(view, height, 1.0)) cubes.push_back(*cube);
  const float right = FindPageRight(cubes, static_cast<float>(width));
  view.GetStory().GetEditor().Draw(right, EDITOR_TOP);
  devicePage.Draw(view.GetDevice(), right, EDITOR_TOP);
}

// Tools end their moves when they are drawn.
void Tour::DrawUnseen() {
  unseen.Bind();
  view.DrawWidgets();
}

// Of what goes by itself the sheet shows where it leads to.
bool Tour::TakePicture(const TourMove& move, bool isLast, FilmOutput& output, std::string& error) {
  zovhost::Image picture;
  sceneView.GetOptions().selectedPart = view.GetSelection().GetPart();
  bool taken = keeper.Draw(view.GetHub().GetView(), viewHeight, target);
  if (menus.IsOpen()) view.LeaveToPanels();
  view.DrawWidgets();
  view.DrawTooltip({});
  gui.BeginFrame();
  menus.Draw(view.GetTarget());
  DrawPages();
  DrawPointer();
  DrawCaption(move);
  gui.EndFrame();
  taken = taken && target.Read(picture);
  if (!taken) {
    error = "a picture could not be drawn";
    return false;
  }
  if (view.GetRenderer().GetPlaceholderCount() > 0) {
    error = "picture " + std::to_string(view.GetRenderer().GetLastPlaceholder()) + " is missing: under \"" +
            move.caption + "\" something else stands in its place";
    return false;
  }
  const bool byHand = move.kind == TourMove::Kind::Drag || move.kind == TourMove::Kind::Wheel;
  const bool onSheet = byHand ? output.GetPictureCount() % PICTURES_PER_SHEET_PICTURE == 0 : isLast;
  return output.Add(std::move(picture), move.caption, onSheet, error);
}

// In the corner where it covers least.
void Tour::DrawCaption(const TourMove& move) {
  ImDrawList& list = *ImGui::GetForegroundDrawList();
  const ImVec2 text = ImGui::CalcTextSize(move.caption);
  const bool below = !view.GetStory().IsShown();
  const ImVec2 corner(28.0F, below ? static_cast<float>(height) - text.y - 22.0F : 22.0F);
  list.AddRectFilled(ImVec2(corner.x - 12.0F, corner.y - 6.0F),
                     ImVec2(corner.x + text.x + 12.0F, corner.y + text.y + 6.0F), DARK, 6.0F);
  list.AddText(corner, LIGHT, move.caption);
}

// Where something is done with it.
void Tour::DrawPointer() const {
  if (!points) return;
  ImDrawList& list = *ImGui::GetForegroundDrawList();
  list.AddCircleFilled(ToScreen(pointer), 9.0F, LIGHT);
  list.AddCircleFilled(ToScreen(pointer), 7.0F, pressed ? ACCENT : DARK);
}

// Pixels from the top left, on the middle of one.
ImVec2 Tour::ToScreen(const TourPointer& position) const {
  const auto x = static_cast<float>(static_cast<int>(position.x * width));
  const auto y = static_cast<float>(height - 1 - static_cast<int>(position.y * viewHeight));
  return ImVec2(x + 0.5F, y + 0.5F);
}

int Fail(const std::string& error) {
  std::fprintf(stderr, "zovview: %s\n", error.c_str());
  return 1;
}

}  // namespace

int RunTour(const LoadedModel& model, const TourOptions& options) {
  const auto start = std::chrono::steady_clock::now();
  std::string error;
  zovhost::Window::Options windowOptions;
  windowOptions.offscreen = true;
  const std::unique_ptr<zovhost::Window> window = zovhost::Window::Create(windowOptions, error);
  if (window == nullptr) return Fail(error);

  FilmOutput output(options.directory,
                    {model.source.GetName(), "Moved by the library's own operations and shots", "tour.webp",
                     options.glance.empty() ? MILLISECONDS_PER_PICTURE : MILLISECONDS_PER_GLANCE_PICTURE});
  {
    Tour tour(*window, *model.scene, options);
    if (!tour.Prepare(error) || !output.Begin(error)) return Fail(error);
    if (!tour.Play(output, error)) return error.empty() ? EXIT_INTERRUPTED : Fail(error);
    if (!output.Publish(error)) return Fail(error);
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  const int count = output.GetPictureCount();
  std::printf(
      "The tour of %s is in %s: %d pictures, contact_sheet.png, tour.webp and index.html, in %.1f s, %.0f ms "
      "a "
      "picture\n",
      model.source.GetName().c_str(), output.GetDirectory().string().c_str(), count, taken.count(),
      1000.0 * taken.count() / count);
  return 0;
}

}  // namespace zovview
