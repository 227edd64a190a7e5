#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "korvane/orientor.h"
#include "korvane/vector3.h"
#include "zovhost/keyboard_focus.h"
#include "zovhost/pointer_wrap.h"
#include "zovhost/window.h"

namespace Korvane {
class CameraOperations;
class HelmDisc;
class NavigationBar;
class Renderer;
class Storyboard;
class Toolbar;
}  // namespace Korvane

namespace zovhost {

class StoryFocus;

/// The cube, whose parts a host can press by their numbers, whether or not they show.
class PressableOrientor : public Korvane::Orientor {
 public:
  /// As a click on it would; see OrientorObserver::OrientorPart. Other numbers press nothing.
  void Press(int part) { InjectClick(part); }
};

/// The focus of a view without a mouse: the 26 parts of the cube, its buttons with the letters of the compass
/// and the arrows between faces, the wedges of the open disc,
/// the items of the navigation bar and of the toolbars, the slides of the storyboard. It marks what is under
/// the focus by a frame in the accent colour with a white one around it.
///
/// Arrows go round the cube, also over its far side, whose parts are marked faintly. Enter presses a part of
/// the cube, and clicks on an item; a wedge it holds as long as the key is held, and arrows drag it. The key
/// of menus, or Shift with F10, opens the menu of the cube, of the disc, of a bar or of a shot. On a
/// shot of the storyboard, Delete deletes it, F2 types its name; Ctrl with an arrow moves a shot or a
/// sequence along its row. The buttons of the cube show while one of them is under the focus.
///
/// What it works on is borrowed and outlives it. Positions are viewport pixels, origin at the bottom left.
class ViewFocus {
 public:
  static constexpr int DRAG_STEP = 12;  // points, of an arrow while a wedge is held

  struct Widgets {
    Korvane::CameraOperations& hub;
    Korvane::Renderer& renderer;
    PressableOrientor& cube;
    Korvane::HelmDisc& disc;
    Korvane::NavigationBar& bar;
    std::vector<Korvane::Toolbar*> toolbars;
    Korvane::Storyboard* storyboard = nullptr;  ///< Null: none.
    /// The name of the shot in the editor of the storyboard is to be typed; empty: nobody can.
    std::function<void()> typeShotName = {};
  };

  /// `send` takes what keys do as a mouse, and gives it to the view manager.
  ViewFocus(Widgets widgets, std::function<void(const WindowEvent&)> send);
  ~ViewFocus();
  ViewFocus(const ViewFocus&) = delete;
  ViewFocus& operator=(const ViewFocus&) = delete;

  /// Pixels for one point of the display; one that is not above 0 counts as 1.
  void SetScale(double value) { scale = value > 0.0 ? value : 1.0; }
  /// See KeyboardFocus.
  void SetObserver(KeyboardFocus::Observer observer) { focus.SetObserver(std::move(observer)); }
  bool OnEvent(const WindowEvent& event);
  void Leave() { focus.Leave(); }
  bool IsActive() const { return focus.IsActive(); }
  KeyboardFocus& GetFocus() { return focus; }
  /// Where the smallest thing of the storyboard at a pixel stands: one of its buttons, or a slide. None
  /// there.
  std::optional<Korvane::Box2> FindStoryThing(PixelPosition at);
  /// Once a frame, in a pass of its own, over the widgets.
  void Draw(int viewportWidth, int viewportHeight);

 private:
  std::vector<FocusThing> ListCube();
  FocusThing MakePart(int part);
  void PlaceHidden(std::vector<FocusThing>& parts) const;
  std::vector<FocusThing> ListCubeButtons();
  FocusThing MakeCubeThing(int id, const char* kind, int text);
  void AddLetters(std::vector<FocusThing>& things);
  void AddArrows(std::vector<FocusThing>& things);
  Korvane::Vector2 FindCubeMiddle();
  std::vector<FocusThing> ListDisc();
  std::vector<FocusThing> ListBar(Korvane::Toolbar* strip, const char* group);
  std::optional<int> SteerCube(int part, FocusStep step) const;
  std::string NamePart(int part) const;
  std::string LoadText(int id) const;
  void AddStory();
  void AddClick(FocusThing& thing, PixelPosition at, bool held);
  void ShowCubeButtons();
  void PointAtButton(const FocusThing* thing);
  void PressAt(PixelPosition at, bool down, bool held, MouseButton by = MouseButton::Left);
  void Send(WindowEvent::Type type, PixelPosition at);
  void PressPending();
  void LetGo();
  Korvane::Box2 FitFrame(const Korvane::Box2& bounds, const Korvane::Vector2& view) const;
  void DrawFrame(const Korvane::Box2& bounds, double opacity);

  Widgets widgets;
  std::function<void(const WindowEvent&)> send;
  KeyboardFocus focus;
  std::unique_ptr<StoryFocus> story;  // null without a storyboard
  double scale = 1.0;
  bool sending = false;
  std::optional<bool> overlayBefore;       // what the cube has said of its buttons; none: it still says so
  std::optional<PixelPosition> pointedAt;  // a button of the cube
  bool pointing = false;                   // there; the mouse has not moved since
  PixelPosition pointer;
  MouseButton pressedBy = MouseButton::Left;
  int framesToPress = 0;  // until what is pressed has seen the pointer come
  bool down = false;
  bool letsGoThen = false;
};

}  // namespace zovhost
