// The list of views that have a name, and its files.
#include "zovhost/named_views.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "scene_files.h"
#include "support/cameras.h"
#include "zovhost/named_views_file.h"

namespace {

namespace fs = std::filesystem;
using Korvane::CameraParameters;
using zovhost::CanShowView;
using zovhost::FormatNamedViews;
using zovhost::NamedViews;
using zovhost::NamedViewsFile;
using zovhost::ParseNamedViews;

CameraParameters SomeCamera(double height = 3.0) { return LookAt({4, -9, height}, {0, 0, 1}, {0, 0, 1}); }

NamedViews ViewsOf(const std::vector<std::string>& names) {
  NamedViews views;
  for (const std::string& name : names) EXPECT_TRUE(views.Add(name, SomeCamera()).has_value()) << name;
  return views;
}

std::vector<std::string> NamesOf(const NamedViews& views) {
  std::vector<std::string> names;
  for (const auto& view : views.Get()) names.push_back(view.name);
  return names;
}
using Names = std::vector<std::string>;

// ---- the list ----

TEST(NamedViewsTest, views_stand_in_the_order_in_which_they_came) {
  EXPECT_EQ(NamesOf(ViewsOf({"Door", "Roof", "Stairs"})), (Names{"Door", "Roof", "Stairs"}));
}

TEST(NamedViewsTest, a_name_that_is_taken_gets_a_number) {
  NamedViews views = ViewsOf({"Door", "Door", "Door"});
  EXPECT_EQ(NamesOf(views), (Names{"Door", "Door 2", "Door 3"}));
  EXPECT_TRUE(views.Rename(0, "Door 3"));
  EXPECT_EQ(views.Get()[0].name, "Door 3 2");
}

TEST(NamedViewsTest, a_view_without_a_name_gets_one) {
  EXPECT_EQ(NamesOf(ViewsOf({"", " \t\n", "View 1"})), (Names{"View 1", "View 2", "View 1 2"}));
}

TEST(NamedViewsTest, a_name_stands_on_one_line_and_is_well_formed) {
  EXPECT_EQ(NamesOf(ViewsOf({" The\nold\tdoor ", "\xFF"})), (Names{"The old door", "\xEF\xBF\xBD"}));
}

TEST(NamedViewsTest, a_long_name_is_cut_between_its_characters) {
  std::string name;
  for (int i = 0; i < 300; ++i) name += "\xC3\xA4";
  const std::string kept = ViewsOf({"x" + name}).Get()[0].name;
  EXPECT_EQ(kept.size(), NamedViews::LONGEST_NAME - 1);
  EXPECT_EQ(kept, ("x" + name).substr(0, kept.size()));
}

TEST(NamedViewsTest, a_view_is_renamed_but_to_nothing) {
  NamedViews views = ViewsOf({"Door", "Roof"});
  EXPECT_FALSE(views.Rename(0, "  "));
  EXPECT_FALSE(views.Rename(0, "Door"));
  EXPECT_FALSE(views.Rename(2, "Wall"));
  EXPECT_TRUE(views.Rename(0, "Roof"));
  EXPECT_EQ(NamesOf(views), (Names{"Roof 2", "Roof"}));
}

TEST(NamedViewsTest, a_view_moves_to_any_place) {
  const Names before = {"a", "b", "c", "d"};
  for (std::size_t from = 0; from < before.size(); ++from) {
    for (std::size_t to = 0; to < before.size(); ++to) {
      NamedViews views = ViewsOf(before);
      Names expected = before;
      expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(from));
      expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(to), before[from]);
      EXPECT_TRUE(views.Move(from, to));
      EXPECT_EQ(NamesOf(views), expected) << from << " to " << to;
    }
  }
  NamedViews views = ViewsOf(before);
  EXPECT_FALSE(views.Move(4, 0));
  EXPECT_FALSE(views.Move(0, 4));
  EXPECT_EQ(NamesOf(views), before);
}

TEST(NamedViewsTest, a_view_is_removed) {
  NamedViews views = ViewsOf({"a", "b", "c"});
  EXPECT_TRUE(views.Remove(1));
  EXPECT_FALSE(views.Remove(2));
  EXPECT_EQ(NamesOf(views), (Names{"a", "c"}));
}

