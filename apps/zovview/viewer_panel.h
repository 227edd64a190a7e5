#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "named_views_panel.h"
#include "view_commands.h"
#include "zovhost/keyboard_focus.h"

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
  /// Its buttons, settings and headings, as they were drawn last; points from the bottom left. Their presses
  /// count with the next drawing.
  const std::vector<zovhost::FocusThing>& GetThings() const { return things; }
  /// What is under the focus is marked, and brought into sight; null: nothing is.
  void ShowFocus(const zovhost::FocusThing* thing);
  /// The panel, with its help unfolded.
  void ShowHelp() { visible = helpWanted = true; }
  const NamedViewsPanel& GetNamedViews() const { return namedViews; }

 private:
  const ViewCommand* DrawPanel(const PanelContents& contents, const ViewTarget& target, bool unfoldHelp);
  const ViewCommand* DrawSections(const ViewTarget& target, bool unfoldHelp);
  const ViewCommand* DrawButtons(ViewCommand::Place place, const ViewTarget& target);
  const ViewCommand* DrawSettings(const ViewTarget& target);
  const ViewCommand* DrawNamedViews(const ViewTarget& target);
  const ViewCommand* DrawChoices(ViewCommand::Place place, const ViewTarget& target);
  const ViewCommand* DrawLanguages(const ViewTarget& target);
  void DrawHelp(bool unfold, const ViewTarget& target);
  bool DrawHeading(const char* label, bool unfold = false);
  void NoteReach();
  bool NoteItem(const ViewCommand& command, bool on);
  bool NoteItem(int id, const char* name, zovhost::FocusRole role, bool on);

  bool visible = true;
  bool helpWanted = false;
  float reach = 0.0F;
  NamedViewsPanel namedViews;
  std::vector<zovhost::FocusThing> things;
  std::optional<int> pressed;  // by the identifier of a thing
  std::optional<int> focused;
  bool broughtIntoSight = false;
};

}  // namespace zovview
