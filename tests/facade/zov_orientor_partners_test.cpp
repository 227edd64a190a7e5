// Who holds whom: a cube, its camera operations and its renderers.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "facade/facade_scene.h"
#include "korvane/camera_operations.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/renderer.h"
#include "zov/zov_orientor.h"

namespace {

using Korvane::Orientor;

TEST(ZovOrientorPartners, keeps_renderer_and_camera_operations_that_the_host_lets_go) {
  ManualPlatform platform;
  FacadeScene<zovOrientor> scene;
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
  const bool isCreated = cube.Create();
  cube.SetViewportSize(WIDTH, HEIGHT);
  cube.SetViewportMousePosition(at.x, HEIGHT - at.y - 1);
  cube.OnLeftMouseDown(at.x, at.y);
  cube.OnMouseMove(at.x + 20, at.y);
  cube.Draw();
  cube.OnLeftMouseUp(at.x + 20, at.y);
  cube.SetViewportMousePosition(at.x, HEIGHT - at.y - 1);
  const bool isOpened = cube.OpenMenu();
  cube.SetViewportMousePosition(at.labelX, HEIGHT - at.labelY - 1);
  cube.OpenUCSMenu();
  cube.LockToCurrentSelection(isCreated || isOpened);
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

  FacadeScene<zovOrientor> scene;
  Places places;
  std::weak_ptr<zovRenderer> renderer;
  std::weak_ptr<zovCameraOperations> hub;
  int times = 0;
  bool staysMeanwhile = false;
};

TEST(ZovOrientorPartners, keeps_partners_that_are_taken_away_within_their_own_call) {
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
TEST(ZovOrientorPartners, asks_nothing_of_partners_that_the_host_has_ended) {
  FacadeScene<zovOrientor> scene;
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

TEST(ZovOrientorPartners, forgets_a_renderer_that_ends_while_it_has_it) {
  const int before = OwnIcon::alive;
  for (const bool hasLabel : {false, true}) {
    FacadeScene<zovOrientor> scene;
    scene.cube->get_parameters().set_draw_ucs_menu(hasLabel);
    auto own = std::make_unique<FacadeRenderer>();
    scene.cube->set_renderer({std::shared_ptr<void>(), own.get()});
    EXPECT_TRUE(scene.cube->create());
    EXPECT_EQ(OwnIcon::alive, before + (hasLabel ? 2 : 0));
    own = nullptr;
    EXPECT_EQ(OwnIcon::alive, before);
    scene.cube->draw();
    EXPECT_FALSE(scene.cube->is_point_in_bounds(WIDTH - 60, HEIGHT - 60));
    scene.cube->open_ucs_menu();
    EXPECT_FALSE(scene.cube->create());
    EXPECT_FALSE(scene.cube->destroy());
    scene.cube->set_renderer(scene.renderer);
    scene.cube->draw();
    EXPECT_EQ(scene.renderer->CountOf("render dynamic"), hasLabel ? 1 : 0);
  }
  EXPECT_EQ(OwnIcon::alive, before);
}

// The label stays with the cube, and goes with the renderer.
TEST(ZovOrientorPartners, forgets_the_label_of_a_renderer_that_ends_after_it_was_taken_away) {
  const int before = OwnIcon::alive;
  FacadeScene<zovOrientor> scene;
  scene.cube->get_parameters().set_draw_ucs_menu(true);
  auto own = std::make_unique<FacadeRenderer>();
  scene.cube->set_renderer({std::shared_ptr<void>(), own.get()});
  EXPECT_TRUE(scene.cube->create());
  scene.cube->set_renderer(nullptr);
  EXPECT_EQ(OwnIcon::alive, before + 2);
  own = nullptr;
  EXPECT_EQ(OwnIcon::alive, before);
  scene.cube->set_renderer(scene.renderer);
  scene.cube->draw();
  EXPECT_EQ(scene.renderer->CountOf("render dynamic"), 1);
  EXPECT_EQ(OwnIcon::alive, before + 2);
  EXPECT_TRUE(scene.cube->destroy());
  EXPECT_EQ(OwnIcon::alive, before);
}

// The host keeps the icons, which nobody can be asked to destroy any more: another renderer makes its own.
TEST(ZovOrientorPartners, forgets_a_label_whose_icons_outlive_their_renderer) {
  for (const bool takenAwayBefore : {false, true}) {
    FacadeScene<zovOrientor> scene;
    scene.cube->get_parameters().set_draw_ucs_menu(true);
    auto own = std::make_unique<FacadeRenderer>();
    own->keepsOwn = true;
    scene.cube->set_renderer({std::shared_ptr<void>(), own.get()});
    EXPECT_TRUE(scene.cube->create());
    const std::vector<FacadeRenderer::Icon> kept = own->own;
    ASSERT_EQ(kept.size(), 2U);
    if (takenAwayBefore) scene.cube->set_renderer(nullptr);
    own = nullptr;
    scene.cube->set_renderer(scene.renderer);
    scene.cube->draw();
    EXPECT_EQ(scene.renderer->CountOf("create_ucs_menu_label"), 2);
    EXPECT_EQ(scene.renderer->CountOf("render dynamic"), 1);
    for (const FacadeRenderer::Icon& icon : kept) EXPECT_NE(scene.renderer->lastAddress, icon.get());
    EXPECT_TRUE(scene.cube->destroy());
    EXPECT_EQ(scene.renderer->destroyed.size(), 2U);
  }
}

// An icon, or a picture, of the host's own class takes away the renderer that alone the cube holds, as it
// goes in a call that the host has begun.
TEST(ZovOrientorPartners, keeps_a_renderer_that_an_icon_of_it_takes_away_as_it_goes) {
  class Last : public OwnIcon {
   public:
    explicit Last(std::function<void()> atEnd) : OwnIcon(1, qmString()), then(std::move(atEnd)) {}
    ~Last() override { then(); }
    std::function<void()> then;
  };
  FacadeScene<zovOrientor> scene;
  const std::weak_ptr<zovRenderer> watched = scene.renderer;
  bool stays = false;
  scene.renderer->answersAlways = std::make_shared<Last>([&] {
    scene.cube->set_renderer(nullptr);
    stays = !watched.expired();
  });
  EXPECT_NE(scene.renderer->get_string_texture(zovStringID::Pivot), nullptr);
  EXPECT_NE(scene.renderer->get_string_texture(zovStringID::LookKeys), nullptr);
  scene.renderer->release_string_texture(zovStringID::Pivot);
  scene.renderer->release_string_texture(zovStringID::LookKeys);
  scene.renderer->answersAlways = nullptr;
  zovRenderer& renderer = *scene.renderer;
  scene.renderer = nullptr;
  renderer.apply_texture_usage();
  EXPECT_TRUE(stays);
  EXPECT_FALSE(watched.expired());
  scene.cube->set_viewport_mouse_position(1, 1);
  EXPECT_TRUE(watched.expired());
}

TEST(ZovOrientorPartners, keeps_a_renderer_that_a_picture_of_it_takes_away_as_it_goes) {
  FacadeScene<zovOrientor> scene;
  const std::weak_ptr<zovRenderer> watched = scene.renderer;
  bool stays = false;
  const unsigned char pixels[4] = {1, 2, 3, 4};
  scene.renderer->makeImage = [&] {
    return std::shared_ptr<zovPixelIcon2D>(new zovPixelIcon2D(1, 1, pixels, zovPixelFormat::Rgba),
                                           [&](zovPixelIcon2D* image) {
                                             delete image;
                                             scene.cube->set_renderer(nullptr);
                                             stays = !watched.expired();
                                           });
  };
  Korvane::Renderer& within = scene.renderer->korvane();
  scene.renderer = nullptr;
  const std::unique_ptr<Korvane::PixelIcon2D> copy(within.CreateImageData(Korvane::TEXTURE_CUBE_HOME));
  EXPECT_NE(copy, nullptr);
  EXPECT_TRUE(stays);
  scene.cube->set_viewport_mouse_position(1, 1);
  EXPECT_TRUE(watched.expired());
}

// It goes with the next call of the cube that is no mere question.
TEST(ZovOrientorPartners, lets_go_in_its_next_call_what_was_taken_away_in_a_call_of_another) {
  FacadeScene<zovOrientor> scene;
  auto saying = std::make_shared<SayingHost>();
  const std::weak_ptr<zovCameraOperations> watched = saying;
  scene.cube->set_camera_operations(saying);
  bool isTaken = false;
  saying->whenCalled = [&](const std::string&) {
    if (!std::exchange(isTaken, true)) scene.cube->set_camera_operations(nullptr);
  };
  Korvane::CameraOperations& within = saying->korvane();
  saying = nullptr;
  within.RequestApplicationUpdate();
  EXPECT_FALSE(scene.cube->is_drag_active());
  EXPECT_FALSE(watched.expired());
  scene.cube->on_mouse_move(1, 1);
  EXPECT_TRUE(watched.expired());
}

TEST(ZovOrientorPartners, keeps_the_renderer_that_made_its_label) {
  const int before = OwnIcon::alive;
  FacadeScene<zovOrientor> scene;
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

TEST(ZovOrientorPartners, lets_the_renderer_of_before_go_when_another_has_made_the_label) {
  const int before = OwnIcon::alive;
  FacadeScene<zovOrientor> scene;
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
TEST(ZovOrientorPartners, keeps_a_renderer_once_however_often_it_comes_and_goes) {
  FacadeScene<zovOrientor> scene;
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
TEST(ZovOrientorPartners, may_be_used_while_a_partner_goes) {
  struct Ending : FacadeHost {
    ~Ending() override { then(); }
    std::function<void()> then;
  };
  FacadeScene<zovOrientor> scene;
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

TEST(ZovOrientorPartners, goes_before_renderer_and_camera_operations) {
  ManualPlatform platform;
  FacadeScene<zovOrientor> scene;
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

TEST(ZovOrientorPartners, goes_last_with_all_that_it_holds) {
  const int before = OwnIcon::alive;
  auto scene = std::make_unique<FacadeScene<zovOrientor>>();
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

TEST(ZovOrientorPartners, changes_partners_in_the_middle_of_a_drag) {
  FacadeScene<zovOrientor> scene;
  const auto listener = std::make_shared<FacadeListener>(*scene.cube);
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
TEST(ZovOrientorPartners, takes_camera_operations_that_the_host_lets_go_meanwhile) {
  FacadeScene<zovOrientor> scene;
  const auto listener = std::make_shared<FacadeListener>(*scene.cube);
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

TEST(ZovOrientorPartners, may_be_given_what_it_has) {
  FacadeScene<zovOrientor> scene;
  scene.PointAt(FRONT_RIGHT_TOP);
  scene.cube->on_left_mouse_down(scene.x, scene.y);
  scene.cube->on_mouse_move(scene.x + 20, scene.y);
  scene.cube->set_camera_operations(scene.hub);
  scene.cube->set_renderer(scene.renderer);
  EXPECT_TRUE(scene.cube->is_drag_active());
  EXPECT_EQ(scene.hub.use_count(), 2);
}

}  // namespace
