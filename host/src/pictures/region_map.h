#pragma once

#include <optional>

#include "pictures/disc_plan.h"
#include "zovhost/image.h"

namespace zovhost {

/// The key of a region, or of none.
template <typename Region>
std::optional<MapKey> FindKey(const Region* region) {
  return region != nullptr ? std::optional<MapKey>(region->key) : std::nullopt;
}

/// A square map of `side` pixels that is `units` wide. `keyAt` tells the key at a point, counted from the top
/// left; a pixel has that of its middle, and is transparent without one.
template <typename KeyAt>
Image PaintRegionMap(int side, double units, const KeyAt& keyAt) {
  Image image{side, side, {}};
  const double unit = units / side;
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const std::optional<MapKey> key = keyAt(DiscPoint{(x + 0.5) * unit, (y + 0.5) * unit});
      const std::uint8_t alpha = key ? 255 : 0;
      const MapKey colour = key.value_or(MapKey{});
      image.rgba.insert(image.rgba.end(), {colour[0], colour[1], colour[2], alpha});
    }
  }
  return image;
}

}  // namespace zovhost
