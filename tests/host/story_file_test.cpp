// Stories that are written and read again: every field, bit for bit, and what a file says beside them.
#include "zovhost/story_file.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <sstream>
#include <vector>

#include "korvane/storyboard.h"
#include "korvane/undo_queue.h"
#include "scene_files.h"
#include "story_texts.h"
#include "support/cameras.h"
#include "support/random.h"

namespace {

namespace fs = std::filesystem;
using Korvane::CameraParameters;
using Korvane::Sequence;
using Korvane::ShotSpecification;
using Korvane::Story;
using zovhost::StoryFile;

CameraParameters PlainCamera() {
  CameraParameters camera;
  camera.eye = {0, 0, 10};
  camera.up = {0, 1, 0};
  camera.left_fov = camera.right_fov = camera.top_fov = camera.bottom_fov = 45.0;
  camera.ortho_width = camera.ortho_height = 1.0;
  return camera;
}

ShotSpecification* AddShot(Sequence& sequence, const CameraParameters& camera,
                           const std::wstring& name = L"") {
  auto shot = std::make_unique<ShotSpecification>(camera);
  shot->SetName(name);
  return sequence.GetShot(sequence.AddShot(shot.release()));
}

Sequence* AddSequence(Story& story, const std::wstring& name = L"") {
  auto sequence = std::make_unique<Sequence>();
  sequence->SetName(name);
  return story.GetSequence(story.AddSequence(sequence.release()));
}

/// A story of one shot.
std::unique_ptr<Story> StoryOf(const ShotSpecification& shot) {
  auto story = std::make_unique<Story>();
  AddSequence(*story)->AddShot(std::make_unique<ShotSpecification>(shot).release());
  return story;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// ---- the same ----

bool SameNumber(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

void ExpectSameShot(const ShotSpecification& a, const ShotSpecification& b) {
  EXPECT_EQ(a.GetName(), b.GetName());
  EXPECT_TRUE(SameBits(a.GetCameraParameters(), b.GetCameraParameters()));
  EXPECT_EQ(a.GetShotType(), b.GetShotType());
  EXPECT_EQ(a.GetCameraPosition(), b.GetCameraPosition());
  EXPECT_EQ(a.GetTransitionType(), b.GetTransitionType());
  EXPECT_EQ(a.GetLookAtCenterOfInterest(), b.GetLookAtCenterOfInterest());
  EXPECT_TRUE(SameNumber(a.GetDuration(), b.GetDuration()));
  EXPECT_TRUE(SameNumber(a.GetTransitionDuration(), b.GetTransitionDuration()));
  EXPECT_TRUE(SameNumber(a.GetInOutDistance(), b.GetInOutDistance()));
  EXPECT_TRUE(SameNumber(a.GetLeftRightDistance(), b.GetLeftRightDistance()));
  EXPECT_TRUE(SameNumber(a.GetLeftRightAngle(), b.GetLeftRightAngle()));
  EXPECT_TRUE(SameNumber(a.GetUpDownDistance(), b.GetUpDownDistance()));
  EXPECT_TRUE(SameNumber(a.GetUpDownAngle(), b.GetUpDownAngle()));
  ASSERT_EQ(a.GetRecordedElementCount(), b.GetRecordedElementCount());
  for (std::uint64_t i = 0; i < a.GetRecordedElementCount(); ++i) {
    EXPECT_TRUE(SameBits(a.GetRecordedElement(i).camera, b.GetRecordedElement(i).camera)) << i;
    EXPECT_TRUE(SameNumber(a.GetRecordedElement(i).time, b.GetRecordedElement(i).time)) << i;
  }
}

void ExpectSameStory(const Story& a, const Story& b) {
  EXPECT_EQ(a.GetName(), b.GetName());
  ASSERT_EQ(a.GetSequenceCount(), b.GetSequenceCount());
  for (std::uint64_t i = 0; i < a.GetSequenceCount(); ++i) {
    const Sequence& one = *a.GetSequence(i);
    const Sequence& other = *b.GetSequence(i);
    EXPECT_EQ(one.GetName(), other.GetName());
    ASSERT_EQ(one.GetShotCount(), other.GetShotCount());
    for (std::uint64_t k = 0; k < one.GetShotCount(); ++k) ExpectSameShot(*one.GetShot(k), *other.GetShot(k));
  }
}

// ---- stories by chance ----

/// Any bits that are a finite number.
double AnyNumber(Random& random) {
  double number = std::numeric_limits<double>::quiet_NaN();
  while (!std::isfinite(number)) {
    std::uint64_t bits = 0;
    for (int i = 0; i < 4; ++i) bits = bits << 16U | static_cast<std::uint64_t>(random.Integer(0, 0xFFFF));
    number = std::bit_cast<double>(bits);
  }
  static constexpr double SPECIAL[] = {0.0, -0.0, 5e-324, -5e-324, 1e308, -1e308, 2.2250738585072014e-308,
                                       0.1};
  return random.Integer(0, 3) == 0 ? random.OneOf(SPECIAL) : number;
}

Korvane::Vector3 AnyPoint(Random& random) {
  const double x = AnyNumber(random);
  const double y = AnyNumber(random);
  return {x, y, AnyNumber(random)};
}

CameraParameters AnyCamera(Random& random) {
  CameraParameters camera;
  for (auto* const point : {&camera.eye, &camera.centre, &camera.up, &camera.pivot})
    *point = AnyPoint(random);
  for (auto* const number : {&camera.left_fov, &camera.right_fov, &camera.top_fov, &camera.bottom_fov,
                             &camera.ortho_width, &camera.ortho_height, &camera.projection_transition,
                             &camera.page_scale, &camera.page_origin_x, &camera.page_origin_y}) {
    *number = AnyNumber(random);
  }
  camera.projection_type = static_cast<CameraParameters::ProjectionType>(random.Integer(0, 1));
  camera.perspective_with_ortho = random.Coin();
  return camera;
}

/// Of characters of every kind, controls and ends of text among them.
std::wstring AnyName(Random& random) {
  static constexpr int LAST[] = {0x1F, 0x7F, 0x7FF, 0xD7FF, 0xFFFF, 0x10FFFF};
  std::wstring name;
  for (int length = random.Integer(0, 12); length > 0; --length) {
    int code = random.Integer(0, random.OneOf(LAST));
    if (code >= 0xD800 && code <= 0xDFFF) code = L'"';
    name.push_back(static_cast<wchar_t>(code));
  }
  return name;
}

ShotSpecification AnyShot(Random& random) {
  ShotSpecification shot(AnyCamera(random));
  shot.SetName(AnyName(random));
  shot.SetShotType(static_cast<ShotSpecification::ShotType>(random.Integer(0, 10)));
  shot.SetCameraPosition(static_cast<Korvane::TargetCamPos>(random.Integer(0, 2)));
  shot.SetTransitionType(static_cast<ShotSpecification::TransitionType>(random.Integer(0, 2)));
  shot.SetLookAtCenterOfInterest(random.Coin());
  shot.SetDuration(AnyNumber(random));
  shot.SetTransitionDuration(AnyNumber(random));
  shot.SetInOutDistance(AnyNumber(random));
  shot.SetLeftRightDistance(AnyNumber(random));
  shot.SetLeftRightAngle(AnyNumber(random));
  shot.SetUpDownDistance(AnyNumber(random));
  shot.SetUpDownAngle(AnyNumber(random));
  for (int left = random.Coin() ? 0 : random.Integer(0, 5); left > 0; --left) {
    shot.AddRecordedElement(AnyCamera(random), AnyNumber(random));
  }
  return shot;
}

std::unique_ptr<Story> AnyStory(Random& random) {
  auto story = std::make_unique<Story>();
  story->SetName(AnyName(random));
  for (int left = random.Integer(0, 3); left > 0; --left) {
    Sequence* const sequence = AddSequence(*story, AnyName(random));
    for (int shots = random.Integer(0, 3); shots > 0; --shots) {
      sequence->AddShot(std::make_unique<ShotSpecification>(AnyShot(random)).release());
    }
  }
  return story;
}

TEST(StoryFileTest, any_story_comes_back_bit_for_bit) {
  Random random;
  StoryFile file;
  int shots = 0;
  for (int i = 0; i < 2'000 && !testing::Test::HasFailure(); ++i) {
    const auto story = AnyStory(random);
    const std::string text = FormatWhole(StoryFile(), *story);
    const auto read = ParseWhole(file, text);
    ExpectSameStory(*story, *read);
    EXPECT_EQ(FormatWhole(file, *read), text);
    if (story->GetFirstSequence() != nullptr)
      shots += static_cast<int>(story->GetFirstSequence()->GetShotCount());
  }
  EXPECT_GT(shots, 1'000) << "a story by chance has something in it";
}

TEST(StoryFileTest, a_story_of_nothing_comes_back) {
  StoryFile file;
  const auto read = ParseWhole(file, FormatWhole(file, Story()));
  EXPECT_TRUE(read->IsEmpty());
  EXPECT_EQ(read->GetName(), L"");
}

// ---- each field ----

struct FieldRow {
  const char* name;
  std::string text;  // its value, as it is written
  void (*set)(ShotSpecification&);
};

template <double CameraParameters::*PLACE>
void SetLens(ShotSpecification& shot) {
  CameraParameters camera = shot.GetCameraParameters();
  camera.*PLACE = -7.25;
  shot.SetCameraParameters(camera);
}
template <Korvane::Vector3 CameraParameters::*PLACE>
void SetPoint(ShotSpecification& shot) {
  CameraParameters camera = shot.GetCameraParameters();
  camera.*PLACE = {1.5, -0.0, 1e308};
  shot.SetCameraParameters(camera);
}

const FieldRow FIELDS[] = {
    {"name", R"("tower")", [](ShotSpecification& shot) { shot.SetName(L"tower"); }},
    {"shotType", R"("track-left")",
     [](ShotSpecification& shot) { shot.SetShotType(ShotSpecification::SHOT_TRACK_LEFT); }},
    {"cameraPosition", R"("end")",
     [](ShotSpecification& shot) { shot.SetCameraPosition(Korvane::TARGET_CAM_END); }},
    {"transitionType", R"("cut")",
     [](ShotSpecification& shot) { shot.SetTransitionType(ShotSpecification::TRANSITION_CUT); }},
    {"transitionDuration", "5e-324", [](ShotSpecification& shot) { shot.SetTransitionDuration(5e-324); }},
    {"duration", "1e+308", [](ShotSpecification& shot) { shot.SetDuration(1e308); }},
    {"inOutDistance", "-0.0", [](ShotSpecification& shot) { shot.SetInOutDistance(-0.0); }},
    {"leftRightDistance", "0.1", [](ShotSpecification& shot) { shot.SetLeftRightDistance(0.1); }},
    {"upDownDistance", "-2.5", [](ShotSpecification& shot) { shot.SetUpDownDistance(-2.5); }},
    {"leftRightAngle", "90.0", [](ShotSpecification& shot) { shot.SetLeftRightAngle(90.0); }},
    {"upDownAngle", "-30.0", [](ShotSpecification& shot) { shot.SetUpDownAngle(-30.0); }},
    {"lookAtCenterOfInterest", "true", [](ShotSpecification& shot) { shot.SetLookAtCenterOfInterest(true); }},
};

const FieldRow CAMERA_FIELDS[] = {
    {"pivot", "[1.5,-0.0,1e+308]", SetPoint<&CameraParameters::pivot>},
    {"left_fov", "-7.25", SetLens<&CameraParameters::left_fov>},
    {"right_fov", "-7.25", SetLens<&CameraParameters::right_fov>},
    {"top_fov", "-7.25", SetLens<&CameraParameters::top_fov>},
    {"bottom_fov", "-7.25", SetLens<&CameraParameters::bottom_fov>},
    {"ortho_width", "-7.25", SetLens<&CameraParameters::ortho_width>},
    {"ortho_height", "-7.25", SetLens<&CameraParameters::ortho_height>},
    {"projection_transition", "-7.25", SetLens<&CameraParameters::projection_transition>},
    {"page_scale", "-7.25", SetLens<&CameraParameters::page_scale>},
    {"page_origin_x", "-7.25", SetLens<&CameraParameters::page_origin_x>},
    {"page_origin_y", "-7.25", SetLens<&CameraParameters::page_origin_y>},
    {"projection_type", R"("orthographic")",
     [](ShotSpecification& shot) {
       CameraParameters camera = shot.GetCameraParameters();
       camera.projection_type = CameraParameters::ProjectionType::Orthographic;
       shot.SetCameraParameters(camera);
     }},
    {"perspective_with_ortho", "true",
     [](ShotSpecification& shot) {
       CameraParameters camera = shot.GetCameraParameters();
       camera.perspective_with_ortho = true;
       shot.SetCameraParameters(camera);
     }},
};

// The points that every camera tells.
const FieldRow NEEDED_FIELDS[] = {
    {"eye", "[1.5,-0.0,1e+308]", SetPoint<&CameraParameters::eye>},
    {"centre", "[1.5,-0.0,1e+308]", SetPoint<&CameraParameters::centre>},
    {"up", "[1.5,-0.0,1e+308]", SetPoint<&CameraParameters::up>},
};

std::string MemberText(const FieldRow& row) { return std::string("\"") + row.name + "\": " + row.text; }

/// A file with this field alone is the plain shot with that set, and nothing else.
void ExpectIsRead(const FieldRow& row, const std::string& text) {
  SCOPED_TRACE(row.name);
  StoryFile file;
  const auto story = ParseWhole(file, text);
  ASSERT_NE(story->GetFirstSequence(), nullptr);
  ShotSpecification expected(PlainCamera());
  row.set(expected);
  ExpectSameShot(*story->GetFirstSequence()->GetFirstShot(), expected);
}

/// With that set, one line of the file is another.
void ExpectIsWritten(const FieldRow& row) {
  SCOPED_TRACE(row.name);
  const ShotSpecification plain(PlainCamera());
  ShotSpecification changed = plain;
  row.set(changed);
  const StoryFile file;
  const auto before = LinesOf(FormatWhole(file, *StoryOf(plain)));
  const auto after = LinesOf(FormatWhole(file, *StoryOf(changed)));
  ASSERT_EQ(before.size(), after.size());
  int changes = 0;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i] == after[i]) continue;
    ++changes;
    EXPECT_NE(after[i].find(MemberText(row)), std::string::npos) << after[i];
  }
  EXPECT_EQ(changes, 1);
}

TEST(StoryFileTest, each_field_of_a_shot_is_read_and_written_by_its_name) {
  for (const FieldRow& row : FIELDS) {
    ExpectIsRead(row, FileOfShots(ShotText(", " + MemberText(row))));
    ExpectIsWritten(row);
  }
}

TEST(StoryFileTest, each_field_of_a_camera_is_read_and_written_by_its_name) {
  for (const FieldRow& row : CAMERA_FIELDS) {
    ExpectIsRead(row, FileOfShots(ShotText("", CameraText(", " + MemberText(row)))));
    ExpectIsWritten(row);
  }
  for (const FieldRow& row : NEEDED_FIELDS) ExpectIsWritten(row);
}

TEST(StoryFileTest, each_type_of_a_shot_has_its_name) {
  const char* const names[] = {"track-left", "track-right", "zoom-in",      "zoom-out",
                               "crane-up",   "crane-down",  "look",         "orbit",
                               "pan-zoom",   "still",       "recorded-walk"};
  StoryFile file;
  for (int type = 0; type < 11; ++type) {
    const auto story =
        ParseWhole(file, FileOfShots(ShotText(std::string(R"(, "shotType": ")") + names[type] + "\"")));
    EXPECT_EQ(story->GetFirstSequence()->GetFirstShot()->GetShotType(), type);
    EXPECT_NE(FormatWhole(file, *story).find(std::string("\"") + names[type] + "\""), std::string::npos);
  }
}

TEST(StoryFileTest, each_place_of_the_camera_and_each_transition_has_its_name) {
  const char* const positions[] = {"start", "middle", "end"};
  const char* const transitions[] = {"fade-through-black", "fade-through-white", "cut"};
  StoryFile file;
  for (int i = 0; i < 3; ++i) {
    const auto story =
        ParseWhole(file, FileOfShots(ShotText(std::string(R"(, "cameraPosition": ")") + positions[i] +
                                              R"(", "transitionType": ")" + transitions[i] + "\"")));
    EXPECT_EQ(story->GetFirstSequence()->GetFirstShot()->GetCameraPosition(), i);
    EXPECT_EQ(story->GetFirstSequence()->GetFirstShot()->GetTransitionType(), i);
  }
}

TEST(StoryFileTest, what_is_missing_has_its_default) {
  StoryFile file;
  const auto story = ParseWhole(file, FileOfShots(ShotText()));
  ExpectSameShot(*story->GetFirstSequence()->GetFirstShot(), ShotSpecification(PlainCamera()));
  EXPECT_EQ(story->GetName(), L"");
  EXPECT_TRUE(ParseWhole(file, FileText("{}"))->IsEmpty());
  EXPECT_TRUE(ParseWhole(file, FileText(R"({"sequences": [{}]})"))->GetFirstSequence()->IsEmpty());
}

TEST(StoryFileTest, the_pivot_is_at_the_centre_unless_it_is_told) {
  StoryFile file;
  const auto story = ParseWhole(
      file, FileOfShots(ShotText("", R"({"eye": [9, 9, 9], "centre": [1, 2, 3], "up": [0, 0, 1]})")));
  EXPECT_EQ(story->GetFirstSequence()->GetFirstShot()->GetCameraParameters().pivot,
            Korvane::Vector3(1, 2, 3));
}

TEST(StoryFileTest, a_recorded_walk_is_read_and_written_element_by_element) {
  StoryFile file;
  const std::string walk = R"(, "shotType": "recorded-walk", "recordedElements": [
      {"camera": )" + CameraText() +
                           R"(}, {"time": 0.5, "camera": )" + CameraText(R"(, "page_scale": 2.0)") + "}]";
  const auto story = ParseWhole(file, FileOfShots(ShotText(walk)));
  const ShotSpecification& shot = *story->GetFirstSequence()->GetFirstShot();
  ASSERT_EQ(shot.GetRecordedElementCount(), 2U);
  EXPECT_TRUE(SameNumber(shot.GetRecordedElement(0).time, 0.0));
  EXPECT_EQ(shot.GetRecordedElement(1).time, 0.5);
  EXPECT_EQ(shot.GetRecordedElement(1).camera.page_scale, 2.0);
  const std::string text = FormatWhole(file, *story);
  EXPECT_EQ(CountIn(text, "recordedElements"), 1);
  ExpectSameStory(*ParseWhole(file, text), *story);
}

TEST(StoryFileTest, order_and_names_of_sequences_and_shots_are_kept) {
  Story story;
  story.SetName(L"house");
  for (const wchar_t* name : {L"b", L"a", L"b"}) {
    Sequence* const sequence = AddSequence(story, name);
    for (const wchar_t* shot : {L"2", L"1", L"2"}) AddShot(*sequence, PlainCamera(), shot);
  }
  StoryFile file;
  ExpectSameStory(*ParseWhole(file, FormatWhole(file, story)), story);
}

// ---- names ----

std::wstring NameThatComesBack(const std::wstring& name) {
  Story story;
  story.SetName(name);
  StoryFile file;
  return ParseWhole(file, FormatWhole(file, story))->GetName();
}

TEST(StoryFileTest, names_of_any_script_come_back) {
  for (const wchar_t* name : {L"Grüße", L"\u6771\u4eac", L"\u0627\u0644\u0628\u064a\u062a", L"\U0001D11E",
                              L"\uFEFFx", L"\u2028", L"\"\\/\b\f\r\t", L"\U0010FFFF"}) {
    EXPECT_EQ(NameThatComesBack(name), name);
  }
}

TEST(StoryFileTest, a_name_with_an_end_of_text_and_a_new_line_comes_back) {
  const std::wstring name(L"a\0b\nc\0", 6);
  EXPECT_EQ(NameThatComesBack(name), name);
}

TEST(StoryFileTest, wide_characters_that_are_none_become_replacement_characters) {
  EXPECT_EQ(NameThatComesBack({L'a', static_cast<wchar_t>(0xD800), L'b'}), L"a\uFFFDb");
  EXPECT_EQ(NameThatComesBack({static_cast<wchar_t>(0xDFFF)}), L"\uFFFD");
  if constexpr (sizeof(wchar_t) == 4) {
    EXPECT_EQ(NameThatComesBack({static_cast<wchar_t>(0x110000), static_cast<wchar_t>(-1)}), L"\uFFFD\uFFFD");
  }
}

TEST(StoryFileTest, characters_may_be_written_as_pairs_of_escapes) {
  StoryFile file;
  EXPECT_EQ(ParseWhole(file, FileText(R"({"name": "\ud834\udd1e"})"))->GetName(), L"\U0001D11E");
}

// ---- versions ----

TEST(StoryFileTest, a_newer_version_is_told_as_such) {
  for (const char* version : {"2", "1e30", "99999999999999999999", "1.5"}) {
    const std::string error = GetParseError(R"({"format": "zovtools story", "version": )" +
                                            std::string(version) + R"(, "story": 7})");
    EXPECT_NE(error.find("newer"), std::string::npos) << error;
  }
}

TEST(StoryFileTest, a_mark_of_another_program_is_no_story) {
  EXPECT_EQ(GetParseError(R"({"format": "other", "version": 1, "story": {}})"), "it is no story");
}

TEST(StoryFileTest, a_mark_for_the_order_of_bytes_before_the_text_does_no_harm) {
  StoryFile file;
  EXPECT_EQ(ParseWhole(file, "\xEF\xBB\xBF" + FileText(R"({"name": "x"})"))->GetName(), L"x");
}

// ---- what is not known ----

std::string Marked(const std::string& mark) { return R"(, "mark": ")" + mark + "\""; }

