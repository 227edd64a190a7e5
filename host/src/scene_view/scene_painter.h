#pragma once

#include <epoxy/gl.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "scene_view/draw_pace.h"
#include "scene_view/ground_shadow.h"
#include "scene_view/scene_buffers.h"
#include "scene_view/view_volume.h"
#include "zovhost/projection.h"
#include "zovhost/scene_ground.h"

namespace zovhost {

/// What one frame of a scene is drawn with.
struct SceneFrame {
  Projection projection;
  Matrix4 viewProjection;
  double blend;
  int width;
  int height;
  double scale;       // pixels a point
  bool reduced;       // coarse, for a view that moves
  ViewVolume volume;  // what is seen
  SceneGround ground;
  Korvane::Vector3 up;
  int selectedPart;
  bool drawEdges;
  bool drawGroundShadow;
};

/// A piece of a frame that is drawn quickly: triangles or lines of one thing, or the shadow.
struct PaintStep {
  enum class Kind { None, Opaque, Edges, Shadow, Transparent };
  Kind kind;
  std::size_t drawn = 0;  // among those of the buffers
  std::size_t first = 0;  // index of the buffers, or line of the mesh
  std::size_t count = 0;
  bool selected = false;
};

/// All that a frame draws, in its order. Made anew it keeps its memory.
struct PaintPlan {
  std::vector<PaintStep> steps;
  std::vector<std::pair<double, std::size_t>> transparent;  // by depth: the planner's own
};

/// Draws the surfaces, edges and shadow of a scene, in steps that may be far apart in time.
class ScenePainter {
 public:
  /// Wrap all in a GLStateGuard.
  bool Create();
  void Destroy();

  static void Plan(const SceneFrame& frame, const SceneBuffers& buffers, PaintPlan& plan);
  /// Draws from step `from` on, until all are done or the time is over; the step to go on with.
  std::size_t Paint(const SceneFrame& frame, const SceneBuffers& buffers, const GroundShadow& shadow,
                    const std::vector<PaintStep>& steps, std::size_t from,
                    DrawPace::Clock::time_point deadline) const;

 private:
  struct SurfaceProgram {
    GLuint name = 0;
    GLint matrix = -1, modelView = -1, normalMatrix = -1, materialColour = -1;
    GLint highlight = -1, upDirection = -1, keyDirection = -1, fillDirection = -1, blend = -1;
    bool Create(bool withPicture);
  };
  struct EdgeProgram {
    GLuint name = 0;
    GLint matrix = -1, viewport = -1, lineWidth = -1, scale = -1, facing = -1, pixelDepth = -1, colour = -1;
    bool Create();
  };

  void Begin(PaintStep::Kind kind, const SceneFrame& frame, const SceneBuffers& buffers) const;
  static void BeginSurfaces(const SceneFrame& frame, const SurfaceProgram& surface);
  void BeginEdges(const SceneFrame& frame) const;
  // `present`: the program that is in use, as BeginSurfaces has set it up.
  void PaintSurface(const SceneFrame& frame, const SceneBuffers& buffers, const PaintStep& step,
                    const SurfaceProgram*& present) const;
  void PaintEdges(const SceneFrame& frame, const SceneBuffers& buffers, const PaintStep& step) const;

  SurfaceProgram plain;
  SurfaceProgram pictured;
  EdgeProgram edge;
};

}  // namespace zovhost
