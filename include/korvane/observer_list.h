#pragma once

#include <algorithm>
#include <iterator>
#include <list>
#include <new>

namespace Korvane {

/// Borrowed observers in the order in which they were added, that may change while they are being told.
///
/// A round takes the next entry before it tells the present one: an observer may remove itself, or any
/// other, and what is added at the end is told in this round unless nothing stood behind the one that added
/// it. The list itself must live until its rounds are over.
template <class Observer>
class ObserverList {
 public:
  ObserverList() = default;
  ObserverList(const ObserverList&) = delete;
  ObserverList& operator=(const ObserverList&) = delete;

  /// Null is ignored. No check for duplicates. False for null, and where memory has run out.
  bool Add(Observer* observer) {
    if (observer == nullptr) return false;
    try {
      entries.push_back(observer);
    } catch (const std::bad_alloc&) {
      return false;
    }
    return true;
  }

  /// Removes every entry equal to `observer`.
  void Remove(const Observer* observer) {
    for (auto entry = entries.begin(); entry != entries.end();) {
      entry = *entry == observer ? Erase(entry) : std::next(entry);
    }
  }

  bool Contains(const Observer* observer) const {
    return std::find(entries.begin(), entries.end(), observer) != entries.end();
  }

  /// Whether `test(observer)` holds for any; asks in order, up to the first. The test must not change the
  /// list.
  template <class Test>
  bool Any(Test&& test) const {
    return std::any_of(entries.begin(), entries.end(),
                       [&test](const Observer* entry) { return test(*entry); });
  }

  /// Calls `tell(observer)` for each entry. Rounds may be nested.
  template <class Tell>
  void Notify(Tell&& tell) {
    Round round(*this);
    while (round.next != entries.end()) {
      Observer* const observer = *round.next++;
      tell(*observer);
    }
  }

 private:
  using Entry = typename std::list<Observer*>::iterator;
  // Over also where an observer of the host throws.
  struct Round {
    explicit Round(ObserverList& told) : list(told), next(told.entries.begin()), outer(told.innermost) {
      list.innermost = this;
    }
    Round(const Round&) = delete;
    Round& operator=(const Round&) = delete;
    ~Round() { list.innermost = outer; }

    ObserverList& list;
    Entry next;
    Round* const outer;
  };

  Entry Erase(Entry entry) {
    for (Round* round = innermost; round != nullptr; round = round->outer) {
      if (round->next == entry) ++round->next;
    }
    return entries.erase(entry);
  }

  std::list<Observer*> entries;
  Round* innermost = nullptr;
};

}  // namespace Korvane
