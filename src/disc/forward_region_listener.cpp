#include "disc/forward_region_listener.h"

#include <cmath>

#include "camera/camera_frame.h"
#include "camera/host_camera.h"
#include "camera/view_size.h"
#include "camera/zoom_operation.h"
#include "foundation/truncate.h"
#include "korvane/pivot_ball.h"
#include "render/display_scale.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

constexpr int SNAP_SIZE = 200;  // pixels at either end, in which a drag rests

// Of the click.
constexpr double FLIGHT_DURATION = 0.5;  // seconds
constexpr double FLIGHT_AMOUNT = 1.0 / 3.0;

// The gauge, in pixels. It hangs below the press; what it shows grows smaller on its way up.
constexpr double GAUGE_WIDTH = 128.0;
constexpr double GAUGE_HEIGHT = 256.0;
constexpr double GAUGE_DROP = 22.0;
constexpr double GAUGE_OPACITY = 0.8;
constexpr double TARGET_LARGEST = 70.0;
constexpr double TARGET_SMALLEST = 18.0;
constexpr double TARGET_LEAST = 10.0;
constexpr double TARGET_START = -50.0;
constexpr double TARGET_RANGE = 66.0;

constexpr TextureID TEXTURES[] = {TEXTURE_FORWARD_GAUGE, TEXTURE_FORWARD_TARGET};

double TangentOf(double degrees) { return std::tan(degrees * Math::DEG_TO_RAD); }

// From where a sphere is seen whole, from its centre.
double DistanceToSee(const CameraParameters& camera, double radius) {
  const double reach = 2.0 * radius;
  if (camera.IsOrthographic()) return reach;
  return Math::Max(reach / TangentOf(camera.GetHorizontalFOV()), reach / TangentOf(camera.GetVerticalFOV()));
}

// Along the view; a view without perspective looks the same from there.
void PutCentreAtDepthOf(const Vector3& point, CameraParameters& camera) {
  const Vector3 forward = ViewDirection(camera);
  const Vector3 way = forward * (point - camera.centre).Dot(forward);
  camera.eye += way;
  camera.centre += way;
}

}  // namespace

ForwardRegionListener::ForwardRegionListener(TrackMenu* menu, HelmDisc* helmDisc)
    : OperationRegionListener(menu, helmDisc, OPERATION_ZOOM, TEXTURES),
      missHUD({STRING_OFF_MODEL}),
      gauge(TEXTURE_FORWARD_GAUGE),
      target(TEXTURE_FORWARD_TARGET) {
  gauge.SetOpacity(GAUGE_OPACITY);
}

void ForwardRegionListener::OnTrackMenuActivate(bool active) {
  if (!active) BreakOff();
  OperationRegionListener::OnTrackMenuActivate(active);
  missHUD.Take(active ? GetRenderer() : nullptr);
}

// ---- the press ----

void ForwardRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  hit = flying = false;
  CameraParameters camera;
  Sight sight;
  Press press(*this);
  // A view that may not switch stays as it is.
  press.HideMenu()
      .ThenWithHub([](CameraOperations& hub) { (void)hub.AutoSwitchToPerspectiveProjection(); })
      .ThenWithHub([](CameraOperations& hub) { hub.RecalculateSceneBounds(); })
      .ThenWithHub([&](CameraOperations& hub) {
        BorrowSettings(hub);
        hub.QueryCameraParameters(camera);
      })
      .ThenWithHub([&](const CameraOperations& hub) { hit = Look(hub, camera, sight) && press; });
  if (!hit) {
    press.Then([&] { operation.End(); });  // one whose release went missing
    return;
  }
  press.Then([&] { Aim(camera, sight); })
      .ThenWithHub([&](CameraOperations& hub) { operation.Begin(hub, x, y); })
      .Then([&] { operation.BeginRecord(*this); });
}

void ForwardRegionListener::BorrowSettings(CameraOperations& hub) {
  GiveSettingsBack();  // the release of the last press went missing
  lender.Set(&hub);
  settings.Borrow(hub);
  ApplicationParameters& parameters = hub.GetApplicationParameters();
  const int snap = Truncate(SNAP_SIZE * PixelsPerPoint(parameters));
  parameters.zoom_in_snap_size = snap;
  parameters.zoom_out_snap_size = snap;
  parameters.zoom_min_limit_motion = true;
  parameters.zoom_sense_reversed = false;
}

void ForwardRegionListener::GiveSettingsBack() {
  settings.GiveBack(lender.Get());
  lender.Set(nullptr);
}

bool ForwardRegionListener::Look(const CameraOperations& hub, const CameraParameters& camera, Sight& sight) {
  const ApplicationParameters& parameters = hub.GetApplicationParameters();
  Vector3 origin;
  GetScreenRay(downX, downY, parameters.viewport_width, parameters.viewport_height, camera, origin,
               sight.ray);
  Renderer* const renderer = GetRenderer();
  return renderer != nullptr &&
         renderer->QueryMouseRaySceneIntersection(downX, downY, origin, sight.ray, sight.point);
}

void ForwardRegionListener::Aim(CameraParameters& camera, const Sight& sight) {
  camera.pivot = sight.point;
  if (camera.IsOrthographic()) PutCentreAtDepthOf(sight.point, camera);
  if (PivotBall* const ball = GetPivotBall()) ball->SetPosition(sight.point);
  Press(*this)
      .ThenWithHub([&](CameraOperations& hub) {
        const double space = GetSpaceBehind(hub, camera, sight);
        if (GetHub() == &hub) hub.GetApplicationParameters().zoom_back_distance = space;
      })
      .ThenWithHub([&](CameraOperations& hub) { ApplyIfFinite(hub, camera); })
      .Then([&] {
        SetPivotBallVisible(true);
        if (PivotBall* const ball = GetPivotBall()) ball->UpdateSize(camera);
      });
}

