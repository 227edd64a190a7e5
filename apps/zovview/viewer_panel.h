#pragma once

#include <cstddef>
#include <optional>
#include <string>

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
  explicit ViewerPanel(const ViewTarget& target);

  void Draw(const PanelContents& contents);
  void ToggleVisible() { visible = !visible; }

 private:
  void DrawPanel(const PanelContents& contents) const;
  void DrawViews() const;
  void DrawSettings() const;

  ViewTarget target;
  bool visible = true;
};

}  // namespace zovview
