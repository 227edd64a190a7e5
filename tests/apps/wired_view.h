#pragma once

#include <SDL_keycode.h>

#include "korvane/helm_disc.h"
#include "korvane/orientor.h"
#include "support/recording_renderer.h"
#include "travelling_hub.h"

namespace apps_test {

/// A view as the viewer wires it, over a renderer that records. `Manager` is a ViewerViewManager, opened to
/// the test or not.
template <class Manager>
class WiredView : public TravellingHub {
 protected:
  using WindowEvent = zovhost::WindowEvent;
  using MouseButton = zovhost::MouseButton;
  using Type = WindowEvent::Type;

  explicit WiredView(std::span<const Korvane::Box3> boxes) : events(hub) {
    Show(boxes);
    disc.GetParameters().suppressWelcome = true;
    events.SetRenderer(&renderer);
    events.SetHelmDisc(&disc);
    events.SetOrientor(&ownCube);
    events.Create();
    events.SetViewportSize(WIDTH, HEIGHT);
    hub.SetViewportSize(WIDTH, HEIGHT);
  }
  ~WiredView() override {
    events.Destroy();
    events.SetHelmDisc(nullptr);
    events.SetOrientor(nullptr);
  }

  bool Send(Type type, int x, int y, MouseButton button = MouseButton::Left) {
    WindowEvent event;
    event.type = type;
    event.x = x;
    event.y = y;
    event.button = button;
    return events.OnEvent(event);
  }
  bool Key(Type type, SDL_Keycode key) {
    WindowEvent event;
    event.type = type;
    event.key = key;
    return events.OnEvent(event);
  }
  bool Turn(double notches) {
    WindowEvent event;
    event.type = Type::Wheel;
    event.x = 200;
    event.y = 200;
    event.wheel = notches;
    return events.OnEvent(event);
  }
  void Draw() {
    Frame();
    events.OnDraw();
  }
  void Wait(double seconds) {
    for (int i = 0; i < seconds * zovview::TourClock::FRAMES_PER_SECOND; ++i) Draw();
  }

  RecordingRenderer renderer;
  Korvane::HelmDisc disc;
  Korvane::Orientor ownCube;
  Manager events;
};

}  // namespace apps_test
