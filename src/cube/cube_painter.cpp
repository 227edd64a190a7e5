#include "cube/cube_painter.h"

#include "korvane/math.h"
#include "korvane/orientor.h"

namespace Korvane {

namespace {

constexpr float LINE_WIDTH = 0.01F;  // screen sizes
constexpr float MIN_TINT = 0.5F;

TextureID GetRotateTexture(int activeOverlayPart) {
  switch (activeOverlayPart) {
    case Orientor::OVERLAY_ROTATE_COUNTER_CLOCKWISE:
      return TEXTURE_CUBE_ROTATE_COUNTER_CLOCKWISE_ACTIVE;
    case Orientor::OVERLAY_ROTATE_CLOCKWISE:
      return TEXTURE_CUBE_ROTATE_CLOCKWISE_ACTIVE;
    default:
      return TEXTURE_CUBE_ROTATE;
  }
}

}  // namespace

CubePainter::CubePainter(Renderer& target, const OrientorParameters& settings, const CubeLook& cubeLook,
                         const CubeQuads& cubeQuads)
    : parameters(settings),
      look(cubeLook),
      quads(cubeQuads),
      highlight(settings.draw_selected_face && !look.dragging && !settings.disabled),
      closest(settings.draw_closest_face),
      highlightsPart(highlight && look.highlightedPart >= 0 && look.highlightedPart < CUBE_PART_COUNT),
      sink(target, material) {}

void CubePainter::Paint() {
  DrawParts();
  DrawHighlightedPart();
  DrawClosestPart();
  DrawShadow();
  if (parameters.draw_compass) {
    DrawRing();
    DrawLetters();
  }
  DrawShading();
  DrawArrows();
  DrawHighlightedEdges();
  DrawLabels();
}

// ---- steps ----

void CubePainter::DrawParts() {
  material.lineWidth = static_cast<float>(look.screenSize) * LINE_WIDTH;
  SetMaterial(parameters.colour_face, look.opacity, TEXTURE_CUBE_FACES, Renderer::DRAW_QUADS);
  for (int part = 0; part < CUBE_PART_COUNT; ++part) {
    if (IsOrdinary(part)) quads.LayPart(part, sink);
  }
}

void CubePainter::DrawHighlightedPart() {
  if (!highlightsPart) return;
  SetColour(parameters.colour_face_selected);
  quads.LayPart(look.highlightedPart, sink);
  if (look.highlightedPart == look.closestPart) closest = false;
}

// The closest part tints in as the mouse comes near.
void CubePainter::DrawClosestPart() {
  if (!closest || look.closestPart < 0) return;
  const auto t = static_cast<float>(Math::Max(Math::Min(look.opacity * look.fade, 1.0), MIN_TINT));
  for (int i = 0; i < 3; ++i) {
    material.colour[i] = t * parameters.colour_face_closest[i] + (1.0F - t) * parameters.colour_face[i];
  }
  quads.LayPart(look.closestPart, sink);
}

void CubePainter::DrawShadow() {
  material.colour[3] = parameters.opacity_shadow * look.opacity;
  SetPicture(TEXTURE_CUBE_SHADOW, Renderer::DRAW_CUBE_SHADOW);
  quads.LayShadow(sink);
}

void CubePainter::DrawRing() {
  static constexpr float WHITE[3] = {1.0F, 1.0F, 1.0F};
  SetMaterial(WHITE, parameters.opacity_compass * look.opacity,
              look.onRing ? TEXTURE_COMPASS_RING_ACTIVE : TEXTURE_COMPASS_RING, Renderer::DRAW_QUADS);
  quads.LayRing(sink);
}

void CubePainter::DrawLetters() {
  const int lit = look.highlightedPart;
  const bool emphasis = !parameters.disabled;
  SetMaterial(parameters.colour_compass_text, look.opacity, TEXTURE_COMPASS_LETTERS, Renderer::DRAW_QUADS);
  for (int part = COMPASS_LETTERS_FROM; part < COMPASS_RING_FROM; ++part) {
    if (!emphasis || part != lit) quads.LayCompassPart(part, sink);
  }
  if (!emphasis || lit < COMPASS_LETTERS_FROM || lit >= COMPASS_RING_FROM) return;
  SetColour(parameters.colour_compass_text_selected);
  quads.LayCompassPart(lit, sink);
}

void CubePainter::DrawShading() {
  SetMaterial(parameters.colour_edge, look.opacity, look.onAxis ? TEXTURE_NONE : TEXTURE_CUBE_SHADING,
              Renderer::DRAW_SOLID);
  quads.LayBody(sink);
}

void CubePainter::DrawArrows() {
  const float lineWidth = material.lineWidth;
  material.lineWidth = 1.0F;
  for (int part = 0; part < CUBE_PART_COUNT; ++part) {
    if (IsOrdinary(part)) quads.LayArrow(part, sink);
  }
  material.lineWidth = lineWidth;
}

void CubePainter::DrawHighlightedEdges() {
  if (!highlightsPart) return;
  SetMaterial(parameters.colour_edge_selected, look.opacity, TEXTURE_NONE, Renderer::DRAW_SOLID);
  quads.LayPart(look.highlightedPart, sink);
}

void CubePainter::DrawLabels() {
  if (!parameters.draw_labels || look.screenSize == parameters.tiny_screen_size) return;
  SetMaterial(parameters.colour_text, parameters.opacity_text * look.opacity, TEXTURE_CUBE_LABELS,
              Renderer::DRAW_CUBE_LABELS);
  for (int part = 0; part < CUBE_PART_COUNT; ++part) quads.LayPart(part, sink);
}

// ---- helpers ----

// Neither of the two parts that are drawn apart.
bool CubePainter::IsOrdinary(int part) const {
  return !(highlight && part == look.highlightedPart) && !(closest && part == look.closestPart);
}

void CubePainter::SetColour(const float (&rgb)[3]) {
  for (int i = 0; i < 3; ++i) material.colour[i] = rgb[i];
}

void CubePainter::SetPicture(TextureID texture, int drawMode) {
  material.texture = texture;
  material.drawMode = drawMode;
}

void CubePainter::SetMaterial(const float (&rgb)[3], float alpha, TextureID texture, int drawMode) {
  SetColour(rgb);
  material.colour[3] = alpha;
  SetPicture(texture, drawMode);
}

// ---- the overlay ----

void PaintOverlay(Renderer& renderer, const CubeLook& look, const OverlayQuads& quads) {
  const float alpha = look.fade * look.opacity;
  Renderer::MaterialParams material;
  material.colour[3] = alpha;
  material.drawMode = Renderer::DRAW_OVERLAY_ICONS;
  DrawSink sink(renderer, material);
  const auto drawButton = [&](int part, TextureID texture) {
    material.texture = texture;
    quads.Lay(part, sink);
  };
  const int active = look.activeOverlayPart;
  const bool menu = active == Orientor::OVERLAY_CONTEXT_MENU;

  drawButton(Orientor::OVERLAY_HOME,
             active == Orientor::OVERLAY_HOME ? TEXTURE_CUBE_HOME_ACTIVE : TEXTURE_CUBE_HOME);
  drawButton(Orientor::OVERLAY_LOCK,
             active == Orientor::OVERLAY_LOCK ? TEXTURE_CUBE_LOCK_ACTIVE : TEXTURE_CUBE_LOCK);
  if (menu) material.colour[3] = 1.0F;
  drawButton(Orientor::OVERLAY_CONTEXT_MENU, menu ? TEXTURE_CUBE_MENU_ACTIVE : TEXTURE_CUBE_MENU);
  material.colour[3] = alpha;
  drawButton(Orientor::OVERLAY_ROTATE_COUNTER_CLOCKWISE, GetRotateTexture(active));
  drawButton(Orientor::OVERLAY_ROTATE_CLOCKWISE, GetRotateTexture(active));
}

}  // namespace Korvane
