#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "facade/facade_host.h"
#include "facade/facade_renderer.h"
#include "korvane/orientor.h"
#include "support/manual_platform.h"
#include "zov/zov_orientor.h"
#include "zov/zov_orientor_observer.h"

inline constexpr int WIDTH = 1024;
inline constexpr int HEIGHT = 768;
inline constexpr int FRONT_RIGHT_TOP = 24;

/// A cube in the top right corner, seen from the front, from the right and from above.
template <class Cube>
struct FacadeScene {
  FacadeScene() {
    hub->view.set_eye(qmPoint3(6.0, 5.0, -4.0));
    hub->view.set_up(qmUnitVec3(qmVector3(0.0, 1.0, 0.0)));
    for (auto set : {&zovCameraParameters::set_horizontal_fov, &zovCameraParameters::set_vertical_fov})
      (hub->view.*set)(qmAngle(30.0, qmAngleDegrees));
    hub->get_application_parameters().set_viewport_width(WIDTH);
    hub->get_application_parameters().set_viewport_height(HEIGHT);
    cube->set_camera_operations(hub);
    cube->set_renderer(renderer);
    cube->set_viewport_size(WIDTH, HEIGHT);
  }
  ~FacadeScene() {
    if (cube != nullptr) cube->destroy();
  }

  /// The mouse to a pixel; twice, since a hit test builds on what the one before it found.
  void Point(int toX, int toY) const {
    for (int i = 0; i < 2; ++i) {
      cube->on_mouse_move(toX, toY);
      cube->set_viewport_mouse_position(toX, HEIGHT - toY - 1);
    }
  }
  void PointAt(int part) {
    ASSERT_TRUE(cube->korvane().GetPartPosition(part, x, y));
    Point(x, y);
  }
  void PointAt(Korvane::Orientor::OverlayPart part) {
    ASSERT_TRUE(cube->korvane().GetOverlayPartPosition(part, x, y));
    Point(x, y);
  }
  bool Click() const {
    const bool kept = cube->on_left_mouse_down(x, y);
    cube->on_left_mouse_up(x, y);
    return kept;
  }
  void Rest(ManualPlatform& platform) const {
    while (hub->perform_operations()) platform.Advance(50);
  }

  std::shared_ptr<FacadeHost> hub = std::make_shared<FacadeHost>();
  std::shared_ptr<FacadeRenderer> renderer = std::make_shared<FacadeRenderer>();
  std::unique_ptr<Cube> cube = std::make_unique<Cube>();
  int x = 0;
  int y = 0;
};

/// Notes what it is told, and then does what a test has it do.
class FacadeListener : public zovOrientorObserver {
 public:
  explicit FacadeListener(zovOrientor& orientor) : zovOrientorObserver(orientor) { ++alive; }
  ~FacadeListener() override { --alive; }

  void on_clicked(zovOrientorPart part) override { Note("clicked", static_cast<int>(part)); }
  void on_drag_begin(zovOrientorPart part) override { Note("drag begin", static_cast<int>(part)); }
  void on_drag_end() override { Note("drag end", 0); }
  void on_position_change(zovOrientorLocation location) override {
    Note("position", static_cast<int>(location));
  }
  zovOrientor* Cube() const { return get_orientor().get(); }

  std::vector<std::pair<std::string, int>> told;
  std::function<void()> then;
  inline static int alive = 0;

 private:
  void Note(const char* what, int number) {
    told.emplace_back(what, number);
    if (then) then();
  }
};
