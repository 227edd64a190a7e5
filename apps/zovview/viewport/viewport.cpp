#include "viewport/viewport.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "commands/cube_commands.h"
#include "commands/disc_commands.h"
#include "commands/named_view_commands.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"
#include "views/view_tools.h"
#include "zovhost/cube_dress.h"
#include "zovhost/start_camera.h"

namespace zovview {

using zovhost::MouseButton;
using zovhost::WindowEvent;

namespace {

constexpr std::size_t MOST_WAITING = 8;  // a hand that beats on the keys means no more

}  // namespace

bool Viewport::Pointer::WarpPointer(int x, int y) {
  if (viewport.touch.OnPointerSet(x, y)) return true;
  if (!host.WarpPointer(x, y)) return false;
  viewport.manager.OnPointerSet(x, y);
  return true;
}

Viewport::Viewport(Surroundings around)
    : surroundings(std::move(around)),
      hub(surroundings.requestFrame),
      selection(hub),
      manager(hub),
      pointer(*this),
      touch(manager, hub, renderer, [this](const WindowEvent& event) { OnPointer(event); }),
      bars(manager, target),
      story(manager, hub),
      focus({hub,
             renderer,
             cube,
             disc,
             bars.GetBar(),
             {&bars.GetTools()},
             &story.GetBoard(),
             [this] { story.GetEditor().TypeName(); }},
            [this](const WindowEvent& event) { OnPointer(event); }),
      tooltip({manager, cube, disc, bars, story, focus, renderer}, surroundings.requestFrame),
      target{hub,
             selection,
             manager,
             cube,
             disc,
             surroundings.showHelp,
             &bars,
             &story,
             surroundings.askForStory,
             &device,
             surroundings.toggleDevicePage,
             surroundings.preferences,
             surroundings.views,
             surroundings.askForFile,
             surroundings.openFile,
             &scale} {
  renderer.SetHost(&pointer);
  manager.SetRenderer(&renderer);
  manager.SetHelmDisc(&disc);
  manager.SetOrientor(&cube);
  manager.SetCam3DController(&device);
  bars.SetOpenMenu(surroundings.openBarMenu);
  bars.SetRun([this](const ViewCommand& command) { RunInTurn(command); });
  hub.SetPickPivot([this] { return PickPivot(); });
  manager.SetMovePointer([this](int x, int y) { surroundings.host.WarpPointer(x, y); });
}

Viewport::~Viewport() {
  touch.Cancel();
  tooltip.Destroy();
  manager.Destroy();
  manager.SetNavigationBar(nullptr);
  manager.RemoveToolbar(&bars.GetTools());
  renderer.Destroy();
}

bool Viewport::Create() {
  if (!surroundings.plainCube) zovhost::DressCube(cube.GetParameters(), scale);
  disc.GetParameters().suppressWelcome = !surroundings.welcome;
  if (!manager.Create() || !bars.Create(renderer)) return false;
  tooltip.Create();
  created = true;
  HoldWelcome();  // until there is a model
  story.BeginEmpty();
  return true;
}

void Viewport::HoldWelcome() {
  Korvane::TrackMenu* const welcome = disc.GetWelcomeTrackMenu();
  if (welcome == nullptr || !welcome->GetVisible()) return;
  welcome->SetVisible(false);
  welcomeWaits = true;
}

// Whoever has opened a disc meanwhile knows them.
void Viewport::ReleaseWelcome() {
  Korvane::TrackMenu* const welcome = disc.GetWelcomeTrackMenu();
  if (!std::exchange(welcomeWaits, false) || welcome == nullptr || disc.GetEnabled()) return;
  welcome->SetVisible(true);
  hub.RequestApplicationUpdate();
}

void Viewport::SetPlace(int x, int y, int width, int height, double pixelsForPoint) {
  placeX = x;
  placeY = y;
  renderer.SetViewport(x, y, width, height);
  SetScale(pixelsForPoint);
  manager.SetViewportSize(width, height);
  hub.SetViewportSize(width, height);
}

// The library counts the cube and the discs in pixels.
void Viewport::SetScale(double value) {
  renderer.SetDisplayScale(value);
  bars.SetScale(value);
  touch.SetScale(value);
  focus.SetScale(value);
  if (value == scale) return;
  const int largeDisc = GetDiscSize(target, true);
  const int miniDisc = GetDiscSize(target, false);
  scale = value;
  SetDiscSize(target, true, largeDisc);
  SetDiscSize(target, false, miniDisc);
  if (!surroundings.plainCube) zovhost::ResizeCube(cube.GetParameters(), scale);
  const auto reach = static_cast<int>(std::lround(zovhost::ClickWatch::REACH * scale));
  hub.GetApplicationParameters().pixels_per_point = static_cast<float>(scale);
  disc.GetHistory()->SetScale(hub.GetApplicationParameters().pixels_per_point);  // the same float
  manager.PlaceWelcome();
  clicks.SetReach(reach);
  middleClicks.SetReach(reach);
  rightClicks.SetReach(reach);
  hub.RequestApplicationUpdate();
}

void Viewport::ApplyPreferences() {
  if (surroundings.preferences == nullptr) return;
  const Choices& choices = surroundings.preferences->Get();
  hub.SetReducedMotion(choices.reducedMotion);
  bars.SetReducedMotion(choices.reducedMotion);
  manager.SetReducedMotion(choices.reducedMotion);
  manager.SetNavigationStyle(zovhost::FindNavigationStyle(choices.navigationStyle));
  hub.SetPivotPolicy(zovhost::FindPivotPolicy(choices.pivotPolicy));
  manager.SetZoomsToPivot(zovhost::DrawsZooms(hub.GetPivotPolicy()));
  touch.SetKeepsPivot(zovhost::DrawsZooms(hub.GetPivotPolicy()));
}

// What a widget has read for itself it reads again.
void Viewport::SetLanguage(const std::shared_ptr<const zovhost::ResourcePack>& texts,
                           const zovhost::Phrases& before) {
  tooltip.Dismiss();
  renderer.SetResources(texts);
  bars.RenewWords(renderer);
  if (!created) return;
  RenewCubeWords(target, before);
  story.GetBoard().SetRenderer(nullptr);
  story.GetBoard().SetRenderer(&renderer);
  hub.RequestApplicationUpdate();
}

void Viewport::SetScene(const zovhost::Scene& scene) {
  touch.Cancel();
  manager.Cancel();
  CancelClicks();
  waiting.clear();
  disc.GetHistory()->ClearHistory();  // of another model
  story.BeginEmpty();
  selection.SetScene(&scene);
  renderer.SetScene(&scene);
  zovhost::EnterScene(hub, scene);
  UseModelCoordinates(target);
  ReleaseWelcome();
}

void Viewport::ShowParallel() {
  Korvane::CameraParameters camera = hub.GetView();
  camera.projection_type = Korvane::CameraParameters::ProjectionType::Orthographic;
  camera.projection_transition = 1.0;
  hub.SetView(camera);
}

void Viewport::ShowAtOnce(const ViewCommand& command) {
  const bool reduced = hub.IsMotionReduced();
  hub.SetReducedMotion(true);
  Run(command);
  for (int frame = 0; frame < 2; ++frame) hub.PerformOperations();  // the begin of a move, and its end
  hub.SetReducedMotion(reduced);
  disc.GetHistory()->ClearHistory();
}

// ---- events ----

bool Viewport::OnEvent(const WindowEvent& event) {
  if (OnEventOfShow(event)) return true;
  const bool hadFocus = focus.GetFocus().IsActive();
  if (focus.OnEvent(event)) return true;
  if (!OnTouch(event)) OnPointer(event);
  const bool isTab = event.type == WindowEvent::Type::KeyDown && event.key == SDLK_TAB;
  return !isTab || !hadFocus;
}

// Three fingers look about while that is the tool. A key that cancels is the fingers' while they do
// something.
bool Viewport::OnTouch(const WindowEvent& event) {
  const int tool = manager.GetActiveTool();
  const bool looks = tool == TOOL_LOOK || tool == TOOL_LOOK_MOVE;
  touch.SetThreeFingers(looks ? zovhost::TouchCamera::ThreeFingers::Look
                              : zovhost::TouchCamera::ThreeFingers::Walk);
  if (event.type == WindowEvent::Type::KeyDown && event.key == SDLK_ESCAPE && touch.IsActive()) {
    touch.Cancel();
    return true;
  }
  return touch.OnEvent(event);
}

// Of the mouse, or of what is one, and of the keys.
void Viewport::OnPointer(const WindowEvent& event) {
  if (event.type == WindowEvent::Type::MouseDown) {
    clicks.OnMouseDown(event);
    middleClicks.OnMouseDown(event);
    rightClicks.OnMouseDown(event);
    if (event.button == MouseButton::Right) rightOnBar = bars.IsOver(event.x, event.y);
    bars.OnPress();
  }
  if (event.type == WindowEvent::Type::MouseMove) {
    clicks.OnMouseMove(event);
    middleClicks.OnMouseMove(event);
    rightClicks.OnMouseMove(event);
  }
  if (event.type == WindowEvent::Type::FocusLost) CancelClicks();
  const bool ofRight = event.button == MouseButton::Right && event.type == WindowEvent::Type::MouseUp;
  endsRightDrag = ofRight && rightClicks.OnMouseUp(event) == 0;
  const bool used = manager.OnEvent(event);
  if (event.button == MouseButton::Right && !std::exchange(endsRightDrag, false) && !used)
    OnRightButton(event);
  if (event.type == WindowEvent::Type::MouseUp) OnClick(event);
  if (event.type == WindowEvent::Type::MouseDown) OnSideButton(event.button);
  if (event.type == WindowEvent::Type::KeyDown && !used) OnKey(event);
  NotePointer(event);
}

// A show that has the view to itself is ended by a press of any button, or by Escape; no other key but the
// space bar means anything then.
bool Viewport::OnEventOfShow(const WindowEvent& event) {
  if (event.type == WindowEvent::Type::MouseUp) return std::exchange(pressEndedShow, false);
  if (!story.IsPresenting()) return false;
  const bool touched = event.type == WindowEvent::Type::FingerDown;
  const bool pressed = touched || event.type == WindowEvent::Type::MouseDown;
  const bool ofKey = event.type == WindowEvent::Type::KeyDown;
  if (pressed || (ofKey && event.key == SDLK_ESCAPE)) story.Cancel();
  if (ofKey && event.key == SDLK_SPACE && !event.repeated) story.GetBoard().PausePlayback();
  pressEndedShow = pressed && !touched;
  return pressed || ofKey || event.type == WindowEvent::Type::Wheel;
}

void Viewport::NotePointer(const WindowEvent& event) {
  const bool left = event.type == WindowEvent::Type::MouseLeave;
  const bool ofPointer = left || event.type == WindowEvent::Type::MouseMove ||
                         event.type == WindowEvent::Type::MouseDown ||
                         event.type == WindowEvent::Type::MouseUp;
  if (!ofPointer) return;
  tooltip.MoveTo(left ? -1 : event.x, left ? -1 : event.y);
  tooltip.Follow(IsPressed());
}

// What lies behind the cube is not meant.
std::optional<Korvane::Vector3> Viewport::PickPivot() const {
  const zovhost::Scene* const scene = selection.GetScene();
  const std::optional<zovhost::PixelPosition> finger = touch.GetPlace();
  const zovhost::PixelPosition at = finger.value_or(manager.GetPointer());
  zovhost::Scene::Hit hit;
  if (scene == nullptr || (!finger && cube.IsMouseInRegion()) || !FindHit(hub, *scene, at.x, at.y, hit))
    return {};
  return hit.point;
}

void Viewport::CancelClicks() {
  clicks.Cancel();
  middleClicks.Cancel();
  rightClicks.Cancel();
}

void Viewport::OnClick(const WindowEvent& event) {
  const int middleCount = middleClicks.OnMouseUp(event);
  if (middleCount == 2 && !IsPressed() && !disc.IsOverWelcome()) return Run(*FindViewCommand("fit-all"));
  const int count = clicks.OnMouseUp(event);
  if (!manager.IsClickFree() || disc.IsOverWelcome()) return;
  if (count == 1) selection.PickAt(event.x, event.y);
  if (count == 2) CentreOnPixel(target, event.x, event.y);
}

// Through the views, as a browser goes through its pages.
void Viewport::OnSideButton(MouseButton button) {
  if (button <= MouseButton::Right || IsPressed()) return;
  Run(*FindViewCommand(button == MouseButton::Back ? "previous-view" : "next-view"));
}

// Where neither the cube nor a bar opens a menu of its own.
void Viewport::OnRightButton(const WindowEvent& event) {
  const bool isRelease = event.type == WindowEvent::Type::MouseUp;
  if (isRelease && !rightOnBar && !IsPressed()) surroundings.openMenu(event.x, event.y);
}

void Viewport::OnKey(const WindowEvent& event) {
  tooltip.Dismiss();
  if (event.repeated) return;
  if (const ViewCommand* const command = FindViewCommand(event.key, event.modifiers)) Run(*command);
}

// Of whatever the hand is doing.
void Viewport::LetGo() {
  touch.Cancel();
  manager.Cancel();
  CancelClicks();
  tooltip.Dismiss();
}

void Viewport::Run(const ViewCommand& command) {
  LetGo();
  RunInTurn(command);
}

void Viewport::RunInTurn(const ViewCommand& command) {
  if (!StartsFromRest(command) || (!hub.IsTravelling() && waiting.empty())) return command.run(target);
  if (waiting.size() < MOST_WAITING) waiting.push_back(&command);
}

void Viewport::RunWaiting() {
  if (waiting.empty() || hub.IsTravelling() || IsPressed()) return;
  const ViewCommand& command = *waiting.front();
  waiting.erase(waiting.begin());
  command.run(target);
  hub.RequestApplicationUpdate();
}

bool Viewport::IsAtRest() const {
  const Korvane::Storyboard& board = story.GetBoard();
  return !IsPressed() && !manager.IsDiscOpen() && !focus.IsActive() && !hub.IsTravelling() &&
         !board.IsPlayingBack() && !board.IsRecordingWalk();
}

void Viewport::Fly(const Korvane::CameraParameters& camera) {
  LetGo();
  FlyTo(target, camera);
}

// ---- the frame ----

void Viewport::PerformFrame() {
  hub.PerformOperations();
  RunWaiting();
  renderer.SetCamera(hub.GetView());
  if (renderer.IsFindingFace()) hub.RequestApplicationUpdate();
}

void Viewport::DrawWidgets() {
  if (story.IsPresenting()) return story.GetBoard().Draw();
  bars.Update();
  manager.OnDraw();
  tooltip.Follow(IsPressed());
  focus.Draw(GetWidth(), GetHeight());
  touch.OnFrame();
}

void Viewport::DrawTooltip(std::vector<Korvane::Box2> panels) {
  if (!story.IsPresenting()) tooltip.Draw(hub, std::move(panels));
}

}  // namespace zovview
