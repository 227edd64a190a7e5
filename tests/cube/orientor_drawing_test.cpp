// The calls of a draw, in their order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "cube/cube_scene.h"
#include "cube/pick_oracle.h"
#include "korvane/icon2d.h"
#include "support/allocation_counter.h"

namespace {

using namespace Korvane;

using Geometry = RecordingRenderer::Geometry;
using Colour = std::vector<float>;

constexpr float HALF = 0.095F;  // of the cube: face, rim and no gap

// A draw with the mouse at rest far away, where the opacity is 0.5, unless it is moved.
class DrawScene : public CubeScene {
 public:
  DrawScene() { EXPECT_TRUE(cube.Create()); }

  const std::vector<Geometry>& Draw() {
    renderer.ClearCalls();
    cube.Draw();
    return renderer.GetGeometry();
  }
  /// Without the update that a whole draw begins with.
  void DrawOverlay() {
    cube.open.Look();
    cube.open.DrawOverlay(renderer);
  }
  void PointAtCube() { Point(964, 60); }
};

Colour ColourOf(const Geometry& drawn) {
  const float* const c = drawn.material.colour;
  return {c[0], c[1], c[2], c[3]};
}

Vector3 VertexOf(const Geometry& drawn, std::size_t i) { return Vector3(drawn.vertices.data() + 3 * i); }
Vector2 TextureOf(const Geometry& drawn, std::size_t i) {
  return {drawn.texCoords[2 * i], drawn.texCoords[2 * i + 1]};
}

void ExpectVertices(const Geometry& drawn, const std::vector<Vector3>& expected) {
  ASSERT_EQ(drawn.vertices.size(), 3 * expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    for (int axis = 0; axis < 3; ++axis) {
      EXPECT_NEAR(VertexOf(drawn, i)[axis], expected[i][axis], 1e-7) << i << ", " << axis;  // floats
    }
  }
}

void ExpectTexture(const Geometry& drawn, const std::vector<Vector2>& expected) {
  ASSERT_EQ(drawn.texCoords.size(), 2 * expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_NEAR(TextureOf(drawn, i).x, expected[i].x, 1e-6) << i;
    EXPECT_NEAR(TextureOf(drawn, i).y, expected[i].y, 1e-6) << i;
  }
}

void ExpectColour(const Geometry& drawn, const Colour& expected) {
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(ColourOf(drawn)[i], expected[i], 1e-6) << i;
}

// What a step is told apart by.
struct Call {
  std::size_t vertices;
  int texture;
  int drawMode;
  bool operator==(const Call& other) const {
    return vertices == other.vertices && texture == other.texture && drawMode == other.drawMode;
  }
};
void PrintTo(const Call& call, std::ostream* out) {
  *out << call.vertices << " of " << call.texture << " in " << call.drawMode;
}

std::vector<Call> CallsOf(const std::vector<Geometry>& drawn) {
  std::vector<Call> calls;
  for (const Geometry& each : drawn) {
    calls.push_back({each.vertices.size() / 3, each.material.texture, each.material.drawMode});
  }
  return calls;
}

std::size_t VertexCountOf(int part) { return part < 6 ? 4 : part < 18 ? 8 : 12; }

// The part to which the vertices of a piece belong: they all lie in its octant, edge or face.
int PartOf(const Geometry& drawn) {
  Vector3 middle;
  const std::size_t count = drawn.vertices.size() / 3;
  for (std::size_t i = 0; i < count; ++i) middle += VertexOf(drawn, i) / static_cast<double>(count);
  const auto sign = [](double v) { return v > 0.06 ? 1 : v < -0.06 ? -1 : 0; };
  const Vector3 direction(sign(middle.x), sign(middle.y), sign(middle.z));
  for (int part = 0; part < 26; ++part) {
    if (PickOracle::DirectionOf(part) == direction) return part;
  }
  return -1;
}

// ---- when nothing is drawn ----

TEST(OrientorDraw, is_nothing_while_invisible) {
  DrawScene scene;
  scene.Parameters().visible = false;
  scene.Draw();
  EXPECT_EQ(scene.renderer.GetCalls(), std::vector<std::string>());
}

TEST(OrientorDraw, skips_a_pass_that_cannot_be_opened) {
  DrawScene scene;
  scene.renderer.FailOnce("BeginRender");  // the cube
  EXPECT_TRUE(scene.Draw().empty());
  EXPECT_EQ(scene.renderer.CountCalls("BeginRender"), 2);
  EXPECT_EQ(scene.renderer.CountCalls("EndRender"), 1);
  scene.renderer.FailAlways("BeginRender");
  scene.Draw();
  EXPECT_EQ(scene.renderer.CountCalls("EndRender"), 0);
}

TEST(OrientorDraw, goes_on_when_geometry_fails) {
  DrawScene scene;
  const std::size_t whole = scene.Draw().size();
  scene.renderer.FailAlways("RenderGeometry");
  EXPECT_EQ(scene.Draw().size(), whole);
  EXPECT_EQ(scene.renderer.CountCalls("EndRender"), 2);
}

// ---- the passes ----

class CameraRecorder : public RecordingRenderer {
 public:
  bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
    boxes.push_back(viewport);
    cameras.push_back(camera);
    modes.push_back(mode);
    return true;
  }
  std::vector<Box2> boxes;
  std::vector<CameraParameters> cameras;
  std::vector<int> modes;
};

