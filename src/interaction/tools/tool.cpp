#include "korvane/tool.h"

#include <cstdint>
#include <cstdlib>

#include "camera/pixels.h"
#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/renderer.h"
#include "render/full_viewport.h"

namespace Korvane {

namespace {

constexpr double MOUSE_NOTE_DROP = 64.0;  // pixels below the cursor

std::int64_t Distance(int a, int b) { return std::abs(std::int64_t{a} - b); }

}  // namespace

Tool::Tool() = default;
Tool::~Tool() = default;

void Tool::SetKorvane(CameraOperations* hub) { cameraOperations = hub; }
void Tool::SetRenderer(Renderer* value) { renderer = value; }
void Tool::SetRewindHistory(RewindHistory* history) { rewindHistory = history; }

void Tool::OnDraw() {
  if (!operating && drawOnlyWhileOperating) return;
  DrawNotes();
  if (cursorID != CURSOR_NONE && renderer != nullptr) renderer->SetCursorID(cursorID);
}

void Tool::DrawNotes() {
  if (cameraOperations == nullptr || renderer == nullptr) return;
  if (mouseHUD == nullptr && viewportHUD == nullptr) return;
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  const int width = parameters.viewport_width;
  const int height = parameters.viewport_height;
  if (mouseHUD != nullptr) {
    mouseHUD->SetPosition(
        {static_cast<double>(WrapIntoView(mouseX, width)), WrapIntoView(mouseY, height) - MOUSE_NOTE_DROP});
  }
  if (viewportHUD != nullptr) {
    viewportHUD->SetPosition(Vector2(width * 0.5, viewportHUD->GetHeight()) + viewHUDOffset);
  }
  const CameraParameters& camera = cameraOperations->GetCameraParameters();
  if (!renderer->BeginRender(FullViewport(parameters), camera, Renderer::RENDER_OVERLAY)) return;
  for (DynamicIcon2D* const note : {mouseHUD, viewportHUD}) {
    if (note != nullptr) renderer->Render(note);
  }
  renderer->EndRender();
}

bool Tool::OnMouseMove(int x, int y) {
  mouseX = x;
  mouseY = y;
  const bool beyond = Distance(x, mouseDownX) > dragThreshold || Distance(y, mouseDownY) > dragThreshold;
  if (mouseDown && beyond) mouseDragged = true;
  return animating;
}

bool Tool::OnMouseWheel(int x, int y, int /*delta*/) {
  mouseX = x;
  mouseY = y;
  return animating;
}

bool Tool::OnMouseDown(int x, int y) {
  mouseX = mouseDownX = x;
  mouseY = mouseDownY = y;
  mouseDown = true;
  mouseDragged = false;
  return animating;
}

bool Tool::OnMouseUp(int x, int y) {
  mouseDown = false;
  mouseX = x;
  mouseY = y;
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

bool Tool::HasShotEnded() const {
  return animating && (cameraOperations == nullptr || cameraOperations->GetActiveShot() == nullptr);
}

}  // namespace Korvane
