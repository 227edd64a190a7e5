#pragma once

#include <utility>
#include <vector>

#include "story/history/rewind_partners.h"
#include "story/history/rewind_strip.h"
#include "story/history/rewind_thumbnails.h"

namespace Korvane {

/// The elements of a history, which of them is the current one, and everything that adds, changes and removes
/// one. Both indices name an element, or are 0 in an empty history.
///
/// Most of it calls out to the host, who may do the same in there: an index that is held over such a call is
/// watched by `places`.
class RewindElements {
 public:
  using Element = RewindHistory::HistoryElement;

  RewindElements(RewindPartners& historyPartners, RewindThumbnails& pictures, RewindStrip& filmStrip)
      : partners(historyPartners), thumbnails(pictures), strip(filmStrip) {}

  std::vector<Element>& GetList() { return list; }
  const std::vector<Element>& GetList() const { return list; }
  int GetCount() const { return static_cast<int>(list.size()); }
  int GetLast() const { return GetCount() - 1; }
  bool Holds(int index) const { return index >= 0 && index < GetCount(); }
  /// One that is held.
  Element& At(int index) { return list[static_cast<std::size_t>(index)]; }
  int GetCurrent() const { return current; }
  bool IsCurrentLast() const { return current == GetLast(); }

  /// The new index, -1 when none was added or it has gone again.
  int Add(const CameraParameters& camera, DynamicIcon2D* thumbnail);
  /// As the last one, in the place of one that does not show the scene.
  bool Follow(const CameraParameters& camera);
  bool Update(int index, const CameraParameters& camera);
  bool UpdateLast(const CameraParameters& camera);
  bool SetThumbnail(int index, DynamicIcon2D* icon);
  void MakeThumbnails() {
    thumbnails.Make(list, cameras, static_cast<float>(strip.thumbnailSize * strip.scale));
  }
  void DropThumbnails() {
    for (int i = 0; Holds(i); ++i) thumbnails.GiveBack(std::exchange(At(i).thumbnail, nullptr));
  }
  void SetRenderer(Renderer* renderer);

  int RemoveOldest(int count);
  void Clear();
  /// With the history: everything goes, and nobody is told.
  void End();
  unsigned int GetLimit() const { return limit; }
  void SetLimit(unsigned int count);

  /// By one, 1 or -1.
  bool Step(int way);
  void Choose(int index);
  /// To the next element, where the bracket was left before it.
  void Advance();
  /// A slide: from the current element, at another, and its end there.
  void BeginSlide() { selected = current; }
  void NoteSlide(int index) { selected = index; }
  void EndSlide();

 private:
  bool IsFull() const { return limit != 0 && list.size() >= limit; }
  bool Append(const CameraParameters& camera, DynamicIcon2D* thumbnail, bool outsideView);
  void Replace(int index, const CameraParameters& camera);
  void Store(int index, const CameraParameters& camera);
  bool CutAfter(int index);
  int RemoveFirst(int count);
  bool Remove(int index);
  DynamicIcon2D* Take(int index);
  void TellCurrent();
  void CutPlaces();

  RewindPartners& partners;
  RewindThumbnails& thumbnails;
  RewindStrip& strip;

  std::vector<Element> list;
  int current = 0;
  int selected = 0;  // next to the bracket
  unsigned int limit = RewindHistory::defaultMaxHistorySize;
  bool removing = false;  // an element of which the host is being told goes
  bool clearing = false;
  Lifeline places;   // cut when an element goes,
  Lifeline cameras;  // when one takes another camera as well,
  Lifeline choice;   // when another one is the current one as well
};

}  // namespace Korvane
