#include "korvane/observer_set.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

// Writes its name when told, then does what the test wants.
struct Listener {
  char name;
  std::function<void()> react;
};

class ObserverSetTest : public ::testing::Test {
 protected:
  std::string Round() {
    std::string told;
    set.Notify([&told](Listener& listener) {
      told += listener.name;
      if (listener.react) listener.react();
    });
    return told;
  }

  Korvane::ObserverSet<Listener> set;
  Listener a{'a', {}};
  Listener b{'b', {}};
  Listener c{'c', {}};
};

TEST_F(ObserverSetTest, refuses_null_and_takes_anything_else) {
  EXPECT_FALSE(set.Add(nullptr));
  EXPECT_TRUE(set.Add(&a));
  EXPECT_EQ(Round(), "a");
}

TEST_F(ObserverSetTest, tells_in_the_order_of_adding_wherever_the_observers_lie_in_memory) {
  for (Listener* listener : {&c, &a, &b}) set.Add(listener);
  EXPECT_EQ(Round(), "cab");
}

TEST_F(ObserverSetTest, holds_each_observer_once_in_its_first_place) {
  for (Listener* listener : {&a, &b, &a}) EXPECT_TRUE(set.Add(listener));
  EXPECT_EQ(Round(), "ab");
  set.Remove(&a);
  EXPECT_EQ(Round(), "b");
}

TEST_F(ObserverSetTest, puts_one_that_comes_back_at_the_end) {
  for (Listener* listener : {&a, &b}) set.Add(listener);
  set.Remove(&a);
  set.Add(&a);
  EXPECT_EQ(Round(), "ba");
}

TEST_F(ObserverSetTest, ignores_the_removal_of_null_and_of_one_it_does_not_hold) {
  set.Add(&a);
  set.Remove(nullptr);
  set.Remove(&b);
  EXPECT_EQ(Round(), "a");
}

TEST_F(ObserverSetTest, knows_whom_it_holds) {
  EXPECT_FALSE(set.Contains(&a));
  set.Add(&a);
  EXPECT_TRUE(set.Contains(&a));
  EXPECT_FALSE(set.Contains(&b));
  EXPECT_FALSE(set.Contains(nullptr));
}

TEST_F(ObserverSetTest, lets_observers_remove_themselves_and_others_while_being_told) {
  for (Listener* listener : {&a, &b, &c}) set.Add(listener);
  a.react = [this] {
    set.Remove(&a);
    set.Remove(&b);
  };
  EXPECT_EQ(Round(), "ac");
  EXPECT_EQ(Round(), "c");
}

}  // namespace
