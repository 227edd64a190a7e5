#pragma once

#include "zovhost/gl_scene_view.h"

namespace zovview {

/// For its life a scene is drawn as for a picture that is kept: whole, with one part selected or -1 for none,
/// and without the face under the pointer. Then as before.
class PictureLook {
 public:
  explicit PictureLook(zovhost::GLSceneView& ofView, int selectedPart = -1)
      : view(ofView), former(ofView.GetOptions()) {
    zovhost::GLSceneView::Options& options = view.GetOptions();
    options.moving = false;
    options.drawFaceHighlight = false;
    options.selectedPart = selectedPart;
  }
  ~PictureLook() { view.GetOptions() = former; }
  PictureLook(const PictureLook&) = delete;
  PictureLook& operator=(const PictureLook&) = delete;

 private:
  zovhost::GLSceneView& view;
  const zovhost::GLSceneView::Options former;
};

}  // namespace zovview
