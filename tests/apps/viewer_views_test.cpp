// Several views beside each other: what all of them have, and what each has for itself.
#include <epoxy/gl.h>
#include <gtest/gtest.h>
#include <imgui_internal.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "../host/large_meshes.h"
#include "commands/bar_commands.h"
#include "commands/cube_commands.h"
#include "commands/disc_commands.h"
#include "korvane/orientor.h"
#include "korvane/story.h"
#include "viewer_fixture.h"
#include "views/picture_look.h"
#include "views/view_tools.h"
#include "zovhost/phrases.h"
#include "zovhost/read_image.h"
#include "zovhost/wide_text.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;
using Look = Korvane::OrientorParameters;
using zovview::StoryDesk;

class ViewerViewsTest : public ViewerTest {
 protected:
  void Start(int count, bool keeps = false, double scale = 1.0) {
    viewer.reset();
    settings.reset();
    window->SetScale(scale);
    if (keeps) settings.emplace(file);
    zovview::Viewer::Options options;
    options.views = count;
    options.settings = keeps ? &*settings : nullptr;
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    viewer->Open({folder.Write("square.obj", SQUARE)});
    ComeToRest();
  }
  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();  // before what it keeps its settings in
    zovhost::SpeakLanguage(zovhost::GetLanguages().front());
  }
  zovview::Viewport& GetView(std::size_t index) const { return viewer->GetView(index); }
  const zovview::ViewTarget& GetTarget(std::size_t index) const { return GetView(index).GetTarget(); }
  const Look& GetLook(std::size_t index) const { return GetView(index).GetCube().GetParameters(); }
  void Run(std::size_t view, const char* command) {
    zovview::FindViewCommand(command)->run(GetTarget(view));
    window->RequestFrame();
    ComeToRest();
  }
  // The keys go there.
  void PointAt(std::size_t view) {
    const zovview::Viewport& shown = GetView(view);
    Move(shown.GetX() + shown.GetWidth() * 3 / 4, shown.GetY() + shown.GetHeight() / 4);
  }
  void PressAndRest(SDL_Keycode key) {
    Press(key);
    ComeToRest();
  }
  std::uint64_t CountShots(std::size_t view) const {
    const Korvane::Sequence* const first = GetView(view).GetStory().GetBoard().GetStory()->GetFirstSequence();
    return first != nullptr ? first->GetShotCount() : 0;
  }
  zovhost::Image SavePicture(std::size_t view) {
    const fs::path picture = folder.GetPath() / "picture.png";
    GetTarget(view).askForFile({zovview::FileRequest::Kind::SavePicture, 1});
    viewer->GetDesk().SetPath(picture.string());
    viewer->GetDesk().Confirm();
    EXPECT_EQ(viewer->GetDesk().GetProblem(), "");
    zovhost::Image read;
    std::string error;
    EXPECT_TRUE(zovhost::ReadImage(picture, read, error)) << error;
    return read;
  }

  const fs::path file = folder.GetPath() / "settings.json";
  std::optional<zovview::SettingsFile> settings;
};

// ---- the panel ----

TEST_F(ViewerViewsTest, the_panel_leaves_the_storyboard_below_it_whichever_view_the_pointer_is_in) {
  Start(2);
  const auto getFoot = [this] {
    DrawFrames(4);
    const ImGuiWindow* const strip = ImGui::FindWindowByName("###strip");
    return strip != nullptr ? strip->Rect().Max.y : 0.0F;
  };
  PointAt(1);
  const float free = getFoot();
  GetView(0).GetStory().Show(true);
  ComeToRest();
  PointAt(0);
  const float below = getFoot();
  EXPECT_LE(below, HEIGHT - zovview::ViewStory::HEIGHT);
  PointAt(1);
  EXPECT_EQ(getFoot(), below) << "does not jump with the pointer";
  GetView(0).GetStory().Show(false);
  GetView(1).GetStory().Show(true);
  ComeToRest();
  EXPECT_EQ(getFoot(), free) << "that of the other view is not in its way";
  PointAt(0);
  EXPECT_EQ(getFoot(), free);
}

// ---- settings ----

