#pragma once

#include <SDL_keycode.h>

#include "zovhost/window.h"

/// A hand on mouse and keys: makes the events of a window, of which the test says who gets them.
class WindowHand {
 protected:
  using WindowEvent = zovhost::WindowEvent;
  using MouseButton = zovhost::MouseButton;
  using Type = WindowEvent::Type;

  WindowHand() = default;
  WindowHand(const WindowHand&) = delete;
  WindowHand& operator=(const WindowHand&) = delete;
  virtual ~WindowHand() = default;

  virtual bool Take(const WindowEvent& event) = 0;

  bool Send(Type type, int x = 0, int y = 0, MouseButton button = MouseButton::Left) {
    WindowEvent event;
    event.type = type;
    event.x = x;
    event.y = y;
    event.button = button;
    return Take(event);
  }
  bool Key(Type type, SDL_Keycode key) {
    WindowEvent event;
    event.type = type;
    event.key = key;
    return Take(event);
  }
  bool Turn(double notches) {
    WindowEvent event;
    event.type = Type::Wheel;
    event.x = 200;
    event.y = 200;
    event.wheel = notches;
    return Take(event);
  }
};
