// Viewpoints in files of their own, and in containers of topics.
#include "zovhost/bcf_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "scene_files.h"
#include "support/random.h"
#include "zovhost/named_views.h"
#include "zovhost/whole_file.h"

namespace {

namespace fs = std::filesystem;
using zovhost::BcfView;
using zovhost::BcfViewpoint;
using zovhost::FormatBcfContainer;
using zovhost::ParseBcfContainer;
using zovhost::ReadBcfFile;
using zovhost::WriteBcfFile;

BcfView MakeView(const std::string& name, double height = 3.0) {
  BcfView view;
  view.name = name;
  view.viewpoint.camera = BcfViewpoint::Camera::Perspective;
  view.viewpoint.cameraViewPoint = {4, -9, height};
  view.viewpoint.cameraDirection = {0, 1, 0};
  view.viewpoint.cameraUpVector = {0, 0, 1};
  view.viewpoint.fieldOfView = 35.0;
  view.viewpoint.aspectRatio = 1.6;
  return view;
}

std::vector<BcfView> ReadWhole(const fs::path& file) {
  std::vector<BcfView> views;
  std::string error;
  EXPECT_TRUE(ReadBcfFile(file, views, error)) << error;
  return views;
}

/// One line that names the file.
std::string GetReadError(const fs::path& file) {
  std::vector<BcfView> views;
  std::string error;
  EXPECT_FALSE(ReadBcfFile(file, views, error)) << file;
  EXPECT_TRUE(views.empty());
  EXPECT_EQ(error.find(file.string() + ": "), 0U) << error;
  EXPECT_EQ(error.find('\n'), std::string::npos) << error;
  return error;
}

void WriteWhole(const fs::path& file, const std::vector<BcfView>& views) {
  std::string error;
  EXPECT_TRUE(WriteBcfFile(file, views, error)) << error;
}

std::string FormatWhole(const std::vector<BcfView>& views) {
  std::string bytes;
  std::string error;
  EXPECT_TRUE(FormatBcfContainer(views, "somebody", bytes, error)) << error;
  return bytes;
}

TEST(BcfFileTest, a_file_is_known_by_its_name) {
  EXPECT_TRUE(zovhost::IsBcfFile("a/Door.BCFV"));
  EXPECT_TRUE(zovhost::IsBcfFile("doors.bcf"));
  EXPECT_TRUE(zovhost::IsBcfFile("doors.bcfzip"));
  EXPECT_FALSE(zovhost::IsBcfFile("bcfv"));
  EXPECT_FALSE(zovhost::IsBcfFile("house.ifc"));
  EXPECT_TRUE(zovhost::IsBcfContainer("doors.BcfZip"));
  EXPECT_FALSE(zovhost::IsBcfContainer("door.bcfv"));
}

TEST(BcfFileTest, one_viewpoint_has_the_name_of_its_file) {
  const TemporaryFolder folder;
  const fs::path file = folder.path / "The old door.bcfv";
  WriteWhole(file, {MakeView("another")});
  const std::vector<BcfView> read = ReadWhole(file);
  ASSERT_EQ(read.size(), 1U);
  EXPECT_EQ(read[0].name, "The old door");
  EXPECT_EQ(read[0].viewpoint.fieldOfView, 35.0);
  EXPECT_TRUE(zovhost::IsGuid(read[0].viewpoint.guid));
}

TEST(BcfFileTest, one_viewpoint_takes_one_view) {
  const TemporaryFolder folder;
  std::string error;
  EXPECT_FALSE(WriteBcfFile(folder.path / "two.bcfv", {MakeView("a"), MakeView("b")}, error));
  EXPECT_NE(error.find("two.bcfv: one viewpoint takes one view, not 2"), std::string::npos) << error;
  EXPECT_EQ(folder.CountFiles(), 0U);
}

TEST(BcfFileTest, a_viewpoint_without_a_camera_is_told) {
  const TemporaryFolder folder;
  const fs::path file = folder.Write("parts.bcfv", "<VisualizationInfo><Components/></VisualizationInfo>");
  EXPECT_EQ(GetReadError(file), file.string() + ": there is no camera in it");
}

TEST(BcfFileTest, what_is_no_file_or_a_broken_one_is_told) {
  const TemporaryFolder folder;
  GetReadError(folder.path / "nothing.bcfv");
  GetReadError(folder.path / "nothing.bcf");
  const fs::path broken = folder.Write("broken.bcfv", "<VisualizationInfo>");
  EXPECT_EQ(GetReadError(broken), broken.string() + ": line 1: it is no XML");
  const fs::path words = folder.Write("words.bcfzip", "words");
  EXPECT_EQ(GetReadError(words).find(words.string() + ": it is no zip archive: "), 0U);
  std::string error;
  EXPECT_FALSE(WriteBcfFile(folder.path / "no folder" / "a.bcf", {MakeView("a")}, error));
  EXPECT_NE(error.find("it cannot be written"), std::string::npos) << error;
}

// ---- containers ----

TEST(BcfContainerTest, its_views_come_back_with_their_names_in_their_order) {
  const TemporaryFolder folder;
  const fs::path file = folder.path / "house.bcf";
  std::vector<BcfView> views = {MakeView("Door & <stairs>", 1.0), MakeView("\xC3\x84ste \"2\"", 2.0),
                                MakeView("", 3.0)};
  views[1].viewpoint.guid = zovhost::MakeGuid();
  views[1].viewpoint.camera = BcfViewpoint::Camera::Orthogonal;
  views[1].viewpoint.viewToWorldScale = 12.5;
  views[1].snapshot = "no picture at all";
  WriteWhole(file, views);
  const std::vector<BcfView> read = ReadWhole(file);
  ASSERT_EQ(read.size(), 3U);
  EXPECT_EQ(read[0].name, views[0].name);
  EXPECT_EQ(read[1].name, views[1].name);
  EXPECT_EQ(read[2].name, "View");
  EXPECT_EQ(read[1].viewpoint.guid, views[1].viewpoint.guid);
  EXPECT_EQ(read[1].viewpoint.viewToWorldScale, 12.5);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(read[i].viewpoint.cameraViewPoint, views[i].viewpoint.cameraViewPoint);
  }
}

