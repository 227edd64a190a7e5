// What is under the mouse.
#include <utility>

#include "camera/camera_frame.h"
#include "cube/cube_model.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"

namespace Korvane {

// One pass of the renderer; `lay` offers what can be hit.
template <class Lay>
int Orientor::Pick(const Vector2& point, const Box2& viewport, const CameraParameters& camera,
                   Renderer::RenderMode mode, Lay lay) {
  if (!renderer->BeginSelection(point, viewport, camera, mode)) return -1;
  lay();
  renderer->EndSelection();
  return renderer->GetSelection();
}

bool Orientor::UpdateSelection(const Vector3& view, const Vector3& up) {
  if (cameraOperations == nullptr || !parameters.visible || dragging) return false;
  const int highlightedBefore = highlightedPart;
  const int overlayBefore = activeOverlayPart;
  const bool shotActive = cameraOperations->IsShotActive();
  const bool reacts = !parameters.disabled && !menuOpen;
  const Vector2 point(mouseX, static_cast<double>(viewportHeight) - mouseY);

  if (!mousePressed) {
    activePart = -1;
    if (reacts && parameters.select_parts) activePart = GetSelectionGeometry(view, up, point);
    if (!shotActive) highlightedPart = activePart;
  }

  activeOverlayPart = rawOverlayPart = -1;
  if (reacts) {
    rawOverlayPart = GetSelectionOverlay(view, up, point);
    if (mousePressed && rawOverlayPart != pressedOverlayPart) rawOverlayPart = -1;
    if (!shotActive) activeOverlayPart = rawOverlayPart;
  }
  return highlightedPart != highlightedBefore || activeOverlayPart != overlayBefore;
}

bool Orientor::IsCameraLookingUp() const {
  CameraParameters camera;
  cameraOperations->QueryCameraParameters(camera);
  const ApplicationParameters& scene = std::as_const(*cameraOperations).GetApplicationParameters();
  return ViewDirection(camera).Dot(scene.world_up_direction) > 0.0;
}

/// The passes over cube and compass at one pixel.
class Orientor::GeometryPick {
 public:
  GeometryPick(Orientor& cube, const Vector3& viewDirection, const Vector3& up, const Vector2& pixel)
      : orientor(cube), view(viewDirection), point(pixel) {
    orientor.GetPerspectiveCamera(box, camera, view, up);
  }

  int PickParts(int end) {
    return Pick(0, end, [&](int part) {
      orientor.DrawCubePart(material, view, orientor.partDirections[part], true, part);
    });
  }

  int PickLetters() { return PickCompass(COMPASS_LETTERS_BEGIN, COMPASS_RING_BEGIN); }
  int PickRing() { return PickCompass(COMPASS_RING_BEGIN, PART_COUNT); }

 private:
  int PickCompass(int begin, int end) {
    if (!orientor.parameters.draw_compass || orientor.IsMouseOnOverlayPart()) return -1;
    return Pick(begin, end, [&](int part) {
      orientor.DrawCompassPart(material, view, orientor.partDirections[part], part, true);
    });
  }

  template <class Lay>
  int Pick(int begin, int end, Lay lay) {
    const int hit = orientor.Pick(point, box, camera, Renderer::RENDER_PERSPECTIVE, [&] {
      for (int part = begin; part < end; ++part) lay(part);
    });
    return hit >= begin && hit < end ? hit : -1;  // a host's own pick may answer anything
  }

  Orientor& orientor;
  const Vector3& view;
  const Vector2& point;
  const Renderer::MaterialParams material;
  Box2 box;
  CameraParameters camera;
};

// From below the compass stands before the cube, from above behind it. The arrows go before the face to
// which they lead.
int Orientor::GetSelectionGeometry(const Vector3& view, const Vector3& up, const Vector2& point) {
  if (renderer == nullptr || cameraOperations == nullptr) return -1;
  for (bool& arrow : faceArrows) arrow = false;
  const bool lookingUp = IsCameraLookingUp();
  GeometryPick pick(*this, view, up, point);

  const int face = pick.PickParts(FACE_COUNT);
  if (face >= 0 && faceArrows[face]) return face;
  const int nearLetter = lookingUp ? pick.PickLetters() : -1;
  if (nearLetter >= 0) return nearLetter;
  const int part = pick.PickParts(GEOMETRY_PART_COUNT);
  const bool selectable = part < FACE_COUNT || !parameters.select_faces_only;
  if (part >= 0 && selectable) return part;
  const int farLetter = lookingUp ? -1 : pick.PickLetters();
  return farLetter >= 0 ? farLetter : pick.PickRing();
}

int Orientor::GetSelectionOverlay(const Vector3& view, const Vector3& up, const Vector2& point) {
  if (renderer == nullptr) return -1;
  static constexpr OverlayPart BUTTONS[] = {
      OVERLAY_ROTATE_COUNTER_CLOCKWISE,
      OVERLAY_ROTATE_CLOCKWISE,
      OVERLAY_HOME,
      OVERLAY_LOCK,
      OVERLAY_CONTEXT_MENU,
  };
  const Renderer::MaterialParams material;
  Box2 box;
  CameraParameters camera;
  GetOverlayCamera(box, camera, view, up);
  const int hit = Pick(point, box, camera, Renderer::RENDER_OVERLAY, [&] {
    for (const OverlayPart part : BUTTONS) DrawOverlayPart(material, part, true);
    DrawUCSMenu(ucsLabel, OVERLAY_UCS_MENU, true);
  });
  return hit >= 0 && hit < OVERLAY_PART_COUNT ? hit : -1;
}

bool Orientor::IsPointInBounds(int x, int y) {
  if (cameraOperations == nullptr) return false;
  Vector3 view;
  Vector3 up;
  GetStandardView(view, up);
  const Vector2 point(x, y);
  const int geometry = GetSelectionGeometry(view, up, point);
  const int overlay = GetSelectionOverlay(view, up, point);
  return geometry >= 0 || overlay != geometry;
}

}  // namespace Korvane