TEST_F(ViewerViewsTest, what_is_chosen_in_any_view_is_kept_and_all_have_it_the_next_time) {
  Start(2, true);
  Run(1, "cube-size-large");
  Run(1, "cube-top-left");
  Run(0, "toggle-compass");
  Run(1, "cube-opacity-25");
  Run(0, "toggle-snapping");
  Run(1, "toggle-fit-on-click");
  zovview::SetDiscSize(GetTarget(1), true, 64);
  Run(1, "toggle-upright");
  Run(1, "bar-left");
  const bool snaps = GetView(0).GetHub().GetApplicationParameters().do_snap_orbit;
  ASSERT_NE(snaps, GetView(1).GetHub().GetApplicationParameters().do_snap_orbit);
  Start(4, true);
  for (std::size_t view = 0; view < 4; ++view) {
    SCOPED_TRACE(view);
    EXPECT_EQ(GetLook(view).size, Look::SIZE_LARGE);
    EXPECT_EQ(GetLook(view).screen_location, Look::LOCATION_TOP_LEFT);
    EXPECT_EQ(GetLook(view).min_opacity, 0.25F);
    EXPECT_TRUE(GetLook(view).draw_compass);
    EXPECT_FALSE(GetLook(view).zoom_to_fit_scene);
    EXPECT_EQ(GetView(view).GetHub().GetApplicationParameters().do_snap_orbit, snaps);
    EXPECT_FALSE(GetView(view).GetHub().GetApplicationParameters().preserve_orbit_up_direction);
    EXPECT_EQ(zovview::GetDiscSize(GetTarget(view), true), 64);
    EXPECT_EQ(GetView(view).GetBars().GetPlaces().navigation.edge, Korvane::Toolbar::POSITION_LEFT);
  }
}

TEST_F(ViewerViewsTest, views_in_which_nothing_is_chosen_change_no_setting) {
  Start(1, true);
  Run(0, "cube-size-large");
  Start(4, true);
  viewer.reset();
  zovview::SettingsFile again(file);
  Korvane::HelmDisc disc;
  std::string error;
  ASSERT_TRUE(again.Read(disc, error)) << error;
  zovview::KeptCube expected;
  expected.size = Look::SIZE_LARGE;
  EXPECT_EQ(again.GetCube(), expected);
  EXPECT_EQ(again.GetBarPlaces().navigation, zovview::BarPlaces().navigation);
  EXPECT_EQ(disc.GetParameters().largeDiscSize, Korvane::HelmDisc().GetParameters().largeDiscSize);
}

TEST_F(ViewerViewsTest, the_button_of_a_device_shows_and_goes_in_every_view) {
  Start(2);
  zovhost::FedSource source;
  viewer->GetDevices().AddSource(&source, "A device");
  const auto isShown = [this](std::size_t view) { return GetView(view).GetBars().IsDeviceShown(); };
  source.Feed({});
  window->RequestFrame();
  ComeToRest();
  EXPECT_TRUE(isShown(0) && isShown(1));
  PointAt(1);
  source.RemoveDevice();
  window->RequestFrame();
  ComeToRest();
  EXPECT_FALSE(isShown(0) || isShown(1));
  viewer.reset();  // before the source
}

// ---- language and scale ----

TEST_F(ViewerViewsTest, all_of_them_speak_a_language_at_once) {
  Start(3);
  const std::wstring english = GetView(0).GetCube().GetActiveUCS();
  Run(1, "language-de");
  for (std::size_t view = 0; view < 3; ++view) {
    EXPECT_EQ(&GetView(view).GetRenderer().GetResources(), &GetView(0).GetRenderer().GetResources());
    EXPECT_EQ(GetView(view).GetCube().GetActiveUCS(),
              zovhost::Utf8ToWide(zovhost::GetPhrases().SayPlain("Model")));
    EXPECT_NE(GetView(view).GetCube().GetActiveUCS(), english);
  }
}

TEST_F(ViewerViewsTest, another_scale_is_that_of_all_and_settings_stay_in_points) {
  Start(2, true, 2.0);
  zovview::SetDiscSize(GetTarget(1), false, 32);
  Run(1, "toggle-compass");
  EXPECT_EQ(GetView(1).GetDisc().GetParameters().miniDiscSize, 64);
  window->SetScale(1.0);
  window->RequestFrame();
  ComeToRest();
  EXPECT_EQ(GetView(0).GetScale(), 1.0);
  EXPECT_EQ(GetView(1).GetScale(), 1.0);
  EXPECT_EQ(GetView(1).GetDisc().GetParameters().miniDiscSize, 32);
  Start(2, true, 1.5);
  for (std::size_t view = 0; view < 2; ++view) {
    EXPECT_EQ(zovview::GetDiscSize(GetTarget(view), false), 32);
    EXPECT_EQ(GetView(view).GetDisc().GetParameters().miniDiscSize, 48);
  }
}

// ---- stories and views that are kept ----

