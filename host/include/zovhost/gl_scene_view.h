#pragma once

#include <memory>

#include "korvane/camera_parameters.h"
#include "zovhost/projection.h"
#include "zovhost/scene.h"
#include "zovhost/scene_ground.h"

namespace zovhost {

/// Draws a scene: lit from over the viewer's shoulder and from the sky, edges drawn as fine lines, over a
/// calm background.
///
/// Draws into whatever framebuffer is bound and restores the state that it touches. Needs the context that
/// was current at SetScene. A framebuffer with a depth buffer is needed, one with samples looks best.
class GLSceneView {
 public:
  struct Options {
    SceneGround ground = {};
    bool drawBackground = true;
    bool drawEdges = true;
    bool drawGroundShadow = true;
    bool drawFaceHighlight = true;
    int selectedPart = -1;  // index into the scene's parts, -1: none
    /// The view moves: a large scene is drawn coarsely, without edges, shadow and what is tiny, so that
    /// frames follow each other without a graphics card too. One that is not large is drawn as at rest.
    bool moving = false;
  };

  GLSceneView();
  ~GLSceneView();
  GLSceneView(const GLSceneView&) = delete;
  GLSceneView& operator=(const GLSceneView&) = delete;

  /// Uploads the scene, which is not needed afterwards; null empties the view. False when the context is
  /// unfit or memory is short, or when `progress`, which may be empty, has broken it off; the view then shows
  /// what it showed before, as it does until this returns. `progress` may draw, with this view too.
  bool SetScene(const Scene* scene, const Progress& progress = {});
  /// The long half of SetScene alone: uploads a scene beside the present one, which goes on to show until
  /// ShowPrepared. One that was prepared before is freed. False as SetScene; nothing is prepared then.
  bool Prepare(const Scene& scene, const Progress& progress = {});
  /// The short half: shows what was prepared. False when nothing was.
  bool ShowPrepared();
  /// Frees what was prepared and has not been shown.
  void DropPrepared();
  /// Whether Options::moving makes a difference to the present scene.
  bool DropsDetail() const;
  /// Frees everything; the destructor does so as well. The context has to be current.
  void Destroy();

  Options& GetOptions();
  const Options& GetOptions() const;
  /// Tints a face of the scene, which is copied, with the accent colour; null for none. Another scene has
  /// none. Needs no context.
  void SetFaceHighlight(const SceneFace* face);
  /// Around the scene; the unit sphere while empty. Depths are fitted more closely than to this sphere: who
  /// draws into the same picture with a GLRenderer tells that the scene.
  const SceneSphere& GetSphere() const;

  /// Clears colour and depth and draws, into a viewport at (`x`, `y`) of the framebuffer. `scale`: pixels
  /// for one point of the display, for the width of lines. False for a viewport without size.
  bool Draw(const Korvane::CameraParameters& camera, int x, int y, int width, int height, double scale = 1.0);
  /// At the framebuffer's origin.
  bool Draw(const Korvane::CameraParameters& camera, int width, int height) {
    return Draw(camera, 0, 0, width, height);
  }
  /// The same for a window that has to go on meanwhile: a large scene at rest is drawn for about `seconds` in
  /// each call, while the coarse picture of a view in motion shows; when it is whole it is kept and put back
  /// in later calls, as long as nothing has changed. False while there is more to draw: call it again soon.
  /// All else is drawn at once, and so is a large scene where the driver cannot copy framebuffers.
  bool DrawGradually(const Korvane::CameraParameters& camera, int x, int y, int width, int height,
                     double scale, double seconds);

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace zovhost
