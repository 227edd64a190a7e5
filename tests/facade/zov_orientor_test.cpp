#include "zov/zov_orientor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "facade/facade_host.h"
#include "facade/facade_renderer.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"
#include "support/allocation_counter.h"
#include "support/manual_platform.h"
#include "support/virtual_slot.h"
#include "zov/zov_orientor_observer.h"

namespace {

using Korvane::Orientor;

// Counts the calls of each override by name, and then leaves it to the library.
class CountingOrientor : public zovOrientor {
 public:
  bool create() override { return Count("create"), zovOrientor::create(); }
  bool destroy() override { return Count("destroy"), zovOrientor::destroy(); }
  void draw() override { Count("draw"), zovOrientor::draw(); }
  bool on_mouse_move(int x, int y) override {
    return Count("on_mouse_move"), zovOrientor::on_mouse_move(x, y);
  }
  bool on_left_mouse_down(int x, int y) override {
    return Count("on_left_mouse_down"), zovOrientor::on_left_mouse_down(x, y);
  }
  bool on_left_mouse_up(int x, int y) override {
    return Count("on_left_mouse_up"), zovOrientor::on_left_mouse_up(x, y);
  }
  bool open_menu() override { return Count("open_menu"), zovOrientor::open_menu(); }
  void open_ucs_menu() override { Count("open_ucs_menu"), zovOrientor::open_ucs_menu(); }
  void go_to_home_view() override { Count("go_to_home_view"), zovOrientor::go_to_home_view(); }

  std::map<std::string, int> calls;

