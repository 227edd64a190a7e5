#include "zovhost/gl_scene_view.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "gl/buffer_offset.h"
#include "gl/gl_program.h"
#include "scene_view/face_highlight.h"
#include "scene_view/ground_shadow.h"
#include "scene_view/scene_buffers.h"
#include "scene_view/scene_shaders.h"
#include "scene_view/view_volume.h"
#include "zovhost/accent.h"
#include "zovhost/gl_state_guard.h"

namespace zovhost {

using Korvane::CameraParameters;
using Korvane::Vector3;

namespace {

constexpr std::array<float, 4> noHighlight = {0.0F, 0.0F, 0.0F, 0.0F};
constexpr std::array<float, 4> Accent(float opacity) {
  return {static_cast<float>(ACCENT_COLOUR[0]), static_cast<float>(ACCENT_COLOUR[1]),
          static_cast<float>(ACCENT_COLOUR[2]), opacity};
}

constexpr std::array<float, 4> highlightColour = Accent(0.55F);
constexpr std::array<float, 4> selectedEdgeColour = Accent(1.0F);
constexpr double leastPixels = 2.0;        // across, of what a view that moves still shows
constexpr double edgeWidth = 1.1;          // points
constexpr double selectedEdgeWidth = 2.2;  // points

struct SurfaceProgram {
  GLuint name = 0;
  GLint matrix = -1, modelView = -1, normalMatrix = -1, hasPicture = -1, materialColour = -1, highlight = -1;
  GLint upDirection = -1, keyDirection = -1, fillDirection = -1, blend = -1;

  bool Create() {
    name = BuildProgram(surfaceVertexShader, surfaceFragmentShader);
    const auto find = [this](const char* uniform) { return glGetUniformLocation(name, uniform); };
    if (name == 0) return false;
    matrix = find("matrix"), modelView = find("modelView"), normalMatrix = find("normalMatrix");
    hasPicture = find("hasPicture"), materialColour = find("materialColour"), highlight = find("highlight");
    upDirection = find("upDirection"), keyDirection = find("keyDirection");
    fillDirection = find("fillDirection"), blend = find("blend");
    return true;
  }
};

struct EdgeProgram {
  GLuint name = 0;
  GLint matrix = -1, viewport = -1, lineWidth = -1, scale = -1, colour = -1;

  bool Create() {
    name = BuildProgram(edgeVertexShader, edgeFragmentShader);
    const auto find = [this](const char* uniform) { return glGetUniformLocation(name, uniform); };
    if (name == 0) return false;
    matrix = find("matrix"), viewport = find("viewport"), lineWidth = find("lineWidth");
    scale = find("scale"), colour = find("colour");
    return true;
  }
};

void SetDirection(GLint location, const Matrix4& view, const Vector3& direction) {
  const Vector3 unit = direction.Normalized();
  const auto row = [&](std::size_t r) {
    return static_cast<float>(view[r] * unit.x + view[4 + r] * unit.y + view[8 + r] * unit.z);
  };
  glUniform3f(location, row(0), row(1), row(2));
}

// Normals turn with the matrix of cofactors, which is the transposed inverse but for a factor and exists
// for flattening transforms too. Scaled, so that it fits into a float.
std::array<float, 9> NormalMatrix(const Matrix4& m) {
  const Vector3 x(m[0], m[1], m[2]);
  const Vector3 y(m[4], m[5], m[6]);
  const Vector3 z(m[8], m[9], m[10]);
  const Vector3 columns[3] = {y.Cross(z), z.Cross(x), x.Cross(y)};
  double largest = 0.0;
  for (const Vector3& c : columns) largest = std::max({largest, std::abs(c.x), std::abs(c.y), std::abs(c.z)});
  const double factor = largest > 0.0 ? 1.0 / largest : 0.0;
  std::array<float, 9> result{};
  for (std::size_t i = 0; i < 3; ++i) (columns[i] * factor).ToArray(result.data() + 3 * i);
  return result;
}

}  // namespace

class GLSceneView::Impl {
 public:
  bool SetScene(const Scene* scene, const Progress& progress);
  void Destroy();
  bool Draw(const CameraParameters& camera, int x, int y, int width, int height, double scale);

