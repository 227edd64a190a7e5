#pragma once

#include "story/history/rewind_recorder.h"
#include "story/history/rewind_timeline.h"

namespace Korvane {

/// What a rewind history consists of, by what changes together.
struct RewindParts {
  RewindPartners partners;
  RewindThumbnails thumbnails;
  RewindStrip strip;
  RewindElements elements{partners, thumbnails, strip};
  RewindRecorder recorder{partners, elements, strip};
  RewindTimeline timeline{partners, elements, thumbnails, strip};
};

}  // namespace Korvane
