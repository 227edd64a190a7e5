// The storyboard and the menus without a mouse.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "korvane/orientor.h"
#include "korvane/shot_specification.h"
#include "korvane/story.h"
#include "viewer_fixture.h"
#include "views/view_tools.h"
#include "zovhost/wide_text.h"

namespace {

using Korvane::Sequence;
using Korvane::Storyboard;
using zovhost::FocusRole;
using zovhost::FocusThing;
using Kind = zovview::ViewerMenus::Kind;

class ViewerMenuKeysTest : public apps_test::ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    Key(SDLK_F1, KMOD_LSHIFT);  // the panel goes
    viewer->GetView(0).GetFocus().SetObserver([this](const FocusThing* thing) { Hear(present, thing); });
    viewer->GetMenuKeys().SetObserver([this](const FocusThing* thing) { Hear(marked, thing); });
  }

  static void Hear(FocusThing& heard, const FocusThing* thing) {
    heard = thing != nullptr ? *thing : FocusThing();
  }
  void Key(SDL_Keycode key, SDL_Keymod modifiers = KMOD_NONE) { PressAndRest(key, modifiers); }
  void TabTo(const std::string& group) {
    for (int i = 0; i < 12 && present.group != group; ++i) Key(SDLK_TAB);
    ASSERT_EQ(present.group, group);
  }
  // By an arrow, until that is under the focus.
  void StepTo(SDL_Keycode arrow, const std::string& name) {
    for (int i = 0; i < 20 && present.name != name; ++i) Key(arrow);
    ASSERT_EQ(present.name, name);
  }
  void MarkInMenu(SDL_Keycode arrow, const std::string& name) {
    for (int i = 0; i < 60 && marked.name != name; ++i) Key(arrow);
    ASSERT_EQ(marked.name, name);
  }

  Storyboard& GetBoard() const { return viewer->GetView(0).GetStory().GetBoard(); }
  std::string GetText(int id) const {
    return zovhost::WideToUtf8(viewer->GetView(0).GetRenderer().LoadStringResource(id));
  }
  Sequence& GetSequence() const { return *GetBoard().GetStory()->GetFirstSequence(); }
  // Of the shots, in their order.
  std::string GetNames() const {
    std::string names;
    for (std::uint64_t i = 0; i < GetSequence().GetShotCount(); ++i) {
      names += zovhost::WideToUtf8(GetSequence().GetShot(i)->GetName()) + ";";
    }
    return names;
  }
  void AddShots(int count) {
    for (int i = 0; i < count; ++i) Key(SDLK_n);
    ASSERT_EQ(GetSequence().GetShotCount(), static_cast<std::uint64_t>(count));
    for (int i = 0; i < count; ++i) {
      GetSequence().GetShot(static_cast<std::uint64_t>(i))->SetName(std::wstring(1, wchar_t(L'A' + i)));
    }
    ComeToRest();
  }

  FocusThing present;  // in the view
  FocusThing marked;   // in a menu
};

// ---- the storyboard ----

TEST_F(ViewerMenuKeysTest, shots_are_added_and_edited_and_tell_what_they_are) {
  Key(SDLK_y);  // the storyboard
  TabTo("Storyboard");
  EXPECT_EQ(present.name, GetText(75)) << "plays the story";
  EXPECT_EQ(present.role, FocusRole::ToggleButton);
  Key(SDLK_DOWN);
  EXPECT_EQ(present.name, GetText(80)) << "a new sequence";
  Key(SDLK_RETURN);
  ASSERT_EQ(GetBoard().GetStory()->GetSequenceCount(), 1U);
  EXPECT_EQ(present.name, zovhost::WideToUtf8(GetSequence().GetName())) << "is under the focus now";
  EXPECT_TRUE(present.on);
  Key(SDLK_UP);
  StepTo(SDLK_RIGHT, GetText(83));
  Key(SDLK_RETURN);
  EXPECT_EQ(GetSequence().GetShotCount(), 2U);
  EXPECT_EQ(present.name, zovhost::WideToUtf8(GetSequence().GetShot(1)->GetName()));
  EXPECT_GT(present.bounds.halfExtent.x, 10.0) << "it is marked where it stands";
  StepTo(SDLK_LEFT, zovhost::WideToUtf8(GetSequence().GetShot(0)->GetName()));
  Key(SDLK_RETURN);
  EXPECT_EQ(GetBoard().GetShotInShotEditor(), GetSequence().GetShot(0));
}

