#include "zovhost/gl_state_guard.h"

#include <epoxy/gl.h>

#include <cstddef>

namespace zovhost {

namespace {

struct Capability {
  GLenum name;
  bool wanted;
  bool desktopOnly;
};

constexpr std::array<Capability, GLStateGuard::capabilityCount> capabilityTable = {{
    {GL_BLEND, false, false},
    {GL_CULL_FACE, false, false},
    {GL_DEPTH_TEST, false, false},
    {GL_SCISSOR_TEST, false, false},
    {GL_STENCIL_TEST, false, false},
    {GL_POLYGON_OFFSET_FILL, false, false},
    {GL_SAMPLE_ALPHA_TO_COVERAGE, false, false},
    {GL_SAMPLE_COVERAGE, false, false},
    {GL_RASTERIZER_DISCARD, false, false},
    {GL_FRAMEBUFFER_SRGB, false, true},  // the shaders encode by themselves
    {GL_COLOR_LOGIC_OP, false, true},
    {GL_PRIMITIVE_RESTART, false, true},
    {GL_DEPTH_CLAMP, false, true},
    {GL_POLYGON_SMOOTH, false, true},
    {GL_SAMPLE_MASK, false, true},
    {GL_MULTISAMPLE, true, true},
}};

struct PixelStore {
  GLenum name;
  GLint wanted;
};

constexpr std::array<PixelStore, GLStateGuard::pixelStoreCount> pixelStoreTable = {{
    {GL_UNPACK_ALIGNMENT, 1},
    {GL_UNPACK_ROW_LENGTH, 0},
    {GL_UNPACK_SKIP_ROWS, 0},
    {GL_UNPACK_SKIP_PIXELS, 0},
    {GL_UNPACK_IMAGE_HEIGHT, 0},
    {GL_UNPACK_SKIP_IMAGES, 0},
    {GL_PACK_ALIGNMENT, 1},
    {GL_PACK_ROW_LENGTH, 0},
    {GL_PACK_SKIP_ROWS, 0},
    {GL_PACK_SKIP_PIXELS, 0},
}};

void SetCapability(GLenum name, bool enabled) { enabled ? glEnable(name) : glDisable(name); }

GLuint Name(int binding) { return static_cast<GLuint>(binding); }
GLenum Enum(int value) { return static_cast<GLenum>(value); }

}  // namespace

GLStateGuard::GLStateGuard() : desktop(epoxy_is_desktop_gl()) {
  SaveTables();
  SaveBindings();
  SaveDrawing();
  SetDefaults();
}

void GLStateGuard::SaveTables() {
  for (std::size_t i = 0; i < capabilityTable.size(); ++i) {
    if (desktop || !capabilityTable[i].desktopOnly) capabilities[i] = glIsEnabled(capabilityTable[i].name);
  }
  for (std::size_t i = 0; i < pixelStoreTable.size(); ++i) {
    glGetIntegerv(pixelStoreTable[i].name, &pixelStore[i]);
  }
}

void GLStateGuard::SaveBindings() {
  glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &drawFramebuffer);
  glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &readFramebuffer);
  glGetIntegerv(GL_RENDERBUFFER_BINDING, &renderbuffer);
  glGetIntegerv(GL_CURRENT_PROGRAM, &program);
  glGetIntegerv(GL_VERTEX_ARRAY_BINDING, &vertexArray);
  glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &arrayBuffer);
  glGetIntegerv(GL_PIXEL_UNPACK_BUFFER_BINDING, &pixelUnpackBuffer);
  glGetIntegerv(GL_PIXEL_PACK_BUFFER_BINDING, &pixelPackBuffer);
  glGetIntegerv(GL_ACTIVE_TEXTURE, &activeTexture);
  glActiveTexture(GL_TEXTURE0);
  glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
  glGetIntegerv(GL_SAMPLER_BINDING, &sampler);
}

