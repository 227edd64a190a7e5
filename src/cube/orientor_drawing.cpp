// The cube and its compass, as renderer calls.
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "camera/camera_frame.h"
#include "cube/cube_model.h"
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"
#include "korvane/orientor.h"

namespace Korvane {

namespace {

constexpr double LETTER_HALF_SIZE = 0.05;
constexpr double RING_PART_HALF_SIZE = 0.0325;
// Keeps things that lie on the ground apart, in the standard space.
constexpr double RING_BELOW_SHADOW = 0.0005;
constexpr double LETTER_BACK_BELOW = 0.001;

CubeDimensions GetDimensions(const OrientorParameters& parameters) {
  return {parameters.face_size, parameters.edge_size, parameters.gap_size};
}

CameraParameters MakeCubeCamera(const Vector3& view, const Vector3& up, double distance, double halfAngle) {
  CameraParameters camera;
  camera.eye = view * -distance;
  camera.up = up;
  camera.SetHorizontalFOV(halfAngle);
  camera.SetVerticalFOV(halfAngle);
  return camera;
}

bool NearlyEqual(const Vector3& a, const Vector3& b) {
  const auto near = [](double x, double y) { return std::abs(x - y) <= Math::EPSILON_VALUE; };
  return near(a.x, b.x) && near(a.y, b.y) && near(a.z, b.z);
}

}  // namespace

// ---- cameras ----

int Orientor::GetPassSize() const {
  if (!parameters.draw_compass) return screenSize;
  return Truncate(static_cast<float>(screenSize) * parameters.view_scale_compass);
}

void Orientor::GetPerspectiveCamera(Box2& box, CameraParameters& camera, const Vector3& view,
                                    const Vector3& up) const {
  const int passSize = GetPassSize();
  const auto size = static_cast<float>(passSize);
  const double half = passSize / 2.0;
  // The low corner of the pass is on whole pixels.
  const auto center = [&](float scale, float viewOffset, int screenOffset, float offset) {
    const float inset = (scale * viewOffset + (scale - 1.0F) / 2.0F) * size;
    return Truncate(inset + static_cast<float>(screenOffset) + offset) + half;
  };
  box.center.x = center(mirror.scaleX, parameters.view_offset_x, parameters.screen_offset_x, mirror.offsetX);
  box.center.y = center(mirror.scaleY, parameters.view_offset_y, parameters.screen_offset_y, mirror.offsetY);
  box.halfExtent = Vector2(half, half);

  float distance = parameters.view_scale;
  if (parameters.draw_compass) distance *= parameters.view_scale_compass;
  camera = MakeCubeCamera(view, up, distance, parameters.view_fov);
}

void Orientor::GetOverlayCamera(Box2& box, CameraParameters& camera, const Vector3& view,
                                const Vector3& up) const {
  const Vector2 half(viewportWidth / 2.0, viewportHeight / 2.0);
  box = Box2(half, half);
  camera = MakeCubeCamera(view, up, parameters.view_scale, parameters.view_fov);
}

// ---- a frame ----

void Orientor::Draw() {
  if (!parameters.visible) EndGesture();
  if (cameraOperations == nullptr || !parameters.visible) return;
  Update(false);
  Vector3 view;
  Vector3 up;
  GetStandardView(view, up);
  arrowsVisible = false;
  DrawGeometry(view, up);
  DrawOverlay(view, up);
}

/// The steps of drawing cube and compass: what stays the same through all of them, and the material as it
/// goes from step to step.
class Orientor::GeometryPass {
 public:
  GeometryPass(Orientor& cube, const Vector3& viewDirection)
      : orientor(cube),
        parameters(cube.parameters),
        view(viewDirection),
        highlight(parameters.draw_selected_face && !cube.dragging && !parameters.disabled),
        closest(parameters.draw_closest_face),
        highlighted(cube.highlightedPart),
        highlightsPart(highlight && highlighted >= 0 && highlighted < GEOMETRY_PART_COUNT) {}

  void DrawParts() {
    material.lineWidth = static_cast<float>(orientor.screenSize) * 0.01F;
    SetMaterial(parameters.colour_face, orientor.opacity, TEXTURE_CUBE_FACES, DRAW_QUADS);
    for (int part = 0; part < GEOMETRY_PART_COUNT; ++part) {
      if (IsOrdinary(part)) DrawPart(part);
    }
  }