TEST_F(ViewerMenuKeysTest, shots_are_moved_and_deleted) {
  AddShots(3);
  TabTo("Storyboard");
  Key(SDLK_DOWN);
  StepTo(SDLK_LEFT, "A");
  Key(SDLK_RIGHT, KMOD_LCTRL);
  EXPECT_EQ(GetNames(), "B;A;C;");
  EXPECT_EQ(present.name, "A") << "stays under the focus";
  Key(SDLK_RIGHT, KMOD_LCTRL);
  EXPECT_EQ(GetNames(), "B;C;A;");
  Key(SDLK_RIGHT, KMOD_LCTRL);
  EXPECT_EQ(GetNames(), "B;C;A;") << "it is the last";
  Key(SDLK_LEFT, KMOD_LCTRL);
  EXPECT_EQ(GetNames(), "B;A;C;");
  Key(SDLK_DELETE);
  EXPECT_EQ(GetNames(), "B;C;");
  EXPECT_EQ(present.name, "C") << "the next one has its place";
}

TEST_F(ViewerMenuKeysTest, a_shot_is_named) {
  AddShots(2);
  TabTo("Storyboard");
  Key(SDLK_DOWN);
  StepTo(SDLK_LEFT, "A");
  Key(SDLK_F2);
  EXPECT_TRUE(viewer->GetView(0).GetStory().GetEditor().IsPanelVisible());
  Type("Porch");
  Key(SDLK_RETURN);
  EXPECT_NE(GetNames().find("Porch"), std::string::npos) << GetNames();
  EXPECT_NE(present.name.find("Porch"), std::string::npos) << "and so is what is under the focus";
  Key(SDLK_RIGHT);
  EXPECT_EQ(present.name, GetText(84)) << "the keys are the view's again";
}

TEST_F(ViewerMenuKeysTest, a_shot_is_played_and_flown_to) {
  AddShots(1);
  const Korvane::Vector3 start = GetHub().GetView().eye;
  Drag(100, 200, 450);
  ASSERT_GT((GetHub().GetView().eye - start).Length(), 0.01);
  TabTo("Storyboard");
  Key(SDLK_DOWN);
  StepTo(SDLK_LEFT, GetText(82));
  Key(SDLK_RETURN);
  EXPECT_LT((GetHub().GetView().eye - start).Length(), 1e-3);
  StepTo(SDLK_LEFT, GetText(84));
  Press(SDLK_RETURN);
  EXPECT_TRUE(GetBoard().IsPlayingBack());
  GetBoard().StopPlayback();
  ComeToRest();
}

TEST_F(ViewerMenuKeysTest, the_menu_of_a_shot_opens_beside_it) {
  AddShots(1);
  TabTo("Storyboard");
  Key(SDLK_DOWN);
  StepTo(SDLK_LEFT, "A");
  Key(SDLK_APPLICATION);
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::Shot);
  MarkInMenu(SDLK_DOWN, "Delete");
  Key(SDLK_RETURN);
  EXPECT_EQ(GetBoard().GetStory()->GetSequenceCount(), 0U) << "with its sequence";
}

// ---- menus ----

TEST_F(ViewerMenuKeysTest, an_item_is_marked_by_arrows_and_chosen_by_enter) {
  Key(SDLK_APPLICATION);
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::View);
  EXPECT_FALSE(marked.name.empty()) << "the first is marked at once";
  EXPECT_EQ(marked.role, FocusRole::MenuButton);
  MarkInMenu(SDLK_DOWN, "Pan");
  EXPECT_EQ(marked.role, FocusRole::MenuItem);
  EXPECT_FALSE(marked.on);
  Key(SDLK_RETURN);
  EXPECT_FALSE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetView(0).GetManager().GetActiveTool(), zovview::TOOL_PAN);
  EXPECT_TRUE(marked.name.empty());
}

