// The panel in a real window: folded and unfolded by the hand and by keys, beside the cubes, with tooltips.
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "../host/large_meshes.h"
#include "korvane/interval_timer.h"
#include "korvane/story.h"
#include "panel_stage.h"
#include "settings/settings_file.h"
#include "support/allocation_counter.h"
#include "viewer_fixture.h"
#include "views/view_tools.h"
#include "zovhost/languages.h"
#include "zovhost/phrases.h"

namespace {

using apps_test::HEIGHT;
using apps_test::ViewerTest;
using apps_test::WIDTH;
using Korvane::Vector2;

// Pixels, as the fixture counts them, of a window of scale 1.
constexpr Vector2 FOLD(34.0, HEIGHT - 34.0);
constexpr Vector2 PAN_OF_STRIP(34.0, HEIGHT - 111.0);

// Looks at the order of the panels whenever the window does something else than drawing.
class ProgressWatch : public Korvane::IntervalTimer {
 public:
  explicit ProgressWatch(zovview::Viewer& watched) : viewer(watched) { Start(0.001, true); }
  void Timeout() override {
    const ImGuiWindow* const progress = ImGui::FindWindowByName("##progress");
    const bool editing = viewer.GetView(0).GetStory().GetBoard().GetStory()->GetFirstSequence() != nullptr;
    if (!viewer.IsLoading() || !editing || progress == nullptr || !progress->Active) return;
    ++seen;
    covered += ImGui::GetCurrentContext()->Windows.back() != progress ? 1 : 0;
  }

  int seen = 0;
  int covered = 0;

 private:
  zovview::Viewer& viewer;
};

class ViewerPanelTest : public ViewerTest {
 protected:
  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();
    zovhost::SpeakLanguage(zovhost::GetLanguages().front());
  }
  const zovview::ViewerPanel& GetPanel() const { return viewer->GetPanel(); }
  bool IsFolded() const { return GetPanel().IsFolded(); }
  const std::string& GetChoice() const { return viewer->GetPreferences().Get().panel; }
  int GetTool() const { return viewer->GetView(0).GetManager().GetActiveTool(); }
  const ImGuiWindow& GetWindow() const {
    return *ImGui::FindWindowByName(IsFolded() ? "###strip" : "###panel");
  }
  void Run(std::string_view command) {
    viewer->GetView(0).Run(*zovview::FindViewCommand(command));
    ComeToRest();
  }
  void Key(SDL_Keycode key) { PressAndRest(key); }
  void TabToPanel() {
    for (int i = 0; i < 20 && !viewer->GetPanelFocus().IsActive(); ++i) Key(SDLK_TAB);
    ASSERT_TRUE(viewer->GetPanelFocus().IsActive());
  }
  std::string GetFocused() {
    const zovhost::FocusThing* const thing = viewer->GetPanelFocus().Get();
    return thing != nullptr ? thing->name : std::string();
  }
  std::string GetTip() const { return GetPanel().GetTip() != nullptr ? GetPanel().GetTip() : ""; }

  void ExpectBesideCubes() {
    const ImRect panel = GetWindow().Rect();
    for (std::size_t i = 0; i < viewer->GetViewCount(); ++i) {
      const zovview::Viewport& view = viewer->GetView(i);
      const Korvane::Box2 cube = viewer->GetView(i).GetManager().GetOrientorBounds();
      const ImVec2 low(static_cast<float>(view.GetX() + cube.Min().x),
                       static_cast<float>(HEIGHT - view.GetY() - cube.Max().y));
      const ImVec2 high(static_cast<float>(view.GetX() + cube.Max().x),
                        static_cast<float>(HEIGHT - view.GetY() - cube.Min().y));
      EXPECT_FALSE(panel.Overlaps(ImRect(low, high))) << i;
    }
  }
};

// ---- what a frame costs ----

