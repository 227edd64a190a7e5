#pragma once

#include <optional>
#include <vector>

#include "zovhost/page_edges.h"
#include "zovhost/page_keys.h"
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
  ///
  /// Where keys are what the user has used last, it has them when it appears: arrows go through it, Tab leads
  /// on, and Escape closes it.
  void Draw(Korvane::Cam3DController& controller, float right, float top);
  /// Where it was drawn last; none: it was not.
  std::optional<PageEdges> GetEdges() const { return edges; }
  bool IsVisible() const { return visible; }
  void SetVisible(bool value) { visible = value; }
  PageKeys& GetKeys() { return keys; }

 private:
  struct Source {
    SixAxisSource* from;
    const char* name;
  };

  void DrawSource(const Source& source);

  SixAxisHand& hand;
  std::vector<Source> sources;
  std::optional<PageEdges> edges;
  bool visible = false;
  PageKeys keys;
};

}  // namespace zovhost