TEST(OrientorDraw, opens_the_cube_in_perspective_and_then_the_overlay) {
  DrawScene scene;
  CameraRecorder recorder;
  scene.cube.SetRenderer(&recorder);
  scene.cube.Draw();
  ASSERT_EQ(recorder.modes, std::vector<int>({Renderer::RENDER_PERSPECTIVE, Renderer::RENDER_OVERLAY}));
  EXPECT_EQ(recorder.boxes[1].center, Vector2(512, 384));
  EXPECT_EQ(recorder.boxes[1].halfExtent, Vector2(512, 384));
  for (const CameraParameters& camera : recorder.cameras) {
    const Vector3 view = (camera.centre - camera.eye).Normalized();
    EXPECT_NEAR(view.Dot(Vector3(-3, -2, -1).Normalized()), 1.0, 1e-12);
    EXPECT_NEAR((camera.eye - camera.centre).Length(), 0.9F, 1e-12);
    EXPECT_EQ(camera.centre, Vector3());
    EXPECT_EQ(camera.up, Vector3(0, 1, 0));
    EXPECT_EQ(camera.left_fov, 15.0);
    EXPECT_EQ(camera.right_fov, 15.0);
    EXPECT_EQ(camera.top_fov, 15.0);
    EXPECT_EQ(camera.bottom_fov, 15.0);
    EXPECT_EQ(camera.ortho_width, 0.0);
    EXPECT_EQ(camera.ortho_height, 0.0);
  }
}

TEST(OrientorDraw, looks_at_the_cube_in_the_space_of_the_scene) {
  DrawScene scene;
  CameraRecorder recorder;
  scene.cube.SetRenderer(&recorder);
  scene.Scene().scene_front_direction = Vector3(0, -1, 0);
  scene.Scene().scene_up_direction = Vector3(0, 0, 1);
  // From the front and a little above; up of twice the unit.
  scene.hub.view = LookAt(Vector3(0, -8, 6), Vector3(), Vector3(0, 0, 2));
  scene.cube.Draw();
  EXPECT_NEAR(recorder.cameras[0].eye.x, 0.9F * 0.8, 1e-12);
  EXPECT_NEAR(recorder.cameras[0].eye.y, 0.9F * 0.6, 1e-12);
  EXPECT_NEAR(recorder.cameras[0].eye.z, 0.0, 1e-12);
  EXPECT_EQ(recorder.cameras[0].up, Vector3(0, 1, 0));
}

struct BoxRow {
  int location;
  bool compass;
  double x, y, half;
};

// Toward the corner by 5 percent of a pass of 120 or, with the compass, of 180 pixels: 6 or 9 pixels.
TEST(OrientorDraw, places_the_pass_in_each_corner) {
  const BoxRow rows[] = {
      {0, false, 1024 - 114 + 60, 768 - 114 + 60, 60}, {1, false, 1024 - 114 + 60, -6 + 60, 60},
      {2, false, -6 + 60, 768 - 114 + 60, 60},         {3, false, -6 + 60, -6 + 60, 60},
      {0, true, 1024 - 171 + 90, 768 - 171 + 90, 90},  {3, true, -9 + 90, -9 + 90, 90},
  };
  for (const BoxRow& row : rows) {
    SCOPED_TRACE(row.location);
    DrawScene scene;
    scene.Parameters().screen_location = static_cast<OrientorParameters::Location>(row.location);
    scene.Parameters().draw_compass = row.compass;
    scene.Look(Vector3(-1, 0, 0));
    scene.SetViewport(CubeScene::WIDTH, CubeScene::HEIGHT);
    Box2 box;
    CameraParameters camera;
    scene.cube.GetPass(box, camera);
    EXPECT_EQ(box.center, Vector2(row.x, row.y));
    EXPECT_EQ(box.halfExtent, Vector2(row.half, row.half));
    EXPECT_NEAR(camera.eye.x, row.compass ? 1.35 : 0.9, 1e-6);  // 1.5 times as far
    // And by the offsets on the screen.
    scene.Parameters().screen_offset_x = 7;
    scene.Parameters().screen_offset_y = -11;
    scene.cube.GetPass(box, camera);
    EXPECT_EQ(box.center, Vector2(row.x + 7, row.y - 11));
  }
}

TEST(OrientorDraw, cuts_the_low_corner_of_the_pass_to_whole_pixels) {
  DrawScene scene;
  scene.Parameters().size = OrientorParameters::SIZE_TINY;
  scene.Parameters().screen_location = OrientorParameters::LOCATION_BOTTOM_LEFT;
  scene.SetViewport(CubeScene::WIDTH, CubeScene::HEIGHT);
  Box2 box;
  CameraParameters camera;
  scene.cube.GetPass(box, camera);
  // 5 percent of 35 is 1.75: from -1, and half of 35 further.
  EXPECT_EQ(box.center, Vector2(16.5, 16.5));
  EXPECT_EQ(box.halfExtent, Vector2(17.5, 17.5));
  scene.Parameters().screen_location = OrientorParameters::LOCATION_TOP_RIGHT;
  scene.SetViewport(CubeScene::WIDTH, CubeScene::HEIGHT);
  scene.cube.GetPass(box, camera);
  // 1024 - 33.25 and 768 - 33.25, cut.
  EXPECT_EQ(box.center, Vector2(990 + 17.5, 734 + 17.5));
  // The larger pass is cut itself: 52.5 to 52.
  scene.Parameters().draw_compass = true;
  scene.cube.GetPass(box, camera);
  EXPECT_EQ(box.halfExtent, Vector2(26, 26));
  EXPECT_EQ(box.center, Vector2(974 + 26, 718 + 26));  // 1024 - 49.4, 768 - 49.4
}

// ---- the steps ----