// Of this program: the library that draws panels has an allocator of its own.
TEST_F(ViewerPanelTest, frames_at_rest_allocate_nothing_with_the_panel_and_without_it) {
  Run("language-de");  // with words longer than a string holds without memory
  const auto count = [this] {
    DrawFrames(10);
    const AllocationCounter counter;
    DrawFrames(20);
    return counter.GetAllocations();
  };
  Key(SDLK_F1);
  ASSERT_TRUE(GetPanel().IsHelpOpen());
  EXPECT_EQ(count(), 0U);
  PressAndRest(SDLK_F1, KMOD_LSHIFT);
  EXPECT_EQ(count(), 0U);
}

// The first path takes what memory the second one needs.
TEST_F(ViewerPanelTest, a_pointer_that_moves_over_the_view_allocates_nothing) {
  const auto move = [this] {
    const AllocationCounter counter;
    for (int i = 0; i < 40; ++i) {
      PushMotion(WIDTH / 3 + 3 * i, HEIGHT / 2 + i);
      window->Step(0);
    }
    return counter.GetAllocations();
  };
  move();
  EXPECT_EQ(move(), 0U);
}

// ---- low windows ----

TEST_F(ViewerPanelTest, a_low_strip_lists_what_it_has_no_room_for_behind_its_last_button) {
  ASSERT_TRUE(IsFolded());
  TabToPanel();
  for (int i = 0; i < 20; ++i) Key(SDLK_DOWN);
  EXPECT_EQ(GetFocused(), "Orthographic") << "all have room";
  Key(SDLK_ESCAPE);
  Run("toggle-storyboard");
  TabToPanel();
  for (int i = 0; i < 20; ++i) Key(SDLK_DOWN);
  ASSERT_EQ(GetFocused(), "More tools");
  EXPECT_EQ(viewer->GetPanelFocus().Get()->role, zovhost::FocusRole::MenuButton);
  EXPECT_LE(GetWindow().Rect().Max.y, HEIGHT - zovview::ViewStory::HEIGHT);
  ASSERT_FALSE(GetHub().GetView().IsOrthographic());
  Key(SDLK_RETURN);
  const ImGuiWindow& list = *ImGui::GetCurrentContext()->OpenPopupStack.back().Window;
  EXPECT_GE(list.Rect().Min.y, 0.0F);
  EXPECT_LT(list.Rect().Max.y, HEIGHT);
  Key(SDLK_UP);  // to the last
  Key(SDLK_RETURN);
  EXPECT_TRUE(GetHub().GetView().IsOrthographic());
}

TEST_F(ViewerPanelTest, the_editor_of_shots_leaves_the_storyboard_to_be_seen) {
  Run("add-shot");
  const ImGuiWindow* editor = nullptr;
  for (const ImGuiWindow* const each : ImGui::GetCurrentContext()->Windows) {
    if (each->WasActive && std::string_view(each->Name).find("###Shot") != std::string_view::npos)
      editor = each;
  }
  ASSERT_NE(editor, nullptr);
  EXPECT_GT(editor->Rect().GetHeight(), 100.0F);
  EXPECT_LE(editor->Rect().Max.y, HEIGHT - zovview::ViewStory::HEIGHT);
}

// ---- the help ----

TEST_F(ViewerPanelTest, the_keys_of_the_help_unfold_it_with_the_panel_and_fold_it_in_alone) {
  ASSERT_TRUE(IsFolded());
  Key(SDLK_F1);
  EXPECT_FALSE(IsFolded());
  EXPECT_TRUE(GetPanel().IsHelpOpen());
  Key(SDLK_F1);
  EXPECT_FALSE(IsFolded()) << "the panel stays";
  EXPECT_FALSE(GetPanel().IsHelpOpen());
  Type("?");
  EXPECT_TRUE(GetPanel().IsHelpOpen());
  Type("?");
  EXPECT_FALSE(GetPanel().IsHelpOpen());
  EXPECT_EQ(GetChoice(), "") << "nothing that lasts";
}

TEST_F(ViewerPanelTest, a_help_that_is_asked_for_is_brought_into_sight) {
  UnfoldPanel();
  ComeToRest();
  Key(SDLK_F1);
  EXPECT_GT(GetWindow().Scroll.y, 0.5F * GetWindow().Size.y) << "it is the last of the panel";
}

