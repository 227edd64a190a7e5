// A storyboard that has no story yet, and what it is asked for that it has not, or that is refused.
#include <memory>

#include "camera/hub_fakes.h"
#include "story/new_shot.h"
#include "story/open_storyboard.h"
#include "story/panel_slides.h"

using namespace Korvane;

namespace {

/// Refuses the moves to a camera, and moves as the test says.
class ObstinateHub : public MemoryHub {
 public:
  using MemoryHub::BeginShot;
  using MemoryHub::MemoryHub;
  bool BeginShot(const TransitionShotParameters& parameters) override {
    return !refuses && MemoryHub::BeginShot(parameters);
  }
  bool BeginShot(const OrbitShotParameters& parameters) override {
    return makes ? CameraOperations::BeginShot(makes()) : MemoryHub::BeginShot(parameters);
  }

  bool refuses = false;
  std::function<Shot*()> makes;
};

/// Not yet created.
struct BareStage {
  BareStage() {
    hub.GetApplicationParameters().viewport_width = 1000;
    hub.GetApplicationParameters().viewport_height = 600;
    FurnishBoard(*this);
  }

  ManualPlatform platform;
  Journal journal;
  ObstinateHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  RecordingRenderer renderer;
  RecordingHistory history;
  UndoQueue queue;
  JournalEditor editor{journal};
  std::unique_ptr<OpenStoryboard> board = std::make_unique<OpenStoryboard>();
};
struct BareStoryboardTest : ::testing::Test, BareStage {};
struct LimitsTest : StoryboardTest {};

// ---- before there is a story ----

TEST_F(BareStoryboardTest, has_nothing_that_a_story_would_hold) {
  const std::unique_ptr<ShotSpecification> shot(NewShot(L"shot"));
  Sequence sequence;
  Sequence other;
  EXPECT_EQ(board->GetStory(), nullptr);
  EXPECT_EQ(board->GetSequenceForShot(shot.get()), nullptr);
  EXPECT_EQ(board->GetSelectedSequence(), nullptr);
  EXPECT_FALSE(board->SetSelectedSequence(&sequence));
  EXPECT_EQ(board->CreateSequence(), nullptr);
  EXPECT_FALSE(board->MoveSequence(&sequence, &other));
  EXPECT_FALSE(board->DeleteShot(shot.get()));
  EXPECT_FALSE(board->PlaybackStory(board->GetStory()));
}

TEST_F(BareStoryboardTest, shows_no_slides_and_takes_a_press_on_its_title_bar) {
  board->SetVisible(true);
  board->OnMouseMove(1, 1);
  EXPECT_TRUE(board->GetParts().slides.sequences.empty());
  const Box2 title = GetTitleBar(board->GetParts().room);
  const int x = static_cast<int>(title.center.x - title.halfExtent.x) + 2;
  const int y = static_cast<int>(title.center.y);
  EXPECT_TRUE(board->OnLeftMouseDown(x, y));
  EXPECT_TRUE(board->OnLeftMouseUp(x, y));
}

TEST_F(BareStoryboardTest, records_a_walk_without_its_notes) {
  ASSERT_TRUE(board->BeginRecordWalk());
  renderer.ClearCalls();
  board->Draw();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 1);
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 0);
  EXPECT_TRUE(board->CancelRecordWalk());
}

/// Ends while it is asked for the first text of a panel.
class EndingRenderer : public RecordingRenderer {
 public:
  explicit EndingRenderer(std::unique_ptr<EndingRenderer>& holder) : self(holder) {}
  std::wstring LoadStringResource(int id) override {
    if (id != STRING_STORY_PLAY) return RecordingRenderer::LoadStringResource(id);
    self.reset();
    return {};
  }

 private:
  std::unique_ptr<EndingRenderer>& self;
};

TEST_F(BareStoryboardTest, a_renderer_that_ends_as_it_is_asked_for_a_text_is_asked_no_more) {
  std::unique_ptr<EndingRenderer> ending;
  ending = std::make_unique<EndingRenderer>(ending);
  board->SetRenderer(ending.get());
  EXPECT_TRUE(board->Create());
  EXPECT_EQ(ending, nullptr);
  board->SetVisible(true);
  board->Draw();
  EXPECT_FALSE(board->BeginRecordWalk());
}

// ---- what is refused ----

