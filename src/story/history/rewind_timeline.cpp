#include "story/history/rewind_timeline.h"

#include <cmath>
#include <utility>

#include "render/render_pass.h"

namespace Korvane {

namespace {

using Observer = RewindHistoryObserver;

constexpr double LARGEST_SCALE = 1e6;  // of no display; the places of the strip stay numbers

// The pointer stands on a pixel; whatever is far beyond any is none.
bool IsPixel(const Vector2& position) {
  constexpr double FAR = 2147483648.0;
  return std::abs(position.x) <= FAR && std::abs(position.y) <= FAR;
}

}  // namespace

// ---- open, slide, close ----

bool RewindTimeline::Open(const Vector2& given, const CameraParameters& camera) {
  const Vector2 position = given;
  if (!IsPixel(position)) return false;
  const Lifeline::Watch lives(partners.life);
  elements.BeginSlide();
  if (elements.IsCurrentLast()) elements.Update(elements.GetCurrent(), camera);
  if (!lives) return false;
  strip.Open(elements.GetList(), elements.GetCurrent(), position);
  PlaceAll();
  opening.Cut();
  const Lifeline::Watch open(opening);
  partners.Notify(open, [](Observer& each) { each.OnTimelineOpened(); });
  return true;
}

bool RewindTimeline::Slide(const Vector2& position) {
  if (!strip.open || elements.GetCount() == 0 || !IsPixel(position)) return false;
  const int index = strip.Slide(elements.GetList(), position);
  elements.NoteSlide(index);
  PlaceAll();
  const double weight = elements.At(index).weight;
  const Lifeline::Watch open(opening);
  partners.Notify(open, [=](Observer& each) { each.OnTimelineSlid(index, weight); });
  return true;
}

bool RewindTimeline::Close() {
  if (closing && !strip.open) return false;
  const Lifeline::Watch lives(partners.life);
  const bool wasOpen = strip.open;
  elements.EndSlide();
  if (!lives || (wasOpen && !strip.open)) return true;  // closed within
  strip.open = false;
  opening.Cut();
  const bool outer = std::exchange(closing, true);
  partners.Notify(lives, [](Observer& each) { each.OnTimelineClosed(); });
  closing = outer;
  return true;
}

void RewindTimeline::PlaceAll() const {
  for (const RewindElements::Element& element : elements.GetList()) thumbnails.Place(element);
}

// ---- sizes ----

void RewindTimeline::SetThumbnailSize(float size) {
  if (!std::isfinite(size) || size < 0.0F) return;
  strip.thumbnailSize = size;
  Space();
}

void RewindTimeline::SetScale(double wanted) {
  if (!std::isfinite(wanted) || !(wanted > 0.0)) return;
  const double scale = Math::Min(wanted, LARGEST_SCALE);
  if (scale == strip.scale) return;
  strip.scale = scale;
  const Lifeline::Watch lives(partners.life);
  elements.DropThumbnails();
  if (lives) Space();
}

void RewindTimeline::Space() {
  for (RewindElements::Element& element : elements.GetList()) element.bounds.halfExtent = strip.GetHalfSize();
  strip.Space(elements.GetList());
  PlaceAll();
}

void RewindTimeline::SetGapSize(float size) {
  if (!std::isfinite(size)) return;
  strip.thumbnailGapSize = size;
  strip.Space(elements.GetList());
  PlaceAll();
}

// ---- drawing ----

void RewindTimeline::Draw(const CameraParameters& camera) {
  Renderer* const renderer = thumbnails.GetRenderer();
  if (renderer == nullptr || !strip.open || elements.GetCount() == 0) return;
  const Vector2 half(strip.viewportWidth / 2.0, strip.viewportHeight / 2.0);
  const RenderPass pass(renderer, Box2(half, half), camera, Renderer::RENDER_OVERLAY);
  if (pass) DrawStrip(*renderer);
}

void RewindTimeline::DrawStrip(Renderer& target) {
  if (Draws(target)) painter.DrawBracket(target, strip.bracketPosition, strip.scale, strip.snapped);
  for (int index = 0; Draws(target) && elements.Holds(index); ++index) DrawElement(target, index);
}

// The host may do anything in each of the calls.
void RewindTimeline::DrawElement(Renderer& target, int index) {
  const RewindElements::Element& element = elements.At(index);
  const Box2 bounds = element.bounds;
  const double weight = element.weight;
  if (DynamicIcon2D* const picture = thumbnails.Get(element)) {
    target.Render(picture);
    if (Draws(target)) painter.DrawGlass(target, bounds);
  }
  if (Draws(target)) painter.DrawFrame(target, bounds, weight);
  if (Draws(target)) painter.DrawActiveFrame(target, bounds, weight);
}

// With this renderer, that of the pass.
bool RewindTimeline::Draws(const Renderer& target) const {
  return strip.open && thumbnails.GetRenderer() == &target;
}

}  // namespace Korvane