TEST(NamedViewsTest, a_view_is_found_by_its_name_and_its_identifier) {
  NamedViews views = ViewsOf({"a", "b"});
  EXPECT_EQ(views.FindName("b"), 1U);
  EXPECT_EQ(views.FindName("B"), std::nullopt);
  EXPECT_EQ(views.FindGuid(views.Get()[1].guid), 1U);
  EXPECT_EQ(views.FindGuid(""), std::nullopt);
}

TEST(NamedViewsTest, no_two_views_have_one_identifier) {
  const std::string guid = zovhost::MakeGuid();
  NamedViews views;
  views.Add("a", SomeCamera(), guid);
  views.Add("b", SomeCamera(), guid);
  views.Add("c", SomeCamera(), "no identifier");
  EXPECT_EQ(views.Get()[0].guid, guid);
  std::set<std::string> all;
  for (const auto& view : views.Get()) {
    EXPECT_TRUE(zovhost::IsGuid(view.guid)) << view.guid;
    all.insert(view.guid);
  }
  EXPECT_EQ(all.size(), 3U);
}

TEST(NamedViewsTest, there_are_not_more_than_a_thousand) {
  NamedViews views;
  for (std::size_t i = 0; i < NamedViews::MOST; ++i) ASSERT_TRUE(views.Add("", SomeCamera()).has_value());
  EXPECT_EQ(views.Add("", SomeCamera()), std::nullopt);
  EXPECT_EQ(views.GetCount(), NamedViews::MOST);
}

TEST(NamedViewsTest, a_camera_that_shows_nothing_is_no_view) {
  Random random;
  NamedViews views = ViewsOf({"a"});
  const auto expectNone = [&views](const CameraParameters& camera) {
    EXPECT_FALSE(CanShowView(camera));
    EXPECT_EQ(views.Add("b", camera), std::nullopt);
    EXPECT_FALSE(views.SetCamera(0, camera));
  };
  expectNone({});
  expectNone(LookAt({1, 1, 1}, {1, 1, 1}, {0, 0, 1}));
  expectNone(LookAt({0, 0, 0}, {0, 0, 5}, {0, 0, 1}));
  expectNone(WithSymmetricFrustum(SomeCamera(), 90.0, 30.0));
  expectNone(WithAsymmetricFrustum(SomeCamera(), 10.0, -10.0, 20.0, 20.0));
  expectNone(WithOrthographic(SomeCamera(), 0.0, 1.0));
  for (int i = 0; i < 200; ++i) expectNone(BrokenCamera(random));
  EXPECT_EQ(views.GetCount(), 1U);
  EXPECT_TRUE(views.SetCamera(0, WithAsymmetricFrustum(SomeCamera(), 10.0, 30.0, 20.0, 20.0)));
  EXPECT_FALSE(views.SetCamera(1, SomeCamera()));
}

TEST(NamedViewsTest, an_identifier_has_its_form) {
  std::set<std::string> all;
  for (int i = 0; i < 1000; ++i) all.insert(zovhost::MakeGuid());
  EXPECT_EQ(all.size(), 1000U);
  for (const std::string& guid : all) {
    EXPECT_TRUE(zovhost::IsGuid(guid)) << guid;
    EXPECT_EQ(guid[14], '4') << guid;
    EXPECT_NE(std::string("89ab").find(guid[19]), std::string::npos) << guid;
  }
  EXPECT_FALSE(zovhost::IsGuid(""));
  EXPECT_FALSE(zovhost::IsGuid("00000000-0000-0000-0000-00000000000"));
  EXPECT_FALSE(zovhost::IsGuid("00000000-0000-0000-0000-00000000000G"));
  EXPECT_FALSE(zovhost::IsGuid("00000000x0000-0000-0000-000000000000"));
}

// ---- texts ----

