#include "korvane/observer_list.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/random.h"

namespace {

// Writes its name when told, then does what the test wants.
struct Listener {
  std::string name;
  std::function<void()> react;
};

class ObserverListTest : public ::testing::Test {
 protected:
  std::string Round() {
    told.clear();
    Tell();
    return told;
  }

  void Tell() {
    list.Notify([this](Listener& listener) {
      told += listener.name;
      if (listener.react) listener.react();
    });
  }

  void AddAll() {
    for (Listener* listener : {&a, &b, &c, &d}) list.Add(listener);
  }

  Korvane::ObserverList<Listener> list;
  Listener a{"a", {}};
  Listener b{"b", {}};
  Listener c{"c", {}};
  Listener d{"d", {}};
  Listener e{"e", {}};
  std::string told;
};

TEST_F(ObserverListTest, tells_nobody_when_empty) { EXPECT_EQ(Round(), ""); }

TEST_F(ObserverListTest, tells_in_the_order_of_adding) {
  AddAll();
  EXPECT_EQ(Round(), "abcd");
  EXPECT_EQ(Round(), "abcd");
}

TEST_F(ObserverListTest, ignores_null) {
  list.Add(nullptr);
  list.Add(&a);
  list.Remove(nullptr);
  EXPECT_EQ(Round(), "a");
}

TEST_F(ObserverListTest, tells_an_observer_that_was_added_twice_twice_and_one_remove_removes_both) {
  list.Add(&a);
  list.Add(&b);
  list.Add(&a);
  EXPECT_EQ(Round(), "aba");
  list.Remove(&a);
  EXPECT_EQ(Round(), "b");
}

TEST_F(ObserverListTest, ignores_the_removal_of_one_it_does_not_hold) {
  AddAll();
  list.Remove(&e);
  EXPECT_EQ(Round(), "abcd");
}

TEST_F(ObserverListTest, lets_an_observer_remove_itself) {
  AddAll();
  b.react = [this] { list.Remove(&b); };
  EXPECT_EQ(Round(), "abcd");
  EXPECT_EQ(Round(), "acd");
}

TEST_F(ObserverListTest, lets_the_last_observer_remove_itself) {
  AddAll();
  d.react = [this] { list.Remove(&d); };
  EXPECT_EQ(Round(), "abcd");
  EXPECT_EQ(Round(), "abc");
}

TEST_F(ObserverListTest, lets_an_observer_remove_the_next_which_is_then_not_told) {
  AddAll();
  b.react = [this] { list.Remove(&c); };
  EXPECT_EQ(Round(), "abd");
}

TEST_F(ObserverListTest, lets_an_observer_remove_all_that_follow) {
  AddAll();
  b.react = [this] {
    list.Remove(&c);
    list.Remove(&d);
  };
  EXPECT_EQ(Round(), "ab");
}

TEST_F(ObserverListTest, lets_an_observer_remove_an_earlier_one) {
  AddAll();
  c.react = [this] { list.Remove(&a); };
  EXPECT_EQ(Round(), "abcd");
  EXPECT_EQ(Round(), "bcd");
}

TEST_F(ObserverListTest, lets_an_observer_remove_everyone) {
  AddAll();
  a.react = [this] {
    for (Listener* listener : {&a, &b, &c, &d}) list.Remove(listener);
  };
  EXPECT_EQ(Round(), "a");
  EXPECT_EQ(Round(), "");
}

TEST_F(ObserverListTest, lets_an_observer_destroy_itself) {
  auto passing = std::make_unique<Listener>();
  passing->name = "p";
  list.Add(passing.get());
  list.Add(&a);
  passing->react = [&] {
    list.Remove(passing.get());
    passing->react = nullptr;
  };
  EXPECT_EQ(Round(), "pa");
  passing.reset();
  EXPECT_EQ(Round(), "a");
}

TEST_F(ObserverListTest, tells_one_that_an_observer_before_the_last_adds_in_the_same_round) {
  AddAll();
  b.react = [this] {
    list.Add(&e);
    b.react = nullptr;
  };
  EXPECT_EQ(Round(), "abcde");
}

TEST_F(ObserverListTest, tells_one_that_the_last_observer_adds_from_the_next_round_on) {
  AddAll();
  d.react = [this] {
    list.Add(&e);
    d.react = nullptr;
  };
  EXPECT_EQ(Round(), "abcd");
  EXPECT_EQ(Round(), "abcde");
}

TEST_F(ObserverListTest, runs_nested_rounds_and_goes_on_where_it_was) {
  AddAll();
  b.react = [this] {
    b.react = nullptr;
    told += '(';
    Tell();
    told += ')';
  };
  EXPECT_EQ(Round(), "ab(abcd)cd");
}

TEST_F(ObserverListTest, keeps_the_outer_round_right_when_the_inner_one_removes_what_it_would_tell_next) {
  AddAll();
  b.react = [this] {
    b.react = nullptr;
    d.react = [this] { list.Remove(&c); };
    told += '(';
    Tell();
    told += ')';
  };
  EXPECT_EQ(Round(), "ab(abcd)d");
}

TEST_F(ObserverListTest, keeps_both_rounds_right_when_both_would_tell_the_removed_one_next) {
  AddAll();
  b.react = [this] {
    b.react = [this] { list.Remove(&c); };
    told += '(';
    Tell();
    told += ')';
  };
  EXPECT_EQ(Round(), "ab(abd)d");
}

TEST_F(ObserverListTest, never_tells_a_removed_one_whatever_random_observers_do) {
  Random random;
  struct Member {
    int number;
  };
  for (int round = 0; round < 500; ++round) {
    Korvane::ObserverList<Member> members;
    std::vector<Member> all(6);
    std::vector<int> held;  // how often each is in the list
    for (int i = 0; i < 6; ++i) {
      all[static_cast<std::size_t>(i)].number = i;
      members.Add(&all[static_cast<std::size_t>(i)]);
      held.push_back(1);
    }
    int budget = 30;
    int depth = 0;
    const std::function<void(Member&)> react = [&](Member& member) {
      ASSERT_GT(held[static_cast<std::size_t>(member.number)], 0) << "told after its removal";
      if (--budget < 0) return;
      const auto other = static_cast<std::size_t>(random.Integer(0, 5));
      switch (random.Integer(0, 3)) {
        case 0:
          members.Remove(&all[other]);
          held[other] = 0;
          break;
        case 1:
          members.Add(&all[other]);
          ++held[other];
          break;
        case 2:
          if (depth > 3) break;
          ++depth;
          members.Notify(react);
          --depth;
          break;
        default:
          break;
      }
    };
    members.Notify(react);
    int total = 0;
    members.Notify([&](Member&) { ++total; });
    int expected = 0;
    for (const int count : held) expected += count;
    ASSERT_EQ(total, expected);
  }
}

}  // namespace