// With the compass, the mouse on a part other than the closest, in a view along no axis: every step.
TEST(OrientorDraw, takes_its_steps_in_their_order) {
  DrawScene scene;
  scene.Parameters().draw_compass = true;
  scene.cube.highlightedPart = 12;
  scene.cube.mousePressed = true;  // keeps the highlight through the update
  scene.cube.activePart = 12;
  const std::vector<Geometry>& drawn = scene.Draw();
  const int closest = scene.cube.closestPart;
  ASSERT_NE(closest, 12);

  std::vector<Call> expected;
  const auto part = [&](int index, int texture, int mode) {
    expected.push_back({VertexCountOf(index), texture, mode});
  };
  for (int i = 0; i < 26; ++i) {
    if (i != 12 && i != closest) part(i, 0, 0);
  }
  part(12, 0, 0);
  part(closest, 0, 0);
  expected.push_back({4, 3, 4});                      // shadow
  expected.insert(expected.end(), 2, Call{4, 4, 0});  // ring
  expected.insert(expected.end(), 8, Call{4, 6, 0});  // letters
  expected.push_back({24, 2, 3});                     // shading
  part(12, 185, 3);                                   // edges of the highlight
  for (int i = 0; i < 26; ++i) part(i, 1, 2);         // labels
  EXPECT_EQ(CallsOf(drawn), expected);

  std::vector<int> order;
  for (int i = 0; i < 26; ++i) order.push_back(PartOf(drawn[static_cast<std::size_t>(i)]));
  std::vector<int> wanted;
  for (int i = 0; i < 26; ++i) {
    if (i != 12 && i != closest) wanted.push_back(i);
  }
  wanted.push_back(12);
  wanted.push_back(closest);
  EXPECT_EQ(order, wanted);
}

TEST(OrientorDraw, opens_and_closes_each_pass_around_its_calls) {
  DrawScene scene;
  scene.PointAtCube();
  scene.Draw();
  const std::vector<std::string>& calls = scene.renderer.GetCalls();
  std::vector<std::string> frame;
  for (const std::string& call : calls) {
    const std::string name = call.substr(0, call.find('('));
    if (frame.empty() || frame.back() != name) frame.push_back(name);
  }
  EXPECT_EQ(frame, std::vector<std::string>({"BeginRender", "RenderGeometry", "EndRender", "BeginRender",
                                             "RenderGeometry", "EndRender"}));
}

TEST(OrientorDraw, draws_the_closest_part_once_when_it_is_highlighted_too) {
  DrawScene scene;
  scene.cube.Update(false);
  const int closest = scene.cube.closestPart;
  scene.cube.highlightedPart = closest;
  scene.cube.mousePressed = true;
  const std::vector<Geometry>& drawn = scene.Draw();
  // 25 others, then the one in the colour of the selection.
  ExpectColour(drawn[25], {0.71F, 0.84F, 0.95F, scene.cube.opacity});
  EXPECT_EQ(PartOf(drawn[25]), closest);
  EXPECT_EQ(drawn[26].material.drawMode, 4);
}

TEST(OrientorDraw, has_no_highlight_while_dragging_disabled_or_unwanted) {
  for (int variant = 0; variant < 3; ++variant) {
    SCOPED_TRACE(variant);
    DrawScene scene;
    scene.Parameters().draw_closest_face = false;
    scene.cube.highlightedPart = 12;
    scene.cube.mousePressed = true;
    scene.cube.dragging = variant == 0;
    scene.Parameters().disabled = variant == 1;
    scene.Parameters().draw_selected_face = variant != 2;
    const std::vector<Geometry>& drawn = scene.Draw();
    for (std::size_t i = 0; i < 26; ++i) {
      ExpectColour(drawn[i], {0.89F, 0.89F, 0.89F, scene.cube.opacity});
      EXPECT_EQ(PartOf(drawn[i]), static_cast<int>(i));
    }
    for (const Geometry& each : drawn) {
      EXPECT_FALSE(each.material.texture == 185 && each.material.drawMode == 3);
    }
  }
}

TEST(OrientorDraw, tints_the_closest_part_by_half_with_the_mouse_far_away) {
  DrawScene scene;
  const std::vector<Geometry>& drawn = scene.Draw();
  EXPECT_EQ(PartOf(drawn[25]), scene.cube.closestPart);
  // Halfway between (0.74, 0.77, 0.81) and 0.89.
  ExpectColour(drawn[25], {0.815F, 0.83F, 0.85F, 0.5F});
}

TEST(OrientorDraw, tints_the_closest_part_wholly_with_the_mouse_near) {
  DrawScene scene;
  scene.Point(1010, 110);  // near, but off the cube
  ASSERT_EQ(scene.cube.highlightedPart, -1);
  const std::vector<Geometry>& drawn = scene.Draw();
  EXPECT_EQ(PartOf(drawn[25]), scene.cube.closestPart);
  ExpectColour(drawn[25], {0.74F, 0.77F, 0.81F, 1.0F});
}

TEST(OrientorDraw, tints_by_opacity_times_fade_in_between) {
  DrawScene scene;
  scene.Parameters().opacity_step = 0.0F;
  scene.Point(1024 - 155, 60);
  const std::vector<Geometry>& drawn = scene.Draw();
  const float t = scene.cube.opacity * scene.cube.fade;
  ASSERT_GT(t, 0.51F);
  ASSERT_LT(t, 0.95F);
  ExpectColour(drawn[25], {t * 0.74F + (1 - t) * 0.89F, t * 0.77F + (1 - t) * 0.89F,
                           t * 0.81F + (1 - t) * 0.89F, scene.cube.opacity});
}

TEST(OrientorDraw, lays_the_shadow_below_the_cube) {
  DrawScene scene;
  scene.Point(1010, 110);
  const std::vector<Geometry>& drawn = scene.Draw();
  const Geometry& shadow = drawn[26];
  EXPECT_EQ(shadow.material.texture, 3);
  EXPECT_EQ(shadow.material.drawMode, 4);
  // The colour of what was drawn before, at half the opacity.
  ExpectColour(shadow, {0.74F, 0.77F, 0.81F, 0.5F});
  const double ground = -(HALF + 0.0175);
  const double reach = HALF + 0.0625;
  ExpectVertices(
      shadow,
      {{-reach, ground, -reach}, {reach, ground, -reach}, {reach, ground, reach}, {-reach, ground, reach}});
  ExpectTexture(shadow, {{0, 0}, {1, 0}, {1, 1}, {0, 1}});
}

