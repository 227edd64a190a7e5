#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "stories/tour_clock.h"
#include "viewport/viewport.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/window.h"

namespace apps_test {

/// A view of the viewer without the viewer, offscreen, by a clock that moves with its frames.
class LoneViewTest : public testing::Test {
 protected:
  static constexpr int WIDTH = 800;
  static constexpr int HEIGHT = 600;

  // A pointer that goes where it is set.
  class Hand : public zovhost::RendererHost {
   public:
    bool WarpPointer(int toX, int toY) override {
      x = toX;
      y = toY;
      return true;
    }
    int x = WIDTH / 2;
    int y = HEIGHT / 2;
  };

  void SetUp() override {
    zovhost::Window::Options options;
    options.offscreen = true;
    std::string error;
    window = zovhost::Window::Create(options, error);
    ASSERT_NE(window, nullptr) << error;
    view = std::make_unique<zovview::Viewport>(zovview::Viewport::Surroundings{[] {}, hand, [](int, int) {}});
    ASSERT_TRUE(view->Create());
    ASSERT_TRUE(target.Create(WIDTH, HEIGHT, 0));
    target.Bind();
    view->SetPlace(0, 0, WIDTH, HEIGHT, 1.0);
  }

  /// A frame that draws nothing.
  void Tick() {
    clock.Advance();
    view->PerformFrame();
  }
  void Draw() {
    Tick();
    target.Bind();
    view->DrawWidgets();
  }
  void Wait(double seconds) {
    for (int i = 0; i < seconds * zovview::TourClock::FRAMES_PER_SECOND; ++i) Draw();
  }
  /// Where the pointer is.
  void Send(zovhost::WindowEvent::Type type) {
    zovhost::WindowEvent event;
    event.type = type;
    event.x = hand.x;
    event.y = hand.y;
    event.clicks = 1;
    view->OnEvent(event);
  }

  zovview::TourClock clock;
  Hand hand;
  std::unique_ptr<zovhost::Window> window;
  zovhost::OffscreenTarget target;
  std::unique_ptr<zovview::Viewport> view;
};

}  // namespace apps_test
