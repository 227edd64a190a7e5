#pragma once

namespace Korvane {

/// Lets whoever calls out to a host learn afterwards whether an object still lives, and whoever borrows an
/// object forget it in the moment that it dies.
///
/// The object holds a Lifeline by value; a Watch on it turns false when the object is destroyed. Nothing is
/// allocated: the watches of a lifeline are a list through themselves, so to make, to ask and to end one
/// costs a few instructions. A copy of an object lives a life of its own, so a copied lifeline begins without
/// watches. One thread.
class Lifeline {
 public:
  class Watch {
   public:
    /// Watches nothing, and is false.
    Watch() = default;
    explicit Watch(Lifeline& line) { Attach(line); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() { Detach(); }

    /// Watches `line` instead of what was watched before.
    void Attach(Lifeline& line) {
      Detach();
      next = line.first;
      link = &line.first;
      if (next != nullptr) next->link = &next;
// g++ does not see that the watch takes itself out of the list when it ends.
#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ >= 12
#  pragma GCC diagnostic push
#  pragma GCC diagnostic ignored "-Wdangling-pointer"
#endif
      line.first = this;
#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ >= 12
#  pragma GCC diagnostic pop
#endif
    }

    void Detach() {
      if (link == nullptr) return;
      *link = next;
      if (next != nullptr) next->link = link;
      link = nullptr;
      next = nullptr;
    }

    /// What is watched still lives.
    explicit operator bool() const { return link != nullptr; }

   private:
    friend class Lifeline;
    Watch* next = nullptr;
    Watch** link = nullptr;  // the pointer that points to this watch; null when nothing is watched
  };

  Lifeline() = default;
  Lifeline(const Lifeline&) {}
  Lifeline& operator=(const Lifeline&) { return *this; }  // NOLINT(bugprone-unhandled-self-assignment)
  ~Lifeline() { Cut(); }

  /// Lets every watch be false from now on, as at the end of the object.
  void Cut() {
    while (first != nullptr) first->Detach();
  }

 private:
  Watch* first = nullptr;
};

/// A borrowed object, null once it is gone. `Object` has a public member function `Lifeline& GetLifeline()`,
/// whose lifeline is cut before anything that the borrower would call is destroyed.
template <class Object>
class Borrowed {
 public:
  Borrowed() = default;
  explicit Borrowed(Object* object) { Set(object); }
  Borrowed(const Borrowed&) = delete;
  Borrowed& operator=(const Borrowed&) = delete;

  /// Null gives back what is held.
  void Set(Object* object) {
    held = object;
    if (object != nullptr) {
      watch.Attach(object->GetLifeline());
    } else {
      watch.Detach();
    }
  }

  Object* Get() const { return watch ? held : nullptr; }

 private:
  Object* held = nullptr;
  Lifeline::Watch watch;
};

}  // namespace Korvane
