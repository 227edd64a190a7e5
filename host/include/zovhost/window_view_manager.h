#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "korvane/camera_parameters.h"
#include "korvane/helm_disc.h"
#include "korvane/view_manager.h"
#include "zovhost/held_keys.h"
#include "zovhost/navigation_style.h"
#include "zovhost/pointer_wrap.h"
#include "zovhost/wheel_counter.h"
#include "zovhost/window.h"

namespace Korvane {
class Shot;
}

namespace zovhost {

class StyleDrag;

/// The view manager with what a host around it has to do: it takes the events of a window, wraps the pointer
/// at the edges of the viewport while a drag wants that, counts fine wheels, and lets go of everything when
/// the window loses the focus.
///
/// A press, and a turn of the wheel, end a move that runs, unless that move is of use to whoever gets the
/// press. A tool that a disc has put away comes back when the disc closes, which
/// its key brings about also when the disc has been used. A disc opens where the pointer is, or in the place
/// of the one that was open.
class WindowViewManager : public Korvane::ViewManager {
 public:
  /// Sets the pointer to a pixel of the viewport.
  using MovePointer = std::function<void(int x, int y)>;

  WindowViewManager();
  ~WindowViewManager() override;

  void SetMovePointer(MovePointer move) { movePointer = std::move(move); }
  /// One of GetNavigationStyles; of a first start the library's own. What is going on ends. A right press
  /// that a style drags with is a click while it stays within ClickWatch::REACH, and then leaves the camera
  /// alone.
  void SetNavigationStyle(const NavigationStyle& wanted);
  const NavigationStyle& GetNavigationStyle() const { return *style; }
  /// The wheel and the zooms of tools go to the pivot of the camera instead of to what is under the pointer.
  void SetZoomsToPivot(bool wanted);
  /// In pixels of the viewport, as the last event told it.
  PixelPosition GetPointer() const { return {mouse.x, mouse.y}; }

  /// Both end a drag of the navigation style.
  void SetKorvane(Korvane::CameraOperations* hub) override;
  void SetRenderer(Korvane::Renderer* value) override;
  /// Lets go of everything first.
  bool Destroy() override;
  void SetViewportSize(int width, int height) override;
  /// For who is made sick by a picture that moves by itself: the messages of the discs and the shots of a
  /// story do not fade. Off by default. See ViewHub for the moves.
  void SetReducedMotion(bool reduced);
  void SetStoryboard(Korvane::Storyboard* panel) override;
  /// Lets every disc open where the pointer is.
  void SetHelmDisc(Korvane::HelmDisc* disc) override;
  /// Lets no push of a six-axis device turn a parallel view inside out.
  void SetCam3DController(Korvane::Cam3DController* controller) override;
  /// Lets the compass of the cube follow the pointer in every view.
  void SetOrientor(Korvane::Orientor* cube) override;
  /// Lets a drawn rectangle be flown to, and no mark of a pivot stay after a release that was another's.
  bool AddTool(int id, Korvane::Tool* tool) override;
  bool SetActiveTool(int id) override;
  void Refresh() override;
  bool OnMouseMove(int x, int y) override;
  void OnDrawOverlay() override;

  /// An event of the window, in pixels of the viewport. True when it was used.
  bool OnEvent(const WindowEvent& event);
  /// The library has set the pointer to a pixel of the viewport.
  void OnPointerSet(int x, int y);
  /// Lets go of all buttons and keys; what they were doing ends where it is, and no click comes of it.
  void Cancel();
  /// A button that was pressed here is held.
  bool IsPressed() const { return mouse.leftDown || mouse.middleDown || mouse.rightDown; }
  /// Nothing that stands on the view would have a press of the left button at this pixel. The pointer goes
  /// there, but beside a large disc, which would follow it.
  bool IsFreeAt(int x, int y);
  /// The open disc would have the press, once it has followed the pointer there in a frame. A mini disc has
  /// it anywhere.
  bool IsDiscAt(int x, int y) const;
  bool IsDiscOpen() const {
    return helmDisc != nullptr && helmDisc->GetActiveDisc() != Korvane::DiscType::None;
  }
  /// For a move of the host's own: what the mouse is doing ends, and a move that runs. False, with nothing
  /// ended, while a story has the view.
  bool TakeView();
  /// The last left press was of use to no one unless it becomes a drag.
  bool IsClickFree() const { return clickFree; }

 protected:
  /// Without asking for a disc: the middle button and the wheel navigate at any time.
  bool WantMiddleMouseNavigation() const override;
  bool WantHelmDiscVisible() const override;
  bool BeginMiddleMouseNavigation() override;
  bool EndMiddleMouseNavigation() override;
  /// Each names itself beside the pointer when it is used for the first time, and again when another tool has
  /// been chosen.
  bool BeginOrbitingWithMouse() override;
  bool BeginPanningWithMouse() override;
  bool BeginZoomingWithMouse() override;
  bool EndOrbitingWithMouse() override;
  bool EndPanningWithMouse() override;
  /// A click means something to the active tool, as much as a drag. Otherwise it is left to the host.
  virtual bool WantToolClicks() const { return true; }

 private:
  using PointerEvent = bool (ViewManager::*)(int x, int y);
  static PointerEvent GetPress(MouseButton button);
  static PointerEvent GetRelease(MouseButton button);

  bool OnPress(const WindowEvent& event);
  bool OnMove(const WindowEvent& event);
  bool OnRelease(const WindowEvent& event);
  bool OnWheel(const WindowEvent& event);
  bool OnLeave();
  bool OnKey(const WindowEvent& event);
  bool PassKey(Korvane::KeyID key, bool down);
  // The navigation style.
  bool NoteOnce(Navigation before, Korvane::Tool* tool);
  bool IsStyleOwn() const;
  bool OnMoveKey(const WindowEvent& event);
  bool PressStyle(const WindowEvent& event, NavigationMove move);
  bool ReleaseStyle(const WindowEvent& event);
  void ForgetStyleDrag();
  bool BeginStyleMove(NavigationMove move);
  void FollowModifiers(unsigned modifiers);
  void NoteDrag(bool dragging);
  void EndRunningShot();
  void GiveSnappingBack();
  bool IsPressForDisc() const;
  void PutPointer(int x, int y);
  bool IsFreeBesideDisc(int x, int y);
  PixelPosition FollowPointer(const WindowEvent& event);

  // A press that the navigation style drags with.
  struct StylePress {
    MouseButton button;
    NavigationMove move;
    PixelPosition position;
    bool strayed = false;  // too far for a click
    Korvane::CameraParameters camera;
  };

  MovePointer movePointer;
  const NavigationStyle* style;
  std::unique_ptr<StyleDrag> styleDrag;
  std::optional<StylePress> stylePress;
  bool zoomsToPivot = false;
  bool reducedMotion = false;
  unsigned swallowed = 0;  // a bit a button: pressed beside a drag of the style
  bool keepsDrag = false;  // the library's own change of the drag by a key is not wanted
  PointerWrap pointer;
  HeldKeys keys;
  WheelCounter wheel;
  bool clickFree = false;
  bool snapping = false;   // at the last press
  int toolBehindDisc = 0;  // 0: none
  int notedTool = 0;       // that was active when they were named
  std::array<bool, 4> namedNavigations = {};
};

}  // namespace zovhost