TEST(BcfContainerTest, a_view_that_shows_nothing_is_told_by_its_name) {
  std::vector<BcfView> views = {MakeView("Door"), MakeView("Roof")};
  views[1].viewpoint.fieldOfView = 0.0;
  std::string bytes;
  std::string error;
  EXPECT_FALSE(FormatBcfContainer(views, "somebody", bytes, error));
  EXPECT_EQ(error,
            "Roof: VisualizationInfo.PerspectiveCamera.FieldOfView: it is not between 0 and 180 degrees");
}

TEST(BcfContainerTest, one_without_viewpoints_is_told) {
  std::vector<BcfView> views;
  std::string error;
  EXPECT_FALSE(ParseBcfContainer(FormatWhole({}), views, error));
  EXPECT_EQ(error, "there is no viewpoint with a camera in it");
}

TEST(BcfContainerTest, what_unpacks_to_very_much_is_not_unpacked) {
  const std::string bytes = FormatWhole({MakeView(std::string(zovhost::MOST_BCF_TEXT, 'x'))});
  EXPECT_LT(bytes.size(), 1'000'000U);
  std::vector<BcfView> views;
  std::string error;
  EXPECT_FALSE(ParseBcfContainer(bytes, views, error));
  const std::string wrong = "/markup.bcf: it is too large";
  ASSERT_GT(error.size(), wrong.size());
  EXPECT_EQ(error.substr(error.size() - wrong.size()), wrong);
}

TEST(BcfContainerTest, one_cut_off_or_damaged_is_read_or_refused_in_one_line) {
  Random random;
  const std::string whole = FormatWhole({MakeView("Door"), MakeView("Roof")});
  int read = 0;
  for (int i = 0; i < 2000; ++i) {
    std::string damaged = whole;
    for (int wounds = random.Integer(1, 4); wounds > 0; --wounds) {
      damaged[static_cast<std::size_t>(random.Integer(0, static_cast<int>(whole.size()) - 1))] =
          static_cast<char>(random.Integer(-128, 127));
    }
    if (random.Coin())
      damaged.resize(static_cast<std::size_t>(random.Integer(0, static_cast<int>(whole.size()))));
    std::vector<BcfView> views;
    std::string error;
    const bool good = ParseBcfContainer(damaged, views, error);
    EXPECT_EQ(good, error.empty());
    EXPECT_EQ(good, !views.empty());
    EXPECT_EQ(error.find_first_of("\r\n"), std::string::npos) << error;
    read += good ? 1 : 0;
  }
  EXPECT_GT(read, 10) << "a date may well be another";
  EXPECT_LT(read, 1500);
}

}  // namespace
