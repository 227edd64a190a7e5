#include "views/viewer_view_manager.h"

#include "korvane/helm_disc.h"
#include "korvane/tool.h"
#include "views/view_tools.h"
#include "zovhost/view_hub.h"

namespace zovview {

namespace {

constexpr double WELCOME_SIZE = 512.0;  // points, of the welcome screen's picture

}  // namespace

ViewerViewManager::ViewerViewManager(zovhost::ViewHub& hub)
    : toolNote([&hub] { hub.RequestApplicationUpdate(); }) {
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
    if (row.id == activeToolID) toolNote.Choose(&tool, notes->Get(row.mouseNote), false);
    if (row.addNotes != nullptr) row.addNotes(tool, *notes);
  }
  return true;
}

bool ViewerViewManager::Destroy() {
  Cancel();
  toolNote.Choose(nullptr, nullptr, false);
  for (const auto& [id, tool] : tools) tool->SetMouseHUD(nullptr);
  notes.reset();
  return WindowViewManager::Destroy();
}

void ViewerViewManager::Refresh() {
  WindowViewManager::Refresh();
  PlaceWelcome();
}

void ViewerViewManager::PlaceWelcome() {
  if (helmDisc == nullptr) return;
  const double scale =
      cameraOperations != nullptr ? cameraOperations->GetApplicationParameters().pixels_per_point : 1.0;
  const auto size = static_cast<int>(WELCOME_SIZE * scale);
  helmDisc->SetWelcomeMenuPosition((viewportWidth - size) / 2, (viewportHeight - size) / 2);
}

// ---- the active tool ----

bool ViewerViewManager::OnLeftMouseDown(int x, int y) {
  ShowViewNote();
  const bool used = WindowViewManager::OnLeftMouseDown(x, y);
  if (activeTool != nullptr && activeTool->IsOperating()) toolNote.Follow(true);
  return used;
}

// A disc puts the tool away and brings it back, which names nothing.
bool ViewerViewManager::SetActiveTool(int id) {
  if (!WindowViewManager::SetActiveTool(id)) return false;
  const ViewTool* const row = FindViewTool(activeToolID);
  if (row == nullptr || activeToolID == namedTool) return true;
  namedTool = activeToolID;
  if (notes != nullptr) toolNote.Choose(activeTool, notes->Get(row->mouseNote), true);
  return true;
}

void ViewerViewManager::OnDrawOverlay() {
  WindowViewManager::OnDrawOverlay();
  toolNote.Follow(activeTool != nullptr && activeTool->IsOperating());
  if (renderer == nullptr || cameraOperations == nullptr || !WantActiveToolEnabled()) return;
  toolNote.Draw(*renderer, *cameraOperations, mouse.x, mouse.y);
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
