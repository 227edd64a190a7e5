#include "render/height_gauge.h"

#include "camera/height_operation.h"
#include "korvane/renderer.h"

namespace Korvane {

namespace {

// Pixels.
constexpr double GAUGE_SIZE = 128.0;
constexpr double MARK_SIZE = 32.0;
constexpr double MARK_RANGE = 86.0;  // from the lowest height to the highest

constexpr TextureID TEXTURES[] = {TEXTURE_HEIGHT_GAUGE, TEXTURE_HEIGHT_START, TEXTURE_HEIGHT_MARK};

}  // namespace

HeightGauge::HeightGauge()
    : gauge(TEXTURE_HEIGHT_GAUGE), startMark(TEXTURE_HEIGHT_START), mark(TEXTURE_HEIGHT_MARK) {
  gauge.SetSize(GAUGE_SIZE, GAUGE_SIZE);
  startMark.SetSize(MARK_SIZE, MARK_SIZE);
  mark.SetSize(MARK_SIZE, MARK_SIZE);
}

std::span<const TextureID> HeightGauge::GetTextures() { return TEXTURES; }
double HeightGauge::GetHeight(HeightOperation& operation) { return operation.GetUnitHeight() - 0.5; }

void HeightGauge::DrawGauge(Renderer& target) { Draw(target, gauge, 0.0); }

void HeightGauge::DrawMarks(Renderer& target, double start, double now) {
  Draw(target, startMark, start);
  Draw(target, mark, now);
}

void HeightGauge::Draw(Renderer& target, ResourceIcon2D& picture, double height) const {
  picture.SetPosition(position + Vector2(0.0, height * MARK_RANGE));
  target.Render(&picture);
}

}  // namespace Korvane