 private:
  void Count(const char* name) { ++calls[name]; }
};

constexpr int WIDTH = 1024;
constexpr int HEIGHT = 768;
constexpr int FRONT_RIGHT_TOP = 24;

// A cube in the top right corner, seen from the front, from the right and from above.
template <class Cube>
struct Scene {
  Scene() {
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
  ~Scene() {
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
  void PointAt(Orientor::OverlayPart part) {
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

TEST(ZovOrientor, has_its_operations_in_the_order_that_hosts_know) {
  using C = zovOrientor;
  const std::vector<int> slots = {
      VirtualSlot(&C::create),
      VirtualSlot(&C::destroy),
      VirtualSlot(&C::draw),
      VirtualSlot(&C::on_mouse_move),
      VirtualSlot(&C::on_left_mouse_down),
      VirtualSlot(&C::on_left_mouse_up),
      VirtualSlot(&C::open_menu),
      VirtualSlot(&C::open_ucs_menu),
      VirtualSlot(&C::go_to_home_view),
  };
  EXPECT_EQ(slots, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
  struct Longer : zovOrientor {
    virtual void Next() {}
  };
  EXPECT_EQ(VirtualSlot(&Longer::Next), 11);  // the destructor takes 9 and 10
  EXPECT_EQ(VirtualSlot(&C::set_renderer), -1);
}

// ---- two directions ----

struct Way {
  const char* name;
  std::function<void(zovOrientor&)> outside;
  std::function<void(Orientor&)> inside;
};

const Way NINE[] = {
    {"create", [](zovOrientor& z) { EXPECT_TRUE(z.create()); }, [](Orientor& o) { o.Create(); }},
    {"destroy", [](zovOrientor& z) { z.destroy(); }, [](Orientor& o) { o.Destroy(); }},
    {"draw", [](zovOrientor& z) { z.draw(); }, [](Orientor& o) { o.Draw(); }},
    {"on_mouse_move", [](zovOrientor& z) { z.on_mouse_move(1, 2); },
     [](Orientor& o) { o.OnMouseMove(1, 2); }},
    {"on_left_mouse_down", [](zovOrientor& z) { z.on_left_mouse_down(1, 2); },
     [](Orientor& o) { o.OnLeftMouseDown(1, 2); }},
    {"on_left_mouse_up", [](zovOrientor& z) { z.on_left_mouse_up(1, 2); },
     [](Orientor& o) { o.OnLeftMouseUp(1, 2); }},
    {"open_menu", [](zovOrientor& z) { EXPECT_FALSE(z.open_menu()); }, [](Orientor& o) { o.OpenMenu(); }},
    {"open_ucs_menu", [](zovOrientor& z) { z.open_ucs_menu(); }, [](Orientor& o) { o.OpenUCSMenu(); }},
    {"go_to_home_view", [](zovOrientor& z) { z.go_to_home_view(); }, [](Orientor& o) { o.GoToHomeView(); }},
};

TEST(ZovOrientor, brings_each_of_the_nine_from_either_side_to_the_override_once) {
  for (const Way& way : NINE) {
    Scene<CountingOrientor> outside;
    way.outside(*outside.cube);
    EXPECT_EQ(outside.cube->calls, (std::map<std::string, int>{{way.name, 1}})) << "from outside";
    Scene<CountingOrientor> inside;
    way.inside(inside.cube->korvane());
    EXPECT_EQ(inside.cube->calls, (std::map<std::string, int>{{way.name, 1}})) << "from within";
  }
}

// The drawing asks the host to draw, the press is kept, and so on: what the cube of the library does.
TEST(ZovOrientor, does_by_itself_what_the_cube_of_the_library_does) {
  ManualPlatform platform;
  Scene<zovOrientor> scene;
  zovOrientor& cube = *scene.cube;
  EXPECT_TRUE(cube.create());
  EXPECT_EQ(scene.renderer->loaded.size(), 16U);
  cube.draw();
  EXPECT_GT(scene.renderer->CountOf("render_geometry"), 10);
  scene.PointAt(FRONT_RIGHT_TOP);
  EXPECT_EQ(cube.get_active_geometry_part(), FRONT_RIGHT_TOP);
  EXPECT_TRUE(cube.open_menu());
  EXPECT_EQ(scene.renderer->CountOf("open_menu"), 1);
  scene.PointAt(FRONT_RIGHT_TOP);
  EXPECT_TRUE(scene.Click());
  EXPECT_TRUE(scene.hub->is_shot_active());
  scene.Rest(platform);
  cube.go_to_home_view();
  EXPECT_TRUE(scene.hub->is_shot_active());
  scene.Rest(platform);
  EXPECT_NEAR(scene.hub->view.eye().x(), 1.0, 1e-6);
  EXPECT_TRUE(cube.destroy());
  EXPECT_EQ(scene.renderer->released.size(), 16U);
  cube.set_renderer(nullptr);
  EXPECT_FALSE(cube.create());
  EXPECT_FALSE(cube.destroy());
}

// What a click on a button comes to goes through the override as well.
TEST(ZovOrientor, lets_a_host_stand_before_what_a_click_does) {
  Scene<CountingOrientor> scene;
  scene.cube->inject_click(zovOrientorPart::Home);
  EXPECT_EQ(scene.cube->calls["go_to_home_view"], 1);
  EXPECT_TRUE(scene.hub->is_shot_active());
  scene.hub->korvane().EndShot();
  scene.cube->inject_click(zovOrientorPart::ContextMenu);
  EXPECT_EQ(scene.cube->calls["open_menu"], 1);
  EXPECT_EQ(scene.renderer->CountOf("open_menu"), 1);
}

TEST(ZovOrientor, opens_the_menu_of_coordinate_systems_at_its_label) {
  Scene<CountingOrientor> scene;
  scene.cube->get_parameters().set_draw_ucs_menu(true);
  EXPECT_TRUE(scene.cube->create());
  scene.cube->set_viewport_size(WIDTH, HEIGHT);
  scene.cube->draw();
  scene.PointAt(Orientor::OVERLAY_UCS_MENU);
  EXPECT_TRUE(scene.cube->is_mouse_on_ucs_menu());
  EXPECT_TRUE(scene.Click());
  EXPECT_EQ(scene.cube->calls["open_ucs_menu"], 1);
  EXPECT_EQ(scene.renderer->CountOf("open_ucs_menu"), 1);
  scene.cube->destroy();
}

TEST(ZovOrientor, answers_the_library_with_what_the_override_says) {
  class Refusing : public zovOrientor {
   public:
    bool on_left_mouse_down(int, int) override { return true; }
    void go_to_home_view() override {}
  };
  Scene<Refusing> scene;
  EXPECT_TRUE(scene.cube->korvane().OnLeftMouseDown(1, 1));
  scene.cube->inject_click(zovOrientorPart::Home);
  EXPECT_FALSE(scene.hub->is_shot_active());
}

// ---- what is forwarded ----

void ExpectSameAnswers(const zovOrientor& cube) {
  const Orientor& within = cube.korvane();
  const auto vector = [](const Korvane::Vector3& v) { return qmVector3(v.x, v.y, v.z); };
  EXPECT_EQ(cube.get_active_geometry_part(), within.GetActiveGeometryPart());
  EXPECT_EQ(cube.get_active_overlay_part(), within.GetActiveOverlayPart());
  EXPECT_EQ(cube.get_active_part_direction(), vector(within.GetActivePartDirection()));
  EXPECT_EQ(cube.get_active_part_name().convert(qmStringUTF8), within.GetActivePartName());
  EXPECT_EQ(cube.get_tooltip().convert(qmStringWcs), within.GetTooltip());
  EXPECT_EQ(cube.get_closest_geometry_part(), within.GetClosestGeometryPart());
  EXPECT_EQ(cube.get_closest_view_direction(), vector(within.GetClosestViewDirection()));
  EXPECT_EQ(cube.get_screen_size(), within.GetScreenSize());
  EXPECT_EQ(cube.is_drag_active(), within.IsDragActive());
  EXPECT_EQ(cube.is_mouse_in_region(), within.IsMouseInRegion());
  EXPECT_EQ(cube.is_mouse_on_compass_part(), within.IsMouseOnCompassPart());
  EXPECT_EQ(cube.is_mouse_on_context_menu_part(), within.IsMouseOnContextMenuPart());
  EXPECT_EQ(cube.is_mouse_on_geometry_part(), within.IsMouseOnGeometryPart());
  EXPECT_EQ(cube.is_mouse_on_overlay_part(), within.IsMouseOnOverlayPart());
  EXPECT_EQ(cube.is_mouse_on_part(), within.IsMouseOnPart());
  EXPECT_EQ(cube.is_mouse_on_ucs_menu(), within.IsMouseOnUCSMenu());
  EXPECT_EQ(cube.is_mouse_on_viewable_overlay_part(), within.IsMouseOnViewableOverlayPart());
  EXPECT_EQ(cube.view_on_part_axis(), within.ViewOnPartAxis());
  EXPECT_EQ(cube.view_on_principal_axis(), within.ViewOnPrincipalAxis());
}

// A walk of the mouse over cube, compass and overlay, on which every question changes its answer.
TEST(ZovOrientor, answers_as_the_cube_within) {
  Scene<zovOrientor> scene;
  zovOrientor& cube = *scene.cube;
  cube.get_parameters().set_draw_compass(true);
  EXPECT_TRUE(cube.create());
  std::map<std::string, int> seen;
  for (int x = WIDTH - 170; x < WIDTH; x += 3) {
    for (int y = HEIGHT - 170; y < HEIGHT; y += 3) {
      scene.Point(x, y);
      ExpectSameAnswers(cube);
      ++seen[cube.get_tooltip().convert(qmStringUTF8)];
      ++seen[cube.is_mouse_on_overlay_part()   ? "overlay"
             : cube.is_mouse_on_compass_part() ? "compass"
                                               : "other"];
      ASSERT_EQ(cube.is_point_in_bounds(x, y), cube.korvane().IsPointInBounds(x, y));
    }
  }
  for (const char* each : {"text 68", "text 70", "text 71", "text 72", "", "overlay", "compass", "other"})
    EXPECT_GT(seen[each], 0) << each;
}

TEST(ZovOrientor, knows_the_directions_of_its_parts) {
  const zovOrientor cube;
  EXPECT_EQ(cube.get_geometry_part_direction(FRONT_RIGHT_TOP), qmVector3(1.0, 1.0, -1.0));
  EXPECT_EQ(cube.get_geometry_part_direction(26), qmVector3());
  EXPECT_EQ(cube.get_geometry_part_index(qmVector3(1.0, 1.0, -1.0)), FRONT_RIGHT_TOP);
  EXPECT_EQ(cube.get_geometry_part_index(qmVector3(1.0, 1.0, 0.5)), -1);
  EXPECT_EQ(cube.get_closest_geometry_part(), -1);
  EXPECT_EQ(cube.get_closest_view_direction(), qmVector3());
}

TEST(ZovOrientor, looks_along_an_axis_when_the_camera_does) {
  Scene<zovOrientor> scene;
  scene.Point(1, 1);
  EXPECT_FALSE(scene.cube->view_on_part_axis());
  scene.hub->view.set_eye(qmPoint3(9.0, 0.0, 0.0));
  scene.Point(2, 2);
  EXPECT_TRUE(scene.cube->view_on_part_axis());
  EXPECT_TRUE(scene.cube->view_on_principal_axis());
  EXPECT_EQ(scene.cube->get_closest_geometry_part(), 1);
}

TEST(ZovOrientor, has_the_size_of_its_settings) {
  Scene<zovOrientor> scene;
  scene.cube->get_parameters().set_size(zovOrientorSize::Large);
  scene.cube->set_viewport_size(WIDTH, HEIGHT);
  EXPECT_EQ(scene.cube->get_screen_size(), 170);
  int width = 0;
  int height = 0;
  scene.cube->get_region_size(width, height);
  EXPECT_EQ(width, 170);
  EXPECT_EQ(height, 170);
  scene.cube->get_parameters().set_draw_compass(true);
  scene.cube->get_region_size(width, height);
  EXPECT_EQ(width, 237);   // 1.4 times as wide, which as a double is a little below 238, cut off
  EXPECT_EQ(height, 242);  // 1.425 times as high, cut off
  const zovOrientor& looked = *scene.cube;
  EXPECT_TRUE(looked.get_parameters().draw_compass());
}

TEST(ZovOrientor, locks_the_scene_to_the_selection) {
  Scene<zovOrientor> scene;
  zovApplicationParameters& settings = scene.hub->get_application_parameters();
  scene.cube->lock_to_current_selection(true);
  EXPECT_FALSE(settings.lock_to_selection());  // nothing is selected
  scene.hub->set_geometry_selection(2.0, qmPoint3(1.0, 0.0, 0.0));
  scene.cube->lock_to_current_selection(true);
  EXPECT_TRUE(settings.lock_to_selection());
  EXPECT_EQ(settings.scene_bound_radius(), 2.0);
  scene.cube->lock_to_current_selection(true);
  EXPECT_FALSE(settings.lock_to_selection());
  scene.cube->lock_to_current_selection(false);
  EXPECT_TRUE(settings.lock_to_selection());
}

TEST(ZovOrientor, straightens_the_camera) {
  Scene<zovOrientor> scene;
  scene.hub->view.set_up(qmUnitVec3(qmVector3(0.3, 1.0, 0.2)));
  scene.cube->get_parameters().set_preserve_scene_up(false);
  scene.cube->align_to_orbit_up_direction();
  EXPECT_FALSE(scene.hub->is_shot_active());
  scene.cube->get_parameters().set_preserve_scene_up(true);
  scene.cube->align_to_orbit_up_direction();
  EXPECT_TRUE(scene.hub->is_shot_active());
}

TEST(ZovOrientor, presses_a_part_from_outside) {
  ManualPlatform platform;
  Scene<zovOrientor> scene;
  scene.cube->inject_click(zovOrientorPart::Top);
  EXPECT_TRUE(scene.hub->is_shot_active());
  scene.Rest(platform);
  scene.Point(1, 1);
  EXPECT_EQ(scene.cube->get_closest_geometry_part(), 3);
  scene.cube->inject_click(static_cast<zovOrientorPart>(12345));
  scene.cube->inject_click(zovOrientorPart::NoPart);
  EXPECT_FALSE(scene.hub->is_shot_active());
}

// ---- observers ----

class Listener : public zovOrientorObserver {
 public:
  explicit Listener(zovOrientor& orientor) : zovOrientorObserver(orientor) { ++alive; }
  ~Listener() override { --alive; }

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

using Told = std::vector<std::pair<std::string, int>>;

TEST(ZovOrientorObserver, has_its_operations_in_the_order_that_hosts_know) {
  using O = zovOrientorObserver;
  EXPECT_EQ(VirtualSlot(&O::on_clicked), 0);
  EXPECT_EQ(VirtualSlot(&O::on_drag_begin), 1);
  EXPECT_EQ(VirtualSlot(&O::on_drag_end), 2);
  EXPECT_EQ(VirtualSlot(&O::on_position_change), 3);
  struct Longer : Listener {
    using Listener::Listener;
    virtual void Next() {}
  };
  EXPECT_EQ(VirtualSlot(&Longer::Next), 6);  // the destructor takes 4 and 5
}

TEST(ZovOrientorObserver, is_told_what_the_user_does) {
  Scene<zovOrientor> scene;
  const auto listener = std::make_shared<Listener>(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer(listener));
  EXPECT_EQ(listener->Cube(), scene.cube.get());
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  scene.hub->korvane().EndShot();
  scene.cube->on_left_mouse_down(scene.x, scene.y);
  scene.cube->on_mouse_move(scene.x + 20, scene.y);
  EXPECT_TRUE(scene.cube->is_drag_active());
  scene.cube->on_left_mouse_up(scene.x + 20, scene.y);
  scene.cube->get_parameters().set_screen_location(zovOrientorLocation::BottomLeft);
  scene.cube->set_viewport_size(WIDTH, HEIGHT);
  EXPECT_EQ(listener->told, (Told{{"clicked", 24}, {"drag begin", 24}, {"drag end", 0}, {"position", 3}}));
}

TEST(ZovOrientorObserver, is_told_once_however_often_it_was_added_and_not_after_it_left) {
  Scene<zovOrientor> scene;
  const auto listener = std::make_shared<Listener>(*scene.cube);
  EXPECT_FALSE(scene.cube->add_observer(nullptr));
  EXPECT_TRUE(scene.cube->add_observer(listener));
  EXPECT_TRUE(scene.cube->add_observer(listener));
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  EXPECT_EQ(listener->told.size(), 1U);
  scene.cube->remove_observer(nullptr);
  scene.cube->remove_observer(listener);
  scene.cube->remove_observer(listener);
  scene.hub->korvane().EndShot();
  scene.Click();
  EXPECT_EQ(listener->told.size(), 1U);
  EXPECT_EQ(listener.use_count(), 1);
}

TEST(ZovOrientorObserver, lives_with_the_cube_when_the_host_lets_it_go) {
  const int before = Listener::alive;
  {
    Scene<zovOrientor> scene;
    int clicks = 0;
    auto listener = std::make_shared<Listener>(*scene.cube);
    listener->then = [&clicks] { ++clicks; };
    EXPECT_TRUE(scene.cube->add_observer(listener));
    listener = nullptr;
    EXPECT_EQ(Listener::alive, before + 1);
    scene.PointAt(FRONT_RIGHT_TOP);
    scene.Click();
    EXPECT_EQ(clicks, 1);
  }
  EXPECT_EQ(Listener::alive, before);
}

// The last pointer to it goes while it is being told; it goes when it has been told.
TEST(ZovOrientorObserver, may_leave_from_within_its_own_call) {
  const int before = Listener::alive;
  Scene<zovOrientor> scene;
  auto listener = std::make_shared<Listener>(*scene.cube);
  Listener* const raw = listener.get();
  int alive = 0;
  bool stillWhole = false;
  raw->then = [&, raw] {
    scene.cube->remove_observer(std::static_pointer_cast<zovOrientorObserver>(raw->shared_from_this()));
    alive = Listener::alive;
    stillWhole = raw->told.size() == 1;
  };
  EXPECT_TRUE(scene.cube->add_observer(listener));
  const auto second = std::make_shared<Listener>(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer(second));
  listener = nullptr;
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  EXPECT_EQ(alive, before + 2);
  EXPECT_TRUE(stillWhole);
  EXPECT_EQ(Listener::alive, before + 1);
  EXPECT_EQ(second->told.size(), 1U);
}

TEST(ZovOrientorObserver, may_change_everything_while_it_is_told) {
  Scene<zovOrientor> scene;
  const auto listener = std::make_shared<Listener>(*scene.cube);
  const auto late = std::make_shared<Listener>(*scene.cube);
  listener->then = [&] {
    EXPECT_TRUE(scene.cube->add_observer(late));
    scene.cube->set_camera_operations(nullptr);
    scene.cube->set_renderer(nullptr);
    scene.cube->get_parameters().set_visible(false);
  };
  EXPECT_TRUE(scene.cube->add_observer(listener));
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  EXPECT_FALSE(scene.hub->is_shot_active());
  EXPECT_EQ(listener->told.size(), 1U);
}

TEST(ZovOrientorObserver, may_outlive_the_cube) {
  auto scene = std::make_unique<Scene<zovOrientor>>();
  const auto listener = std::make_shared<Listener>(*scene->cube);
  EXPECT_TRUE(scene->cube->add_observer(listener));
  scene = nullptr;
  EXPECT_EQ(listener->Cube(), nullptr);
  EXPECT_EQ(listener.use_count(), 1);
}

// A host may share what it does not give away: an observer on the stack.
TEST(ZovOrientorObserver, that_goes_first_is_forgotten) {
  Scene<zovOrientor> scene;
  {
    Listener listener(*scene.cube);
    EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), &listener}));
    scene.PointAt(FRONT_RIGHT_TOP);
    scene.Click();
    EXPECT_EQ(listener.told.size(), 1U);
  }
  scene.hub->korvane().EndShot();
  EXPECT_TRUE(scene.Click());
}

TEST(ZovOrientorObserver, that_goes_first_is_forgotten_by_every_cube) {
  Scene<zovOrientor> scene;
  zovOrientor other;
  {
    Listener listener(other);
    EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), &listener}));
    {
      zovOrientor brief;
      EXPECT_TRUE(brief.add_observer({std::shared_ptr<void>(), &listener}));
    }
    scene.PointAt(FRONT_RIGHT_TOP);
    scene.Click();
    EXPECT_EQ(listener.told.size(), 1U);
    EXPECT_EQ(listener.Cube(), &other);
  }
  scene.hub->korvane().EndShot();
  EXPECT_TRUE(scene.Click());
}

