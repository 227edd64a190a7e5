// An edit that runs out of memory, at each of its allocations.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <string>

#include "story/new_shot.h"
#include "story/open_storyboard.h"
#include "story/storyboard_commands.h"
#include "support/allocation_counter.h"

using namespace Korvane;

namespace {

class SilentEditor : public ShotEditor {
 public:
  void OnEditorReserved() override {}
  void SetPreviewState(bool previewing) override { previews = previewing; }
  void SetRecordingState(bool recording) override { records = recording; }
  void SetPanelVisible(bool isVisible) override { visible = isVisible; }
  void TransferControls(bool /*toShot*/) override { ++transfers; }

  bool previews = false;
  bool records = false;
  bool visible = false;
  int transfers = 0;
};

class CountingObserver : public JournalStoryObserver {
 public:
  using JournalStoryObserver::JournalStoryObserver;
  void OnShotCreated() override { ++created; }

  int created = 0;
};

/// A story of one sequence of the shots 1, 2 and 3, which has an undo queue. Nothing but the library
/// allocates.
struct Stage {
  Stage() {
    board.SetKorvane(&hub);
    board.SetShotEditor(&editor);
    board.Create();
    for (const wchar_t* const name : {L"1", L"2", L"3"}) sequence->AddShot(NewShot(name));
    board.GetStory()->AddSequence(sequence);
    board.SetSelectedSequence(sequence);
    board.SetUndoQueue(&queue);
    board.AddObserver(&observer);
  }