TEST_F(ViewerPanelTest, the_progress_of_a_load_lies_above_the_other_panels) {
  UnfoldPanel();
  ComeToRest();
  viewer->Open({folder.Write("hills.stl", zovtest::MakeHillsStl(200))});
  const ProgressWatch watch(*viewer);
  PressAndRest(SDLK_n);  // while it loads: the editor of a shot comes
  EXPECT_GT(watch.seen, 0);
  EXPECT_EQ(watch.covered, 0);
}

TEST_F(ViewerPanelTest, in_a_small_window_it_is_a_strip_that_a_press_unfolds_and_another_folds) {
  EXPECT_TRUE(IsFolded());
  EXPECT_EQ(GetChoice(), "");
  const float strip = GetPanel().GetReach();
  EXPECT_LT(strip, 0.1F * WIDTH);
  Click(FOLD);
  EXPECT_FALSE(IsFolded());
  EXPECT_EQ(GetChoice(), "open");
  EXPECT_GT(GetPanel().GetReach(), 4.0F * strip);
  EXPECT_NEAR(GetHub().GetFitMargins().left, 0.05 + GetPanel().GetReach() / WIDTH, 1e-6);
  Click(FOLD);
  EXPECT_TRUE(IsFolded());
  EXPECT_EQ(GetChoice(), "folded");
  EXPECT_EQ(GetPanel().GetReach(), strip);
  EXPECT_NEAR(GetHub().GetFitMargins().left, 0.05 + strip / WIDTH, 1e-6);
}

TEST_F(ViewerPanelTest, a_button_of_the_strip_chooses_its_tool) {
  EXPECT_NE(GetTool(), zovview::TOOL_PAN);
  Click(PAN_OF_STRIP);
  EXPECT_EQ(GetTool(), zovview::TOOL_PAN);
}

TEST_F(ViewerPanelTest, keys_use_the_strip_as_they_use_the_panel) {
  TabToPanel();
  EXPECT_EQ(GetFocused(), "Unfold the panel");
  Key(SDLK_RETURN);
  EXPECT_FALSE(IsFolded());
  EXPECT_EQ(GetFocused(), "Fold the panel");
  Key(SDLK_RETURN);
  EXPECT_TRUE(IsFolded());
  Key(SDLK_DOWN);
  EXPECT_EQ(GetFocused(), "Orbit");
  Key(SDLK_DOWN);
  EXPECT_EQ(GetFocused(), "Pan");
  EXPECT_EQ(GetTip(), "Pan (H)") << "what has no words tells them";
  Key(SDLK_RETURN);
  EXPECT_EQ(GetTool(), zovview::TOOL_PAN);
}

TEST_F(ViewerPanelTest, a_choice_is_kept) {
  const std::filesystem::path file = folder.GetPath() / "settings.json";
  const auto start = [&](zovview::SettingsFile& settings) {
    viewer.reset();
    zovview::Viewer::Options options;
    options.settings = &settings;
    viewer = std::make_unique<zovview::Viewer>(*window, options);
    viewer->Open({folder.Write("square.obj", apps_test::SQUARE)});
    ComeToRest();
  };
  zovview::SettingsFile first(file);
  start(first);
  EXPECT_TRUE(IsFolded());
  Click(FOLD);
  zovview::SettingsFile second(file);
  start(second);
  EXPECT_FALSE(IsFolded());
  viewer.reset();
}

TEST_F(ViewerPanelTest, stands_beside_the_cube_in_whichever_corner_that_is) {
  for (const char* const corner : {"cube-top-left", "cube-bottom-left", "cube-top-right"}) {
    SCOPED_TRACE(corner);
    Run(corner);
    ExpectBesideCubes();
    UnfoldPanel();
    ComeToRest();
    ExpectBesideCubes();
    Click(Vector2(GetWindow().Pos.x + 22.0, HEIGHT - GetWindow().Pos.y - 22.0));
    EXPECT_TRUE(IsFolded());
  }
}

TEST_F(ViewerPanelTest, stands_beside_the_cubes_of_four_views) {
  viewer.reset();
  zovview::Viewer::Options options;
  options.views = 4;
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  viewer->Open({folder.Write("square.obj", apps_test::SQUARE)});
  ComeToRest();
  EXPECT_TRUE(IsFolded());
  ExpectBesideCubes();
  UnfoldPanel();
  ComeToRest();
  ExpectBesideCubes();
}

