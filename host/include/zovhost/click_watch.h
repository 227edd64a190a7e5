#pragma once

#include "zovhost/window.h"

namespace zovhost {

/// Tells the clicks of a button, a press and a release at about the same place, from its drags.
class ClickWatch {
 public:
  /// Points that the pointer may stray in a click.
  static constexpr int REACH = 3;

  explicit ClickWatch(MouseButton watchedButton = MouseButton::Left) : watched(watchedButton) {}

  /// The same in pixels, for a display of more than one a point.
  void SetReach(int pixels) { reach = pixels; }
  int GetReach() const { return reach; }

  void OnMouseDown(const WindowEvent& event);
  void OnMouseMove(const WindowEvent& event);
  /// 1 for a click, 2 for the second one of a double click, and so on; 0 for what was none.
  int OnMouseUp(const WindowEvent& event);
  /// What is pressed will be no click.
  void Cancel() { clicks = 0; }

 private:
  MouseButton watched;
  int reach = REACH;
  int clicks = 0;  // that the release will make; 0: none
  int x = 0;
  int y = 0;
};

}  // namespace zovhost
