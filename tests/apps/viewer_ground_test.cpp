// What is behind the model: by command, by setting and by command line, with panels that suit it.
#include <epoxy/gl.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "settings/settings_file.h"
#include "viewer_fixture.h"

namespace {

using apps_test::HEIGHT;
using apps_test::ViewerTest;
using apps_test::WIDTH;
using zovhost::SceneGround;

class ViewerGroundTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    Press(SDLK_F1, KMOD_LSHIFT);  // the panel is in the way
    ComeToRest();
  }

  void Run(std::string_view name) {
    viewer->GetView(0).Run(*zovview::FindViewCommand(name));
    ComeToRest();
  }
  const SceneGround& GetGround() const { return viewer->GetSceneView().GetOptions().ground; }
  bool IsChosen(std::string_view name) const {
    return zovview::FindViewCommand(name)->isOn(viewer->GetView(0).GetTarget());
  }
  bool HasLightPanels() const { return ImGui::GetStyleColorVec4(ImGuiCol_WindowBg).x > 0.5F; }
};

TEST_F(ViewerGroundTest, the_gradient_is_there_at_first) {
  EXPECT_EQ(GetGround().name, "gradient");
  EXPECT_TRUE(IsChosen("ground-gradient"));
  EXPECT_FALSE(IsChosen("ground-white"));
  EXPECT_FALSE(HasLightPanels());
}

TEST_F(ViewerGroundTest, a_command_shows_another_with_panels_that_suit_it) {
  for (const SceneGround& ground : zovhost::GetSceneGrounds()) {
    const std::string command = "ground-" + std::string(ground.name);
    Run(command);
    EXPECT_EQ(GetGround().name, ground.name);
    EXPECT_EQ(viewer->GetPreferences().Get().ground, ground.name);
    EXPECT_EQ(HasLightPanels(), ground.lightPanels) << ground.name;
    EXPECT_TRUE(IsChosen(command));
  }
}

TEST_F(ViewerGroundTest, a_name_that_nobody_knows_is_the_gradient) {
  viewer->GetPreferences().Edit([](zovview::Choices& choices) { choices.ground = "mauve"; });
  EXPECT_EQ(GetGround().name, "gradient");
}

TEST_F(ViewerGroundTest, nothing_is_told_of_a_model_that_is_not_there_yet) {
  viewer.reset();
  viewer = std::make_unique<zovview::Viewer>(*window, zovview::Viewer::Options{});
  ASSERT_EQ(viewer->GetScene(), nullptr);
  for (const SDL_Keycode key : {SDLK_n, SDLK_y}) {
    Press(key);
    ComeToRest();
    EXPECT_FALSE(viewer->GetView(0).GetStory().IsShown()) << SDL_GetKeyName(key);
    EXPECT_FALSE(viewer->GetView(0).GetStory().IsChanged()) << SDL_GetKeyName(key);
  }
}

// At the top of the window: below, the progress is told.
TEST_F(ViewerGroundTest, it_shows_while_the_first_model_loads) {
  for (const SceneGround& ground : zovhost::GetSceneGrounds()) {
    viewer.reset();
    zovview::Viewer::Options options;
    options.ground = std::string(ground.name);
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    window->RequestFrame();
    ComeToRest();
    ASSERT_EQ(viewer->GetScene(), nullptr);
    std::array<std::uint8_t, 3> pixel = {};
    glReadPixels(WIDTH / 2, HEIGHT - 1, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel.data());
    for (std::size_t i = 0; i < pixel.size(); ++i) {
      EXPECT_NEAR(pixel[i], 255.0F * ground.top[i], 3.0F) << ground.name;
    }
  }
}

class KeptGroundTest : public ViewerTest {
 protected:
  // A viewer that keeps its settings; what `use` does with it is kept when it goes.
  void Start(const std::string& given, const std::function<void()>& use) {
    viewer.reset();
    zovview::SettingsFile settings(folder.GetPath() / "settings.json");
    zovview::Viewer::Options options;
    options.settings = &settings;
    options.ground = given;
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    viewer->Open({folder.Write("triangle.obj", apps_test::TRIANGLE)});
    ComeToRest();
    use();
    ComeToRest();
    viewer.reset();
  }
  std::string GetName() const { return std::string(viewer->GetSceneView().GetOptions().ground.name); }
  void Choose(const char* name) { viewer->GetView(0).Run(*zovview::FindViewCommand(name)); }
};

TEST_F(KeptGroundTest, what_is_chosen_is_kept) {
  Start("", [this] { Choose("ground-dark"); });
  Start("", [this] { EXPECT_EQ(GetName(), "dark"); });
}

TEST_F(KeptGroundTest, what_the_command_line_names_is_of_that_session_alone) {
  Start("", [this] { Choose("ground-dark"); });
  Start("white", [this] { EXPECT_EQ(GetName(), "white"); });
  Start("", [this] { EXPECT_EQ(GetName(), "dark"); });
}

TEST_F(KeptGroundTest, a_choice_after_the_command_line_is_kept) {
  Start("white", [this] { Choose("ground-light"); });
  Start("", [this] { EXPECT_EQ(GetName(), "light"); });
}

}  // namespace
