#include "story/history/rewind_strip.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Korvane {

namespace {

// Pixels between bracket and element.
constexpr double SNAP_DISTANCE = 4.0;
constexpr double STAY_DISTANCE = 16.0;

void Normalise(RewindStrip::Elements elements) {
  double sum = 0.0;
  for (const RewindStrip::Element& element : elements) sum += element.weight;
  if (!(sum > 0.0)) return;  // only where a gap is lost in the rounding of places
  for (RewindStrip::Element& element : elements) element.weight /= sum;
}

}  // namespace

// ---- the layout ----

void RewindStrip::Open(Elements elements, int current, const Vector2& position) {
  if (layoutStale) {
    snapped = snapEnabled;
    bracketOffset.x = 0.0;
  }
  int place = -current;
  for (Element& element : elements) {
    const Vector2 way(GetPitch() * place, 0.0);
    element.bounds.center = way + position + bracketOffset;
    if (layoutStale) element.weight = place == 0 ? 1.0 : 0.0;
    ++place;
  }
  layoutStale = false;
  open = true;
  bracketOrigin = bracketPosition = openPosition = position;
  scrollLeft = Vector2(GetMargin(), position.y);
  scrollRight = Vector2(viewportWidth - GetMargin(), position.y);
  if (scrollLeft.x > scrollRight.x) std::swap(scrollLeft, scrollRight);
  mouseCorrection = Vector2();
  pendingShift = 0.0;
}

void RewindStrip::Space(Elements elements) const {
  if (!open || elements.empty()) return;
  if (elements.size() == 1) elements[0].bounds.center = bracketPosition;
  const Vector2 first = elements[0].bounds.center;
  int place = 0;
  for (Element& element : elements) element.bounds.center = first + Vector2(GetPitch() * place++, 0.0);
}

// ---- the slide ----

int RewindStrip::Slide(Elements elements, const Vector2& position) {
  const double mouseX = position.x + mouseCorrection.x;
  const double scroll = FindScroll(mouseX, elements.front().bounds.center.x, elements.back().bounds.center.x);
  bracketOrigin.x += scroll;
  scrollLeft.x += scroll;
  scrollRight.x += scroll;
  bracketPosition.x = mouseX - (bracketOrigin.x - openPosition.x);
  double shift = std::exchange(pendingShift, 0.0) - scroll;
  snapped = snapped && snapEnabled;
  if (snapEnabled) shift = Snap(elements, scroll, shift);
  Move(elements, shift);
  const int heaviest = NoteHeaviest(elements);
  Normalise(elements);
  HoldBracket(elements.front().bounds.center.x, elements.back().bounds.center.x);
  return heaviest;
}

// Only as long as the strip has elements beyond the band.
double RewindStrip::FindScroll(double mouseX, double first, double last) const {
  const double low = GetMargin();
  const double high = viewportWidth - GetMargin();
  double scroll = 0.0;
  if (mouseX < scrollLeft.x) {
    scroll = mouseX - scrollLeft.x;
    if (first - scroll > low) scroll = Math::Min(first - scroll - low + scroll, 0.0);
  }
  if (mouseX > scrollRight.x) {
    scroll = mouseX - scrollRight.x;
    if (last - scroll < high) scroll = Math::Max(last - scroll - high + scroll, 0.0);
  }
  return scroll;
}

// The bracket goes to the element; while the strip scrolls the element comes to the bracket, and the rest of
// its way is kept for the next step. The way that the strip takes.
double RewindStrip::Snap(Elements elements, double scroll, double shift) {
  const double reach = (snapped ? STAY_DISTANCE : SNAP_DISTANCE) * scale;
  const auto found = std::find_if(elements.begin(), elements.end(), [&](const Element& element) {
    return std::abs(element.bounds.center.x + shift - bracketPosition.x) < reach;
  });
  snapped = found != elements.end();
  if (!snapped) return shift;
  const double place = found->bounds.center.x + shift;
  if (scroll == 0.0) {
    bracketPosition.x = place;
    return shift;
  }
  pendingShift = place - bracketPosition.x;
  return shift - pendingShift;
}

// Beyond the ends of the strip the element at the end rules.
void RewindStrip::Move(Elements elements, double shift) const {
  for (Element& element : elements) {
    element.bounds.center.x += shift;
    element.weight = Weigh(element);
  }
  if (elements.front().bounds.center.x > bracketPosition.x) elements.front().weight = 1.0;
  if (elements.back().bounds.center.x < bracketPosition.x) elements.back().weight = 1.0;
}

// 1 on the element, 0 on its neighbours and beyond.
double RewindStrip::Weigh(const Element& element) const {
  const double pitch = GetPitch();
  const double way = bracketPosition.x - element.bounds.center.x;
  const double place = pitch == 0.0 ? 0.0 : Math::Clamp(way / pitch, -1.0, 1.0);
  return 1.0 - std::abs(place);
}

int RewindStrip::NoteHeaviest(Elements elements) {
  const auto heaviest =
      std::max_element(elements.begin(), elements.end(),
                       [](const Element& a, const Element& b) { return a.weight < b.weight; });
  if (snapEnabled && heaviest->weight == 1.0) {
    snapped = true;
    bracketOffset.x = 0.0;
  } else {
    bracketOffset.x = heaviest->bounds.center.x - bracketPosition.x;
  }
  return static_cast<int>(heaviest - elements.begin());
}

void RewindStrip::HoldBracket(double first, double last) {
  if (first > bracketPosition.x) HoldBracketAt(first);
  if (last < bracketPosition.x) HoldBracketAt(last);
}

// At an end of the strip the mouse goes on alone: what it is ahead counts no more.
void RewindStrip::HoldBracketAt(double end) {
  mouseCorrection.x += end - bracketPosition.x;
  bracketPosition.x = end;
}

}  // namespace Korvane