TEST(ZovOrientorObserver, is_kept_once_a_pointer_is_added_that_owns_it) {
  const int before = Listener::alive;
  Scene<zovOrientor> scene;
  auto listener = std::make_shared<Listener>(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), listener.get()}));
  EXPECT_EQ(listener.use_count(), 1);
  EXPECT_TRUE(scene.cube->add_observer(listener));
  listener = nullptr;
  EXPECT_EQ(Listener::alive, before + 1);
}

TEST(ZovOrientorObserver, stays_when_a_pointer_is_added_that_does_not_own_it) {
  const int before = Listener::alive;
  Scene<zovOrientor> scene;
  auto listener = std::make_shared<Listener>(*scene.cube);
  Listener* const there = listener.get();
  EXPECT_TRUE(scene.cube->add_observer(listener));
  listener = nullptr;
  EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), there}));
  EXPECT_EQ(Listener::alive, before + 1);
  scene.PointAt(FRONT_RIGHT_TOP);
  EXPECT_TRUE(scene.Click());
  EXPECT_EQ(there->told.size(), 1U);
  scene.cube->remove_observer({std::shared_ptr<void>(), there});
  EXPECT_EQ(Listener::alive, before);
}

// One after another at the same address, of which the cube keeps the second.
TEST(ZovOrientorObserver, is_not_taken_for_one_that_has_gone) {
  const int before = Listener::alive;
  Scene<zovOrientor> scene;
  alignas(Listener) std::byte place[sizeof(Listener)];
  auto* const first = new (place) Listener(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer({std::shared_ptr<void>(), first}));
  first->~Listener();
  std::shared_ptr<Listener> second(new (place) Listener(*scene.cube),
                                   [](Listener* each) { each->~Listener(); });
  EXPECT_TRUE(scene.cube->add_observer(second));
  EXPECT_EQ(second.use_count(), 2);
  second = nullptr;
  EXPECT_EQ(Listener::alive, before + 1);
  scene.cube = nullptr;
  EXPECT_EQ(Listener::alive, before);
}

