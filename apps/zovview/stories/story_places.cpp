#include "stories/story_places.h"

#include <array>
#include <cstddef>

#include "stories/view_story.h"

namespace zovview {

namespace {

struct Row {
  int x;
  int y;
  int step;  // from one slide to the next
};

constexpr int MARGIN = ViewStory::MARGIN;
constexpr int TITLE_X = MARGIN;
constexpr int TITLE_Y = MARGIN + 243;
constexpr int SEQUENCE_STEP = 134;
constexpr int SHOT_STEP = 70;
// The middle of the first slide.
constexpr int SEQUENCE_X = MARGIN + 15 + 64;
constexpr int SEQUENCE_Y = MARGIN + 15 + 64;
constexpr int SHOT_X = MARGIN + 33;
constexpr int SHOT_Y = MARGIN + 167;

// In the order of the parts.
constexpr std::array<Row, 11> ROWS = {{
    {},
    {TITLE_X + 100, TITLE_Y, 0},
    {TITLE_X + 121, TITLE_Y, 0},
    {TITLE_X + 142, TITLE_Y, 0},
    {TITLE_X + 175, TITLE_Y, 0},
    {SEQUENCE_X, SEQUENCE_Y, SEQUENCE_STEP},
    {SEQUENCE_X + 47, SEQUENCE_Y + 46, SEQUENCE_STEP},
    {SEQUENCE_X + 47, SEQUENCE_Y - 30, SEQUENCE_STEP},
    {SHOT_X, SHOT_Y, SHOT_STEP},
    {SHOT_X + 20, SHOT_Y + 20, SHOT_STEP},
    {SHOT_X + 20, SHOT_Y - 4, SHOT_STEP},
}};

}  // namespace

void FindStoryPart(StoryPart part, int index, int& x, int& y) {
  const Row& row = ROWS[static_cast<std::size_t>(part)];
  x = row.x + index * row.step;
  y = row.y;
}

}  // namespace zovview
