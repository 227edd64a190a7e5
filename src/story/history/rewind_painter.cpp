#include "story/history/rewind_painter.h"

namespace Korvane {

namespace {

constexpr double BRACKET_SIZE = 128.0;  // pixels

}  // namespace

void RewindPainter::DrawBracket(Renderer& target, const Vector2& position, double scale, bool snapped) {
  Draw(target, snapped ? snappedBracket : bracket, Box2(position, Vector2(BRACKET_SIZE * scale / 2.0)), 1.0);
}

void RewindPainter::DrawFrame(Renderer& target, const Box2& bounds, double weight) {
  Draw(target, frame, bounds, 1.0 - weight);
}

void RewindPainter::DrawActiveFrame(Renderer& target, const Box2& bounds, double weight) {
  Draw(target, activeFrame, bounds, weight);
}

void RewindPainter::Draw(Renderer& target, ResourceIcon2D& icon, const Box2& bounds, double opacity) {
  icon.SetBounds(bounds);
  icon.SetOpacity(opacity);
  target.Render(&icon);
}

}  // namespace Korvane
