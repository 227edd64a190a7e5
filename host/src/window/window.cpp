#include "zovhost/window.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include "korvane/platform.h"
#include "window/desktop_scale.h"
#include "window/window_impl.h"
#include "zovhost/image.h"

namespace zovhost {

namespace {

constexpr const char* NO_DISPLAY = "there is no display";
constexpr int MULTISAMPLES = 4;
constexpr int USUAL_REFRESH_RATE = 60;  // hertz, where the display does not tell

// Drivers that show nothing on a display of this session. The console's own is among them: a viewer
// started over a remote shell must not take the machine's screen.
constexpr std::array<std::string_view, 4> DRIVERS_WITHOUT_DISPLAY = {"offscreen", "dummy", "evdev", "KMSDRM"};

bool CurrentDriverHasDisplay() {
  const char* const driver = SDL_GetCurrentVideoDriver();
  return driver != nullptr && std::find(DRIVERS_WITHOUT_DISPLAY.begin(), DRIVERS_WITHOUT_DISPLAY.end(),
                                        driver) == DRIVERS_WITHOUT_DISPLAY.end();
}

// What the session names as its displays, since drivers that are tried in vain may complain on the error
// stream. Empty: none. Only where displays are named by the environment.
[[maybe_unused]] std::string ListSessionDrivers() {
  const auto isSet = [](const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
  };
  std::string drivers;
  if (isSet("WAYLAND_DISPLAY")) drivers = "wayland";
  if (isSet("DISPLAY")) drivers += drivers.empty() ? "x11" : ",x11";
  return drivers;
}

// False when there is no display to choose one for.
bool ChooseDriver(bool offscreen) {
  if (offscreen)
    return SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, "offscreen", SDL_HINT_OVERRIDE) == SDL_TRUE;
  SDL_ResetHint(SDL_HINT_VIDEODRIVER);
#if defined(__linux__)
  if (SDL_GetHint(SDL_HINT_VIDEODRIVER) != nullptr) return true;  // the user has chosen
  const std::string drivers = ListSessionDrivers();
  if (drivers.empty()) return false;
  SDL_SetHint(SDL_HINT_VIDEODRIVER, drivers.c_str());
#endif
  return true;
}

void SetContextAttributes(int samples) {
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 3);
  SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
  SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
  SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 8);
  SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, samples > 0 ? 1 : 0);
  SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, samples);
}

// Of a length in points, where units of the window system are pixels or a density is not known yet.
int ToUnits(int points, double scale) { return static_cast<int>(std::lround(points * scale)); }

struct WindowSize {
  int width;
  int height;
};

// What is larger than the display could not be reached as a whole.
WindowSize FindSize(const Window::Options& options, double unitsForPoint) {
  const WindowSize wanted = {ToUnits(options.width, unitsForPoint), ToUnits(options.height, unitsForPoint)};
  SDL_Rect usable = {};
  if (options.offscreen || SDL_GetDisplayUsableBounds(0, &usable) != 0 || usable.w < 1 || usable.h < 1)
    return wanted;
  return {std::min(wanted.width, usable.w), std::min(wanted.height, usable.h)};
}

SdlWindow OpenNativeWindow(const Window::Options& options, double unitsForPoint, int samples) {
  SetContextAttributes(samples);
  const WindowSize size = FindSize(options, unitsForPoint);
  const Uint32 flags =
      SDL_WINDOW_OPENGL | (options.offscreen ? 0U : SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
  return SdlWindow(SDL_CreateWindow(options.title.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                                    size.width, size.height, flags));
}

std::chrono::milliseconds FindFramePeriod(SDL_Window* window) {
  SDL_DisplayMode mode = {};
  const bool known =
      SDL_GetCurrentDisplayMode(SDL_GetWindowDisplayIndex(window), &mode) == 0 && mode.refresh_rate > 0;
  // A little less than the period, so that waiting for the display itself sets the pace where it works.
  return std::chrono::milliseconds(750 / (known ? mode.refresh_rate : USUAL_REFRESH_RATE));
}

// The shorter of two waits in milliseconds, of which -1 means for ever.
int ShorterWait(int a, int b) {
  if (a < 0) return b;
  return b < 0 ? a : std::min(a, b);
}

}  // namespace

// ---- opening and closing ----

