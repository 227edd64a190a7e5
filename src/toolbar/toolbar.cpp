#include "korvane/toolbar.h"

namespace Korvane {

Toolbar::Toolbar() = default;
Toolbar::~Toolbar() = default;

bool Toolbar::Create() { return true; }
bool Toolbar::Destroy() { return true; }

void Toolbar::Draw() {}
bool Toolbar::OnMouseMove(int /*x*/, int /*y*/) { return false; }
bool Toolbar::OnLeftMouseDown(int /*x*/, int /*y*/) { return false; }
bool Toolbar::OnLeftMouseUp(int /*x*/, int /*y*/) { return false; }
bool Toolbar::OnRightMouseDown(int /*x*/, int /*y*/) { return false; }
bool Toolbar::OnRightMouseUp(int /*x*/, int /*y*/) { return false; }

void Toolbar::SetViewportSize(int width, int height) {
  viewportWidth = width;
  viewportHeight = height;
}

void Toolbar::SetSizeLimits(int width, int height) {
  sizeLimitWidth = width;
  sizeLimitHeight = height;
}

void Toolbar::SetRibbonSize(int width, int height) {
  ribbonWidth = width;
  ribbonHeight = height;
}

}  // namespace Korvane
