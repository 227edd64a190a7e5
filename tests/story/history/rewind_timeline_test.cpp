// What is drawn of the film strip.
#include <algorithm>
#include <cmath>
#include <limits>

#include "korvane/icon2d.h"
#include "story/history/rewind_scene.h"

using namespace Korvane;

namespace {

// Keeps what each picture looked like when it was drawn.
struct Drawn {
  int picture;  // the texture; -1 for a thumbnail
  Box2 bounds;
  double opacity;
};

struct StripRenderer : RecordingRenderer {
  using RecordingRenderer::Render;
  bool Render(ResourceIcon2D* icon) override {
    drawn.push_back({icon->GetTextureResourceID(), icon->GetBounds(), icon->GetOpacity()});
    return RecordingRenderer::Render(icon);
  }
  bool Render(DynamicIcon2D* icon) override {
    drawn.push_back({-1, icon->GetBounds(), icon->GetOpacity()});
    return RecordingRenderer::Render(icon);
  }
  std::vector<Drawn> drawn;
};

struct RewindDrawing : RewindScene {
  RewindDrawing() { history.SetRenderer(&canvas); }
  ~RewindDrawing() override { history.SetRenderer(nullptr); }

  Lines Draw() {
    canvas.ClearCalls();
    canvas.drawn.clear();
    history.Draw(hub.view);
    return canvas.TakeCalls();
  }

  StripRenderer canvas;
};

}  // namespace

TEST_F(RewindDrawing, draws_the_bracket_and_then_each_element) {
  Fill(2);
  Open(400);
  EXPECT_EQ(Draw(), (Lines{
                        "BeginRender(400, 300, 400, 300, 0)",
                        "RenderResource(92)",
                        "RenderDynamic(1)",
                        "RenderResource(100)",
                        "RenderResource(89)",
                        "RenderResource(90)",
                        "RenderDynamic(2)",
                        "RenderResource(100)",
                        "RenderResource(89)",
                        "RenderResource(90)",
                        "EndRender()",
                    }));
}

TEST_F(RewindDrawing, each_picture_has_its_place_and_opacity) {
  Fill(2);
  Open(400);  // 332, 400
  Slide(383);
  Draw();
  const Box2 bracket({383, 300}, {64, 64});
  const Box2 first({332, 300}, {32, 32});
  const Box2 second({400, 300}, {32, 32});
  const Drawn expected[] = {
      {91, bracket, 1.0},                                                             // not snapped
      {-1, first, 1.0},   {100, first, 1.0},  {89, first, 0.75},  {90, first, 0.25},  // 51 of 68 away
      {-1, second, 1.0},  {100, second, 1.0}, {89, second, 0.25}, {90, second, 0.75},
  };
  ASSERT_EQ(canvas.drawn.size(), std::size(expected));
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    EXPECT_EQ(canvas.drawn[i].picture, expected[i].picture) << i;
    EXPECT_EQ(canvas.drawn[i].bounds.center, expected[i].bounds.center) << i;
    EXPECT_EQ(canvas.drawn[i].bounds.halfExtent, expected[i].bounds.halfExtent) << i;
    EXPECT_EQ(canvas.drawn[i].opacity, expected[i].opacity) << i;
  }
}

TEST_F(RewindDrawing, another_scale_makes_all_larger_and_its_pictures_anew) {
  Fill(2);
  canvas.ClearCalls();
  history.SetScale(2.0);
  history.UpdateThumbnails();
  const Lines calls = canvas.TakeCalls();
  EXPECT_EQ(
      std::count_if(calls.begin(), calls.end(),
                    [](const auto& call) { return call.rfind("CreateSceneScreenshot(128, 128", 0) == 0; }),
      2);
  Open(400);
  Draw();
  ASSERT_EQ(canvas.drawn.size(), 9U);
  EXPECT_EQ(canvas.drawn[0].bounds.halfExtent, Vector2(128, 128)) << "the bracket";
  EXPECT_EQ(canvas.drawn[1].bounds.halfExtent, Vector2(64, 64));
  EXPECT_EQ(canvas.drawn[5].bounds.center.x - canvas.drawn[1].bounds.center.x, 2.0 * 68.0);
  for (const double scale : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
    history.SetScale(scale);
    EXPECT_EQ(Strip().scale, 2.0);
  }
}

TEST_F(RewindDrawing, an_element_without_a_picture_has_its_frames_only) {
  canvas.FailAlways("CreateSceneScreenshot");
  Fill(1);
  Open(400);
  EXPECT_EQ(Draw(), (Lines{"BeginRender(400, 300, 400, 300, 0)", "RenderResource(92)", "RenderResource(89)",
                           "RenderResource(90)", "EndRender()"}));
}

TEST_F(RewindDrawing, closed_or_empty_it_draws_nothing) {
  EXPECT_TRUE(Draw().empty());
  Open(400);
  EXPECT_TRUE(Draw().empty());
  Close();
  Fill(2);
  EXPECT_TRUE(Draw().empty());
}

TEST_F(RewindDrawing, a_pass_that_cannot_be_opened_is_skipped_and_not_closed) {
  Fill(2);
  Open(400);
  canvas.FailOnce("BeginRender");
  EXPECT_EQ(Draw(), Lines{"BeginRender(400, 300, 400, 300, 0)"});
}

TEST_F(RewindDrawing, the_pass_has_the_camera_that_is_given) {
  struct PassRenderer : StripRenderer {
    bool BeginRender(const Box2& /*viewport*/, const CameraParameters& camera, RenderMode /*mode*/) override {
      eye = camera.eye.x;
      return false;
    }
    double eye = 0.0;
  } pass;
  history.SetRenderer(&pass);
  Fill(1);
  Open(400);
  history.Draw(At(77));
  EXPECT_EQ(pass.eye, 77.0);
  history.SetRenderer(nullptr);
}

TEST_F(RewindDrawing, a_hundred_and_one_elements_draw_the_last_hundred) {
  Fill(101);
  Open(400);
  const Lines calls = Draw();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "RenderResource(100)"), 100);
  EXPECT_EQ(canvas.drawn.back().bounds.center.x, 400.0);
}
