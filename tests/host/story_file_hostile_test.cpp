// Files that are no stories, or that were made to harm: one line each, nothing read, and no time or memory
// lost.
#include <gtest/gtest.h>

#if !defined(_WIN32)
#  include <sys/stat.h>
#  include <unistd.h>
#endif

#include <filesystem>
#include <ostream>
#include <string>

#include "scene_files.h"
#include "story_texts.h"
#include "zovhost/story_file.h"
#include "zovhost/whole_file.h"

namespace {

namespace fs = std::filesystem;
using zovhost::StoryFile;

std::string Repeat(const std::string& text, int count) {
  std::string all;
  all.reserve(text.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

/// A shot with this value for this field.
std::string WithField(const std::string& name, const std::string& value) {
  return FileOfShots(ShotText(", \"" + name + "\": " + value));
}
std::string WithCameraField(const std::string& name, const std::string& value) {
  return FileOfShots(ShotText("", CameraText(", \"" + name + "\": " + value)));
}
std::string WithHead(const std::string& head) { return "{" + head + R"("story": {}})"; }

// ---- by name ----

struct HostileText {
  const char* name;
  std::string text;
  const char* error;  // all of it
};
void PrintTo(const HostileText& text, std::ostream* out) { *out << text.name; }
class HostileStory : public testing::TestWithParam<HostileText> {};

TEST_P(HostileStory, is_refused_in_one_line) { EXPECT_EQ(GetParseError(GetParam().text), GetParam().error); }

std::string NameOf(const testing::TestParamInfo<HostileText>& row) { return row.param.name; }

constexpr const char* NO_JSON = "line 1: it is no JSON";

INSTANTIATE_TEST_SUITE_P(
    no_json, HostileStory,
    testing::Values(
        HostileText{"empty", "", "line 1: it ends too early"},
        HostileText{"blanks", " \n\n ", "line 3: it ends too early"},
        HostileText{"an_end_of_text", std::string(1, '\0'), NO_JSON},
        HostileText{"two_values", FileText("{}") + FileText("{}"), NO_JSON},
        HostileText{"a_comma_too_many", R"({"format": "zovtools story",})", NO_JSON},
        HostileText{"a_remark", "// a story\n" + FileText("{}"), NO_JSON},
        HostileText{"no_quotes", "{format: 1}", NO_JSON},
        HostileText{"a_later_line", "{\n\"format\": \n  oops}", "line 3: it is no JSON"},
        HostileText{"not_a_number", WithField("duration", "NaN"), NO_JSON},
        HostileText{"infinity", WithField("duration", "Infinity"), NO_JSON},
        HostileText{"minus_infinity", WithField("duration", "-Infinity"), NO_JSON},
        HostileText{"a_number_beyond_all", WithField("duration", "1e999"), "line 1: a number is too large"},
        HostileText{"one_beyond_the_other_way", WithCameraField("left_fov", "-1e999"),
                    "line 1: a number is too large"},
        HostileText{"a_hexadecimal_number", WithField("duration", "0x10"), NO_JSON},
        HostileText{"half_of_a_pair", FileText(R"({"name": "\ud834"})"), NO_JSON},
        HostileText{"the_other_half", FileText(R"({"name": "\udd1e"})"), NO_JSON},
        HostileText{"not_utf_8", FileText("{\"name\": \"\xFF\"}"), NO_JSON},
        HostileText{"utf_8_cut_off", FileText("{\"name\": \"\xE2\x82\"}"), NO_JSON},
        HostileText{"utf_8_longer_than_needed", FileText("{\"name\": \"\xC0\x80\"}"), NO_JSON},
        HostileText{"a_surrogate_in_utf_8", FileText("{\"name\": \"\xED\xA0\x80\"}"), NO_JSON},
        HostileText{"a_bare_new_line_in_a_name", FileText("{\"name\": \"a\nb\"}"), "line 2: it is no JSON"},
        HostileText{"utf_16", std::string("\xFF\xFE{\0}\0", 6), NO_JSON},
        HostileText{"a_mark_for_the_order_of_bytes_alone", "\xEF\xBB\xBF", "line 1: it ends too early"},
        HostileText{"half_a_mark", "\xEF\xBB", "line 1: it ends too early"}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    head, HostileStory,
    testing::Values(
        HostileText{"a_number", "1", "it is no story"}, HostileText{"null", "null", "it is no story"},
        HostileText{"a_list", "[]", "it is no story"}, HostileText{"nothing_in_it", "{}", "it is no story"},
        HostileText{"no_format", WithHead(R"("version": 1, )"), "it is no story"},
        HostileText{"a_format_in_numbers", WithHead(R"("format": 1, "version": 1, )"), "it is no story"},
        HostileText{"no_version", WithHead(R"("format": "zovtools story", )"), "it has no version"},
        HostileText{"version_0", WithHead(R"("format": "zovtools story", "version": 0, )"),
                    "it has no version"},
        HostileText{"a_negative_version", WithHead(R"("format": "zovtools story", "version": -1, )"),
                    "it has no version"},
        HostileText{"a_version_in_words", WithHead(R"("format": "zovtools story", "version": "1", )"),
                    "it has no version"},
        HostileText{"a_newer_version", WithHead(R"("format": "zovtools story", "version": 2, )"),
                    "it is of version 2, which is newer than this program"},
        HostileText{"no_story", R"({"format": "zovtools story", "version": 1})", "story: it is missing"}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    wrong_kinds, HostileStory,
    testing::Values(
        HostileText{"a_story_of_null", FileText("null"), "story: it is no object"},
        HostileText{"a_story_in_a_list", FileText("[{}]"), "story: it is no object"},
        HostileText{"a_name_in_numbers", FileText(R"({"name": 1})"), "story.name: it is no text"},
        HostileText{"sequences_in_an_object", FileText(R"({"sequences": {}})"),
                    "story.sequences: it is no list"},
        HostileText{"a_sequence_of_null", FileText(R"({"sequences": [{}, null]})"),
                    "story.sequences[1]: it is no object"},
        HostileText{"a_sequence_named_null", FileText(R"({"sequences": [{"name": null}]})"),
                    "story.sequences[0].name: it is no text"},
        HostileText{"shots_in_words", FileText(R"({"sequences": [{"shots": "two"}]})"),
                    "story.sequences[0].shots: it is no list"},
        HostileText{"a_shot_of_7", FileOfShots("7"), "story.sequences[0].shots[0]: it is no object"},
        HostileText{"one_wrong_spoils_all", FileOfShots(ShotText() + ", " + ShotText(R"(, "name": [])")),
                    "story.sequences[0].shots[1].name: it is no text"},
        HostileText{"a_duration_in_words", WithField("duration", R"("3")"),
                    "story.sequences[0].shots[0].duration: it is no number"},
        HostileText{"a_duration_of_null", WithField("duration", "null"),
                    "story.sequences[0].shots[0].duration: it is no number"},
        HostileText{"a_switch_of_1", WithField("lookAtCenterOfInterest", "1"),
                    "story.sequences[0].shots[0].lookAtCenterOfInterest: it is neither true nor false"},
        HostileText{"a_walk_in_an_object", WithField("recordedElements", "{}"),
                    "story.sequences[0].shots[0].recordedElements: it is no list"},
        HostileText{"an_element_of_true", WithField("recordedElements", "[true]"),
                    "story.sequences[0].shots[0].recordedElements[0]: it is no object"},
        HostileText{"an_element_without_a_camera", WithField("recordedElements", R"([{"time": 0}])"),
                    "story.sequences[0].shots[0].recordedElements[0].camera: it is missing"},
        HostileText{"a_time_in_words",
                    WithField("recordedElements", R"([{"time": "now", "camera": )" + CameraText() + "}]"),
                    "story.sequences[0].shots[0].recordedElements[0].time: it is no number"}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    cameras, HostileStory,
    testing::Values(
        HostileText{"none", FileOfShots("{}"), "story.sequences[0].shots[0].camera: it is missing"},
        HostileText{"in_a_list", FileOfShots(R"({"camera": []})"),
                    "story.sequences[0].shots[0].camera: it is no object"},
        HostileText{"without_an_eye", FileOfShots(R"({"camera": {"centre": [0,0,0], "up": [0,1,0]}})"),
                    "story.sequences[0].shots[0].camera.eye: it is missing"},
        HostileText{"without_a_centre", FileOfShots(R"({"camera": {"eye": [0,0,0], "up": [0,1,0]}})"),
                    "story.sequences[0].shots[0].camera.centre: it is missing"},
        HostileText{"without_an_up", FileOfShots(R"({"camera": {"eye": [0,0,0], "centre": [0,1,0]}})"),
                    "story.sequences[0].shots[0].camera.up: it is missing"},
        HostileText{"with_a_pivot_of_2_numbers", WithCameraField("pivot", "[1, 2]"),
                    "story.sequences[0].shots[0].camera.pivot: it is no three numbers"},
        HostileText{"with_a_pivot_of_4_numbers", WithCameraField("pivot", "[1, 2, 3, 4]"),
                    "story.sequences[0].shots[0].camera.pivot: it is no three numbers"},
        HostileText{"with_a_pivot_of_texts", WithCameraField("pivot", R"([1, 2, "3"])"),
                    "story.sequences[0].shots[0].camera.pivot: it is no three numbers"},
        HostileText{"with_a_pivot_in_an_object", WithCameraField("pivot", R"({"x": 1, "y": 2, "z": 3})"),
                    "story.sequences[0].shots[0].camera.pivot: it is no three numbers"},
        HostileText{"with_an_angle_in_words", WithCameraField("left_fov", R"("45 degrees")"),
                    "story.sequences[0].shots[0].camera.left_fov: it is no number"},
        HostileText{
            "with_a_switch_in_words", WithCameraField("perspective_with_ortho", R"("true")"),
            "story.sequences[0].shots[0].camera.perspective_with_ortho: it is neither true nor false"},
        HostileText{"of_projection_1", WithCameraField("projection_type", "1"),
                    "story.sequences[0].shots[0].camera.projection_type: it is none of the names for it"}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    choices, HostileStory,
    testing::Values(HostileText{"a_type_of_no_shot", WithField("shotType", R"("fly")"),
                                "story.sequences[0].shots[0].shotType: it is none of the names for it"},
                    HostileText{"a_type_in_capitals", WithField("shotType", R"("Orbit")"),
                                "story.sequences[0].shots[0].shotType: it is none of the names for it"},
                    HostileText{"a_number_for_a_type", WithField("shotType", "7"),
                                "story.sequences[0].shots[0].shotType: it is none of the names for it"},
                    HostileText{"a_negative_type", WithField("shotType", "-1"),
                                "story.sequences[0].shots[0].shotType: it is none of the names for it"},
                    HostileText{"a_huge_type", WithField("shotType", "9223372036854775808"),
                                "story.sequences[0].shots[0].shotType: it is none of the names for it"},
                    HostileText{"a_type_of_null", WithField("shotType", "null"),
                                "story.sequences[0].shots[0].shotType: it is none of the names for it"},
                    HostileText{"no_such_place", WithField("cameraPosition", "-1"),
                                "story.sequences[0].shots[0].cameraPosition: it is none of the names for it"},
                    HostileText{
                        "no_such_transition", WithField("transitionType", "4294967298"),
                        "story.sequences[0].shots[0].transitionType: it is none of the names for it"}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    twice, HostileStory,
    testing::Values(HostileText{"a_known_field", WithField("duration", R"(1, "duration": 2)"),
                                R"("duration" stands twice in one object)"},
                    HostileText{"an_unknown_field", FileText("{}", R"(, "x": 1, "x": 1)"),
                                R"("x" stands twice in one object)"},
                    HostileText{"a_field_within_an_unknown_one",
                                FileText("{}", R"(, "x": [{"y": 1, "y": 2}])"),
                                R"("y" stands twice in one object)"},
                    HostileText{"a_name_in_escapes", FileText("{}", R"(, "\u0078": 1, "x": 1)"),
                                R"("x" stands twice in one object)"},
                    HostileText{"a_name_of_two_lines", FileText("{}", R"(, "a\nb": 1, "a\nb": 1)"),
                                R"("a\nb" stands twice in one object)"},
                    HostileText{"a_long_name",
                                FileText("{}", ", \"" + std::string(500, 'x') + "\": 1, \"" +
                                                   std::string(500, 'x') + "\": 1"),
                                R"("xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx" stands twice in one object)"}),
    NameOf);

constexpr const char* TOO_DEEP = "it is nested more than 32 deep";

// The object of the file is one of them.
std::string NestedLists(int depth) {
  return FileText("{}", ", \"x\": " + std::string(static_cast<std::size_t>(depth), '[') +
                            std::string(static_cast<std::size_t>(depth), ']'));
}

INSTANTIATE_TEST_SUITE_P(
    too_much, HostileStory,
    testing::Values(HostileText{"brackets_by_the_thousand", std::string(100'000, '['), TOO_DEEP},
                    HostileText{"objects_by_the_thousand", Repeat("{\"a\":", 100'000), TOO_DEEP},
                    HostileText{"an_unknown_field_by_the_thousand", NestedLists(100'000), TOO_DEEP},
                    HostileText{"an_unknown_field_that_is_just_too_deep", NestedLists(32), TOO_DEEP},
                    HostileText{"a_million_shots",
                                FileOfShots(Repeat(ShotText() + ",", 999'999) + ShotText()),
                                "it is too large"},
                    HostileText{"a_million_shots_of_nothing", FileOfShots(Repeat("{},", 999'999) + "{}"),
                                "story.sequences[0].shots: there are too many"},
                    HostileText{"shots_of_several_sequences",
                                FileText(R"({"sequences": [{"shots": [)" + ShotText() + R"(]}, {"shots": [)" +
                                         Repeat(ShotText() + ",", 9'999) + ShotText() + "]}]}"),
                                "story.sequences[1].shots: there are too many"},
                    HostileText{"sequences", FileText(R"({"sequences": [)" + Repeat("{},", 10'000) + "{}]}"),
                                "story.sequences: there are too many"},
                    HostileText{"values", FileText("{}", ", \"x\": [" + Repeat("0,", 4'000'000) + "0]"),
                                "it holds more than 4000000 values"}),
    NameOf);

TEST(HostileStories, what_is_just_within_the_limits_is_read) {
  StoryFile file;
  ParseWhole(file, NestedLists(31));
  // The file, its format, its version, its story and the list are values too.
  ParseWhole(file, FileText("{}", ", \"x\": [" + Repeat("0,", 3'999'994) + "0]"));
  EXPECT_EQ(
      ParseWhole(file, FileText(R"({"sequences": [)" + Repeat("{},", 9'999) + "{}]}"))->GetSequenceCount(),
      10'000U);
}

// ---- damage ----

std::string WholeExample() {
  const std::string element = R"({"time": 1e-3, "camera": )" + CameraText() + "}";
  return FileText(
      R"({"name": "h\u00e4user \ud834\udd1e", "sequences": [{"name": "s", "shots": [)" +
          ShotText(R"(, "shotType": "look", "lookAtCenterOfInterest": true, "recordedElements": [)" +
                       element + "]",
                   CameraText(R"(, "left_fov": -12.5)")) +
          "]}]}",
      R"(, "more": [null, {"a": false}])");
}

TEST(HostileStories, a_file_that_is_cut_off_at_any_byte_is_refused) {
  const std::string text = WholeExample();
  StoryFile file;
  ParseWhole(file, text);
  for (std::size_t size = 0; size < text.size(); ++size) {
    EXPECT_EQ(GetParseError(text.substr(0, size)), "line 1: it ends too early") << size;
  }
}

TEST(HostileStories, any_byte_may_be_another_and_what_is_read_can_be_written) {
  const std::string text = WholeExample();
  int good = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    for (const char wrong :
         {'\0', '\n', '"', '\\', '0', '9', '-', 'e', '[', ']', '{', '}', ',', ':', '\x80', '\xFF'}) {
      std::string damaged = text;
      damaged[at] = wrong;
      StoryFile file;
      std::string error;
      const auto story = file.Parse(damaged, error);
      EXPECT_EQ(error.empty(), story != nullptr) << at;
      EXPECT_EQ(error.find('\n'), std::string::npos) << error;
      if (story == nullptr) continue;
      ++good;
      ParseWhole(file, FormatWhole(file, *story));
    }
  }
  EXPECT_GT(good, 500) << "a blank or a digit may well be another";
}

// ---- files ----

std::string GetReadError(const fs::path& path) {
  StoryFile file;
  std::string error;
  EXPECT_EQ(file.Read(path, error), nullptr) << path;
  EXPECT_EQ(error.find(path.string() + ": "), 0U) << error;
  EXPECT_GT(error.size(), path.string().size() + 4) << "no reason given";
  EXPECT_EQ(error.find('\n'), std::string::npos) << error;
  return error;
}

TEST(HostileFiles, one_that_is_not_there_is_told) {
  const TemporaryFolder folder;
  GetReadError(folder.path / "nothing.json");
  GetReadError(folder.path / "no folder" / "nothing.json");
  EXPECT_EQ(folder.CountFiles(), 0U);
}

TEST(HostileFiles, a_folder_is_no_file) {
  const TemporaryFolder folder;
  EXPECT_EQ(GetReadError(folder.path), folder.path.string() + ": it is no file");
}

TEST(HostileFiles, a_broken_file_is_told_by_its_name) {
  const TemporaryFolder folder;
  const fs::path path = folder.Write("house.json", "{");
  EXPECT_EQ(GetReadError(path), path.string() + ": line 1: it ends too early");
}

TEST(HostileFiles, one_that_is_too_large_is_not_read) {
  const TemporaryFolder folder;
  const fs::path path = folder.Write("house.json", FileText("{}"));
  fs::resize_file(path, (std::uintmax_t{64} << 20) + 1);
  EXPECT_EQ(GetReadError(path), path.string() + ": it is too large");
}

TEST(HostileFiles, as_many_bytes_as_asked_for_are_read) {
  const TemporaryFolder folder;
  const std::string bytes(100'000, '\xFF');
  const fs::path path = folder.Write("bytes", bytes);
  std::string read;
  std::string error;
  EXPECT_TRUE(zovhost::ReadWholeFile(path, bytes.size(), read, error)) << error;
  EXPECT_EQ(read, bytes);
  read = "before";
  EXPECT_FALSE(zovhost::ReadWholeFile(path, bytes.size() - 1, read, error));
  EXPECT_EQ(read, "before");
}

#if !defined(_WIN32)
TEST(HostileFiles, a_pipe_that_nobody_writes_is_not_waited_for) {
  const TemporaryFolder folder;
  const fs::path path = folder.path / "pipe";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_EQ(GetReadError(path), path.string() + ": it is no file");
}

TEST(HostileFiles, one_that_may_not_be_read_is_told) {
  const TemporaryFolder folder;
  const fs::path path = folder.Write("house.json", FileText("{}"));
  fs::permissions(path, fs::perms::none);
  StoryFile file;
  std::string error;
  const bool mayReadAnything = geteuid() == 0;
  EXPECT_EQ(file.Read(path, error) != nullptr, mayReadAnything);
  EXPECT_EQ(error, mayReadAnything ? "" : path.string() + ": it cannot be opened");
}
#endif

#if defined(__linux__)
TEST(HostileFiles, one_whose_bytes_do_not_come_is_told) {
  // A file as any other by its kind; nothing is at its first address.
  EXPECT_EQ(GetReadError("/proc/self/mem"), "/proc/self/mem: it cannot be read");
}
#endif

}  // namespace
