#include "story/panel_layout.h"

#include <algorithm>
#include <cmath>

#include "foundation/truncate.h"
#include "korvane/math.h"

namespace Korvane {

namespace {

// Pixels.
constexpr double MARGIN = 15.0;  // around the row of the sequences
constexpr double SEQUENCE_STEP = 134.0;
constexpr double SHOT_STEP = 70.0;
constexpr double SHOT_ROW_X = 32.0 + 1.0;
constexpr double SHOT_ROW_Y = 32.0 + 1.0 + 134.0;
constexpr double SHOT_ROW_HEIGHT = 100.0;
constexpr double DROP_MARGIN = 6.0;

constexpr int STACK_DEPTH = 5;  // of sequences; those beyond lie on the last place
constexpr double STACK_STEP = 5.0;
constexpr double STACK_EDGE = 3.0;  // steps from the edge
constexpr double RIGHT_STACK = 160.0;
constexpr double SHOT_STACK_STEP = 3.0;

constexpr double ROW_START = 128.0;
constexpr double ROW_OVERLAP = 6.0;

constexpr double DRAG_WAY = 3.0;

constexpr double TITLE_X = 100.0;
constexpr double TITLE_Y = 243.0;
constexpr Vector2 TITLE_HALF{93.0, 16.0};
constexpr double TITLE_BUTTONS[TITLE_BUTTON_COUNT] = {100.0, 121.0, 142.0, 175.0};
constexpr double TITLE_BUTTON_HALF = 8.0;

double GetStackPlace(int depth) { return STACK_STEP * std::min(depth, STACK_DEPTH - 1); }

// A slide of a sequence, by its left edge.
void PlaceSequence(const PanelRoom& room, double left, int index, int count, Slide& slide) {
  const double first = room.x + STACK_STEP * STACK_EDGE + GetStackPlace(index);
  const double last = room.viewportWidth - RIGHT_STACK - GetStackPlace(count - 1 - index);
  slide.fadeRight = left > last;
  left = std::min(left, last);
  slide.fadeLeft = left < first;
  slide.x = std::max(left, first) + PanelLayout::SEQUENCE_HALF;
  slide.fadeRight = slide.fadeRight && !slide.fadeLeft;
}

bool StackAt(double edge, bool beyond, double& place) {
  if (beyond) place = edge;
  return beyond;
}

}  // namespace

// ---- the title bar ----

int PanelPlace::ToPanel(int pixel) const { return Truncate(std::floor(pixel / scale)); }

void MoveTo(const PanelPlace& place, PanelRoom& room) {
  room.x = AddPixels(place.ToPanel(place.left), place.margin);
  room.y = AddPixels(place.ToPanel(place.bottom), place.margin);
  room.viewportWidth = place.ToPanel(place.viewportWidth);
  room.viewportHeight = place.ToPanel(place.viewportHeight);
}

Box2 GetTitleBar(const PanelRoom& room) { return {{room.x + TITLE_X, room.y + TITLE_Y}, TITLE_HALF}; }

Box2 GetTitleButton(const PanelRoom& room, TitleButton button) {
  return {{room.x + TITLE_BUTTONS[button], room.y + TITLE_Y}, Vector2(TITLE_BUTTON_HALF)};
}

// ---- rows ----

Box2 GetShotRow(const PanelRoom& room, const std::vector<Storyboard::ShotDisplayElement>& shots) {
  if (shots.empty()) return {};
  double right = room.x;
  for (const Slide& each : shots) {
    right = std::max(right, each.x + each.halfWidth + PanelLayout::SHOT_ROW_MARGIN);
  }
  const double half = (right - room.x) / 2.0;
  return {{room.x + half, room.y + SHOT_ROW_Y}, {half, SHOT_ROW_HEIGHT / 2.0}};
}

void PlaceSequenceSlides(const PanelRoom& room, int scrollOffset,
                         std::vector<Storyboard::DisplayElement>& slides) {
  const int count = static_cast<int>(slides.size());
  double left = room.x + MARGIN + scrollOffset;
  for (int i = 0; i < count; ++i, left += SEQUENCE_STEP) {
    Slide& slide = SlideAt(slides, i);
    slide.halfWidth = slide.halfHeight = PanelLayout::SEQUENCE_HALF;
    slide.y = room.y + MARGIN + PanelLayout::SEQUENCE_HALF;
    PlaceSequence(room, left, i, count, slide);
  }
}

// From the right first: where there is no room for both stacks, the left one stands.
RowStacks PlaceShotSlides(const PanelRoom& room, int scrollOffset,
                          std::vector<Storyboard::ShotDisplayElement>& slides) {
  RowStacks stacks;
  const double right = room.viewportWidth - SHOT_ROW_X;
  double place = room.x + SHOT_ROW_X + scrollOffset + SHOT_STEP * (static_cast<double>(slides.size()) - 1.0);
  for (std::size_t i = slides.size(); i-- > 0; place -= SHOT_STEP) {
    Slide& slide = slides[i];
    const double edge = right - SHOT_STACK_STEP * stacks.right;
    slide.halfWidth = slide.halfHeight = PanelLayout::SHOT_HALF;
    slide.x = place;
    slide.y = room.y + SHOT_ROW_Y;
    slide.stackedRight = StackAt(edge, place > edge, slide.x);
    if (slide.stackedRight) ++stacks.right;
  }
  for (Slide& slide : slides) {
    const double edge = room.x + SHOT_ROW_X + SHOT_STACK_STEP * stacks.left;
    slide.stackedLeft = StackAt(edge, slide.x < edge, slide.x);
    if (!slide.stackedLeft) continue;
    ++stacks.left;
    if (slide.stackedRight) --stacks.right;
    slide.stackedRight = false;
  }
  return stacks;
}

int LimitScrollOffset(const PanelRoom& room, int offset, std::size_t sequences) {
  if (sequences == 0) return 0;
  const double row = ROW_START + (ROW_START - ROW_OVERLAP) * (static_cast<double>(sequences) - 1.0);
  const double space = static_cast<double>(room.viewportWidth) - room.x - MARGIN;
  return std::clamp(offset, Truncate(Math::Min(space - row, 0.0)), 0);
}

// ---- which one lies above ----

bool IsFirstAboveSecondSequence(int first, int second, int selected) {
  if (first == selected || second == selected) return first == selected;
  const bool bothRight = first > selected && second > selected;
  return bothRight ? first < second : first > second;
}

bool IsFirstAboveSecondShot(const std::vector<Storyboard::ShotDisplayElement>& slides, int first,
                            int second) {
  return SlideAt(slides, first).stackedLeft || SlideAt(slides, second).stackedLeft ? first > second
                                                                                   : first < second;
}

// ---- drags ----

Box2 GetDropBounds(const Slide& slide) {
  return {slide.GetCenter(), {slide.halfWidth + DROP_MARGIN, slide.halfHeight + DROP_MARGIN}};
}

bool IsDrag(int downX, int x) {
  const double way = static_cast<double>(x) - downX;
  return std::sqrt(2.0 * way * way) > DRAG_WAY;
}

}  // namespace Korvane
