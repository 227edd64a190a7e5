#include "story/open_storyboard.h"

using namespace Korvane;

namespace {

class StoryboardBoundsTest : public StoryboardTest {
 protected:
  StoryboardBoundsTest() {
    sequence = AddSequence(2);
    board->SetSelectedSequence(sequence);
    Frame();
    Forget();
  }

  bool ClickIn(const Box2& bounds) {
    return Click(static_cast<int>(bounds.center.x), static_cast<int>(bounds.center.y));
  }
  template <class Element>
  Box2 Find(const Element* element, Storyboard::SlidePart part) {
    Box2 bounds;
    EXPECT_TRUE(board->GetSlideBounds(element, part, bounds));
    return bounds;
  }

  Sequence* sequence = nullptr;
};

TEST_F(StoryboardBoundsTest, of_slides_are_where_a_click_selects_and_adds) {
  ShotSpecification* const second = sequence->GetShot(1);
  EXPECT_TRUE(ClickIn(Find(second, Storyboard::SLIDE_ITSELF)));
  EXPECT_EQ(board->GetParts().slides.GetSelectedShot(sequence), second);
  const std::uint64_t shots = sequence->GetShotCount();
  EXPECT_TRUE(ClickIn(Find(static_cast<const ShotSpecification*>(nullptr), Storyboard::SLIDE_ITSELF)));
  EXPECT_EQ(sequence->GetShotCount(), shots + 1);
  EXPECT_TRUE(ClickIn(Find(static_cast<const Sequence*>(nullptr), Storyboard::SLIDE_ITSELF)));
  EXPECT_EQ(board->GetStory()->GetSequenceCount(), 2U);
}

TEST_F(StoryboardBoundsTest, of_buttons_are_within_their_slide_and_where_a_click_plays_and_targets) {
  const Box2 slide = Find(sequence, Storyboard::SLIDE_ITSELF);
  const Box2 play = Find(sequence, Storyboard::SLIDE_PLAY);
  EXPECT_TRUE(slide.IsPointInside(play.center));
  EXPECT_TRUE(ClickIn(play));
  EXPECT_GT(journal.Count("plays sequence"), 0);
  board->StopPlayback();
  EXPECT_TRUE(ClickIn(Find(sequence->GetShot(0), Storyboard::SLIDE_TARGET)));
  EXPECT_GT(journal.Count("targets"), 0);
}

TEST_F(StoryboardBoundsTest, are_told_of_nothing_that_is_not_there) {
  const Box2 untouched(Vector2(1, 2), Vector2(3, 4));
  Box2 bounds = untouched;
  const Sequence unknown;
  EXPECT_FALSE(board->GetSlideBounds(&unknown, Storyboard::SLIDE_ITSELF, bounds));
  const ShotSpecification unknownShot(hub.view);
  EXPECT_FALSE(board->GetSlideBounds(&unknownShot, Storyboard::SLIDE_ITSELF, bounds));
  EXPECT_FALSE(board->GetSlideBounds(static_cast<const Sequence*>(nullptr), Storyboard::SLIDE_PLAY, bounds));
  EXPECT_FALSE(board->GetSlideBounds(sequence, static_cast<Storyboard::SlidePart>(3), bounds));
  EXPECT_EQ(bounds.center.x, untouched.center.x);
  EXPECT_EQ(bounds.halfExtent.y, untouched.halfExtent.y);
  EXPECT_EQ(board->GetTitleBounds(static_cast<Storyboard::TitlePart>(4)).halfExtent.x, 0.0);
  EXPECT_EQ(board->GetTitleBounds(static_cast<Storyboard::TitlePart>(-1)).halfExtent.x, 0.0);
}

// Without a queue the edit itself is all that tells the panel.
TEST_F(StoryboardBoundsTest, follow_an_edit_before_the_next_frame) {
  board->SetUndoQueue(nullptr);
  Sequence* const other = AddSequence(1);
  Frame();
  ShotSpecification* const first = sequence->GetShot(0);
  ShotSpecification* const second = sequence->GetShot(1);
  const double place = Find(first, Storyboard::SLIDE_ITSELF).center.x;
  EXPECT_TRUE(board->MoveShot(first, nullptr));
  EXPECT_EQ(Find(second, Storyboard::SLIDE_ITSELF).center.x, place);
  EXPECT_TRUE(board->DeleteShot(second));
  EXPECT_EQ(Find(first, Storyboard::SLIDE_ITSELF).center.x, place);
  const double left = Find(sequence, Storyboard::SLIDE_ITSELF).center.x;
  EXPECT_TRUE(board->MoveSequence(sequence, nullptr));
  EXPECT_LT(Find(other, Storyboard::SLIDE_ITSELF).center.x,
            Find(sequence, Storyboard::SLIDE_ITSELF).center.x);
  EXPECT_EQ(Find(other, Storyboard::SLIDE_ITSELF).center.x, left);
}

TEST_F(StoryboardBoundsTest, of_the_title_are_where_a_click_plays_and_closes) {
  EXPECT_TRUE(ClickIn(board->GetTitleBounds(Storyboard::TITLE_PLAY)));
  EXPECT_GT(journal.Count("plays story"), 0);
  EXPECT_TRUE(ClickIn(board->GetTitleBounds(Storyboard::TITLE_STOP)));
  EXPECT_GT(journal.Count("stopped"), 0);
  ClickIn(board->GetTitleBounds(Storyboard::TITLE_CLOSE));  // whose release finds no panel any more
  EXPECT_FALSE(board->IsVisible());
}

TEST_F(StoryboardBoundsTest, the_mode_is_the_one_that_was_set) {
  EXPECT_EQ(board->GetMode(), Storyboard::MODE_EDITING);
  board->SetMode(Storyboard::MODE_PRESENTING);
  EXPECT_EQ(board->GetMode(), Storyboard::MODE_PRESENTING);
}

}  // namespace