TEST_F(ViewerViewsTest, each_has_a_story_of_its_own_and_all_are_asked_about) {
  Start(2);
  PointAt(1);
  PressAndRest(SDLK_n);
  PressAndRest(SDLK_n);
  PointAt(0);
  PressAndRest(SDLK_n);
  EXPECT_EQ(CountShots(0), 1U);
  EXPECT_EQ(CountShots(1), 2U);
  viewer->Open({folder.Write("triangle.obj", TRIANGLE)});
  for (std::size_t view = 0; view < 2; ++view) {
    ASSERT_EQ(viewer->GetDesk().GetPage(), StoryDesk::Page::Losing) << view;
    EXPECT_EQ(GetTitle(), "square.obj - zovview");
    viewer->GetDesk().Drop();
  }
  ComeToRest();
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  EXPECT_EQ(CountShots(0) + CountShots(1), 0U);
}

TEST_F(ViewerViewsTest, a_view_is_kept_of_where_the_pointer_is_and_flown_to_there) {
  Start(4);
  PointAt(2);
  PressAndRest(SDLK_v);
  ASSERT_EQ(viewer->GetNamedViews().GetViews().GetCount(), 1U);
  const Korvane::CameraParameters kept = viewer->GetNamedViews().GetViews().Get()[0].camera;
  EXPECT_LT((kept.eye - GetView(2).GetHub().GetView().eye).Length(), 1e-12);
  const Korvane::Vector3 left = GetView(2).GetHub().GetView().eye;
  PointAt(1);
  viewer->GetNamedViews().Fly(0);
  ComeToRest();
  EXPECT_LT((GetView(1).GetHub().GetView().eye - kept.eye).Length(), 1e-9);
  EXPECT_EQ(GetView(2).GetHub().GetView().eye, left);
}

// ---- keys ----

TEST_F(ViewerViewsTest, keys_go_round_the_views_and_back) {
  Start(3);
  const auto marked = [this](SDL_Keymod held) {
    Press(SDLK_TAB, held);
    ComeToRest();
    PressAndRest(SDLK_h);
    std::size_t moved = 3;
    for (std::size_t view = 0; view < 3; ++view) {
      const bool pans = GetView(view).GetManager().GetActiveTool() == zovview::TOOL_PAN;
      EXPECT_TRUE(!pans || moved == 3) << "one at a time";
      if (pans) moved = view;
    }
    PressAndRest(SDLK_o);
    return moved;
  };
  constexpr auto BACK = static_cast<SDL_Keymod>(KMOD_LCTRL | KMOD_LSHIFT);
  EXPECT_EQ(marked(KMOD_LCTRL), 1U);
  EXPECT_EQ(marked(KMOD_LCTRL), 2U);
  EXPECT_EQ(marked(KMOD_LCTRL), 0U);
  EXPECT_EQ(marked(BACK), 2U);
}

TEST_F(ViewerViewsTest, the_focus_stays_behind_when_keys_go_to_another_view) {
  Start(2);
  PressAndRest(SDLK_TAB);
  ASSERT_TRUE(GetView(0).GetFocus().GetFocus().IsActive());
  Press(SDLK_TAB, KMOD_LCTRL);
  ComeToRest();
  EXPECT_FALSE(GetView(0).GetFocus().GetFocus().IsActive());
  EXPECT_FALSE(GetView(1).GetFocus().GetFocus().IsActive());
  PressAndRest(SDLK_TAB);
  EXPECT_TRUE(GetView(1).GetFocus().GetFocus().IsActive());
}

TEST_F(ViewerViewsTest, the_keys_of_a_page_are_given_back_when_keys_go_to_another_view) {
  Start(2);
  PressAndRest(SDLK_n);
  zovhost::ShotEditorPanel& editor = GetView(0).GetStory().GetEditor();
  PressAndRest(SDLK_TAB);
  ASSERT_TRUE(editor.GetKeys().AreHere());
  Press(SDLK_TAB, KMOD_LCTRL);
  ComeToRest();
  EXPECT_FALSE(editor.GetKeys().AreHere());
  PressAndRest(SDLK_SPACE);
  PressAndRest(SDLK_TAB);
  EXPECT_TRUE(GetView(1).GetFocus().GetFocus().IsActive()) << "and not the page that came back";
}

TEST_F(ViewerViewsTest, the_keys_of_a_page_are_given_back_when_the_story_is_presented) {
  Start(1);
  PressAndRest(SDLK_n);
  PressAndRest(SDLK_TAB);
  ASSERT_TRUE(GetView(0).GetStory().GetEditor().GetKeys().AreHere());
  Press(SDLK_F10);
  for (int i = 0; i < 3; ++i) window->Step(0);
  ASSERT_TRUE(GetView(0).GetStory().IsPresenting());
  EXPECT_FALSE(GetView(0).GetStory().GetEditor().GetKeys().AreHere());
  PressAndRest(SDLK_ESCAPE);
  EXPECT_FALSE(GetView(0).GetStory().IsPresenting());
}

