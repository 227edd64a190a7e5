// The look of the pivot ball with its label, held to stored pictures.
#include <gtest/gtest.h>

#include <string>

#include "graphics_context.h"
#include "korvane/pivot_ball.h"
#include "picture_comparison.h"
#include "sheets/painted.h"
#include "sheets/still_hub.h"
#include "zovhost/gl_renderer.h"

namespace {

using zovhost::Image;
using zovsheets::Ground;

constexpr double viewPoints = 400.0;
constexpr double shownPoints = 100.0;

/// A ball in the middle of a view, of which the middle is shown.
class BallView {
 public:
  explicit BallView(double scale)
      : side(static_cast<int>(viewPoints * scale)), shown(static_cast<int>(shownPoints * scale)) {
    renderer.SetViewport(0, 0, side, side);
    renderer.SetDisplayScale(scale);
    EXPECT_TRUE(renderer.Create());
    hub.SetViewportSize(side, side);
    hub.camera.eye = {0.0, 0.0, 10.0};
    hub.camera.up = {0.0, 1.0, 0.0};
    hub.camera.SetVerticalFOV(45.0);
    hub.camera.SetHorizontalFOV(45.0);
    hub.PerformOperations();
    renderer.SetCamera(hub.camera);
    renderer.SetSceneSphere({{}, 20.0});
    ball.SetKorvane(&hub);
    ball.SetRenderer(&renderer);
    EXPECT_TRUE(ball.Create());
    ball.SetPosition({});
    ball.UpdateSize(hub.camera);
    ball.SetVisible(true);
  }
  ~BallView() {
    ball.Destroy();
    renderer.Destroy();
  }
  BallView(const BallView&) = delete;
  BallView& operator=(const BallView&) = delete;

  void Show(bool shows) { ball.SetVisible(shows); }
  void SetLabel(Korvane::StringID text) { ball.SetLabel(text); }
  Image Paint(Ground ground) {
    Image whole;
    EXPECT_TRUE(zovsheets::PaintOnGround([this] { ball.Draw(); }, ground, side, side, whole));
    EXPECT_EQ(renderer.GetPlaceholderCount(), 0);
    Image middle = zovsheets::MakeGround(ground, shown, shown);
    zovsheets::Lay(whole, (shown - side) / 2, (shown - side) / 2, 1, middle);
    return middle;
  }

 private:
  const int side;  // pixels
  const int shown;
  zovsheets::StillHub hub;
  zovhost::GLRenderer renderer;
  Korvane::PivotBall ball;
};

struct Place {
  const char* name;
  Ground ground;
};
class PivotBallLook : public testing::TestWithParam<Place> {
 protected:
  zovtest::OffscreenContext context;
};

TEST_P(PivotBallLook, is_as_it_was) {
  const struct {
    double scale;
    const char* name;
  } scales[] = {{1.0, ""}, {1.5, "-at-1-and-a-half"}, {2.0, "-at-2x"}, {3.0, "-at-3x"}};
  for (const auto& each : scales) {
    BallView view(each.scale);
    zovtest::ExpectStored(view.Paint(GetParam().ground), "pivot",
                          std::string("on-") + GetParam().name + each.name);
  }
}

// What the tolerance must not let through: that it is not there, or is called something else.
TEST_P(PivotBallLook, is_told_from_a_bare_ground_and_from_another_label) {
  BallView view(1.0);
  const Image usual = view.Paint(GetParam().ground);
  view.SetLabel(static_cast<Korvane::StringID>(39));
  EXPECT_FALSE(zovtest::IsSimilar(zovtest::Compare(view.Paint(GetParam().ground), usual)));
  view.Show(false);
  EXPECT_FALSE(zovtest::IsSimilar(zovtest::Compare(view.Paint(GetParam().ground), usual)));
}

INSTANTIATE_TEST_SUITE_P(Grounds, PivotBallLook,
                         testing::Values(Place{"white", Ground::White}, Place{"black", Ground::Black},
                                         Place{"gradient", Ground::Gradient}, Place{"busy", Ground::Busy}),
                         [](const auto& place) { return std::string(place.param.name); });

}  // namespace
