#pragma once

#include <cstddef>

#include "korvane/story.h"
#include "korvane/storyboard.h"
#include "korvane/vector2.h"

namespace Korvane {

/// What the two kinds of slides have in common: where it stands and how it looks.
struct Slide {
  double x = 0.0;  // the centre, in viewport pixels
  double y = 0.0;
  double halfWidth = 0.0;
  double halfHeight = 0.0;
  bool highlighted = false;       // the mouse is on it
  bool selected = false;          // a sequence: its shots are shown
  bool overFirstButton = false;   // play
  bool overSecondButton = false;  // target
  bool dragging = false;
  bool dropBefore = false;  // where a drag would land
  bool dropAfter = false;
  bool fadeLeft = false;  // a sequence that stands at the stacked edge
  bool fadeRight = false;
  bool stackedLeft = false;  // the same of a shot
  bool stackedRight = false;
  bool menuOpen = false;

  Vector2 GetCenter() const { return {x, y}; }
  Box2 GetBounds() const { return {GetCenter(), {halfWidth, halfHeight}}; }
  bool operator==(const Slide&) const = default;
};

struct Storyboard::DisplayElement : Slide {
  Story* story = nullptr;
  Sequence* sequence = nullptr;  // null: the slide that adds one
};

struct Storyboard::ShotDisplayElement : Slide {
  Sequence* sequence = nullptr;
  ShotSpecification* shot = nullptr;  // null: the slide that adds one
};

/// A slide of a row by its number from the left.
template <class Slides>
auto& SlideAt(Slides& slides, int index) {
  return slides[static_cast<std::size_t>(index)];
}

}  // namespace Korvane
