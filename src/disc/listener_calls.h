#pragma once

#include <memory>

#include "korvane/region_listener.h"

namespace Korvane {

/// The calls of a menu into its listeners. A listener that the menu gives up while it is called lives until
/// the outermost call into it is over, also where the menu itself ends meanwhile.
class ListenerCalls {
 public:
  /// Calls end in the reverse of the order in which they began.
  class Call {
   public:
    Call(ListenerCalls& calls, const RegionListener& listener)
        : owner(&calls), callee(&listener), outer(calls.innermost) {
      calls.innermost = this;
    }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call() {
      if (owner != nullptr) owner->innermost = outer;
    }

   private:
    friend class ListenerCalls;
    ListenerCalls* owner;  // null once it is gone
    const RegionListener* callee;
    Call* outer;
    std::unique_ptr<RegionListener> givenUp;  // the callee
  };

  ListenerCalls() = default;
  ListenerCalls(const ListenerCalls&) = delete;
  ListenerCalls& operator=(const ListenerCalls&) = delete;
  ~ListenerCalls() {
    for (Call* call = innermost; call != nullptr; call = call->outer) call->owner = nullptr;
  }

  /// Deletes a listener, now or when it has returned. Each once.
  void GiveUp(std::unique_ptr<RegionListener> listener) {
    Call* outermost = nullptr;
    for (Call* call = innermost; call != nullptr; call = call->outer) {
      if (call->callee == listener.get()) outermost = call;
    }
    if (outermost != nullptr) outermost->givenUp = std::move(listener);
  }

 private:
  Call* innermost = nullptr;
};

}  // namespace Korvane