// ---- who holds whom ----

TEST(ZovOrientor, keeps_renderer_and_camera_operations_that_the_host_lets_go) {
  ManualPlatform platform;
  Scene<zovOrientor> scene;
  const std::weak_ptr<zovRenderer> renderer = scene.renderer;
  const std::weak_ptr<zovCameraOperations> hub = scene.hub;
  EXPECT_TRUE(scene.cube->create());
  scene.renderer = nullptr;
  scene.hub = nullptr;
  EXPECT_FALSE(renderer.expired());
  EXPECT_FALSE(hub.expired());
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  scene.cube->draw();
  EXPECT_TRUE(hub.lock()->is_shot_active());
  EXPECT_TRUE(scene.cube->destroy());
  scene.cube->set_renderer(nullptr);
  EXPECT_TRUE(renderer.expired());
  scene.cube->set_camera_operations(nullptr);
  EXPECT_TRUE(hub.expired());
  scene.cube->draw();
  EXPECT_FALSE(scene.Click());
}

// Says what it is asked for before it does it.
class SayingHost : public FacadeHost {
 public:
  void apply_camera_parameters(const zovCameraParameters& camera) override {
    whenCalled("apply_camera_parameters");
    FacadeHost::apply_camera_parameters(camera);
  }
  void query_camera_parameters(zovCameraParameters& camera) const override {
    whenCalled("query_camera_parameters");
    FacadeHost::query_camera_parameters(camera);
  }
  void request_application_update() override {
    whenCalled("request_application_update");
    FacadeHost::request_application_update();
  }
  bool is_shot_active() const override {
    whenCalled("is_shot_active");
    return FacadeHost::is_shot_active();
  }
  void recalculate_selection_bounds() override {
    whenCalled("recalculate_selection_bounds");
    FacadeHost::recalculate_selection_bounds();
  }

