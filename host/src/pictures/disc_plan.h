#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace zovhost {

// Plans of the navigation discs. Lengths in units of a disc that is `discUnits` wide, its middle at the
// origin, x to the right and y down. Angles in degrees, clockwise from straight up.

inline constexpr double discUnits = 128.0;

struct DiscPoint {
  double x = 0.0;
  double y = 0.0;
};

/// A piece of a ring; from 0 to 360 the whole of it.
struct Sector {
  double inner = 0.0;
  double outer = 0.0;
  double from = 0.0;
  double to = 0.0;  // more than `from`, at most by 360

  /// The borders at `inner` and at `from` belong to it, the two others do not.
  bool Contains(const DiscPoint& point) const;
};

/// What a wedge is for: it tells the glyph and the caption, on every disc the same.
enum class DiscAction : int { Rewind, Orbit, Zoom, Pan, Look, Walk, UpDown, Centre, Forward, Close, Menu };

struct DiscSign {
  std::string_view glyph;  // a file of the kit's resources
  int caption;             // the number of a text; -1: none
};

const DiscSign& GetDiscSign(DiscAction action);

using MapKey = std::array<std::uint8_t, 3>;  // red, green, blue in the region map

struct DiscWedge {
  DiscAction action = DiscAction::Rewind;
  Sector sector;
  MapKey key = {};
  int picture = 0;             // the number of the disc's picture with this wedge under the pointer
  double reach = 0.0;          // how far out glyph and caption stand, in the direction of the wedge's middle
  double glyphSize = 0.0;      // beside its caption
  double loneGlyphSize = 0.0;  // without

  DiscPoint GetContent() const;
};

struct DiscPlan {
  int overlay = -1;  // the number of the picture of the captions; -1: a small disc, which has none
  int map = 0;       // of the region map
  int base = 0;      // of the disc with nothing under the pointer
  std::span<const DiscWedge> wedges;

  bool IsLarge() const { return overlay >= 0; }
  /// The wedge at a point, or null beside the disc.
  const DiscWedge* FindWedge(const DiscPoint& point) const;
};

std::span<const DiscPlan> GetDiscPlans();

}  // namespace zovhost