/// Two sequences, of the shots a, b and c; everything bears a mark that tells what it was said of.
std::string MarkedFile() {
  const auto shot = [](const std::string& name) {
    return ShotText(R"(, "name": ")" + name + "\"" + Marked("shot " + name),
                    CameraText(Marked("camera " + name)));
  };
  return FileText(R"({"sequences": [{"name": "first", "shots": [)" + shot("a") + ", " + shot("b") + "]" +
                      Marked("first") + R"(}, {"name": "second", "shots": [)" + shot("c") + "]" +
                      Marked("second") + "}]" + Marked("story") + "}",
                  Marked("file"));
}

struct MarkedStory : testing::Test {
  MarkedStory()
      : story(ParseWhole(file, MarkedFile())), first(story->GetSequence(0)), second(story->GetSequence(1)) {}

  /// The marks of a text, in the order in which they stand.
  static std::string MarksIn(const std::string& text) {
    const std::string sought = "\"mark\": \"";
    std::string marks;
    for (std::size_t at = text.find(sought); at != std::string::npos; at = text.find(sought, at + 1)) {
      const std::size_t begin = at + sought.size();
      marks += (marks.empty() ? "" : ", ") + text.substr(begin, text.find('"', begin) - begin);
    }
    return marks;
  }
  std::string Marks() const { return MarksIn(FormatWhole(file, *story)); }

