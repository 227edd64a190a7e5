#include "zovhost/languages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "zovhost/resource_pack.h"

namespace {

using zovhost::FindLanguage;
using zovhost::GetLanguages;
using zovhost::Language;
using zovhost::ResourcePack;

std::string TagOf(const Language* language) {
  return language != nullptr ? std::string(language->tag) : "none";
}

TEST(Languages, are_eight_with_english_first_and_one_from_the_right) {
  std::vector<std::string> tags;
  for (const Language& language : GetLanguages()) tags.emplace_back(language.tag);
  EXPECT_EQ(tags, (std::vector<std::string>{"en", "ar", "de", "es", "fr", "ja", "pl", "zh"}));
  for (const Language& language : GetLanguages()) {
    EXPECT_EQ(language.rightToLeft, language.tag == "ar") << language.tag;
    EXPECT_FALSE(language.ownName.empty()) << language.tag;
  }
}

TEST(Languages, are_found_by_tags_and_by_names_of_locales) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"de", "de"},         {"DE", "de"},          {"de-AT", "de"},     {"de_AT.UTF-8", "de"},
      {"pl_PL@euro", "pl"}, {"zh", "zh"},          {"zh-CN", "zh"},     {"zh_Hans_CN.GB18030", "zh"},
      {"zh-TW", "none"},    {"zh_HK", "none"},     {"zh-Hant", "none"}, {"zh-Hant-CN", "none"},
      {"", "none"},         {"C", "none"},         {"POSIX", "none"},   {"C.UTF-8", "none"},
      {"deu", "none"},      {"xx", "none"},        {"_DE", "none"},     {"-", "none"},
      {"ar-EG", "ar"},      {"ja_JP.eucJP", "ja"}, {"es-419", "es"},    {"fr_CA", "fr"},
      {"en_GB", "en"},
  };
  for (const auto& [wanted, tag] : rows) EXPECT_EQ(TagOf(FindLanguage(wanted)), tag) << wanted;
}

// Puts back what the environment was.
class Variables {
 public:
  explicit Variables(const std::vector<std::pair<std::string, std::string>>& values) {
    for (const char* const name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
      const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe)
      before.emplace_back(name, value != nullptr ? value : "");
      unsetenv(name);  // NOLINT(concurrency-mt-unsafe)
    }
    for (const auto& [name, value] : values) setenv(name.c_str(), value.c_str(), 1);
  }
  Variables(const Variables&) = delete;
  Variables& operator=(const Variables&) = delete;
  ~Variables() {
    for (const auto& [name, value] : before) {
      if (value.empty()) {
        unsetenv(name.c_str());  // NOLINT(concurrency-mt-unsafe)
      } else {
        setenv(name.c_str(), value.c_str(), 1);
      }
    }
  }

 private:
  std::vector<std::pair<std::string, std::string>> before;
};

TEST(Languages, of_the_user_come_from_the_environment) {
  struct Row {
    std::vector<std::pair<std::string, std::string>> variables;
    std::string tag;
  };
  const std::vector<Row> rows = {
      {{}, "en"},
      {{{"LANG", "pl_PL.UTF-8"}}, "pl"},
      {{{"LANG", "pl_PL.UTF-8"}, {"LC_MESSAGES", "fr_FR.UTF-8"}}, "fr"},
      {{{"LANG", "pl_PL"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "de_DE"}}, "de"},
      {{{"LANG", "pl_PL"}, {"LANGUAGE", "sv:zh_TW:ja:de"}}, "ja"},
      {{{"LANG", "pl_PL"}, {"LANGUAGE", "sv:nb"}}, "pl"},
      {{{"LANG", "sv_SE"}}, "en"},
      {{{"LANG", "C.UTF-8"}, {"LANGUAGE", "de"}}, "en"},
      {{{"LC_ALL", "POSIX"}, {"LANG", "de_DE"}}, "en"},
  };
  for (const Row& row : rows) {
    const Variables variables(row.variables);
    EXPECT_EQ(zovhost::GetUsersLanguage().tag, row.tag) << row.variables.size();
  }
}

// ---- texts ----

int CountOf(const std::string& text, const std::string& what) {
  int count = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

class EachLanguage : public testing::TestWithParam<Language> {
 protected:
  const std::shared_ptr<ResourcePack> pack = ResourcePack::Make(GetParam());
  const std::shared_ptr<const ResourcePack> english = ResourcePack::GetDefault();
};

TEST_P(EachLanguage, has_every_text_that_english_has) {
  EXPECT_EQ(pack->GetLanguage().tag, GetParam().tag);
  for (int id = 0; id < ResourcePack::stringCount; ++id) {
    const std::string& original = english->GetString(id);
    const std::string& text = pack->GetString(id);
    EXPECT_EQ(text.empty(), original.empty()) << id;
    EXPECT_EQ(CountOf(text, "%"), CountOf(original, "%")) << id;
    EXPECT_EQ(CountOf(text, "%d"), CountOf(original, "%d")) << id;
    EXPECT_EQ(CountOf(text, "\n"), CountOf(original, "\n")) << id;
  }
}

// What is one sentence in English is one in every language, so that nobody takes it for something else.
// Behind a single word there can be two, as a noun and a verb.
TEST_P(EachLanguage, says_the_same_where_english_does) {
  for (int a = 0; a < ResourcePack::stringCount; ++a) {
    if (CountOf(english->GetString(a), " ") == 0) continue;
    for (int b = a + 1; b < ResourcePack::stringCount; ++b) {
      if (english->GetString(a) != english->GetString(b)) continue;
      EXPECT_EQ(pack->GetString(a), pack->GetString(b)) << a << " and " << b;
    }
  }
}

TEST_P(EachLanguage, is_another_than_english) {
  int same = 0;
  for (int id = 0; id < ResourcePack::stringCount; ++id) {
    const std::string& text = pack->GetString(id);
    if (!text.empty() && text == english->GetString(id)) ++same;
  }
  if (GetParam().tag == "en") {
    EXPECT_GT(same, 100);
  } else {
    EXPECT_LT(same, 12);  // "Menu", "Zoom", "Pivot" and the letters of the compass are the same in some
  }
}

INSTANTIATE_TEST_SUITE_P(of_the_kit, EachLanguage,
                         testing::ValuesIn(GetLanguages().begin(), GetLanguages().end()),
                         [](const auto& each) { return std::string(each.param.tag); });

}  // namespace
