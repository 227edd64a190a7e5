#include "zov/zov_orientor.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "facade/facade_scene.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"
#include "support/allocation_counter.h"
#include "support/manual_platform.h"
#include "support/virtual_slot.h"

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
    {"create", [](zovOrientor& z) { EXPECT_TRUE(z.create()); }, [](Orientor& o) { EXPECT_TRUE(o.Create()); }},
    {"destroy", [](zovOrientor& z) { z.destroy(); }, [](Orientor& o) { o.Destroy(); }},
    {"draw", [](zovOrientor& z) { z.draw(); }, [](Orientor& o) { o.Draw(); }},
    {"on_mouse_move", [](zovOrientor& z) { z.on_mouse_move(1, 2); },
     [](Orientor& o) { o.OnMouseMove(1, 2); }},
    {"on_left_mouse_down", [](zovOrientor& z) { z.on_left_mouse_down(1, 2); },
     [](Orientor& o) { o.OnLeftMouseDown(1, 2); }},
    {"on_left_mouse_up", [](zovOrientor& z) { z.on_left_mouse_up(1, 2); },
     [](Orientor& o) { o.OnLeftMouseUp(1, 2); }},
    {"open_menu", [](zovOrientor& z) { EXPECT_FALSE(z.open_menu()); },
     [](Orientor& o) { EXPECT_FALSE(o.OpenMenu()); }},
    {"open_ucs_menu", [](zovOrientor& z) { z.open_ucs_menu(); }, [](Orientor& o) { o.OpenUCSMenu(); }},
    {"go_to_home_view", [](zovOrientor& z) { z.go_to_home_view(); }, [](Orientor& o) { o.GoToHomeView(); }},
};

TEST(ZovOrientor, brings_each_of_the_nine_from_either_side_to_the_override_once) {
  for (const Way& way : NINE) {
    FacadeScene<CountingOrientor> outside;
    way.outside(*outside.cube);
    EXPECT_EQ(outside.cube->calls, (std::map<std::string, int>{{way.name, 1}})) << "from outside";
    FacadeScene<CountingOrientor> inside;
    way.inside(inside.cube->korvane());
    EXPECT_EQ(inside.cube->calls, (std::map<std::string, int>{{way.name, 1}})) << "from within";
  }
}

// The drawing asks the host to draw, the press is kept, and so on: what the cube of the library does.
TEST(ZovOrientor, does_by_itself_what_the_cube_of_the_library_does) {
  ManualPlatform platform;
  FacadeScene<zovOrientor> scene;
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
  FacadeScene<CountingOrientor> scene;
  scene.cube->inject_click(zovOrientorPart::Home);
  EXPECT_EQ(scene.cube->calls["go_to_home_view"], 1);
  EXPECT_TRUE(scene.hub->is_shot_active());
  scene.hub->korvane().EndShot();
  scene.cube->inject_click(zovOrientorPart::ContextMenu);
  EXPECT_EQ(scene.cube->calls["open_menu"], 1);
  EXPECT_EQ(scene.renderer->CountOf("open_menu"), 1);
}

