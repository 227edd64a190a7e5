// Picks against the exact test of each triangle: whatever is told cheaply of a quad must not change an
// answer.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "korvane/camera_parameters.h"
#include "korvane/ray.h"
#include "korvane/renderer.h"
#include "support/cameras.h"
#include "support/random.h"
#include "support/recording_renderer.h"

namespace {

using namespace Korvane;

constexpr double INFINITE = std::numeric_limits<double>::infinity();
const Box2 VIEWPORT(Vector2(400.0, 300.0), Vector2(400.0, 300.0));

using Quad = std::array<float, 12>;

// The nearest of all triangles along a ray, without any shortcut.
class PlainPick {
 public:
  explicit PlainPick(const Ray& passRay) : ray(passRay) {}

  void Offer(const std::vector<float>& vertices, int id) {
    for (std::size_t i = 0; i + 12 <= vertices.size(); i += 12) Test(vertices.data() + i, id);
  }
  int GetSelection() const { return selection; }

 private:
  void Test(const float* quad, int id) {
    const Vector3 corners[4] = {Vector3(quad), Vector3(quad + 3), Vector3(quad + 6), Vector3(quad + 9)};
    double first = Math::MAX_VALUE;
    double second = Math::MAX_VALUE;
    const bool hitsFirst = ray.IntersectTriangle(corners[0], corners[1], corners[2], first);
    const bool hitsSecond = ray.IntersectTriangle(corners[2], corners[3], corners[0], second);
    // In the order in which a distance that is not a number is never the smaller one.
    double nearest = Math::MAX_VALUE;
    if (first < nearest) nearest = first;
    if (second < nearest) nearest = second;
    if (!(hitsFirst || hitsSecond) || !(nearest < distance)) return;
    distance = nearest;
    selection = id;
  }

  Ray ray;
  double distance = Math::MAX_VALUE;
  int selection = -1;
};

struct Pass {
  Vector2 point;
  CameraParameters camera;
  Renderer::RenderMode mode = Renderer::RENDER_PERSPECTIVE;
  Ray ray;
};

// In the middle of its viewport the ray of a perspective pass runs along the view.
Pass PerspectivePass(const Vector3& eye, const Vector3& centre, const Vector3& up) {
  Pass pass;
  pass.point = VIEWPORT.center;
  pass.camera = LookAt(eye, centre, up);
  pass.ray = Ray(pass.camera.eye, (pass.camera.centre - pass.camera.eye).Normalized());
  return pass;
}

Pass OverlayPass(const Vector2& point) {
  return {point, CameraParameters(), Renderer::RENDER_OVERLAY,
          Ray(Vector3(point.x, point.y, -1.0), Vector3(0.0, 0.0, 1.0))};
}

Pass RandomPass(Random& random, double scale) {
  if (random.Integer(0, 4) == 0)
    return OverlayPass(Vector2(random.Uniform(-1, 1), random.Uniform(-1, 1)) * scale);
  const Vector3 axes[] = {Vector3(1, 0, 0), Vector3(0, -1, 0), Vector3(0, 0, 1), Vector3(1, 1, 1)};
  const Vector3 forward = random.Integer(0, 3) == 0 ? random.OneOf(axes) : random.Direction();
  const Vector3 eye = random.Point(3.0) * scale;
  return PerspectivePass(eye, eye + forward * scale, random.Direction());
}

// A quad of any shape near the ray: often through it with an edge or a corner, often before, behind or
// beside.
Quad RandomQuad(Random& random, const Ray& ray, double scale) {
  const Vector3 on = ray.origin + ray.direction * (scale * random.Uniform(-1.0, 4.0));
  const double width = scale * random.Magnitude(1e-3, 1.0);
  const Vector3 a = random.Direction() * width;
  const Vector3 b = random.Direction() * width;
  const Vector3 middle = on + random.Point(2.0) * width;
  const Vector3 layouts[4][4] = {
      {middle - a - b, middle + a - b, middle + a + b, middle - a + b},
      {on, on + a, on + a + b, on + b},
      {on - a, on + a, on + a + b, on - a + b},
      {middle, middle + random.Point(width), middle + random.Point(width), middle + random.Point(width)},
  };
  const auto& corners = layouts[random.Integer(0, 3)];
  Quad quad{};
  for (std::size_t i = 0; i < 4; ++i) corners[i].ToArray(quad.data() + 3 * i);
  return quad;
}

class ReferencePickingTest : public ::testing::Test {
 protected:
  // Whether the renderer answers as the plain pick does, after each call of the pass.
  void Compare(const Pass& pass, const std::vector<std::vector<float>>& calls) {
    ASSERT_TRUE(renderer.BeginSelection(pass.point, VIEWPORT, pass.camera, pass.mode));
    PlainPick plain(pass.ray);
    for (std::size_t id = 0; id < calls.size(); ++id) {
      const std::vector<float>& vertices = calls[id];
      renderer.RenderSelectionGeometry(static_cast<unsigned>(vertices.size() / 3), vertices.data(),
                                       static_cast<int>(id));
      plain.Offer(vertices, static_cast<int>(id));
      ASSERT_EQ(renderer.GetSelection(), plain.GetSelection()) << "after call " << id;
      hits += plain.GetSelection() == static_cast<int>(id) ? 1 : 0;
    }
  }

