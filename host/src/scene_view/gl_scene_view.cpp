#include "zovhost/gl_scene_view.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include "gl/gl_program.h"
#include "scene/scene_depths.h"
#include "scene_view/face_highlight.h"
#include "scene_view/ground_shadow.h"
#include "scene_view/kept_picture.h"
#include "scene_view/scene_buffers.h"
#include "scene_view/scene_painter.h"
#include "scene_view/scene_shaders.h"
#include "scene_view/view_volume.h"
#include "zovhost/gl_state_guard.h"

namespace zovhost {

using Clock = DrawPace::Clock;
using Korvane::CameraParameters;
using Korvane::Vector3;

namespace {

constexpr std::size_t MOST_GRADUAL = 4;  // views side by side, each of which keeps pictures

// A part of a framebuffer.
struct Place {
  GLuint target;
  int x;
  int y;
  int width;
  int height;
  bool operator==(const Place&) const = default;
};

// All that a picture depends on but the scene.
struct Look {
  Matrix4 viewProjection = {};
  double blend = 0.0;
  double scale = 1.0;
  SceneGround ground;
  int selectedPart = -1;
  bool drawBackground = true;
  bool drawEdges = true;
  bool drawGroundShadow = true;
  bool operator==(const Look&) const = default;
};

// All that is drawn of one scene.
struct SceneStock {
  SceneBuffers buffers;
  GroundShadow shadow;
  SceneDepths depths;
  Vector3 up = {0.0, 1.0, 0.0};

  void Destroy() {
    buffers.Destroy();
    shadow.Destroy();
    *this = {};
  }
};

// The picture of one place, drawn little by little.
struct GradualPicture {
  Place place = {};
  KeptPicture whole;
  KeptPicture coarse;  // shows until the whole one is finished
  bool begun = false;
  Look look;
  PaintPlan plan;
  std::size_t next = 0;

  void Destroy() {
    whole.Destroy();
    coarse.Destroy();
  }
};

void SetPlace(const Place& place) {
  glViewport(place.x, place.y, place.width, place.height);
  glEnable(GL_SCISSOR_TEST);
  glScissor(place.x, place.y, place.width, place.height);
}

GLuint GetTarget() {
  GLint target = 0;
  glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &target);
  return static_cast<GLuint>(target);
}

Clock::time_point GetDeadline(double seconds) {
  return Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

}  // namespace

class GLSceneView::Impl {
 public:
  bool SetScene(const Scene* scene, const Progress& progress);
  bool Prepare(const Scene& scene, const Progress& progress);
  bool ShowPrepared();
  void DropPrepared();
  void Destroy();
  bool Draw(const CameraParameters& camera, int x, int y, int width, int height, double scale);
  bool DrawGradually(const CameraParameters& camera, int x, int y, int width, int height, double scale,
                     double seconds);

  Options options;
  FaceHighlight faceHighlight;
  SceneStock shown;

 private:
  bool CreatePrograms();
  static bool Upload(const Scene& scene, const Progress& progress, SceneStock& into);
  void Show(SceneStock stock);
  void DrawBackground() const;
  SceneFrame MakeFrame(const CameraParameters& camera, const Place& place, double scale, bool reduced) const;
  Look MakeLook(const SceneFrame& frame) const;
  void ClearPlace(const Place& place) const;
  void DrawWhole(const SceneFrame& frame, const Place& place);
  void DrawFace(const SceneFrame& frame);
  GradualPicture& FindGradual(const Place& place);
  void ForgetGradual();
  bool BeginGradual(GradualPicture& picture, const SceneFrame& frame, const SceneFrame& reduced);

