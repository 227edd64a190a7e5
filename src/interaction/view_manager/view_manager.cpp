// Collaborators and tools. The other sources of the class: _life, _routing, _mouse_navigation, _drawing,
// _layout and _camera.
#include "korvane/view_manager.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "camera/host_camera.h"
#include "foundation/out_of_memory.h"
#include "interaction/view_manager/view_manager_doors.h"
#include "interaction/view_manager/view_manager_observers.h"
#include "korvane/rewind_history.h"

namespace Korvane {

namespace {

// False where there is no memory for it.
template <class Observer, class Subject>
bool Watch(std::unique_ptr<Observer>& observer, Subject* subject, ViewManager* owner) {
  if (subject == nullptr || observer != nullptr) return true;
  observer = OrFail([&] { return std::make_unique<Observer>(subject, owner); });
  if (observer != nullptr && !subject->AddObserver(observer.get())) observer.reset();
  return observer != nullptr;
}

// Takes the observer off the old subject, if any, and puts a new one on the new.
template <class Observer, class Subject>
void ChangeSubject(std::unique_ptr<Observer>& observer, Subject*& subject, Subject* value,
                   ViewManager* owner) {
  if (subject != nullptr && observer != nullptr) subject->RemoveObserver(observer.get());
  observer.reset();
  subject = value;
  Watch(observer, subject, owner);
}

}  // namespace

ViewManager::ViewManager() = default;

ViewManager::~ViewManager() {
  assert(callsOut == 0 && "deleted within a call of its widgets");
  DropMouseNavigation();
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
  if (hub != cameraOperations) CloseOpenRecord(rewindShotObserver.get());
  cameraOperations = hub;
}

void ViewManager::SetRenderer(Renderer* value) { renderer = value; }
void ViewManager::SetCam3DController(Cam3DController* controller) { cam3DController = controller; }
void ViewManager::SetNavigationBar(NavigationBar* bar) { navigationBar = bar; }

// A gesture whose tool goes with the disc is closed while it still can be.
void ViewManager::SetHelmDisc(HelmDisc* disc) {
  EndMiddleMouseNavigation();
  const bool historyChanges = disc != helmDisc && helmDisc != nullptr;
  ChangeHelmDisc(disc);
  if (historyChanges) HandHistoryOn();
}

void ViewManager::ChangeHelmDisc(HelmDisc* disc) {
  const bool historyGoes = helmDisc != nullptr && helmDisc != disc;
  if (historyGoes) CloseOpenRecord(rewindShotObserver.get());
  if (historyGoes) Doors::TakeBall<&ViewManager::helmDisc>(*this);
  while (navigation.orbitTool != nullptr) DropMouseNavigation();
  ChangeSubject(helmDiscObserver, helmDisc, disc, this);
  MakeMouseNavigation();
}

// All three or none; none where there is no memory for them.
bool ViewManager::MakeMouseNavigation() {
  if (helmDisc == nullptr || navigation.orbitTool != nullptr) return true;
  return OrFail([this] {
    auto orbit = std::make_unique<OrbitTool>();
    auto pan = std::make_unique<PanTool>();
    navigation.zoomTool = std::make_unique<MouseWheelZoomTool>();
    navigation.panTool = std::move(pan);
    navigation.orbitTool = std::move(orbit);
    return true;
  });
}

// What the setters of the collaborators had no memory for.
bool ViewManager::WatchCollaborators() {
  const bool watching = Watch(helmDiscObserver, helmDisc, this) &&
                        Watch(storyboardObserver, storyboard, this) &&
                        Watch(orientorObserver, orientor, this);
  return watching && MakeMouseNavigation();
}

void ViewManager::SetStoryboard(Storyboard* panel) {
  ChangeSubject(storyboardObserver, storyboard, panel, this);
}

void ViewManager::SetOrientor(Orientor* cube) { ChangeSubject(orientorObserver, orientor, cube, this); }

// Of a shot that will outlast the history, or be watched no more; a tool closes its own when it is given
// another.
void ViewManager::CloseOpenRecord(ViewManagerRewindShotObserver* observer) const {
  if (observer == nullptr || !observer->IsWatching() || cameraOperations == nullptr) return;
  const Lifeline::Watch alive(observer->GetLifeline());
  const CameraParameters camera = QueryCamera(*cameraOperations);
  if (!alive) return;
  observer->Drop();
  observer->CloseRecord(camera);
}

// Nobody keeps a history whose disc may be gone.
void ViewManager::HandHistoryOn() {
  using D = Doors;
  D::Give<&ViewManager::orientor, D::History>(*this);
  D::Give<&ViewManager::storyboard, D::History>(*this);
  D::Give<&ViewManager::cam3DController, D::History>(*this);
  D::GiveTools<D::History>(*this);
}

bool ViewManager::AddToolbar(Toolbar* toolbar) {
  if (toolbar == nullptr) return false;
  toolbars.Remove(toolbar);
  return toolbars.Add(toolbar);
}

bool ViewManager::RemoveToolbar(Toolbar* toolbar) {
  if (toolbar == nullptr) return false;
  toolbars.Remove(toolbar);
  return true;
}

RewindHistory* ViewManager::GetRewindHistory() const {
  return helmDisc != nullptr ? helmDisc->GetHistory() : nullptr;
}

// ---- tools ----

bool ViewManager::AddTool(int id, Tool* tool) {
  if (id == 0 || tool == nullptr || tools.count(id) != 0) return false;
  const auto isTool = [tool](const auto& entry) { return entry.second.get() == tool; };
  if (std::any_of(tools.begin(), tools.end(), isTool)) return false;
  if (!OrFail([&] { return tools.emplace(id, tool).second; })) return false;
  Doors::GiveTool<Doors::Hub, Doors::Pictures, Doors::History, Doors::Pivot>(*this, id);
  return true;
}

Tool* ViewManager::RemoveTool(int id) {
  const auto entry = tools.find(id);
  if (id == activeToolID || entry == tools.end()) return nullptr;
  Tool* const tool = entry->second.release();
  tools.erase(entry);
  Doors::Give<Doors::NoPivot>(*this, *tool);
  return tool;
}

void ViewManager::RemoveAllTools() {
  DismissActiveTool();
  activeToolID = 0;
  std::exchange(tools, {}).clear();
}

Tool* ViewManager::FindTool(int id) const {
  const auto entry = tools.find(id);
  return entry != tools.end() ? entry->second.get() : nullptr;
}

bool ViewManager::SetActiveTool(int id) {
  if (id == activeToolID) return true;
  if (dismissingTool || (id != 0 && FindTool(id) == nullptr)) return false;
  if (!PutActiveToolAway()) return activeToolID == id;
  activeTool = FindTool(id);
  const bool isThere = id == 0 || activeTool != nullptr;  // nobody has removed it meanwhile
  activeToolID = isThere ? id : 0;
  if (activeTool != nullptr) {
    activeTool->Activate();
    if (navigationBar != nullptr && activeToolID == id) navigationBar->SetItemSelected(id, true);
  }
  RequestApplicationUpdate();
  return isThere;
}

// The tool, or the disc that is open instead. False when it stays, and when whoever was told of it has chosen
// another; that choice finds the tool put away already.
bool ViewManager::PutActiveToolAway() {
  Tool* const tool = activeTool;
  const int id = activeToolID;
  if (tool != nullptr && tool->IsOperating()) return false;
  if (leavingToolID == id) return true;
  const std::optional<int> outer = std::exchange(leavingToolID, id);
  if (tool != nullptr) {
    tool->Deactivate();
    if (navigationBar != nullptr) navigationBar->SetItemSelected(id, false);
  } else if (helmDisc != nullptr && helmDisc->GetActiveDisc() != DiscType::None) {
    helmDisc->SetActiveDisc(DiscType::None);
  }
  leavingToolID = outer;
  return activeTool == tool && activeToolID == id;
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