  StoryFile file;
  std::unique_ptr<Story> story;
  Sequence* const first;
  Sequence* const second;
};

TEST_F(MarkedStory, keeps_what_is_said_of_each_of_its_parts) {
  EXPECT_EQ(Marks(), "camera a, shot a, camera b, shot b, first, camera c, shot c, second, story, file");
}

TEST_F(MarkedStory, keeps_it_for_a_second_reader) {
  StoryFile again;
  const auto read = ParseWhole(again, FormatWhole(file, *story));
  EXPECT_EQ(MarksIn(FormatWhole(again, *read)), Marks());
  EXPECT_EQ(FormatWhole(again, *read), FormatWhole(file, *story));
}

TEST_F(MarkedStory, keeps_values_of_every_kind) {
  const std::string value =
      R"({"a":[1,-2,0.5,{"b":[]}],"c":null,"d":true,"e":"\n\u0000","f":{},"g":18446744073709551615})";
  story = ParseWhole(file, FileOfShots(ShotText("", CameraText(R"(, "mark": )" + value))));
  EXPECT_EQ(CountIn(FormatWhole(file, *story), "\"mark\": " + value), 1);
}

TEST_F(MarkedStory, shots_that_are_moved_take_it_along) {
  first->MoveShot(first->GetShot(1), first->GetShot(0));
  second->AddShot(first->RemoveShot(first->FindShot(L"a")));
  EXPECT_EQ(Marks(), "camera b, shot b, first, camera c, shot c, camera a, shot a, second, story, file");
  story->MoveSequence(second, first);
  EXPECT_EQ(Marks(), "camera c, shot c, camera a, shot a, second, camera b, shot b, first, story, file");
}