TEST(NamedViewsTextTest, every_number_comes_back_bit_for_bit) {
  Random random;
  NamedViews views;
  while (views.GetCount() < 300)
    views.Add("View \"" + std::to_string(views.GetCount()) + "\" \xE2\x82\xAC", RandomCamera(random));
  NamedViews read;
  std::string error;
  ASSERT_TRUE(ParseNamedViews(FormatNamedViews(views), read, error)) << error;
  ASSERT_EQ(read.GetCount(), views.GetCount());
  for (std::size_t i = 0; i < views.GetCount(); ++i) {
    EXPECT_EQ(read.Get()[i].name, views.Get()[i].name);
    EXPECT_EQ(read.Get()[i].guid, views.Get()[i].guid);
    EXPECT_TRUE(SameBits(read.Get()[i].camera, views.Get()[i].camera)) << i;
  }
  EXPECT_EQ(FormatNamedViews(read), FormatNamedViews(views));
}

constexpr const char* CAMERA = R"({"eye": [4, -9, 3], "centre": [0, 0, 1], "up": [0, 0, 1]})";
std::string FileText(const std::string& list) {
  return R"({"format": "zovtools views", "version": 1, "views": [)" + list + "]}";
}
std::string ViewText(const std::string& camera, const std::string& name = "\"Door\"") {
  return R"({"name": )" + name + R"(, "camera": )" + camera + "}";
}

TEST(NamedViewsTextTest, what_is_left_out_has_its_default_and_what_is_double_is_mended) {
  NamedViews views;
  std::string error;
  const std::string view = ViewText(CAMERA);
  ASSERT_TRUE(ParseNamedViews(FileText(view + ", " + view + ", " + ViewText(CAMERA, "\"\"")), views, error))
      << error;
  EXPECT_EQ(NamesOf(views), (Names{"Door", "Door 2", "View 3"}));
  EXPECT_EQ(views.Get()[0].camera.top_fov, 45.0);
  EXPECT_EQ(views.Get()[0].camera.pivot, Korvane::Vector3(0, 0, 1));
}

struct WrongText {
  const char* name;
  std::string text;
  const char* error;
};
void PrintTo(const WrongText& text, std::ostream* out) { *out << text.name; }
class WrongViewsText : public testing::TestWithParam<WrongText> {};

TEST_P(WrongViewsText, is_refused_in_one_line) {
  NamedViews views = ViewsOf({"before"});
  std::string error;
  EXPECT_FALSE(ParseNamedViews(GetParam().text, views, error));
  EXPECT_EQ(error, GetParam().error);
  EXPECT_EQ(NamesOf(views), Names{"before"});
}

INSTANTIATE_TEST_SUITE_P(
    all, WrongViewsText,
    testing::Values(
        WrongText{"nothing", "", "line 1: it ends too early"},
        WrongText{"a_list", "[]", "it is no list of views"},
        WrongText{"a_story", R"({"format": "zovtools story", "version": 1, "story": {}})",
                  "it is no list of views"},
        WrongText{"no_version", R"({"format": "zovtools views", "views": []})", "it has no version"},
        WrongText{"a_newer_version", R"({"format": "zovtools views", "version": 2, "views": []})",
                  "it is of version 2, which is newer than this program"},
        WrongText{"no_views", R"({"format": "zovtools views", "version": 1})", "views: it is missing"},
        WrongText{"views_in_an_object", R"({"format": "zovtools views", "version": 1, "views": {}})",
                  "views: it is no list"},
        WrongText{"a_view_of_null", FileText("null"), "views[0]: it is no object"},
        WrongText{"a_view_without_a_name", FileText(ViewText(CAMERA) + R"(, {"camera": {}})"),
                  "views[1].name: it is missing"},
        WrongText{"a_name_in_numbers", FileText(ViewText(CAMERA, "7")), "views[0].name: it is no text"},
        WrongText{"a_view_without_a_camera", FileText(R"({"name": "a"})"), "views[0].camera: it is missing"},
        WrongText{"a_camera_without_an_eye", FileText(ViewText(R"({"centre": [0, 0, 1], "up": [0, 0, 1]})")),
                  "views[0].camera.eye: it is missing"},
        WrongText{"a_camera_that_looks_nowhere",
                  FileText(ViewText(R"({"eye": [0, 0, 1], "centre": [0, 0, 1], "up": [0, 0, 1]})")),
                  "views[0].camera: it shows nothing"}),
    [](const testing::TestParamInfo<WrongText>& row) { return row.param.name; });

