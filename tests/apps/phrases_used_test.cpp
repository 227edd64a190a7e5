// What the program draws are phrases that the tables have, and the tables have no other ones.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "commands/view_commands.h"
#include "zovhost/phrases.h"

namespace {

namespace fs = std::filesystem;
using zovhost::Phrases;

const Phrases& English() { return Phrases::Find(*zovhost::FindLanguage("en")); }

std::string ReadFile(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

// The texts in a source; those that follow each other are one.
std::vector<std::string> FindLiterals(const fs::path& file) {
  static const std::regex remark(R"(//[^\n]*|#include[^\n]*)");
  static const std::regex literal(R"re("((?:[^"\\\n]|\\.)*)"(?:\s*"((?:[^"\\\n]|\\.)*)")?)re");
  const std::string source = std::regex_replace(ReadFile(file), remark, "");
  std::vector<std::string> literals;
  for (std::sregex_iterator it(source.begin(), source.end(), literal), end; it != end; ++it) {
    std::string text = (*it)[1].str() + (*it)[2].str();
    for (std::size_t at = text.find("\\u00b0"); at != std::string::npos; at = text.find("\\u00b0")) {
      text.replace(at, 6, "\u00b0");
    }
    literals.push_back(text);
  }
  return literals;
}

std::vector<fs::path> FindSources() {
  std::vector<fs::path> sources;
  for (const char* const folder : {"apps/zovview", "host/src"}) {
    for (const fs::directory_entry& entry :
         fs::recursive_directory_iterator(fs::path(ZOV_SOURCES) / folder)) {
      if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
        sources.push_back(entry.path());
    }
  }
  return sources;
}

TEST(PhrasesUsed, are_all_labels_of_commands) {
  std::set<std::string> languages;
  for (const zovhost::Language& language : zovhost::GetLanguages()) languages.emplace(language.ownName);
  for (const zovview::ViewCommand& command : zovview::GetViewCommands()) {
    const bool isName = languages.contains(command.label);
    EXPECT_NE(English().Has(command.label), isName) << command.label;
    EXPECT_EQ(isName,
              command.place == zovview::ViewCommand::Place::Languages && command.name != "language-system");
  }
}

// Names of keys that are more than a sign or a number.
TEST(PhrasesUsed, are_all_names_of_keys) {
  static const std::regex plain(R"(.|F\d+|)");
  for (const zovview::ViewCommand& command : zovview::GetViewCommands()) {
    std::istringstream keys(command.keyName);
    for (std::string key; std::getline(keys, key, '+');) {
      EXPECT_TRUE(std::regex_match(key, plain) || English().Has("[" + key + "]")) << key;
    }
  }
}

// Sources that draw: whatever in them is a word, and neither an identifier nor the name of a file or a
// command.
TEST(PhrasesUsed, are_all_words_of_panels) {
  static const std::regex word(R"([A-Za-z].*[a-z].*|\{\}.+)");
  static const std::regex identifier(R"([a-z0-9]+([-.][a-z0-9]+)+|[A-Z]\d*)");
  const fs::path root = ZOV_SOURCES;
  for (const char* const name :
       {"apps/zovview/panel/viewer_panel.cpp", "apps/zovview/commands/viewer_menus.cpp",
        "apps/zovview/stories/story_desk.cpp", "host/src/panels/shot_editor_panel.cpp",
        "host/src/panels/six_axis_panel.cpp"}) {
    for (const std::string& literal : FindLiterals(root / name)) {
      const bool drawn = std::regex_match(literal, word) && !std::regex_match(literal, identifier);
      const bool isCommand = zovview::FindViewCommand(literal) != nullptr;
      const bool isPhrase = English().Has(literal) || English().Has("[" + literal + "]");
      EXPECT_TRUE(!drawn || isCommand || isPhrase) << name << ": " << literal;
    }
  }
}

// Everywhere: what is asked for by name.
TEST(PhrasesUsed, are_in_the_tables_wherever_they_are_said) {
  static const std::regex said(
      R"re(\b(?:Say|SayLabel|SayPlain|SayFormat|SayWide|DrawFieldName)\(\s*"((?:[^"\\\n]|\\.)+)")re");
  int count = 0;
  for (const fs::path& file : FindSources()) {
    const std::string source = ReadFile(file);
    for (std::sregex_iterator it(source.begin(), source.end(), said), end; it != end; ++it, ++count) {
      EXPECT_TRUE(English().Has((*it)[1].str())) << file << ": " << (*it)[1].str();
    }
  }
  EXPECT_GT(count, 20);
}

// A line that is put together from parts has each of them in some source.
TEST(PhrasesUsed, are_all_that_there_are) {
  std::set<std::string> literals;
  for (const fs::path& file : FindSources()) {
    for (std::string& literal : FindLiterals(file)) literals.insert(std::move(literal));
  }
  const auto isInSome = [&literals](const std::string& part) {
    return std::ranges::any_of(
        literals, [&part](const std::string& each) { return each.find(part) != std::string::npos; });
  };
  static const std::regex place(R"(\{\}:? ?|: \{\}|: )");
  for (const std::string_view key : English().GetKeys()) {
    std::string phrase(key);
    if (literals.contains(phrase) || literals.contains(": " + phrase)) continue;
    if (phrase.front() == '[') {
      EXPECT_TRUE(isInSome(phrase.substr(1, phrase.size() - 2))) << key;
      continue;
    }
    EXPECT_NE(phrase.find_first_of("{:"), std::string::npos) << key;
    for (std::sregex_token_iterator part(phrase.begin(), phrase.end(), place, -1), end; part != end; ++part) {
      EXPECT_TRUE(isInSome(part->str())) << key << ", of which: " << part->str();
    }
  }
}

}  // namespace
