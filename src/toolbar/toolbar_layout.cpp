#include "toolbar/toolbar_layout.h"

namespace Korvane {

namespace {

using Item = ToolbarItem;
using Items = std::span<StripItem>;

bool IsHandle(Item::Type type) { return type >= Item::TYPE_HEAD_CORNER && type <= Item::TYPE_MORE_CONTROLS; }

// The handles of a strip, as far as they are there; those that are left out among them.
struct Handles {
  StripItem* head = nullptr;
  StripItem* tail = nullptr;
  StripItem* grip = nullptr;
  StripItem* more = nullptr;

  StripItem** Find(Item::Type type) {
    StripItem** const slots[] = {&head, &tail, &grip, &more};
    return IsHandle(type) ? slots[type - Item::TYPE_HEAD_CORNER] : nullptr;
  }
};

Handles FindHandles(Items items) {
  Handles handles;
  for (StripItem& item : items) {
    StripItem** const slot = handles.Find(item.type);
    if (slot != nullptr && *slot == nullptr && !item.hidden) *slot = &item;
  }
  return handles;
}

void HideLaterHandles(Items items) {
  Handles handles = FindHandles(items);
  for (StripItem& item : items) {
    StripItem** const slot = handles.Find(item.type);
    if (slot != nullptr && *slot != &item) item.hidden = true;
  }
}

// ---- sizes ----

// A grip lies across the strip, whichever way that runs.
double GetBodyLength(const StripItem& item, bool vertical) {
  return vertical || item.type == Item::TYPE_GRIP ? item.height : item.width;
}

double GetArrowLength(const StripItem& item) {
  return item.type == Item::TYPE_FLYOUT_BUTTON ? item.flyoutSize : 0.0;
}

double GetLength(const StripItem& item, bool vertical) {
  return GetBodyLength(item, vertical) + GetArrowLength(item);
}

double GetThickness(const StripItem& item, bool vertical) {
  return vertical || item.type == Item::TYPE_GRIP ? item.width : item.height;
}

double LengthOf(const StripItem* item, bool vertical) {
  return item != nullptr ? GetLength(*item, vertical) : 0.0;
}

double ThicknessOf(const StripItem* item, bool vertical) {
  return item != nullptr ? GetThickness(*item, vertical) : 0.0;
}

// In a vertical strip the head corner sits beside the grip.
double GetHandleLength(const Handles& handles, bool vertical) {
  const double grip = LengthOf(handles.grip, vertical);
  const double head = LengthOf(handles.head, vertical);
  const double tail = LengthOf(handles.tail, vertical);
  if (!vertical) return grip + Math::Max(head, tail);
  return (handles.grip != nullptr ? grip : head) + tail;
}

struct Gaps {
  double head = 0.0;
  double tail = 0.0;
};

Gaps GetGaps(const Handles& handles, bool vertical, double spacing) {
  const double first = handles.grip != nullptr || handles.head != nullptr ? spacing : 0.0;
  const double second = handles.tail != nullptr ? spacing : 0.0;
  const bool atHead = vertical || handles.grip != nullptr;
  return atHead ? Gaps{first, second} : Gaps{0.0, first + second};
}

// ---- places ----

// The strip without its padding. Places along it count from the head, places across it from the left of a
// vertical and from the top of a horizontal strip.
struct Room {
  bool vertical;
  double left;
  double top;
  double length;
  double thickness;

