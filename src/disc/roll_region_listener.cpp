#include "disc/roll_region_listener.h"

#include "camera/camera_frame.h"
#include "camera/roll_operation.h"
#include "camera/view_size.h"
#include "korvane/aspect_ratio_adjuster.h"
#include "render/display_scale.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

// Pixels.
constexpr double RING_SIZE = 128.0;
constexpr double RING_RADIUS = 48.0;  // of the line in its picture
constexpr double TICK_START = -2.5;   // from that line
constexpr double TICK_LENGTH = -6.0;
constexpr double TICK_HALF_WIDTH = 1.5;
constexpr float TICK_OPACITY = 0.75F;

constexpr TextureID TEXTURES[] = {TEXTURE_ROLL_RING};

// The pixel of the camera's pivot.
Vector2 ProjectPivot(const CameraParameters& camera, int width, int height) {
  const CameraFrame frame(camera);
  const Vector3 toPivot = camera.pivot - camera.eye;
  const double depth = toPivot.Dot(frame.forward);
  Vector2 half = HalfViewAtDepth(camera, FrustumTangents(camera), depth);
  AdjustForAspectRatio(camera, width, height, half.x, half.y);
  return {(toPivot.Dot(frame.right) / half.x / 2.0 + 0.5) * width,
          (toPivot.Dot(frame.up) / half.y / 2.0 + 0.5) * height};
}

// A direction on the screen, of unit length.
Vector2 ProjectDirection(const CameraParameters& camera, const Vector3& direction) {
  const CameraFrame frame(camera);
  const Vector3 flat = Vector3(direction.Dot(frame.right), direction.Dot(frame.up), 0.0).Normalized();
  return {flat.x, flat.y};
}

}  // namespace

RollRegionListener::RollRegionListener(TrackMenu* menu, HelmDisc* helmDisc)
    : OperationRegionListener(menu, helmDisc, OPERATION_ROLL, TEXTURES), ring(TEXTURE_ROLL_RING) {}

void RollRegionListener::OnTrackMenuActivate(bool active) {
  const bool pressed = IsMouseDown();
  OperationRegionListener::OnTrackMenuActivate(active);
  if (!active && pressed) SetPivotBallVisible(false);  // else it is somebody else's
}

void RollRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  Press(*this)
      .HideMenu()
      .Then([&] { SetPivotBallVisible(true); })
      .ThenWithHub([&](CameraOperations& hub) { operation.Begin(hub, x, y); })
      .Then([&] { operation.BeginRecord(*this); });
}

void RollRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  ShowMenu();
  SetPivotBallVisible(false);
  operation.End();
}

void RollRegionListener::OnDraw() {
  DiscRegionListener::OnDraw();
  if (IsMouseDown()) Press(*this).ThenWithHub([&](const CameraOperations& hub) { DrawGauge(hub); });
}

void RollRegionListener::DrawGauge(const CameraOperations& hub) {
  const ApplicationParameters& parameters = hub.GetApplicationParameters();
  const Vector2 place =
      ProjectPivot(hub.GetCameraParameters(), parameters.viewport_width, parameters.viewport_height);
  if (!place.IsFinite()) return;
  const Press frame(*this);
  const FullViewPass pass(GetRenderer(), hub);
  if (!pass) return;
  const double size = RING_SIZE * PixelsPerPoint(&hub);
  ring.SetSize(size, size);
  ring.SetPosition(place);
  pass->Render(&ring);
  if (frame) DrawTick(*pass.operator->(), hub, place);
}

// A quad across the ring, in the direction in which up was at the start.
void RollRegionListener::DrawTick(Renderer& pass, const CameraOperations& hub, const Vector2& place) const {
  const auto* const roll = operation.Get<RollOperation>();
  if (roll == nullptr) return;
  const double scale = PixelsPerPoint(&hub);
  const Vector2 along = ProjectDirection(hub.GetCameraParameters(), roll->GetInitialUp());
  const Vector2 across = Vector2(-along.y, along.x) * TICK_HALF_WIDTH * scale;
  const Vector2 outer = place + along * (RING_RADIUS + TICK_START) * scale;
  const Vector2 inner = outer + along * TICK_LENGTH * scale;
  const Vector2 corners[] = {outer - across, outer + across, inner + across, inner - across};
  float vertices[12] = {};
  for (int i = 0; i < 4; ++i) {
    vertices[3 * i] = static_cast<float>(corners[i].x);
    vertices[3 * i + 1] = static_cast<float>(corners[i].y);
  }
  const Renderer::MaterialParams black = {{0.0F, 0.0F, 0.0F, TICK_OPACITY}};
  pass.RenderGeometry(4, vertices, nullptr, &black);
}

}  // namespace Korvane
