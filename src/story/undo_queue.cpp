#include "korvane/undo_queue.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "foundation/out_of_memory.h"

namespace Korvane {

namespace {

// False where memory runs out in it.
bool Run(UndoCommand& command, void (UndoCommand::*step)(), bool undone) {
  return OrFail([&] {
    (command.*step)();
    command.SetUndone(undone);
    return true;
  });
}

}  // namespace

UndoCommand::UndoCommand() = default;
UndoCommand::~UndoCommand() = default;
void UndoCommand::Redo() { Do(); }

UndoQueue::UndoQueue() = default;
UndoQueue::~UndoQueue() {
  lifeline.Cut();
  while (!commands.empty()) UndoQueue::Clear();
}

bool UndoQueue::CanUndo() const { return cursor > 0; }
bool UndoQueue::CanRedo() const { return cursor < commands.size(); }

bool UndoQueue::Undo() {
  if (running || !CanUndo()) return false;
  const Lifeline::Watch alive(lifeline);
  const std::shared_ptr<UndoCommand> command = commands[--cursor];
  running = true;
  const bool done = Run(*command, &UndoCommand::Undo, true);
  if (alive) running = false;
  if (alive && !done && CanRedo()) ++cursor;
  return done;
}

bool UndoQueue::Redo() {
  if (running || !CanRedo()) return false;
  const Lifeline::Watch alive(lifeline);
  const std::shared_ptr<UndoCommand> command = commands[cursor];
  running = true;
  const bool done = Run(*command, &UndoCommand::Redo, false);
  if (alive) running = false;
  if (alive && done && CanRedo()) ++cursor;
  return done;
}

void UndoQueue::Add(UndoCommand* command, bool run) {
  if (command == nullptr) return;
  const Lifeline::Watch alive(lifeline);
  std::shared_ptr<UndoCommand> added;
  const bool kept = OrFail([&] {
    added.reset(command);
    while (alive && CanRedo()) DropFrom(cursor);
    if (alive) commands.push_back(added);
    return true;
  });
  if (!kept || !alive) return;
  cursor = commands.size();
  if (!run) return;
  const bool before = std::exchange(running, true);
  const bool done = OrFail([&] {
    added->Do();
    return true;
  });
  if (!alive) return;
  running = before;
  if (!done) Withdraw(*added);
}

// The end of a command may call out, which then finds the queue without it.
void UndoQueue::Clear() {
  Commands dropped;
  dropped.swap(commands);
  cursor = 0;
}

// The room that they had stays, for the one that comes in their place.
void UndoQueue::DropFrom(std::size_t place) {
  const Commands dropped(std::make_move_iterator(commands.begin() + static_cast<std::ptrdiff_t>(place)),
                         std::make_move_iterator(commands.end()));
  commands.resize(place);
  cursor = place;
}

// Others may have been added after it. It lives for as long as its caller holds it.
void UndoQueue::Withdraw(const UndoCommand& command) {
  const auto found = std::find_if(commands.begin(), commands.end(),
                                  [&](const auto& each) { return each.get() == &command; });
  if (found == commands.end()) return;
  commands.erase(found);
  --cursor;
}

}  // namespace Korvane