void GLStateGuard::SaveDrawing() {
  glGetIntegerv(GL_BLEND_SRC_RGB, &blendFactors[0]);
  glGetIntegerv(GL_BLEND_DST_RGB, &blendFactors[1]);
  glGetIntegerv(GL_BLEND_SRC_ALPHA, &blendFactors[2]);
  glGetIntegerv(GL_BLEND_DST_ALPHA, &blendFactors[3]);
  glGetIntegerv(GL_BLEND_EQUATION_RGB, &blendEquations[0]);
  glGetIntegerv(GL_BLEND_EQUATION_ALPHA, &blendEquations[1]);
  glGetIntegerv(GL_DEPTH_FUNC, &depthFunction);
  glGetIntegerv(GL_CULL_FACE_MODE, &cullFace);
  glGetIntegerv(GL_FRONT_FACE, &frontFace);
  glGetIntegerv(GL_VIEWPORT, viewport);
  glGetIntegerv(GL_SCISSOR_BOX, scissorBox);
  glGetFloatv(GL_DEPTH_RANGE, depthRange);
  glGetFloatv(GL_COLOR_CLEAR_VALUE, clearColour);
  glGetFloatv(GL_DEPTH_CLEAR_VALUE, &clearDepth);
  glGetFloatv(GL_LINE_WIDTH, &lineWidth);
  glGetFloatv(GL_POLYGON_OFFSET_FACTOR, &polygonOffset[0]);
  glGetFloatv(GL_POLYGON_OFFSET_UNITS, &polygonOffset[1]);
  glGetBooleanv(GL_DEPTH_WRITEMASK, &depthMask);
  glGetBooleanv(GL_COLOR_WRITEMASK, colourMask);
  if (desktop) glGetIntegerv(GL_POLYGON_MODE, polygonMode);
}

void GLStateGuard::SetDefaults() {
  for (const Capability& capability : capabilityTable) {
    if (desktop || !capability.desktopOnly) SetCapability(capability.name, capability.wanted);
  }
  for (const PixelStore& store : pixelStoreTable) glPixelStorei(store.name, store.wanted);
  glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
  glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
  glBindSampler(0, 0);
  glBlendEquation(GL_FUNC_ADD);
  glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
  glDepthFunc(GL_LEQUAL);
  glDepthMask(GL_TRUE);
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  glCullFace(GL_BACK);
  glLineWidth(1.0F);
  if (!desktop) {
    glDepthRangef(0.0F, 1.0F);
    glClearDepthf(1.0F);
    return;
  }
  glDepthRange(0.0, 1.0);
  glClearDepth(1.0);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

GLStateGuard::~GLStateGuard() {
  RestoreTables();
  RestoreBindings();
  RestoreDrawing();
}

void GLStateGuard::RestoreTables() {
  for (std::size_t i = 0; i < capabilityTable.size(); ++i) {
    const Capability& capability = capabilityTable[i];
    if (desktop || !capability.desktopOnly) SetCapability(capability.name, capabilities[i] != 0);
  }
  for (std::size_t i = 0; i < pixelStoreTable.size(); ++i)
    glPixelStorei(pixelStoreTable[i].name, pixelStore[i]);
}

void GLStateGuard::RestoreBindings() {
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, Name(drawFramebuffer));
  glBindFramebuffer(GL_READ_FRAMEBUFFER, Name(readFramebuffer));
  glBindRenderbuffer(GL_RENDERBUFFER, Name(renderbuffer));
  glUseProgram(Name(program));
  glBindVertexArray(Name(vertexArray));
  glBindBuffer(GL_ARRAY_BUFFER, Name(arrayBuffer));
  glBindBuffer(GL_PIXEL_UNPACK_BUFFER, Name(pixelUnpackBuffer));
  glBindBuffer(GL_PIXEL_PACK_BUFFER, Name(pixelPackBuffer));
  glActiveTexture(GL_TEXTURE0);
  glBindTexture(GL_TEXTURE_2D, Name(texture));
  glBindSampler(0, Name(sampler));
  glActiveTexture(Enum(activeTexture));
}

void GLStateGuard::RestoreDrawing() {
  glBlendFuncSeparate(Enum(blendFactors[0]), Enum(blendFactors[1]), Enum(blendFactors[2]),
                      Enum(blendFactors[3]));
  glBlendEquationSeparate(Enum(blendEquations[0]), Enum(blendEquations[1]));
  glDepthFunc(Enum(depthFunction));
  glCullFace(Enum(cullFace));
  glFrontFace(Enum(frontFace));
  glViewport(viewport[0], viewport[1], viewport[2], viewport[3]);
  glScissor(scissorBox[0], scissorBox[1], scissorBox[2], scissorBox[3]);
  glClearColor(clearColour[0], clearColour[1], clearColour[2], clearColour[3]);
  glLineWidth(lineWidth);
  glPolygonOffset(polygonOffset[0], polygonOffset[1]);
  glDepthMask(depthMask);
  glColorMask(colourMask[0], colourMask[1], colourMask[2], colourMask[3]);
  if (!desktop) {
    glDepthRangef(depthRange[0], depthRange[1]);
    glClearDepthf(clearDepth);
    return;
  }
  glDepthRange(static_cast<double>(depthRange[0]), static_cast<double>(depthRange[1]));
  glClearDepth(static_cast<double>(clearDepth));
  glPolygonMode(GL_FRONT_AND_BACK, Enum(polygonMode[0]));
}

}  // namespace zovhost
