#include "views/picture_file.h"

#include "views/bound_target.h"
#include "views/picture_look.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/picture.h"

namespace zovview {

namespace {

bool DrawPicture(const zovhost::ViewHub& hub, zovhost::GLSceneView& sceneView, int selectedPart,
                 int enlargement, double scale, zovhost::Image& picture) {
  zovhost::OffscreenTarget target;
  const int width = hub.GetViewportWidth() * enlargement;
  const int height = hub.GetViewportHeight() * enlargement;
  if (!target.Create(width, height)) return false;
  const BoundTarget bound(target);
  const PictureLook look(sceneView, selectedPart);
  return bound.IsGood() && sceneView.Draw(hub.GetView(), 0, 0, width, height, scale * enlargement) &&
         target.Read(picture);
}

}  // namespace

bool WritePictureFile(const std::filesystem::path& file, const zovhost::ViewHub& hub,
                      zovhost::GLSceneView& sceneView, int selectedPart, int enlargement, double scale,
                      std::string& error) {
  zovhost::Image picture;
  if (DrawPicture(hub, sceneView, selectedPart, enlargement, scale, picture))
    return zovhost::WritePng(file, picture, error);
  error = "the graphics memory does not hold a picture of this size";
  return false;
}

}  // namespace zovview
