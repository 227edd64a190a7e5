#include "korvane/pivot_ball.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "korvane/aspect_ratio_adjuster.h"
#include "korvane/icon2d.h"
#include "korvane/icon3d.h"
#include "support/allocation_counter.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

using Lines = std::vector<std::string>;

// Ten units in front of the pivot, which is the origin, 45 degrees on all sides: at the pivot the view is
// 20 x 20 units, so the ball's proper size is 20 / 40 = 0.5.
CameraParameters TenUnitsAway() { return LookAt(Vector3(0, 0, 10), Vector3(0, 0, 0), Vector3(0, 1, 0)); }

// A host that remembers the materials, sizes and visibilities of the 3D icons, and the labels' places.
class BallRenderer : public RecordingRenderer {
 public:
  using RecordingRenderer::Render;

  struct Seen {
    int model;
    int drawMode;
    std::vector<float> colour;
    double size;
    Vector3 position;
    bool visible;
  };

  bool Render(ResourceIcon3D* icon) override {
    const auto& material = icon->GetMaterial();
    balls.push_back({icon->GetModelResourceID(),
                     material.drawMode,
                     {material.colour, material.colour + 4},
                     icon->GetSize(),
                     icon->GetPosition(),
                     icon->IsVisible()});
    return RecordingRenderer::Render(icon);
  }
  bool Render(DynamicIcon2D* icon) override {
    labelPosition = icon->GetPosition();
    return RecordingRenderer::Render(icon);
  }
  DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override {
    DynamicIcon2D* const icon = RecordingRenderer::CreatePivotLabel(text);
    if (icon != nullptr) icon->SetSize(60.0, 20.0);
    return icon;
  }
  bool BeginRender(const Box2& box, const CameraParameters& camera, RenderMode mode) override {
    viewport = box;
    return RecordingRenderer::BeginRender(box, camera, mode);
  }

  std::vector<Seen> balls;
  Vector2 labelPosition;
  Box2 viewport;
};

class PivotBallTest : public ::testing::Test {
 protected:
  PivotBallTest() {
    ball.SetKorvane(&hub);
    ball.SetRenderer(&renderer);
    hub.GetApplicationParameters().viewport_width = 800;
    hub.GetApplicationParameters().viewport_height = 600;
    LookFrom(TenUnitsAway());
  }
  ~PivotBallTest() override { ball.Destroy(); }

  void LookFrom(const CameraParameters& camera) {
    hub.view = camera;
    hub.PerformOperations();
  }
  void Show() {
    ball.SetPosition(hub.view.pivot);
    ball.UpdateSize(hub.view);
    ball.SetVisible(true);
  }
  double DrawnOpacity() {
    renderer.balls.clear();
    ball.Draw();
    return renderer.balls.empty() ? -1.0 : renderer.balls.back().colour[3];
  }
  Vector2 DrawnLabel() {
    ball.Draw();
    return renderer.labelPosition;
  }

  ManualPlatform platform;
  MemoryHub hub;
  BallRenderer renderer;
  PivotBall ball;
};

// ---- the table of operations ----

// The two last slots are private, so they are seen only through the class that shows them.
TEST(PivotBallSlots, stand_in_their_order) {
  EXPECT_EQ(VirtualSlot(&PivotBall::Create), 2);
  EXPECT_EQ(VirtualSlot(&PivotBall::Destroy), 3);
  EXPECT_EQ(VirtualSlot(&PivotBall::SetPosition), 4);
  EXPECT_EQ(VirtualSlot(&PivotBall::GetPosition), 5);
  EXPECT_EQ(VirtualSlot(&PivotBall::GetSize), 6);
  EXPECT_EQ(VirtualSlot(&PivotBall::SetVisible), 7);
  EXPECT_EQ(VirtualSlot(&PivotBall::Hide), 8);
  EXPECT_EQ(VirtualSlot(&PivotBall::UpdateSize), 9);
  EXPECT_EQ(VirtualSlot(&PivotBall::Draw), 10);
  EXPECT_EQ(VirtualSlot(&PivotBall::SetKorvane), -1);
  EXPECT_EQ(VirtualSlot(&PivotBall::GetKorvane), -1);
  EXPECT_EQ(VirtualSlot(&PivotBall::SetRenderer), -1);
  EXPECT_EQ(VirtualSlot(&PivotBall::IsVisible), -1);
  EXPECT_EQ(VirtualSlot(&PivotBall::SetLabel), -1);
}

