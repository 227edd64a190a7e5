#pragma once

#include <vector>

#include "korvane/lifeline.h"
#include "korvane/renderer.h"
#include "korvane/rewind_history.h"

namespace Korvane {

/// The pictures of the elements: who makes them, and who gets them back. Once a renderer is gone its pictures
/// are not touched any more.
class RewindThumbnails {
 public:
  using Element = RewindHistory::HistoryElement;
  using Elements = std::vector<Element>;

  Renderer* GetRenderer() const { return renderer.Get(); }
  /// The elements lose what the last one has made, and it gets that back.
  void SetRenderer(Elements& elements, Renderer* value);

  /// For the elements that have none, of `size` pixels a side. Draws the scene, in which the host may do as
  /// it likes: `cameras` is cut when an element goes or takes another camera, and the work then stops.
  void Make(Elements& elements, Lifeline& cameras, float size);
  /// Sizes and moves the picture of an element, if it has one, to where that stands.
  void Place(const Element& element) const;
  DynamicIcon2D* Get(const Element& element) const { return IsLost() ? nullptr : element.thumbnail; }
  /// A picture that no element holds any more. Null is ignored.
  void GiveBack(DynamicIcon2D* icon) const;
  void GiveBack(const Elements& leaving) const;

 private:
  static std::vector<DynamicIcon2D*> TakeAll(Elements& elements);
  bool IsLost() const { return hasMaker && renderer.Get() == nullptr; }
  bool MakeOne(Elements& elements, std::size_t index, Lifeline& cameras, int size);

  Borrowed<Renderer> renderer;
  bool hasMaker = false;  // a renderer has been given, though it may be gone
  bool making = false;
};

}  // namespace Korvane
