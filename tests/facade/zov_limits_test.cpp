// What the two layers ask of each other at their edges: icons that share an owner, a cube that ends before
// its observer, partners that are exchanged while something is drawn past the cube.
#include <gtest/gtest.h>

#include <memory>

#include "facade/facade_scene.h"
#include "korvane/icon2d.h"
#include "korvane/renderer.h"

namespace {

// Two icons of a host, over one of the library's, that live together.
struct Twins {
  Korvane::DynamicIcon2D within{7};
  zovDynamicIcon2D first{within};
  zovDynamicIcon2D second{within};
};

TEST(ZovLimits, each_of_two_icons_over_the_same_one_is_kept_and_given_back) {
  FacadeRenderer renderer;
  const auto twins = std::make_shared<Twins>();
  const FacadeRenderer::Icon icons[] = {{twins, &twins->first}, {twins, &twins->second}};
  Korvane::DynamicIcon2D* made = nullptr;
  for (const auto& icon : icons) {
    renderer.answersAlways = icon;
    made = renderer.korvane().CreateTooltip(L"text");
    EXPECT_EQ(made, &twins->within);
    EXPECT_TRUE(renderer.korvane().Render(made));
    EXPECT_EQ(renderer.lastAddress, icon.get());
  }
  for (int i = 0; i < 2; ++i) {
    made = &twins->within;
    EXPECT_TRUE(renderer.korvane().DestroyIcon(made));
  }
  made = &twins->within;
  EXPECT_FALSE(renderer.korvane().DestroyIcon(made));
}

TEST(ZovLimits, no_icon_is_drawn_for_none) {
  FacadeRenderer renderer;
  EXPECT_FALSE(renderer.korvane().Render(static_cast<Korvane::DynamicIcon2D*>(nullptr)));
  EXPECT_FALSE(renderer.korvane().Render(static_cast<Korvane::ResourceIcon2D*>(nullptr)));
  EXPECT_FALSE(renderer.korvane().Render(static_cast<Korvane::ResourceIcon3D*>(nullptr)));
  EXPECT_TRUE(renderer.calls.empty());
}

TEST(ZovLimits, an_observer_outlives_its_first_cube_and_is_told_by_another) {
  auto first = std::make_unique<FacadeScene<zovOrientor>>();
  FacadeScene<zovOrientor> second;
  const auto listener = std::make_shared<FacadeListener>(*first->cube);
  EXPECT_TRUE(first->cube->add_observer(listener));
  first.reset();
  EXPECT_TRUE(second.cube->add_observer(listener));
  second.PointAt(FRONT_RIGHT_TOP);
  second.Click();
  EXPECT_EQ(listener->told.size(), 1U);
  second.cube->remove_observer(listener);
}

// Outside of a pass, and past the cube.
TEST(ZovLimits, a_renderer_that_draws_stays_though_the_cube_is_given_other_partners_meanwhile) {
  constexpr float TRIANGLE[9] = {};
  for (const bool another : {false, true}) {
    FacadeScene<zovOrientor> scene;
    const std::weak_ptr<FacadeRenderer> renderer = scene.renderer;
    const std::weak_ptr<FacadeHost> hub = scene.hub;
    Korvane::Renderer& within = scene.renderer->korvane();
    bool stays = false;
    scene.renderer->whenCalled = [&](const std::string& called) {
      if (called != "render_geometry") return;
      if (another) scene.cube->set_renderer(std::make_shared<FacadeRenderer>());
      scene.cube->set_camera_operations(std::make_shared<FacadeHost>());
      stays = !renderer.expired() && !hub.expired();
    };
    scene.renderer = nullptr;
    scene.hub = nullptr;
    within.RenderGeometry(3, TRIANGLE, nullptr, nullptr);
    EXPECT_TRUE(stays) << another;
    scene.cube->draw();
    EXPECT_TRUE(hub.expired());
    EXPECT_EQ(renderer.expired(), another);
  }
}

/// Has no room for the label of the system of now as it is at rest.
class LabelRenderer : public FacadeRenderer {
 public:
  Icon create_ucs_menu_label(const qmString& active_name, const qmString& default_name, bool highlighted,
                             int width) override {
    Icon label = FacadeRenderer::create_ucs_menu_label(active_name, default_name, highlighted, width);
    return highlighted ? label : nullptr;
  }
};

TEST(ZovLimits, a_renderer_stays_for_the_one_label_of_two_that_it_has_made) {
  FacadeScene<zovOrientor> scene;
  scene.cube->get_parameters().set_draw_ucs_menu(true);
  auto maker = std::make_shared<LabelRenderer>();
  const std::weak_ptr<LabelRenderer> watched = maker;
  scene.cube->set_renderer(maker);
  ASSERT_TRUE(scene.cube->create());
  scene.cube->draw();
  ASSERT_GT(maker->CountOf("create_ucs_menu_label"), 0);
  maker = nullptr;
  scene.cube->set_renderer(scene.renderer);
  EXPECT_FALSE(watched.expired());
  scene.cube->destroy();
  scene.cube->set_renderer(nullptr);
  EXPECT_TRUE(watched.expired());
}

}  // namespace
