#include "cube/orientor_parts.h"

#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/orientor.h"

namespace Korvane {

bool OrientorParts::Look() {
  const CameraOperations* const hub = partners.hub;
  if (hub == nullptr) return false;
  CameraParameters camera;
  hub->QueryCameraParameters(camera);
  space.Look(camera, hub->GetApplicationParameters());
  return true;
}

bool OrientorParts::IsLockedToSelection() const {
  const CameraOperations* const hub = partners.hub;
  return hub != nullptr && hub->GetApplicationParameters().lock_to_selection;
}

bool OrientorParts::IsMouseOnOverlay() const {
  return parameters.draw_overlay && mouse.activeOverlayPart >= 0 &&
         mouse.activeOverlayPart < Orientor::OVERLAY_PART_COUNT;
}

OverlayQuads::State OrientorParts::GetOverlayState(bool arrows) const {
  const bool isNear = parameters.overlay_always_on || fade.mouseInRegion || !fade.IsGone();
  const bool isShown = partners.hub != nullptr && parameters.draw_overlay && !drag.IsActive() && isNear;
  return {isShown, IsLockedToSelection(), arrows};
}

CubeLook OrientorParts::GetLook() const {
  CubeLook look;
  look.highlightedPart = mouse.highlightedPart;
  look.closestPart = closest.part;
  look.activeOverlayPart = mouse.activeOverlayPart;
  look.screenSize = layout.screenSize;
  look.fade = fade.fade;
  look.opacity = fade.opacity;
  look.dragging = drag.IsActive();
  look.onRing = mouse.IsOnCompass() && !mouse.IsOnGeometry();
  look.onAxis = closest.IsLookedAlong(parameters.select_faces_only ? CUBE_FACE_COUNT : CUBE_PART_COUNT);
  return look;
}

CubePicker::Hit OrientorParts::PickGeometry(const Vector2& point) {
  if (renderer == nullptr || partners.hub == nullptr) return {};
  return picker.Pick(*renderer, {parameters, layout, space, AreArrowsShown(), IsMouseOnOverlay()}, point);
}

int OrientorParts::PickOverlay(const Vector2& point, bool arrows) const {
  if (renderer == nullptr) return -1;
  return CubePicker::PickOverlay(*renderer, {parameters, layout, space}, GetOverlayState(arrows), label,
                                 fade.opacity, point);
}

void OrientorParts::DrawGeometry(Renderer& target) {
  const Box2 box = layout.GetPassBox(parameters);
  const CameraParameters camera = MakeCubeCamera(parameters, space);
  if (!target.BeginRender(box, camera, Renderer::RENDER_PERSPECTIVE)) return;
  const CubeQuads quads(parameters, space, QuadUse::Drawn, AreArrowsShown());
  arrowsVisible = quads.HasAnyArrow();
  CubePainter(target, parameters, GetLook(), quads).Paint();
  target.EndRender();
}

void OrientorParts::DrawOverlay(Renderer& target) const {
  const CameraParameters camera = MakeOverlayCamera(parameters, space);
  if (!target.BeginRender(layout.GetViewportBox(), camera, Renderer::RENDER_OVERLAY)) return;
  const CubeLook look = GetLook();
  const OverlayQuads quads(parameters, layout, QuadUse::Drawn, GetOverlayState(arrowsVisible));
  PaintOverlay(target, look, quads);
  const bool lit = look.activeOverlayPart == CubeLabel::ID;
  if (DynamicIcon2D* const icon = label.Find(parameters, lit)) {
    CubeLabel::Place(*icon, parameters, layout, look.opacity);
    target.Render(icon);
  }
  target.EndRender();
}

void OrientorParts::TakeCompassSense() {
  CameraOperations* const hub = partners.hub;
  if (hub == nullptr || !mouse.IsOnCompass()) return;
  const int part = mouse.activePart;
  drag.sense = FindCompassSense(hub->GetCameraParameters(), hub->GetApplicationParameters(),
                                GetPartDirection(part), parameters.compass_angle);
  drag.tangent = Vector2();
  if (!compassFollowsPointer || !Look()) return;
  drag.tangent =
      FindCompassTangent(parameters, space, hub->GetCameraParameters(), hub->GetWorldUpDirection(), part);
}

}  // namespace Korvane
