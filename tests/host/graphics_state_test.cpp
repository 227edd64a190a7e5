#include <gtest/gtest.h>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "graphics_canvas.h"
#include "korvane/icon2d.h"
#include "korvane/icon3d.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/scene.h"

namespace {

using Korvane::Renderer;
using Korvane::TextureID;
using zovhost::OffscreenTarget;

struct Integers {
  const char* name;
  GLenum value;
  std::size_t count;
};

// What a host may have set and the kit's drawing may touch.
constexpr Integers integerStates[] = {
    {"draw framebuffer", GL_DRAW_FRAMEBUFFER_BINDING, 1},
    {"read framebuffer", GL_READ_FRAMEBUFFER_BINDING, 1},
    {"renderbuffer", GL_RENDERBUFFER_BINDING, 1},
    {"program", GL_CURRENT_PROGRAM, 1},
    {"vertex array", GL_VERTEX_ARRAY_BINDING, 1},
    {"array buffer", GL_ARRAY_BUFFER_BINDING, 1},
    {"element buffer", GL_ELEMENT_ARRAY_BUFFER_BINDING, 1},
    {"unpack buffer", GL_PIXEL_UNPACK_BUFFER_BINDING, 1},
    {"pack buffer", GL_PIXEL_PACK_BUFFER_BINDING, 1},
    {"active texture", GL_ACTIVE_TEXTURE, 1},
    {"blend source colour", GL_BLEND_SRC_RGB, 1},
    {"blend destination colour", GL_BLEND_DST_RGB, 1},
    {"blend source alpha", GL_BLEND_SRC_ALPHA, 1},
    {"blend destination alpha", GL_BLEND_DST_ALPHA, 1},
    {"blend equation colour", GL_BLEND_EQUATION_RGB, 1},
    {"blend equation alpha", GL_BLEND_EQUATION_ALPHA, 1},
    {"depth function", GL_DEPTH_FUNC, 1},
    {"depth mask", GL_DEPTH_WRITEMASK, 1},
    {"colour mask", GL_COLOR_WRITEMASK, 4},
    {"cull face", GL_CULL_FACE_MODE, 1},
    {"front face", GL_FRONT_FACE, 1},
    {"viewport", GL_VIEWPORT, 4},
    {"scissor", GL_SCISSOR_BOX, 4},
    {"polygon mode", GL_POLYGON_MODE, 2},
    {"stencil function", GL_STENCIL_FUNC, 1},
    {"stencil reference", GL_STENCIL_REF, 1},
    {"unpack alignment", GL_UNPACK_ALIGNMENT, 1},
    {"unpack row length", GL_UNPACK_ROW_LENGTH, 1},
    {"unpack skip rows", GL_UNPACK_SKIP_ROWS, 1},
    {"unpack skip pixels", GL_UNPACK_SKIP_PIXELS, 1},
    {"pack alignment", GL_PACK_ALIGNMENT, 1},
    {"pack row length", GL_PACK_ROW_LENGTH, 1},
    {"pack skip rows", GL_PACK_SKIP_ROWS, 1},
    {"pack skip pixels", GL_PACK_SKIP_PIXELS, 1},
};
constexpr GLenum floatStates[] = {GL_DEPTH_RANGE, GL_COLOR_CLEAR_VALUE,     GL_DEPTH_CLEAR_VALUE,
                                  GL_LINE_WIDTH,  GL_POLYGON_OFFSET_FACTOR, GL_POLYGON_OFFSET_UNITS};
constexpr GLenum capabilities[] = {GL_BLEND,
                                   GL_CULL_FACE,
                                   GL_DEPTH_TEST,
                                   GL_SCISSOR_TEST,
                                   GL_STENCIL_TEST,
                                   GL_POLYGON_OFFSET_FILL,
                                   GL_SAMPLE_COVERAGE,
                                   GL_SAMPLE_ALPHA_TO_COVERAGE,
                                   GL_RASTERIZER_DISCARD,
                                   GL_FRAMEBUFFER_SRGB,
                                   GL_COLOR_LOGIC_OP,
                                   GL_PRIMITIVE_RESTART,
                                   GL_DEPTH_CLAMP,
                                   GL_POLYGON_SMOOTH,
                                   GL_SAMPLE_MASK,
                                   GL_MULTISAMPLE};

constexpr GLenum bufferTargets[] = {GL_ARRAY_BUFFER, GL_ELEMENT_ARRAY_BUFFER, GL_PIXEL_UNPACK_BUFFER,
                                    GL_PIXEL_PACK_BUFFER};

using Snapshot = std::map<std::string, std::vector<double>>;

Snapshot TakeSnapshot() {
  Snapshot snapshot;
  for (const Integers& state : integerStates) {
    GLint values[4] = {};
    glGetIntegerv(state.value, values);
    snapshot[state.name].assign(values, values + state.count);
  }
  for (const GLenum state : floatStates) {
    GLfloat values[4] = {};
    glGetFloatv(state, values);
    snapshot["float state " + std::to_string(state)].assign(values, values + 4);
  }
  for (const GLenum state : capabilities) {
    snapshot["capability " + std::to_string(state)] = {static_cast<double>(glIsEnabled(state))};
  }
  GLint active = 0;
  glGetIntegerv(GL_ACTIVE_TEXTURE, &active);
  for (const GLenum unit : {0U, 3U}) {
    GLint values[2] = {};
    glActiveTexture(GL_TEXTURE0 + unit);
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &values[0]);
    glGetIntegerv(GL_SAMPLER_BINDING, &values[1]);
    snapshot["texture unit " + std::to_string(unit)].assign(values, values + 2);
  }
  glActiveTexture(static_cast<GLenum>(active));
  return snapshot;
}

