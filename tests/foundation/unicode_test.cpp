#include "foundation/unicode.h"

#include <gtest/gtest.h>

#include "support/random.h"

namespace {

using namespace Korvane::Unicode;
using namespace std::string_literals;

std::u32string Read(std::string_view text) { return Convert<char32_t>(text); }

// From the definition of UTF-8: 7, 11, 16 and 21 bits, in groups of six behind the first byte.
TEST(UnicodeUtf8, is_read_at_the_ends_of_each_length) {
  EXPECT_EQ(Read("\x01\x7F"), U"\x01\x7F");
  EXPECT_EQ(Read("\xC2\x80\xDF\xBF"), U"\u0080\u07FF");
  EXPECT_EQ(Read("\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"), U"\u0800\uD7FF\uE000\uFFFF");
  EXPECT_EQ(Read("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), U"\U00010000\U0010FFFF");
}

struct Broken {
  const char* what;
  std::string bytes;
  std::u32string text;
};

TEST(UnicodeUtf8, that_is_broken_becomes_the_replacement) {
  const Broken rows[] = {
      {"a byte that only follows", "a\x80z", U"a\uFFFDz"},
      {"bytes that begin nothing", "\xC0\xC1\xF5\xFF", U"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"a longer way to write a slash", "\xC0\xAF", U"\uFFFD\uFFFD"},
      {"a longer way of three bytes", "\xE0\x9F\xBF", U"\uFFFD\uFFFD\uFFFD"},
      {"a longer way of four bytes", "\xF0\x8F\xBF\xBF", U"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"half of a pair", "\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},
      {"beyond the last character", "\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"a beginning at the end", "\xE2\x82", U"\uFFFD"},
      {"a beginning before another character", "\xF0\x9F\x98z", U"\uFFFDz"},
      {"a beginning before another beginning", "\xE2\x82\xC3\xA9", U"\uFFFD\u00E9"},
  };
  for (const Broken& row : rows) EXPECT_EQ(Read(row.bytes), row.text) << row.what;
}

// 0x1F600 - 0x10000 = 0xF600, of which the upper ten bits are 0x3D and the lower ten 0x200.
TEST(UnicodeUtf16, writes_what_is_beyond_the_basic_plane_as_a_pair) {
  EXPECT_EQ(Convert<char16_t>(std::string_view("\xF0\x9F\x98\x80")), u"\xD83D\xDE00");
  EXPECT_EQ(Convert<char>(std::u16string_view(u"\xD83D\xDE00")), "\xF0\x9F\x98\x80");
}

TEST(UnicodeUtf16, halves_of_pairs_become_the_replacement) {
  const auto read = [](const std::u16string& text) { return Convert<char32_t>(std::u16string_view(text)); };
  const auto high = static_cast<char16_t>(0xD83D);
  const auto low = static_cast<char16_t>(0xDE00);
  EXPECT_EQ(read({high}), U"\uFFFD");
  EXPECT_EQ(read({high, u'z'}), U"\uFFFDz");
  EXPECT_EQ(read({low, high}), U"\uFFFD\uFFFD");
  EXPECT_EQ(read({high, high, low}), U"\uFFFD\U0001F600");
}

TEST(UnicodeUtf32, what_is_no_character_becomes_the_replacement) {
  const std::u32string text = {U'a', 0xD800, 0xDFFF, 0x110000, 0xFFFFFFFF, 0x10FFFF};
  EXPECT_EQ(Convert<char32_t>(std::u32string_view(text)), U"a\uFFFD\uFFFD\uFFFD\uFFFD\U0010FFFF");
}

TEST(UnicodeConvert, keeps_zeros) { EXPECT_EQ(Read("a\0b"s), U"a\0b"s); }

char32_t RandomCharacter(Random& random) {
  constexpr int ENDS[] = {0x7F, 0x7FF, 0xFFFF, 0x10FFFF};
  for (;;) {
    const auto value = static_cast<char32_t>(random.Integer(0, random.OneOf(ENDS)));
    if (IsCharacter(value)) return value;
  }
}

TEST(UnicodeConvert, brings_every_text_back_from_each_form) {
  Random random;
  for (int round = 0; round < 2000; ++round) {
    std::u32string text;
    for (int i = random.Integer(0, 20); i > 0; --i) text += RandomCharacter(random);
    const std::u32string_view view(text);
    const std::string narrow = Convert<char>(view);
    const std::u16string pairs = Convert<char16_t>(view);
    ASSERT_EQ(Convert<char32_t>(std::string_view(narrow)), text);
    ASSERT_EQ(Convert<char32_t>(std::u16string_view(pairs)), text);
    ASSERT_EQ(Convert<char>(std::u16string_view(pairs)), narrow);
  }
}

// Whatever is read is well formed, and so comes back as it is.
TEST(UnicodeConvert, makes_a_text_of_any_bytes) {
  Random random;
  for (int round = 0; round < 2000; ++round) {
    std::string bytes;
    for (int i = random.Integer(0, 20); i > 0; --i) bytes += static_cast<char>(random.Integer(0, 255));
    const std::u32string text = Read(bytes);
    for (const char32_t character : text) ASSERT_TRUE(IsCharacter(character));
    const std::string again = Convert<char>(std::u32string_view(text));
    ASSERT_EQ(Read(again), text);
  }
}

}  // namespace
