#pragma once

#include <vector>

#include "zovhost/six_axis_hand.h"

namespace zovhost {

/// The settings of six-axis devices as a panel of the Gui: what they move and how fast, the six values as
/// they come, and for each source its axes, locks, dead zone and buttons.
///
///     zovhost::SixAxisPanel page(hand);
///     page.AddSource(&daemon, "Six-axis device");
///     ...
///     gui.BeginFrame();
///     page.Draw(controller, right, top);
///     gui.EndFrame();
///
/// What is changed holds at once. The hand and the sources are borrowed.
class SixAxisPanel {
 public:
  explicit SixAxisPanel(SixAxisHand& ofHand) : hand(ofHand) {}

  /// With a name that users know, a phrase. Nothing for null.
  void AddSource(SixAxisSource* source, const char* name);

  /// Within a frame of the Gui; its upper right corner stands there when it appears, in points from the top
  /// left of the window.
  void Draw(Korvane::Cam3DController& controller, float right, float top);
  bool IsVisible() const { return visible; }
  void SetVisible(bool value) { visible = value; }

 private:
  struct Source {
    SixAxisSource* from;
    const char* name;
  };

  void DrawSource(const Source& source);

  SixAxisHand& hand;
  std::vector<Source> sources;
  bool visible = false;
};

}  // namespace zovhost
