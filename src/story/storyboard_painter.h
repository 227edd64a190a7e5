#pragma once

#include <vector>

#include "korvane/icon2d.h"
#include "korvane/renderer.h"
#include "story/panel_layout.h"
#include "story/story_pictures.h"
#include "story/story_playback.h"

namespace Korvane {

/// Whether what a slide shows is being played.
enum class SlideState { Resting, Playing, Paused };

/// The pictures of the panel, each drawn in a pass that is open.
class StoryboardPainter {
 public:
  StoryboardPainter();

  /// Viewport pixels for each of the panel's own, which all places count in but those of the whole view.
  void SetScale(double value) { scale = value; }

  /// A grey over the whole view.
  static void DrawFade(Renderer& target, const Box2& view, const FadeOverlay& fade);

  struct TitleBar {
    bool playing = false;
    bool loop = false;
    const bool* hovered = nullptr;  // a button each
  };
  void DrawTitleBar(Renderer& target, const PanelRoom& room, const TitleBar& bar);
  /// What lies behind the shots.
  void DrawShotRow(Renderer& target, const Box2& ofPanel) const;

  /// What is drawn of a slide beside its card. The pictures are asked for one by one: whoever draws may give
  /// them back.
  struct Content {
    const StoryPictures& pictures;
    const void* subject;
    SlideState state = SlideState::Resting;
  };
  void DrawSlide(Renderer& target, const Storyboard::DisplayElement& slide, const Content& content);
  void DrawSlide(Renderer& target, const Storyboard::ShotDisplayElement& slide, const Content& content);

 private:
  struct SlideKind;
  static const SlideKind SEQUENCE;
  static const SlideKind SHOT;

  void Draw(Renderer& target, int texture, const Vector2& place);
  void DrawKind(Renderer& target, const SlideKind& kind, bool adds, const Slide& slide,
                const Content& content);
  void DrawButtons(Renderer& target, const SlideKind& kind, const Slide& slide, SlideState state);

  struct Image {
    ResourceIcon2D icon;
    Vector2 size;  // in pixels of the panel's own
  };
  std::vector<Image> images;
  double scale = 1.0;
};

}  // namespace Korvane
