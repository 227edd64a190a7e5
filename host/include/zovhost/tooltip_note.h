#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "korvane/box2.h"
#include "korvane/interval_timer.h"

namespace Korvane {
class CameraOperations;
class DynamicIcon2D;
class Renderer;
}  // namespace Korvane

namespace zovhost {

/// The tooltip of what is under the pointer, by the rules of a desktop: it shows when the pointer has rested
/// for half a second, goes with what it tells of, changes at once while the pointer goes from one thing to
/// the next, and goes with a press, until the pointer comes to another thing.
///
/// It stands below the pointer, or else as near to it as leaves what it tells of, and the panels over the
/// view, to be seen; it goes when what it tells of moves away.
///
/// Ask the view manager for the text (ViewManager::GetTooltip), and the discs (zovhost/disc_tooltips.h),
/// after each event and before each Draw. Pixels of the viewport, origin at the bottom left.
class TooltipNote {
 public:
  static constexpr double REST_SECONDS = 0.5;

  /// `requestFrame` is called when the note comes or goes; empty: nobody is.
  explicit TooltipNote(std::function<void()> requestFrame);
  /// Gives its picture back.
  ~TooltipNote();
  TooltipNote(const TooltipNote&) = delete;
  TooltipNote& operator=(const TooltipNote&) = delete;

  /// Borrowed; null takes it away. A note that shows goes.
  void SetRenderer(Korvane::Renderer* renderer);
  /// Empty: there is nothing under the pointer that has a text. `pressed`: a button is held.
  void Follow(const std::wstring& text, int x, int y, bool pressed);
  /// Asked for the place of what the text tells of, when the note comes and for each frame; one without
  /// extent is minded no further. Empty, as at first: it has none.
  void SetFindThing(std::function<Korvane::Box2()> find) { findThing = std::move(find); }
  /// What lies over the view, of which the note keeps clear where it can.
  void SetPanels(std::vector<Korvane::Box2> over) { panels = std::move(over); }
  /// Goes, until the pointer comes to another thing: after a key, or whatever else was done.
  void Dismiss();
  bool IsShown() const { return shown; }
  /// The text that shows, or is about to.
  const std::wstring& GetText() const { return text; }
  /// Where it was drawn last.
  const Korvane::Box2& GetBounds() const { return drawn; }
  /// In a pass of its own. Nothing while none shows, and in a view without a size.
  void Draw(const Korvane::CameraOperations& hub, int viewportWidth, int viewportHeight);

 private:
  class RestTimer : public Korvane::IntervalTimer {
   public:
    explicit RestTimer(TooltipNote& owner) : note(owner) {}
    void Timeout() override { note.Show(); }

   private:
    TooltipNote& note;
  };

  void Show();
  void Hide();
  bool HasThingMoved() const;
  void DropIcon();

  std::function<void()> requestFrame;
  Korvane::Renderer* renderer = nullptr;
  Korvane::DynamicIcon2D* icon = nullptr;  // the renderer's
  RestTimer timer{*this};
  std::wstring text;
  std::function<Korvane::Box2()> findThing;
  std::vector<Korvane::Box2> panels;
  Korvane::Box2 thing;  // as the note came
  Korvane::Box2 drawn;
  int pointerX = 0;
  int pointerY = 0;
  bool shown = false;
  bool spent = false;  // pressed since the pointer came to it
};

}  // namespace zovhost
