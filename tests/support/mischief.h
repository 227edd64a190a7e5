#pragma once

#include <functional>

#include "support/random.h"

/// Decides whether a call of the library is answered by an action of the host.
class Mischief {
 public:
  /// One call in `oneOf` is answered.
  Mischief(Random& numbers, int oneOf) : random(numbers), rarity(oneOf) {}

  /// Every call out comes here.
  void Call() {
    if (!act || depth >= MAX_DEPTH || random.Integer(1, rarity) != 1) return;
    ++depth;
    ++actions;
    act();
    --depth;
  }
  /// Now and then a call of the renderer fails.
  bool Fails(int oneOf = 64) {
    Call();
    return act && random.Integer(1, oneOf) == 1;
  }

  std::function<void()> act;  // of the host; null at rest
  Random& random;
  long actions = 0;

 private:
  static constexpr int MAX_DEPTH = 4;
  const int rarity;
  int depth = 0;
};
