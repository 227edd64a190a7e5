#pragma once

#include <functional>
#include <string>

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
/// Ask the view manager for the text (ViewManager::GetTooltip) after each event and before each Draw. Pixels
/// of the viewport, origin at the bottom left.
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
  /// Goes, until the pointer comes to another thing: after a key, or whatever else was done.
  void Dismiss();
  bool IsShown() const { return shown; }
  /// The text that shows, or is about to.
  const std::wstring& GetText() const { return text; }
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
  void DropIcon();

  std::function<void()> requestFrame;
  Korvane::Renderer* renderer = nullptr;
  Korvane::DynamicIcon2D* icon = nullptr;  // the renderer's
  RestTimer timer{*this};
  std::wstring text;
  int pointerX = 0;
  int pointerY = 0;
  bool shown = false;
  bool spent = false;  // pressed since the pointer came to it
};

}  // namespace zovhost
