// The drawing of the rectangle: while it is drawn up, and while the camera flies into it.
#include "interaction/tools/tool_gesture.h"
#include "korvane/rect_zoom_tool.h"
#include "render/render_pass.h"
#include "shots/zoom_rect_shot.h"

namespace Korvane {

namespace {

const Renderer::MaterialParams WHITE = {{1.0F, 1.0F, 1.0F, 1.0F}, TEXTURE_NONE, Renderer::DRAW_SOLID, 1.0F};
const Renderer::MaterialParams BLACK = {{0.0F, 0.0F, 0.0F, 1.0F}, TEXTURE_NONE, Renderer::DRAW_SOLID, 1.0F};

// One around the other.
void DrawRectangles(const RenderPass& pass, const float* white, const float* black) {
  pass->RenderGeometry(4, white, nullptr, &WHITE);
  pass->RenderGeometry(4, black, nullptr, &BLACK);
}

}  // namespace

void RectZoomTool::OnDraw() {
  const Lifeline::Watch alive(GetLifeline());
  DrawTool();
  if (!alive) return;
  if (operating) {
    DrawOperating();
  } else if (HasShotEnded()) {
    Closing(*this).EndRecord();
  } else if (animating) {
    DrawAnimating();
    if (alive) SampleRecord();
  }
}

void RectZoomTool::DrawOperating() {
  if (cameraOperations == nullptr) return;
  const Lifeline::Watch alive(GetLifeline());
  const FullViewPass pass(renderer, *cameraOperations);
  if (!pass || !alive) return;
  // Copies, since the host may destroy the tool while it draws them.
  const Rectangle rectangles[] = {whiteRectangle, blackRectangle};
  DrawRectangles(pass, rectangles[0].vertices, rectangles[1].vertices);
  if (!alive) return;
  UpdateCrosshairSize();
  if (crosshairSize == 0) return;
  const Line lines[] = {blackLines[0], blackLines[1], whiteLines[0], whiteLines[1]};
  for (const Line& line : lines) {
    pass->RenderGeometry(2, line.vertices, nullptr, &line < lines + 2 ? &BLACK : &WHITE);
  }
}

void RectZoomTool::DrawAnimating() {
  Rectangle grown = whiteRectangle;
  Steps(*this).Then([&] { GrowRectangle(grown); }).Then([&] {
    const FullViewPass pass(renderer, *cameraOperations);
    if (pass) DrawRectangles(pass, grown.vertices, ConvertRectWhiteToBlack(grown).vertices);
  });
}

// With the scene, about the pivot: at the end of the flight it is as large as the view.
void RectZoomTool::GrowRectangle(Rectangle& rectangle) const {
  auto* const shot = dynamic_cast<ZoomRectShot*>(cameraOperations->GetActiveShot());
  if (shot == nullptr || renderer == nullptr) return;
  const double t = shot->GetUnitTime();
  const double scale = shot->getCurrentScale();
  Vector2 pivot;
  if (!renderer->ProjectToScreen(cameraOperations->GetCameraParameters().pivot, pivot)) return;
  const Vector2 centre = rectangle.GetCentre();
  const auto grow = [&](const Vector2& v) { return t * ((v - centre) * scale + pivot) + (1.0 - t) * v; };
  const Vector2 low = grow({rectangle.GetLeft(), rectangle.GetBottom()});
  const Vector2 high = grow({rectangle.GetRight(), rectangle.GetTop()});
  rectangle = MakeRectangle(low.x, low.y, high.x, high.y);
}

}  // namespace Korvane
