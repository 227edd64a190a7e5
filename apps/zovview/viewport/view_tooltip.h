#pragma once

#include <functional>
#include <string>
#include <vector>

#include "korvane/box2.h"
#include "korvane/resource_ids.h"
#include "zovhost/tooltip_note.h"

namespace Korvane {
class HelmDisc;
class Orientor;
}  // namespace Korvane

namespace zovhost {
class GLRenderer;
class ViewFocus;
class ViewHub;
}  // namespace zovhost

namespace zovview {

class ViewBars;
class ViewerViewManager;
class ViewStory;

/// The tooltip of a view: of its bars, its storyboard, its cube and its discs. Viewport pixels, origin at the
/// bottom left.
class ViewTooltip {
 public:
  /// Borrowed.
  struct Sources {
    ViewerViewManager& manager;
    Korvane::Orientor& cube;
    Korvane::HelmDisc& disc;
    ViewBars& bars;
    ViewStory& story;
    zovhost::ViewFocus& focus;
    zovhost::GLRenderer& renderer;
  };

  ViewTooltip(Sources of, std::function<void()> requestFrame);

  /// When the widgets have been created.
  void Create();
  /// When they are about to go.
  void Destroy() { note.SetRenderer(nullptr); }
  /// The pointer has come to a pixel of the view; below 0: it has left.
  void MoveTo(int x, int y);
  /// The pointer is on a panel, or a menu is open: nothing of the view is under it until it comes back.
  void LeaveToPanels();
  /// What is under a pointer that rests may change as well: once a frame, and after each event.
  void Follow(bool pressed);
  /// See TooltipNote. In another language the texts are others.
  void Dismiss();
  /// `panels`: over the view.
  void Draw(const zovhost::ViewHub& hub, std::vector<Korvane::Box2> panels);
  const zovhost::TooltipNote& GetNote() const { return note; }

 private:
  const std::wstring& FindText();
  Korvane::Box2 FindThing();

  Sources sources;
  zovhost::TooltipNote note;
  int pointerX = -1;
  int pointerY = -1;
  bool elsewhere = false;
  Korvane::StringID discText = Korvane::STRING_NONE;  // that is loaded
  std::wstring loaded;
};

}  // namespace zovview
