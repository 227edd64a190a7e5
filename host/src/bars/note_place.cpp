#include "bars/note_place.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace zovhost {

using Korvane::Box2;
using Korvane::Vector2;

namespace {

// Points from the tip of the pointer, whose picture lies below it and to the right.
constexpr double BESIDE_POINTER = 10.0;
constexpr double BELOW_POINTER = 22.0;
constexpr double BORDER = 4.0;  // that a note keeps to the viewport's, and to panels
constexpr double BESIDE_THING = 6.0;

bool DoOverlap(const Box2& a, const Box2& b) {
  const Vector2 apart = a.center - b.center;
  const Vector2 reach = a.halfExtent + b.halfExtent;
  return std::abs(apart.x) < reach.x && std::abs(apart.y) < reach.y;
}

double FindDistance(const Vector2& point, const Box2& box) {
  const Vector2 way = point - box.center;
  return std::hypot(std::max(0.0, std::abs(way.x) - box.halfExtent.x),
                    std::max(0.0, std::abs(way.y) - box.halfExtent.y));
}

class Search {
 public:
  explicit Search(const NoteRoom& ofRoom) : room(ofRoom), edge(BORDER * room.scale) {}

  Vector2 FindPlace() {
    const Vector2 first = PlaceAtPointer();
    if (IsClear(first)) return first;
    AddBesideThing(first);
    places.push_back(first);
    const std::size_t count = places.size();
    for (std::size_t i = 0; i < count; ++i) AddBesidePanels(places[i]);
    return Choose(first);
  }

 private:
  Vector2 PlaceAtPointer() const {
    const double below = room.pointer.y - BELOW_POINTER * room.scale - room.half.y;
    const double y = below - room.half.y >= edge ? below : room.pointer.y + edge + room.half.y;
    return KeepWithin({room.pointer.x + BESIDE_POINTER * room.scale + room.half.x, y});
  }

  Vector2 KeepWithin(const Vector2& place) const {
    const Vector2 least = room.half + Vector2(edge);
    const Vector2 most = room.viewport - least;
    return {std::max(std::min(place.x, most.x), least.x), std::max(std::min(place.y, most.y), least.y)};
  }

  void AddBesideThing(const Vector2& atPointer) {
    if (!HasThing()) return;
    const Vector2 low = room.thing.Min() - room.half - Vector2(BESIDE_THING * room.scale);
    const Vector2 high = room.thing.Max() + room.half + Vector2(BESIDE_THING * room.scale);
    for (const Vector2& place : {Vector2(atPointer.x, low.y), Vector2(atPointer.x, high.y),
                                 Vector2(high.x, room.pointer.y), Vector2(low.x, room.pointer.y)}) {
      places.push_back(KeepWithin(place));
    }
  }

  void AddBesidePanels(const Vector2& place) {
    for (const Box2& panel : room.panels) {
      const Vector2 low = panel.Min() - room.half - Vector2(edge);
      const Vector2 high = panel.Max() + room.half + Vector2(edge);
      for (const Vector2& other : {Vector2(high.x, place.y), Vector2(low.x, place.y),
                                   Vector2(place.x, high.y), Vector2(place.x, low.y)}) {
        places.push_back(KeepWithin(other));
      }
    }
  }

  bool HasThing() const { return room.thing.halfExtent.x > 0.0 && room.thing.halfExtent.y > 0.0; }
  bool IsClearOfPanels(const Vector2& place) const {
    const Box2 note(place, room.half);
    return std::none_of(room.panels.begin(), room.panels.end(),
                        [&note](const Box2& panel) { return DoOverlap(note, panel); });
  }
  bool IsClear(const Vector2& place) const {
    return IsClearOfPanels(place) && !(HasThing() && DoOverlap(Box2(place, room.half), room.thing));
  }

  // The nearest of the best kind that there is.
  Vector2 Choose(const Vector2& otherwise) const {
    Vector2 best = otherwise;
    double least = std::numeric_limits<double>::infinity();
    bool clear = false;
    for (const Vector2& place : places) {
      if (!IsClearOfPanels(place)) continue;
      const bool clearToo = IsClear(place);
      const double distance = FindDistance(room.pointer, Box2(place, room.half));
      if (clearToo == clear ? !(distance < least) : clear) continue;
      best = place;
      least = distance;
      clear = clearToo;
    }
    return best;
  }

  const NoteRoom& room;
  const double edge;
  std::vector<Vector2> places;
};

}  // namespace

Vector2 FindNotePlace(const NoteRoom& room) { return Search(room).FindPlace(); }

}  // namespace zovhost
