#pragma once

#include <functional>

#include "korvane/interval_timer.h"

namespace Korvane {
class CameraOperations;
class DynamicIcon2D;
class Renderer;
class Tool;
}  // namespace Korvane

namespace zovview {

/// The text beside the pointer that names a tool: for a while after the tool was chosen, and during the first
/// gesture with it. Then it keeps quiet until another tool is chosen.
class ToolNote {
 public:
  static constexpr double SECONDS = 2.0;

  /// `requestFrame` is called when the note comes or goes; not empty.
  explicit ToolNote(std::function<void()> requestFrame);

  /// A tool is chosen, null for none; its text is `icon`, null for none. Both borrowed. Quiet without
  /// `named`, but for the first gesture.
  void Choose(Korvane::Tool* tool, Korvane::DynamicIcon2D* icon, bool named);
  /// A gesture of the tool goes on, or not: to be told at presses and frames.
  void Follow(bool operating);
  bool IsShown() const { return shown; }
  /// At a viewport pixel, origin at the bottom left, in a pass of its own. Nothing while none shows.
  void Draw(Korvane::Renderer& renderer, const Korvane::CameraOperations& hub, int x, int y);

 private:
  class Timer : public Korvane::IntervalTimer {
   public:
    explicit Timer(ToolNote& owner) : note(owner) {}
    void Timeout() override { note.Hide(); }

   private:
    ToolNote& note;
  };

  void Hide();

  std::function<void()> requestFrame;
  Timer timer{*this};
  Korvane::Tool* tool = nullptr;
  Korvane::DynamicIcon2D* icon = nullptr;
  bool shown = false;
  bool used = false;  // in a gesture
};

}  // namespace zovview
