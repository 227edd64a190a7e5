#include "input/style_drag.h"

#include "korvane/pivot_ball.h"

namespace zovhost {

using Korvane::OPERATION_ROLL;

// ---- the roll ----

int RollTool::FlipRow(int y) const {
  return cameraOperations->GetApplicationParameters().viewport_height - y - 1;
}

bool RollTool::OnMouseDown(int x, int y) {
  NotePress(x, y);
  if (!CanOperate() || cameraOperations->GetApplicationParameters().preserve_orbit_up_direction) return false;
  SetOperating(true);
  cameraOperations->BeginOperation(OPERATION_ROLL, x, FlipRow(y));
  Korvane::CameraParameters camera;
  cameraOperations->QueryCameraParameters(camera);
  if (Korvane::PivotBall* const ball = GetPivotBall()) {
    ball->SetPosition(camera.pivot);
    ball->UpdateSize(camera);
    ball->SetVisible(true);
  }
  record.Begin(rewindHistory, camera);
  return true;
}

bool RollTool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  if (!IsOperating()) return false;
  return cameraOperations->UpdateOperationParams(x, FlipRow(y), OPERATION_ROLL);
}

bool RollTool::OnMouseUp(int x, int y) {
  NoteRelease(x, y);
  if (!IsOperating()) return false;
  SetOperating(false);
  cameraOperations->EndOperation(OPERATION_ROLL);
  if (Korvane::PivotBall* const ball = GetPivotBall()) ball->SetVisible(false);
  record.End(cameraOperations);
  return true;
}

void RollTool::OnDraw() {
  DrawTool();
  if (IsOperating()) SampleRecord();
}

// ---- the drag ----

StyleDrag::StyleDrag() {
  zoom.SetClickZoomEnabled(false);
  zoom.SetConstrainZoom(true);
}

Korvane::Tool* StyleDrag::FindTool(NavigationMove move) {
  switch (move) {
    case NavigationMove::Zoom:
      return &zoom;
    case NavigationMove::Look:
      return &look;
    case NavigationMove::Roll:
      return &roll;
    case NavigationMove::Orbit:
    case NavigationMove::Pan:
      break;
  }
  return nullptr;
}

bool StyleDrag::Begin(NavigationMove move, const Partners& partners, int x, int y) {
  tool = FindTool(move);
  if (tool == nullptr) return false;
  tool->SetKorvane(partners.hub);
  tool->SetRenderer(partners.renderer);
  tool->SetRewindHistory(partners.history);
  tool->SetPivotBall(partners.ball);
  return tool->OnMouseDown(x, y) && tool->IsOperating();
}

bool StyleDrag::Move(int x, int y) { return IsOperating() && tool->OnMouseMove(x, y); }

bool StyleDrag::Key(Korvane::KeyID key, bool down) {
  if (!IsOperating()) return false;
  return down ? tool->OnKeyDown(key) : tool->OnKeyUp(key);
}

bool StyleDrag::End(int x, int y) {
  if (!IsOperating()) return false;
  tool->OnMouseUp(x, y);
  return true;
}

void StyleDrag::Draw() {
  if (IsOperating()) tool->OnDraw();
}

}  // namespace zovhost