TEST(OrientorDraw, lays_the_ring_twice_so_that_it_shows_from_both_sides) {
  DrawScene scene;
  scene.Parameters().draw_compass = true;
  scene.Parameters().opacity_compass = 0.8F;
  const std::vector<Geometry>& drawn = scene.Draw();
  const double ground = -(HALF + 0.0175 + 0.0005);
  const double r = HALF + 0.2;
  ExpectColour(drawn[27], {1.0F, 1.0F, 1.0F, 0.4F});
  ExpectVertices(drawn[27], {{-r, ground, -r}, {r, ground, -r}, {r, ground, r}, {-r, ground, r}});
  ExpectTexture(drawn[27], {{0, 0}, {1, 0}, {1, 1}, {0, 1}});
  ExpectVertices(drawn[28], {{r, ground, -r}, {-r, ground, -r}, {-r, ground, r}, {r, ground, r}});
  EXPECT_EQ(drawn[28].material.texture, 4);
}

TEST(OrientorDraw, lights_the_ring_only_for_a_direction_of_the_ring) {
  for (const int part : {-1, 5, 26, 29, 30, 57}) {
    DrawScene scene;
    scene.Parameters().draw_compass = true;
    scene.cube.mousePressed = true;
    scene.cube.activePart = part;
    EXPECT_EQ(int{scene.Draw()[27].material.texture}, part >= 30 ? 5 : 4) << part;
  }
}

TEST(OrientorDraw, never_draws_a_direction_of_the_ring) {
  DrawScene scene;
  scene.Parameters().draw_compass = true;
  scene.cube.mousePressed = true;
  scene.cube.activePart = scene.cube.highlightedPart = 40;
  const std::vector<Geometry>& drawn = scene.Draw();
  const auto quads = std::count_if(drawn.begin(), drawn.end(),
                                   [](const Geometry& each) { return each.material.texture == 6; });
  EXPECT_EQ(quads, 8);  // four letters from both sides
  for (const Geometry& each : drawn) EXPECT_FALSE(each.vertices.empty());
}

TEST(OrientorDraw, can_offer_a_direction_of_the_ring_to_the_mouse_but_not_draw_it) {
  DrawScene scene;
  for (const int part : {26, 29, 30, 57}) {
    scene.renderer.ClearCalls();
    scene.cube.open.Look();
    const CubeQuads quads(scene.Parameters(), scene.cube.open.space, QuadUse::Drawn, false);
    const Renderer::MaterialParams material;
    DrawSink drawn(scene.renderer, material);
    quads.LayCompassPart(part, drawn);
    EXPECT_EQ(scene.renderer.CountCalls("RenderGeometry"), part < 30 ? 2 : 0) << part;
    QuadList offered(2, 8);
    quads.LayCompassPart(part, offered);
    EXPECT_EQ(offered.GetCorners(part).size(), 8U) << part;
  }
}

// Letter 26 lies along x; the compass is turned by 90 degrees from -z toward +x, so it shows at +z.
TEST(OrientorDraw, lays_each_letter_from_both_sides_with_its_quarter_of_the_texture) {
  DrawScene scene;
  scene.Parameters().draw_compass = true;
  const std::vector<Geometry>& drawn = scene.Draw();
  const double out = HALF + 0.1 + 0.05;
  const double ground = -(HALF + 0.0175);
  const Vector3 middles[4] = {{0, ground, out}, {0, ground, -out}, {-out, ground, 0}, {out, ground, 0}};
  for (std::size_t letter = 0; letter < 4; ++letter) {
    SCOPED_TRACE(letter);
    const Geometry& above = drawn[29 + 2 * letter];
    const Geometry& below = drawn[30 + 2 * letter];
    ExpectColour(above, {0.88235295F, 0.88235295F, 0.88235295F, 0.5F});
    const Vector3& m = middles[letter];
    // The half axes x and z are turned to +z and -x.
    const Vector3 a(0, 0, 0.05);
    const Vector3 b(-0.05, 0, 0);
    ExpectVertices(above, {m - a - b, m + a - b, m + a + b, m - a + b});
    const Vector3 lower = m - Vector3(0, 0.001, 0);
    ExpectVertices(below, {lower - a + b, lower + a + b, lower + a - b, lower - a - b});
    const double low = (3.0 - static_cast<double>(letter)) / 4.0;
    const std::vector<Vector2> quarter = {{0, low}, {1, low}, {1, low + 0.25}, {0, low + 0.25}};
    ExpectTexture(above, quarter);
    ExpectTexture(below, quarter);
  }
}

TEST(OrientorDraw, turns_the_letters_by_the_angle_of_the_compass) {
  DrawScene scene;
  scene.Parameters().draw_compass = true;
  scene.Parameters().compass_angle = 90.0F;
  const Geometry first = scene.Draw()[29];
  // Half a turn in all: letter 26 shows at -x.
  EXPECT_NEAR(VertexOf(first, 0).x + VertexOf(first, 2).x, -2.0 * (HALF + 0.15), 1e-6);
  EXPECT_NEAR(VertexOf(first, 0).z + VertexOf(first, 2).z, 0.0, 1e-6);
}

