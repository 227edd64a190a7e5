#include "korvane/center_tool.h"

#include <utility>

#include "interaction/tools/tool_gesture.h"
#include "korvane/icon2d.h"

namespace Korvane {

namespace {

constexpr double MOVE_DURATION = 0.5;  // seconds
constexpr double EASE_END = 1.0;       // eased all the way

}  // namespace

CenterTool::CenterTool(HelmDisc* disc, TrackMenu* menu, StringID label)
    : helmDisc(disc), trackMenu(menu), pivotLabel(label) {
  SetCursorID(CURSOR_ARROW);
  // As by a release outside of the view: nothing flies, and the old pivot comes back.
  SetGestureEnd([](Tool& tool) { tool.OnMouseUp(-1, -1); });
}
CenterTool::~CenterTool() = default;

void CenterTool::SetRenderer(Renderer* value) {
  Tool::SetRenderer(value);
  if (active) TakeHint();
}

void CenterTool::Activate() {
  active = true;
  SetDrawOnlyWhileOperating(false);
  TakeHint();
}

void CenterTool::Deactivate() {
  active = false;
  DropHintNote();
  hint.GiveBack();
}

void CenterTool::TakeHint() {
  DropHintNote();
  const Lifeline::Watch alive(GetLifeline());
  const DynamicIcon2D* const note = hint.Take(renderer, STRING_OFF_MODEL);
  if (alive) SetViewHUDOffset(Vector2(0.0, note != nullptr ? note->GetHeight() : 0.0));
}

// Its renderer may destroy it now, or is gone.
void CenterTool::DropHintNote() {
  if (hintNote != nullptr && viewportHUD == hintNote) viewportHUD = nullptr;
  hintNote = nullptr;
}

void CenterTool::UpdatePivotPosition(int x, int y) {
  CameraParameters camera;
  Vector3 point;
  bool found = false;
  Steps(*this)
      .Query(camera)
      .Then([&] {
        const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
        found = IsInView(parameters, x, y) && PickPoint(renderer, parameters, camera, x, y, point);
      })
      .Then([&] {
        onModel = found;
        if (found) camera.pivot = point;
        PlacePivotBall(pivotBall.Get(), camera, found);
      })
      .Apply(camera)
      .Then([&] { cameraOperations->RequestApplicationUpdate(); });
}

bool CenterTool::OnMouseDown(int x, int y) {
  NotePress(x, y);
  if (cameraOperations == nullptr) return false;
  if (animating) return true;
  if (IsClosing()) return false;
  if (!operating) savedPivot = {};  // else a release went missing
  CameraParameters camera;
  Opening opening(*this);
  if (savedPivot.lender != cameraOperations) {
    opening.Query(camera).Then([&] { savedPivot = {cameraOperations, camera.pivot}; });
  }
  opening.Then([&] { LabelPivotBall(); }).Then([&] { UpdatePivotPosition(x, y); });
  return true;
}

bool CenterTool::OnMouseMove(int x, int y) {
  if (operating) UpdatePivotPosition(x, y);
  return true;
}

bool CenterTool::OnMouseUp(int x, int y) {
  NoteRelease(x, y);
  if (cameraOperations != nullptr && (animating || IsClosing())) return true;
  const bool pressed = operating;
  const bool hidesBall = pressed || hidesStrayBall;
  const BorrowedPivot pivot = std::exchange(savedPivot, {});
  Closing closing(*this);
  if (cameraOperations == nullptr) return false;
  const Release release(*this);
  Steps steps(*this);
  steps.Then([&] { UpdatePivotPosition(x, y); });
  if (hidesBall) closing.HidePivotBall();
  if (!pressed) return true;
  // Whatever keeps the camera from flying, it has its old pivot then.
  if (!(release && EndPress(closing))) closing.RestorePivot(pivot).EndRecord();
  if (closing) onModel = false;
  steps.Then([&] { cameraOperations->RequestApplicationUpdate(); });
  return true;
}

// Whether the camera flies to what was pressed.
bool CenterTool::EndPress(Closing& closing) {
  SetCursorID(CURSOR_ARROW);
  return onModel && BeginCenterShot(closing);
}

// False when the host has taken the hub away or destroyed the tool before the shot.
bool CenterTool::BeginCenterShot(Closing& closing) {
  CameraParameters camera;
  bool flies = false;
  Release steps(*this);
  steps.Query(camera).Then([&] { closing.BeginRecord(rewindHistory, camera); }).Query(camera).Then([&] {
    flies = closing.LeaveRecord();
  });
  if (!flies) return false;
  CenterShotParameters shot;
  shot.point = camera.pivot;
  shot.easeEnd = EASE_END;
  shot.duration = MOVE_DURATION;
  Flight(*this, shot).Then([&] { LabelPivotBall(); }).Then([&] {
    if (PivotBall* const ball = pivotBall.Get()) ball->SetVisible(true);
  });
  return true;
}

void CenterTool::LabelPivotBall() {
  if (PivotBall* const ball = pivotBall.Get()) ball->SetLabel(pivotLabel);
}

void CenterTool::OnDraw() {
  if (cameraOperations == nullptr) return;
  const Lifeline::Watch alive(GetLifeline());
  UpdateNotes();
  if (animating) FollowShot();
  if (alive) DrawTool();
}

// The frame that finds the shot over is sampled, too.
void CenterTool::FollowShot() {
  Release steps(*this);
  if (HasShotEnded()) Closing(*this).HidePivotBall().EndRecord();
  steps.Then([&] {
    if (rewindHistory != nullptr) rewindHistory->AddElementSubrecord(cameraOperations->GetCameraParameters());
  });
}

void CenterTool::UpdateNotes() {
  DynamicIcon2D* const hintHUD = hint.Get();
  if (hintHUD != nullptr) hintNote = hintHUD;
  if (hintHUD != nullptr && !onModel && !animating) viewportHUD = hintHUD;
  if (!operating) return;
  SetCursorID(onModel ? CURSOR_ARROW : CURSOR_NO_TARGET);
  DynamicIcon2D* const missHUD = hintHUD != nullptr ? hintHUD : offModelHUD;
  viewportHUD = onModel ? nullptr : missHUD;
}

}  // namespace Korvane