TEST_F(ViewerMenuKeysTest, a_list_opens_to_the_right_and_closes_to_the_left) {
  Key(SDLK_APPLICATION);
  MarkInMenu(SDLK_DOWN, "Ground");
  EXPECT_EQ(marked.role, FocusRole::MenuButton);
  Key(SDLK_RIGHT);
  EXPECT_EQ(marked.role, FocusRole::MenuItem);
  Key(SDLK_LEFT);
  EXPECT_EQ(marked.name, "Ground");
  EXPECT_TRUE(viewer->IsMenuOpen());
  Key(SDLK_RIGHT);
  Key(SDLK_ESCAPE);
  EXPECT_EQ(marked.name, "Ground") << "one level";
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(viewer->IsMenuOpen());
}

TEST_F(ViewerMenuKeysTest, a_letter_goes_to_the_next_item_that_begins_with_it) {
  Key(SDLK_APPLICATION);
  Key(SDLK_l);
  ASSERT_EQ(marked.name.substr(0, 1), "L");
  const std::string first = marked.name;
  Key(SDLK_l);
  ASSERT_EQ(marked.name.substr(0, 1), "L");
  EXPECT_NE(marked.name, first);
  EXPECT_EQ(viewer->GetView(0).GetManager().GetActiveTool(), zovview::TOOL_ORBIT)
      << "the letter is the menu's";
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(viewer->IsMenuOpen());
}

TEST_F(ViewerMenuKeysTest, both_keys_of_menus_open_the_menu_of_what_is_under_the_focus) {
  AddShots(1);
  viewer->GetView(0).Run(*zovview::FindViewCommand("toggle-tools"));
  ComeToRest();
  const struct {
    const char* group;
    Kind menu;
  } rows[] = {{"Cube", Kind::Cube},
              {"Navigation bar", Kind::Bar},
              {"Toolbar", Kind::Bar},
              {"Storyboard", Kind::View}};  // of what has no menu itself
  for (const auto& row : rows) {
    SCOPED_TRACE(row.group);
    for (const auto& [key, held] :
         {std::pair(SDLK_F10, KMOD_LSHIFT), std::pair(SDLK_APPLICATION, KMOD_NONE)}) {
      TabTo(row.group);
      Key(key, held);
      EXPECT_TRUE(viewer->IsMenuOpen());
      EXPECT_EQ(viewer->GetOpenMenu(), row.menu);
      EXPECT_FALSE(viewer->GetView(0).GetStory().IsPresenting());
      EXPECT_FALSE(marked.name.empty()) << "keys go on in it";
      Key(SDLK_ESCAPE);
      EXPECT_FALSE(viewer->IsMenuOpen());
      EXPECT_EQ(present.group, row.group) << "and is under the focus still";
    }
  }
}

TEST_F(ViewerMenuKeysTest, the_key_of_menus_opens_that_of_the_cube_on_its_buttons_too) {
  TabTo("Cube");
  Key(SDLK_TAB);
  ASSERT_EQ(present.id, Korvane::Orientor::OVERLAY_HOME);
  Key(SDLK_F10, KMOD_LSHIFT);
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::Cube);
}

TEST_F(ViewerMenuKeysTest, the_key_of_menus_opens_that_of_the_view_where_nothing_has_the_focus) {
  AddShots(1);
  Key(SDLK_F10, KMOD_LSHIFT);
  ASSERT_TRUE(viewer->IsMenuOpen());
  EXPECT_EQ(viewer->GetOpenMenu(), Kind::View);
  EXPECT_FALSE(viewer->GetView(0).GetStory().IsPresenting());
}

TEST_F(ViewerMenuKeysTest, a_flyout_is_used_by_keys) {
  TabTo("Navigation bar");
  StepTo(SDLK_DOWN, present.name);
  for (int i = 0; i < 20 && present.role != FocusRole::MenuButton; ++i) Key(SDLK_DOWN);
  ASSERT_EQ(present.role, FocusRole::MenuButton);
  Key(SDLK_RETURN);
  ASSERT_TRUE(viewer->IsMenuOpen());
  const std::string first = marked.name;
  EXPECT_FALSE(first.empty());
  Key(SDLK_DOWN);
  EXPECT_NE(marked.name, first);
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(viewer->IsMenuOpen());
  EXPECT_EQ(present.role, FocusRole::MenuButton) << "and is under the focus again";
}

}  // namespace
