// Files that appear whole or not at all, and what links are to them.
#include "zovhost/whole_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "korvane/story.h"
#include "scene_files.h"
#include "support/cameras.h"
#include "zovhost/named_views_file.h"
#include "zovhost/picture.h"
#include "zovhost/story_file.h"

namespace {

namespace fs = std::filesystem;
using zovhost::WholeFile;

std::string ReadText(const fs::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

class WholeFileTest : public testing::Test {
 protected:
  void WriteNow(const fs::path& to, const std::string& text) {
    WholeFile file(to);
    EXPECT_TRUE(file.Write(text.data(), text.size()));
    EXPECT_TRUE(file.Finish(error)) << error;
  }

  TemporaryFolder folder;
  fs::path path = folder.path / "place";
  std::string error;
};

TEST_F(WholeFileTest, is_what_was_there_until_it_is_finished) {
  folder.Write("place", "before");
  {
    WholeFile file(path);
    EXPECT_TRUE(file.Write("after", 5));
    EXPECT_EQ(ReadText(path), "before");
    EXPECT_EQ(folder.CountFiles(), 2U) << "beside it";
  }
  EXPECT_EQ(ReadText(path), "before");
  EXPECT_EQ(folder.CountFiles(), 1U) << "dropped";
  WriteNow(path, "after");
  EXPECT_EQ(ReadText(path), "after");
  EXPECT_EQ(folder.CountFiles(), 1U);
}

TEST_F(WholeFileTest, one_that_cannot_be_written_is_told_by_the_name_that_was_given) {
  path = folder.path / "no such folder" / "place";
  WholeFile file(path);
  EXPECT_FALSE(file.Write("after", 5));
  EXPECT_TRUE(file.HasFailed());
  EXPECT_FALSE(file.Finish(error));
  EXPECT_EQ(error.rfind(path.string() + ": it cannot be written", 0), 0U) << error;
  EXPECT_EQ(error.find('\n'), std::string::npos);
  EXPECT_EQ(folder.CountFiles(), 0U);
}

#if !defined(_WIN32)

class LinkTest : public WholeFileTest {
 protected:
  void SetUp() override {
    fs::create_directory(far);
    fs::create_symlink(fs::path("far") / "target", path);  // as seen from the folder of the link
  }

  fs::path far = folder.path / "far";
  fs::path target = far / "target";
};

TEST_F(LinkTest, stays_and_what_it_leads_to_is_written_beside_itself) {
  folder.Write("far/target", "before");
  {
    WholeFile file(path);
    EXPECT_TRUE(file.Write("after", 5));
    EXPECT_EQ(ReadText(target), "before");
    EXPECT_EQ(folder.CountFiles(), 2U) << "the link and the folder";
    EXPECT_TRUE(file.Finish(error)) << error;
  }
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_FALSE(fs::is_symlink(target));
  EXPECT_EQ(ReadText(target), "after");
  EXPECT_EQ(std::distance(fs::directory_iterator(far), fs::directory_iterator()), 1);
}

TEST_F(LinkTest, may_lead_over_others) {
  folder.Write("far/end", "before");
  fs::create_symlink("end", target);
  WriteNow(path, "after");
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_TRUE(fs::is_symlink(target));
  EXPECT_EQ(ReadText(far / "end"), "after");
  EXPECT_EQ(zovhost::FollowLinks(path), fs::canonical(far / "end"));
}

TEST_F(LinkTest, becomes_the_file_where_it_leads_nowhere_or_round_in_a_circle) {
  WriteNow(path, "after");
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(path)));
  EXPECT_EQ(ReadText(path), "after");
  EXPECT_FALSE(fs::exists(target));
  fs::create_symlink("target", target);
  EXPECT_EQ(zovhost::FollowLinks(target), target);
  WriteNow(target, "round");
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(target)));
}

TEST_F(LinkTest, to_a_folder_is_no_place_for_a_file) {
  fs::create_directory(target);
  WholeFile file(path);
  EXPECT_TRUE(file.Write("after", 5));
  EXPECT_FALSE(file.Finish(error));
  EXPECT_EQ(error.rfind(path.string() + ": ", 0), 0U) << error;
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_TRUE(fs::is_directory(target));
  EXPECT_EQ(std::distance(fs::directory_iterator(far), fs::directory_iterator()), 1);
}

// Whatever the kit keeps.
TEST_F(LinkTest, of_a_user_survives_all_that_is_written_there) {
  zovhost::NamedViews views;
  views.Add("Door", LookAt({4, -9, 3}, {0, 0, 1}, {0, 0, 1}));
  const fs::path model = folder.path / "house.obj";
  const std::function<bool(const fs::path&)> writers[] = {
      [&](const fs::path& file) { return zovhost::StoryFile().Write(Korvane::Story(), file, error); },
      [&](const fs::path& file) {
        return zovhost::WritePng(file, {2, 2, std::vector<std::uint8_t>(16)}, error);
      },
      [&](const fs::path& file) {
        fs::rename(file, zovhost::NamedViewsFile::FindPlaceBeside(model));
        folder.Write("far/target", zovhost::FormatNamedViews({}));
        zovhost::NamedViews read;
        zovhost::NamedViewsFile kept(model, {});
        const bool done = kept.Read(read, error) && kept.Keep(views, error);
        fs::rename(zovhost::NamedViewsFile::FindPlaceBeside(model), file);
        return done;
      }};
  for (const auto& write : writers) {
    folder.Write("far/target", "before");
    EXPECT_TRUE(write(path)) << error;
    EXPECT_TRUE(fs::is_symlink(path));
    EXPECT_NE(ReadText(target), "before");
    EXPECT_GT(fs::file_size(target), 6U);
  }
}

#endif

}  // namespace