  void DrawHighlightedPart() {
    if (!highlightsPart) return;
    SetColour(parameters.colour_face_selected);
    DrawPart(highlighted);
    if (highlighted == orientor.closestPart) closest = false;
  }

  // The closest part tints in as the mouse comes near.
  void DrawClosestPart() {
    const int part = orientor.closestPart;
    if (!closest || part < 0 || part >= GEOMETRY_PART_COUNT) return;
    const auto t = static_cast<float>(Math::Max(Math::Min(orientor.opacity * orientor.fade, 1.0), 0.5));
    for (int i = 0; i < 3; ++i) {
      material.colour[i] = t * parameters.colour_face_closest[i] + (1.0F - t) * parameters.colour_face[i];
    }
    DrawPart(part);
  }

  void DrawShadow() {
    material.colour[3] = parameters.opacity_shadow * orientor.opacity;
    SetPicture(TEXTURE_CUBE_SHADOW, Renderer::DRAW_CUBE_SHADOW);
    const double half = orientor.GetHalfSize() + parameters.shadow_size;
    DrawGroundQuad(Vector3(0.0, GetGround(), 0.0), Vector3(half, 0.0, 0.0), Vector3(0.0, 0.0, half));
  }

  void DrawRing() {
    const bool selected = orientor.IsMouseOnCompassPart() && !orientor.IsMouseOnGeometryPart();
    static constexpr float WHITE[3] = {1.0F, 1.0F, 1.0F};
    SetMaterial(WHITE, parameters.opacity_compass * orientor.opacity,
                selected ? TEXTURE_COMPASS_RING_ACTIVE : TEXTURE_COMPASS_RING, Renderer::DRAW_QUADS);
    const double half = orientor.GetHalfSize() + parameters.compass_size;
    Vector3 centre(0.0, GetGround() - RING_BELOW_SHADOW, 0.0);
    Vector3 a(half, 0.0, 0.0);
    Vector3 b(0.0, 0.0, half);
    if (!orientor.IsSceneWorld()) orientor.ConvertVectorsToWorldSpace(centre, a, b);
    DrawGroundQuad(centre, a, b);
    DrawGroundQuad(centre, -a, b);  // from above and from below
  }

  void DrawLetters() {
    const bool emphasis = !parameters.disabled;
    SetMaterial(parameters.colour_compass_text, orientor.opacity, TEXTURE_COMPASS_LETTERS,
                Renderer::DRAW_QUADS);
    for (int part = COMPASS_LETTERS_BEGIN; part < COMPASS_RING_BEGIN; ++part) {
      if (!emphasis || part != highlighted) DrawLetter(part);
    }
    if (!emphasis || highlighted < COMPASS_LETTERS_BEGIN || highlighted >= COMPASS_RING_BEGIN) return;
    SetColour(parameters.colour_compass_text_selected);
    DrawLetter(highlighted);
  }

  void DrawShading() {
    SetMaterial(parameters.colour_edge, orientor.opacity,
                orientor.ViewOnPartAxis() ? TEXTURE_NONE : TEXTURE_CUBE_SHADING, Renderer::DRAW_SOLID);
    const Vector3 corner(orientor.GetHalfSize());
    orientor.DrawBox(material, -corner, corner, true, false, 0);
  }

  void DrawArrows() {
    const float lineWidth = material.lineWidth;
    material.lineWidth = 1.0F;
    for (int part = 0; part < GEOMETRY_PART_COUNT; ++part) {
      if (IsOrdinary(part)) orientor.DrawArrowPart(material, view, DirectionOf(part), false, part);
    }
    material.lineWidth = lineWidth;
  }

  void DrawHighlightedEdges() {
    if (!highlightsPart) return;
    SetMaterial(parameters.colour_edge_selected, orientor.opacity, TEXTURE_NONE, Renderer::DRAW_SOLID);
    DrawPart(highlighted);
  }

  void DrawLabels() {
    if (!parameters.draw_labels || orientor.screenSize == parameters.tiny_screen_size) return;
    SetMaterial(parameters.colour_text, parameters.opacity_text * orientor.opacity, TEXTURE_CUBE_LABELS,
                Renderer::DRAW_CUBE_LABELS);
    for (int part = 0; part < GEOMETRY_PART_COUNT; ++part) DrawPart(part);
  }

 private:
  static constexpr int DRAW_QUADS = Renderer::DRAW_QUADS;

