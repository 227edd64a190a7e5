#include <array>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "window/desktop_scale.h"
#include "window/window_impl.h"

namespace zovhost {

namespace {

// A window system that does not move the pointer when asked sends no motion for it either.
constexpr std::chrono::milliseconds LONGEST_WARP(100);

struct ButtonName {
  Uint8 native;
  MouseButton button;
};
constexpr std::array<ButtonName, 5> BUTTONS = {{{SDL_BUTTON_LEFT, MouseButton::Left},
                                                {SDL_BUTTON_MIDDLE, MouseButton::Middle},
                                                {SDL_BUTTON_RIGHT, MouseButton::Right},
                                                {SDL_BUTTON_X1, MouseButton::Back},
                                                {SDL_BUTTON_X2, MouseButton::Forward}}};

const ButtonName* FindButton(Uint8 native) {
  for (const ButtonName& name : BUTTONS) {
    if (name.native == native) return &name;
  }
  return nullptr;
}

unsigned ToModifiers(SDL_Keymod state) {
  return ((state & KMOD_SHIFT) != 0 ? WindowEvent::SHIFT : 0U) |
         ((state & KMOD_CTRL) != 0 ? WindowEvent::CONTROL : 0U) |
         ((state & KMOD_ALT) != 0 ? WindowEvent::ALT : 0U);
}

// Commands are named by Latin letters and digits, which some layouts have nowhere.
SDL_Keycode FindCommandKey(const SDL_Keysym& pressed) {
  constexpr SDL_Keycode LAST_LATIN = 0x7F;
  if (pressed.sym <= LAST_LATIN || (pressed.sym & SDLK_SCANCODE_MASK) != 0) return pressed.sym;
  const SDL_Scancode place = pressed.scancode;
  if (place >= SDL_SCANCODE_A && place <= SDL_SCANCODE_Z) return SDLK_a + (place - SDL_SCANCODE_A);
  if (place >= SDL_SCANCODE_1 && place <= SDL_SCANCODE_9) return SDLK_1 + (place - SDL_SCANCODE_1);
  return place == SDL_SCANCODE_0 ? SDLK_0 : pressed.sym;
}

WindowEvent MakeEvent(WindowEvent::Type type) {
  WindowEvent event;
  event.type = type;
  return event;
}

}  // namespace

void Window::Impl::Handle(const SDL_Event& event) {
  if (event.type == wakeEvent) {
    if (wakeHandler) wakeHandler();
    return;
  }
  if (event.type == SDL_SYSWMEVENT) {
    if (desktopWatch.Notices(event)) FollowDesktop();
    return;
  }
  // SDL itself only knows the modifiers of now, at the end of all that waits.
  if (event.type == SDL_KEYDOWN || event.type == SDL_KEYUP) {
    heldKeys = static_cast<SDL_Keymod>(event.key.keysym.mod);
  }
  if (event.type == SDL_WINDOWEVENT) HandleWindowEvent(event.window);
  LoseFingersOfGoneDevices();
  if (IsMadeUp(event)) return;
  if (nativeHook && nativeHook(event)) return;
  switch (event.type) {
    case SDL_MOUSEMOTION:
      return HandleMotion(event.motion);
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      return HandleButton(event.button);
    case SDL_MOUSEWHEEL:
      return HandleWheel(event.wheel);
    case SDL_FINGERDOWN:
    case SDL_FINGERMOTION:
    case SDL_FINGERUP:
      return HandleFinger(event.tfinger);
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      return HandleKey(event.key);
    case SDL_TEXTINPUT:
      return HandleText(event.text);
    case SDL_DROPFILE:
      return HandleDrop(event.drop);
    case SDL_QUIT:
      closed = true;
      return Send(MakeEvent(WindowEvent::Type::Closing));
    default:
      return;
  }
}

void Window::Impl::Send(WindowEvent event) {
  event.modifiers = ToModifiers(heldKeys);
  if (eventHandler) eventHandler(event);
}

void Window::Impl::HandleWindowEvent(const SDL_WindowEvent& event) {
  switch (event.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED:
    case SDL_WINDOWEVENT_DISPLAY_CHANGED:
      UpdateSize();
      frameRequested = true;
      return Send(MakeEvent(WindowEvent::Type::Resized));
    case SDL_WINDOWEVENT_FOCUS_GAINED:
      frameRequested = true;
      return FollowDesktop();  // its settings may have been changed meanwhile
    case SDL_WINDOWEVENT_SHOWN:
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_RESTORED:
      frameRequested = true;
      return;
    case SDL_WINDOWEVENT_LEAVE:
      if (heldButtons == 0) Send(MakeEvent(WindowEvent::Type::MouseLeave));
      return;
    case SDL_WINDOWEVENT_FOCUS_LOST:
      heldButtons = 0;
      fingers.clear();
      SDL_CaptureMouse(SDL_FALSE);
      return Send(MakeEvent(WindowEvent::Type::FocusLost));
    default:
      return;
  }
}

void Window::Impl::FollowDesktop() {
  if (chosenScale > 0.0 || !HasDesktopScale()) return;
  const double before = GetScale();
  desktopScale = FindDesktopScale();
  if (GetScale() == before) return;
  frameRequested = true;
  Send(MakeEvent(WindowEvent::Type::Resized));
}

void Window::Impl::SetScale(double scale) {
  const double before = GetScale();
  chosenScale = LimitScale(scale);
  if (GetScale() == before) return;
  frameRequested = true;
  Send(MakeEvent(WindowEvent::Type::Resized));
}

// Units from the top left to pixels from the bottom left.
void Window::Impl::SetPosition(WindowEvent& event, int unitX, int unitY) const {
  const double scaleX = unitWidth > 0 ? static_cast<double>(width) / unitWidth : 1.0;
  const double scaleY = unitHeight > 0 ? static_cast<double>(height) / unitHeight : 1.0;
  event.x = static_cast<int>(std::floor(unitX * scaleX));
  event.y = height - 1 - static_cast<int>(std::floor(unitY * scaleY));
}

void Window::Impl::HandleMotion(const SDL_MouseMotionEvent& event) {
  if (IsEchoOfWarp(event.x, event.y)) return;
  WindowEvent move = MakeEvent(WindowEvent::Type::MouseMove);
  SetPosition(move, event.x, event.y);
  Send(move);
}

void Window::Impl::HandleButton(const SDL_MouseButtonEvent& event) {
  const ButtonName* const name = FindButton(event.button);
  if (name == nullptr) return;
  const bool pressed = event.type == SDL_MOUSEBUTTONDOWN;
  const unsigned bit = 1U << static_cast<unsigned>(name->button);
  heldButtons = pressed ? heldButtons | bit : heldButtons & ~bit;
  SDL_CaptureMouse(heldButtons != 0 ? SDL_TRUE : SDL_FALSE);

  WindowEvent click = MakeEvent(pressed ? WindowEvent::Type::MouseDown : WindowEvent::Type::MouseUp);
  click.button = name->button;
  click.clicks = event.clicks;
  SetPosition(click, event.x, event.y);
  Send(click);
}

void Window::Impl::HandleWheel(const SDL_MouseWheelEvent& event) {
  WindowEvent wheel = MakeEvent(WindowEvent::Type::Wheel);
  // With Shift held, some window systems turn an upright wheel into a level one.
  const bool isLaidOver = event.preciseY == 0.0F && (heldKeys & KMOD_SHIFT) != 0;
  wheel.wheel = static_cast<double>(isLaidOver ? event.preciseX : event.preciseY);
  if (event.direction == SDL_MOUSEWHEEL_FLIPPED) wheel.wheel = -wheel.wheel;
  SetPosition(wheel, event.mouseX, event.mouseY);
  if (wheel.wheel != 0.0) Send(wheel);
}

void Window::Impl::HandleKey(const SDL_KeyboardEvent& event) {
  const bool pressed = event.type == SDL_KEYDOWN;
  WindowEvent key = MakeEvent(pressed ? WindowEvent::Type::KeyDown : WindowEvent::Type::KeyUp);
  key.key = FindCommandKey(event.keysym);
  if (key.key == SDLK_QUESTION) return;  // what is typed tells it, wherever it is
  key.repeated = event.repeat != 0;
  Send(key);
}

void Window::Impl::HandleText(const SDL_TextInputEvent& event) {
  if (std::string_view(event.text) != "?") return;
  for (const WindowEvent::Type type : {WindowEvent::Type::KeyDown, WindowEvent::Type::KeyUp}) {
    WindowEvent key = MakeEvent(type);
    key.key = SDLK_QUESTION;
    Send(key);
  }
}

void Window::Impl::HandleDrop(const SDL_DropEvent& event) {
  WindowEvent drop = MakeEvent(WindowEvent::Type::FileDropped);
  drop.path = event.file != nullptr ? event.file : "";
  SDL_free(event.file);
  if (!drop.path.empty()) Send(drop);
}

// ---- pointer jumps ----

void Window::Impl::WarpPointer(int x, int y) {
  const double unitsX = width > 0 ? static_cast<double>(unitWidth) / width : 1.0;
  const double unitsY = height > 0 ? static_cast<double>(unitHeight) / height : 1.0;
  const int targetX = static_cast<int>(std::floor(x * unitsX));
  const int targetY = static_cast<int>(std::floor((height - 1 - y) * unitsY));

  int nowX = 0;
  int nowY = 0;
  SDL_GetMouseState(&nowX, &nowY);
  if (nowX == targetX && nowY == targetY) return;  // no motion would come of it

  warping = true;
  warpX = targetX;
  warpY = targetY;
  warpTime = GetTime();
  SDL_WarpMouseInWindow(window.get(), targetX, targetY);
}

// Motions that were under way before the jump, and the one that the jump makes, are not the user's.
bool Window::Impl::IsEchoOfWarp(int unitX, int unitY) {
  if (!warping) return false;
  const bool arrived = std::abs(unitX - warpX) <= 1 && std::abs(unitY - warpY) <= 1;
  const bool tooLate = GetTime() - warpTime > LONGEST_WARP;
  if (arrived || tooLate) warping = false;
  return arrived || !tooLate;
}

}  // namespace zovhost
