#include "korvane/tool.h"

#include <cstdint>
#include <cstdlib>

#include "camera/pixels.h"
#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/pivot_ball.h"
#include "korvane/renderer.h"
#include "korvane/shot_watch.h"
#include "render/display_scale.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

constexpr double MOUSE_NOTE_DROP = 64.0;  // pixels below the cursor

std::int64_t Distance(int a, int b) { return std::abs(std::int64_t{a} - b); }

}  // namespace

Tool::Tool() = default;
Tool::~Tool() = default;

void Tool::SetKorvane(CameraOperations* hub) {
  cameraOperations = hub;
  recordedHub.Set(hub);
}
void Tool::SetRenderer(Renderer* value) { renderer = value; }
void Tool::SetPivotBall(PivotBall* ball) { pivotBall.Set(ball); }

// What was opened in another history closes while that is still there.
void Tool::SetRewindHistory(RewindHistory* history) {
  rewindHistory = history;
  if (!record.IsOpenIn(history)) record.End(recordedHub.Get());
}

void Tool::OnDraw() { DrawTool(); }

bool Tool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  return animating;
}

bool Tool::OnMouseWheel(int x, int y, int /*delta*/) {
  NotePosition(x, y);
  return animating;
}

bool Tool::OnMouseDown(int x, int y) {
  NotePress(x, y);
  return animating;
}

bool Tool::OnMouseUp(int x, int y) {
  NoteRelease(x, y);
  return animating;
}

bool Tool::OnKeyDown(KeyID key) {
  if (key == KEY_SHIFT) shiftKeyDown = true;
  if (key == KEY_CONTROL) controlKeyDown = true;
  return false;
}

bool Tool::OnKeyUp(KeyID key) {
  if (key == KEY_SHIFT) shiftKeyDown = false;
  if (key == KEY_CONTROL) controlKeyDown = false;
  return false;
}

void Tool::Activate() {}
void Tool::Deactivate() {}

// ---- what is noted ----

void Tool::NotePosition(int x, int y) {
  mouseX = x;
  mouseY = y;
}

void Tool::NoteMove(int x, int y) {
  NotePosition(x, y);
  const bool beyond = Distance(x, mouseDownX) > dragThreshold || Distance(y, mouseDownY) > dragThreshold;
  if (mouseDown && beyond) mouseDragged = true;
}

void Tool::NotePress(int x, int y) {
  NotePosition(x, y);
  mouseDownX = x;
  mouseDownY = y;
  mouseDown = true;
  mouseDragged = false;
}

void Tool::NoteRelease(int x, int y) {
  mouseDown = false;
  NotePosition(x, y);
}

// ---- a drag, and a shot ----

bool Tool::UpdateDrag(OperationType type, int x, int y) {
  if (!operating || cameraOperations == nullptr) return animating;
  const int row = FlipRow(cameraOperations->GetApplicationParameters(), y);
  cameraOperations->UpdateOperationParams(x, row, type);
  return true;
}

void Tool::SampleRecord() {
  if (cameraOperations != nullptr) record.Sample(cameraOperations->GetCameraParameters());
}

void Tool::EndGesture(int x, int y) {
  cutOffs.Cut();
  {
    const Lifeline::Watch alive(lifeline);
    if (operating && endGesture != nullptr) {
      endGesture(*this);
    } else if (operating) {
      OnMouseUp(x, y);
    }
    if (!alive || !animating) return;
  }
  CutFlight();
}

// The tool's own shot runs in the hub.
bool Tool::IsFlying() const {
  const std::uint64_t number = cameraOperations != nullptr ? cameraOperations->GetShotNumber() : 0;
  if (flightBegins) return number != 0 && number != flight;
  return number != 0 && (number == flight || flight == ANY_SHOT);
}

// What the host has begun in its place goes on.
void Tool::CutFlight() {
  const Lifeline::Watch alive(lifeline);
  if (IsFlying()) {
    flightBegins = false;
    cameraOperations->EndShot();
  }
  if (!alive) return;
  flightCut = true;
  OnDraw();  // finds the shot over
  if (alive) flightCut = false;
}

bool Tool::HasShotEnded() const { return animating && (flightCut || IsShotOver(cameraOperations)); }

// ---- drawing ----

void Tool::DrawDrag() {
  const Lifeline::Watch alive(lifeline);
  DrawTool();
  if (alive && operating) SampleRecord();
}

void Tool::DrawTool() {
  if (!operating && drawOnlyWhileOperating) return;
  const Lifeline::Watch alive(lifeline);
  DrawNotes();
  if (alive && cursorID != CURSOR_NONE && renderer != nullptr) renderer->SetCursorID(cursorID);
}

void Tool::DrawNotes() {
  if (cameraOperations == nullptr || renderer == nullptr) return;
  if (mouseHUD == nullptr && viewportHUD == nullptr) return;
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  const int width = parameters.viewport_width;
  const int height = parameters.viewport_height;
  if (mouseHUD != nullptr) {
    mouseHUD->SetPosition({static_cast<double>(WrapIntoView(mouseX, width)),
                           WrapIntoView(mouseY, height) - MOUSE_NOTE_DROP * PixelsPerPoint(parameters)});
  }
  if (viewportHUD != nullptr) {
    viewportHUD->SetPosition(Vector2(width * 0.5, viewportHUD->GetHeight()) + viewHUDOffset);
  }
  const Lifeline::Watch alive(lifeline);
  const FullViewPass pass(renderer, *cameraOperations);
  if (!pass) return;
  // Asked for anew each time: the host may take one away, and destroy it, while it begins or draws.
  for (DynamicIcon2D* Tool::*const note : {&Tool::mouseHUD, &Tool::viewportHUD}) {
    if (alive && this->*note != nullptr) pass->Render(this->*note);
  }
}

}  // namespace Korvane
