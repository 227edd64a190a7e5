#include "cube/cube_picker.h"

#include <algorithm>
#include <cmath>

#include "cube/cube_label.h"
#include "cube/cube_quads.h"
#include "cube/pass_view.h"
#include "foundation/same_bits.h"
#include "korvane/orientor.h"

namespace Korvane {

namespace {

constexpr unsigned PART_RUNS = CUBE_PART_COUNT + CUBE_FACE_COUNT;  // each with its sides, and the arrows
constexpr unsigned PART_VERTICES = CUBE_PART_COUNT * PartVertices::MAX_COUNT + CUBE_FACE_COUNT * 4;
constexpr unsigned SIDES_OF_COMPASS_PART = 2;

CameraParameters MakeCamera(const OrientorParameters& parameters, const CubeSpace& space, double distance) {
  CameraParameters camera;
  camera.eye = space.GetView() * -distance;
  camera.up = space.GetUp();
  camera.SetHorizontalFOV(parameters.view_fov);
  camera.SetVerticalFOV(parameters.view_fov);
  return camera;
}

// One pass of the renderer; `lay` offers what can be hit. Only what was offered counts: a host's own pick may
// answer anything.
template <class Lay>
int PickPass(Renderer& renderer, const Vector2& point, const Box2& box, const CameraParameters& camera,
             Renderer::RenderMode mode, int begin, int end, Lay lay) {
  if (!renderer.BeginSelection(point, box, camera, mode)) return -1;
  PickSink sink(renderer);
  lay(sink);
  renderer.EndSelection();
  const int hit = renderer.GetSelection();
  return hit >= begin && hit < end ? hit : -1;
}

// Notes whether anything that it takes stands near a pixel.
class NearSink final : public QuadSink {
 public:
  explicit NearSink(const Vector2& pixel) : point(pixel) {}

  void Take(int /*id*/, unsigned vertexCount, const float* vertices, const float* /*texCoords*/) override {
    static constexpr float MARGIN = 1.0F;  // pixels
    float low[2] = {vertices[0], vertices[1]};
    float high[2] = {vertices[0], vertices[1]};
    for (unsigned i = 1; i < vertexCount; ++i) {
      for (unsigned axis = 0; axis < 2; ++axis) {
        low[axis] = std::min(low[axis], vertices[3 * i + axis]);
        high[axis] = std::max(high[axis], vertices[3 * i + axis]);
      }
    }
    const bool isAway = point.x < low[0] - MARGIN || point.x > high[0] + MARGIN ||
                        point.y < low[1] - MARGIN || point.y > high[1] + MARGIN;
    isNear = isNear || !isAway;
  }

  bool IsNear() const { return isNear; }