TEST_F(ViewerPanelTest, the_first_view_of_a_model_stands_in_what_it_leaves) {
  for (const bool folded : {true, false}) {
    viewer.reset();
    viewer = std::make_unique<zovview::Viewer>(*window);
    if (!folded) UnfoldPanel();
    viewer->Open({folder.Write("square.obj", apps_test::SQUARE)});
    ComeToRest();
    const Korvane::FitMargins& margins = GetHub().GetFitMargins();
    const double middle = (margins.left + 1.0 - margins.right) / 2.0;
    EXPECT_GT(margins.left, folded ? 0.1 : 0.4);
    constexpr double SCROLLBAR = 8.0;  // half of one, which is there when the panel is
    EXPECT_NEAR(Project({0.5, 0.5, 0.0}).x, middle * WIDTH, folded ? 1.0 : SCROLLBAR);
  }
}

TEST_F(ViewerPanelTest, a_tooltip_comes_to_a_pointer_that_rests_and_goes_with_a_press) {
  PushMotion(30, static_cast<int>(PAN_OF_STRIP.y));
  Move(static_cast<int>(PAN_OF_STRIP.x), static_cast<int>(PAN_OF_STRIP.y));
  EXPECT_EQ(GetTip(), "");
  for (int i = 0; i < 3000 && GetTip().empty(); ++i) window->Step(10);
  EXPECT_EQ(GetTip(), "Pan (H)");
  Move(static_cast<int>(PAN_OF_STRIP.x), static_cast<int>(PAN_OF_STRIP.y) + 34);
  EXPECT_EQ(GetTip(), "Orbit (O)") << "at once from one to the next";
  Click(Vector2(PAN_OF_STRIP.x, PAN_OF_STRIP.y + 34.0));
  EXPECT_EQ(GetTip(), "");
}

class WidePanelTest : public ViewerPanelTest {
 protected:
  zovhost::Window::Options GetOptions() const override {
    zovhost::Window::Options options = ViewerTest::GetOptions();
    options.width = 1280;
    options.height = 1000;
    return options;
  }
};

TEST_F(WidePanelTest, is_unfolded_and_as_high_as_what_is_in_it_also_after_a_key) {
  EXPECT_FALSE(IsFolded());
  const auto isFitting = [this] {
    return GetWindow().Size.y == GetWindow().ContentSize.y + 2.0F * GetWindow().WindowPadding.y;
  };
  EXPECT_TRUE(isFitting());
  const float before = GetWindow().Size.y;
  TabToPanel();
  for (int i = 0; i < 60 && GetFocused() != "Discs"; ++i) Key(SDLK_DOWN);
  ASSERT_EQ(GetFocused(), "Discs");
  Key(SDLK_RETURN);
  EXPECT_GT(GetWindow().Size.y, before);
  EXPECT_TRUE(isFitting());
  Key(SDLK_RETURN);
  EXPECT_EQ(GetWindow().Size.y, before);
}

// ---- its words ----

class PanelWordsTest : public testing::Test, public apps_test::PanelStage {};

TEST_F(PanelWordsTest, are_measured_once_for_a_language_a_scale_and_a_style) {
  zovview::PanelWords words;
  const auto update = [&](std::string_view style) {
    DrawOnce([&] { words.Update(zovhost::FindNavigationStyle(style)); });
    return words.GetSerial();
  };
  Begin(zovhost::GetLanguages().front(), 1.0);
  const int first = update("");
  const float width = words.GetButtonWidth();
  EXPECT_EQ(update(""), first);
  EXPECT_EQ(update(zovhost::GetNavigationStyles()[1].name), first + 1);
  Begin(*zovhost::FindLanguage("de"), 1.0);
  EXPECT_EQ(update(zovhost::GetNavigationStyles()[1].name), first + 2);
  EXPECT_NE(words.GetButtonWidth(), width);
  Begin(*zovhost::FindLanguage("de"), 2.0);
  EXPECT_EQ(update(zovhost::GetNavigationStyles()[1].name), first + 3);
}

}  // namespace
