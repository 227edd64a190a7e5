#pragma once

#include "zov/qu_observer_ptr.h"

/// The owner of an inner object, which counts the calls of it that are under way: whoever shares the owner
/// can tell that it must stay.
template <class Facade>
class zovCountedOwner {
 public:
  class Call {
   public:
    explicit Call(const zovCountedOwner& called) : owner(called) { ++owner.calls; }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call() { --owner.calls; }
    Facade* operator->() const { return owner.facade.get(); }

   private:
    const zovCountedOwner& owner;
  };

  explicit zovCountedOwner(Facade& outside) : facade(&outside) {}

  /// The call counts until the statement is over in which it is made.
  Call operator->() const { return Call(*this); }
  bool IsCalled() const { return calls > 0; }
  /// For a call that another count covers.
  Facade& GetUncounted() const { return *facade; }

 private:
  quObserverPtr<Facade> facade;
  mutable int calls = 0;
};
