#include "korvane/look_at_tool.h"

#include "interaction/tools/pivot_marker.h"
#include "interaction/tools/rewind_record.h"
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
  if (operating) EndMouseover();  // the release of the last press went missing
  operating = false;
  const bool result = Tool::OnMouseDown(x, y);
  if (!CanOperate() || !renderer->BeginMouseoverComponent(faceHighlighting)) return result;
  obstructionDetection = cameraOperations->GetApplicationParameters().use_look_at_obstruction_detection;
  operating = true;
  return true;
}

bool LookAtTool::OnMouseMove(int x, int y) {
  const bool result = Tool::OnMouseMove(x, y);
  if (!operating || !CanOperate()) return result;
  if (faceHighlighting) {
    Vector3 point;
    Vector3 normal;
    renderer->GetMouseoverComponent(PixelAt(x, y), point, normal);
  }
  cameraOperations->RequestApplicationUpdate();
  return true;
}

bool LookAtTool::OnKeyDown(KeyID key) {
  Tool::OnKeyDown(key);
  if (key != KEY_ESCAPE || !operating) return true;
  operating = false;
  EndMouseover();
  if (cameraOperations != nullptr) cameraOperations->RequestApplicationUpdate();
  return true;
}

bool LookAtTool::OnMouseUp(int x, int y) {
  const bool result = Tool::OnMouseUp(x, y);
  if (!operating) return result;
  operating = false;
  Vector3 point;
  Vector3 normal;
  if (!CanOperate() || !renderer->GetMouseoverComponent(PixelAt(x, y), point, normal)) {
    EndMouseover();
    return true;
  }
  BeginLookAt(point, normal);
  return true;
}

void LookAtTool::BeginLookAt(const Vector3& point, Vector3 normal) {
  CameraParameters camera = QueryCamera(*cameraOperations);
  const bool fromBehind = (point - camera.eye).Dot(normal) > 0.0;
  if (backfaceViewing && fromBehind) normal = -normal;
  camera.pivot = point;
  PlacePivotBall(pivotBall, camera, true);
  ApplyIfFinite(*cameraOperations, camera);

  LookAtShotParameters shot;
  shot.duration = FLIGHT_DURATION;
  shot.point = point;
  shot.direction = normal;
  shot.distance = GetViewingDistance(camera, point, normal);
  animating = true;
  cameraOperations->BeginShot(shot);
  BeginRecord(rewindHistory, cameraOperations);
}

double LookAtTool::GetViewingDistance(const CameraParameters& camera, const Vector3& point,
                                      const Vector3& normal) {
  double distance = (point - camera.eye).Length();
  Vector3 hit;
  if (obstructionDetection && renderer->QueryRaySceneIntersection(point, normal, hit)) {
    const double clearance = (hit - point).Length();
    if (clearance < distance) distance = clearance * OBSTRUCTION_MARGIN;
  }
  cameraOperations->RecalculateGlobalBounds();
  const double radius = cameraOperations->GetApplicationParameters().global_bound_radius;
  return distance > radius ? radius : distance;
}

void LookAtTool::EndMouseover() {
  if (renderer != nullptr) renderer->EndMouseoverComponent();
}

void LookAtTool::OnDraw() {
  Tool::OnDraw();
  if (HasShotEnded()) {
    EndRecord(rewindHistory, cameraOperations);
    EndMouseover();
    HidePivotBall(pivotBall);
    animating = false;
    if (cameraOperations != nullptr) cameraOperations->RequestApplicationUpdate();
  } else if (animating) {
    SampleRecord(rewindHistory, cameraOperations);
  }
  if (pivotBall != nullptr) pivotBall->Draw();
}

}  // namespace Korvane
