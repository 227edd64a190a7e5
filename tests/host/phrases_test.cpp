// The words of panels: how they are found, filled and put into the order of the screen; and that the tables
// of all languages hold the same.
#include "zovhost/phrases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

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

}  // namespace
