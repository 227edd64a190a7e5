// The words of panels: how they are found, filled and put into the order of the screen; and that the tables
// of all languages hold the same.
#include "zovhost/phrases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "../../host/src/texts/reading_order.h"
#include "zovhost/wide_text.h"

namespace {

using zovhost::FindLanguage;
using zovhost::GetLanguages;
using zovhost::Language;
using zovhost::Phrases;

const Phrases& In(std::string_view tag) { return Phrases::Find(*FindLanguage(tag)); }

TEST(Phrases, are_found_by_the_english_ones) {
  EXPECT_STREQ(In("de").Say("Save"), "Speichern");
  EXPECT_STREQ(In("en").Say("Save"), "Save");
  EXPECT_TRUE(In("de").Has("Save"));
}

TEST(Phrases, that_no_table_has_stay_english) {
  EXPECT_STREQ(In("de").Say("Not a phrase"), "Not a phrase");
  EXPECT_STREQ(In("de").SayLabel("Not a phrase"), "Not a phrase");
  EXPECT_FALSE(In("de").Has("Not a phrase"));
  EXPECT_EQ(In("de").Say("{} of nothing", {"7"}), "7 of nothing");
}

TEST(Phrases, of_an_item_have_one_identifier_in_each_language) {
  EXPECT_STREQ(In("en").SayLabel("Save"), "Save###Save");
  EXPECT_STREQ(In("de").SayLabel("Save"), "Speichern###Save");
}

TEST(Phrases, have_places_for_values) {
  EXPECT_EQ(In("de").Say("{} triangles", {"12"}), "12 Dreiecke");
  EXPECT_EQ(In("de").SayPlain("Opening {}", {"house.ifc"}), "house.ifc wird geöffnet");
  EXPECT_EQ(In("en").Say("{2}, {1}", {"a", "b"}), "b, a");
  EXPECT_EQ(In("en").Say("{} {} {}", {"a"}), "a  ");
  EXPECT_EQ(In("en").Say("{ {x} {0}", {"a"}), "{ {x} {0}");
}

TEST(Phrases, become_formats_of_numbers) {
  EXPECT_EQ(In("de").SayFormat("{} units", "%.2f"), "%.2f Einheiten");
  EXPECT_EQ(In("en").SayFormat("100% of {}", "%d"), "100%% of %d");
  EXPECT_EQ(In("en").SayFormat("no place", "%d"), "no place");
}

TEST(Phrases, name_keys_as_a_keyboard_has_them) {
  EXPECT_EQ(In("de").SayKey("Ctrl+Z"), "Strg+Z");
  EXPECT_EQ(In("de").SayKey("Home"), "Pos1");
  EXPECT_EQ(In("en").SayKey("Ctrl+Shift+Z"), "Ctrl+Shift+Z");
  EXPECT_EQ(In("de").SayKey("F2"), "F2");
  EXPECT_EQ(In("de").SayKey(""), "");
}

TEST(Phrases, are_found_in_lines_that_were_put_together) {
  const Phrases& german = In("de");
  EXPECT_EQ(german.TranslateLine("the file is empty"), "die Datei ist leer");
  EXPECT_EQ(german.TranslateLine("a: b.obj: the file is empty"), "a: b.obj: die Datei ist leer");
  EXPECT_EQ(german.TranslateLine("a.obj: it cannot be opened: Permission denied"),
            "a.obj: die Datei lässt sich nicht öffnen: Permission denied");
  EXPECT_EQ(german.TranslateLine("a.json: it is of version 31, which is newer than this program"),
            "a.json: Version 31 ist neuer als dieses Programm");
  EXPECT_EQ(german.TranslateLine("a.json: line 12: it is no JSON"), "a.json: Zeile 12: das ist kein JSON");
  EXPECT_EQ(german.TranslateLine("a.json: nobody knows"), "a.json: nobody knows");
  EXPECT_EQ(german.TranslateLine(""), "");
}

TEST(Phrases, of_the_process_are_english_until_it_is_told) {
  EXPECT_EQ(zovhost::GetPhrases().GetLanguage().tag, "en");
  zovhost::SpeakLanguage(*FindLanguage("de"));
  EXPECT_STREQ(zovhost::Say("Save"), "Speichern");
  EXPECT_STREQ(zovhost::SayLabel("Save"), "Speichern###Save");
  EXPECT_EQ(zovhost::Say("{} triangles", {"1"}), "1 Dreiecke");
  zovhost::SpeakLanguage({"xx", "no language"});
  EXPECT_STREQ(zovhost::Say("Save"), "Save");
}

// ---- what is read from the right ----

// Letters join: alone, at the end, in the middle and at the beginning of a word a letter is four characters.
TEST(Phrases, that_are_read_from_the_right_are_drawn_with_joined_letters) {
  const std::wstring drawn = zovhost::Utf8ToWide(zovhost::JoinLetters("ببب ب"));
  EXPECT_EQ(drawn, L"\ufe91\ufe92\ufe90 \ufe8f");
  EXPECT_EQ(zovhost::Utf8ToWide(zovhost::JoinLetters("لا")), L"\ufefb");  // two that become one
  EXPECT_EQ(zovhost::JoinLetters("house.ifc\n(2)"), "house.ifc\n(2)");
  EXPECT_EQ(zovhost::JoinLetters(""), "");
  EXPECT_STREQ(In("ar").SayPlain("Save"), "حفظ");
  EXPECT_EQ(In("ar").Say("Save"), zovhost::JoinLetters("حفظ"));
  EXPECT_EQ(In("ar").SayFormat("{} units", "%.2f"), "%.2f " + zovhost::JoinLetters("وحدة"));
}

TEST(ReadingOrder, of_a_name_is_that_of_its_first_letter) {
  EXPECT_TRUE(zovhost::BeginsFromRight(L"12 \u05d0 a"));
  EXPECT_FALSE(zovhost::BeginsFromRight(L"12 a \u05d0"));
  EXPECT_FALSE(zovhost::BeginsFromRight(L"12"));
  EXPECT_FALSE(zovhost::BeginsFromRight(L""));
}

TEST(ReadingOrder, begins_where_the_line_begins) {
  const auto screen = [](const std::wstring& text, bool fromRight) {
    std::wstring drawn;
    for (const zovhost::PlacedCharacter& place : zovhost::FindScreenOrder(text, fromRight))
      drawn += place.drawn;
    return drawn;
  };
  EXPECT_EQ(screen(L"\u05d0\u05d1 12", true), L"12 \u05d1\u05d0");
  EXPECT_EQ(screen(L"\u05d0\u05d1 12", false), L"12 \u05d1\u05d0");
  EXPECT_EQ(screen(L"ab \u05d0\u05d1", true), L"\u05d1\u05d0 ab");
  EXPECT_EQ(screen(L"ab \u05d0\u05d1", false), L"ab \u05d1\u05d0");
  EXPECT_EQ(screen(L"(\u05d0)", true), L"(\u05d0)");  // brackets turn with their text
  EXPECT_EQ(screen(L"1\u202f234", true), L"1\u202f234");
  EXPECT_EQ(screen(L"", true), L"");
}

// ---- the tables ----

int CountPlaces(std::string_view text) { return static_cast<int>(std::ranges::count(text, '{')); }

TEST(PhraseTables, of_all_languages_have_the_same_phrases_and_places) {
  const auto english = In("en").GetKeys();
  const std::set<std::string_view> keys(english.begin(), english.end());
  EXPECT_EQ(keys.size(), english.size());
  for (const Language& language : GetLanguages()) {
    const Phrases& phrases = Phrases::Find(language);
    const auto own = phrases.GetKeys();
    EXPECT_EQ(std::set<std::string_view>(own.begin(), own.end()), keys) << language.tag;
    for (const std::string_view key : own) {
      const std::string spoken = phrases.SayPlain(std::string(key).c_str());
      EXPECT_FALSE(spoken.empty()) << language.tag << ": " << key;
      EXPECT_EQ(CountPlaces(spoken), CountPlaces(key)) << language.tag << ": " << key;
      EXPECT_EQ(spoken.find_first_of("\t\r"), std::string::npos) << language.tag << ": " << key;
      EXPECT_NE(spoken.back(), ' ') << language.tag << ": " << key;
    }
  }
}

}  // namespace
