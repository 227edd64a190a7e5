// Life, collaborators, settings and drawing. The other sources of the class: _input and _commands.
#include "korvane/cam3d_controller.h"

#include "controller/cam3d_controller_parts.h"
#include "korvane/icon2d.h"
#include "render/render_pass.h"

namespace Korvane {

Cam3DController::Cam3DController() : parts(std::make_shared<Cam3DControllerParts>()) {}

Cam3DController::~Cam3DController() {
  const std::shared_ptr<Cam3DControllerParts> held = parts;  // a call within another may outlive this one
  held->lifeline.Cut();
  held->enabled = false;
  held->motion.End();
  held->LeaveCommand(held->partners.hub.Get());
  held->note.Hide();
}

// ---- collaborators ----

// Whoever hears of the end of what goes on may destroy what is being set, and set another or none, which then
// stays.
// Nothing begins meanwhile.
void Cam3DController::SetKorvane(CameraOperations* hub) {
  const Staying now(parts);
  const Borrowed<CameraOperations> former(now->partners.hub.Get());
  const Borrowed<CameraOperations> next(hub);
  const unsigned call = ++now->partners.hubCalls;
  if (hub != nullptr && hub == former.Get()) return;
  now->partners.hub.Set(nullptr);
  now->LeaveCommand(former.Get());
  if (now->partners.hub.Get() == nullptr) now->motion.BreakOff();
  if (now && now->partners.hubCalls == call) now->partners.hub.Set(next.Get());
}

void Cam3DController::SetRewindHistory(RewindHistory* history) {
  const Staying now(parts);
  const Borrowed<RewindHistory> next(history);
  const unsigned call = ++now->partners.historyCalls;
  if (history == now->partners.history.Get()) return;
  now->partners.history.Set(nullptr);
  now->motion.EndRecord();
  now->LeaveCommand(now->partners.hub.Get());
  if (now && now->partners.historyCalls == call) now->partners.history.Set(next.Get());
}

void Cam3DController::SetPivotBall(PivotBall* ball) {
  const Staying now(parts);
  PivotBall* const former = now->partners.ball.Get();
  now->partners.ball.Set(ball);
  if (former != nullptr && former != ball && now->motion.IsRunning()) former->SetVisible(false);
}

PivotBall* Cam3DController::GetPivotBall() const { return parts->partners.ball.Get(); }
void Cam3DController::SetRenderer(Renderer* value) { parts->partners.renderer.Set(value); }
Renderer* Cam3DController::GetRenderer() const { return parts->partners.renderer.Get(); }

bool Cam3DController::AddObserver(Cam3DControllerObserver* observer) {
  return parts->partners.observers.Add(observer);
}
void Cam3DController::RemoveObserver(Cam3DControllerObserver* observer) {
  parts->partners.observers.Remove(observer);
}

// ---- what is drawn ----

bool Cam3DController::Create() {
  const Staying now(parts);
  Renderer* const renderer = now->partners.renderer.Get();
  if (renderer == nullptr) return false;
  now->note.Take(*renderer);
  if (now->partners.renderer.Get() == renderer) renderer->ApplyTextureUsage();
  return true;
}

bool Cam3DController::Destroy() {
  const Staying now(parts);
  now->note.GiveBack();
  Renderer* const renderer = now->partners.renderer.Get();
  if (renderer == nullptr) return false;
  renderer->ApplyTextureUsage();
  return true;
}

void Cam3DController::SetHUDMessage(DynamicIcon2D* icon) { parts->note.Show(icon); }

// Whoever opens the pass may take the note away.
void Cam3DController::Draw() {
  const Staying now(parts);
  const CameraOperations* const hub = now->partners.hub.Get();
  Renderer* const renderer = now->partners.renderer.Get();
  if (hub == nullptr || renderer == nullptr) return;
  if (DynamicIcon2D* const text = now->note.Get()) {
    text->SetPosition({hub->GetApplicationParameters().viewport_width * 0.5, text->GetHeight()});
  }
  const FullViewPass pass(renderer, *hub);
  DynamicIcon2D* const text = now->note.Get();
  if (pass && text != nullptr) pass->Render(text);
}

// ---- state and settings ----

bool Cam3DController::IsOperating() const { return parts->motion.IsOperating(); }
bool Cam3DController::GetEnabled() const { return parts->enabled; }

// Whoever hears of the end may have begun anew.
void Cam3DController::SetEnabled(bool value) {
  const Staying now(parts);
  if (value == now->enabled) return;
  now->SettleCommand();
  if (!value) now->motion.End();
  now->enabled = value && now;
  if (!now->enabled) now->motion.End();
}

void Cam3DController::SetNavigationMode(NavigationMode mode) {
  const Staying now(parts);
  const NavigationMode former = now->parameters.GetNavigationMode();
  if (mode == former) return;
  if (mode == Cam3DControllerParameters::MODE_PAN) now->lastMode = former;
  End3DControllerOperation();
  if (!now) return;
  now->parameters.SetNavigationMode(mode);
  now.TellObservers([mode](Cam3DControllerObserver& each) { each.OnNavigationModeChanged(mode); });
}

void Cam3DController::Toggle2DNavigationMode() {
  const bool pans = GetNavigationMode() == Cam3DControllerParameters::MODE_PAN;
  SetNavigationMode(pans ? parts->lastMode : Cam3DControllerParameters::MODE_PAN);
}

bool Cam3DController::ShouldKeepSceneUpright() const {
  return Korvane::ShouldKeepSceneUpright(parts->parameters);
}

bool Cam3DController::MapKey(int button, Cam3DControllerKeyID id) {
  if (static_cast<unsigned>(id) >= CAM3D_KEY_COUNT) return false;
  parts->keyMap.insert_or_assign(button, id);
  return true;
}

Cam3DController::NavigationMode Cam3DController::GetNavigationMode() const {
  return parts->parameters.GetNavigationMode();
}
double Cam3DController::GetSensitivity() const { return parts->parameters.GetSensitivity(); }
void Cam3DController::SetSensitivity(double value) { parts->parameters.SetSensitivity(value); }
double Cam3DController::GetInputThreshold() const { return parts->parameters.GetInputThreshold(); }
void Cam3DController::SetInputThreshold(double value) { parts->parameters.SetInputThreshold(value); }
int Cam3DController::GetPivotBallThreshold() const { return parts->parameters.GetPivotBallThreshold(); }
void Cam3DController::SetPivotBallThreshold(int inputs) { parts->parameters.SetPivotBallThreshold(inputs); }
bool Cam3DController::GetEnableRotation() const { return parts->parameters.GetEnableRotation(); }
void Cam3DController::SetEnableRotation(bool enable) { parts->parameters.SetEnableRotation(enable); }
bool Cam3DController::GetEnableTranslation() const { return parts->parameters.GetEnableTranslation(); }
void Cam3DController::SetEnableTranslation(bool enable) { parts->parameters.SetEnableTranslation(enable); }
bool Cam3DController::GetKeepSceneUpright() const { return parts->parameters.GetKeepSceneUpright(); }
void Cam3DController::SetKeepSceneUpright(bool keep) { parts->parameters.SetKeepSceneUpright(keep); }

void Cam3DController::GetTranslationMultipliers(NavigationMode mode, double* multipliers) const {
  parts->parameters.GetTranslationMultipliers(mode, multipliers);
}
void Cam3DController::SetTranslationMultipliers(NavigationMode mode, const double* multipliers) {
  parts->parameters.SetTranslationMultipliers(mode, multipliers);
}
void Cam3DController::GetRotationMultipliers(NavigationMode mode, double* multipliers) const {
  parts->parameters.GetRotationMultipliers(mode, multipliers);
}
void Cam3DController::SetRotationMultipliers(NavigationMode mode, const double* multipliers) {
  parts->parameters.SetRotationMultipliers(mode, multipliers);
}

void Cam3DController::SetLimitOrthographicZoom(bool limit) { parts->motion.LimitOrthographicZoom(limit); }
bool Cam3DController::GetLimitOrthographicZoom() const { return parts->motion.IsOrthographicZoomLimited(); }

bool Cam3DController::GetSelectionSensitivity() const {
  const CameraOperations* const hub = parts->partners.hub.Get();
  return hub != nullptr && hub->GetApplicationParameters().tool_selection_sensitivity;
}
void Cam3DController::SetSelectionSensitivity(bool sensitive) {
  CameraOperations* const hub = parts->partners.hub.Get();
  if (hub != nullptr) hub->GetApplicationParameters().tool_selection_sensitivity = sensitive;
}

}  // namespace Korvane
