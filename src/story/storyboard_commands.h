#pragma once

#include <cstdint>
#include <memory>
#include <new>

#include "korvane/lifeline.h"
#include "korvane/story.h"
#include "korvane/storyboard.h"
#include "korvane/undo_queue.h"

namespace Korvane {

/// For the one that gives a command to a queue to be done: whether it has ended undone, for want of memory.
struct CommandErrand {
  Lifeline& GetLifeline() { return lifeline; }

  bool failed = false;
  Lifeline lifeline;
};

/// An edit of a story that is shown in a storyboard. Whatever it has taken out of the story it owns, until it
/// puts it back. What it was made for may be gone by the time it runs: then it does nothing. A step that
/// finds no memory throws, and has changed nothing.
class StoryboardUndoCommand : public UndoCommand {
 public:
  explicit StoryboardUndoCommand(Storyboard* board) : storyboard(board) {}
  ~StoryboardUndoCommand() override {
    if (CommandErrand* const open = errand.Get()) open->failed = true;
  }

  void SetErrand(CommandErrand* value) { errand.Set(value); }

 protected:
  /// The edit has been made.
  void EndErrand() { errand.Set(nullptr); }
  /// The slides show the edit.
  void UpdateStoryboard() const;
  void OpenShotEditor(ShotSpecification* shot) const;
  /// Closes it if the shot in it is one of the sequence, or is this one.
  void CloseShotEditor(const Sequence* sequence) const;
  void CloseShotEditor(const ShotSpecification* shot) const;

 private:
  Borrowed<Storyboard> storyboard;
  Borrowed<CommandErrand> errand;
};

/// How a story lists its sequences, and a sequence its shots.
struct SequencesOfStory {
  using List = Story;
  using Element = Sequence;
  static std::uint64_t IndexOf(const List& list, const Element* each) {
    return list.GetIndexOfSequence(each);
  }
  static Element* At(const List& list, std::uint64_t index) { return list.GetSequence(index); }
  static bool Insert(List& list, std::uint64_t index, Element* each) {
    return list.InsertSequence(index, each) != List::NOT_THERE;
  }
  static Element* Remove(List& list, const Element* each) { return list.RemoveSequence(each); }
  static void Move(List& list, Element* each, const Element* next) { list.MoveSequence(each, next); }
  /// What the editor opens on when one is added: its shot, where it has but one.
  static ShotSpecification* ShotToEdit(const Element* added) {
    return added != nullptr && added->GetShotCount() == 1 ? added->GetFirstShot() : nullptr;
  }
};
struct ShotsOfSequence {
  using List = Sequence;
  using Element = ShotSpecification;
  static std::uint64_t IndexOf(const List& list, const Element* each) { return list.GetIndexOfShot(each); }
  static Element* At(const List& list, std::uint64_t index) { return list.GetShot(index); }
  static bool Insert(List& list, std::uint64_t index, Element* each) {
    return list.InsertShot(index, each) != List::NOT_THERE;
  }
  static Element* Remove(List& list, const Element* each) { return list.RemoveShot(each); }
  static void Move(List& list, Element* each, const Element* next) { list.MoveShot(each, next); }
  static ShotSpecification* ShotToEdit(Element* added) { return added; }
};

/// An element of a list, owned by the list while it is in there and by the edit while it has been taken out.
template <class Kind>
class ElementEdit {
 public:
  using List = typename Kind::List;
  using Element = typename Kind::Element;

  ElementEdit(List* inList, Element* edited) : list(inList), element(edited) {}

  Element* Get() const { return element.Get(); }
  std::uint64_t GetIndex() const {
    return list.Get() != nullptr ? Kind::IndexOf(*list.Get(), Get()) : List::NOT_THERE;
  }
  /// Null for the last one, and for one that is not there.
  Element* GetNext() const { return IsThere() ? Kind::At(*list.Get(), GetIndex() + 1) : nullptr; }

