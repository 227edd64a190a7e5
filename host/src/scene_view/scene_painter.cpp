#include "scene_view/scene_painter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

#include "gl/buffer_offset.h"
#include "gl/gl_program.h"
#include "scene_view/scene_shaders.h"
#include "zovhost/accent.h"

namespace zovhost {

using Korvane::Vector3;
using Kind = PaintStep::Kind;

namespace {

constexpr std::array<float, 4> noHighlight = {0.0F, 0.0F, 0.0F, 0.0F};
constexpr std::array<float, 4> Accent(float opacity) {
  return {static_cast<float>(ACCENT_COLOUR[0]), static_cast<float>(ACCENT_COLOUR[1]),
          static_cast<float>(ACCENT_COLOUR[2]), opacity};
}

constexpr std::array<float, 4> highlightColour = Accent(0.55F);
constexpr std::array<float, 4> selectedEdgeColour = Accent(1.0F);
constexpr double leastPixels = 2.0;  // across, of what a view that moves still shows
constexpr int edgeCorners = 6;
constexpr std::size_t edgeTriangles = 4;
constexpr double edgeWidth = 1.1;          // points
constexpr double selectedEdgeWidth = 2.2;  // points

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

// With z' = A z + B and w = slope z + base along the view, z' / w changes by (A base - B slope) / w^2; a
// pixel is as large as w times its size where w is 1.
double GetPixelDepth(const Projection& projection, int height) {
  const Matrix4& p = projection.GetProjection();
  return (p[14] * p[11] - p[10] * p[15]) * 2.0 / (p[5] * height);
}

// By how much surfaces are pushed back: by what rounding may take from the edges, which lie in them, and by
// little more from one material to the next, so that of surfaces that fall together one and the same is seen
// in all pixels. No further: what stands just behind a surface must not be seen through it.
void PushBack(std::size_t material) {
  constexpr std::size_t RANKS = 6;
  const auto rank = static_cast<float>(material % RANKS);
  glPolygonOffset(0.02F + 0.006F * rank, 2.0F + 4.0F * rank);
}

// ---- the plan ----

class Planner {
 public:
  Planner(const SceneFrame& ofFrame, const SceneBuffers& ofBuffers, PaintPlan& plan)
      : frame(ofFrame), buffers(ofBuffers), steps(plan.steps), transparent(plan.transparent) {}

  void Make() {
    steps.clear();
    for (std::size_t i = 0; i < buffers.GetOpaqueCount(); ++i) AddSurface(Kind::Opaque, i);
    if (frame.drawEdges && !frame.reduced)
      for (std::size_t i = 0; i < buffers.GetDrawn().size(); ++i) AddEdges(i);
    if (frame.drawGroundShadow && !frame.reduced) steps.push_back({.kind = Kind::Shadow});
    SortTransparent();
    for (const auto& [depth, i] : transparent) AddSurface(Kind::Transparent, i);
  }

 private:
  bool IsSelected(std::size_t drawn) const {
    const SceneBuffers::Part* const part = buffers.FindPart(frame.selectedPart);
    return part != nullptr && part->drawn == drawn;
  }

  // Of many parts that are one draw, a selected one is left out of it and drawn by itself.
  void AddSurface(Kind kind, std::size_t index) {
    const SceneBuffers::Drawn& drawn = buffers.GetDrawn()[index];
    if (!frame.volume.Shows(drawn.centre, drawn.radius, frame.reduced ? leastPixels : 0.0)) return;
    const SceneBuffers::Mesh& mesh = buffers.GetMeshes()[drawn.mesh];
    const auto count = static_cast<std::size_t>(mesh.indexCount);
    const bool selected = IsSelected(index);
    const bool single = drawn.members.empty();
    if (frame.reduced) {
      Split(kind, index, mesh.firstCoarse, static_cast<std::size_t>(mesh.coarseCount), selected && single);
    } else if (!selected || single) {
      return Split(kind, index, mesh.firstIndex, count, selected);
    }
    for (const PartBatch::Member& member : drawn.members) {
      if (!selected || member.part != static_cast<std::size_t>(frame.selectedPart)) continue;
      const std::size_t end = member.firstIndex + member.indexCount;
      Split(kind, index, mesh.firstIndex + member.firstIndex, member.indexCount, true);
      if (frame.reduced) continue;
      Split(kind, index, mesh.firstIndex, member.firstIndex, false);
      Split(kind, index, mesh.firstIndex + end, count - end, false);
    }
  }

