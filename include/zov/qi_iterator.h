#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

/// A walk along numbers that lie one after another, in place of a bare pointer: it knows where they end. The
/// numbers are somebody else's and stay only as long as the call in which the walk is handed over; whoever
/// wants them longer copies them.
template <class Value>
class qiIterator {
 public:
  /// Nothing to walk along.
  constexpr qiIterator() = default;
  /// Null counts as none. Of more than 2^32 - 1 values those are walked along.
  constexpr qiIterator(const Value* values, std::size_t count)
      : first(values), length(values != nullptr ? Shorten(count) : 0) {}

  constexpr bool has_next() const { return at != length; }
  /// The value that the walk has come to, and a step on; beyond the end a zero, and no step.
  constexpr Value next() { return has_next() ? first[at++] : Value(); }
  /// Back to the first.
  constexpr void reset() { at = 0; }

  /// How many there are in all, wherever the walk has come to.
  constexpr std::size_t count() const { return length; }

  // All of them, for a loop, and for a graphics interface that takes them as they lie.
  constexpr const Value* begin() const { return first; }
  constexpr const Value* end() const { return first + length; }
  constexpr const Value* data() const { return first; }

 private:
  static constexpr std::uint32_t Shorten(std::size_t count) {
    return static_cast<std::uint32_t>(
        std::min<std::size_t>(count, std::numeric_limits<std::uint32_t>::max()));
  }

  // Of two words, so that it is handed over in registers.
  const Value* first = nullptr;
  std::uint32_t length = 0;
  std::uint32_t at = 0;
};
