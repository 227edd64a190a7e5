#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace Korvane {

/// Objects of one kind in order, each of which the list owns and holds once. They have names.
template <class T>
class OwnedList {
 public:
  /// The index of what is not there.
  static constexpr std::uint64_t NOT_THERE = ~std::uint64_t{0};

  /// At the end. The index it has then; one that is there already stays where it is. NOT_THERE for null, and
  /// where memory runs out, which leaves the object with the caller.
  std::uint64_t Add(T* object) { return Insert(objects.size(), object); }
  /// Before an index; at the end for one beyond. As Add.
  std::uint64_t Insert(std::uint64_t index, T* object) {
    if (object == nullptr || Contains(object)) return GetIndexOf(object);
    if (!MakeRoom()) return NOT_THERE;
    const std::uint64_t place = std::min<std::uint64_t>(index, objects.size());
    objects.insert(objects.begin() + static_cast<std::ptrdiff_t>(place), std::unique_ptr<T>(object));
    return place;
  }
  /// Takes it out; it is the caller's then. Null if it is not there.
  T* Remove(const T* object) {
    const std::uint64_t index = GetIndexOf(object);
    if (index == NOT_THERE) return nullptr;
    T* const removed = objects[index].release();
    objects.erase(objects.begin() + static_cast<std::ptrdiff_t>(index));
    return removed;
  }
  bool Delete(const T* object) { return std::unique_ptr<T>(Remove(object)) != nullptr; }
  /// Takes it out and puts it before another one, or at the end for null. Where that other one is not in the
  /// list, or is the object itself, it stays out and is the caller's.
  void Move(T* object, const T* before) {
    Remove(object);
    if (before == nullptr) {
      Add(object);
    } else if (Contains(before)) {
      Insert(GetIndexOf(before), object);
    }
  }
  bool Contains(const T* object) const { return GetIndexOf(object) != NOT_THERE; }
  std::uint64_t GetIndexOf(const T* object) const {
    if (object == nullptr) return NOT_THERE;
    for (std::uint64_t i = 0; i < objects.size(); ++i) {
      if (objects[i].get() == object) return i;
    }
    return NOT_THERE;
  }
  /// Null past the end.
  T* Get(std::uint64_t index) const { return index < objects.size() ? objects[index].get() : nullptr; }
  std::uint64_t GetCount() const { return objects.size(); }
  /// The first of a name; null for none.
  T* Find(const std::wstring& name) const {
    for (const std::unique_ptr<T>& each : objects) {
      if (each->GetName() == name) return each.get();
    }
    return nullptr;
  }

 private:
  bool MakeRoom() {
    if (objects.size() < objects.capacity()) return true;
    try {
      objects.reserve(2 * objects.size() + 1);
    } catch (const std::bad_alloc&) {
      return false;
    }
    return true;
  }

  std::vector<std::unique_ptr<T>> objects;
};

}  // namespace Korvane
