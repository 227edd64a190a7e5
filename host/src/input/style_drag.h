#pragma once

#include "korvane/look_move_tool.h"
#include "korvane/zoom_tool.h"
#include "zovhost/navigation_style.h"

namespace zovhost {

/// Rolls the camera about its view. Refused where the scene is kept upright, since the next orbit would
/// straighten it again.
class RollTool : public Korvane::Tool {
 public:
  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;

 private:
  int FlipRow(int y) const;
};

/// A drag by one of the tools that the library's own middle button does not have: zoom, look, roll.
class StyleDrag {
 public:
  /// What the tools work with: borrowed for the drag; null as the tools take it.
  struct Partners {
    Korvane::CameraOperations* hub = nullptr;
    Korvane::Renderer* renderer = nullptr;
    Korvane::RewindHistory* history = nullptr;
    Korvane::PivotBall* ball = nullptr;
  };

  StyleDrag();

  /// At a viewport pixel, origin at the bottom left. False for a move that is none of its own, and where none
  /// can begin.
  bool Begin(NavigationMove move, const Partners& partners, int x, int y);
  void SetZoomsToPivot(bool wanted) { zoom.SetUseCurrentPivotPoint(wanted); }
  bool IsOperating() const { return tool != nullptr && tool->IsOperating(); }
  bool IsLooking() const { return IsOperating() && tool == &look; }
  bool IsDragging() const { return IsOperating() && tool->IsMouseDragging(); }
  /// Nothing, and false, while none goes on, as all below.
  bool Move(int x, int y);
  bool Key(Korvane::KeyID key, bool down);
  bool End(int x, int y);
  void Draw();

 private:
  Korvane::Tool* FindTool(NavigationMove move);

  Korvane::ZoomTool zoom;
  Korvane::LookMoveTool look;
  RollTool roll;
  Korvane::Tool* tool = nullptr;  // of the last drag
};

}  // namespace zovhost
