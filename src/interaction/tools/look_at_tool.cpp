#include "korvane/look_at_tool.h"

#include <utility>

#include "interaction/tools/tool_gesture.h"

namespace Korvane {

namespace {

constexpr double FLIGHT_DURATION = 0.75;    // seconds
constexpr double OBSTRUCTION_MARGIN = 0.9;  // of the way to what stands in between

Vector2 PixelAt(int x, int y) { return {static_cast<double>(x), static_cast<double>(y)}; }

void EndMouseover(Renderer* opened) {
  if (opened != nullptr) opened->EndMouseoverComponent();
}

}  // namespace

LookAtTool::LookAtTool() {
  SetCursorID(CURSOR_LOOK_AT);
  SetWrapCursor(false);
  SetGestureEnd([](Tool& tool) {
    auto& lookAt = static_cast<LookAtTool&>(tool);
    lookAt.NoteRelease(lookAt.mouseX, lookAt.mouseY);
    lookAt.GiveUp();
  });
}
LookAtTool::~LookAtTool() = default;

void LookAtTool::EnableFaceHighlighting() { faceHighlighting = true; }
void LookAtTool::DisableFaceHighlighting() { faceHighlighting = false; }
void LookAtTool::EnableObstructionDetection() { obstructionDetection = true; }
void LookAtTool::DisableObstructionDetection() { obstructionDetection = false; }
void LookAtTool::EnableBackfaceViewing() { backfaceViewing = true; }
void LookAtTool::DisableBackfaceViewing() { backfaceViewing = false; }

bool LookAtTool::OnMouseDown(int x, int y) {
  const Lifeline::Watch goesOn(cutOffs);
  if (operating) GiveUp();  // its release went missing
  if (!goesOn) return true;
  NotePress(x, y);
  if (!CanOperate()) return animating;
  Renderer* const asked = renderer;
  if (!asked->BeginMouseoverComponent(faceHighlighting)) return false;
  if (!goesOn || !CanOperate()) {
    EndMouseover(asked);
    return false;
  }
  mouseover.Set(asked);
  Opening(*this).Then([&] {
    obstructionDetection = cameraOperations->GetApplicationParameters().use_look_at_obstruction_detection;
  });
  return true;
}

bool LookAtTool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  if (!operating || !CanOperate()) return animating;
  Steps steps(*this);
  Renderer* const opened = mouseover.Get();
  if (faceHighlighting && opened != nullptr) {
    Vector3 point;
    Vector3 normal;
    (void)opened->GetMouseoverComponent(PixelAt(x, y), point, normal);  // for the highlight that it leaves
  }
  steps.Then([&] { cameraOperations->RequestApplicationUpdate(); });
  return true;
}

bool LookAtTool::OnKeyDown(KeyID key) {
  Tool::OnKeyDown(key);
  if (key == KEY_ESCAPE && operating) GiveUp();
  return true;
}

void LookAtTool::GiveUp() {
  Renderer* const opened = TakeMouseover();
  Closing closing(*this);
  EndMouseover(opened);
  closing.Then([](CameraOperations& hub) { hub.RequestApplicationUpdate(); });
}

bool LookAtTool::OnMouseUp(int x, int y) {
  NoteRelease(x, y);
  if (!operating) return animating;
  const bool wired = CanOperate();
  Renderer* const opened = TakeMouseover();
  Closing closing(*this);
  Release steps(*this);
  CameraParameters camera;
  Vector3 point;
  Vector3 normal;
  bool found = false;
  bool flies = false;
  steps.Query(camera).Then([&] {
    found = wired && opened != nullptr && opened->GetMouseoverComponent(PixelAt(x, y), point, normal);
  });
  if (found) steps.Then([&] { flies = BeginLookAt(camera, point, normal, opened); });
  if (flies) return true;
  if (found) closing.HidePivotBall();
  EndMouseover(opened);
  return true;
}

// False when the host has taken the hub away or destroyed the tool before the shot. The mouse-over stays open
// during the flight.
bool LookAtTool::BeginLookAt(CameraParameters& camera, const Vector3& point, const Vector3& normal,
                             Renderer* opened) {
  bool flies = false;
  LookAtShotParameters shot;
  Release(*this)
      .Then([&] {
        const bool fromBehind = (point - camera.eye).Dot(normal) > 0.0;
        shot.direction = backfaceViewing && fromBehind ? -normal : normal;
        shot.point = camera.pivot = point;
        shot.duration = FLIGHT_DURATION;
      })
      .MarkPivot(camera)
      .Apply(camera)
      .Then([&] { shot.distance = GetClearDistance(camera, shot.point, shot.direction); })
      .Then([&] { cameraOperations->RecalculateGlobalBounds(); })
      .Then([&] {
        const double radius = cameraOperations->GetApplicationParameters().global_bound_radius;
        if (shot.distance > radius) shot.distance = radius;
        flies = true;
        mouseover.Set(opened);
        Flight(*this, shot).BeginRecord();
      });
  return flies;
}

// Nearer than what stands in between.
double LookAtTool::GetClearDistance(const CameraParameters& camera, const Vector3& point,
                                    const Vector3& normal) const {
  const double distance = (point - camera.eye).Length();
  Vector3 hit;
  if (!obstructionDetection || renderer == nullptr) return distance;
  if (!renderer->QueryRaySceneIntersection(point, normal, hit)) return distance;
  const double clearance = (hit - point).Length();
  return clearance < distance ? clearance * OBSTRUCTION_MARGIN : distance;
}

// To be ended by the caller.
Renderer* LookAtTool::TakeMouseover() {
  Renderer* const opened = mouseover.Get();
  mouseover.Set(nullptr);
  return opened;
}

void LookAtTool::OnDraw() {
  const Lifeline::Watch alive(GetLifeline());
  DrawTool();
  if (!alive) return;
  if (HasShotEnded()) {
    EndLookAt();
  } else if (animating) {
    SampleRecord();
  }
  if (PivotBall* const ball = alive ? pivotBall.Get() : nullptr) ball->Draw();
}

void LookAtTool::EndLookAt() {
  Renderer* const opened = TakeMouseover();
  Closing closing(*this);
  closing.EndRecord();
  EndMouseover(opened);
  closing.HidePivotBall().Then([](CameraOperations& hub) { hub.RequestApplicationUpdate(); });
}

}  // namespace Korvane