// How far a drag may go back: to what stands behind, or to where the whole scene is seen.
double ForwardRegionListener::GetSpaceBehind(const CameraOperations& hub, const CameraParameters& camera,
                                             const Sight& sight) {
  const ApplicationParameters& parameters = hub.GetApplicationParameters();
  const Vector3 forward = ViewDirection(camera);
  const double depth = (parameters.scene_bound_centre - camera.eye).Dot(forward);
  const double space = DistanceToSee(camera, parameters.scene_bound_radius) - depth;
  Vector3 behind;
  Renderer* const renderer = GetRenderer();
  const bool found =
      renderer != nullptr && renderer->QueryRaySceneIntersection(sight.point, -sight.ray, behind);
  if (!found || camera.IsOrthographic()) return space;
  return std::abs((behind - camera.eye).Dot(forward));
}

// ---- the release, and the flight of a click ----

void ForwardRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  GiveSettingsBack();
  Press release(*this);
  release.ShowMenu();
  if (!release) return;
  SetPivotBallVisible(false);
  operation.EndOperation();
  if (hit && !IsMouseDrag()) {
    release.Then([&] { Fly(); });
  } else {
    release.Then([&] {
      flying = false;
      operation.End();
    });
  }
}

// The record stays open until the camera is there.
void ForwardRegionListener::Fly() {
  flying = true;
  Press(*this)
      .ThenWithHub([&](CameraOperations& hub) { BeginFlight(hub); })
      .Then([&] { SetPivotBallVisible(true); })
      .HideMenu();
}

void ForwardRegionListener::BeginFlight(CameraOperations& hub) {
  ZoomShotParameters shot;
  shot.direction = ZoomShotParameters::DIRECTION_IN;
  shot.anchor = TARGET_CAM_START;
  shot.duration = FLIGHT_DURATION;
  shot.amount = FLIGHT_AMOUNT;
  const Lifeline::Watch alive(GetLifeline());
  flightHub.Set(&hub);
  bool begun = false;
  const bool flies = flight.Watch(
      hub, [&] { begun = hub.BeginShot(shot); }, [&] { return flying; });
  if (!alive || flies) return;
  CameraOperations* const flown = flightHub.Get();
  flightHub.Set(nullptr);
  if (flown != nullptr && begun && !flying) flown->EndShot();  // broken off before it was in the hub
}

void ForwardRegionListener::NoteEndOfFlight(const CameraParameters& /*camera*/) { flightHub.Set(nullptr); }

void ForwardRegionListener::FollowFlight() {
  flying = !IsShotOver(GetHub());
  if (flying) return;
  SetPivotBallVisible(false);
  ShowMenu();
  operation.End();
}

// A move that another has begun meanwhile goes on.
void ForwardRegionListener::BreakOff() {
  const bool flies = std::exchange(flying, false);
  hit = false;
  GiveSettingsBack();
  if (flies || IsMouseDown()) SetPivotBallVisible(false);
  CameraOperations* const hub = flies ? flightHub.Get() : nullptr;
  if (hub == nullptr || !hub->IsShotActive()) return;
  flightHub.Set(nullptr);
  hub->EndShot();
}

// ---- a frame ----

void ForwardRegionListener::OnDraw() {
  DiscRegionListener::OnDraw();
  if (!IsMouseDown() && flying) FollowFlight();
  if (!IsMouseDown() && !flying) return;
  Press frame(*this);
  if (hit) {
    frame.ThenWithHub([&](const CameraOperations& hub) { DrawGauge(hub); }).Then([&] { operation.Sample(); });
  } else {
    frame.ThenWithHub([&](const CameraOperations& hub) { DrawMiss(hub); });
  }
}

// Of a flight, which goes a third of the way, half of the gauge.
double ForwardRegionListener::GetProgress(const CameraOperations& hub) const {
  if (const Shot* const shot = hub.GetActiveShot()) return shot->GetUnitTime() * 0.5;
  const auto* const zoom = operation.Get<const ZoomOperation>();
  return zoom != nullptr ? zoom->GetUnitAmount() : 0.0;
}

void ForwardRegionListener::DrawGauge(const CameraOperations& hub) {
  const double progress = GetProgress(hub);
  const double size = Math::Max((1.0 - progress) * TARGET_LARGEST + progress * TARGET_SMALLEST, TARGET_LEAST);
  const double scale = PixelsPerPoint(&hub);
  const Vector2 place(downX, downY - GAUGE_DROP * scale);
  gauge.SetSize(GAUGE_WIDTH * scale, GAUGE_HEIGHT * scale);
  gauge.SetPosition(place);
  target.SetSize(size * scale, size * scale);
  target.SetPosition(place + Vector2(0.0, (TARGET_START + progress * TARGET_RANGE) * scale));
  const FullViewPass pass(GetRenderer(), hub);
  if (!pass) return;
  pass->Render(&gauge);
  pass->Render(&target);
}

void ForwardRegionListener::DrawMiss(const CameraOperations& hub) {
  const double width = hub.GetApplicationParameters().viewport_width;
  const Press frame(*this);
  if (Renderer* const renderer = GetRenderer()) renderer->SetCursorID(CURSOR_NO_TARGET);
  if (!frame) return;
  const FullViewPass pass(GetRenderer(), hub);
  DynamicIcon2D* const note = missHUD.Get(0);
  if (!pass || note == nullptr) return;
  note->SetPosition({width / 2.0, note->GetHeight()});
  pass->Render(note);
}

}  // namespace Korvane
