#include "korvane/story.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "story/new_shot.h"
#include "support/random.h"

using namespace Korvane;

namespace {

/// Three shots: a, b, c.
struct SequenceTest : ::testing::Test {
  SequenceTest() {
    for (ShotSpecification* const shot : {a, b, c}) sequence.AddShot(shot);
  }
  std::wstring Names() const {
    std::wstring names;
    for (std::uint64_t i = 0; i < sequence.GetShotCount(); ++i) names += sequence.GetShot(i)->GetName();
    return names;
  }

  Sequence sequence;
  ShotSpecification* const a = NewShot(L"a");
  ShotSpecification* const b = NewShot(L"b");
  ShotSpecification* const c = NewShot(L"c");
};

TEST(Sequence, begins_empty_and_without_a_name) {
  Sequence sequence;
  EXPECT_TRUE(sequence.IsEmpty());
  EXPECT_EQ(sequence.GetShotCount(), 0U);
  EXPECT_EQ(sequence.GetFirstShot(), nullptr);
  EXPECT_EQ(sequence.GetShot(0), nullptr);
  EXPECT_EQ(sequence.GetName(), L"");
  sequence.SetName(L"\u65e5\u672c");
  EXPECT_EQ(sequence.GetName(), L"\u65e5\u672c");
}

TEST_F(SequenceTest, appends_and_answers_the_index) {
  EXPECT_EQ(sequence.AddShot(NewShot(L"d")), 3U);
  EXPECT_EQ(Names(), L"abcd");
  EXPECT_FALSE(sequence.IsEmpty());
  EXPECT_EQ(sequence.GetFirstShot(), a);
  EXPECT_EQ(sequence.GetShot(2), c);
  EXPECT_EQ(sequence.GetShot(4), nullptr);
}

TEST_F(SequenceTest, inserts_before_an_index_and_at_the_end_beyond) {
  EXPECT_EQ(sequence.InsertShot(1, NewShot(L"d")), 1U);
  EXPECT_EQ(Names(), L"adbc");
  EXPECT_EQ(sequence.InsertShot(99, NewShot(L"e")), 4U);
  EXPECT_EQ(Names(), L"adbce");
}

TEST_F(SequenceTest, holds_a_shot_once_and_no_null) {
  EXPECT_EQ(sequence.AddShot(b), 1U);
  EXPECT_EQ(sequence.InsertShot(0, c), 2U);
  EXPECT_EQ(sequence.AddShot(nullptr), Sequence::NOT_THERE);
  EXPECT_EQ(Names(), L"abc");
}

TEST_F(SequenceTest, removes_without_deleting) {
  const std::unique_ptr<ShotSpecification> removed(sequence.RemoveShot(b));
  EXPECT_EQ(removed.get(), b);
  EXPECT_EQ(removed->GetName(), L"b");
  EXPECT_EQ(Names(), L"ac");
  EXPECT_EQ(sequence.RemoveShot(b), nullptr);
  EXPECT_EQ(sequence.RemoveShot(nullptr), nullptr);
}

TEST_F(SequenceTest, deletes_what_it_has) {
  EXPECT_TRUE(sequence.DeleteShot(a));
  EXPECT_EQ(Names(), L"bc");
  EXPECT_FALSE(sequence.DeleteShot(nullptr));
  const std::unique_ptr<ShotSpecification> other(NewShot(L"o"));
  EXPECT_FALSE(sequence.DeleteShot(other.get()));
}

TEST_F(SequenceTest, moves_before_another_and_to_the_end) {
  sequence.MoveShot(c, a);
  EXPECT_EQ(Names(), L"cab");
  sequence.MoveShot(c, b);
  EXPECT_EQ(Names(), L"acb");
  sequence.MoveShot(a, nullptr);
  EXPECT_EQ(Names(), L"cba");
}

TEST_F(SequenceTest, a_move_before_its_own_neighbour_moves_nothing) {
  sequence.MoveShot(a, b);
  EXPECT_EQ(Names(), L"abc");
}

TEST_F(SequenceTest, a_shot_that_is_moved_before_itself_or_before_a_stranger_stays_out) {
  sequence.MoveShot(a, a);
  EXPECT_EQ(Names(), L"bc");
  const std::unique_ptr<ShotSpecification> dropped(a);
  const std::unique_ptr<ShotSpecification> stranger(NewShot(L"s"));
  sequence.MoveShot(b, stranger.get());
  EXPECT_EQ(Names(), L"c");
  const std::unique_ptr<ShotSpecification> second(b);
}

TEST_F(SequenceTest, a_move_takes_in_a_shot_that_is_not_there) {
  sequence.MoveShot(NewShot(L"d"), b);
  EXPECT_EQ(Names(), L"adbc");
}

TEST_F(SequenceTest, finds_by_pointer_and_by_exact_name) {
  EXPECT_TRUE(sequence.ContainsShot(b));
  EXPECT_EQ(sequence.GetIndexOfShot(b), 1U);
  EXPECT_EQ(sequence.FindShot(L"b"), b);
  EXPECT_EQ(sequence.FindShot(L"B"), nullptr);
  EXPECT_EQ(sequence.FindShot(L""), nullptr);
  a->SetName(L"b");
  EXPECT_EQ(sequence.FindShot(L"b"), a);
  EXPECT_FALSE(sequence.ContainsShot(nullptr));
  EXPECT_EQ(sequence.GetIndexOfShot(nullptr), Sequence::NOT_THERE);
}

TEST(Story, is_of_sequences_what_a_sequence_is_of_shots) {
  Story story;
  EXPECT_TRUE(story.IsEmpty());
  EXPECT_EQ(story.GetFirstSequence(), nullptr);
  story.SetName(L"house");
  EXPECT_EQ(story.GetName(), L"house");
  auto* const a = std::make_unique<Sequence>().release();
  auto* const b = std::make_unique<Sequence>().release();
  auto* const c = std::make_unique<Sequence>().release();
  a->SetName(L"a");
  a->AddShot(NewShot(L"shot"));
  EXPECT_EQ(story.AddSequence(a), 0U);
  EXPECT_EQ(story.AddSequence(b), 1U);
  EXPECT_EQ(story.InsertSequence(1, c), 1U);
  EXPECT_EQ(story.GetSequenceCount(), 3U);
  EXPECT_EQ(story.GetSequence(2), b);
  EXPECT_EQ(story.GetSequence(3), nullptr);
  EXPECT_EQ(story.GetIndexOfSequence(c), 1U);
  EXPECT_EQ(story.FindSequence(L"a"), a);
  EXPECT_TRUE(story.ContainsSequence(a));
  story.MoveSequence(a, nullptr);
  EXPECT_EQ(story.GetFirstSequence(), c);
  EXPECT_EQ(story.GetIndexOfSequence(a), 2U);
  const std::unique_ptr<Sequence> removed(story.RemoveSequence(b));
  EXPECT_EQ(removed.get(), b);
  EXPECT_TRUE(story.DeleteSequence(c));
  EXPECT_FALSE(story.DeleteSequence(b));
  EXPECT_EQ(story.GetSequenceCount(), 1U);
  EXPECT_FALSE(story.IsEmpty());
}

// Against a list of numbers.
TEST(Sequence, of_random_edits_has_the_order_of_a_plain_list) {
  Random random(7);
  Sequence sequence;
  std::vector<ShotSpecification*> expected;
  std::vector<std::unique_ptr<ShotSpecification>> out;
  for (int i = 0; i < 20; ++i) out.emplace_back(NewShot(std::to_wstring(i)));
  const auto any = [&] {
    return static_cast<std::size_t>(random.Integer(0, static_cast<int>(expected.size())));
  };
  for (int step = 0; step < 10000; ++step) {
    const std::size_t place = any();
    const auto at = expected.begin() + static_cast<std::ptrdiff_t>(place);
    if (!out.empty() && random.Coin()) {
      ShotSpecification* const shot = out.back().release();
      out.pop_back();
      EXPECT_EQ(sequence.InsertShot(place, shot), place);
      expected.insert(at, shot);
    } else if (place < expected.size() && random.Coin()) {
      out.emplace_back(sequence.RemoveShot(*at));
      expected.erase(at);
    } else if (place < expected.size()) {
      ShotSpecification* const shot = *at;
      expected.erase(at);
      const std::size_t target = any();
      ShotSpecification* const before = target < expected.size() ? expected[target] : nullptr;
      sequence.MoveShot(shot, before);
      expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(target), shot);
    }
    ASSERT_EQ(sequence.GetShotCount(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) ASSERT_EQ(sequence.GetShot(i), expected[i]);
  }
}

}  // namespace
