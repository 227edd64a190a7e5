#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "sheet.h"
#include "zovhost/image.h"
#include "zovhost/resource_pack.h"

namespace zovsheets {

/// Pictures of the storyboard that are of one kind, side by side.
struct StoryKind {
  const char* name;  // of a file as well
  int first;         // picture
  int last;
  int below = -1;  // what they are laid over; -1: nothing
};

std::span<const StoryKind> GetStoryKinds();

/// In a row, each with a margin around it, at `scale` pixels a point. False when one of them cannot be drawn.
bool PaintStoryKind(const zovhost::ResourcePack& pack, const StoryKind& kind, Ground ground, double scale,
                    zovhost::Image& image);

/// What the storyboard is to look like in one picture.
struct StoryState {
  enum class Doing : int { Editing, Choosing, Playing, Paused, Dragging };

  std::string name;  // of a file as well
  Doing doing = Doing::Editing;
  Ground ground = Ground::Gradient;
  double scale = 1.0;                                           // pixels for one point
  std::shared_ptr<const zovhost::ResourcePack> pack = nullptr;  // null: the kit's own
};

/// The states that the look of the storyboard is judged by, each with a name of its own.
std::vector<StoryState> GetStoryStates();

/// Draws a state in an OpenGL context that is current, over its ground. False when the driver refuses, and
/// when a picture is missing.
bool PaintStory(const StoryState& state, zovhost::Image& image);

}  // namespace zovsheets
