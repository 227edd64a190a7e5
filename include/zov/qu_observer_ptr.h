#pragma once

#include <cstddef>

/// A pointer that owns nothing and says so: what it points to is somebody else's, who sees to it that it
/// lives as long as it is looked at.
template <class Object>
class quObserverPtr {
 public:
  constexpr quObserverPtr() = default;
  constexpr quObserverPtr(std::nullptr_t) {}  // NOLINT(google-explicit-constructor)
  explicit constexpr quObserverPtr(Object* object) : watched(object) {}

  constexpr Object* get() const { return watched; }
  /// Not for null.
  constexpr Object& operator*() const { return *watched; }
  constexpr Object* operator->() const { return watched; }
  explicit constexpr operator bool() const { return watched != nullptr; }

  constexpr void reset(Object* object = nullptr) { watched = object; }

  constexpr bool operator==(const quObserverPtr&) const = default;

 private:
  Object* watched = nullptr;
};
