#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "korvane/interval_timer.h"
#include "zovhost/pointer_wrap.h"
#include "zovhost/touch_camera.h"
#include "zovhost/touch_gestures.h"
#include "zovhost/window.h"

namespace zovhost {

class WindowViewManager;

/// What fingers and pens do in a view.
///
/// A finger that comes down on the cube, a disc or a bar is the left button there, and so is every pen; a
/// mini disc comes to the finger. Elsewhere fingers move the camera, see TouchCamera: one that moves on its
/// own, or two and more. A finger that is lifted where it came down is a click, the second of two in the same
/// place a double click; one that rests for LONG_PRESS is a click of the right button, but on a disc, whose
/// wedges are held. A click beside a large disc brings it there.
///
/// The view manager, hub and renderer are borrowed and must outlive it. All calls belong on the window's
/// thread. Within what it sends, a host may call Cancel, but not destroy it.
class TouchNavigation {
 public:
  static constexpr double LONG_PRESS = 0.6;         // seconds
  static constexpr std::uint32_t DOUBLE_TAP = 400;  // milliseconds from press to press
  static constexpr double REACH = 10.0;             // points: nearer than this a finger has not moved
  static constexpr double DOUBLE_TAP_REACH = 24.0;  // points

  /// `send` takes what fingers do as a mouse: the host does with it what it does with its mouse.
  TouchNavigation(WindowViewManager& manager, Korvane::CameraOperations& hub, Korvane::Renderer& renderer,
                  std::function<void(const WindowEvent&)> send);
  ~TouchNavigation();
  TouchNavigation(const TouchNavigation&) = delete;
  TouchNavigation& operator=(const TouchNavigation&) = delete;

  /// Pixels for one point of the display; one that is not above 0 counts as 1.
  void SetScale(double value) { scale = value > 0.0 ? value : 1.0; }
  /// What three fingers do from now on.
  void SetThreeFingers(TouchCamera::ThreeFingers use) { camera.SetThreeFingers(use); }
  /// See TouchCamera.
  void SetKeepsPivot(bool wanted) { camera.SetKeepsPivot(wanted); }

  /// An event of the window, in pixels of the viewport. True for those of fingers; the loss of the focus,
  /// too, ends what they do.
  bool OnEvent(const WindowEvent& event);
  /// The library has set the pointer to a pixel. True when a finger is the pointer: it counts from there, and
  /// nothing is to be moved on the screen.
  bool OnPointerSet(int x, int y);
  /// What the fingers do ends where it is; nothing is clicked, and those that are down do nothing more.
  void Cancel();
  /// Once a frame, when all has been drawn: a disc has followed the pointer to a finger.
  void OnFrame();
  /// Fingers are down, and of use.
  bool IsActive() const { return state != State::Idle; }
  /// A finger is the left button.
  bool IsPointer() const { return state == State::Pointing; }
  /// Where the move of fingers began, or may yet begin: what an orbit about the point under the pointer
  /// picks. None while there is none.
  std::optional<PixelPosition> GetPlace() const;

 private:
  enum class State : int {
    Idle,
    Waiting,   // one finger, which may become a click or a move
    Pointing,  // one finger as the left button
    Moving,    // the camera
    Resting,   // the camera moves on when the fingers that are left do
  };

  // Runs while a finger rests.
  class RestTimer : public Korvane::IntervalTimer {
   public:
    explicit RestTimer(TouchNavigation& owner) : navigation(owner) {}
    void Timeout() override { navigation.OnLongPress(); }

   private:
    TouchNavigation& navigation;
  };

  void OnDown(const WindowEvent& event);
  void OnMove(const WindowEvent& event);
  void OnUp(const WindowEvent& event);
  void OnLongPress();
  void BeginPointing(bool ofPen);
  void PressPointer();
  void BeginMoving();
  void Tap();
  void LiftPointer();
  void Settle();
  bool HasMoved() const;
  int CountTap(const WindowEvent& event);
  void Send(WindowEvent::Type type, PixelPosition at, MouseButton button = MouseButton::Left, int clicks = 0);
  void SendLeave();

  WindowViewManager& manager;
  Korvane::CameraOperations& hub;
  std::function<void(const WindowEvent&)> send;
  TouchGestures gestures;
  TouchCamera camera;
  RestTimer rest{*this};
  State state = State::Idle;
  double scale = 1.0;
  PixelPosition press;   // of the only finger
  PixelPosition place;   // of the move
  PixelPosition offset;  // from a finger to the pointer that it is
  PixelPosition pointer;
  int framesToPress = 0;  // until a disc has come to the finger that presses it
  bool liftsThen = false;
  bool restCounts = false;
  int clicks = 0;
  struct Press {
    std::uint32_t time;  // ticks
    PixelPosition at;
  };
  std::optional<Press> lastTap;
};

}  // namespace zovhost
