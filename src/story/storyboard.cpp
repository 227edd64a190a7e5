#include "korvane/storyboard.h"

namespace Korvane {

Storyboard::Storyboard() = default;
Storyboard::~Storyboard() = default;

void Storyboard::SetKorvane(CameraOperations* hub) { cameraOperations = hub; }
void Storyboard::SetRenderer(Renderer* value) { renderer = value; }
void Storyboard::SetRewindHistory(RewindHistory* history) { rewindHistory = history; }
bool Storyboard::Create() { return true; }
bool Storyboard::Destroy() { return true; }

void Storyboard::Draw() {}
bool Storyboard::OnMouseMove(int /*x*/, int /*y*/) { return false; }
bool Storyboard::OnLeftMouseDown(int /*x*/, int /*y*/) { return false; }
bool Storyboard::OnLeftMouseUp(int /*x*/, int /*y*/) { return false; }
bool Storyboard::OnRightMouseDown(int /*x*/, int /*y*/) { return false; }
bool Storyboard::OnKeyDown(KeyID /*key*/) { return false; }
bool Storyboard::OnKeyUp(KeyID /*key*/) { return false; }
bool Storyboard::OpenMenu() { return false; }

void Storyboard::SetPosition(int left, int bottom) {
  x = left;
  y = bottom;
}

void Storyboard::SetViewportSize(int width, int height) {
  viewportWidth = width;
  viewportHeight = height;
}

}  // namespace Korvane