  Options options;
  SceneSphere sphere;
  FaceHighlight faceHighlight;
  SceneBuffers buffers;

 private:
  // What one frame is drawn with.
  struct Frame {
    Projection projection;
    Matrix4 viewProjection;
    double blend;
    int width;
    int height;
    double scale;
    bool reduced;       // coarse, for a view that moves
    ViewVolume volume;  // what is seen
  };

  bool CreatePrograms();
  void DrawBackground() const;
  void BeginSurfaces(const Frame& frame) const;
  void DrawSurface(const Frame& frame, const SceneBuffers::Drawn& drawn) const;
  void DrawTriangles(const Frame& frame, const SceneBuffers::Drawn& drawn) const;
  bool IsSelected(const SceneBuffers::Drawn& drawn) const;
  void DrawOpaque(const Frame& frame) const;
  void DrawTransparent(const Frame& frame);
  void DrawEdges(const Frame& frame) const;
  void DrawEdgesOf(const Frame& frame, const SceneBuffers::Drawn& drawn) const;

  bool programsReady = false;
  SurfaceProgram surface;
  EdgeProgram edge;
  GLuint background = 0;
  GLint backgroundTop = -1;
  GLint backgroundBottom = -1;
  GLuint emptyArray = 0;
  GroundShadow shadow;
  Vector3 up = {0.0, 1.0, 0.0};
  std::vector<std::pair<double, std::size_t>> sorted;  // transparent parts by depth, kept for its memory
};

// ---- life ----

bool GLSceneView::Impl::CreatePrograms() {
  if (programsReady) return true;
  background = BuildProgram(backgroundVertexShader, backgroundFragmentShader);
  if (background == 0 || !surface.Create() || !edge.Create() || !faceHighlight.Create()) return false;
  backgroundTop = glGetUniformLocation(background, "top");
  backgroundBottom = glGetUniformLocation(background, "bottom");
  glGenVertexArrays(1, &emptyArray);
  programsReady = true;
  return true;
}

// The new scene is made beside the present one, which shows until it is whole.
bool GLSceneView::Impl::SetScene(const Scene* scene, const Progress& progress) {
  if (!IsContextFit()) return false;
  SceneBuffers newBuffers;
  GroundShadow newShadow;
  {
    const GLStateGuard guard;
    if (!CreatePrograms()) return false;
  }
  if (scene != nullptr && !newBuffers.Upload(*scene, progress)) {
    newBuffers.Destroy();
    return false;
  }
  const GLStateGuard guard;
  if (scene != nullptr && !newShadow.Create(*scene, newBuffers)) newShadow.Destroy();
  buffers.Destroy();
  shadow.Destroy();
  buffers = std::move(newBuffers);
  shadow = newShadow;
  faceHighlight.SetFace(nullptr);
  sphere = {};
  if (scene == nullptr) return true;
  sphere = {scene->GetCentre(), scene->GetRadius()};
  up = scene->GetUpDirection();
  return true;
}

void GLSceneView::Impl::Destroy() {
  if (!programsReady) return;
  buffers.Destroy();
  shadow.Destroy();
  faceHighlight.Destroy();
  glDeleteProgram(surface.name);
  glDeleteProgram(edge.name);
  glDeleteProgram(background);
  glDeleteVertexArrays(1, &emptyArray);
  surface = {};
  edge = {};
  background = emptyArray = 0;
  programsReady = false;
}

// ---- a frame ----

bool GLSceneView::Impl::Draw(const CameraParameters& camera, int x, int y, int width, int height,
                             double scale) {
  if (!programsReady || width < 1 || height < 1) return false;
  const GLStateGuard guard;
  glViewport(x, y, width, height);
  glEnable(GL_SCISSOR_TEST);
  glScissor(x, y, width, height);
  glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  DrawBackground();

  const Projection projection(camera, sphere);
  const Frame frame = {projection,
                       projection.GetViewProjection(),
                       GetProjectionBlend(camera),
                       width,
                       height,
                       scale > 0.0 && scale < 16.0 ? scale : 1.0,
                       options.moving && buffers.IsLarge(),
                       ViewVolume(projection, height)};
  glEnable(GL_DEPTH_TEST);
  glFrontFace(GL_CCW);
  DrawOpaque(frame);
  if (options.drawEdges && !frame.reduced) DrawEdges(frame);
  glEnable(GL_BLEND);
  glDepthMask(GL_FALSE);
  if (options.drawGroundShadow && !frame.reduced) shadow.Draw(projection, options.ground.shadow);
  DrawTransparent(frame);
  glDisable(GL_CULL_FACE);
  faceHighlight.Draw(projection, buffers);
  return true;
}

void GLSceneView::Impl::DrawBackground() const {
  if (!options.drawBackground) return;
  glUseProgram(background);
  glBindVertexArray(emptyArray);
  glUniform3fv(backgroundTop, 1, options.ground.top.data());
  glUniform3fv(backgroundBottom, 1, options.ground.bottom.data());
  glDepthMask(GL_FALSE);
  glDrawArrays(GL_TRIANGLES, 0, 3);
  glDepthMask(GL_TRUE);
}

// The key light comes over the viewer's left shoulder, but always from above too, so that a roof is lighter
// than a wall and two walls that meet are of different shades, from wherever one looks.
void GLSceneView::Impl::BeginSurfaces(const Frame& frame) const {
  const CameraFrame& camera = frame.projection.GetFrame();
  const Matrix4& view = frame.projection.GetView();
  glUseProgram(surface.name);
  glBindVertexArray(buffers.GetTriangleArray());
  SetDirection(surface.upDirection, view, up);
  SetDirection(surface.keyDirection, view, up * 0.85 - camera.right * 0.55 - camera.forward * 0.65);
  SetDirection(surface.fillDirection, view, camera.right * 0.85 - camera.forward * 0.35 + up * 0.1);
  glUniform1f(surface.blend, static_cast<float>(frame.blend));
}

bool GLSceneView::Impl::IsSelected(const SceneBuffers::Drawn& drawn) const {
  const SceneBuffers::Part* const part = buffers.FindPart(options.selectedPart);
  return part != nullptr && &buffers.GetDrawn()[part->drawn] == &drawn;
}

void GLSceneView::Impl::DrawSurface(const Frame& frame, const SceneBuffers::Drawn& drawn) const {
  if (!frame.volume.Shows(drawn.centre, drawn.radius, frame.reduced ? leastPixels : 0.0)) return;
  const SceneBuffers::Mesh& mesh = buffers.GetMeshes()[drawn.mesh];
  const SceneBuffers::Material& material = buffers.GetMaterials()[mesh.material];
  const Matrix4 modelView = Multiply(frame.projection.GetView(), drawn.transform);
  SetMatrix(surface.matrix, ToFloat(Multiply(frame.viewProjection, drawn.transform)));
  SetMatrix(surface.modelView, ToFloat(modelView));
  glUniformMatrix3fv(surface.normalMatrix, 1, GL_FALSE, NormalMatrix(modelView).data());
  glUniform4fv(surface.materialColour, 1, material.colour.data());
  glUniform1i(surface.hasPicture, material.texture != 0 ? 1 : 0);
  glBindTexture(GL_TEXTURE_2D, material.texture);
  material.twoSided ? glDisable(GL_CULL_FACE) : glEnable(GL_CULL_FACE);
  glFrontFace(drawn.mirrored ? GL_CW : GL_CCW);
  DrawTriangles(frame, drawn);
}

// Of many parts that are one draw, a selected one is left out of it and drawn by itself.
void GLSceneView::Impl::DrawTriangles(const Frame& frame, const SceneBuffers::Drawn& drawn) const {
  const SceneBuffers::Mesh& mesh = buffers.GetMeshes()[drawn.mesh];
  const auto draw = [this](std::size_t first, std::size_t count, bool selected) {
    glUniform4fv(surface.highlight, 1, (selected ? highlightColour : noHighlight).data());
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(count), GL_UNSIGNED_INT,
                   BufferOffset(first * sizeof(std::uint32_t)));
  };
  const bool selected = IsSelected(drawn);
  const auto count = static_cast<std::size_t>(mesh.indexCount);
  if (frame.reduced) {
    draw(mesh.firstCoarse, static_cast<std::size_t>(mesh.coarseCount), selected && drawn.members.empty());
  } else if (!selected || drawn.members.empty()) {
    return draw(mesh.firstIndex, count, selected);
  }
  for (const PartBatch::Member& member : drawn.members) {
    if (!selected || member.part != static_cast<std::size_t>(options.selectedPart)) continue;
    const std::size_t end = member.firstIndex + member.indexCount;
    draw(mesh.firstIndex + member.firstIndex, member.indexCount, true);
    if (frame.reduced) continue;
    draw(mesh.firstIndex, member.firstIndex, false);
    draw(mesh.firstIndex + end, count - end, false);
  }
}

