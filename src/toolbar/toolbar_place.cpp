#include "toolbar/toolbar_place.h"

#include <cmath>
#include <cstddef>

namespace Korvane {

namespace {

using Position = Toolbar::Position;
using Location = OrientorParameters::Location;

bool IsAtLeft(Location location) {
  return location == OrientorParameters::LOCATION_TOP_LEFT ||
         location == OrientorParameters::LOCATION_BOTTOM_LEFT;
}

bool IsAtTop(Location location) {
  return location == OrientorParameters::LOCATION_TOP_RIGHT ||
         location == OrientorParameters::LOCATION_TOP_LEFT;
}

Vector2 GetCubeSize(const StripRoom& room) { return room.orientorBounds.halfExtent * 2.0; }

// ---- how long it may be ----

double GetAvailableWidth(const StripRoom& room, Position position) {
  const double whole = room.viewportWidth;
  const double beside = whole - GetCubeSize(room).x;
  const bool cubeAtBottom = !(room.orientorBounds.Min().y > 0.0);
  const bool cubeReachesUp =
      static_cast<double>(room.viewportHeight) - room.ribbonHeight < GetCubeSize(room).y;
  if (position == Toolbar::POSITION_TOP) return !cubeAtBottom || cubeReachesUp ? beside : whole;
  if (position == Toolbar::POSITION_BOTTOM) return cubeAtBottom || cubeReachesUp ? beside : whole;
  return whole;
}

double GetAvailableHeightAtLeft(const StripRoom& room, double thickness) {
  const Vector2 cube = GetCubeSize(room);
  const double height = static_cast<double>(room.viewportHeight) - room.ribbonHeight;
  return IsAtLeft(room.orientorLocation) || room.viewportWidth - cube.x < thickness ? height - cube.y
                                                                                    : height;
}

double GetAvailableHeightAtRight(const StripRoom& room, double thickness) {
  const Vector2 cube = GetCubeSize(room);
  const double besideRibbon = static_cast<double>(room.viewportWidth) - room.ribbonWidth;
  double height = room.viewportHeight;
  switch (room.orientorLocation) {
    case OrientorParameters::LOCATION_TOP_LEFT:
    case OrientorParameters::LOCATION_BOTTOM_LEFT:
      if (besideRibbon < thickness) height -= room.ribbonHeight;
      return room.viewportWidth - cube.x < thickness ? height - cube.y : height;
    case OrientorParameters::LOCATION_BOTTOM_RIGHT:
      height -= cube.y;
      return besideRibbon < thickness ? height - room.ribbonHeight : height;
    case OrientorParameters::LOCATION_TOP_RIGHT:
      height -= cube.y;
      return besideRibbon < cube.x ? height - room.ribbonHeight : height;
    default:
      return height;
  }
}

double GetAvailableHeight(const StripRoom& room, Position position, double thickness) {
  switch (position) {
    case Toolbar::POSITION_LEFT:
      return GetAvailableHeightAtLeft(room, thickness);
    case Toolbar::POSITION_RIGHT:
    case Toolbar::POSITION_BOTTOM_RIGHT:
      return GetAvailableHeightAtRight(room, thickness);
    default:
      return room.viewportHeight;
  }
}

// ---- where it stands ----

// By the position, the sides of the viewport from which the centre counts: -1 the left and the bottom, 1 the
// right and the top, 0 the middle.
struct Anchor {
  int x;
  int y;
};
constexpr Anchor ANCHORS[] = {{-1, 0}, {0, 1}, {1, 0}, {0, -1}, {-1, 1}, {1, 1}, {1, -1}, {-1, -1}};

double FromSide(int side, double size, double half, double offset) {
  if (side < 0) return half + offset;
  if (side > 0) return size - half + offset;
  return std::floor(size / 2.0 + offset);
}

struct OffsetRange {
  Vector2 low;
  Vector2 high;
};

// Along its edge the strip may go as far as the viewport does, and away from the edge to the opposite one.
OffsetRange GetRangeInViewport(const StripRoom& room, Position position, const Vector2& half) {
  const Vector2 reach = room.GetMiddle() - half;
  const Anchor anchor = ANCHORS[position];
  OffsetRange range{-reach, reach};
  if (anchor.x < 0) range = {{0.0, -reach.y}, {2.0 * reach.x, reach.y}};
  if (anchor.x > 0) range = {{-2.0 * reach.x, -reach.y}, {0.0, reach.y}};
  if (anchor.y < 0) range = {{-reach.x, 0.0}, {reach.x, 2.0 * reach.y}};
  if (anchor.y > 0) range = {{-reach.x, -2.0 * reach.y}, {reach.x, 0.0}};
  return range;
}

double ClampTo(double value, double low, double high) {
  return high < low ? low : Math::Clamp(value, low, high);
}

Vector2 ClampTo(const Vector2& value, const OffsetRange& range) {
  return {ClampTo(value.x, range.low.x, range.high.x), ClampTo(value.y, range.low.y, range.high.y)};
}

Box2 GetStripAt(const StripRoom& room, StripPlace place, const Vector2& half, const Vector2& offset) {
  place.edgeOffset = offset;
  return {GetStripCenter(room, place, half), half};
}

bool IsUnderRibbon(const StripRoom& room, const Box2& strip) { return strip.Min().x < room.ribbonWidth; }

bool MeetsCube(const StripRoom& room, const Box2& strip) {
  const Box2& cube = room.orientorBounds;
  const Vector2 apart = strip.center - cube.center;
  const Vector2 reach = strip.halfExtent + cube.halfExtent * 2.0;
  return std::abs(apart.x) < reach.x && std::abs(apart.y) < reach.y;
}

void Lower(double& high, double& low, double by) {
  high -= by;
  low = Math::Min(low, high);
}

void Raise(double& low, double& high, double by) {
  low += by;
  high = Math::Max(low, high);
}

void AdjustToOrientor(const StripRoom& room, Position position, OffsetRange& range) {
  const Vector2 cube = GetCubeSize(room);
  if (IsAlongTopOrBottom(position)) {
    if (IsAtLeft(room.orientorLocation)) {
      Raise(range.low.x, range.high.x, cube.x);
    } else {
      Lower(range.high.x, range.low.x, cube.x);
    }
  } else if (IsAtTop(room.orientorLocation)) {
    Lower(range.high.y, range.low.y, cube.y);
  } else {
    Raise(range.low.y, range.high.y, cube.y);
  }
}

// ---- docking ----

// Of two edges at the same distance: the one that the strip keeps if it was there, and the other winner.
struct Tie {
  Position first;
  Position second;
  Position kept;
  Position otherwise;
};
constexpr Tie TIES[] = {
    {Toolbar::POSITION_LEFT, Toolbar::POSITION_TOP, Toolbar::POSITION_TOP, Toolbar::POSITION_LEFT},
    {Toolbar::POSITION_LEFT, Toolbar::POSITION_RIGHT, Toolbar::POSITION_RIGHT, Toolbar::POSITION_RIGHT},
    {Toolbar::POSITION_LEFT, Toolbar::POSITION_BOTTOM, Toolbar::POSITION_BOTTOM, Toolbar::POSITION_LEFT},
    {Toolbar::POSITION_TOP, Toolbar::POSITION_RIGHT, Toolbar::POSITION_TOP, Toolbar::POSITION_RIGHT},
    {Toolbar::POSITION_TOP, Toolbar::POSITION_BOTTOM, Toolbar::POSITION_TOP, Toolbar::POSITION_TOP},
    {Toolbar::POSITION_RIGHT, Toolbar::POSITION_BOTTOM, Toolbar::POSITION_BOTTOM, Toolbar::POSITION_RIGHT},
};

Position BreakTie(Position first, Position second, Position current) {
  for (const Tie& tie : TIES) {
    if (tie.first == first && tie.second == second) return current == tie.kept ? tie.kept : tie.otherwise;
  }
  return first;
}

constexpr Position EDGES[] = {Toolbar::POSITION_LEFT, Toolbar::POSITION_TOP, Toolbar::POSITION_RIGHT,
                              Toolbar::POSITION_BOTTOM};

double Round(double value) { return std::floor(value + 0.5); }

// More than two at the same distance are settled one after another.
Position FindNearestEdge(const StripRoom& room, const Box2& strip, Position current) {
  const Vector2 center(Round(strip.center.x), Round(strip.center.y));
  const double ribbon = IsUnderRibbon(room, strip) ? room.ribbonHeight : 0.0;
  const double distances[] = {center.x, room.viewportHeight - center.y - ribbon,
                              room.viewportWidth - center.x, center.y};
  Position nearest = Toolbar::POSITION_LEFT;
  for (std::size_t i = 1; i < 4; ++i) {
    const double ahead = distances[nearest] - distances[i];
    if (ahead > 0.0) nearest = EDGES[i];
    if (ahead == 0.0) nearest = BreakTie(nearest, EDGES[i], current);
  }
  return nearest;
}

}  // namespace

bool IsToolbarPosition(Position position) {
  return position >= Toolbar::POSITION_LEFT && position <= Toolbar::POSITION_BOTTOM_LEFT;
}

bool IsToolbarCorner(Position position) { return position >= Toolbar::POSITION_TOP_LEFT; }

bool IsAlongTopOrBottom(Position position) {
  return position == Toolbar::POSITION_TOP || position == Toolbar::POSITION_BOTTOM;
}

Toolbar::Orientation GetOrientationAt(Position position) {
  return IsAlongTopOrBottom(position) ? Toolbar::ORIENTATION_HORIZONTAL : Toolbar::ORIENTATION_VERTICAL;
}

double GetAvailableLength(const StripRoom& room, const StripPlace& place, double thickness) {
  const bool vertical = place.orientation == Toolbar::ORIENTATION_VERTICAL;
  const double available = vertical ? GetAvailableHeight(room, place.position, thickness)
                                    : GetAvailableWidth(room, place.position);
  const int limit = vertical ? room.sizeLimitHeight : room.sizeLimitWidth;
  return limit >= 0 ? Math::Min(limit, available) : available;
}

Vector2 GetStripCenter(const StripRoom& room, const StripPlace& place, const Vector2& half) {
  const Anchor anchor = ANCHORS[place.position];
  const Vector2 inward(-anchor.x * place.cornerOffset.x, -anchor.y * place.cornerOffset.y);
  const Vector2 offset = IsToolbarCorner(place.position) ? inward : place.edgeOffset;
  return {FromSide(anchor.x, room.viewportWidth, half.x, offset.x),
          FromSide(anchor.y, room.viewportHeight, half.y, offset.y)};
}

Vector2 GetConstrainedOffset(const StripRoom& room, const StripPlace& place, const Vector2& half,
                             bool pressed) {
  if (IsToolbarCorner(place.position) || !room.HasViewport()) return place.edgeOffset;
  OffsetRange range = GetRangeInViewport(room, place.position, half);
  Vector2 offset = ClampTo(place.edgeOffset, range);
  if (IsUnderRibbon(room, GetStripAt(room, place, half, offset))) range.high.y -= room.ribbonHeight;
  offset = ClampTo(offset, range);
  if (!pressed && MeetsCube(room, GetStripAt(room, place, half, offset)))
    AdjustToOrientor(room, place.position, range);
  return ClampTo(offset, range);
}

StripPlace GetDock(const StripRoom& room, const StripPlace& place, const Box2& strip) {
  StripPlace dock = place;
  dock.position = FindNearestEdge(room, strip, place.position);
  dock.orientation = GetOrientationAt(dock.position);
  const Vector2 fromMiddle = strip.center - room.GetMiddle();
  dock.edgeOffset =
      IsAlongTopOrBottom(dock.position) ? Vector2(fromMiddle.x, 0.0) : Vector2(0.0, fromMiddle.y);
  return dock;
}

StripPlace GetEdgeBeside(const StripRoom& room, const StripPlace& place, const Vector2& half) {
  if (!IsToolbarCorner(place.position)) return place;
  const Anchor anchor = ANCHORS[place.position];
  StripPlace edge = place;
  edge.position = anchor.x < 0 ? Toolbar::POSITION_LEFT : Toolbar::POSITION_RIGHT;
  const double inward = half.y + place.cornerOffset.y - room.viewportHeight / 2.0;
  edge.edgeOffset = Vector2(-anchor.x * place.cornerOffset.x, -anchor.y * inward);
  return edge;
}

}  // namespace Korvane
