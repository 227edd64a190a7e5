// Collaborators, life and tools. The other sources of the class: _routing, _mouse_navigation, _drawing,
// _layout and _camera.
#include "korvane/view_manager.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "interaction/tools/rewind_record.h"
#include "interaction/view_manager/view_manager_observers.h"
#include "korvane/cam3d_controller.h"
#include "korvane/camera_operations.h"
#include "korvane/helm_disc.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/navigation_bar.h"
#include "korvane/orbit_tool.h"
#include "korvane/orientor.h"
#include "korvane/pan_tool.h"
#include "korvane/pivot_ball.h"
#include "korvane/renderer.h"
#include "korvane/storyboard.h"
#include "korvane/toolbar.h"

namespace Korvane {

namespace {

// Takes the observer off the old subject, if any, and puts a new one on the new.
template <class Observer, class Subject>
void ChangeSubject(std::unique_ptr<Observer>& observer, Subject*& subject, Subject* value,
                   ViewManager* owner) {
  if (subject != nullptr && observer != nullptr) subject->RemoveObserver(observer.get());
  observer.reset();
  subject = value;
  if (subject == nullptr) return;
  observer = std::make_unique<Observer>(subject, owner);
  subject->AddObserver(observer.get());
}

}  // namespace

ViewManager::ViewManager() = default;

ViewManager::~ViewManager() {
  DropMiddleMouseGesture();
  ViewManager::RemoveAllTools();
  ReleaseShotObserver();
  TakePivotBallBack();
  ViewManager::SetNavigationBar(nullptr);
  ChangeHelmDisc(nullptr);
  ViewManager::SetStoryboard(nullptr);
  ViewManager::SetOrientor(nullptr);
}

// ---- collaborators ----

void ViewManager::SetKorvane(CameraOperations* hub) {
  if (hub != cameraOperations) EndWatchedShot();
  cameraOperations = hub;
}

void ViewManager::SetRenderer(Renderer* value) { renderer = value; }
void ViewManager::SetCam3DController(Cam3DController* controller) { cam3DController = controller; }
void ViewManager::SetNavigationBar(NavigationBar* bar) { navigationBar = bar; }

// A gesture whose tool goes with the disc is closed while it still can be.
void ViewManager::SetHelmDisc(HelmDisc* disc) {
  EndMiddleMouseNavigation();
  ChangeHelmDisc(disc);
}

void ViewManager::ChangeHelmDisc(HelmDisc* disc) {
  const bool historyGoes = helmDisc != nullptr && helmDisc != disc;
  if (historyGoes) CloseOpenRecord();
  if (historyGoes && helmDisc->GetPivotBall() == pivotBall.get()) helmDisc->SetPivotBall(nullptr);
  ChangeSubject(helmDiscObserver, helmDisc, disc, this);
  orbitTool = disc != nullptr ? std::make_unique<OrbitTool>() : nullptr;
  panTool = disc != nullptr ? std::make_unique<PanTool>() : nullptr;
  zoomTool = disc != nullptr ? std::make_unique<MouseWheelZoomTool>() : nullptr;
  if (historyGoes) HandHistoryOn();
}

void ViewManager::SetStoryboard(Storyboard* panel) {
  ChangeSubject(storyboardObserver, storyboard, panel, this);
}

void ViewManager::SetOrientor(Orientor* cube) { ChangeSubject(orientorObserver, orientor, cube, this); }

// Of a gesture or a shot that will outlast the history.
void ViewManager::CloseOpenRecord() {
  const bool gesture = activeTool != nullptr && (activeTool->IsOperating() || activeTool->IsAnimating());
  const bool shot = rewindShotObserver != nullptr && rewindShotObserver->IsWatching();
  if (gesture || shot) EndRecord(GetRewindHistory(), cameraOperations);
}

// Nobody keeps a history whose disc may be gone.
void ViewManager::HandHistoryOn() {
  RewindHistory* const history = GetRewindHistory();
  if (orientor != nullptr) orientor->SetRewindHistory(history);
  if (storyboard != nullptr) storyboard->SetRewindHistory(history);
  if (cam3DController != nullptr) cam3DController->SetRewindHistory(history);
  if (rewindShotObserver != nullptr) rewindShotObserver->SetHistory(history);
  for (const auto& [id, tool] : tools) tool->SetRewindHistory(history);
}

bool ViewManager::AddToolbar(Toolbar* toolbar) {
  if (toolbar == nullptr) return false;
  toolbars.Remove(toolbar);
  toolbars.Add(toolbar);
  return true;
}

bool ViewManager::RemoveToolbar(Toolbar* toolbar) {
  if (toolbar == nullptr) return false;
  toolbars.Remove(toolbar);
  return true;
}

RewindHistory* ViewManager::GetRewindHistory() const {
  return helmDisc != nullptr ? helmDisc->GetHistory() : nullptr;
}

// ---- create ----

bool ViewManager::Create() {
  if (cameraOperations == nullptr || renderer == nullptr || !renderer->Create()) return false;
  bool result = CreatePivotBall();
  result = CreateHelmDisc() && result;
  result = CreateWidget(orientor) && result;
  result = CreateWidget(storyboard) && result;
  result = CreateWidget(navigationBar) && result;
  if (!CreateWidget(cam3DController) || !result) return false;
  ReleaseShotObserver();
  rewindShotObserver = std::make_unique<ViewManagerRewindShotObserver>(GetRewindHistory());
  if (!CreateToolbars()) return false;
  for (const auto& [id, tool] : tools) WireTool(*tool);
  return true;
}

PivotBall* ViewManager::InstantiatePivotBall() {
  auto ball = std::make_unique<PivotBall>();
  ball->SetKorvane(cameraOperations);
  ball->SetRenderer(renderer);
  return ball.release();
}

bool ViewManager::CreatePivotBall() {
  TakePivotBallBack();
  pivotBall.reset(InstantiatePivotBall());
  return pivotBall == nullptr || pivotBall->Create();
}

bool ViewManager::CreateHelmDisc() {
  if (helmDisc == nullptr) return true;
  helmDisc->SetKorvane(cameraOperations);
  helmDisc->SetRenderer(renderer);
  if (pivotBall != nullptr) helmDisc->SetPivotBall(pivotBall.get());
  if (navigationBar != nullptr) helmDisc->GetParameters().suppressWelcome = true;
  if (!helmDisc->Create()) return false;
  for (Tool* const tool : std::initializer_list<Tool*>{orbitTool.get(), panTool.get(), zoomTool.get()}) {
    tool->SetKorvane(cameraOperations);
    tool->SetRenderer(renderer);
    tool->SetRewindHistory(GetRewindHistory());
  }
  orbitTool->SetPivotBall(pivotBall.get());
  zoomTool->SetPivotBall(pivotBall.get());
  return true;
}

bool ViewManager::CreateWidget(Orientor* cube) {
  if (cube == nullptr) return true;
  cube->SetKorvane(cameraOperations);
  cube->SetRenderer(renderer);
  cube->SetRewindHistory(GetRewindHistory());
  return cube->Create();
}

bool ViewManager::CreateWidget(Storyboard* panel) {
  if (panel == nullptr) return true;
  panel->SetKorvane(cameraOperations);
  panel->SetRenderer(renderer);
  panel->SetRewindHistory(GetRewindHistory());
  return panel->Create();
}

bool ViewManager::CreateWidget(NavigationBar* bar) {
  if (bar == nullptr) return true;
  bar->SetKorvane(cameraOperations);
  bar->SetRenderer(renderer);
  return bar->Create();
}

bool ViewManager::CreateWidget(Cam3DController* controller) {
  if (controller == nullptr) return true;
  controller->SetKorvane(cameraOperations);
  controller->SetRewindHistory(GetRewindHistory());
  controller->SetPivotBall(pivotBall.get());
  controller->SetRenderer(renderer);
  return controller->Create();
}

bool ViewManager::CreateToolbars() {
  bool result = true;
  toolbars.Notify([this, &result](Toolbar& toolbar) {
    toolbar.SetKorvane(cameraOperations);
    toolbar.SetRenderer(renderer);
    result = toolbar.Create() && result;
  });
  return result;
}

// ---- destroy ----

bool ViewManager::Destroy() {
  bool result = true;
  toolbars.Notify([&result](Toolbar& toolbar) { result = toolbar.Destroy() && result; });
  CloseToolGesture();
  if (activeTool != nullptr) activeTool->Deactivate();
  activeTool = nullptr;
  EndMiddleMouseNavigation();
  ReleaseShotObserver();
  std::unique_ptr<PivotBall> ball = TakePivotBallBack();
  if (ball != nullptr) result = ball->Destroy() && result;
  ball.reset();
  if (navigationBar != nullptr) result = navigationBar->Destroy() && result;
  if (storyboard != nullptr) result = storyboard->Destroy() && result;
  if (orientor != nullptr) result = orientor->Destroy() && result;
  if (helmDisc != nullptr) result = helmDisc->Destroy() && result;
  if (cam3DController != nullptr) result = cam3DController->Destroy() && result;
  return result;
}

// As far as that concerns the hub and the history.
void ViewManager::DropMiddleMouseGesture() {
  if (orbitingWithMouse) orbitTool->OnMouseUp(mouseX, mouseY);
  if (panningWithMouse) panTool->OnMouseUp(mouseX, mouseY);
  if (zoomingWithMouse) zoomTool->EndZoom();
}

// A gesture that is cut off ends as by a release, and a shot that the release begins ends at once: neither an
// operation nor a record nor a changed setting outlives the tool.
void ViewManager::CloseToolGesture() {
  if (activeTool == nullptr || !IsWiredAsNow(*activeTool)) return;
  if (activeTool->IsOperating()) activeTool->OnMouseUp(mouseX, mouseY);
  if (activeTool->IsAnimating()) {
    cameraOperations->EndShot();
    activeTool->OnDraw();
  }
  NoteMouseDrag(false);
}

// What a tool still holds and the view manager does not may be gone.
bool ViewManager::IsWiredAsNow(const Tool& tool) const {
  return cameraOperations != nullptr && tool.GetKorvane() == cameraOperations &&
         tool.GetRenderer() == renderer && tool.GetRewindHistory() == GetRewindHistory();
}

// The hub is not left with an observer that is gone: its shot ends here, and with it the record.
void ViewManager::EndWatchedShot() {
  const bool watching = rewindShotObserver != nullptr && rewindShotObserver->IsWatching();
  if (watching && cameraOperations != nullptr) cameraOperations->EndShot();
}

void ViewManager::ReleaseShotObserver() {
  EndWatchedShot();
  rewindShotObserver.reset();
}

// Takes the ball away from all who share it, and hands it over.
std::unique_ptr<PivotBall> ViewManager::TakePivotBallBack() {
  PivotBall* const ball = pivotBall.get();
  if (ball == nullptr) return nullptr;
  if (helmDisc != nullptr && helmDisc->GetPivotBall() == ball) helmDisc->SetPivotBall(nullptr);
  if (cam3DController != nullptr && cam3DController->GetPivotBall() == ball) {
    cam3DController->SetPivotBall(nullptr);
  }
  if (orbitTool != nullptr) orbitTool->SetPivotBall(nullptr);
  if (zoomTool != nullptr) zoomTool->SetPivotBall(nullptr);
  for (const auto& [id, tool] : tools) tool->SetPivotBall(nullptr);
  return std::move(pivotBall);
}

// ---- tools ----

void ViewManager::WireTool(Tool& tool) {
  tool.SetKorvane(cameraOperations);
  tool.SetRenderer(renderer);
  tool.SetRewindHistory(GetRewindHistory());
  tool.SetPivotBall(pivotBall.get());
}

bool ViewManager::AddTool(int id, Tool* tool) {
  if (id == 0 || tool == nullptr || tools.count(id) != 0) return false;
  const auto isTool = [tool](const auto& entry) { return entry.second.get() == tool; };
  if (std::any_of(tools.begin(), tools.end(), isTool)) return false;
  WireTool(*tool);
  tools.emplace(id, tool);
  return true;
}

Tool* ViewManager::RemoveTool(int id) {
  const auto entry = tools.find(id);
  if (id == activeToolID || entry == tools.end()) return nullptr;
  Tool* const tool = entry->second.release();
  tools.erase(entry);
  tool->SetPivotBall(nullptr);
  return tool;
}

void ViewManager::RemoveAllTools() {
  CloseToolGesture();
  if (activeTool != nullptr) activeTool->Deactivate();
  activeTool = nullptr;
  activeToolID = 0;
  tools.clear();
}

Tool* ViewManager::FindTool(int id) const {
  const auto entry = tools.find(id);
  return entry != tools.end() ? entry->second.get() : nullptr;
}

bool ViewManager::SetActiveTool(int id) {
  if (id == activeToolID) return true;
  if (id != 0 && FindTool(id) == nullptr) return false;
  if (activeTool != nullptr) {
    if (activeTool->IsOperating()) return false;
    activeTool->Deactivate();
    if (navigationBar != nullptr) navigationBar->SetItemSelected(activeToolID, false);
  } else if (helmDisc != nullptr && helmDisc->GetActiveDisc() != DiscType::None) {
    helmDisc->SetActiveDisc(DiscType::None);
  }
  activeTool = FindTool(id);
  activeToolID = id;
  if (activeTool != nullptr) {
    activeTool->Activate();
    if (navigationBar != nullptr) navigationBar->SetItemSelected(id, true);
  }
  RequestApplicationUpdate();
  return true;
}

int ViewManager::GetActiveTool() const { return activeToolID; }

// ---- playback ----

void ViewManager::OnReelshowStartPlayback() { SetReelshowPlaying(true); }
void ViewManager::OnReelshowStopPlayback() { SetReelshowPlaying(false); }

void ViewManager::SetReelshowPlaying(bool playing) {
  if (orientor != nullptr) orientor->GetParameters().disabled = playing;
  if (navigationBar != nullptr && navigationBar->GetToolbar() != nullptr) {
    navigationBar->GetToolbar()->SetDisabled(playing);
  }
  reelshowPlaying = playing;
}

}  // namespace Korvane
