#include "viewer_view_manager.h"

#include "korvane/helm_disc.h"
#include "korvane/tool.h"
#include "view_tools.h"
#include "zovhost/view_hub.h"

namespace zovview {

namespace {

constexpr int WELCOME_SIZE = 512;  // pixels, of the welcome screen's picture

}  // namespace

ViewerViewManager::ViewerViewManager(zovhost::ViewHub& hub) {
  SetKorvane(&hub);
  for (const ViewTool& tool : GetViewTools()) AddTool(tool.id, tool.make());
  SetActiveTool(TOOL_ORBIT);
}

ViewerViewManager::~ViewerViewManager() = default;

// ---- life ----

bool ViewerViewManager::Create() {
  if (!WindowViewManager::Create()) return false;
  notes = std::make_unique<Notes>(*renderer);
  for (const ViewTool& row : GetViewTools()) {
    Korvane::Tool& tool = *tools.at(row.id);
    tool.SetMouseHUD(notes->Get(row.mouseNote));
    if (row.addNotes != nullptr) row.addNotes(tool, *notes);
  }
  return true;
}

bool ViewerViewManager::Destroy() {
  Cancel();
  notes.reset();
  return WindowViewManager::Destroy();
}

void ViewerViewManager::Refresh() {
  WindowViewManager::Refresh();
  if (helmDisc == nullptr) return;
  helmDisc->SetWelcomeMenuPosition((viewportWidth - WELCOME_SIZE) / 2, (viewportHeight - WELCOME_SIZE) / 2);
}

// ---- the active tool ----

bool ViewerViewManager::OnLeftMouseDown(int x, int y) {
  ShowViewNote();
  return WindowViewManager::OnLeftMouseDown(x, y);
}

bool ViewerViewManager::WantToolClicks() const {
  const ViewTool* const row = FindViewTool(activeToolID);
  return row == nullptr || row->usesClicks;
}

// A tool may have put another note there.
void ViewerViewManager::ShowViewNote() {
  const ViewTool* const row = FindViewTool(activeToolID);
  if (row == nullptr || activeTool == nullptr || renderer == nullptr) return;
  if (activeTool->IsOperating() || row->viewNote == Korvane::STRING_NONE) return;
  activeTool->SetViewportHUD(notes != nullptr ? notes->Get(row->viewNote) : nullptr);
}

}  // namespace zovview
