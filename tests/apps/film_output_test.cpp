// The files of a film, and what is left of one that fails.
#include "film_output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "program.h"

namespace {

namespace fs = std::filesystem;

zovhost::Image MakePicture(std::uint8_t grey) {
  zovhost::Image picture;
  picture.width = 64;
  picture.height = 40;
  picture.rgba.assign(std::size_t{4} * 64 * 40, grey);
  for (std::size_t i = 3; i < picture.rgba.size(); i += 4) picture.rgba[i] = 255;
  return picture;
}

TEST(FilmOutputTest, pictures_sheet_animation_and_page_appear_together) {
  const apps_test::TemporaryFolder folder;
  const fs::path place = folder.GetPath() / "film";
  std::string error;
  zovview::FilmOutput output(place, {"Film", "", "film.webp", 100});
  ASSERT_TRUE(output.Begin(error)) << error;
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(output.Add(MakePicture(static_cast<std::uint8_t>(80 * i)), "grey", i == 0, error)) << error;
  }
  EXPECT_FALSE(fs::exists(place));
  ASSERT_TRUE(output.Publish(error)) << error;
  for (const char* name : {"000.png", "001.png", "002.png", "contact_sheet.png", "film.webp", "index.html"}) {
    EXPECT_TRUE(fs::exists(place / name)) << name;
  }
}

TEST(FilmOutputTest, what_the_writer_cannot_write_is_one_line_and_leaves_nothing) {
  const apps_test::TemporaryFolder folder;
  std::string error;
  bool added = true;
  bool published = true;
  {
    zovview::FilmOutput output(folder.GetPath() / "film", {"Film", "", "film.webp", 100});
    ASSERT_TRUE(output.Begin(error)) << error;
    fs::remove_all(folder.GetPath() / ".film.partial");  // where it writes
    added = output.Add(MakePicture(1), "grey", true, error);
    published = output.Publish(error);
  }
  EXPECT_FALSE(added && published);
  EXPECT_NE(error.find("000.png"), std::string::npos) << error;
  EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 0) << error;
  EXPECT_TRUE(folder.IsEmpty());
}

}  // namespace