  std::function<void(const std::string&)> whenCalled = [](const std::string&) {};
};

// On a part of the cube, and on its label.
struct Places {
  int x = 0;
  int y = 0;
  int labelX = 0;
  int labelY = 0;
};

// All that the cube does with its partners, from outside and from within.
void UseFromOutside(zovOrientor& cube, const Places& at) {
  const bool isCreated = cube.create();
  cube.set_viewport_size(WIDTH, HEIGHT);
  cube.set_viewport_mouse_position(at.x, HEIGHT - at.y - 1);
  cube.on_left_mouse_down(at.x, at.y);
  cube.on_mouse_move(at.x + 20, at.y);
  cube.draw();
  cube.on_left_mouse_up(at.x + 20, at.y);
  cube.set_viewport_mouse_position(at.x, HEIGHT - at.y - 1);
  const bool isOpened = cube.open_menu();
  cube.set_viewport_mouse_position(at.labelX, HEIGHT - at.labelY - 1);
  cube.open_ucs_menu();
  cube.lock_to_current_selection(isCreated || isOpened);
  cube.align_to_orbit_up_direction();
  cube.inject_click(zovOrientorPart::Top);
  cube.go_to_home_view();
  cube.is_point_in_bounds(at.x, at.y);
  cube.destroy();
}
void UseFromWithin(zovOrientor& outside, const Places& at) {
  Orientor& cube = outside.korvane();
  cube.Create();
  cube.SetViewportSize(WIDTH, HEIGHT);
  cube.SetViewportMousePosition(at.x, HEIGHT - at.y - 1);
  cube.OnLeftMouseDown(at.x, at.y);
  cube.OnMouseMove(at.x + 20, at.y);
  cube.Draw();
  cube.OnLeftMouseUp(at.x + 20, at.y);
  cube.SetViewportMousePosition(at.x, HEIGHT - at.y - 1);
  cube.OpenMenu();
  cube.SetViewportMousePosition(at.labelX, HEIGHT - at.labelY - 1);
  cube.OpenUCSMenu();
  cube.LockToCurrentSelection(true);
  cube.AlignToOrbitUpDirection();
  cube.GoToHomeView();
  cube.IsPointInBounds(at.x, at.y);
  cube.Destroy();
}

