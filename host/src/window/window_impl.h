#pragma once

#include <SDL.h>

#include <chrono>
#include <map>
#include <memory>
#include <vector>

#include "window/desktop_watch.h"
#include "zovhost/window.h"

namespace zovhost {

struct SdlDeleter {
  void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  void operator()(SDL_Cursor* cursor) const { SDL_FreeCursor(cursor); }
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using SdlWindow = std::unique_ptr<SDL_Window, SdlDeleter>;
using SdlCursor = std::unique_ptr<SDL_Cursor, SdlDeleter>;
using SdlSurface = std::unique_ptr<SDL_Surface, SdlDeleter>;

/// Video of the window system library, for as long as it lives.
class SdlVideo {
 public:
  SdlVideo() : ready(SDL_InitSubSystem(SDL_INIT_VIDEO) == 0) {}
  ~SdlVideo() {
    if (ready) SDL_QuitSubSystem(SDL_INIT_VIDEO);
  }
  SdlVideo(const SdlVideo&) = delete;
  SdlVideo& operator=(const SdlVideo&) = delete;
  bool IsReady() const { return ready; }

 private:
  bool ready;
};

class Window::Impl {
 public:
  using Clock = std::chrono::steady_clock;

  Clock::time_point GetTime() const { return clock ? clock() : Clock::now(); }

  ~Impl();

  // window.cpp
  bool Open(const Options& options, std::string& error);
  bool OpenContext(const Options& options, std::string& error);
  bool Step(int longestWait);
  void DispatchTimers();
  bool CanDraw() const;
  int MillisecondsToFrame() const;
  int ChooseWait(int longestWait) const;
  void DrawFrame();
  void UpdateSize();
  /// Pixels for one unit of the window system.
  double GetDensity() const;
  double GetScale() const;
  void SetScale(double scale);
  static double LimitScale(double scale);
  /// Units of the window system are pixels, and how many of them a point has is told elsewhere.
  static bool HasDesktopScale();

  // window_events.cpp
  void Handle(const SDL_Event& event);
  void FollowDesktop();
  void HandleWindowEvent(const SDL_WindowEvent& event);
  void HandleMotion(const SDL_MouseMotionEvent& event);
  void HandleButton(const SDL_MouseButtonEvent& event);
  void HandleWheel(const SDL_MouseWheelEvent& event);
  void HandleKey(const SDL_KeyboardEvent& event);
  void HandleText(const SDL_TextInputEvent& event);
  void HandleDrop(const SDL_DropEvent& event);
  void HandleFinger(const SDL_TouchFingerEvent& event);
  void LoseFingers();
  void LoseFingersOfGoneDevices();
  TouchDevice GetTouchDevice(SDL_TouchID id) const;
  bool IsMadeUp(const SDL_Event& event) const;
  void Send(WindowEvent event);
  void SetPosition(WindowEvent& event, int unitX, int unitY) const;
  void WarpPointer(int x, int y);
  bool IsEchoOfWarp(int unitX, int unitY);

  std::unique_ptr<SdlVideo> video;  // last to go
  SdlWindow window;
  SDL_GLContext context = nullptr;
  bool offscreen = false;
  bool closed = false;
  int width = 0;  // pixels
  int height = 0;
  int unitWidth = 0;  // units of the window system, in which it tells positions
  int unitHeight = 0;
  double chosenScale = 0.0;  // 0: none
  double desktopScale = 1.0;
  DesktopWatch desktopWatch;

  std::function<Clock::time_point()> clock;
  bool frameRequested = true;
  Clock::time_point lastFrame;
  std::chrono::milliseconds framePeriod{0};

  // A finger that is down; its place in the list is its number.
  struct Finger {
    SDL_TouchID device;
    SDL_FingerID id;
    bool known;  // the device was there
    bool down;
  };
  Finger* FindFinger(const SDL_TouchFingerEvent& event);
  Finger* TakeFinger(const SDL_TouchFingerEvent& event);

  std::function<TouchDevice(std::int64_t)> touchDevice;
  std::vector<Finger> fingers;

  unsigned heldButtons = 0;         // one bit a MouseButton
  SDL_Keymod heldKeys = KMOD_NONE;  // that modify others, at the event that is handled
  bool warping = false;
  int warpX = 0;  // units
  int warpY = 0;
  Clock::time_point warpTime;

  std::map<int, SdlCursor> cursors;
  int currentCursor = -1;

  EventHandler eventHandler;
  NativeEventHook nativeHook;
  FrameHandler frameHandler;
  std::function<void()> wakeHandler;
  Uint32 wakeEvent = 0;
};

}  // namespace zovhost
