#include "korvane/walk_tool.h"

#include "camera/fly_operation.h"
#include "camera/pixels.h"
#include "interaction/tools/rewind_record.h"
#include "korvane/renderer.h"
#include "render/full_viewport.h"

namespace Korvane {

namespace {

// Fractions of the viewport, from its bottom left.
constexpr double START_X = 0.5;
constexpr double START_Y = 0.2;
constexpr double MOVING_OPACITY = 0.4;
constexpr double SHORTEST_INTERVAL = 1.0;  // seconds; below, a walk is one record

}  // namespace

WalkTool::WalkTool() : startIcon(TEXTURE_WALK_START), refusedIcon(TEXTURE_WALK_REFUSED) {
  SetCursorID(CURSOR_WALK);
}
WalkTool::~WalkTool() = default;

bool WalkTool::OnMouseDown(int x, int y) {
  if (operating) OnMouseUp(mouseX, mouseY);  // its release went missing
  const bool result = Tool::OnMouseDown(x, y);
  operating = CanOperate();
  if (operating) BeginWalk();
  if (!walking) SetViewportHUD(warningHUD);
  return operating || result;
}

void WalkTool::BeginWalk() {
  walking = cameraOperations->AutoSwitchToPerspectiveProjection();
  if (!walking) return;
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  const int startX = ToPixels(parameters.viewport_width * START_X);
  const int startY = ToPixels(parameters.viewport_height * START_Y);
  renderer->SetCursorPosition(startX, startY);
  cameraOperations->BeginOperation(OPERATION_FLY, startX, FlipRow(parameters, startY));
  BeginRecord(rewindHistory, cameraOperations);
  if (!HasRecordInterval()) return;
  historyTimer.Reset();
  historyTimer.Start();
}

bool WalkTool::HasRecordInterval() const { return rewindHistoryInterval >= SHORTEST_INTERVAL; }

bool WalkTool::OnMouseMove(int x, int y) {
  const bool result = Tool::OnMouseMove(x, y);
  if (!operating || cameraOperations == nullptr) return result;
  if (!walking) return true;
  const int row = FlipRow(cameraOperations->GetApplicationParameters(), y);
  cameraOperations->UpdateOperationParams(x, row, OPERATION_FLY);
  return true;
}

bool WalkTool::OnMouseUp(int x, int y) {
  const bool result = Tool::OnMouseUp(x, y);
  if (!operating) return result;
  operating = false;
  const bool walked = walking;
  walking = false;
  if (!walked || cameraOperations == nullptr) return true;
  cameraOperations->EndOperation(OPERATION_FLY);
  EndRecord(rewindHistory, cameraOperations);
  return true;
}

bool WalkTool::OnKeyDown(KeyID key) {
  const bool result = Tool::OnKeyDown(key);
  return UseKey(key, true) || result;
}

bool WalkTool::OnKeyUp(KeyID key) {
  const bool result = Tool::OnKeyDown(key);
  return UseKey(key, false) || result;
}

bool WalkTool::UseKey(KeyID key, bool pressed) {
  if (!operating || cameraOperations == nullptr) return false;
  if (key == KEY_UP || key == KEY_DOWN) {
    cameraOperations->UpdateOperationParams(key, pressed, OPERATION_ALL);
    return true;
  }
  FlyOperation* const fly = key == KEY_RUN ? GetFlyOperation() : nullptr;
  if (fly != nullptr) fly->SetMoveAccelerated(pressed);
  return false;
}

FlyOperation* WalkTool::GetFlyOperation() const {
  if (cameraOperations == nullptr) return nullptr;
  return dynamic_cast<FlyOperation*>(cameraOperations->GetActiveOperation(OPERATION_FLY));
}

CursorID WalkTool::GetWalkCursorID() const {
  const FlyOperation* const fly = operating && walking ? GetFlyOperation() : nullptr;
  return fly != nullptr ? fly->GetWalkCursorID() : CURSOR_WALK;
}

void WalkTool::OnDraw() {
  if (operating && cameraOperations != nullptr) {
    DrawStart();
    SetCursorID(GetWalkCursorID());
    if (walking && rewindHistory != nullptr) RecordWalk();
  }
  Tool::OnDraw();
}

void WalkTool::DrawStart() {
  if (renderer == nullptr) return;
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  const CameraParameters& camera = cameraOperations->GetCameraParameters();
  if (!renderer->BeginRender(FullViewport(parameters), camera, Renderer::RENDER_OVERLAY)) return;
  ResourceIcon2D& icon = walking ? startIcon : refusedIcon;
  const double size = 2.0 * parameters.fly_dead_zone_radius;
  icon.SetSize(size, size);
  icon.SetPosition({parameters.viewport_width * START_X, parameters.viewport_height * START_Y});
  const FlyOperation* const fly = GetFlyOperation();
  icon.SetOpacity(fly == nullptr || fly->IsInDeadZone() ? 1.0 : MOVING_OPACITY);
  renderer->Render(&icon);
  renderer->EndRender();
}

// A chain of records of the set interval, or a sample a frame.
void WalkTool::RecordWalk() {
  if (!HasRecordInterval()) {
    SampleRecord(rewindHistory, cameraOperations);
    return;
  }
  historyTimer.Lap();
  if (historyTimer.GetTotalTime() < rewindHistoryInterval) return;
  EndRecord(rewindHistory, cameraOperations);
  BeginRecord(rewindHistory, cameraOperations);
  historyTimer.Reset();
  historyTimer.Start();
}

}  // namespace Korvane