// Pushed back a little, so that the edges drawn on them are seen.
void GLSceneView::Impl::DrawOpaque(const Frame& frame) const {
  BeginSurfaces(frame);
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(0.6F, 1.0F);
  for (std::size_t i = 0; i < buffers.GetOpaqueCount(); ++i) DrawSurface(frame, buffers.GetDrawn()[i]);
  glDisable(GL_POLYGON_OFFSET_FILL);
  glDisable(GL_CULL_FACE);
}

void GLSceneView::Impl::DrawTransparent(const Frame& frame) {
  const CameraFrame& camera = frame.projection.GetFrame();
  sorted.clear();
  for (std::size_t i = buffers.GetOpaqueCount(); i < buffers.GetDrawn().size(); ++i) {
    sorted.emplace_back(-(buffers.GetDrawn()[i].centre - camera.eye).Dot(camera.forward), i);
  }
  if (sorted.empty()) return;
  std::sort(sorted.begin(), sorted.end());
  BeginSurfaces(frame);
  for (const auto& [depth, i] : sorted) DrawSurface(frame, buffers.GetDrawn()[i]);
}

void GLSceneView::Impl::DrawEdges(const Frame& frame) const {
  glUseProgram(edge.name);
  glEnable(GL_BLEND);
  glDepthMask(GL_FALSE);
  glUniform2f(edge.viewport, static_cast<float>(frame.width), static_cast<float>(frame.height));
  glUniform1f(edge.scale, static_cast<float>(frame.scale));
  for (const SceneBuffers::Drawn& drawn : buffers.GetDrawn()) DrawEdgesOf(frame, drawn);
  glDepthMask(GL_TRUE);
  glDisable(GL_BLEND);
}