  bool programsReady = false;
  ScenePainter painter;
  PaintPlan plan;  // of the last frame that was drawn at once
  GLuint background = 0;
  GLint backgroundTop = -1;
  GLint backgroundBottom = -1;
  GLuint emptyArray = 0;
  std::optional<SceneStock> prepared;
  std::vector<GradualPicture> gradual;
};

// ---- life ----

bool GLSceneView::Impl::CreatePrograms() {
  if (programsReady) return true;
  background = BuildProgram(backgroundVertexShader, backgroundFragmentShader);
  if (background == 0 || !painter.Create() || !faceHighlight.Create()) return false;
  backgroundTop = glGetUniformLocation(background, "top");
  backgroundBottom = glGetUniformLocation(background, "bottom");
  glGenVertexArrays(1, &emptyArray);
  programsReady = true;
  return true;
}

bool GLSceneView::Impl::SetScene(const Scene* scene, const Progress& progress) {
  if (scene != nullptr) return Prepare(*scene, progress) && ShowPrepared();
  if (!IsContextFit()) return false;
  const GLStateGuard guard;
  if (!CreatePrograms()) return false;
  Show({});
  return true;
}

// What memory or threads are too short for is freed as far as it was made.
bool GLSceneView::Impl::Upload(const Scene& scene, const Progress& progress, SceneStock& into) try {
  if (!into.buffers.Upload(scene, progress)) return false;
  const GLStateGuard guard;
  if (!into.shadow.Create(scene, into.buffers)) into.shadow.Destroy();
  into.depths = SceneDepths(scene);
  into.up = scene.GetUpDirection();
  return true;
} catch (const std::bad_alloc&) {
  return false;
} catch (const std::length_error&) {
  return false;
} catch (const std::system_error&) {
  return false;
}

// The new scene is made beside the present one, which `progress` may draw.
bool GLSceneView::Impl::Prepare(const Scene& scene, const Progress& progress) {
  if (!IsContextFit()) return false;
  {
    const GLStateGuard guard;
    if (!CreatePrograms()) return false;
  }
  DropPrepared();
  SceneStock stock;
  if (!Upload(scene, progress, stock)) {
    stock.Destroy();
    return false;
  }
  prepared = std::move(stock);
  return true;
}

bool GLSceneView::Impl::ShowPrepared() {
  if (!prepared.has_value()) return false;
  const GLStateGuard guard;
  Show(*std::exchange(prepared, std::nullopt));
  return true;
}

void GLSceneView::Impl::DropPrepared() {
  if (prepared.has_value()) prepared->Destroy();
  prepared.reset();
}

void GLSceneView::Impl::Show(SceneStock stock) {
  shown.Destroy();
  ForgetGradual();
  shown = std::move(stock);
  faceHighlight.SetFace(nullptr);
}

void GLSceneView::Impl::Destroy() {
  if (!programsReady) return;
  ForgetGradual();
  DropPrepared();
  shown.Destroy();
  faceHighlight.Destroy();
  painter.Destroy();
  glDeleteProgram(background);
  glDeleteVertexArrays(1, &emptyArray);
  background = emptyArray = 0;
  programsReady = false;
}

// ---- a frame at once ----

bool GLSceneView::Impl::Draw(const CameraParameters& camera, int x, int y, int width, int height,
                             double scale) {
  if (!programsReady || width < 1 || height < 1) return false;
  const GLStateGuard guard;
  const Place place = {GetTarget(), x, y, width, height};
  const SceneFrame frame = MakeFrame(camera, place, scale, options.moving && shown.buffers.IsLarge());
  DrawWhole(frame, place);
  DrawFace(frame);
  return true;
}

SceneFrame GLSceneView::Impl::MakeFrame(const CameraParameters& camera, const Place& place, double scale,
                                        bool reduced) const {
  const Projection projection = shown.depths.MakeProjection(camera);
  return {projection,
          projection.GetViewProjection(),
          GetProjectionBlend(camera),
          place.width,
          place.height,
          scale > 0.0 && scale < 16.0 ? scale : 1.0,
          reduced,
          ViewVolume(projection, place.height),
          options.ground,
          shown.up,
          options.selectedPart,
          options.drawEdges,
          options.drawGroundShadow};
}

void GLSceneView::Impl::ClearPlace(const Place& place) const {
  SetPlace(place);
  glDepthMask(GL_TRUE);
  glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  DrawBackground();
}

void GLSceneView::Impl::DrawWhole(const SceneFrame& frame, const Place& place) {
  ClearPlace(place);
  ScenePainter::Plan(frame, shown.buffers, plan);
  painter.Paint(frame, shown.buffers, shown.shadow, plan.steps, 0, Clock::time_point::max());
}

void GLSceneView::Impl::DrawFace(const SceneFrame& frame) {
  if (!options.drawFaceHighlight) return;
  glEnable(GL_DEPTH_TEST);
  glEnable(GL_BLEND);
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(-0.5F, -1.0F);  // its corners may be rounded otherwise than those of the surface
  glDepthMask(GL_FALSE);
  glDisable(GL_CULL_FACE);
  faceHighlight.Draw(frame.projection, shown.buffers);
}

void GLSceneView::Impl::DrawBackground() const {
  if (!options.drawBackground) return;
  glUseProgram(background);
  glBindVertexArray(emptyArray);
  glUniform3fv(backgroundTop, 1, options.ground.top.data());
  glUniform3fv(backgroundBottom, 1, options.ground.bottom.data());
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_BLEND);
  glDepthMask(GL_FALSE);
  glDrawArrays(GL_TRIANGLES, 0, 3);
  glDepthMask(GL_TRUE);
}

