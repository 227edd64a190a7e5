#include "korvane/lifeline.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/random.h"

namespace {

using Korvane::Borrowed;
using Korvane::Lifeline;

struct Thing {
  Lifeline& GetLifeline() { return life; }
  int value = 7;
  Lifeline life;
};

TEST(Lifeline, a_watch_on_nothing_is_false) {
  const Lifeline::Watch watch;
  EXPECT_FALSE(watch);
}

TEST(Lifeline, a_watch_turns_false_when_the_object_dies) {
  auto thing = std::make_unique<Thing>();
  const Lifeline::Watch watch(thing->life);
  EXPECT_TRUE(watch);
  thing.reset();
  EXPECT_FALSE(watch);
}

TEST(Lifeline, the_object_may_outlive_its_watches_in_any_order) {
  Thing thing;
  auto first = std::make_unique<Lifeline::Watch>(thing.life);
  auto second = std::make_unique<Lifeline::Watch>(thing.life);
  auto third = std::make_unique<Lifeline::Watch>(thing.life);
  second.reset();
  EXPECT_TRUE(*first);
  EXPECT_TRUE(*third);
  third.reset();
  EXPECT_TRUE(*first);
  first.reset();
  const Lifeline::Watch last(thing.life);
  EXPECT_TRUE(last);
}

TEST(Lifeline, a_watch_can_turn_to_another_object) {
  Thing stays;
  auto goes = std::make_unique<Thing>();
  Lifeline::Watch watch(goes->life);
  watch.Attach(stays.life);
  goes.reset();
  EXPECT_TRUE(watch);
}

TEST(Lifeline, a_copy_of_an_object_lives_its_own_life) {
  Thing copy;
  auto original = std::make_unique<Thing>();
  const Lifeline::Watch ofOriginal(original->life);
  const Lifeline::Watch ofCopy(copy.life);
  copy = *original;
  original.reset();
  EXPECT_FALSE(ofOriginal);
  EXPECT_TRUE(ofCopy);
}

TEST(Lifeline, a_cut_line_can_be_watched_anew) {
  Thing thing;
  const Lifeline::Watch before(thing.life);
  thing.life.Cut();
  const Lifeline::Watch after(thing.life);
  EXPECT_FALSE(before);
  EXPECT_TRUE(after);
}

TEST(Borrowed, is_null_once_the_object_is_gone) {
  auto thing = std::make_unique<Thing>();
  const Borrowed<Thing> borrowed(thing.get());
  ASSERT_EQ(borrowed.Get(), thing.get());
  EXPECT_EQ(borrowed.Get()->value, 7);
  thing.reset();
  EXPECT_EQ(borrowed.Get(), nullptr);
}

TEST(Borrowed, gives_back_with_null) {
  Thing thing;
  Borrowed<Thing> borrowed(&thing);
  borrowed.Set(nullptr);
  EXPECT_EQ(borrowed.Get(), nullptr);
  borrowed.Set(&thing);
  EXPECT_EQ(borrowed.Get(), &thing);
}

// Objects and watches that come and go at random, beside a plain record of who watches whom.
TEST(Lifeline, any_order_of_births_and_deaths_keeps_every_watch_true_to_its_object) {
  constexpr int COUNT = 6;
  Random random(31);
  std::unique_ptr<Thing> things[COUNT];
  std::unique_ptr<Lifeline::Watch> watches[COUNT];
  int watched[COUNT] = {-1, -1, -1, -1, -1, -1};
  for (int step = 0; step < 20000; ++step) {
    const int i = random.Integer(0, COUNT - 1);
    const int j = random.Integer(0, COUNT - 1);
    switch (random.Integer(0, 3)) {
      case 0:
        if (things[i] == nullptr) things[i] = std::make_unique<Thing>();
        break;
      case 1:
        things[i].reset();
        for (int& target : watched) target = target == i ? -1 : target;
        break;
      case 2:
        if (things[i] == nullptr) break;
        if (watches[j] == nullptr) watches[j] = std::make_unique<Lifeline::Watch>();
        watches[j]->Attach(things[i]->life);
        watched[j] = i;
        break;
      default:
        watches[j].reset();
        watched[j] = -1;
        break;
    }
    for (int k = 0; k < COUNT; ++k) {
      const bool alive = watches[k] != nullptr && static_cast<bool>(*watches[k]);
      ASSERT_EQ(alive, watched[k] >= 0);
    }
  }
}

}  // namespace
