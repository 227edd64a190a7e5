#include "zovhost/wide_text.h"

#include <gtest/gtest.h>

namespace {

TEST(WideText, texts_survive_the_way_to_wide_characters_and_back) {
  const std::string text = "Zoom – größer, 拡大 𝄞";
  EXPECT_EQ(zovhost::WideToUtf8(zovhost::Utf8ToWide(text)), text);
  EXPECT_EQ(zovhost::Utf8ToWide("é"), L"\u00e9");
}

TEST(WideText, what_is_malformed_becomes_the_replacement_character) {
  const std::wstring mark = L"\uFFFD";
  EXPECT_EQ(zovhost::Utf8ToWide("a\xff"
                                "b"),
            L"a" + mark + L"b");
  EXPECT_EQ(zovhost::Utf8ToWide("\xe2\x82"), mark + mark);             // cut off
  EXPECT_EQ(zovhost::Utf8ToWide("\xc0\x80"), mark + mark);             // longer than needed
  EXPECT_EQ(zovhost::Utf8ToWide("\xed\xa0\x80"), mark + mark + mark);  // half of a pair
  EXPECT_EQ(zovhost::WideToUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xef\xbf\xbd");
}

}  // namespace
