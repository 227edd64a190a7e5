// Panels in languages that are read from the right: where they stand, whom the pointer hits, and in which
// order their texts are; and the font, which grows with what is shown.
#include "zovhost/panel_texts.h"

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_stdlib.h>

#include <functional>
#include <string>

#include "host/panel_hand.h"
#include "support/drawn_texts.h"
#include "zovhost/phrases.h"

namespace {

class PanelTextsTest : public testing::Test, public PanelHand {
 protected:
  void SetUp() override {
    Open([this] {
      zovhost::PlaceNextPanel(10.0F, 10.0F, 0.0F, 0.0F, true);
      ImGui::SetNextWindowSize(ImVec2(200.0F, 200.0F));
      ImGui::Begin("panel", nullptr, ImGuiWindowFlags_NoDecoration);
      if (items) items();
      ImGui::End();
    });
  }
  void TearDown() override { zovhost::SpeakLanguage(zovhost::GetLanguages().front()); }

  void Speak(const char* tag) {
    zovhost::SpeakLanguage(*zovhost::FindLanguage(tag));
    Rest();
  }
  void Show(const std::function<void()>& shown) {
    items = shown;
    Rest();
  }
  static float FindPlace(wchar_t code) {
    const DrawnTexts texts(*ImGui::GetDrawData());
    const DrawnTexts::Character* const found = texts.Find(code);
    return found != nullptr ? found->low.x : -1.0F;
  }

  std::function<void()> items;
};

TEST_F(PanelTextsTest, a_mirrored_panel_stands_where_it_was_placed) {
  for (const char* const tag : {"en", "ar"}) {
    Speak(tag);
    EXPECT_TRUE(gui->IsOverPanel(50, 479 - 50)) << tag;
    EXPECT_TRUE(gui->IsOverPanel(205, 479 - 50)) << tag;
    EXPECT_FALSE(gui->IsOverPanel(215, 479 - 50)) << tag;
    EXPECT_FALSE(gui->IsOverPanel(5, 479 - 50)) << tag;
  }
}

TEST_F(PanelTextsTest, mirrored_items_are_hit_where_they_are_seen) {
  int clicks = 0;
  Show([&clicks] { clicks += ImGui::Button("x", ImVec2(50.0F, 20.0F)) ? 1 : 0; });
  Click(40, 30);
  EXPECT_EQ(clicks, 1);
  Speak("ar");
  EXPECT_GT(FindPlace(L'x'), 150.0F);
  Click(40, 30);
  EXPECT_EQ(clicks, 1);
  Click(180, 30);
  EXPECT_EQ(clicks, 2);
}

TEST_F(PanelTextsTest, names_and_numbers_are_read_from_the_left_and_words_from_the_right) {
  Speak("ar");
  Show([] { ImGui::TextUnformatted("ab 12"); });
  EXPECT_LT(FindPlace(L'a'), FindPlace(L'b'));
  EXPECT_LT(FindPlace(L'b'), FindPlace(L'1'));
  EXPECT_LT(FindPlace(L'1'), FindPlace(L'2'));
  EXPECT_GT(FindPlace(L'a'), 120.0F) << "at the right of the panel";
  Show([] { ImGui::TextUnformatted(zovhost::ToPanelText("ا د 12 (").c_str()); });
  EXPECT_GT(FindPlace(L'\ufe8d'), FindPlace(L'\ufea9'));
  EXPECT_GT(FindPlace(L'\ufea9'), FindPlace(L'2'));
  EXPECT_LT(FindPlace(L'1'), FindPlace(L'2'));
  EXPECT_GT(FindPlace(L'1'), FindPlace(L')')) << "the bracket that is opened at the right";
  EXPECT_EQ(FindPlace(L'('), -1.0F);
}

TEST_F(PanelTextsTest, a_word_from_the_right_is_in_order_among_others) {
  Show([] { ImGui::TextUnformatted(zovhost::ToPanelText("a اد b").c_str()); });
  EXPECT_LT(FindPlace(L'a'), FindPlace(L'\ufea9'));
  EXPECT_LT(FindPlace(L'\ufea9'), FindPlace(L'\ufe8d'));
  EXPECT_LT(FindPlace(L'\ufe8d'), FindPlace(L'b'));
}

TEST_F(PanelTextsTest, the_font_grows_with_what_is_shown) {
  const auto has = [] { return ImGui::GetIO().Fonts->Fonts[0]->FindGlyphNoFallback(0x4E2D) != nullptr; };
  EXPECT_FALSE(has());
  Show([] { ImGui::TextUnformatted(zovhost::ToPanelText("中").c_str()); });
  EXPECT_TRUE(has());
  EXPECT_GT(FindPlace(0x4E2D), 0.0F);
  Speak("de");
  EXPECT_TRUE(has()) << "also in another language";
}

TEST_F(PanelTextsTest, every_language_has_a_typeface) {
  for (const zovhost::Language& language : zovhost::GetLanguages()) {
    Speak(std::string(language.tag).c_str());
    EXPECT_EQ(gui->TakeProblem(), "");
    for (const wchar_t character : zovhost::GetPhrases().GetCharacters()) {
      const auto code = static_cast<ImWchar>(static_cast<unsigned>(character) & 0xFFFFU);
      EXPECT_NE(ImGui::GetIO().Fonts->Fonts[0]->FindGlyphNoFallback(code), nullptr)
          << language.tag << ": " << code;
    }
  }
}

// To the right is more, and what is typed stands as it was typed.
TEST_F(PanelTextsTest, upright_items_are_used_as_ever) {
  float number = 0.0F;
  std::string typed;
  for (const char* const tag : {"en", "ar"}) {
    Speak(tag);
    Show([&number] {
      ImGui::SetNextItemWidth(180.0F);
      const zovhost::UprightItem upright;
      ImGui::SliderFloat("##number", &number, 0.0F, 100.0F, "%.0f");
    });
    Click(190, 30);
    EXPECT_GT(number, 80.0F) << tag;
    Click(40, 30);
    EXPECT_LT(number, 20.0F) << tag;
    typed = "a12 \u05d0";
    Show([&typed] {
      zovhost::ToPanelText(typed);
      ImGui::SetNextItemWidth(180.0F);
      const zovhost::UprightItem upright;
      ImGui::InputText("##typed", &typed);
    });
    EXPECT_LT(FindPlace(L'1'), FindPlace(L'2')) << tag;
    EXPECT_LT(FindPlace(L'2'), FindPlace(0x5D0)) << tag;
    EXPECT_LT(FindPlace(0x5D0), 90.0F) << tag << ": at the left of its room";
    typed = "\u05d0 1";
    Rest();
    EXPECT_LT(FindPlace(L'1'), FindPlace(0x5D0)) << tag;
  }
  Show([] {});
}

TEST_F(PanelTextsTest, fields_stand_beside_the_widest_name) {
  constexpr const char* NAMES[] = {"Open", "Its view is"};
  Show([] {});
  gui->BeginFrame();
  const float least = zovhost::FindFieldColumn(NAMES, 400.0F);
  const float widest = zovhost::FindFieldColumn(NAMES, 0.0F);
  const float text = ImGui::CalcTextSize("Its view is").x;
  gui->EndFrame();
  EXPECT_EQ(least, 400.0F);
  EXPECT_GT(widest, text);
}

}  // namespace
