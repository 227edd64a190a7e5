#pragma once

#include <cairo.h>

#include <string_view>

namespace zovhost {

/// What is drawn of a picture of the storyboard, and in which state.
struct StoryLook {
  std::string_view glyph = {};  // a file of the kit's resources
  bool lit = false;             // under the mouse
  bool on = false;              // chosen, switched on, running
};

/// Of a picture, in points.
struct StorySize {
  double width = 0.0;
  double height = 0.0;
  // What a thumbnail leaves free of a card.
  double side = 0.0;
  double above = 0.0;
  double below = 0.0;
};

// Each draws a picture into a context whose unit is the pixel, at `unit` pixels a point. Lines are whole
// pixels.
struct StoryPlace {
  cairo_t* context = nullptr;
  double unit = 1.0;
  StorySize size = {};
};

/// The ground of the row of shots, that of a toolbar.
void DrawStoryStrip(const StoryPlace& place, const StoryLook& look);
/// The same with its glyph at the left, and a line before the last of the buttons that are laid on it.
void DrawStoryTitleBar(const StoryPlace& place, const StoryLook& look);
/// A button of the title bar.
void DrawStoryTitleButton(const StoryPlace& place, const StoryLook& look);
/// The card of a slide, on which a thumbnail is laid and a name is set in white.
void DrawStoryCard(const StoryPlace& place, const StoryLook& look);
/// A card without a thumbnail, which its glyph fills.
void DrawStoryAdd(const StoryPlace& place, const StoryLook& look);
/// Around the thumbnail of a card: a frame, whole while `on` and broken otherwise, and a tab with its glyph.
void DrawStoryProgress(const StoryPlace& place, const StoryLook& look);
/// Over a card, darkest at its left side, or at its right one while `on`.
void DrawStoryShade(const StoryPlace& place, const StoryLook& look);
/// A round button, which reads on any thumbnail.
void DrawStoryRoundButton(const StoryPlace& place, const StoryLook& look);
/// A bar between two slides.
void DrawStoryDrop(const StoryPlace& place, const StoryLook& look);

}  // namespace zovhost