// ---- pictures ----

TEST_F(ViewerViewsTest, a_picture_of_one_has_its_own_selection) {
  Start(2);
  const zovhost::Image first = SavePicture(0);
  const zovhost::Image second = SavePicture(1);
  const Korvane::Vector3 middle = viewer->GetScene()->GetCentre();
  Korvane::Vector2 pixel;
  ASSERT_TRUE(GetView(1).GetHub().GetProjection().WorldToPixel(middle, GetView(1).GetWidth(),
                                                               GetView(1).GetHeight(), pixel));
  GetView(1).GetSelection().PickAt(static_cast<int>(pixel.x), static_cast<int>(pixel.y));
  ASSERT_EQ(GetView(1).GetSelection().GetPart(), 0);
  window->RequestFrame();
  ComeToRest();
  EXPECT_EQ(SavePicture(0).rgba, first.rgba);
  EXPECT_NE(SavePicture(1).rgba, second.rgba);
}

TEST_F(ViewerViewsTest, a_picture_is_drawn_with_a_look_of_its_own_which_goes_with_it) {
  zovhost::GLSceneView view;
  view.GetOptions().moving = true;
  view.GetOptions().selectedPart = 3;
  {
    const zovview::PictureLook look(view, 5);
    EXPECT_FALSE(view.GetOptions().moving);
    EXPECT_FALSE(view.GetOptions().drawFaceHighlight);
    EXPECT_EQ(view.GetOptions().selectedPart, 5);
  }
  EXPECT_TRUE(view.GetOptions().moving);
  EXPECT_TRUE(view.GetOptions().drawFaceHighlight);
  EXPECT_EQ(view.GetOptions().selectedPart, 3);
}

TEST_F(ViewerViewsTest, a_picture_that_is_saved_while_a_large_model_moves_is_whole) {
  Start(1);
  viewer->Open({folder.Write("rough.stl", zovtest::MakeRoughStl(300))});
  ComeToRest();
  ASSERT_TRUE(viewer->GetSceneView().DropsDetail());
  for (int i = 0; i < 6000 && viewer->GetSceneView().GetOptions().moving; ++i) window->Step(10);
  ComeToRest();
  ASSERT_FALSE(viewer->GetSceneView().GetOptions().moving);
  const zovhost::Image atRest = SavePicture(0);
  ComeToRest();
  PushMotion(400, 300);
  PushButton(SDL_MOUSEBUTTONDOWN, 400, 300, 1);
  DrawFrames(2);
  EXPECT_TRUE(viewer->GetSceneView().GetOptions().moving) << "it is held";
  const zovhost::Image held = SavePicture(0);
  EXPECT_EQ(held.rgba, atRest.rgba);
  PushButton(SDL_MOUSEBUTTONUP, 400, 300, 1);
  ComeToRest();
}

class KeptPictureTest : public ViewerViewsTest, public testing::WithParamInterface<const char*> {
 protected:
  using Pixel = std::array<std::uint8_t, 4>;
  // Of the picture of the first view that is kept, at its upper edge.
  Pixel ReadTop() const {
    constexpr int SIDE = 96;
    const zovhost::NamedView& kept = viewer->GetNamedViews().GetViews().Get()[0];
    const unsigned texture = viewer->GetNamedViews().GetPictures().Find(kept.guid, kept.camera, SIDE);
    EXPECT_NE(texture, 0U);
    GLint width = 0;
    GLint height = 0;
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    std::vector<Pixel> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return pixels.empty() ? Pixel() : pixels.back();
  }
};

TEST_P(KeptPictureTest, is_drawn_anew_when_the_ground_changes) {
  Start(1);
  PressAndRest(SDLK_v);
  const zovhost::NamedView& kept = viewer->GetNamedViews().GetViews().Get()[0];
  for (const char* ground : {"white", GetParam()}) {
    viewer->GetPreferences().Edit([ground](zovview::Choices& choices) { choices.ground = ground; });
    viewer->GetNamedViews().GetPictures().Find(kept.guid, kept.camera, 96);  // somebody looks at it
    DrawFrames(2);
    ComeToRest();
    const Pixel top = ReadTop();
    const zovhost::SceneGround& expected = zovview::FindGround(ground);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(top[i], 255.0F * expected.top[i], 6.0F) << ground;
  }
}

INSTANTIATE_TEST_SUITE_P(each, KeptPictureTest, testing::Values("dark", "light"));

}  // namespace
}  // namespace apps_test