  void AddEdges(std::size_t index) {
    const SceneBuffers::Drawn& drawn = buffers.GetDrawn()[index];
    const SceneBuffers::Mesh& mesh = buffers.GetMeshes()[drawn.mesh];
    if (mesh.edgeCount == 0 || !frame.volume.Shows(drawn.centre, drawn.radius, 0.0)) return;
    const bool selected = drawn.members.empty() && IsSelected(index);
    const auto count = static_cast<std::size_t>(mesh.edgeCount);
    constexpr std::size_t most = DrawPace::STEP / edgeTriangles;
    for (std::size_t first = 0; first < count; first += most)
      steps.push_back({Kind::Edges, index, first, std::min(most, count - first), selected});
  }

  // From the back to the front.
  void SortTransparent() {
    const CameraFrame& camera = frame.projection.GetFrame();
    transparent.clear();
    for (std::size_t i = buffers.GetOpaqueCount(); i < buffers.GetDrawn().size(); ++i)
      transparent.emplace_back(-(buffers.GetDrawn()[i].centre - camera.eye).Dot(camera.forward), i);
    std::sort(transparent.begin(), transparent.end());
  }

  void Split(Kind kind, std::size_t index, std::size_t first, std::size_t count, bool selected) {
    constexpr std::size_t most = 3 * DrawPace::STEP;
    for (std::size_t done = 0; done < count; done += most)
      steps.push_back({kind, index, first + done, std::min(most, count - done), selected});
  }

  const SceneFrame& frame;
  const SceneBuffers& buffers;
  std::vector<PaintStep>& steps;
  std::vector<std::pair<double, std::size_t>>& transparent;
};

}  // namespace

// ---- life ----

bool ScenePainter::SurfaceProgram::Create(bool withPicture) {
  const std::string fragments =
      std::string(withPicture ? "#define WITH_PICTURE\n" : "") + surfaceFragmentShader;
  name = BuildProgram(surfaceVertexShader, fragments.c_str());
  const auto find = [this](const char* uniform) { return glGetUniformLocation(name, uniform); };
  if (name == 0) return false;
  matrix = find("matrix"), modelView = find("modelView"), normalMatrix = find("normalMatrix");
  materialColour = find("materialColour"), highlight = find("highlight");
  upDirection = find("upDirection"), keyDirection = find("keyDirection");
  fillDirection = find("fillDirection"), blend = find("blend");
  return true;
}

bool ScenePainter::EdgeProgram::Create() {
  name = BuildProgram(edgeVertexShader, edgeFragmentShader);
  const auto find = [this](const char* uniform) { return glGetUniformLocation(name, uniform); };
  if (name == 0) return false;
  matrix = find("matrix"), viewport = find("viewport"), lineWidth = find("lineWidth");
  scale = find("scale"), facing = find("facing"), pixelDepth = find("pixelDepth"), colour = find("colour");
  return true;
}

bool ScenePainter::Create() { return plain.Create(false) && pictured.Create(true) && edge.Create(); }

void ScenePainter::Destroy() {
  glDeleteProgram(plain.name);
  glDeleteProgram(pictured.name);
  glDeleteProgram(edge.name);
  *this = {};
}

// ---- painting ----

void ScenePainter::Plan(const SceneFrame& frame, const SceneBuffers& buffers, PaintPlan& plan) {
  Planner(frame, buffers, plan).Make();
}

std::size_t ScenePainter::Paint(const SceneFrame& frame, const SceneBuffers& buffers,
                                const GroundShadow& shadow, const std::vector<PaintStep>& steps,
                                std::size_t from, DrawPace::Clock::time_point deadline) const {
  DrawPace pace(deadline);
  Kind present = Kind::None;
  const SurfaceProgram* surface = nullptr;
  for (std::size_t i = from; i < steps.size(); ++i) {
    const PaintStep& step = steps[i];
    if (step.kind != present) {
      Begin(present = step.kind, frame, buffers);
      surface = nullptr;
    }
    if (step.kind == Kind::Edges) {
      PaintEdges(frame, buffers, step);
    } else if (step.kind == Kind::Shadow) {
      shadow.Draw(frame.projection, frame.ground.shadow);
    } else {
      PaintSurface(frame, buffers, step, surface);
    }
    if (!pace.Pass(step.kind == Kind::Edges ? edgeTriangles * step.count : step.count / 3)) return i + 1;
  }
  return steps.size();
}

void ScenePainter::Begin(Kind kind, const SceneFrame& frame, const SceneBuffers& buffers) const {
  const bool opaque = kind == Kind::Opaque;
  glEnable(GL_DEPTH_TEST);
  glFrontFace(GL_CCW);
  glDisable(GL_CULL_FACE);
  opaque ? glEnable(GL_POLYGON_OFFSET_FILL) : glDisable(GL_POLYGON_OFFSET_FILL);
  opaque ? glDisable(GL_BLEND) : glEnable(GL_BLEND);
  glDepthMask(opaque ? GL_TRUE : GL_FALSE);
  if (kind == Kind::Edges) return BeginEdges(frame);
  if (kind != Kind::Shadow) glBindVertexArray(buffers.GetTriangleArray());
}

// The key light comes over the viewer's left shoulder, but always from above too, so that a roof is lighter
// than a wall and two walls that meet are of different shades, from wherever one looks.
void ScenePainter::BeginSurfaces(const SceneFrame& frame, const SurfaceProgram& surface) {
  const CameraFrame& camera = frame.projection.GetFrame();
  const Matrix4& view = frame.projection.GetView();
  const Vector3& up = frame.up;
  glUseProgram(surface.name);
  SetDirection(surface.upDirection, view, up);
  SetDirection(surface.keyDirection, view, up * 0.85 - camera.right * 0.55 - camera.forward * 0.65);
  SetDirection(surface.fillDirection, view, camera.right * 0.85 - camera.forward * 0.35 + up * 0.1);
  glUniform1f(surface.blend, static_cast<float>(frame.blend));
}

void ScenePainter::PaintSurface(const SceneFrame& frame, const SceneBuffers& buffers, const PaintStep& step,
                                const SurfaceProgram*& present) const {
  const SceneBuffers::Drawn& drawn = buffers.GetDrawn()[step.drawn];
  const SceneBuffers::Mesh& mesh = buffers.GetMeshes()[drawn.mesh];
  const SceneBuffers::Material& material = buffers.GetMaterials()[mesh.material];
  const SurfaceProgram& surface = material.texture != 0 ? pictured : plain;
  if (present != &surface) BeginSurfaces(frame, *(present = &surface));
  const Matrix4 modelView = Multiply(frame.projection.GetView(), drawn.transform);
  SetMatrix(surface.matrix, ToFloat(Multiply(frame.viewProjection, drawn.transform)));
  SetMatrix(surface.modelView, ToFloat(modelView));
  glUniformMatrix3fv(surface.normalMatrix, 1, GL_FALSE, NormalMatrix(modelView).data());
  glUniform4fv(surface.materialColour, 1, material.colour.data());
  glBindTexture(GL_TEXTURE_2D, material.texture);
  // The backs of a solid are half of what there is to draw, behind its fronts. Its coarse form has holes.
  const bool hidesBacks = mesh.solid && !frame.reduced && frame.volume.IsOutside(drawn.centre, drawn.radius);
  material.twoSided && !hidesBacks ? glDisable(GL_CULL_FACE) : glEnable(GL_CULL_FACE);
  glFrontFace(drawn.mirrored ? GL_CW : GL_CCW);
  PushBack(mesh.material);
  glUniform4fv(surface.highlight, 1, (step.selected ? highlightColour : noHighlight).data());
  glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(step.count), GL_UNSIGNED_INT,
                 BufferOffset(step.first * sizeof(std::uint32_t)));
}