TEST(NamedViewsPageTest, its_example_is_read) {
  std::ifstream input(fs::path(ZOV_DOCS) / "named-views.md");
  const std::string page{std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
  const std::string fence = "```json\n";
  const std::size_t begin = page.find(fence) + fence.size();
  NamedViews views;
  std::string error;
  ASSERT_TRUE(ParseNamedViews(page.substr(begin, page.find("```", begin) - begin), views, error)) << error;
  EXPECT_EQ(NamesOf(views), (Names{"The door", "From above"}));
  EXPECT_EQ(views.Get()[0].guid, "0f4c2b6a-8d1e-4f37-9a52-6c3b1d7e8f90");
  EXPECT_EQ(views.Get()[0].camera.right_fov, 25.0);
  EXPECT_TRUE(views.Get()[1].camera.IsOrthographic());
}

// ---- files ----

std::string ReadText(const fs::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

class NamedViewsFileTest : public testing::Test {
 protected:
  void Keep(NamedViewsFile& file, const NamedViews& views) {
    std::string error;
    EXPECT_TRUE(file.Keep(views, error)) << error;
  }
  NamedViews Read(NamedViewsFile& file) {
    NamedViews views;
    std::string error;
    EXPECT_TRUE(file.Read(views, error)) << error;
    return views;
  }

  TemporaryFolder folder;
  fs::path model = folder.path / "house.obj";
  fs::path beside = folder.path / "house.obj.views.json";
  fs::path ownFolder = folder.path / "own" / "views";
};

TEST_F(NamedViewsFileTest, views_are_kept_beside_the_model) {
  NamedViewsFile file(model, ownFolder);
  EXPECT_EQ(Read(file).GetCount(), 0U);
  Keep(file, ViewsOf({"Door"}));
  EXPECT_EQ(file.GetPlace(), beside);
  EXPECT_FALSE(fs::exists(ownFolder));
  NamedViewsFile again(model, ownFolder);
  EXPECT_EQ(NamesOf(Read(again)), Names{"Door"});
}

TEST_F(NamedViewsFileTest, nothing_is_written_without_a_change) {
  NamedViewsFile file(model, ownFolder);
  const NamedViews none = Read(file);
  Keep(file, none);
  EXPECT_EQ(folder.CountFiles(), 0U);
  const NamedViews views = ViewsOf({"Door"});
  Keep(file, views);
  fs::remove(beside);
  Keep(file, views);
  EXPECT_FALSE(fs::exists(beside));
}

TEST_F(NamedViewsFileTest, the_last_view_that_goes_is_kept_as_well) {
  NamedViewsFile file(model, ownFolder);
  Read(file);
  Keep(file, ViewsOf({"Door"}));
  Keep(file, {});
  NamedViewsFile again(model, ownFolder);
  EXPECT_EQ(Read(again).GetCount(), 0U);
}

TEST_F(NamedViewsFileTest, where_the_model_is_cannot_be_written_they_are_the_users_own) {
  const fs::path elsewhere = folder.path / "no such folder" / "house.obj";
  NamedViewsFile file(elsewhere, ownFolder);
  Read(file);
  Keep(file, ViewsOf({"Door"}));
  EXPECT_EQ(file.GetPlace(), NamedViewsFile::FindOwnPlace(elsewhere, ownFolder));
  EXPECT_EQ(file.GetPlace().parent_path(), ownFolder);
  NamedViewsFile again(elsewhere, ownFolder);
  EXPECT_EQ(NamesOf(Read(again)), Names{"Door"});
  Keep(again, ViewsOf({"Roof"}));
  EXPECT_EQ(again.GetPlace().parent_path(), ownFolder);
}

TEST_F(NamedViewsFileTest, a_generated_model_has_its_views_in_the_users_folder) {
  NamedViewsFile file({}, ownFolder);
  Read(file);
  Keep(file, ViewsOf({"Door"}));
  EXPECT_EQ(file.GetPlace(), ownFolder / "generated-building.views.json");
}

TEST_F(NamedViewsFileTest, without_any_place_nothing_is_kept_and_nothing_wrong) {
  NamedViewsFile file({}, {});
  EXPECT_EQ(Read(file).GetCount(), 0U);
  Keep(file, ViewsOf({"Door"}));
  EXPECT_TRUE(file.GetPlace().empty());
}

TEST_F(NamedViewsFileTest, models_of_one_name_in_two_folders_have_their_own_files) {
  EXPECT_NE(NamedViewsFile::FindOwnPlace("/a/house.obj", ownFolder),
            NamedViewsFile::FindOwnPlace("/b/house.obj", ownFolder));
  EXPECT_EQ(NamedViewsFile::FindOwnPlace("/a/c/../house.obj", ownFolder),
            NamedViewsFile::FindOwnPlace("/a/house.obj", ownFolder));
}

TEST_F(NamedViewsFileTest, one_that_can_be_written_nowhere_is_told_once) {
  NamedViewsFile file(folder.path / "no such folder" / "house.obj", {});
  Read(file);
  std::string error;
  const NamedViews views = ViewsOf({"Door"});
  EXPECT_FALSE(file.Keep(views, error));
  EXPECT_NE(error.find("house.obj.views.json: it cannot be written"), std::string::npos) << error;
  Keep(file, views);
}

TEST_F(NamedViewsFileTest, what_another_program_has_added_meanwhile_stays) {
  NamedViewsFile first(model, ownFolder);
  NamedViewsFile second(model, ownFolder);
  NamedViews ours = Read(first);
  NamedViews theirs = Read(second);
  theirs.Add("Roof", ViewsOf({"Roof"}).Get()[0].camera);
  Keep(second, theirs);
  ours.Add("Door", ViewsOf({"Door"}).Get()[0].camera);
  Keep(first, ours);
  NamedViewsFile again(model, ownFolder);
  EXPECT_EQ(NamesOf(Read(again)), (Names{"Door", "Roof"}));
  ours.Remove(0);
  Keep(first, ours);
  NamedViewsFile last(model, ownFolder);
  EXPECT_EQ(NamesOf(Read(last)), Names{"Roof"}) << "what was removed here does not come back";
}

TEST_F(NamedViewsFileTest, one_that_was_broken_meanwhile_stays_as_it_is) {
  for (const bool wasThere : {true, false}) {
    NamedViewsFile file(model, ownFolder);
    Read(file);
    if (wasThere) Keep(file, ViewsOf({"Door"}));
    folder.Write("house.obj.views.json", "{");
    std::string error;
    EXPECT_FALSE(file.Keep(ViewsOf({"Roof"}), error));
    EXPECT_EQ(error, beside.string() + ": it stays as it is, so the views are not kept");
    EXPECT_EQ(ReadText(beside), "{");
    fs::remove(beside);
  }
}

TEST_F(NamedViewsFileTest, a_broken_file_and_a_newer_one_are_never_written_over) {
  for (const char* const text : {"{", R"({"format": "zovtools views", "version": 2, "views": []})"}) {
    folder.Write("house.obj.views.json", text);
    NamedViewsFile file(model, ownFolder);
    NamedViews views = ViewsOf({"before"});
    std::string error;
    EXPECT_FALSE(file.Read(views, error));
    EXPECT_EQ(error.find(beside.string() + ": "), 0U) << error;
    EXPECT_EQ(views.GetCount(), 0U);
    EXPECT_FALSE(file.Keep(ViewsOf({"Door"}), error));
    EXPECT_EQ(error, beside.string() + ": it stays as it is, so the views are not kept");
    EXPECT_EQ(ReadText(beside), text);
    EXPECT_FALSE(fs::exists(ownFolder));
    fs::remove(beside);
    Keep(file, ViewsOf({"Roof"}));
    EXPECT_TRUE(fs::exists(beside)) << "it was taken away";
    fs::remove(beside);
  }
}

}  // namespace