void GLSceneView::Impl::DrawEdgesOf(const Frame& frame, const SceneBuffers::Drawn& drawn) const {
  const SceneBuffers::Mesh& mesh = buffers.GetMeshes()[drawn.mesh];
  if (mesh.edgeCount == 0 || !frame.volume.Shows(drawn.centre, drawn.radius, 0.0)) return;
  const bool selected = drawn.members.empty() && IsSelected(drawn);
  SetMatrix(edge.matrix, ToFloat(Multiply(frame.viewProjection, drawn.transform)));
  glUniform4fv(edge.colour, 1, (selected ? selectedEdgeColour : options.ground.edge).data());
  glUniform1f(edge.lineWidth, static_cast<float>((selected ? selectedEdgeWidth : edgeWidth) * frame.scale));
  buffers.BindEdges(mesh);
  glDrawArraysInstanced(GL_TRIANGLE_STRIP, 0, 4, mesh.edgeCount);
}

// ---- the public face ----

GLSceneView::GLSceneView() : impl(std::make_unique<Impl>()) {}
GLSceneView::~GLSceneView() { impl->Destroy(); }
bool GLSceneView::SetScene(const Scene* scene, const Progress& progress) {
  return impl->SetScene(scene, progress);
}
bool GLSceneView::DropsDetail() const { return impl->buffers.IsLarge(); }
void GLSceneView::Destroy() { impl->Destroy(); }
GLSceneView::Options& GLSceneView::GetOptions() { return impl->options; }
const GLSceneView::Options& GLSceneView::GetOptions() const { return impl->options; }
void GLSceneView::SetFaceHighlight(const SceneFace* face) { impl->faceHighlight.SetFace(face); }
const SceneSphere& GLSceneView::GetSphere() const { return impl->sphere; }

bool GLSceneView::Draw(const CameraParameters& camera, int x, int y, int width, int height, double scale) {
  return impl->Draw(camera, x, y, width, height, scale);
}

}  // namespace zovhost
