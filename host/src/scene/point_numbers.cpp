#include "scene/point_numbers.h"

#include <bit>
#include <cstddef>

#include "scene/hash_table.h"

namespace zovhost {

namespace {

constexpr std::size_t ROUNDS = std::size_t{1} << 16;  // between two questions

// Zero has two forms, which are one place.
std::uint64_t GetBits(float coordinate) { return std::bit_cast<std::uint32_t>(coordinate + 0.0F); }

std::uint64_t HashPoint(const float* p) {
  return MixBits(GetBits(p[0]) | GetBits(p[1]) << 32) ^ MixBits(GetBits(p[2]) + 0x9E3779B97F4A7C15ULL);
}

}  // namespace

std::vector<std::uint32_t> NumberPoints(const std::vector<float>& positions, std::uint32_t& pointCount) {
  return NumberPoints(positions, pointCount, [] { return true; });
}

std::vector<std::uint32_t> NumberPoints(const std::vector<float>& positions, std::uint32_t& pointCount,
                                        const std::function<bool()>& goesOn) {
  const std::size_t count = positions.size() / 3;
  std::vector<std::uint32_t> pointOf(count);
  HashTable firstVertices(count);
  pointCount = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (i % ROUNDS == 0 && !goesOn()) return {};
    const float* const p = positions.data() + 3 * i;
    const auto isSame = [&positions, p](std::uint32_t vertex) {
      const float* const q = positions.data() + std::size_t{3} * vertex;
      return p[0] == q[0] && p[1] == q[1] && p[2] == q[2];
    };
    const std::uint32_t first = firstVertices.FindOrAdd(HashPoint(p), static_cast<std::uint32_t>(i), isSame);
    pointOf[i] = first == i ? pointCount++ : pointOf[first];
  }
  return pointOf;
}

}  // namespace zovhost
