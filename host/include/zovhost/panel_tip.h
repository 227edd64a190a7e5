#pragma once

#include <functional>

#include "korvane/interval_timer.h"

namespace zovhost {

/// The tooltips of a panel, by the rules of a desktop, as TooltipNote has them: the text of the item under
/// the pointer shows when the pointer has rested for half a second, changes at once while the pointer goes
/// from one item to the next, and goes with a press, until the pointer comes to another item.
///
/// All within a frame of the Gui: Note after each item that has a text, Draw when all are drawn.
class PanelTip {
 public:
  static constexpr double REST_SECONDS = 0.5;

  /// `requestFrame` is called when a text is to come; empty: nobody is.
  explicit PanelTip(std::function<void()> requestFrame);

  /// Where a text stands: below its item, or beside it on the right of the window.
  enum class Side : int { Below, Beside };
  /// Of the item that was drawn last; `id` is of no other one of the panel. `text` is as Say gives it, and is
  /// read by Draw. `focused`: it shows at once, without a pointer.
  void Note(int id, const char* text, Side side, bool focused = false);
  /// Over all panels.
  void Draw();
  /// Null while none shows.
  const char* GetText() const { return shown ? present.text : nullptr; }

 private:
  class RestTimer : public Korvane::IntervalTimer {
   public:
    explicit RestTimer(PanelTip& owner) : tip(owner) {}
    void Timeout() override { tip.OnRest(); }

   private:
    PanelTip& tip;
  };

  struct Item {
    int id = NONE;
    const char* text = nullptr;
    Side side = Side::Below;
    float left = 0.0F;
    float top = 0.0F;
    float right = 0.0F;
    float bottom = 0.0F;
    bool focused = false;
  };
  static constexpr int NONE = -1;

  void OnRest();
  void Follow();
  void DrawText() const;

  std::function<void()> requestFrame;
  RestTimer timer{*this};
  Item under;    // of this frame
  Item present;  // of the last one that had one
  float pointerX = 0.0F;
  float pointerY = 0.0F;
  bool shown = false;
  bool rested = false;
  bool spent = false;  // pressed since the pointer came to it
};

}  // namespace zovhost