TEST(OrientorDraw, draws_the_highlighted_letter_last_in_its_own_colour) {
  DrawScene scene;
  scene.Parameters().draw_compass = true;
  scene.cube.mousePressed = true;
  scene.cube.activePart = scene.cube.highlightedPart = 27;
  std::vector<Geometry> drawn = scene.Draw();
  const auto quarterOf = [](const Geometry& each) {
    return 29 - static_cast<int>(TextureOf(each, 0).y * 4.0);
  };
  std::vector<int> order;
  for (std::size_t i = 29; i < 37; i += 2) order.push_back(quarterOf(drawn[i]));
  EXPECT_EQ(order, std::vector<int>({26, 28, 29, 27}));
  ExpectColour(drawn[33], {0.88235295F, 0.88235295F, 0.88235295F, 0.5F});
  ExpectColour(drawn[35], {0.5058824F, 0.7490196F, 0.9960785F, 0.5F});
  ExpectColour(drawn[36], {0.5058824F, 0.7490196F, 0.9960785F, 0.5F});

  scene.Parameters().disabled = true;
  drawn = scene.Draw();
  order.clear();
  for (std::size_t i = 29; i < 37; i += 2) order.push_back(quarterOf(drawn[i]));
  EXPECT_EQ(order, std::vector<int>({26, 27, 28, 29}));
}

TEST(OrientorDraw, keeps_the_compass_with_the_world_in_a_turned_scene) {
  DrawScene scene;
  scene.Parameters().draw_compass = true;
  scene.Scene().scene_is_world = false;
  // The scene is the world turned by 90 degrees about its up: front is the world's left.
  scene.Scene().scene_front_direction = Vector3(0, 0, 1);
  const std::vector<Geometry>& drawn = scene.Draw();
  // World left (z) is the scene's front (x), world front (x) its right (-z).
  const double out = HALF + 0.15;
  const Geometry& first = drawn[29];  // at +z of the world
  EXPECT_NEAR((VertexOf(first, 0).x + VertexOf(first, 2).x) / 2.0, out, 1e-6);
  EXPECT_NEAR((VertexOf(first, 0).z + VertexOf(first, 2).z) / 2.0, 0.0, 1e-6);
  EXPECT_NEAR((VertexOf(drawn[30], 0).y + VertexOf(drawn[30], 2).y) / 2.0, -(HALF + 0.0175 + 0.001), 1e-6);
  const double r = HALF + 0.2;
  const double ground = -(HALF + 0.0175 + 0.0005);
  // The ring's half axes x and z become -z and x.
  ExpectVertices(drawn[27], {{-r, ground, r}, {-r, ground, -r}, {r, ground, -r}, {r, ground, r}});
}

TEST(OrientorDraw, shades_the_whole_cube_and_drops_the_picture_on_an_axis) {
  DrawScene scene;
  std::vector<Geometry> drawn = scene.Draw();
  const Geometry shading = drawn[27];
  EXPECT_EQ(shading.vertices.size(), 72U);
  EXPECT_EQ(shading.material.texture, 2);
  EXPECT_EQ(shading.material.drawMode, 3);
  ExpectColour(shading, {0.44F, 0.44F, 0.44F, 0.5F});
  for (const float v : shading.vertices) EXPECT_NEAR(std::abs(v), HALF, 1e-7);
  for (std::size_t i = 0; i < 24; i += 4) {
    EXPECT_EQ(TextureOf(shading, i), Vector2(0, 0));
    EXPECT_EQ(TextureOf(shading, i + 1), Vector2(1, 0));
    EXPECT_EQ(TextureOf(shading, i + 2), Vector2(0, 1));
    EXPECT_EQ(TextureOf(shading, i + 3), Vector2(1, 1));
  }
  scene.Look(Vector3(-1, -1, 0));
  drawn = scene.Draw();
  EXPECT_EQ(drawn[27].material.texture, 185);
}

TEST(OrientorDraw, widens_the_shading_by_the_gap) {
  DrawScene scene;
  scene.Parameters().gap_size = 0.01F;
  const Geometry shading = scene.Draw()[27];
  for (const float v : shading.vertices) EXPECT_NEAR(std::abs(v), 0.105, 1e-7);
}

TEST(OrientorDraw, takes_a_hundredth_of_the_size_for_the_width_of_lines) {
  DrawScene scene;
  for (const Geometry& each : scene.Draw()) EXPECT_NEAR(each.material.lineWidth, 1.2F, 1e-6);
}

TEST(OrientorDraw, marks_the_edges_of_the_highlighted_part) {
  DrawScene scene;
  scene.cube.mousePressed = true;
  scene.cube.highlightedPart = 3;
  const Geometry edges = scene.Draw()[28];
  EXPECT_EQ(PartOf(edges), 3);
  ExpectColour(edges, {0.0F, 0.38F, 0.75F, 0.5F});
  EXPECT_EQ(edges.material.texture, 185);
  EXPECT_EQ(edges.material.drawMode, 3);
}

TEST(OrientorDraw, writes_the_labels_over_all_parts) {
  DrawScene scene;
  const std::vector<Geometry> drawn = scene.Draw();
  for (std::size_t i = 28; i < 54; ++i) {
    ExpectColour(drawn[i], {0.14F, 0.17F, 0.21F, 0.375F});  // 0.75 of 0.5
    EXPECT_EQ(PartOf(drawn[i]), static_cast<int>(i - 28));
  }
  scene.Parameters().draw_labels = false;
  for (const Geometry& each : scene.Draw()) EXPECT_NE(each.material.texture, 1);
}

TEST(OrientorDraw, has_no_labels_at_the_tiny_size_while_the_faces_stay) {
  DrawScene scene;
  scene.Parameters().size = OrientorParameters::SIZE_TINY;
  int faces = 0;
  for (const Geometry& each : scene.Draw()) {
    EXPECT_NE(each.material.texture, 1);
    faces += each.material.texture == 0 ? 1 : 0;
  }
  EXPECT_EQ(faces, 26);
  // Also when another size comes out the same.
  scene.Parameters().size = OrientorParameters::SIZE_SMALL;
  scene.Parameters().small_screen_size = 35;
  for (const Geometry& each : scene.Draw()) EXPECT_NE(each.material.texture, 1);
}

// ---- the arrows ----

// Arrows are the quads whose last two points are the same.
bool IsArrow(const Geometry& drawn) {
  return drawn.vertices.size() == 12 && VertexOf(drawn, 2) == VertexOf(drawn, 3) &&
         drawn.material.drawMode != 6;
}

