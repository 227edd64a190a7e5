// Every panel in every language and at every density of the display: no text is cut off, none lies upon
// another, and each character is in the font.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "commands/viewer_menus.h"
#include "korvane/story.h"
#include "korvane/storyboard.h"
#include "panel/viewer_panel.h"
#include "panel_stage.h"
#include "stories/story_desk.h"
#include "support/drawn_texts.h"
#include "zovhost/six_axis_panel.h"
#include "zovhost/spnav_source.h"

namespace {

using apps_test::PanelStage;
using zovhost::Language;

constexpr std::array DENSITIES = {1.0, 1.25, 1.5, 2.0, 3.0};

class PanelLayoutTest : public testing::Test, public PanelStage {
 protected:
  /// `prepare`, with the panels drawn once, opens what is folded.
  void TryAll(const std::function<void()>& panels, const std::function<void()>& prepare = {}) {
    for (const Language& language : zovhost::GetLanguages()) {
      for (const double density : DENSITIES) {
        Begin(language, density);
        EXPECT_EQ(gui->TakeProblem(), "") << language.tag;
        Draw(panels);
        if (prepare) prepare();
        Draw(panels);
        Look(language, density);
      }
    }
  }
  void Look(const Language& language, double density) {
    const DrawnTexts texts(*ImGui::GetDrawData());
    EXPECT_GT(texts.GetCount(), 10U) << language.tag;
    EXPECT_EQ(texts.FindFault(), "") << language.tag << " at " << density;
    EXPECT_EQ(gui->TakeProblem(), "") << language.tag;
  }
};

// What the other cases look for is found where it is.
TEST_F(PanelLayoutTest, has_faults_that_are_found) {
  const auto find = [this](const std::function<void()>& items) {
    Begin(zovhost::GetLanguages().front(), 1.0);
    Draw([&items] {
      ImGui::Begin("faulty", nullptr, ImGuiWindowFlags_AlwaysAutoResize);
      items();
      ImGui::End();
    });
    return DrawnTexts(*ImGui::GetDrawData()).FindFault().substr(0, 4);
  };
  EXPECT_EQ(find([] { ImGui::Button("a long label", ImVec2(40.0F, 0.0F)); }), "cut:");
  EXPECT_EQ(find([] { ImGui::SetCursorPosX(-5.0F), ImGui::TextUnformatted("wide"); }), "cut:");
  EXPECT_EQ(find([] {
              ImGui::TextUnformatted("first");
              ImGui::SameLine(20.0F);
              ImGui::TextUnformatted("second");
            }),
            "over");
  EXPECT_EQ(find([] { ImGui::TextUnformatted("and \u4e2d\u6587 too"); }), "unkn");
  EXPECT_EQ(find([] { ImGui::TextUnformatted("all is well"); }), "");
}

TEST_F(PanelLayoutTest, the_panel_of_the_viewer) {
  zovview::ViewerPanel panel;
  zovview::PanelContents contents;
  contents.name = "house.ifc";
  contents.triangleCount = 1234567;
  contents.message = "house.ifc: it is broken, or its contents are not what its extension says";
  TryAll([&] { panel.Draw(contents, view->GetTarget()); },
         [] {
           constexpr std::array HEADINGS = {"Discs", "Story", "Six-axis device", "Help"};
           Unfold("###panel", HEADINGS);
         });
}

TEST_F(PanelLayoutTest, a_load) {
  zovview::ViewerPanel panel;
  zovview::PanelContents contents;
  contents.loading = zovview::LoadingStatus{0.5, "Indexing for rays", "generated building"};
  TryAll([&] { panel.Draw(contents, view->GetTarget()); });
}

TEST_F(PanelLayoutTest, the_page_of_six_axis_devices) {
  zovhost::SixAxisHand hand;
  zovhost::SpnavSource source;
  zovhost::SixAxisPanel page(hand);
  page.AddSource(&source, "Six-axis device");
  page.AddSource(&source, "Game controller");
  page.SetVisible(true);
  TryAll([&] { page.Draw(view->GetDevice(), 1000.0F, 12.0F); },
         [] {
           constexpr std::array HEADINGS = {"Six-axis device"};
           Unfold("###Six-axis devices", HEADINGS);
         });
}

// Each type of a shot has fields of its own.
TEST_F(PanelLayoutTest, the_editor_of_a_shot) {
  Korvane::Storyboard& board = view->GetStory().GetBoard();
  view->GetStory().Show(true);
  Korvane::Sequence* const sequence = board.CreateSequence();
  ASSERT_NE(sequence, nullptr);
  zovhost::ShotEditorPanel& editor = view->GetStory().GetEditor();
  for (int type = 0; type < Korvane::ShotSpecification::SHOT_TYPE_COUNT; ++type) {
    sequence->GetFirstShot()->SetShotType(static_cast<Korvane::ShotSpecification::ShotType>(type));
    sequence->GetFirstShot()->SetName(L"1");
    editor.TransferControls(false);
    TryAll([&] { editor.Draw(1000.0F, 12.0F); });
  }
  editor.SetRecordingState(true);
  TryAll([&] { editor.Draw(1000.0F, 12.0F); });
}

TEST_F(PanelLayoutTest, the_questions_about_a_story) {
  zovview::StoryDesk desk(
      {[] {}, [](const std::string&) {}, [] { return std::filesystem::path("/tmp"); },
       [](const std::filesystem::path&) {},
       [](const Korvane::Story&, const zovview::StoryExport::Options&, std::string& error) {
         error = "there is no model to show";
         return nullptr;
       }});
  using zovview::StoryRequest;
  for (const StoryRequest request : {StoryRequest::Open, StoryRequest::SaveAs, StoryRequest::Export}) {
    desk.Ask(request, view->GetStory());
    if (request == StoryRequest::Export) desk.Confirm();
    TryAll([&] { desk.Draw(); });
    desk.Cancel();
  }
  view->GetStory().Show(true);
  ASSERT_NE(view->GetStory().GetBoard().CreateSequence(), nullptr);
  desk.Ask(StoryRequest::New, view->GetStory());
  ASSERT_EQ(desk.GetPage(), zovview::StoryDesk::Page::Losing);
  TryAll([&] { desk.Draw(); });
}

using Kind = zovview::ViewerMenus::Kind;

class MenuLayoutTest : public PanelLayoutTest, public testing::WithParamInterface<Kind> {
 protected:
  static constexpr float LINE = 8.0F;  // less than one has

