#pragma once

#include <memory>

#include "views/tool_note.h"
#include "zovhost/window_view_manager.h"

namespace zovhost {
class ViewHub;
}

namespace zovview {

class Notes;

/// The view manager with the viewer's tools and what they show.
class ViewerViewManager : public zovhost::WindowViewManager {
 public:
  explicit ViewerViewManager(zovhost::ViewHub& hub);
  ~ViewerViewManager() override;

  /// Makes the notes of the tools besides.
  bool Create() override;
  bool Destroy() override;
  bool OnLeftMouseDown(int x, int y) override;
  bool SetActiveTool(int id) override;
  void OnDrawOverlay() override;
  /// Names the tool that was chosen last.
  const ToolNote& GetToolNote() const { return toolNote; }
  /// The welcome screen of the discs stands in the middle.
  void Refresh() override;
  /// In the middle, after a change of the scale too.
  void PlaceWelcome();

 protected:
  bool WantToolClicks() const override;

 private:
  void ShowViewNote();

  std::unique_ptr<Notes> notes;
  ToolNote toolNote;
  int namedTool = 0;
};

}  // namespace zovview
