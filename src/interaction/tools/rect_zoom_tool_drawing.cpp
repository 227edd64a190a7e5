// The drawing of the rectangle: while it is drawn up, and while the camera flies into it.
#include "interaction/tools/rewind_record.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/renderer.h"
#include "render/full_viewport.h"
#include "shots/zoom_rect_shot.h"

namespace Korvane {

// The drawing of the drag zoom is passed over.
// NOLINTBEGIN(bugprone-parent-virtual-call)

namespace {

const Renderer::MaterialParams WHITE = {{1.0F, 1.0F, 1.0F, 1.0F}, TEXTURE_NONE, Renderer::DRAW_SOLID, 1.0F};
const Renderer::MaterialParams BLACK = {{0.0F, 0.0F, 0.0F, 1.0F}, TEXTURE_NONE, Renderer::DRAW_SOLID, 1.0F};

}  // namespace

void RectZoomTool::OnDraw() {
  Tool::OnDraw();
  if (operating) {
    DrawOperating();
  } else if (HasShotEnded()) {
    animating = false;
    EndRecord(rewindHistory, cameraOperations);
  } else if (animating) {
    DrawAnimating();
    SampleRecord(rewindHistory, cameraOperations);
  }
}

bool RectZoomTool::BeginPass() {
  if (cameraOperations == nullptr || renderer == nullptr) return false;
  return renderer->BeginRender(FullViewport(cameraOperations->GetApplicationParameters()),
                               cameraOperations->GetCameraParameters(), Renderer::RENDER_OVERLAY);
}

void RectZoomTool::DrawOperating() {
  if (!BeginPass()) return;
  DrawRectangle(whiteRectangle, blackRectangle);
  UpdateCrosshairSize();
  if (crosshairSize != 0) {
    for (const Line& line : blackLines) renderer->RenderGeometry(2, line.vertices, nullptr, &BLACK);
    for (const Line& line : whiteLines) renderer->RenderGeometry(2, line.vertices, nullptr, &WHITE);
  }
  renderer->EndRender();
}

void RectZoomTool::DrawAnimating() {
  Rectangle grown = whiteRectangle;
  GrowRectangle(grown);
  if (!BeginPass()) return;
  DrawRectangle(grown, ConvertRectWhiteToBlack(grown));
  renderer->EndRender();
}

void RectZoomTool::DrawRectangle(const Rectangle& white, const Rectangle& black) {
  renderer->RenderGeometry(4, white.vertices, nullptr, &WHITE);
  renderer->RenderGeometry(4, black.vertices, nullptr, &BLACK);
}

// With the scene, about the pivot: at the end of the flight it is as large as the view.
void RectZoomTool::GrowRectangle(Rectangle& rectangle) const {
  auto* const shot = dynamic_cast<ZoomRectShot*>(cameraOperations->GetActiveShot());
  Vector2 pivot;
  const bool grows = shot != nullptr && renderer != nullptr &&
                     renderer->ProjectToScreen(cameraOperations->GetCameraParameters().pivot, pivot);
  if (!grows) return;
  const double t = shot->GetUnitTime();
  const double scale = shot->getCurrentScale();
  const Vector2 centre = rectangle.GetCentre();
  const auto grow = [&](const Vector2& v) { return t * ((v - centre) * scale + pivot) + (1.0 - t) * v; };
  const Vector2 low = grow({rectangle.GetLeft(), rectangle.GetBottom()});
  const Vector2 high = grow({rectangle.GetRight(), rectangle.GetTop()});
  rectangle = MakeRectangle(low.x, low.y, high.x, high.y);
}

// NOLINTEND(bugprone-parent-virtual-call)

}  // namespace Korvane
