#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "cube/cube_layout.h"
#include "cube/cube_model.h"
#include "cube/cube_space.h"

namespace Korvane {

/// How strongly the cube shows, by the place of the mouse.
struct CubeFade {
  float fade = 0.0F;     // how far the mouse is into the cube's corner, 0 to 1
  float opacity = 1.0F;  // as shown
  bool mouseInRegion = false;

  /// Nothing of the overlay shows any more.
  bool IsGone() const {
    static constexpr float INVISIBLE_BELOW = 0.0001F;
    return fade < INVISIBLE_BELOW;
  }
  /// Far away: the cube rests. Returns the opacity that goes with the place.
  float Rest(const OrientorParameters& parameters) {
    mouseInRegion = false;
    fade = 0.0F;
    return parameters.min_opacity;
  }
  float Follow(const OrientorParameters& parameters, const CubeLayout& layout, bool locked, bool dragging,
               const Vector2& inCorner) {
    mouseInRegion = layout.IsInRegion(parameters, locked, inCorner);
    fade = dragging ? 1.0F : layout.GetNearness(parameters, inCorner);
    return (1.0F - parameters.min_opacity) * fade + parameters.min_opacity;
  }
};

/// The part of the cube that the view looks onto most nearly, and how nearly.
struct ClosestPart {
  int part = -1;
  float dot = 0.0F;  // cosine

  // The first of equals.
  void Find(const CubeSpace& space) {
    if (seen == space.GetVersion()) return;
    seen = space.GetVersion();
    dot = std::numeric_limits<float>::lowest();
    for (int i = 0; i < CUBE_PART_COUNT; ++i) {
      const auto cosine = static_cast<float>(space.GetView().Dot(GetPartView(i)));
      if (!(cosine > dot)) continue;
      dot = cosine;
      part = i;
    }
  }

  /// The view runs exactly along it, and it is one of the first `partCount`.
  bool IsLookedAlong(int partCount) const {
    const auto tolerance = static_cast<float>(Math::EPSILON_VALUE);
    return part >= 0 && part < partCount && std::abs(1.0F - dot) <= tolerance;
  }

 private:
  std::uint64_t seen = 0;  // version of the space
};

}  // namespace Korvane