// A cube that alone holds its partners, which take themselves away at the nth time that they are asked for
// something.
struct Taking {
  Taking(const std::string& what, int nth, bool gives) {
    const auto take = [this, what, nth, gives](const std::string& called) {
      if (called != what || ++times != nth) return;
      scene.cube->set_renderer(gives ? std::make_shared<FacadeRenderer>() : nullptr);
      scene.cube->set_camera_operations(gives ? std::make_shared<FacadeHost>() : nullptr);
      staysMeanwhile = !renderer.expired() && !hub.expired();
    };
    scene.cube->get_parameters().set_draw_ucs_menu(true);
    FindPlaces();
    const auto saying = std::make_shared<SayingHost>();
    saying->view = scene.hub->view;
    hub = saying;
    renderer = scene.renderer;
    scene.cube->set_camera_operations(saying);
    saying->whenCalled = take;
    scene.renderer->whenCalled = take;
    scene.hub = nullptr;
    scene.renderer = nullptr;
  }

  void FindPlaces() {
    EXPECT_TRUE(scene.cube->create());
    scene.PointAt(Orientor::OVERLAY_UCS_MENU);
    places.labelX = scene.x;
    places.labelY = scene.y;
    scene.PointAt(FRONT_RIGHT_TOP);
    places.x = scene.x;
    places.y = scene.y;
    scene.cube->destroy();
  }

  Scene<zovOrientor> scene;
  Places places;
  std::weak_ptr<zovRenderer> renderer;
  std::weak_ptr<zovCameraOperations> hub;
  int times = 0;
  bool staysMeanwhile = false;
};

TEST(ZovOrientor, keeps_partners_that_are_taken_away_within_their_own_call) {
  for (const char* what : {"apply_texture_usage",
                           "begin_render",
                           "end_render",
                           "render_geometry",
                           "begin_selection",
                           "end_selection",
                           "render_selection_geometry",
                           "get_selection",
                           "render dynamic",
                           "load_string_resource",
                           "create_ucs_menu_label",
                           "destroy_icon",
                           "open_menu",
                           "open_ucs_menu",
                           "load_texture",
                           "release_texture",
                           "query_camera_parameters",
                           "request_application_update",
                           "is_shot_active",
                           "recalculate_selection_bounds"}) {
    for (const auto use : {UseFromOutside, UseFromWithin}) {
      for (const int nth : {1, 2, 3, 8}) {
        for (const bool gives : {false, true}) {
          ManualPlatform platform;
          Taking taking(what, nth, gives);
          use(*taking.scene.cube, taking.places);
          if (taking.times < nth) {
            ASSERT_GT(nth, 1) << what << " is never called";
            continue;
          }
          EXPECT_TRUE(taking.staysMeanwhile) << what << ' ' << nth;
          taking.scene.cube->set_renderer(std::make_shared<FacadeRenderer>());  // to give labels back to
          taking.scene.cube->destroy();
          EXPECT_TRUE(taking.renderer.expired()) << what << ' ' << nth;
          EXPECT_TRUE(taking.hub.expired()) << what << ' ' << nth;
        }
      }
    }
  }
}

