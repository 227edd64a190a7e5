#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "named_views_panel.h"
#include "view_commands.h"

namespace zovview {

/// How far the loading of a model is.
struct LoadingStatus {
  double fraction = 0.0;
  std::string step;
  std::string name;
};

/// What the panel shows beside the settings of the hub.
struct PanelContents {
  std::string name;
  std::size_t triangleCount = 0;
  std::string message;                   // of a failure; empty for none
  std::optional<LoadingStatus> loading;  // while a model loads
};

/// The small panel in the corner of the window, and the bar of progress. To be drawn within a frame of the
/// Gui.
class ViewerPanel {
 public:
  /// The command that was chosen; null for none. `target` is what the panel shows the settings of.
  const ViewCommand* Draw(const PanelContents& contents, const ViewTarget& target);
  /// How far it reaches into the window from the left, in points; 0 while it shows no more than its title.
  float GetReach() const { return reach; }
  void ToggleVisible() { visible = !visible; }
  /// The panel, with its help unfolded.
  void ShowHelp() { visible = helpWanted = true; }
  const NamedViewsPanel& GetNamedViews() const { return namedViews; }

 private:
  NamedViewsPanel namedViews;
  bool visible = true;
  bool helpWanted = false;
  float reach = 0.0F;
};

}  // namespace zovview