TEST_F(MarkedStory, shots_that_are_deleted_take_it_with_them) {
  first->DeleteShot(first->FindShot(L"a"));
  EXPECT_EQ(Marks(), "camera b, shot b, first, camera c, shot c, second, story, file");
  story->DeleteSequence(first);
  EXPECT_EQ(Marks(), "camera c, shot c, second, story, file");
}

TEST_F(MarkedStory, shots_that_are_put_back_have_it_again) {
  ShotSpecification* const a = first->RemoveShot(first->GetShot(0));
  EXPECT_EQ(Marks(), "camera b, shot b, first, camera c, shot c, second, story, file");
  first->InsertShot(0, a);
  EXPECT_EQ(Marks(), "camera a, shot a, camera b, shot b, first, camera c, shot c, second, story, file");
}

TEST_F(MarkedStory, edits_in_the_panel_that_are_undone_bring_it_back) {
  const std::string all = Marks();
  Korvane::UndoQueue edits;
  Korvane::Storyboard panel;
  panel.SetUndoQueue(&edits);
  panel.Create();
  panel.SetStory(story.release());
  const auto marks = [&] { return MarksIn(FormatWhole(file, *panel.GetStory())); };
  EXPECT_TRUE(panel.DeleteShot(second->GetFirstShot())) << "and its sequence, which has no other";
  EXPECT_TRUE(panel.MoveShot(first->GetShot(0), nullptr));
  EXPECT_EQ(marks(), "camera b, shot b, camera a, shot a, first, story, file");
  EXPECT_TRUE(edits.Undo() && edits.Undo());
  EXPECT_EQ(marks(), all);
  panel.ResetToEmptyStory();
  EXPECT_EQ(marks(), "file");
}

