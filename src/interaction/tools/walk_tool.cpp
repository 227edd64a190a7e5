#include "korvane/walk_tool.h"

#include <utility>

#include "camera/find_operation.h"
#include "camera/fly_operation.h"
#include "interaction/tools/tool_gesture.h"
#include "korvane/renderer.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

// Fractions of the viewport, from its bottom left.
constexpr double START_X = 0.5;
constexpr double START_Y = 0.2;
constexpr double MOVING_OPACITY = 0.4;
constexpr double SHORTEST_INTERVAL = 1.0;  // seconds; below, a walk is one record

constexpr TextureID TEXTURES[] = {TEXTURE_WALK_START, TEXTURE_WALK_REFUSED};

}  // namespace

WalkTool::WalkTool()
    : textures(TEXTURES),
      startIcon(std::make_shared<ResourceIcon2D>(TEXTURE_WALK_START)),
      refusedIcon(std::make_shared<ResourceIcon2D>(TEXTURE_WALK_REFUSED)) {
  SetCursorID(CURSOR_WALK);
}
WalkTool::~WalkTool() { LetGoOfRunKey(); }

void WalkTool::SetRenderer(Renderer* value) {
  Tool::SetRenderer(value);
  if (active) textures.Take(value);
}

void WalkTool::Activate() {
  active = true;
  textures.Take(renderer);
}

void WalkTool::Deactivate() {
  active = false;
  textures.GiveBack();
}

bool WalkTool::OnMouseDown(int x, int y) {
  const Lifeline::Watch alive(GetLifeline());
  const bool result = PressDrag(x, y, [this](Opening& opening) { BeginWalk(opening); });
  if (alive && !walking) SetViewportHUD(warningHUD);
  return result;
}

void WalkTool::BeginWalk(Steps& steps) {
  bool perspective = false;
  steps.Then([&] { perspective = cameraOperations->AutoSwitchToPerspectiveProjection(); });
  if (!perspective) return;
  int startX = 0;
  int startY = 0;
  steps
      .Then([&] {
        walking = true;
        const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
        startX = Truncate(parameters.viewport_width * START_X);
        startY = Truncate(parameters.viewport_height * START_Y);
        if (renderer != nullptr) renderer->SetCursorPosition(startX, startY);
      })
      .BeginOperation(OPERATION_FLY, startX, startY)
      .BeginRecord()
      .Then([&] {
        if (HasRecordInterval()) RestartHistoryTimer();
      });
}

void WalkTool::RestartHistoryTimer() {
  historyTimer.Reset();
  historyTimer.Start();
}

bool WalkTool::HasRecordInterval() const { return rewindHistoryInterval >= SHORTEST_INTERVAL; }

bool WalkTool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  if (operating && !walking && cameraOperations != nullptr) return true;
  return UpdateDrag(OPERATION_FLY, x, y);
}

bool WalkTool::OnMouseUp(int x, int y) {
  return ReleaseDrag(x, y, [this](Closing& closing) {
    LetGoOfRunKey();
    if (std::exchange(walking, false)) closing.EndOperation(OPERATION_FLY).EndRecord();
  });
}

bool WalkTool::OnKeyDown(KeyID key) {
  Tool::OnKeyDown(key);
  return UseKey(key, true);
}

bool WalkTool::OnKeyUp(KeyID key) {
  Tool::OnKeyDown(key);
  return UseKey(key, false);
}

bool WalkTool::UseKey(KeyID key, bool pressed) {
  if (!operating || cameraOperations == nullptr) return false;
  if (key == KEY_UP || key == KEY_DOWN) {
    cameraOperations->UpdateOperationParams(key, pressed, OPERATION_ALL);
    return true;
  }
  if (key == KEY_RUN && GetFlyOperation() != nullptr) PressRunKey(pressed);
  return false;
}

// All walks of the library share the switch, so it is left as it was: the release of the key may go
// elsewhere.
void WalkTool::PressRunKey(bool pressed) {
  runKeyDown = pressed;
  GetFlyOperation()->SetMoveAccelerated(pressed);
}

void WalkTool::LetGoOfRunKey() {
  if (std::exchange(runKeyDown, false)) FlyOperation().SetMoveAccelerated(false);
}

FlyOperation* WalkTool::GetFlyOperation() const {
  return FindOperation<FlyOperation>(cameraOperations, OPERATION_FLY);
}

CursorID WalkTool::GetWalkCursorID() const {
  const FlyOperation* const fly = operating && walking ? GetFlyOperation() : nullptr;
  return fly != nullptr ? fly->GetWalkCursorID() : CURSOR_WALK;
}

void WalkTool::OnDraw() {
  Steps steps(*this);
  if (operating) {
    steps.Then([&] { DrawStart(); }).Then([&] { SetCursorID(GetWalkCursorID()); }).Then([&] {
      if (walking && rewindHistory != nullptr) RecordWalk();
    });
  }
  if (steps) DrawTool();
}

void WalkTool::DrawStart() {
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  const Lifeline::Watch alive(GetLifeline());
  const FullViewPass pass(renderer, *cameraOperations);
  if (!pass || !alive) return;
  const std::shared_ptr<ResourceIcon2D> icon = walking ? startIcon : refusedIcon;
  const double size = 2.0 * parameters.fly_dead_zone_radius;
  icon->SetSize(size, size);
  icon->SetPosition({parameters.viewport_width * START_X, parameters.viewport_height * START_Y});
  const FlyOperation* const fly = GetFlyOperation();
  icon->SetOpacity(fly == nullptr || fly->IsInDeadZone() ? 1.0 : MOVING_OPACITY);
  pass->Render(icon.get());
}

// A chain of records of the set interval, or a sample a frame.
void WalkTool::RecordWalk() {
  if (!HasRecordInterval()) {
    SampleRecord();
    return;
  }
  historyTimer.Lap();
  if (historyTimer.GetTotalTime() < rewindHistoryInterval) return;
  Ongoing(*this).Then([&] { record.End(cameraOperations); }).BeginRecord().Then([&] {
    RestartHistoryTimer();
  });
}

}  // namespace Korvane
