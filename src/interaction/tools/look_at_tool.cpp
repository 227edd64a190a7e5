#include "korvane/look_at_tool.h"

#include <utility>

#include "interaction/tools/tool_gesture.h"
#include "korvane/renderer.h"

namespace Korvane {

namespace {

constexpr double FLIGHT_DURATION = 0.75;    // seconds
constexpr double OBSTRUCTION_MARGIN = 0.9;  // of the way to what stands in between

Vector2 PixelAt(int x, int y) { return {static_cast<double>(x), static_cast<double>(y)}; }

}  // namespace

LookAtTool::LookAtTool() {
  SetCursorID(CURSOR_LOOK_AT);
  SetWrapCursor(false);
}
LookAtTool::~LookAtTool() = default;

void LookAtTool::EnableFaceHighlighting() { faceHighlighting = true; }
void LookAtTool::DisableFaceHighlighting() { faceHighlighting = false; }
void LookAtTool::EnableObstructionDetection() { obstructionDetection = true; }
void LookAtTool::DisableObstructionDetection() { obstructionDetection = false; }
void LookAtTool::EnableBackfaceViewing() { backfaceViewing = true; }
void LookAtTool::DisableBackfaceViewing() { backfaceViewing = false; }

bool LookAtTool::OnMouseDown(int x, int y) {
  const Lifeline::Watch alive(GetLifeline());
  if (std::exchange(operating, false)) EndMouseover();  // the release of the last press went missing
  if (!alive) return true;
  NotePress(x, y);
  if (!CanOperate()) return animating;
  const bool begun = renderer->BeginMouseoverComponent(faceHighlighting);
  if (!begun || !alive) return false;
  Opening(*this).Then([&] {
    obstructionDetection = cameraOperations->GetApplicationParameters().use_look_at_obstruction_detection;
  });
  return true;
}

bool LookAtTool::OnMouseMove(int x, int y) {
  NoteMove(x, y);
  if (!operating || !CanOperate()) return animating;
  Steps steps(*this);
  if (faceHighlighting) {
    Vector3 point;
    Vector3 normal;
    renderer->GetMouseoverComponent(PixelAt(x, y), point, normal);
  }
  steps.Then([&] { cameraOperations->RequestApplicationUpdate(); });
  return true;
}

bool LookAtTool::OnKeyDown(KeyID key) {
  Tool::OnKeyDown(key);
  if (key != KEY_ESCAPE || !operating) return true;
  operating = false;
  Steps steps(*this);
  EndMouseover();
  steps.Then([&] { cameraOperations->RequestApplicationUpdate(); });
  return true;
}

bool LookAtTool::OnMouseUp(int x, int y) {
  NoteRelease(x, y);
  if (!operating) return animating;
  const bool wired = CanOperate();
  Renderer* const asked = renderer;
  Closing closing(*this);
  Steps steps(*this);
  Vector3 point;
  Vector3 normal;
  const bool found = wired && asked->GetMouseoverComponent(PixelAt(x, y), point, normal);
  if (found) {
    steps.Then([&] { BeginLookAt(point, normal); });
  } else if (asked != nullptr) {
    asked->EndMouseoverComponent();
  }
  return true;
}

void LookAtTool::BeginLookAt(const Vector3& point, const Vector3& normal) {
  CameraParameters camera;
  LookAtShotParameters shot;
  Steps steps(*this);
  steps.Query(camera)
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
        Flight(*this, shot).BeginRecord();
      });
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

void LookAtTool::EndMouseover() {
  if (renderer != nullptr) renderer->EndMouseoverComponent();
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
  if (alive && pivotBall != nullptr) pivotBall->Draw();
}

void LookAtTool::EndLookAt() {
  Renderer* const asked = renderer;
  Closing closing(*this);
  closing.EndRecord();
  if (asked != nullptr) asked->EndMouseoverComponent();
  closing.HidePivotBall().Then([](CameraOperations& hub) { hub.RequestApplicationUpdate(); });
}

}  // namespace Korvane
