#pragma once

#include <cassert>
#include <memory>
#include <utility>

namespace Korvane {

/// The one owner of an object that calls out to a host. The host may have it replaced or dropped while it is
/// being called: it is gone from here at once, and lives until the outermost call into it is over.
///
/// A call allocates nothing and costs a few instructions. The owner itself must outlive the calls. One
/// thread.
template <class Object>
class Running {
 public:
  /// A call into the object that runs now, null when none does. Calls end in the reverse of the order in
  /// which they began.
  class Call {
   public:
    explicit Call(Running& owner) : running(owner), callee(owner.object.get()), outer(owner.innermost) {
      running.innermost = this;
    }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call() { running.innermost = outer; }

    Object* Get() const { return callee; }
    Object* operator->() const { return callee; }
    /// What is called is still what runs.
    bool IsCurrent() const { return running.object.get() == callee; }

   private:
    friend class Running;
    Running& running;
    Object* const callee;
    Call* const outer;
    std::unique_ptr<Object> dropped;  // the callee, once it no longer runs
  };

  Running() = default;
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;
  ~Running() { assert(innermost == nullptr && "destroyed by what it has called"); }

  Object* Get() const { return object.get(); }
  explicit operator bool() const { return object != nullptr; }

  /// Null drops what runs.
  void Set(std::unique_ptr<Object> next) {
    std::unique_ptr<Object> last = std::exchange(object, std::move(next));
    if (Call* const call = OutermostCallInto(last.get())) call->dropped = std::move(last);
  }

 private:
  Call* OutermostCallInto(const Object* callee) const {
    Call* found = nullptr;
    for (Call* call = innermost; call != nullptr; call = call->outer) {
      if (call->callee == callee) found = call;
    }
    return found;
  }

  std::unique_ptr<Object> object;
  Call* innermost = nullptr;
};

}  // namespace Korvane
