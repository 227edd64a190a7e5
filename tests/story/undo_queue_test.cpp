#include "korvane/undo_queue.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "support/allocation_counter.h"
#include "support/journal.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

/// Writes down what becomes of it, and then does what the test wants.
class JournalCommand : public UndoCommand {
 public:
  JournalCommand(Journal& theJournal, std::string commandName)
      : journal(theJournal), name(std::move(commandName)) {}
  ~JournalCommand() override { journal.Add(name + (IsUndone() ? " dies undone" : " dies done")); }

  void Do() override { Act("do "); }
  void Undo() override { Act("undo "); }

  std::function<void()> onAct;

 private:
  void Act(const std::string& what) {
    journal.Add(what + name);
    if (onAct) onAct();
  }

  Journal& journal;
  std::string name;
};

struct UndoQueueTest : ::testing::Test {
  JournalCommand* Add(const std::string& name, bool run = true) {
    auto* const command = std::make_unique<JournalCommand>(journal, name).release();
    queue->Add(command, run);
    return command;
  }

  Journal journal;
  std::unique_ptr<UndoQueue> queue = std::make_unique<UndoQueue>();
};

TEST_F(UndoQueueTest, begins_with_nothing_to_undo_or_redo) {
  EXPECT_FALSE(queue->CanUndo());
  EXPECT_FALSE(queue->CanRedo());
  EXPECT_FALSE(queue->Undo());
  EXPECT_FALSE(queue->Redo());
  queue->Clear();
}

TEST_F(UndoQueueTest, does_a_command_only_where_it_is_told_to) {
  Add("a", true);
  Add("b", false);
  EXPECT_EQ(journal.Take(), (Lines{"do a"}));
  EXPECT_TRUE(queue->CanUndo());
  EXPECT_FALSE(queue->CanRedo());
}

TEST_F(UndoQueueTest, undoes_from_the_last_and_redoes_from_the_first) {
  JournalCommand* const a = Add("a");
  JournalCommand* const b = Add("b");
  journal.Take();
  EXPECT_TRUE(queue->Undo());
  EXPECT_TRUE(b->IsUndone());
  EXPECT_TRUE(queue->Undo());
  EXPECT_TRUE(a->IsUndone());
  EXPECT_FALSE(queue->Undo());
  EXPECT_TRUE(queue->Redo());
  EXPECT_FALSE(a->IsUndone());
  EXPECT_TRUE(b->IsUndone());
  EXPECT_TRUE(queue->Redo());
  EXPECT_FALSE(queue->Redo());
  EXPECT_EQ(journal.Take(), (Lines{"undo b", "undo a", "do a", "do b"}));
}

TEST_F(UndoQueueTest, a_new_edit_drops_what_could_have_been_redone) {
  Add("a");
  Add("b");
  Add("c");
  queue->Undo();
  queue->Undo();
  journal.Take();
  Add("d");
  EXPECT_EQ(journal.Take(), (Lines{"b dies undone", "c dies undone", "do d"}));
  EXPECT_FALSE(queue->CanRedo());
  queue->Undo();
  queue->Undo();
  EXPECT_FALSE(queue->CanUndo());
  EXPECT_EQ(journal.Take(), (Lines{"undo d", "undo a"}));
}

TEST_F(UndoQueueTest, clear_and_the_end_destroy_all) {
  Add("a", false);
  Add("b", false);
  queue->Undo();
  journal.Take();
  queue->Clear();
  EXPECT_EQ(journal.Take(), (Lines{"a dies done", "b dies undone"}));
  EXPECT_FALSE(queue->CanUndo());
  EXPECT_FALSE(queue->CanRedo());
  Add("c", false);
  queue.reset();
  EXPECT_EQ(journal.Take(), (Lines{"c dies done"}));
}

TEST_F(UndoQueueTest, has_no_limit) {
  constexpr int COUNT = 20000;
  for (int i = 0; i < COUNT; ++i) Add("x", false);
  int undone = 0;
  while (queue->Undo()) ++undone;
  EXPECT_EQ(undone, COUNT);
}

TEST_F(UndoQueueTest, ignores_null) {
  queue->Add(nullptr, true);
  EXPECT_FALSE(queue->CanUndo());
}