TEST(OrientorDraw, shows_arrows_on_the_four_neighbours_of_a_face_with_the_mouse_in_the_region) {
  for (int face = 0; face < 6; ++face) {
    DrawScene scene;
    scene.Parameters().draw_labels = false;
    scene.Parameters().draw_closest_face = false;
    scene.Look(-PickOracle::DirectionOf(face));
    scene.Point(1010, 110);
    std::vector<int> shown;
    for (const Geometry& each : scene.Draw()) {
      if (!IsArrow(each) || each.material.drawMode != 3) continue;
      EXPECT_EQ(each.material.lineWidth, 1.0F);
      ExpectColour(each, {0.44F, 0.44F, 0.44F, 1.0F});
      EXPECT_EQ(each.material.texture, 185);
      ExpectTexture(each, {{0.1, 0.1}, {0.1, 1.0 / 6.0}, {0.9, 1.0 / 6.0}, {0.9, 0.1}});
      const Vector3 tip = VertexOf(each, 2);
      EXPECT_NEAR(tip.Length(), HALF + 0.035, 1e-7);
      const Vector3 outward = tip.Normalized();
      const Vector3 base = (VertexOf(each, 0) + VertexOf(each, 1)) / 2.0;
      EXPECT_NEAR((base - outward * (HALF + 0.06)).Length(), 0.0, 1e-7);
      EXPECT_NEAR((VertexOf(each, 1) - VertexOf(each, 0)).Length(), 0.05, 1e-7);
      for (int part = 0; part < 6; ++part) {
        if (outward.Dot(PickOracle::DirectionOf(part)) > 0.999) shown.push_back(part);
      }
    }
    std::vector<int> neighbours;
    for (int part = 0; part < 6; ++part) {
      if (part / 2 != face / 2) neighbours.push_back(part);
    }
    EXPECT_EQ(shown, neighbours) << face;
    EXPECT_TRUE(scene.cube.arrowsVisible);
  }
}

TEST(OrientorDraw, shows_an_arrow_with_the_material_of_each_step_that_draws_its_face) {
  DrawScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Point(1010, 110);
  int byTexture[186] = {};
  for (const Geometry& each : scene.Draw()) {
    if (IsArrow(each)) ++byTexture[each.material.texture];
  }
  EXPECT_EQ(byTexture[0], 4);    // faces
  EXPECT_EQ(byTexture[185], 4);  // lines
  EXPECT_EQ(byTexture[1], 4);    // labels
}

TEST(OrientorDraw, shows_no_arrows_without_the_mouse_or_off_the_axis_and_then_no_rotate_arrows_either) {
  DrawScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Parameters().overlay_always_on = true;
  scene.Point(10, 700);
  const auto count = [&](auto test) {
    const std::vector<Geometry>& drawn = scene.Draw();
    return std::count_if(drawn.begin(), drawn.end(), test);
  };
  const auto rotates = [](const Geometry& each) { return each.material.texture == 13; };
  EXPECT_EQ(count(IsArrow), 0);
  EXPECT_EQ(count(rotates), 0);
  EXPECT_FALSE(scene.cube.arrowsVisible);
  scene.Point(1010, 110);
  EXPECT_EQ(count(IsArrow), 12);
  EXPECT_EQ(count(rotates), 2);
  scene.Look(Vector3(-1, -1, 0));
  EXPECT_EQ(count(IsArrow), 0);
  EXPECT_EQ(count(rotates), 0);
  EXPECT_FALSE(scene.cube.arrowsVisible);
}

TEST(OrientorDraw, points_an_arrow_across_the_view) {
  DrawScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Point(1010, 110);
  for (const Geometry& each : scene.Draw()) {
    if (!IsArrow(each) || VertexOf(each, 2).y < 0.1) continue;
    // Above the front face: wide along view x up = -x x y = -z.
    ExpectVertices(
        each,
        {{0, HALF + 0.06, 0.025}, {0, HALF + 0.06, -0.025}, {0, HALF + 0.035, 0}, {0, HALF + 0.035, 0}});
  }
}

// ---- the overlay ----

std::vector<Geometry> OverlayOf(const std::vector<Geometry>& drawn) {
  std::vector<Geometry> overlay;
  std::copy_if(drawn.begin(), drawn.end(), std::back_inserter(overlay),
               [](const Geometry& each) { return each.material.drawMode == 6; });
  return overlay;
}

std::vector<int> TexturesOf(const std::vector<Geometry>& drawn) {
  std::vector<int> textures;
  for (const Geometry& each : drawn) textures.push_back(each.material.texture);
  return textures;
}

void ExpectSquare(const Geometry& drawn, double x, double y, double half) {
  ASSERT_EQ(drawn.vertices.size(), 12U);
  const double expected[4][2] = {
      {x - half, y - half}, {x - half, y + half}, {x + half, y + half}, {x + half, y - half}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(VertexOf(drawn, i).x, expected[i][0], 1e-3);  // floats of size 1000
    EXPECT_NEAR(VertexOf(drawn, i).y, expected[i][1], 1e-3);
    EXPECT_EQ(VertexOf(drawn, i).z, 0.0);
  }
  ExpectTexture(drawn, {{0, 1}, {0, 0}, {1, 0}, {1, 1}});
}

TEST(OrientorOverlay, draws_its_parts_in_their_order) {
  DrawScene scene;
  scene.Look(Vector3(-1, 0, 0));
  scene.Scene().lock_to_selection = true;
  scene.Point(1010, 110);
  const std::vector<Geometry> overlay = OverlayOf(scene.Draw());
  EXPECT_EQ(TexturesOf(overlay), std::vector<int>({7, 9, 11, 13, 13}));
  for (const Geometry& each : overlay) ExpectColour(each, {1, 1, 1, 1});
}