// The pointers own nothing, so what they share ends when the host has it so: here, in the middle of a call of
// the other one.
TEST(ZovOrientor, asks_nothing_of_partners_that_the_host_has_ended) {
  Scene<zovOrientor> scene;
  auto hub = std::make_unique<FacadeHost>();
  scene.cube->set_camera_operations({std::shared_ptr<void>(), hub.get()});
  scene.renderer->whenCalled = [&](const std::string& called) {
    if (called != "begin_render" || hub == nullptr) return;
    scene.cube->set_camera_operations(nullptr);
    hub = nullptr;
  };
  scene.cube->draw();
  EXPECT_EQ(hub, nullptr);
  scene.renderer->whenCalled = [](const std::string&) {};

  const auto saying = std::make_shared<SayingHost>();
  saying->view = scene.hub->view;
  scene.cube->set_camera_operations(saying);
  auto renderer = std::make_unique<FacadeRenderer>();
  scene.cube->set_renderer({std::shared_ptr<void>(), renderer.get()});
  saying->whenCalled = [&](const std::string&) {
    if (renderer == nullptr) return;
    scene.cube->set_renderer(nullptr);
    renderer = nullptr;
  };
  scene.cube->go_to_home_view();
  EXPECT_EQ(renderer, nullptr);
  saying->whenCalled = [](const std::string&) {};
}

TEST(ZovOrientor, keeps_the_renderer_that_made_its_label) {
  const int before = OwnIcon::alive;
  Scene<zovOrientor> scene;
  scene.cube->get_parameters().set_draw_ucs_menu(true);
  EXPECT_TRUE(scene.cube->create());
  scene.cube->set_viewport_size(WIDTH, HEIGHT);
  EXPECT_EQ(OwnIcon::alive, before + 2);
  const std::weak_ptr<zovRenderer> first = scene.renderer;
  const auto second = std::make_shared<FacadeRenderer>();
  scene.renderer = nullptr;
  scene.cube->set_renderer(second);
  scene.cube->draw();
  EXPECT_EQ(second->CountOf("render dynamic"), 1);
  scene.cube->set_renderer(nullptr);
  EXPECT_EQ(second.use_count(), 1);  // the label is not of its making
  scene.cube->draw();
  scene.cube->set_renderer(second);
  scene.Point(WIDTH - 60, HEIGHT - 60);
  scene.cube->draw();
  EXPECT_EQ(second->CountOf("render dynamic"), 2);
  EXPECT_FALSE(first.expired());
  EXPECT_TRUE(scene.cube->destroy());
  EXPECT_TRUE(first.expired());
  EXPECT_EQ(OwnIcon::alive, before);
  EXPECT_TRUE(second->destroyed.empty());
}

TEST(ZovOrientor, lets_the_renderer_of_before_go_when_another_has_made_the_label) {
  const int before = OwnIcon::alive;
  Scene<zovOrientor> scene;
  scene.cube->get_parameters().set_draw_ucs_menu(true);
  EXPECT_TRUE(scene.cube->create());
  const std::weak_ptr<zovRenderer> first = scene.renderer;
  scene.renderer = nullptr;
  const auto second = std::make_shared<FacadeRenderer>();
  scene.cube->set_renderer(second);
  EXPECT_FALSE(first.expired());
  scene.cube->get_parameters().set_size(zovOrientorSize::Large);
  scene.cube->set_viewport_size(WIDTH, HEIGHT);
  EXPECT_EQ(second->CountOf("create_ucs_menu_label"), 2);
  EXPECT_TRUE(first.expired());
  EXPECT_EQ(OwnIcon::alive, before + 2);
}

// To and fro, without a destroy between.
TEST(ZovOrientor, keeps_a_renderer_once_however_often_it_comes_and_goes) {
  Scene<zovOrientor> scene;
  scene.cube->get_parameters().set_draw_ucs_menu(true);
  EXPECT_TRUE(scene.cube->create());
  const auto second = std::make_shared<FacadeRenderer>();
  for (int i = 0; i < 5; ++i) {
    scene.cube->set_renderer(second);
    EXPECT_EQ(scene.renderer.use_count(), 2);
    scene.cube->set_renderer(scene.renderer);
    EXPECT_EQ(scene.renderer.use_count(), 2);
    EXPECT_EQ(second.use_count(), 1);
  }
}

// The end of a partner is the host's, which may use the cube in it.
TEST(ZovOrientor, may_be_used_while_a_partner_goes) {
  struct Ending : FacadeHost {
    ~Ending() override { then(); }
    std::function<void()> then;
  };
  Scene<zovOrientor> scene;
  auto ending = std::make_shared<Ending>();
  int ends = 0;
  ending->then = [&] {
    scene.cube->set_camera_operations(scene.hub);
    scene.cube->draw();
    ++ends;
  };
  scene.cube->set_camera_operations(ending);
  ending = nullptr;
  scene.cube->set_camera_operations(nullptr);
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(scene.hub.use_count(), 2);
}

TEST(ZovOrientor, goes_before_renderer_and_camera_operations) {
  ManualPlatform platform;
  Scene<zovOrientor> scene;
  EXPECT_TRUE(scene.cube->create());
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.Click();
  scene.cube = nullptr;  // without being destroyed before, in the middle of its move
  EXPECT_EQ(scene.hub.use_count(), 1);
  EXPECT_EQ(scene.renderer.use_count(), 1);
  scene.Rest(platform);
  EXPECT_FALSE(scene.hub->is_shot_active());
  scene.renderer->apply_texture_usage();
}

