#pragma once

#include <cstddef>
#include <vector>

#include "foundation/truncate.h"
#include "korvane/box2.h"
#include "story/slides.h"

namespace Korvane {

/// Where a host wants the panel, in viewport pixels: a corner, and how far from it; the size of the view; and
/// how many of them stand for one of the panel's own.
struct PanelPlace {
  int left = 15;
  int bottom = 15;
  int margin = 0;  // in the panel's own
  int viewportWidth = 0;
  int viewportHeight = 0;
  double scale = 1.0;

  int ToPanel(int pixel) const;
  Box2 ToViewport(const Box2& box) const { return {box.center * scale, box.halfExtent * scale}; }
};

/// The room that the panel stands in: its lower left corner, and the size of the view. In pixels of the
/// panel's own, as all that lies in it.
struct PanelRoom {
  int x = 15;
  int y = 15;
  int viewportWidth = 0;
  int viewportHeight = 0;
};

/// Pixels of the panel's own.
struct PanelLayout {
  static constexpr double SEQUENCE_HALF = 64.0;
  static constexpr double SHOT_HALF = 32.0;
  static constexpr double STRIP_TOP = 143.0;  // a press above it drags the row of the shots
  static constexpr int SHOT_ROW_MARGIN = 8;
};

/// The buttons of the title bar, from the left.
enum TitleButton : int {
  TITLE_BUTTON_PLAY = 0,
  TITLE_BUTTON_STOP = 1,
  TITLE_BUTTON_LOOP = 2,
  TITLE_BUTTON_CLOSE = 3,
};
constexpr int TITLE_BUTTON_COUNT = 4;

/// Brings a room to a place.
void MoveTo(const PanelPlace& place, PanelRoom& room);

Box2 GetTitleBar(const PanelRoom& room);
Box2 GetTitleButton(const PanelRoom& room, TitleButton button);
/// What lies behind the row of shots, from the panel's edge past the last of them.
Box2 GetShotRow(const PanelRoom& room, const std::vector<Storyboard::ShotDisplayElement>& shots);

/// Places a row: slides that would stand past an edge of the view are stacked at it.
void PlaceSequenceSlides(const PanelRoom& room, int scrollOffset,
                         std::vector<Storyboard::DisplayElement>& slides);

/// How many slides lie on the stacks of a row.
struct RowStacks {
  int left = 0;
  int right = 0;
};
RowStacks PlaceShotSlides(const PanelRoom& room, int scrollOffset,
                          std::vector<Storyboard::ShotDisplayElement>& slides);

/// The offset nearest to `offset` at which so many sequences fill the row.
int LimitScrollOffset(const PanelRoom& room, int offset, std::size_t sequences);

/// Which of two slides lies above. The selected sequence lies above all, on its left the later one of two and
/// on its right the earlier, and those on its right above those on its left; with none selected all are on
/// its right.
bool IsFirstAboveSecondSequence(int first, int second, int selected);
/// On the left stack the later one, else the earlier.
bool IsFirstAboveSecondShot(const std::vector<Storyboard::ShotDisplayElement>& slides, int first, int second);

/// A round button of a slide, by where it lies from the slide's centre.
struct RoundButton {
  Vector2 place;
  double radius;

  Vector2 GetCenter(const Slide& slide) const { return slide.GetCenter() + place; }
  bool IsHit(const Slide& slide, const Vector2& mouse) const {
    return (mouse - GetCenter(slide)).Length() <= radius;
  }
};
/// That which plays, and that which flies to the start.
struct SlideButtons {
  RoundButton first;
  RoundButton second;
};
constexpr SlideButtons SEQUENCE_BUTTONS = {{{47.0, 46.0}, 10.0}, {{47.0, -30.0}, 10.0}};
constexpr SlideButtons SHOT_BUTTONS = {{{20.0, 20.0}, 8.0}, {{20.0, -4.0}, 8.0}};

/// The place where a drag lands on the slide; a little wider than the slide.
Box2 GetDropBounds(const Slide& slide);

/// Of any coordinates; the nearest int where there is none.
inline int AddPixels(int a, int b) { return Truncate(static_cast<double>(a) + b); }
inline int SubtractPixels(int a, int b) { return Truncate(static_cast<double>(a) - b); }

/// A press has become a drag. Only the way to the side counts.
bool IsDrag(int downX, int x);

}  // namespace Korvane