GLuint MakeProgram() {
  const char* vertex = "#version 330 core\nvoid main() { gl_Position = vec4(0.0); }";
  const char* fragment = "#version 330 core\nout vec4 c; void main() { c = vec4(1.0); }";
  const GLuint program = glCreateProgram();
  for (const auto& [kind, source] :
       {std::pair(GL_VERTEX_SHADER, vertex), std::pair(GL_FRAGMENT_SHADER, fragment)}) {
    const GLuint shader = glCreateShader(static_cast<GLenum>(kind));
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    glAttachShader(program, shader);
  }
  glLinkProgram(program);
  return program;
}

class StateTest : public zovtest::RendererTest {
 protected:
  // Everything away from its default, as a host might have it, and much of it hostile to drawing.
  void SetOddState() {
    GLuint name = 0;
    glUseProgram(MakeProgram());
    glGenVertexArrays(1, &name);
    glBindVertexArray(name);
    for (const GLenum target : bufferTargets) {
      glGenBuffers(1, &name);
      glBindBuffer(target, name);
    }
    glGenRenderbuffers(1, &name);
    glBindRenderbuffer(GL_RENDERBUFFER, name);
    for (const GLuint unit : {0U, 3U}) {
      glActiveTexture(GL_TEXTURE0 + unit);
      glGenTextures(1, &name);
      glBindTexture(GL_TEXTURE_2D, name);
      glGenSamplers(1, &name);
      glBindSampler(unit, name);
    }
    for (const GLenum capability : capabilities) glEnable(capability);
    glDisable(GL_MULTISAMPLE);
    glBlendFuncSeparate(GL_DST_COLOR, GL_ZERO, GL_ONE_MINUS_DST_ALPHA, GL_SRC_ALPHA);
    glBlendEquationSeparate(GL_FUNC_REVERSE_SUBTRACT, GL_MIN);
    glDepthFunc(GL_NEVER);
    glDepthMask(GL_FALSE);
    glDepthRange(0.75, 0.25);
    glColorMask(GL_TRUE, GL_FALSE, GL_FALSE, GL_FALSE);
    glCullFace(GL_FRONT_AND_BACK);
    glFrontFace(GL_CW);
    glViewport(5, 6, 7, 8);
    glScissor(1, 2, 3, 4);
    glPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
    glPolygonOffset(3.0F, 4.0F);
    glStencilFunc(GL_NEVER, 3, 0xFF);
    glClearColor(0.1F, 0.2F, 0.3F, 0.4F);
    glClearDepth(0.25);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 17);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 2);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    glPixelStorei(GL_PACK_ROW_LENGTH, 19);
    glPixelStorei(GL_PACK_SKIP_ROWS, 1);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 5);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
  }

  template <typename Action>
  void ExpectUnchangedBy(const char* what, const Action& action) {
    SCOPED_TRACE(what);
    const Snapshot before = TakeSnapshot();
    action();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    const Snapshot after = TakeSnapshot();
    for (const auto& [name, values] : before) EXPECT_EQ(after.at(name), values) << name;
  }
};

