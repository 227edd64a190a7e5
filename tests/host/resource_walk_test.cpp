// Every number that can be asked for has its picture, its cursor or its words.
#include <gtest/gtest.h>

#include <string>

#include "korvane/resource_ids.h"
#include "zovhost/languages.h"
#include "zovhost/resource_pack.h"

namespace {

using zovhost::Image;
using zovhost::ResourcePack;

bool HasInk(const Image& image) {
  for (std::size_t i = 3; i < image.rgba.size(); i += 4) {
    if (image.rgba[i] > 0) return true;
  }
  return false;
}

TEST(ResourceWalk, each_texture_has_a_picture_that_shows_something_at_each_scale) {
  const auto pack = ResourcePack::GetDefault();
  for (int id = 0; id < ResourcePack::pictureCount; ++id) {
    if (id == Korvane::TEXTURE_NONE) continue;
    EXPECT_TRUE(pack->HasPicture(id)) << id;
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
      Image image;
      ASSERT_TRUE(pack->RenderPicture(id, scale, image)) << id << " at " << scale;
      EXPECT_TRUE(HasInk(image)) << id << " at " << scale;
    }
  }
}

TEST(ResourceWalk, each_cursor_has_a_picture_that_shows_something_at_each_scale) {
  const auto pack = ResourcePack::GetDefault();
  ASSERT_EQ(ResourcePack::cursorCount, static_cast<int>(Korvane::CURSOR_NONE));
  for (int id = 0; id < ResourcePack::cursorCount; ++id) {
    EXPECT_TRUE(pack->HasCursor(id)) << id;
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
      zovhost::CursorPicture cursor;
      ASSERT_TRUE(pack->RenderCursor(id, scale, cursor)) << id << " at " << scale;
      EXPECT_TRUE(HasInk(cursor.image)) << id << " at " << scale;
    }
  }
}

TEST(ResourceWalk, each_text_has_words_in_each_language) {
  for (const zovhost::Language& language : zovhost::GetLanguages()) {
    const auto pack = ResourcePack::Make(language);
    for (int id = 0; id < ResourcePack::stringCount; ++id) {
      EXPECT_EQ(pack->GetString(id).empty(), id == Korvane::STRING_NONE) << language.tag << ' ' << id;
    }
  }
}

// A word may be the same, a sentence is not.
TEST(ResourceWalk, no_sentence_is_left_in_english) {
  constexpr std::size_t sentence = 16;  // characters
  const auto english = ResourcePack::GetDefault();
  for (const zovhost::Language& language : zovhost::GetLanguages()) {
    const auto pack = ResourcePack::Make(language);
    for (int id = 0; id < ResourcePack::stringCount && language.tag != "en"; ++id) {
      if (english->GetString(id).size() < sentence) continue;
      EXPECT_NE(pack->GetString(id), english->GetString(id)) << language.tag << ' ' << id;
    }
  }
}

}  // namespace