  ShotSpecification* GetShot(std::uint64_t index) const { return sequence->GetShot(index); }
  /// Of the shots of each sequence.
  std::wstring GetNames() const {
    std::wstring names;
    for (std::uint64_t i = 0; const Sequence* const each = board.GetStory()->GetSequence(i); ++i) {
      if (i > 0) names += L'|';
      for (std::uint64_t k = 0; each->GetShot(k) != nullptr; ++k) names += each->GetShot(k)->GetName().back();
    }
    return names;
  }

  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  UndoQueue queue;
  SilentEditor editor;
  Storyboard board;
  Journal journal;
  CountingObserver observer{&board, journal};
  Sequence* sequence = new Sequence;
};

/// What an edit does, with its answer, and what the story is then.
struct Edit {
  const char* name;
  std::function<void(Stage& stage)> prepare;
  std::function<bool(Stage& stage)> run;
  std::wstring before;
  std::wstring after;
  bool isStep;  // of the queue
  int created;  // of which observers are told
};

// So many fill the room that a list has made.
constexpr std::uint64_t FULL = 3;
constexpr std::uint64_t FULL_AGAIN = 7;

const Edit EDITS[] = {
    {"moves_a_shot",
     {},
     [](Stage& s) { return s.board.MoveShot(s.GetShot(0), nullptr); },
     L"123",
     L"231",
     true,
     0},
    {"moves_a_sequence", [](Stage& s) { s.board.GetStory()->AddSequence(new Sequence); },
     [](Stage& s) { return s.board.MoveSequence(s.sequence, nullptr); }, L"123|", L"|123", true, 0},
    {"deletes_a_shot", [](Stage& s) { s.board.EditShot(s.GetShot(1)); },
     [](Stage& s) { return s.board.DeleteShot(s.GetShot(1)); }, L"123", L"13", true, 0},
    {"deletes_the_last_shot_and_its_sequence",
     [](Stage& s) {
       while (s.sequence->GetShotCount() > 1) s.sequence->DeleteShot(s.GetShot(1));
     },
     [](Stage& s) { return s.board.DeleteShot(s.GetShot(0)); }, L"1", L"", true, 0},
    {"creates_a_shot",
     {},
     [](Stage& s) { return s.board.CreateShot(s.sequence) != nullptr; },
     L"123",
     L"1231",
     true,
     1},
    {"creates_a_sequence",
     {},
     [](Stage& s) { return s.board.CreateSequence() != nullptr; },
     L"123",
     L"123|1",
     true,
     1},
    {"takes_back_a_delete",
     [](Stage& s) {
       s.board.DeleteShot(s.GetShot(2));
       while (s.sequence->GetShotCount() < FULL) s.sequence->InsertShot(0, NewShot(L"0"));
     },
     [](Stage& s) { return s.queue.Undo(); }, L"012", L"0132", false, 0},
    {"makes_an_addition_again",
     [](Stage& s) {
       s.board.CreateShot(s.sequence);
       s.queue.Undo();
       while (s.sequence->GetShotCount() < FULL_AGAIN) s.sequence->InsertShot(0, NewShot(L"0"));
     },
     [](Stage& s) { return s.queue.Redo(); }, L"0000123", L"00001231", true, 0},
};

class EditWithoutMemory : public ::testing::TestWithParam<Edit> {};

// One that had been made when the memory for its step ran out stands, and cannot be taken back.
TEST_P(EditWithoutMemory, is_either_made_and_told_or_refused_and_not_made) {
  const Edit& edit = GetParam();
  std::uint64_t failed = 0;
  for (bool met = true; met;) {
    Stage stage;
    if (edit.prepare) edit.prepare(stage);
    ASSERT_EQ(stage.GetNames(), edit.before);
    stage.observer.created = 0;
    bool done = false;
    {
      const AllocationFault fault(++failed, 1);
      done = edit.run(stage);
      met = fault.GetCounted() >= failed;
    }
    EXPECT_EQ(stage.GetNames(), done ? edit.after : edit.before) << failed;
    EXPECT_EQ(stage.observer.created, done ? edit.created : 0) << failed;
    if (!met) {
      EXPECT_TRUE(done);
      EXPECT_EQ(stage.queue.CanUndo(), edit.isStep);
    }
    while (stage.queue.Undo()) {
    }
    while (stage.queue.Redo()) {
    }
    stage.hub.PerformOperations();
  }
  EXPECT_GT(failed, 1U);
}

INSTANTIATE_TEST_SUITE_P(Each, EditWithoutMemory, ::testing::ValuesIn(EDITS),
                         [](const auto& instance) { return std::string(instance.param.name); });

// Out of the list, since it was moved before itself, the undo would have to make room for it.
TEST(MoveWithoutMemory, that_is_taken_back_stays_with_its_command) {
  Sequence sequence;
  ShotSpecification* const moved = NewShot(L"1");
  sequence.AddShot(moved);
  const Lifeline::Watch alive(moved->GetLifeline());
  UndoQueue queue;
  queue.Add(new MoveShotCommand(nullptr, &sequence, moved, moved), true);
  sequence.AddShot(NewShot(L"2"));
  {
    const AllocationFault fault(1, 1);
    EXPECT_FALSE(queue.Undo());
    ASSERT_EQ(fault.GetCounted(), 1U);
  }
  EXPECT_TRUE(alive);
  EXPECT_EQ(sequence.GetShotCount(), 1U);
  EXPECT_TRUE(queue.Undo());
  EXPECT_EQ(sequence.GetShot(1), moved);
}

// What is handed over with a command goes with it.
TEST(AddWithoutMemory, takes_what_it_cannot_add_with_it) {
  Sequence sequence;
  ShotSpecification* const added = NewShot(L"1");
  const Lifeline::Watch alive(added->GetLifeline());
  UndoQueue queue;
  auto* const command = new AddShotCommand(nullptr, &sequence, added);
  {
    const AllocationFault fault(3, 1);  // after the two of the queue's own
    queue.Add(command, true);
    ASSERT_GE(fault.GetCounted(), 3U);
  }
  EXPECT_FALSE(alive);
  EXPECT_TRUE(sequence.IsEmpty());
  EXPECT_FALSE(queue.CanUndo());
}

}  // namespace