// The private operations may still be overridden: an override in slot 11 or 12 is what Draw calls.
class BallWithItsOwnLook : public PivotBall {
 public:
  Lines log;

 private:
  void UpdateLabelPosition(const CameraParameters& /*camera*/, int width, int height) override {
    log.push_back("label " + std::to_string(width) + " " + std::to_string(height));
  }
  void UpdateOpacity(const CameraParameters& /*camera*/) override { log.emplace_back("opacity"); }
};

TEST_F(PivotBallTest, lets_a_derived_class_place_the_label_and_set_the_opacity) {
  BallWithItsOwnLook own;
  own.SetKorvane(&hub);
  own.SetRenderer(&renderer);
  own.Create();
  own.SetVisible(true);
  own.Draw();
  EXPECT_EQ(own.log, (Lines{"opacity", "label 800 600"}));
  own.Destroy();
}

// ---- life ----

TEST_F(PivotBallTest, is_hidden_without_size_at_the_origin_at_first) {
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_EQ(ball.GetSize(), 0.0);
  EXPECT_EQ(ball.GetPosition(), Vector3(0, 0, 0));
  EXPECT_EQ(ball.GetKorvane(), &hub);
}

TEST_F(PivotBallTest, creates_its_label_once) {
  EXPECT_TRUE(ball.Create());
  EXPECT_TRUE(ball.Create());
  EXPECT_EQ(renderer.CountCalls("CreatePivotLabel"), 1);
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"LoadStringResource(41)", "CreatePivotLabel(text 41)"}));
}

TEST_F(PivotBallTest, gives_its_label_back_at_the_end) {
  ball.Create();
  EXPECT_TRUE(ball.Destroy());
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  renderer.ClearCalls();
  EXPECT_TRUE(ball.Destroy());
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(PivotBallTest, is_neither_created_nor_destroyed_without_a_renderer) {
  ball.SetRenderer(nullptr);
  EXPECT_FALSE(ball.Create());
  EXPECT_FALSE(ball.Destroy());
  ball.SetLabel(static_cast<StringID>(40));
  ball.SetVisible(true);
  ball.Draw();
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(PivotBallTest, lives_without_a_label_when_the_host_makes_none) {
  renderer.FailAlways("CreatePivotLabel");
  EXPECT_TRUE(ball.Create());
  Show();
  renderer.ClearCalls();
  ball.Draw();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 1);
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 0);
}

// ---- hiding ----

TEST_F(PivotBallTest, hides_at_once_without_a_delay) {
  for (const double delay : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    ball.SetVisible(true);
    EXPECT_TRUE(ball.Hide(delay)) << delay;
    EXPECT_FALSE(ball.IsVisible()) << delay;
    EXPECT_EQ(platform.GetTimerCount(), 0) << delay;
  }
}