TEST(ZovOrientor, opens_the_menu_of_coordinate_systems_at_its_label) {
  FacadeScene<CountingOrientor> scene;
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
  FacadeScene<Refusing> scene;
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

// A walk of the mouse over cube, compass and overlay.
TEST(ZovOrientor, answers_as_the_cube_within) {
  FacadeScene<zovOrientor> scene;
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

// What does not change on that walk.
TEST(ZovOrientor, answers_as_the_cube_within_in_a_drag_and_on_the_menu_of_coordinate_systems) {
  FacadeScene<zovOrientor> scene;
  zovOrientor& cube = *scene.cube;
  cube.get_parameters().set_draw_ucs_menu(true);
  cube.get_parameters().set_size(zovOrientorSize::Large);
  EXPECT_TRUE(cube.create());
  cube.set_viewport_size(WIDTH, HEIGHT);
  cube.draw();
  scene.PointAt(Orientor::OVERLAY_UCS_MENU);
  EXPECT_TRUE(cube.is_mouse_on_ucs_menu());
  EXPECT_FALSE(cube.is_mouse_on_context_menu_part());
  EXPECT_EQ(cube.get_screen_size(), 170);
  ExpectSameAnswers(cube);
  scene.PointAt(FRONT_RIGHT_TOP);
  cube.on_left_mouse_down(scene.x, scene.y);
  EXPECT_FALSE(cube.is_drag_active());
  cube.on_mouse_move(scene.x + 20, scene.y);
  EXPECT_TRUE(cube.is_drag_active());
  EXPECT_FALSE(cube.is_mouse_on_ucs_menu());
  ExpectSameAnswers(cube);
}

// While a move runs the overlay shows no mouse, but the mouse is there.
TEST(ZovOrientor, answers_as_the_cube_within_in_a_move) {
  FacadeScene<zovOrientor> scene;
  EXPECT_TRUE(scene.cube->create());
  scene.PointAt(Orientor::OVERLAY_HOME);
  EXPECT_TRUE(scene.cube->is_mouse_on_overlay_part());
  EXPECT_TRUE(scene.cube->is_mouse_on_viewable_overlay_part());
  EXPECT_TRUE(scene.Click());
  EXPECT_TRUE(scene.hub->is_shot_active());
  scene.Point(scene.x, scene.y);
  EXPECT_FALSE(scene.cube->is_mouse_on_overlay_part());
  EXPECT_TRUE(scene.cube->is_mouse_on_viewable_overlay_part());
  ExpectSameAnswers(*scene.cube);
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
  FacadeScene<zovOrientor> scene;
  scene.Point(1, 1);
  EXPECT_FALSE(scene.cube->view_on_part_axis());
  scene.hub->view.set_eye(qmPoint3(9.0, 0.0, 0.0));
  scene.Point(2, 2);
  EXPECT_TRUE(scene.cube->view_on_part_axis());
  EXPECT_TRUE(scene.cube->view_on_principal_axis());
  EXPECT_EQ(scene.cube->get_closest_geometry_part(), 1);
  ExpectSameAnswers(*scene.cube);
}

// An edge is no face.
TEST(ZovOrientor, looks_along_an_edge_when_the_camera_does) {
  FacadeScene<zovOrientor> scene;
  scene.hub->view.set_eye(qmPoint3(9.0, 9.0, 0.0));
  scene.Point(2, 2);
  EXPECT_TRUE(scene.cube->view_on_part_axis());
  EXPECT_FALSE(scene.cube->view_on_principal_axis());
  EXPECT_EQ(scene.cube->get_closest_geometry_part(), 9);
  EXPECT_EQ(scene.cube->get_closest_view_direction(), qmVector3(1.0, 1.0, 0.0));
  ExpectSameAnswers(*scene.cube);
}

TEST(ZovOrientor, has_the_size_of_its_settings) {
  FacadeScene<zovOrientor> scene;
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
  FacadeScene<zovOrientor> scene;
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
  FacadeScene<zovOrientor> scene;
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
  FacadeScene<zovOrientor> scene;
  scene.cube->inject_click(zovOrientorPart::Top);
  EXPECT_TRUE(scene.hub->is_shot_active());
  scene.Rest(platform);
  scene.Point(1, 1);
  EXPECT_EQ(scene.cube->get_closest_geometry_part(), 3);
  scene.cube->inject_click(static_cast<zovOrientorPart>(12345));
  scene.cube->inject_click(zovOrientorPart::NoPart);
  scene.cube->inject_click(zovOrientorPart::CompassRing);
  for (int arrow = static_cast<int>(zovOrientorPart::BackArrow);
       arrow <= static_cast<int>(zovOrientorPart::LeftArrow); ++arrow) {
    scene.cube->inject_click(static_cast<zovOrientorPart>(arrow));
  }
  EXPECT_FALSE(scene.hub->is_shot_active());
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
  FacadeScene<zovOrientor> scene;
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