TEST_F(MarkedStory, shots_that_are_edited_keep_it) {
  ShotSpecification& a = *first->GetShot(0);
  a.SetName(L"other");
  a.SetShotType(ShotSpecification::SHOT_ORBIT);
  CameraParameters camera = PlainCamera();
  camera.eye = {5, 5, 5};
  a.SetCameraParameters(camera);
  first->SetName(L"renamed");
  EXPECT_EQ(Marks(), "camera a, shot a, camera b, shot b, first, camera c, shot c, second, story, file");
}

TEST_F(MarkedStory, a_shot_made_where_a_deleted_one_stood_has_none_of_it) {
  ShotSpecification* const a = first->GetShot(0);
  a->~ShotSpecification();
  new (a) ShotSpecification(PlainCamera());
  EXPECT_EQ(Marks(), "camera b, shot b, first, camera c, shot c, second, story, file");
}

TEST_F(MarkedStory, a_copy_has_none_of_it) {
  first->AddShot(std::make_unique<ShotSpecification>(*first->GetShot(0)).release());
  EXPECT_EQ(Marks(), "camera a, shot a, camera b, shot b, first, camera c, shot c, second, story, file");
}

TEST_F(MarkedStory, another_story_has_what_is_said_of_the_file_alone) {
  Story other;
  EXPECT_EQ(MarksIn(FormatWhole(file, other)), "file");
  EXPECT_EQ(MarksIn(FormatWhole(StoryFile(), *story)), "");
}