  /// The first time, when it is handed over with the command.
  void Add() {
    if (list.Get() == nullptr || Get() == nullptr || Kind::Insert(*list.Get(), List::NOT_THERE, Get()))
      return;
    held.reset(Get());
    throw std::bad_alloc();
  }
  /// Only what it has taken out itself: all else is someone else's.
  void PutBack(std::uint64_t index) {
    if (list.Get() == nullptr || held == nullptr) return;
    if (!Kind::Insert(*list.Get(), index, held.get())) throw std::bad_alloc();
    GiveBack();
  }
  void Remove() {
    if (list.Get() == nullptr) return;
    if (Element* const removed = Kind::Remove(*list.Get(), Get())) held.reset(removed);
  }
  void Move(const Element* before) {
    if (list.Get() == nullptr || (held == nullptr && !IsThere())) return;
    const bool leaves = before != nullptr && (before == Get() || !Contains(before));
    GiveBack();
    Kind::Move(*list.Get(), Get(), before);
    if (IsThere()) return;
    held.reset(Get());
    if (!leaves) throw std::bad_alloc();
  }

 private:
  bool IsThere() const { return GetIndex() != List::NOT_THERE; }
  bool Contains(const Element* each) const { return Kind::IndexOf(*list.Get(), each) != List::NOT_THERE; }
  void GiveBack() { static_cast<void>(held.release()); }

  Borrowed<List> list;
  std::unique_ptr<Element> held;
  Borrowed<Element> element;
};
using SequenceEdit = ElementEdit<SequencesOfStory>;
using ShotEdit = ElementEdit<ShotsOfSequence>;

/// The end of a list is null for all of these. One that is moved before itself, or before what is not in the
/// list, leaves the list.
template <class Kind>
class AddCommand : public StoryboardUndoCommand {
 public:
  AddCommand(Storyboard* board, typename Kind::List* list, typename Kind::Element* added)
      : StoryboardUndoCommand(board), edit(list, added) {}

  void Do() override {
    if (IsUndone()) {
      edit.PutBack(Kind::List::NOT_THERE);
    } else {
      edit.Add();
    }
    UpdateStoryboard();
    if (ShotSpecification* const shot = Kind::ShotToEdit(edit.Get())) OpenShotEditor(shot);
  }
  void Undo() override {
    CloseShotEditor(edit.Get());
    edit.Remove();
    UpdateStoryboard();
  }

 private:
  ElementEdit<Kind> edit;
};
using AddSequenceCommand = AddCommand<SequencesOfStory>;
using AddShotCommand = AddCommand<ShotsOfSequence>;

template <class Kind>
class DeleteCommand : public StoryboardUndoCommand {
 public:
  DeleteCommand(Storyboard* board, typename Kind::List* list, typename Kind::Element* deleted)
      : StoryboardUndoCommand(board), edit(list, deleted), index(edit.GetIndex()) {}

  void Do() override {
    CloseShotEditor(edit.Get());
    edit.Remove();
    EndErrand();
    UpdateStoryboard();
  }
  void Undo() override {
    edit.PutBack(index);
    UpdateStoryboard();
  }

 private:
  ElementEdit<Kind> edit;
  std::uint64_t index;
};
using DeleteSequenceCommand = DeleteCommand<SequencesOfStory>;
using DeleteShotCommand = DeleteCommand<ShotsOfSequence>;

template <class Kind>
class MoveCommand : public StoryboardUndoCommand {
 public:
  MoveCommand(Storyboard* board, typename Kind::List* list, typename Kind::Element* moved,
              const typename Kind::Element* next)
      : StoryboardUndoCommand(board), edit(list, moved), before(next), oldNextElement(edit.GetNext()) {}

  void Do() override {
    edit.Move(before);
    EndErrand();
    UpdateStoryboard();
  }
  void Undo() override {
    edit.Move(oldNextElement);
    UpdateStoryboard();
  }

 private:
  ElementEdit<Kind> edit;
  const typename Kind::Element* before;  // these two are only compared
  const typename Kind::Element* oldNextElement;
};
using MoveSequenceCommand = MoveCommand<SequencesOfStory>;
using MoveShotCommand = MoveCommand<ShotsOfSequence>;

}  // namespace Korvane
