#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "commands/view_commands.h"
#include "panel/cube_place.h"
#include "panel/named_views_panel.h"
#include "panel/panel_words.h"
#include "zovhost/keyboard_focus.h"
#include "zovhost/panel_tip.h"

namespace zovview {

/// How far the loading of a model is.
struct LoadingStatus {
  double fraction = 0.0;
  std::string step;
  std::string name;
};

/// What the panel shows beside the settings of the hub, and what it minds.
struct PanelContents {
  std::string name;
  std::size_t triangleCount = 0;
  std::string message;                   // of a failure; empty for none
  std::optional<LoadingStatus> loading;  // while a model loads
  float viewWidth = 1280.0F;             // points, of the narrowest view at the left
  std::vector<CubePlace> cubes;          // those that show
  std::vector<CubePlace> boards;         // the storyboards of the views at the left
};

/// The panel at the left of the window, and the bar of progress. To be drawn within a frame of the Gui.
///
/// It is folded to a strip of icons while the views are small, or when the user has chosen so; see
/// Choices::panel.
class ViewerPanel {
 public:
  /// Panels do not fold themselves in views that are as wide, in points.
  static constexpr float LEAST_VIEW = 1000.0F;

  /// `onRequest` is called when something is to be drawn later.
  explicit ViewerPanel(std::function<void()> onRequest = [] {})
      : requestFrame(std::move(onRequest)), tip(requestFrame) {}

  /// The command that was chosen; null for none. `target` is what the panel shows the settings of.
  const ViewCommand* Draw(const PanelContents& contents, const ViewTarget& target);
  /// How far it reaches into the window from the left, in points, or will when there is a model; 0 while it
  /// is not to be seen.
  float GetReach() const { return reach; }
  /// As it was drawn last.
  bool IsFolded() const { return folded; }
  /// Its lists show.
  bool IsUnfolded() const { return visible && !folded; }
  void ToggleVisible();
  /// Its buttons, settings and headings, as they were drawn last; points from the bottom left. Their presses
  /// count with the next drawing.
  std::vector<zovhost::FocusThing> GetThings();
  /// What an arrow leads to from one of them; none: nowhere.
  std::optional<int> Steer(int id, zovhost::FocusStep step);
  /// What the focus is to go to, as what it was on is no more; none: it stays.
  std::optional<int> TakeNextFocus() { return namedViews.TakeNextFocus(); }
  /// What is under the focus is marked, and brought into sight; null: nothing is.
  void ShowFocus(const zovhost::FocusThing* thing);
  /// The panel, with its help unfolded.
  void ShowHelp();
  /// That, or folds the help in where it shows; the panel stays.
  void ToggleHelp();
  bool IsHelpOpen() const { return visible && !folded && helpOpen; }
  const NamedViewsPanel& GetNamedViews() const { return namedViews; }
  /// The tooltip that shows; null for none.
  const char* GetTip() const { return tip.GetText(); }

 private:
  // Something to press, as it was drawn.
  struct Item {
    int id;
    const char* name;    // of the tables of phrases
    std::string ofView;  // instead of that, of a view that is kept
    zovhost::FocusRole role;
    bool on;
    bool enabled;
    Korvane::Box2 bounds;
  };
  // What is free for the panel, from the top of the window.
  struct Room {
    float top;
    float height;
  };

  const ViewCommand* DrawPanel(const PanelContents& contents, const ViewTarget& target);
  const ViewCommand* DrawStrip(const PanelContents& contents, const ViewTarget& target);
  const ViewCommand* DrawSections(const ViewTarget& target, std::optional<bool> help);
  const ViewCommand* DrawButtons(ViewCommand::Place place, const ViewTarget& target);
  const ViewCommand* DrawSettings(const ViewTarget& target);
  const ViewCommand* DrawNamedViews(const ViewTarget& target);
  const ViewCommand* DrawChoices(ViewCommand::Place place, const ViewTarget& target);
  const ViewCommand* DrawLanguages(const ViewTarget& target);
  const ViewCommand* DrawStripButton(const ViewCommand& command, const ViewTarget& target);
  const ViewCommand* DrawMore(std::size_t first, const ViewTarget& target);
  bool DrawButton(const ViewCommand& command, bool lit);
  void DrawHelp(std::optional<bool> wanted);
  void DrawHead(const PanelContents& contents, const ViewTarget& target);
  void DrawSelection(const std::string& name);
  bool DrawHeading(const char* label, bool unfold = false);
  bool FindFolded(const PanelContents& contents, const ViewTarget& target) const;
  void Fold(bool wanted, const ViewTarget& target);
  float FindWidth() const;
  float GetRightOfKeys() const;
  static Room FindRoom(const PanelContents& contents, float right);
  void NoteReach();
  bool NoteItem(const ViewCommand& command, bool on);
  bool NoteItem(int id, const char* name, zovhost::FocusRole role, bool on, bool enabled = true);
  bool OnHelpKey(const zovhost::WindowEvent& event);
  bool ScrollHelp(double lines);
  void NoteTip(int id, const char* text);

  const std::function<void()> requestFrame;
  bool visible = true;
  std::optional<bool> helpWanted;  // to be unfolded, or folded in
  bool helpOpen = false;
  int framesToHelp = 0;      // in which the panel scrolls to it
  bool openForHelp = false;  // as long as the help was asked for, whatever was chosen
  bool folded = false;
  float reach = 0.0F;
  PanelWords words;
  PanelText nameText;
  PanelText countText;
  PanelText selectionText;
  PanelText languageText;
  NamedViewsPanel namedViews;
  zovhost::PanelTip tip;
  std::vector<Item> items;
  std::optional<int> pressed;  // by the identifier of an item
  std::optional<int> focused;
  bool broughtIntoSight = false;
  int helpId = 0;              // of its heading
  double linesToScroll = 0.0;  // by keys on that
  float linesOfPage = 0.0F;
  float linesAbove = 0.0F;  // of the help, that are scrolled out of sight
};

}  // namespace zovview