TEST(ZovOrientor, goes_last_with_all_that_it_holds) {
  const int before = OwnIcon::alive;
  auto scene = std::make_unique<Scene<zovOrientor>>();
  scene->cube->get_parameters().set_draw_ucs_menu(true);
  EXPECT_TRUE(scene->cube->create());
  scene->cube->set_viewport_size(WIDTH, HEIGHT);
  EXPECT_GT(OwnIcon::alive, before);
  const std::weak_ptr<zovRenderer> renderer = scene->renderer;
  scene->renderer = nullptr;
  scene->hub = nullptr;
  std::unique_ptr<zovOrientor> cube = std::move(scene->cube);
  scene = nullptr;
  cube->draw();
  cube = nullptr;  // its labels were not given back
  EXPECT_TRUE(renderer.expired());
  EXPECT_EQ(OwnIcon::alive, before);
}

TEST(ZovOrientor, changes_partners_in_the_middle_of_a_drag) {
  Scene<zovOrientor> scene;
  const auto listener = std::make_shared<Listener>(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer(listener));
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.cube->on_left_mouse_down(scene.x, scene.y);
  scene.cube->on_mouse_move(scene.x + 20, scene.y);
  EXPECT_TRUE(scene.cube->is_drag_active());
  const auto other = std::make_shared<FacadeHost>();
  // Within the end of the drag the host changes its mind; the call that goes on has the last word.
  listener->then = [&] { scene.cube->set_camera_operations(nullptr); };
  scene.cube->set_camera_operations(other);
  EXPECT_FALSE(scene.cube->is_drag_active());
  EXPECT_EQ(other.use_count(), 2);
  EXPECT_EQ(scene.hub.use_count(), 1);
  scene.cube->go_to_home_view();
  EXPECT_TRUE(other->is_shot_active());
}

// The host's own pointer goes while the cube takes it.
TEST(ZovOrientor, takes_camera_operations_that_the_host_lets_go_meanwhile) {
  Scene<zovOrientor> scene;
  const auto listener = std::make_shared<Listener>(*scene.cube);
  EXPECT_TRUE(scene.cube->add_observer(listener));
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.cube->on_left_mouse_down(scene.x, scene.y);
  scene.cube->on_mouse_move(scene.x + 20, scene.y);
  auto other = std::make_shared<FacadeHost>();
  const std::weak_ptr<FacadeHost> watched = other;
  listener->then = [&other] { other = nullptr; };
  scene.cube->set_camera_operations(other);
  ASSERT_FALSE(watched.expired());
  scene.cube->go_to_home_view();
  EXPECT_TRUE(watched.lock()->is_shot_active());
}

TEST(ZovOrientor, may_be_given_what_it_has) {
  Scene<zovOrientor> scene;
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.cube->on_left_mouse_down(scene.x, scene.y);
  scene.cube->on_mouse_move(scene.x + 20, scene.y);
  scene.cube->set_camera_operations(scene.hub);
  scene.cube->set_renderer(scene.renderer);
  EXPECT_TRUE(scene.cube->is_drag_active());
  EXPECT_EQ(scene.hub.use_count(), 2);
}

TEST(ZovOrientor, without_partners_answers_false_minus_one_and_zero) {
  zovOrientor cube;
  EXPECT_FALSE(cube.create());
  EXPECT_FALSE(cube.destroy());
  cube.draw();
  EXPECT_FALSE(cube.on_mouse_move(1, 1));
  EXPECT_FALSE(cube.on_left_mouse_down(1, 1));
  EXPECT_FALSE(cube.on_left_mouse_up(1, 1));
  EXPECT_FALSE(cube.open_menu());
  cube.open_ucs_menu();
  cube.go_to_home_view();
  cube.align_to_orbit_up_direction();
  cube.lock_to_current_selection(true);
  cube.inject_click(zovOrientorPart::NoPart);
  cube.set_viewport_size(-5, 0);
  cube.set_viewport_mouse_position(3, 4);
  EXPECT_FALSE(cube.is_point_in_bounds(1, 1));
  EXPECT_EQ(cube.get_active_geometry_part(), -1);
  EXPECT_EQ(cube.get_active_overlay_part(), -1);
  EXPECT_EQ(cube.get_active_part_direction(), qmVector3());
  EXPECT_TRUE(cube.get_active_part_name().empty());
  EXPECT_TRUE(cube.get_tooltip().empty());
}

// The renderer counts nothing here, since a map of names allocates.
TEST(ZovOrientor, allocates_nothing_as_the_mouse_moves_and_a_frame_is_drawn) {
  class Silent : public FacadeRenderer {
   public:
    bool render_geometry(unsigned count, qiIterator<float>, qiIterator<float>,
                         const zovMaterialParameters&) override {
      return count > 0;
    }
  };
  Scene<zovOrientor> scene;
  const auto silent = std::make_shared<Silent>();
  silent->counting = false;
  scene.cube->set_renderer(silent);
  EXPECT_TRUE(scene.cube->create());
  scene.PointAt(FRONT_RIGHT_TOP);
  const auto round = [&] {
    for (int i = 0; i < 40; ++i) {
      scene.Point(scene.x + i, scene.y);
      scene.hub->perform_operations();
      scene.cube->draw();
    }
  };
  round();
  const AllocationCounter counter;
  round();
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

}  // namespace