  RecordingRenderer renderer;
  int hits = 0;
};

// From quads whose determinant is about the tolerance to coordinates at which a product is endless.
TEST_F(ReferencePickingTest, random_quads_at_any_scale_are_picked_as_by_the_test_of_each_triangle) {
  Random random;
  for (int i = 0; i < 20000; ++i) {
    const double scale = random.Magnitude(1e-5, random.Coin() ? 10.0 : 1e30);
    const Pass pass = RandomPass(random, scale);
    std::vector<std::vector<float>> calls(8);
    for (std::vector<float>& vertices : calls) {
      for (int quad = random.Integer(1, 3); quad > 0; --quad) {
        const Quad corners = RandomQuad(random, pass.ray, scale);
        vertices.insert(vertices.end(), corners.begin(), corners.end());
      }
    }
    ASSERT_NO_FATAL_FAILURE(Compare(pass, calls)) << "scale " << scale;
  }
  EXPECT_GT(hits, 10000);
}

// The ray goes past by less than the exact test can tell, so its answer is that of the rounding.
TEST_F(ReferencePickingTest, a_quad_past_which_the_ray_goes_by_a_rounding_is_picked_as_by_its_triangles) {
  Random random;
  for (int i = 0; i < 20000; ++i) {
    // Far from the eye for their size: determinants near the tolerance, large terms in all sums.
    const double far = random.Magnitude(1.0, 1e4);
    const Pass pass = PerspectivePass(random.Point(far), random.Point(far), random.Direction());
    const Vector3 across = pass.ray.direction.Cross(random.Direction()).Normalized();
    const Vector3 on = pass.ray.origin + pass.ray.direction * (far * random.Uniform(0.1, 2.0));
    const double width = random.Magnitude(3e-4, 1e-1);
    const Vector3 along = across.Cross(pass.ray.direction) * width;
    const Vector3 beside = on + across * (far * random.Magnitude(1e-9, 1e-4));
    const Vector3 corners[4] = {beside - along, beside + along, beside + along + across * width,
                                beside - along + across * width};
    std::vector<float> vertices(12);
    for (std::size_t k = 0; k < 4; ++k) corners[k].ToArray(vertices.data() + 3 * k);
    ASSERT_NO_FATAL_FAILURE(Compare(pass, {vertices})) << "far " << far << ", width " << width;
  }
  EXPECT_GT(hits, 100);
}

TEST_F(ReferencePickingTest, what_is_not_a_number_or_endless_in_a_quad_changes_only_its_own_triangle) {
  Random random;
  const float strange[] = {std::numeric_limits<float>::quiet_NaN(),  std::numeric_limits<float>::infinity(),
                           -std::numeric_limits<float>::infinity(),  std::numeric_limits<float>::max(),
                           std::numeric_limits<float>::denorm_min(), -0.0F};
  for (int i = 0; i < 20000; ++i) {
    const double scale = random.Magnitude(1e-2, 1e2);
    const Pass pass = RandomPass(random, scale);
    std::vector<std::vector<float>> calls(4);
    for (std::vector<float>& vertices : calls) {
      Quad corners = RandomQuad(random, pass.ray, scale);
      for (int k = random.Integer(1, 3); k > 0; --k) {
        corners[static_cast<std::size_t>(random.Integer(0, 11))] = random.OneOf(strange);
      }
      vertices.assign(corners.begin(), corners.end());
    }
    ASSERT_NO_FATAL_FAILURE(Compare(pass, calls)) << "scale " << scale;
  }
  EXPECT_GT(hits, 1000);
}

TEST_F(ReferencePickingTest, a_ray_from_nowhere_or_to_nowhere_picks_as_the_test_of_each_triangle) {
  Random random;
  const double strange[] = {std::numeric_limits<double>::quiet_NaN(), INFINITE, -INFINITE, 1e300, 1e39, 0.0};
  for (int i = 0; i < 5000; ++i) {
    const Pass near = RandomPass(random, 1.0);
    std::vector<std::vector<float>> calls(4);
    for (std::vector<float>& vertices : calls) {
      const Quad corners = RandomQuad(random, near.ray, 1.0);
      vertices.assign(corners.begin(), corners.end());
    }
    Vector3 eye = near.ray.origin;
    eye[random.Integer(0, 2)] = random.OneOf(strange);
    const Vector3 centre = random.Coin() ? eye : eye + near.ray.direction;
    ASSERT_NO_FATAL_FAILURE(Compare(PerspectivePass(eye, centre, random.Direction()), calls));
    ASSERT_NO_FATAL_FAILURE(Compare(OverlayPass(Vector2(eye.x, eye.y)), calls));
  }
}

}  // namespace
