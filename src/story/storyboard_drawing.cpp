// A frame: the playback, then what lies over the view.
#include <algorithm>
#include <memory>

#include "render/render_pass.h"
#include "story/storyboard_parts.h"

namespace Korvane {

namespace {

/// The panel in a pass that is open.
class PanelDrawing {
 public:
  PanelDrawing(StoryboardParts& board, Renderer& renderer) : parts(board), target(renderer) {}

  void Draw() {
    const PanelSlides& slides = parts.slides;
    parts.painter.SetScale(parts.place.scale);
    if (!slides.shots.empty()) parts.painter.DrawShotRow(target, GetShotRow(parts.room, slides.shots));
    parts.painter.DrawTitleBar(
        target, parts.room,
        {parts.playback.IsPlaying(), parts.playback.loop, parts.mouse.titleButtonHovered});
    DrawSequences();
    DrawShots();
    DrawDragged(slides.sequences);
    DrawDragged(slides.shots);
  }

 private:
  // Toward the selected one from both sides, so that it lies above all.
  void DrawSequences() {
    const int selected = parts.slides.GetSelectedSequenceIndex();
    for (int i = 0; i < selected; ++i) DrawAt(parts.slides.sequences, i);
    for (int i = Count(parts.slides.sequences) - 1; i > selected; --i) DrawAt(parts.slides.sequences, i);
    if (selected >= 0) DrawAt(parts.slides.sequences, selected);
  }

  // The stack at the left edge, the later ones above; then the others from the right.
  void DrawShots() {
    const int left = parts.slides.stacks.left;
    for (int i = 0; i < left; ++i) DrawAt(parts.slides.shots, i);
    for (int i = Count(parts.slides.shots) - 1; i >= left; --i) DrawAt(parts.slides.shots, i);
  }

  template <class Slides>
  static int Count(const Slides& slides) {
    return static_cast<int>(slides.size());
  }

  template <class Slides>
  void DrawAt(const Slides& slides, int index) {
    if (index < Count(slides) && !SlideAt(slides, index).dragging) DrawSlide(SlideAt(slides, index));
  }

  template <class Slides>
  void DrawDragged(const Slides& slides) {
    for (int i = 0; i < Count(slides); ++i) {
      if (SlideAt(slides, i).dragging) DrawSlide(SlideAt(slides, i));
    }
  }

  // A copy: whoever draws may change the slides.
  void DrawSlide(Storyboard::DisplayElement slide) {
    const bool plays = parts.playback.GetPlayingSequence() == slide.sequence;
    const bool pauses = parts.playback.GetPausedSequence() == slide.sequence;
    parts.painter.DrawSlide(target, slide, GetContent(slide.sequence, plays, pauses));
  }

  void DrawSlide(Storyboard::ShotDisplayElement slide) {
    const bool current = parts.playback.GetCurrentShot() == slide.shot;
    parts.painter.DrawSlide(
        target, slide,
        GetContent(slide.shot, current && parts.playback.IsPlaying(), current && parts.playback.IsPaused()));
  }

  StoryboardPainter::Content GetContent(const void* subject, bool plays, bool pauses) const {
    const SlideState halted = pauses ? SlideState::Paused : SlideState::Resting;
    return {parts.pictures, subject, plays ? SlideState::Playing : halted};
  }

  StoryboardParts& parts;
  Renderer& target;
};

}  // namespace

void Storyboard::Draw() {
  const Staying now(parts);
  if (const std::shared_ptr<WalkRecorder> recorder = now->walk.recorder) return recorder->OnDraw();
  now->overlay = now->playback.Step();
  if (!now) return;
  if (now->life.cutsOnly) now->overlay.alpha = 0.0;
  ShowCursor();
  const bool presents = !now->IsEditing() && now->playback.IsPlaying();
  if (!now || (presents && !now->life.fadeWhilePresenting)) return;
  const bool shows = now->life.visible && !presents;
  if (!shows && !(now->overlay.alpha > 0.0)) return;
  const bool changed = now->Refresh();
  const bool made = shows && now->MakePictures();
  if (now && (changed || made)) now->RequestUpdate();
  if (now) DrawOver(shows);
}

void Storyboard::DrawOver(bool withPanel) {
  const Staying now(parts);
  if (!now->CanDraw()) return;
  Renderer& renderer = *now->partners.renderer.Get();
  const FullViewPass pass(&renderer, *now->partners.hub.Get());
  if (!pass) return;
  if (now->overlay.alpha > 0.0 && now->partners.hub.Get() != nullptr) {
    const Box2 view = FullViewport(now->partners.hub.Get()->GetApplicationParameters());
    StoryboardPainter::DrawFade(renderer, view, now->overlay);
  }
  if (withPanel && now->life.visible) PanelDrawing(*parts, renderer).Draw();
}

void Storyboard::ShowCursor() {
  const Staying now(parts);
  if (!now->IsEditing()) {
    now->SetCursor(now->playback.IsPlaying() ? CURSOR_ORBIT_CUBE : CURSOR_ARROW);
  } else if (now->life.visible && now->mouse.inRegion) {
    now->SetCursor(CURSOR_ARROW);
  }
}

}  // namespace Korvane
