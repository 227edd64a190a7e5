// What lies under the cursor when a gesture begins stays there: to half a pixel, for every camera.
#include <cmath>

#include "camera/oracle.h"
#include "interaction/tools/tool_fakes.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/zoom_tool.h"

using namespace Korvane;

namespace {

constexpr double HALF_A_PIXEL = 0.5;

// The scene: the sphere of radius 4 about the origin before the plane at a distance of 6 behind it, which the
// view always faces.
struct Scene {
  Vector3 towardsViewer;

  std::optional<Vector3> operator()(const Vector3& origin, const Vector3& direction) const {
    const double a = direction.Dot(direction);
    const double b = origin.Dot(direction);
    const double discriminant = b * b - a * (origin.Dot(origin) - 16.0);
    const double t = (-b - std::sqrt(discriminant)) / a;
    if (discriminant > 0.0 && t > 0.0) return origin + direction * t;
    const double fall = direction.Dot(towardsViewer);
    if (fall >= 0.0) return std::nullopt;
    return origin + direction * ((-6.0 - origin.Dot(towardsViewer)) / fall);
  }
};

double TanDegrees(double degrees) { return std::tan(degrees * oracle::PI / 180.0); }

Vector2 PixelOf(const CameraParameters& camera, const Vector3& point) {
  const Eigen::Vector2d place = oracle::Project(camera, oracle::From(point));
  return {place.x() * ToolBench::WIDTH, place.y() * ToolBench::HEIGHT};
}

// Looks at the scene from 20 to 60 away, upright or not; the orthographic size fits the half angles.
CameraParameters SceneCamera(Random& random, bool orthographic, bool symmetric) {
  const Vector3 eye = random.Direction() * random.Uniform(20.0, 60.0);
  Vector3 up = random.Direction();
  while (std::abs(up.Dot(eye.Normalized())) > 0.9) up = random.Direction();
  const Vector3 forward = (-eye).Normalized();
  up = (up - forward * up.Dot(forward)).Normalized();
  const double left = random.Uniform(10, 35);
  const double top = random.Uniform(10, 30);
  CameraParameters camera = LookAt(eye, Vector3(), up);
  camera = WithAsymmetricFrustum(camera, left, symmetric ? left : random.Uniform(10, 35), top,
                                 symmetric ? top : random.Uniform(10, 30));
  const double distance = eye.Length();
  const double width = (TanDegrees(camera.left_fov) + TanDegrees(camera.right_fov)) * distance;
  const double height = (TanDegrees(camera.top_fov) + TanDegrees(camera.bottom_fov)) * distance;
  if (orthographic) return WithOrthographic(camera, width, height);
  camera.ortho_width = width;
  camera.ortho_height = height;
  return camera;
}

struct ToolAnchor : ::testing::TestWithParam<bool> {
  ToolAnchor() { bench.hub.recording = false; }

  void LookAtScene(bool symmetric) {
    // The axis of an orthographic view is its middle.
    bench.hub.view = SceneCamera(random, GetParam(), symmetric || GetParam());
    bench.renderer.scene = Scene{bench.hub.view.eye.Normalized()};
    x = random.Integer(100, ToolBench::WIDTH - 100);
    y = random.Integer(100, ToolBench::HEIGHT - 100);
  }
  void ExpectUnder(double cursorX, double cursorY) {
    const Vector2 pixel = PixelOf(bench.hub.view, picked);
    EXPECT_NEAR(pixel.x, cursorX, HALF_A_PIXEL);
    EXPECT_NEAR(pixel.y, cursorY, HALF_A_PIXEL);
  }

  ToolBench bench;
  Random random;
  int x = 0;
  int y = 0;
  Vector3 picked;
};

}  // namespace

TEST_P(ToolAnchor, a_pan_carries_the_point_along_with_the_cursor) {
  for (int i = 0; i < 100; ++i) {
    LookAtScene(false);
    PanTool tool;
    bench.Wire(tool);
    tool.OnMouseDown(x, y);
    picked = bench.hub.view.pivot;
    ExpectUnder(x, y);
    for (int step = 0; step < 5; ++step) {
      x += random.Integer(-80, 80);
      y += random.Integer(-80, 80);
      tool.OnMouseMove(x, y);
      bench.Frame(tool);
      ExpectUnder(x, y);
    }
    tool.OnMouseUp(x, y);
    ExpectUnder(x, y);
  }
}

