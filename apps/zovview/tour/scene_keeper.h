#pragma once

#include "korvane/camera_parameters.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/offscreen_target.h"

namespace zovview {

/// Draws a model into a target, picture by picture, and while the camera rests copies what it has drawn
/// before, which takes a fraction of the time.
///
/// All calls need the context of the scene view.
class SceneKeeper {
 public:
  /// Borrowed.
  explicit SceneKeeper(zovhost::GLSceneView& view) : sceneView(view) {}

  /// The same picture as that of GLSceneView::Draw into the bound target at its lower left, over a plain
  /// ground where it is lower than the target. Leaves the target bound. False when it cannot be drawn.
  bool Draw(const Korvane::CameraParameters& camera, int height, const zovhost::OffscreenTarget& target);
  /// How many were drawn, and how many copied.
  int GetDrawnCount() const { return drawnCount; }
  int GetCopiedCount() const { return copiedCount; }

 private:
  // What a picture depends on, beside options that nobody changes on the way.
  struct Shown {
    Korvane::CameraParameters camera;
    int height = 0;
    int selectedPart = -1;
  };
  static bool IsSame(const Shown& a, const Shown& b);
  bool DrawInto(const zovhost::OffscreenTarget& target);

  zovhost::GLSceneView& sceneView;
  zovhost::OffscreenTarget kept;
  Shown shown;
  bool isKept = false;
  int drawnCount = 0;
  int copiedCount = 0;
};

}  // namespace zovview
