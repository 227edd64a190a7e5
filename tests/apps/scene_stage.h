#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "zovhost/gl_scene_view.h"
#include "zovhost/image.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/window.h"

namespace apps_test {

/// A context in which a scene is drawn into a picture; they go before it.
class SceneStage {
 public:
  /// Borrows the scene.
  void Create(const zovhost::Scene& scene, int width, int height) {
    std::string error;
    zovhost::Window::Options options;
    options.offscreen = true;
    window = zovhost::Window::Create(options, error);
    ASSERT_NE(window, nullptr) << error;
    view = std::make_unique<zovhost::GLSceneView>();
    target = std::make_unique<zovhost::OffscreenTarget>();
    ASSERT_TRUE(view->SetScene(&scene));
    ASSERT_TRUE(target->Create(width, height));
  }

  zovhost::GLSceneView& GetView() { return *view; }
  zovhost::OffscreenTarget& GetTarget() { return *target; }
  /// What was drawn last.
  zovhost::Image Read() const {
    zovhost::Image picture;
    EXPECT_TRUE(target->Read(picture));
    return picture;
  }

 private:
  std::unique_ptr<zovhost::Window> window;
  std::unique_ptr<zovhost::GLSceneView> view;
  std::unique_ptr<zovhost::OffscreenTarget> target;
};

}  // namespace apps_test
