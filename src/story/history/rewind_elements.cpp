#include "story/history/rewind_elements.h"

#include <algorithm>
#include <utility>

#include "foundation/out_of_memory.h"

namespace Korvane {

using Observer = RewindHistoryObserver;

// ---- add ----

int RewindElements::Add(const CameraParameters& given, DynamicIcon2D* thumbnail) {
  const CameraParameters camera = given;  // which may be that of an element
  if (!camera.IsFinite()) return -1;
  const Lifeline::Watch lives(partners.life);
  if (IsFull()) RemoveOldest(static_cast<int>(list.size() - limit + 1));
  const bool outsideView = lives && partners.IsSceneOutsideView(camera);
  // A watch takes itself out of the list when it ends, which the analyzer does not see.
  if (!lives) return -1;  // NOLINT(clang-analyzer-core.StackAddressEscape)
  if (!OrFail([&] { return Append(camera, thumbnail, outsideView); })) return -1;
  const int index = current;
  const Lifeline::Watch same(places);
  partners.Notify(same, [&](Observer& each) { each.OnElementAdded(index, camera); });
  if (same && thumbnail == nullptr) MakeThumbnails();
  return same ? index : -1;  // NOLINT(clang-analyzer-core.StackAddressEscape)
}

bool RewindElements::Append(const CameraParameters& camera, DynamicIcon2D* thumbnail, bool outsideView) {
  list.push_back({camera, thumbnail, Box2(Vector2(), strip.GetHalfSize()), 0.0, outsideView});
  current = selected = GetLast();
  choice.Cut();
  strip.Space(list);
  thumbnails.Place(list.back());
  return true;
}

bool RewindElements::Follow(const CameraParameters& camera) {
  const Lifeline::Watch lives(partners.life);
  if (!list.empty() && list.back().outsideView) Remove(GetLast());
  return lives && Add(camera, nullptr) >= 0;
}

// ---- change ----

// What came after the element is cut off: a move after a rewind begins another future.
bool RewindElements::Update(int index, const CameraParameters& given) {
  const CameraParameters camera = given;
  if (!camera.IsFinite()) return false;
  strip.layoutStale = true;
  if (!Holds(index)) return Add(camera, nullptr) >= 0;
  if (!CutAfter(index)) return false;
  const Lifeline::Watch same(places);
  const bool equal = partners.AreEqual(camera, At(index).camera);
  if (!same) return false;
  if (equal) {
    At(index).weight = 0.0;
  } else {
    Replace(index, camera);
  }
  return true;
}

void RewindElements::Replace(int index, const CameraParameters& camera) {
  const Lifeline::Watch same(places);
  Store(index, camera);
  if (same) At(index).weight = 0.0;
  const bool shows = same && !partners.IsSceneOutsideView(camera);
  if (shows) partners.Notify(same, [&](Observer& each) { each.OnElementUpdated(index, camera); });
  if (same) MakeThumbnails();
}

void RewindElements::Store(int index, const CameraParameters& camera) {
  Element& element = At(index);
  element.camera = camera;
  cameras.Cut();
  thumbnails.GiveBack(std::exchange(element.thumbnail, nullptr));
}

// The picture of the new camera is left to be made when it is wanted.
bool RewindElements::UpdateLast(const CameraParameters& given) {
  const CameraParameters camera = given;
  if (strip.open || list.empty() || !IsCurrentLast() || !camera.IsFinite()) return false;
  const int index = GetLast();
  const Lifeline::Watch same(places);
  const bool shows = !partners.IsSceneOutsideView(camera);
  if (!same || !shows) return false;
  const bool equal = partners.AreEqual(camera, At(index).camera);
  if (!same || equal) return static_cast<bool>(same);
  strip.layoutStale = true;
  Store(index, camera);
  partners.Notify(same, [&](Observer& each) { each.OnElementUpdated(index, camera); });
  return true;
}

bool RewindElements::SetThumbnail(int index, DynamicIcon2D* icon) {
  if (!Holds(index)) return false;
  Element& element = At(index);
  if (element.thumbnail == icon) return true;
  DynamicIcon2D* const last = std::exchange(element.thumbnail, icon);
  thumbnails.Place(element);
  thumbnails.GiveBack(last);
  return true;
}

// ---- remove ----

// Indices first: further elements that the host adds meanwhile stay.
bool RewindElements::CutAfter(int index) {
  for (int last = GetLast(); last > index; --last) {
    if (!Remove(last)) return false;
  }
  return true;
}

int RewindElements::RemoveOldest(int count) {
  if (strip.open || removing || count < 1) return 0;
  const int all = GetCount();
  if (count >= all) {
    if (all > 0) Clear();
    return all;
  }
  strip.layoutStale = true;
  return RemoveFirst(count);
}

int RewindElements::RemoveFirst(int count) {
  int gone = 0;
  while (gone < count) {
    const bool moves = current > 0;
    if (!Remove(0)) break;
    ++gone;
    const Lifeline::Watch same(places);
    if (moves) TellCurrent();
    if (!same) break;
  }
  return gone;
}

// False where it was refused, or the host has changed the list meanwhile. What the host is being told of as
// going stands until then where it stood: none goes within.
bool RewindElements::Remove(int index) {
  if (removing) return false;
  const Lifeline::Watch same(places);
  removing = true;
  partners.Notify(same, [&](Observer& each) { each.OnElementRemoved(index); });
  removing = false;
  if (!same) return false;
  DynamicIcon2D* const icon = Take(index);
  const Lifeline::Watch after(places);
  thumbnails.GiveBack(icon);
  return static_cast<bool>(after);
}

// The current element stays the current one; where it goes itself, the one before it takes its place.
DynamicIcon2D* RewindElements::Take(int index) {
  DynamicIcon2D* const icon = At(index).thumbnail;
  list.erase(list.begin() + index);
  if (index <= current && current > 0) selected = --current;
  selected = std::min(selected, std::max(GetLast(), 0));
  CutPlaces();
  return icon;
}

void RewindElements::Clear() {
  if (clearing && list.empty()) return;
  const Lifeline::Watch lives(partners.life);
  const std::vector<Element> leaving = std::exchange(list, {});
  current = selected = 0;
  strip.layoutStale = true;
  CutPlaces();
  thumbnails.GiveBack(leaving);
  const bool outer = std::exchange(clearing, true);
  partners.Notify(lives, [](Observer& each) { each.OnHistoryCleared(); });
  clearing = outer;
}

void RewindElements::End() {
  partners.life.Cut();
  CutPlaces();
  const std::vector<Element> leaving = std::exchange(list, {});
  current = selected = 0;
  thumbnails.GiveBack(leaving);
}

void RewindElements::CutPlaces() {
  places.Cut();
  cameras.Cut();
  choice.Cut();
}

void RewindElements::SetLimit(unsigned int count) {
  const Lifeline::Watch lives(partners.life);
  const bool lower = count != 0 && (count < limit || limit == 0);
  if (lower && list.size() >= count) RemoveOldest(static_cast<int>(list.size() - count));
  if (lives) limit = count;
}

void RewindElements::SetRenderer(Renderer* renderer) { thumbnails.SetRenderer(list, renderer); }

// ---- the current element ----

// From beside the element the first step goes to the element itself.
bool RewindElements::Step(int way) {
  if (strip.LeansTo(-way)) {
    strip.layoutStale = true;
    return true;
  }
  if (!Holds(current + way)) return false;
  Choose(current + way);
  return true;
}

void RewindElements::Choose(int index) {
  if (index == current) return;
  current = selected = index;
  strip.layoutStale = true;
  TellCurrent();
}

void RewindElements::Advance() {
  if (!strip.LeansTo(1) || strip.snapped || !Holds(current + 1)) return;
  ++current;
  TellCurrent();
}

void RewindElements::EndSlide() {
  if (current == selected) return;
  current = selected;
  TellCurrent();
}

void RewindElements::TellCurrent() {
  choice.Cut();
  const Lifeline::Watch same(choice);
  const int index = current;
  partners.Notify(same, [index](Observer& each) { each.OnCurrentElementChanged(index); });
}

}  // namespace Korvane
