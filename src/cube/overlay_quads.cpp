#include "cube/overlay_quads.h"

#include <cstddef>

#include "korvane/orientor.h"

namespace Korvane {

namespace {

// The hit area of the context menu button is larger than its picture.
constexpr double CONTEXT_PICK_SCALE = 2.0;

}  // namespace

void OverlayQuads::Lay(int part, QuadSink& sink) const {
  if (!state.shown) return;
  switch (part) {
    case Orientor::OVERLAY_ROTATE_COUNTER_CLOCKWISE:
    case Orientor::OVERLAY_ROTATE_CLOCKWISE:
      if (state.arrows) LayRotateArrow(part, sink);
      break;
    case Orientor::OVERLAY_HOME:
      if (!parameters.draw_home_button) break;
      LaySquare(part, CubeLayout::GetHomeOffset(parameters, state.locked), parameters.overlay_home_size / 2.0,
                sink);
      break;
    case Orientor::OVERLAY_LOCK:
      // Where the home button stands without the lock.
      if (!state.locked) break;
      LaySquare(part, CubeLayout::GetHomeOffset(parameters, false), parameters.overlay_lock_size / 2.0, sink);
      break;
    case Orientor::OVERLAY_CONTEXT_MENU: {
      const double half = parameters.overlay_context_size / 2.0;
      LaySquare(part, CubeLayout::GetContextOffset(parameters),
                use == QuadUse::Offered ? half * CONTEXT_PICK_SCALE : half, sink);
      break;
    }
    default:
      break;
  }
}

// A triangle in the corner: one half of the square that the two arrows share, on its side of the diagonal.
void OverlayQuads::LayRotateArrow(int part, QuadSink& sink) const {
  static constexpr float CLOCKWISE_TEXTURE[8] = {1.0F, 0.0F, 1.0F, 1.0F, 0.5F, 0.5F, 1.0F, 0.0F};
  static constexpr float COUNTER_TEXTURE[8] = {1.0F, 0.0F, 0.5F, 0.5F, 0.0F, 0.0F, 1.0F, 0.0F};
  const double reach = parameters.overlay_arrow_size;
  const Vector2 corner = layout.GetOverlayPosition(parameters, Vector2(0.0, 0.0));
  const Vector2 middle = layout.GetOverlayPosition(parameters, Vector2(reach / 2.0, reach / 2.0));
  const Vector2 alongX = layout.GetOverlayPosition(parameters, Vector2(reach, 0.0));
  const Vector2 alongY = layout.GetOverlayPosition(parameters, Vector2(0.0, reach));
  const bool clockwise = part == Orientor::OVERLAY_ROTATE_CLOCKWISE;
  const Vector2 corners[4] = {corner, clockwise ? alongY : middle, clockwise ? middle : alongX, corner};
  float vertices[12] = {};
  for (std::size_t i = 0; i < 4; ++i) corners[i].ToArray(vertices + 3 * i);
  sink.Take(part, 4, vertices, clockwise ? CLOCKWISE_TEXTURE : COUNTER_TEXTURE);
}

void OverlayQuads::LaySquare(int part, const Vector2& offset, double halfSize, QuadSink& sink) const {
  static constexpr float TEXTURE[8] = {0.0F, 1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 1.0F, 1.0F};
  const double half = layout.screenSize * halfSize;
  float vertices[12];
  Box2(layout.GetOverlayPosition(parameters, offset), Vector2(half, half)).ToArray(vertices, 0.0F);
  sink.Take(part, 4, vertices, TEXTURE);
}

}  // namespace Korvane
