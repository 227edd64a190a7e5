#include "story/storyboard_painter.h"

#include <cstddef>

namespace Korvane {

namespace {

/// The first of the panel's pictures, and the size of each in pixels.
constexpr int FIRST_IMAGE = TEXTURE_STORY_FRAME;
struct ImageRun {
  int count;
  double width;
  double height;
};
constexpr ImageRun IMAGE_RUNS[] = {
    {1, 256.0, 100.0},  // the frame
    {1, 186.0, 32.0},   // the title bar
    {12, 16.0, 16.0},   // its buttons
    {10, 128.0, 128.0}, {6, 20.0, 20.0}, {7, 64.0, 64.0}, {6, 16.0, 16.0}, {1, 6.0, 128.0}, {1, 6.0, 64.0},
};

constexpr double DROP_ASIDE = 3.0;  // pixels between a slide and the mark where a drag lands
constexpr float FRAME_CAP = 32.0F;  // of the frame's picture, which is stretched between its caps
constexpr float FRAME_WIDTH = 256.0F;

// A button or a slide under the mouse has the next picture.
int OfHover(int texture, bool hovered) { return texture + (hovered ? 1 : 0); }

// Asked for one by one: who draws the one may have given back the other.
void DrawContent(Renderer& target, DynamicIcon2D* icon, const Vector2& place) {
  if (icon == nullptr) return;
  icon->SetPosition(place);
  target.Render(icon);
}

}  // namespace

/// The pictures of the slides of sequences, or of those of shots, and where they lie on a slide.
struct StoryboardPainter::SlideKind {
  int add;
  int card;
  int selected;
  int selectedHovered;
  int playing;
  int paused;
  int play;
  int pause;
  int target;
  int drop;
  Vector2 thumbnail;  // from the centre of the slide
  Vector2 label;
  SlideButtons buttons;
};

const StoryboardPainter::SlideKind StoryboardPainter::SEQUENCE = {
    TEXTURE_SEQUENCE_ADD,
    TEXTURE_SEQUENCE_SLIDE,
    TEXTURE_SEQUENCE_SLIDE_SELECTED,
    TEXTURE_SEQUENCE_SLIDE_SELECTED_ACTIVE,
    TEXTURE_SEQUENCE_SLIDE_PLAYING,
    TEXTURE_SEQUENCE_SLIDE_PAUSED,
    TEXTURE_SEQUENCE_PLAY,
    TEXTURE_SEQUENCE_PAUSE,
    TEXTURE_SEQUENCE_TARGET,
    TEXTURE_SEQUENCE_DROP,
    {0.0, 4.0},
    {0.0, -54.0},
    SEQUENCE_BUTTONS,
};

const StoryboardPainter::SlideKind StoryboardPainter::SHOT = {
    TEXTURE_SHOT_ADD,
    TEXTURE_SHOT_SLIDE,
    TEXTURE_SHOT_SLIDE_SELECTED,
    TEXTURE_SHOT_SLIDE_SELECTED,
    TEXTURE_SHOT_SLIDE_PLAYING,
    TEXTURE_SHOT_SLIDE_PAUSED,
    TEXTURE_SHOT_PLAY,
    TEXTURE_SHOT_PAUSE,
    TEXTURE_SHOT_TARGET,
    TEXTURE_SHOT_DROP,
    {0.0, 7.5},
    {0.0, -24.0},
    SHOT_BUTTONS,
};

StoryboardPainter::StoryboardPainter() {
  int texture = FIRST_IMAGE;
  for (const ImageRun& run : IMAGE_RUNS) {
    for (int i = 0; i < run.count; ++i) {
      ResourceIcon2D image(static_cast<TextureID>(texture++));
      images.push_back({image, {run.width, run.height}});
    }
  }
}

void StoryboardPainter::Draw(Renderer& target, int texture, const Vector2& place) {
  auto& [image, size] = images[static_cast<std::size_t>(texture) - FIRST_IMAGE];
  image.SetSize(size.x * scale, size.y * scale);
  image.SetPosition(place * scale);
  target.Render(&image);
}

// ---- around the slides ----

void StoryboardPainter::DrawFade(Renderer& target, const Box2& view, const FadeOverlay& fade) {
  float vertices[12];
  view.ToArray(vertices, 0.0F);
  Renderer::MaterialParams material;
  for (int i = 0; i < 3; ++i) material.colour[i] = static_cast<float>(fade.level);
  material.colour[3] = static_cast<float>(fade.alpha);
  target.RenderGeometry(4, vertices, nullptr, &material);
}

void StoryboardPainter::DrawTitleBar(Renderer& target, const PanelRoom& room, const TitleBar& bar) {
  const int pictures[TITLE_BUTTON_COUNT] = {
      bar.playing ? TEXTURE_STORY_PAUSE : TEXTURE_STORY_PLAY, TEXTURE_STORY_STOP,
      bar.loop ? TEXTURE_STORY_LOOP_ON : TEXTURE_STORY_LOOP, TEXTURE_STORY_CLOSE};
  Draw(target, TEXTURE_STORY_TITLE_BAR, GetTitleBar(room).center);
  for (int i = 0; i < TITLE_BUTTON_COUNT; ++i) {
    const Vector2 place = GetTitleButton(room, static_cast<TitleButton>(i)).center;
    Draw(target, OfHover(pictures[i], bar.hovered[i]), place);
  }
}

void StoryboardPainter::DrawShotRow(Renderer& target, const Box2& ofPanel) const {
  const Box2 row(ofPanel.center * scale, ofPanel.halfExtent * scale);
  const double half = row.halfExtent.y;
  const double cap = Math::Min(FRAME_CAP * scale, row.halfExtent.x);
  const double xs[] = {row.Min().x, row.Min().x + cap, row.Max().x - cap, row.Max().x};
  constexpr float CAP = FRAME_CAP / FRAME_WIDTH;
  constexpr float US[] = {0.0F, CAP, 1.0F - CAP, 1.0F};
  float vertices[36];
  float texCoords[24];
  for (std::size_t i = 0; i < 3; ++i) {
    const double middle = (xs[i] + xs[i + 1]) / 2.0;
    const Box2 slice({middle, row.center.y}, {xs[i + 1] - middle, half});
    slice.ToArray(vertices + 12 * i, 0.0F);
    const float coords[8] = {US[i], 1.0F, US[i], 0.0F, US[i + 1], 0.0F, US[i + 1], 1.0F};
    for (std::size_t k = 0; k < 8; ++k) texCoords[8 * i + k] = coords[k];
  }
  Renderer::MaterialParams material;
  material.texture = TEXTURE_STORY_FRAME;
  target.RenderGeometry(12, vertices, texCoords, &material);
}

// ---- a slide ----

void StoryboardPainter::DrawSlide(Renderer& target, const Storyboard::DisplayElement& slide,
                                  const Content& content) {
  DrawKind(target, SEQUENCE, slide.sequence == nullptr, slide, content);
  if (slide.fadeLeft) Draw(target, TEXTURE_SEQUENCE_STACK_LEFT, slide.GetCenter());
  if (slide.fadeRight) Draw(target, TEXTURE_SEQUENCE_STACK_RIGHT, slide.GetCenter());
}

void StoryboardPainter::DrawSlide(Renderer& target, const Storyboard::ShotDisplayElement& slide,
                                  const Content& content) {
  DrawKind(target, SHOT, slide.shot == nullptr, slide, content);
}

void StoryboardPainter::DrawKind(Renderer& target, const SlideKind& kind, bool adds, const Slide& slide,
                                 const Content& content) {
  const Vector2 center = slide.GetCenter();
  const bool hovered = slide.highlighted || slide.menuOpen;
  if (adds) {
    Draw(target, OfHover(kind.add, hovered), center);
  } else {
    const int selected = hovered ? kind.selectedHovered : kind.selected;
    Draw(target, slide.selected ? selected : OfHover(kind.card, hovered), center);
    DrawContent(target, content.pictures.GetThumbnail(content.subject), (center + kind.thumbnail) * scale);
    DrawContent(target, content.pictures.GetLabel(content.subject), (center + kind.label) * scale);
    if (content.state == SlideState::Playing) Draw(target, kind.playing, center);
    if (content.state == SlideState::Paused) Draw(target, kind.paused, center);
    if (hovered || content.state != SlideState::Resting) DrawButtons(target, kind, slide, content.state);
  }
  const Vector2 aside(slide.halfWidth + DROP_ASIDE, 0.0);
  if (slide.dropBefore) Draw(target, kind.drop, center - aside);
  if (slide.dropAfter) Draw(target, kind.drop, center + aside);
}

void StoryboardPainter::DrawButtons(Renderer& target, const SlideKind& kind, const Slide& slide,
                                    SlideState state) {
  const int first = state == SlideState::Playing ? kind.pause : kind.play;
  Draw(target, OfHover(first, slide.overFirstButton), kind.buttons.first.GetCenter(slide));
  Draw(target, OfHover(kind.target, slide.overSecondButton), kind.buttons.second.GetCenter(slide));
}

}  // namespace Korvane