TEST_F(MarkedStory, may_go_before_or_after_its_file) {
  story.reset();
  EXPECT_EQ(MarksIn(FormatWhole(file, Story())), "file");
  auto brief = std::make_unique<StoryFile>();
  const auto lasting = ParseWhole(*brief, MarkedFile());
  brief.reset();
  EXPECT_EQ(MarksIn(FormatWhole(file, *lasting)), "file");
}

TEST_F(MarkedStory, the_next_story_that_is_read_takes_its_place) {
  const auto next = ParseWhole(file, FileText("{}"));
  EXPECT_EQ(Marks(), "");
}

/// A walk of two elements with marks of their own.
struct MarkedWalk : MarkedStory {
  MarkedWalk() {
    const auto element = [](const std::string& time) {
      return R"({"time": )" + time + Marked("element " + time) + R"(, "camera": )" +
             CameraText(Marked("camera " + time)) + "}";
    };
    story = ParseWhole(file, FileOfShots(ShotText(R"(, "recordedElements": [)" + element("0.25") + ", " +
                                                  element("0.5") + "]")));
    shot = story->GetFirstSequence()->GetFirstShot();
  }
  std::string Marks() const {
    std::string text = FormatWhole(file, *story);
    for (std::size_t at = 0; (at = text.find("\"mark\":\"", at)) != std::string::npos;)
      text.insert(at + 7, " ");
    return MarksIn(text);
  }
  ShotSpecification* shot;
};

