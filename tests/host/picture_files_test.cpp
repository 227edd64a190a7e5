#include "zovhost/picture.h"
#include "zovhost/read_image.h"

#include <algorithm>
#include <cstring>

#include "host/scene_files.h"

namespace {

using zovhost::Image;

Image MakeImage(int width, int height, std::array<std::uint8_t, 4> colour) {
  Image image{width, height, {}};
  for (int i = 0; i < width * height; ++i) image.rgba.insert(image.rgba.end(), colour.begin(), colour.end());
  return image;
}

std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class Picture : public testing::Test {
 protected:
  TemporaryFolder folder;
  std::string error;
};

TEST_F(Picture, returns_from_png_as_it_was_written) {
  Image image{3, 2, {}};
  for (int i = 0; i < 24; ++i) image.rgba.push_back(static_cast<std::uint8_t>(i * 11));
  const std::filesystem::path path = folder.path / "picture.png";
  ASSERT_TRUE(zovhost::WritePng(path, image, error)) << error;
  Image back;
  ASSERT_TRUE(zovhost::ReadImage(path, back, error)) << error;
  EXPECT_EQ(back.width, 3);
  EXPECT_EQ(back.height, 2);
  EXPECT_EQ(back.rgba, image.rgba);
  EXPECT_EQ(folder.CountFiles(), 1u) << "the temporary file is gone";
}

TEST_F(Picture, replaces_an_older_file) {
  const std::filesystem::path path = folder.Write("picture.png", "something older");
  ASSERT_TRUE(zovhost::WritePng(path, MakeImage(4, 4, {1, 2, 3, 255}), error)) << error;
  EXPECT_EQ(ReadBytes(path).substr(1, 3), "PNG");
}

TEST_F(Picture, without_pixels_or_with_too_few_bytes_is_refused_and_nothing_is_written) {
  Image cut = MakeImage(4, 4, {1, 2, 3, 255});
  cut.rgba.pop_back();
  for (const Image& bad : {Image{}, Image{0, 5, {}}, Image{5, 0, {}}, Image{-1, -1, {1, 2, 3, 4}}, cut}) {
    error.clear();
    EXPECT_FALSE(zovhost::WritePng(folder.path / "bad.png", bad, error));
    EXPECT_NE(error.find("bad.png: "), std::string::npos) << error;
    EXPECT_EQ(folder.CountFiles(), 0u);
  }
}

TEST_F(Picture, that_cannot_be_written_leaves_the_older_file_alone) {
  const Image image = MakeImage(2, 2, {1, 2, 3, 255});
  EXPECT_FALSE(zovhost::WritePng(folder.path / "missing" / "picture.png", image, error));
  EXPECT_NE(error.find("picture.png: it cannot be written: "), std::string::npos) << error;
  std::filesystem::create_directories(folder.path / "taken.png" / "inside");
  EXPECT_FALSE(zovhost::WritePng(folder.path / "taken.png", image, error));
  EXPECT_EQ(folder.CountFiles(), 1u) << "nothing half-written is left";
}

TEST_F(Picture, that_is_missing_empty_broken_or_a_folder_is_refused_in_one_line) {
  std::string png;
  ASSERT_TRUE(zovhost::WritePng(folder.path / "whole.png", MakeImage(64, 64, {9, 9, 9, 255}), error));
  png = ReadBytes(folder.path / "whole.png");
  const std::filesystem::path paths[] = {folder.path / "missing.png", folder.Write("empty.png", ""),
                                         folder.Write("text.png", "no picture"), folder.path,
                                         folder.Write("cut.png", png.substr(0, 30))};
  for (const std::filesystem::path& path : paths) {
    Image image = MakeImage(1, 1, {7, 7, 7, 7});
    error.clear();
    EXPECT_FALSE(zovhost::ReadImage(path, image, error)) << path;
    EXPECT_EQ(error.find(path.string() + ": "), 0u) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos);
    EXPECT_EQ(image.width, 1) << "a failure leaves the image alone";
  }
}

// A header of a few bytes that announces 2 147 483 647 by 2 147 483 647 pixels.
TEST_F(Picture, of_absurd_size_is_refused_without_trying) {
  ASSERT_TRUE(zovhost::WritePng(folder.path / "small.png", MakeImage(1, 1, {9, 9, 9, 255}), error));
  std::string bytes = ReadBytes(folder.path / "small.png");
  for (const std::size_t at : {16u, 20u}) bytes.replace(at, 4, "\x7f\xff\xff\xff");
  Image image;
  EXPECT_FALSE(zovhost::ReadImage(folder.Write("huge.png", bytes), image, error));
}

// The middle of a picture on the sheet, found by its colour.
int CountPixels(const Image& image, std::array<std::uint8_t, 4> colour) {
  int count = 0;
  for (std::size_t i = 0; i < image.rgba.size(); i += 4)
    count += std::equal(colour.begin(), colour.end(), image.rgba.begin() + static_cast<std::ptrdiff_t>(i));
  return count;
}

constexpr std::array<std::uint8_t, 4> RED = {200, 20, 20, 255};
constexpr std::array<std::uint8_t, 4> BLUE = {20, 20, 200, 255};

