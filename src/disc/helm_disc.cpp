#include "korvane/helm_disc.h"

#include "korvane/camera_operations.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"

namespace Korvane {

HelmDisc::HelmDisc() : history(std::make_unique<RewindHistory>()) {}
HelmDisc::~HelmDisc() = default;

void HelmDisc::SetKorvane(CameraOperations* hub) { cameraOperations = hub; }
CameraOperations* HelmDisc::GetKorvane() const { return cameraOperations; }
void HelmDisc::SetRenderer(Renderer* value) { renderer = value; }
bool HelmDisc::Create() { return true; }
bool HelmDisc::Destroy() { return true; }

void HelmDisc::SetActiveDisc(DiscType /*type*/) {}
DiscType HelmDisc::GetActiveDisc() const { return DiscType::None; }
void HelmDisc::DrawOverlay() {}
bool HelmDisc::OpenMenu() { return false; }
bool HelmDisc::OnMouseMove(int /*x*/, int /*y*/) { return false; }
bool HelmDisc::OnLeftMouseDown(int /*x*/, int /*y*/) { return false; }
bool HelmDisc::OnLeftMouseUp(int /*x*/, int /*y*/) { return false; }
bool HelmDisc::OnKeyDown(KeyID /*key*/) { return false; }
bool HelmDisc::OnKeyUp(KeyID /*key*/) { return false; }

bool HelmDisc::GetEnabled() const { return activeTrackMenu != nullptr && activeTrackMenu->GetEnabled(); }

void HelmDisc::SetEnabled(bool enabled) {
  if (activeTrackMenu != nullptr && !activeTrackMenu->IsLeftButtonDown())
    activeTrackMenu->SetEnabled(enabled);
}

void HelmDisc::SetVisible(bool value) {
  if (visible == value) return;
  visible = value;
  if (cameraOperations != nullptr) cameraOperations->RequestApplicationUpdate();
}

void HelmDisc::SetViewportSize(int width, int height) {
  viewportWidth = width;
  viewportHeight = height;
}

void HelmDisc::SetWelcomeMenuPosition(int x, int y) {
  welcomeX = x;
  welcomeY = y;
}

bool HelmDisc::IsOverWelcome() const {
  return overWelcome && welcomeTrackMenu != nullptr && welcomeTrackMenu->GetVisible();
}

bool HelmDisc::WantCursorWrapping() const {
  return activeTrackMenu != nullptr && activeTrackMenu->GetActiveRegion().wrap;
}

CursorID HelmDisc::GetCurrentCursor() const {
  return activeTrackMenu != nullptr ? activeTrackMenu->GetMenuCursorID() : CURSOR_ARROW;
}

}  // namespace Korvane
