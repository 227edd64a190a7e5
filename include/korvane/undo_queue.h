#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "korvane/export.h"
#include "korvane/lifeline.h"

namespace Korvane {

/// An edit that can be taken back. It owns what it has taken out for as long as that is out: a command that
/// adds owns its object while it is undone, one that deletes while it is not. A step that runs out of memory
/// throws std::bad_alloc before it has changed anything, and counts as not made.
class ZOVTOOLS_API UndoCommand {
 public:
  UndoCommand();
  virtual ~UndoCommand();
  UndoCommand(const UndoCommand&) = delete;
  UndoCommand& operator=(const UndoCommand&) = delete;

  virtual void Do() = 0;
  /// Do again, as a rule.
  virtual void Redo();
  virtual void Undo() = 0;

  /// Taken back, and not done again since.
  bool IsUndone() const { return undone; }
  void SetUndone(bool value) { undone = value; }

 private:
  bool undone = false;
};

/// Edits in the order in which they were made, all of which can be taken back and made again, without limit.
/// A command that runs lives until it has returned: within it the host may add, clear and destroy the queue;
/// to undo or redo another is refused.
class ZOVTOOLS_API UndoQueue {
 public:
  UndoQueue();
  /// Destroys all commands.
  virtual ~UndoQueue();
  UndoQueue(const UndoQueue&) = delete;
  UndoQueue& operator=(const UndoQueue&) = delete;

  /// Takes the last edit back. False when there is none, and where memory runs out in it, which leaves it
  /// done.
  virtual bool Undo();
  /// Makes the edit again that was taken back last. False when there is none, and where memory runs out in
  /// it.
  virtual bool Redo();
  virtual bool CanUndo() const;
  virtual bool CanRedo() const;
  /// Takes the command over and, when `run` is set, does it; else its work is done already. What could have
  /// been made again is dropped. Null is ignored. Where memory runs out in this, or in what the command does,
  /// the command is destroyed and the queue is without it.
  virtual void Add(UndoCommand* command, bool run);
  /// Destroys all commands.
  virtual void Clear();

  /// For those that borrow the queue and may outlive it.
  Lifeline& GetLifeline() { return lifeline; }

 private:
  using Commands = std::vector<std::shared_ptr<UndoCommand>>;

  void DropFrom(std::size_t place);
  void Withdraw(const UndoCommand& command);

  Commands commands;
  std::size_t cursor = 0;  // those before it are done, the others taken back
  bool running = false;    // a command is being undone or redone
  Lifeline lifeline;
};

}  // namespace Korvane
