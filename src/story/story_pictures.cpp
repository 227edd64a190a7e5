#include "story/story_pictures.h"

#include <utility>

#include "foundation/truncate.h"
#include "korvane/shot_specification.h"
#include "korvane/story.h"

namespace Korvane {

namespace {

// Pixels.
struct PictureSize {
  int width;
  int height;
};
constexpr PictureSize SHOT_THUMBNAIL{62, 45};
constexpr PictureSize SEQUENCE_THUMBNAIL{124, 90};
constexpr float LABEL_SIZE = 10.0F;
constexpr int SHOT_LABEL_WIDTH = 64;
constexpr int SEQUENCE_LABEL_WIDTH = 128;
constexpr int LABEL_HEIGHT = 16;

}  // namespace

// ---- giving back ----

// Whoever gets the pictures back may call, and finds none of them then.
void StoryPictures::SetRenderer(Renderer* value) {
  if (value == renderer.Get()) return;
  const Borrowed<Renderer> maker(renderer.Get());
  Entries given;
  given.swap(entries);
  renderer.Set(value);
  for (auto& [subject, entry] : given) Empty(maker, entry);
}

void StoryPictures::GiveAllBack() {
  const Borrowed<Renderer> maker(renderer.Get());
  Entries given;
  given.swap(entries);
  for (auto& [subject, entry] : given) Empty(maker, entry);
}

// A host may replace the renderer while one is given back: what stands then is the next one's.
void StoryPictures::GiveLostBack() {
  for (auto each = entries.begin(); each != entries.end();) {
    if (each->second.subject) {
      ++each;
      continue;
    }
    Entries::node_type lost = entries.extract(each);
    Empty(Borrowed<Renderer>(renderer.Get()), lost.mapped());
    each = entries.begin();
  }
}

void StoryPictures::DropThumbnail(const void* subject) {
  const auto found = entries.find(subject);
  if (found == entries.end()) return;
  found->second.thumbnailMade = false;
  Destroy(Borrowed<Renderer>(renderer.Get()), std::exchange(found->second.thumbnail, nullptr));
}

void StoryPictures::SetScale(double value) {
  scale = value;
  for (auto& [subject, entry] : entries) entry.thumbnailMade = false;
}

void StoryPictures::Destroy(const Borrowed<Renderer>& maker, DynamicIcon2D* icon) {
  if (maker.Get() != nullptr && icon != nullptr) maker.Get()->DestroyIcon(icon);
}

void StoryPictures::Empty(const Borrowed<Renderer>& maker, Entry& entry) {
  entry.thumbnailMade = entry.labelMade = false;
  DynamicIcon2D* const thumbnail = std::exchange(entry.thumbnail, nullptr);
  DynamicIcon2D* const label = std::exchange(entry.label, nullptr);
  Destroy(maker, thumbnail);
  Destroy(maker, label);
}

// ---- what there is ----

const StoryPictures::Entry* StoryPictures::Find(const void* subject) const {
  if (renderer.Get() == nullptr) return nullptr;
  const auto found = entries.find(subject);
  return found != entries.end() && found->second.subject ? &found->second : nullptr;
}

DynamicIcon2D* StoryPictures::GetThumbnail(const void* subject) const {
  const Entry* const entry = Find(subject);
  return entry != nullptr ? entry->thumbnail : nullptr;
}

DynamicIcon2D* StoryPictures::GetLabel(const void* subject) const {
  const Entry* const entry = Find(subject);
  return entry != nullptr ? entry->label : nullptr;
}

template <class Subject>
StoryPictures::Lack StoryPictures::FindLackOf(const Subject& subject, const ShotSpecification* shot) const {
  const Entry* const entry = Find(&subject);
  const bool photographed = entry != nullptr && entry->thumbnailMade && entry->shown == shot;
  const bool labelled = entry != nullptr && entry->labelMade && entry->labelText == subject.GetName();
  return {shot != nullptr && !photographed, !labelled};
}

StoryPictures::Lack StoryPictures::FindLack(const ShotSpecification& shot) const {
  return FindLackOf(shot, &shot);
}

StoryPictures::Lack StoryPictures::FindLack(const Sequence& sequence) const {
  return FindLackOf(sequence, sequence.GetFirstShot());
}

// ---- making ----

template <class Subject>
StoryPictures::Entry& StoryPictures::Open(Subject& subject) {
  Entry& entry = entries[&subject];
  if (!entry.subject) {
    entry.subject.Attach(subject.GetLifeline());
    entry.thumbnailMade = entry.labelMade = false;
  }
  return entry;
}

void StoryPictures::MakeThumbnail(ShotSpecification& shot) {
  const PictureSize size = SHOT_THUMBNAIL;
  Photograph(shot, shot, size.width, size.height);
}

void StoryPictures::MakeThumbnail(Sequence& sequence) {
  const ShotSpecification* const first = sequence.GetFirstShot();
  if (first == nullptr) return;
  const PictureSize size = SEQUENCE_THUMBNAIL;
  Photograph(sequence, *first, size.width, size.height);
}

void StoryPictures::MakeLabel(ShotSpecification& shot) { Write(shot, SHOT_LABEL_WIDTH); }
void StoryPictures::MakeLabel(Sequence& sequence) { Write(sequence, SEQUENCE_LABEL_WIDTH); }

template <class Subject>
void StoryPictures::Photograph(Subject& subject, const ShotSpecification& shot, int width, int height) {
  const Borrowed<Renderer> maker(renderer.Get());
  if (maker.Get() == nullptr) return;
  const Lifeline::Watch alive(subject.GetLifeline());
  Entry& entry = Open(subject);
  entry.thumbnailMade = true;
  entry.shown = &shot;
  const CameraParameters camera = shot.GetCameraParameters();
  Destroy(maker, std::exchange(entry.thumbnail, nullptr));
  if (maker.Get() == nullptr) return;
  Keep(maker, alive, &subject, &Entry::thumbnail,
       maker.Get()->CreateSceneScreenshot(Truncate(width * scale), Truncate(height * scale), camera));
}

template <class Subject>
void StoryPictures::Write(Subject& subject, int width) {
  const Borrowed<Renderer> maker(renderer.Get());
  if (maker.Get() == nullptr) return;
  const Lifeline::Watch alive(subject.GetLifeline());
  Entry& entry = Open(subject);
  entry.labelMade = true;
  entry.labelText = subject.GetName();
  const std::wstring text = entry.labelText;
  Destroy(maker, std::exchange(entry.label, nullptr));
  if (maker.Get() == nullptr) return;
  Keep(maker, alive, &subject, &Entry::label,
       maker.Get()->CreateTextLabel(text.c_str(), LABEL_SIZE, width, LABEL_HEIGHT));
}

// The host may have done anything while it made the picture. One that nobody holds any more goes back.
void StoryPictures::Keep(const Borrowed<Renderer>& maker, const Lifeline::Watch& alive, const void* subject,
                         DynamicIcon2D* Entry::*place, DynamicIcon2D* icon) {
  const auto found = entries.find(subject);
  const bool wanted =
      alive && maker.Get() == renderer.Get() && found != entries.end() && found->second.*place == nullptr;
  if (wanted) {
    found->second.*place = icon;
  } else {
    Destroy(maker, icon);
  }
}

}  // namespace Korvane