TEST_F(MarkedWalk, keeps_what_is_said_of_its_elements) {
  EXPECT_EQ(Marks(), "camera 0.25, element 0.25, camera 0.5, element 0.5");
}

TEST_F(MarkedWalk, forgets_it_where_an_element_is_another) {
  const ShotSpecification::RecordedElement last = shot->GetRecordedElement(1);
  shot->ClearRecordedElements();
  EXPECT_EQ(Marks(), "");
  shot->AddRecordedElement(PlainCamera(), 0.125);
  EXPECT_EQ(Marks(), "");
  shot->AddRecordedElement(last);
  EXPECT_EQ(Marks(), "camera 0.5, element 0.5");
}

TEST(StoryFileTest, very_many_unknown_fields_come_back) {
  constexpr int COUNT = 200'000;
  std::string fields;
  for (int i = 0; i < COUNT; ++i) fields += ", \"x-" + std::to_string(i) + "\": 0";
  StoryFile file;
  const auto story = ParseWhole(file, FileOfShots(ShotText(fields)));
  const std::string text = FormatWhole(file, *story);
  EXPECT_EQ(CountIn(text, "\"x-"), COUNT);
}

// ---- files ----

std::string ReadText(const fs::path& path) {
  std::ifstream input(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

TEST(StoryFilesTest, a_story_is_written_and_read) {
  const TemporaryFolder folder;
  const auto story = StoryOf(ShotSpecification(PlainCamera()));
  const fs::path path = folder.path / "house.json";
  StoryFile file;
  std::string error;
  ASSERT_TRUE(file.Write(*story, path, error)) << error;
  EXPECT_EQ(folder.CountFiles(), 1U);
  EXPECT_EQ(ReadText(path), FormatWhole(file, *story));
  const auto read = file.Read(path, error);
  ASSERT_NE(read, nullptr) << error;
  ExpectSameStory(*read, *story);
}

TEST(StoryFilesTest, what_is_unknown_survives_in_a_file) {
  const TemporaryFolder folder;
  const fs::path path = folder.Write("house.json", MarkedFile());
  StoryFile file;
  std::string error;
  const auto story = file.Read(path, error);
  ASSERT_NE(story, nullptr) << error;
  ASSERT_TRUE(file.Write(*story, path, error)) << error;
  EXPECT_EQ(CountIn(ReadText(path), "\"mark\""), 10);
}

TEST(StoryFilesTest, a_story_that_cannot_be_written_leaves_the_file_as_it_was) {
  const TemporaryFolder folder;
  const fs::path path = folder.Write("house.json", "before");
  ShotSpecification shot(PlainCamera());
  shot.SetShotType(static_cast<ShotSpecification::ShotType>(11));
  std::string error;
  EXPECT_FALSE(StoryFile().Write(*StoryOf(shot), path, error));
  EXPECT_EQ(error, path.string() + ": story.sequences[0].shots[0].shotType: its number stands for nothing");
  EXPECT_EQ(ReadText(path), "before");
  EXPECT_EQ(folder.CountFiles(), 1U);
}

TEST(StoryFilesTest, a_place_that_cannot_be_written_is_told_and_left_clean) {
  const TemporaryFolder folder;
  const Story story;
  fs::create_directories(folder.path / "taken" / "inside");
  for (const fs::path& path : {folder.path / "taken", folder.path / "nowhere" / "house.json"}) {
    std::string error;
    EXPECT_FALSE(StoryFile().Write(story, path, error)) << path;
    EXPECT_EQ(error.find(path.string() + ": "), 0U) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    EXPECT_EQ(folder.CountFiles(), 1U);
  }
}

TEST(StoryFileTest, numbers_that_stand_for_nothing_are_not_written) {
  const ShotSpecification plain(PlainCamera());
  const auto errorOf = [](const ShotSpecification& shot) {
    std::string error;
    EXPECT_EQ(StoryFile().Format(*StoryOf(shot), error), "");
    return error;
  };
  for (const int number : {-1, 3, 1 << 30}) {
    ShotSpecification shot = plain;
    shot.SetTransitionType(static_cast<ShotSpecification::TransitionType>(number));
    EXPECT_NE(errorOf(shot).find(".transitionType: "), std::string::npos);
    shot = plain;
    shot.SetCameraPosition(static_cast<Korvane::TargetCamPos>(number));
    EXPECT_NE(errorOf(shot).find(".cameraPosition: "), std::string::npos);
    shot = plain;
    CameraParameters camera = PlainCamera();
    camera.projection_type = static_cast<CameraParameters::ProjectionType>(number);
    shot.AddRecordedElement(camera, 0.0);
    EXPECT_EQ(errorOf(shot),
              "story.sequences[0].shots[0].recordedElements[0].camera.projection_type: its number stands for "
              "nothing");
  }
}

TEST(StoryFileTest, a_story_beyond_the_limits_is_not_written) {
  Story story;
  Sequence* const sequence = AddSequence(story);
  for (int i = 0; i < 10'000; ++i) AddShot(*sequence, PlainCamera());
  StoryFile file;
  EXPECT_EQ(ParseWhole(file, FormatWhole(file, story))->GetFirstSequence()->GetShotCount(), 10'000U);
  AddShot(*AddSequence(story), PlainCamera());
  std::string error;
  EXPECT_EQ(file.Format(story, error), "");
  EXPECT_EQ(error, "story.sequences[1].shots: there are too many");
}

// ---- the page that tells of them ----

const std::string PAGE = ReadText(fs::path(ZOV_DOCS) / "stories.md");

std::vector<std::string> BlocksOf(const std::string& page) {
  const std::string fence = "```json\n";
  std::vector<std::string> blocks;
  for (std::size_t at = page.find(fence); at != std::string::npos; at = page.find(fence, at + 1)) {
    const std::size_t begin = at + fence.size();
    blocks.push_back(page.substr(begin, page.find("```", begin) - begin));
  }
  return blocks;
}

TEST(StoryPageTest, its_example_is_read) {
  const auto blocks = BlocksOf(PAGE);
  ASSERT_FALSE(blocks.empty());
  StoryFile file;
  const auto story = ParseWhole(file, blocks[0]);
  EXPECT_EQ(story->GetName(), L"A house");
  ASSERT_EQ(story->GetSequenceCount(), 1U);
  const Sequence& sequence = *story->GetFirstSequence();
  EXPECT_EQ(sequence.GetName(), L"Outside");
  ASSERT_EQ(sequence.GetShotCount(), 2U);
  EXPECT_EQ(sequence.GetShot(0)->GetShotType(), ShotSpecification::SHOT_ORBIT);
  EXPECT_EQ(sequence.GetShot(0)->GetLeftRightAngle(), 90.0);
  EXPECT_EQ(sequence.GetShot(0)->GetDuration(), 6.0);
  EXPECT_EQ(sequence.GetShot(1)->GetShotType(), ShotSpecification::SHOT_STILL);
  EXPECT_EQ(sequence.GetShot(1)->GetCameraParameters().eye, Korvane::Vector3(8, 1.7, 8));
}

TEST(StoryPageTest, tells_every_field_by_its_name) {
  std::vector<std::string> names = {"format", "version",          "story", "sequences", "shots",
                                    "camera", "recordedElements", "time"};
  for (const FieldRow& row : FIELDS) names.emplace_back(row.name);
  for (const FieldRow& row : CAMERA_FIELDS) names.emplace_back(row.name);
  for (const FieldRow& row : NEEDED_FIELDS) names.emplace_back(row.name);
  for (const std::string& name : names) EXPECT_NE(PAGE.find("`" + name + "`"), std::string::npos) << name;
}

}  // namespace