std::unique_ptr<Window> Window::Create(const Options& options, std::string& error) {
  auto impl = std::make_unique<Impl>();
  if (!impl->Open(options, error)) return nullptr;
  return std::unique_ptr<Window>(new Window(std::move(impl)));
}

Window::Window(std::unique_ptr<Impl> implementation) : impl(std::move(implementation)) {}
Window::~Window() = default;

Window::Impl::~Impl() {
  cursors.clear();
  if (context != nullptr) SDL_GL_DeleteContext(context);
  window.reset();
}

bool Window::Impl::Open(const Options& options, std::string& error) {
  if (!ChooseDriver(options.offscreen)) {
    error = NO_DISPLAY;
    return false;
  }
  offscreen = options.offscreen;
  clock = options.clock;
  touchDevice = options.touchDevice;
  video = std::make_unique<SdlVideo>();
  if (!video->IsReady()) {
    error = std::string("cannot open a display: ") + SDL_GetError();
    return false;
  }
  if (!offscreen && !CurrentDriverHasDisplay()) {
    error = NO_DISPLAY;
    return false;
  }
  SDL_EnableScreenSaver();
  // A first click on a window that is not in front counts as a click.
  SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
  SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "0");

  chosenScale = LimitScale(options.scale);
  if (!offscreen && HasDesktopScale()) desktopScale = FindDesktopScale();
  if (!OpenContext(options, error)) return false;
  if (!offscreen) SDL_GL_SetSwapInterval(1);
  if (!offscreen && HasDesktopScale()) desktopWatch.Begin(window.get());
  framePeriod = FindFramePeriod(window.get());
  wakeEvent = SDL_RegisterEvents(1);
  UpdateSize();
  return true;
}

bool Window::Impl::OpenContext(const Options& options, std::string& error) {
  const bool inPixels = offscreen || HasDesktopScale();
  const double unitsForPoint = inPixels ? GetScale() : 1.0;
  // Not every driver smooths the edges of a window; one that does not is still good.
  const std::array<int, 2> attempts = {offscreen ? 0 : MULTISAMPLES, 0};
  for (const int samples : attempts) {
    window = OpenNativeWindow(options, unitsForPoint, samples);
    context = window != nullptr ? SDL_GL_CreateContext(window.get()) : nullptr;
    if (context != nullptr) break;
  }
  if (context == nullptr) {
    error = std::string("cannot open a window with OpenGL 3.3: ") + SDL_GetError();
    return false;
  }
  return true;
}

void Window::Impl::UpdateSize() {
  SDL_GetWindowSize(window.get(), &unitWidth, &unitHeight);
  SDL_GL_GetDrawableSize(window.get(), &width, &height);
}

double Window::Impl::GetDensity() const {
  return unitWidth > 0 ? static_cast<double>(width) / unitWidth : 1.0;
}

double Window::Impl::GetScale() const {
  return chosenScale > 0.0 ? chosenScale : GetDensity() * desktopScale;
}

// 0 stays 0.
double Window::Impl::LimitScale(double scale) {
  if (!(scale > 0.0)) return 0.0;
  return std::clamp(scale, LEAST_DISPLAY_SCALE, LARGEST_DISPLAY_SCALE);
}

bool Window::Impl::HasDesktopScale() {
  const char* const driver = SDL_GetCurrentVideoDriver();
  return driver != nullptr && std::string_view(driver) == "x11";
}

void Window::Close() { impl->closed = true; }
void Window::KeepOpen() { impl->closed = false; }
bool Window::IsOpen() const { return !impl->closed; }
void Window::Hide() { SDL_HideWindow(impl->window.get()); }

bool Window::SetFullScreen(bool full) {
  const Uint32 flags = full ? Uint32{SDL_WINDOW_FULLSCREEN_DESKTOP} : 0U;
  return !impl->offscreen && SDL_SetWindowFullscreen(impl->window.get(), flags) == 0;
}
bool Window::IsFullScreen() const {
  return (SDL_GetWindowFlags(impl->window.get()) & SDL_WINDOW_FULLSCREEN) != 0;
}

// ---- properties ----

bool Window::IsOffscreen() const { return impl->offscreen; }
bool Window::IsFocused() const { return impl->offscreen || SDL_GetKeyboardFocus() == impl->window.get(); }
int Window::GetWidth() const { return impl->width; }
int Window::GetHeight() const { return impl->height; }
double Window::GetScale() const { return impl->GetScale(); }
void Window::SetScale(double scale) { impl->SetScale(scale); }
void Window::SetTitle(const std::string& title) { SDL_SetWindowTitle(impl->window.get(), title.c_str()); }
SDL_Window* Window::GetNativeWindow() const { return impl->window.get(); }
void* Window::GetNativeContext() const { return impl->context; }