// ---- a frame little by little ----

bool GLSceneView::Impl::DrawGradually(const CameraParameters& camera, int x, int y, int width, int height,
                                      double scale, double seconds) {
  if (!programsReady || width < 1 || height < 1) return true;
  const Clock::time_point deadline = GetDeadline(seconds);
  const GLStateGuard guard;
  const Place place = {GetTarget(), x, y, width, height};
  const SceneFrame frame = MakeFrame(camera, place, scale, false);
  GradualPicture& picture = FindGradual(place);
  const bool known = picture.begun && picture.look == MakeLook(frame);
  if (!known && !BeginGradual(picture, frame, MakeFrame(camera, place, scale, true))) {
    DrawWhole(frame, place);
    DrawFace(frame);
    return true;
  }
  if (picture.next < picture.plan.steps.size()) {
    picture.whole.Bind();
    SetPlace(place);
    picture.next =
        painter.Paint(frame, shown.buffers, shown.shadow, picture.plan.steps, picture.next, deadline);
  }
  const bool finished = picture.next >= picture.plan.steps.size();
  (finished ? picture.whole : picture.coarse).Restore(place.target, x, y, width, height);
  if (finished) picture.coarse.Destroy();
  DrawFace(frame);
  return finished;
}

Look GLSceneView::Impl::MakeLook(const SceneFrame& frame) const {
  return {frame.viewProjection,   frame.blend,     frame.scale,           frame.ground, frame.selectedPart,
          options.drawBackground, frame.drawEdges, frame.drawGroundShadow};
}

// False where pictures cannot be kept.
bool GLSceneView::Impl::BeginGradual(GradualPicture& picture, const SceneFrame& frame,
                                     const SceneFrame& reduced) {
  const Place& place = picture.place;
  const int right = place.x + place.width;
  const int top = place.y + place.height;
  picture.begun = (picture.begun || picture.whole.Create(right, top)) && picture.coarse.Create(right, top);
  if (!picture.begun) return false;
  DrawWhole(reduced, place);
  picture.coarse.Save(place.target, place.x, place.y, place.width, place.height);
  picture.look = MakeLook(frame);
  ScenePainter::Plan(frame, shown.buffers, picture.plan);
  picture.next = 0;
  picture.whole.Bind();
  ClearPlace(place);
  return true;
}

GradualPicture& GLSceneView::Impl::FindGradual(const Place& place) {
  const auto known = std::find_if(gradual.begin(), gradual.end(),
                                  [&place](const GradualPicture& picture) { return picture.place == place; });
  if (known != gradual.end()) return *known;
  if (gradual.size() >= MOST_GRADUAL) {
    gradual.front().Destroy();
    gradual.erase(gradual.begin());
  }
  gradual.emplace_back().place = place;
  return gradual.back();
}

void GLSceneView::Impl::ForgetGradual() {
  for (GradualPicture& picture : gradual) picture.Destroy();
  gradual.clear();
}

// ---- the public face ----

GLSceneView::GLSceneView() : impl(std::make_unique<Impl>()) {}
GLSceneView::~GLSceneView() { impl->Destroy(); }
bool GLSceneView::SetScene(const Scene* scene, const Progress& progress) {
  return impl->SetScene(scene, progress);
}
bool GLSceneView::Prepare(const Scene& scene, const Progress& progress) {
  return impl->Prepare(scene, progress);
}
bool GLSceneView::ShowPrepared() { return impl->ShowPrepared(); }
void GLSceneView::DropPrepared() { impl->DropPrepared(); }
bool GLSceneView::DropsDetail() const { return impl->shown.buffers.IsLarge(); }
void GLSceneView::Destroy() { impl->Destroy(); }
GLSceneView::Options& GLSceneView::GetOptions() { return impl->options; }
const GLSceneView::Options& GLSceneView::GetOptions() const { return impl->options; }
void GLSceneView::SetFaceHighlight(const SceneFace* face) { impl->faceHighlight.SetFace(face); }
const SceneSphere& GLSceneView::GetSphere() const { return impl->shown.depths.GetSphere(); }

bool GLSceneView::Draw(const CameraParameters& camera, int x, int y, int width, int height, double scale) {
  return impl->Draw(camera, x, y, width, height, scale);
}

bool GLSceneView::DrawGradually(const CameraParameters& camera, int x, int y, int width, int height,
                                double scale, double seconds) {
  if (impl->shown.buffers.IsLarge() && !impl->options.moving)
    return impl->DrawGradually(camera, x, y, width, height, scale, seconds);
  impl->Draw(camera, x, y, width, height, scale);
  return true;
}

}  // namespace zovhost
