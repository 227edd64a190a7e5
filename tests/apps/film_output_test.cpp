// The files of a film, and what is left of one that fails.
#include "files/film_output.h"

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

void WriteFilm(const fs::path& place, int pictures) {
  std::string error;
  zovview::FilmOutput output(place, {"Film", "", "film.webp", 100});
  ASSERT_TRUE(output.Begin(error)) << error;
  for (int i = 0; i < pictures; ++i) {
    ASSERT_TRUE(output.Add(MakePicture(80), "grey", i == 0, error)) << error;
  }
  ASSERT_TRUE(output.Publish(error)) << error;
}

TEST(FilmOutputTest, pictures_of_an_earlier_film_go_and_those_of_others_stay) {
  const apps_test::TemporaryFolder folder;
  folder.Write("002.png", "of the user's");
  folder.Write("003.png", "of the user's");
  const fs::path& place = folder.GetPath();
  EXPECT_FALSE(zovview::FilmOutput::ReplacesFiles(place, "film.webp"));
  WriteFilm(place, 2);
  EXPECT_TRUE(zovview::FilmOutput::ReplacesFiles(place, "film.webp"));
  EXPECT_TRUE(fs::exists(place / "002.png") && fs::exists(place / "003.png")) << "nobody's film's";
  fs::remove(place / "002.png");
  WriteFilm(place, 3);
  folder.Write("004.png", "of the user's");
  WriteFilm(place, 1);
  EXPECT_TRUE(fs::exists(place / "000.png"));
  EXPECT_FALSE(fs::exists(place / "001.png") || fs::exists(place / "002.png"));
  EXPECT_TRUE(fs::exists(place / "003.png") && fs::exists(place / "004.png"));
}

TEST(FilmOutputTest, files_that_would_be_replaced_are_known_beforehand) {
  for (const char* name : {"000.png", "contact_sheet.png", "film.webp", "index.html"}) {
    const apps_test::TemporaryFolder folder;
    EXPECT_FALSE(zovview::FilmOutput::ReplacesFiles(folder.GetPath() / "film", "film.webp"));
    folder.Write("other.png", "");
    EXPECT_FALSE(zovview::FilmOutput::ReplacesFiles(folder.GetPath(), "film.webp"));
    folder.Write(name, "");
    EXPECT_TRUE(zovview::FilmOutput::ReplacesFiles(folder.GetPath(), "film.webp")) << name;
  }
}

TEST(FilmOutputTest, a_page_of_somebody_else_removes_nothing) {
  const apps_test::TemporaryFolder folder;
  folder.Write("index.html", "<meta name=\"zovtools-pictures\" content=\"many\">");
  folder.Write("001.png", "of the user's");
  WriteFilm(folder.GetPath(), 1);
  EXPECT_TRUE(fs::exists(folder.GetPath() / "001.png"));
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
