#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

union SDL_Event;
struct SDL_Window;

namespace zovhost {

struct Image;

/// Back and Forward are the side buttons.
enum class MouseButton : int { Left = 0, Middle = 1, Right = 2, Back = 3, Forward = 4 };

/// What a touch device is, as its fingers are heard of.
enum class TouchDevice : int {
  Screen,    ///< Its fingers touch what they see.
  Pen,       ///< Behaves as the pointer.
  Trackpad,  ///< Moves the pointer and turns the wheel, and is heard of as both of them.
  Gone,      ///< There is no such device.
};

/// By what the window system library says of a device: `nativeType` is an SDL_TouchDeviceType, `name` may be
/// null. A device without a type is not there; one with a pen or a stylus in its name is a pen.
TouchDevice FindTouchDevice(int nativeType, const char* name);

/// What happened in a window. Positions are viewport pixels, origin at the bottom left, y upward; during a
/// drag they may lie outside the viewport.
struct WindowEvent {
  enum class Type : int {
    MouseDown,
    MouseUp,
    MouseMove,
    MouseLeave,  ///< The pointer has left the window, and no button is held.
    Wheel,
    FingerDown,
    FingerMove,
    FingerUp,
    FingersLost,  ///< The fingers that are down will not be heard to be lifted.
    KeyDown,
    KeyUp,
    FocusLost,  ///< Whatever is held will not be heard to be released.
    Resized,    ///< The size in pixels, or the scale, has changed.
    FileDropped,
    Closing,  ///< The user wants to leave; the loop ends after this event, unless KeepOpen is called.
  };
  enum Modifier : unsigned { SHIFT = 1, CONTROL = 2, ALT = 4 };

  Type type = Type::MouseMove;
  int x = 0;
  int y = 0;
  MouseButton button = MouseButton::Left;
  int clicks = 0;      ///< With MouseDown: 1, 2 for a double click, and so on.
  double scale = 0.0;  ///< With Resized: pixels for one point; 0: as before.
  double wheel = 0.0;  ///< Notches; positive away from the user. Fractions on fine wheels.
  /// A key code of the window system library (SDL_Keycode). Where a layout has no Latin letter or digit on a
  /// key, that which a US keyboard has there; SDLK_QUESTION: a question mark was typed, wherever it is.
  std::int32_t key = 0;
  bool repeated = false;   ///< With KeyDown: the key is held.
  unsigned modifiers = 0;  ///< A sum of Modifier.
  int finger = 0;          ///< With a finger: the least number that no other has that is down.
  double pressure = 0.0;   ///< With a finger: 0 to 1, as far as its device knows.
  bool pen = false;        ///< The finger is the tip of a pen, which behaves as the pointer.
  bool ofTouch = false;    ///< With the mouse: its part is taken by a finger, which nobody can set anywhere.
  std::string path;        ///< The dropped file.
};

/// A window with an OpenGL 3.3 core context, on a display or offscreen, and its event loop.
///
/// The loop sleeps until an event comes, until a timer of the library's default platform is due, or until
/// a frame is asked for; a window that is left alone uses no processor time. One window at a time; all
/// calls belong on the thread that made it, but Wake.
class Window {
 public:
  struct Options {
    std::string title;
    /// In points: on a display of high density the viewport has more pixels than this.
    int width = 1280;
    int height = 800;
    /// No window on any display; the context draws into framebuffers of the caller's own.
    bool offscreen = false;
    /// The time by which frames and jumps of the pointer are paced; null: the system's.
    std::function<std::chrono::steady_clock::time_point()> clock = nullptr;
    /// What the touch device of a number is; null: as the window system library says, and a screen where that
    /// knows nothing of it.
    std::function<TouchDevice(std::int64_t device)> touchDevice = nullptr;
    /// Pixels for one point, from 1 to 4; 0: as the display and the desktop have it, offscreen 1.
    double scale = 0.0;
  };

  using EventHandler = std::function<void(const WindowEvent&)>;
  /// Sees each event as the window system library gives it, before it is translated, but what a finger or a
  /// trackpad makes up beside its own events. True: consumed.
  using NativeEventHook = std::function<bool(const SDL_Event&)>;
  using FrameHandler = std::function<void()>;

  /// Null on failure, so also when a window is wanted and the session has no display; `error` then holds one
  /// clear line. The context is current afterwards.
  static std::unique_ptr<Window> Create(const Options& options, std::string& error);

  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  bool IsOffscreen() const;
  /// Keys go to this window. Offscreen, where there is no other, they always do. A frame is asked for when it
  /// gets them.
  bool IsFocused() const;
  /// The viewport in pixels.
  int GetWidth() const;
  int GetHeight() const;
  /// Pixels for one point: 1 on an ordinary display, 2 on one of double density.
  double GetScale() const;
  /// As Options::scale. When the scale becomes another the window keeps its pixels and Resized is sent. One
  /// that is not finite, or out of range, is brought into it.
  void SetScale(double scale);
  void SetTitle(const std::string& title);
  void Hide();
  /// The whole of the display that the window is on. False, with nothing changed, where that is not to be
  /// had, as offscreen.
  bool SetFullScreen(bool full);
  bool IsFullScreen() const;

  void SetEventHandler(EventHandler handler);
  void SetNativeEventHook(NativeEventHook hook);
  /// Draws one frame into the window's framebuffer; what it drew is shown when it returns.
  void SetFrameHandler(FrameHandler handler);

  /// The frame handler runs once, soon, however often this is called before it does; not more often than
  /// the display shows frames.
  void RequestFrame();
  bool IsFrameRequested() const;
  /// Ends the sleep of the loop from any thread: the handler of Wake then runs on the window's thread.
  void Wake();
  void SetWakeHandler(std::function<void()> handler);

  /// Runs until the window is closed.
  void Run();
  /// One round: sleeps up to `longestWait` milliseconds (-1: as long as nothing happens), handles what
  /// has come and draws a frame that was asked for. False once the window is closed.
  /// An event handler that takes long may call it to keep the window alive.
  bool Step(int longestWait);
  void Close();
  /// Within the handler of Closing: not yet, the user is asked something first.
  void KeepOpen();
  bool IsOpen() const;

  /// The shape of the pointer under a number, straight alpha, `hotX` and `hotY` from the top left of the
  /// picture. A second picture under the same number replaces the first.
  bool DefineCursor(int number, const Image& image, int hotX, int hotY);
  /// Shows the cursor of a number; one that was never defined shows the system's arrow.
  void SetCursor(int number);
  /// Moves the pointer to a viewport pixel. The motion that the window system makes of it is not reported.
  void WarpPointer(int x, int y);

  SDL_Window* GetNativeWindow() const;
  void* GetNativeContext() const;

 private:
  class Impl;
  explicit Window(std::unique_ptr<Impl> implementation);
  std::unique_ptr<Impl> impl;
};

}  // namespace zovhost