  const Vector3& DirectionOf(int part) const { return orientor.partDirections[part]; }

  // Neither of the two parts that are drawn apart.
  bool IsOrdinary(int part) const {
    return !(highlight && part == highlighted) && !(closest && part == orientor.closestPart);
  }

  void SetColour(const float (&rgb)[3]) {
    for (int i = 0; i < 3; ++i) material.colour[i] = rgb[i];
  }
  void SetPicture(TextureID texture, int drawMode) {
    material.texture = texture;
    material.drawMode = drawMode;
  }
  void SetMaterial(const float (&rgb)[3], float alpha, TextureID texture, int drawMode) {
    SetColour(rgb);
    material.colour[3] = alpha;
    SetPicture(texture, drawMode);
  }

  double GetGround() const { return -(orientor.GetHalfSize() + parameters.shadow_offset); }

  void DrawPart(int part) { orientor.DrawCubePart(material, view, DirectionOf(part), false, part); }
  void DrawLetter(int part) { orientor.DrawCompassPart(material, view, DirectionOf(part), part, false); }
  void DrawGroundQuad(const Vector3& centre, const Vector3& a, const Vector3& b) {
    orientor.DrawQuad(material, centre, a, b, Vector2(0.0, 0.0), Vector2(1.0, 1.0), false, 0);
  }

