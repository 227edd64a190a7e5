#include "korvane/center_tool.h"

#include "interaction/tools/pivot_marker.h"
#include "interaction/tools/rewind_record.h"
#include "korvane/icon2d.h"
#include "render/scene_pick.h"

namespace Korvane {

namespace {

constexpr double MOVE_DURATION = 0.5;  // seconds
constexpr double EASE_END = 1.0;       // eased all the way

bool IsInView(int x, int y, const ApplicationParameters& parameters) {
  return x >= 0 && x <= parameters.viewport_width && y >= 0 && y <= parameters.viewport_height;
}

}  // namespace

CenterTool::CenterTool(HelmDisc* disc, TrackMenu* menu, StringID label)
    : helmDisc(disc), trackMenu(menu), pivotLabel(label) {
  SetCursorID(CURSOR_ARROW);
}
CenterTool::~CenterTool() = default;

void CenterTool::Activate() {
  if (hintHUD == nullptr && renderer != nullptr) hintHUD = renderer->GetStringTexture(STRING_OFF_MODEL);
  SetViewHUDOffset(Vector2(0.0, hintHUD != nullptr ? hintHUD->GetHeight() : 0.0));
  SetDrawOnlyWhileOperating(false);
}

void CenterTool::Deactivate() {
  if (hintHUD == nullptr) return;
  if (viewportHUD == hintHUD) viewportHUD = nullptr;  // the renderer may destroy it now
  hintHUD = renderer != nullptr ? renderer->ReleaseStringTexture(STRING_OFF_MODEL) : nullptr;
}

void CenterTool::UpdatePivotPosition(int x, int y) {
  if (cameraOperations == nullptr) return;
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  CameraParameters camera = QueryCamera(*cameraOperations);
  Vector3 point;
  onModel = IsInView(x, y, parameters) && PickPoint(renderer, parameters, camera, x, y, point);
  if (onModel) camera.pivot = point;
  PlacePivotBall(pivotBall, camera, onModel);
  ApplyIfFinite(*cameraOperations, camera);
  cameraOperations->RequestApplicationUpdate();
}

bool CenterTool::OnMouseDown(int x, int y) {
  const bool result = Tool::OnMouseDown(x, y);
  if (animating) return result;
  if (cameraOperations == nullptr) return false;
  if (!operating) savedPivot = QueryCamera(*cameraOperations).pivot;  // else a release went missing
  operating = true;
  if (pivotBall != nullptr) pivotBall->SetLabel(pivotLabel);
  UpdatePivotPosition(x, y);
  return true;
}

bool CenterTool::OnMouseMove(int x, int y) {
  if (operating && !animating) UpdatePivotPosition(x, y);
  return true;
}

bool CenterTool::OnMouseUp(int x, int y) {
  const bool result = Tool::OnMouseUp(x, y);
  if (animating) return result;
  const bool pressed = operating;
  operating = false;
  if (cameraOperations == nullptr) return false;
  UpdatePivotPosition(x, y);
  HidePivotBall(pivotBall);
  if (pressed) {
    SetCursorID(CURSOR_ARROW);
    if (onModel) {
      BeginCenterShot();
    } else {
      RestorePivot();
    }
  }
  onModel = false;
  cameraOperations->RequestApplicationUpdate();
  return true;
}

void CenterTool::BeginCenterShot() {
  BeginRecord(rewindHistory, cameraOperations);
  CenterShotParameters shot;
  shot.point = QueryCamera(*cameraOperations).pivot;
  shot.easeEnd = EASE_END;
  shot.duration = MOVE_DURATION;
  animating = true;
  cameraOperations->BeginShot(shot);
  if (pivotBall == nullptr) return;
  pivotBall->SetLabel(pivotLabel);
  pivotBall->SetVisible(true);
}

void CenterTool::RestorePivot() {
  CameraParameters camera = QueryCamera(*cameraOperations);
  camera.pivot = savedPivot;
  ApplyIfFinite(*cameraOperations, camera);
}

void CenterTool::OnDraw() {
  if (cameraOperations == nullptr) return;
  UpdateNotes();
  if (animating) {
    if (HasShotEnded()) {
      HidePivotBall(pivotBall);
      EndRecord(rewindHistory, cameraOperations);
      animating = false;
    }
    SampleRecord(rewindHistory, cameraOperations);
  }
  Tool::OnDraw();
}

void CenterTool::UpdateNotes() {
  if (hintHUD != nullptr && !onModel && !animating) viewportHUD = hintHUD;
  if (!operating) return;
  SetCursorID(onModel ? CURSOR_ARROW : CURSOR_NO_TARGET);
  DynamicIcon2D* const missHUD = hintHUD != nullptr ? hintHUD : offModelHUD;
  viewportHUD = onModel ? nullptr : missHUD;
}

}  // namespace Korvane