TEST_P(ToolAnchor, a_drag_zoom_keeps_the_point_where_the_drag_began) {
  for (int i = 0; i < 100; ++i) {
    LookAtScene(false);
    ZoomTool tool;
    bench.Wire(tool);
    tool.OnMouseDown(x, y);
    picked = bench.hub.view.pivot;
    const Vector3 eye = bench.hub.view.eye;
    for (int step = 0; step < 5; ++step) {
      tool.OnMouseMove(x + random.Integer(-60, 60), y + random.Integer(-60, 60));
      bench.Frame(tool);
      ExpectUnder(x, y);
    }
    tool.OnMouseMove(x + 30, y + 30);
    bench.Frame(tool);
    tool.OnMouseUp(x + 30, y + 30);
    ExpectUnder(x, y);
    EXPECT_LT((bench.hub.view.eye - picked).Length(), (eye - picked).Length());
  }
}

TEST_P(ToolAnchor, a_click_zoom_keeps_the_point_where_the_click_was) {
  for (int i = 0; i < 20; ++i) {
    LookAtScene(false);
    ZoomTool tool;
    bench.Wire(tool);
    tool.OnMouseDown(x, y);
    tool.OnMouseUp(x, y);
    picked = bench.hub.view.pivot;
    for (int step = 0; step < 8; ++step) {
      bench.Frame(tool, 100);
      ExpectUnder(x, y);
    }
    EXPECT_FALSE(tool.IsAnimating());
  }
}

TEST_P(ToolAnchor, a_wheel_zoom_keeps_the_point_where_the_first_notch_came) {
  for (int i = 0; i < 50; ++i) {
    LookAtScene(false);
    MouseWheelZoomTool tool;
    bench.Wire(tool);
    for (int notch = 0; notch < 5; ++notch) {
      tool.OnMouseWheel(x, y, random.Coin() ? 240 : -360);
      if (notch == 0) picked = bench.hub.view.pivot;
      bench.Frame(tool);
      ExpectUnder(x, y);
    }
    bench.Frame(tool, 500);
    EXPECT_FALSE(tool.IsOperating());
    ExpectUnder(x, y);
  }
}

TEST_P(ToolAnchor, a_rectangle_ends_with_its_middle_in_the_middle_and_its_sides_at_the_edges) {
  for (int i = 0; i < 50; ++i) {
    LookAtScene(true);
    const int width = 2 * random.Integer(20, 90);  // even, so that the middle is a whole pixel
    const int height = 2 * random.Integer(20, 90);
    RectZoomTool tool;
    tool.SetFlyToRectangle(true);
    bench.Wire(tool);
    const CameraParameters start = bench.hub.view;
    tool.OnMouseDown(x - width / 2, y + height / 2);
    tool.OnMouseMove(x + width / 2, y - height / 2);
    ASSERT_TRUE(tool.OnMouseUp(x + width / 2, y - height / 2));
    picked = bench.hub.view.pivot;
    const Vector2 before = PixelOf(start, picked);
    EXPECT_NEAR(before.x, x, HALF_A_PIXEL);
    EXPECT_NEAR(before.y, y, HALF_A_PIXEL);
    bench.RunFor(tool, 1000);
    EXPECT_FALSE(tool.IsAnimating());
    ExpectUnder(ToolBench::WIDTH / 2.0, ToolBench::HEIGHT / 2.0);

    // A pixel at the pivot's depth has become as much larger as the rectangle's larger side allows.
    const double scale = std::fmin(1.0 * ToolBench::WIDTH / width, 1.0 * ToolBench::HEIGHT / height);
    const Vector3 beside = picked + (start.centre - start.eye).Cross(start.up).Normalized() * 0.01;
    const double spread = PixelOf(start, beside).x - before.x;
    const double grown = PixelOf(bench.hub.view, beside).x - PixelOf(bench.hub.view, picked).x;
    EXPECT_NEAR(grown / spread, scale, 1e-6 * scale);
  }
}

INSTANTIATE_TEST_SUITE_P(Views, ToolAnchor, ::testing::Values(false, true),
                         [](const auto& view) { return view.param ? "orthographic" : "perspective"; });
