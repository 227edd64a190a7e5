#pragma once

#include "korvane/helm_disc.h"
#include "korvane/orientor.h"
#include "support/recording_renderer.h"
#include "support/window_hand.h"
#include "travelling_hub.h"

namespace apps_test {

/// A view as the viewer wires it, over a renderer that records. `Manager` is a ViewerViewManager, opened to
/// the test or not.
template <class Manager>
class WiredView : public TravellingHub, public WindowHand {
 protected:
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

  bool Take(const WindowEvent& event) override { return events.OnEvent(event); }
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
