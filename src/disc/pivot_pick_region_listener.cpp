#include "disc/pivot_pick_region_listener.h"

#include <utility>

#include "camera/host_camera.h"
#include "camera/pixels.h"
#include "korvane/pivot_ball.h"
#include "render/scene_pick.h"

namespace Korvane {

void PivotPickRegionListener::OnTrackMenuActivate(bool active) {
  const bool picks = IsMouseDown();
  DiscRegionListener::OnTrackMenuActivate(active);
  if (!active && picks) EndPick();
}

void PivotPickRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  CameraParameters camera;
  hit = false;
  Press(*this)
      .HideMenu()
      .ThenWithHub([&](const CameraOperations& hub) { camera = QueryCamera(hub); })
      .ThenWithHub([&](const CameraOperations& hub) {
        savedPivot = {&hub, camera.pivot};
        UpdatePivotPosition(x, y);
      });
}

void PivotPickRegionListener::UpdatePivotPosition(int x, int y) {
  CameraParameters camera;
  Vector3 point;
  bool found = false;
  Press(*this)
      .ThenWithHub([&](const CameraOperations& hub) { camera = QueryCamera(hub); })
      .ThenWithHub([&](const CameraOperations& hub) {
        const ApplicationParameters& parameters = hub.GetApplicationParameters();
        found = IsInView(parameters, x, y) && PickPoint(GetRenderer(), parameters, camera, x, y, point);
      })
      .ThenWithHub([&](CameraOperations& hub) {
        hit = found;
        if (found) camera.pivot = point;
        if (PivotBall* const ball = GetPivotBall()) {
          ball->SetVisible(found);
          ball->UpdateSize(camera);
        }
        ApplyIfFinite(hub, camera);
      })
      .ThenWithHub([](CameraOperations& hub) { hub.RequestApplicationUpdate(); });
}

void PivotPickRegionListener::OnMouseMove(int x, int y) {
  DiscRegionListener::OnMouseMove(x, y);
  if (IsMouseDown()) UpdatePivotPosition(x, y);
}

void PivotPickRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  ShowMenu();
  EndPick();
}

void PivotPickRegionListener::EndPick() {
  SetPivotBallVisible(false);
  const BorrowedPivot pivot = std::exchange(savedPivot, {});
  CameraOperations* const hub = GetHub();
  if (hit || hub == nullptr || hub != pivot.lender) return;
  CameraParameters camera = QueryCamera(*hub);
  camera.pivot = pivot.point;
  if (CameraOperations* const still = GetHub()) ApplyIfFinite(*still, camera);
}

void PivotPickRegionListener::OnDraw() {
  DiscRegionListener::OnDraw();
  Renderer* const renderer = GetRenderer();
  if (IsMouseDown() && !hit && renderer != nullptr) renderer->SetCursorID(CURSOR_NO_TARGET);
}

}  // namespace Korvane
