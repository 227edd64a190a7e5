#pragma once

#include <cstring>
#include <type_traits>

namespace Korvane {

/// Two plain records without padding, bit by bit: what has been computed from the one holds for the other, to
/// the last bit and with NaN and signed zeros.
template <class Record>
bool HaveSameBits(const Record& a, const Record& b) {
  static_assert(std::is_trivially_copyable_v<Record>);
  return std::memcmp(&a, &b, sizeof(Record)) == 0;  // NOLINT(bugprone-suspicious-memory-comparison)
}

}  // namespace Korvane
