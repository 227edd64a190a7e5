#include "korvane/undo_queue.h"

#include <iterator>
#include <utility>

namespace Korvane {

UndoCommand::UndoCommand() = default;
UndoCommand::~UndoCommand() = default;
void UndoCommand::Redo() { Do(); }

UndoQueue::UndoQueue() = default;
UndoQueue::~UndoQueue() {
  lifeline.Cut();
  while (!commands.empty()) DropFrom(0);
}

bool UndoQueue::CanUndo() const { return cursor > 0; }
bool UndoQueue::CanRedo() const { return cursor < commands.size(); }

bool UndoQueue::Undo() {
  if (running || !CanUndo()) return false;
  const Lifeline::Watch alive(lifeline);
  const std::shared_ptr<UndoCommand> command = commands[--cursor];
  running = true;
  command->Undo();
  command->SetUndone(true);
  if (alive) running = false;
  return true;
}

bool UndoQueue::Redo() {
  if (running || !CanRedo()) return false;
  const Lifeline::Watch alive(lifeline);
  const std::shared_ptr<UndoCommand> command = commands[cursor];
  running = true;
  command->Redo();
  command->SetUndone(false);
  if (alive) running = false;
  if (alive && CanRedo() && commands[cursor] == command) ++cursor;
  return true;
}

void UndoQueue::Add(UndoCommand* command, bool run) {
  if (command == nullptr) return;
  const std::shared_ptr<UndoCommand> added(command);
  const Lifeline::Watch alive(lifeline);
  while (alive && CanRedo()) DropFrom(cursor);
  if (!alive) return;
  commands.push_back(added);
  cursor = commands.size();
  if (!run) return;
  const bool before = std::exchange(running, true);
  added->Do();
  if (alive) running = before;
}

void UndoQueue::Clear() { DropFrom(0); }

// The end of a command may call out, which then finds the queue without it.
void UndoQueue::DropFrom(std::size_t place) {
  Commands dropped(std::make_move_iterator(commands.begin() + static_cast<std::ptrdiff_t>(place)),
                   std::make_move_iterator(commands.end()));
  commands.resize(place);
  cursor = place;
}

}  // namespace Korvane
