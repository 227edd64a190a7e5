#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "story/open_storyboard.h"

using namespace Korvane;

namespace {

/// A host that acts once, while it draws a picture that the panel has had made.
class ActingHost : public RecordingRenderer {
 public:
  bool Render(DynamicIcon2D* icon) override {
    const bool drawn = RecordingRenderer::Render(icon);
    if (const std::function<void()> once = std::exchange(act, nullptr)) once();
    return drawn;
  }
  using RecordingRenderer::Render;
  std::function<void()> act;
};

class StoryboardDrawingTest : public StoryboardTest {
 protected:
  static constexpr int FIRST_SHOT_X = 33;
  static constexpr int SHOT_Y = 180;

  Sequence* ShowSequence(int shots) {
    Sequence* const sequence = AddSequence(shots);
    board->SetSelectedSequence(sequence);
    for (int i = 0; i < shots + 4; ++i) Frame();  // until every picture is made
    Forget();
    return sequence;
  }
  // Of the picture that stands first in the list of a frame, how often each is drawn.
  int CountMost(const RecordingRenderer& host) const {
    const auto& calls = host.GetCalls();
    int most = 0;
    for (const auto& call : calls) {
      if (call.rfind("RenderDynamic(", 0) != 0) continue;
      most = std::max(most, static_cast<int>(std::count(calls.begin(), calls.end(), call)));
    }
    return most;
  }
};

TEST_F(StoryboardDrawingTest, a_dragged_slide_is_drawn_once) {
  ShowSequence(3);
  Frame();
  const int pictures = renderer.CountCalls("RenderDynamic");
  board->OnMouseMove(FIRST_SHOT_X, SHOT_Y);
  ASSERT_TRUE(board->OnLeftMouseDown(FIRST_SHOT_X, SHOT_Y));
  board->OnMouseMove(FIRST_SHOT_X + 400, SHOT_Y);
  ASSERT_TRUE(board->DraggingStoryBoardItem());
  Forget();
  Frame();
  EXPECT_EQ(CountMost(renderer), 1);
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), pictures);
}

// What is behind the last slide that is left is no slide.
TEST_F(StoryboardDrawingTest, slides_that_go_while_one_is_drawn_are_not_drawn) {
  ActingHost host;
  board->SetRenderer(&host);
  board->SetUndoQueue(nullptr);
  Sequence* const sequence = ShowSequence(3);
  Frame();
  const int pictures = host.CountCalls("RenderDynamic");
  ASSERT_GE(pictures, 8);  // each slide's thumbnail and label
  host.ClearCalls();
  host.act = [&] {
    for (int i = 0; i < 3; ++i) board->DeleteShot(sequence->GetShot(0));
  };
  Frame();
  EXPECT_LE(host.CountCalls("RenderDynamic"), 2);  // of the slide that was being drawn
  board->SetRenderer(nullptr);
}

TEST_F(StoryboardDrawingTest, nothing_covers_the_view_while_nothing_fades) {
  ShowSequence(2);
  Frame();
  EXPECT_GT(CountPictures(), 0);
  const std::vector<float> view = {0, 0, 0, 0, 600, 0, 1000, 600, 0, 1000, 0, 0};
  for (const auto& geometry : renderer.GetGeometry()) EXPECT_NE(geometry.vertices, view);
}

}  // namespace