 private:
  Vector2 point;
  bool isNear = false;
};

// A bit for each face whose arrow shows.
unsigned FindArrowFaces(const CubeQuads& quads) {
  unsigned faces = 0;
  for (int face = 0; face < CUBE_FACE_COUNT; ++face) {
    if (quads.HasArrow(face)) faces |= 1U << face;
  }
  return faces;
}

}  // namespace

CameraParameters MakeCubeCamera(const OrientorParameters& parameters, const CubeSpace& space) {
  float distance = parameters.view_scale;
  if (parameters.draw_compass) distance *= parameters.view_scale_compass;
  return MakeCamera(parameters, space, distance);
}

CameraParameters MakeOverlayCamera(const OrientorParameters& parameters, const CubeSpace& space) {
  return MakeCamera(parameters, space, parameters.view_scale);
}

CubePicker::CubePicker()
    : parts(PART_RUNS, PART_VERTICES),
      letters(SIDES_OF_COMPASS_PART * COMPASS_LETTER_COUNT, 4 * SIDES_OF_COMPASS_PART * COMPASS_LETTER_COUNT),
      ring(SIDES_OF_COMPASS_PART * COMPASS_RING_COUNT, 4 * SIDES_OF_COMPASS_PART * COMPASS_RING_COUNT) {}

// ---- what is offered ----

CubePicker::Source CubePicker::MakeSource(const Setting& setting) {
  const OrientorParameters& p = setting.parameters;
  return {setting.space.GetVersion(),
          {p.face_size, p.edge_size, p.gap_size, p.arrow_size, p.arrow_offset, p.shadow_offset,
           p.compass_offset, p.compass_angle, p.compass_select_radius, p.view_fov,
           p.draw_compass ? p.view_scale * p.view_scale_compass : p.view_scale,
           (setting.arrows ? 1.0F : 0.0F) + (p.draw_compass ? 2.0F : 0.0F)}};
}

void CubePicker::Renew(const Setting& setting, const CameraParameters& camera) {
  const Source now = MakeSource(setting);
  if (HaveSameBits(now, source)) return;
  source = now;
  const CubeQuads quads(setting.parameters, setting.space, QuadUse::Offered, setting.arrows);
  for (QuadList* const list : {&parts, &letters, &ring}) list->Clear();
  for (int part = 0; part < CUBE_PART_COUNT; ++part) quads.LayPart(part, parts);
  bounds = parts.GetBounds(camera);
  if (!setting.parameters.draw_compass) return;
  for (int part = COMPASS_LETTERS_FROM; part < COMPASS_RING_FROM; ++part) quads.LayCompassPart(part, letters);
  for (int part = COMPASS_RING_FROM; part < ALL_PART_COUNT; ++part) quads.LayCompassPart(part, ring);
  bounds.Join(letters.GetBounds(camera));
  bounds.Join(ring.GetBounds(camera));
}

std::vector<Vector3> CubePicker::GetCorners(const Setting& setting, int part) {
  Renew(setting, MakeCubeCamera(setting.parameters, setting.space));
  const QuadList& list = part < COMPASS_LETTERS_FROM ? parts : part < COMPASS_RING_FROM ? letters : ring;
  return list.GetCorners(part);
}

// Outside the pass, and where nothing of what is offered can show: first by a sphere about all of it, which
// needs no list.
bool CubePicker::IsOutside(const Setting& setting, const Box2& box, const CameraParameters& camera,
                           const Vector2& point) {
  static constexpr double BEYOND_ROUNDING = 1.001;
  const Vector2 local((point.x - box.center.x) / box.halfExtent.x,
                      (point.y - box.center.y) / box.halfExtent.y);
  const double farthest = std::max(std::abs(local.x), std::abs(local.y));
  if (!(farthest > 1.0) || !setting.space.HasPicture()) return false;
  const double reach =
      CubeQuads(setting.parameters, setting.space, QuadUse::Offered, setting.arrows).GetReach();
  const double beyond = camera.eye.LengthSquared() - reach * reach;
  const double tangent = std::tan(setting.parameters.view_fov * Math::DEG_TO_RAD);
  if (beyond > 0.0 && tangent > 0.0 && farthest * tangent > BEYOND_ROUNDING * reach / std::sqrt(beyond)) {
    return true;
  }
  Renew(setting, camera);
  return !bounds.Holds(local);
}

// ---- the picks ----

// From below the compass stands before the cube, from above behind it. The arrows go before the face to
// which they lead.
CubePicker::Hit CubePicker::Pick(Renderer& renderer, const Setting& setting, const Vector2& point) {
  const OrientorParameters& parameters = setting.parameters;
  const CubeSpace& space = setting.space;
  const Box2 box = setting.layout.GetPassBox(parameters);
  const CameraParameters camera = MakeCubeCamera(parameters, space);
  const CubeQuads quads(parameters, space, QuadUse::Offered, setting.arrows);
  const unsigned arrowFaces = FindArrowFaces(quads);
  if (IsOutside(setting, box, camera, point)) return {-1, arrowFaces};
  Renew(setting, camera);

  unsigned offeredArrows = 0;
  const auto pick = [&](const QuadList& list, int begin, int end) {
    return PickPass(renderer, point, box, camera, Renderer::RENDER_PERSPECTIVE, begin, end,
                    [&](QuadSink& sink) {
                      if (&list == &parts) offeredArrows = arrowFaces;
                      list.Offer(end, sink);
                    });
  };
  const bool offersCompass = parameters.draw_compass && !setting.compassHidden;
  const auto pickLetter = [&] {
    return offersCompass ? pick(letters, COMPASS_LETTERS_FROM, COMPASS_RING_FROM) : -1;
  };
  const auto hit = [&](int part) { return Hit{part, offeredArrows}; };

  const bool lookingUp = space.IsLookingUp();
  const int face = pick(parts, 0, CUBE_FACE_COUNT);
  if (hit(face).IsByArrow()) return hit(face);
  const int nearLetter = lookingUp ? pickLetter() : -1;
  if (nearLetter >= 0) return hit(nearLetter);
  const int part = pick(parts, 0, CUBE_PART_COUNT);
  if (part >= 0 && (part < CUBE_FACE_COUNT || !parameters.select_faces_only)) return hit(part);
  const int farLetter = lookingUp ? -1 : pickLetter();
  if (farLetter >= 0) return hit(farLetter);
  return hit(offersCompass ? pick(ring, COMPASS_RING_FROM, ALL_PART_COUNT) : -1);
}

int CubePicker::PickOverlay(Renderer& renderer, const Setting& setting, const OverlayQuads::State& state,
                            const CubeLabel& label, float opacity, const Vector2& point) {
  const OrientorParameters& parameters = setting.parameters;
  const OverlayQuads quads(parameters, setting.layout, QuadUse::Offered, state);
  static constexpr int ORDER[] = {Orientor::OVERLAY_ROTATE_COUNTER_CLOCKWISE,
                                  Orientor::OVERLAY_ROTATE_CLOCKWISE, Orientor::OVERLAY_HOME,
                                  Orientor::OVERLAY_LOCK, Orientor::OVERLAY_CONTEXT_MENU};
  const auto lay = [&](QuadSink& sink) {
    for (const int part : ORDER) quads.Lay(part, sink);
    DynamicIcon2D* const icon = label.Find(parameters, false);
    if (icon == nullptr) return;
    CubeLabel::Place(*icon, parameters, setting.layout, opacity);
    CubeLabel::Offer(*icon, sink);
  };
  const double fromTop = setting.layout.viewportHeight - point.y;
  if (!setting.layout.IsInRegion(parameters, state.locked, setting.layout.ToCorner(point.x, fromTop))) {
    NearSink near(point);
    lay(near);
    if (!near.IsNear()) return -1;
  }
  return PickPass(renderer, point, setting.layout.GetViewportBox(),
                  MakeOverlayCamera(parameters, setting.space), Renderer::RENDER_OVERLAY, 0,
                  Orientor::OVERLAY_PART_COUNT, lay);
}

}  // namespace Korvane
