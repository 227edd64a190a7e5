// What the viewer keeps between two runs, and what it makes of files that are not as it left them.
#include "settings/settings_file.h"

#include <gtest/gtest.h>
#if !defined(_WIN32)
#  include <sys/stat.h>
#endif

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "korvane/helm_disc.h"
#include "program.h"

namespace {

namespace fs = std::filesystem;
using apps_test::TemporaryFolder;
using Korvane::DiscType;
using Korvane::HelmDisc;
using Korvane::HelmDiscParameters;
using zovview::SettingsFile;

std::string ReadText(const fs::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

class SettingsFileTest : public testing::Test {
 protected:
  bool Read() { return settings.Read(disc, error); }
  bool Keep() { return settings.Keep(disc, error); }
  bool ReadFrom(const std::string& text) {
    folder.Write("settings.json", text);
    return Read();
  }
  void ExpectDefaults() const {
    const HelmDiscParameters& now = disc.GetParameters();
    EXPECT_FALSE(now.welcomeSeen);
    EXPECT_EQ(now.largeDiscSize, 128);
    EXPECT_EQ(now.miniDiscSize, 64);
    EXPECT_EQ(now.walkSpeedFactor, 1.0);
    EXPECT_EQ(disc.GetDefaultDiscType(), DiscType::FullNavigation);
  }

  TemporaryFolder folder;
  const fs::path file = folder.GetPath() / "settings.json";
  SettingsFile settings{file};
  HelmDisc disc;
  std::string error;
};

TEST_F(SettingsFileTest, a_first_start_reads_nothing_and_writes_nothing) {
  EXPECT_TRUE(Read()) << error;
  EXPECT_TRUE(Keep());
  ExpectDefaults();
  EXPECT_TRUE(folder.IsEmpty());
}

TEST_F(SettingsFileTest, every_setting_is_read_as_it_was_kept) {
  ASSERT_TRUE(Read());
  HelmDiscParameters& set = disc.GetParameters();
  set.welcomeSeen = set.invertLookVertical = set.clickZoom = true;
  set.showMessages = set.showTooltips = set.showToolHUDs = set.keepSceneUpright = false;
  set.largeDiscSize = 256;
  set.miniDiscSize = 32;
  set.largeDiscOpacity = 2.0;
  set.miniDiscOpacity = 0.5;
  set.walkSpeedFactor = 1.3;
  disc.SetDefaultDiscType(DiscType::MiniTourBuilding);
  ASSERT_TRUE(Keep()) << error;

  HelmDisc other;
  SettingsFile again(file);
  ASSERT_TRUE(again.Read(other, error)) << error;
  const HelmDiscParameters& read = other.GetParameters();
  EXPECT_TRUE(read.welcomeSeen && read.invertLookVertical && read.clickZoom);
  EXPECT_FALSE(read.showMessages || read.showTooltips || read.showToolHUDs || read.keepSceneUpright);
  EXPECT_EQ(read.largeDiscSize, 256);
  EXPECT_EQ(read.miniDiscSize, 32);
  EXPECT_EQ(read.largeDiscOpacity, 2.0);
  EXPECT_EQ(read.miniDiscOpacity, 0.5);
  EXPECT_EQ(read.walkSpeedFactor, 1.3);
  EXPECT_EQ(other.GetDefaultDiscType(), DiscType::MiniTourBuilding);
}

TEST_F(SettingsFileTest, reduced_motion_is_read_as_it_was_kept) {
  ASSERT_TRUE(Read());
  EXPECT_FALSE(settings.GetChoices().reducedMotion);
  settings.GetChoices().reducedMotion = true;
  ASSERT_TRUE(Keep()) << error;
  SettingsFile again(file);
  ASSERT_TRUE(again.Read(disc, error)) << error;
  EXPECT_TRUE(again.GetChoices().reducedMotion);
}

TEST_F(SettingsFileTest, reduced_motion_that_is_no_switch_is_refused) {
  EXPECT_FALSE(ReadFrom(R"({"version": 1, "reducedMotion": 1})"));
  EXPECT_NE(error.find("reducedMotion"), std::string::npos) << error;
  EXPECT_FALSE(settings.GetChoices().reducedMotion);
}

TEST_F(SettingsFileTest, choices_for_the_program_are_read_as_they_were_kept) {
  ASSERT_TRUE(Read());
  settings.GetChoices() = {
      false, "pl", "white", "middle-orbits", "scene", "folded", {"/a/house.glb", "\xC3\xA4.obj"}};
  ASSERT_TRUE(Keep()) << error;
  SettingsFile again(file);
  ASSERT_TRUE(again.Read(disc, error)) << error;
  const zovview::Choices& read = again.GetChoices();
  EXPECT_EQ(read.language, "pl");
  EXPECT_EQ(read.ground, "white");
  EXPECT_EQ(read.navigationStyle, "middle-orbits");
  EXPECT_EQ(read.pivotPolicy, "scene");
  EXPECT_EQ(read.panel, "folded");
  EXPECT_EQ(read.recentFiles, (std::vector<std::string>{"/a/house.glb", "\xC3\xA4.obj"}));
}

TEST_F(SettingsFileTest, a_file_name_that_is_no_text_harms_nobody) {
  ASSERT_TRUE(Read());
  settings.GetChoices().recentFiles = {"/a/\xFF\xFE.obj", "/a/house.glb"};
  ASSERT_TRUE(Keep()) << error;
  SettingsFile again(file);
  ASSERT_TRUE(again.Read(disc, error)) << error;
  EXPECT_EQ(again.GetChoices().recentFiles.at(1), "/a/house.glb");
}

TEST_F(SettingsFileTest, places_of_bars_are_read_as_they_were_kept) {
  using Korvane::Toolbar;
  for (const Toolbar::Position edge :
       {Toolbar::POSITION_LEFT, Toolbar::POSITION_TOP, Toolbar::POSITION_RIGHT, Toolbar::POSITION_BOTTOM}) {
    ASSERT_TRUE(Read()) << error;
    const zovview::BarPlace place = {edge == Toolbar::POSITION_TOP, edge == Toolbar::POSITION_LEFT, edge,
                                     -12.5};
    settings.GetBarPlaces().navigation = place;
    settings.GetBarPlaces().tools = {true, false, edge, 7.0};
    ASSERT_TRUE(Keep()) << error;
    SettingsFile again(file);
    ASSERT_TRUE(again.Read(disc, error)) << error;
    zovview::BarPlace expected = place;
    if (expected.linked) expected.edge = Toolbar::POSITION_RIGHT;  // a bar under the cube is on no edge
    EXPECT_EQ(again.GetBarPlaces().navigation, expected);
    EXPECT_EQ(again.GetBarPlaces().tools, (zovview::BarPlace{true, false, edge, 7.0}));
  }
}

TEST_F(SettingsFileTest, what_is_missing_of_a_bar_is_as_on_a_first_start) {
  ASSERT_TRUE(ReadFrom("{\"version\": 1, \"navigationBar\": {\"at\": \"top\"}}")) << error;
  const zovview::BarPlaces& bars = settings.GetBarPlaces();
  EXPECT_EQ(bars.navigation, (zovview::BarPlace{true, false, Korvane::Toolbar::POSITION_TOP, 0.0}));
  EXPECT_EQ(bars.tools, zovview::BarPlaces().tools);
}

TEST_F(SettingsFileTest, the_cube_is_read_as_it_was_kept) {
  using Look = Korvane::OrientorParameters;
  zovview::KeptCube cube;
  for (int i = Look::SIZE_AUTOMATIC; i <= Look::SIZE_LARGE; ++i) {
    ASSERT_TRUE(Read()) << error;
    cube.size = static_cast<Look::Size>(i);
    cube.corner = static_cast<Look::Location>(i % 4);
    cube.opacity = i % 2 == 0 ? 0.25 : 0.8;
    cube.compass = !cube.compass;
    cube.fitsOnClick = i > 2;
    cube.snaps = !cube.snaps;
    settings.GetCube() = cube;
    ASSERT_TRUE(Keep()) << error;
    SettingsFile again(file);
    ASSERT_TRUE(again.Read(disc, error)) << error;
    EXPECT_EQ(again.GetCube(), cube) << i;
  }
}

TEST_F(SettingsFileTest, an_older_file_has_the_cube_of_a_first_start) {
  ASSERT_TRUE(ReadFrom("{\"version\": 1, \"largeDiscSize\": 64}")) << error;
  EXPECT_EQ(settings.GetCube(), zovview::KeptCube());
  ASSERT_TRUE(ReadFrom("{\"version\": 1, \"orientationCube\": {\"compass\": true}}")) << error;
  zovview::KeptCube expected;
  expected.compass = true;
  EXPECT_EQ(settings.GetCube(), expected);
}

// ---- more than one ----

TEST_F(SettingsFileTest, what_two_views_choose_is_kept_of_both) {
  ASSERT_TRUE(Read());
  HelmDisc second;
  second.GetParameters() = disc.GetParameters();
  ASSERT_TRUE(settings.Keep(second, error, 1));
  EXPECT_TRUE(folder.IsEmpty()) << "nothing was chosen";
  disc.GetParameters().clickZoom = true;
  ASSERT_TRUE(settings.Keep(disc, error, 0)) << error;
  second.GetParameters().miniDiscSize = 32;
  settings.GetCube().compass = true;
  ASSERT_TRUE(settings.Keep(second, error, 1)) << error;
  settings.GetCube().compass = false;
  ASSERT_TRUE(settings.Keep(disc, error, 0)) << "which has none still";
  HelmDisc other;
  SettingsFile again(file);
  ASSERT_TRUE(again.Read(other, error)) << error;
  EXPECT_TRUE(other.GetParameters().clickZoom);
  EXPECT_EQ(other.GetParameters().miniDiscSize, 32);
  EXPECT_TRUE(again.GetCube().compass);
}

TEST_F(SettingsFileTest, what_another_program_has_kept_meanwhile_stays) {
  ASSERT_TRUE(Read());
  SettingsFile beside(file);
  HelmDisc itsDisc;
  ASSERT_TRUE(beside.Read(itsDisc, error));
  itsDisc.GetParameters().clickZoom = true;
  beside.GetChoices().language = "pl";
  ASSERT_TRUE(beside.Keep(itsDisc, error)) << error;
  disc.GetParameters().largeDiscSize = 256;
  ASSERT_TRUE(Keep()) << error;
  HelmDisc other;
  SettingsFile again(file);
  ASSERT_TRUE(again.Read(other, error)) << error;
  EXPECT_TRUE(other.GetParameters().clickZoom);
  EXPECT_EQ(other.GetParameters().largeDiscSize, 256);
  EXPECT_EQ(again.GetChoices().language, "pl");
}

TEST_F(SettingsFileTest, a_file_that_a_newer_program_has_written_meanwhile_stays) {
  ASSERT_TRUE(Read());
  const std::string newer = "{\"version\": 2}";
  folder.Write("settings.json", newer);
  disc.GetParameters().clickZoom = true;
  EXPECT_FALSE(Keep());
  EXPECT_NE(error.find("newer"), std::string::npos) << error;
  disc.GetParameters().clickZoom = false;
  EXPECT_TRUE(Keep()) << "told once";
  EXPECT_EQ(ReadText(file), newer);
}

TEST_F(SettingsFileTest, a_file_that_was_broken_meanwhile_is_set_aside) {
  ASSERT_TRUE(ReadFrom("{\"version\": 1, \"largeDiscSize\": 64}"));
  folder.Write("settings.json", "broken");
  disc.GetParameters().clickZoom = true;
  ASSERT_TRUE(Keep()) << error;
  HelmDisc other;
  ASSERT_TRUE(SettingsFile(file).Read(other, error)) << error;
  EXPECT_EQ(other.GetParameters().largeDiscSize, 64);
  EXPECT_TRUE(other.GetParameters().clickZoom);
  EXPECT_EQ(ReadText(SettingsFile::FindAside(file)), "broken");
}

#if !defined(_WIN32)

TEST_F(SettingsFileTest, a_link_is_written_through) {
  const fs::path target = folder.Write("elsewhere.json", "{\"version\": 1, \"largeDiscSize\": 64}");
  fs::create_symlink(target, file);
  ASSERT_TRUE(Read()) << error;
  disc.GetParameters().clickZoom = true;
  ASSERT_TRUE(Keep()) << error;
  EXPECT_TRUE(fs::is_symlink(file));
  EXPECT_NE(ReadText(target).find("\"clickZoom\": true"), std::string::npos);
}

TEST_F(SettingsFileTest, a_pipe_in_its_place_is_not_waited_for) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_FALSE(Read());
  EXPECT_NE(error.find("cannot be read"), std::string::npos) << error;
  ExpectDefaults();
}

#endif

TEST_F(SettingsFileTest, every_kind_of_disc_has_a_name) {
  ASSERT_TRUE(Read());
  for (int kind = 0; kind < 7; ++kind) {
    disc.SetDefaultDiscType(static_cast<DiscType>(kind));
    ASSERT_TRUE(Keep());
    HelmDisc other;
    ASSERT_TRUE(SettingsFile(file).Read(other, error)) << error;
    EXPECT_EQ(other.GetDefaultDiscType(), static_cast<DiscType>(kind));
  }
}

TEST_F(SettingsFileTest, the_file_appears_whole_with_its_folder_and_alone) {
  const fs::path deep = folder.GetPath() / "a" / "b" / "settings.json";
  SettingsFile inFolder(deep);
  ASSERT_TRUE(inFolder.Read(disc, error));
  disc.GetParameters().welcomeSeen = true;
  ASSERT_TRUE(inFolder.Keep(disc, error)) << error;
  EXPECT_TRUE(fs::is_regular_file(deep));
  EXPECT_EQ(std::distance(fs::directory_iterator(deep.parent_path()), fs::directory_iterator()), 1);
}

TEST_F(SettingsFileTest, what_has_not_changed_is_not_written) {
  ASSERT_TRUE(ReadFrom("{\"version\": 1, \"largeDiscSize\": 64}"));
  EXPECT_EQ(disc.GetParameters().largeDiscSize, 64);
  EXPECT_TRUE(Keep());
  EXPECT_EQ(ReadText(file), "{\"version\": 1, \"largeDiscSize\": 64}");
  disc.GetParameters().clickZoom = true;
  EXPECT_TRUE(Keep());
  EXPECT_NE(ReadText(file).find("\"clickZoom\": true"), std::string::npos);
  EXPECT_NE(ReadText(file).find("\"largeDiscSize\": 64"), std::string::npos);
}

TEST_F(SettingsFileTest, what_is_missing_and_what_is_unknown_does_no_harm) {
  EXPECT_TRUE(ReadFrom("{\"version\": 1}")) << error;
  ExpectDefaults();
  EXPECT_TRUE(ReadFrom("{\"version\": 1, \"colour\": \"red\", \"miniDiscSize\": 128}")) << error;
  EXPECT_EQ(disc.GetParameters().miniDiscSize, 128);
}

std::string Repeat(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

std::string OneNumber(const char* name, double value) {
  std::ostringstream text;
  text << "{\"version\": 1, \"" << name << "\": " << value << "}";
  return text.str();
}

TEST_F(SettingsFileTest, each_number_has_its_bounds_which_are_still_good) {
  struct Row {
    const char* name;
    double least;
    double most;
    double step;
  };
  const Row rows[] = {{"largeDiscSize", 16, 1024, 1},
                      {"miniDiscSize", 16, 1024, 1},
                      {"largeDiscOpacity", 0.1, 3.0, 0.01},
                      {"miniDiscOpacity", 0.1, 3.0, 0.01},
                      {"walkSpeedFactor", 0.1, 50.0, 0.01}};
  for (const Row& row : rows) {
    EXPECT_TRUE(ReadFrom(OneNumber(row.name, row.least))) << row.name << error;
    EXPECT_TRUE(ReadFrom(OneNumber(row.name, row.most))) << row.name << error;
    EXPECT_FALSE(ReadFrom(OneNumber(row.name, row.least - row.step))) << row.name;
    EXPECT_FALSE(ReadFrom(OneNumber(row.name, row.most + row.step))) << row.name;
  }
}

TEST_F(SettingsFileTest, a_file_with_much_room_in_it_is_read) {
  EXPECT_TRUE(ReadFrom("{\"version\": 1, \"clickZoom\": true}" + std::string(60'000, ' '))) << error;
  EXPECT_TRUE(disc.GetParameters().clickZoom);
}

TEST_F(SettingsFileTest, what_is_unknown_may_be_nested_and_stays) {
  const std::string nested = std::string(31, '[') + std::string(31, ']');
  ASSERT_TRUE(ReadFrom("{\"version\": 1, \"x\": " + nested + "}")) << error;
  disc.GetParameters().clickZoom = true;
  ASSERT_TRUE(Keep()) << error;
  HelmDisc other;
  EXPECT_TRUE(SettingsFile(file).Read(other, error)) << error;
  EXPECT_NE(ReadText(file).find("\"x\""), std::string::npos);
}

TEST_F(SettingsFileTest, what_others_have_written_gives_way_where_it_leaves_no_room) {
  const std::string head = "{\n  \"version\": 1,\n  \"x\": \"";
  const std::string full = head + std::string(131'072 - head.size() - 4, 'a') + "\"\n}\n";
  ASSERT_TRUE(ReadFrom(full)) << error;
  disc.GetParameters().clickZoom = true;
  ASSERT_TRUE(Keep()) << error;
  HelmDisc other;
  EXPECT_TRUE(SettingsFile(file).Read(other, error)) << error;
  EXPECT_TRUE(other.GetParameters().clickZoom);
  EXPECT_EQ(ReadText(SettingsFile::FindAside(file)), full);
}

struct BrokenFile {
  const char* name;
  std::string text;
};
class BrokenSettings : public SettingsFileTest, public testing::WithParamInterface<BrokenFile> {};

TEST_P(BrokenSettings, are_told_in_one_line_change_nothing_and_are_replaced_when_something_changes) {
  EXPECT_FALSE(ReadFrom(GetParam().text));
  EXPECT_NE(error.find(file.string()), std::string::npos) << error;
  EXPECT_EQ(error.find('\n'), std::string::npos) << error;
  ExpectDefaults();
  EXPECT_TRUE(Keep());
  EXPECT_EQ(ReadText(file), GetParam().text) << "nothing has changed";
  disc.GetParameters().welcomeSeen = true;
  EXPECT_TRUE(Keep());
  HelmDisc other;
  EXPECT_TRUE(SettingsFile(file).Read(other, error)) << error;
  EXPECT_TRUE(other.GetParameters().welcomeSeen);
  EXPECT_EQ(ReadText(SettingsFile::FindAside(file)), GetParam().text) << "it is set aside";
}

INSTANTIATE_TEST_SUITE_P(
    each, BrokenSettings,
    testing::Values(
        BrokenFile{"empty", ""}, BrokenFile{"cut_off", "{\"version\": 1, \"welco"},
        BrokenFile{"no_object", "[1, 2]"}, BrokenFile{"no_version", "{\"welcomeSeen\": true}"},
        BrokenFile{"version_0", "{\"version\": 0}"}, BrokenFile{"version_in_words", "{\"version\": \"one\"}"},
        BrokenFile{"bytes", std::string("\0\xFF\xFE{\x80", 5)}, BrokenFile{"deep", std::string(2000, '[')},
        BrokenFile{"just_too_deep",
                   "{\"version\": 1, \"x\": " + std::string(33, '[') + std::string(33, ']') + "}"},
        BrokenFile{"deep_and_closed",
                   "{\"version\": 1, \"x\": " + std::string(120'000, '[') + std::string(120'000, ']') + "}"},
        BrokenFile{"objects_in_objects",
                   "{\"version\": 1, \"x\": " + Repeat("{\"a\": ", 30'000) + "0" + Repeat("}", 30'000) + "}"},
        BrokenFile{"endless_names", "{\"version\": 1" + Repeat(", \"a\": 0", 20'000) + "}"},
        BrokenFile{"longer_when_it_is_written", "{\"version\": 1, \"x\": [0" + Repeat(",0", 100'000) + "]}"},
        BrokenFile{"huge", "{\"version\": 1}" + std::string(270'000, ' ')},
        BrokenFile{"a_number_for_a_switch", "{\"version\": 1, \"welcomeSeen\": 1}"},
        BrokenFile{"a_fraction_for_a_size", "{\"version\": 1, \"largeDiscSize\": 64.5}"},
        BrokenFile{"a_size_of_0", "{\"version\": 1, \"largeDiscSize\": 0}"},
        BrokenFile{"a_size_beyond_all_numbers", "{\"version\": 1, \"miniDiscSize\": 1e999}"},
        BrokenFile{"a_size_of_many_digits", "{\"version\": 1, \"miniDiscSize\": 99999999999999999999}"},
        BrokenFile{"too_fast", "{\"version\": 1, \"walkSpeedFactor\": 51}"},
        BrokenFile{"null", "{\"version\": 1, \"walkSpeedFactor\": null}"},
        BrokenFile{"no_such_edge", "{\"version\": 1, \"navigationBar\": {\"at\": \"middle\"}}"},
        BrokenFile{"a_bar_in_words", "{\"version\": 1, \"navigationBar\": \"left\"}"},
        BrokenFile{"an_offset_in_words", "{\"version\": 1, \"toolbar\": {\"offset\": \"far\"}}"},
        BrokenFile{"an_offset_beyond_any_view", "{\"version\": 1, \"toolbar\": {\"offset\": 1e300}}"},
        BrokenFile{"tools_under_the_cube", "{\"version\": 1, \"toolbar\": {\"at\": \"cube\"}}"},
        BrokenFile{"shown_as_a_number", "{\"version\": 1, \"toolbar\": {\"shown\": 1}}"},
        BrokenFile{"a_language_as_a_number", "{\"version\": 1, \"language\": 7}"},
        BrokenFile{"no_such_language", "{\"version\": 1, \"language\": \"tlh\"}"},
        BrokenFile{"no_such_ground", "{\"version\": 1, \"ground\": \"plaid\"}"},
        BrokenFile{"no_such_style", "{\"version\": 1, \"navigationStyle\": \"own \"}"},
        BrokenFile{"no_such_pivot", "{\"version\": 1, \"pivotPolicy\": \"First\"}"},
        BrokenFile{"no_such_panel", "{\"version\": 1, \"panel\": \"half\"}"},
        BrokenFile{"a_ground_of_endless_words",
                   "{\"version\": 1, \"ground\": \"" + std::string(5'000, 'a') + "\"}"},
        BrokenFile{"recent_files_in_words", "{\"version\": 1, \"recentFiles\": \"all\"}"},
        BrokenFile{"a_recent_file_as_a_switch", "{\"version\": 1, \"recentFiles\": [true]}"},
        BrokenFile{"endless_recent_files",
                   "{\"version\": 1, \"recentFiles\": [\"a\"" + Repeat(", \"a\"", 40) + "]}"},
        BrokenFile{"the_cube_in_words", "{\"version\": 1, \"orientationCube\": \"large\"}"},
        BrokenFile{"no_such_size", "{\"version\": 1, \"orientationCube\": {\"size\": \"huge\"}}"},
        BrokenFile{"no_such_corner", "{\"version\": 1, \"orientationCube\": {\"corner\": 1}}"},
        BrokenFile{"too_opaque", "{\"version\": 1, \"orientationCube\": {\"opacity\": 1.01}}"},
        BrokenFile{"a_compass_as_a_number", "{\"version\": 1, \"orientationCube\": {\"compass\": 1}}"},
        BrokenFile{"no_such_disc", "{\"version\": 1, \"lastDisc\": \"round\"}"},
        BrokenFile{"one_wrong_spoils_all", "{\"version\": 1, \"largeDiscSize\": 64, \"lastDisc\": 2}"}),
    [](const testing::TestParamInfo<BrokenFile>& file) { return file.param.name; });

TEST_F(SettingsFileTest, a_newer_file_is_told_and_never_replaced) {
  const std::string newer = "{\"version\": 2, \"largeDiscSize\": 64}";
  EXPECT_FALSE(ReadFrom(newer));
  EXPECT_NE(error.find("newer"), std::string::npos) << error;
  ExpectDefaults();
  disc.GetParameters().welcomeSeen = true;
  EXPECT_TRUE(Keep());
  EXPECT_EQ(ReadText(file), newer);
}

TEST_F(SettingsFileTest, a_folder_in_its_place_is_told_once) {
  fs::create_directories(file / "inside");
  EXPECT_FALSE(Read());
  disc.GetParameters().welcomeSeen = true;
  EXPECT_FALSE(Keep());
  EXPECT_NE(error.find(file.string()), std::string::npos) << error;
  disc.GetParameters().clickZoom = true;
  EXPECT_TRUE(Keep()) << "it is not tried again";
  EXPECT_TRUE(fs::is_directory(file / "inside"));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.GetPath()), fs::directory_iterator()), 1);
}

TEST_F(SettingsFileTest, without_a_place_nothing_is_kept) {
  SettingsFile nowhere{fs::path()};
  EXPECT_TRUE(nowhere.Read(disc, error));
  disc.GetParameters().welcomeSeen = true;
  EXPECT_TRUE(nowhere.Keep(disc, error));
}

// ---- the place ----

class Environment {
 public:
  Environment(const char* variable, const char* value) : name(variable) {
    const char* const former = std::getenv(name);
    if (former != nullptr) before = former;
    if (value != nullptr) setenv(name, value, 1);
    if (value == nullptr) unsetenv(name);
  }
  ~Environment() {
    if (before.empty()) unsetenv(name);
    if (!before.empty()) setenv(name, before.c_str(), 1);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  const char* const name;
  std::string before;
};

TEST(SettingsPlaceTest, is_the_folder_of_configurations_of_the_user) {
  const Environment home("HOME", "/users/somebody");
  {
    const Environment given("XDG_CONFIG_HOME", "/etc/of somebody");
    EXPECT_EQ(SettingsFile::FindPlace(), "/etc/of somebody/zovview/settings.json");
  }
  for (const char* useless : {static_cast<const char*>(nullptr), "", "relative/folder"}) {
    const Environment given("XDG_CONFIG_HOME", useless);
    EXPECT_EQ(SettingsFile::FindPlace(), "/users/somebody/.config/zovview/settings.json");
  }
}

TEST(SettingsPlaceTest, is_nowhere_without_a_home) {
  const Environment given("XDG_CONFIG_HOME", nullptr);
  const Environment home("HOME", nullptr);
  EXPECT_EQ(SettingsFile::FindPlace(), fs::path());
}

}  // namespace
