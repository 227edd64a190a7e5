// Every number that can be asked for has its picture, its cursor or its words.
#include <gtest/gtest.h>

#include <set>
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

// Numbers between those of the bar that stand for nothing: neither the library nor the kit draws them.
const std::set<int> UNUSED = {
    150, 151, 162, 163, 164, 165, 166, 167, 168, 169, 179, 180, 181, 182, 183, 184, Korvane::TEXTURE_NONE};

TEST(ResourceWalk, each_texture_has_a_picture_that_shows_something_at_each_scale) {
  const auto pack = ResourcePack::GetDefault();
  for (int id = 0; id < ResourcePack::pictureCount; ++id) {
    if (UNUSED.contains(id)) continue;
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

// Numbers that stand for nothing that is shown, and messages that say nothing by design.
const std::set<int> SILENT = {2,  27, 28, 37, 40, 42, 43,  44,
                              45, 46, 48, 53, 54, 59, 101, Korvane::STRING_NONE};

TEST(ResourceWalk, each_text_that_is_shown_has_words_in_each_language) {
  for (const zovhost::Language& language : zovhost::GetLanguages()) {
    const auto pack = ResourcePack::Make(language);
    for (int id = 0; id < ResourcePack::stringCount; ++id) {
      EXPECT_EQ(pack->GetString(id).empty(), SILENT.contains(id)) << language.tag << ' ' << id;
    }
  }
}

}  // namespace
