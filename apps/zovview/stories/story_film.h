#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "korvane/storyboard.h"
#include "stories/tour_clock.h"
#include "zovhost/gl_renderer.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/image.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/view_hub.h"

namespace zovview {

/// A story played by a clock of its own, picture by picture, into memory. Beside whatever else is shown: it
/// has its own view, and its clock is the library's only within its calls.
class StoryFilm {
 public:
  struct Options {
    int width = 1280;  // pixels
    int height = 800;
    int picturesPerSecond = 6;  // a divisor of 60
  };
  /// The longest that can be made a film, in seconds.
  static constexpr double LONGEST = 3600.0;

  /// The scene and its drawing are borrowed. All calls need their context.
  StoryFilm(const zovhost::Scene& scene, zovhost::GLSceneView& sceneView, const Options& options);
  ~StoryFilm();
  StoryFilm(const StoryFilm&) = delete;
  StoryFilm& operator=(const StoryFilm&) = delete;

  /// False, with one line in `error`, for a story without shots, and for one that takes too long.
  bool Begin(std::unique_ptr<Korvane::Story> story, std::string& error);
  /// False at the end, and with one line in `error` when a picture cannot be drawn.
  bool TakeNext(zovhost::Image& picture, std::string& error);
  /// 0 to 1.
  double GetProgress() const;
  /// In pictures, about.
  int GetLength() const;

 private:
  // The platform of others comes back at the end of a call.
  class Platform {
   public:
    explicit Platform(TourClock& clock);
    ~Platform();
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

   private:
    Korvane::Platform& former;
  };

  void Advance();
  bool Draw(zovhost::Image& picture);

  const zovhost::Scene& scene;
  zovhost::GLSceneView& sceneView;
  const Options options;
  std::unique_ptr<TourClock> clock;
  zovhost::RendererHost host;  // without a pointer
  zovhost::ViewHub hub;
  zovhost::GLRenderer renderer;
  zovhost::OffscreenTarget target;
  std::unique_ptr<Korvane::Storyboard> board;
  double length = 0.0;  // seconds
  int frames = 0;
};

}  // namespace zovview
