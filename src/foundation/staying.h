#pragma once

#include <memory>

#include "korvane/lifeline.h"

namespace Korvane {

/// Keeps what a widget is made of through a call in which a host may delete the widget, and tells whether it
/// has. `Parts` has a lifeline, which the widget cuts at its end.
template <class Parts>
class Staying {
 public:
  explicit Staying(const std::shared_ptr<Parts>& parts) : held(parts), alive(parts->lifeline) {}
  Staying(const Staying&) = delete;
  Staying& operator=(const Staying&) = delete;

  /// The widget itself is still there.
  explicit operator bool() const { return static_cast<bool>(alive); }
  /// There in any case.
  Parts* operator->() const { return held.get(); }

  /// `tell(observer)` for each, as long as the widget is there.
  template <class Tell>
  void TellObservers(const Tell& tell) const {
    held->partners.observers.Notify([&](auto& each) {
      if (alive) tell(each);
    });
  }
  /// The same, up to the first that answers true.
  template <class Ask>
  bool OfferToObservers(const Ask& ask) const {
    bool taken = false;
    TellObservers([&](auto& each) { taken = taken || ask(each); });
    return taken;
  }

 private:
  const std::shared_ptr<Parts> held;
  Lifeline::Watch alive;
};

}  // namespace Korvane