TEST_F(StateTest, everything_the_kit_does_leaves_the_hosts_state_alone) {
  const auto building = zovhost::MakeDemoBuilding();
  pack->SetPicture(
      5, "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'><rect width='8' height='8'/></svg>");
  zovhost::GLSceneView view;
  view.GetOptions().selectedPart = 0;
  renderer.SetSceneDraw([&view](const Korvane::CameraParameters& camera, int width, int height) {
    EXPECT_TRUE(view.Draw(camera, width, height));
  });
  SetOddState();
  ExpectUnchangedBy("Create", [&] {
    renderer.Destroy();
    EXPECT_TRUE(renderer.Create());
  });
  ExpectUnchangedBy("SetScene", [&] { EXPECT_TRUE(view.SetScene(building.get())); });
  ExpectUnchangedBy("scene view", [&] { EXPECT_TRUE(view.Draw(FrontCamera(), 64, 48)); });
  ExpectUnchangedBy("texture", [&] {
    renderer.IncrementTextureUsage(static_cast<TextureID>(5));
    renderer.ApplyTextureUsage();
  });
  ExpectUnchangedBy("scale", [&] { renderer.SetDisplayScale(2.0); });
  Korvane::DynamicIcon2D* label = nullptr;
  ExpectUnchangedBy("label", [&] { label = renderer.CreateTooltip(L"text"); });
  ExpectUnchangedBy("screenshot",
                    [&] { EXPECT_NE(renderer.CreateSceneScreenshot(20, 20, FrontCamera()), nullptr); });
  for (const auto mode : {Renderer::RENDER_OVERLAY, Renderer::RENDER_PERSPECTIVE, Renderer::RENDER_SCENE}) {
    ExpectUnchangedBy("pass", [&] {
      ASSERT_TRUE(renderer.BeginRender(WholeViewport(), FrontCamera(), mode));
      for (int drawMode = 0; drawMode < 8; ++drawMode) {
        auto material = Coloured(1, 1, 1);
        material.drawMode = drawMode;
        material.texture = static_cast<TextureID>(drawMode);
        const float coords[8] = {0, 0, 0, 1, 1, 1, 1, 0};
        EXPECT_TRUE(DrawQuad(Quad(-1, -1, 20, 20), material, coords));
      }
      Korvane::ResourceIcon3D ball(Korvane::MODEL_PIVOT_BALL);
      ball.SetSize(1.0);
      renderer.Render(&ball);
      renderer.Render(label);
      EXPECT_TRUE(renderer.EndRender());
    });
  }
  ExpectUnchangedBy("destroying", [&] {
    EXPECT_TRUE(renderer.DestroyIcon(label));
    view.Destroy();
    EXPECT_TRUE(renderer.Destroy());
  });
}

TEST_F(StateTest, the_hosts_state_does_not_disturb_the_picture) {
  const auto draw = [this] {
    EXPECT_TRUE(renderer.BeginRender(WholeViewport(), FrontCamera(), Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(DrawQuad(Quad(10, 10, 30, 30), Coloured(0.5F, 1, 0)));
    EXPECT_TRUE(renderer.EndRender());
    return canvas.Read();
  };
  const zovhost::Image expected = draw();
  canvas.Clear();
  SetOddState();
  EXPECT_EQ(draw().rgba, expected.rgba);
}

TEST_F(StateTest, destroying_while_a_pass_is_open_ends_the_pass) {
  const Snapshot before = TakeSnapshot();
  ASSERT_TRUE(renderer.BeginRender(WholeViewport(), FrontCamera(), Renderer::RENDER_OVERLAY));
  renderer.Destroy();
  EXPECT_FALSE(renderer.EndRender());
  EXPECT_EQ(TakeSnapshot(), before);
}

TEST(OffscreenTargetTest, reads_rows_from_the_top) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  OffscreenTarget target;
  ASSERT_TRUE(target.Create(3, 5));
  EXPECT_EQ(target.GetSamples(), 4);
  ASSERT_TRUE(target.Bind());
  glEnable(GL_SCISSOR_TEST);
  for (int y = 0; y < 5; ++y) {
    glScissor(0, y, 3, 1);
    glClearColor(static_cast<float>(y) * 50.0F / 255.0F, 0.0F, 0.0F, 0.0F);
    glClear(GL_COLOR_BUFFER_BIT);
  }
  zovhost::Image image;
  ASSERT_TRUE(target.Read(image));
  ASSERT_EQ(image.rgba.size(), 60U);
  EXPECT_EQ(image.rgba[0], 200);  // the last row drawn is the first in memory
  EXPECT_EQ(image.rgba[48], 0);
  EXPECT_EQ(image.rgba[3], 255);  // opaque, whatever was drawn
}

TEST(OffscreenTargetTest, refuses_sizes_that_cannot_be) {
  const zovtest::OffscreenContext context;
  ASSERT_TRUE(context.IsCurrent());
  OffscreenTarget target;
  zovhost::Image image{1, 1, {1, 2, 3, 4}};
  const std::pair<int, int> sizes[] = {{0, 5}, {5, 0}, {-1, -1}, {1 << 30, 1 << 30}, {1 << 20, 1}};
  for (const auto& [width, height] : sizes) {
    EXPECT_FALSE(target.Create(width, height));
    EXPECT_FALSE(target.Bind());
    EXPECT_FALSE(target.Resolve());
    EXPECT_FALSE(target.Read(image));
    EXPECT_EQ(target.GetWidth(), 0);
  }
  EXPECT_EQ(image.rgba, (std::vector<std::uint8_t>{1, 2, 3, 4}));
  EXPECT_TRUE(target.Create(7, 9));
  EXPECT_TRUE(target.Create(9, 7));  // made anew
  EXPECT_EQ(target.GetWidth(), 9);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(ContextTest, the_renderer_refuses_to_start_without_a_context) {
  zovhost::GLRenderer renderer(std::make_shared<zovhost::ResourcePack>());
  EXPECT_FALSE(renderer.Create());
  renderer.SetViewport(0, 0, 10, 10);
  EXPECT_FALSE(renderer.BeginRender({{5, 5}, {5, 5}}, {}, Renderer::RENDER_OVERLAY));
  EXPECT_FALSE(renderer.Destroy());
  zovhost::GLSceneView view;
  EXPECT_FALSE(view.SetScene(nullptr));
}

}  // namespace