  // With each of its lists, which unfolds below the pointer.
  void TryMenu(const Language& language, double density) {
    Begin(language, density);
    zovview::ViewerMenus menus;
    const auto draw = [&] { menus.Draw(view->GetTarget()); };
    menus.Open(GetParam(), zovview::ViewerMenus::Corner{300.0, 0.0, 0.0, 0.0});
    Draw(draw);
    Look(language, density);
    const ImGuiWindow* const menu = ImGui::GetCurrentContext()->OpenPopupStack[0].Window;
    for (float y = menu->Pos.y + LINE; y < menu->Pos.y + menu->Size.y; y += LINE) {
      ImGui::GetIO().MousePos = ImVec2(menu->Pos.x + LINE, y);
      Draw(draw);
      Look(language, density);
    }
  }
};

TEST_P(MenuLayoutTest, has_room_for_its_words) {
  for (const Language& language : zovhost::GetLanguages()) {
    for (const double density : DENSITIES) TryMenu(language, density);
  }
}

INSTANTIATE_TEST_SUITE_P(EachMenu, MenuLayoutTest,
                         testing::Values(Kind::View, Kind::Cube, Kind::Coordinates, Kind::FullNavigation,
                                         Kind::Shot, Kind::Bar, Kind::Discs, Kind::Device));

}  // namespace