TEST(OrientorOverlay, shows_the_active_part_by_another_picture) {
  struct Row {
    int active;
    std::vector<int> textures;
  };
  const Row rows[] = {
      {0, {7, 9, 11, 14, 14}},  {1, {7, 9, 11, 15, 15}}, {2, {8, 9, 11, 13, 13}},
      {3, {7, 10, 11, 13, 13}}, {4, {7, 9, 12, 13, 13}}, {5, {7, 9, 11, 13, 13}},
  };
  for (const Row& row : rows) {
    DrawScene scene;
    scene.Look(Vector3(-1, 0, 0));
    scene.Scene().lock_to_selection = true;
    scene.Point(1010, 110);
    // An update would find the mouse elsewhere: draw the overlay alone.
    scene.cube.activeOverlayPart = row.active;
    scene.cube.arrowsVisible = true;
    scene.renderer.ClearCalls();
    scene.DrawOverlay();
    EXPECT_EQ(TexturesOf(scene.renderer.GetGeometry()), row.textures) << row.active;
  }
}

TEST(OrientorOverlay, is_as_faint_as_the_mouse_is_far_but_for_the_active_menu_button) {
  DrawScene scene;
  scene.cube.fade = 0.5F;
  scene.cube.opacity = 0.8F;
  scene.cube.activeOverlayPart = 4;
  scene.cube.arrowsVisible = true;
  scene.Scene().lock_to_selection = true;
  scene.DrawOverlay();
  const std::vector<Geometry>& overlay = scene.renderer.GetGeometry();
  ASSERT_EQ(overlay.size(), 5U);
  const float alphas[5] = {0.4F, 0.4F, 1.0F, 0.4F, 0.4F};
  for (std::size_t i = 0; i < 5; ++i) ExpectColour(overlay[i], {1, 1, 1, alphas[i]});
}

TEST(OrientorOverlay, needs_the_mouse_near_unless_it_is_always_on) {
  DrawScene scene;
  EXPECT_TRUE(OverlayOf(scene.Draw()).empty());
  scene.Parameters().overlay_always_on = true;
  EXPECT_EQ(TexturesOf(OverlayOf(scene.Draw())), std::vector<int>({7, 11}));
  scene.Parameters().overlay_always_on = false;
  scene.cube.fade = 0.0001F;
  scene.renderer.ClearCalls();
  scene.DrawOverlay();
  EXPECT_EQ(scene.renderer.GetGeometry().size(), 2U);
  scene.cube.fade = 0.00009F;
  scene.renderer.ClearCalls();
  scene.DrawOverlay();
  EXPECT_EQ(scene.renderer.GetGeometry().size(), 0U);
  scene.cube.mouseInRegion = true;
  scene.DrawOverlay();
  EXPECT_EQ(scene.renderer.GetGeometry().size(), 2U);
}

TEST(OrientorOverlay, is_not_drawn_during_a_drag_or_when_unwanted) {
  DrawScene scene;
  scene.PointAtCube();
  EXPECT_FALSE(OverlayOf(scene.Draw()).empty());
  scene.cube.dragging = true;
  EXPECT_TRUE(OverlayOf(scene.Draw()).empty());
  scene.cube.dragging = false;
  scene.Parameters().draw_overlay = false;
  EXPECT_TRUE(OverlayOf(scene.Draw()).empty());
  scene.Parameters().draw_overlay = true;
  scene.Parameters().draw_home_button = false;
  EXPECT_EQ(TexturesOf(OverlayOf(scene.Draw())), std::vector<int>({11}));
}

// Inward from the corner, in sizes of 120 pixels.
struct SquareRow {
  bool compass, locked;
  double homeX, lockX, menuY;
};

TEST(OrientorOverlay, places_its_squares_by_compass_lock_and_corner) {
  const SquareRow rows[] = {
      {false, false, 0.77, 0, 0.77},
      {false, true, 0.91, 0.77, 0.77},
      {true, false, 1.2, 0, 1.2},
      {true, true, 1.34, 1.2, 1.2},
  };
  for (const SquareRow& row : rows) {
    for (int location = 0; location < 4; ++location) {
      SCOPED_TRACE(::testing::Message() << row.compass << row.locked << " in " << location);
      DrawScene scene;
      scene.Parameters().overlay_always_on = true;
      scene.Parameters().draw_compass = row.compass;
      scene.Parameters().screen_location = static_cast<OrientorParameters::Location>(location);
      scene.Parameters().screen_offset_x = 5;
      scene.Parameters().screen_offset_y = -9;
      scene.Scene().lock_to_selection = row.locked;
      scene.SetViewport(CubeScene::WIDTH, CubeScene::HEIGHT);
      const auto x = [&](double inward) { return 5 + (location < 2 ? 1024 - 120 * inward : 120 * inward); };
      const auto y = [&](double inward) {
        return -9 + (location % 2 == 0 ? 768 - 120 * inward : 120 * inward);
      };
      const std::vector<Geometry> overlay = OverlayOf(scene.Draw());
      ASSERT_EQ(overlay.size(), row.locked ? 3U : 2U);
      ExpectSquare(overlay[0], x(row.homeX), y(0.125), 8.4);  // half of 0.14
      if (row.locked) ExpectSquare(overlay[1], x(row.lockX), y(0.125), 8.4);
      ExpectSquare(overlay.back(), x(0.125), y(row.menuY), 7.2);  // half of 0.12
    }
  }
}