  Orientor& orientor;
  const OrientorParameters& parameters;
  const Vector3& view;
  const bool highlight;
  bool closest;
  const int highlighted;
  const bool highlightsPart;
  Renderer::MaterialParams material;
};

void Orientor::DrawGeometry(const Vector3& view, const Vector3& up) {
  if (renderer == nullptr || cameraOperations == nullptr || !parameters.visible) return;
  Box2 box;
  CameraParameters camera;
  GetPerspectiveCamera(box, camera, view, up);
  if (!renderer->BeginRender(box, camera, Renderer::RENDER_PERSPECTIVE)) return;

  GeometryPass pass(*this, view);
  pass.DrawParts();
  pass.DrawHighlightedPart();
  pass.DrawClosestPart();
  pass.DrawShadow();
  if (parameters.draw_compass) {
    pass.DrawRing();
    pass.DrawLetters();
  }
  pass.DrawShading();
  pass.DrawArrows();
  pass.DrawHighlightedEdges();
  pass.DrawLabels();
  renderer->EndRender();
}

// ---- parts ----

void Orientor::DrawCubePart(const Renderer::MaterialParams& material, const Vector3& view,
                            const Vector3& part, bool select, int id) {
  if (renderer == nullptr) return;
  Vector3 min;
  Vector3 max;
  GetPartBound(GetDimensions(parameters), view, part, select, min, max);
  DrawBox(material, min, max, false, select, id);
  DrawArrowPart(material, view, part, select, id);
}

void Orientor::DrawArrowPart(const Renderer::MaterialParams& material, const Vector3& view,
                             const Vector3& part, bool select, int id) {
  if (renderer == nullptr) return;
  DrawBoxArrow(material, view, part.Normalized(), select, id);
}

// Whether `direction` is that of a face and the view looks along another that lies beside it; then `aside` is
// where the arrow is wide.
bool Orientor::FindArrowDirection(const Vector3& view, const Vector3& direction, Vector3& aside) const {
  const Vector3* const faces = partDirections;
  const Vector3* const facesEnd = partDirections + FACE_COUNT;
  if (std::find(faces, facesEnd, direction) == facesEnd) return false;
  const double cosine = direction.Dot(view);
  if (std::abs(1.0 - cosine) <= Math::EPSILON_VALUE || std::abs(1.0 + cosine) <= Math::EPSILON_VALUE) {
    return false;
  }
  aside = view.Cross(direction).Normalize();
  return std::any_of(faces, facesEnd, [&](const Vector3& face) { return NearlyEqual(view, face); });
}

void Orientor::DrawBoxArrow(const Renderer::MaterialParams& material, const Vector3& view,
                            const Vector3& direction, bool select, int id) {
  static constexpr float TEXTURE[8] = {0.1F, 0.1F, 0.1F, 1.0F / 6.0F, 0.9F, 1.0F / 6.0F, 0.9F, 0.1F};
  Vector3 aside;
  if (!mouseInRegion && !dragging) return;
  if (!FindArrowDirection(view, direction, aside)) return;

  const double outside = GetHalfSize();
  const double size = parameters.arrow_size;
  const double offset = parameters.arrow_offset;
  Vector3 corners[4];
  if (select) {
    const Vector3 near = direction * outside;
    const Vector3 far = direction * (outside + 2.5 * size + offset);
    const Vector3 width = aside * (2.0 * size);
    corners[0] = near - width;
    corners[1] = near + width;
    corners[2] = far + width;
    corners[3] = far - width;
    if (id >= 0 && id < FACE_COUNT) faceArrows[id] = true;
  } else {
    const Vector3 tip = direction * (outside + offset);
    const Vector3 base = direction * (outside + offset + size);
    const Vector3 width = aside * size;
    corners[0] = base - width;
    corners[1] = base + width;
    corners[2] = corners[3] = tip;
  }
  float vertices[12];
  for (std::size_t i = 0; i < 4; ++i) corners[i].ToArray(vertices + 3 * i);
  DrawVertexArray(4, vertices, TEXTURE, material, select, id);
  arrowsVisible = true;
}

void Orientor::DrawCompassPart(const Renderer::MaterialParams& material, const Vector3& /*view*/,
                               Vector3 direction, int id, bool select) {
  if (renderer == nullptr || cameraOperations == nullptr) return;
  double half = LETTER_HALF_SIZE;
  if (id >= COMPASS_RING_BEGIN) {
    half = RING_PART_HALF_SIZE;
    direction *= parameters.compass_select_radius;
  }
  const double angle = (parameters.compass_angle + 90.0) * Math::DEG_TO_RAD;
  const Quaternion turn = Quaternion::AxisAngle(Vector3(0.0, 1.0, 0.0), angle);
  Vector3 centre = turn.Rotate(direction) * (GetHalfSize() + parameters.compass_offset + half);
  centre.y -= GetHalfSize() + parameters.shadow_offset;
  Vector3 below = centre - Vector3(0.0, LETTER_BACK_BELOW, 0.0);
  Vector3 a = turn.Rotate(Vector3(1.0, 0.0, 0.0)) * half;
  Vector3 b = turn.Rotate(Vector3(0.0, 0.0, 1.0)) * half;
  if (!IsSceneWorld()) {
    ConvertVectorsToWorldSpace(centre, a, b);
    below = ConvertVectorToWorldSpace(below);
  }
  // The letters stand one above the other in their texture. They read from both sides.
  const Vector2 first(0.0, (29 - id) / 4.0);
  const Vector2 second(1.0, (30 - id) / 4.0);
  DrawQuad(material, centre, a, b, first, second, select, id);
  DrawQuad(material, below, a, -b, first, second, select, id);
}

// ---- quads ----

void Orientor::DrawBox(const Renderer::MaterialParams& material, const Vector3& min, const Vector3& max,
                       bool plain, bool select, int id) const {
  PartVertices sides;
  GetPartVertexArray(GetDimensions(parameters), min, max, plain, sides);
  DrawVertexArray(sides.count, sides.vertices, sides.texCoords, material, select, id);
}

void Orientor::DrawQuad(const Renderer::MaterialParams& material, const Vector3& centre, const Vector3& a,
                        const Vector3& b, const Vector2& texCorner1, const Vector2& texCorner2, bool select,
                        int id) const {
  const Vector3 corners[4] = {centre - a - b, centre + a - b, centre + a + b, centre - a + b};
  const Vector2 texture[4] = {
      texCorner1, {texCorner2.x, texCorner1.y}, texCorner2, {texCorner1.x, texCorner2.y}};
  float vertices[12];
  float texCoords[8];
  for (std::size_t i = 0; i < 4; ++i) {
    corners[i].ToArray(vertices + 3 * i);
    texture[i].ToArray(texCoords + 2 * i);
  }
  DrawVertexArray(4, vertices, texCoords, material, select, id);
}

// The directions of the ring can be hit but are never drawn: the ring is one picture.
void Orientor::DrawVertexArray(unsigned count, const float* vertices, const float* texCoords,
                               const Renderer::MaterialParams& material, bool select, int id) const {
  if (renderer == nullptr) return;
  if (select) {
    renderer->RenderSelectionGeometry(count, vertices, id);
  } else if (id < COMPASS_RING_BEGIN) {
    renderer->RenderGeometry(count, vertices, texCoords, &material);
  }
}

}  // namespace Korvane