TEST_F(PivotBallTest, does_not_hide_what_is_hidden) {
  EXPECT_FALSE(ball.Hide(1.0));
  EXPECT_FALSE(ball.Hide(0.0));
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

TEST_F(PivotBallTest, hides_after_a_delay_and_asks_for_a_frame) {
  ball.SetVisible(true);
  EXPECT_TRUE(ball.Hide(1.5));
  platform.Advance(1499);
  EXPECT_TRUE(ball.IsVisible());
  const int requested = hub.requested;
  platform.Advance(1);
  EXPECT_FALSE(ball.IsVisible());
  EXPECT_EQ(hub.requested, requested + 1);
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

TEST_F(PivotBallTest, hides_after_a_delay_without_a_hub) {
  ball.SetKorvane(nullptr);
  ball.SetVisible(true);
  ball.Hide(1.0);
  platform.Advance(1000);
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(PivotBallTest, counts_anew_when_it_is_hidden_again) {
  ball.SetVisible(true);
  ball.Hide(1.0);
  platform.Advance(900);
  ball.Hide(1.0);
  platform.Advance(900);
  EXPECT_TRUE(ball.IsVisible());
  platform.Advance(100);
  EXPECT_FALSE(ball.IsVisible());
}

TEST_F(PivotBallTest, cancels_a_pending_hide_when_it_is_shown_or_hidden) {
  ball.SetVisible(true);
  ball.Hide(1.0);
  ball.SetVisible(true);
  platform.Advance(2000);
  EXPECT_TRUE(ball.IsVisible());
  ball.Hide(1.0);
  ball.SetVisible(false);
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

TEST_F(PivotBallTest, stops_a_pending_hide_at_its_end) {
  ball.Create();
  ball.SetVisible(true);
  ball.Hide(1.0);
  ball.Destroy();
  EXPECT_EQ(platform.GetTimerCount(), 0);
  {
    PivotBall other;
    other.SetVisible(true);
    other.Hide(1.0);
    EXPECT_EQ(platform.GetTimerCount(), 1);
  }
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

// ---- the label's text ----

TEST_F(PivotBallTest, releases_nothing_for_the_label_it_has) {
  ball.Create();
  renderer.ClearCalls();
  ball.SetLabel(STRING_PIVOT);
  renderer.ApplyTextureUsage();
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(PivotBallTest, takes_no_text_for_the_label_it_has) {
  ball.SetLabel(STRING_PIVOT);
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(PivotBallTest, changes_its_label) {
  ball.Create();
  renderer.ClearCalls();
  ball.SetLabel(static_cast<StringID>(40));
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"LoadStringResource(40)", "CreatePivotLabel(text 40)"}));
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("DestroyIcon"), 1);
  EXPECT_EQ(renderer.GetLiveIconCount(), 1);
}

TEST_F(PivotBallTest, takes_a_new_label_even_before_it_was_created) {
  ball.SetLabel(static_cast<StringID>(40));
  EXPECT_EQ(renderer.CountCalls("CreatePivotLabel"), 1);
  ball.SetLabel(STRING_NONE);
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
}

// ---- size and opacity ----

TEST_F(PivotBallTest, is_as_large_as_a_fortieth_of_the_greater_side_of_the_view) {
  ball.SetPosition(Vector3(0, 0, 0));
  ball.UpdateSize(TenUnitsAway());
  EXPECT_NEAR(ball.GetSize(), 0.5, 1e-14);
  // 15 and 30 degrees sideways, 10 and 20 up and down: 10 (tan 15 + tan 30) is the greater side.
  ball.UpdateSize(WithAsymmetricFrustum(TenUnitsAway(), 15, 30, 10, 20));
  const double width = 10.0 * (std::tan(15.0 * Math::DEG_TO_RAD) + std::tan(30.0 * Math::DEG_TO_RAD));
  EXPECT_NEAR(ball.GetSize(), width / 40.0, 1e-14);
  ball.UpdateSize(WithAsymmetricFrustum(TenUnitsAway(), 10, 20, 15, 30));
  EXPECT_NEAR(ball.GetSize(), width / 40.0, 1e-14);
  ball.UpdateSize(WithOrthographic(TenUnitsAway(), 8.0, 6.0));
  EXPECT_NEAR(ball.GetSize(), 0.2, 1e-15);
  ball.UpdateSize(WithOrthographic(TenUnitsAway(), 4.0, 6.0));
  EXPECT_NEAR(ball.GetSize(), 0.15, 1e-15);
}

TEST_F(PivotBallTest, measures_the_view_at_its_own_depth_and_not_at_its_distance) {
  ball.SetPosition(Vector3(3, 4, 5));  // five units in front of the eye, measured along the view
  ball.UpdateSize(TenUnitsAway());
  EXPECT_NEAR(ball.GetSize(), 0.25, 1e-14);
}

TEST_F(PivotBallTest, covers_the_same_part_of_the_view_from_anywhere) {
  Random random;
  for (int i = 0; i < 2000; ++i) {
    const CameraParameters camera =
        RandomCamera(random, random.Coin() ? Frustum::Symmetric : Frustum::Asymmetric);
    ball.SetPosition(camera.pivot);
    ball.UpdateSize(camera);
    const double depth = (camera.pivot - camera.eye).Dot((camera.centre - camera.eye).Normalized());
    const auto tangent = [](double degrees) { return std::tan(degrees * Math::DEG_TO_RAD); };
    const double width = (tangent(camera.left_fov) + tangent(camera.right_fov)) * depth;
    const double height = (tangent(camera.top_fov) + tangent(camera.bottom_fov)) * depth;
    ASSERT_NEAR(ball.GetSize(), std::max(width, height) / 40.0, 1e-12 * std::abs(width + height));
  }
}

// The ball keeps its size of 0.5 while the camera comes nearer: at a part r of the distance the ratio of
// the proper size to the size is r, and below a quarter the opacity is (sin((4 r - 1/2) pi) + 1) / 2.
TEST_F(PivotBallTest, fades_out_as_the_camera_comes_near) {
  struct Row {
    double ratio;
    double opacity;
  };
  const Row rows[] = {{1.0, 1.0},
                      {0.25, 1.0},
                      {0.125, 0.5},  // sin(0)
                      {0.25 / 3.0, (std::sin(-Math::PI / 6.0) + 1.0) / 2.0},
                      {0.0625, (1.0 - std::sqrt(0.5)) / 2.0}};  // sin(-pi / 4)
  Show();
  for (const Row& row : rows) {
    LookFrom(LookAt(Vector3(0, 0, 10.0 * row.ratio), Vector3(0, 0, 0), Vector3(0, 1, 0)));
    EXPECT_NEAR(DrawnOpacity(), row.opacity, 1e-6) << row.ratio;  // a float
  }
}

TEST_F(PivotBallTest, is_opaque_when_the_camera_goes_away) {
  Show();
  LookFrom(LookAt(Vector3(0, 0, 1000), Vector3(0, 0, 0), Vector3(0, 1, 0)));
  EXPECT_EQ(DrawnOpacity(), 1.0);
}

TEST_F(PivotBallTest, has_no_opacity_without_a_size) {
  ball.SetVisible(true);
  EXPECT_EQ(DrawnOpacity(), 0.0);
}

TEST_F(PivotBallTest, has_no_opacity_with_next_to_no_size) {
  // A view of 4e-6 world units, of which the ball takes a fortieth: 1e-7, below 1.19e-7.
  const CameraParameters tiny = WithOrthographic(TenUnitsAway(), 4e-6, 4e-6);
  ball.SetVisible(true);
  ball.UpdateSize(tiny);
  LookFrom(tiny);
  EXPECT_GT(ball.GetSize(), 0.0);
  EXPECT_EQ(DrawnOpacity(), 0.0);
}

TEST_F(PivotBallTest, has_no_opacity_behind_the_camera) {
  Show();
  LookFrom(WithPivot(TenUnitsAway(), Vector3(0, 0, 20)));
  EXPECT_EQ(DrawnOpacity(), 0.0);
}

// ---- drawing ----

TEST_F(PivotBallTest, draws_its_shadow_twice_then_itself_then_its_label) {
  ball.Create();
  Show();
  renderer.ClearCalls();
  ball.Draw();
  const Lines calls = renderer.TakeCalls();
  ASSERT_EQ(calls.size(), 8U);
  EXPECT_EQ(calls[0].rfind("BeginRender(", 0), 0U);
  EXPECT_EQ(calls[1], "RenderIcon3D(1)");
  EXPECT_EQ(calls[2], "RenderIcon3D(1)");
  EXPECT_EQ(calls[3], "RenderIcon3D(0)");
  EXPECT_EQ(calls[4], "EndRender()");
  EXPECT_EQ(calls[5].rfind("BeginRender(", 0), 0U);
  EXPECT_EQ(calls[6], "RenderDynamic(1)");
  EXPECT_EQ(calls[7], "EndRender()");

  ASSERT_EQ(renderer.balls.size(), 3U);
  EXPECT_EQ(renderer.balls[0].drawMode, 5);
  EXPECT_EQ(renderer.balls[1].drawMode, 0);
  EXPECT_EQ(renderer.balls[2].drawMode, 0);
  EXPECT_EQ(renderer.balls[0].colour, (std::vector<float>{0.0F, 0.25F, 0.0F, 0.5F}));
  EXPECT_EQ(renderer.balls[1].colour, renderer.balls[0].colour);
  EXPECT_EQ(renderer.balls[2].colour, (std::vector<float>{0.0F, 1.0F, 0.0F, 1.0F}));
  for (const auto& seen : renderer.balls) {
    EXPECT_TRUE(seen.visible);
    EXPECT_NEAR(seen.size, 0.5, 1e-14);
  }
  EXPECT_EQ(renderer.viewport.center, Vector2(400, 300));
  EXPECT_EQ(renderer.viewport.halfExtent, Vector2(400, 300));
}

TEST_F(PivotBallTest, draws_the_scene_in_mode_2_and_the_label_in_mode_0) {
  ball.Create();
  Show();
  renderer.ClearCalls();
  ball.Draw();
  std::string modes;
  for (const std::string& call : renderer.GetCalls()) {
    if (call.rfind("BeginRender(", 0) == 0) modes += call[call.size() - 2];
  }
  EXPECT_EQ(modes, "20");
}

TEST_F(PivotBallTest, halves_its_opacity_for_the_shadow) {
  Show();
  LookFrom(LookAt(Vector3(0, 0, 1.25), Vector3(0, 0, 0), Vector3(0, 1, 0)));
  ball.Draw();
  EXPECT_NEAR(renderer.balls[2].colour[3], 0.5, 1e-6);
  EXPECT_NEAR(renderer.balls[0].colour[3], 0.25, 1e-6);
}

TEST_F(PivotBallTest, follows_the_pivot_of_the_camera) {
  Show();
  LookFrom(WithPivot(TenUnitsAway(), Vector3(1, 2, 3)));
  ball.Draw();
  EXPECT_EQ(ball.GetPosition(), Vector3(1, 2, 3));
  for (const auto& seen : renderer.balls) EXPECT_EQ(seen.position, Vector3(1, 2, 3));
  EXPECT_NEAR(ball.GetSize(), 0.5, 1e-14);  // as it was shown
}

TEST_F(PivotBallTest, draws_nothing_hidden_or_without_a_hub_or_a_renderer) {
  ball.Create();
  renderer.ClearCalls();
  ball.Draw();
  ball.SetVisible(true);
  ball.SetKorvane(nullptr);
  ball.Draw();
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(PivotBallTest, skips_a_pass_that_does_not_open) {
  ball.Create();
  Show();
  renderer.ClearCalls();
  renderer.FailOnce("BeginRender");
  ball.Draw();
  EXPECT_EQ(renderer.CountCalls("RenderIcon3D"), 0);
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 1);
  EXPECT_EQ(renderer.CountCalls("EndRender"), 1);
  renderer.FailAlways("BeginRender");
  renderer.ClearCalls();
  ball.Draw();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 2);
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 0);
  EXPECT_EQ(renderer.CountCalls("EndRender"), 0);
}

TEST_F(PivotBallTest, draws_without_allocating) {
  PivotBall quiet;
  quiet.SetKorvane(&hub);
  // No label and no lines of the recording renderer: its passes do not open.
  class Closed : public RecordingRenderer {
   public:
    bool BeginRender(const Box2& /*box*/, const CameraParameters& /*camera*/, RenderMode /*mode*/) override {
      return true;
    }
    bool EndRender() override { return true; }
    using RecordingRenderer::Render;
    bool Render(ResourceIcon3D* /*icon*/) override { return true; }
    bool Render(DynamicIcon2D* /*icon*/) override { return true; }
  } silent;
  quiet.SetRenderer(&silent);
  quiet.Create();
  quiet.SetVisible(true);
  quiet.Draw();
  const AllocationCounter counter;
  for (int i = 0; i < 100; ++i) quiet.Draw();
  EXPECT_EQ(counter.GetAllocations(), 0U);
  quiet.Destroy();
}

// ---- the label's place ----

// The label is 60 x 20 pixels. On the axis it stands in the middle of 800 x 600, lifted by a quarter of the
// ball, 0.125 of the half view's 10 units, 0.0125 of 600 pixels = 7.5, and a quarter of its height, 5.
TEST_F(PivotBallTest, sets_the_label_above_the_ball) {
  ball.Create();
  Show();
  const Vector2 place = DrawnLabel();
  EXPECT_NEAR(place.x, 400.0, 1e-9);
  EXPECT_NEAR(place.y, 300.0 + 7.5 + 5.0, 1e-9);
}

// 5 units right of the axis is half of the half view, 200 pixels; 2.5 units up is a quarter of 300.
TEST_F(PivotBallTest, sets_the_label_where_the_ball_is_seen) {
  ball.Create();
  LookFrom(WithPivot(TenUnitsAway(), Vector3(5, 2.5, 0)));
  Show();
  const Vector2 place = DrawnLabel();
  EXPECT_NEAR(place.x, 600.0, 1e-9);
  EXPECT_NEAR(place.y, 375.0 + 7.5 + 5.0, 1e-9);
}

TEST_F(PivotBallTest, sets_the_label_by_the_size_of_an_orthographic_view) {
  ball.Create();
  LookFrom(WithPivot(WithOrthographic(TenUnitsAway(), 8.0, 6.0), Vector3(2, 1.5, 0)));
  Show();
  const Vector2 place = DrawnLabel();
  EXPECT_NEAR(place.x, 600.0, 1e-9);
  // The ball is 0.2 units: 0.05 of the half height of 3, times 600, is 10 pixels; the label adds 5.
  EXPECT_NEAR(place.y, 450.0 + 10.0 + 5.0, 1e-9);
}

// tan 0.5 to the left and 1 to the right, 1 down and 0.5 up: the axis lies at a third of the width and two
// thirds of the height; at the depth of 10 the half view counts as 10 x 10 units.
TEST_F(PivotBallTest, sets_the_label_about_the_axis_of_a_view_off_its_middle) {
  const double half = std::atan(0.5) / Math::DEG_TO_RAD;
  ball.Create();
  LookFrom(WithPivot(WithAsymmetricFrustum(TenUnitsAway(), half, 45, half, 45), Vector3(5, 5, 0)));
  Show();
  const Vector2 place = DrawnLabel();
  EXPECT_NEAR(place.x, (1.0 / 3.0 + 0.5 / 3.0) * 800.0, 1e-9);
  // The ball: 15 units / 40 = 0.375; a quarter of it over 10, times 600, is 5.625.
  EXPECT_NEAR(place.y, (0.5 * 2.0 / 3.0 + 2.0 / 3.0) * 600.0 + 5.625 + 5.0, 1e-9);
}

TEST_F(PivotBallTest, lets_the_aspect_ratio_widen_the_view_of_the_label) {
  class Doubling : public AspectRatioAdjuster {
   public:
    void Adjust(const CameraParameters& /*camera*/, int width, int height, double& horizontal,
                double& vertical) override {
      seenWidth = width;
      seenHeight = height;
      horizontal *= 2.0;
      vertical *= 2.0;
    }
    int seenWidth = 0;
    int seenHeight = 0;
  } doubling;
  ball.Create();
  LookFrom(WithPivot(TenUnitsAway(), Vector3(5, 2.5, 0)));
  Show();
  SetAspectRatioAdjuster(&doubling);
  const Vector2 place = DrawnLabel();
  SetAspectRatioAdjuster(nullptr);
  EXPECT_NEAR(place.x, 500.0, 1e-9);
  EXPECT_NEAR(place.y, 337.5 + 3.75 + 5.0, 1e-9);
  EXPECT_EQ(doubling.seenWidth, 800);
  EXPECT_EQ(doubling.seenHeight, 600);
}

TEST_F(PivotBallTest, sets_the_label_off_the_screen_for_a_ball_behind_the_camera) {
  ball.Create();
  Show();
  for (const double z : {10.0, 20.0}) {
    LookFrom(WithPivot(TenUnitsAway(), Vector3(0, 0, z)));
    EXPECT_EQ(DrawnLabel(), Vector2(-60.0, -20.0)) << z;
  }
}

TEST_F(PivotBallTest, sets_the_label_off_the_screen_where_the_view_has_no_size) {
  ball.Create();
  for (const CameraParameters& camera :
       {WithSymmetricFrustum(TenUnitsAway(), 0.0, 0.0), WithOrthographic(TenUnitsAway(), 0.0, 0.0)}) {
    LookFrom(camera);
    Show();
    EXPECT_EQ(DrawnLabel(), Vector2(-60.0, -20.0));
  }
}

TEST_F(PivotBallTest, draws_finite_numbers_from_any_finite_camera) {
  Random random;
  ball.Create();
  ball.SetVisible(true);
  for (int i = 0; i < 5000; ++i) {
    LookFrom(ExtremeCamera(random));
    if (random.Coin()) ball.UpdateSize(hub.view);
    const Vector2 place = DrawnLabel();
    ASSERT_TRUE(place.IsFinite());
    ASSERT_GE(renderer.balls.back().colour[3], 0.0F);
    ASSERT_LE(renderer.balls.back().colour[3], 1.0F);
    renderer.ClearCalls();
    renderer.balls.clear();
  }
}

TEST_F(PivotBallTest, survives_cameras_that_are_not_finite) {
  Random random;
  ball.Create();
  ball.SetVisible(true);
  for (int i = 0; i < 2000; ++i) {
    LookFrom(BrokenCamera(random));
    if (random.Coin()) ball.UpdateSize(hub.view);
    ASSERT_TRUE(DrawnLabel().IsFinite());
    ASSERT_GE(renderer.balls.back().colour[3], 0.0F);
    ASSERT_LE(renderer.balls.back().colour[3], 1.0F);
    renderer.ClearCalls();
    renderer.balls.clear();
  }
}

}  // namespace

TEST(PivotBallLabel, is_placed_only_where_there_is_one) {
  class PlacedBall : public PivotBall {
   public:
    int placed = 0;

   private:
    void UpdateLabelPosition(const CameraParameters& /*camera*/, int /*width*/, int /*height*/) override {
      ++placed;
    }
  };
  MemoryHub hub(TenUnitsAway());
  BallRenderer renderer;
  PlacedBall ball;
  ball.SetKorvane(&hub);
  ball.SetRenderer(&renderer);
  ball.SetVisible(true);
  ball.Draw();
  EXPECT_EQ(ball.placed, 0);
  ball.Create();
  ball.Draw();
  EXPECT_EQ(ball.placed, 1);
  ball.Destroy();
}