TEST(OrientorOverlay, reads_the_second_coordinate_of_each_offset) {
  DrawScene scene;
  OrientorParameters& p = scene.Parameters();
  p.overlay_always_on = true;
  p.overlay_home_offset_y = 0.1F;
  p.overlay_home_offset_lock_y = 0.2F;
  p.overlay_home_offset_compass_y = 0.3F;
  p.overlay_home_offset_compass_lock_y = 0.4F;
  const double homes[2][2] = {{0.1, 0.2}, {0.3, 0.4}};
  for (const int compass : {0, 1}) {
    for (const int locked : {0, 1}) {
      p.draw_compass = compass == 1;
      scene.Scene().lock_to_selection = locked == 1;
      const std::vector<Geometry> overlay = OverlayOf(scene.Draw());
      EXPECT_NEAR((VertexOf(overlay[0], 0).y + VertexOf(overlay[0], 1).y) / 2.0,
                  768 - 120 * homes[compass][locked], 1e-3);
    }
  }
}

TEST(OrientorOverlay, lays_the_rotate_arrows_as_two_triangles_in_the_corner) {
  for (int location = 0; location < 4; ++location) {
    SCOPED_TRACE(location);
    DrawScene scene;
    scene.Parameters().screen_location = static_cast<OrientorParameters::Location>(location);
    scene.SetViewport(CubeScene::WIDTH, CubeScene::HEIGHT);
    scene.cube.fade = 1.0F;
    scene.cube.arrowsVisible = true;
    scene.renderer.ClearCalls();
    scene.DrawOverlay();
    const std::vector<Geometry>& overlay = scene.renderer.GetGeometry();
    ASSERT_EQ(overlay.size(), 4U);
    const double ox = location < 2 ? 1024 : 0;
    const double oy = location % 2 == 0 ? 768 : 0;
    const double kx = location < 2 ? -60 : 60;  // half of 120, inward
    const double ky = location % 2 == 0 ? -60 : 60;
    ExpectVertices(overlay[2], {{ox, oy, 0}, {ox + kx / 2, oy + ky / 2, 0}, {ox + kx, oy, 0}, {ox, oy, 0}});
    ExpectTexture(overlay[2], {{1, 0}, {0.5, 0.5}, {0, 0}, {1, 0}});
    ExpectVertices(overlay[3], {{ox, oy, 0}, {ox, oy + ky, 0}, {ox + kx / 2, oy + ky / 2, 0}, {ox, oy, 0}});
    ExpectTexture(overlay[3], {{1, 0}, {1, 1}, {0.5, 0.5}, {1, 0}});
  }
}

struct LabelRow {
  int location;
  bool compass;
  double x, y;  // of the middle of the label
};

TEST(OrientorOverlay, places_the_label_below_or_above_the_cube) {
  const LabelRow rows[] = {
      // 0.45 and 0.86 of 120 inward, then half of the label; at the bottom 0.925 of the height.
      {0, false, 1024 - 54, 768 - 103.2 - 16},
      {1, false, 1024 - 54, 95.46 + 16},
      {2, false, 54, 768 - 103.2 - 16},
      {3, false, 54, 95.46 + 16},
      // 0.675 and 1.4.
      {0, true, 1024 - 81, 768 - 168 - 16},
      {3, true, 81, 155.4 + 16},
  };
  for (const LabelRow& row : rows) {
    SCOPED_TRACE(row.location);
    DrawScene scene;
    scene.Parameters().draw_ucs_menu = true;
    scene.Parameters().draw_compass = row.compass;
    scene.Parameters().screen_location = static_cast<OrientorParameters::Location>(row.location);
    scene.SetViewport(CubeScene::WIDTH, CubeScene::HEIGHT);
    ASSERT_NE(scene.cube.ucsLabel.Get(), nullptr);
    scene.cube.ucsLabel.Get()->SetSize(90.0, 32.0);
    scene.Point(512, 384);
    scene.Draw();
    EXPECT_NEAR(scene.cube.ucsLabel.Get()->GetPosition().x, row.x, 1e-4);
    EXPECT_NEAR(scene.cube.ucsLabel.Get()->GetPosition().y, row.y, 1e-4);
    EXPECT_EQ(scene.cube.ucsLabel.Get()->GetOpacity(), 0.5);
    EXPECT_EQ(scene.cube.ucsLabel.Get()->GetWidth(), 90.0);
    EXPECT_EQ(scene.renderer.CountCalls("RenderDynamic"), 1);
    const std::vector<std::string>& calls = scene.renderer.GetCalls();
    EXPECT_EQ(calls[calls.size() - 2],
              "RenderDynamic(" + std::to_string(scene.cube.ucsLabel.Get()->GetID()) + ")");
  }
}

TEST(OrientorOverlay, shows_the_other_label_under_the_mouse_and_none_when_unwanted) {
  DrawScene scene;
  scene.Parameters().draw_ucs_menu = true;
  scene.cube.SetSize(OrientorParameters::SIZE_AUTOMATIC);
  scene.cube.activeOverlayPart = 5;
  scene.renderer.ClearCalls();
  scene.DrawOverlay();
  EXPECT_EQ(scene.renderer.GetCalls()[1],
            "RenderDynamic(" + std::to_string(scene.cube.highlightedUCSLabel.Get()->GetID()) + ")");
  scene.Parameters().draw_ucs_menu = false;
  scene.renderer.ClearCalls();
  scene.DrawOverlay();
  EXPECT_EQ(scene.renderer.CountCalls("RenderDynamic"), 0);
}

// ---- what a draw costs ----

TEST(OrientorDraw, allocates_nothing) {
  CountingScene scene;
  OpenOrientor& cube = scene.cube;
  cube.GetParameters().draw_compass = true;
  cube.GetParameters().draw_ucs_menu = true;
  cube.SetViewportSize(1024, 768);
  cube.SetViewportMousePosition(964, 60);
  cube.Draw();
  const AllocationCounter counter;
  for (int x = 900; x < 1024; ++x) {
    cube.SetViewportMousePosition(x, 60);
    cube.Draw();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_GT(scene.renderer.drawn, 124 * 60);
  EXPECT_EQ(scene.renderer.icons, 125);
}

}  // namespace