void Window::SetEventHandler(EventHandler handler) { impl->eventHandler = std::move(handler); }
void Window::SetNativeEventHook(NativeEventHook hook) { impl->nativeHook = std::move(hook); }
void Window::SetFrameHandler(FrameHandler handler) { impl->frameHandler = std::move(handler); }
void Window::SetWakeHandler(std::function<void()> handler) { impl->wakeHandler = std::move(handler); }

// ---- the loop ----

void Window::RequestFrame() { impl->frameRequested = true; }
bool Window::IsFrameRequested() const { return impl->frameRequested; }

void Window::Wake() {
  SDL_Event event = {};
  event.type = impl->wakeEvent;
  SDL_PushEvent(&event);
}

void Window::Run() {
  while (Step(-1)) {
  }
}

bool Window::Step(int longestWait) { return impl->Step(longestWait); }

bool Window::Impl::Step(int longestWait) {
  if (closed) return false;
  SDL_Event event;
  for (int more = SDL_WaitEventTimeout(&event, ChooseWait(longestWait)); more != 0 && !closed;
       more = SDL_PollEvent(&event)) {
    Handle(event);
  }
  heldKeys = SDL_GetModState();
  if (!closed) DispatchTimers();
  if (!closed && frameRequested && CanDraw() && MillisecondsToFrame() == 0) DrawFrame();
  return !closed;
}

void Window::Impl::DispatchTimers() {
  if (auto* const timers = dynamic_cast<Korvane::TimerQueue*>(&Korvane::GetPlatform())) {
    timers->DispatchTimers();
  }
}

int Window::Impl::ChooseWait(int longestWait) const {
  int wait = longestWait;
  if (const auto* const timers = dynamic_cast<Korvane::TimerQueue*>(&Korvane::GetPlatform())) {
    wait = ShorterWait(wait, timers->MillisecondsToNextTimer());
  }
  if (frameRequested && CanDraw()) wait = ShorterWait(wait, MillisecondsToFrame());
  return wait;
}

// A frame asked for while the window cannot be seen waits until it can.
bool Window::Impl::CanDraw() const {
  const Uint32 flags = SDL_GetWindowFlags(window.get());
  return (flags & (SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN)) == 0 && width > 0 && height > 0;
}

int Window::Impl::MillisecondsToFrame() const {
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(lastFrame + framePeriod - GetTime());
  return static_cast<int>(std::max<std::int64_t>(0, wait.count()));
}

void Window::Impl::DrawFrame() {
  lastFrame = GetTime();
  frameRequested = false;  // before drawing: a frame that draws may ask for the next
  if (!frameHandler) return;
  frameHandler();
  SDL_GL_SwapWindow(window.get());
}

// ---- the pointer ----

bool Window::DefineCursor(int number, const Image& image, int hotX, int hotY) {
  const std::size_t size = static_cast<std::size_t>(std::max(0, image.width)) *
                           static_cast<std::size_t>(std::max(0, image.height));
  if (size == 0 || image.rgba.size() != size * 4) return false;
  std::vector<std::uint8_t> pixels = image.rgba;  // SDL wants to be free to write
  const SdlSurface surface(SDL_CreateRGBSurfaceWithFormatFrom(pixels.data(), image.width, image.height, 32,
                                                              image.width * 4, SDL_PIXELFORMAT_RGBA32));
  SdlCursor cursor(surface != nullptr ? SDL_CreateColorCursor(surface.get(), hotX, hotY) : nullptr);
  if (cursor == nullptr) return false;
  SdlCursor& slot = impl->cursors[number];
  if (impl->currentCursor == number) SDL_SetCursor(cursor.get());
  slot = std::move(cursor);
  return true;
}

void Window::SetCursor(int number) {
  if (number == impl->currentCursor) return;
  impl->currentCursor = number;
  const auto found = impl->cursors.find(number);
  SDL_SetCursor(found != impl->cursors.end() ? found->second.get() : SDL_GetDefaultCursor());
}

void Window::WarpPointer(int x, int y) { impl->WarpPointer(x, y); }

}  // namespace zovhost
