// What fingers and pens do in a window.
#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <string>

#include "window/window_impl.h"

namespace zovhost {

namespace {

constexpr std::size_t MOST_FINGERS = 16;
constexpr double FURTHEST_POSITION = 1e6;  // pixels
constexpr std::array<const char*, 2> PEN_WORDS = {"pen", "stylus"};

// As a word of its own, whatever its case.
bool HasWord(const std::string& text, const std::string& word) {
  const auto isLetter = [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; };
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    const bool begins = at == 0 || !isLetter(text[at - 1]);
    if (begins && (end == text.size() || !isLetter(text[end]))) return true;
  }
  return false;
}

const char* FindDeviceName(SDL_TouchID id) {
  for (int i = 0; i < SDL_GetNumTouchDevices(); ++i) {
    if (SDL_GetTouchDevice(i) == id) return SDL_GetTouchName(i);
  }
  return nullptr;
}

// Of the size of a viewport; what is far beyond any window stays a number.
int ToPixel(float fraction, int size) {
  const double pixel = std::floor(static_cast<double>(fraction) * size);
  return static_cast<int>(std::clamp(pixel, -FURTHEST_POSITION, FURTHEST_POSITION));
}

WindowEvent::Type GetFingerType(Uint32 native) {
  if (native == SDL_FINGERDOWN) return WindowEvent::Type::FingerDown;
  return native == SDL_FINGERUP ? WindowEvent::Type::FingerUp : WindowEvent::Type::FingerMove;
}

}  // namespace

TouchDevice FindTouchDevice(int nativeType, const char* name) {
  if (nativeType == SDL_TOUCH_DEVICE_INVALID) return TouchDevice::Gone;
  if (nativeType == SDL_TOUCH_DEVICE_INDIRECT_RELATIVE) return TouchDevice::Pen;
  if (nativeType == SDL_TOUCH_DEVICE_INDIRECT_ABSOLUTE) return TouchDevice::Trackpad;
  std::string words = name != nullptr ? name : "";
  std::transform(words.begin(), words.end(), words.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  const bool isPen = std::any_of(PEN_WORDS.begin(), PEN_WORDS.end(),
                                 [&words](const char* word) { return HasWord(words, word); });
  return isPen ? TouchDevice::Pen : TouchDevice::Screen;
}

TouchDevice Window::Impl::GetTouchDevice(SDL_TouchID id) const {
  if (touchDevice) return touchDevice(id);
  return FindTouchDevice(SDL_GetTouchDeviceType(id), FindDeviceName(id));
}

// A mouse that the window system library makes of fingers, fingers that it makes of a mouse, and those whose
// pointer and wheel are events by themselves.
bool Window::Impl::IsMadeUp(const SDL_Event& event) const {
  switch (event.type) {
    case SDL_MOUSEMOTION:
      return event.motion.which == SDL_TOUCH_MOUSEID;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      return event.button.which == SDL_TOUCH_MOUSEID;
    case SDL_MOUSEWHEEL:
      return event.wheel.which == SDL_TOUCH_MOUSEID;
    case SDL_FINGERDOWN:
    case SDL_FINGERMOTION:
    case SDL_FINGERUP:
      return event.tfinger.touchId == SDL_MOUSE_TOUCHID ||
             GetTouchDevice(event.tfinger.touchId) == TouchDevice::Trackpad;
    default:
      return false;
  }
}

Window::Impl::Finger* Window::Impl::FindFinger(const SDL_TouchFingerEvent& event) {
  const auto found = std::find_if(fingers.begin(), fingers.end(), [&event](const Finger& finger) {
    return finger.down && finger.device == event.touchId && finger.id == event.fingerId;
  });
  return found != fingers.end() ? &*found : nullptr;
}

// Null when there are too many.
Window::Impl::Finger* Window::Impl::TakeFinger(const SDL_TouchFingerEvent& event) {
  auto place =
      std::find_if(fingers.begin(), fingers.end(), [](const Finger& finger) { return !finger.down; });
  if (place == fingers.end() && fingers.size() >= MOST_FINGERS) return nullptr;
  if (place == fingers.end()) place = fingers.insert(place, Finger());
  const bool known = GetTouchDevice(event.touchId) != TouchDevice::Gone;
  *place = {event.touchId, event.fingerId, known, true};
  return &*place;
}

// A finger that is down already moves, one that nobody has seen come down does nothing.
void Window::Impl::HandleFinger(const SDL_TouchFingerEvent& event) {
  if (!std::isfinite(event.x) || !std::isfinite(event.y)) return;
  Finger* finger = FindFinger(event);
  const bool isNew = finger == nullptr;
  if (isNew && event.type == SDL_FINGERDOWN) finger = TakeFinger(event);
  if (finger == nullptr) return;
  const bool movesOn = event.type == SDL_FINGERDOWN && !isNew;
  WindowEvent touch;
  touch.type = movesOn ? WindowEvent::Type::FingerMove : GetFingerType(event.type);
  touch.finger = static_cast<int>(finger - fingers.data());
  touch.x = ToPixel(event.x, width);
  touch.y = height - 1 - ToPixel(event.y, height);
  touch.pressure = std::isfinite(event.pressure) ? std::clamp<double>(event.pressure, 0.0, 1.0) : 0.0;
  touch.pen = GetTouchDevice(event.touchId) == TouchDevice::Pen;
  if (event.type == SDL_FINGERUP) finger->down = false;
  Send(touch);
}

void Window::Impl::LoseFingers() {
  fingers.clear();
  WindowEvent lost;
  lost.type = WindowEvent::Type::FingersLost;
  Send(lost);
}

// Nothing is said of a device that is pulled out; what happens next tells.
void Window::Impl::LoseFingersOfGoneDevices() {
  const bool isLost = std::any_of(fingers.begin(), fingers.end(), [this](const Finger& finger) {
    return finger.down && finger.known && GetTouchDevice(finger.device) == TouchDevice::Gone;
  });
  if (isLost) LoseFingers();
}

}  // namespace zovhost
