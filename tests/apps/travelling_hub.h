#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <span>

#include "commands/view_bars.h"
#include "commands/view_commands.h"
#include "cuboids.h"
#include "korvane/helm_disc.h"
#include "korvane/orientor.h"
#include "stories/tour_clock.h"
#include "stories/view_story.h"
#include "views/preferences.h"
#include "views/selection.h"
#include "views/viewer_view_manager.h"
#include "zovhost/start_camera.h"
#include "zovhost/view_hub.h"

namespace apps_test {

/// The viewer without a window: a hub over a scene of boxes, with a clock of its own.
class TravellingHub : public testing::Test {
 protected:
  static constexpr int WIDTH = 1280;
  static constexpr int HEIGHT = 800;

  TravellingHub() : hub([] {}), selection(hub), manager(hub) {
    story.GetBoard().SetKorvane(&hub);
    story.BeginEmpty();
    preferences.SetObserver([this] { hub.SetReducedMotion(preferences.Get().reducedMotion); });
  }

  void Show(std::span<const Korvane::Box3> boxes, int width = WIDTH, int height = HEIGHT) {
    scene = MakeCuboids(boxes);
    selection.SetScene(scene.get());
    hub.SetViewportSize(width, height);
    zovhost::EnterScene(hub, *scene);
  }

  void Frame() {
    clock.Advance();
    hub.PerformOperations();
  }
  /// Until nothing moves any more, for ten seconds at most.
  void Arrive() {
    for (int i = 0; i < 10 * zovview::TourClock::FRAMES_PER_SECOND; ++i) {
      clock.Advance();
      if (!hub.PerformOperations()) return;
    }
    FAIL() << "the move does not end";
  }

  /// Where the present view shows a point; pixels from the bottom left.
  Korvane::Vector2 Project(const Korvane::Vector3& point) const {
    Korvane::Vector2 pixel;
    EXPECT_TRUE(
        hub.GetProjection().WorldToPixel(point, hub.GetViewportWidth(), hub.GetViewportHeight(), pixel));
    return pixel;
  }

  zovview::TourClock clock;
  std::unique_ptr<zovhost::Scene> scene;
  zovhost::ViewHub hub;
  zovview::Selection selection;
  Korvane::Orientor cube;
  Korvane::HelmDisc mainDisc;
  zovview::ViewerViewManager manager;
  zovview::ViewBars bars{manager, target};
  zovview::ViewStory story{manager, hub};
  zovview::Preferences preferences;
  const zovview::ViewTarget target = {hub,   selection, manager, cube,    mainDisc, {},
                                      &bars, &story,    {},      nullptr, {},       &preferences};
};

}  // namespace apps_test
