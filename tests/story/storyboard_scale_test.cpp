// The panel on displays of more than one pixel a point: it has the same sizes there, counted in points.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "story/open_storyboard.h"

using namespace Korvane;

namespace {

constexpr float SCALES[] = {1.25F, 1.5F, 2.0F, 3.0F};

struct StoryboardScale : StoryboardTest {
  // A view of as many points.
  void SetScale(float scale) {
    const auto pixels = [scale](int points) { return static_cast<int>(static_cast<float>(points) * scale); };
    hub.GetApplicationParameters().pixels_per_point = scale;
    hub.GetApplicationParameters().viewport_width = pixels(1000);
    hub.GetApplicationParameters().viewport_height = pixels(600);
    board->SetViewportSize(pixels(1000), pixels(600));
    Frame();
  }
  Box2 FindSlide(const Sequence* sequence, Storyboard::SlidePart part = Storyboard::SLIDE_ITSELF) const {
    Box2 bounds;
    EXPECT_TRUE(board->GetSlideBounds(sequence, part, bounds));
    return bounds;
  }
};

void ExpectScaled(const Box2& one, const Box2& other, double scale) {
  EXPECT_NEAR(other.center.x, one.center.x * scale, 1e-9);
  EXPECT_NEAR(other.center.y, one.center.y * scale, 1e-9);
  EXPECT_NEAR(other.halfExtent.x, one.halfExtent.x * scale, 1e-9);
  EXPECT_NEAR(other.halfExtent.y, one.halfExtent.y * scale, 1e-9);
}

TEST_F(StoryboardScale, all_parts_lie_where_they_lie_in_points) {
  Sequence* const sequence = AddSequence(2);
  board->SetMargin(12);
  board->SetSelectedSequence(sequence);
  Frame();
  const Box2 slide = FindSlide(sequence);
  const Box2 button = FindSlide(sequence, Storyboard::SLIDE_TARGET);
  const Box2 close = board->GetTitleBounds(Storyboard::TITLE_CLOSE);
  Box2 shot;
  ASSERT_TRUE(board->GetSlideBounds(sequence->GetShot(1), Storyboard::SLIDE_ITSELF, shot));
  for (const float scale : SCALES) {
    SCOPED_TRACE(scale);
    SetScale(scale);
    ExpectScaled(slide, FindSlide(sequence), scale);
    ExpectScaled(button, FindSlide(sequence, Storyboard::SLIDE_TARGET), scale);
    ExpectScaled(close, board->GetTitleBounds(Storyboard::TITLE_CLOSE), scale);
    Box2 now;
    ASSERT_TRUE(board->GetSlideBounds(sequence->GetShot(1), Storyboard::SLIDE_ITSELF, now));
    ExpectScaled(shot, now, scale);
  }
}

TEST_F(StoryboardScale, a_click_meets_what_shows) {
  Sequence* const first = AddSequence(1);
  Sequence* const second = AddSequence(1);
  for (const float scale : SCALES) {
    SCOPED_TRACE(scale);
    SetScale(scale);
    for (Sequence* const wanted : {second, first}) {
      const Vector2 middle = FindSlide(wanted).center;
      EXPECT_TRUE(Click(static_cast<int>(middle.x), static_cast<int>(middle.y)));
      EXPECT_EQ(board->GetSelectedSequence(), wanted);
    }
    const Vector2 high = FindSlide(second).Max();
    board->OnMouseMove(static_cast<int>(high.x) - 1, static_cast<int>(high.y) - 1);
    EXPECT_TRUE(board->IsMouseInRegion());
    board->OnMouseMove(static_cast<int>(600.0F * scale), static_cast<int>(79.0F * scale));
    EXPECT_FALSE(board->IsMouseInRegion());
  }
}

TEST_F(StoryboardScale, a_slide_is_dragged_to_another_place) {
  Sequence* const sequence = AddSequence(2);
  ShotSpecification* const moved = sequence->GetShot(0);
  board->SetSelectedSequence(sequence);
  SetScale(2.0F);
  const auto y = static_cast<int>(2.0 * 180.0);
  board->OnMouseMove(66, y);
  ASSERT_TRUE(board->OnLeftMouseDown(66, y));
  board->OnMouseMove(140, y);
  board->OnMouseMove(226, y);
  board->OnLeftMouseUp(226, y);
  EXPECT_EQ(sequence->GetShot(1), moved);
}

TEST_F(StoryboardScale, pictures_of_the_scene_are_made_anew_for_another) {
  Sequence* const sequence = AddSequence(1);
  board->SetSelectedSequence(sequence);
  for (int i = 0; i < 3; ++i) Frame();
  Forget();
  SetScale(2.0F);
  for (int i = 0; i < 3; ++i) Frame();
  const std::vector<std::string> calls = renderer.TakeCalls();
  const auto asked = [&calls](const std::string& begin) {
    return std::count_if(calls.begin(), calls.end(),
                         [&](const std::string& call) { return call.rfind(begin, 0) == 0; });
  };
  EXPECT_EQ(asked("CreateSceneScreenshot(248, 180"), 1);
  EXPECT_EQ(asked("CreateSceneScreenshot(124, 90"), 1);
  EXPECT_EQ(asked("CreateSceneScreenshot"), 2);
  Frame();
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 0) << "once";
}

TEST_F(StoryboardScale, what_is_no_scale_counts_as_one) {
  Sequence* const sequence = AddSequence(1);
  Frame();
  const Box2 slide = FindSlide(sequence);
  for (const float scale : {0.0F, -2.0F, NAN, INFINITY}) {
    hub.GetApplicationParameters().pixels_per_point = scale;
    Frame();
    EXPECT_EQ(FindSlide(sequence).center, slide.center);
    EXPECT_EQ(FindSlide(sequence).halfExtent, slide.halfExtent);
  }
}

}  // namespace
