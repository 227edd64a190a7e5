#include "cube/orientor_parts.h"

#include <cmath>
#include <cstddef>
#include <vector>

#include "cube/pass_view.h"
#include "foundation/out_of_memory.h"
#include "korvane/camera_operations.h"
#include "korvane/icon2d.h"
#include "korvane/orientor.h"

namespace Korvane {

namespace {

// Finds the middle of the rectangle about all that it takes.
class MiddleSink final : public QuadSink {
 public:
  void Take(int /*id*/, unsigned vertexCount, const float* vertices, const float* /*texCoords*/) override {
    for (unsigned i = 0; i < vertexCount; ++i) {
      const Vector2 corner(vertices[3 * i], vertices[3 * i + 1]);
      low = any ? Vector2(Math::Min(low.x, corner.x), Math::Min(low.y, corner.y)) : corner;
      high = any ? Vector2(Math::Max(high.x, corner.x), Math::Max(high.y, corner.y)) : corner;
      any = true;
    }
  }

  /// False when nothing was taken.
  bool GetMiddle(Vector2& middle) const {
    if (any) middle = Vector2(std::floor((low.x + high.x) / 2.0), std::floor((low.y + high.y) / 2.0));
    return any;
  }

 private:
  bool any = false;
  Vector2 low;
  Vector2 high;
};

}  // namespace

bool OrientorParts::Look() {
  const CameraOperations* const hub = partners.hub.Get();
  if (hub == nullptr) return false;
  CameraParameters camera;
  hub->QueryCameraParameters(camera);
  space.Look(camera, hub->GetApplicationParameters());
  return true;
}

bool OrientorParts::IsLockedToSelection() const {
  const CameraOperations* const hub = partners.hub.Get();
  return hub != nullptr && hub->GetApplicationParameters().lock_to_selection;
}

bool OrientorParts::IsMouseOnOverlay() const {
  return parameters.draw_overlay && mouse.activeOverlayPart >= 0 &&
         mouse.activeOverlayPart < Orientor::OVERLAY_PART_COUNT;
}

OverlayQuads::State OrientorParts::GetOverlayState(bool arrows) const {
  const bool isNear = parameters.overlay_always_on || fade.mouseInRegion || !fade.IsGone();
  const bool isShown = partners.hub.Get() != nullptr && parameters.draw_overlay && !drag.IsActive() && isNear;
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

int OrientorParts::PickGeometry(const Vector2& point) {
  mouse.arrowFaces = 0;
  Renderer* const target = renderer.Get();
  if (target == nullptr || partners.hub.Get() == nullptr) return -1;
  const CubePicker::Setting setting{parameters, layout, space, AreArrowsShown(), IsMouseOnOverlay()};
  const CubePicker::Hit hit = picker.Pick(*target, setting, point);
  mouse.arrowFaces = hit.arrowFaces;
  arrowsVisible = arrowsVisible || hit.arrowFaces != 0;
  return hit.part;
}

int OrientorParts::PickOverlay(const Vector2& point, bool arrows) const {
  Renderer* const target = renderer.Get();
  if (target == nullptr) return -1;
  return CubePicker::PickOverlay(*target, {parameters, layout, space}, GetOverlayState(arrows), label,
                                 fade.opacity, point);
}

// In the middle of a quad, or else, where others lie over that, on the way to one of its corners.
bool OrientorParts::FindGeometry(int part, Vector2& point) {
  return OrFail([&] {
    static constexpr double WAYS[] = {0.0, 0.5, 0.8};
    Renderer* const target = renderer.Get();
    if (target == nullptr || partners.hub.Get() == nullptr) return false;
    const CubePicker::Setting setting{parameters, layout, space, AreArrowsShown()};
    const Box2 box = layout.GetPassBox(parameters);
    const PassView pass(MakeCubeCamera(parameters, space));
    const auto isHit = [&](const Vector3& place) {
      Vector2 local;
      if (!pass.Project(place, local)) return false;
      point = Vector2(std::floor(box.center.x + local.x * box.halfExtent.x),
                      std::floor(box.center.y + local.y * box.halfExtent.y));
      return picker.Pick(*target, setting, point).part == part;
    };
    const std::vector<Vector3> corners = picker.GetCorners(setting, part);
    for (const double way : WAYS) {
      for (std::size_t i = 0; i < corners.size() / 4 * 4; ++i) {
        const Vector3* const quad = &corners[i / 4 * 4];
        const Vector3 middle = (quad[0] + quad[1] + quad[2] + quad[3]) * 0.25;
        if (isHit(middle + (corners[i] - middle) * way)) return true;
      }
    }
    return false;
  });
}

bool OrientorParts::FindOverlay(int part, Vector2& point) const {
  const bool isThere = partners.hub.Get() != nullptr && parameters.draw_overlay;
  MiddleSink sink;
  OverlayQuads(parameters, layout, QuadUse::Offered, {isThere, IsLockedToSelection(), true}).Lay(part, sink);
  DynamicIcon2D* const icon = part == CubeLabel::ID ? label.Find(parameters, false) : nullptr;
  if (icon != nullptr) {
    CubeLabel::Place(*icon, parameters, layout, fade.opacity);
    CubeLabel::Offer(*icon, sink);
  }
  return sink.GetMiddle(point);
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
  CameraOperations* const hub = partners.hub.Get();
  if (hub == nullptr || !mouse.IsOnCompass()) return;
  const int part = mouse.activePart;
  drag.sense = FindCompassSense(hub->GetCameraParameters(), hub->GetApplicationParameters(),
                                GetPartDirection(part), parameters.compass_angle);
  drag.tangent = Vector2();
  if (!compassFollowsPointer) return;
  Look();
  drag.tangent =
      FindCompassTangent(parameters, space, hub->GetCameraParameters(), hub->GetWorldUpDirection(), part);
}

}  // namespace Korvane
