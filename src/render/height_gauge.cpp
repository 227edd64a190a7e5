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
    : gauge(TEXTURE_HEIGHT_GAUGE), startMark(TEXTURE_HEIGHT_START), mark(TEXTURE_HEIGHT_MARK) {}

std::span<const TextureID> HeightGauge::GetTextures() { return TEXTURES; }
double HeightGauge::GetHeight(HeightOperation& operation) { return operation.GetUnitHeight() - 0.5; }

void HeightGauge::DrawGauge(Renderer& target) { Draw(target, gauge, GAUGE_SIZE, 0.0); }

void HeightGauge::DrawMarks(Renderer& target, double start, double now) {
  Draw(target, startMark, MARK_SIZE, start);
  Draw(target, mark, MARK_SIZE, now);
}

void HeightGauge::Draw(Renderer& target, ResourceIcon2D& picture, double size, double height) const {
  picture.SetSize(size * scale, size * scale);
  picture.SetPosition(position + Vector2(0.0, height * MARK_RANGE * scale));
  target.Render(&picture);
}

}  // namespace Korvane
