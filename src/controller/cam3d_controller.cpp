#include "korvane/cam3d_controller.h"

namespace Korvane {

Cam3DController::Cam3DController() = default;
Cam3DController::~Cam3DController() = default;

void Cam3DController::SetPivotBall(PivotBall* ball) { pivotBall = ball; }
PivotBall* Cam3DController::GetPivotBall() const { return pivotBall; }
void Cam3DController::SetRenderer(Renderer* value) { renderer = value; }
Renderer* Cam3DController::GetRenderer() const { return renderer; }
bool Cam3DController::Create() { return renderer != nullptr; }
bool Cam3DController::Destroy() { return true; }
void Cam3DController::Draw() {}
void Cam3DController::SetEnabled(bool value) { enabled = value; }
bool Cam3DController::GetEnabled() const { return enabled; }

}  // namespace Korvane
