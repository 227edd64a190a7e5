// A frame: the order of drawing is the order of stacking.
#include "interaction/view_manager/view_manager_doors.h"

namespace Korvane {

void ViewManager::OnDraw() {
  OnDrawInScene();
  OnDrawOverlay();
}

void ViewManager::OnDrawInScene() {
  if (pivotBall != nullptr) pivotBall->Draw();
}

void ViewManager::OnDrawOverlay() {
  using D = Doors;
  static constexpr Drawing WIDGETS[] = {
      {D::Do<&ViewManager::storyboard, &Storyboard::Draw>},
      {D::Call<&ViewManager::DrawNavigationTools>},
      {D::Call<&ViewManager::DrawActiveTool>},
      {D::Call<&ViewManager::DrawHelmDisc>, CleanScreen::Hides},
      {D::Call<&ViewManager::DrawOrientor>, CleanScreen::Hides},
      {D::Do<&ViewManager::navigationBar, &NavigationBar::Draw>, CleanScreen::Hides},
      {[](ViewManager& owner) { owner.toolbars.Notify([](Toolbar& toolbar) { toolbar.Draw(); }); }},
      {D::Do<&ViewManager::cam3DController, &Cam3DController::Draw>},
  };
  const CallOut calling(*this);
  const Borrowed<Renderer> queuing(renderer);  // may be taken away, or changed, within the frame
  if (renderer != nullptr) renderer->QueueSetCursorID(true);
  for (const Drawing& widget : WIDGETS) {
    if (!cleanScreen || widget.cleanScreen == CleanScreen::Stays) OrFail([&] { widget.draw(*this); });
  }
  if (Renderer* const open = queuing.Get()) CloseCursorQueue(*open);
}

// The view that the pointer is in says its shape, not the one that is drawn last.
void ViewManager::CloseCursorQueue(Renderer& pictures) const {
  if (pictures.MayHavePointer(pointerLife)) {
    pictures.QueueSetCursorID(false);
  } else {
    pictures.DropCursorQueue();
  }
}

void ViewManager::DrawNavigationTools() {
  using D = Doors;
  D::Do<D::Orbit, &Tool::OnDraw>(*this);
  D::Do<D::Pan, &Tool::OnDraw>(*this);
  D::Do<D::Zoom, &Tool::OnDraw>(*this);
  if (navigation.present != Navigation::Zooming || navigation.zoomTool->IsOperating()) return;
  EndMiddleMouseNavigation();  // the wheel has been at rest long enough
  OnMouseMove(mouse.x, mouse.y);
}

void ViewManager::DrawActiveTool() {
  Tool* const tool = activeTool;
  if (tool == nullptr) return;
  tool->OnDraw();
  if (activeTool != tool || tool->IsOperating() || !WantActiveToolEnabled()) return;
  if (activeTool == tool && renderer != nullptr) renderer->SetCursorID(tool->GetCursorID());
}

void ViewManager::DrawHelmDisc() {
  HelmDisc* const disc = helmDisc;
  if (disc == nullptr) return;
  disc->SetEnabled(WantHelmDiscEnabled());
  disc->SetVisible(WantHelmDiscVisible());
  disc->DrawOverlay();
}

void ViewManager::DrawOrientor() {
  Orientor* const cube = orientor;
  if (cube == nullptr) return;
  const bool disabled = cube->GetParameters().disabled;
  cube->GetParameters().disabled = disabled || !WantOrientorEnabled();
  cube->Draw();
  cube->GetParameters().disabled = disabled;
  if (orientor != cube) return;
  const CursorID cursor = GetOrientorCursor(*cube);
  if (renderer != nullptr && cursor != CURSOR_NONE) renderer->SetCursorID(cursor);
}

// CURSOR_NONE: the cube asks for none.
CursorID ViewManager::GetOrientorCursor(const Orientor& cube) const {
  if (orientorDrag.seen) return orientorDrag.leftRegion ? CURSOR_ORBIT_CUBE : CURSOR_ORBIT;
  if (cube.IsMouseOnCompassPart() || cube.IsMouseOnViewableOverlayPart()) return CURSOR_ARROW;
  return cube.IsMouseOnGeometryPart() ? CURSOR_CUBE_PART : CURSOR_NONE;
}

bool ViewManager::OnSetCursor() {
  if (renderer == nullptr) return false;
  const CursorID cursor = renderer->GetCursorID();
  return cursor != CURSOR_NONE && renderer->SetCursorID(cursor);
}

}  // namespace Korvane