  Box2 At(double along, double length_, double across, double thickness_) const {
    const double x = vertical ? across : along;
    const double y = vertical ? along : across;
    const Vector2 half(vertical ? thickness_ / 2.0 : length_ / 2.0,
                       vertical ? length_ / 2.0 : thickness_ / 2.0);
    return {Vector2(left + x + half.x, top - y - half.y), half};
  }
  Box2 InMiddle(double along, double length_, double thickness_) const {
    return At(along, length_, (thickness - thickness_) / 2.0, thickness_);
  }
};

Room MakeRoom(const Box2& strip, bool vertical, double padding) {
  const Vector2 low = strip.Min() + Vector2(padding);
  const Vector2 high = strip.Max() - Vector2(padding);
  const Vector2 size = high - low;
  return {vertical, low.x, high.y, vertical ? size.y : size.x, vertical ? size.x : size.y};
}

void Place(StripItem& item, const Box2& bounds) { item.bounds = item.nonFlyoutBounds = bounds; }

// The grip gives way to the corner button, but keeps half of the strip.
double PlaceHeadRow(const Handles& handles, const Room& room) {
  StripItem* const grip = handles.grip;
  StripItem* const head = handles.head;
  const double length = LengthOf(grip != nullptr ? grip : head, true);
  double left = room.thickness;
  if (grip != nullptr) {
    const double beside = Math::Max(room.thickness - ThicknessOf(head, true), room.thickness / 2.0);
    const double thickness = Math::Min(grip->width, head != nullptr ? beside : room.thickness);
    Place(*grip,
          head != nullptr ? room.At(0.0, length, 0.0, thickness) : room.InMiddle(0.0, length, thickness));
    left -= thickness;
  }
  if (head == nullptr) return length;
  const double thickness = Math::Min(head->width, left);
  Place(*head, room.At(0.0, Math::Min(head->height, length), room.thickness - thickness, thickness));
  return length;
}

double PlaceGrip(const Handles& handles, const Room& room) {
  if (handles.grip == nullptr) return 0.0;
  const double length = GetLength(*handles.grip, false);
  Place(*handles.grip, room.InMiddle(0.0, length, GetThickness(*handles.grip, false)));
  return length;
}

double PlaceTailCorner(const Handles& handles, const Room& room) {
  StripItem* const tail = handles.tail;
  if (tail == nullptr || !tail->IsShown()) return 0.0;
  Place(*tail, room.At(room.length - tail->height, tail->height, room.thickness - tail->width, tail->width));
  return tail->height;
}

// The slot of both corner buttons keeps its length when one of them is left out.
double PlaceCorners(const Handles& handles, const Room& room) {
  StripItem* const head = handles.head;
  StripItem* const tail = handles.tail;
  if (head != nullptr) Place(*head, room.At(room.length - head->width, head->width, 0.0, head->height));
  if (tail != nullptr && tail->IsShown())
    Place(*tail,
          room.At(room.length - tail->width, tail->width, room.thickness - tail->height, tail->height));
  return Math::Max(LengthOf(head, false), LengthOf(tail, false));
}

double PlaceMoreControls(const Handles& handles, const Room& room, double tail) {
  StripItem* const more = handles.more;
  if (more == nullptr || !more->IsShown()) return 0.0;
  const double length = GetLength(*more, room.vertical);
  Place(*more, room.InMiddle(room.length - tail - length, length, GetThickness(*more, room.vertical)));
  return length;
}

void PlaceSequence(Items items, const Room& room, double along) {
  for (StripItem& item : items) {
    if (IsHandle(item.type) || !item.IsShown()) continue;
    const double body = GetBodyLength(item, room.vertical);
    const double arrow = GetArrowLength(item);
    const double thickness =
        item.type == Item::TYPE_SEPARATOR ? room.thickness : GetThickness(item, room.vertical);
    item.bounds = room.InMiddle(along, body + arrow, thickness);
    item.nonFlyoutBounds = room.InMiddle(along, body, thickness);
    if (arrow > 0.0) item.flyoutBounds = room.InMiddle(along + body, arrow, thickness);
    along += body + arrow;
  }
}

}  // namespace

double StripSpacing::GetPadding() const { return Math::Max(inner, 0.0) + Math::Max(outer, 0.0); }

StripSize MeasureStrip(Items items, Toolbar::Orientation orientation, const StripSpacing& spacing) {
  const bool vertical = orientation == Toolbar::ORIENTATION_VERTICAL;
  HideLaterHandles(items);
  const Handles handles = FindHandles(items);
  StripSize size{GetHandleLength(handles, vertical), 0.0};
  for (const StripItem& item : items) {
    if (item.hidden) continue;
    if (!IsHandle(item.type)) size.length += GetLength(item, vertical);
    size.thickness = Math::Max(size.thickness, GetThickness(item, vertical));
  }
  if (!vertical) {
    const double corners = ThicknessOf(handles.head, false) + ThicknessOf(handles.tail, false);
    size.thickness = Math::Max(size.thickness, corners);
  }
  const Gaps gaps = GetGaps(handles, vertical, spacing.grip);
  const double padding = 2.0 * spacing.GetPadding();
  return {size.length + gaps.head + gaps.tail + padding, size.thickness + padding};
}

double FitStrip(Items items, Toolbar::Orientation orientation, double length, double available) {
  const bool vertical = orientation == Toolbar::ORIENTATION_VERTICAL;
  const Handles handles = FindHandles(items);
  if (length <= available) {
    if (handles.more != nullptr) handles.more->excluded = true;
    return length;
  }
  length += LengthOf(handles.more, vertical);
  if (handles.tail != nullptr) handles.tail->excluded = true;
  if (vertical) length -= LengthOf(handles.tail, vertical);
  for (auto item = items.rbegin(); item != items.rend() && length > available; ++item) {
    if (item->hidden || IsHandle(item->type)) continue;
    item->excluded = true;
    length -= GetLength(*item, vertical);
  }
  return length;
}

void LayStrip(Items items, Toolbar::Orientation orientation, const Box2& strip, const StripSpacing& spacing) {
  const bool vertical = orientation == Toolbar::ORIENTATION_VERTICAL;
  const Handles handles = FindHandles(items);
  const Room room = MakeRoom(strip, vertical, spacing.GetPadding());
  const Gaps gaps = GetGaps(handles, vertical, spacing.grip);
  for (StripItem& item : items) item.bounds = item.nonFlyoutBounds = item.flyoutBounds = Box2();

  const double head = vertical ? PlaceHeadRow(handles, room) : PlaceGrip(handles, room);
  const double corner = vertical ? PlaceTailCorner(handles, room) : PlaceCorners(handles, room);
  const double tail = corner > 0.0 ? corner + gaps.tail : 0.0;
  PlaceMoreControls(handles, room, tail);
  PlaceSequence(items, room, head + gaps.head);
}

}  // namespace Korvane