TEST_F(UndoQueueTest, stands_before_a_command_while_it_is_undone_or_redone_and_lets_no_other_be) {
  Add("a");
  JournalCommand* const b = Add("b");
  int acts = 0;
  b->onAct = [&] {
    ++acts;
    EXPECT_TRUE(queue->CanUndo());
    EXPECT_TRUE(queue->CanRedo());
    EXPECT_EQ(b->IsUndone(), acts == 2);
    EXPECT_FALSE(queue->Undo());
    EXPECT_FALSE(queue->Redo());
  };
  EXPECT_TRUE(queue->Undo());
  EXPECT_TRUE(b->IsUndone());
  EXPECT_TRUE(queue->Redo());
  EXPECT_FALSE(b->IsUndone());
  EXPECT_FALSE(queue->CanRedo());
  EXPECT_EQ(acts, 2);
}

TEST_F(UndoQueueTest, may_be_cleared_and_added_to_from_within_a_command) {
  JournalCommand* const a = Add("a");
  Add("b");
  queue->Undo();
  queue->Undo();
  a->onAct = [&] { queue->Clear(); };
  journal.Take();
  EXPECT_TRUE(queue->Redo());
  EXPECT_EQ(journal.Take(), (Lines{"do a", "b dies undone", "a dies done"}));
  EXPECT_FALSE(queue->CanUndo());
  EXPECT_FALSE(queue->CanRedo());

  JournalCommand* const c = Add("c");
  queue->Undo();
  c->onAct = [&] { Add("d"); };
  journal.Take();
  EXPECT_TRUE(queue->Redo());
  EXPECT_EQ(journal.Take(), (Lines{"do c", "do d", "c dies done"}));
  EXPECT_TRUE(queue->CanUndo());
  EXPECT_FALSE(queue->CanRedo());
}

// Undone half, it is left as done where it is still there.
TEST_F(UndoQueueTest, an_undo_that_runs_out_of_memory_leaves_what_the_host_has_made_of_the_queue_meanwhile) {
  struct Row {
    std::function<void()> meanwhile;
    int left;
  };
  const Row rows[] = {{[] {}, 2},
                      {[this] { queue->Clear(); }, 0},
                      {[this] { Add("c", false); }, 2},
                      {[this] {
                         queue->Clear();
                         Add("d", false);
                       },
                       1}};
  for (const Row& row : rows) {
    queue = std::make_unique<UndoQueue>();
    Add("a", false);
    JournalCommand* const b = Add("b", false);
    b->onAct = [&, meanwhile = row.meanwhile, runsOut = true]() mutable {
      meanwhile();
      if (std::exchange(runsOut, false)) throw std::bad_alloc();
    };
    EXPECT_FALSE(queue->Undo());
    EXPECT_FALSE(queue->CanRedo()) << row.left;
    int left = 0;
    while (queue->Undo()) ++left;
    EXPECT_EQ(left, row.left);
  }
}

TEST_F(UndoQueueTest, a_command_that_runs_out_of_memory_while_it_is_done_is_destroyed) {
  for (const bool addsMeanwhile : {false, true}) {
    queue = std::make_unique<UndoQueue>();
    Add("a", false);
    auto* const b = std::make_unique<JournalCommand>(journal, "b").release();
    b->onAct = [&] {
      if (addsMeanwhile) Add("c", false);
      throw std::bad_alloc();
    };
    journal.Take();
    queue->Add(b, true);
    EXPECT_EQ(journal.Take(), (Lines{"do b", "b dies done"}));
    EXPECT_FALSE(queue->CanRedo());
    while (queue->Undo()) {
    }
    EXPECT_EQ(journal.Take(), (addsMeanwhile ? Lines{"undo c", "undo a"} : Lines{"undo a"}));
  }
}

TEST_F(UndoQueueTest, what_could_have_been_redone_stays_where_there_is_no_memory_for_a_new_edit) {
  for (std::uint64_t failed = 1;; ++failed) {
    queue = std::make_unique<UndoQueue>();
    Add("a", false);
    Add("b", false);
    while (queue->Undo()) {
    }
    auto* const c = std::make_unique<JournalCommand>(journal, "c").release();
    journal.Take();
    journal.lines.reserve(8);
    bool met = false;
    {
      const AllocationFault fault(failed, 1);
      queue->Add(c, false);
      met = fault.GetCounted() >= failed;
    }
    EXPECT_EQ(journal.Take(), (met ? Lines{"c dies done"} : Lines{"a dies undone", "b dies undone"}));
    if (!met) break;
    EXPECT_TRUE(queue->CanRedo());
  }
}

