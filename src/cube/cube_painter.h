#pragma once

#include "cube/cube_quads.h"
#include "cube/overlay_quads.h"
#include "korvane/renderer.h"

namespace Korvane {

struct OrientorParameters;

/// What cube and overlay look like in a frame.
struct CubeLook {
  int highlightedPart = -1;
  int closestPart = -1;
  int activeOverlayPart = -1;
  int screenSize = 0;
  float fade = 0.0F;
  float opacity = 1.0F;
  bool dragging = false;
  bool onRing = false;  // the mouse is on a direction of the ring
  bool onAxis = false;  // the view runs along the closest part
};

/// The steps of drawing cube and compass in a pass that is open: what stays the same through all of them, and
/// the material as it goes from step to step.
class CubePainter {
 public:
  CubePainter(Renderer& target, const OrientorParameters& settings, const CubeLook& cubeLook,
              const CubeQuads& cubeQuads);

  void Paint();

 private:
  void DrawParts();
  void DrawHighlightedPart();
  void DrawClosestPart();
  void DrawShadow();
  void DrawRing();
  void DrawLetters();
  void DrawShading();
  void DrawArrows();
  void DrawHighlightedEdges();
  void DrawLabels();

  bool IsOrdinary(int part) const;
  void SetColour(const float (&rgb)[3]);
  void SetPicture(TextureID texture, int drawMode);
  void SetMaterial(const float (&rgb)[3], float alpha, TextureID texture, int drawMode);

  const OrientorParameters& parameters;
  const CubeLook look;
  const CubeQuads& quads;
  const bool highlight;
  bool closest;
  const bool highlightsPart;
  Renderer::MaterialParams material;
  DrawSink sink;
};

/// The buttons of the overlay, in a pass that is open.
void PaintOverlay(Renderer& renderer, const CubeLook& look, const OverlayQuads& quads);

}  // namespace Korvane
