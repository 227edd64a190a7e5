// Fields that a text is typed in: letters that are read from the right are joined and in their order, at rest
// and while they are typed.
#include "zovhost/text_field.h"

#include <gtest/gtest.h>
#include <imgui.h>

#include <string>

#include "host/panel_hand.h"
#include "support/drawn_texts.h"
#include "zovhost/languages.h"
#include "zovhost/phrases.h"

namespace {

// Forms of letters as they are joined in "لقطة".
constexpr wchar_t FIRST = 0xFEDF;
constexpr wchar_t SECOND = 0xFED8;
constexpr wchar_t THIRD = 0xFEC4;
constexpr wchar_t LAST = 0xFE94;

class TextFieldTest : public testing::Test, public PanelHand {
 protected:
  static constexpr float LEFT = 10.0F;  // of the panel, whose field takes most of it
  static constexpr float WIDE = 200.0F;
  static constexpr int LINE = 30;

  void SetUp() override {
    Open([this] {
      const float left =
          zovhost::GetPhrases().GetLanguage().rightToLeft ? ImGui::GetIO().DisplaySize.x - LEFT - WIDE : LEFT;
      ImGui::SetNextWindowPos(ImVec2(left, 10.0F));
      ImGui::SetNextWindowSize(ImVec2(WIDE, 100.0F));
      ImGui::Begin("panel", nullptr, ImGuiWindowFlags_NoDecoration);
      ImGui::SetNextItemWidth(180.0F);
      zovhost::DrawTextField("##field", text);
      ImGui::End();
    });
  }
  void TearDown() override { zovhost::SpeakLanguage(zovhost::GetLanguages().front()); }

  void Show(const char* tag, const std::string& wanted) {
    zovhost::SpeakLanguage(*zovhost::FindLanguage(tag));
    text = wanted;
    Rest();
    Rest();  // with the characters that it was to be drawn with
  }
  void Key(SDL_Keycode key) {
    for (const Uint32 type : {SDL_KEYDOWN, SDL_KEYUP}) {
      SDL_Event event = {};
      event.type = type;
      event.key.keysym.sym = key;
      event.key.keysym.scancode = SDL_GetScancodeFromKey(key);
      SDL_PushEvent(&event);
      Rest();
    }
  }
  static float FindPlace(wchar_t code) {
    const DrawnTexts texts(*ImGui::GetDrawData());
    const DrawnTexts::Character* const found = texts.Find(code);
    return found != nullptr ? found->low.x : -1.0F;
  }
  static void ExpectJoined() {
    EXPECT_GT(FindPlace(LAST), 0.0F);
    EXPECT_LT(FindPlace(LAST), FindPlace(THIRD));
    EXPECT_LT(FindPlace(THIRD), FindPlace(SECOND));
    EXPECT_LT(FindPlace(SECOND), FindPlace(FIRST));
  }

  std::string text;
};

TEST_F(TextFieldTest, letters_are_joined_and_stand_at_the_right_of_a_mirrored_field) {
  Show("ar", "لقطة");
  ExpectJoined();
  EXPECT_GT(FindPlace(FIRST), 180.0F);
  EXPECT_GT(FindPlace(LAST), 140.0F);
}

TEST_F(TextFieldTest, letters_stay_joined_while_they_are_typed) {
  Show("ar", "لقطة");
  Click(100, LINE);
  ASSERT_TRUE(ImGui::GetIO().WantTextInput);
  ExpectJoined();
  EXPECT_GT(FindPlace(FIRST), 180.0F);
  Type("ا");
  EXPECT_EQ(text, "لقطةا") << "at its end, which is at the left";
  EXPECT_LT(FindPlace(0xFE8D), FindPlace(THIRD));
}

TEST_F(TextFieldTest, a_click_puts_the_caret_where_it_shows) {
  Show("ar", "لقطة");
  Click(193, LINE);
  Type("1");
  EXPECT_EQ(text, "1لقطة");
  Key(SDLK_RETURN);
  Show("ar", "لقطة");
  Click(193, LINE);
  Key(SDLK_END);
  Type("2");
  EXPECT_EQ(text, "لقطة2");
}

TEST_F(TextFieldTest, arrows_lead_the_caret_on_the_screen) {
  Show("ar", "لقطة");
  Click(193, LINE);
  Key(SDLK_LEFT);
  Key(SDLK_LEFT);
  Key(SDLK_RIGHT);
  Type("9");
  EXPECT_EQ(text, "ل9قطة");
}

TEST_F(TextFieldTest, in_other_languages_they_are_joined_at_the_left) {
  Show("en", "لقطة");
  ExpectJoined();
  EXPECT_LT(FindPlace(FIRST), 90.0F);
  Click(150, LINE);
  ExpectJoined();
  Type("x");
  EXPECT_EQ(text.substr(text.size() - 1), "x");
}

TEST_F(TextFieldTest, a_path_begins_at_the_left_with_its_names_joined) {
  Show("ar", "/a/لقطة.z");
  ExpectJoined();
  EXPECT_LT(FindPlace(L'/'), 40.0F);
  EXPECT_LT(FindPlace(L'a'), FindPlace(LAST));
  EXPECT_GT(FindPlace(L'z'), FindPlace(FIRST));
}

TEST_F(TextFieldTest, a_text_that_is_longer_than_its_field_shows_the_caret) {
  std::string words;
  for (int i = 0; i < 12; ++i) words += "لقطة ";
  Show("ar", words + "ج");
  EXPECT_EQ(FindPlace(0xFE9D), -1.0F) << "its end has no room";
  Click(193, LINE);
  Key(SDLK_END);
  EXPECT_GT(FindPlace(0xFE9D), 15.0F);
  EXPECT_LT(FindPlace(0xFE9D), 60.0F);
  Key(SDLK_HOME);
  EXPECT_EQ(FindPlace(0xFE9D), -1.0F);
  EXPECT_GT(FindPlace(FIRST), 15.0F);
}

TEST_F(TextFieldTest, what_is_read_from_the_left_is_typed_as_ever) {
  for (const char* const tag : {"en", "ar"}) {
    Show(tag, "ab");
    EXPECT_LT(FindPlace(L'a'), FindPlace(L'b')) << tag;
    EXPECT_LT(FindPlace(L'b'), 60.0F) << tag;
    Click(100, LINE);
    Key(SDLK_LEFT);
    Type("c");
    EXPECT_EQ(text, "acb") << tag;
    Key(SDLK_RETURN);
  }
}

TEST_F(TextFieldTest, a_text_of_any_bytes_does_no_harm) {
  for (const std::string& bytes :
       {std::string("\xD9\x84\xFF\xD9"), std::string("\xEF\xBB\xBF\xD9\x84"), std::string(5000, '\xD8')}) {
    Show("ar", bytes);
    Click(100, LINE);
    Key(SDLK_END);
    Type("1");
    Key(SDLK_RETURN);
  }
}

}  // namespace
