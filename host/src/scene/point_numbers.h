#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace zovhost {

/// Numbers the points that vertices lie at, in the order of their first vertices, and says which one each
/// vertex lies at. `positions`: 3 a vertex, finite.
std::vector<std::uint32_t> NumberPoints(const std::vector<float>& positions, std::uint32_t& pointCount);

/// The same, asking now and then whether to go on; empty when not.
std::vector<std::uint32_t> NumberPoints(const std::vector<float>& positions, std::uint32_t& pointCount,
                                        const std::function<bool()>& goesOn);

}  // namespace zovhost
