// The language of the viewer: where it comes from, and that everything speaks it at once when it changes.
#include <gtest/gtest.h>

#include <string>

#include "commands/cube_commands.h"
#include "commands/language_commands.h"
#include "commands/view_commands.h"
#include "korvane/navigation_bar.h"
#include "korvane/orientor.h"
#include "viewer_fixture.h"
#include "views/view_tools.h"
#include "zovhost/phrases.h"
#include "zovhost/resource_pack.h"
#include "zovhost/wide_text.h"

namespace {

using apps_test::ViewerTest;
using Korvane::NavigationBar;
using zovview::Choices;
using zovview::FindViewCommand;
using zovview::Preferences;

class ViewerLanguageTest : public ViewerTest {
 protected:
  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();
    zovhost::SpeakLanguage(zovhost::GetLanguages().front());
  }

  void Use(const char* command) {
    FindViewCommand(command)->run(viewer->GetView(0).GetTarget());
    window->RequestFrame();
    ComeToRest();
  }
  // Of an item of the navigation bar, also of one that is offered by another.
  std::string FindWords(const Korvane::ToolbarItem::List& items, int tag) const {
    for (int i = 0; i < items.GetCount(); ++i) {
      const Korvane::ToolbarItem& item = items.GetAt(i);
      if (item.GetTag() == tag) return zovhost::WideToUtf8(item.GetTooltip());
      std::string found = FindWords(item.GetFlyoutItems(), tag);
      if (!found.empty()) return found;
    }
    return {};
  }
  std::string FindBarWords(int tag) const {
    return FindWords(viewer->GetView(0).GetBars().GetBar().GetToolbar()->GetItems(), tag);
  }
  std::string FindToolWords(int tag) const {
    return FindWords(viewer->GetView(0).GetBars().GetTools().GetItems(), tag);
  }
  std::string GetCoordinates() const {
    return zovhost::WideToUtf8(viewer->GetView(0).GetCube().GetActiveUCS());
  }
};

TEST_F(ViewerLanguageTest, changes_everything_at_once) {
  Use("language-en");
  constexpr int HOST_HOME = 201;
  EXPECT_EQ(FindBarWords(HOST_HOME), "Home (Home)");
  EXPECT_EQ(GetCoordinates(), "Model");
  const std::string disc = FindBarWords(NavigationBar::TAG_VIEW_OBJECT);

  Use("language-de");
  EXPECT_STREQ(zovhost::Say("Save"), "Speichern");
  EXPECT_EQ(FindBarWords(HOST_HOME), "Ausgangsansicht (Pos1)");
  EXPECT_EQ(FindToolWords(zovview::TOOL_PAN), "Pan (H)");
  EXPECT_EQ(FindToolWords(zovview::TOOL_LOOK), "Umsehen (L)");
  EXPECT_NE(FindBarWords(NavigationBar::TAG_VIEW_OBJECT), disc);
  EXPECT_FALSE(FindBarWords(NavigationBar::TAG_VIEW_OBJECT).empty());
  EXPECT_EQ(GetCoordinates(), "Modell");
  EXPECT_EQ(viewer->GetView(0).GetRenderer().GetResources().GetLanguage().tag, "de");

  Use("language-en");
  EXPECT_EQ(FindBarWords(NavigationBar::TAG_VIEW_OBJECT), disc);
  EXPECT_EQ(GetCoordinates(), "Model");
}

TEST_F(ViewerLanguageTest, keeps_the_coordinates_that_were_chosen) {
  Use("language-en");
  Use("up-y");
  Use("language-ja");
  EXPECT_TRUE(
      zovview::IsCoordinateSystem(viewer->GetView(0).GetTarget(), zovview::CoordinateSystem::YUpward));
  EXPECT_EQ(GetCoordinates(), "Y 上");
}

TEST_F(ViewerLanguageTest, leaves_the_story_and_its_pictures) {
  Use("toggle-storyboard");
  Use("add-sequence");
  Korvane::Storyboard& board = viewer->GetView(0).GetStory().GetBoard();
  const Korvane::Story* const story = board.GetStory();
  Use("language-ar");
  EXPECT_EQ(board.GetStory(), story);
  EXPECT_TRUE(board.IsVisible());
  Use("language-zh");
}

TEST_F(ViewerLanguageTest, is_lit_in_the_list) {
  const auto& target = viewer->GetView(0).GetTarget();
  Use("language-pl");
  EXPECT_TRUE(FindViewCommand("language-pl")->isOn(target));
  EXPECT_FALSE(FindViewCommand("language-system")->isOn(target));
  Use("language-system");
  EXPECT_TRUE(FindViewCommand("language-system")->isOn(target));
  EXPECT_EQ(viewer->GetPreferences().Get().language, "");
}

TEST(ViewerLanguage, of_the_session_comes_before_the_kept_one_until_another_is_chosen) {
  Preferences preferences;
  preferences.Edit([](Choices& choices) { choices.language = "fr"; });
  EXPECT_EQ(zovview::FindLanguage(preferences).tag, "fr");
  preferences.SetSessionLanguage("es_ES.UTF-8");
  EXPECT_EQ(zovview::FindLanguage(preferences).tag, "es");
  EXPECT_EQ(preferences.Get().language, "fr");
  preferences.SetSessionLanguage("no language");
  EXPECT_EQ(zovview::FindLanguage(preferences).tag, "fr");
}

TEST(ViewerLanguage, of_each_name_has_a_command) {
  for (const zovhost::Language& language : zovhost::GetLanguages()) {
    const zovview::ViewCommand* const command = FindViewCommand("language-" + std::string(language.tag));
    ASSERT_NE(command, nullptr) << language.tag;
    EXPECT_EQ(command->label, language.ownName);
  }
}

}  // namespace
