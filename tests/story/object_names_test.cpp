#include "story/object_names.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "story/open_storyboard.h"
#include "support/random.h"

using namespace Korvane;

namespace {

struct NameRow {
  const wchar_t* format;
  const wchar_t* name;  // of number 7
};
constexpr NameRow ROWS[] = {
    {L"Shot #%d", L"Shot #7"},
    {L"%d", L"7"},
    {L"%5d", L"    7"},
    {L"%02d", L"07"},
    {L"%d %d", L"7 7"},
    {L"100%%d", L"100%d 7"},
    {L"100%% %d", L"100% 7"},
    {L"%", L"% 7"},
    {L"%%", L"% 7"},
    {L"%s", L"%s 7"},
    {L"%n", L"%n 7"},
    {L"%99999d", L"%99999d 7"},
    {L"%005d", L"%005d 7"},
    {L"%-5d", L"%-5d 7"},
    {L"%ld", L"%ld 7"},
    {L"%s %d", L"%s 7"},
    {L"", L" 7"},
    {L"   ", L"    7"},
    {L"\u955c\u5934%d", L"\u955c\u59347"},
    {L"%d\u0644\u0642\u0637\u0629", L"7\u0644\u0642\u0637\u0629"},
};

TEST(ObjectNames, only_the_number_is_a_field) {
  for (const NameRow& row : ROWS) EXPECT_EQ(FormatName(row.format, 7), row.name) << row.format;
}

TEST(ObjectNames, a_number_that_is_longer_than_its_field_stands_whole) {
  EXPECT_EQ(FormatName(L"%2d", 123), L"123");
  EXPECT_EQ(FormatName(L"%03d", 1234), L"1234");
}

TEST(ObjectNames, are_at_most_255_characters_with_the_number_among_them) {
  const std::wstring lot(300, L'x');
  EXPECT_EQ(FormatName(lot + L"%d", 12), std::wstring(253, L'x') + L"12");
  EXPECT_EQ(FormatName(L"%d" + lot, 12), L"12" + std::wstring(253, L'x'));
  EXPECT_EQ(FormatName(lot, 12), std::wstring(252, L'x') + L" 12");
  EXPECT_EQ(FormatName(L"%99d", 12).size(), 99U);
}

// Made of the pieces of which hostile formats are.
TEST(ObjectNames, of_any_format_are_short_and_differ_by_their_number) {
  const wchar_t* const pieces[] = {L"%", L"d", L"%d", L"0",      L"99",
                                   L"s", L" ", L"%%", L"\u955c", L"xxxxxxxxxxxxxxxxxxxx"};
  Random random(75);
  for (int i = 0; i < 5000; ++i) {
    std::wstring format;
    for (int piece = random.Integer(0, 40); piece > 0; --piece) format += random.OneOf(pieces);
    std::set<std::wstring> names;
    for (const unsigned number : {1U, 2U, 9U, 10U, 11U, 4294967295U}) {
      names.insert(FormatName(format, number));
      ASSERT_LE(FormatName(format, number).size(), 255U);
    }
    ASSERT_EQ(names.size(), 6U);
  }
}

TEST(ObjectNames, the_lowest_that_is_free_is_taken) {
  const std::set<std::wstring> taken = {L"a1", L"a2", L"a4"};
  EXPECT_EQ(FindFreeName(L"a%d", [&](const std::wstring& name) { return taken.count(name) > 0; }), L"a3");
  EXPECT_EQ(FindFreeName(L"b%d", [&](const std::wstring& name) { return taken.count(name) > 0; }), L"b1");
}

TEST(ObjectNames, the_host_gives_the_format_or_the_library_does) {
  RecordingRenderer renderer;
  EXPECT_EQ(LoadNameFormat(&renderer, STRING_SHOT_NAME, L"Shot #%d"), L"text 74");
  EXPECT_EQ(LoadNameFormat(&renderer, STRING_SEQUENCE_NAME, L"Sequence #%d"), L"text 73");
  renderer.FailAlways("LoadStringResource");
  EXPECT_EQ(LoadNameFormat(&renderer, STRING_SHOT_NAME, L"Shot #%d"), L"Shot #%d");
  EXPECT_EQ(LoadNameFormat(nullptr, STRING_SHOT_NAME, L"Shot #%d"), L"Shot #%d");
}

using NamesTest = StoryboardTest;

TEST_F(NamesTest, with_the_second_of_three_deleted_the_next_is_the_second_again) {
  board->SetRenderer(nullptr);
  Sequence* const sequence = board->CreateSequence();
  EXPECT_EQ(sequence->GetName(), L"Sequence #1");
  board->CreateShot(sequence);
  board->CreateShot(sequence);
  EXPECT_TRUE(board->DeleteShot(sequence->FindShot(L"Shot #2")));
  EXPECT_EQ(board->CreateShot(sequence)->GetName(), L"Shot #2");
  EXPECT_EQ(board->CreateShot(sequence)->GetName(), L"Shot #4");
  EXPECT_EQ(board->CreateSequence()->GetName(), L"Sequence #2");
}

}  // namespace
