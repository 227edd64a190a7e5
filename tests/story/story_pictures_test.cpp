#include "story/story_pictures.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "korvane/shot_specification.h"
#include "korvane/story.h"
#include "support/cameras.h"
#include "support/counting_renderer.h"

using namespace Korvane;

namespace {

/// Tells of each icon that it has taken back.
class TellingRenderer : public CountingRenderer {
 public:
  bool DestroyIcon(DynamicIcon2D*& icon) override {
    const bool destroyed = CountingRenderer::DestroyIcon(icon);
    const std::function<void()> running(onDestroy);  // which may end the renderer
    if (running) running();
    return destroyed;
  }

  DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int width, int height) override {
    DynamicIcon2D* const made = CountingRenderer::CreateTextLabel(text, size, width, height);
    if (onMade) onMade();
    return made;
  }

  std::function<void()> onDestroy;
  std::function<void()> onMade;
};

std::unique_ptr<ShotSpecification> MakeShot() {
  return std::make_unique<ShotSpecification>(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
}

struct StoryPicturesTest : ::testing::Test {
  void Make(ShotSpecification& shot) {
    pictures.MakeThumbnail(shot);
    pictures.MakeLabel(shot);
  }

  TellingRenderer first;
  TellingRenderer second;
  StoryPictures pictures;
};

TEST_F(StoryPicturesTest, go_back_once_their_object_is_gone) {
  pictures.SetRenderer(&first);
  std::unique_ptr<ShotSpecification> shot = MakeShot();
  Make(*shot);
  EXPECT_EQ(first.GetLiveIconCount(), 2);
  shot.reset();
  pictures.GiveLostBack();
  EXPECT_EQ(first.GetLiveIconCount(), 0);
}

TEST_F(StoryPicturesTest, a_shot_without_a_name_lacks_its_label_until_it_is_made) {
  pictures.SetRenderer(&first);
  const std::unique_ptr<ShotSpecification> shot = MakeShot();
  shot->SetName(L"");
  pictures.MakeThumbnail(*shot);
  EXPECT_FALSE(pictures.FindLack(*shot).thumbnail);
  EXPECT_TRUE(pictures.FindLack(*shot).label);
  pictures.MakeLabel(*shot);
  EXPECT_FALSE(pictures.FindLack(*shot).label);
}

TEST_F(StoryPicturesTest, of_an_object_that_is_gone_are_not_those_of_one_in_its_place) {
  pictures.SetRenderer(&first);
  std::optional<ShotSpecification> shot(std::in_place, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  Make(*shot);
  EXPECT_FALSE(pictures.FindLack(*shot).thumbnail);
  shot.emplace(LookAt({10, 0, 0}, {0, 0, 0}, {0, 1, 0}));
  EXPECT_TRUE(pictures.FindLack(*shot).label);
  pictures.MakeLabel(*shot);
  EXPECT_FALSE(pictures.FindLack(*shot).label);
  EXPECT_TRUE(pictures.FindLack(*shot).thumbnail);
}

// A host replaces the renderer, and has pictures made, while it takes one of the lost ones back.
TEST_F(StoryPicturesTest, go_back_to_whoever_has_made_them_though_the_renderer_is_replaced_meanwhile) {
  pictures.SetRenderer(&first);
  std::unique_ptr<ShotSpecification> lost = MakeShot();
  std::unique_ptr<ShotSpecification> next = MakeShot();
  Make(*lost);
  lost.reset();
  first.onDestroy = [&] {
    if (next == nullptr) return;
    pictures.SetRenderer(&second);
    Make(*next);
    EXPECT_EQ(second.GetLiveIconCount(), 2);
    next.reset();
  };
  pictures.GiveLostBack();
  EXPECT_EQ(first.GetLiveIconCount(), 0);
  EXPECT_EQ(second.GetLiveIconCount(), 0);
  EXPECT_EQ(first.GetForeignDestroyCount(), 0);
  EXPECT_EQ(second.GetForeignDestroyCount(), 0);
}

TEST_F(StoryPicturesTest, are_not_made_without_a_renderer_or_of_a_sequence_without_a_shot) {
  const std::unique_ptr<ShotSpecification> shot = MakeShot();
  Make(*shot);
  EXPECT_TRUE(pictures.FindLack(*shot).label);
  pictures.SetRenderer(&first);
  Sequence sequence;
  pictures.MakeThumbnail(sequence);
  EXPECT_EQ(first.GetLiveIconCount(), 0);
}

TEST_F(StoryPicturesTest, that_nobody_holds_any_more_once_they_are_made_go_back) {
  pictures.SetRenderer(&first);
  const std::unique_ptr<ShotSpecification> shot = MakeShot();
  first.onMade = [this] { pictures.GiveAllBack(); };
  Make(*shot);
  EXPECT_EQ(first.GetLiveIconCount(), 0);
  EXPECT_EQ(pictures.GetLabel(shot.get()), nullptr);
}

TEST_F(StoryPicturesTest, are_not_asked_of_a_renderer_that_ends_while_it_takes_one_back) {
  for (const bool labels : {false, true}) {
    auto mortal = std::make_unique<TellingRenderer>();
    const std::unique_ptr<ShotSpecification> shot = MakeShot();
    pictures.SetRenderer(mortal.get());
    Make(*shot);
    mortal->onDestroy = [&] { mortal.reset(); };
    if (labels) {
      pictures.MakeLabel(*shot);
    } else {
      pictures.MakeThumbnail(*shot);
    }
    EXPECT_EQ(mortal, nullptr);
    EXPECT_EQ(pictures.GetThumbnail(shot.get()), nullptr);
    EXPECT_EQ(pictures.GetLabel(shot.get()), nullptr);
    pictures.SetRenderer(nullptr);
  }
}

}  // namespace
