#include "korvane/walk_recorder.h"

#include <utility>

#include "camera/fly_operation.h"
#include "camera/height_operation.h"
#include "camera/host_camera.h"
#include "camera/pixels.h"
#include "korvane/camera_operations.h"
#include "korvane/renderer.h"
#include "korvane/storyboard.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

// Pixels.
constexpr double GAUGE_SIZE = 128.0;
constexpr double MARK_SIZE = 32.0;
constexpr double MARK_RANGE = 86.0;  // from the lowest height to the highest

// A walk sets out from the middle of the view, a fifth of its height up.
constexpr int START_X_PART = 2;
constexpr int START_Y_PART = 5;
constexpr double CIRCLE_X = 0.5;
constexpr double CIRCLE_Y = 0.2;

CameraParameters AsWalked(const CameraParameters& camera) {
  CameraParameters walked = camera;
  walked.perspective_with_ortho = false;
  return walked;
}

template <class Kind>
Kind* FindOperation(const Borrowed<CameraOperations>& hub, OperationType type) {
  const CameraOperations* const held = hub.Get();
  return held != nullptr ? dynamic_cast<Kind*>(held->GetActiveOperation(type)) : nullptr;
}

}  // namespace

WalkRecorder::WalkRecorder() {
  heightGauge.SetSize(GAUGE_SIZE, GAUGE_SIZE);
  heightStartMark.SetSize(MARK_SIZE, MARK_SIZE);
  heightMark.SetSize(MARK_SIZE, MARK_SIZE);
}

WalkRecorder::~WalkRecorder() { Stop(); }

void WalkRecorder::SetKorvane(CameraOperations* value) { hub.Set(value); }
void WalkRecorder::SetRenderer(Renderer* value) { renderer.Set(value); }
void WalkRecorder::SetRewindHistory(RewindHistory* value) { history.Set(value); }
void WalkRecorder::SetStoryboard(Storyboard* value) { storyboard.Set(value); }
void WalkRecorder::SetViewportSize(int width, int height) { viewport = {width, height}; }

// ---- the walk ----

bool WalkRecorder::OnLeftMouseDown(int x, int y) {
  mouse = {x, y};
  if (recording) return false;
  start = mouse;
  recording = true;
  if (hub.Get() != nullptr && renderer.Get() != nullptr) BeginWalk();
  return false;
}

void WalkRecorder::BeginWalk() {
  mouse = {viewport.x / START_X_PART, viewport.y / START_Y_PART};
  start = mouse;
  renderer.Get()->SetCursorPosition(mouse.x, mouse.y);
  if (!recording || !BeginOperation(OPERATION_FLY, start)) return;
  CameraOperations* const walked = hub.Get();
  walked->AddOperationObserver(this);
  observed.Set(walked);
  beginCamera = AsWalked(walked->GetCameraParameters());
  BeginRecord();
}

// False where the recording is over by then: nothing of it stays.
bool WalkRecorder::BeginOperation(OperationType type, Pixel at) {
  if (CameraOperations* const walked = hub.Get()) walked->BeginOperation(type, at.x, FlipY(at.y));
  CameraOperations* const begun = hub.Get();
  if (!recording && begun != nullptr) begun->EndOperation(type);
  return recording && begun != nullptr;
}

// The host, who is asked for its camera, may end the recording meanwhile.
void WalkRecorder::BeginRecord() {
  const CameraParameters camera = QueryCamera(*hub.Get());
  if (recording) record.Begin(history.Get(), camera);
}

void WalkRecorder::EndOperation(OperationType type) {
  if (CameraOperations* const walked = hub.Get()) walked->EndOperation(type);
  record.End(hub.Get());
}

bool WalkRecorder::OnMouseMove(int x, int y) {
  mouse = {x, y};
  if (!recording) return false;
  const OperationType type = adjustingHeight ? OPERATION_HEIGHT : OPERATION_FLY;
  if (CameraOperations* const walked = hub.Get()) walked->UpdateOperationParams(x, FlipY(y), type);
  return false;
}

// In an adjustment of the height, too, it is the walk that is ended.
bool WalkRecorder::OnLeftMouseUp(int x, int y) {
  mouse = {x, y};
  const bool ends = recording && hub.Get() != nullptr;
  if (recording) {
    recording = false;
    const bool endsHeight = std::exchange(adjustingHeight, false) && releaseEndsHeight;
    if (ends) EndOperation(OPERATION_FLY);
    if (endsHeight) EndOperation(OPERATION_HEIGHT);
  }
  LeaveHub();
  Storyboard* const owner = storyboard.Get();
  if (ends && owner != nullptr) owner->WalkRecorded(this);
  return false;
}

