#pragma once

#include <memory>

#include "korvane/helm_disc_observer.h"
#include "scenarios/house_view.h"

namespace scenarios {

/// The house, and the discs of the library over it, opened by their key and used by their wedges. The pointer
/// stands over the middle of the view.
class DiscView : public HouseViewport {
 public:
  explicit DiscView(bool orthographic = false);
  ~DiscView();
  DiscView(const DiscView&) = delete;
  DiscView& operator=(const DiscView&) = delete;

  /// Lets time pass and draws a frame.
  void Frame(unsigned milliseconds = 16);
  void Wait(unsigned milliseconds);
  void PressHotKey();
  void MovePointer(int x, int y);
  /// Moves the pointer over the open disc until a wedge is under it; false where there is none.
  bool FindWedge(Korvane::HelmDiscZone zone);
  /// The same with the disc moved so that the pointer then stands at a pixel.
  bool FindWedgeAt(Korvane::HelmDiscZone zone, int toX, int toY);
  void Press();
  void Release();
  /// In steps of a few pixels, a frame after each; `each` runs after the frame.
  template <class Each>
  void Draw(int byX, int byY, int steps, const Each& each) {
    const int fromX = x;
    const int fromY = y;
    for (int step = 1; step <= steps; ++step) {
      MovePointer(fromX + byX * step / steps, fromY + byY * step / steps);
      Frame();
      each();
    }
  }
  void Draw(int byX, int byY, int steps) {
    Draw(byX, byY, steps, [] {});
  }
  bool IsDiscShown() const;

  Korvane::HelmDisc disc;
  std::unique_ptr<OpenViewManager> manager;
  int x = WIDTH / 2;  // of the pointer
  int y = HEIGHT / 2;
};

}  // namespace scenarios