TEST_F(Picture, sheet_shows_every_picture_in_its_column) {
  Image sheet;
  ASSERT_TRUE(zovhost::MakeContactSheet({{MakeImage(200, 100, RED), "one"},
                                         {MakeImage(200, 100, BLUE), "two"},
                                         {MakeImage(200, 100, RED), "three"}},
                                        {"", "", 2, 200}, sheet, error))
      << error;
  EXPECT_NEAR(CountPixels(sheet, RED), 2 * 200 * 100, 2 * 700);  // but for the rounded edge
  EXPECT_NEAR(CountPixels(sheet, BLUE), 200 * 100, 700);
  EXPECT_EQ(sheet.rgba.size(), 4u * static_cast<std::size_t>(sheet.width * sheet.height));
  EXPECT_GT(sheet.width, 2 * 200);
  EXPECT_LT(sheet.width, 3 * 200);
  EXPECT_TRUE(zovhost::WritePng(folder.path / "sheet.png", sheet, error)) << error;
}

TEST_F(Picture, sheet_writes_titles_and_labels_into_room_of_their_own) {
  const Image red = MakeImage(200, 100, RED);
  Image bare, labelled, titled;
  ASSERT_TRUE(zovhost::MakeContactSheet({{red, ""}}, {"", "", 1, 200}, bare, error));
  ASSERT_TRUE(zovhost::MakeContactSheet({{red, "A label"}}, {"", "", 1, 200}, labelled, error));
  ASSERT_TRUE(zovhost::MakeContactSheet({{red, "A label"}}, {"Title", "Subtitle", 1, 200}, titled, error));
  EXPECT_EQ(bare.height, labelled.height);
  EXPECT_GT(titled.height, labelled.height);
  EXPECT_NE(bare.rgba, labelled.rgba);
  EXPECT_EQ(CountPixels(bare, RED), CountPixels(labelled, RED)) << "the label covers nothing of the picture";
  EXPECT_EQ(CountPixels(bare, RED), CountPixels(titled, RED));
}

TEST_F(Picture, sheet_bears_labels_of_any_kind) {
  const Image red = MakeImage(20, 20, RED);
  Image sheet;
  EXPECT_TRUE(zovhost::MakeContactSheet(
      {{red, std::string(5000, 'x')}, {red, "two\nlines"}, {red, "\xff\xfe broken"}},
      {"<b>title</b>", "", 3, 100}, sheet, error))
      << error;
}

TEST_F(Picture, sheet_is_refused_without_pictures_or_pixels) {
  Image sheet;
  EXPECT_FALSE(zovhost::MakeContactSheet({}, {}, sheet, error));
  EXPECT_NE(error, "");
  error.clear();
  EXPECT_FALSE(zovhost::MakeContactSheet({{Image{}, "nothing"}}, {}, sheet, error));
  EXPECT_NE(error.find("nothing"), std::string::npos);
  EXPECT_FALSE(
      zovhost::MakeContactSheet({{MakeImage(1, 10000, RED), "tower"}}, {"", "", 1, 8000}, sheet, error));
}

// The chunks of a WebP file: RIFF, the size, WEBP, then name, size and content of each, evened.
struct Chunk {
  std::string name;
  std::string content;
};

std::uint32_t GetNumber(const std::string& bytes, std::size_t at, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t i = size; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
  return number;
}

std::vector<Chunk> GetChunks(const std::string& bytes) {
  EXPECT_EQ(bytes.substr(0, 4), "RIFF");
  EXPECT_EQ(bytes.substr(8, 4), "WEBP");
  std::vector<Chunk> chunks;
  for (std::size_t at = 12; at + 8 <= bytes.size();) {
    const std::uint32_t size = GetNumber(bytes, at + 4, 4);
    chunks.push_back({bytes.substr(at, 4), bytes.substr(at + 8, size)});
    at += 8 + size + (size & 1u);
  }
  return chunks;
}

TEST_F(Picture, animation_holds_its_frames_and_repeats_for_ever) {
  zovhost::AnimationWriter animation;
  for (int i = 0; i < 3; ++i)
    ASSERT_TRUE(animation.Add(MakeImage(64, 48, i == 1 ? RED : BLUE), 40 + i, error)) << error;
  const std::filesystem::path path = folder.path / "tour.webp";
  ASSERT_TRUE(animation.Write(path, error)) << error;
  int frames = 0;
  std::uint32_t milliseconds = 0;
  for (const Chunk& chunk : GetChunks(ReadBytes(path))) {
    if (chunk.name == "ANIM") {
      EXPECT_EQ(GetNumber(chunk.content, 4, 2), 0u) << "times to play, 0: for ever";
    }
    if (chunk.name != "ANMF") continue;
    ++frames;
    milliseconds += GetNumber(chunk.content, 12, 3);
  }
  EXPECT_EQ(frames, 3);
  EXPECT_EQ(milliseconds, 40u + 41u + 42u);
  EXPECT_FALSE(animation.Add(MakeImage(64, 48, RED), 40, error)) << "it has ended";
  EXPECT_FALSE(animation.Write(path, error));
}

TEST_F(Picture, animation_refuses_frames_that_do_not_fit) {
  zovhost::AnimationWriter animation;
  EXPECT_FALSE(animation.Add(Image{}, 40, error));
  EXPECT_FALSE(animation.Write(folder.path / "none.webp", error));
  EXPECT_NE(error.find("none.webp: "), std::string::npos) << error;
  EXPECT_TRUE(animation.Add(MakeImage(64, 48, RED), 40, error)) << error;
  EXPECT_FALSE(animation.Add(MakeImage(48, 64, RED), 40, error));
  EXPECT_FALSE(animation.Add(MakeImage(64, 48, RED), 0, error));
  EXPECT_FALSE(animation.Add(MakeImage(20000, 1, RED), 40, error));
  EXPECT_EQ(folder.CountFiles(), 0u);
  EXPECT_FALSE(animation.Write(folder.path / "missing" / "tour.webp", error));
}

}  // namespace
