#pragma once

#include <string>
#include <unordered_map>

#include "korvane/icon2d.h"
#include "korvane/lifeline.h"
#include "korvane/renderer.h"

namespace Korvane {

class Sequence;
class ShotSpecification;

/// The thumbnails and the labels of sequences and shots: made once, and given back when what they show is
/// gone. They stay while an object is out of the story and may come back. Once a renderer is gone its
/// pictures are not touched any more.
class StoryPictures {
 public:
  StoryPictures() = default;
  StoryPictures(const StoryPictures&) = delete;
  StoryPictures& operator=(const StoryPictures&) = delete;

  /// Gives all pictures back to the renderer of before. None are made without one.
  void SetRenderer(Renderer* value);
  bool CanMake() const { return renderer.Get() != nullptr; }
  void GiveAllBack();
  /// Those of objects that are gone.
  void GiveLostBack();

  /// Null while there is none.
  DynamicIcon2D* GetThumbnail(const void* subject) const;
  DynamicIcon2D* GetLabel(const void* subject) const;

  /// What is not there or no longer fits is made, whether or not the renderer can make it: it is asked once.
  /// The picture of the scene shows the start of the shot, that of a sequence the start of its first one.
  void MakeThumbnail(ShotSpecification& shot);
  void MakeThumbnail(Sequence& sequence);
  void MakeLabel(ShotSpecification& shot);
  void MakeLabel(Sequence& sequence);
  struct Lack {
    bool thumbnail = false;
    bool label = false;
  };
  Lack FindLack(const ShotSpecification& shot) const;
  /// Of the thumbnail also when another shot has become the first, and never without a shot.
  Lack FindLack(const Sequence& sequence) const;
  /// To be made anew.
  void DropThumbnail(const void* subject);
  /// Pixels for each of their size; thumbnails of another are made anew.
  void SetScale(double value);

 private:
  struct Entry {
    Lifeline::Watch subject;
    DynamicIcon2D* thumbnail = nullptr;
    DynamicIcon2D* label = nullptr;
    bool thumbnailMade = false;
    bool labelMade = false;
    const void* shown = nullptr;  // the shot on the thumbnail; only compared
    std::wstring labelText;
  };
  using Entries = std::unordered_map<const void*, Entry>;

  const Entry* Find(const void* subject) const;
  /// A stale entry of the same address is emptied.
  template <class Subject>
  Entry& Open(Subject& subject);
  template <class Subject>
  void Photograph(Subject& subject, const ShotSpecification& shot, int width, int height);
  template <class Subject>
  Lack FindLackOf(const Subject& subject, const ShotSpecification* shot) const;
  template <class Subject>
  void Write(Subject& subject, int width);
  void Keep(const Borrowed<Renderer>& maker, const Lifeline::Watch& alive, const void* subject,
            DynamicIcon2D* Entry::*place, DynamicIcon2D* icon);
  static void Destroy(const Borrowed<Renderer>& maker, DynamicIcon2D* icon);
  static void Empty(const Borrowed<Renderer>& maker, Entry& entry);

  Entries entries;
  Borrowed<Renderer> renderer;
  double scale = 1.0;
};

}  // namespace Korvane
