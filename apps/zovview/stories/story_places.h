#pragma once

namespace zovview {

/// A part of the storyboard, for a pointer that is no hand.
enum class StoryPart : int {
  None,
  Play,
  Stop,
  Loop,
  Close,
  Sequence,
  SequencePlay,
  SequenceTarget,
  Shot,
  ShotPlay,
  ShotTarget,
};

/// The pixel of the viewport on which a part is, on a display of one pixel a point, from the bottom left.
/// `index` counts the slides of its row from the left, while none is stacked or scrolled; that which adds one
/// follows the others.
void FindStoryPart(StoryPart part, int index, int& x, int& y);

}  // namespace zovview
