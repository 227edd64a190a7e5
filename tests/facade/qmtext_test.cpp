#include "zov/qmtext.h"

#include <gtest/gtest.h>

#include <utility>

#include "support/random.h"
#include "zov/zov_string_converter.h"

namespace {

using namespace std::string_literals;

const std::wstring FACE = L"\U0001F600";  // one wide character or a pair
const std::string FACE_UTF8 = "\xF0\x9F\x98\x80";

TEST(QmString, without_arguments_is_empty) {
  EXPECT_TRUE(qmString().empty());
  EXPECT_EQ(qmString().convert(qmStringUTF8), "");
}

TEST(QmString, is_moved_with_its_text) {
  qmString text(L"cube", qmStringWcs);
  qmString moved(std::move(text));
  EXPECT_EQ(moved.convert(qmStringUTF8), "cube");
  qmString assigned;
  assigned = std::move(moved);
  EXPECT_EQ(assigned.convert(qmStringUTF8), "cube");
}

TEST(QmString, reads_utf8_of_the_length_that_goes_in) {
  int length = 4;
  const qmString text("h\xC3\xA9j!", qmStringUTF8, length);
  EXPECT_EQ(length, 4);
  EXPECT_EQ(text.convert(qmStringWcs), L"h\u00E9j");
}

TEST(QmString, reads_up_to_the_first_zero_and_says_how_much_that_was) {
  int length = -1;
  EXPECT_EQ(qmString("caf\xC3\xA9", qmStringUTF8, length).convert(qmStringWcs), L"caf\u00E9");
  EXPECT_EQ(length, 5);
  length = -1;
  EXPECT_EQ(qmString(L"cube", qmStringWcs, length).convert(qmStringUTF8), "cube");
  EXPECT_EQ(length, 4);
}

TEST(QmString, reads_wide_characters_of_the_length_that_goes_in) {
  int length = 2;
  EXPECT_EQ(qmString(L"cube", qmStringWcs, length).convert(qmStringWcs), L"cu");
  EXPECT_EQ(length, 2);
}

TEST(QmString, of_null_is_empty_and_of_no_length) {
  int length = 9;
  EXPECT_TRUE(qmString(static_cast<const char*>(nullptr), qmStringUTF8, length).empty());
  EXPECT_EQ(length, 0);
  length = -1;
  EXPECT_TRUE(qmString(static_cast<const wchar_t*>(nullptr), qmStringWcs, length).empty());
  EXPECT_EQ(length, 0);
}

TEST(QmString, keeps_zeros_within) {
  const qmString text("a\0b"s, qmStringUTF8);
  EXPECT_EQ(text.convert(qmStringWcs), L"a\0b"s);
  EXPECT_EQ(text.convert(qmStringUTF8), "a\0b"s);
  int length = 3;
  EXPECT_EQ(qmString(L"a\0b", qmStringWcs, length), text);
}

TEST(QmString, reaches_beyond_the_basic_plane) {
  EXPECT_EQ(qmString(FACE_UTF8, qmStringUTF8).convert(qmStringWcs), FACE);
  EXPECT_EQ(qmString(FACE, qmStringWcs).convert(qmStringUTF8), FACE_UTF8);
}

TEST(QmString, replaces_what_is_no_text) {
  EXPECT_EQ(qmString("a\xFFz", qmStringUTF8).convert(qmStringWcs), L"a\uFFFDz");
  EXPECT_EQ(qmString("\xE2\x82", qmStringUTF8).convert(qmStringUTF8), "\xEF\xBF\xBD");
  const std::wstring half(1, static_cast<wchar_t>(0xD83D));
  EXPECT_EQ(qmString(L"a" + half + L"z", qmStringWcs).convert(qmStringWcs), L"a\uFFFDz");
}

// Where a wide character is four bytes long it may be a number that names no character.
TEST(QmString, replaces_wide_characters_beyond_the_last_one) {
  for (const long number : {0x10FFFFL, 0x110000L, 0x7FFFFFFFL, -1L}) {
    if (sizeof(wchar_t) == 2) continue;
    const std::wstring text = L"a" + std::wstring(1, static_cast<wchar_t>(number)) + L"z";
    EXPECT_EQ(qmString(text, qmStringWcs).convert(qmStringWcs), number == 0x10FFFF ? text : L"a\uFFFDz")
        << number;
    int length = 3;
    EXPECT_EQ(qmString(text.c_str(), qmStringWcs, length), qmString(text, qmStringWcs)) << number;
  }
}

TEST(QmString, copies_assigns_and_compares) {
  qmString text("one", qmStringUTF8);
  const qmString copy = text;
  text = qmString("two", qmStringUTF8);
  EXPECT_EQ(copy, qmString(L"one", qmStringWcs));
  EXPECT_NE(copy, text);
  EXPECT_LT(copy, text);
}

TEST(ZovStringConverter, gives_the_memory_of_the_text) {
  const qmString text("cube", qmStringUTF8);
  const wchar_t* const wide = zovStringConverter::to_KORVANE_CHAR_T(text);
  EXPECT_EQ(wide, text.convert(qmStringWcs).c_str());
  EXPECT_STREQ(wide, L"cube");
}

TEST(ZovStringConverter, takes_every_text_there_and_back) {
  Random random;
  for (int round = 0; round < 500; ++round) {
    std::wstring text;
    for (int i = random.Integer(0, 12); i > 0; --i) {
      text += static_cast<wchar_t>(random.Integer(0, 0xD7FF));
      if (random.Coin()) text += FACE;
    }
    const qmString converted = zovStringConverter::to_qmString(text);
    ASSERT_EQ(zovStringConverter::to_KORVANE_STRING_T(converted), text);
    ASSERT_EQ(qmString(converted.convert(qmStringUTF8), qmStringUTF8), converted);
  }
}

}  // namespace
