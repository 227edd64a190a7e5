// The tooltips of a view in a window: where they stand among the panels, and when they come.
#include <gtest/gtest.h>
#include <imgui_internal.h>

#include <cmath>
#include <string>
#include <vector>

#include "commands/view_commands.h"
#include "korvane/track_menu.h"
#include "viewer_fixture.h"
#include "zovhost/disc_tooltips.h"
#include "zovhost/languages.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"
#include "zovhost/tooltip_note.h"

namespace apps_test {
namespace {

using Korvane::Box2;
using Korvane::Vector2;

bool DoOverlap(const Box2& a, const Box2& b) {
  const Vector2 apart = a.center - b.center;
  const Vector2 reach = a.halfExtent + b.halfExtent;
  return std::abs(apart.x) < reach.x && std::abs(apart.y) < reach.y;
}

class ViewerTooltipTest : public ViewerTest {
 protected:
  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();
    zovhost::SpeakLanguage(zovhost::GetLanguages().front());
  }

  zovview::Viewport& GetView() const { return viewer->GetView(0); }
  const zovhost::TooltipNote& GetNote() const { return GetView().GetTooltip(); }
  void Run(const char* command) {
    GetView().Run(*zovview::FindViewCommand(command));
    ComeToRest();
  }
  // Where the pointer is, with the pointer on it.
  void OpenDisc(int x, int y) {
    Move(x, y);
    Run("disc-full-navigation");
    ASSERT_NE(GetView().GetDisc().GetActiveTrackMenu(), nullptr);
  }
  Box2 GetDiscPlace() const { return zovhost::FindDiscBounds(GetView().GetDisc()).value_or(Box2()); }
  // For half a second and more, on a patient clock.
  void Rest() {
    for (int i = 0; i < 80; ++i) window->Step(20);
  }
  bool ComesToShow() {
    for (int i = 0; i < 1500 && !GetNote().IsShown(); ++i) window->Step(20);
    ComeToRest();
    return GetNote().IsShown();
  }
  // In pixels, origin at the bottom left.
  std::vector<Box2> FindPanels() const {
    std::vector<Box2> panels;
    for (const ImGuiWindow* const panel : ImGui::GetCurrentContext()->Windows) {
      if (!panel->WasActive || panel->ParentWindow != nullptr || panel->IsFallbackWindow) continue;
      const ImVec2 middle = panel->Rect().GetCenter();
      panels.push_back(Box2({zovhost::MirrorPlace(middle.x), HEIGHT - static_cast<double>(middle.y)},
                            {panel->Rect().GetWidth() / 2.0, panel->Rect().GetHeight() / 2.0}));
    }
    return panels;
  }
  void ExpectClear() const {
    const Box2& note = GetNote().GetBounds();
    EXPECT_GT(note.halfExtent.x, 5.0);
    EXPECT_FALSE(DoOverlap(note, GetDiscPlace())) << "lies over what it tells of";
    const std::vector<Box2> panels = FindPanels();
    EXPECT_FALSE(panels.empty());
    for (const Box2& panel : panels) EXPECT_FALSE(DoOverlap(note, panel)) << "lies over a panel";
    EXPECT_GE(note.Min().x, 0.0);
    EXPECT_LE(note.Max().x, WIDTH);
    EXPECT_GE(note.Min().y, 0.0);
    EXPECT_LE(note.Max().y, HEIGHT);
  }
};

TEST_F(ViewerTooltipTest, a_wedge_is_told_of_beside_its_disc_and_the_panels) {
  UnfoldPanel();
  ComeToRest();
  for (const char* const language : {"language-en", "language-de", "language-ar", "language-ja"}) {
    SCOPED_TRACE(language);
    Run(language);
    for (const int x : {470, 540, 610}) {
      OpenDisc(x, 300);
      Move(x + 1, 302);
      ASSERT_TRUE(ComesToShow());
      EXPECT_FALSE(GetNote().GetText().empty());
      ExpectClear();
      Run("close-disc");
      Rest();
    }
  }
}

TEST_F(ViewerTooltipTest, a_disc_that_opens_under_a_resting_pointer_is_not_told_of) {
  OpenDisc(400, 300);
  Rest();
  EXPECT_FALSE(GetNote().IsShown());
  Move(401, 300);
  EXPECT_TRUE(ComesToShow());
}

TEST_F(ViewerTooltipTest, none_comes_while_a_menu_is_open_nor_when_it_closes) {
  OpenDisc(400, 300);
  Move(401, 300);
  ASSERT_TRUE(ComesToShow());
  PressAndRest(SDLK_F10, KMOD_LSHIFT);
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_FALSE(GetNote().IsShown());
  Rest();
  EXPECT_FALSE(GetNote().IsShown());
  PressAndRest(SDLK_ESCAPE);
  Rest();
  EXPECT_FALSE(GetNote().IsShown()) << "the pointer has not moved";
}

TEST_F(ViewerTooltipTest, none_stays_when_the_pointer_goes_to_a_panel) {
  UnfoldPanel();
  ComeToRest();
  OpenDisc(420, 300);
  Move(421, 300);
  ASSERT_TRUE(ComesToShow());
  Move(100, 400);
  Rest();
  EXPECT_FALSE(GetNote().IsShown());
}

TEST_F(ViewerTooltipTest, discs_are_told_of_as_their_settings_want_it) {
  GetView().GetDisc().GetParameters().showTooltips = false;
  OpenDisc(400, 300);
  Move(401, 300);
  Rest();
  EXPECT_FALSE(GetNote().IsShown());
}

// The disc's own would come after two seconds, over its lower half.
TEST_F(ViewerTooltipTest, a_disc_draws_none_by_itself) {
  GetView().GetDisc().GetParameters().showTooltips = true;
  OpenDisc(400, 300);
  Move(401, 300);
  ASSERT_TRUE(ComesToShow());
  const std::wstring text = GetNote().GetText();
  for (int i = 0; i < 150; ++i) window->Step(20);
  EXPECT_EQ(GetNote().GetText(), text);
  EXPECT_TRUE(GetNote().IsShown());
  ExpectClear();
}

TEST_F(ViewerTooltipTest, the_cube_is_told_of_beside_it) {
  const Box2 cube = GetView().GetManager().GetOrientorBounds();
  Move(static_cast<int>(cube.center.x) - 1, static_cast<int>(cube.center.y));
  Move(static_cast<int>(cube.center.x), static_cast<int>(cube.center.y));
  ASSERT_TRUE(ComesToShow());
  EXPECT_FALSE(DoOverlap(GetNote().GetBounds(), cube));
  ExpectClear();
}

}  // namespace
}  // namespace apps_test