void ScenePainter::BeginEdges(const SceneFrame& frame) const {
  glUseProgram(edge.name);
  glUniform2f(edge.viewport, static_cast<float>(frame.width), static_cast<float>(frame.height));
  glUniform1f(edge.scale, static_cast<float>(frame.scale));
  glUniform1f(edge.pixelDepth, static_cast<float>(GetPixelDepth(frame.projection, frame.height)));
}

void ScenePainter::PaintEdges(const SceneFrame& frame, const SceneBuffers& buffers,
                              const PaintStep& step) const {
  const SceneBuffers::Drawn& drawn = buffers.GetDrawn()[step.drawn];
  const double width = (step.selected ? selectedEdgeWidth : edgeWidth) * frame.scale;
  SetMatrix(edge.matrix, ToFloat(Multiply(frame.viewProjection, drawn.transform)));
  glUniform4fv(edge.colour, 1, (step.selected ? selectedEdgeColour : frame.ground.edge).data());
  glUniform1f(edge.lineWidth, static_cast<float>(width));
  const SceneBuffers::Mesh& mesh = buffers.GetMeshes()[drawn.mesh];
  const bool hidesBacks = mesh.solid && frame.volume.IsOutside(drawn.centre, drawn.radius);
  glUniform1f(edge.facing, !hidesBacks ? 0.0F : drawn.mirrored ? -1.0F : 1.0F);
  buffers.BindEdges(mesh, step.first);
  glDrawArraysInstanced(GL_TRIANGLE_STRIP, 0, edgeCorners, static_cast<GLsizei>(step.count));
}

}  // namespace zovhost
