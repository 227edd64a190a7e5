// Create and Destroy: who is created, gets what, and gives it back, in what order.
#include <cassert>
#include <initializer_list>
#include <utility>

#include "foundation/out_of_memory.h"
#include "interaction/view_manager/view_manager_doors.h"
#include "interaction/view_manager/view_manager_observers.h"

namespace Korvane {

// ---- create ----

bool ViewManager::Create() {
  return OrFail([&] {
    using D = Doors;
    assert(callsOut == 0 && "created within a call of its widgets");
    if (cameraOperations == nullptr || renderer == nullptr || !WatchCollaborators()) return false;
    if (!renderer->Create()) return false;
    static constexpr bool (*WIDGETS[])(ViewManager&) = {
        [](ViewManager& owner) { return owner.CreatePivotBall(); },
        D::CreateHelmDisc,
        D::Create<&ViewManager::orientor, D::Hub, D::Pictures, D::History>,
        D::Create<&ViewManager::storyboard, D::Hub, D::Pictures, D::History>,
        D::Create<&ViewManager::navigationBar, D::Hub, D::Pictures>,
        D::Create<&ViewManager::cam3DController, D::Hub, D::History, D::Pivot, D::Pictures>,
    };
    bool result = true;
    for (const auto create : WIDGETS) result = create(*this) && result;
    if (!result) return false;
    ReleaseShotObserver();
    rewindShotObserver = std::make_unique<ViewManagerRewindShotObserver>(GetRewindHistory());
    if (!CreateToolbars()) return false;
    D::GiveTools<D::Hub, D::Pictures, D::History, D::Pivot>(*this);
    return true;
  });
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

bool ViewManager::CreateToolbars() {
  bool result = true;
  toolbars.Notify([this, &result](Toolbar& toolbar) {
    Doors::Give<Doors::Hub, Doors::Pictures>(*this, toolbar);
    result = toolbar.Create() && result;
  });
  return result;
}

// ---- destroy ----

bool ViewManager::Destroy() {
  using D = Doors;
  assert(callsOut == 0 && "destroyed within a call of its widgets");
  bool result = DestroyToolbars();
  DismissActiveTool();
  wantCursorWrapping = false;
  EndMiddleMouseNavigation();
  ReleaseShotObserver();
  std::unique_ptr<PivotBall> ball = TakePivotBallBack();
  if (ball != nullptr) result = ball->Destroy() && result;
  ball.reset();
  static constexpr bool (*WIDGETS[])(ViewManager&) = {
      D::Destroy<&ViewManager::navigationBar>,   D::Destroy<&ViewManager::storyboard>,
      D::Destroy<&ViewManager::orientor>,        D::Destroy<&ViewManager::helmDisc>,
      D::Destroy<&ViewManager::cam3DController>,
  };
  for (const auto destroy : WIDGETS) result = destroy(*this) && result;
  pointerLife.Cut();
  return result;
}

bool ViewManager::DestroyToolbars() {
  bool result = true;
  toolbars.Notify([&result](Toolbar& toolbar) { result = toolbar.Destroy() && result; });
  return result;
}

// As far as that concerns the hub and the history. Whoever hears of the end finds no tool to begin anew with.
void ViewManager::DropMouseNavigation() {
  const MouseNavigation leaving = std::exchange(navigation, {});
  navigation.discOffsetX = leaving.discOffsetX;
  navigation.discOffsetY = leaving.discOffsetY;
  for (Tool* const tool :
       std::initializer_list<Tool*>{leaving.orbitTool.get(), leaving.panTool.get(), leaving.zoomTool.get()}) {
    if (tool == nullptr) continue;
    tool->EndGesture(mouse.x, mouse.y);  // also one that is just beginning
    tool->SetRewindHistory(nullptr);     // closes a record that is just being opened
  }
  navigationNote.GiveBack();
}

// Whoever hears of it chooses no other tool.
void ViewManager::DismissActiveTool() {
  const bool outer = std::exchange(dismissingTool, true);
  CloseToolGesture();
  if (activeTool != nullptr) activeTool->Deactivate();
  activeTool = nullptr;
  dismissingTool = outer;
}

// A gesture that is cut off ends as by a release, and a shot that the release begins ends at once: neither an
// operation nor a record nor a changed setting outlives the tool.
void ViewManager::CloseToolGesture() {
  if (activeTool == nullptr || !IsWiredAsNow(*activeTool)) return;
  activeTool->EndGesture(mouse.x, mouse.y);
  NoteMouseDrag(false);
}

// What a tool still holds and the view manager does not may be gone.
bool ViewManager::IsWiredAsNow(const Tool& tool) const {
  return cameraOperations != nullptr && tool.GetKorvane() == cameraOperations &&
         tool.GetRenderer() == renderer && tool.GetRewindHistory() == GetRewindHistory();
}

// A move that still runs goes on unwatched; its record ends here.
void ViewManager::ReleaseShotObserver() {
  const std::unique_ptr<ViewManagerRewindShotObserver> leaving = std::move(rewindShotObserver);
  CloseOpenRecord(leaving.get());
}

// Takes the ball away from all who share it, and hands it over.
std::unique_ptr<PivotBall> ViewManager::TakePivotBallBack() {
  using D = Doors;
  if (pivotBall == nullptr) return nullptr;
  D::TakeBall<&ViewManager::helmDisc>(*this);
  D::TakeBall<&ViewManager::cam3DController>(*this);
  D::Give<D::Orbit, D::NoPivot>(*this);
  D::Give<D::Zoom, D::NoPivot>(*this);
  D::GiveTools<D::NoPivot>(*this);
  return std::move(pivotBall);
}

}  // namespace Korvane
