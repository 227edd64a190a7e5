#pragma once

#include "korvane/observer_list.h"

namespace Korvane {

/// Borrowed observers, each at most once, in the order in which they were added. They may remove themselves
/// or others, and add others, while they are being told; ObserverList says what a round does then.
template <class Observer>
class ObserverSet {
 public:
  /// False for null, and where memory has run out. One that is already held keeps its place.
  bool Add(Observer* observer) { return observers.Contains(observer) || observers.Add(observer); }

  /// Null, and one that is not held, are ignored.
  void Remove(const Observer* observer) { observers.Remove(observer); }

  bool Contains(const Observer* observer) const { return observers.Contains(observer); }

  /// Calls `tell(observer)` for each. Rounds may be nested.
  template <class Tell>
  void Notify(Tell&& tell) {
    observers.Notify(tell);
  }

 private:
  ObserverList<Observer> observers;
};

}  // namespace Korvane
