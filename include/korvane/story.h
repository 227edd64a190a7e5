#pragma once

#include <cstdint>
#include <string>

#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/owned_list.h"
#include "korvane/shot_specification.h"

namespace Korvane {

/// A named list of shots, in playing order, which it owns: what is added is its own until it is removed. A
/// shot is in one sequence at most, and in that once.
class ZOVTOOLS_API Sequence {
 public:
  /// The index of what is not there.
  static constexpr std::uint64_t NOT_THERE = OwnedList<ShotSpecification>::NOT_THERE;

  Sequence();
  ~Sequence();
  Sequence(const Sequence&) = delete;
  Sequence& operator=(const Sequence&) = delete;

  const std::wstring& GetName() const { return name; }
  void SetName(const std::wstring& value) { name = value; }

  /// At the end; the index it has then. One that is there already stays where it is; null is refused with
  /// NOT_THERE.
  std::uint64_t AddShot(ShotSpecification* shot) { return shots.Add(shot); }
  /// Before an index; at the end for one beyond. Else as AddShot.
  std::uint64_t InsertShot(std::uint64_t index, ShotSpecification* shot) { return shots.Insert(index, shot); }
  /// Takes it out; it is the caller's then. Null if it is not there.
  ShotSpecification* RemoveShot(const ShotSpecification* shot) { return shots.Remove(shot); }
  /// False if it is not there.
  bool DeleteShot(const ShotSpecification* shot) { return shots.Delete(shot); }
  /// Before another shot; to the end for null; one that is not there is taken in. Where that other one is not
  /// in the sequence, or is the shot itself, the shot stays out of it and is the caller's.
  void MoveShot(ShotSpecification* shot, const ShotSpecification* before) { shots.Move(shot, before); }
  bool ContainsShot(const ShotSpecification* shot) const { return shots.Contains(shot); }
  /// NOT_THERE for one that is not there.
  std::uint64_t GetIndexOfShot(const ShotSpecification* shot) const { return shots.GetIndexOf(shot); }
  /// Null past the end.
  ShotSpecification* GetShot(std::uint64_t index) const { return shots.Get(index); }
  /// Null when empty.
  ShotSpecification* GetFirstShot() const { return shots.Get(0); }
  std::uint64_t GetShotCount() const { return shots.GetCount(); }
  bool IsEmpty() const { return shots.GetCount() == 0; }
  /// The first of exactly this name; null for none.
  ShotSpecification* FindShot(const std::wstring& shotName) const { return shots.Find(shotName); }

  /// For those that look at it and may outlive it.
  Lifeline& GetLifeline() { return lifeline; }

 private:
  OwnedList<ShotSpecification> shots;
  std::wstring name;
  Lifeline lifeline;
};

/// A named list of sequences, in playing order, as a Sequence is one of shots.
class ZOVTOOLS_API Story {
 public:
  static constexpr std::uint64_t NOT_THERE = OwnedList<Sequence>::NOT_THERE;

  Story();
  ~Story();
  Story(const Story&) = delete;
  Story& operator=(const Story&) = delete;

  const std::wstring& GetName() const { return name; }
  void SetName(const std::wstring& value) { name = value; }

  std::uint64_t AddSequence(Sequence* sequence) { return sequences.Add(sequence); }
  std::uint64_t InsertSequence(std::uint64_t index, Sequence* sequence) {
    return sequences.Insert(index, sequence);
  }
  Sequence* RemoveSequence(const Sequence* sequence) { return sequences.Remove(sequence); }
  bool DeleteSequence(const Sequence* sequence) { return sequences.Delete(sequence); }
  void MoveSequence(Sequence* sequence, const Sequence* before) { sequences.Move(sequence, before); }
  bool ContainsSequence(const Sequence* sequence) const { return sequences.Contains(sequence); }
  std::uint64_t GetIndexOfSequence(const Sequence* sequence) const { return sequences.GetIndexOf(sequence); }
  Sequence* GetSequence(std::uint64_t index) const { return sequences.Get(index); }
  Sequence* GetFirstSequence() const { return sequences.Get(0); }
  std::uint64_t GetSequenceCount() const { return sequences.GetCount(); }
  bool IsEmpty() const { return sequences.GetCount() == 0; }
  Sequence* FindSequence(const std::wstring& sequenceName) const { return sequences.Find(sequenceName); }

  Lifeline& GetLifeline() { return lifeline; }

 private:
  OwnedList<Sequence> sequences;
  std::wstring name;
  Lifeline lifeline;
};

}  // namespace Korvane
