#pragma once

#include <bitset>
#include <functional>
#include <memory>
#include <optional>

#include "korvane/view_manager.h"
#include "pointer_wrap.h"
#include "zovhost/window.h"

namespace zovview {

class Notes;
class ViewerHub;

/// The view manager with what a host adds: its tools, the events of its window, and a pointer that is wrapped
/// at the edges of the viewport while a drag wants that.
class ViewerViewManager : public Korvane::ViewManager {
 public:
  /// Sets the pointer to a pixel of the viewport.
  using MovePointer = std::function<void(int x, int y)>;

  explicit ViewerViewManager(ViewerHub& hub);
  ~ViewerViewManager() override;

  void SetMovePointer(MovePointer move) { movePointer = std::move(move); }
  /// Makes the notes of the tools besides.
  bool Create() override;
  bool Destroy() override;
  void SetViewportSize(int width, int height) override;

  /// An event of the window, in pixels of the viewport. True when it was used.
  bool OnEvent(const zovhost::WindowEvent& event);
  /// The library has set the pointer to a pixel of the viewport.
  void OnPointerSet(int x, int y);
  /// Lets go of all buttons and keys; what they were doing ends where it is, and no click comes of it.
  void Cancel();
  /// A button that was pressed here is held.
  bool IsPressed() const { return leftMouseDown || middleMouseDown || rightMouseDown; }
  /// The last left press was of use to no one unless it becomes a drag.
  bool IsClickFree() const { return clickFree; }

 protected:
  /// Without asking for a disc: the middle button and the wheel navigate at any time.
  bool WantMiddleMouseNavigation() const override;

 private:
  using PointerEvent = bool (ViewManager::*)(int x, int y);
  static PointerEvent GetPress(zovhost::MouseButton button);
  static PointerEvent GetRelease(zovhost::MouseButton button);

  bool OnPress(const zovhost::WindowEvent& event);
  bool OnMove(const zovhost::WindowEvent& event);
  bool OnRelease(const zovhost::WindowEvent& event);
  bool OnWheel(const zovhost::WindowEvent& event);
  bool OnLeave();
  bool OnKey(const zovhost::WindowEvent& event);
  bool PressKey(std::size_t binding, bool down);
  void ReleaseKeys();
  void ReleaseButtons();
  void EndRunningShot();
  void ShowViewNote();
  PixelPosition FollowPointer(int x, int y);

  static constexpr std::size_t MOST_BINDINGS = 32;

  ViewerHub& hub;
  MovePointer movePointer;
  PointerWrap pointer;
  std::unique_ptr<Notes> notes;
  std::bitset<MOST_BINDINGS> heldKeys;  // by the rows of the key table
  double wheelRest = 0.0;               // of a fine wheel, below one count
  bool clickFree = false;
};

}  // namespace zovview