/// Adds and undoes another one as it dies.
class DyingCommand : public UndoCommand {
 public:
  DyingCommand(UndoQueue& theQueue, Journal& theJournal) : queue(theQueue), journal(theJournal) {}
  ~DyingCommand() override {
    queue.Add(std::make_unique<JournalCommand>(journal, "late").release(), false);
    queue.Undo();
  }
  void Do() override {}
  void Undo() override {}

 private:
  UndoQueue& queue;
  Journal& journal;
};

TEST_F(UndoQueueTest, may_be_used_by_a_command_that_dies) {
  queue->Add(std::make_unique<DyingCommand>(*queue, journal).release(), false);
  queue->Undo();
  journal.Take();
  Add("a");
  EXPECT_EQ(journal.Take(), (Lines{"undo late", "late dies undone", "do a"}));
  EXPECT_FALSE(queue->CanRedo());
  queue->Add(std::make_unique<DyingCommand>(*queue, journal).release(), false);
  queue.reset();
  EXPECT_EQ(journal.Take(), (Lines{"a dies done", "undo late", "late dies undone"}));
}

TEST_F(UndoQueueTest, may_be_destroyed_from_within_a_command) {
  for (const std::string step : {"do", "undo", "redo"}) {
    queue = std::make_unique<UndoQueue>();
    auto* const command = std::make_unique<JournalCommand>(journal, "a").release();
    const auto destroy = [&] { queue.reset(); };
    UndoQueue* const used = queue.get();
    if (step == "do") command->onAct = destroy;
    used->Add(command, true);
    if (step == "undo") command->onAct = destroy;
    if (queue != nullptr) used->Undo();
    if (step == "redo") command->onAct = destroy;
    if (queue != nullptr) used->Redo();
    EXPECT_EQ(queue, nullptr) << step;
  }
}

TEST_F(UndoQueueTest, is_empty_after_a_redo_that_has_cleared_it) {
  JournalCommand* const a = Add("a");
  Add("b");
  while (queue->Undo()) {
  }
  a->onAct = [this] { queue->Clear(); };
  EXPECT_TRUE(queue->Redo());
  EXPECT_FALSE(queue->CanUndo());
  EXPECT_FALSE(queue->CanRedo());
}

TEST_F(UndoQueueTest, a_command_that_clears_the_queue_and_runs_out_of_memory_is_destroyed_once) {
  Add("a", false);
  auto* const b = std::make_unique<JournalCommand>(journal, "b").release();
  b->onAct = [this] {
    queue->Clear();
    throw std::bad_alloc();
  };
  journal.Take();
  queue->Add(b, true);
  EXPECT_EQ(journal.Take(), (Lines{"do b", "a dies done", "b dies done"}));
  EXPECT_FALSE(queue->CanUndo());
}

/// Takes the queue along as it dies.
class LastCommand : public UndoCommand {
 public:
  explicit LastCommand(std::unique_ptr<UndoQueue>& theQueue) : queue(theQueue) {}
  ~LastCommand() override { queue.reset(); }
  void Do() override {}
  void Undo() override {}

 private:
  std::unique_ptr<UndoQueue>& queue;
};

TEST_F(UndoQueueTest, may_be_destroyed_by_an_edit_that_a_new_one_drops) {
  queue->Add(std::make_unique<LastCommand>(queue).release(), false);
  queue->Undo();
  UndoQueue* const used = queue.get();
  used->Add(std::make_unique<JournalCommand>(journal, "a").release(), true);
  EXPECT_EQ(queue, nullptr);
  EXPECT_EQ(journal.Take(), (Lines{"a dies done"}));
}

TEST(UndoQueueSlots, stand_in_their_order) {
  const std::vector<int> slots = {VirtualSlot(&UndoQueue::Undo),    VirtualSlot(&UndoQueue::Redo),
                                  VirtualSlot(&UndoQueue::CanUndo), VirtualSlot(&UndoQueue::CanRedo),
                                  VirtualSlot(&UndoQueue::Add),     VirtualSlot(&UndoQueue::Clear)};
  EXPECT_EQ(slots, (std::vector<int>{2, 3, 4, 5, 6, 7}));
}

TEST(UndoCommandSlots, stand_in_their_order) {
  const std::vector<int> slots = {VirtualSlot(&UndoCommand::Do), VirtualSlot(&UndoCommand::Redo),
                                  VirtualSlot(&UndoCommand::Undo)};
  EXPECT_EQ(slots, (std::vector<int>{2, 3, 4}));
}

}  // namespace
