#include "korvane/walk_recorder.h"

#include <utility>

#include "camera/find_operation.h"
#include "camera/fly_operation.h"
#include "camera/height_operation.h"
#include "camera/host_camera.h"
#include "camera/pixels.h"
#include "foundation/out_of_memory.h"
#include "korvane/camera_operations.h"
#include "korvane/renderer.h"
#include "korvane/storyboard.h"
#include "render/display_scale.h"
#include "render/height_gauge.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

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

}  // namespace

WalkRecorder::WalkRecorder() : heightGauge(std::make_unique<HeightGauge>()) {}
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

// The host, who is asked for its camera, may end the recording meanwhile, or turn to the height or from it.
void WalkRecorder::BeginRecord() {
  const CameraParameters camera = QueryCamera(*hub.Get());
  if (recording && !record.IsOpen()) record.Begin(history.Get(), camera);
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

// In an adjustment of the height, too, it is the walk that is ended; the adjustment goes on until its key is
// let go.
bool WalkRecorder::OnLeftMouseUp(int x, int y) {
  mouse = {x, y};
  const bool ends = recording && hub.Get() != nullptr;
  if (recording) {
    recording = false;
    const bool endsHeight = adjustingHeight && releaseEndsHeight;
    if (endsHeight) adjustingHeight = false;
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
  if (!recording || adjustingHeight || !BeginOperation(OPERATION_HEIGHT, mouse) || adjustingHeight) return;
  startHeight = GetHeight(0.0);
  heightStart = mouse;
  adjustingHeight = true;
  BeginRecord();
}

// The walk goes on from where it set out.
void WalkRecorder::EndHeightAdjustment() {
  if (!std::exchange(adjustingHeight, false) || hub.Get() == nullptr) return;
  EndOperation(OPERATION_HEIGHT);
  if (recording && !adjustingHeight && BeginOperation(OPERATION_FLY, start)) BeginRecord();
}

// The storyboard may have let go of the recorder by the time it has stopped: it is none of its own then.
void WalkRecorder::CancelRecording() {
  if (!recording) return;
  Stop();
  SetCursor(CURSOR_ARROW);
  if (Storyboard* const owner = storyboard.Get()) owner->CancelRecordWalk();
}

// ---- samples ----

void WalkRecorder::OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) {}

void WalkRecorder::OnPerformOperation(OperationType /*type*/, double dt, const CameraParameters& camera) {
  const bool kept = OrFail([&] {
    deltaTimes.reserve(deltaTimes.capacity() > deltaTimes.size() ? 0 : 2 * deltaTimes.size() + 1);
    cameras.push_back(AsWalked(camera));
    return true;
  });
  if (kept) deltaTimes.push_back(dt);
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
  const double now = GetHeight(startHeight);
  heightGauge->SetPosition({static_cast<double>(WrapAround(heightStart.x, viewport.x)),
                            static_cast<double>(WrapAround(heightStart.y, viewport.y))});
  heightGauge->SetScale(PixelsPerPoint(hub.Get()));
  heightGauge->DrawGauge(target);
  heightGauge->DrawMarks(target, startHeight, now);
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

double WalkRecorder::GetHeight(double otherwise) const {
  auto* const height = FindOperation<HeightOperation>(hub.Get(), OPERATION_HEIGHT);
  return height != nullptr ? HeightGauge::GetHeight(*height) : otherwise;
}

void WalkRecorder::ShowCursor() {
  if (!recording) return;
  if (adjustingHeight) return SetCursor(CURSOR_ORBIT_CUBE);
  const auto* const fly = FindOperation<FlyOperation>(hub.Get(), OPERATION_FLY);
  if (fly != nullptr) SetCursor(fly->GetWalkCursorID());
}

void WalkRecorder::SetCursor(CursorID id) {
  if (Renderer* const target = renderer.Get()) target->SetCursorID(id);
}

int WalkRecorder::FlipY(int y) const { return FlipRow(viewport.y, y); }

}  // namespace Korvane
