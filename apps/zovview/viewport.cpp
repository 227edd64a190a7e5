#include "viewport.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include "cube_commands.h"
#include "disc_commands.h"
#include "korvane/rewind_history.h"
#include "zovhost/cube_dress.h"
#include "zovhost/start_camera.h"

namespace zovview {

using zovhost::MouseButton;
using zovhost::WindowEvent;

bool Viewport::Pointer::WarpPointer(int x, int y) {
  if (!host.WarpPointer(x, y)) return false;
  manager.OnPointerSet(x, y);
  return true;
}

Viewport::Viewport(Surroundings around)
    : surroundings(std::move(around)),
      hub(surroundings.requestFrame),
      selection(hub),
      manager(hub),
      pointer(surroundings.host, manager),
      bars(manager, target),
      story(manager, hub),
      tooltip(surroundings.requestFrame),
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
             &scale} {
  renderer.SetHost(&pointer);
  manager.SetRenderer(&renderer);
  manager.SetHelmDisc(&disc);
  manager.SetOrientor(&cube);
  manager.SetCam3DController(&device);
  bars.SetOpenMenu(surroundings.openBarMenu);
  tooltip.SetRenderer(&renderer);
  manager.SetMovePointer([this](int x, int y) { surroundings.host.WarpPointer(x, y); });
}

Viewport::~Viewport() {
  tooltip.SetRenderer(nullptr);
  manager.Destroy();
  manager.SetNavigationBar(nullptr);
  manager.RemoveToolbar(&bars.GetTools());
  renderer.Destroy();
}

bool Viewport::Create() {
  if (!surroundings.plainCube) zovhost::DressCube(cube.GetParameters(), scale);
  disc.GetParameters().suppressWelcome = !surroundings.welcome;
  if (!manager.Create() || !bars.Create(renderer)) return false;
  story.BeginEmpty();
  return true;
}

void Viewport::SetPlace(int x, int y, int width, int height, double pixelsForPoint) {
  placeX = x;
  renderer.SetViewport(x, y, width, height);
  SetScale(pixelsForPoint);
  manager.SetViewportSize(width, height);
  hub.SetViewportSize(width, height);
}

// The library counts the cube and the discs in pixels.
void Viewport::SetScale(double value) {
  renderer.SetDisplayScale(value);
  bars.SetScale(value);
  if (value == scale) return;
  const int largeDisc = GetDiscSize(target, true);
  const int miniDisc = GetDiscSize(target, false);
  scale = value;
  SetDiscSize(target, true, largeDisc);
  SetDiscSize(target, false, miniDisc);
  if (!surroundings.plainCube) zovhost::ResizeCube(cube.GetParameters(), scale);
  const auto reach = static_cast<int>(std::lround(zovhost::ClickWatch::REACH * scale));
  clicks.SetReach(reach);
  middleClicks.SetReach(reach);
  hub.RequestApplicationUpdate();
}

void Viewport::ApplyPreferences() {
  if (surroundings.preferences == nullptr) return;
  hub.SetReducedMotion(surroundings.preferences->Get().reducedMotion);
}

void Viewport::SetScene(const zovhost::Scene& scene) {
  manager.Cancel();
  CancelClicks();
  disc.GetHistory()->ClearHistory();  // of another model
  story.BeginEmpty();
  selection.SetScene(&scene);
  renderer.SetScene(&scene);
  zovhost::EnterScene(hub, scene);
  UseModelCoordinates(target);
}

// ---- events ----

void Viewport::OnEvent(const WindowEvent& event) {
  if (OnEventOfShow(event)) return;
  if (event.type == WindowEvent::Type::MouseDown) {
    clicks.OnMouseDown(event);
    middleClicks.OnMouseDown(event);
    bars.OnPress();
  }
  if (event.type == WindowEvent::Type::MouseMove) {
    clicks.OnMouseMove(event);
    middleClicks.OnMouseMove(event);
  }
  if (event.type == WindowEvent::Type::FocusLost) CancelClicks();
  const bool used = manager.OnEvent(event);
  if (event.button == MouseButton::Right) OnRightClick(event, used);
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
  const bool pressed = event.type == WindowEvent::Type::MouseDown;
  const bool ofKey = event.type == WindowEvent::Type::KeyDown;
  if (pressed || (ofKey && event.key == SDLK_ESCAPE)) story.Cancel();
  if (ofKey && event.key == SDLK_SPACE && !event.repeated) story.GetBoard().PausePlayback();
  pressEndedShow = pressed;
  return pressed || ofKey || event.type == WindowEvent::Type::Wheel;
}

void Viewport::NotePointer(const WindowEvent& event) {
  const bool left = event.type == WindowEvent::Type::MouseLeave;
  const bool ofPointer = left || event.type == WindowEvent::Type::MouseMove ||
                         event.type == WindowEvent::Type::MouseDown ||
                         event.type == WindowEvent::Type::MouseUp;
  if (!ofPointer) return;
  pointerX = left ? -1 : event.x;
  pointerY = left ? -1 : event.y;
  FollowTooltip();
}

// What is under a pointer that rests may change as well.
void Viewport::FollowTooltip() { tooltip.Follow(manager.GetTooltip(), pointerX, pointerY, IsPressed()); }

void Viewport::CancelClicks() {
  clicks.Cancel();
  middleClicks.Cancel();
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
void Viewport::OnRightClick(const WindowEvent& event, bool used) {
  if (event.type == WindowEvent::Type::MouseDown) {
    rightX = event.x;
    rightY = event.y;
    rightOnBar = bars.IsOver(event.x, event.y);
  }
  const bool isStill =
      std::abs(event.x - rightX) <= clicks.GetReach() && std::abs(event.y - rightY) <= clicks.GetReach();
  if (event.type == WindowEvent::Type::MouseUp && !used && isStill && !rightOnBar && !IsPressed()) {
    surroundings.openMenu(event.x, event.y);
  }
}

void Viewport::OnKey(const WindowEvent& event) {
  tooltip.Dismiss();
  if (event.repeated) return;
  if (const ViewCommand* const command = FindViewCommand(event.key, event.modifiers)) Run(*command);
}

void Viewport::Run(const ViewCommand& command) {
  manager.Cancel();
  CancelClicks();
  tooltip.Dismiss();
  command.run(target);
}

// ---- the frame ----

void Viewport::PerformFrame() {
  hub.PerformOperations();
  renderer.SetCamera(hub.GetView());
}

void Viewport::DrawWidgets() {
  if (story.IsPresenting()) return story.GetBoard().Draw();
  bars.Update();
  manager.OnDraw();
  FollowTooltip();
  tooltip.Draw(hub, GetWidth(), GetHeight());
}

}  // namespace zovview
