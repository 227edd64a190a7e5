#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zovhost {

/// Spreads the bits of a number over all of them.
inline std::uint64_t MixBits(std::uint64_t bits) {
  bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9ULL;
  bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBULL;
  return bits ^ (bits >> 31);
}

/// Numbers of things that are equal by a test of the caller's: four bytes a slot and nothing else, since
/// there are tens of millions of them. Does not grow.
class HashTable {
 public:
  /// `most`: more are never added.
  explicit HashTable(std::size_t most)
      : slots(std::bit_ceil(most + most / 2 + 2), EMPTY), mask(slots.size() - 1) {}

  /// The number under which an equal thing is in it; else adds `number` and returns that.
  template <typename IsSame>
  std::uint32_t FindOrAdd(std::uint64_t hash, std::uint32_t number, const IsSame& isSame) {
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
      if (slots[at] == EMPTY) return slots[at] = number;
      if (isSame(slots[at])) return slots[at];
    }
  }
  static constexpr std::uint32_t EMPTY = UINT32_MAX;

 private:
  std::vector<std::uint32_t> slots;
  std::size_t mask;
};

}  // namespace zovhost