void WalkRecorder::LeaveHub() {
  if (CameraOperations* const walked = observed.Get()) walked->RemoveOperationObserver(this);
  observed.Set(nullptr);
}

void WalkRecorder::Stop() {
  if (std::exchange(recording, false)) {
    EndOperation(std::exchange(adjustingHeight, false) ? OPERATION_HEIGHT : OPERATION_FLY);
  }
  LeaveHub();
}

// ---- keys ----

bool WalkRecorder::OnKeyDown(KeyID key) {
  if (key == KEY_SHIFT) BeginHeightAdjustment();
  if (key == KEY_ESCAPE) CancelRecording();
  return false;
}

bool WalkRecorder::OnKeyUp(KeyID key) {
  if (key == KEY_SHIFT) EndHeightAdjustment();
  return false;
}

void WalkRecorder::BeginHeightAdjustment() {
  if (!recording || adjustingHeight || hub.Get() == nullptr) return;
  EndOperation(OPERATION_FLY);
  if (!recording || !BeginOperation(OPERATION_HEIGHT, mouse)) return;
  startHeight = GetHeightAboveMiddle(0.0);
  heightStart = mouse;
  adjustingHeight = true;
  BeginRecord();
}

// The walk goes on from where it set out.
void WalkRecorder::EndHeightAdjustment() {
  if (!std::exchange(adjustingHeight, false) || hub.Get() == nullptr) return;
  EndOperation(OPERATION_HEIGHT);
  if (recording && BeginOperation(OPERATION_FLY, start)) BeginRecord();
}

void WalkRecorder::CancelRecording() {
  if (!recording) return;
  Stop();
  SetCursor(CURSOR_ARROW);
  if (Storyboard* const owner = storyboard.Get()) owner->CancelRecordWalk();
}

// ---- samples ----

void WalkRecorder::OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) {}

void WalkRecorder::OnPerformOperation(OperationType /*type*/, double dt, const CameraParameters& camera) {
  deltaTimes.push_back(dt);
  cameras.push_back(AsWalked(camera));
}

void WalkRecorder::OnEndOperation(OperationType /*type*/) { SetCursor(CURSOR_ARROW); }

// ---- a frame ----

void WalkRecorder::OnDraw() {
  const CameraOperations* const walked = hub.Get();
  Renderer* const target = renderer.Get();
  if (walked == nullptr || target == nullptr) return;
  {
    const FullViewPass pass(target, *walked);
    if (!pass) return;
    if (recording && adjustingHeight) {
      DrawHeight(*target);
    } else {
      DrawNotes(*target);
    }
  }
  ShowCursor();
}

void WalkRecorder::DrawHeight(Renderer& target) {
  const Vector2 place(WrapAround(heightStart.x, viewport.x), WrapAround(heightStart.y, viewport.y));
  heightGauge.SetPosition(place);
  heightStartMark.SetPosition(place + Vector2(0.0, startHeight * MARK_RANGE));
  heightMark.SetPosition(place + Vector2(0.0, GetHeightAboveMiddle(startHeight) * MARK_RANGE));
  target.Render(&heightGauge);
  target.Render(&heightStartMark);
  target.Render(&heightMark);
}

void WalkRecorder::DrawNotes(Renderer& target) {
  const CameraOperations* const walked = hub.Get();
  if (recording && walked != nullptr) {
    const double size = 2.0 * walked->GetApplicationParameters().fly_dead_zone_radius;
    startCircle.SetSize(size, size);
    startCircle.SetPosition(Vector2(viewport.x * CIRCLE_X, viewport.y * CIRCLE_Y));
    target.Render(&startCircle);
  }
  DynamicIcon2D* const note = recording ? moveUpDownMessageHUD : beginWalkingMessageHUD;
  if (note == nullptr) return;
  note->SetPosition(Vector2(viewport.x / 2.0, note->GetHeight()));
  target.Render(note);
}

double WalkRecorder::GetHeightAboveMiddle(double otherwise) const {
  auto* const height = FindOperation<HeightOperation>(hub, OPERATION_HEIGHT);
  return height != nullptr ? height->GetUnitHeight() - 0.5 : otherwise;
}

void WalkRecorder::ShowCursor() {
  if (!recording) return;
  if (adjustingHeight) return SetCursor(CURSOR_ORBIT_CUBE);
  const auto* const fly = FindOperation<FlyOperation>(hub, OPERATION_FLY);
  if (fly != nullptr) SetCursor(fly->GetWalkCursorID());
}

void WalkRecorder::SetCursor(CursorID id) {
  if (Renderer* const target = renderer.Get()) target->SetCursorID(id);
}

int WalkRecorder::FlipY(int y) const { return FlipRow(viewport.y, y); }

}  // namespace Korvane