TEST_F(LimitsTest, a_mode_that_is_none_is_not_taken) {
  board->SetMode(Storyboard::MODE_PRESENTING);
  journal.Take();
  board->SetMode(static_cast<Storyboard::Mode>(7));
  EXPECT_EQ(board->GetMode(), Storyboard::MODE_PRESENTING);
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(LimitsTest, a_sequence_of_another_story_is_neither_selected_nor_moved_to) {
  Sequence* const own = AddSequence(1);
  Sequence foreign;
  EXPECT_EQ(board->GetSelectedSequence(), nullptr);
  EXPECT_FALSE(board->SetSelectedSequence(&foreign));
  EXPECT_EQ(board->GetSelectedSequence(), nullptr);
  EXPECT_FALSE(board->MoveSequence(own, &foreign));
  EXPECT_TRUE(board->SetSelectedSequence(own));
  const std::unique_ptr<Sequence> removed(board->GetStory()->RemoveSequence(own));
  EXPECT_EQ(board->GetSelectedSequence(), nullptr);
}

TEST_F(LimitsTest, a_walk_of_a_recorder_that_is_not_its_own_is_not_taken) {
  WalkRecorder foreign;
  EXPECT_FALSE(board->WalkRecorded(nullptr));
  EXPECT_FALSE(board->WalkRecorded(&foreign));
  ASSERT_TRUE(board->BeginRecordWalk());
  EXPECT_FALSE(board->WalkRecorded(&foreign));
  EXPECT_TRUE(board->IsRecordingWalk());
}

TEST_F(BareStoryboardTest, a_target_that_the_hub_refuses_opens_no_record) {
  board->Create();
  auto* const sequence = new Sequence;
  sequence->AddShot(NewShot(L"shot"));
  board->GetStory()->AddSequence(sequence);
  hub.refuses = true;
  EXPECT_FALSE(board->TargetShot(sequence->GetFirstShot()));
  EXPECT_TRUE(history.Has(0, 0));
  hub.refuses = false;
  EXPECT_TRUE(board->TargetShot(sequence->GetFirstShot()));
  EXPECT_TRUE(history.Has(1, 0));
}

// ---- a parallel view ----

TEST_F(LimitsTest, a_shot_of_a_parallel_view_pans_and_zooms) {
  hub.view = WithOrthographic(hub.view, 8.0, 6.0);
  const ShotSpecification* const shot = board->CreateShot(AddSequence());
  ASSERT_NE(shot, nullptr);
  EXPECT_EQ(shot->GetShotType(), ShotSpecification::SHOT_PAN_ZOOM);
}

TEST_F(LimitsTest, a_walk_makes_a_parallel_view_perspective_where_it_may) {
  hub.view = WithOrthographic(hub.view, 8.0, 6.0);
  hub.GetApplicationParameters().auto_switch_projection = false;
  EXPECT_FALSE(board->CanRecordWalk());
  EXPECT_FALSE(board->BeginRecordWalk());
  EXPECT_TRUE(hub.view.IsOrthographic());
  hub.GetApplicationParameters().auto_switch_projection = true;
  EXPECT_TRUE(board->CanRecordWalk());
  EXPECT_TRUE(board->BeginRecordWalk());
}

// ---- playing ----

TEST_F(LimitsTest, a_single_shot_that_goes_while_it_is_paused_is_not_resumed) {
  Sequence* const sequence = AddSequence(2);
  ASSERT_TRUE(board->PlaybackSingleShot(sequence->GetFirstShot()));
  Frame();
  ASSERT_TRUE(board->PausePlayback());
  sequence->DeleteShot(sequence->GetFirstShot());
  EXPECT_TRUE(board->ResumePlayback());
  Frame();
  EXPECT_FALSE(board->IsPlayingBack());
  EXPECT_FALSE(hub.IsShotActive());
}

/// Says of itself that it is half as far again as it can be.
class BoastfulShot : public Shot {
 public:
  bool PerformShot(double dt, CameraParameters& /*camera*/) override {
    elapsedTime += dt;
    unitTime = 1.5;
    return true;
  }
};

TEST_F(BareStoryboardTest, a_move_that_says_it_is_past_its_end_does_not_fade) {
  board->Create();
  auto* const sequence = new Sequence;
  for (int i = 0; i < 2; ++i) {
    ShotSpecification* const shot = NewShot(L"shot");
    shot->SetShotType(ShotSpecification::SHOT_ORBIT);
    shot->SetTransitionType(ShotSpecification::TRANSITION_FADE_THROUGH_WHITE);
    shot->SetTransitionDuration(0.1);
    sequence->AddShot(shot);
  }
  board->GetStory()->AddSequence(sequence);
  hub.makes = [] { return std::make_unique<BoastfulShot>().release(); };
  ASSERT_TRUE(board->PlaybackSequence(sequence));
  for (int i = 0; i < 4; ++i) {
    platform.Advance(100);
    hub.PerformOperations();
    board->Draw();
  }
  ASSERT_TRUE(board->IsPlayingBack());
  EXPECT_EQ(board->GetParts().overlay.alpha, 0.0);
}

// ---- slides ----

TEST(PanelSlidesTest, of_another_story_are_made_anew) {
  Story first;
  Story second;
  PanelSlides slides;
  slides.Refresh(&first, true, PanelRoom(), PanelSlides::Mouse());
  ASSERT_EQ(slides.sequences.size(), 1U);
  EXPECT_EQ(slides.sequences[0].story, &first);
  slides.Refresh(&second, true, PanelRoom(), PanelSlides::Mouse());
  ASSERT_EQ(slides.sequences.size(), 1U);
  EXPECT_EQ(slides.sequences[0].story, &second);
}

}  // namespace
