#include "commands/bar_commands.h"

#include "commands/view_bars.h"
#include "korvane/view_manager.h"

namespace zovview {

void ToggleBar(const ViewTarget& target) {
  if (target.bars == nullptr) return;
  Korvane::NavigationBar& bar = target.bars->GetBar();
  bar.SetVisible(!bar.IsVisible());
  target.manager.Refresh();
}
bool IsBarShown(const ViewTarget& target) {
  return target.bars != nullptr && target.bars->GetBar().IsVisible();
}

void ToggleTools(const ViewTarget& target) {
  if (target.bars != nullptr) target.bars->SetToolsVisible(!target.bars->AreToolsVisible());
}
bool AreToolsShown(const ViewTarget& target) {
  return target.bars != nullptr && target.bars->AreToolsVisible();
}

void ToggleCube(const ViewTarget& target) {
  target.manager.SetOrientorVisible(!target.manager.IsOrientorVisible());
  target.hub.RequestApplicationUpdate();
}
bool IsCubeShown(const ViewTarget& target) { return target.manager.IsOrientorVisible(); }

void LinkBar(const ViewTarget& target) { target.manager.SetNavigationBarLinkedToOrientor(true); }
bool IsBarLinked(const ViewTarget& target) { return target.manager.IsNavigationBarLinkedToOrientor(); }

void MoveBar(const ViewTarget& target, Korvane::Toolbar::Position edge) {
  if (target.bars != nullptr) target.bars->MoveBar(edge);
}
bool IsBarAt(const ViewTarget& target, Korvane::Toolbar::Position edge) {
  return target.bars != nullptr && target.bars->IsBarAt(edge);
}

}  // namespace zovview
